// layered_plates.h: the layered model on triangles and quadrilaterals, thin and thick.
//
//   state   i/o  of the plate
//   flag    in   MAT_BEHAV; not read
//   ngp     in   surface points, 4
//   u, us   in   displacements of the call and stored ones, element axes, six per node
//   theory  in   THIN_THEORY or THICK_THEORY
#ifndef FINITES_LAYERED_PLATES_H
#define FINITES_LAYERED_PLATES_H

#include "finites/records.h"
#include "finites/views.hpp"
#include "plate_material/state_in_use.h"
#include "shells/quadrilateral/element.h"
#include "shells/quadrilateral/geometry.h"
#include "shells/triangle/element.h"
#include "shells/triangle/geometry.h"

// F(24), F(18): internal forces, element axes in operation 33, global axes otherwise. The drilling stiffness kd is
// packed: the quadrilateral reads it; the triangle fills it, and takes the drilling rotations from TRI_U.DRILL.
void QUAD_LAYERED_FORCES(PLATEELEM_RECORD& EL, const PLATE_STATE_IN_USE& state, const QUADRILATERAL_GEOMETRY& QUAD,
                         const QUAD_DISPLACEMENTS& QUAD_U, int flag, int ngp, const double* u, const double* us,
                         double* F, const double* kd, int op, int theory);
void TRI_LAYERED_FORCES(PLATEELEM_RECORD& EL, const PLATE_STATE_IN_USE& state, const TRIANGLE_GEOMETRY& TRI,
                        const TRI_DISPLACEMENTS& TRI_U, int flag, int ngp, const double* u, const double* us, double* F,
                        double* kd, int op, int theory);

// K(24, 24), K(18, 18), element axes; the drilling rotations stay zero.
void QUAD_LAYERED_STIFF(PLATEELEM_RECORD& EL, const PLATE_STATE_IN_USE& state, const QUADRILATERAL_GEOMETRY& QUAD,
                        const QUAD_DISPLACEMENTS& QUAD_U, int flag, int ngp, int theory, double* K);
void TRI_LAYERED_STIFF(PLATEELEM_RECORD& EL, const PLATE_STATE_IN_USE& state, const TRIANGLE_GEOMETRY& TRI,
                       const TRI_DISPLACEMENTS& TRI_U, int flag, int ngp, int theory, double* K);

// Records at the nodes and the points; the state is only read.
void QUAD_LAYERED_RESULTS(PLATEELEM_RECORD& EL, const PLATE_STATE_IN_USE& state, const QUADRILATERAL_GEOMETRY& QUAD,
                          const QUAD_DISPLACEMENTS& QUAD_U, int flag, const MATRIX<3, 4>& xy, const double* u, int ngp,
                          double* nodes, double* points, int theory);
void TRI_LAYERED_RESULTS(PLATEELEM_RECORD& EL, const PLATE_STATE_IN_USE& state, const TRIANGLE_GEOMETRY& TRI,
                         const TRI_DISPLACEMENTS& TRI_U, int flag, const MATRIX<3, 3>& xy, const double* u, int ngp,
                         double* nodes, double* points, int theory);

// The same for the element of an engine: K with the drilling term; u, us(6 per node) in element axes.
void layered_plate_forces(const TRIANGLE_ELEMENT& e, const PLATE_STATE_IN_USE& state, const double* u, const double* us,
                          int op, int theory, double* F);
void layered_plate_forces(const QUADRILATERAL_ELEMENT& e, const PLATE_STATE_IN_USE& state, const double* u,
                          const double* us, int op, int theory, double* F);
void layered_plate_stiffness(const TRIANGLE_ELEMENT& e, const PLATE_STATE_IN_USE& state, int theory, double* K);
void layered_plate_stiffness(const QUADRILATERAL_ELEMENT& e, const PLATE_STATE_IN_USE& state, int theory, double* K);
void layered_plate_results(const TRIANGLE_ELEMENT& e, const PLATE_STATE_IN_USE& state, const double* u, int theory,
                           double* nodes, double* points);
void layered_plate_results(const QUADRILATERAL_ELEMENT& e, const PLATE_STATE_IN_USE& state, const double* u, int theory,
                           double* nodes, double* points);

#endif
