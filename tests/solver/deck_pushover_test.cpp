// deck_pushover_test.cpp: the cards of hinges and pushovers: what they mean, and every way in which they can be wrong.
#include <gtest/gtest.h>

#include "deck_builder.h"
#include "finites/fields.h"

using namespace deck_test;

namespace {

// The good frame with hinges on its beams (lines 35 and 36) and a pushover: *STEP is line 39.
std::vector<std::string> good() {
  std::vector<std::string> lines = GOOD_FRAME;
  lines[37] = "*PUSHOVER, NODE=3, DOF=2";
  lines.insert(lines.begin() + 34, {"*PLASTIC HINGE, ELSET=BEAMS, CURVE=ORBISON", "1.E6, 2.E4, 3.E4"});
  return lines;
}

std::string with(int n, const std::string& line) {
  std::vector<std::string> lines = good();
  lines.at(static_cast<std::size_t>(n - 1)) = line;
  return text_of(lines);
}

}  // namespace

TEST(deck_pushover, hinges_and_a_step_are_read) {
  const solver::model m = read(with(40, "*PUSHOVER, NODE=3, DOF=2\n2.5, 12"));
  ASSERT_EQ(m.hinges.size(), 1U);
  EXPECT_EQ(m.hinges[0].curve, solver::yield_curve::ORBISON);
  EXPECT_EQ(m.hinges[0].force_set, 7);
  EXPECT_EQ(m.hinges[0].cap_p, 1e6);
  EXPECT_EQ(m.hinges[0].cap_my, 2e4);
  EXPECT_EQ(m.hinges[0].cap_mz, 3e4);
  EXPECT_EQ(m.elements[0].hinges, 0);
  EXPECT_EQ(m.elements[2].hinges, -1);
  EXPECT_EQ(m.steps[0].kind, solver::step_kind::PUSHOVER);
  EXPECT_EQ(m.steps[0].pushover.node, 2);
  EXPECT_EQ(m.steps[0].pushover.dof, 2);
  EXPECT_EQ(m.steps[0].pushover.largest_factor, 2.5);
  EXPECT_EQ(m.steps[0].pushover.largest_events, 12);
  EXPECT_FALSE(m.steps[0].pushover.goes_on);
}

TEST(deck_pushover, curves_and_forces) {
  EXPECT_EQ(read(with(35, "*PLASTIC HINGE, ELSET=BEAMS, CURVE=SINGLE, FORCES=M2")).hinges[0].force_set, 3);
  EXPECT_EQ(read(with(35, "*Plastic Hinge, elset=Beams, curve=Linear, forces=N-M1")).hinges[0].force_set, 4);
  expect_error(with(35, "*PLASTIC HINGE, ELSET=BEAMS, CURVE=ROUND"), 35, "*PLASTIC HINGE",
               "CURVE=ROUND is not supported; SINGLE, ORBISON and LINEAR are");
  expect_error(with(35, "*PLASTIC HINGE, ELSET=BEAMS, CURVE=LINEAR, FORCES=5"), 35, "*PLASTIC HINGE",
               "FORCES=5 is not supported; N, M1, M2, N-M1, N-M2, M1-M2 and N-M1-M2 are");
  expect_error(with(35, "*PLASTIC HINGE, ELSET=BEAMS, CURVE=SINGLE"), 35, "*PLASTIC HINGE",
               "CURVE=SINGLE takes one force: FORCES is N, M1 or M2");
  expect_error(with(35, "*PLASTIC HINGE, ELSET=BEAMS, CURVE=LINEAR, FORCES=N"), 35, "*PLASTIC HINGE",
               "FORCES=N belongs to CURVE=SINGLE: this curve has no flow under an axial force alone");
  expect_error(with(35, "*PLASTIC HINGE, ELSET=BEAMS"), 35, "*PLASTIC HINGE", "the parameter CURVE is missing");
}

TEST(deck_pushover, capacities_and_members) {
  expect_error(with(36, "1.E6, 0., 3.E4"), 36, "*PLASTIC HINGE", "plastic moment about axis 1: '0.' is not positive");
  expect_error(with(36, "1.E6, 2.E4"), 36, "*PLASTIC HINGE",
               "too few fields (2): plastic axial force, plastic moment about axis 1, plastic moment about axis 2");
  expect_error(with(36, "1.E6, 2.E4, 3.E4\n1.E6, 2.E4, 3.E4"), 37, "*PLASTIC HINGE",
               "a second data line: it takes one");
  expect_error(with(35, "*PLASTIC HINGE, ELSET=BARS, CURVE=ORBISON"), 35, "*PLASTIC HINGE",
               "element 3 is not a beam (B31, B33)");
  expect_error(with(35, "*PLASTIC HINGE, ELSET=NONE, CURVE=ORBISON"), 35, "*PLASTIC HINGE",
               "the element set 'NONE' is not defined");
  expect_error(with(36, "1.E6, 2.E4, 3.E4\n*PLASTIC HINGE, ELSET=BEAMS, CURVE=ORBISON\n1., 1., 1."), 37,
               "*PLASTIC HINGE", "element 1 has hinges already, of line 35");
}

TEST(deck_pushover, steps) {
  expect_error(with(40, "*PUSHOVER, NODE=3"), 40, "*PUSHOVER",
               "NODE and DOF belong together: they choose the displacement of the curve");
  expect_error(with(40, "*PUSHOVER, NODE=9, DOF=1"), 40, "*PUSHOVER", "node 9 is not defined");
  expect_error(with(40, "*PUSHOVER, NODE=3, DOF=7"), 40, "*PUSHOVER", "the degree of freedom 7 is not one of 1 to 6");
  expect_error(with(40, "*PUSHOVER\n-1."), 41, "*PUSHOVER", "largest load factor: '-1.' is not positive");
  expect_error(with(40, "*PUSHOVER\n1., 0"), 41, "*PUSHOVER", "largest number of events: '0' is not a number from 1");
  expect_error(with(40, "*PUSHOVER, CONTINUE"), 39, "*STEP", "CONTINUE needs a step with *PUSHOVER right before");
  expect_error(with(40, "*PUSHOVER\n*STATIC"), 41, "*STATIC", "the step has a *PUSHOVER already");
  expect_error(with(38, "1, 1, 6, 0.5"), 38, "*BOUNDARY", "a prescribed displacement other than 0 in a pushover");
  std::vector<std::string> lines = good();
  lines.erase(lines.begin() + 40, lines.begin() + 42);
  expect_error(text_of(lines), 39, "*STEP", "the step with *PUSHOVER has no loads");
  std::vector<std::string> elastic = GOOD_FRAME;
  elastic[37] = "*PUSHOVER";
  expect_error(text_of(elastic), 37, "*STEP", "a step with *PUSHOVER needs members with *PLASTIC HINGE");
}

TEST(deck_pushover, going_on) {
  const std::string more = "*STEP, PERTURBATION\n*PUSHOVER, CONTINUE\n*CLOAD\n3, 1, 1.\n*END STEP\n";
  EXPECT_TRUE(read(text_of(good()) + more).steps[1].pushover.goes_on);
  const std::string moved = "*STEP, PERTURBATION\n*PUSHOVER, CONTINUE\n*BOUNDARY\n3, 1\n*CLOAD\n3, 1, 1.\n*END STEP\n";
  expect_error(text_of(good()) + moved, 44, "*STEP",
               "CONTINUE goes on with the same structure: no *BOUNDARY in either step, PDELTA in both or none");
}
