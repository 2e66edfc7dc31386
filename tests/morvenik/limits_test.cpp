// limits_test.cpp: the ends of the range: every status, cables without load, chords along the load, coincident nodes.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "cable_case.h"

namespace {

constexpr double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();
constexpr double INFINITE = std::numeric_limits<double>::infinity();

cable_case hanging() {
  cable_case c;
  c.X2 = {60.0, 10.0, 0.0};
  c.w = {0.0, -10.0, 0.0};
  c.L0 = 80.0;
  return c;
}

void expect_zero(const cable_forces& f, const matrix6& K) {
  for (const double x : f.F) EXPECT_EQ(x, 0.0);
  for (const double x : K) EXPECT_EQ(x, 0.0);
  EXPECT_EQ(f.tension1, 0.0);
  EXPECT_EQ(f.tension2, 0.0);
}

// The forces are refused, and so is a tangent with the forces of a sound cable.
void expect_bad(const cable_case& c) {
  const cable_forces f = solve(c);
  EXPECT_EQ(f.status, CABLE_BAD_DATA) << describe(c);
  matrix6 K;
  K.fill(7.0);
  EXPECT_EQ(tangent(c, solve(hanging()), K), CABLE_BAD_DATA) << describe(c);
  expect_zero(f, K);
}

}  // namespace

TEST(Status, DataThatMakeNoCable) {
  for (const double bad : {0.0, -1.0, NOT_A_NUMBER, INFINITE, -INFINITE}) {
    cable_case c = hanging();
    c.L0 = bad;
    expect_bad(c);
    c = hanging();
    c.area = bad;
    expect_bad(c);
    c = hanging();
    c.E = bad;
    expect_bad(c);
  }
  for (const double bad : {-1.0, -1.5, NOT_A_NUMBER, INFINITE}) {
    cable_case c = hanging();
    c.e = bad;
    expect_bad(c);
  }
}

TEST(Status, CoordinatesAndLoadsThatAreNoNumbers) {
  for (const double bad : {NOT_A_NUMBER, INFINITE, -INFINITE}) {
    for (std::size_t i = 0; i < 3; ++i) {
      cable_case c = hanging();
      c.X1[i] = bad;
      expect_bad(c);
      c = hanging();
      c.X2[i] = bad;
      expect_bad(c);
      c = hanging();
      c.w[i] = bad;
      expect_bad(c);
    }
  }
}

TEST(Status, ForcesThatAreNoNumbersHaveNoTangent) {
  for (std::size_t i = 0; i < 6; ++i) {
    cable_forces f = solve(hanging());
    f.F[i] = NOT_A_NUMBER;
    matrix6 K;
    EXPECT_EQ(tangent(hanging(), f, K), CABLE_BAD_DATA);
    for (const double x : K) EXPECT_EQ(x, 0.0);
  }
}

TEST(Status, SlackWithoutLoad) {
  for (const double ratio : {0.0, 0.3, 0.999, 1.0}) {
    cable_case c = hanging();
    c.w = {0.0, 0.0, 0.0};
    c.X2 = {0.0, ratio * c.L0, 0.0};
    const cable_forces f = solve(c);
    EXPECT_EQ(f.status, CABLE_SLACK_WITHOUT_LOAD) << "chord " << ratio;
    matrix6 K;
    K.fill(7.0);
    EXPECT_EQ(tangent(c, f, K), CABLE_SLACK_WITHOUT_LOAD);
    expect_zero(f, K);
  }
}

TEST(Status, AHeatedCableGoesSlack) {
  cable_case c = hanging();
  c.w = {0.0, 0.0, 0.0};
  c.X2 = {80.4, 0.0, 0.0};
  EXPECT_EQ(solve(c).status, CABLE_SOLVED);
  c.e = 0.01;
  EXPECT_EQ(solve(c).status, CABLE_SLACK_WITHOUT_LOAD);
}

TEST(Status, ForcesBeyondTheRangeOfADouble) {
  cable_case c = hanging();
  c.w = {0.0, 0.0, 0.0};
  c.X2 = {1e200, 0.0, 0.0};
  c.E = 1e200;
  const cable_forces f = solve(c);
  EXPECT_EQ(f.status, CABLE_NOT_CONVERGED);
  for (const double x : f.F) EXPECT_EQ(x, 0.0);
}

