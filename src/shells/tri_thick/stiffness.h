// stiffness.h: the packed stiffness of the thick triangle.
#ifndef FINITES_TRI_THICK_STIFFNESS_H
#define FINITES_TRI_THICK_STIFFNESS_H

#include "element_calls/elem_loads.h"

// K(171) := membrane, bending, transverse shear and drilling in element axes, for MAT_BEHAV 0 and 1. The isotropic form
// takes ISO, the geometry store and the modifiers of LOADS; the general one the section and sides of PLATEELEM.
void KSTIF_TRI_THICK_ELAS(const ELEM_LOADS& LOADS, double* K);

// K(45): packed bending and transverse shear stiffness. The isotropic form reads TRI_SIDES.
void KB_TRI_THICK(double* K);
void KS_TRI_THICK(double* K);

#endif
