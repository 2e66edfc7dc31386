// Straight members to collapse: hand plastic analysis, surfaces of every kind, unloading.
//
// The factors are exact within rounding: the solver corrects with the exact plastic matrix what the library's single
// precision inverse of two hinges leaves.
#include <gtest/gtest.h>

#include <cmath>
#include <functional>

#include "finites/fields.h"
#include "pushover_support.h"
#include "tarnix.h"

using namespace pushover_test;
using solver::event_kind;
using solver::pushover_end;

namespace {

constexpr double MP = 1e8, EXACT = 1e-12;

const char* const CLAMPED = "1, ENCASTRE\n";

// The elastic frame reaches the surface of a determinate member at the root of its value along the ray.
double root(const std::function<double(double)>& value) {
  double low = 0, high = 1;
  while (value(high) < 1) high *= 2;
  for (int k = 0; k < 200; ++k) (value((low + high) / 2) < 1 ? low : high) = (low + high) / 2;
  return high;
}

}  // namespace

TEST(PushoverBeams, ProppedBeamUnderACentralForce) {
  const solver::model m = deck("pushover_propped_beam.inp");
  for (const solver::solver_kind kind : solvers()) {
    const solver::pushover_solution s = push(m, kind).front();
    EXPECT_EQ(s.end, pushover_end::MECHANISM);
    EXPECT_WITHIN(factors(s), (std::vector<double>{16.0 / 3, 6}), 6.0, EXACT);
    EXPECT_WITHIN(s.factor, 6.0, 6.0, EXACT);
    // The deflection of the elastic propped beam, 7 P L^3 / 768 EI.
    const double L = 4000, EI = 210000 * 8e7, first = 7.0 / 768 * 16.0 / 3 * MP / L * L * L * L / EI;
    ASSERT_EQ(s.curve.size(), 3U);
    EXPECT_WITHIN(s.curve[1].displacement, -first, first, 1e-11);
    EXPECT_EQ(s.curve[1].open_hinges, 1);
    // From there the beam is simply supported: P L^3 / 48 EI.
    EXPECT_WITHIN(s.curve[2].displacement, -first - 2.0 / 3 * MP * L * L / 48 / EI, first, 1e-11);
    EXPECT_EQ(s.node, 1);
    EXPECT_WITHIN(s.motion[solver::freedom(1, 1)], -1.0, 1.0, 1e-9);
  }
}

TEST(PushoverBeams, ProppedBeamUnderAUniformLoad) {
  // The span hinge lies sqrt(2) - 1 of the span from the roller; the load is 6 + 4 sqrt(2) Mp/L^2.
  straight_member b;
  b.elements = 2;
  const double middle = (2 - std::sqrt(2.0)) * b.length;
  std::string text = b.deck(hinges("SINGLE, FORCES=M2", 1e9, 1, MP), "1, ENCASTRE\n3, 2\n",
                            pushed("*DLOAD\nMEMBER, PY, " + number(-MP / b.length / b.length) + "\n"));
  text.replace(text.find("2, 2000"), 7, "2, " + number(middle));
  const solver::pushover_solution s = push(read(text)).front();
  EXPECT_EQ(s.end, pushover_end::MECHANISM);
  EXPECT_WITHIN(factors(s), (std::vector<double>{8, 6 + 4 * std::sqrt(2.0)}), 12.0, EXACT);
}

TEST(PushoverBeams, ClampedBeam) {
  const solver::pushover_solution uniform = push(deck("pushover_fixed_beam.inp")).front();
  EXPECT_EQ(uniform.end, pushover_end::MECHANISM);
  EXPECT_WITHIN(factors(uniform), (std::vector<double>{12, 12, 16}), 16.0, EXACT);

  straight_member b;
  b.elements = 2;
  const solver::pushover_solution central =
      push(read(b.deck(hinges("SINGLE, FORCES=M2", 1e9, 1, MP), "1, ENCASTRE\n3, ENCASTRE\n",
                       pushed("*CLOAD\n2, 2, " + number(-MP / b.length) + "\n"))))
          .front();
  EXPECT_EQ(central.end, pushover_end::MECHANISM);
  EXPECT_WITHIN(central.factor, 8.0, 8.0, EXACT);
  for (const double factor : factors(central)) EXPECT_WITHIN(factor, 8.0, 8.0, EXACT);
}

