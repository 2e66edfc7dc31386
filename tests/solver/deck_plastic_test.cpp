// deck_plastic_test.cpp: the cards of plates that yield: what they mean, and every way in which they can be wrong.
#include <gtest/gtest.h>

#include "deck_builder.h"

using namespace deck_test;

namespace {

// The good plate of steel that yields (*PLASTIC in line 18) and a step to collapse (line 29); no temperatures.
std::vector<std::string> good() {
  std::vector<std::string> lines = GOOD;
  lines.erase(lines.begin() + 32, lines.begin() + 34);
  lines[26] = "*ELASTOPLASTIC, NODE=3, DOF=3";
  lines.insert(lines.begin() + 17, {"*PLASTIC", "2.35E8, 0."});
  return lines;
}

std::string with(int n, const std::string& line) {
  std::vector<std::string> lines = good();
  lines.at(static_cast<std::size_t>(n - 1)) = line;
  return text_of(lines);
}

}  // namespace

TEST(deck_plastic, material_section_and_step_are_read) {
  const solver::model m = read(with(29, "*ELASTOPLASTIC, NODE=3, DOF=3\n2.5, 12, 0.1"));
  EXPECT_EQ(m.materials[0].yield_stress, 2.35e8);
  EXPECT_EQ(m.materials[0].plastic_modulus, 0);
  EXPECT_EQ(m.shell_sections[0].yielding, solver::plate_model::SECTION);
  EXPECT_EQ(m.steps[0].kind, solver::step_kind::ELASTOPLASTIC);
  EXPECT_EQ(m.steps[0].elastoplastic.node, 2);
  EXPECT_EQ(m.steps[0].elastoplastic.dof, 3);
  EXPECT_EQ(m.steps[0].elastoplastic.largest_factor, 2.5);
  EXPECT_EQ(m.steps[0].elastoplastic.largest_increments, 12);
  EXPECT_EQ(m.steps[0].elastoplastic.increment, 0.1);
  EXPECT_FALSE(m.steps[0].elastoplastic.goes_on);
}

TEST(deck_plastic, hardening) {
  EXPECT_DOUBLE_EQ(read(with(19, "2.35E8, 0.\n2.45E8, 0.005")).materials[0].plastic_modulus, 2e9);
  EXPECT_EQ(read(with(19, "2.35E8")).materials[0].plastic_modulus, 0);
  expect_error(with(19, "0., 0."), 19, "*PLASTIC", "yield stress: '0.' is not positive");
  expect_error(with(19, "2.35E8, 0.1"), 19, "*PLASTIC", "the plastic strain of the first line is 0");
  expect_error(with(19, "2.35E8, 0., 20., 1."), 19, "*PLASTIC",
               "too many fields (4): yield stress, plastic strain, temperature");
  expect_error(with(19, "2.35E8, 0.\n2.2E8, 0.1"), 20, "*PLASTIC",
               "a yield stress that falls (softening) is not supported");
  expect_error(with(19, "2.35E8, 0.\n2.4E8, 0."), 20, "*PLASTIC", "plastic strain: '0.' is not positive");
  expect_error(with(19, "2.35E8, 0.\n2.4E8, 0.1\n2.5E8, 0.2"), 21, "*PLASTIC",
               "a third line: hardening is linear, two lines give it");
  expect_error(with(19, "2.35E8, 0.\n*PLASTIC\n2.35E8, 0."), 20, "*PLASTIC", "the material has a *PLASTIC already");
}

