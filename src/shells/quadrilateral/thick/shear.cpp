// shear.cpp: transverse shears of the discrete Kirchhoff-Mindlin quadrilateral (plate_formulas.h).
//
// Mirror: shells/triangle/thick/shear.cpp.
#include "shells/quadrilateral/thick/shear.h"

#include "finites/records.h"
#include "shells/quadrilateral/geometry.h"
#include "shells/quadrilateral/thick/plate_formulas.h"
#include "shells/quadrilateral/thick/side_constants.h"

void B_SHEAR_QUAD(const PLATEELEM_RECORD& EL, double xi, double eta, double g11, double g12, double g21, double g22,
                  MATRIX<2, 12>& B) {
  const PLATEELEM_RECORD& P = EL;
  set_rows(thick_quad_shears(xi, eta, g11, g12, g21, g22, P.SIDE_LPHI.data(), P.A_DELTA.data()), B);
}

SHEAR_ROWS<12> quad_shear_rows(const QUADRILATERAL_SIDES& QUAD_SIDES, const QUAD_POINT& J, double xi, double eta) {
  return thick_quad_shears(xi, eta, J.G11, J.G12, J.G21, J.G22, QUAD_SIDES.LPHI.data(), QUAD_SIDES.A_DELTA.data());
}

void B_SHEAR_QUAD_ISO(const QUADRILATERAL_SIDES& QUAD_SIDES, const QUAD_POINT& J, double xi, double eta,
                      MATRIX<2, 12>& B) {
  set_rows(quad_shear_rows(QUAD_SIDES, J, xi, eta), B);
}
