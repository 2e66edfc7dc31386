// deck_shells_test.cpp: quadrilaterals and the formulation of shells.
#include <gtest/gtest.h>

#include "deck_builder.h"
#include "finites/fields.h"

using namespace deck_test;

namespace {

// The good deck with one quadrilateral in the place of its two triangles.
std::string quad(const std::string& nodes, const std::string& type = "S4") {
  std::vector<std::string> lines = GOOD;
  lines[7] = "*ELEMENT, TYPE=" + type + ", ELSET=SKIN";
  lines[8] = nodes;
  lines.erase(lines.begin() + 9);
  return text_of(lines);
}

}  // namespace

TEST(deck_shells, elements_of_four_nodes) {
  const solver::model m = read(quad("1, 1, 2, 3, 4"));
  ASSERT_EQ(m.elements.size(), 1u);
  EXPECT_EQ(m.elements[0].type, solver::element_type::S4);
  EXPECT_EQ(m.elements[0].nodes, (std::vector<int>{0, 1, 2, 3}));
  EXPECT_EQ(read(quad("1, 4, 3,\n2, 1")).elements[0].nodes, (std::vector<int>{3, 2, 1, 0}));
}

TEST(deck_shells, formulations) {
  EXPECT_EQ(read(text_of(GOOD)).shell_sections[0].formulation, solver::shell_formulation::THICK);
  const auto formulation = [](const std::string& word) {
    return read(replaced(22, "*SHELL SECTION, ELSET=SKIN, MATERIAL=STEEL, FORMULATION=" + word))
        .shell_sections[0]
        .formulation;
  };
  EXPECT_EQ(formulation("thin"), solver::shell_formulation::THIN);
  EXPECT_EQ(formulation("Thick"), solver::shell_formulation::THICK);
  expect_error(replaced(22, "*SHELL SECTION, ELSET=SKIN, MATERIAL=STEEL, FORMULATION=MINDLIN"), 22, "*SHELL SECTION",
               "FORMULATION is THIN or THICK, not 'MINDLIN'");
  expect_error(replaced(22, "*SHELL SECTION, ELSET=SKIN, MATERIAL=STEEL, FORMULATION="), 22, "*SHELL SECTION",
               "the parameter FORMULATION has no value");
}

TEST(deck_shells, membranes_have_no_formulation) {
  std::vector<std::string> lines = GOOD;
  lines[7] = "*ELEMENT, TYPE=M3D3, ELSET=SKIN";
  lines[21] = "*MEMBRANE SECTION, ELSET=SKIN, MATERIAL=STEEL, FORMULATION=THIN";
  expect_error(text_of(lines), 22, "*MEMBRANE SECTION",
               "the parameter 'FORMULATION' is not known; known here: ELSET, MATERIAL, ORIENTATION, ORIENTATION ANGLE");
}

TEST(deck_shells, number_of_nodes) {
  expect_error(quad("1, 1, 2, 3"), 9, "*ELEMENT", "too few fields (4): number, node 1, node 2, node 3, node 4");
  expect_error(quad("1, 1, 2, 3, 4, 4"), 9, "*ELEMENT", "too many fields (6): number, node 1, node 2, node 3, node 4");
  expect_error(quad("1, 1, 2, 3, 3"), 9, "*ELEMENT", "element 1: node 3 is named twice");
}

TEST(deck_shells, quadrilaterals_go_round) {
  const std::string sentence = "element 1: its nodes do not go round a convex quadrilateral";
  expect_error(quad("1, 1, 2, 4, 3"), 9, "*ELEMENT", sentence);  // the sides cross
  std::string concave = quad("1, 1, 2, 3, 4");
  concave.replace(concave.find("3, 1., 1., 0."), 13, "3, .2, .2, 0.");
  expect_error(concave, 9, "*ELEMENT", sentence);
  std::string straight = quad("1, 1, 2, 3, 4");
  straight.replace(straight.find("3, 1., 1., 0."), 13, "3, .5, .5, 0.");
  expect_error(straight, 9, "*ELEMENT", sentence);
  std::string line = quad("1, 1, 2, 3, 4");
  line.replace(line.find("3, 1., 1., 0."), 13, "3, 2., 0., 0.");
  expect_error(line, 9, "*ELEMENT", "element 1 has no area: its nodes coincide or lie on one line");
}

