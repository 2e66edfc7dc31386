// broken_values.h: where infinities and NaN have to be in a matrix that was turned by full products.
#ifndef FINITES_TESTS_BROKEN_VALUES_H
#define FINITES_TESTS_BROKEN_VALUES_H

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <vector>

#include "finites/services.h"

namespace support {

constexpr double BROKEN[] = {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(),
                             -std::numeric_limits<double>::infinity()};

// R^T M R of order n, both packed by columns, by the service of the common library.
inline std::vector<double> full_product(const double* R, std::vector<double> M, std::int32_t n) {
  MATMUL_RT_M_R_DBL(R, M.data(), &n, &n, &n);
  return M;
}

// AXES^T b AXES for every 3 by 3 block b of the upper triangle of a packed symmetric K of order n; the lower triangle
// is the mirror of the upper one.
inline std::vector<double> turned_by_blocks(const double* AXES, const std::vector<double>& K, int n) {
  const auto packed = [&K](int i, int j) {
    const int row = std::min(i, j), column = std::max(i, j);
    return K[static_cast<std::size_t>(column * (column + 1) / 2 + row)];
  };
  std::vector<double> M(static_cast<std::size_t>(n * n));
  for (int J = 0; J < n; J += 3) {
    for (int I = 0; I <= J; I += 3) {
      std::vector<double> b;
      for (int j = J; j < J + 3; ++j) {
        for (int i = I; i < I + 3; ++i) b.push_back(packed(i, j));
      }
      b = full_product(AXES, b, 3);
      for (int j = 0; j < 3; ++j) {
        for (int i = 0; i < 3; ++i) {
          if (I + i > J + j) continue;
          const double value = b[static_cast<std::size_t>(3 * j + i)];
          M[static_cast<std::size_t>(n * (J + j) + I + i)] = M[static_cast<std::size_t>(n * (I + i) + J + j)] = value;
        }
      }
    }
  }
  return M;
}

// NaN at the same places, the same infinities, the finite entries within 1e-13 of the largest of them.
inline void expect_same_places(const std::vector<double>& actual, const std::vector<double>& expected) {
  ASSERT_EQ(actual.size(), expected.size());
  double scale = 0.0;
  for (const double value : expected) {
    if (std::isfinite(value)) scale = std::max(scale, std::fabs(value));
  }
  for (std::size_t i = 0; i < expected.size(); ++i) {
    if (std::isnan(expected[i])) {
      ASSERT_TRUE(std::isnan(actual[i])) << "place " << i + 1 << " holds " << actual[i] << " in place of NaN";
    } else if (std::isinf(expected[i])) {
      ASSERT_EQ(actual[i], expected[i]) << "place " << i + 1;
    } else {
      ASSERT_LE(std::fabs(actual[i] - expected[i]), 1e-13 * scale)
          << "place " << i + 1 << " holds " << actual[i] << " in place of " << expected[i];
    }
  }
}

}  // namespace support

#endif
