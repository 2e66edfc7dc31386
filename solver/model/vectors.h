// vectors.h: vectors in space, and products of small matrices with them.
//
// Components of vectors count from 0; rows and columns of matrices, which are those of the library, from 1.
#ifndef FINITES_SOLVER_VECTORS_H
#define FINITES_SOLVER_VECTORS_H

#include <array>
#include <cmath>

#include "finites/views.hpp"

namespace solver {

constexpr double PI = 3.14159265358979323846;

using vector3 = std::array<double, 3>;

inline double dot(const vector3& a, const vector3& b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }

inline vector3 cross(const vector3& a, const vector3& b) {
  return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

// The length of a vector whose squares are neither too large nor too small, and of any vector. The two round
// differently.
inline double norm(const vector3& a) { return std::sqrt(dot(a, a)); }
inline double length_of(const vector3& a) { return std::hypot(a[0], a[1], a[2]); }

// The place of the largest part. Of parts that are equal but for a hundredth the first one counts: the choice does not
// hang on the last digit.
inline std::size_t largest_part(const vector3& a) {
  std::size_t most = 0;
  for (std::size_t i = 1; i < 3; ++i) {
    if (std::fabs(a[i]) > 1.01 * std::fabs(a[most])) most = i;
  }
  return most;
}

inline vector3 scaled(const vector3& a, double factor) { return {a[0] * factor, a[1] * factor, a[2] * factor}; }

// From a to b.
inline vector3 difference(const vector3& a, const vector3& b) { return {b[0] - a[0], b[1] - a[1], b[2] - a[2]}; }

// Row i, counted from 1: of the axes of an element one direction.
template <int M>
vector3 row(const MATRIX<M, 3>& A, int i) {
  return {A(i, 1), A(i, 2), A(i, 3)};
}

inline void set_row(MATRIX<3, 3>& A, int i, const vector3& v) {
  A(i, 1) = v[0];
  A(i, 2) = v[1];
  A(i, 3) = v[2];
}

inline MATRIX<3, 3> matrix_of_rows(const vector3& first, const vector3& second, const vector3& third) {
  MATRIX<3, 3> A;
  set_row(A, 1, first);
  set_row(A, 2, second);
  set_row(A, 3, third);
  return A;
}

// y := y + A x and y := y + A^T x. With the axes of an element as the rows of A the first leads from global to local
// components, the second back.
template <int M, int N>
void add_product(const MATRIX<M, N>& A, const double* x, double* y) {
  for (int i = 0; i < M; ++i) {
    for (int j = 0; j < N; ++j) y[i] += A(i + 1, j + 1) * x[j];
  }
}
template <int M, int N>
void add_transposed_product(const MATRIX<M, N>& A, const double* x, double* y) {
  for (int j = 0; j < N; ++j) {
    for (int i = 0; i < M; ++i) y[j] += A(i + 1, j + 1) * x[i];
  }
}

inline vector3 product(const MATRIX<3, 3>& A, const vector3& x) {
  vector3 y{};
  add_product(A, x.data(), y.data());
  return y;
}
inline vector3 transposed_product(const MATRIX<3, 3>& A, const vector3& x) {
  vector3 y{};
  add_transposed_product(A, x.data(), y.data());
  return y;
}

}  // namespace solver

#endif