TEST(deck_shells, sections_fit_their_elements) {
  expect_error(quad("1, 1, 2, 3, 4", "M3D4"), 21, "*SHELL SECTION",
               "element 1 of line 9 is a membrane (M3D4): it takes a *MEMBRANE SECTION, with the thickness on its data "
               "line");
  std::string wrong = quad("1, 1, 2, 3, 4");
  wrong.replace(wrong.find("*SHELL SECTION"), 14, "*MEMBRANE SECTION");
  expect_error(wrong, 21, "*MEMBRANE SECTION",
               "element 1 of line 9 is a shell (S4): it takes a *SHELL SECTION, with the thickness on its data line");
}

// The type of the elements comes first: what a section of the wrong kind has below it is no fault of its own.
TEST(deck_shells, sections_of_solids_and_beams_are_refused_before_their_lines) {
  const std::string sentence =
      "element 1 of line 9 is a shell (S4): it takes a *SHELL SECTION, with the thickness on its data line";
  const std::string text = quad("1, 1, 2, 3, 4");
  const std::size_t at = text.find("*SHELL SECTION"), end = text.find('*', at + 1);
  for (const std::string section : {"*SOLID SECTION", "*BEAM SECTION", "*BEAM GENERAL SECTION", "*CABLE SECTION"}) {
    for (const std::string lines : {"", "0.1\n", "0.1, 5, 3\n", ",\n"}) {
      if (lines.empty() && section != "*SOLID SECTION") continue;  // no card of these stands without a line
      const std::string wrong = text.substr(0, at) + section + ", ELSET=SKIN, MATERIAL=STEEL" +
                                (section == "*BEAM SECTION" ? ", SECTION=RECT\n" : "\n") + lines + text.substr(end);
      expect_error(wrong, 21, section, sentence);
    }
  }
}

TEST(deck_shells, warped_quadrilaterals_are_noted) {
  std::string warped = quad("1, 1, 2, 3, 4");
  warped.replace(warped.find("3, 1., 1., 0."), 13, "3, 1., 1., .1");
  // 0.1 above the plane of the others: 0.075 above the plane through the mean, by a diagonal of sqrt(2.01).
  const std::string note =
      "plate.inp:9: *ELEMENT: 1 element is warped: flat elements stand for them. The largest warp, of element 1, is "
      "5.3e-02 of its diagonal";
  expect_notes(warped, {note});
  warped.insert(warped.find("MATERIAL=STEEL", warped.find("*SHELL SECTION")), "DRILLING=0, ");
  expect_notes(warped, {note + "; DRILLING=1 is advised"});
}

TEST(deck_shells, drilling) {
  EXPECT_EQ(read(text_of(GOOD)).shell_sections[0].drilling, 1);
  const std::string card = "*SHELL SECTION, ELSET=SKIN, MATERIAL=STEEL, DRILLING=";
  EXPECT_EQ(read(replaced(22, card + "0.5")).shell_sections[0].drilling, 0.5);
  EXPECT_EQ(read(replaced(22, card + "0")).shell_sections[0].drilling, 0);
  expect_error(replaced(22, card + "-1"), 22, "*SHELL SECTION", "DRILLING: '-1' is negative");
  expect_error(replaced(22, card + "YES"), 22, "*SHELL SECTION", "DRILLING: 'YES' is not a number");
}

TEST(deck_shells, small_thick_shells_on_a_fold_are_noted) {
  std::vector<std::string> lines = GOOD;
  lines[5] = "3, 1., 1., 0.5";  // the two triangles no longer lie in one plane
  lines[21] += ", FORMULATION=THICK";
  lines[22] = "0.4";
  expect_notes(text_of(lines), {});
  lines[21] += ", DRILLING=0";
  expect_notes(
      text_of(lines),
      {"plate.inp:9: *ELEMENT: 2 thick shells on a surface that is not flat, element 1 the first, measure less "
       "than 4 thicknesses: too soft against twist without DRILLING=1"});
}
