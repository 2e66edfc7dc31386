// yield_linear_segments_test.cpp: the polyhedron p + (8/9) m = 1 above a break at p = 0.2 and p/2 + m = 1 below it:
// every row of the table, which rows are selected, and value against gradient.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "comparison.h"
#include "hinge_calls.h"
#include "random_shapes.h"

namespace {

using namespace hinge_tests;

constexpr double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();
constexpr int LARGEST = 2147483647;
constexpr section_forces UNIT{1, 1, 1};
const std::vector<double> ZERO(3, 0.0);

// 8/9 in single precision: 14913081 / 2^24, above 8/9 by (1/9) / 2^24.
constexpr double SINGLE = 14913081.0 / 16777216.0;
static_assert(SINGLE == 0.8888888955116272, "the nearest double of these digits is the same number");

// Signs of a row: p times 1 or a half, m times 1 or 8/9. A c row is one whose p coefficient is 1.
struct row {
  double p, my, mz;
  bool c() const { return std::fabs(p) == 1.0; }
};

// Force sets 4 (m is my) and 5 (m is mz): p and m.
constexpr double WITH_ONE_MOMENT[8][2] = {{0.5, 1},   {1, 1},   {1, -1}, {0.5, -1},
                                          {-0.5, -1}, {-1, -1}, {-1, 1}, {-0.5, 1}};

constexpr row WITH_BOTH_MOMENTS[16] = {{1, 1, 1},    {1, 1, -1},    {1, -1, -1},    {1, -1, 1},     //
                                       {0.5, 1, 1},  {0.5, 1, -1},  {0.5, -1, -1},  {0.5, -1, 1},   //
                                       {-0.5, 1, 1}, {-0.5, 1, -1}, {-0.5, -1, -1}, {-0.5, -1, 1},  //
                                       {-1, 1, 1},   {-1, 1, -1},   {-1, -1, -1},   {-1, -1, 1}};

constexpr double MOMENTS_ALONE[4][2] = {{1, 1}, {1, -1}, {-1, -1}, {-1, 1}};

int rows_of(int FS) {
  constexpr int rows[8] = {0, 0, 2, 2, 8, 8, 4, 16};
  return rows[FS];
}

// Row S of a force set as signs.
row signs(int FS, int S) {
  const auto s = static_cast<std::size_t>(S - 1);
  switch (FS) {
    case 2: return {0, S == 1 ? 1.0 : -1.0, 0};
    case 3: return {0, 0, S == 1 ? 1.0 : -1.0};
    case 4: return {WITH_ONE_MOMENT[s][0], WITH_ONE_MOMENT[s][1], 0};
    case 5: return {WITH_ONE_MOMENT[s][0], 0, WITH_ONE_MOMENT[s][1]};
    case 6: return {0, MOMENTS_ALONE[s][0], MOMENTS_ALONE[s][1]};
    default: return WITH_BOTH_MOMENTS[s];
  }
}

// The same as coefficients, with the given number in the place of 8/9.
std::vector<double> coefficients(int FS, int S, double c) {
  const row r = signs(FS, S);
  const double factor = r.c() ? c : 1.0;
  return {r.p, factor * r.my, factor * r.mz};
}

double value(int FS, int S, const section_forces& C, const section_forces& F) {
  return phi_linear({S, 0, 0, 0}, C, FS, F)[0];
}

selection chosen(int FS, double p, double my, double mz) { return select_linear(UNIT, FS, {p, my, mz}); }

}  // namespace

TEST(LinearValue, EveryRowAndEveryCoefficient) {
  for (int FS = 2; FS <= 7; ++FS) {
    for (int S = 1; S <= rows_of(FS); ++S) {
      SCOPED_TRACE(::testing::Message() << "set " << FS << ", segment " << S);
      const std::vector<double> expected = coefficients(FS, S, SINGLE);
      // One force at a time shows one coefficient, to the last bit.
      EXPECT_EQ(value(FS, S, UNIT, {1, 0, 0}), expected[0]);
      EXPECT_EQ(value(FS, S, UNIT, {0, 1, 0}), expected[1]);
      EXPECT_EQ(value(FS, S, UNIT, {0, 0, 1}), expected[2]);
      // Signed forces, normalised by capacities of 2, 4 and 8: p = -3, my = 5, mz = -7.
      EXPECT_CLOSE(value(FS, S, {2, 4, 8}, {-6, 20, -56}), -3 * expected[0] + 5 * expected[1] - 7 * expected[2], 15.0,
                   4);
    }
  }
}

