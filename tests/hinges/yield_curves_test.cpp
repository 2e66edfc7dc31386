// yield_curves_test.cpp: how many equations the hinges of a member have, and their gradients as columns.
#include <gtest/gtest.h>

#include "comparison.h"
#include "hinge_model.h"
#include "plugin_recorder.h"
#include "reference_hinge.h"

namespace {

using namespace hinge_tests;
using plugin_recorder::answer;

constexpr segments NONE{0, 0, 0, 0};
constexpr segments MARKED{-7, -8, -9, -10};

// Capacities of 100, 20 and 30.
constexpr section_forces END1{-50, 10, 21}, END2{30, -8, -24};

class YieldCurves : public ::testing::Test {
 protected:
  YieldCurves() { plugin_recorder::reset(answer::stand_in); }

  static void expect_counts(const equation_counts& n, int ntot, int n1, int n2) {
    EXPECT_EQ(n.NTOT, ntot);
    EXPECT_EQ(n.N1, n1);
    EXPECT_EQ(n.N2, n2);
  }
};

// 12 by columns, zero except for the entries of an end.
std::vector<double> columns(const std::vector<std::pair<int, std::vector<double>>>& of_ends) {
  std::vector<double> N(12 * of_ends.size(), 0.0);
  for (std::size_t j = 0; j < of_ends.size(); ++j) {
    const auto& [end, g] = of_ends[j];
    if (end == 0) continue;
    const std::size_t first = 12 * j + (end == 1 ? 0 : 6);
    N[first] = g[0];
    N[first + 4] = g[1];
    N[first + 5] = g[2];
  }
  return N;
}

const std::pair<int, std::vector<double>> EMPTY{0, {}};

std::vector<double> segment_gradient(int S) { return gradient_linear(7, S, {100, 20, 30}, {0, 0, 0}); }

}  // namespace

TEST_F(YieldCurves, SingleForcesCountOneAnEndAndSelectTheirSides) {
  hinge_model model(hinge_of(1, 2, 1, 1));
  model.set_end_forces(END1, END2);
  const equation_counts n = counts(model, 0, MARKED);
  expect_counts(n, 2, 1, 1);
  EXPECT_EQ(n.SEG1, (segments{1, 0, 0, 0}));  // My = 10
  EXPECT_EQ(n.SEG2, (segments{2, 0, 0, 0}));  // My = -8
}

TEST_F(YieldCurves, SingleForcesSeeEachForceOfTheirEnd) {
  // One force of the three is negative at the first end, the same one alone is positive at the second.
  for (int negative = 1; negative <= 3; ++negative) {
    const auto force = [&](int k, double size) { return k == negative ? -size : size; };
    for (int FS = 1; FS <= 3; ++FS) {
      hinge_model model(hinge_of(1, FS, 1, 1));
      model.set_end_forces({force(1, 50), force(2, 10), force(3, 21)}, {-force(1, 30), -force(2, 8), -force(3, 24)});
      const equation_counts n = counts(model, 0);
      EXPECT_EQ(n.SEG1[0], FS == negative ? 2 : 1) << "set " << FS << ", negative " << negative;
      EXPECT_EQ(n.SEG2[0], FS == negative ? 1 : 2) << "set " << FS << ", negative " << negative;
    }
  }
}

TEST_F(YieldCurves, SingleForcesAreMeasuredByTheirOwnCapacities) {
  // -1e-20 over 1e308 is below the smallest number: no negative force is left. Over the other capacities it is.
  for (int FS = 1; FS <= 3; ++FS) {
    for (int large = 1; large <= 3; ++large) {
      HINGE_RECORD h = hinge_of(1, FS, 1, 1);
      h.CAP_P = large == 1 ? 1e308 : 1.0;
      h.CAP_MY = large == 2 ? 1e308 : 1.0;
      h.CAP_MZ = large == 3 ? 1e308 : 1.0;
      hinge_model model(h);
      model.set_end_forces({-1e-20, -1e-20, -1e-20}, {-1e-20, -1e-20, -1e-20});
      const equation_counts n = counts(model, 0);
      EXPECT_EQ(n.SEG1[0], FS == large ? 1 : 2) << "set " << FS << ", large capacity " << large;
      EXPECT_EQ(n.SEG2[0], FS == large ? 1 : 2) << "set " << FS << ", large capacity " << large;
    }
  }
}

