// side_section.cpp: the flexibility ratio of a side of a thick plate.
//
//     phi = 12 / L^2  (-H(2, 1) / d  D(3, 2)  +  H(1, 1) / d  D(2, 2)),      d = det H
//
// with the bending section D and the shear section H in the axes normal to (1) and along (2) the side: H(1, 1) / d and
// -H(2, 1) / d are entries of the shear flexibility. For an isotropic section, with D = mb E h^3 / (12 (1 - nu^2)) and
// H = mv SHEAR_FACTOR G h,
//
//     phi = 12 D / (H L^2) = 2 (mb / mv) h^2 / (SHEAR_FACTOR (1 - nu) L^2)
//
// After Katili (1993).
#include "shells/common/side_section.h"

#include "common/small_products.h"
#include "finites/records.h"
#include "shells/common/isotropic_section.h"

void SIDE_ROT_SECTION(double C, double S, MATRIX<3, 3>& R, MATRIX<2, 2>& R2) {
  const double a = S;  // the outward normal (a, b)
  const double b = -C;
  // clang-format off
  R(1, 1) = a * a;        R(1, 2) = b * b;         R(1, 3) = -a * b;
  R(2, 1) = b * b;        R(2, 2) = a * a;         R(2, 3) = a * b;
  R(3, 1) = 2.0 * a * b;  R(3, 2) = -2.0 * a * b;  R(3, 3) = a * a - b * b;
  R2(1, 1) = a;  R2(1, 2) = -b;
  R2(2, 1) = b;  R2(2, 2) = a;
  // clang-format on
}

double side_ratio(const PLATEELEM_RECORD& EL, double C, double S, double L) {
  MATRIX<3, 3> R;
  MATRIX<2, 2> R2;
  SIDE_ROT_SECTION(C, S, R, R2);
  const MATRIX<3, 3> D = congruent(R, EL.D_BENDING);
  const MATRIX<2, 2> H = congruent(R2, EL.D_SHEAR);
  const double d = H(1, 1) * H(2, 2) - H(1, 2) * H(2, 1);
  return 12.0 / (L * L) * (-(H(2, 1) / d) * D(3, 2) + H(1, 1) / d * D(2, 2));
}

double isotropic_side_factor(const PLATEELEM_RECORD& EL, const ELEM_LOADS& LOADS) {
  return isotropic_side_factor(EL.NU1, EL.THICKNESS, stiffness_modifiers(LOADS));
}
