// deck_solids_test.cpp: solids in decks: their sections, what they are refused, and the reminders.
#include <gtest/gtest.h>

#include "deck_builder.h"

using namespace deck_test;

namespace {

// The deck with some lines changed, given by their numbers.
std::string with(const std::vector<std::pair<int, std::string>>& changes) {
  std::vector<std::string> lines = GOOD_SOLIDS;
  for (const auto& [n, line] : changes) lines[static_cast<std::size_t>(n - 1)] = line;
  return text_of(lines);
}

std::string with(int n, const std::string& line) { return with({{n, line}}); }

const std::string SECTION = "*SOLID SECTION, ELSET=BODY, MATERIAL=M";

}  // namespace

TEST(deck_solids, elements_and_sections) {
  const solver::model m = read(text_of(GOOD_SOLIDS));
  ASSERT_EQ(m.elements.size(), 2u);
  EXPECT_EQ(m.elements[0].type, solver::element_type::C3D8);
  EXPECT_EQ(m.elements[0].nodes, (std::vector<int>{0, 1, 2, 3, 4, 5, 6, 7}));
  ASSERT_EQ(m.solid_sections.size(), 1u);
  EXPECT_EQ(m.solid_sections[0].elset, "BODY");
  EXPECT_EQ(m.elements[0].section, 0);
  ASSERT_EQ(m.frame_sections.size(), 1u);
  EXPECT_TRUE(m.notes.empty());
}

TEST(deck_solids, other_kinds) {
  const auto type = [](const std::string& card, const std::string& nodes) {
    return read(with({{10, card}, {11, nodes}, {12, "**"}})).elements[0].type;
  };
  EXPECT_EQ(type("*ELEMENT, TYPE=C3D6, ELSET=BODY", "1, 1, 2, 4, 5, 6, 8"), solver::element_type::C3D6);
  EXPECT_EQ(type("*ELEMENT, TYPE=c3d4, ELSET=BODY", "1, 1, 2, 4, 5"), solver::element_type::C3D4);
}

TEST(deck_solids, quadratic_solids_have_no_record) {
  for (const auto& [type, parts] : {std::pair{std::string("C3D10"), "four C3D8"},
                                    {std::string("C3D15"), "eight C3D6"},
                                    {std::string("C3D20"), "eight C3D8"},
                                    {std::string("C3D20R"), "eight C3D8"}})
    expect_error(with(10, "*ELEMENT, TYPE=" + type + ", ELSET=BODY"), 10, "*ELEMENT",
                 "the element type '" + type +
                     "' is quadratic, and the solids of the library are linear: its record of a solid has places for "
                     "nine nodes. The option --refine divides each " +
                     type + " into " + parts);
  for (const std::string& type : {std::string("C3D27"), std::string("C3D20H")})
    expect_error(with(10, "*ELEMENT, TYPE=" + type + ", ELSET=BODY"), 10, "*ELEMENT",
                 "the element type '" + type +
                     "' is not supported; the option --refine divides C3D10, C3D10M, C3D10HS, C3D15, C3D20, C3D20R and "
                     "C3D20RI");
  expect_error(
      with(10, "*ELEMENT, TYPE=T3D3, ELSET=BODY"), 10, "*ELEMENT",
      "the element type 'T3D3' is not supported: nothing holds the middle of a bar across it; give a T3D2 from "
      "end to end");
  expect_error(with(10, "*ELEMENT, TYPE=C3D9, ELSET=BODY"), 10, "*ELEMENT",
               "the element type 'C3D9' is not supported; S3, S4, S6, S8, M3D3, M3D4, M3D6, M3D8, B31, B32, B33, T3D2, "
               "SPRING1, SPRING2, SPRINGA, CONN3D2, C3D4, C3D6, C3D8, MASS and ROTARYI are");
}

TEST(deck_solids, number_of_nodes) {
  expect_error(with({{11, "1, 1, 2, 3, 4"}, {12, "**"}}), 11, "*ELEMENT",
               "too few fields (5): number, node 1 to node 8");
  expect_error(with(12, "5, 6, 7, 8, 8"), 12, "*ELEMENT", "too many fields (10): number, node 1 to node 8");
  expect_error(with(12, "5, 6, 7, 7"), 12, "*ELEMENT", "element 1: node 7 is named twice");
}

