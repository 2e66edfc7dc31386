// small_products.h: products of small matrices whose sizes are known at compile time.
//
// Every entry is the plain sum over k = 1, 2, ... from 0, as the matrix services of the common library form it: the
// same bits, without a call.
#ifndef FINITES_SMALL_PRODUCTS_H
#define FINITES_SMALL_PRODUCTS_H

#include "finites/views.hpp"

// A B
template <int M, int N, int P>
MATRIX<M, P> product(const MATRIX<M, N>& A, const MATRIX<N, P>& B) {
  MATRIX<M, P> C{};
  for (int j = 1; j <= P; ++j) {
    for (int k = 1; k <= N; ++k) {
      for (int i = 1; i <= M; ++i) C(i, j) += A(i, k) * B(k, j);
    }
  }
  return C;
}

// A v
template <int M, int N>
VECTOR<M> product(const MATRIX<M, N>& A, const VECTOR<N>& v) {
  VECTOR<M> out{};
  for (int k = 1; k <= N; ++k) {
    for (int i = 1; i <= M; ++i) out(i) += A(i, k) * v(k);
  }
  return out;
}

template <int M, int N>
MATRIX<N, M> transposed(const MATRIX<M, N>& A) {
  MATRIX<N, M> T;
  for (int j = 1; j <= N; ++j) {
    for (int i = 1; i <= M; ++i) T(j, i) = A(i, j);
  }
  return T;
}

// R^T M R: M R first.
template <int N>
MATRIX<N, N> congruent(const MATRIX<N, N>& R, const MATRIX<N, N>& M) {
  return product(transposed(R), product(M, R));
}

#endif