TEST(LinearValue, EachEntryOfTheListHasItsValueInItsPlace) {
  const section_forces F{0.25, 0.5, 2};
  // Rows 5, 8, 16, 2 of set 7 at (0.25, 0.5, 2).
  const std::vector<double> all = phi_linear({5, 8, 16, 2}, UNIT, 7, F);
  EXPECT_CLOSE(all, (std::vector<double>{0.125 + 0.5 + 2, 0.125 - 0.5 + 2, -0.25 + SINGLE * 1.5, 0.25 - SINGLE * 1.5}),
               3.0, 4);
  const std::vector<double> gaps = phi_linear({0, 8, -3, 2}, UNIT, 7, F);
  EXPECT_EQ(gaps, (std::vector<double>{0, all[1], 0, all[3]}));
}

TEST(LinearValue, IsZeroWithoutAPositiveEntry) {
  const std::vector<double> none(4, 0.0);
  for (int FS = 1; FS <= 7; ++FS) {
    EXPECT_EQ(phi_linear({0, 0, 0, 0}, UNIT, FS, {1, 2, 3}), none);
    EXPECT_EQ(phi_linear({-1, -5, 0, -16}, UNIT, FS, {1, 2, 3}), none);
  }
}

TEST(LinearValue, TheFirstForceSetHasNone) {
  EXPECT_EQ(phi_linear({1, 2, 3, 4}, UNIT, 1, {1, 2, 3}), std::vector<double>(4, 0.0));
}

TEST(LinearValue, IsZeroWithoutCapacities) {
  for (const double bad : {0.0, -2.0, NOT_A_NUMBER}) {
    for (const section_forces& c : with_one_capacity(bad)) {
      for (int FS = 1; FS <= 7; ++FS)
        EXPECT_EQ(phi_linear({1, 2, 1, 2}, c, FS, {1, 2, 3}), std::vector<double>(4, 0.0));
    }
  }
}

TEST(LinearValue, SegmentsAndForceSetsThatDoNotExistAreNotFollowed) {
  const std::vector<double> none(4, 0.0);
  for (int FS = 2; FS <= 7; ++FS) {
    const int beyond = rows_of(FS) + 1;
    EXPECT_EQ(phi_linear({beyond, LARGEST, 17, 1000}, UNIT, FS, {1, 2, 3}), none) << FS;
  }
  for (const int FS : {0, 8, -1, LARGEST}) EXPECT_EQ(phi_linear({1, 2, 3, 4}, UNIT, FS, {1, 2, 3}), none) << FS;
}

TEST(LinearGradient, EveryRowOverTheCapacities) {
  // Capacities whose quotients are not exact.
  const section_forces C{3, 7, 11};
  for (int FS = 2; FS <= 7; ++FS) {
    for (int S = 1; S <= rows_of(FS); ++S) {
      const row r = signs(FS, S);
      const double my = r.c() ? 8.0 / (9.0 * C.MY) : 1.0 / C.MY, mz = r.c() ? 8.0 / (9.0 * C.MZ) : 1.0 / C.MZ;
      EXPECT_EQ(gradient_linear(FS, S, C, {1, 2, 3}), (std::vector<double>{r.p / C.P, r.my * my, r.mz * mz}))
          << "set " << FS << ", segment " << S;
    }
  }
}

TEST(LinearGradient, DoesNotDependOnTheForces) {
  for (int S = 1; S <= 16; ++S) {
    EXPECT_EQ(gradient_linear(7, S, {3, 7, 11}, {0, 0, 0}), gradient_linear(7, S, {3, 7, 11}, {-9, 8, 1e6}));
  }
}