TEST(deck_solids, shapes) {
  const std::string out =
      " is inside out, its volume is negative: the nodes of its first face must turn, by the right "
      "hand, towards the rest of the element";
  expect_error(with({{11, "1, 5, 6, 7, 8,"}, {12, "1, 2, 3, 4"}}), 11, "*ELEMENT", "element 1" + out);
  expect_error(with({{10, "*ELEMENT, TYPE=C3D4, ELSET=BODY"}, {11, "7, 1, 4, 2, 5"}, {12, "**"}}), 11, "*ELEMENT",
               "element 7" + out);
  expect_error(with({{10, "*ELEMENT, TYPE=C3D6, ELSET=BODY"}, {11, "7, 5, 6, 8, 1, 2, 4"}, {12, "**"}}), 11, "*ELEMENT",
               "element 7" + out);
  expect_error(with({{6, "5, 0, 0, 0"}, {7, "6, 1, 0, 0"}, {8, "7, 1, 1, 0"}, {9, "8, 0, 1, 0"}}), 11, "*ELEMENT",
               "element 1 has no volume: its nodes lie in one plane");
  // The upper face is crossed: dx/dxi is (1 - zeta) / 4 + (1 + zeta) eta / 4. Then it is turned: dx/dxi is -zeta / 2.
  expect_error(with(12, "6, 5, 7, 8"), 11, "*ELEMENT",
               "element 1 is too distorted: its volume is negative or zero at 2 of its 8 integration points");
  expect_error(with(12, "6, 5, 8, 7"), 11, "*ELEMENT",
               "element 1 is too distorted: its volume is negative or zero at 4 of its 8 integration points");
}

// Node 7 comes to (t, t, t): the determinant is 3 t - 2 there, at the integration point near by 1 - 1.87 (1 - t).
TEST(deck_solids, a_corner_that_points_inwards_is_noted) {
  expect_notes(with(8, "7, 0.55, 0.55, 0.55"), {"plate.inp:11: *ELEMENT: 1 solid is so distorted that the volume at a "
                                                "corner is negative or zero, element 1 at node 7 "
                                                "the first: stresses at such corners are not reliable"});
}

TEST(deck_solids, tetrahedra_need_no_acceptance) {
  const std::vector<std::pair<int, std::string>> two = {
      {10, "*ELEMENT, TYPE=C3D4, ELSET=BODY"}, {11, "1, 1, 2, 4, 5"}, {12, "3, 7, 6, 8, 3"}};
  expect_notes(with(two), {});
  auto accepted = two;
  accepted.emplace_back(18, SECTION + ", ACCEPT=tetrahedron");
  expect_notes(with(accepted), {"plate.inp:18: *SOLID SECTION: ACCEPT has no effect: tetrahedra have the "
                                "stiffness and the mass of their volume"});
}

TEST(deck_solids, parameters_of_the_section) {
  expect_error(
      "*NODE\n1, 0, 0, 0\n2, 1, 0, 0\n*ELEMENT, TYPE=T3D2, ELSET=B\n1, 1, 2\n*MATERIAL, NAME=M\n*ELASTIC\n1., 0.3\n"
      "*SOLID SECTION, ELSET=B, MATERIAL=M, ACCEPT=TETRAHEDRON\n1.\n*BOUNDARY\n1, 1, 3\n2, 2, "
      "3\n*STEP\n*STATIC\n*CLOAD\n"
      "2, 1, 1.\n*END STEP\n",
      9, "*SOLID SECTION", "ACCEPT belongs to a section of solids");
  expect_error(with(18, SECTION + ", ACCEPT"), 18, "*SOLID SECTION", "the parameter ACCEPT has no value");
  expect_error(with(18, SECTION + ", PRETENSION=5"), 18, "*SOLID SECTION",
               "PRETENSION belongs to a section of trusses");
  expect_notes(with(18, SECTION + "\n1.,"),
               {"plate.inp:18: *SOLID SECTION: the number below a section of solids has no effect"});
  expect_notes(with(18, SECTION + "\n,"), {});
  expect_error(with(20, "**"), 19, "*SOLID SECTION", "no data line follows");
  expect_error(with(18, "*SOLID SECTION, ELSET=BODY, MATERIAL=N"), 18, "*SOLID SECTION",
               "the material 'N' is not defined");
}

