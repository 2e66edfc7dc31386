// comparison.cpp: the ratio tests and the few products that tests need.
#include "comparison.h"

#include <cmath>
#include <cstdio>
#include <limits>

namespace support {

double max_norm(const std::vector<double>& values) {
  double norm = 0.0;
  for (const double value : values) {
    if (!(std::fabs(value) <= norm)) norm = std::fabs(value);
  }
  return norm;
}

std::vector<double> values(const double* first, int count, int stride) {
  std::vector<double> out;
  for (int i = 0; i < count; ++i) out.push_back(first[i * stride]);
  return out;
}

std::vector<double> product(const std::vector<double>& A, const std::vector<double>& x) {
  const std::size_t n = x.size();
  std::vector<double> y(n, 0.0);
  for (std::size_t j = 0; j < n; ++j) {
    for (std::size_t i = 0; i < n; ++i) y[i] += A.at(n * j + i) * x[j];
  }
  return y;
}

std::vector<double> transposed(const std::vector<double>& A) {
  const std::size_t n = static_cast<std::size_t>(std::lround(std::sqrt(static_cast<double>(A.size()))));
  std::vector<double> T(A.size());
  for (std::size_t j = 0; j < n; ++j) {
    for (std::size_t i = 0; i < n; ++i) T.at(n * i + j) = A.at(n * j + i);
  }
  return T;
}

double dot(const std::vector<double>& x, const std::vector<double>& y) {
  double sum = 0.0;
  for (std::size_t i = 0; i < x.size(); ++i) sum += x[i] * y.at(i);
  return sum;
}

namespace {

// |a - e| / unit; 0 for equal values, infinite for NaN or when there is no unit.
double ratio_of(double actual, double expected, double unit) {
  if (actual == expected) return 0.0;
  const double ratio = std::fabs(actual - expected) / unit;
  return std::isnan(ratio) || unit <= 0.0 ? std::numeric_limits<double>::infinity() : ratio;
}

::testing::AssertionResult judge(const char* actual_text, const char* expected_text, const char* scale_text,
                                 const char* limit_text, const std::vector<double>& actual,
                                 const std::vector<double>& expected, double unit, double limit) {
  if (actual.size() != expected.size()) {
    return ::testing::AssertionFailure() << actual_text << " has " << actual.size() << " entries, " << expected_text
                                         << " has " << expected.size();
  }
  std::size_t worst = 0;
  double worst_ratio = -1.0;
  for (std::size_t i = 0; i < actual.size(); ++i) {
    const double ratio = ratio_of(actual[i], expected[i], unit);
    if (ratio > worst_ratio) {
      worst = i;
      worst_ratio = ratio;
    }
  }
  if (worst_ratio <= limit) return ::testing::AssertionSuccess();
  char line[160];
  std::snprintf(line, sizeof line, "entry %zu of %zu: actual %.17g, expected %.17g, ratio %.4g above %.4g", worst + 1,
                actual.size(), actual[worst], expected[worst], worst_ratio, limit);
  return ::testing::AssertionFailure() << actual_text << " against " << expected_text << " (scale " << scale_text
                                       << ", limit " << limit_text << ")\n"
                                       << line;
}

constexpr double EPS = std::numeric_limits<double>::epsilon();

}  // namespace

::testing::AssertionResult close_by_eps(const char* actual_text, const char* expected_text, const char* scale_text,
                                        const char* limit_text, const std::vector<double>& actual,
                                        const std::vector<double>& expected, double scale, double limit) {
  return judge(actual_text, expected_text, scale_text, limit_text, actual, expected, scale * EPS, limit);
}

::testing::AssertionResult close_by_eps(const char* actual_text, const char* expected_text, const char* scale_text,
                                        const char* limit_text, double actual, double expected, double scale,
                                        double limit) {
  return judge(actual_text, expected_text, scale_text, limit_text, {actual}, {expected}, scale * EPS, limit);
}

::testing::AssertionResult close_by_scale(const char* actual_text, const char* expected_text, const char* scale_text,
                                          const char* limit_text, const std::vector<double>& actual,
                                          const std::vector<double>& expected, double scale, double limit) {
  return judge(actual_text, expected_text, scale_text, limit_text, actual, expected, scale, limit);
}

::testing::AssertionResult close_by_scale(const char* actual_text, const char* expected_text, const char* scale_text,
                                          const char* limit_text, double actual, double expected, double scale,
                                          double limit) {
  return judge(actual_text, expected_text, scale_text, limit_text, {actual}, {expected}, scale, limit);
}

}  // namespace support
