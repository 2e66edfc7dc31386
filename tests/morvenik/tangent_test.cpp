// tangent_test.cpp: the tangent against differences of the forces and against the inverse of the integrated
// flexibility; its symmetry, its rigid translations.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "cable_case.h"

namespace {

double largest(const matrix6& K) {
  double size = 0.0;
  for (const double x : K) size = std::max(size, std::fabs(x));
  return size;
}

cable_case moved(const cable_case& c, std::size_t j, double by) {
  cable_case result = c;
  (j < 3 ? result.X1[j] : result.X2[j - 3]) += by;
  return result;
}

// Central differences with steps h and 2 h, extrapolated.
double difference(const cable_case& c, std::size_t i, std::size_t j, double h) {
  const auto F = [&](double by) { return solve(moved(c, j, by)).F[i]; };
  return (8.0 * (F(h) - F(-h)) - (F(2.0 * h) - F(-2.0 * h))) / (12.0 * h);
}

void expect_differences(const cable_case& c) {
  const cable_forces f = solve(c);
  matrix6 K;
  ASSERT_EQ(f.status, 0) << describe(c);
  ASSERT_EQ(tangent(c, f, K), 0) << describe(c);
  const double scale = largest(K);
  const double h = std::ldexp(1.0, std::ilogb(c.L0) - 17);
  for (std::size_t j = 0; j < 6; ++j) {
    for (std::size_t i = 0; i < 6; ++i) {
      const double slope = difference(c, i, j, h);
      EXPECT_LE(std::fabs(K[6 * j + i] - slope) / scale, 1e-6)
          << "K(" << i + 1 << ", " << j + 1 << ") " << K[6 * j + i] << " difference " << slope << "\n"
          << describe(c);
    }
  }
}

// K of the second node times the integrated flexibility is the unit matrix.
void expect_inverse_of_flexibility(const cable_case& c) {
  const cable_forces f = solve(c);
  matrix6 K;
  ASSERT_EQ(tangent(c, f, K), 0) << describe(c);
  const integrated_span whole = integrate(c, {-f.F[0], -f.F[1], -f.F[2]});
  for (int i = 0; i < 3; ++i) {
    for (int j = 0; j < 3; ++j) {
      long double sum = 0.0L;
      long double size = 0.0L;
      for (int k = 0; k < 3; ++k) {
        const long double term = static_cast<long double>(entry(K, i + 4, k + 4)) *
                                 whole.flexibility[3 * static_cast<std::size_t>(k) + static_cast<std::size_t>(j)];
        sum += term;
        size = std::max(size, std::fabs(term));
      }
      const double error = static_cast<double>(std::fabs(sum - (i == j ? 1.0L : 0.0L)) / std::max(size, 1.0L));
      EXPECT_LE(error, 1e-11) << "product (" << i + 1 << ", " << j + 1 << ")\n" << describe(c);
    }
  }
}

}  // namespace

TEST(Tangent, IsTheDifferenceOfTheForces) {
  std::mt19937_64 source(411);
  for (int i = 0; i < 150; ++i) {
    cable_case c = random_cable(source, 0.05 + 1.15 * i / 149.0);
    // Light and stiff cables bend their stiffness from slack to taut over less than a step of differences.
    const double weight = c.E * c.area * std::pow(10.0, uniform(source, -3.0, 0.0));
    for (double& x : c.w) x *= weight / load(c);
    expect_differences(c);
  }
}

TEST(Tangent, IsTheInverseOfTheIntegratedFlexibility) {
  std::mt19937_64 source(412);
  for (int i = 0; i < 1000; ++i) expect_inverse_of_flexibility(random_cable(source, uniform(source, 0.01, 1.2)));
}

TEST(Tangent, IsTheInverseOfTheFlexibilityAroundTheUnstressedLength) {
  std::mt19937_64 source(413);
  for (int i = 0; i < 500; ++i) {
    const double part = std::pow(10.0, uniform(source, -12.0, -2.0));
    expect_inverse_of_flexibility(random_cable(source, i % 2 == 0 ? 1.0 + part : 1.0 - part));
  }
}