TEST(deck_plastic, isotropic_shells_alone_yield) {
  std::vector<std::string> lamina = good();
  lamina[15] = "*ELASTIC, TYPE=LAMINA";
  lamina[16] = "2.1E11, 2.1E11, 0.3, 8.E10, 8.E10, 8.E10";
  expect_error(text_of(lamina), 15, "*MATERIAL", "the material 'STEEL' has *PLASTIC: it must be isotropic");
  std::vector<std::string> membrane = good();
  membrane[7] = "*ELEMENT, TYPE=M3D3, ELSET=SKIN";
  membrane[23] = "*MEMBRANE SECTION, ELSET=SKIN, MATERIAL=STEEL";
  expect_error(text_of(membrane), 24, "*MEMBRANE SECTION",
               "membranes do not yield: give element 1 a material without *PLASTIC");
  std::vector<std::string> elastic = good();
  elastic.erase(elastic.begin() + 17, elastic.begin() + 19);
  expect_error(text_of(elastic), 26, "*STEP", "a step with *ELASTOPLASTIC needs shells of a material with *PLASTIC");
}

TEST(deck_plastic, models) {
  const std::string section = "*SHELL SECTION, ELSET=SKIN, MATERIAL=STEEL, ";
  const solver::model m = read(with(24, section + "MODEL=Layered, POINTS=7"));
  EXPECT_EQ(m.shell_sections[0].yielding, solver::plate_model::LAYERED);
  EXPECT_EQ(m.shell_sections[0].thickness_points, 7);
  EXPECT_EQ(read(with(24, section + "MODEL=LAYERED")).shell_sections[0].thickness_points, 5);
  expect_error(with(24, section + "MODEL=ROUND"), 24, "*SHELL SECTION", "MODEL is SECTION or LAYERED, not 'ROUND'");
  expect_error(with(24, section + "POINTS=5"), 24, "*SHELL SECTION", "POINTS belongs to MODEL=LAYERED");
  for (const char* const points : {"4", "1", "17", "x", "-5"})
    expect_error(with(24, section + "MODEL=LAYERED, POINTS=" + points), 24, "*SHELL SECTION",
                 "POINTS: '" + std::string(points) + "' is not 3, 5, 7, 9, 11, 13 or 15");
}

TEST(deck_plastic, steps) {
  expect_error(with(29, "*ELASTOPLASTIC\n0."), 30, "*ELASTOPLASTIC", "largest load factor: '0.' is not positive");
  expect_error(with(29, "*ELASTOPLASTIC\n1., 0"), 30, "*ELASTOPLASTIC",
               "largest number of increments: '0' is not a number from 1");
  expect_error(with(29, "*ELASTOPLASTIC, NODE=9, DOF=3"), 29, "*ELASTOPLASTIC", "node 9 is not defined");
  expect_error(with(29, "*ELASTOPLASTIC, NODE=3, DOF=7"), 29, "*ELASTOPLASTIC",
               "the degree of freedom 7 is not one of 1 to 6");
  expect_error(with(27, "FIXED, 1, 6, 0.1"), 27, "*BOUNDARY",
               "a prescribed displacement other than 0 in a step with *ELASTOPLASTIC");
  expect_error(with(34, "SKIN, GRAV, 9.81, 0., 0., -2.\n*TEMPERATURE\nALL, 20., 5."), 36, "*TEMPERATURE",
               "temperatures are not supported in a step with *ELASTOPLASTIC");
  expect_error(with(28, "*STEP, PDELTA"), 29, "*ELASTOPLASTIC", "PDELTA belongs to a step with *STATIC or *PUSHOVER");
  expect_error(with(29, "*ELASTOPLASTIC, CONTINUE\n1."), 28, "*STEP",
               "CONTINUE needs a step with *ELASTOPLASTIC right before");
  std::vector<std::string> empty = good();
  empty.erase(empty.begin() + 29, empty.begin() + 34);
  expect_error(text_of(empty), 28, "*STEP", "the step with *ELASTOPLASTIC has no loads");
}

TEST(deck_plastic, a_step_that_goes_on_has_an_end) {
  expect_error(text_of(good()) + "*STEP\n*ELASTOPLASTIC, CONTINUE\n*CLOAD\n3, 3, 1.\n*END STEP\n", 36, "*STEP",
               "CONTINUE with *ELASTOPLASTIC needs a largest load factor");
}
