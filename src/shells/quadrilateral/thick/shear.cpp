// shear.cpp: transverse shears of the discrete Kirchhoff-Mindlin quadrilateral: covariant components, tied at the
// mid-sides (Bathe and Dvorkin, 1985) to the tangential shears -(2/3) phi dB of the sides.
//
// Mirror: shells/triangle/thick/shear.cpp.
#include "shells/quadrilateral/thick/shear.h"

#include "finites/records.h"
#include "shells/common/side_fields.h"
#include "shells/quadrilateral/geometry.h"
#include "shells/quadrilateral/thick/side_constants.h"

namespace {

// The shear along xi is linear between sides 1 and 3, that along eta between sides 2 and 4.
SHEAR_ROWS<12> shear_rows(double xi, double eta, double g11, double g12, double g21, double g22, const double* LPHI,
                          const double* A_DELTA) {
  const double side1 = -(1.0 - eta) * LPHI[0] / 6.0;
  const double side2 = -(1.0 + xi) * LPHI[1] / 6.0;
  const double side3 = (1.0 + eta) * LPHI[2] / 6.0;
  const double side4 = (1.0 - xi) * LPHI[3] / 6.0;
  const VECTOR<4> GX{{g11 * side1, g12 * side2, g11 * side3, g12 * side4}};
  const VECTOR<4> GY{{g21 * side1, g22 * side2, g21 * side3, g22 * side4}};
  return thick_shears(GX, GY, A_DELTA);
}

}  // namespace

void B_SHEAR_QUAD(const PLATEELEM_RECORD& EL, double xi, double eta, double g11, double g12, double g21, double g22,
                  MATRIX<2, 12>& B) {
  const PLATEELEM_RECORD& P = EL;
  set_rows(shear_rows(xi, eta, g11, g12, g21, g22, P.SIDE_LPHI.data(), P.A_DELTA.data()), B);
}

SHEAR_ROWS<12> quad_shear_rows(const QUADRILATERAL_SIDES& QUAD_SIDES, const QUAD_POINT& J, double xi, double eta) {
  return shear_rows(xi, eta, J.G11, J.G12, J.G21, J.G22, QUAD_SIDES.LPHI.data(), QUAD_SIDES.A_DELTA.data());
}

void B_SHEAR_QUAD_ISO(const QUADRILATERAL_SIDES& QUAD_SIDES, const QUAD_POINT& J, double xi, double eta,
                      MATRIX<2, 12>& B) {
  set_rows(quad_shear_rows(QUAD_SIDES, J, xi, eta), B);
}