TEST(Tangent, IsTheInverseOfTheFlexibilityNearlyAlongTheLoad) {
  std::mt19937_64 source(414);
  for (int i = 0; i < 300; ++i) {
    cable_case c = random_cable(source, 1.0);
    c.w = {0.0, -norm(c.w), 0.0};
    c.X2 = {std::pow(10.0, uniform(source, -10.0, -1.0)) * c.L0, uniform(source, -1.2, 1.2) * c.L0, 0.0};
    expect_inverse_of_flexibility(c);
  }
}

// Where the closed forms hand over to the points of a taut cable, at a tension of ten loads, both agree.
TEST(Tangent, HasNoJumpBetweenSlackAndTaut) {
  for (const double angle : {0.0, 0.4, 0.8, 1.2, 1.5, 1.5707963}) {
    cable_case c;
    c.w = {0.0, -1.0, 0.0};
    c.E = 1e9;
    matrix6 K[2];
    for (int side = 0; side < 2; ++side) {
      const double m = 10.0 * (side == 0 ? 1.0 - 1e-13 : 1.0 + 1e-13);
      cable_forces f;
      f.F = {-m * std::cos(angle), -m * std::sin(angle) + 0.5, 0.0,
             m * std::cos(angle),  m * std::sin(angle) + 0.5,  0.0};
      ASSERT_EQ(tangent(c, f, K[side]), 0);
    }
    for (std::size_t k = 0; k < 36; ++k) EXPECT_NEAR(K[0][k], K[1][k], 1e-11 * largest(K[0])) << "angle " << angle;
  }
}

TEST(Tangent, IsSymmetricAndFreeOfForcesInATranslation) {
  std::mt19937_64 source(415);
  for (int i = 0; i < 300; ++i) {
    const cable_case c = random_cable(source, uniform(source, 0.01, 1.2));
    matrix6 K;
    ASSERT_EQ(tangent(c, solve(c), K), 0);
    for (int row = 1; row <= 6; ++row) {
      for (int column = 1; column <= 6; ++column) EXPECT_EQ(entry(K, row, column), entry(K, column, row));
      for (int column = 1; column <= 3; ++column) EXPECT_EQ(entry(K, row, column) + entry(K, row, column + 3), 0.0);
    }
  }
}

// Out of the plane of load and chord the cable swings as a rigid body: H over the chord across the load.
TEST(Tangent, OutOfPlaneIsThePendulum) {
  std::mt19937_64 source(416);
  for (int i = 0; i < 100; ++i) {
    cable_case c = random_cable(source, 1.0);
    c.w = {0.0, -norm(c.w), 0.0};
    c.X2 = {uniform(source, 0.05, 1.0) * c.L0, uniform(source, -0.6, 0.6) * c.L0, 0.0};
    const cable_forces f = solve(c);
    matrix6 K;
    ASSERT_EQ(tangent(c, f, K), 0);
    const double expected = f.F[3] / c.X2[0];
    EXPECT_LE(std::fabs(entry(K, 3, 3) - expected) / expected, 1e-12) << describe(c);
    EXPECT_EQ(entry(K, 1, 3), 0.0);
    EXPECT_EQ(entry(K, 2, 3), 0.0);
  }
}

TEST(Tangent, TheElementNumberDoesNotMatterAndForcesAreNotSolvedAgain) {
  // Forces of no equilibrium of these nodes: the answer is that of the forces alone.
  cable_case c;
  c.w = {0.0, -1.0, 0.0};
  c.X2 = {0.5, 0.2, 0.0};
  const cable_forces f = solve(c);
  matrix6 K;
  matrix6 elsewhere;
  ASSERT_EQ(tangent(c, f, K), 0);
  c.X2 = {0.7, -0.2, 0.3};
  ASSERT_EQ(tangent(c, f, elsewhere), 0);
  EXPECT_EQ(K, elsewhere);
}
