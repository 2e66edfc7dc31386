// side_section.h: the flexibility ratio of a side of a thick plate.
//
// A side bends as a beam that deforms in shear: its ratio phi is 12 / L^2 times bending stiffness over shear stiffness
// along the side (Katili, 1993). The ratios of a thin plate are near 0, and the element is then a discrete Kirchhoff
// plate.
#ifndef FINITES_SIDE_SECTION_H
#define FINITES_SIDE_SECTION_H

#include "finites/records.h"
#include "finites/views.hpp"
#include "shells/common/elem_loads.h"

// R and R2, so that R^T D R and R2^T H R2 are the section in the axes normal to and along a side of direction (C, S).
void SIDE_ROT_SECTION(double C, double S, MATRIX<3, 3>& R, MATRIX<2, 2>& R2);

// phi of a side of length L from D_BENDING and D_SHEAR of PLATEELEM. A section without shear stiffness divides by zero.
double side_ratio(const PLATEELEM_RECORD& EL, double C, double S, double L);

// phi L^2 of an isotropic section, with the modifiers of bending and shear; where the shear modifier is 0, negative or
// NaN, the ratio of the two is taken as 1.
double isotropic_side_factor(const PLATEELEM_RECORD& EL, const ELEM_LOADS& LOADS);

#endif
