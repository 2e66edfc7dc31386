// deck_material_test.cpp: *MATERIAL, *ELASTIC, *DENSITY, *EXPANSION, *SHELL SECTION, *MEMBRANE SECTION.
#include <gtest/gtest.h>

#include <algorithm>

#include "deck_builder.h"
#include "finites/fields.h"

using namespace deck_test;

// The good deck with another *ELASTIC: the keyword is line 16, its data begin in line 17.
static std::string elastic(const std::string& type, const std::string& data) {
  std::vector<std::string> lines = GOOD;
  lines[15] = "*ELASTIC, TYPE=" + type;
  lines[16] = data;
  return text_of(lines);
}
// Another *EXPANSION: lines 20 and 21. The material is isotropic or a lamina.
static std::string expansion(const std::string& parameters, const std::string& data, bool lamina = false) {
  std::vector<std::string> lines = GOOD;
  if (lamina) {
    lines[15] = "*ELASTIC, TYPE=LAMINA";
    lines[16] = "4., 1., .25, 2., 3., 5.";
  }
  lines[19] = "*EXPANSION" + parameters;
  lines[20] = data;
  return text_of(lines);
}

TEST(deck_material, isotropic) {
  const solver::model m = read(text_of(GOOD));
  ASSERT_EQ(m.materials.size(), 1u);
  const solver::material& steel = m.materials[0];
  EXPECT_EQ(steel.name, "STEEL");
  EXPECT_TRUE(steel.elastic);
  EXPECT_FALSE(steel.orthotropic);
  EXPECT_EQ(steel.E1, 2.1e11);
  EXPECT_EQ(steel.E2, 2.1e11);
  EXPECT_EQ(steel.NU12, 0.3);
  EXPECT_NEAR(steel.G12, 80769230769.230769, 1e-3);  // 210 / 2.6 = 80.769230...
  EXPECT_EQ(steel.G13, steel.G12);
  EXPECT_EQ(steel.G23, steel.G12);
  EXPECT_EQ(steel.density, 7850);
  EXPECT_EQ(steel.alpha1, 1.2e-5);
  EXPECT_EQ(steel.alpha2, 1.2e-5);
  EXPECT_EQ(steel.line, 15);
}

TEST(deck_material, lamina) {
  const solver::material m = read(elastic("LAMINA", "4., 1., .25, 2., 3., 5.")).materials[0];
  EXPECT_TRUE(m.orthotropic);
  EXPECT_EQ(m.E1, 4);
  EXPECT_EQ(m.E2, 1);
  EXPECT_EQ(m.NU12, 0.25);
  EXPECT_EQ(m.G12, 2);
  EXPECT_EQ(m.G13, 3);
  EXPECT_EQ(m.G23, 5);
}

TEST(deck_material, engineering_constants_in_one_line_or_two) {
  for (const char* data : {"4., 1., 2., .25, .1, .2, 6., 7., 8.", "4., 1., 2., .25, .1, .2, 6., 7.,\n8."}) {
    const solver::model m = read(elastic("Engineering Constants", data));
    EXPECT_TRUE(m.materials[0].orthotropic);
    EXPECT_EQ(m.materials[0].E1, 4);
    EXPECT_EQ(m.materials[0].E2, 1);
    EXPECT_EQ(m.materials[0].NU12, 0.25);
    EXPECT_EQ(m.materials[0].G12, 6);
    EXPECT_EQ(m.materials[0].G13, 7);
    EXPECT_EQ(m.materials[0].G23, 8);
    EXPECT_EQ(m.notes,
              std::vector<std::string>{"plate.inp:16: *ELASTIC: E3, nu13 and nu23 have no effect in plane stress"});
  }
}

TEST(deck_material, orthotropic_expansion) {
  const solver::model m = read(expansion(", TYPE=ORTHO, ZERO=0.", "1., 2., 3.", true));
  EXPECT_EQ(m.materials[0].alpha1, 1);
  EXPECT_EQ(m.materials[0].alpha2, 2);
  EXPECT_EQ(m.notes,
            std::vector<std::string>{
                "plate.inp:20: *EXPANSION: alpha33 has no effect: a thin shell is free to grow in its thickness"});
}

