// bending_formulas.h: the discrete Kirchhoff triangle, after Batoz, Bathe and Ho (1980), of one element or of one in
// every lane.
//
// The rotations are quadratic on each side and follow the slope of w at the nodes and the mid-sides; w is defined on
// the sides only. With U = (w, theta x, theta y) of each node
//
//     beta x = Hx U,  beta y = Hy U,      theta x = dw/dy = -beta y,  theta y = -dw/dx = beta x
//
// and for corner i, side k after it, side m before it (sides 4: 2-3, 5: 3-1, 6: 1-2), with the quadratic functions N of
// six nodes and the edge coefficients P, Q, R, T of DKT_EDGE_COEFFICIENTS:
//
//     Hx(w)       = (P_k N_k - P_m N_m) / 4
//     Hx(theta x) = (Q_k N_k + Q_m N_m) / 4
//     Hx(theta y) = N_i - ((1 - R_k) N_k + (1 - R_m) N_m) / 4
//     Hy(w)       = (T_k N_k - T_m N_m) / 4
//     Hy(theta x) = -N_i - ((2 - R_k) N_k + (2 - R_m) N_m) / 4
//     Hy(theta y) = -(Q_k N_k + Q_m N_m) / 4
//
//     N_1 = s (2 s - 1)   N_2 = xi (2 xi - 1)   N_3 = eta (2 eta - 1)   N_4 = 4 xi eta   N_5 = 4 eta s   N_6 = 4 xi s
//
// with s = 1 - xi - eta. The coefficients of the paper are a = P/6, b = Q/4, c = (1 - R)/4, d = T/6, e = (R - 2)/4.
//
//     kappa x    = beta x,x              B.X  = Hx,x
//     kappa y    = beta y,y              B.Y  = Hy,y
//     2 kappa xy = beta x,y + beta y,x   B.XY = Hx,y + Hy,x
//
//     K(i, j) = sum_p  (B^T DB B)(i, j) w TWO_AREA,      1 <= i <= j <= 9
//
// In these signs w = x^2/2 has the curvatures (-1, 0, 0).
//
// Mirror: shells/quadrilateral/thin/bending_formulas.h.
#ifndef FINITES_TRI_BENDING_FORMULAS_H
#define FINITES_TRI_BENDING_FORMULAS_H

#include "finites/views.hpp"
#include "shells/common/isotropic_products.h"
#include "shells/common/point_pairs.h"
#include "shells/common/slopes.h"
#include "shells/triangle/geometry.h"
#include "shells/triangle/thin/bending.h"

// Of a side with the differences X, Y and r = 1 / (X^2 + Y^2):
//
//     P = 6 r X,    Q = 3 r X Y,    R = 3 r Y^2,    T = 6 r Y;      side 6 has Y = 0: Q6 = R6 = T6 = 0
template <class REAL>
inline DKT_EDGES_OF<REAL> dkt_edges(const TRIANGLE_GEOMETRY_OF<REAL>& TRI) {
  const REAL r32 = 1.0 / (TRI.X32 * TRI.X32 + TRI.Y32 * TRI.Y32);
  const REAL r13 = 1.0 / (TRI.X13 * TRI.X13 + TRI.Y13 * TRI.Y13);
  DKT_EDGES_OF<REAL> EDGES;
  EDGES.P4 = r32 * 6.0 * TRI.X32;
  EDGES.P5 = r13 * 6.0 * TRI.X13;
  EDGES.P6 = 1.0 / (TRI.X21 * TRI.X21) * 6.0 * TRI.X21;  // not 6 / X21: rounded as the others are
  EDGES.Q4 = r32 * 3.0 * TRI.X32 * TRI.Y32;
  EDGES.Q5 = r13 * 3.0 * TRI.X13 * TRI.Y13;
  EDGES.R4 = r32 * 3.0 * TRI.Y32 * TRI.Y32;
  EDGES.R5 = r13 * 3.0 * TRI.Y13 * TRI.Y13;
  EDGES.T4 = r32 * 6.0 * TRI.Y32;
  EDGES.T5 = r13 * 6.0 * TRI.Y13;
  return EDGES;
}

