// deck_form_test.cpp: the keyword form itself: comments, blanks, continuation, numbers, nesting, parameters.
#include <gtest/gtest.h>

#include "deck_builder.h"

using namespace deck_test;

TEST(deck_form, letters_blanks_comments_and_carriage_returns_do_not_matter) {
  const solver::model m = read(
      "\xEF\xBB\xBF** a comment\r\n\r\n*heading\r\nA title, with a comma\r\n** between\r\nand a second line\r\n"
      "*Node , nset = all\r\n 1 ,\t0., 0.,0.  \r\n2,1.,0.,0.,\r\n3,0.,1.,0.\r\n"
      "*element,\r\n  type = s3,\r\n** inside\r\n elset=Skin\r\n7, 1,\r\n2,\r\n3\r\n"
      "*material, name=steel\r\n*elastic, type=iso\r\n1., 0.\r\n* Shell  Section, elset=SKIN, Material=STEEL\r\n1.\r\n"
      "*boundary\r\nALL, encastre\r\n*step\r\n*static\r\n*cload\r\n3,1,1.\r\n*ENDSTEP");
  EXPECT_EQ(m.title, "A title, with a comma and a second line");
  ASSERT_EQ(m.nodes.size(), 3u);
  ASSERT_EQ(m.elements.size(), 1u);
  EXPECT_EQ(m.elements[0].id, 7);
  EXPECT_EQ(m.elements[0].nodes, (std::vector<int>{0, 1, 2}));
  EXPECT_EQ(m.elements[0].line, 15);
  EXPECT_EQ(m.steps.size(), 1u);
}

TEST(deck_form, numbers_in_every_spelling) {
  const struct {
    const char* text;
    double value;
  } SPELLINGS[] = {{"1", 1},     {"+2.", 2},      {"-.5", -0.5}, {"1.5D3", 1500}, {"1.5d-03", 0.0015},
                   {"2E2", 200}, {"+.25e+1", 2.5}};
  for (const auto& spelling : SPELLINGS) {
    EXPECT_EQ(read(replaced(6, std::string("3, 1., 1., ") + spelling.text)).nodes[2].xyz[2], spelling.value)
        << spelling.text;
  }
}

TEST(deck_form, text_before_the_first_keyword) {
  expect_error(inserted(1, "A title"), 1, "", "'A title' stands before the first keyword");
}
TEST(deck_form, unknown_keyword) {
  expect_error(inserted(26, "*Shear  colour, ELSET=SKIN"), 26, "*SHEAR COLOUR",
               "this solver does not know the keyword");
}
TEST(deck_form, star_alone) { expect_error(inserted(3, "*"), 3, "*", "this solver does not know the keyword"); }
TEST(deck_form, unknown_parameter) {
  expect_error(replaced(3, "*NODE, SYSTEMS=C"), 3, "*NODE",
               "the parameter 'SYSTEMS' is not known; known here: NSET, SYSTEM");
}
TEST(deck_form, unknown_parameter_where_none_is_known) {
  expect_error(inserted(24, "*RELEASE, TYPE=PIN\nSKIN, S1, M1"), 24, "*RELEASE",
               "the parameter 'TYPE' is not known; there is none for this keyword");
}
TEST(deck_form, parameter_twice) {
  expect_error(replaced(3, "*NODE, NSET=A, nset=B"), 3, "*NODE", "the parameter NSET is given twice");
}
TEST(deck_form, parameter_without_a_name) {
  expect_error(replaced(3, "*NODE, , NSET=A"), 3, "*NODE", "a parameter without a name");
}
TEST(deck_form, parameter_without_a_value) {
  expect_error(replaced(3, "*NODE, NSET="), 3, "*NODE", "the parameter NSET has no value");
  expect_error(replaced(3, "*NODE, NSET"), 3, "*NODE", "the parameter NSET has no value");
}
TEST(deck_form, flag_with_a_value) {
  expect_error(replaced(11, "*NSET, NSET=FIXED, GENERATE=YES"), 11, "*NSET", "the parameter GENERATE takes no value");
}
TEST(deck_form, missing_parameter) {
  expect_error(replaced(15, "*MATERIAL"), 15, "*MATERIAL", "the parameter NAME is missing");
}
TEST(deck_form, too_many_parameters) {
  std::string line = "*NODE";
  for (int i = 0; i < 60; ++i) line += ", P" + std::to_string(i);
  expect_error(replaced(3, line), 3, "*NODE", "too many parameters");
}
TEST(deck_form, a_comma_before_no_parameter_has_no_meaning) {
  EXPECT_EQ(read(replaced(13, "*ELSET, ELSET=LOWER,")).elsets.size(), 2u);  // a number follows
  EXPECT_EQ(read(replaced(35, "*END STEP,")).steps.size(), 1u);             // the end
  EXPECT_EQ(read(replaced(27, "*STATIC,")).steps.size(), 1u);               // a keyword
}
TEST(deck_form, data_missing) { expect_error(without(23, 23), 22, "*SHELL SECTION", "no data line follows"); }
TEST(deck_form, data_where_none_belongs) {
  expect_error(inserted(16, "1., 2."), 16, "*MATERIAL", "no data line belongs here");
  expect_error(text_of(GOOD) + "1\n", 36, "*END STEP", "no data line belongs here");
}

