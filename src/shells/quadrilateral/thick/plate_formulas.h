// plate_formulas.h: curvatures, transverse shears and stiffness of the discrete Kirchhoff-Mindlin quadrilateral, after
// Katili (1993), of one element or of one in every lane.
//
// Curvatures: bilinear rotations and a quadratic increment along each side.
//
//     beta = sum_i N_i beta_i + sum_k P_k (C_k, S_k) dB_k
//
//     N_i      = (1 + xi_i xi)(1 + eta_i eta) / 4
//     P_1, P_3 = (1 - xi^2)(1 - eta) / 2, (1 - xi^2)(1 + eta) / 2
//     P_2, P_4 = (1 + xi)(1 - eta^2) / 2, (1 - xi)(1 - eta^2) / 2
//
// The curvatures (chi x, chi y, chi xy) = B (w, theta x, theta y of each node) are built in
// shells/common/side_fields.h; theta x = -beta y, theta y = beta x.
//
// Transverse shears: covariant components, tied at the mid-sides (Bathe and Dvorkin, 1985) to the tangential shears of
// the sides.
//
//     g_k = -(2/3) phi_k dB_k                             along side k; covariant at its middle: g_k L_k / 2
//
//     g_xi  = (1 - eta) / 2 (g_1 L_1 / 2) - (1 + eta) / 2 (g_3 L_3 / 2)        side 3 runs against xi
//     g_eta = (1 + xi) / 2 (g_2 L_2 / 2)  - (1 - xi) / 2 (g_4 L_4 / 2)         side 4 runs against eta
//     gxz   = g11 g_xi + g12 g_eta,    gyz = g21 g_xi + g22 g_eta
//
// GX and GY are the coefficients of dB_1 to dB_4; LPHI(k) = L_k phi_k, so that g_k L_k / 2 = -(LPHI(k) / 3) dB_k.
//
// Mirror: shells/triangle/thick/plate_formulas.h.
#ifndef FINITES_QUAD_PLATE_FORMULAS_H
#define FINITES_QUAD_PLATE_FORMULAS_H

#include "finites/views.hpp"
#include "shells/common/isotropic_products.h"
#include "shells/common/point_pairs.h"
#include "shells/common/side_fields.h"
#include "shells/common/slopes.h"
#include "shells/quadrilateral/thick/side_constants.h"

// p_xi, p_eta: the derivatives of P_1 to P_4.
template <class OVER = ALL_SIDES, class REAL, class BASE>
inline STRAIN_ROWS<12, REAL> thick_quad_curvatures(REAL xi, REAL eta, REAL g11, REAL g12, REAL g21, REAL g22,
                                                   const BASE* C, const BASE* S, const BASE* A_DELTA) {
  const REAL p_xi[4] = {-xi * (1.0 - eta), (1.0 - eta * eta) / 2.0, -xi * (eta + 1.0), (eta * eta - 1.0) / 2.0};
  const REAL p_eta[4] = {(xi * xi - 1.0) / 2.0, -eta * (xi + 1.0), (1.0 - xi * xi) / 2.0, -eta * (1.0 - xi)};
  const SLOPES<4, REAL> n = bilinear_slopes(xi, eta, g11, g12, g21, g22);
  const SLOPES<4, REAL> p = slopes_of(p_xi, p_eta, g11, g12, g21, g22);
  return thick_curvatures<OVER>(n, p, C, S, A_DELTA);
}

// side_k: the coefficient of dB_k in g_xi (sides 1, 3) or g_eta (sides 2, 4).
template <class OVER = ALL_SIDES, class REAL, class BASE>
inline SHEAR_ROWS<12, REAL> thick_quad_shears(REAL xi, REAL eta, REAL g11, REAL g12, REAL g21, REAL g22,
                                              const BASE* LPHI, const BASE* A_DELTA) {
  const REAL side1 = -(1.0 - eta) * LPHI[0] / 6.0;
  const REAL side2 = -(1.0 + xi) * LPHI[1] / 6.0;
  const REAL side3 = (1.0 + eta) * LPHI[2] / 6.0;
  const REAL side4 = (1.0 - xi) * LPHI[3] / 6.0;
  const VECTOR<4, REAL> GX{{g11 * side1, g12 * side2, g11 * side3, g12 * side4}};
  const VECTOR<4, REAL> GY{{g21 * side1, g22 * side2, g21 * side3, g22 * side4}};
  return thick_shears<OVER>(GX, GY, A_DELTA);
}

// The rows at a pair of points.
template <class OVER, class REAL, class L>
inline THICK_ROWS<12, L> thick_quad_rows(const QUAD_SIDE_VALUES_OF<REAL>& sides, const POINT_PAIR_OF<L>& p) {
  return {thick_quad_curvatures<OVER>(p.xi, p.eta, p.g11, p.g12, p.g21, p.g22, sides.C, sides.S, sides.A_DELTA),
          thick_quad_shears<OVER>(p.xi, p.eta, p.g11, p.g12, p.g21, p.g22, sides.LPHI, sides.A_DELTA)};
}

// K(78)
template <class OVER, class REAL, class L, class SECTION, class SHEAR_SECTION>
inline void integrate_thick_quad(const POINT_PAIRS_OF<L>& p, const QUAD_SIDE_VALUES_OF<REAL>& sides, const SECTION& D,
                                 const SHEAR_SECTION& H, REAL* K) {
  const THICK_ROWS<12, L> B1 = thick_quad_rows<OVER>(sides, p.first);
  const THICK_ROWS<12, L> B2 = thick_quad_rows<OVER>(sides, p.second);
  integrate_packed(p, B1, B2, D, H, K);
}

#endif
