// general_products.h: the products of the general kernels, through the matrix services, whose order of summation is
// part of the results.
#ifndef FINITES_GENERAL_PRODUCTS_H
#define FINITES_GENERAL_PRODUCTS_H

#include <cstdint>

#include "finites/services.h"
#include "finites/views.hpp"

//     K(i, j) += scale (B^T D B)(i, j),      1 <= i <= j <= N,  packed
//
// B^T D first, then the product with B. Of a D that is not symmetric only the upper triangle of the product is kept.
template <int ROWS, int N>
void add_packed_btdb(const MATRIX<ROWS, N>& B, const MATRIX<ROWS, ROWS>& D, double scale, double* K) {
  constexpr std::int32_t rows = ROWS;
  constexpr std::int32_t n = N;
  MATRIX<N, ROWS> BT;
  for (int i = 1; i <= N; ++i) {
    for (int r = 1; r <= ROWS; ++r) BT(i, r) = B(r, i);
  }
  MATRIX<N, ROWS> BTD;
  MATRIX<N, N> BTDB;
  MATMUL_M1MN_M2MN_DBL(BTD.data(), BT.data(), &n, &rows, D.data(), &rows, &rows);
  MATMUL_M1MN_M2MN_DBL(BTDB.data(), BTD.data(), &n, &rows, B.data(), &rows, &n);
  for (int j = 1; j <= N; ++j) {
    for (int i = 1; i <= j; ++i) *K++ += scale * BTDB(i, j);
  }
}

// A v: strains from displacements, resultants from strains.
template <int ROWS, int N>
VECTOR<ROWS> product(const MATRIX<ROWS, N>& A, const VECTOR<N>& v) {
  constexpr std::int32_t rows = ROWS;
  constexpr std::int32_t n = N;
  constexpr std::int32_t one = 1;
  VECTOR<ROWS> out;
  MATMUL_M1MN_M2MN_DBL(out.data(), A.data(), &rows, &n, v.data(), &n, &one);
  return out;
}

#endif
