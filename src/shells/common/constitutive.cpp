// constitutive.cpp: section matrices of plates, isotropic (isotropic_section.h) and general.
//
// General, in material axes, with q = 1 - NU1 NU2, the modifiers f(j) by column, c = h^3 / 12:
//
//     membrane  [ f1 h E1 / q      f2 h E2 NU1 / q           0      ]
//               [ f1 h E1 NU2 / q  f2 h E2 / q               0      ]
//               [ 0                0             f3 h G12 CLT_FACTOR_2 ]
//
//     bending   [ f1 c E1 / q      f2 c E1 NU2 / q           0      ]
//               [ f1 c E2 NU1 / q  f2 c E2 / q               0      ]
//               [ 0                0             f3 c G12 CLT_FACTOR_1 ]
//
//     shear     diag(f1 h SHEAR_FACTOR G13, f2 h SHEAR_FACTOR G23)
//
// and then, by ORTHO_ANGLE, T^T D T and S^T D S in element axes. The coupling terms of bending are in transposed
// places: the same where E1 NU2 = E2 NU1, part of the results (docs/decisions.md) elsewhere.
#include "shells/common/constitutive.h"

#include <cmath>

#include "common/constants.h"
#include "common/small_products.h"
#include "finites/records.h"
#include "shells/common/isotropic_section.h"

ISOTROPIC_SECTION PLATE_D_ISOTROPIC(const PLATEELEM_RECORD& EL, int membrane_only, const ELEM_LOADS& LOADS) {
  return isotropic_section(PLATE_CONSTANTS<double>{EL.E1, EL.NU1, EL.THICKNESS}, membrane_only,
                           stiffness_modifiers(LOADS));
}

void set_thermal_strains(PLATEELEM_RECORD& EL, const ELEM_LOADS& LOADS) {
  EL.THERMAL_M1 = EL.ALPHA1 * LOADS(LOAD_TEMPERATURE);
  EL.THERMAL_M2 = EL.ALPHA2 * LOADS(LOAD_TEMPERATURE);
  EL.THERMAL_B1 = EL.ALPHA1 * LOADS(LOAD_TEMPERATURE_DIFF);
  EL.THERMAL_B2 = EL.ALPHA2 * LOADS(LOAD_TEMPERATURE_DIFF);
}

bool has_thermal_strains(const PLATEELEM_RECORD& EL) {
  const PLATEELEM_RECORD& P = EL;
  return P.THERMAL_M1 != 0.0 || P.THERMAL_M2 != 0.0 || P.THERMAL_B1 != 0.0 || P.THERMAL_B2 != 0.0;
}

namespace {

// Cosine and sine in single precision.
struct direction_of_angle {
  float c, s;
  explicit direction_of_angle(double t) : c(static_cast<float>(std::cos(t))), s(static_cast<float>(std::sin(t))) {}
};

MATRIX<3, 3> tensor_rotation(const direction_of_angle& d) {
  const float cc = d.c * d.c;
  const float ss = d.s * d.s;
  const float cs = d.c * d.s;
  MATRIX<3, 3> T;
  T(1, 1) = static_cast<double>(cc);
  T(2, 1) = static_cast<double>(ss);
  T(3, 1) = -2.0 * static_cast<double>(d.c) * static_cast<double>(d.s);  // the only term multiplied in double precision
  T(1, 2) = static_cast<double>(ss);
  T(2, 2) = static_cast<double>(cc);
  T(3, 2) = static_cast<double>(2.0F * cs);
  T(1, 3) = static_cast<double>(cs);
  T(2, 3) = static_cast<double>(-cs);
  T(3, 3) = static_cast<double>(cc - ss);
  return T;
}

MATRIX<2, 2> shear_rotation(const direction_of_angle& d) {
  const double c = static_cast<double>(d.c);
  const double s = static_cast<double>(d.s);
  MATRIX<2, 2> S;
  S(1, 1) = c;
  S(2, 1) = -s;
  S(1, 2) = s;
  S(2, 2) = c;
  return S;
}

}  // namespace