// Along the chord E A/L0, across it T/chord.
TEST(WithoutLoad, ATautCableIsABarAndAString) {
  for (const double e : {0.0, -0.25, 0.125}) {
    cable_case c;
    c.L0 = 8.0;
    c.E = 1000.0;
    c.area = 2.0;
    c.e = e;
    c.X1 = {1.0, 2.0, 3.0};
    c.X2 = {1.0, 12.0, 3.0};
    const cable_forces f = solve(c);
    ASSERT_EQ(f.status, 0);
    // chord = (1 + e + T/(E A)) L0
    const double T = 2000.0 * (10.0 / 8.0 - 1.0 - e);
    EXPECT_NEAR(f.tension1, T, 1e-12 * T);
    EXPECT_NEAR(f.tension2, T, 1e-12 * T);
    EXPECT_NEAR(f.F[1], -T, 1e-12 * T);
    EXPECT_NEAR(f.F[4], T, 1e-12 * T);
    EXPECT_EQ(f.F[0], 0.0);
    matrix6 K;
    ASSERT_EQ(tangent(c, f, K), 0);
    EXPECT_NEAR(entry(K, 2, 2), 250.0, 1e-11);
    EXPECT_NEAR(entry(K, 2, 5), -250.0, 1e-11);
    EXPECT_NEAR(entry(K, 1, 1), T / 10.0, 1e-13 * T);
    EXPECT_NEAR(entry(K, 6, 6), T / 10.0, 1e-13 * T);
    EXPECT_NEAR(entry(K, 3, 6), -T / 10.0, 1e-13 * T);
    EXPECT_EQ(entry(K, 1, 2), 0.0);
  }
}

// The law of the cable has no jump at zero load: ever smaller loads come to the bar.
TEST(WithoutLoad, IsTheLimitOfSmallLoads) {
  cable_case c;
  c.L0 = 8.0;
  c.E = 2000.0;
  c.X2 = {6.0, 5.0, 3.0};
  const cable_forces bar = solve(c);
  matrix6 of_bar;
  ASSERT_EQ(tangent(c, bar, of_bar), 0);
  for (const double weight : {1e-13, 1e-20, 1e-100, 1e-200, 1e-290, 1e-305, 5e-324}) {
    c.w = {weight, -2.0 * weight, 0.5 * weight};
    const cable_forces f = solve(c);
    ASSERT_EQ(f.status, 0) << weight;
    for (std::size_t k = 0; k < 6; ++k) EXPECT_NEAR(f.F[k], bar.F[k], 1e-12 * bar.tension1) << weight;
    matrix6 K;
    ASSERT_EQ(tangent(c, f, K), 0) << weight;
    for (std::size_t k = 0; k < 36; ++k) EXPECT_NEAR(K[k], of_bar[k], 1e-12 * of_bar[0]) << weight;
  }
}

// A slack cable keeps its shape while its load falls: forces and tangent are proportional to it.
TEST(SmallLoad, ASlackCableIsProportionalToIt) {
  cable_case c = hanging();
  c.w = {1.0, -2.0, 0.5};
  c.E = 1e300;
  const cable_forces unit = solve(c);
  matrix6 of_unit;
  ASSERT_EQ(tangent(c, unit, of_unit), 0);
  c.E = 1e6;
  for (const int exponent : {-100, -400, -900}) {
    c.w = {std::ldexp(1.0, exponent), -std::ldexp(2.0, exponent), std::ldexp(0.5, exponent)};
    const cable_forces f = solve(c);
    ASSERT_EQ(f.status, 0);
    matrix6 K;
    ASSERT_EQ(tangent(c, f, K), 0);
    for (std::size_t k = 0; k < 6; ++k) EXPECT_NEAR(std::ldexp(f.F[k], -exponent), unit.F[k], 1e-12 * unit.tension1);
    for (std::size_t k = 0; k < 36; ++k) EXPECT_NEAR(std::ldexp(K[k], -exponent), of_unit[k], 1e-12 * of_unit[0]);
  }
}

