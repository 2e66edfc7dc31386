// deck_combination_test.cpp: *LOAD CASE, *COMBINATION and *ENVELOPE as the reader takes them, and what it refuses.
#include <gtest/gtest.h>

#include "deck_builder.h"
#include "model/model.h"
#include "output/flat_check.h"
#include "output/flat_deck.h"

using namespace deck_test;

namespace {

// Lines 1 to 22: a beam and two steps, A and B.
const char* const BEAM = R"(*NODE
1, 0
2, 1000
*ELEMENT, TYPE=B33, ELSET=BAR
1, 1, 2
*MATERIAL, NAME=M
*ELASTIC
100000, 0.3
*BEAM SECTION, ELSET=BAR, MATERIAL=M, SECTION=RECT
10, 10
*BOUNDARY
1, 1, 6
*STEP, NAME=A
*STATIC
*CLOAD
2, 1, 1000
*END STEP
*STEP, NAME=B
*STATIC
*CLOAD
2, 2, 1000
*END STEP
)";

std::string beam(const std::string& more) { return BEAM + more; }

std::vector<std::pair<int, double>> terms(const solver::step& s) {
  std::vector<std::pair<int, double>> all;
  for (const solver::combined_step& each : s.combined) all.emplace_back(each.step, each.factor);
  return all;
}

using pairs = std::vector<std::pair<int, double>>;

}  // namespace

TEST(deck_combination, names_and_numbers_of_steps) {
  const solver::model m = read(beam("*COMBINATION, NAME=Sum\na, 1.35, 2, -0.5\n*ENVELOPE, NAME=Env\nsum, B\n"));
  ASSERT_EQ(m.steps.size(), 4u);
  EXPECT_EQ(m.steps[2].kind, solver::step_kind::COMBINATION);
  EXPECT_EQ(m.steps[2].name, "Sum");
  EXPECT_EQ(terms(m.steps[2]), (pairs{{0, 1.35}, {1, -0.5}}));
  EXPECT_EQ(m.steps[3].kind, solver::step_kind::ENVELOPE);
  EXPECT_EQ(terms(m.steps[3]), (pairs{{2, 1}, {1, 1}}));
}

// A combination may stand before a step that it takes: steps come first in any case.
TEST(deck_combination, stands_behind_the_steps) {
  const solver::model m =
      read(beam("*COMBINATION, NAME=S\nA, 1, C, 2\n*ENVELOPE, NAME=E\n*STEP, NAME=C\n*STATIC\n"
                "*CLOAD\n2, 3, 1\n*END STEP\n*COMBINATION, NAME=T\nS, 2, A, 1\n"));
  ASSERT_EQ(m.steps.size(), 6u);
  EXPECT_EQ(m.steps[2].name, "C");
  EXPECT_EQ(terms(m.steps[3]), (pairs{{0, 1}, {2, 2}}));
  EXPECT_EQ(terms(m.steps[4]), (pairs{{3, 1}, {5, 1}}));
  EXPECT_EQ(terms(m.steps[5]), (pairs{{0, 3}, {2, 4}}));
}

TEST(deck_combination, a_name_of_digits_comes_before_a_number) {
  const solver::model m =
      read(beam("*STEP, NAME=1\n*STATIC\n*CLOAD\n2, 3, 1\n*END STEP\n*COMBINATION, NAME=S\n1, 2\n"));
  EXPECT_EQ(terms(m.steps[3]), (pairs{{2, 2}}));
}

TEST(deck_combination, unknown_and_double_names) {
  expect_error(beam("*COMBINATION, NAME=C\nA, 1, D, 2\n"), 24, "*COMBINATION",
               "there is no step, load case or combination 'D'; a step without a name is named by its number");
  expect_error(beam("*COMBINATION, NAME=C\nA, 1\n7, 2\n"), 25, "*COMBINATION",
               "there is no step 7: the deck has 2, each load case counted as one, and 1 combinations and envelopes "
               "behind them");
  expect_error(beam("*COMBINATION, NAME=C\nA, 1\n*ENVELOPE, NAME=c\nB\n"), 25, "*ENVELOPE",
               "the name 'c' is that of step 3 already (plate.inp:23): take another");
  expect_error(beam("*COMBINATION, NAME=a\nA, 1\n"), 23, "*COMBINATION",
               "the name 'a' is that of step 1 already (plate.inp:13): take another");
  expect_error(beam("*COMBINATION, NAME=C\nA, 1, 1, 2\n"), 24, "*COMBINATION",
               "'1' stands there already: give it once, with the sum of the factors");
  expect_error(beam("*ENVELOPE, NAME=E\nA, A\n"), 24, "*ENVELOPE", "'A' stands there already");
  expect_error(beam("*STEP, NAME=A\n*STATIC\n*CLOAD\n2, 1, 1\n*END STEP\n*COMBINATION, NAME=C\nA, 1\n"), 29,
               "*COMBINATION", "the name 'A' is that of steps 1 and 3: give the number");
}

