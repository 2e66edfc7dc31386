// deck_load_test.cpp: *BOUNDARY, *CLOAD, *DLOAD, *TEMPERATURE, *STEP, *STATIC, and the notes.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>

#include "deck_builder.h"
#include "finites/fields.h"

using namespace deck_test;

// What the conditions hold: node index, first degree of freedom, last degree of freedom, value.
static std::vector<std::array<double, 4>> held(const std::vector<solver::boundary_condition>& list) {
  std::vector<std::array<double, 4>> result;
  for (const solver::boundary_condition& c : list) {
    result.push_back({double(c.node), double(c.first_dof), double(c.last_dof), c.value});
  }
  return result;
}
using conditions = std::vector<std::array<double, 4>>;

TEST(deck_load, the_step_of_the_good_deck) {
  const solver::model m = read(text_of(GOOD));
  EXPECT_EQ(held(m.boundaries), (conditions{{0, 1, 6, 0}, {3, 1, 6, 0}}));
  EXPECT_EQ(m.boundaries[1].line, 25);
  ASSERT_EQ(m.steps.size(), 1u);
  const solver::step& s = m.steps[0];
  EXPECT_EQ(s.name, "Push");
  EXPECT_EQ(s.line, 26);
  ASSERT_EQ(s.nodal_loads.size(), 1u);
  EXPECT_EQ(s.nodal_loads[0].node, 2);
  EXPECT_EQ(s.nodal_loads[0].dof, 3);
  EXPECT_EQ(s.nodal_loads[0].value, -100);
  EXPECT_EQ(s.nodal_loads[0].line, 29);
  ASSERT_EQ(s.element_loads.size(), 4u);
  EXPECT_EQ(s.element_loads[1].element, 1);
  EXPECT_EQ(s.element_loads[1].kind, solver::element_load_kind::PRESSURE);
  EXPECT_EQ(s.element_loads[1].magnitude, 1000);
  EXPECT_EQ(s.element_loads[2].element, 0);
  EXPECT_EQ(s.element_loads[2].kind, solver::element_load_kind::GRAVITY);
  EXPECT_EQ(s.element_loads[2].magnitude, 9.81);
  EXPECT_EQ(s.element_loads[2].direction, (std::array<double, 3>{0, 0, -1}));
  ASSERT_EQ(s.temperatures.size(), 4u);
  EXPECT_EQ(s.temperatures[3].node, 3);
  EXPECT_EQ(s.temperatures[3].change, 20);
  EXPECT_EQ(s.temperatures[3].gradient, 5);
  EXPECT_TRUE(s.boundaries.empty());
  EXPECT_TRUE(m.notes.empty());
}

TEST(deck_load, supports_by_word) {
  EXPECT_EQ(held(read(replaced(25, "1, ENCASTRE")).boundaries), (conditions{{0, 1, 6, 0}}));
  EXPECT_EQ(held(read(replaced(25, "1, Pinned")).boundaries), (conditions{{0, 1, 3, 0}}));
  EXPECT_EQ(held(read(replaced(25, "1, XSYMM")).boundaries), (conditions{{0, 1, 1, 0}, {0, 5, 6, 0}}));
  EXPECT_EQ(held(read(replaced(25, "1, YSYMM")).boundaries), (conditions{{0, 2, 2, 0}, {0, 4, 4, 0}, {0, 6, 6, 0}}));
  EXPECT_EQ(held(read(replaced(25, "1, ZSYMM")).boundaries), (conditions{{0, 3, 5, 0}}));
}

TEST(deck_load, boundary_defaults) {
  EXPECT_EQ(held(read(replaced(25, "1, 3")).boundaries), (conditions{{0, 3, 3, 0}}));
  EXPECT_EQ(held(read(replaced(25, "1, 3, , 0.5")).boundaries), (conditions{{0, 3, 3, 0.5}}));
  EXPECT_EQ(held(read(replaced(25, "1, 3, 4,")).boundaries), (conditions{{0, 3, 4, 0}}));
}

TEST(deck_load, boundary_of_a_step) {
  const solver::model m = read(inserted(28, "*BOUNDARY, OP=MOD\n2, 3, 3, -0.1"));
  EXPECT_EQ(held(m.boundaries), (conditions{{0, 1, 6, 0}, {3, 1, 6, 0}}));
  EXPECT_EQ(held(m.steps[0].boundaries), (conditions{{1, 3, 3, -0.1}}));
}