TEST(deck_solids, sections_fit_their_elements) {
  expect_error(with(18, "*SHELL SECTION, ELSET=BODY, MATERIAL=M\n1."), 18, "*SHELL SECTION",
               "element 1 of line 11 is a solid (C3D8): it takes a *SOLID SECTION");
  expect_error(with(18, "**"), 11, "*ELEMENT",
               "element 1 has no section: it is a solid (C3D8): it takes a *SOLID SECTION");
  expect_error(with({{18, SECTION + "\n" + SECTION}}), 19, "*SOLID SECTION",
               "element 1 has a section already, of line 18");
  expect_error(with(13, "*ELEMENT, TYPE=T3D2, ELSET=BODY"), 18, "*SOLID SECTION",
               "the set holds solids and other elements; each takes a section of its own", false);
}

TEST(deck_solids, materials) {
  expect_error(with(17, "1000, 0.5"), 18, "*SOLID SECTION",
               "Poisson's ratio of the material 'M' is 0.5: a solid that keeps its volume has no finite stiffness");
  expect_error(with({{16, "*ELASTIC, TYPE=LAMINA"}, {17, "1000, 500, 0.25, 300, 300, 300"}}), 18, "*SOLID SECTION",
               "the material 'M' is not isotropic: solids take Young's modulus and Poisson's ratio (*ELASTIC without "
               "TYPE), or constants that are those of an isotropic material",
               false);
}

TEST(deck_solids, loads) {
  const auto dload = [](const std::string& line) { return with(24, "*STATIC\n*DLOAD\n" + line); };
  const solver::model m = read(dload("BODY, BZ, -3"));
  ASSERT_EQ(m.steps[0].element_loads.size(), 1u);
  EXPECT_EQ(m.steps[0].element_loads[0].kind, solver::element_load_kind::BODY);
  EXPECT_EQ(m.steps[0].element_loads[0].magnitude, -3);
  EXPECT_EQ(m.steps[0].element_loads[0].direction, (std::array<double, 3>{0, 0, 1}));
  expect_error(dload("BODY, P, 1"), 26, "*DLOAD", "'P' on element 1: a pressure on a solid names the face, P1 to P6");
  expect_error(dload("BODY, PX, 1"), 26, "*DLOAD",
               "'PX' on element 1: a load per length acts on beams, trusses and cables");
  expect_error(dload("BODY, BX, 1, 2"), 26, "*DLOAD",
               "too many fields (4): element or set, BX, BY or BZ, force per volume");
  expect_error(dload("BODY, GRAV, 1, 0, 0, 1"), 26, "*DLOAD",
               "GRAV needs a *DENSITY: the material 'M' of element 1 has none");
  std::vector<std::string> spring = GOOD_SOLIDS;
  spring[12] = "*ELEMENT, TYPE=SPRING1, ELSET=BAR";
  spring[13] = "2, 7";
  spring[18] = "*SPRING, ELSET=BAR";
  spring[19] = "1\n5.";
  spring[23] = "*STATIC\n*DLOAD\nBAR, BX, 1";
  expect_error(text_of(spring), 27, "*DLOAD",
               "'BX' on element 2: a force per volume acts on what has a volume, not on springs and links");
}

TEST(deck_solids, temperatures) {
  const std::string step = "*STATIC\n*TEMPERATURE\n8, 0\n7, 20";
  EXPECT_EQ(read(with({{17, "1000, 0.25\n*EXPANSION\n1e-5"}, {24, step}})).steps[0].temperatures.size(), 2u);
  expect_notes(with(24, step),
               {"plate.inp:25: *TEMPERATURE: no material has an *EXPANSION; the temperatures have no effect"});
  expect_error(with({{17, "1000, 0.25\n*EXPANSION, TYPE=ORTHO\n1e-5, 1e-5, 2e-5"}, {24, step}}), 20, "*SOLID SECTION",
               "the material 'M' expands differently in its three directions; solids take one coefficient of expansion",
               false);
}

TEST(deck_solids, steps) {
  const std::string sentence = "solids are supported in steps with *STATIC, *FREQUENCY and *BUCKLE";
  expect_error(with(24, "*PUSHOVER\n*CLOAD\n7, 1, 1."), 23, "*STEP", sentence);
  expect_error(with(24, "*ELASTOPLASTIC\n*CLOAD\n7, 1, 1."), 23, "*STEP", sentence);
}
