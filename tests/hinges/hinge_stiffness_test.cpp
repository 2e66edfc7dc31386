// hinge_stiffness_test.cpp: when KSTIFB_PLAST acts, and that what it returns takes the stiffness along the flow.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <utility>

#include "comparison.h"
#include "hinge_model.h"
#include "plastic_cases.h"
#include "plugin_recorder.h"
#include "reference_hinge.h"

namespace {

using namespace hinge_tests;
using plugin_recorder::answer;
using reference::matrix;
using support::seeded_random;

const std::vector<double> ZERO(144, 0.0);
const std::vector<std::string> NO_TEXT;
const std::vector<std::string> SINGULAR{"Verify Singular KP"};

class HingeStiffness : public ::testing::Test {
 protected:
  HingeStiffness() : random(5501) { plugin_recorder::reset(answer::stand_in); }

  // Nothing happens: K as it was, KP zero, no text.
  void expect_nothing(const HINGE_RECORD& h) {
    hinge_model model(h);
    model.set_end_forces(END1, END2);
    const std::vector<double> K = any_stiffness(random);
    const plastic_answer a = plastic(model, K);
    EXPECT_EQ(a.K, K);
    EXPECT_EQ(a.KP, ZERO);
    EXPECT_EQ(a.texts, NO_TEXT);
  }
  void expect_singular(hinge_model& model, const std::vector<double>& K) {
    const plastic_answer a = plastic(model, K);
    EXPECT_EQ(a.K, K);
    EXPECT_EQ(a.KP, ZERO);
    for (const double kp : a.KP) EXPECT_FALSE(std::signbit(kp));  // zero as it was set, no product with zeros
    EXPECT_EQ(a.texts, SINGULAR);
  }

  seeded_random random;
};

// K with the stiffness of a bar in rows and columns 1 and 7, the second end stiffer by a factor.
std::vector<double> bar(double factor) {
  std::vector<double> K(144, 0.0);
  for (std::size_t i = 0; i < 12; ++i) K[13 * i] = 4.0;
  K[0] = 64.0;
  K[6] = K[72] = -64.0;
  K[78] = 64.0 * factor;
  return K;
}

}  // namespace

TEST_F(HingeStiffness, WithoutAHingeModelNothingHappens) {
  for (const int number : {0, 2, -1}) {
    for (const int release : {0, 1}) {
      HINGE_RECORD h = hinge_of(2, 7, 1, 1);
      h.HINGE_MODEL = number;
      h.AXIAL_RELEASE = release;
      expect_nothing(h);
    }
  }
}

TEST_F(HingeStiffness, WithoutHingeRecordsNothingHappens) {
  hinge_model model(hinge_of(2, 7, 1, 1));
  model.set_end_forces(END1, END2);
  SOLANAELEM.HINGE_REC = {};
  const std::vector<double> K = any_stiffness(random);
  const plastic_answer a = plastic(model, K);
  EXPECT_EQ(a.K, K);
  EXPECT_EQ(a.KP, ZERO);
  EXPECT_EQ(a.texts, NO_TEXT);
}

TEST_F(HingeStiffness, EndStatesThatAreBothNoneOrBothDoneLeaveEverything) {
  for (const int state : {0, 2}) {
    for (const int release : {0, 1}) {
      HINGE_RECORD h = hinge_of(2, 7, state, state);
      h.AXIAL_RELEASE = release;
      expect_nothing(h);
    }
  }
}

TEST_F(HingeStiffness, WithoutAYieldingEndNothingHappens) {
  for (const auto& [first, second] : {std::pair{0, 2}, {2, 0}, {3, 0}, {0, -1}, {3, 3}}) {
    for (const int kind : {1, 2, 3}) expect_nothing(hinge_of(kind, 3, first, second));
  }
}

