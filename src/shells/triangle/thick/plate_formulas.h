// plate_formulas.h: curvatures, transverse shears and stiffness of the discrete Kirchhoff-Mindlin triangle, after
// Katili (1993), of one element or of one in every lane.
//
// Curvatures: linear rotations and a quadratic increment along each side.
//
//     beta = sum_i N_i beta_i + sum_k P_k (C_k, S_k) dB_k,      lambda = 1 - xi - eta
//
//     N_1, N_2, N_3 = lambda, xi, eta                 n.X(i) = -(y_k - y_j) / detj,    n.Y(i) = (x_k - x_j) / detj
//     P_1, P_2, P_3 = 4 lambda xi, 4 xi eta, 4 eta lambda
//
// j and k being the nodes after node i. The curvatures (chi x, chi y, chi xy) = B (w, theta x, theta y of each node)
// are built in shells/common/side_fields.h; theta x = -beta y, theta y = beta x.
//
// Transverse shears: a linear field whose value at each corner comes from the tangential shears of the two sides that
// meet there.
//
//     g_k = -(2/3) phi_k dB_k                             along side k
//
//     corner 1: gxz = (g_1 S3 - g_3 S1) / D1,    gyz = (C1 g_3 - C3 g_1) / D1,    D1 = C1 S3 - C3 S1
//     corner 2: gxz = (g_2 S1 - g_1 S2) / D2,    gyz = (C2 g_1 - C1 g_2) / D2,    D2 = C2 S1 - C1 S2
//     corner 3: gxz = (g_3 S2 - g_2 S3) / D3,    gyz = (C3 g_2 - C2 g_3) / D3,    D3 = C3 S2 - C2 S3
//
// interpolated by lambda = 1 - xi - eta, xi and eta. GX and GY are the coefficients of dB_1, dB_2, dB_3.
//
// Mirror: shells/quadrilateral/thick/plate_formulas.h.
#ifndef FINITES_TRI_PLATE_FORMULAS_H
#define FINITES_TRI_PLATE_FORMULAS_H

#include "common/lane_pair.h"
#include "finites/views.hpp"
#include "shells/common/isotropic_products.h"
#include "shells/common/point_pairs.h"
#include "shells/common/side_fields.h"
#include "shells/common/slopes.h"
#include "shells/triangle/geometry.h"
#include "shells/triangle/thick/side_constants.h"

// The slopes n of the linear functions.
template <class REAL>
inline SLOPES<3, REAL> tri_linear_slopes(const TRIANGLE_GEOMETRY_OF<REAL>& TRI) {
  const REAL detj = TRI.TWO_AREA;
  return {{{-TRI.Y32 / detj, -TRI.Y13 / detj, -TRI.Y21 / detj}}, {{TRI.X32 / detj, TRI.X13 / detj, TRI.X21 / detj}}};
}

// p: the slopes of P_1, P_2, P_3.
template <class REAL>
inline SLOPES<3, REAL> tri_side_slopes(REAL xi, REAL eta, REAL g11, REAL g12, REAL g21, REAL g22) {
  const REAL lambda = 1.0 - xi - eta;
  const REAL dxi[3] = {4.0 * (lambda - xi), 4.0 * eta, -4.0 * eta};
  const REAL deta[3] = {-4.0 * xi, 4.0 * xi, 4.0 * (lambda - eta)};
  return slopes_of(dxi, deta, g11, g12, g21, g22);
}

template <class OVER = ALL_SIDES, class REAL, class BASE>
inline SHEAR_ROWS<9, REAL> thick_tri_shears(REAL xi, REAL eta, const BASE* C, const BASE* S, const BASE* D,
                                            const BASE* phi, const BASE* A_DELTA) {
  const REAL lambda = 1.0 - xi - eta;
  const BASE C1 = C[0], C2 = C[1], C3 = C[2];
  const BASE S1 = S[0], S2 = S[1], S3 = S[2];
  const BASE D1 = D[0], D2 = D[1], D3 = D[2];
  const VECTOR<3, REAL> GX{{phi[0] * (S2 / D2 * xi - S3 / D1 * lambda) / 1.5,
                            phi[1] * (S3 / D3 * eta - S1 / D2 * xi) / 1.5,
                            phi[2] * (S1 / D1 * lambda - S2 / D3 * eta) / 1.5}};
  const VECTOR<3, REAL> GY{{phi[0] * (C3 / D1 * lambda - C2 / D2 * xi) / 1.5,
                            phi[1] * (C1 / D2 * xi - C3 / D3 * eta) / 1.5,
                            phi[2] * (C2 / D3 * eta - C1 / D1 * lambda) / 1.5}};
  return thick_shears<OVER>(GX, GY, A_DELTA);
}

// The rows at a pair of points.
template <class OVER, class REAL, class L>
inline THICK_ROWS<9, L> thick_tri_rows(const TRI_SIDE_VALUES_OF<REAL>& T, const SLOPES<3, REAL>& n,
                                       const POINT_PAIR_OF<L>& p) {
  const SLOPES<3, L> n_pair{{{both(n.X(1)), both(n.X(2)), both(n.X(3))}}, {{both(n.Y(1)), both(n.Y(2)), both(n.Y(3))}}};
  const SLOPES<3, L> p_pair = tri_side_slopes(p.xi, p.eta, p.g11, p.g12, p.g21, p.g22);
  return {thick_curvatures<OVER>(n_pair, p_pair, T.C, T.S, T.A_DELTA),
          thick_tri_shears<OVER>(p.xi, p.eta, T.C, T.S, T.D, T.PHI, T.A_DELTA)};
}

// K(45)
template <class OVER, class REAL, class L, class SECTION, class SHEAR_SECTION>
inline void integrate_thick_tri(const POINT_PAIRS_OF<L>& p, const TRI_SIDE_VALUES_OF<REAL>& sides,
                                const SLOPES<3, REAL>& n, const SECTION& D, const SHEAR_SECTION& H, REAL* K) {
  const THICK_ROWS<9, L> B1 = thick_tri_rows<OVER>(sides, n, p.first);
  const THICK_ROWS<9, L> B2 = thick_tri_rows<OVER>(sides, n, p.second);
  integrate_packed(p, B1, B2, D, H, K);
}

#endif