TEST(deck_combination, lines_in_error) {
  expect_error(beam("*COMBINATION, NAME=C\n"), 23, "*COMBINATION", "no data line follows");
  expect_error(beam("*COMBINATION\nA, 1\n"), 23, "*COMBINATION", "the parameter NAME is missing");
  expect_error(beam("*COMBINATION, NAME=1.5\nA, 1\n"), 23, "*COMBINATION", "'1.5' is not a name: it is a number");
  expect_error(beam("*COMBINATION, NAME=C\nA, 1, B\n"), 24, "*COMBINATION",
               "expected: name or number of a step or load case, factor, and so on, in pairs");
  expect_error(beam("*COMBINATION, NAME=C\n, 1\n"), 24, "*COMBINATION", "a name or a number of a step is missing");
  expect_error(beam("*COMBINATION, NAME=C\nA, nan\n"), 24, "*COMBINATION", "factor: 'nan' is not finite");
  expect_error(beam("*COMBINATION, NAME=C\nA, 1e999\n"), 24, "*COMBINATION",
               "factor: '1e999' is beyond the numbers that can be held");
  expect_error(beam("*ENVELOPE, NAME=E\n"), 23, "*ENVELOPE",
               "it spans nothing: no data line names a step, and the deck has no *COMBINATION");
  expect_error(beam("*STEP\n*STATIC\n*CLOAD\n2, 1, 1\n*COMBINATION, NAME=C\nA, 1\n*END STEP\n"), 27, "*COMBINATION",
               "stands inside a step: it belongs below the last *END STEP");
}

TEST(deck_combination, combinations_of_combinations_and_envelopes) {
  expect_error(beam("*COMBINATION, NAME=C\nC, 1\n"), 24, "*COMBINATION", "the combination takes itself");
  expect_error(beam("*COMBINATION, NAME=C\nD, 1\n*COMBINATION, NAME=D\nC, 1\n"), 24, "*COMBINATION",
               "the combination 'D' stands below: put it above this one");
  expect_error(beam("*COMBINATION, NAME=C\nA, 1\n*ENVELOPE, NAME=E\n*ENVELOPE, NAME=F\nE\n"), 27, "*ENVELOPE",
               "'E' is an envelope, whose values belong to several combinations: name these");
  expect_error(beam("*ENVELOPE, NAME=E\nA, B\n*COMBINATION, NAME=C\nE, 1\n"), 26, "*COMBINATION",
               "'E' is an envelope, whose values belong to several combinations: name these");
}

TEST(deck_combination, steps_that_do_not_add) {
  const std::string combine = "*COMBINATION, NAME=C\nA, 1, S, 1\n";
  expect_error(beam("*STEP, NAME=S\n*BUCKLE\n1\n*CLOAD\n2, 1, -1\n*END STEP\n" + combine), 30, "*COMBINATION",
               "step 3 has no *STATIC: a combination adds the results of linear static steps");
  expect_error(beam("*STEP, NAME=S, PDELTA\n*STATIC\n*CLOAD\n2, 1, -1\n*END STEP\n" + combine), 28, "*COMBINATION",
               "step 3 (S) has PDELTA, which is not linear: give the summed loads in a step of their own with PDELTA");
  expect_error(beam("*STEP, NAME=S\n*STATIC\n*BOUNDARY\n2, 3\n*CLOAD\n2, 1, -1\n*END STEP\n" + combine), 30,
               "*COMBINATION",
               "step 3 (S) holds translation z of node 2 and step 1 (A) does not: results of different supports cannot "
               "be added; give the summed loads in a step of their own");
  expect_error(beam("*STEP, NAME=S, PERTURBATION\n*STATIC\n*CLOAD\n2, 1, -1\n*END STEP\n" + combine), 28,
               "*COMBINATION",
               "step 1 (A) and step 3 (S) do not stand on the same state: with PERTURBATION a step is the answer about "
               "the state that it stands on");
  expect_error(beam("*STEP, NAME=S, PERTURBATION\n*STATIC\n*CLOAD\n2, 1, -1\n*END STEP\n*ENVELOPE, NAME=E\nA, S\n"), 28,
               "*ENVELOPE",
               "step 1 (A) and step 3 (S) do not stand on the same state: the answer to loads about a loaded state is "
               "an increment, which cannot be compared with the whole");
}