TEST(LinearGradient, ValueAndGradientOfTheEightNinthsDifferInTheLastDigitsOfSinglePrecision) {
  // 8/9 = 14913080.888.../2^24 and its single is 14913081/2^24: the difference is (1/9)/2^24 = 6.62273830837674e-9.
  constexpr double DIFFERENCE = 6.62273830837674e-9;
  for (int FS = 4; FS <= 7; ++FS) {
    for (int S = 1; S <= rows_of(FS); ++S) {
      const row r = signs(FS, S);
      const std::vector<double> g = gradient_linear(FS, S, UNIT, {0, 0, 0});
      const double difference[3] = {value(FS, S, UNIT, {1, 0, 0}) - g[0], value(FS, S, UNIT, {0, 1, 0}) - g[1],
                                    value(FS, S, UNIT, {0, 0, 1}) - g[2]};
      const double size = r.c() ? DIFFERENCE : 0.0;
      EXPECT_EQ(difference[0], 0.0);
      EXPECT_CLOSE(difference[1], size * r.my, 1.0, 1) << "set " << FS << ", segment " << S;
      EXPECT_CLOSE(difference[2], size * r.mz, 1.0, 1) << "set " << FS << ", segment " << S;
    }
  }
  EXPECT_EQ(value(4, 2, UNIT, {0, 1, 0}), 0.8888888955116272);
  EXPECT_EQ(gradient_linear(4, 2, UNIT, {0, 1, 0})[1], 0.8888888888888888);
}

TEST(LinearGradient, IsTheDerivativeOfTheValueToSinglePrecision) {
  support::seeded_random random(5203);
  for (int FS = 2; FS <= 7; ++FS) {
    for (int S = 1; S <= rows_of(FS); ++S) {
      const section_forces C{random.log_uniform(0.1, 1e4), random.log_uniform(0.1, 1e4), random.log_uniform(0.1, 1e4)};
      const std::vector<double> g = gradient_linear(FS, S, C, {0, 0, 0});
      // The value is linear: one step of a capacity in each force.
      EXPECT_WITHIN((std::vector<double>{g[0] * C.P, g[1] * C.MY, g[2] * C.MZ}),
                    (std::vector<double>{value(FS, S, C, {C.P, 0, 0}), value(FS, S, C, {0, C.MY, 0}),
                                         value(FS, S, C, {0, 0, C.MZ})}),
                    1.0, 1e-8);
    }
  }
}

TEST(LinearGradient, TheFirstForceSetAndWhatDoesNotExistHaveNone) {
  for (int S = 0; S <= 17; ++S) EXPECT_EQ(gradient_linear(1, S, UNIT, {1, 2, 3}), ZERO);
  for (int FS = 2; FS <= 7; ++FS) {
    for (const int S : {0, -1, rows_of(FS) + 1, 17, 1000, LARGEST, -LARGEST - 1}) {
      EXPECT_EQ(gradient_linear(FS, S, UNIT, {1, 2, 3}), ZERO) << FS << ", " << S;
    }
  }
  for (const int FS : {0, 8, -1, LARGEST}) EXPECT_EQ(gradient_linear(FS, 1, UNIT, {1, 2, 3}), ZERO) << FS;
}

TEST(LinearGradient, IsZeroWithoutCapacities) {
  for (const double bad : {0.0, -2.0, NOT_A_NUMBER}) {
    for (const section_forces& c : with_one_capacity(bad)) {
      for (int FS = 1; FS <= 7; ++FS) EXPECT_EQ(gradient_linear(FS, 1, c, {1, 2, 3}), ZERO) << FS;
    }
  }
}

TEST(LinearSelection, OneMomentAlone) {
  for (const double other : {-5.0, 5.0}) {
    for (const double m : {3.0, 0.0, -0.0, -3.0}) {
      const selection expected{1, {m < 0 ? 2 : 1, 0, 0, 0}};
      EXPECT_EQ(chosen(2, other, m, other), expected) << m;
      EXPECT_EQ(chosen(3, other, other, m), expected) << m;
    }
  }
}

