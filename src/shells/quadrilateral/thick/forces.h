// forces.h: internal forces of the thick quadrilateral.
#ifndef FINITES_QUAD_THICK_FORCES_H
#define FINITES_QUAD_THICK_FORCES_H

#include "finites/records.h"
#include "finites/views.hpp"
#include "shells/common/constitutive.h"
#include "shells/common/elem_loads.h"
#include "shells/quadrilateral/geometry.h"

// f(24): nodal forces in equilibrium with the displacements. Element axes for operation 33,
// global axes otherwise. Temperature does not enter.
void FINT_QUAD_THICK_ISO(const PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD, const ISOTROPIC_SECTION& ISO,
                         const QUAD_DISPLACEMENTS& QUAD_U, const ELEM_LOADS& LOADS, const MATRIX<3, 4>& local,
                         int split, double* f, int op);
void FINT_QUAD_THICK_GEN(const PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD,
                         const QUAD_DISPLACEMENTS& QUAD_U, const ELEM_LOADS& LOADS, const MATRIX<3, 4>& local,
                         int split, double* f, int op);

#endif