TEST(deck_load, gravity_of_any_length) {
  const solver::element_load load = read(replaced(32, "1, GRAV, 2., 3.E200, 4.E200, 0.")).steps[0].element_loads.back();
  EXPECT_NEAR(load.direction[0], 0.6, 1e-15);
  EXPECT_NEAR(load.direction[1], 0.8, 1e-15);
  EXPECT_EQ(load.direction[2], 0);
  EXPECT_EQ(load.magnitude, 2);
}

TEST(deck_load, several_steps) {
  const solver::model m =
      read(text_of(GOOD) + "*STEP, PERTURBATION\nsecond, by a text\n*STATIC\n*CLOAD, OP=NEW\n2, 1, 5.\n*END STEP\n");
  ASSERT_EQ(m.steps.size(), 2u);
  EXPECT_EQ(m.steps[1].title, "second, by a text");
  EXPECT_EQ(m.steps[1].nodal_loads.size(), 1u);
  EXPECT_TRUE(m.steps[1].element_loads.empty());
  EXPECT_TRUE(m.notes.empty());
}

TEST(deck_load, boundary_fields) {
  const char* form = ": node or set, first and last degree of freedom, value; or node or set, word";
  expect_error(replaced(25, "FIXED"), 25, "*BOUNDARY", std::string("too few fields (1)") + form);
  expect_error(replaced(25, "FIXED, 1, 2, 0., 0."), 25, "*BOUNDARY", std::string("too many fields (5)") + form);
  expect_error(replaced(25, "FIXED, PINNED, 0."), 25, "*BOUNDARY", "too many fields (3): node or set, word");
  expect_error(replaced(25, "FIXED, , 2"), 25, "*BOUNDARY", "degree of freedom: the field is empty");
  expect_error(replaced(25, ", 1, 2"), 25, "*BOUNDARY",
               "a field is empty: it takes a node number or the name of a set");
}
TEST(deck_load, boundary_node_not_defined) {
  expect_error(replaced(25, "17, 1, 6"), 25, "*BOUNDARY", "node 17 is not defined");
  expect_error(replaced(25, "-1, 1, 6"), 25, "*BOUNDARY", "node: '-1' is not a number from 1");
}
TEST(deck_load, boundary_set_not_defined) {
  expect_error(replaced(25, "EDGE, 1, 6"), 25, "*BOUNDARY", "the node set 'EDGE' is not defined");
}
TEST(deck_load, boundary_word_not_known) {
  expect_error(replaced(25, "FIXED, CLAMPED"), 25, "*BOUNDARY",
               "'CLAMPED' is neither a degree of freedom nor one of ENCASTRE, PINNED, XSYMM, YSYMM, ZSYMM");
}
TEST(deck_load, freedom_out_of_range) {
  expect_error(replaced(25, "FIXED, 1, 7"), 25, "*BOUNDARY", "the degree of freedom 7 is not one of 1 to 6");
  expect_error(replaced(25, "FIXED, 0"), 25, "*BOUNDARY", "the degree of freedom 0 is not one of 1 to 6");
  expect_error(replaced(29, "3, 11, 1."), 29, "*CLOAD", "the degree of freedom 11 is not one of 1 to 6");
}
TEST(deck_load, freedom_that_is_no_integer) {
  expect_error(replaced(25, "FIXED, 1.5"), 25, "*BOUNDARY", "degree of freedom: '1.5' is not an integer");
}
TEST(deck_load, degrees_of_freedom_backwards) {
  expect_error(replaced(25, "FIXED, 3, 1"), 25, "*BOUNDARY", "the last degree of freedom is smaller than the first");
}
TEST(deck_load, boundary_with_two_values) {
  expect_error(replaced(25, "FIXED, 1, 6\n4, 3, 3, 0.1"), 26, "*BOUNDARY",
               "a degree of freedom of node 4 has another value in plate.inp:25");
  EXPECT_EQ(read(replaced(25, "FIXED, 1, 6\n4, 3, 3, 0.")).boundaries.size(), 3u);
  EXPECT_EQ(read(inserted(28, "*BOUNDARY\n4, 3, 3, 0.1")).steps[0].boundaries.size(), 1u)
      << "a step may replace a value";
}
TEST(deck_load, op_in_the_head) {
  expect_error(replaced(24, "*BOUNDARY, OP=MOD"), 24, "*BOUNDARY", "OP belongs inside a *STEP");
}
TEST(deck_load, op_new_of_a_boundary) {
  // The head's 12 freedoms go to the step that keeps them; the step with OP=NEW has its own alone.
  const solver::model m =
      read(text_of(GOOD) + "*STEP\n*STATIC\n*BOUNDARY, OP=NEW\n2, 1, 6\n*BOUNDARY, OP=NEW\n3, 1\n*END STEP\n");
  EXPECT_TRUE(m.boundaries.empty());
  EXPECT_EQ(m.steps[0].boundaries.size(), 12u);
  EXPECT_EQ(m.steps[1].boundaries.size(), 2u);
  EXPECT_EQ(read(text_of(GOOD) + "*STEP\n*STATIC\n*BOUNDARY, OP=NEW\n*CLOAD, OP=NEW\n3, 1, 1.\n*END STEP\n")
                .steps[1]
                .boundaries.size(),
            0u);
  expect_error(inserted(28, "*BOUNDARY\n2, 1\n*BOUNDARY, OP=NEW\n3, 1"), 30, "*BOUNDARY",
               "OP=NEW stands below another *BOUNDARY of the step: it belongs on the first one");
  expect_error(
      text_of(GOOD) + "*STEP, PERTURBATION\n*STATIC\n*BOUNDARY, OP=NEW\n2, 1\n*END STEP\n", 38, "*BOUNDARY",
      "OP=NEW is not supported in a step with PERTURBATION that stands on a loaded state: what holds the state "
      "holds in the step");
}
TEST(deck_load, op_mod_in_a_later_step) {
  expect_error(text_of(GOOD) + "*STEP\n*STATIC\n*CLOAD, OP=MOD\n2, 1, 1.\n*END STEP\n", 38, "*CLOAD",
               "OP=MOD is not supported after the first step: nothing carries over from step to step");
}
TEST(deck_load, op_not_known) {
  expect_error(replaced(28, "*CLOAD, OP=ADD"), 28, "*CLOAD", "OP=ADD is not supported; NEW and MOD are");
}

