// general_products.h: the products of the general kernels, through the matrix services.
#ifndef FINITES_GENERAL_PRODUCTS_H
#define FINITES_GENERAL_PRODUCTS_H

#include <cstdint>

#include "common_services.h"
#include "views.h"

// K(i, j) += scale (B^T D B)(i, j) for i <= j, packed. B^T D first, then the product with B; where D is not symmetric
// the upper triangle is what stays.
template <int N>
void add_packed_btdb(const MATRIX<3, N>& B, const MATRIX<3, 3>& D, double scale, double* K) {
  constexpr std::int32_t three = 3;
  constexpr std::int32_t n = N;
  MATRIX<N, 3> BT;
  for (int i = 1; i <= N; ++i) {
    for (int r = 1; r <= 3; ++r) BT(i, r) = B(r, i);
  }
  MATRIX<N, 3> BTD;
  MATRIX<N, N> BTDB;
  MATMUL_M1MN_M2MN_DBL(BTD.data(), BT.data(), &n, &three, D.data(), &three, &three);
  MATMUL_M1MN_M2MN_DBL(BTDB.data(), BTD.data(), &n, &three, B.data(), &three, &n);
  for (int j = 1; j <= N; ++j) {
    for (int i = 1; i <= j; ++i) *K++ += scale * BTDB(i, j);
  }
}

// A v for a matrix with three rows: strains from displacements, resultants from strains.
template <int N>
VECTOR<3> product(const MATRIX<3, N>& A, const VECTOR<N>& v) {
  constexpr std::int32_t three = 3;
  constexpr std::int32_t n = N;
  constexpr std::int32_t one = 1;
  VECTOR<3> out;
  MATMUL_M1MN_M2MN_DBL(out.data(), A.data(), &three, &n, v.data(), &n, &one);
  return out;
}

#endif
