// bending.cpp: curvatures of the discrete Kirchhoff-Mindlin triangle, after Katili (1993): linear rotations and a
// quadratic increment along each side.
//
//     beta = sum_i N_i beta_i + sum_k P_k (C_k, S_k) dB_k,      lambda = 1 - xi - eta
//
//     N_1, N_2, N_3 = lambda, xi, eta                 n.X(i) = -(y_k - y_j) / detj,    n.Y(i) = (x_k - x_j) / detj
//     P_1, P_2, P_3 = 4 lambda xi, 4 xi eta, 4 eta lambda
//
// j and k being the nodes after node i. The curvatures (chi x, chi y, chi xy) = B (w, theta x, theta y of each node)
// are built in shells/common/side_fields.h; theta x = -beta y, theta y = beta x.
//
// Mirror: shells/quadrilateral/thick/bending.cpp.
#include "shells/triangle/thick/bending.h"

#include "finites/records.h"
#include "shells/common/side_fields.h"
#include "shells/triangle/geometry.h"
#include "shells/triangle/thick/side_constants.h"

namespace {

// p: the slopes of P_1, P_2, P_3.
template <class REAL>
SLOPES<3, REAL> side_slopes(REAL xi, REAL eta, REAL g11, REAL g12, REAL g21, REAL g22) {
  const REAL lambda = 1.0 - xi - eta;
  const REAL dxi[3] = {4.0 * (lambda - xi), 4.0 * eta, -4.0 * eta};
  const REAL deta[3] = {-4.0 * xi, 4.0 * xi, 4.0 * (lambda - eta)};
  return slopes_of(dxi, deta, g11, g12, g21, g22);
}

}  // namespace

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

SLOPES<3> tri_slopes_iso(const TRIANGLE_GEOMETRY& TRI) {
  const double detj = TRI.TWO_AREA;
  return {{{-TRI.Y32 / detj, -TRI.Y13 / detj, -TRI.Y21 / detj}}, {{TRI.X32 / detj, TRI.X13 / detj, TRI.X21 / detj}}};
}

void B_BEND_TRI(const PLATEELEM_RECORD& EL, double xi, double eta, double g11, double g12, double g21, double g22,
                double detj, MATRIX<3, 9>& B) {
  const PLATEELEM_RECORD& P = EL;
  const SLOPES<3> n = tri_slopes_general(EL, detj);
  const SLOPES<3> p = side_slopes(xi, eta, g11, g12, g21, g22);
  set_rows(thick_curvatures(n, p, P.SIDE_C.data(), P.SIDE_S.data(), P.A_DELTA.data()), B);
}

STRAIN_ROWS<9> tri_curvature_rows(const TRIANGLE_GEOMETRY& TRI, const TRIANGLE_SIDES& TRI_SIDES, double xi, double eta,
                                  const MATRIX<3, 9>& A_DELTA) {
  const SLOPES<3> n = tri_slopes_iso(TRI);
  const SLOPES<3> p = side_slopes(xi, eta, TRI.G11, TRI.G12, TRI.G21, TRI.G22);
  return thick_curvatures(n, p, TRI_SIDES.C.data(), TRI_SIDES.S.data(), A_DELTA.data());
}

void B_BEND_TRI_ISO(const TRIANGLE_GEOMETRY& TRI, const TRIANGLE_SIDES& TRI_SIDES, double xi, double eta,
                    const MATRIX<3, 9>& A_DELTA, MATRIX<3, 9>& B) {
  set_rows(tri_curvature_rows(TRI, TRI_SIDES, xi, eta, A_DELTA), B);
}

template <class OVER>
STRAIN_ROWS<9, LANES> tri_curvature_pair(const TRI_SIDE_VALUES& sides, const SLOPES<3>& n, const POINT_PAIR& p) {
  const SLOPES<3, LANES> n_pair{{{both(n.X(1)), both(n.X(2)), both(n.X(3))}},
                                {{both(n.Y(1)), both(n.Y(2)), both(n.Y(3))}}};
  const SLOPES<3, LANES> p_pair = side_slopes(p.xi, p.eta, p.g11, p.g12, p.g21, p.g22);
  return thick_curvatures<OVER>(n_pair, p_pair, sides.C, sides.S, sides.A_DELTA);
}

template STRAIN_ROWS<9, LANES> tri_curvature_pair<ALL_SIDES>(const TRI_SIDE_VALUES&, const SLOPES<3>&,
                                                             const POINT_PAIR&);
template STRAIN_ROWS<9, LANES> tri_curvature_pair<MEETING_SIDES>(const TRI_SIDE_VALUES&, const SLOPES<3>&,
                                                                 const POINT_PAIR&);
