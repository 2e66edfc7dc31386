// deck_states_test.cpp: on what a step may stand, and what may yield in a static one.
#include <gtest/gtest.h>

#include "deck_builder.h"
#include "model/base_step.h"
#include "model/yielding.h"

using namespace deck_test;

namespace {

const std::string OWN = "a step is an analysis of its own; the loads of earlier steps do not carry over";

std::string step(const std::string& flags, const std::string& cards) {
  return "*STEP" + flags + "\n" + cards + "*END STEP\n";
}

std::string small(const std::string& cards) { return step(", PERTURBATION", cards); }

// The good plate (*STEP in line 28) of a steel that yields; no temperatures.
std::vector<std::string> plastic() {
  std::vector<std::string> lines = GOOD;
  lines.erase(lines.begin() + 32, lines.begin() + 34);
  lines.insert(lines.begin() + 17, {"*PLASTIC", "2.35E8, 0."});
  return lines;
}

std::string with(std::vector<std::string> lines, int n, const std::string& line) {
  lines.at(static_cast<std::size_t>(n - 1)) = line;
  return text_of(lines);
}

const char* const WAY_OUT = "; ELASTIC on *STATIC solves the step elastically";

}  // namespace

TEST(deck_states, a_perturbation_stands_on_the_last_general_static_step) {
  const solver::model m = read(text_of(GOOD) + step("", "*FREQUENCY\n1\n") + small("*FREQUENCY\n1\n") +
                               step("", "*STATIC\n") + small("*STATIC\n") + small("*BUCKLE\n1\n*CLOAD\n3, 1, 1.\n"));
  ASSERT_EQ(m.steps.size(), 6U);
  EXPECT_EQ(base_step(m, m.steps[0]), nullptr);
  EXPECT_EQ(base_step(m, m.steps[1]), nullptr);
  EXPECT_EQ(base_step(m, m.steps[2]), &m.steps[0]);
  EXPECT_EQ(base_step(m, m.steps[4]), &m.steps[3]);
  EXPECT_EQ(base_step(m, m.steps[5]), &m.steps[3]);
  const solver::model first = read(replaced(26, "*STEP, PERTURBATION"));
  EXPECT_TRUE(first.steps[0].perturbation);
  EXPECT_EQ(base_step(first, first.steps[0]), nullptr);
}

TEST(deck_states, a_modal_step_without_perturbation_is_noted) {
  for (const char* const cards : {"*FREQUENCY\n1\n", "*BUCKLE\n1\n*CLOAD\n3, 1, 1.\n"})
    expect_notes(text_of(GOOD) + step("", cards),
                 {"plate.inp:36: *STEP: " + OWN +
                  "; it stands on the unloaded state, with PERTURBATION it would stand on the state at the end of "
                  "step 1"});
  // What Abaqus does only after large displacements.
  expect_notes(text_of(GOOD) + small("*FREQUENCY\n1\n"),
               {"plate.inp:36: *FREQUENCY: the stiffness holds that of the forces of step 1, as in Abaqus after a step "
                "with NLGEOM=YES; without PERTURBATION on *STEP it does not"});
  expect_notes(text_of(GOOD) + small("*BUCKLE\n1\n*CLOAD\n3, 1, 1.\n"), {});
}

// Abaqus goes on with the conditions of a step; here those before the first one alone hold in all.
TEST(deck_states, conditions_of_one_step_are_noted_where_they_end) {
  const std::string held = "*STATIC\n*BOUNDARY\n3, 3, 3\n*CLOAD\n3, 1, 1.\n", free = "*STATIC\n*CLOAD\n3, 1, 1.\n";
  const std::string twice = "plate.inp:36: *STEP: " + OWN + " (2 times; this is the first)";
  expect_notes(text_of(GOOD) + step("", held) + step("", free),
               {twice,
                "plate.inp:43: *STEP: the *BOUNDARY of plate.inp:39 holds in step 2 alone: a step does not "
                "inherit conditions; those before the first *STEP hold in all of them"});
  expect_notes(text_of(GOOD) + step("", held) + step("", held), {twice});
}