TEST_F(YieldCurves, SingleForcesOfAnEndThatDoesNotYieldCountOneAndStayUnselected) {
  for (const int state : {0, 2, 3, -1}) {
    hinge_model first(hinge_of(1, 2, 1, state));
    first.set_end_forces(END1, END2);
    equation_counts n = counts(first, 0, MARKED);
    expect_counts(n, 2, 1, 1);
    EXPECT_EQ(n.SEG1, (segments{1, 0, 0, 0}));
    EXPECT_EQ(n.SEG2, MARKED);
  }
  hinge_model second(hinge_of(1, 2, 2, 1));
  second.set_end_forces(END1, END2);
  const equation_counts n = counts(second, 0, MARKED);
  expect_counts(n, 2, 1, 1);
  EXPECT_EQ(n.SEG1, MARKED);
  EXPECT_EQ(n.SEG2, (segments{2, 0, 0, 0}));
}

TEST_F(YieldCurves, SingleForcesWithInteractionHaveNoEquationWhileTheTotalStaysTwo) {
  for (const int FS : {4, 5, 6, 7, 8, 0, -1}) {
    hinge_model model(hinge_of(1, FS, 1, 1));
    model.set_end_forces(END1, END2);
    expect_counts(counts(model, 0), 2, 0, 0);
    hinge_model one_end(hinge_of(1, FS, 1, 0));
    one_end.set_end_forces(END1, END2);
    expect_counts(counts(one_end, 0), 2, 0, 1);
    EXPECT_EQ(counts(one_end, 0).SEG1, NONE);
  }
}

TEST_F(YieldCurves, OrbisonCountsOneAnEndWhateverTheStates) {
  for (const int state1 : {0, 1, 2}) {
    for (const int state2 : {0, 1, 2}) {
      hinge_model model(hinge_of(2, 7, state1, state2));
      model.set_end_forces(END1, END2);
      const equation_counts n = counts(model, 0, MARKED);
      expect_counts(n, 2, 1, 1);
      EXPECT_EQ(n.SEG1, MARKED);
      EXPECT_EQ(n.SEG2, MARKED);
    }
  }
}

TEST_F(YieldCurves, LinearSegmentsCountThePositiveEntriesOfTheRecord) {
  HINGE_RECORD h = hinge_of(3, 7, 1, 1);
  set_segments(h.END1_SEG, {5, 8, 0, 0});
  set_segments(h.END2_SEG, {1, 2, 3, 0});
  hinge_model model(h);
  model.set_end_forces(END1, END2);
  const equation_counts n = counts(model, 0, MARKED);
  expect_counts(n, 5, 2, 3);
  EXPECT_EQ(n.SEG1, (segments{5, 8, 0, 0}));
  EXPECT_EQ(n.SEG2, (segments{1, 2, 3, 0}));
}

TEST_F(YieldCurves, LinearSegmentsCountAtLeastOneAnEnd) {
  HINGE_RECORD h = hinge_of(3, 7, 1, 1);
  set_segments(h.END1_SEG, {0, 0, 0, 0});
  set_segments(h.END2_SEG, {-1, 0, -5, -6});
  hinge_model model(h);
  model.set_end_forces(END1, END2);
  const equation_counts n = counts(model, 0, MARKED);
  expect_counts(n, 2, 1, 1);
  EXPECT_EQ(n.SEG1, NONE);
  EXPECT_EQ(n.SEG2, (segments{-1, 0, -5, -6}));
}

