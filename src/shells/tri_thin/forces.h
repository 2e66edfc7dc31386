// forces.h: displacements in element axes and internal forces of the thin triangle.
#ifndef FINITES_TRI_FORCES_H
#define FINITES_TRI_FORCES_H

#include "element_calls/elem_loads.h"
#include "element_calls/gauss_int_2d.h"
#include "finites/records.h"
#include "finites/views.hpp"
#include "shells/common/constitutive.h"
#include "shells/tri_thin/geometry.h"

// ul(18) := u(18) in element axes, six groups of three.
void TRI_DISP_LOCAL(const TRIANGLE_GEOMETRY& TRI, const double* u, double* ul);

// The parts of ul(18).
TRI_DISPLACEMENTS TRI_DISP_SPLIT(const double* ul);

// f(24): nodal forces in equilibrium with the split displacements; values 19 to 24 are 0. Element axes for operation
// 33, global axes otherwise. Temperature does not enter.
void TRI_FORCES_ISO(const PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const ISOTROPIC_SECTION& ISO,
                    const TRI_DISPLACEMENTS& TRI_U, const ELEM_LOADS& LOADS, double* f, int count,
                    const SURFACE_STATION* rule, int op);
void TRI_FORCES_GENERAL(const PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const TRI_DISPLACEMENTS& TRI_U,
                        const ELEM_LOADS& LOADS, double* f, int count, int op);

// The terms that every theory has: foundation, drilling moments, which are set and not added, and the turn to global
// axes.
void TRI_FINISH_FORCES(const PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const TRI_DISPLACEMENTS& TRI_U,
                       const ELEM_LOADS& LOADS, int op, double* f);

#endif
