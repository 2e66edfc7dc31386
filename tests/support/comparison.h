// comparison.h: comparisons by ratio.
//
//     EXPECT_CLOSE(actual, expected, scale, limit)    |actual - expected| / (scale eps) <= limit
//     EXPECT_WITHIN(actual, expected, scale, limit)   |actual - expected| / scale <= limit
//
// Both take two numbers or two vectors of the same length; the scale is a norm of what rounding acts on, never tuned.
// EXPECT_CLOSE is for what rounding alone separates (limits are 10 to some hundreds), EXPECT_WITHIN for difference
// quotients, series and published values. A scale of 0 asks for equality. A failure names the worst entry, both values
// and the ratio.
#ifndef FINITES_TESTS_COMPARISON_H
#define FINITES_TESTS_COMPARISON_H

#include <gtest/gtest.h>

#include <vector>

namespace support {

double max_norm(const std::vector<double>& values);

// A vector of `count` values that lie `stride` apart.
std::vector<double> values(const double* first, int count, int stride = 1);

// A x and A^T for an n by n matrix packed by columns; x^T y.
std::vector<double> product(const std::vector<double>& A, const std::vector<double>& x);
std::vector<double> transposed(const std::vector<double>& A);
double dot(const std::vector<double>& x, const std::vector<double>& y);

::testing::AssertionResult close_by_eps(const char* actual_text, const char* expected_text, const char* scale_text,
                                        const char* limit_text, const std::vector<double>& actual,
                                        const std::vector<double>& expected, double scale, double limit);
::testing::AssertionResult close_by_eps(const char* actual_text, const char* expected_text, const char* scale_text,
                                        const char* limit_text, double actual, double expected, double scale,
                                        double limit);
::testing::AssertionResult close_by_scale(const char* actual_text, const char* expected_text, const char* scale_text,
                                          const char* limit_text, const std::vector<double>& actual,
                                          const std::vector<double>& expected, double scale, double limit);
::testing::AssertionResult close_by_scale(const char* actual_text, const char* expected_text, const char* scale_text,
                                          const char* limit_text, double actual, double expected, double scale,
                                          double limit);

}  // namespace support

#define EXPECT_CLOSE(actual, expected, scale, limit) \
  EXPECT_TRUE(::support::close_by_eps(#actual, #expected, #scale, #limit, actual, expected, scale, limit))
#define EXPECT_WITHIN(actual, expected, scale, limit) \
  EXPECT_TRUE(::support::close_by_scale(#actual, #expected, #scale, #limit, actual, expected, scale, limit))

#endif
