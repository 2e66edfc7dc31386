// two_records_test.cpp: principal values of two records at once, against the formulas one surface at a time, for every
// size of stress and for NaN and infinities.
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstring>
#include <vector>

#include "broken_values.h"
#include "finites/fields.h"
#include "plate_results/principal_values.h"
#include "random_shapes.h"

using support::seeded_random;

namespace {

constexpr int STRESSES[] = {COL_STRESS_TOP, COL_STRESS_MID, COL_STRESS_BOTTOM};
constexpr int PRINCIPALS[] = {COL_PRINCIPAL_TOP, COL_PRINCIPAL_MID, COL_PRINCIPAL_BOTTOM};

using record = std::array<double, RES_LENGTH>;

double& at(record& r, int column) { return r[static_cast<std::size_t>(column - 1)]; }
double at(const record& r, int column) { return r[static_cast<std::size_t>(column - 1)]; }

record random_record(seeded_random& random, double magnitude) {
  record r{};
  for (const int first : STRESSES) {
    for (int i = 0; i < 3; ++i) at(r, first + i) = random.uniform(-magnitude, magnitude);
  }
  at(r, COL_SHEAR_STRESS) = random.uniform(-magnitude, magnitude);
  at(r, COL_SHEAR_STRESS + 1) = random.uniform(-magnitude, magnitude);
  return r;
}

// Mohr's circle of each surface by the arc tangent of the doubled shear, one number after the other.
record by_circle(record r) {
  double scale = std::fabs(at(r, COL_STRESS_BOTTOM + 2));
  const auto raise = [&scale](double v) { scale = scale <= v ? v : scale; };
  raise(std::fabs(at(r, COL_STRESS_BOTTOM) - at(r, COL_STRESS_BOTTOM + 1)));
  for (const int first : {COL_STRESS_MID, COL_STRESS_TOP}) {
    raise(std::fabs(at(r, first + 2)));
    raise(std::fabs(at(r, first) - at(r, first + 1)));
  }
  for (int s = 0; s < 3; ++s) {
    const double x = at(r, STRESSES[s]), y = at(r, STRESSES[s] + 1), xy = at(r, STRESSES[s] + 2);
    const double radius = std::sqrt((x - y) / 2.0 * ((x - y) / 2.0) + xy * xy);
    const bool turned = scale > 1e-9 && (std::fabs(x - y) / scale > 1e-9 || std::fabs(xy) / scale > 1e-9);
    const double s1 = (x + y) / 2.0 + radius, s2 = (x + y) / 2.0 - radius;
    const double xz = at(r, COL_SHEAR_STRESS), yz = at(r, COL_SHEAR_STRESS + 1);
    double* const out = &at(r, PRINCIPALS[s]);
    out[0] = turned ? 0.5 * std::atan2(2.0 * xy, x - y) : 0.0;
    out[1] = s1;
    out[2] = s2;
    out[3] = radius;
    out[4] = std::sqrt(s1 * s1 + s2 * s2 - s1 * s2) + (s == 1 ? std::sqrt(3.0 * (xz * xz + yz * yz)) : 0.0);
  }
  return r;
}

void expect_same(const record& actual, const record& expected) {
  std::vector<double> angles[2], stresses[2];
  for (const int first : PRINCIPALS) {
    for (int i = 0; i < 5; ++i) {
      (i == 0 ? angles : stresses)[0].push_back(at(actual, first + i));
      (i == 0 ? angles : stresses)[1].push_back(at(expected, first + i));
    }
  }
  support::expect_same_places(stresses[0], stresses[1]);
  for (std::size_t s = 0; s < 3; ++s) {
    if (std::isnan(angles[1][s])) {
      EXPECT_TRUE(std::isnan(angles[0][s]));
    } else {
      EXPECT_NEAR(angles[0][s], angles[1][s], 4e-16);
      EXPECT_EQ(std::signbit(angles[0][s]), std::signbit(angles[1][s]));
    }
  }
}

void expect_both(const record& first, const record& second) {
  record a = first, b = second;
  principal_values_of_two(a.data(), b.data());
  expect_same(a, by_circle(first));
  expect_same(b, by_circle(second));
}

}  // namespace

