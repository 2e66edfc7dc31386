// What hinges at ends cannot follow is reported: members whose nodes stay, forces above the capacity between two ends,
// ends that have no moment; and loads that are the limit load itself.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <vector>

#include "finites/fields.h"
#include "plastic_support.h"
#include "pushover_support.h"
#include "run_support.h"

using namespace pushover_test;
using plastic_test::a_strip;
using plastic_test::strip;
using run_test::ran;
using run_test::run;
using run_test::run_error;
using solver::pushover_end;

namespace {

constexpr double MP = 1e8, L = 4000;
const char* const SIMPLE = "1, 1, 4\n2, 2, 3\n";
const char* const FIXED = "1, ENCASTRE\n2, ENCASTRE\n";
const char* const PROPPED = "1, ENCASTRE\n2, 2, 3\n";
const char* const BENDING = "SINGLE, FORCES=M2";

bool says(const std::string& text, const std::string& words) { return text.find(words) != std::string::npos; }

std::string uniform(double times) { return "*DLOAD\nMEMBER, PY, " + number(-times * MP / L / L) + "\n"; }

// One beam, of as many elements, with a uniform load of so many Mp / L^2.
std::string beam(const std::string& supports, const std::string& step, int elements = 1) {
  straight_member b;
  b.elements = elements;
  return b.deck(hinges(BENDING, 1e9, 1, MP), supports, step);
}

// A portal with a load along its girder, which is one beam or two; rigid joints, clamped feet.
std::string portal(const std::string& card, bool node_in_span) {
  const std::string girder = node_in_span ? "2, 2, 5\n4, 5, 3\n" : "2, 2, 3\n";
  return std::string("*NODE, NSET=ALL\n1, 0, 0, 0\n2, 0, 4, 0\n3, 8, 4, 0\n4, 8, 0, 0\n") +
         (node_in_span ? "5, 4, 4, 0\n" : "") + "*ELEMENT, TYPE=B33, ELSET=POSTS\n1, 1, 2\n3, 3, 4\n" +
         "*ELEMENT, TYPE=B33, ELSET=GIRDER\n" + girder +
         "*ELSET, ELSET=MEMBER\nPOSTS, GIRDER\n*MATERIAL, NAME=S\n*ELASTIC\n210e9, 0.3\n"
         "*BEAM GENERAL SECTION, ELSET=MEMBER, MATERIAL=S\n0.01, 1e-4, 0, 1e-4, 1e-4\n0, 0, 1\n"
         "*PLASTIC HINGE, ELSET=MEMBER, CURVE=SINGLE, FORCES=M1\n1e7, 1e5, 1e5\n"
         "*BOUNDARY\n1, ENCASTRE\n4, ENCASTRE\nALL, 3, 5\n*STEP\n" +
         card + "*DLOAD\nGIRDER, PY, -3.5e4\n*END STEP\n";
}

// The portal of decks/pushover_portal.inp, which collapses at 6 Mp/L, under so many Mp/L.
std::string sway_portal(double times, double stretch = 1) {
  const std::string force = number(times * MP / L);
  return "*NODE, NSET=ALL\n1, 0, 0, 0\n2, 0, " + number(2000 * stretch) + ", 0\n3, 4000, " + number(2000 * stretch) +
         ", 0\n4, 4000, 0, 0\n5, 2000, " + number(2000 * stretch) +
         ", 0\n*ELEMENT, TYPE=B33, ELSET=FRAME\n1, 1, 2\n2, 4, 3\n3, 2, 5\n4, 5, 3\n*MATERIAL, NAME=STEEL\n*ELASTIC\n"
         "210000, 0.3\n*BEAM GENERAL SECTION, ELSET=FRAME, MATERIAL=STEEL\n5000, 8e7, 0, 8e7, 1e6\n0, 0, 1\n"
         "*PLASTIC HINGE, ELSET=FRAME, CURVE=SINGLE, FORCES=M1\n1e9, 1e8, 1e8\n*BOUNDARY\nALL, 3, 5\n1, ENCASTRE\n"
         "4, ENCASTRE\n*STEP\n*STATIC\n*CLOAD\n2, 1, " +
         force + "\n5, 2, -" + force + "\n*END STEP\n";
}

double number_after(const std::string& text, const std::string& words) {
  const std::size_t found = text.find(words);
  return found == std::string::npos ? std::numeric_limits<double>::quiet_NaN()
                                    : std::stod(text.substr(found + words.size()));
}

}  // namespace