TEST_F(YieldCurves, LinearSegmentsOfAnEndThatDoesNotYieldCountOneAndAreNotCopied) {
  HINGE_RECORD h = hinge_of(3, 7, 2, 1);
  set_segments(h.END1_SEG, {5, 8, 0, 0});
  set_segments(h.END2_SEG, {0, 4, 0, 16});  // a list with gaps is copied as it is
  hinge_model model(h);
  model.set_end_forces(END1, END2);
  equation_counts n = counts(model, 0, MARKED);
  expect_counts(n, 3, 1, 2);
  EXPECT_EQ(n.SEG1, MARKED);
  EXPECT_EQ(n.SEG2, (segments{0, 4, 0, 16}));
  model.hinge().END1_STATE = 1;
  model.hinge().END2_STATE = 0;
  n = counts(model, 0, MARKED);
  expect_counts(n, 3, 2, 1);
  EXPECT_EQ(n.SEG2, MARKED);
}

TEST_F(YieldCurves, UnknownCurveKindsHaveNoEquation) {
  for (const int kind : {0, 4, -1, 2147483647}) {
    hinge_model model(hinge_of(kind, 7, 1, 1));
    model.set_end_forces(END1, END2);
    expect_counts(counts(model, 0), 0, 0, 0);
    EXPECT_EQ(gradients(model, 0, {2, 1, 1, NONE, NONE}), std::vector<double>(24, 0.0));
  }
}

TEST_F(YieldCurves, CountsDoNotAskForCapacities) {
  for (const int kind : {1, 2, 3}) {
    HINGE_RECORD h = hinge_of(kind, 2, 0, 0);
    h.CAP_P = 0.0;
    hinge_model model(h);
    model.set_end_forces(END1, END2);
    expect_counts(counts(model, 0), 2, 1, 1);
  }
  HINGE_RECORD h = hinge_of(3, 7, 1, 1);
  h.CAP_MY = -1.0;
  set_segments(h.END1_SEG, {5, 6, 7, 0});
  set_segments(h.END2_SEG, {5, 8, 0, 0});
  hinge_model model(h);
  model.set_end_forces(END1, END2);
  const equation_counts n = counts(model, 0);
  expect_counts(n, 5, 3, 2);
  EXPECT_EQ(gradients(model, 0, n), std::vector<double>(60, 0.0));
}

TEST_F(YieldCurves, TheForceModeChoosesTheForces) {
  hinge_model model(hinge_of(1, 2, 1, 1));
  model.set_end_forces(END1, END2);
  for (const int row : {1, 5, 6, 7, 11, 12}) {
    model.forces().F_END_STEP(row) = -9.0 * model.forces().F_END(row);
    model.forces().F_END_ITER(row) = 2.0 * model.forces().F_END(row);
  }
  for (const int mode : {0, 1, -4}) {
    const equation_counts n = counts(model, mode);
    EXPECT_EQ(n.SEG1[0], mode == 0 ? 1 : 2);
    EXPECT_EQ(n.SEG2[0], mode == 0 ? 2 : 1);
  }
}

TEST_F(YieldCurves, WithoutTheNonlinearLibraryEverySideIsThePositiveOne) {
  hinge_model model(hinge_of(1, 2, 1, 1));
  model.set_end_forces({-1, -1, -1}, {-1, -1, -1});
  EXPECT_EQ(counts(model, 0).SEG1[0], 2);
  plugin_recorder::reset(answer::missing);
  EXPECT_EQ(counts(model, 0).SEG1[0], 1);
  EXPECT_EQ(counts(model, 0).SEG2[0], 1);
}