TEST(deck_form, not_a_number) {
  expect_error(replaced(4, "1, 0.x, 0., 0."), 4, "*NODE", "x: '0.x' is not a number");
  expect_error(replaced(4, "1, 0., 0x1, 0."), 4, "*NODE", "y: '0x1' is not a number");
  expect_error(replaced(4, "1, 0., 0., 1 2"), 4, "*NODE", "z: '1 2' is not a number: fields are separated by commas");
  expect_error(replaced(4, "1, 0., 0., +-1"), 4, "*NODE", "z: '+-1' is not a number");
}
TEST(deck_form, empty_number) {
  expect_error(replaced(17, "2.1E11 0.3"), 17, "*ELASTIC",
               "too few fields (1): Young's modulus, Poisson's ratio; fields are separated by commas");
  expect_error(replaced(17, "2.1E11, "), 17, "*ELASTIC", "too few fields (1): Young's modulus, Poisson's ratio");
  expect_error(replaced(17, ", 0.3"), 17, "*ELASTIC", "Young's modulus: the field is empty");
}
TEST(deck_form, number_that_is_not_finite) {
  expect_error(replaced(4, "1, nan, 0., 0."), 4, "*NODE", "x: 'nan' is not finite");
  expect_error(replaced(4, "1, 0., -inf, 0."), 4, "*NODE", "y: '-inf' is not finite");
}
TEST(deck_form, number_beyond_the_doubles) {
  expect_error(replaced(4, "1, 0., 0., 1D999"), 4, "*NODE", "z: '1D999' is beyond the numbers that can be held");
}
TEST(deck_form, not_an_integer) {
  expect_error(replaced(4, "1.5, 0., 0., 0."), 4, "*NODE", "node number: '1.5' is not an integer");
  expect_error(replaced(4, "3000000000, 0., 0., 0."), 4, "*NODE",
               "node number: '3000000000' is beyond the numbers that can be held");
}
TEST(deck_form, control_characters_do_not_reach_the_message) {
  expect_error(replaced(4, "1, \x1b[31m, 0., 0."), 4, "*NODE", "x: '?[31m' is not a number");
}
TEST(deck_form, long_fields_are_cut_in_the_message) {
  expect_error(replaced(4, "1, " + std::string(60, 'y') + ", 0., 0."), 4, "*NODE",
               "x: '" + std::string(40, 'y') + "...' is not a number");
}

TEST(deck_form, deck_without_a_step) {
  expect_error(without(26, 35), 25, "*STEP", "the deck ends without a step");
  expect_error("*HEADING\nonly this\n", 2, "*STEP", "the deck ends without a step");
}
TEST(deck_form, deck_without_anything) { expect_error("", 1, "", "the file is empty"); }
TEST(deck_form, step_without_end) { expect_error(without(35, 35), 26, "*STEP", "the step has no *END STEP"); }
TEST(deck_form, step_inside_a_step) {
  expect_error(inserted(28, "*STEP"), 28, "*STEP", "the *STEP of line 26 has no *END STEP yet");
}
TEST(deck_form, end_step_alone) {
  expect_error(text_of(GOOD) + "*END STEP\n", 36, "*END STEP", "belongs between *STEP and *END STEP");
}
TEST(deck_form, step_without_static) {
  expect_error(without(27, 27), 26, "*STEP",
               "the step has no *STATIC, *FREQUENCY, *BUCKLE, *PUSHOVER or *ELASTOPLASTIC");
}
TEST(deck_form, two_statics) { expect_error(inserted(28, "*STATIC"), 28, "*STATIC", "the step has a *STATIC already"); }
TEST(deck_form, load_outside_a_step) {
  expect_error(inserted(26, "*CLOAD\n3, 3, 1."), 26, "*CLOAD", "belongs between *STEP and *END STEP");
  expect_error(inserted(26, "*TEMPERATURE\nALL, 1."), 26, "*TEMPERATURE", "belongs between *STEP and *END STEP");
}
TEST(deck_form, mesh_inside_a_step) {
  expect_error(inserted(28, "*NODE\n9, 0., 0., 0."), 28, "*NODE", "belongs before the first *STEP");
}
TEST(deck_form, mesh_after_a_step) {
  expect_error(text_of(GOOD) + "*NODE\n9, 0., 0., 0.\n", 36, "*NODE", "belongs before the first *STEP");
}
TEST(deck_form, boundary_between_two_steps) {
  expect_error(text_of(GOOD) + "*BOUNDARY\n2, 1\n", 36, "*BOUNDARY",
               "stands between two steps: it belongs before the first *STEP or inside one");
}
TEST(deck_form, elastic_without_a_material_above) {
  expect_error(inserted(26, "*ELASTIC\n1., 0."), 26, "*ELASTIC", "belongs below a *MATERIAL");
}
TEST(deck_form, two_headings) {
  expect_error(inserted(3, "*HEADING\nagain"), 3, "*HEADING", "the deck has a *HEADING already");
}
