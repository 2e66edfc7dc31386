// plastic.h: the thin quadrilateral with the whole-section model, MAT_BEHAV 2.
#ifndef FINITES_QUAD_THIN_PLASTIC_H
#define FINITES_QUAD_THIN_PLASTIC_H

#include "element_calls/elem_loads.h"
#include "finites/records.h"
#include "finites/views.hpp"
#include "shells/quad_thin/geometry.h"

// K(24, 24), element axes, from the stored tangents; the drilling term is added.
void KSTIF_QUAD_THIN_PLAST(PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD, const QUAD_DISPLACEMENTS& QUAD_U,
                           const MATRIX<3, 4>& local, double* K);

// K += the geometric stiffness of the stored forces of each point.
void KGEOM_QUAD_THIN_PLAST(PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD, const QUAD_DISPLACEMENTS& QUAD_U,
                           const double* points, double* K);

// f(24): internal forces of the split displacements; the material follows them and the stored ones together. Operation
// 33 stores the state and answers in element axes, operation 3 stores nothing and answers in global axes.
void FINT_QUAD_THIN_PLAST(PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD, const QUAD_DISPLACEMENTS& QUAD_U,
                          const ELEM_LOADS& LOADS, const MATRIX<3, 4>& local, double* f, int op);

// Records at the nodes and points, without any temperature term; only reads the state.
void RES_QUAD_THIN_PLAST(PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD, const QUAD_DISPLACEMENTS& QUAD_U,
                         const MATRIX<3, 4>& local, double* nodes, double* points);

#endif