TEST(HingeLimits, AClampedBeamWhoseNodesStay) {
  // q L^2 / 12 at the ends.
  const std::string text = run_error(beam(FIXED, "*STATIC\n" + uniform(24)));
  EXPECT_TRUE(says(text, "element 1 carries 2 times the capacity of its hinges at end 1, and no node")) << text;
  const ran r = run(beam(FIXED, "*STATIC\n" + uniform(11.9)));
  EXPECT_WITHIN(std::fabs(r.force(1, 1, 1, "moment_z")), 11.9 / 12 * MP, MP, 1e-9);
  // With a node in the middle it carries 16.
  EXPECT_EQ(run_error(beam("1, ENCASTRE\n3, ENCASTRE\n", "*STATIC\n" + uniform(15.9), 2)), "");
}

TEST(HingeLimits, AHeatedBarBetweenClamps) {
  // N = E A alpha dT = 210000 5000 1.2e-5 100.
  straight_member b;
  const auto heated = [&](double capacity) {
    return b.deck(hinges("SINGLE, FORCES=N", capacity, 1, 1), FIXED, "*STATIC\n*TEMPERATURE\nALL, 100.\n");
  };
  EXPECT_TRUE(says(run_error(heated(1e6)), "element 1 carries 1.26 times the capacity of its hinges"))
      << run_error(heated(1e6));
  EXPECT_EQ(run_error(heated(1.27e6)), "");
}

TEST(HingeLimits, TwoSpansWhoseNodesStay) {
  // Equal spans between clamps, the middle on a support: it does not turn, within rounding.
  const char* const supports = "1, ENCASTRE\n3, ENCASTRE\n2, 2, 3\n";
  straight_member b;
  b.elements = 2;
  const auto deck_of = [&](double times) {  // end moments q (L/2)^2 / 12
    return b.deck(hinges(BENDING, 1e9, 1, MP), supports, "*STATIC\n" + uniform(times));
  };
  EXPECT_EQ(run_error(deck_of(47.9)), "");
  EXPECT_TRUE(says(run_error(deck_of(60)), "no node")) << run_error(deck_of(60));
}

TEST(HingeLimits, SpanOfASimpleBeam) {
  const std::string text = run_error(beam(SIMPLE, "*STATIC\n" + uniform(12)));
  EXPECT_TRUE(says(text, "*STATIC: element 1 at 2000 from its first end carries 1.5 times the capacity")) << text;
  EXPECT_TRUE(says(text, "put a node there")) << text;
  // The same with the node: the load times 1.5 is the limit.
  EXPECT_TRUE(says(run_error(beam("1, 1, 4\n3, 2, 3\n", "*STATIC\n" + uniform(12), 2)), "no more than 0.666667"));
  EXPECT_FALSE(says(run(beam(SIMPLE, "*STATIC\n" + uniform(7.99))).text, "capacity"));
  const ran slightly = run(beam(SIMPLE, "*STATIC\n" + uniform(8 * 1.005)));
  EXPECT_TRUE(says(slightly.text, "element 1 at 2000 from its first end carries 1.005 times")) << slightly.text;
  EXPECT_TRUE(says(run_error(beam(SIMPLE, "*STATIC\n" + uniform(8 * 1.02))), "carries 1.02 times"));
  EXPECT_EQ(run_error(beam(SIMPLE, "*STATIC, ELASTIC\n" + uniform(12))), "");
}

TEST(HingeLimits, SpanOfAProppedBeamWithAHinge) {
  // Mp at the clamp: the roller takes q L / 2 - Mp / L = 5, the span 5^2 / 24 = 1.0417 Mp at 5/12 L from it.
  const std::string text = run_error(beam(PROPPED, "*STATIC\n" + uniform(12)));
  EXPECT_TRUE(says(text, "element 1 at 2333.33 from its first end carries 1.04167 times")) << text;
  const ran r = run(beam(PROPPED, "*STATIC\n" + uniform(11.6)));
  EXPECT_WITHIN(std::fabs(r.force(1, 1, 1, "moment_z")), MP, MP, 1e-9);
  EXPECT_FALSE(says(r.text, "times the capacity")) << r.text;
}

