// Yield surfaces: the bits of the exported curves, points on the surfaces, gradients, and faults.
#include <cmath>
#include <cstring>
#include <limits>
#include <vector>

#include "comparison.h"
#include "finites/elements.h"
#include "finites/finites.h"
#include "gtest/gtest.h"
#include "random_shapes.h"

namespace {

using support::seeded_random;

struct equations {
  std::int32_t count = -1, segment[4] = {};
  double value[4] = {}, gradient[4][3] = {};
};

equations equations_of(const finites_yield& y, const double (&f)[3]) {
  equations e;
  EXPECT_EQ(finites_yield_equations(&y, f, &e.count, e.segment, e.value, e.gradient), FINITES_OK);
  return e;
}

double value_of(const finites_yield& y, double p, double my, double mz) {
  const double f[3] = {p, my, mz};
  double value = -1.0;
  EXPECT_EQ(finites_yield_value(&y, f, &value), FINITES_OK);
  return value;
}

bool same_bits(double a, double b) { return std::memcmp(&a, &b, sizeof a) == 0; }

finites_yield random_yield(seeded_random& random) {
  finites_yield y{};
  y.curve = random.integer(1, 3);
  y.forces = y.curve == FINITES_SINGLE ? random.integer(1, 3) : random.integer(2, 7);
  for (double& c : y.capacity) c = random.uniform(5.0, 50.0);
  return y;
}

// The protocol's way: which equations, then their values, then each gradient.
equations exported(const finites_yield& y, const double (&f)[3]) {
  equations e;
  const double *c = y.capacity, *p = f, *my = f + 1, *mz = f + 2;
  if (y.curve == FINITES_SINGLE) {
    SINGLE_FORCES_SEGMENT_EQUATION(c, c + 1, c + 2, &y.forces, p, my, mz, &e.count, e.segment);
    PHI_SINGLE_FORCES(e.segment, c, c + 1, c + 2, &y.forces, p, my, mz, e.value);
  } else if (y.curve == FINITES_ORBISON) {
    e.count = 1;
    PHI_ORBISON(c, c + 1, c + 2, &y.forces, p, my, mz, e.value);
  } else {
    LINEAR_SEGMENT_EQUATION(c, c + 1, c + 2, &y.forces, p, my, mz, &e.count, e.segment);
    PHI_LINEAR_SEGMENT(e.segment, c, c + 1, c + 2, &y.forces, p, my, mz, e.value);
  }
  for (int i = 0; i < e.count; ++i) {
    double* g = e.gradient[i];
    if (y.curve == FINITES_SINGLE) {
      SINGLE_FORCES_CURVE_GRADIENT(e.segment + i, &y.forces, c, c + 1, c + 2, p, my, mz, g, g + 1, g + 2);
    } else if (y.curve == FINITES_ORBISON) {
      ORBISON_CURVE_GRADIENT(&y.forces, c, c + 1, c + 2, p, my, mz, g, g + 1, g + 2);
    } else {
      LINEAR_SEGMENT_GRADIENT(&y.forces, e.segment + i, c, c + 1, c + 2, p, my, mz, g, g + 1, g + 2);
    }
  }
  return e;
}

}  // namespace

TEST(PlainYield, BitsOfTheExportedCurves) {
  seeded_random random(8401);
  for (int trial = 0; trial < 2000; ++trial) {
    const finites_yield y = random_yield(random);
    double f[3];
    for (double& x : f) x = random.integer(0, 4) == 0 ? 0.0 : random.uniform(-60.0, 60.0);
    const equations e = equations_of(y, f), other = exported(y, f);
    ASSERT_EQ(e.count, other.count);
    ASSERT_GE(e.count, 1);
    for (int i = 0; i < e.count; ++i) {
      EXPECT_EQ(e.segment[i], other.segment[i]);
      EXPECT_TRUE(same_bits(e.value[i], other.value[i]));
      for (int c = 0; c < 3; ++c) EXPECT_TRUE(same_bits(e.gradient[i][c], other.gradient[i][c]));
    }
  }
}

TEST(PlainYield, PointsOnTheSurfaces) {
  const finites_yield single{FINITES_SINGLE, 3, {10.0, 20.0, 30.0}};
  EXPECT_DOUBLE_EQ(value_of(single, 99.0, 99.0, -30.0), 1.0);
  const finites_yield orbison{FINITES_ORBISON, 7, {10.0, 20.0, 30.0}};
  EXPECT_DOUBLE_EQ(value_of(orbison, 0.0, 0.0, 30.0), 1.0);
  EXPECT_DOUBLE_EQ(value_of(orbison, 0.0, -20.0, 0.0), 1.0);
  EXPECT_NEAR(value_of(orbison, 10.0 / std::sqrt(1.15), 0.0, 0.0), 1.0, 1e-15);
  const finites_yield segments{FINITES_SEGMENTS, 7, {10.0, 20.0, 30.0}};
  EXPECT_DOUBLE_EQ(value_of(segments, -10.0, 0.0, 0.0), 1.0);
  EXPECT_NEAR(value_of(segments, 5.6, 5.5, 6.6), 0.56 + 8.0 / 9.0 * 0.495, 1e-8);
  EXPECT_DOUBLE_EQ(value_of(segments, 1.0, 10.0, -13.5), 1.0);
}