TEST(deck_states, what_cannot_stand_on_a_state) {
  expect_error(replaced(26, "*STEP, PERTURBATION, PDELTA"), 26, "*STEP",
               "PERTURBATION asks for the linear response, PDELTA for that in the displaced position: take one of them "
               "away");
  std::vector<std::string> lines = plastic();
  lines[28] = "*ELASTOPLASTIC";
  const std::string yielding = text_of(lines);
  expect_error(yielding + small("*FREQUENCY\n1\n"), 36 - 2 + 2, "*STEP",
               "PERTURBATION: step 1 (*ELASTOPLASTIC) ends in a state that has yielded, and small motions about it are "
               "not supported; a step with *STATIC, ELASTIC in between gives an elastic state of the same loads");
  EXPECT_EQ(read(yielding + step("", "*STATIC, ELASTIC\n*CLOAD\n3, 3, 1.\n") + small("*FREQUENCY\n1\n")).steps.size(),
            3U);
  expect_error(yielding + small("*ELASTOPLASTIC\n*CLOAD\n3, 3, 1.\n"), 36, "*STEP",
               "PERTURBATION: a step with *ELASTOPLASTIC starts from the unloaded state and cannot stand on step 1; "
               "without PERTURBATION it is an analysis of its own");
  expect_notes(with(lines, 28, "*STEP, PERTURBATION"),
               {"plate.inp:28: *STEP: PERTURBATION has no effect: a step with *ELASTOPLASTIC is no linear response"});
  // A step that goes on with the one before is no analysis of its own.
  expect_notes(yielding + step("", "*ELASTOPLASTIC, CONTINUE\n1.\n*CLOAD\n3, 3, 1.\n"), {});
}

TEST(deck_states, cables_have_no_perturbation) {
  const std::string cable =
      "*NODE\n1, 0, 0, 0\n2, 10, 0, 0\n3, 5, 0, -1\n*ELEMENT, TYPE=T3D2, ELSET=C\n7, 1, 3\n8, 3, 2\n*MATERIAL, NAME=M\n"
      "*ELASTIC\n200000, 0.3\n*CABLE SECTION, ELSET=C, MATERIAL=M\n1\n*BOUNDARY\n1, PINNED\n2, PINNED\n";
  expect_error(
      cable + small("*STATIC\n*CLOAD\n3, 3, -1.\n"), 16, "*STEP",
      "PERTURBATION is not supported with cables (element 7): their stiffness belongs to the position in which "
      "they hang");
}

TEST(deck_states, conditions_of_the_base_step_are_there_to_be_modified) {
  EXPECT_EQ(read(text_of(GOOD) + small("*STATIC\n*BOUNDARY, OP=MOD\n2, 1, 1, 0.1\n")).steps[1].boundaries.size(), 1U);
  expect_error(text_of(GOOD) + small("*STATIC\n*CLOAD, OP=MOD\n2, 1, 0.1\n"), 38, "*CLOAD",
               "OP=MOD is not supported after the first step: nothing carries over from step to step");
}

TEST(deck_states, plastic_shells_yield_in_a_static_step_unless_it_is_elastic) {
  const solver::model m = read(text_of(plastic()));
  EXPECT_TRUE(follows_shells(m, m.steps[0]));
  const solver::model elastic = read(with(plastic(), 29, "*STATIC, ELASTIC"));
  EXPECT_FALSE(follows_shells(elastic, elastic.steps[0]));
  const solver::model increment = read(with(plastic(), 28, "*STEP, PERTURBATION"));
  EXPECT_FALSE(follows_shells(increment, increment.steps[0]));
  expect_notes(with(plastic(), 29, "*STATIC, ELASTIC"),
               {"plate.inp:28: *STATIC: ELASTIC: nothing yields in this step, whatever its stresses"});
  expect_notes(replaced(27, "*STATIC, ELASTIC"),
               {"plate.inp:26: *STATIC: ELASTIC has no effect: the model has neither *PLASTIC nor *PLASTIC HINGE"});
  expect_notes(text_of(plastic()), {});
}

TEST(deck_states, hardening_of_the_whole_section_is_noted) {
  std::vector<std::string> lines = plastic();
  lines[18] = "2.35E8, 0.\n2.45E8, 0.005";
  expect_notes(
      text_of(lines),
      {"plate.inp:29: *STATIC: the material 'STEEL' hardens, which the whole-section model follows roughly: in "
       "tension its plastic strains are 0.79 to 1.10 times those of the line, by the direction of the elements; "
       "MODEL=LAYERED of the *SHELL SECTION follows the line of *PLASTIC"});
  lines[23] = "*SHELL SECTION, ELSET=SKIN, MATERIAL=STEEL, MODEL=LAYERED";
  expect_notes(text_of(lines), {});
}