TEST(LinearSelection, AxialForceAndOneMoment) {
  struct expected_segment {
    double p, m;
    int segment;
  };
  const expected_segment table[] = {{0.1, -1, 4},
                                    {0.1, 1, 1},
                                    {0.5, -1, 3},
                                    {0.5, 1, 2},
                                    {-0.1, -1, 5},
                                    {-0.1, 1, 8},
                                    {-0.5, -1, 6},
                                    {-0.5, 1, 7},
                                    // A moment of zero counts as positive.
                                    {0.1, 0, 1},
                                    {0.5, 0, 2},
                                    {-0.1, 0, 8},
                                    {-0.5, 0, 7},
                                    // An axial force of zero counts as positive and as below the break.
                                    {0, -1, 4},
                                    {0, 1, 1},
                                    {-0.0, -1, 4},
                                    {-0.0, 1, 1},
                                    // The break itself belongs to the steep part.
                                    {0.2, 1, 2},
                                    {0.2, -1, 3},
                                    {-0.2, 1, 7},
                                    {-0.2, -1, 6},
                                    {std::nextafter(0.2, 0), 1, 1},
                                    {-std::nextafter(0.2, 0), -1, 5}};
  for (const expected_segment& e : table) {
    for (const double other : {-5.0, 5.0}) {
      EXPECT_EQ(chosen(4, e.p, e.m, other), (selection{1, {e.segment, 0, 0, 0}})) << e.p << ", " << e.m;
      EXPECT_EQ(chosen(5, e.p, other, e.m), (selection{1, {e.segment, 0, 0, 0}})) << e.p << ", " << e.m;
    }
  }
}

TEST(LinearSelection, BothMomentsBySigns) {
  EXPECT_EQ(chosen(6, -9, 1, 2), (selection{1, {1, 0, 0, 0}}));
  EXPECT_EQ(chosen(6, -9, 1, -2), (selection{1, {2, 0, 0, 0}}));
  EXPECT_EQ(chosen(6, -9, -1, -2), (selection{1, {3, 0, 0, 0}}));
  EXPECT_EQ(chosen(6, -9, -1, 2), (selection{1, {4, 0, 0, 0}}));
  // However small a moment is, it is not zero.
  EXPECT_EQ(chosen(6, 0, 1e-300, 1e-300), (selection{1, {1, 0, 0, 0}}));
  EXPECT_EQ(chosen(6, 0, -1e-300, -1e-300), (selection{1, {3, 0, 0, 0}}));
}

TEST(LinearSelection, AZeroMomentGivesTwoEntriesPackedFromTheFirstPlace) {
  EXPECT_EQ(chosen(6, 0, 1, 0), (selection{2, {1, 2, 0, 0}}));
  EXPECT_EQ(chosen(6, 0, 0, -1), (selection{2, {2, 3, 0, 0}}));
  EXPECT_EQ(chosen(6, 0, -1, 0), (selection{2, {3, 4, 0, 0}}));
  EXPECT_EQ(chosen(6, 0, 0, 1), (selection{2, {1, 4, 0, 0}}));
  EXPECT_EQ(chosen(6, 0, -0.0, 1), (selection{2, {1, 4, 0, 0}}));
  EXPECT_EQ(chosen(7, 0.1, 0, 0.5), (selection{2, {5, 8, 0, 0}}));
}

TEST(LinearSelection, BothMomentsZeroGiveThreeAndTheFourthIsCleared) {
  EXPECT_EQ(chosen(6, 0, 0, 0), (selection{3, {1, 2, 3, 0}}));
  EXPECT_EQ(chosen(7, 0.1, 0, 0), (selection{3, {5, 6, 7, 0}}));
  EXPECT_EQ(chosen(7, 0.9, 0, -0.0), (selection{3, {1, 2, 3, 0}}));
  EXPECT_EQ(chosen(7, -0.1, 0, 0), (selection{3, {9, 10, 11, 0}}));
  EXPECT_EQ(chosen(7, -0.9, 0, 0), (selection{3, {13, 14, 15, 0}}));
}