TEST(PlainYield, GradientsAreSlopes) {
  seeded_random random(8402);
  for (int trial = 0; trial < 300; ++trial) {
    const finites_yield y = random_yield(random);
    double f[3];
    for (int c = 0; c < 3; ++c) f[c] = y.capacity[c] * random.uniform(0.25, 1.2) * (random.integer(0, 1) == 0 ? -1 : 1);
    const equations e = equations_of(y, f);
    for (int c = 0; c < 3; ++c) {
      const double h = 1e-5 * y.capacity[c];
      double plus[3] = {f[0], f[1], f[2]}, minus[3] = {f[0], f[1], f[2]};
      plus[c] += h;
      minus[c] -= h;
      const double slope =
          (value_of(y, plus[0], plus[1], plus[2]) - value_of(y, minus[0], minus[1], minus[2])) / (2 * h);
      EXPECT_NEAR(e.gradient[0][c], slope, 1e-6 * (std::fabs(slope) + 1.0 / y.capacity[c]));
    }
  }
}

TEST(PlainYield, MomentsOfZeroHaveMoreEquations) {
  const finites_yield y{FINITES_SEGMENTS, 7, {10.0, 20.0, 30.0}};
  EXPECT_EQ(equations_of(y, {5.0, 1.0, 1.0}).count, 1);
  EXPECT_EQ(equations_of(y, {5.0, 0.0, 1.0}).count, 2);
  EXPECT_EQ(equations_of(y, {5.0, 0.0, 0.0}).count, 3);
}

TEST(PlainYield, OutputsMayBeNull) {
  const finites_yield y{FINITES_SEGMENTS, 7, {10.0, 20.0, 30.0}};
  const double f[3] = {5.0, 1.0, 1.0};
  std::int32_t count = 0;
  EXPECT_EQ(finites_yield_equations(&y, f, &count, nullptr, nullptr, nullptr), FINITES_OK);
  EXPECT_EQ(count, 1);
}

TEST(PlainYield, EveryFaultHasItsStatus) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const auto expect = [](finites_status expected, const finites_yield& y, const std::vector<double>& f) {
    std::int32_t count = -7;
    double value = -7.0;
    EXPECT_EQ(finites_yield_equations(&y, f.data(), &count, nullptr, nullptr, nullptr), expected);
    EXPECT_EQ(finites_yield_value(&y, f.data(), &value), expected);
    EXPECT_EQ(count, -7);
    EXPECT_EQ(value, -7.0);
  };
  const std::vector<double> f = {1.0, 2.0, 3.0};
  expect(FINITES_BAD_CODE, {0, 1, {1, 1, 1}}, f);
  expect(FINITES_BAD_CODE, {4, 2, {1, 1, 1}}, f);
  expect(FINITES_BAD_CODE, {FINITES_SINGLE, 4, {1, 1, 1}}, f);
  expect(FINITES_BAD_CODE, {FINITES_ORBISON, 1, {1, 1, 1}}, f);
  expect(FINITES_BAD_CODE, {FINITES_SEGMENTS, 8, {1, 1, 1}}, f);
  expect(FINITES_YIELD, {FINITES_SEGMENTS, 7, {1, 0, 1}}, f);
  expect(FINITES_YIELD, {FINITES_SINGLE, 1, {1, 1, -1}}, f);
  expect(FINITES_NAN, {FINITES_SEGMENTS, 7, {1, nan, 1}}, f);
  expect(FINITES_RANGE, {FINITES_SEGMENTS, 7, {1, 2e30, 1}}, f);
  expect(FINITES_NAN, {FINITES_SEGMENTS, 7, {1, 1, 1}}, {1.0, nan, 1.0});
  expect(FINITES_RANGE, {FINITES_SEGMENTS, 7, {1, 1, 1}}, {1.0, 2e30, 1.0});
  expect(FINITES_RESULT, {FINITES_ORBISON, 7, {1e-30, 1e-30, 1e-30}}, {1e30, 1e30, 1e30});
  const finites_yield y{FINITES_SINGLE, 1, {1, 1, 1}};
  std::int32_t count = 0;
  double value = 0.0;
  EXPECT_EQ(finites_yield_equations(nullptr, f.data(), &count, nullptr, nullptr, nullptr), FINITES_NULL);
  EXPECT_EQ(finites_yield_equations(&y, nullptr, &count, nullptr, nullptr, nullptr), FINITES_NULL);
  EXPECT_EQ(finites_yield_equations(&y, f.data(), nullptr, nullptr, nullptr, nullptr), FINITES_NULL);
  EXPECT_EQ(finites_yield_value(&y, f.data(), nullptr), FINITES_NULL);
  EXPECT_EQ(finites_yield_value(&y, nullptr, &value), FINITES_NULL);
}
