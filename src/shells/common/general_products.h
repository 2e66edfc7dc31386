// general_products.h: the products of the general kernels, with full matrices. The order of summation is part of the
// results (docs/decisions.md).
#ifndef FINITES_GENERAL_PRODUCTS_H
#define FINITES_GENERAL_PRODUCTS_H

#include "common/small_products.h"
#include "finites/views.hpp"

//     K(i, j) += scale (B^T D B)(i, j),      1 <= i <= j <= N,  packed
//
// B^T D first, then the product with B. Of a D that is not symmetric only the upper triangle of the product is kept.
template <int ROWS, int N>
void add_packed_btdb(const MATRIX<ROWS, N>& B, const MATRIX<ROWS, ROWS>& D, double scale, double* K) {
  const MATRIX<N, ROWS> BTD = product(transposed(B), D);
  for (int j = 1; j <= N; ++j) {
    VECTOR<N> column{};
    for (int r = 1; r <= ROWS; ++r) {
      for (int i = 1; i <= N; ++i) column(i) += BTD(i, r) * B(r, j);
    }
    for (int i = 1; i <= j; ++i) *K++ += scale * column(i);
  }
}

#endif