MATRIX<3, 3> ROT_TENSOR_3(double t) { return tensor_rotation(direction_of_angle(t)); }

MATRIX<2, 2> ROT_SHEAR_2(double t) { return shear_rotation(direction_of_angle(t)); }

namespace {

// E1 NU2 is the entry (2, 1). With a split shear the entry (3, 3) goes to the matrix that is integrated at the centre.
void set_membrane(PLATEELEM_RECORD& EL, int split_shear) {
  PLATEELEM_RECORD& P = EL;
  const double h = P.THICKNESS;
  const double q = 1.0 - P.NU1 * P.NU2;
  MATRIX<3, 3>& D = P.D_MEMBRANE_NORMAL;
  D(1, 1) = P.MOD_MEMBRANE(1) * h * P.E1 / q;
  D(2, 1) = P.MOD_MEMBRANE(1) * h * P.E1 * P.NU2 / q;
  D(1, 2) = P.MOD_MEMBRANE(2) * h * P.E2 * P.NU1 / q;
  D(2, 2) = P.MOD_MEMBRANE(2) * h * P.E2 / q;
  MATRIX<3, 3>& D_OF_SHEAR = split_shear == 1 ? P.D_MEMBRANE_SHEAR : D;
  D_OF_SHEAR(3, 3) = P.MOD_MEMBRANE(3) * h * P.G12 * P.CLT_FACTOR_2;
}

// E1 NU2 is the entry (1, 2). The modifiers go by column, as in the membrane.
void set_bending_and_shear(PLATEELEM_RECORD& EL) {
  PLATEELEM_RECORD& P = EL;
  const double h = P.THICKNESS;
  const double q = 1.0 - P.NU1 * P.NU2;
  const double c = h * h * h / 12.0;
  MATRIX<3, 3>& D = P.D_BENDING;
  D(1, 1) = P.MOD_BENDING(1) * c * P.E1 / q;
  D(1, 2) = P.MOD_BENDING(2) * c * P.E1 * P.NU2 / q;
  D(2, 1) = P.MOD_BENDING(1) * c * P.E2 * P.NU1 / q;
  D(2, 2) = P.MOD_BENDING(2) * c * P.E2 / q;
  D(3, 3) = P.MOD_BENDING(3) * c * P.G12 * P.CLT_FACTOR_1;
  P.D_SHEAR(1, 1) = P.MOD_SHEAR(1) * h * SHEAR_FACTOR * P.G13;
  P.D_SHEAR(2, 2) = P.MOD_SHEAR(2) * h * SHEAR_FACTOR * P.G23;
}

void rotate_matrices(PLATEELEM_RECORD& EL) {
  const direction_of_angle direction(static_cast<double>(EL.ORTHO_ANGLE));
  const MATRIX<3, 3> T = tensor_rotation(direction);
  const MATRIX<2, 2> S = shear_rotation(direction);
  EL.D_MEMBRANE_NORMAL = congruent(T, EL.D_MEMBRANE_NORMAL);
  EL.D_MEMBRANE_SHEAR = congruent(T, EL.D_MEMBRANE_SHEAR);
  EL.D_BENDING = congruent(T, EL.D_BENDING);
  EL.D_SHEAR = congruent(S, EL.D_SHEAR);
}

}  // namespace

void PLATE_D_GENERAL(PLATEELEM_RECORD& EL, int split_shear, int membrane_only) {
  PLATEELEM_RECORD& P = EL;
  P.D_MEMBRANE_TOTAL = P.D_MEMBRANE_NORMAL = P.D_MEMBRANE_SHEAR = P.D_BENDING = MATRIX<3, 3>{};
  P.D_SHEAR = MATRIX<2, 2>{};
  set_membrane(EL, split_shear);
  if (membrane_only != 1) set_bending_and_shear(EL);
  rotate_matrices(EL);
  for (int j = 1; j <= 3; ++j) {
    for (int i = 1; i <= 3; ++i) P.D_MEMBRANE_TOTAL(i, j) = P.D_MEMBRANE_NORMAL(i, j) + P.D_MEMBRANE_SHEAR(i, j);
  }
}
