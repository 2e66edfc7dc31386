// bending.cpp: curvatures of the discrete Kirchhoff-Mindlin triangle (plate_formulas.h).
//
// Mirror: shells/quadrilateral/thick/bending.cpp.
#include "shells/triangle/thick/bending.h"

#include "finites/records.h"
#include "shells/common/side_fields.h"
#include "shells/triangle/geometry.h"
#include "shells/triangle/thick/plate_formulas.h"
#include "shells/triangle/thick/side_constants.h"

SLOPES<3> tri_slopes_general(const PLATEELEM_RECORD& EL, double detj) {
  SLOPES<3> n;
  for (int i = 1; i <= 3; ++i) {
    const int j = i % 3 + 1;  // the side opposite to node i runs from j to k
    const int k = j % 3 + 1;
    n.X(i) = -(EL.LOCAL_XYZ(2, k) - EL.LOCAL_XYZ(2, j)) / detj;
    n.Y(i) = (EL.LOCAL_XYZ(1, k) - EL.LOCAL_XYZ(1, j)) / detj;
  }
  return n;
}

SLOPES<3> tri_slopes_iso(const TRIANGLE_GEOMETRY& TRI) { return tri_linear_slopes(TRI); }

void B_BEND_TRI(const PLATEELEM_RECORD& EL, double xi, double eta, double g11, double g12, double g21, double g22,
                double detj, MATRIX<3, 9>& B) {
  const PLATEELEM_RECORD& P = EL;
  const SLOPES<3> n = tri_slopes_general(EL, detj);
  const SLOPES<3> p = tri_side_slopes(xi, eta, g11, g12, g21, g22);
  set_rows(thick_curvatures(n, p, P.SIDE_C.data(), P.SIDE_S.data(), P.A_DELTA.data()), B);
}

STRAIN_ROWS<9> tri_curvature_rows(const TRIANGLE_GEOMETRY& TRI, const TRIANGLE_SIDES& TRI_SIDES, double xi, double eta,
                                  const MATRIX<3, 9>& A_DELTA) {
  const SLOPES<3> n = tri_slopes_iso(TRI);
  const SLOPES<3> p = tri_side_slopes(xi, eta, TRI.G11, TRI.G12, TRI.G21, TRI.G22);
  return thick_curvatures(n, p, TRI_SIDES.C.data(), TRI_SIDES.S.data(), A_DELTA.data());
}

void B_BEND_TRI_ISO(const TRIANGLE_GEOMETRY& TRI, const TRIANGLE_SIDES& TRI_SIDES, double xi, double eta,
                    const MATRIX<3, 9>& A_DELTA, MATRIX<3, 9>& B) {
  set_rows(tri_curvature_rows(TRI, TRI_SIDES, xi, eta, A_DELTA), B);
}