TEST(deck_material, a_section_may_stand_before_its_material) {
  std::vector<std::string> lines = GOOD;
  std::rotate(lines.begin() + 14, lines.begin() + 21, lines.begin() + 23);  // lines 22 and 23 before lines 15 to 21
  ASSERT_EQ(lines[14], "*SHELL SECTION, ELSET=SKIN, MATERIAL=STEEL");
  EXPECT_EQ(read(text_of(lines)).shell_sections[0].material, 0);
}

TEST(deck_material, section) {
  const solver::model m =
      read(replaced(22, "*SHELL SECTION, ELSET=skin, MATERIAL=Steel, OFFSET=-0.25, ORIENTATION ANGLE=30."));
  ASSERT_EQ(m.shell_sections.size(), 1u);
  EXPECT_EQ(m.shell_sections[0].elset, "SKIN");
  EXPECT_EQ(m.shell_sections[0].material, 0);
  EXPECT_EQ(m.shell_sections[0].thickness, 0.01);
  EXPECT_EQ(m.shell_sections[0].offset, -0.25);
  EXPECT_EQ(m.shell_sections[0].orientation_angle, 30);
  EXPECT_EQ(m.shell_sections[0].line, 22);
  EXPECT_EQ(m.elements[0].section, 0);
  EXPECT_EQ(m.elements[1].section, 0);
}

TEST(deck_material, offsets_by_word) {
  EXPECT_EQ(read(text_of(GOOD)).shell_sections[0].offset, 0);
  EXPECT_EQ(read(replaced(22, GOOD[21] + ", OFFSET=SPOS")).shell_sections[0].offset, 0.5);
  EXPECT_EQ(read(replaced(22, GOOD[21] + ", OFFSET=sneg")).shell_sections[0].offset, -0.5);
}