TEST_F(HingeStiffness, TheAxialReleaseChangesFourEntriesAndNothingElse) {
  for (const auto& [first, second] :
       {std::pair{1, 1}, {1, 0}, {0, 1}, {1, 2}, {2, 1}, {0, 2}, {2, 0}, {3, 0}, {3, 3}}) {
    HINGE_RECORD h = hinge_of(2, 7, first, second);
    h.AXIAL_RELEASE = 1;
    hinge_model model(h);
    model.set_end_forces(END1, END2);
    const std::vector<double> K = any_stiffness(random);
    std::vector<double> expected = K;
    for (const std::size_t at : {0U, 6U, 72U, 78U}) expected[at] *= 1e-06;  // (1,1), (7,1), (1,7), (7,7)
    const plastic_answer a = plastic(model, K);
    EXPECT_EQ(a.K, expected) << first << ", " << second;
    EXPECT_EQ(a.KP, ZERO);
    EXPECT_EQ(a.texts, NO_TEXT);
    EXPECT_EQ(plugin_recorder::calls().loads, 0);  // no force is asked for
  }
}

TEST_F(HingeStiffness, OtherReleaseCodesAreNoRelease) {
  for (const int code : {0, 2, -1}) {
    HINGE_RECORD h = hinge_of(2, 7, 1, 0);
    h.AXIAL_RELEASE = code;
    hinge_model model(h);
    model.set_end_forces(END1, END2);
    const std::vector<double> K = sound_stiffness(random);
    const plastic_answer a = plastic(model, K);
    EXPECT_EQ(a.K, K);
    EXPECT_NE(a.KP, ZERO);
  }
}

TEST_F(HingeStiffness, UnknownCurvesLeaveTheMemberElastic) {
  for (const int kind : {0, 4, -1, 2147483647}) expect_nothing(hinge_of(kind, 7, 1, 1));
}

TEST_F(HingeStiffness, AYieldingEndWithoutASegmentLeavesTheMemberElastic) {
  for (const auto& [first, second] : {std::pair{1, 1}, {1, 0}, {1, 2}}) {
    HINGE_RECORD h = hinge_of(3, 7, first, second);
    set_segments(h.END1_SEG, {0, -5, 0, -1});
    set_segments(h.END2_SEG, {1, 2, 0, 0});
    expect_nothing(h);
    std::swap(h.END1_STATE, h.END2_STATE);
    std::swap(h.END1_SEG, h.END2_SEG);
    expect_nothing(h);
  }
}

TEST_F(HingeStiffness, SingleForcesWithInteractionAtOneEndGiveZeroWithoutAText) {
  for (const int FS : {4, 5, 6, 7, 8, 0}) {
    for (const auto& [first, second] : {std::pair{1, 0}, {0, 1}, {1, 2}, {2, 1}}) {
      expect_nothing(hinge_of(1, FS, first, second));
    }
  }
}

TEST_F(HingeStiffness, ASingleForceWithoutAnyOneCapacityAtOneEndGivesZeroWithoutAText) {
  // No side is selected, so there is no equation.
  for (int missing = 0; missing < 3; ++missing) {
    for (const auto& [first, second] : {std::pair{1, 0}, {0, 1}}) {
      HINGE_RECORD h = hinge_of(1, 2, first, second);
      (missing == 0 ? h.CAP_P : missing == 1 ? h.CAP_MY : h.CAP_MZ) = 0.0;
      expect_nothing(h);
    }
  }
}

TEST_F(HingeStiffness, SingleForcesWithInteractionAtBothEndsAreSingular) {
  for (const int FS : {4, 5, 6, 7, 8, 0}) {
    hinge_model model(hinge_of(1, FS, 1, 1));
    model.set_end_forces(END1, END2);
    expect_singular(model, sound_stiffness(random));
  }
}

TEST_F(HingeStiffness, ParallelGradientsOfBothEndsAreSingularInSinglePrecision) {
  // Axial hinges at both ends of a bar: N^T K N is 64/100^2 [1 -1; -1 1]. A second end that is stiffer by 1e-9 is the
  // same in single precision.
  for (const double factor : {1.0, 1.0 + 1e-9}) {
    hinge_model model(hinge_of(1, 1, 1, 1));
    model.set_end_forces({5, 0, 0}, {5, 0, 0});
    expect_singular(model, bar(factor));
  }
  hinge_model model(hinge_of(1, 1, 1, 1));
  model.set_end_forces({5, 0, 0}, {5, 0, 0});
  EXPECT_EQ(plastic(model, bar(1.5)).texts, NO_TEXT);
}