// Hx and Hy, or their derivatives from the derivatives of the functions that they are linear in: of each node L, its
// area coordinate, and C = L (3 L - 2); of each side M = N / 4, the product of the area coordinates at its ends. With
// N_i - M_k - M_m = C and N_i + 2 M_k + 2 M_m = L the functions above become
//
//     Hx(w) = P_k M_k - P_m M_m,    Hx(theta x) = Q_k M_k + Q_m M_m,    Hx(theta y) = C + R_k M_k + R_m M_m
//     Hy(w) = T_k M_k - T_m M_m,    Hy(theta y) = -Hx(theta x),         Hy(theta x) = -L + R_k M_k + R_m M_m
//
// k being the side after the node and m the one before it: 6 and 5 of node 1, 4 and 6 of node 2, 5 and 4 of node 3.
template <class BASE, class REAL>
inline void dkt_rotation_functions(const DKT_EDGES_OF<BASE>& E, const VECTOR<3, REAL>& L, const VECTOR<3, REAL>& C,
                                   REAL M4, REAL M5, REAL M6, VECTOR<9, REAL>& Hx, VECTOR<9, REAL>& Hy) {
  const REAL P4 = E.P4 * M4;
  const REAL P5 = E.P5 * M5;
  const REAL P6 = E.P6 * M6;
  const REAL T4 = E.T4 * M4;
  const REAL T5 = E.T5 * M5;
  const REAL Q4 = E.Q4 * M4;
  const REAL Q5 = E.Q5 * M5;
  const REAL R4 = E.R4 * M4;
  const REAL R5 = E.R5 * M5;
  const REAL R3 = R4 + R5;
  const REAL Q3 = Q4 + Q5;
  Hx = {{P6 - P5, Q5, C(1) + R5, P4 - P6, Q4, C(2) + R4, P5 - P4, Q3, C(3) + R3}};
  Hy = {{-T5, R5 - L(1), -Q5, T4, R4 - L(2), -Q4, T5 - T4, R3 - L(3), -Q3}};
}

template <class BASE, class REAL>
inline STRAIN_ROWS<9, REAL> dkt_curvatures_at(const DKT_EDGES_OF<BASE>& EDGES, REAL xi, REAL eta, REAL g11, REAL g12,
                                              REAL g21, REAL g22) {
  const REAL lambda = 1.0 - xi - eta;
  const VECTOR<3, REAL> L_X{{-g11 - g12, g11, g12}};
  const VECTOR<3, REAL> L_Y{{-g21 - g22, g21, g22}};
  const VECTOR<3, REAL> c{{6.0 * lambda - 2.0, 6.0 * xi - 2.0, 6.0 * eta - 2.0}};  // dC / dL
  VECTOR<3, REAL> C_X;
  VECTOR<3, REAL> C_Y;
  for (int i = 1; i <= 3; ++i) {
    C_X(i) = c(i) * L_X(i);
    C_Y(i) = c(i) * L_Y(i);
  }
  const REAL M_XI[3] = {eta, -eta, lambda - xi};  // xi eta, eta lambda, lambda xi
  const REAL M_ETA[3] = {xi, lambda - eta, -xi};
  const SLOPES<3, REAL> M = slopes_of(M_XI, M_ETA, g11, g12, g21, g22);
  STRAIN_ROWS<9, REAL> B;
  VECTOR<9, REAL> HX_Y;
  VECTOR<9, REAL> HY_X;
  dkt_rotation_functions(EDGES, L_X, C_X, M.X(1), M.X(2), M.X(3), B.X, HY_X);
  dkt_rotation_functions(EDGES, L_Y, C_Y, M.Y(1), M.Y(2), M.Y(3), HX_Y, B.Y);
  for (int i = 1; i <= 9; ++i) B.XY(i) = HY_X(i) + HX_Y(i);
  return B;
}

template <class BASE, class L>
inline STRAIN_ROWS<9, L> dkt_curvatures_at(const DKT_EDGES_OF<BASE>& EDGES, const POINT_PAIR_OF<L>& p) {
  return dkt_curvatures_at(EDGES, p.xi, p.eta, p.g11, p.g12, p.g21, p.g22);
}

// K(45). The edge coefficients are the same at every point.
template <class REAL, class L, class SECTION>
inline void dkt_stiffness(const TRIANGLE_GEOMETRY_OF<REAL>& TRI, const SECTION& D, const POINT_PAIRS_OF<L>& points,
                          REAL* K) {
  const DKT_EDGES_OF<REAL> EDGES = dkt_edges(TRI);
  const STRAIN_ROWS<9, L> B1 = dkt_curvatures_at(EDGES, points.first);
  const STRAIN_ROWS<9, L> B2 = dkt_curvatures_at(EDGES, points.second);
  integrate_packed(points, B1, B2, D, K);
}

#endif
