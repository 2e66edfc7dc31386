// Plane frames to collapse: hand plastic analysis, second order.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "pushover_support.h"

using namespace pushover_test;
using solver::pushover_end;

namespace {

constexpr double MP = 1e8;

}  // namespace

TEST(PushoverFrames, PortalUnderSwayAndCentralForce) {
  // Hinges at both ends of both columns' beams and feet: the two-hinge inverse of the library is single precision, the
  // factor is not.
  const solver::model m = deck("pushover_portal.inp");
  for (const solver::solver_kind kind : solvers()) {
    const solver::pushover_solution s = push(m, kind).front();
    EXPECT_EQ(s.end, pushover_end::MECHANISM);
    EXPECT_EQ(s.events.size(), 4U);
    EXPECT_WITHIN(s.factor, 6.0, 6.0, 1e-12);
    EXPECT_LT(imbalance(m, s), 1e-9);
    // The beam goes down by half the span, the frame sideways by its height, for one and the same angle.
    EXPECT_WITHIN(s.motion[solver::freedom(4, 1)], -1.0, 1.0, 1e-6);
    EXPECT_WITHIN(s.motion[solver::freedom(2, 0)], 1.0, 1.0, 1e-6);
  }
}

TEST(PushoverFrames, PortalInTwoPhases) {
  const std::vector<solver::pushover_solution> both = push(deck("pushover_portal_two_phases.inp"));
  EXPECT_EQ(both[0].end, pushover_end::FACTOR_REACHED);
  EXPECT_EQ(both[1].end, pushover_end::MECHANISM);
  EXPECT_WITHIN(both[1].factor, 4.5, 4.5, 1e-12);
}

TEST(PushoverFrames, PortalWithFlatFaces) {
  // Flat faces under bending alone make the same portal.
  solver::model m = deck("pushover_portal.inp");
  m.hinges[0].curve = solver::yield_curve::LINEAR;
  m.hinges[0].force_set = 2;
  const solver::pushover_solution s = push(m).front();
  EXPECT_EQ(s.end, pushover_end::MECHANISM);
  EXPECT_WITHIN(s.factor, 6.0, 6.0, 1e-12);
}

TEST(PushoverFrames, LeaningPortalOfSecondOrder) {
  // decks/sway_portal.py: stability functions of whole columns, hinges at their ends that flow along the normal of
  // their surface; no mesh. Four cubic elements to a column are a little stiffer. The first-order collapse lies above.
  constexpr double BY_STABILITY_FUNCTIONS = 1.04849;
  solver::model m = deck("pushover_leaning_portal.inp");
  const solver::pushover_solution second = push(m).front();
  m.steps[0].p_delta = false;
  const solver::pushover_solution first = push(m).front();
  EXPECT_WITHIN(second.factor, BY_STABILITY_FUNCTIONS, BY_STABILITY_FUNCTIONS, 1e-4);
  EXPECT_GT(first.factor, second.factor);
}

TEST(PushoverFrames, SecondOrderEndsAtTheBucklingLoadOfTheWeakPlane) {
  straight_member b;
  b.elements = 16;
  const double euler = std::pow(std::acos(-1.0) / b.length / 2, 2) * b.E * b.inertia_xz;
  const solver::pushover_solution s = push(read(b.deck(hinges("SINGLE, FORCES=M2", 1e9, 1e9, MP), "1, ENCASTRE\n",
                                                       pushed("*CLOAD\n17, 1, -1.E6\n17, 2, 5000.\n"), ", PDELTA")))
                                          .front();
  EXPECT_EQ(s.end, pushover_end::LIMIT);
  EXPECT_TRUE(s.events.empty());
  EXPECT_WITHIN(s.factor, euler / 1e6, 1.0, 1e-6);
}

TEST(PushoverFrames, SecondOrderOfAColumn) {
  // A cantilever column under a thrust N and a sway H: moment at the foot by the stability functions of many elements,
  // H tan(kL) / k with k^2 = N / EI. The hinge at the foot makes it collapse.
  straight_member b;
  b.elements = 16;
  b.inertia_xz = 9e7;
  const double N = 1e6, H = 5000, EI = b.E * b.inertia_xy;
  const solver::pushover_solution s = push(read(b.deck(hinges("SINGLE, FORCES=M2", 1e9, 1e9, MP), "1, ENCASTRE\n",
                                                       pushed("*CLOAD\n17, 1, -1.E6\n17, 2, 5000.\n"), ", PDELTA")))
                                          .front();
  double low = 0, high = 1;
  const auto moment = [&](double x) {
    const double k = std::sqrt(x * N / EI);
    return x * H * std::tan(k * b.length) / k;
  };
  while (moment(high) < MP) high *= 1.01;
  for (int i = 0; i < 100; ++i) (moment((low + high) / 2) < MP ? low : high) = (low + high) / 2;
  ASSERT_GE(s.events.size(), 1U);
  EXPECT_WITHIN(s.events[0].factor, high, high, 1e-6);
  EXPECT_WITHIN(s.factor, high, high, 1e-6);
  EXPECT_TRUE(s.end == pushover_end::MECHANISM || s.end == pushover_end::LIMIT);
}