TEST_F(YieldCurves, SingleForceGradientsLieInTheRowsOfTheirEnds) {
  const int sides[4][2] = {{0, 0}, {2, 1}, {1, 2}, {1, 2}};
  constexpr double capacities[3] = {100, 20, 30};
  for (int FS = 1; FS <= 3; ++FS) {
    hinge_model model(hinge_of(1, FS, 1, 1));
    model.set_end_forces(END1, END2);
    const auto k = static_cast<std::size_t>(FS - 1);
    std::vector<double> g1(3, 0.0), g2(3, 0.0);
    g1[k] = (sides[FS][0] == 1 ? 1 : -1) / capacities[k];
    g2[k] = (sides[FS][1] == 1 ? 1 : -1) / capacities[k];
    EXPECT_EQ(gradients(model, 0, counts(model, 0)), columns({{1, g1}, {2, g2}})) << FS;
  }
}

TEST_F(YieldCurves, OrbisonGradientsOfBothEndsAgainstThePolynomial) {
  for (int FS = 1; FS <= 7; ++FS) {
    hinge_model model(hinge_of(2, FS, 1, 1));
    model.set_end_forces(END1, END2);
    const std::vector<double> expected = columns({{1, reference::orbison_gradient(FS, {100, 20, 30}, END1)},
                                                  {2, reference::orbison_gradient(FS, {100, 20, 30}, END2)}});
    EXPECT_CLOSE(gradients(model, 0, counts(model, 0)), expected, support::max_norm(expected), 8) << FS;
  }
}

TEST_F(YieldCurves, OrbisonColumnsOfEndsThatDoNotYieldAreZero) {
  for (const int state : {0, 2, 3}) {
    hinge_model model(hinge_of(2, 7, 1, 1));
    model.set_end_forces(END1, END2);
    const std::vector<double> both = gradients(model, 0, {2, 1, 1, NONE, NONE});
    model.hinge().END1_STATE = state;
    std::vector<double> expected = both;
    std::fill_n(expected.begin(), 12, 0.0);
    EXPECT_EQ(gradients(model, 0, {2, 1, 1, NONE, NONE}), expected);
    model.hinge().END1_STATE = 1;
    model.hinge().END2_STATE = state;
    expected = both;
    std::fill_n(expected.begin() + 12, 12, 0.0);
    EXPECT_EQ(gradients(model, 0, {2, 1, 1, NONE, NONE}), expected);
  }
}

TEST_F(YieldCurves, SingleForceColumnsOfEndsThatDoNotYieldAreZeroWhateverTheirSegments) {
  for (const int state : {0, 2, 3}) {
    hinge_model model(hinge_of(1, 2, state, 1));
    model.set_end_forces(END1, END2);
    const equation_counts n{2, 1, 1, {1, 0, 0, 0}, {2, 0, 0, 0}};
    EXPECT_EQ(gradients(model, 0, n), columns({EMPTY, {2, {0, -1 / 20.0, 0}}})) << state;
    model.hinge().END1_STATE = 1;
    model.hinge().END2_STATE = state;
    EXPECT_EQ(gradients(model, 0, n), columns({{1, {0, 1 / 20.0, 0}}, EMPTY})) << state;
  }
}

TEST_F(YieldCurves, SegmentGradientsOneColumnEach) {
  hinge_model model(hinge_of(3, 7, 1, 1));
  model.set_end_forces(END1, END2);
  const equation_counts n{5, 2, 3, {5, 8, 0, 0}, {1, 2, 3, 0}};
  EXPECT_EQ(gradients(model, 0, n), columns({{1, segment_gradient(5)},
                                             {1, segment_gradient(8)},
                                             {2, segment_gradient(1)},
                                             {2, segment_gradient(2)},
                                             {2, segment_gradient(3)}}));
}

TEST_F(YieldCurves, WithoutASegmentAtTheFirstEndItsColumnStaysEmpty) {
  hinge_model model(hinge_of(3, 7, 0, 1));
  model.set_end_forces(END1, END2);
  EXPECT_EQ(gradients(model, 0, {3, 1, 2, NONE, {13, 16, 0, 0}}),
            columns({EMPTY, {2, segment_gradient(13)}, {2, segment_gradient(16)}}));
}