TEST(deck_load, cload_fields) {
  expect_error(replaced(29, "3, 3"), 29, "*CLOAD", "too few fields (2): node or set, degree of freedom, value");
  expect_error(replaced(29, "3, 3, 1., 2."), 29, "*CLOAD",
               "too many fields (4): node or set, degree of freedom, value");
}
TEST(deck_load, cload_on_an_unknown_node) {
  expect_error(replaced(29, "17, 3, 1."), 29, "*CLOAD", "node 17 is not defined");
}
TEST(deck_load, cload_parameter_not_known) {
  expect_error(replaced(28, "*CLOAD, SPEED=A"), 28, "*CLOAD",
               "the parameter 'SPEED' is not known; known here: OP, AMPLITUDE");
}
TEST(deck_load, cload_on_a_node_without_elements) {
  std::vector<std::string> lines = GOOD;
  lines[28] = "5, 3, 1.";
  lines.insert(lines.begin() + 7, "5, 9., 9., 9.");
  expect_error(text_of(lines), 30, "*CLOAD", "node 5 belongs to no element: nothing can carry the load");
}

TEST(deck_load, dload_type_not_supported) {
  expect_error(replaced(31, "SKIN, NEWTON, 1."), 31, "*DLOAD",
               "the load type 'NEWTON' is not supported; P, GRAV, BX, BY, BZ, PX, PY, PZ, P1 to P6, HP, TRVEC, TRSHR "
               "and CENTRIF are, and on edges EDNOR, EDSHR, EDTRA, EDMOM and EDLD with the number of the edge");
}
TEST(deck_load, dload_fields) {
  expect_error(replaced(31, "SKIN, P"), 31, "*DLOAD",
               "too few fields (2): element or set, P, pressure; or element or set, GRAV, acceleration, x, y, z; or "
               "element or set, BX, BY or BZ, force per volume; or element or set, PX, PY, PZ, P1 or P2, force per "
               "length; or solid or set, P1 to P6, pressure");
  expect_error(replaced(31, "SKIN, P, 1., 2."), 31, "*DLOAD", "too many fields (4): element or set, P, pressure");
  expect_error(replaced(32, "SKIN, GRAV, 9.81"), 32, "*DLOAD",
               "too few fields (3): element or set, GRAV, acceleration, x, y, z");
}
TEST(deck_load, dload_on_an_unknown_element) {
  expect_error(replaced(31, "17, P, 1."), 31, "*DLOAD", "element 17 is not defined");
  expect_error(replaced(31, "ALL, P, 1."), 31, "*DLOAD", "the element set 'ALL' is not defined");
}
TEST(deck_load, gravity_without_a_direction) {
  expect_error(replaced(32, "SKIN, GRAV, 9.81, 0., 0., 0."), 32, "*DLOAD", "the direction of GRAV is zero");
}
TEST(deck_load, gravity_without_a_density) {
  expect_error(without(18, 19), 30, "*DLOAD", "GRAV needs a *DENSITY: the material 'STEEL' of element 1 has none");
}

