// stiffness.h: the stiffness of the thick triangle.
#ifndef FINITES_TRI_THICK_STIFFNESS_H
#define FINITES_TRI_THICK_STIFFNESS_H

#include "finites/records.h"
#include "shells/common/constitutive.h"
#include "shells/common/elem_loads.h"
#include "shells/common/flat_parts.h"
#include "shells/triangle/geometry.h"

// parts := membrane, bending, transverse shear and drilling in element axes, for MAT_BEHAV 0 and 1. The isotropic form
// takes ISO, the geometry and the modifiers of LOADS; the general one the section and sides of PLATEELEM.
void KSTIF_TRI_THICK_ELAS(const PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const ISOTROPIC_SECTION& ISO,
                          const ELEM_LOADS& LOADS, FLAT_PARTS<3>& parts);

#endif