TEST(PushoverBeams, AHingeClosesWhenTheLoadIsPulledBack) {
  const std::vector<solver::pushover_solution> both = push(deck("pushover_unloading.inp"));
  ASSERT_EQ(both.size(), 2U);
  EXPECT_EQ(both[0].end, pushover_end::FACTOR_REACHED);
  EXPECT_EQ(both[0].factor, 5.8);
  const solver::pushover_solution& back = both[1];
  EXPECT_EQ(back.end, pushover_end::MECHANISM);
  ASSERT_EQ(back.events.size(), 3U);
  EXPECT_EQ(back.events[0].kind, event_kind::CLOSED);
  EXPECT_EQ(back.events[1].kind, event_kind::FORMED);
  EXPECT_WITHIN(factors(back), (std::vector<double>{0, 32.0 / 3, 11.8}), 11.8, EXACT);
  // The reactions hold the loads of both steps: 5.8 - 11.8 = -6 Mp/L.
  double sum = 0;
  for (std::size_t n = 0; n < 3; ++n) sum += back.frame.reaction[6 * n + 1];
  EXPECT_WITHIN(sum, -6 * MP / 4000, MP / 4000, 1e-11);
}

TEST(PushoverBeams, WithoutHingesOnTheWayBackItIsElastic) {
  // Half of the yield load and back: no event, and the beam is straight again.
  std::string text = "*STEP, PERTURBATION\n*PUSHOVER, CONTINUE\n1.\n*CLOAD\n2, 2, 25000.\n*END STEP\n";
  straight_member b;
  b.elements = 2;
  const solver::model m = read(b.deck(hinges("SINGLE, FORCES=M2", 1e9, 1, MP), "1, ENCASTRE\n3, 2\n",
                                      pushed("*CLOAD\n2, 2, -25000.\n", "", "1.\n")) +
                               text);
  const std::vector<solver::pushover_solution> both = push(m);
  EXPECT_TRUE(both[0].events.empty() && both[1].events.empty());
  const double there = both[0].frame.displacement[7], back = both[1].frame.displacement[7];
  EXPECT_LT(there, -0.1);
  EXPECT_LT(std::fabs(back), 1e-12 * std::fabs(there));
}

TEST(PushoverBeams, OrbisonUnderBiaxialBendingAndPressure) {
  straight_member b;
  const double P = 4e5, Py = 700, Pz = 300, L = b.length, cp = 1.2e6, cy = 3e6, cz = 8e6;
  const solver::pushover_solution s = push(read(b.deck(hinges("ORBISON", cp, cy, cz), CLAMPED,
                                                       pushed("*CLOAD\n2, 1, -4.E5\n2, 2, 700.\n2, 3, 300.\n"))))
                                          .front();
  const double expected = root([&](double x) { return orbison(x * P / cp, x * Pz * L / cy, x * Py * L / cz); });
  EXPECT_EQ(s.end, pushover_end::MECHANISM);
  ASSERT_EQ(s.events.size(), 1U);
  EXPECT_EQ(s.events[0].end, 0U);
  EXPECT_WITHIN(s.factor, expected, expected, 1e-11);
}

