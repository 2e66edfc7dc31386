// forces.h: internal forces of the thin quadrilateral.
#ifndef FINITES_QUAD_THIN_FORCES_H
#define FINITES_QUAD_THIN_FORCES_H

#include "finites/records.h"
#include "finites/views.hpp"
#include "shells/common/constitutive.h"
#include "shells/common/elem_loads.h"
#include "shells/common/surface_points.h"
#include "shells/quadrilateral/geometry.h"

// f(24): internal nodal forces of the split displacements, with foundation and drilling. Element axes for operation 33,
// global axes otherwise. Temperature does not enter.
void QUAD_FORCES_ISO(const PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD, const ISOTROPIC_SECTION& ISO,
                     const QUAD_DISPLACEMENTS& QUAD_U, const ELEM_LOADS& LOADS, const MATRIX<3, 4>& local, int split,
                     double* f, int count, const SURFACE_STATION* rule, int op);
void QUAD_FORCES_GENERAL(const PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD,
                         const QUAD_DISPLACEMENTS& QUAD_U, const ELEM_LOADS& LOADS, const MATRIX<3, 4>& local,
                         int split, double* f, int count, int op);

#endif