TEST(deck_material, material_twice) {
  expect_error(inserted(22, "*MATERIAL, NAME=steel"), 22, "*MATERIAL",
               "the material 'STEEL' is defined already, in line 15");
}
TEST(deck_material, material_with_a_number_as_its_name) {
  expect_error(replaced(15, "*MATERIAL, NAME=1"), 15, "*MATERIAL", "'1' is not a name: it is a number");
}
TEST(deck_material, material_without_elastic) {
  expect_error(without(16, 17), 15, "*MATERIAL", "the material has no *ELASTIC");
}
TEST(deck_material, elastic_twice) {
  expect_error(inserted(18, "*ELASTIC\n1., 0."), 18, "*ELASTIC", "the material has an *ELASTIC already");
}
TEST(deck_material, elastic_type_not_supported) {
  expect_error(elastic("TRACTION", "1."), 16, "*ELASTIC",
               "TYPE=TRACTION is not supported; ISO, LAMINA, ENGINEERING CONSTANTS, ORTHO and ANISO are");
}
TEST(deck_material, elastic_fields) {
  expect_error(replaced(17, "2.1E11"), 17, "*ELASTIC", "too few fields (1): Young's modulus, Poisson's ratio");
  expect_error(replaced(17, "2.1E11, .3, 20., 1."), 17, "*ELASTIC",
               "too many fields (4): Young's modulus, Poisson's ratio");
}
TEST(deck_material, modulus_not_positive) {
  expect_error(replaced(17, "0., 0.3"), 17, "*ELASTIC", "Young's modulus: '0.' is not positive");
  expect_error(elastic("LAMINA", "4., 1., .25, 2., 3., -5."), 17, "*ELASTIC", "G23: '-5.' is not positive");
}
TEST(deck_material, poisson_out_of_range) {
  const char* sentence = "Poisson's ratio must lie above -1 and not above 0.5";
  expect_error(replaced(17, "1., 0.51"), 17, "*ELASTIC", sentence);
  expect_error(replaced(17, "1., -1."), 17, "*ELASTIC", sentence);
  EXPECT_EQ(read(replaced(17, "1., 0.5")).materials[0].NU12, 0.5);
}
TEST(deck_material, poisson_of_a_lamina_out_of_range) {
  // sqrt(4 / 1) = 2
  expect_error(elastic("LAMINA", "4., 1., 2., 2., 3., 5."), 17, "*ELASTIC",
               "nu12 must lie between the positive and the negative root of the ratio of the moduli, 2.000000");
  EXPECT_EQ(read(elastic("LAMINA", "4., 1., -1.9, 2., 3., 5.")).materials[0].NU12, -1.9);
}
TEST(deck_material, engineering_constants_out_of_range) {
  expect_error(elastic("ENGINEERING CONSTANTS", "1., 1., 1., .1, 1.5, .1, 1., 1., 1."), 17, "*ELASTIC",
               "nu13 must lie between the positive and the negative root of the ratio of the moduli, 1.000000");
  // Equal moduli and three ratios of 0.6: 1 - 3 * 0.36 - 2 * 0.216 = -0.512.
  expect_error(elastic("ENGINEERING CONSTANTS", "1., 1., 1., .6, .6, .6, 1., 1., 1."), 17, "*ELASTIC",
               "the three Poisson's ratios together give a negative strain energy");
}
// Each ratio nu(i,j) has the bound sqrt(Ei / Ej); E1, E2, E3 are 4, 1, 16 here: 2, 1/2 and 1/4. Above one is possible.
TEST(deck_material, engineering_constants_have_a_bound_for_each_ratio) {
  const auto constants = [](const std::string& ratios) {
    return elastic("ENGINEERING CONSTANTS", "4., 1., 16., " + ratios + ", 1., 1., 1.");
  };
  EXPECT_EQ(read(constants("1.9, 0., 0.")).materials[0].NU12, 1.9);
  EXPECT_EQ(read(constants("0., .49, 0.")).materials[0].NU12, 0);
  EXPECT_EQ(read(constants("0., 0., -.24")).materials[0].NU12, 0);
  const std::string sentence = " must lie between the positive and the negative root of the ratio of the moduli, ";
  expect_error(constants("2.1, 0., 0."), 17, "*ELASTIC", "nu12" + sentence + "2.000000");
  expect_error(constants("0., .51, 0."), 17, "*ELASTIC", "nu13" + sentence + "0.500000");
  expect_error(constants("0., 0., -.26"), 17, "*ELASTIC", "nu23" + sentence + "0.250000");
  expect_error(constants("0., nu, 0."), 17, "*ELASTIC", "nu13: 'nu' is not a number");
  expect_error(constants("0., 0., nu"), 17, "*ELASTIC", "nu23: 'nu' is not a number");
}
TEST(deck_material, density) {
  expect_error(replaced(19, "-1."), 19, "*DENSITY", "density: '-1.' is not positive");
  expect_error(replaced(19, "7850., 20., 1."), 19, "*DENSITY", "too many fields (3): density");
  expect_error(inserted(20, "*DENSITY\n1."), 20, "*DENSITY", "the material has a *DENSITY already");
}
TEST(deck_material, expansion_zero_elsewhere) {
  expect_error(expansion(", ZERO=cold", "1."), 20, "*EXPANSION", "ZERO: 'cold' is not a number");
}
TEST(deck_material, expansion_type_not_supported) {
  expect_error(expansion(", TYPE=ANISO", "1."), 20, "*EXPANSION", "TYPE=ANISO is not supported; ISO and ORTHO are");
}
TEST(deck_material, expansion_fields) {
  expect_error(expansion("", "1.\n2."), 21, "*EXPANSION", "too few fields (1): coefficient of expansion, temperature");
  expect_error(expansion(", TYPE=ORTHO", "1., 2.", true), 21, "*EXPANSION",
               "too few fields (2): alpha11, alpha22, alpha33");
}
TEST(deck_material, expansion_twice) {
  expect_error(inserted(22, "*EXPANSION\n1."), 22, "*EXPANSION", "the material has an *EXPANSION already");
}
TEST(deck_material, orthotropic_expansion_of_an_isotropic_material) {
  const solver::material m = read(expansion(", TYPE=ORTHO", "1., 2., 3.")).materials[0];
  EXPECT_FALSE(m.orthotropic);
  EXPECT_EQ(m.alpha1, 1);
  EXPECT_EQ(m.alpha2, 2);
}

