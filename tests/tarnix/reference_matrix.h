// reference_matrix.h: dense matrices for tests, of any order, with products in long double and an error measure.
#ifndef TARNIX_TESTS_REFERENCE_MATRIX_H
#define TARNIX_TESTS_REFERENCE_MATRIX_H

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <random>
#include <string>
#include <vector>

// Column-major, numbered from 1, with room for guard rows below the leading dimension.
struct DENSE {
  int rows, columns, ld;
  std::vector<double> value;

  DENSE(int m, int n) : DENSE(m, n, m) {}
  DENSE(int m, int n, int leading)
      : rows(m), columns(n), ld(leading), value(static_cast<std::size_t>(leading) * static_cast<std::size_t>(n)) {}
  double& operator()(int i, int j) { return value[static_cast<std::size_t>((j - 1) * ld + i - 1)]; }
  const double& operator()(int i, int j) const { return value[static_cast<std::size_t>((j - 1) * ld + i - 1)]; }
  double* data() { return value.data(); }
  const double* data() const { return value.data(); }
};

constexpr double GUARD = -987.625;  // what a test finds again in the rows that a service must not touch

inline DENSE random_matrix(std::mt19937_64& source, int m, int n, int ld) {
  std::uniform_real_distribution<double> entries(-1.0, 1.0);
  DENSE M(m, n, ld);
  std::fill(M.value.begin(), M.value.end(), GUARD);
  for (int j = 1; j <= n; ++j) {
    for (int i = 1; i <= m; ++i) M(i, j) = entries(source);
  }
  return M;
}

inline DENSE random_matrix(std::mt19937_64& source, int m, int n) { return random_matrix(source, m, n, m); }

inline DENSE transposed(const DENSE& M) {
  DENSE T(M.columns, M.rows);
  for (int j = 1; j <= T.columns; ++j) {
    for (int i = 1; i <= T.rows; ++i) T(i, j) = M(j, i);
  }
  return T;
}

inline DENSE magnitudes(DENSE M) {
  for (double& entry : M.value) entry = std::fabs(entry);
  return M;
}

// A B, summed in long double and rounded once.
inline DENSE exact_product(const DENSE& A, const DENSE& B) {
  DENSE C(A.rows, B.columns);
  for (int i = 1; i <= C.rows; ++i) {
    for (int j = 1; j <= C.columns; ++j) {
      long double sum = 0.0L;
      for (int k = 1; k <= A.columns; ++k) sum += static_cast<long double>(A(i, k)) * static_cast<long double>(B(k, j));
      C(i, j) = static_cast<double>(sum);
    }
  }
  return C;
}

// |found - expected| must stay below `roundings` half units of the sum of magnitudes that went into each entry.
inline void expect_close(const char* routine, const DENSE& found, const DENSE& expected, const DENSE& scale,
                         int roundings) {
  for (int j = 1; j <= expected.columns; ++j) {
    for (int i = 1; i <= expected.rows; ++i) {
      const double allowed = roundings * 0.5 * std::numeric_limits<double>::epsilon() * scale(i, j);
      const double ratio = std::fabs(found(i, j) - expected(i, j)) / allowed;
      if (ratio <= 1.0 || found(i, j) == expected(i, j)) continue;
      char line[200];
      std::snprintf(line, sizeof line, "%s of order %d, entry (%d, %d): %.17g, expected %.17g, ratio %.3g", routine,
                    expected.rows, i, j, found(i, j), expected(i, j), ratio);
      ADD_FAILURE() << line;
    }
  }
}

inline void expect_guards(const char* routine, const DENSE& M) {
  for (int j = 1; j <= M.columns; ++j) {
    for (int i = M.rows + 1; i <= M.ld; ++i) EXPECT_EQ(M(i, j), GUARD) << routine << ": row " << i << ", column " << j;
  }
}

#endif
