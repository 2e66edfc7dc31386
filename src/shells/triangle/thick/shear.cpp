// shear.cpp: transverse shears of the discrete Kirchhoff-Mindlin triangle (plate_formulas.h).
//
// Mirror: shells/quadrilateral/thick/shear.cpp.
#include "shells/triangle/thick/shear.h"

#include "finites/records.h"
#include "shells/triangle/thick/plate_formulas.h"
#include "shells/triangle/thick/side_constants.h"

void B_SHEAR_TRI(const PLATEELEM_RECORD& EL, double xi, double eta, MATRIX<2, 9>& B) {
  const PLATEELEM_RECORD& P = EL;
  set_rows(thick_tri_shears(xi, eta, P.SIDE_C.data(), P.SIDE_S.data(), P.SIDE_DET.data(), P.SIDE_PHI.data(),
                            P.A_DELTA.data()),
           B);
}

SHEAR_ROWS<9> tri_shear_rows(const TRIANGLE_SIDES& TRI_SIDES, double xi, double eta) {
  const TRIANGLE_SIDES& T = TRI_SIDES;
  return thick_tri_shears(xi, eta, T.C.data(), T.S.data(), T.D.data(), T.PHI.data(), T.A_DELTA.data());
}

void B_SHEAR_TRI_ISO(const TRIANGLE_SIDES& TRI_SIDES, double xi, double eta, MATRIX<2, 9>& B) {
  set_rows(tri_shear_rows(TRI_SIDES, xi, eta), B);
}