TEST(AlongTheLoad, ATautCableHangsFromItsUpperNode) {
  cable_case c;
  c.L0 = 10.0;
  c.E = 1000.0;
  c.w = {0.0, 0.0, -3.0};
  c.X1 = {1.0, 1.0, 20.0};
  c.X2 = {1.0, 1.0, 9.0};
  const cable_forces f = solve(c);
  ASSERT_EQ(f.status, 0);
  // Stretch: middle tension / (E A) = 0.1, so 100 at the middle and 15 of weight to each side.
  EXPECT_NEAR(f.F[2], 115.0, 1e-11);
  EXPECT_NEAR(f.F[5], -85.0, 1e-11);
  EXPECT_NEAR(f.tension1, 115.0, 1e-11);
  EXPECT_NEAR(f.tension2, 85.0, 1e-11);
  EXPECT_EQ(f.F[0], 0.0);
  EXPECT_EQ(f.F[4], 0.0);
  matrix6 K;
  ASSERT_EQ(tangent(c, f, K), 0);
  EXPECT_NEAR(entry(K, 3, 3), 100.0, 1e-10);
  // Across: the chain of elements ds/T in series, length (1/30) ln(115/85) + 10/1000.
  const double across = 1.0 / (10.0 / 30.0 * std::log(115.0 / 85.0) + 10.0 / 1000.0);
  EXPECT_NEAR(entry(K, 1, 1), across, 1e-12 * across);
  EXPECT_NEAR(entry(K, 2, 2), across, 1e-12 * across);
  EXPECT_EQ(entry(K, 1, 3), 0.0);
}

// Both parts hang down from their nodes; the fold lies where the tension is zero.
TEST(AlongTheLoad, ASlackCableIsFolded) {
  for (const double fall : {-7.0, -2.0, 0.0, 4.0}) {
    cable_case c;
    c.L0 = 10.0;
    c.E = 1e15;
    c.w = {0.0, -2.0, 0.0};
    c.X2 = {0.0, fall, 0.0};
    const cable_forces f = solve(c);
    ASSERT_EQ(f.status, 0);
    // Lengths a and b with a + b = 10, a - b = -fall, each carried by its node.
    EXPECT_NEAR(f.F[1], 2.0 * (10.0 - fall) / 2.0, 1e-11);
    EXPECT_NEAR(f.F[4], 2.0 * (10.0 + fall) / 2.0, 1e-11);
    EXPECT_EQ(f.F[0], 0.0);
    matrix6 K;
    ASSERT_EQ(tangent(c, f, K), 0);
    // Half of a lowered node's way goes over the fold: w/2.
    EXPECT_NEAR(entry(K, 2, 2), 1.0, 1e-10);
    EXPECT_EQ(entry(K, 1, 1), entry(K, 3, 3));
    EXPECT_GT(entry(K, 1, 1), 0.0);
    EXPECT_LT(entry(K, 1, 1), 0.05);  // the stiffness across falls with the logarithm of the offset
    EXPECT_EQ(entry(K, 1, 2), 0.0);
  }
}

TEST(AlongTheLoad, TheTangentDoesNotDependOnTheAxes) {
  for (const double fall : {0.2, 0.99, 1.0, 1.2}) {
    cable_case upright;
    upright.L0 = 10.0;
    upright.w = {0.0, -2.0, 0.0};
    upright.X2 = {0.0, -10.0 * fall, 0.0};
    cable_case inclined = upright;
    const double third = 1.0 / std::sqrt(3.0);
    inclined.w = {2.0 * third, 2.0 * third, -2.0 * third};
    inclined.X2 = {10.0 * fall * third, 10.0 * fall * third, -10.0 * fall * third};
    matrix6 K;
    matrix6 turned;
    ASSERT_EQ(tangent(upright, solve(upright), K), 0);
    ASSERT_EQ(tangent(inclined, solve(inclined), turned), 0);
    const double scale = entry(K, 2, 2);
    // n = (1, 1, -1)/sqrt(3): k across (I - n nT) + k along n nT
    EXPECT_NEAR(entry(turned, 1, 1), (2.0 * entry(K, 1, 1) + entry(K, 2, 2)) / 3.0, 1e-9 * scale) << fall;
    EXPECT_NEAR(entry(turned, 1, 3), (entry(K, 1, 1) - entry(K, 2, 2)) / 3.0, 1e-9 * scale) << fall;
  }
}

TEST(CoincidentNodes, CarryHalfOfTheLoadEach) {
  cable_case c;
  c.X1 = c.X2 = {5.0, -3.0, 1.0};
  c.L0 = 12.0;
  c.w = {1.0, -2.0, 0.5};
  const cable_forces f = solve(c);
  ASSERT_EQ(f.status, 0);
  for (std::size_t i = 0; i < 6; ++i) EXPECT_NEAR(f.F[i], -6.0 * c.w[i % 3], 1e-12);
  matrix6 K;
  ASSERT_EQ(tangent(c, f, K), 0);
  for (const double x : K) EXPECT_TRUE(std::isfinite(x));
}
