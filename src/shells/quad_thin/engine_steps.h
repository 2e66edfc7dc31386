// engine_steps.h: the steps that both quadrilateral engines take in the same way.
#ifndef FINITES_QUAD_ENGINE_STEPS_H
#define FINITES_QUAD_ENGINE_STEPS_H

#include <cstdint>

#include "element_calls/elem_loads.h"
#include "finites/records.h"
#include "finites/views.hpp"
#include "shells/common/constitutive.h"
#include "shells/quad_thin/geometry.h"

// The split flag of the element's behaviour: the whole-section model alone integrates the in-plane shear fully.
int quad_split(const PLATEELEM_RECORD& EL);

// The axes and the local coordinates alone.
void quad_frame(QUADRILATERAL_GEOMETRY& QUAD, const double* xyz, MATRIX<3, 4>& local);

// The geometry and the local coordinates. Only bending reads the side coefficients: where there is none to form,
// mode leaves them out. Mode as QUAD_GEOMETRY has it.
void quad_frame_and_geometry(QUADRILATERAL_GEOMETRY& QUAD, const double* xyz, int mode, MATRIX<3, 4>& local);

// What the kernels that go through GAUSS_INT_2D read of PLATEELEM beside the section.
void quad_store_frame(PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD, const MATRIX<3, 4>& local);

// The parts of the displacements U(24), global axes.
QUAD_DISPLACEMENTS quad_split_displacements(const QUADRILATERAL_GEOMETRY& QUAD, const double* U);

// matrix(24, 24) := K(300) in global axes; K is overwritten.
void quad_finish_matrix(const QUADRILATERAL_GEOMETRY& QUAD, double* K, double* matrix);

// K(300) += foundation and, when wanted, the geometric stiffness of the stored forces; the drilling term is written.
void quad_finish_stiffness(const PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD, const ISOTROPIC_SECTION& ISO,
                           const ELEM_LOADS& LOADS, const MATRIX<3, 4>& local, int geometric, const double* points,
                           double* K);

// K(24, 24): the drilling stiffness, added at its places.
void quad_add_drilling(const PLATEELEM_RECORD& EL, const MATRIX<3, 4>& local, double* K);

// The stored displacements of the element in PLATEELEM, turned to element axes as they are stored; zero without a
// state.
void quad_stored_displacements(const PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD, VECTOR<8>& us_membrane,
                               VECTOR<12>& us_plate);

// matrix(24, 24) := K(24, 24) in global axes; K is overwritten.
void quad_finish_full_matrix(const QUADRILATERAL_GEOMETRY& QUAD, double* K, double* matrix);

// The layered model: K(24, 24) with the drilling term, element axes; f(24); records. U(24) are the displacements of the
// call, global axes.
void quad_layered_stiffness(PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD, const QUAD_DISPLACEMENTS& QUAD_U,
                            const MATRIX<3, 4>& local, int theory, double* K);
void quad_layered_forces(PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD, const QUAD_DISPLACEMENTS& QUAD_U,
                         const MATRIX<3, 4>& local, const double* U, int op, int theory, double* f);
void quad_layered_results(PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD, const QUAD_DISPLACEMENTS& QUAD_U,
                          const MATRIX<3, 4>& local, const double* U, int theory, double* nodes, double* points);

// Operation 2: zero without density.
void quad_mass_matrix(const PLATEELEM_RECORD& EL, QUADRILATERAL_GEOMETRY& QUAD, const double* xyz,
                      const ELEM_LOADS& LOADS, double* matrix);

// Operations 7 and 71, after the section.
void quad_geometric_matrix(const PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD, const ISOTROPIC_SECTION& ISO,
                           std::int32_t op, const ELEM_LOADS& LOADS, const double* U, const double* points,
                           double* matrix);

// Operation 8.
void quad_area(const PLATEELEM_RECORD& EL, QUADRILATERAL_GEOMETRY& QUAD, const double* xyz, const ELEM_LOADS& LOADS,
               double& area, double& volume, double& weight);

#endif
