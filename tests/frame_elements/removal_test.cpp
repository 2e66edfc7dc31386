// removal_test.cpp: the steps and coefficients by which a failing element leaves.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "assert_recorder.h"
#include "comparison.h"
#include "finites/finites.h"
#include "frame_model.h"

namespace {

using support::frame_model;
using support::member_description;

constexpr double not_a_number = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

class Removal : public ::testing::Test {
 protected:
  Removal() : model_({member_description{}}) { support::forget_assertions(); }

  int steps(double least) const {
    double ratio = -1.0;
    std::int32_t count = -1;
    GET_N_CONVERG_TOM(&least, &ratio, &count);
    return count;
  }
  double ratio(double least) const {
    double value = -1.0;
    std::int32_t count = -1;
    GET_N_CONVERG_TOM(&least, &value, &count);
    return value;
  }
  double coefficient(std::int32_t step, double least) const {
    double value = -1.0;
    GET_COEF_REMOVE(&step, &least, &value);
    return value;
  }
  double spring(std::int32_t step, double least, std::int32_t index, std::int32_t kind) const {
    double value = -1.0;
    GET_COEF_REMOVE_SPRING(&step, &least, &index, &kind, &value);
    return value;
  }

  frame_model model_;
};

}  // namespace

TEST_F(Removal, StepTable) {
  // trunc(log(1 / RMIN) / log(RATIO) + 0.99), worked out by hand from logarithms of base RATIO.
  const struct {
    float ratio;
    double least;
    int steps;
  } table[] = {
      {2.0F, 0.5, 1},           // 1 + 0.99
      {2.0F, 0.25, 2},          // 2 + 0.99
      {2.0F, 0.2, 3},           // 2.3219 + 0.99
      {2.0F, 0.249, 2},         // 2.0058 + 0.99: less than a hundredth beyond a whole step counts no more
      {2.0F, 0.2479, 3},        // 2.0122
      {2.0F, 1e-3, 10},         // 9.9658
      {2.0F, 1.0, 1},           // 0 + 0.99, at least 1
      {2.0F, 5.0, 1},           // negative
      {2.0F, 1e-20, 67},        // 66.4386
      {2.0F, 1e-30, 67},        // raised to 1e-20
      {2.0F, 0.0, 67},          //
      {2.0F, -4.0, 67},         //
      {10.0F, 1e-3, 3},         // 3 + 0.99
      {10.0F, 5e-4, 4},         // 3.3010
      {10.0F, 1e-20, 20},       //
      {9.9862F, 1e-30, 21},     // 20.0119: the floor on the least is 1e-20 and no more
      {9.9862F, 1.01e-20, 20},  // 20.0076
      {1.5F, 0.01, 12},         // 11.3577
      {1.25F, 1e-8, 83},        // 82.5504
      {1.25F, 1e-20, 100},      // 206.4, the cap
      {1.0625F, 0.01, 76},      // 75.961
      {0.5F, 0.01, 1},          // below 1: negative
      {0.5F, 4.0, 2},           // log(4) / log(2) = 2
      {0.5F, 1e300, 100},      {1e10F, 1e-3, 1},  // 0.3 + 0.99
  };
  for (const auto& row : table) {
    model_.set_remove_ratio(row.ratio);
    EXPECT_EQ(steps(row.least), row.steps) << "ratio " << row.ratio << ", least " << row.least;
    EXPECT_EQ(ratio(row.least), static_cast<double>(row.ratio));
  }
}

TEST_F(Removal, RatioIsWidenedFromSinglePrecision) {
  model_.set_remove_ratio(1.1F);
  EXPECT_EQ(ratio(0.5), static_cast<double>(1.1F));
  EXPECT_NE(ratio(0.5), 1.1);
}

TEST_F(Removal, ARatioOfOneEndsAtTheCap) {
  model_.set_remove_ratio(1.0F);
  EXPECT_EQ(steps(0.5), 100);
  EXPECT_EQ(steps(0.0), 100);
  EXPECT_EQ(steps(2.0), 1);  // the quotient has the other sign
}

TEST_F(Removal, NoNumberLeavesTheRangeOfSteps) {
  for (const float r : {1.0F, 2.0F, 0.0F, -1.0F, std::numeric_limits<float>::quiet_NaN(),
                        std::numeric_limits<float>::infinity(), 1.0000001F, 0.99999994F}) {
    model_.set_remove_ratio(r);
    for (const double least : {not_a_number, infinity, -infinity, 0.0, 1.0, 1e-300, 1e300, 0.3}) {
      EXPECT_GE(steps(least), 1) << r << ", " << least;
      EXPECT_LE(steps(least), 100) << r << ", " << least;
    }
  }
}