TEST(deck_states, what_stays_elastic_on_a_path_is_noted) {
  const std::string beside =
      "*NODE\n11, 0, 0, 0\n12, 2, 0, 0\n*ELEMENT, TYPE=B33, ELSET=B\n5, 11, 12\n*BEAM GENERAL SECTION, ELSET=B, "
      "MATERIAL=STEEL\n1, 1, 0, 1, 1\n0, 1, 0\n*BOUNDARY\n11, ENCASTRE\n";
  std::vector<std::string> lines = plastic();
  lines[25] = beside + lines[25];
  lines[28] = "*ELASTOPLASTIC";
  expect_notes(text_of(lines), {"plate.inp:38: *ELASTOPLASTIC: the material 'STEEL' of element 5 has *PLASTIC; the "
                                "element stays elastic in this step"});
}

TEST(deck_states, what_cannot_yield_is_refused) {
  // The beams, the truss and the brick of the good decks, of a material that yields.
  const auto yielding = [](const std::vector<std::string>& good, bool elastic) {
    std::vector<std::string> lines = good;
    for (std::size_t i = 0; i < lines.size(); ++i) {
      if (lines[i].rfind("*ELASTIC", 0) == 0) lines[i + 1] += "\n*PLASTIC\n235.";
      if (elastic && lines[i].rfind("*STATIC", 0) == 0) lines[i] += ", ELASTIC";
    }
    return text_of(lines);
  };
  for (const auto& good : {GOOD_FRAME, GOOD_SOLIDS}) {
    try {
      read(yielding(good, false));
      ADD_FAILURE() << "accepted";
    } catch (const std::exception& error) {
      const std::string text = error.what();
      EXPECT_NE(text.find(" has *PLASTIC, and "), std::string::npos) << text;
      EXPECT_NE(text.find(WAY_OUT), std::string::npos) << text;
    }
    EXPECT_NO_THROW(read(yielding(good, true)));
  }
  const std::string beam =
      "*NODE\n1, 0, 0, 0\n2, 2, 0, 0\n*ELEMENT, TYPE=B31, ELSET=B\n5, 1, 2\n*MATERIAL, NAME=S\n*ELASTIC\n200000, 0.3\n"
      "*PLASTIC\n235\n*BEAM GENERAL SECTION, ELSET=B, MATERIAL=S\n1, 1, 0, 1, 1\n0, 1, 0\n*BOUNDARY\n1, ENCASTRE\n";
  const std::string loaded = "*STATIC\n*CLOAD\n2, 2, 1.\n";
  expect_error(beam + step("", loaded), 16, "*STEP",
               "the material 'S' of element 5 has *PLASTIC, and beams yield in a *PLASTIC HINGE alone here" +
                   std::string(WAY_OUT));
  EXPECT_NO_THROW(read(beam + small(loaded)));
  EXPECT_NO_THROW(read(beam + step("", "*FREQUENCY\n1\n")));
  EXPECT_NO_THROW(read(beam + step("", "*BUCKLE\n1\n*CLOAD\n2, 1, -1.\n")));
  std::vector<std::string> membrane = plastic();
  membrane[7] = "*ELEMENT, TYPE=M3D3, ELSET=SKIN";
  membrane[23] = "*MEMBRANE SECTION, ELSET=SKIN, MATERIAL=STEEL";
  expect_error(
      text_of(membrane), 28, "*STEP",
      "the material 'STEEL' of element 1 has *PLASTIC, and membranes do not yield here" + std::string(WAY_OUT));
}

TEST(deck_states, loads_that_yielding_shells_do_not_know) {
  const auto beside = [](const std::string& what) { return what + " has no place beside shells that yield" + WAY_OUT; };
  expect_error(with(plastic(), 27, "FIXED, 1, 6, 0.1"), 27, "*BOUNDARY",
               beside("a prescribed displacement other than 0"));
  expect_error(with(plastic(), 28, "*STEP, PDELTA"), 28, "*STEP", beside("PDELTA"));
  expect_error(with(plastic(), 34, "SKIN, GRAV, 9.81, 0., 0., -2.\n*TEMPERATURE\nALL, 20., 5."), 36, "*TEMPERATURE",
               beside("a temperature"));
  EXPECT_NO_THROW(read(with(plastic(), 29, "*STATIC, ELASTIC\n*TEMPERATURE\nALL, 20.")));
}