TEST(deck_material, section_of_an_unknown_set) {
  expect_error(replaced(22, "*SHELL SECTION, ELSET=ROOF, MATERIAL=STEEL"), 22, "*SHELL SECTION",
               "the element set 'ROOF' is not defined");
}
TEST(deck_material, section_of_an_unknown_material) {
  expect_error(replaced(22, "*SHELL SECTION, ELSET=SKIN, MATERIAL=GLASS"), 22, "*SHELL SECTION",
               "the material 'GLASS' is not defined");
}
TEST(deck_material, section_without_a_material) {
  expect_error(replaced(22, "*SHELL SECTION, ELSET=SKIN"), 22, "*SHELL SECTION", "the parameter MATERIAL is missing");
}
TEST(deck_material, section_without_a_set) {
  expect_error(replaced(22, "*SHELL SECTION, MATERIAL=STEEL"), 22, "*SHELL SECTION", "the parameter ELSET is missing");
}
TEST(deck_material, section_of_layers) {
  expect_error(
      replaced(22, GOOD[21] + ", LAYERS"), 22, "*SHELL SECTION",
      "the parameter 'LAYERS' is not known; known here: ELSET, MATERIAL, OFFSET, ORIENTATION, ORIENTATION ANGLE, "
      "FORMULATION, DRILLING, MODEL, POINTS, COMPOSITE, SYMMETRIC, LAYUP, STACK DIRECTION");
  expect_error(replaced(23, "0.01\n0.02"), 24, "*SHELL SECTION",
               "a second data line: layers belong to a section with COMPOSITE");
}
TEST(deck_material, offset_that_is_no_number) {
  expect_error(replaced(22, GOOD[21] + ", OFFSET=TOP"), 22, "*SHELL SECTION", "OFFSET: 'TOP' is not a number");
}
TEST(deck_material, orientation_angle_that_is_no_number) {
  expect_error(replaced(22, GOOD[21] + ", ORIENTATION ANGLE=inf"), 22, "*SHELL SECTION",
               "ORIENTATION ANGLE: 'inf' is not finite");
}
TEST(deck_material, thickness) {
  expect_error(replaced(23, "0."), 23, "*SHELL SECTION", "thickness: '0.' is not positive");
  expect_error(replaced(23, "-0.01"), 23, "*SHELL SECTION", "thickness: '-0.01' is not positive");
  expect_error(replaced(23, ","), 23, "*SHELL SECTION", "thickness: the field is empty");
}
TEST(deck_material, integration_points) {
  const char* const sentence = "points through the thickness: '4' is not 3, 5, 7, 9, 11, 13 or 15";
  expect_notes(replaced(23, "0.01, 5"),
               {"plate.inp:22: *SHELL SECTION: the points through the thickness have no effect: "
                "the section is integrated exactly"});
  std::vector<std::string> lines = GOOD;
  lines[21] = "*SHELL SECTION, ELSET=SKIN, MATERIAL=STEEL, MODEL=LAYERED";
  lines[22] = "0.01, 7";
  EXPECT_EQ(read(text_of(lines)).shell_sections[0].thickness_points, 7);
  lines[22] = "0.01, 4";
  expect_error(text_of(lines), 23, "*SHELL SECTION", sentence);
}
TEST(deck_material, element_without_a_section) {
  expect_error(replaced(22, "*SHELL SECTION, ELSET=LOWER, MATERIAL=STEEL"), 10, "*ELEMENT",
               "element 2 has no section: no *SHELL SECTION or *MEMBRANE SECTION names it");
}
TEST(deck_material, element_with_two_sections) {
  expect_error(inserted(24, "*SHELL SECTION, ELSET=LOWER, MATERIAL=STEEL\n0.02"), 24, "*SHELL SECTION",
               "element 1 has a section already, of line 22");
}
TEST(deck_material, section_of_the_other_type) {
  expect_error(replaced(22, "*MEMBRANE SECTION, ELSET=SKIN, MATERIAL=STEEL"), 22, "*MEMBRANE SECTION",
               "element 1 of line 9 is a shell (S3): it takes a *SHELL SECTION, with the thickness on its data line");
  expect_error(replaced(8, "*ELEMENT, TYPE=M3D3, ELSET=SKIN"), 22, "*SHELL SECTION",
               "element 1 of line 9 is a membrane (M3D3): it takes a *MEMBRANE SECTION, with the thickness on its data "
               "line");
}
TEST(deck_material, membrane_with_an_offset) {
  expect_error(replaced(22, "*MEMBRANE SECTION, ELSET=SKIN, MATERIAL=STEEL, OFFSET=0.5"), 22, "*MEMBRANE SECTION",
               "the parameter 'OFFSET' is not known; known here: ELSET, MATERIAL, ORIENTATION, ORIENTATION ANGLE");
}