TEST(HingeLimits, SpanUnderBendingAndPressure) {
  // A simple beam, P at the roller, the largest moment 0.9 Mp in the middle.
  straight_member b;
  const double cap_p = 1e6, p = 0.5, m = 0.9;
  const auto error_of = [&](const char* curve) {
    return run_error(b.deck(hinges(curve, cap_p, 3e7, MP), SIMPLE,
                            "*STATIC\n" + uniform(8 * m) + "*CLOAD\n2, 1, " + number(-p * cap_p) + "\n"));
  };
  const std::string words = "element 1 at 2000 from its first end carries ";
  EXPECT_WITHIN(number_after(error_of("LINEAR"), words), p + 8.0 / 9 * m, 1.0, 1e-5) << error_of("LINEAR");
  double low = 1, high = 3;
  for (int k = 0; k < 100; ++k) {
    const double t = (low + high) / 2;
    (orbison(p / t, 0, m / t) > 1 ? low : high) = t;
  }
  EXPECT_WITHIN(number_after(error_of("ORBISON"), words), low, 1.0, 1e-5) << error_of("ORBISON");
}

TEST(HingeLimits, APushoverTellsWhereASpanIsAtItsCapacity) {
  // Propped: hinge at 8, the span at sqrt(2) - 1 of its length from the roller at 6 + 4 sqrt(2).
  const solver::pushover_solution one = push(read(beam(PROPPED, pushed(uniform(1))))).front();
  EXPECT_EQ(one.end, pushover_end::NO_EVENT);
  EXPECT_WITHIN(factors(one), (std::vector<double>{8}), 8.0, 1e-12);
  ASSERT_TRUE(one.span);
  EXPECT_WITHIN(one.span->factor, 6 + 4 * std::sqrt(2.0), 12.0, 1e-9);
  EXPECT_WITHIN(one.span->first.distance, (2 - std::sqrt(2.0)) * L, L, 1e-6);

  // On the way, with its ratio at the end: factor 12.
  const solver::pushover_solution to = push(read(beam(PROPPED, pushed(uniform(1), "", "12.\n")))).front();
  ASSERT_TRUE(to.span);
  EXPECT_WITHIN(to.span->factor, 6 + 4 * std::sqrt(2.0), 12.0, 1e-9);
  EXPECT_WITHIN(to.span->last.ratio, 25.0 / 24, 1.0, 1e-9);
  EXPECT_FALSE(push(read(beam(PROPPED, pushed(uniform(1), "", "11.6\n")))).front().span);

  // A girder of one beam reaches its capacity where a girder of two forms its last hinge.
  const solver::pushover_solution two = push(read(portal("*PUSHOVER\n", true))).front();
  const solver::pushover_solution span = push(read(portal("*PUSHOVER\n", false))).front();
  EXPECT_EQ(two.end, pushover_end::MECHANISM);
  EXPECT_FALSE(two.span);
  ASSERT_TRUE(span.span);
  EXPECT_WITHIN(span.span->factor, two.factor, 1.0, 1e-9);
  const std::string text = run(portal("*PUSHOVER\n", false)).text;
  EXPECT_TRUE(
      says(text, "element 2 at 4 from its first end reaches the capacity of its hinges at load factor 0.714286"));
  EXPECT_TRUE(says(text, "valid up to load factor 0.714285714")) << text;
  EXPECT_TRUE(says(run_error(portal("*STATIC\n", false)), "element 2 at 4 from its first end carries 1.8 times"));
  EXPECT_TRUE(says(run_error(portal("*STATIC\n", true)), "no more than 0.714286"));
}

