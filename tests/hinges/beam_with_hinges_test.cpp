// beam_with_hinges_test.cpp: KSTIFB with hinges, from the records of the solver to the matrix in its axes.
#include <gtest/gtest.h>

#include <algorithm>

#include "assert_recorder.h"
#include "comparison.h"
#include "hinge_model.h"
#include "plastic_cases.h"
#include "plugin_recorder.h"
#include "reference_hinge.h"

namespace {

using namespace hinge_tests;
using plugin_recorder::answer;
using reference::matrix;

// A member whose two planes differ, with ends that are not alike and an axial force.
member_description some_beam() {
  member_description m;
  m.length = 4.0;
  m.fixity_y = {1.0, 0.8};
  m.fixity_z = {0.9, 1.0};
  m.axial_force = -25.0;
  m.remove_min = 1e-3;
  return m;
}

HINGE_RECORD elastic(HINGE_RECORD h) {
  h.END1_STATE = h.END2_STATE = 0;
  return h;
}

class BeamWithHinges : public ::testing::Test {
 protected:
  BeamWithHinges() { plugin_recorder::reset(answer::stand_in); }

  static std::vector<double> stiffness(hinge_model& model, int mode) {
    support::forget_assertions();
    return model.frame().beam(mode, MEMBER).K;
  }
  static void prepare(hinge_model& model) {
    model.set_end_forces(END1, END2);
    model.frame().set_kind(1.0);
    model.frame().set_members_yield(1);
  }
  // Without hinges. One model lives at a time: taken before the one that has them.
  static matrix elastic_stiffness(const HINGE_RECORD& h, int mode) {
    hinge_model model(elastic(h), some_beam());
    prepare(model);
    return reference::of_columns(stiffness(model, mode), 12);
  }
};

}  // namespace

TEST_F(BeamWithHinges, OneAndTwoEndsAgainstTheFormula) {
  std::vector<plastic_case> cases = one_end_cases();
  for (const plastic_case& c : two_end_cases()) cases.push_back(c);
  for (const plastic_case& c : cases) {
    SCOPED_TRACE(c.name);
    // One flow along the axis: a beam has the stiffness of a bar there, and both ends are parallel.
    if (c.name == "single force 1, states 1 and 1") continue;
    const matrix K = elastic_stiffness(c.hinge, 0), N = c.flow();
    hinge_model model(c.hinge, some_beam());
    prepare(model);
    const std::vector<double> actual = stiffness(model, 0);
    const matrix expected = K + reference::plastic_change(K, N);
    const double unit = N.cols() == 2 && c.hinge.END1_STATE == c.hinge.END2_STATE ? 6e-8 : 2.3e-16;
    // Three flows at each end take in the axial one of both: the same bar, so that N^T K N is singular and the formula
    // without a value.
    if (N.cols() < 6) {
      EXPECT_WITHIN(actual, reference::packed(expected), largest(K), 50 * unit * condition(K, N));
    }
    EXPECT_EQ(support::recorded_assertions(), std::vector<std::string>());
    EXPECT_EQ(support::values(model.hinge().K_ELASTIC.data(), 144), reference::packed(K));
  }
}

TEST_F(BeamWithHinges, TheFirstEndOfAnEulerBeamHasNoStiffnessAlongItsFlow) {
  hinge_model model(hinge_of(2, 7, 1, 0), member_description{});
  prepare(model);
  model.frame().record(MEMBER).AXIAL_FORCE = 0.0;
  const matrix K = reference::of_columns(stiffness(model, 0), 12);
  const matrix n = smooth_flow(1).topRows(6);
  const matrix rest = K.topLeftCorner(6, 6) * n;
  EXPECT_CLOSE(largest(rest), 0.0, largest(K) * largest(n), 100);
  EXPECT_GT(largest(K.bottomRightCorner(6, 6)), 1.0);
}