TEST(PushoverBeams, FlatFacesUnderBendingAndPressure) {
  // p + 8/9 m = 1, where the library keeps 8/9 in single precision; p/2 + m = 1 below p = 0.2.
  straight_member b;
  const double L = b.length, cp = 1e6, cz = 8e6, c = 0.8888888955116272;
  const auto factor = [&](const std::string& P, const char* forces) {
    return push(read(b.deck(hinges(std::string("LINEAR, FORCES=") + forces, cp, 3e6, cz), CLAMPED,
                            pushed("*CLOAD\n2, 1, " + P + "\n2, 2, 700.\n"))))
        .front();
  };
  for (const char* const sign : {"-", ""}) {
    const solver::pushover_solution pressed = factor(std::string(sign) + "400000.", "N-M2");
    EXPECT_EQ(pressed.end, pushover_end::MECHANISM);
    EXPECT_WITHIN(pressed.factor, 1 / (0.4 + c * 700 * L / cz), 1.0, 1e-12);
    const solver::pushover_solution bent = factor(std::string(sign) + "50000.", "N-M2");
    EXPECT_WITHIN(bent.factor, 1 / (0.025 + 700 * L / cz), 1.0, 1e-12);
    const solver::pushover_solution all = factor(std::string(sign) + "400000.", "N-M1-M2");
    EXPECT_WITHIN(all.factor, 1 / (0.4 + c * 700 * L / cz), 1.0, 1e-12);
  }
}

TEST(PushoverBeams, ABarYieldsOnceUnderAnAxialForce) {
  // Both ends are on the surface at the same factor; the flows of both are one motion, and one of them does.
  straight_member b;
  const solver::model m =
      read(b.deck(hinges("SINGLE, FORCES=N", 1e6, 1, 1), "1, ENCASTRE\n", pushed("*CLOAD\n2, 1, 250000.\n")));
  solver::library_model library(m);
  const std::unique_ptr<solver::linear_solver> equations = solver::make_linear_solver(solver::default_solver());
  solver::stopwatch watch;
  solver::pushover frame(m, library, *equations);
  const solver::pushover_solution s = frame.solve(m.steps.front(), watch);
  std::int32_t complaints = -1;
  TARNIX_GET_ASSERT_COUNT(&complaints);
  EXPECT_EQ(complaints, 0);
  EXPECT_EQ(s.end, pushover_end::MECHANISM);
  EXPECT_EQ(s.events.size(), 1U);
  EXPECT_WITHIN(s.factor, 4.0, 4.0, EXACT);
}

TEST(PushoverBeams, NoFurtherHingeUnderATwistingMoment) {
  straight_member b;
  const solver::pushover_solution s =
      push(read(b.deck(hinges("ORBISON", 1e6, 1e8, 1e8), CLAMPED, pushed("*CLOAD\n2, 4, 1000.\n")))).front();
  EXPECT_EQ(s.end, pushover_end::NO_EVENT);
  EXPECT_TRUE(s.events.empty());
}

TEST(PushoverBeams, StopsAfterTheEventsOfTheDeck) {
  std::string text = "*PUSHOVER\n, 1\n*CLOAD\n2, 2, -25000.\n";
  straight_member b;
  b.elements = 2;
  const solver::pushover_solution s =
      push(read(b.deck(hinges("SINGLE, FORCES=M2", 1e9, 1, MP), "1, ENCASTRE\n3, 2\n", text))).front();
  EXPECT_EQ(s.end, pushover_end::EVENTS_REACHED);
  EXPECT_WITHIN(s.factor, 16.0 / 3, 6.0, EXACT);
}

TEST(PushoverBeams, AStructureThatDoesNotStandIsAnError) {
  straight_member b;
  const solver::model m =
      read(b.deck(hinges("ORBISON", 1e6, 1e8, 1e8), "1, PINNED\n", pushed("*CLOAD\n2, 2, 1000.\n")));
  try {
    push(m);
    ADD_FAILURE() << "accepted";
  } catch (const solver::deck_error& error) {
    EXPECT_NE(std::string(error.what()).find("mechanism"), std::string::npos) << error.what();
  }
}

TEST(PushoverBeams, HingesEndWithThePushover) {
  const solver::model m = deck("pushover_propped_beam.inp");
  solver::library_model library(m);
  const std::unique_ptr<solver::linear_solver> equations = solver::make_linear_solver(solver::default_solver());
  solver::stopwatch watch;
  solver::element_matrix before, after;
  library.stiffness(0, before);
  { solver::pushover(m, library, *equations).solve(m.steps.front(), watch); }
  library.stiffness(0, after);
  for (int j = 1; j <= 12; ++j)
    for (int i = 1; i <= 12; ++i) EXPECT_EQ(after(i, j), before(i, j));
}
