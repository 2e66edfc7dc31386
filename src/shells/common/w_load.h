// w_load.h: transverse loads on freedoms, through functions of w and their natural derivatives.
#ifndef FINITES_W_LOAD_H
#define FINITES_W_LOAD_H

#include "finites/views.hpp"

// (g22, -g21, -g12, g11) det of the inverse Jacobian: the sides of the element, dx/dxi, dy/dxi, dx/deta, dy/deta.
inline VECTOR<4> rotation_coefficients(double g11, double g12, double g21, double g22, double det) {
  return {{g22 * det, -g21 * det, -g12 * det, g11 * det}};
}

// f(w, theta x, theta y of each node) += scale times the functions a, three a node, changed from natural derivatives to
// rotations.
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