TEST(TwoRecords, AreMohrsCircleForEverySizeOfStress) {
  seeded_random random(71);
  for (const double magnitude : {1e-30, 1e-12, 1e-9, 1e-6, 1.0, 1e6, 1e100, 1e150, 1e153}) {
    for (int trial = 0; trial < 200; ++trial) {
      expect_both(random_record(random, magnitude), random_record(random, magnitude * 1e3));
    }
  }
}

// The relative error of small angles, and the directions where the formula changes: at 22.5 and 45 degrees.
TEST(TwoRecords, AnglesAreExactToTheLastDigits) {
  seeded_random random(72);
  for (int trial = 0; trial < 20000; ++trial) {
    const double angle = trial % 4 == 0   ? random.log_uniform(1e-8, 1.0)
                         : trial % 4 == 1 ? std::acos(-1.0) / 8.0 + random.uniform(-1e-9, 1e-9)
                         : trial % 4 == 2 ? std::acos(-1.0) / 4.0 + random.uniform(-1e-9, 1e-9)
                                          : random.uniform(-1.5, 1.5);
    record r{}, other = random_record(random, 1.0);
    at(r, COL_STRESS_TOP) = 7.0 * std::cos(2.0 * angle);
    at(r, COL_STRESS_TOP + 2) = 3.5 * std::sin(2.0 * angle);
    const long double exact = 0.5L * std::atan2(2.0L * static_cast<long double>(at(r, COL_STRESS_TOP + 2)),
                                                static_cast<long double>(at(r, COL_STRESS_TOP)));
    principal_values_of_two(other.data(), r.data());
    const long double error = std::fabs(static_cast<long double>(at(r, COL_PRINCIPAL_TOP)) - exact);
    ASSERT_LE(static_cast<double>(error / std::fabs(exact)), 7e-16) << "angle " << angle;
  }
}

TEST(TwoRecords, DoNotKnowOfEachOther) {
  seeded_random random(73);
  for (int trial = 0; trial < 200; ++trial) {
    const record given = random_record(random, 100.0);
    record alone = given, first = given, second = given;
    record quiet{}, loud = random_record(random, trial % 2 == 0 ? 1e200 : 1e12);
    if (trial % 3 == 0) at(loud, COL_STRESS_MID) = support::BROKEN[trial % 2];
    PRINCIPAUX_PLA(alone.data(), RES_LENGTH);
    principal_values_of_two(first.data(), loud.data());
    principal_values_of_two(quiet.data(), second.data());
    EXPECT_EQ(std::memcmp(alone.data(), first.data(), sizeof alone), 0);
    EXPECT_EQ(std::memcmp(alone.data(), second.data(), sizeof alone), 0);
  }
}

TEST(TwoRecords, StressesWhoseSquaresOverflowKeepTheirDirection) {
  seeded_random random(74);
  for (const double magnitude : {1e155, 1e200, 1e307}) {
    for (int trial = 0; trial < 100; ++trial) {
      expect_both(random_record(random, magnitude), random_record(random, 1.0));
    }
  }
}

TEST(TwoRecords, CarryBrokenStresses) {
  seeded_random random(75);
  for (const double broken : support::BROKEN) {
    for (const int first : {COL_STRESS_TOP, COL_STRESS_MID, COL_STRESS_BOTTOM, COL_SHEAR_STRESS}) {
      for (int i = 0; i < (first == COL_SHEAR_STRESS ? 2 : 3); ++i) {
        SCOPED_TRACE(::testing::Message() << "column " << first + i << " is " << broken);
        record r = random_record(random, 10.0);
        at(r, first + i) = broken;
        expect_both(r, random_record(random, 10.0));
        expect_both(random_record(random, 10.0), r);
        record alone = r;
        PRINCIPAUX_PLA(alone.data(), RES_LENGTH);
        expect_same(alone, by_circle(r));
      }
    }
  }
}