TEST(LinearSelection, AllForcesHaveABaseByTheAxialForce) {
  struct expected_base {
    double p;
    int base;
  };
  for (const expected_base& e :
       {expected_base{0.5, 0}, expected_base{0.2, 0}, expected_base{0.1, 4}, expected_base{0, 4},
        expected_base{-0.0, 4}, expected_base{-0.1, 8}, expected_base{-0.2, 12}, expected_base{-0.5, 12}}) {
    EXPECT_EQ(chosen(7, e.p, 1, 1), (selection{1, {e.base + 1, 0, 0, 0}})) << e.p;
    EXPECT_EQ(chosen(7, e.p, 1, -1), (selection{1, {e.base + 2, 0, 0, 0}})) << e.p;
    EXPECT_EQ(chosen(7, e.p, -1, -1), (selection{1, {e.base + 3, 0, 0, 0}})) << e.p;
    EXPECT_EQ(chosen(7, e.p, -1, 1), (selection{1, {e.base + 4, 0, 0, 0}})) << e.p;
  }
}

TEST(LinearSelection, ForcesAreNormalisedBeforeTheBreak) {
  // 15 of 100 lies below the break, 15 of 50 above it.
  EXPECT_EQ(select_linear({100, 1, 1}, 4, {15, 1, 1}), (selection{1, {1, 0, 0, 0}}));
  EXPECT_EQ(select_linear({50, 1, 1}, 4, {15, 1, 1}), (selection{1, {2, 0, 0, 0}}));
  EXPECT_EQ(select_linear({5, 1, 1}, 7, {-1, 1, 1}), (selection{1, {13, 0, 0, 0}}));  // 1/5 is the break itself
  // -1e-20 over 1e308 is below the smallest number: the moment is zero and belongs to both of its sides.
  EXPECT_EQ(select_linear({1, 1e308, 1}, 6, {0, -1e-20, -1e-20}), (selection{2, {2, 3, 0, 0}}));
  EXPECT_EQ(select_linear({1, 1, 1e308}, 6, {0, -1e-20, -1e-20}), (selection{2, {3, 4, 0, 0}}));
}

TEST(LinearSelection, TheFirstForceSetAndUnknownOnesHaveNoEquation) {
  for (const int FS : {1, 0, 8, -1, LARGEST}) {
    EXPECT_EQ(chosen(FS, 0.5, 0, 0), (selection{0, {0, 0, 0, 0}})) << FS;
  }
}

TEST(LinearSelection, HasNoEquationWithoutCapacities) {
  for (const double bad : {0.0, -2.0, NOT_A_NUMBER}) {
    for (const section_forces& c : with_one_capacity(bad)) {
      for (int FS = 1; FS <= 7; ++FS) EXPECT_EQ(select_linear(c, FS, {1, 0, 0}), (selection{0, {0, 0, 0, 0}})) << FS;
    }
  }
}

TEST(LinearSelection, TheSelectedSegmentHasTheValueOfTheInteractionRule) {
  // |p| + 8/9 (|my| + |mz|) above the break and |p|/2 + |my| + |mz| below it, with the moments of the set.
  support::seeded_random random(5204);
  for (int i = 0; i < 2000; ++i) {
    const double p = random.uniform(-0.6, 0.6);
    double my = random.uniform(-1, 1), mz = random.uniform(-1, 1);
    if (random.integer(0, 9) == 0) my = 0;
    if (random.integer(0, 9) == 0) mz = 0;
    for (int FS = 2; FS <= 7; ++FS) {
      const double m = (FS == 3 || FS == 5 ? 0 : std::fabs(my)) + (FS == 2 || FS == 4 ? 0 : std::fabs(mz));
      const double q = FS == 4 || FS == 5 || FS == 7 ? std::fabs(p) : 0;
      const double expected = q >= 0.2 ? q + 8.0 / 9.0 * m : 0.5 * q + m;
      const selection s = chosen(FS, p, my, mz);
      ASSERT_GE(s.NEQ, 1);
      const std::vector<double> PHI = phi_linear(s.SEG, UNIT, FS, {p, my, mz});
      for (std::size_t k = 0; k < static_cast<std::size_t>(s.NEQ); ++k) {
        EXPECT_WITHIN(PHI[k], expected, 1.0, 2e-8) << "set " << FS << ", segment " << s.SEG[k];
      }
    }
  }
}
