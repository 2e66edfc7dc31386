// elimination.h: small systems of equations, for tests that assemble a few elements.
#ifndef FINITES_TESTS_ELIMINATION_H
#define FINITES_TESTS_ELIMINATION_H

#include <cmath>
#include <cstddef>
#include <utility>
#include <vector>

// A x = b by elimination with pivots; b becomes x.
inline void solve(std::vector<std::vector<double>> A, std::vector<double>& b) {
  const std::size_t n = b.size();
  for (std::size_t d = 0; d < n; ++d) {
    std::size_t best = d;
    for (std::size_t i = d; i < n; ++i) {
      if (std::fabs(A[i][d]) > std::fabs(A[best][d])) best = i;
    }
    std::swap(A[d], A[best]);
    std::swap(b[d], b[best]);
    for (std::size_t i = d + 1; i < n; ++i) {
      const double factor = A[i][d] / A[d][d];
      for (std::size_t j = d; j < n; ++j) A[i][j] -= factor * A[d][j];
      b[i] -= factor * b[d];
    }
  }
  for (std::size_t d = n; d-- > 0;) {
    for (std::size_t j = d + 1; j < n; ++j) b[d] -= A[d][j] * b[j];
    b[d] /= A[d][d];
  }
}

#endif