TEST(HingeLimits, EndsWithoutAMomentFormNoHinge) {
  // A simple beam, and one with loose ends on two clamped posts, turned in their plane: the span reaches 8 Mp/L^2, and
  // no end has a moment beyond rounding.
  std::mt19937 random(7);
  std::uniform_real_distribution<double> r(-1, 1);
  for (int k = 0; k < 40; ++k) {
    const double turn = 3 * r(random), height = 3000 * (1.5 + r(random));
    const auto node = [&](int id, double x, double y) {
      return std::to_string(id) + ", " + number(x * std::cos(turn) - y * std::sin(turn)) + ", " +
             number(x * std::sin(turn) + y * std::cos(turn)) + ", 0\n";
    };
    const std::string nodes = "*NODE, NSET=ALL\n" + node(1, 0, height) + node(2, L, height),
                      beam_2 = "*ELEMENT, TYPE=B33, ELSET=MEMBER\n1, 1, 2\n",
                      parts =
                          "*MATERIAL, NAME=M\n*ELASTIC\n210000, 0.3\n*BEAM GENERAL SECTION, ELSET=MEMBER, "
                          "MATERIAL=M\n5000, 3e7, 0, 8e7, 1e6\n0, 0, 1\n" +
                          hinges("SINGLE, FORCES=M1", 1e9, MP, 1) + "*BOUNDARY\nALL, 3, 5\n",
                      load = "*STEP\n" + pushed("*DLOAD\n1, P2, " + number(MP / L / L) + "\n") + "*END STEP\n";
    const std::string simple = nodes + beam_2 + parts + "1, 1, 2\n2, 1, 2\n" + load;
    const std::string loose = nodes + node(3, 0, 0) + node(4, L, 0) + beam_2 + "2, 3, 1\n3, 4, 2\n" +
                              "*RELEASE\n1, S1, M1\n1, S2, M1\n" + parts + "3, ENCASTRE\n4, ENCASTRE\n" + load;
    for (const std::string& text : {simple, loose}) {
      const solver::pushover_solution s = push(read(text)).front();
      EXPECT_EQ(s.end, pushover_end::NO_EVENT) << text;
      EXPECT_TRUE(s.events.empty()) << text;
      ASSERT_TRUE(s.span) << text;
      EXPECT_WITHIN(s.span->factor, 8.0, 8.0, 1e-9) << text;
    }
  }
}

TEST(HingeLimits, CapacitiesThatNoHingeKnowsDoNotCount) {
  // A force across, whose moment no hinge sees: its capacity may be any number, and the factors stay 16/3 and 6 Mp/L.
  straight_member b;
  b.elements = 2;
  const solver::pushover_solution s =
      push(read(b.deck(hinges(BENDING, 1e9, 1e-6, MP), "1, ENCASTRE\n3, 2, 3\n",
                       pushed("*CLOAD\n2, 2, " + number(-MP / L) + "\n2, 3, " + number(MP / L) + "\n"))))
          .front();
  EXPECT_EQ(s.end, pushover_end::MECHANISM);
  EXPECT_WITHIN(factors(s), (std::vector<double>{16.0 / 3, 6}), 6.0, 1e-12);
}

TEST(HingeLimits, TheLimitLoadOfAFrameAsItsFullLoad) {
  // 6 Mp/L, above and below it by rounding.
  for (int bits = -20; bits <= 20; ++bits) {
    const std::string deck_text = sway_portal(6 * (1 + bits * 1e-15), 1 + bits * 3e-16);
    ASSERT_EQ(run_error(deck_text), "") << bits;
    const ran r = run(deck_text);
    EXPECT_WITHIN(std::fabs(r.force(1, 1, 1, "moment_y")), MP, MP, 1e-9) << bits;
    EXPECT_WITHIN(std::fabs(r.force(1, 3, 2, "moment_y")), MP, MP, 1e-9) << bits;
  }
  EXPECT_TRUE(says(run(sway_portal(6 * (1 + 5e-7))).text, "ends at the full load, to the sixth digit"));
  const std::string text = run_error(sway_portal(6 * (1 + 2e-6)));
  const double share = number_after(text, "leave it no more than ");
  EXPECT_LT(share, 1) << text;
  EXPECT_GT(share, 0.99999) << text;
}

TEST(HingeLimits, TheLimitLoadOfAShellAsItsFullLoad) {
  for (const char* const model : {"", "MODEL=LAYERED, POINTS=5"}) {
    strip s = a_strip(plastic_test::sheet{});
    s.of.model = model;
    const double force = plastic_test::YIELD * 4 * 20, stretch = 100 * plastic_test::YIELD / plastic_test::YOUNG;
    const int end = s.mesh.node(s.mesh.n, s.mesh.n / 2) + 1;
    for (const double share : {1.0, 1 + 1e-15, 1 - 1e-15, 1 + 1e-9, 1 - 1e-9}) {
      const std::string text = s.deck(1, share * force, "*STATIC\n");
      ASSERT_EQ(run_error(text), "") << model << share;
      // Under the limit load any longer strip is in equilibrium too: the path ends where it has come to it.
      EXPECT_WITHIN(run(text).u(1, end, 'x'), stretch, stretch, 0.01) << model << share;
    }
    const std::string text = run_error(s.deck(1, (1 + 2e-6) * force, "*STATIC\n"));
    const double share = number_after(text, "carry no more than ");
    EXPECT_LT(share, 1) << text;
    EXPECT_GT(share, 0.99999) << text;
  }
}
