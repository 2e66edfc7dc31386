// stiffness.h: the packed stiffness of the thick quadrilateral.
#ifndef FINITES_QUAD_THICK_STIFFNESS_H
#define FINITES_QUAD_THICK_STIFFNESS_H

#include "finites/records.h"
#include "shells/common/constitutive.h"
#include "shells/common/elem_loads.h"
#include "shells/quadrilateral/geometry.h"

// K(300) := membrane, bending and transverse shear in element axes, for MAT_BEHAV 0 and 1. The isotropic form takes
// ISO, the geometry and the modifiers of LOADS; the general one the section and sides of PLATEELEM.
//
//   split  in  1: the in-plane shear acts at the centre
void KSTIF_QUAD_THICK_ISO(const PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD, const ISOTROPIC_SECTION& ISO,
                          const ELEM_LOADS& LOADS, int split, double* K);
void KSTIF_QUAD_THICK_GEN(const PLATEELEM_RECORD& EL, int split, double* K);

#endif
