// bending.cpp: curvatures of the discrete Kirchhoff-Mindlin quadrilateral (plate_formulas.h).
//
// Mirror: shells/triangle/thick/bending.cpp.
#include "shells/quadrilateral/thick/bending.h"

#include "finites/records.h"
#include "shells/quadrilateral/geometry.h"
#include "shells/quadrilateral/thick/plate_formulas.h"
#include "shells/quadrilateral/thick/side_constants.h"

void B_BEND_QUAD(const PLATEELEM_RECORD& EL, double xi, double eta, double g11, double g12, double g21, double g22,
                 MATRIX<3, 12>& B) {
  const PLATEELEM_RECORD& P = EL;
  set_rows(thick_quad_curvatures(xi, eta, g11, g12, g21, g22, P.SIDE_C.data(), P.SIDE_S.data(), P.A_DELTA.data()), B);
}

STRAIN_ROWS<12> quad_curvature_rows(const QUADRILATERAL_SIDES& QUAD_SIDES, const QUAD_POINT& J, double xi, double eta) {
  return thick_quad_curvatures(xi, eta, J.G11, J.G12, J.G21, J.G22, QUAD_SIDES.C.data(), QUAD_SIDES.S.data(),
                               QUAD_SIDES.A_DELTA.data());
}

void B_BEND_QUAD_ISO(const QUADRILATERAL_SIDES& QUAD_SIDES, const QUAD_POINT& J, double xi, double eta,
                     MATRIX<3, 12>& B) {
  set_rows(quad_curvature_rows(QUAD_SIDES, J, xi, eta), B);
}