namespace {

std::string with(std::string deck, const std::string& from, const std::string& to) {
  deck.replace(deck.find(from), from.size(), to);
  return deck;
}

}  // namespace

TEST(deck_combination, materials_and_sections_that_do_not_add) {
  const std::string sum = "*COMBINATION, NAME=C\nA, 1, B, 1.5\n";
  const std::string bar = with(beam(sum), "TYPE=B33", "TYPE=T3D2");
  const std::string pretension = "*SOLID SECTION, ELSET=BAR, MATERIAL=M, PRETENSION=10\n10\n";
  expect_error(with(with(bar, "*BEAM SECTION, ELSET=BAR, MATERIAL=M, SECTION=RECT\n10, 10\n", pretension), "2, 2, 1000",
                    "2, 1, 2000"),
               23, "*COMBINATION",
               "the model has PRETENSION, which acts in every step and would count once with each factor: give it as a "
               "temperature of a step of its own, or the summed loads in a step of their own");
  const std::string cable = "*CABLE SECTION, ELSET=BAR, MATERIAL=M\n10, 1001\n";
  expect_error(with(bar, "*BEAM SECTION, ELSET=BAR, MATERIAL=M, SECTION=RECT\n10, 10\n", cable), 23, "*COMBINATION",
               "the model has cables, whose answer is not linear: give the summed loads in a step of their own");
  const std::string table = with(beam(sum), "100000, 0.3\n", "100000, 0.3, 0\n50000, 0.3, 100\n");
  expect_error(
      with(table, "2, 2, 1000\n", "2, 2, 1000\n*TEMPERATURE\n1, 50\n2, 50\n"), 27, "*COMBINATION",
      "step 1 (A) and step 2 (B) have different temperatures, at which the materials have different constants: "
      "give the summed loads in a step of their own");
  const std::string expands = with(beam(sum), "100000, 0.3\n", "100000, 0.3\n*EXPANSION\n1e-5, 0\n2e-5, 100\n");
  expect_error(
      with(expands, "2, 2, 1000\n", "2, 2, 1000\n*TEMPERATURE\n1, 50\n2, 50\n"), 29, "*COMBINATION",
      "an *EXPANSION changes with the temperature, so that the strains of several temperatures, or of one times "
      "a factor other than 1, are not those of their sum: give the sum in a step of its own");
  const std::string once = with(expands, "B, 1.5", "B, 1");
  EXPECT_EQ(read(with(once, "2, 2, 1000\n", "2, 2, 1000\n*TEMPERATURE\n1, 50\n2, 50\n")).steps.size(), 3u);
}

// Values of supports are loads like others; those of the head count in each step, which is told.
TEST(deck_combination, displacements_that_are_prescribed) {
  const std::string moved = "*STEP, NAME=S\n*STATIC\n*BOUNDARY\n1, 2, 2, 0.5\n*END STEP\n";
  EXPECT_EQ(read(beam(moved + "*COMBINATION, NAME=C\nA, 1, S, 2\n")).steps.size(), 4u);
  const std::string head = with(beam("*COMBINATION, NAME=C\nA, 1, B, 2\n"), "1, 1, 6\n", "1, 1, 5\n1, 6, 6, 0.01\n");
  expect_notes(head, {"plate.inp:19: *STEP: a step is an analysis of its own; the loads of earlier steps do not carry "
                      "over",
                      "plate.inp:24: *COMBINATION: displacements that are prescribed before the first *STEP act in "
                      "every step and count with the sum of the factors, 3"});
}

TEST(deck_load_case, becomes_a_step_with_its_name) {
  const solver::model m = read(
      beam("*STEP, NAME=S\n*STATIC\n*CLOAD\n2, 1, 5\n*LOAD CASE, NAME=One\n*CLOAD\n2, 2, 7\n*END LOAD CASE\n"
           "*LOAD CASE, NAME=Two\n*BOUNDARY\n2, 3\n*DLOAD\nBAR, PY, 2\n*END LOAD CASE\n*BOUNDARY\n2, 4\n*END STEP\n"));
  ASSERT_EQ(m.steps.size(), 4u);
  EXPECT_EQ(m.steps[2].name, "One");
  EXPECT_EQ(m.steps[3].name, "Two");
  EXPECT_EQ(m.steps[2].nodal_loads.size(), 2u);
  EXPECT_EQ(m.steps[2].boundaries.size(), 1u);
  EXPECT_EQ(m.steps[3].nodal_loads.size(), 1u);
  EXPECT_EQ(m.steps[3].element_loads.size(), 1u);
  EXPECT_EQ(m.steps[3].boundaries.size(), 2u);
  EXPECT_EQ(m.steps[3].line, 31);
}

