// w_load.h: nodal forces and moments of a transverse load, through functions of w and their natural derivatives.
//
// With theta x = dw/dy and theta y = -dw/dx the natural derivatives at a node are
//
//     w,xi  = c3 theta x - c1 theta y,      c1 = dx/dxi,   c3 = dy/dxi
//     w,eta = c4 theta x - c2 theta y,      c2 = dx/deta,  c4 = dy/deta
#ifndef FINITES_W_LOAD_H
#define FINITES_W_LOAD_H

#include "finites/views.hpp"

// c = (g22, -g21, -g12, g11) det = (dx/dxi, dx/deta, dy/dxi, dy/deta), from the inverse Jacobian.
inline VECTOR<4> rotation_coefficients(double g11, double g12, double g21, double g22, double det) {
  return {{g22 * det, -g21 * det, -g12 * det, g11 * det}};
}

// The functions a of w, w,xi, w,eta, three per node, become those of w, theta x, theta y:
//
//     f(w) += scale a1,    f(theta x) += scale (c3 a2 + c4 a3),    f(theta y) += scale (-c1 a2 - c2 a3)
template <int NODES>
inline void add_w_load(const VECTOR<3 * NODES>& a, const VECTOR<4>& c, double scale, double* f) {
  for (int n = 0; n < NODES; ++n) {
    const double p = a(3 * n + 2);
    const double q = a(3 * n + 3);
    double* at = f + 6 * n;
    at[2] += a(3 * n + 1) * scale;
    at[3] += (p * c(3) + q * c(4)) * scale;
    at[4] += (-p * c(1) - q * c(2)) * scale;
  }
}

#endif
