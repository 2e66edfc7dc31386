// yield_orbison_test.cpp: value and gradient of the smooth surface of Orbison, McGuire and Abel (1982).
//
// Numbers by hand are taken at p = 2, my = 3, mz = 5 with capacities 2, 4 and 8, so that normalising is exact:
//
//     1.15 p^2 = 4.6            mz^2 = 25                   my^4 = 81
//     3.67 p^2 mz^2 = 367       3 p^6 my^2 = 1728           4.65 mz^4 my^2 = 26156.25
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "comparison.h"
#include "hinge_calls.h"
#include "random_shapes.h"

namespace {

using namespace hinge_tests;

constexpr section_forces UNIT{1, 1, 1};
constexpr section_forces C{2, 4, 8};
constexpr section_forces F{4, 12, 40};  // p = 2, my = 3, mz = 5
const std::vector<double> ZERO(3, 0.0);
constexpr double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();

std::vector<double> scaled(std::vector<double> g, const section_forces& factors) {
  g[0] *= factors.P;
  g[1] *= factors.MY;
  g[2] *= factors.MZ;
  return g;
}

}  // namespace

TEST(OrbisonValue, EachTermByHand) {
  EXPECT_CLOSE(phi_orbison(UNIT, 7, {2, 0, 0}), 4.6, 4.6, 4);
  EXPECT_CLOSE(phi_orbison(UNIT, 7, {0, 3, 0}), 81.0, 81.0, 4);
  EXPECT_CLOSE(phi_orbison(UNIT, 7, {0, 0, 5}), 25.0, 25.0, 4);
  EXPECT_CLOSE(phi_orbison(UNIT, 7, {2, 0, 5}), 4.6 + 25 + 367, 400.0, 4);
  EXPECT_CLOSE(phi_orbison(UNIT, 7, {2, 3, 0}), 4.6 + 81 + 1728, 1800.0, 4);
  EXPECT_CLOSE(phi_orbison(UNIT, 7, {0, 3, 5}), 25 + 81 + 26156.25, 26000.0, 4);
  EXPECT_CLOSE(phi_orbison(C, 7, F), 28361.85, 28361.85, 4);
}

TEST(OrbisonValue, TheAxialForceAloneAtNineTenths) {
  EXPECT_CLOSE(phi_orbison({200, 30, 40}, 7, {180, 0, 0}), 0.9315, 0.9315, 4);
}

TEST(OrbisonValue, EachForceSetDropsWhatItExcludes) {
  EXPECT_CLOSE(phi_orbison(C, 2, F), 81.0, 81.0, 4);
  EXPECT_CLOSE(phi_orbison(C, 3, F), 25.0, 25.0, 4);
  EXPECT_CLOSE(phi_orbison(C, 4, F), 4.6 + 81 + 1728, 1813.6, 4);
  EXPECT_CLOSE(phi_orbison(C, 5, F), 4.6 + 25 + 367, 396.6, 4);
  EXPECT_CLOSE(phi_orbison(C, 6, F), 25 + 81 + 26156.25, 26262.25, 4);
}

TEST(OrbisonValue, EveryOtherForceSetKeepsAllThree) {
  for (const int FS : {1, 7, 0, 8, -3, 2147483647}) EXPECT_CLOSE(phi_orbison(C, FS, F), 28361.85, 28361.85, 4) << FS;
}

TEST(OrbisonValue, SignsOfForcesDoNotMatter) {
  const double expected = phi_orbison(C, 7, F);
  for (int signs = 1; signs < 8; ++signs) {
    const section_forces f{signs & 1 ? -F.P : F.P, signs & 2 ? -F.MY : F.MY, signs & 4 ? -F.MZ : F.MZ};
    EXPECT_EQ(phi_orbison(C, 7, f), expected) << signs;
  }
}

TEST(OrbisonValue, ThePublishedSurfaceIsPassedBetweenTheNeighboursOfSixDigits) {
  // Points of PHI = 1 to six digits, as roots of the polynomial: half a digit less lies inside, half a digit more
  // outside.
  constexpr double HALF_A_DIGIT = 5e-7;
  struct surface_point {
    section_forces direction, fixed;
    double root;
  };
  const surface_point points[] = {{{1, 0, 0}, {0, 0, 0}, 0.932505},
                                  {{0, 0, 1}, {0.5, 0, 0}, 0.609572},
                                  {{0, 1, 0}, {0.5, 0, 0}, 0.906082},
                                  {{0, 1, 1}, {0, 0, 0}, 0.658368},
                                  {{1, 1, 1}, {0, 0, 0}, 0.514943}};
  for (const surface_point& s : points) {
    for (const double side : {-1.0, 1.0}) {
      const double r = s.root + side * HALF_A_DIGIT;
      const double PHI = phi_orbison(
          UNIT, 7, {s.fixed.P + r * s.direction.P, s.fixed.MY + r * s.direction.MY, s.fixed.MZ + r * s.direction.MZ});
      EXPECT_EQ(PHI > 1.0, side > 0.0) << s.root << ": " << PHI;
    }
  }
}

TEST(OrbisonValue, ACapacityThatIsNotAboveZeroGivesZero) {
  for (const double bad : {0.0, -0.0, -2.0, NOT_A_NUMBER}) {
    for (const section_forces& c : with_one_capacity(bad)) {
      for (int FS = 1; FS <= 7; ++FS) EXPECT_EQ(phi_orbison(c, FS, F), 0.0) << FS;
    }
  }
}

