// rotations.h: the rotations of the discrete Kirchhoff quadrilateral, after Batoz and Ben Tahar (1982).
//
// They are serendipity functions of eight nodes; those of the mid-sides are tied to the slope of w along the sides, and w
// itself lives on the sides alone. Signs go with theta x = dw/dy and theta y = -dw/dx.
//
// Bending takes their derivatives, the mass of both theories the functions themselves.
#ifndef FINITES_QUAD_ROTATIONS_H
#define FINITES_QUAD_ROTATIONS_H

#include "finites/views.hpp"
#include "shells/quadrilateral/geometry.h"

// The rotation functions, or their derivatives, from the eight functions N or theirs. k is the side after node i, m the
// side before it.
inline void dkq_rotation_functions(const QUADRILATERAL_GEOMETRY& QUAD, const VECTOR<8>& N, VECTOR<12>& Hx,
                                   VECTOR<12>& Hy) {
  constexpr int before[4] = {8, 5, 6, 7};
  for (int i = 1; i <= 4; ++i) {
    const int k = i + 4;
    const int m = before[i - 1];
    const int w = 3 * i - 2;
    const int tx = 3 * i - 1;
    const int ty = 3 * i;
    const double couple = N(k) * QUAD.DKQ_B(k) + N(m) * QUAD.DKQ_B(m);
    Hx(w) = 1.5 * (N(k) * QUAD.DKQ_A(k) - N(m) * QUAD.DKQ_A(m));
    Hx(tx) = couple;
    Hx(ty) = N(i) + N(k) * QUAD.DKQ_C(k) + N(m) * QUAD.DKQ_C(m);
    Hy(w) = 1.5 * (N(k) * QUAD.DKQ_D(k) - N(m) * QUAD.DKQ_D(m));
    Hy(tx) = -N(i) + N(k) * QUAD.DKQ_E(k) + N(m) * QUAD.DKQ_E(m);
    Hy(ty) = -couple;
  }
}

// Hx of beta x = theta y, Hy of beta y = -theta x.
void DKQ_ROTATIONS(const QUADRILATERAL_GEOMETRY& QUAD, double xi, double eta, VECTOR<12>& Hx, VECTOR<12>& Hy);

#endif