TEST_F(Removal, CoefficientTable) {
  model_.set_remove_ratio(2.0F);
  // RMIN 1e-3: ten steps.
  EXPECT_EQ(coefficient(0, 1e-3), 1.0);
  EXPECT_EQ(coefficient(7, 1e-3), 1.0);
  EXPECT_EQ(coefficient(0, 5.0), 1.0);  // whatever the least
  for (int step = 1; step <= 9; ++step) EXPECT_EQ(coefficient(-step, 1e-3), std::ldexp(1.0, -step));
  EXPECT_EQ(coefficient(-10, 1e-3), 1e-3);  // not 2^-10, which is below it too
  EXPECT_EQ(coefficient(-11, 1e-3), 1e-3);
  EXPECT_EQ(coefficient(-2147483647 - 1, 1e-3), 1e-3);
  EXPECT_EQ(coefficient(2147483647, 1e-3), 1.0);
}

TEST_F(Removal, TheLastStepTakesTheLeastCoefficientEvenFromAbove) {
  // RMIN 0.249 has two steps: at -2 the coefficient is 0.249, though 1/4 is above it.
  model_.set_remove_ratio(2.0F);
  EXPECT_EQ(coefficient(-1, 0.249), 0.5);
  EXPECT_EQ(coefficient(-2, 0.249), 0.249);
}

TEST_F(Removal, NeverBelowTheLeast) {
  // Eleven steps at 1.5 and the cap at 1.0625: where the power falls below the least, the least counts.
  model_.set_remove_ratio(2.0F);
  EXPECT_EQ(coefficient(-1, 0.7), 0.7);
  model_.set_remove_ratio(10.0F);
  // 5e-4 has four steps; 10^-3 is above, 10^-4 is not reached.
  EXPECT_CLOSE(coefficient(-3, 5e-4), 1e-3, 1e-3, 4);
  EXPECT_EQ(coefficient(-4, 5e-4), 5e-4);
}

TEST_F(Removal, ALeastOfZeroOrBelowStaysTheAnswer) {
  model_.set_remove_ratio(2.0F);
  for (const double least : {0.0, -3.0, 1e-30}) {
    EXPECT_EQ(coefficient(-66, least), std::ldexp(1.0, -66));
    EXPECT_EQ(coefficient(-67, least), least);
    EXPECT_EQ(coefficient(-1, least), 0.5);
  }
}

TEST_F(Removal, PowersOfAnOddRatio) {
  model_.set_remove_ratio(1.1F);
  const long double r = static_cast<double>(1.1F);
  for (int step = 1; step < 40; ++step) {
    const double expected = static_cast<double>(1.0L / std::pow(r, step));
    EXPECT_CLOSE(coefficient(-step, 1e-3), expected, expected, 4) << step;
  }
}

TEST_F(Removal, SpringsOfOtherKindsShedAsElementsDo) {
  model_.set_remove_ratio(2.0F);
  for (const int kind : {0, 1, 7, 9, -8}) {
    for (const int step : {1, 0, -1, -3, -10, -60}) {
      EXPECT_EQ(spring(step, 1e-3, 0, kind), coefficient(step, 1e-3)) << kind << ", " << step;
    }
  }
  EXPECT_TRUE(support::recorded_assertions().empty());
}

TEST_F(Removal, NonlinearSpringsTakeTheRatioOfTheirStiffnesses) {
  model_.set_nonlinear_springs({{3.0, 4.0}, {10.0, 5.0}, {0.0, 8.0}});
  for (const int step : {0, -1, -70, 5}) {
    EXPECT_EQ(spring(step, 1e-3, 1, 8), 0.75);
    EXPECT_EQ(spring(step, 1e-3, 2, 8), 2.0);  // may stiffen
    EXPECT_EQ(spring(step, 1e-3, 3, 8), 0.0);  // no least coefficient
  }
  EXPECT_TRUE(support::recorded_assertions().empty());
}

TEST_F(Removal, ANonlinearSpringWithoutARecordIsAnAssertion) {
  for (const int index : {0, -1, -2147483647 - 1}) {
    support::forget_assertions();
    EXPECT_EQ(spring(-5, 1e-3, index, 8), 1.0);
    EXPECT_EQ(support::recorded_assertions(), std::vector<std::string>{"GET_COEF_REMOVE_SPRING"});
  }
}
