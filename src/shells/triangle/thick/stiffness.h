// stiffness.h: the packed stiffness of the thick triangle.
#ifndef FINITES_TRI_THICK_STIFFNESS_H
#define FINITES_TRI_THICK_STIFFNESS_H

#include "finites/records.h"
#include "shells/common/constitutive.h"
#include "shells/common/elem_loads.h"
#include "shells/triangle/geometry.h"
#include "shells/triangle/thick/side_constants.h"

// K(171) := membrane, bending, transverse shear and drilling in element axes, for MAT_BEHAV 0 and 1. The isotropic form
// takes ISO, the geometry and the modifiers of LOADS; the general one the section and sides of PLATEELEM.
void KSTIF_TRI_THICK_ELAS(const PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const ISOTROPIC_SECTION& ISO,
                          const ELEM_LOADS& LOADS, double* K);

// K(45): packed bending and transverse shear stiffness. The isotropic form reads TRI_SIDES.
void KB_TRI_THICK(const PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const ISOTROPIC_SECTION& ISO,
                  const TRIANGLE_SIDES& TRI_SIDES, double* K);
void KS_TRI_THICK(const PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const ISOTROPIC_SECTION& ISO,
                  const TRIANGLE_SIDES& TRI_SIDES, double* K);

#endif
