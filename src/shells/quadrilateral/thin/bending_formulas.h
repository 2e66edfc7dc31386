// bending_formulas.h: the discrete Kirchhoff quadrilateral, after Batoz and Ben Tahar (1982), of one element or of one
// in every lane.
//
// The curvatures are the derivatives of the rotations (rotations.h). With U = (w, theta x, theta y) of each node
//
//     beta x = Hx U,  beta y = Hy U,      theta x = dw/dy = -beta y,  theta y = -dw/dx = beta x
//
//     kappa x    = beta x,x              B.X  = Hx,x
//     kappa y    = beta y,y              B.Y  = Hy,y
//     2 kappa xy = beta x,y + beta y,x   B.XY = Hx,y + Hy,x
//
// Hx and Hy are linear in the eight functions: their slopes are those of the functions in the place of the functions.
//
//     K(i, j) = sum_p  (B^T DB B)(i, j) w DET,      1 <= i <= j <= 12
//
// In these signs w = x^2/2 has the curvatures (-1, 0, 0).
//
// Mirror: shells/triangle/thin/bending_formulas.h.
#ifndef FINITES_QUAD_BENDING_FORMULAS_H
#define FINITES_QUAD_BENDING_FORMULAS_H

#include "finites/views.hpp"
#include "shells/common/isotropic_products.h"
#include "shells/common/point_pairs.h"
#include "shells/common/slopes.h"
#include "shells/quadrilateral/geometry.h"
#include "shells/quadrilateral/rotations.h"
#include "shells/quadrilateral/thin/bending.h"

// Of the functions N_1 to N_8 of rotations.cpp: corners 1 to 4, then the mid-sides of 1-2, 2-3, 3-4, 4-1.
template <class REAL>
inline DKQ_DERIVATIVES_OF<REAL> dkq_shape_derivatives(REAL xi, REAL eta) {
  DKQ_DERIVATIVES_OF<REAL> NS;
  // clang-format off
  NS.XI = {{(1.0 - eta) / 4.0 * (2.0 * xi + eta),
                 (1.0 - eta) / 4.0 * (2.0 * xi - eta),
                 (1.0 + eta) / 4.0 * (2.0 * xi + eta),
                 (1.0 + eta) / 4.0 * (2.0 * xi - eta),
                 -xi * (1.0 - eta),
                 (1.0 - eta) * (1.0 + eta) / 2.0,
                 -xi * (1.0 + eta),
                 -(1.0 - eta) * (1.0 + eta) / 2.0}};
  NS.ETA = {{(1.0 - xi) / 4.0 * (2.0 * eta + xi),
                  (1.0 + xi) / 4.0 * (2.0 * eta - xi),
                  (1.0 + xi) / 4.0 * (2.0 * eta + xi),
                  (1.0 - xi) / 4.0 * (2.0 * eta - xi),
                  -(1.0 - xi) * (1.0 + xi) / 2.0,
                  -eta * (1.0 + xi),
                  (1.0 - xi) * (1.0 + xi) / 2.0,
                  -eta * (1.0 - xi)}};
  // clang-format on
  return NS;
}

template <class BASE, class REAL>
inline STRAIN_ROWS<12, REAL> dkq_curvatures_at(const QUADRILATERAL_GEOMETRY_OF<BASE>& QUAD, REAL xi, REAL eta, REAL g11,
                                               REAL g12, REAL g21, REAL g22) {
  const DKQ_DERIVATIVES_OF<REAL> NS = dkq_shape_derivatives(xi, eta);
  const SLOPES<8, REAL> n = slopes_of(NS.XI.V, NS.ETA.V, g11, g12, g21, g22);
  STRAIN_ROWS<12, REAL> B;
  VECTOR<12, REAL> HX_Y;
  VECTOR<12, REAL> HY_X;
  dkq_rotation_functions(QUAD, n.X, B.X, HY_X);
  dkq_rotation_functions(QUAD, n.Y, HX_Y, B.Y);
  for (int i = 1; i <= 12; ++i) B.XY(i) = HY_X(i) + HX_Y(i);
  return B;
}

template <class BASE, class L>
inline STRAIN_ROWS<12, L> dkq_curvatures_at(const QUADRILATERAL_GEOMETRY_OF<BASE>& QUAD, const POINT_PAIR_OF<L>& p) {
  return dkq_curvatures_at(QUAD, p.xi, p.eta, p.g11, p.g12, p.g21, p.g22);
}

// K(78)
template <class REAL, class L, class SECTION>
inline void dkq_stiffness(const QUADRILATERAL_GEOMETRY_OF<REAL>& QUAD, const SECTION& D,
                          const POINT_PAIRS_OF<L>& points, REAL* K) {
  const STRAIN_ROWS<12, L> B1 = dkq_curvatures_at(QUAD, points.first);
  const STRAIN_ROWS<12, L> B2 = dkq_curvatures_at(QUAD, points.second);
  integrate_packed(points, B1, B2, D, K);
}

#endif