TEST(deck_load_case, alone_names_its_step) {
  const solver::model m = read(beam("*STEP\n*LOAD CASE, NAME=Only\n*STATIC\n*CLOAD\n2, 1, 5\n*END STEP\n"));
  ASSERT_EQ(m.steps.size(), 3u);
  EXPECT_EQ(m.steps[2].name, "Only");
  EXPECT_EQ(m.steps[2].nodal_loads.size(), 1u);
}

TEST(deck_load_case, errors) {
  const auto in_step = [](const std::string& cards) { return beam("*STEP\n*STATIC\n" + cards + "*END STEP\n"); };
  expect_error(in_step("*LOAD CASE, NAME=X\n*LOAD CASE, NAME=Y\n*END LOAD CASE\n"), 25, "*LOAD CASE",
               "it has no *END LOAD CASE before the *LOAD CASE of line 26");
  expect_error(in_step("*LOAD CASE, NAME=X\n*END LOAD CASE\n*LOAD CASE, NAME=Y\n"), 27, "*LOAD CASE",
               "it has no *END LOAD CASE before the end of the step");
  expect_error(in_step("*END LOAD CASE\n"), 25, "*END LOAD CASE", "no *LOAD CASE is open");
  expect_error(in_step("*LOAD CASE, NAME=X\n*END LOAD CASE\n*LOAD CASE, NAME=x\n*END LOAD CASE\n"), 27, "*LOAD CASE",
               "the step has a load case 'x' already");
  expect_error(in_step("*LOAD CASE\n*END LOAD CASE\n"), 25, "*LOAD CASE", "the parameter NAME is missing");
  expect_error(in_step("*LOAD CASE, NAME=X\n2, 1, 4\n*END LOAD CASE\n"), 26, "*LOAD CASE",
               "no data line belongs here: *CLOAD, *DLOAD and so on follow with theirs");
  expect_error(in_step("*LOAD CASE, NAME=X, TYPE=Y\n*END LOAD CASE\n"), 25, "*LOAD CASE",
               "the parameter 'TYPE' is not known; known here: NAME");
  expect_error(beam("*STEP\n*FREQUENCY\n1\n*LOAD CASE, NAME=X\n*END LOAD CASE\n*END STEP\n"), 26, "*LOAD CASE",
               "load cases belong to a step with *STATIC, and this one has *FREQUENCY");
  expect_error(beam("*STEP\n*LOAD CASE, NAME=X\n*STATIC\n*END LOAD CASE\n*END STEP\n"), 25, "*STATIC",
               "it stands in a *LOAD CASE: it belongs to the whole step, above its load cases");
  expect_error(beam("*LOAD CASE, NAME=X\n"), 23, "*LOAD CASE", "belongs between *STEP and *END STEP");
  // What stands in several cases is in error once.
  expect_error(in_step("*CLOAD\n99, 1, 4\n*LOAD CASE, NAME=X\n*END LOAD CASE\n*LOAD CASE, NAME=Y\n*END LOAD CASE\n"),
               26, "*CLOAD", "node 99 is not defined");
}

TEST(deck_load_case, flat_decks_have_them_as_steps) {
  const solver::model m = read(
      beam("*STEP\n*STATIC\n*LOAD CASE, NAME=X\n*CLOAD\n2, 2, 3\n*END LOAD CASE\n*LOAD CASE, NAME=Y\n*CLOAD\n"
           "2, 3, 3\n*END LOAD CASE\n*END STEP\n*COMBINATION, NAME=C\nX, 1.35, y, 0.1\n*ENVELOPE, NAME=E\nC, X\n"));
  const solver::model again = read(solver::flat_deck(m));
  EXPECT_EQ(solver::difference_between(m, again), "");
  ASSERT_EQ(again.steps.size(), 6u);
  EXPECT_EQ(terms(again.steps[4]), (pairs{{2, 1.35}, {3, 0.1}}));
  EXPECT_EQ(terms(again.steps[5]), (pairs{{4, 1}, {2, 1}}));
  solver::model other = m;
  other.steps[4].combined[1].factor = 0.11;
  EXPECT_EQ(solver::difference_between(m, other), "what is combined in step 5");
}
