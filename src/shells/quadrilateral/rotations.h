// rotations.h: the rotations of the discrete Kirchhoff quadrilateral, after Batoz and Ben Tahar (1982).
//
// The rotations are interpolated by the serendipity functions N of eight nodes. The Kirchhoff constraint along each
// side gives the values at the mid-sides from w, theta x, theta y of the corners, so that w is defined on the sides
// only:
//
//     beta x = Hx U,  beta y = Hy U,      U = (w, theta x, theta y) of each corner
//
// and for corner i, side k after it, side m before it, with the side coefficients A to E of geometry.cpp:
//
//     Hx(w)       = 1.5 (N_k A_k - N_m A_m)             Hy(w)       = 1.5 (N_k D_k - N_m D_m)
//     Hx(theta x) = N_k B_k + N_m B_m                   Hy(theta x) = -N_i + N_k E_k + N_m E_m
//     Hx(theta y) = N_i + N_k C_k + N_m C_m             Hy(theta y) = -(N_k B_k + N_m B_m)
//
// Signs: theta x = dw/dy, theta y = -dw/dx, beta x = theta y, beta y = -theta x.
//
// Bending takes their derivatives, the mass of both theories the functions themselves.
#ifndef FINITES_QUAD_ROTATIONS_H
#define FINITES_QUAD_ROTATIONS_H

#include "finites/views.hpp"
#include "shells/quadrilateral/geometry.h"

// Hx and Hy from the eight functions N, or their derivatives from the derivatives of N.
template <class BASE, class REAL>
inline void dkq_rotation_functions(const QUADRILATERAL_GEOMETRY_OF<BASE>& QUAD, const VECTOR<8, REAL>& N,
                                   VECTOR<12, REAL>& Hx, VECTOR<12, REAL>& Hy) {
  constexpr int before[4] = {8, 5, 6, 7};
  for (int i = 1; i <= 4; ++i) {
    const int k = i + 4;
    const int m = before[i - 1];
    const int w = 3 * i - 2;
    const int tx = 3 * i - 1;
    const int ty = 3 * i;
    const REAL couple = N(k) * QUAD.DKQ_B(k) + N(m) * QUAD.DKQ_B(m);
    Hx(w) = 1.5 * (N(k) * QUAD.DKQ_A(k) - N(m) * QUAD.DKQ_A(m));
    Hx(tx) = couple;
    Hx(ty) = N(i) + N(k) * QUAD.DKQ_C(k) + N(m) * QUAD.DKQ_C(m);
    Hy(w) = 1.5 * (N(k) * QUAD.DKQ_D(k) - N(m) * QUAD.DKQ_D(m));
    Hy(tx) = -N(i) + N(k) * QUAD.DKQ_E(k) + N(m) * QUAD.DKQ_E(m);
    Hy(ty) = -couple;
  }
}

// Hx and Hy at a point, or at a pair of points:
//
//     corners     N_i = -(1 + xi_i xi)(1 + eta_i eta)(1 - xi_i xi - eta_i eta) / 4
//     mid-sides   N_5, N_7 = (1 - xi^2)(1 + eta_k eta) / 2,    N_6, N_8 = (1 - eta^2)(1 + xi_k xi) / 2
template <class BASE, class REAL>
inline void dkq_rotations_at(const QUADRILATERAL_GEOMETRY_OF<BASE>& QUAD, REAL xi, REAL eta, VECTOR<12, REAL>& Hx,
                             VECTOR<12, REAL>& Hy) {
  const VECTOR<8, REAL> N{
      {-(1.0 - eta) * (1.0 - xi) * (1.0 + eta + xi) / 4.0, -(1.0 + xi) * (1.0 - eta) * (1.0 - xi + eta) / 4.0,
       -(1.0 + eta) * (1.0 + xi) * (1.0 - xi - eta) / 4.0, -(1.0 - xi) * (1.0 + eta) * (1.0 + xi - eta) / 4.0,
       (1.0 - xi) * (1.0 + xi) * (1.0 - eta) / 2.0, (1.0 - eta) * (1.0 + eta) * (1.0 + xi) / 2.0,
       (1.0 - xi) * (1.0 + xi) * (1.0 + eta) / 2.0, (1.0 - eta) * (1.0 + eta) * (1.0 - xi) / 2.0}};
  dkq_rotation_functions(QUAD, N, Hx, Hy);
}

// Hx and Hy at a point. The library calls the template; tests call this name.
void DKQ_ROTATIONS(const QUADRILATERAL_GEOMETRY& QUAD, double xi, double eta, VECTOR<12>& Hx, VECTOR<12>& Hy);

#endif