TEST(deck_load, temperature_fields) {
  expect_error(replaced(34, "ALL"), 34, "*TEMPERATURE",
               "too few fields (1): node or set, temperature, gradient through the thickness");
  expect_error(replaced(34, "ALL, 1., 2., 3."), 34, "*TEMPERATURE",
               "too many fields (4): node or set, temperature, gradient through the thickness");
  expect_error(replaced(34, "ALL, warm"), 34, "*TEMPERATURE", "temperature: 'warm' is not a number");
}
TEST(deck_load, temperature_with_two_values) {
  expect_error(replaced(34, "ALL, 20.\n2, 30."), 35, "*TEMPERATURE",
               "the temperature of node 2 has another value in plate.inp:34");
  expect_error(replaced(34, "ALL, 20.\n2, 20., 1."), 35, "*TEMPERATURE",
               "the temperature of node 2 has another value in plate.inp:34");
}

TEST(deck_load, nlgeom) {
  const char* sentence =
      "NLGEOM is not supported: a step is linear, its displacements are small. Write PDELTA in its place for the "
      "effect "
      "of the axial and membrane forces in the displaced position, or NLGEOM=NO";
  expect_error(replaced(26, "*STEP, NLGEOM=YES"), 26, "*STEP", sentence);
  expect_error(replaced(26, "*STEP, NLGEOM"), 26, "*STEP", sentence);
  expect_error(replaced(26, "*STEP, NLGEOM=MAYBE"), 26, "*STEP", "NLGEOM is YES or NO, not 'MAYBE'");
  EXPECT_EQ(read(replaced(26, "*STEP, NLGEOM=No")).steps.size(), 1u);
}
TEST(deck_load, increments) {
  expect_error(replaced(26, "*STEP, INC=many"), 26, "*STEP", "INC: 'many' is not a number from 1");
  expect_error(replaced(26, "*STEP, INC=0"), 26, "*STEP", "INC: '0' is not a number from 1");
}
TEST(deck_load, static_data) {
  expect_error(inserted(28, "1., x"), 28, "*STATIC", "time: 'x' is not a number");
  expect_error(inserted(28, "1., -1."), 28, "*STATIC", "time: '-1.' is negative");
  expect_error(inserted(28, "1., 1., 1., 1., 1."), 28, "*STATIC",
               "too many fields (5): first increment, length of the step, smallest and largest increment");
  expect_error(inserted(28, "1., 1.\n1., 1."), 29, "*STATIC", "a second data line: *STATIC takes one");
}

TEST(deck_note, time_control) {
  expect_notes(replaced(26, "*STEP, INC=10"),
               {"plate.inp:26: *STEP: INC has no effect: a linear step is solved at once"});
  expect_notes(
      replaced(27, "*STATIC, DIRECT, SOLVER=SPOOLES\n0.1, 1., , 1."),
      {"plate.inp:27: *STATIC: DIRECT has no effect: a linear step is solved at once, by the factorisation of this "
       "solver",
       "plate.inp:27: *STATIC: SOLVER has no effect: a linear step is solved at once, by the factorisation of this "
       "solver",
       "plate.inp:27: *STATIC: the times have no effect: a linear step is solved at once"});
}
TEST(deck_note, output_requests) {
  const std::string sentence = ": this solver writes its results in one fixed form; the request has no effect";
  const char* const REQUESTS[] = {"*NODE FILE", "*EL FILE", "*OUTPUT", "*NODE OUTPUT", "*ELEMENT OUTPUT", "*RESTART"};
  for (const std::string request : REQUESTS) {
    expect_notes(inserted(35, request + ", NSET=ALL, FIELD\nU, RF"), {"plate.inp:35: " + request + sentence});
  }
}
TEST(deck_note, second_step) {
  expect_notes(text_of(GOOD) + "*STEP\n*STATIC\n*CLOAD\n2, 1, 5.\n*END STEP\n",
               {"plate.inp:36: *STEP: a step is an analysis of its own; the loads of earlier steps do not carry over"});
}
TEST(deck_note, temperature_without_expansion) {
  expect_notes(without(20, 21),
               {"plate.inp:31: *TEMPERATURE: no material has an *EXPANSION; the temperatures have no effect"});
}