TEST_F(HingeStiffness, ThreeEquationsAtOneEndAreSingular) {
  for (const auto& [first, second] : {std::pair{1, 0}, {0, 1}, {1, 2}, {2, 1}}) {
    for (const segments& three : {segments{5, 6, 7, 0}, segments{1, 2, 3, 4}}) {
      HINGE_RECORD h = hinge_of(3, 7, first, second);
      set_segments(first == 1 ? h.END1_SEG : h.END2_SEG, three);
      hinge_model model(h);
      model.set_end_forces(END1, END2);
      expect_singular(model, sound_stiffness(random));
    }
  }
}

TEST_F(HingeStiffness, AListWithAGapAtOneEndHasAnEmptyColumnAndIsSingular) {
  // Two positive entries in the places 2 and 3: the first two places hold one of them.
  for (const auto& [first, second] : {std::pair{1, 0}, {0, 1}}) {
    HINGE_RECORD h = hinge_of(3, 7, first, second);
    set_segments(first == 1 ? h.END1_SEG : h.END2_SEG, {0, 5, 8, 0});
    hinge_model model(h);
    model.set_end_forces(END1, END2);
    expect_singular(model, sound_stiffness(random));
  }
}

TEST_F(HingeStiffness, AGradientThatIsZeroIsSingular) {
  // Orbison with the axial force alone; without capacity; the linear family with the axial force alone.
  HINGE_RECORD without_capacity = hinge_of(2, 7, 1, 0);
  without_capacity.CAP_MZ = 0.0;
  HINGE_RECORD linear = hinge_of(3, 1, 0, 1);
  set_segments(linear.END2_SEG, {1, 0, 0, 0});
  for (const HINGE_RECORD& h : {hinge_of(2, 1, 1, 0), hinge_of(2, 1, 1, 1), without_capacity, linear}) {
    hinge_model model(h);
    model.set_end_forces(END1, END2);
    expect_singular(model, sound_stiffness(random));
  }
}

TEST_F(HingeStiffness, WithoutTheNonlinearLibraryTheSmoothSurfaceHasNoGradient) {
  plugin_recorder::reset(answer::missing);
  for (const auto& [first, second] : {std::pair{1, 0}, {0, 1}, {1, 1}}) {
    hinge_model model(hinge_of(2, 7, first, second));
    model.set_end_forces(END1, END2);
    expect_singular(model, sound_stiffness(random));
  }
  // The segments of the record need no forces.
  HINGE_RECORD h = hinge_of(3, 7, 1, 0);
  set_segments(h.END1_SEG, {5, 0, 0, 0});
  hinge_model linear(h);
  EXPECT_NE(plastic(linear, sound_stiffness(random)).KP, ZERO);
}

TEST_F(HingeStiffness, OneEndHasNoStiffnessAlongItsFlow) {
  for (const plastic_case& c : one_end_cases()) {
    SCOPED_TRACE(c.name);
    hinge_model model(c.hinge);
    model.set_end_forces(END1, END2);
    for (int i = 0; i < 5; ++i) {
      const std::vector<double> K = sound_stiffness(random);
      const plastic_answer a = plastic(model, K);
      const matrix N = c.flow(), k = reference::of_columns(K, 12);
      const std::vector<double> expected = reference::packed(reference::plastic_change(k, N));
      EXPECT_EQ(a.K, K);
      EXPECT_EQ(a.texts, NO_TEXT);
      EXPECT_CLOSE(a.KP, expected, support::max_norm(expected), 100 * condition(k, N));
      const matrix rest = (k + reference::of_columns(a.KP, 12)) * N;
      EXPECT_CLOSE(largest(rest), 0.0, support::max_norm(K) * largest(N), 100 * condition(k, N));
    }
  }
}

