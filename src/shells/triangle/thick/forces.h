// forces.h: internal forces of the thick triangle.
#ifndef FINITES_TRI_THICK_FORCES_H
#define FINITES_TRI_THICK_FORCES_H

#include "finites/records.h"
#include "shells/common/constitutive.h"
#include "shells/common/elem_loads.h"
#include "shells/triangle/geometry.h"

// f(24): internal nodal forces of the split displacements, with foundation and drilling; values 19 to 24 are 0. Element
// axes for operation 33, global axes otherwise. Temperature does not enter.
void FINT_TRI_THICK_ISO(const PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const ISOTROPIC_SECTION& ISO,
                        const TRI_DISPLACEMENTS& TRI_U, const ELEM_LOADS& LOADS, double* f, int op);
void FINT_TRI_THICK_GEN(const PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const TRI_DISPLACEMENTS& TRI_U,
                        const ELEM_LOADS& LOADS, double* f, int op);

#endif