TEST_F(BeamWithHinges, AxialHingesAtBothEndsAreReportedAndLeaveTheBeamElastic) {
  // Both flows are along the axis of one bar.
  const HINGE_RECORD h = hinge_of(1, 1, 1, 1);
  const std::vector<double> expected = reference::packed(elastic_stiffness(h, 0));
  hinge_model model(h, some_beam());
  prepare(model);
  EXPECT_EQ(stiffness(model, 0), expected);
  EXPECT_EQ(support::recorded_assertions(), std::vector<std::string>{"Verify Singular KP"});
}

TEST_F(BeamWithHinges, TheAxialReleaseReachesTheBeamsOwnMatrix) {
  HINGE_RECORD h = hinge_of(2, 7, 0, 2);
  const matrix K = elastic_stiffness(h, 0);
  h.AXIAL_RELEASE = 1;
  hinge_model model(h, some_beam());
  prepare(model);
  std::vector<double> expected = reference::packed(K);
  for (const std::size_t at : {0U, 6U, 72U, 78U}) expected[at] *= 1e-06;
  EXPECT_EQ(stiffness(model, 0), expected);
  // What was stored before is the elastic matrix.
  EXPECT_EQ(support::values(model.hinge().K_ELASTIC.data(), 144), reference::packed(K));
}

TEST_F(BeamWithHinges, OtherModesHaveHingesToo) {
  const HINGE_RECORD h = hinge_of(2, 7, 1, 0);
  for (const int mode : {1, 2}) {
    const matrix K = elastic_stiffness(h, mode), N = smooth_flow(1);
    hinge_model model(h, some_beam());
    prepare(model);
    EXPECT_CLOSE(stiffness(model, mode), reference::packed(K + reference::plastic_change(K, N)), largest(K),
                 100 * condition(K, N));
  }
}

TEST_F(BeamWithHinges, TheRotationComesAfterTheHinges) {
  const HINGE_RECORD h = hinge_of(2, 7, 0, 1);
  support::seeded_random random(5601);
  const support::rotation R = support::random_rotation(random);
  matrix T = matrix::Zero(12, 12);
  for (int block = 0; block < 12; block += 3) {
    for (int i = 0; i < 3; ++i) {
      for (int j = 0; j < 3; ++j) T(block + i, block + j) = R[static_cast<std::size_t>(i)][static_cast<std::size_t>(j)];
    }
  }
  const matrix K = elastic_stiffness(h, 0), N = smooth_flow(2);
  hinge_model model(h, some_beam());
  prepare(model);
  model.frame().set_rotation(reference::packed(T));
  const matrix expected = T.transpose() * (K + reference::plastic_change(K, N)) * T;
  EXPECT_CLOSE(stiffness(model, 0), reference::packed(expected), largest(K), 200 * condition(K, N));
}

TEST_F(BeamWithHinges, OnlyYieldingMembersOfASecondOrderAnalysisHaveHinges) {
  const HINGE_RECORD h = hinge_of(2, 7, 1, 1);
  const std::vector<double> K = reference::packed(elastic_stiffness(h, 0));
  for (const int yield : {0, 1, 2}) {
    hinge_model model(h, some_beam());
    prepare(model);
    model.frame().set_members_yield(yield);
    EXPECT_EQ(stiffness(model, 0) == K, yield != 1) << yield;
  }
  // The kind 3 returns the geometric matrix apart, and has no hinges.
  const HINGE_RECORD none = elastic(h);
  std::vector<double> apart[2];
  for (int i = 0; i < 2; ++i) {
    hinge_model model(i == 0 ? h : none, some_beam());
    prepare(model);
    model.frame().set_kind(3.0);
    apart[i] = stiffness(model, 0);
  }
  EXPECT_EQ(apart[0], apart[1]);
}

TEST_F(BeamWithHinges, TheLibraryThatIsLoadedByNameServes) {
  plugin_recorder::reset(answer::loaded);
  const HINGE_RECORD h = hinge_of(2, 7, 1, 0);
  const matrix K = elastic_stiffness(h, 0), N = smooth_flow(1);
  hinge_model model(h, some_beam());
  prepare(model);
  EXPECT_CLOSE(stiffness(model, 0), reference::packed(K + reference::plastic_change(K, N)), largest(K),
               100 * condition(K, N));
}
