// linear_blocks.h: blocks of the stiffness of the linear kinds (linear_matrices.cpp). L: LANES are two nodes or places,
// wider vectors the same node or place of several elements.
#ifndef FINITES_SOLID_LINEAR_BLOCKS_H
#define FINITES_SOLID_LINEAR_BLOCKS_H

#include "finites/views.hpp"
#include "solids/elastic.h"

// AX^T M
template <class REAL, class L>
inline MATRIX<3, 3, L> turned_rows(const MATRIX<3, 3, REAL>& AX, const MATRIX<3, 3, L>& M) {
  MATRIX<3, 3, L> T;
  for (int j = 1; j <= 3; ++j) {
    for (int i = 1; i <= 3; ++i) {
      T(i, j) = AX(1, i) * M(1, j) + AX(2, i) * M(2, j) + AX(3, i) * M(3, j);
    }
  }
  return T;
}

// The block of two nodes from their dyad C.
template <class REAL, class L>
inline MATRIX<3, 3, L> elastic_block(const ELASTIC_TERMS_OF<REAL>& D, const MATRIX<3, 3, L>& C) {
  MATRIX<3, 3, L> K;
  for (int s = 1; s <= 3; ++s) {
    const int r = s % 3 + 1;
    const int t = r % 3 + 1;
    K(s, s) = D.direct * C(s, s) + D.shear * (C(r, r) + C(t, t));
    K(r, s) = D.cross * C(r, s) + D.shear * C(s, r);
    K(t, s) = D.cross * C(t, s) + D.shear * C(s, t);
  }
  return K;
}

#endif
