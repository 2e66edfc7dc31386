// yield_single_forces_test.cpp: a hinge in one force alone: selection, value, gradient.
#include <gtest/gtest.h>

#include <limits>

#include "comparison.h"
#include "hinge_calls.h"

namespace {

using namespace hinge_tests;

constexpr section_forces C{2, 4, 8};
const std::vector<double> ZERO(3, 0.0);
constexpr double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();
constexpr int LARGEST = 2147483647;

// The force of a set alone.
section_forces alone(int FS, double value) {
  return {FS == 1 ? value : -3.0, FS == 2 ? value : 5.0, FS == 3 ? value : -7.0};
}

double capacity(int FS) { return FS == 1 ? C.P : FS == 2 ? C.MY : C.MZ; }

}  // namespace

TEST(SingleForceSelection, TheSignOfTheForceOfTheSetChooses) {
  for (int FS = 1; FS <= 3; ++FS) {
    EXPECT_EQ(select_single(C, FS, alone(FS, 6)), (selection{1, {1, 0, 0, 0}})) << FS;
    EXPECT_EQ(select_single(C, FS, alone(FS, -6)), (selection{1, {2, 0, 0, 0}})) << FS;
    EXPECT_EQ(select_single(C, FS, alone(FS, -1e-300)), (selection{1, {2, 0, 0, 0}})) << FS;
  }
}

TEST(SingleForceSelection, ZeroCountsAsPositive) {
  for (int FS = 1; FS <= 3; ++FS) {
    EXPECT_EQ(select_single(C, FS, alone(FS, 0.0)), (selection{1, {1, 0, 0, 0}}));
    EXPECT_EQ(select_single(C, FS, alone(FS, -0.0)), (selection{1, {1, 0, 0, 0}}));
  }
}

TEST(SingleForceSelection, EveryOtherForceSetHasNoEquation) {
  for (const int FS : {4, 5, 6, 7, 8, 0, -1, LARGEST}) {
    EXPECT_EQ(select_single(C, FS, {-1, -1, -1}), (selection{0, {0, 0, 0, 0}})) << FS;
  }
}

TEST(SingleForceSelection, HasNoEquationWithoutCapacities) {
  for (const double bad : {0.0, -2.0, NOT_A_NUMBER}) {
    for (const section_forces& c : with_one_capacity(bad)) {
      for (int FS = 1; FS <= 3; ++FS) {
        EXPECT_EQ(select_single(c, FS, {-1, -1, -1}), (selection{0, {0, 0, 0, 0}})) << FS;
      }
    }
  }
}

TEST(SingleForceValue, IsTheNormalisedForceWithTheSignOfTheSegment) {
  for (int FS = 1; FS <= 3; ++FS) {
    for (const double force : {6.0, -6.0, 0.0}) {
      EXPECT_EQ(phi_single({1, 0, 0, 0}, C, FS, alone(FS, force)), force / capacity(FS)) << FS;
      EXPECT_EQ(phi_single({2, 0, 0, 0}, C, FS, alone(FS, force)), -force / capacity(FS)) << FS;
    }
  }
}

TEST(SingleForceValue, TheLastPositiveEntryCounts) {
  EXPECT_EQ(phi_single({1, 2, 0, 0}, C, 1, {6, 0, 0}), -3.0);
  EXPECT_EQ(phi_single({2, 1, 0, 0}, C, 1, {6, 0, 0}), 3.0);
  EXPECT_EQ(phi_single({2, 0, 0, 1}, C, 1, {6, 0, 0}), 3.0);
  EXPECT_EQ(phi_single({0, 0, 2, 0}, C, 1, {6, 0, 0}), -3.0);
  EXPECT_EQ(phi_single({1, -2, -1, 0}, C, 1, {6, 0, 0}), 3.0);
}

TEST(SingleForceValue, ANumberThatIsNoSideIsPassedOver) {
  EXPECT_EQ(phi_single({2, 3, LARGEST, 0}, C, 1, {6, 0, 0}), -3.0);
  EXPECT_EQ(phi_single({3, 4, 5, LARGEST}, C, 1, {6, 0, 0}), 0.0);
}

TEST(SingleForceValue, IsZeroWithoutAPositiveEntry) {
  for (const segments& none : {segments{0, 0, 0, 0}, segments{-1, -2, 0, -1}}) {
    EXPECT_EQ(phi_single(none, C, 1, {6, 0, 0}), 0.0);
  }
}

TEST(SingleForceValue, IsZeroForForceSetsAboveThree) {
  for (const int FS : {4, 5, 6, 7, 8, LARGEST}) EXPECT_EQ(phi_single({2, 0, 0, 0}, C, FS, {6, 6, 6}), 0.0) << FS;
}

TEST(SingleForceValue, IsZeroWithoutCapacities) {
  for (const double bad : {0.0, -2.0, NOT_A_NUMBER}) {
    for (const section_forces& c : with_one_capacity(bad)) {
      for (int FS = 1; FS <= 3; ++FS) EXPECT_EQ(phi_single({1, 0, 0, 0}, c, FS, {6, 6, 6}), 0.0) << FS;
    }
  }
}

TEST(SingleForceGradient, IsOneOverTheCapacityWithTheSignOfTheSegment) {
  for (int FS = 1; FS <= 3; ++FS) {
    std::vector<double> expected = ZERO;
    const auto k = static_cast<std::size_t>(FS - 1);
    expected[k] = 1 / capacity(FS);
    EXPECT_EQ(gradient_single(1, FS, C, {6, 6, 6}), expected) << FS;
    expected[k] = -1 / capacity(FS);
    EXPECT_EQ(gradient_single(2, FS, C, {6, 6, 6}), expected) << FS;
  }
  EXPECT_EQ(gradient_single(1, 3, {2, 4, 3}, {0, 0, 0}), (std::vector<double>{0, 0, 1.0 / 3.0}));
}

TEST(SingleForceGradient, IsTheDerivativeOfTheValue) {
  for (int FS = 1; FS <= 3; ++FS) {
    for (int S = 1; S <= 2; ++S) {
      // The value is linear: a step of 1 is the derivative. Capacities are powers of two.
      const double slope =
          phi_single({S, 0, 0, 0}, C, FS, alone(FS, 7)) - phi_single({S, 0, 0, 0}, C, FS, alone(FS, 6));
      EXPECT_EQ(gradient_single(S, FS, C, alone(FS, 6))[static_cast<std::size_t>(FS - 1)], slope);
    }
  }
}

TEST(SingleForceGradient, IsZeroForOtherSegmentsAndForceSets) {
  for (const int S : {0, 3, -1, LARGEST}) {
    for (int FS = 1; FS <= 3; ++FS) EXPECT_EQ(gradient_single(S, FS, C, {6, 6, 6}), ZERO) << S;
  }
  for (const int FS : {0, 4, 5, 6, 7, -1, LARGEST}) {
    for (int S = 1; S <= 2; ++S) EXPECT_EQ(gradient_single(S, FS, C, {6, 6, 6}), ZERO) << FS;
  }
}

TEST(SingleForceGradient, IsZeroWithoutCapacities) {
  for (const double bad : {0.0, -2.0, NOT_A_NUMBER}) {
    for (const section_forces& c : with_one_capacity(bad)) {
      for (int FS = 1; FS <= 3; ++FS) EXPECT_EQ(gradient_single(1, FS, c, {6, 6, 6}), ZERO) << FS;
    }
  }
}