TEST_F(HingeStiffness, BothEndsHaveNoStiffnessAlongTheirFlows) {
  for (const plastic_case& c : two_end_cases()) {
    SCOPED_TRACE(c.name);
    hinge_model model(c.hinge);
    model.set_end_forces(END1, END2);
    for (int i = 0; i < 5; ++i) {
      const std::vector<double> K = sound_stiffness(random);
      const plastic_answer a = plastic(model, K);
      const matrix N = c.flow(), k = reference::of_columns(K, 12);
      const std::vector<double> expected = reference::packed(reference::plastic_change(k, N));
      // Two equations are inverted in single precision: 2^-24 instead of 2^-53.
      const double unit = N.cols() == 2 ? 6e-8 : 2.3e-16;
      EXPECT_EQ(a.K, K);
      EXPECT_EQ(a.texts, NO_TEXT);
      EXPECT_WITHIN(a.KP, expected, support::max_norm(expected), 50 * unit * condition(k, N));
      const matrix rest = (k + reference::of_columns(a.KP, 12)) * N;
      EXPECT_WITHIN(largest(rest), 0.0, support::max_norm(K) * largest(N), 50 * unit * condition(k, N));
    }
  }
}

TEST_F(HingeStiffness, TheInversionOfTwoEquationsHasLostDigits) {
  hinge_model model(hinge_of(2, 7, 1, 1));
  model.set_end_forces(END1, END2);
  matrix N(12, 2);
  N << smooth_flow(1), smooth_flow(2);
  double furthest = 0.0;
  for (int i = 0; i < 10; ++i) {
    const std::vector<double> K = sound_stiffness(random);
    const std::vector<double> expected = reference::packed(reference::plastic_change(reference::of_columns(K, 12), N));
    const std::vector<double> KP = plastic(model, K).KP;
    for (std::size_t at = 0; at < 144; ++at) {
      furthest = std::max(furthest, std::fabs(KP[at] - expected[at]) / support::max_norm(expected));
    }
  }
  EXPECT_GT(furthest, 1e-9);
}

TEST_F(HingeStiffness, OneEndAfterTheOtherIsBothAtOnce) {
  // The plastic matrix of the second end on top of that of the first: the same subspace is taken out.
  hinge_model model(hinge_of(2, 7, 1, 0));
  model.set_end_forces(END1, END2);
  for (int i = 0; i < 10; ++i) {
    const std::vector<double> K = sound_stiffness(random);
    model.hinge().END1_STATE = 1;
    model.hinge().END2_STATE = 0;
    const std::vector<double> first = sum(K, plastic(model, K).KP);
    model.hinge().END1_STATE = 0;
    model.hinge().END2_STATE = 1;
    const std::vector<double> second = sum(first, plastic(model, first).KP);
    model.hinge().END1_STATE = 1;
    EXPECT_WITHIN(sum(K, plastic(model, K).KP), second, support::max_norm(K), 1e-5);
  }
}

TEST_F(HingeStiffness, EndsThatDoNotMeetAddUp) {
  hinge_model model(hinge_of(2, 7, 1, 1));
  model.set_end_forces(END1, END2);
  std::vector<double> K = sound_stiffness(random);
  for (std::size_t c = 0; c < 12; ++c) {
    for (std::size_t r = 0; r < 12; ++r) {
      if ((r < 6) != (c < 6)) K[12 * c + r] = 0.0;
    }
  }
  const std::vector<double> both = plastic(model, K).KP;
  model.hinge().END2_STATE = 0;
  const std::vector<double> first = plastic(model, K).KP;
  model.hinge().END1_STATE = 2;
  model.hinge().END2_STATE = 1;
  EXPECT_WITHIN(both, sum(first, plastic(model, K).KP), support::max_norm(K), 1e-6);
}

TEST_F(HingeStiffness, TheForceModeComesFromTheSolutionParameters) {
  hinge_model model(hinge_of(2, 7, 1, 0));
  model.set_end_forces(END1, END2);
  for (const int row : {1, 5, 6}) {
    model.forces().F_END_STEP(row) = 0.0;
    model.forces().F_END_ITER(row) = row == 1 ? 70.0 : 0.0;
  }
  const std::vector<double> K = sound_stiffness(random);
  const std::vector<double> stored = plastic(model, K).KP;
  model.set_force_mode(1);
  // The axial force alone: the flow is along the first degree of freedom.
  matrix N = matrix::Zero(12, 1);
  N(0, 0) = 1.0L;
  const std::vector<double> expected = reference::packed(reference::plastic_change(reference::of_columns(K, 12), N));
  EXPECT_CLOSE(plastic(model, K).KP, expected, support::max_norm(expected), 1e3);
  EXPECT_NE(stored, expected);
}
