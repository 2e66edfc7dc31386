// random_records_test.cpp: data of every kind, sound and not: an answer comes, and with status 0 it is finite.
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>

#include "cable_case.h"

namespace {

using limits = std::numeric_limits<double>;

// Mostly a number of any size, sometimes a special one.
double any_number(std::mt19937_64& source, double exponent_range) {
  const std::array<double, 10> special = {
      0.0,           -0.0, limits::quiet_NaN(),  limits::infinity(), -limits::infinity(),
      limits::max(), 1.0,  limits::denorm_min(), limits::min(),      -1.0};
  if (source() % 12 == 0) return special[source() % special.size()];
  const double sign = source() % 4 == 0 ? -1.0 : 1.0;
  return sign * std::pow(10.0, uniform(source, -exponent_range, exponent_range));
}

cable_case any_cable(std::mt19937_64& source, double range) {
  cable_case c;
  for (std::size_t i = 0; i < 3; ++i) {
    c.X1[i] = any_number(source, range);
    c.X2[i] = source() % 4 == 0 ? c.X1[i] : any_number(source, range);
    c.w[i] = source() % 3 == 0 ? 0.0 : any_number(source, range);
  }
  c.area = any_number(source, range);
  c.E = any_number(source, range);
  c.L0 = any_number(source, range);
  c.e = source() % 2 == 0 ? 0.0 : any_number(source, range);
  return c;
}

}  // namespace

TEST(RandomRecords, GiveFiniteResultsOrAStatus) {
  std::mt19937_64 source(421);
  int solved = 0;
  for (int i = 0; i < 20000; ++i) {
    const cable_case c = any_cable(source, i % 3 == 0 ? 300.0 : i % 3 == 1 ? 20.0 : 1.0);
    const cable_forces f = solve(c);
    ASSERT_GE(f.status, 0);
    ASSERT_LE(f.status, 3);
    for (const double x : f.F) ASSERT_TRUE(f.status == 0 ? std::isfinite(x) : x == 0.0) << describe(c);
    matrix6 K;
    const std::int32_t status = tangent(c, f, K);
    ASSERT_GE(status, 0);
    ASSERT_LE(status, 3);
    for (const double x : K) ASSERT_TRUE(std::isfinite(x)) << describe(c);
    solved += f.status == 0 && status == 0 ? 1 : 0;
  }
  EXPECT_GE(solved, 2000) << "too few sound cables among the random ones";
}

// Sound data over a wide range of chords, loads and stiffnesses are always solved, tangent included.
TEST(RandomRecords, SoundCablesAreSolved) {
  std::mt19937_64 source(422);
  for (int i = 0; i < 20000; ++i) {
    cable_case c;
    const triple along = random_direction(source);
    const triple down = random_direction(source);
    const double size = std::pow(10.0, uniform(source, -9.0, 4.0));
    const double weight = std::pow(10.0, uniform(source, -16.0, 8.0));
    for (std::size_t k = 0; k < 3; ++k) {
      c.X2[k] = size * along[k];
      c.w[k] = weight * down[k];
    }
    c.E = std::pow(10.0, uniform(source, -6.0, 12.0));
    c.e = uniform(source, -0.9, 3.0);
    const cable_forces f = solve(c);
    ASSERT_EQ(f.status, 0) << describe(c);
    matrix6 K;
    ASSERT_EQ(tangent(c, f, K), 0) << describe(c);
    for (int k = 1; k <= 6; ++k) ASSERT_GT(entry(K, k, k), 0.0) << describe(c);
  }
}