TEST_F(YieldCurves, WithoutASegmentAtTheSecondEndItsColumnStaysEmpty) {
  hinge_model model(hinge_of(3, 7, 1, 0));
  model.set_end_forces(END1, END2);
  EXPECT_EQ(gradients(model, 0, {3, 2, 1, {13, 16, 0, 0}, NONE}),
            columns({{1, segment_gradient(13)}, {1, segment_gradient(16)}, EMPTY}));
}

TEST_F(YieldCurves, AListWithGapsIsReadOnlyAsFarAsItsCount) {
  // Three positive entries, of which the first three places hold two: the columns of the second end move up.
  hinge_model model(hinge_of(3, 7, 1, 1));
  model.set_end_forces(END1, END2);
  EXPECT_EQ(gradients(model, 0, {4, 3, 1, {5, 0, 6, 7}, {9, 0, 0, 0}}),
            columns({{1, segment_gradient(5)}, {1, segment_gradient(6)}, {2, segment_gradient(9)}, EMPTY}));
}

TEST_F(YieldCurves, AnEntryBelowZeroTakesNoColumn) {
  hinge_model model(hinge_of(3, 7, 1, 1));
  model.set_end_forces(END1, END2);
  EXPECT_EQ(gradients(model, 0, {4, 2, 2, {-3, 5, 0, 0}, {-1, 9, 0, 0}}),
            columns({{1, segment_gradient(5)}, {2, segment_gradient(9)}, EMPTY, EMPTY}));
}

TEST_F(YieldCurves, ACountAboveTheFourPlacesOfAListReadsNoFurther) {
  hinge_model model(hinge_of(3, 7, 1, 1));
  model.set_end_forces(END1, END2);
  EXPECT_EQ(gradients(model, 0, {3, 5, 1, {5, 0, 0, 0}, {9, 0, 0, 0}}),
            columns({{1, segment_gradient(5)}, {2, segment_gradient(9)}, EMPTY}));
}

TEST_F(YieldCurves, TheLinearFamilyWithTheAxialForceAloneHasNoGradient) {
  HINGE_RECORD h = hinge_of(3, 1, 1, 1);
  set_segments(h.END1_SEG, {1, 0, 0, 0});
  set_segments(h.END2_SEG, {2, 0, 0, 0});
  hinge_model model(h);
  model.set_end_forces(END1, END2);
  const equation_counts n = counts(model, 0);
  expect_counts(n, 2, 1, 1);
  EXPECT_EQ(gradients(model, 0, n), std::vector<double>(24, 0.0));
}

// No record at the member's position: there is no hinge, nothing is counted and nothing is written.
TEST_F(YieldCurves, AMemberWithoutARecordHasNoEquations) {
  for (const bool allocated : {false, true}) {
    for (int curve = 0; curve <= 3; ++curve) {
      HINGE_RECORD h = hinge_of(curve, 7, 1, 1);
      set_segments(h.END1_SEG, {1, 2, 0, 0});
      hinge_model model(h);
      model.set_end_forces(END1, END2);
      SOLANAELEM.HINGE_REC.BASE = nullptr;  // whoever looks, falls
      SOLANAELEM.HINGE_REC.ALLOCATED_FLAG = allocated ? 1 : 0;
      if (allocated) SOLANAELEM.HINGE_REC.DIMENSION[0].EXTENT = model.position() - 1;
      const equation_counts n = counts(model, 0, MARKED);
      expect_counts(n, 0, 0, 0);
      EXPECT_EQ(n.SEG1, MARKED);
      EXPECT_EQ(n.SEG2, MARKED);
      EXPECT_EQ(gradients(model, 0, {2, 1, 1, NONE, NONE}), std::vector<double>(24, 0.0));
    }
  }
}
