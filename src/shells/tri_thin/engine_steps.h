// engine_steps.h: the steps that both triangle engines take in the same way.
#ifndef FINITES_TRI_ENGINE_STEPS_H
#define FINITES_TRI_ENGINE_STEPS_H

#include <cstdint>

#include "element_calls/elem_loads.h"
#include "finites/records.h"
#include "finites/views.hpp"
#include "shells/common/constitutive.h"
#include "shells/tri_thin/geometry.h"

// The geometry and the local coordinates.
void tri_frame_and_geometry(TRIANGLE_GEOMETRY& TRI, const double* xyz, MATRIX<3, 3>& local);

// What the kernels that go through GAUSS_INT_2D read of PLATEELEM beside the section.
void tri_store_frame(PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const MATRIX<3, 3>& local);

// The parts of the displacements U(18), global axes.
TRI_DISPLACEMENTS tri_split_displacements(const TRIANGLE_GEOMETRY& TRI, const double* U);

// matrix(18, 18) := K(171) in global axes; K is overwritten.
void tri_finish_matrix(const TRIANGLE_GEOMETRY& TRI, double* K, double* matrix);

// K(171) += foundation and, when wanted, the geometric stiffness of the stored forces.
void tri_finish_stiffness(const PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const ISOTROPIC_SECTION& ISO,
                          const ELEM_LOADS& LOADS, int geometric, const double* points, double* K);

// K(18, 18): the drilling stiffness, written at its places.
void tri_set_drilling(const PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, double* K);

// The stored displacements of the element in PLATEELEM, turned to element axes as they are stored; zero without a
// state.
void tri_stored_displacements(const PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, VECTOR<6>& us_membrane,
                              VECTOR<9>& us_plate);

// matrix(18, 18) := K(18, 18) in global axes; K is overwritten.
void tri_finish_full_matrix(const TRIANGLE_GEOMETRY& TRI, double* K, double* matrix);

// The layered model: K(18, 18) with the drilling term, element axes; f(24), of which 18 are set; records. U(18) are the
// displacements of the call, global axes, whose parts are TRI_U.
void tri_layered_stiffness(PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const TRI_DISPLACEMENTS& TRI_U,
                           int theory, double* K);
void tri_layered_forces(PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const TRI_DISPLACEMENTS& TRI_U,
                        const double* U, int op, int theory, double* f);
void tri_layered_results(PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const TRI_DISPLACEMENTS& TRI_U,
                         const MATRIX<3, 3>& local, const double* U, int theory, double* nodes, double* points);

// Operation 2: zero without density.
void tri_mass_matrix(const PLATEELEM_RECORD& EL, TRIANGLE_GEOMETRY& TRI, const double* xyz, const ELEM_LOADS& LOADS,
                     double* matrix);

// Operations 7, which clears the points, and 71, after the section.
void tri_geometric_matrix(const PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const ISOTROPIC_SECTION& ISO,
                          std::int32_t op, const ELEM_LOADS& LOADS, const double* U, double* points, double* matrix);

// Operation 8.
void tri_area(const PLATEELEM_RECORD& EL, TRIANGLE_GEOMETRY& TRI, const double* xyz, const ELEM_LOADS& LOADS,
              double& area, double& volume, double& weight);

#endif