TEST(OrbisonGradient, EachForceSetByHand) {
  // With respect to the forces: derivatives of p, my, mz over 2, 4, 8.
  //   P:   2.3 p = 4.6      7.34 p mz^2 = 367          18 p^5 my^2 = 5184
  //   My:  4 my^3 = 108     6 p^6 my = 1152            9.3 mz^4 my = 17437.5
  //   Mz:  2 mz = 10        7.34 p^2 mz = 146.8        18.6 mz^3 my^2 = 20925
  const double p5 = (4.6 + 367) / 2, p4 = (4.6 + 5184) / 2, p7 = (4.6 + 367 + 5184) / 2;
  const double my4 = (108 + 1152) / 4.0, my6 = (108 + 17437.5) / 4, my7 = (108 + 1152 + 17437.5) / 4;
  const double mz5 = (10 + 146.8) / 8, mz6 = (10 + 20925) / 8.0, mz7 = (10 + 146.8 + 20925) / 8;
  EXPECT_EQ(gradient_orbison(1, C, F), ZERO);
  EXPECT_CLOSE(gradient_orbison(2, C, F), (std::vector<double>{0, 108 / 4.0, 0}), 27.0, 4);
  EXPECT_CLOSE(gradient_orbison(3, C, F), (std::vector<double>{0, 0, 10 / 8.0}), 1.25, 4);
  EXPECT_CLOSE(gradient_orbison(4, C, F), (std::vector<double>{p4, my4, 0}), my4, 8);
  EXPECT_CLOSE(gradient_orbison(5, C, F), (std::vector<double>{p5, 0, mz5}), mz5, 8);
  EXPECT_CLOSE(gradient_orbison(6, C, F), (std::vector<double>{0, my6, mz6}), mz6, 8);
  EXPECT_CLOSE(gradient_orbison(7, C, F), (std::vector<double>{p7, my7, mz7}), mz7, 8);
}

TEST(OrbisonGradient, WhatAForceSetExcludesIsExactlyZero) {
  const bool kept[8][3] = {{false, false, false}, {false, false, false}, {false, true, false}, {false, false, true},
                           {true, true, false},   {true, false, true},   {false, true, true},  {true, true, true}};
  for (int FS = 1; FS <= 7; ++FS) {
    const std::vector<double> g = gradient_orbison(FS, C, F);
    for (std::size_t i = 0; i < 3; ++i) EXPECT_EQ(g[i] != 0.0, kept[FS][i]) << FS << " entry " << i;
  }
}

TEST(OrbisonGradient, KeepsTheSignsOfTheForces) {
  for (int FS = 2; FS <= 7; ++FS) {
    const std::vector<double> positive = gradient_orbison(FS, C, F);
    for (int signs = 0; signs < 8; ++signs) {
      const section_forces s{signs & 1 ? -1.0 : 1.0, signs & 2 ? -1.0 : 1.0, signs & 4 ? -1.0 : 1.0};
      EXPECT_EQ(gradient_orbison(FS, C, {s.P * F.P, s.MY * F.MY, s.MZ * F.MZ}), scaled(positive, s)) << FS;
    }
  }
}

TEST(OrbisonGradient, IsZeroForTheFirstForceSetAndForUnknownOnes) {
  for (const int FS : {1, 0, 8, -1, 2147483647, -2147483647 - 1}) EXPECT_EQ(gradient_orbison(FS, C, F), ZERO) << FS;
}

TEST(OrbisonGradient, IsZeroWithoutCapacities) {
  for (const double bad : {0.0, -2.0, NOT_A_NUMBER}) {
    for (const section_forces& c : with_one_capacity(bad)) {
      for (int FS = 1; FS <= 7; ++FS) EXPECT_EQ(gradient_orbison(FS, c, F), ZERO) << FS;
    }
  }
}

TEST(OrbisonGradient, IsTheDerivativeOfTheValueForSetsTwoToSeven) {
  support::seeded_random random(5201);
  for (int i = 0; i < 200; ++i) {
    const section_forces c{random.log_uniform(0.1, 1e4), random.log_uniform(0.1, 1e4), random.log_uniform(0.1, 1e4)};
    const double n[3] = {random.uniform(-1.2, 1.2), random.uniform(-1.2, 1.2), random.uniform(-1.2, 1.2)};
    for (int FS = 2; FS <= 7; ++FS) {
      // Normalised: dPHI/dp = CP dPHI/dP. A central difference of four points, error h^4.
      const std::vector<double> actual = scaled(gradient_orbison(FS, c, {n[0] * c.P, n[1] * c.MY, n[2] * c.MZ}), c);
      std::vector<double> expected;
      for (int k = 0; k < 3; ++k) {
        constexpr double h = 1e-3;
        double at[4];
        for (int s = 0; s < 4; ++s) {
          constexpr double steps[4] = {-2, -1, 1, 2};
          double m[3] = {n[0], n[1], n[2]};
          m[k] += steps[s] * h;
          at[s] = phi_orbison(c, FS, {m[0] * c.P, m[1] * c.MY, m[2] * c.MZ});
        }
        expected.push_back((at[0] - 8 * at[1] + 8 * at[2] - at[3]) / (12 * h));
      }
      // Fifth derivatives are below 1e4, values below 40.
      EXPECT_WITHIN(actual, expected, 1.0, 1e-8) << FS;
    }
  }
}

TEST(OrbisonGradient, IsHomogeneousTermByTerm) {
  // Euler: each monomial of degree d has x . grad = d times itself; with p alone d is 2.
  EXPECT_CLOSE(gradient_orbison(5, {1, 1, 1}, {0.25, 0, 0})[0] * 0.25, 2 * phi_orbison(UNIT, 5, {0.25, 0, 0}), 0.2, 4);
  EXPECT_CLOSE(gradient_orbison(4, {1, 1, 1}, {0, 0.25, 0})[1] * 0.25, 4 * phi_orbison(UNIT, 4, {0, 0.25, 0}), 0.02, 4);
}
