// deck_temperature_test.cpp: constants by temperature, *INITIAL CONDITIONS, *TEMPERATURE, and materials by matrix.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "deck_builder.h"
#include "model/temperatures.h"

using namespace deck_test;

namespace {

// The good deck (line 16: *ELASTIC, 24: *BOUNDARY) with other lines of its cards.
std::string elastic(const std::string& parameters, const std::string& data) {
  std::vector<std::string> lines = GOOD;
  lines[15] = "*ELASTIC" + parameters;
  lines[16] = data;
  return text_of(lines);
}

std::string expansion(const std::string& parameters, const std::string& data) {
  std::vector<std::string> lines = GOOD;
  lines[19] = "*EXPANSION" + parameters;
  lines[20] = data;
  return text_of(lines);
}

std::string initial(const std::string& data, const std::string& step = "") {
  return replaced(24, "*INITIAL CONDITIONS, TYPE=TEMPERATURE\n" + data + "\n*BOUNDARY") + step;
}

std::string a_step(const std::string& flags, const std::string& cards) {
  return "*STEP" + flags + "\n*STATIC\n" + cards + "\n*END STEP\n";
}

constexpr double TOLERANCE = 1e-12;

}  // namespace

TEST(deck_temperature, tables) {
  const solver::material m = read(elastic("", "200., 0.3, 0.\n100., 0.2, 100.\n50., 0.2, 200.")).materials[0];
  ASSERT_EQ(m.elastic_table.size(), 3u);
  EXPECT_EQ(m.E1, 200);
  // Halfway between the first two lines, on a line, and beyond both ends.
  EXPECT_NEAR(solver::value_at(m.elastic_table, 50)[0], 150, TOLERANCE);
  EXPECT_NEAR(solver::value_at(m.elastic_table, 50)[1], 0.25, TOLERANCE);
  EXPECT_EQ(solver::value_at(m.elastic_table, 100)[0], 100);
  EXPECT_EQ(solver::value_at(m.elastic_table, -50)[0], 200);
  EXPECT_EQ(solver::value_at(m.elastic_table, 1e9)[0], 50);
}

TEST(deck_temperature, a_single_line_may_name_its_temperature) {
  const solver::material m = read(elastic("", "2.1E11, 0.3, 20.")).materials[0];
  EXPECT_TRUE(m.elastic_table.empty());
  EXPECT_EQ(m.E1, 2.1e11);
  EXPECT_EQ(read(replaced(19, "7850., 20.")).materials[0].density, 7850);
  EXPECT_EQ(read(replaced(21, "1.2E-5, 20.")).materials[0].alpha1, 1.2e-5);
  EXPECT_EQ(read(elastic(", TYPE=LAMINA", "4., 1., .25, 2., 3., 5., 20.")).materials[0].E1, 4);
}

TEST(deck_temperature, tables_in_error) {
  expect_error(elastic("", "200., 0.3, 100.\n100., 0.3, 100."), 18, "*ELASTIC",
               "the temperatures must rise from line to line");
  expect_error(elastic("", "200., 0.3, 0.\n100., 0.3"), 18, "*ELASTIC",
               "too few fields (2): Young's modulus, Poisson's ratio, temperature");
  expect_error(elastic("", "200., 0.3, 0.\n-100., 0.3, 10."), 18, "*ELASTIC",
               "Young's modulus: '-100.' is not positive");
  expect_error(elastic("", "200., 0.3, warm"), 17, "*ELASTIC", "temperature: 'warm' is not a number");
  expect_error(elastic(", DEPENDENCIES=1", "200., 0.3"), 16, "*ELASTIC",
               "constants that depend on field variables are not supported: give them by temperature");
  expect_error(elastic(", TYPE=LAMINA", "4., 1., .25, 2., 3., 5., 20.\n4., 1., .25, 2., 3., 5., 30."), 18, "*ELASTIC",
               "another data line: constants of a material that is not isotropic are given once, for one temperature");
}

TEST(deck_temperature, expansion_counts_from_zero) {
  const solver::material m = read(expansion(", ZERO=10.", "1.E-5, 0.\n3.E-5, 100.")).materials[0];
  EXPECT_EQ(m.alpha1, 3e-5);
  EXPECT_EQ(m.expansion_zero, 10);
  // alpha(60) 50 - alpha(20) 10 = 2.2e-5 50 - 1.4e-5 10
  EXPECT_NEAR(m.alpha1 * solver::expanding_change(m, 20, 60), 9.6e-4, 1e-15);
  // One coefficient: the strain is that of the change, wherever it counts from.
  EXPECT_EQ(solver::expanding_change(read(text_of(GOOD)).materials[0], 20, 60), 40);
}

TEST(deck_temperature, zero_of_a_constant_coefficient_is_noted) {
  expect_notes(
      replaced(20, "*EXPANSION, ZERO=20."),
      {"plate.inp:20: *EXPANSION: ZERO has no effect: the strain of a constant coefficient is that of the change "
       "of temperature"});
}

TEST(deck_temperature, initial_temperatures_of_nodes_and_sets) {
  const solver::model m = read(initial("ALL, 20.\nFIXED, 30."));
  EXPECT_EQ(m.initial_temperature, (solver::numbered<double>{30, 20, 20, 30}));
  EXPECT_TRUE(read(text_of(GOOD)).initial_temperature.empty());
}

TEST(deck_temperature, changes_count_from_the_initial_temperature) {
  const solver::model m = read(initial("ALL, 20.", a_step("", "*TEMPERATURE\n2, 70., 5.\n3, 20.")));
  const std::vector<solver::nodal_temperature>& given = m.steps.back().temperatures;
  ASSERT_EQ(given.size(), 2u);
  EXPECT_EQ(given[0].change, 50);
  EXPECT_EQ(given[0].gradient, 5);
  EXPECT_EQ(given[1].change, 0);
}

TEST(deck_temperature, a_perturbation_gives_increments) {
  const solver::model m = read(
      initial("ALL, 20.", a_step("", "*TEMPERATURE\nALL, 70.") + a_step(", PERTURBATION", "*TEMPERATURE\nALL, 15.")));
  EXPECT_EQ(m.steps[m.steps.size() - 2].temperatures[0].change, 50);
  EXPECT_EQ(m.steps.back().temperatures[0].change, 15);
}

TEST(deck_temperature, initial_conditions_in_error) {
  const std::string card = "*INITIAL CONDITIONS, TYPE=";
  expect_error(replaced(24, card + "VELOCITY\nALL, 1, 20.\n*BOUNDARY"), 24, "*INITIAL CONDITIONS",
               "TYPE=VELOCITY is not supported, TEMPERATURE is: steps begin without displacements, velocities and "
               "stresses; a state under load is that of a *STATIC step, on which one with PERTURBATION stands");
  expect_error(replaced(24, "*INITIAL CONDITIONS\nALL, 20.\n*BOUNDARY"), 24, "*INITIAL CONDITIONS",
               "the parameter TYPE is missing");
  expect_error(initial("ROOF, 20."), 25, "*INITIAL CONDITIONS", "the node set 'ROOF' is not defined");
  expect_error(initial("ALL, 20., 1."), 25, "*INITIAL CONDITIONS",
               "an initial gradient is not supported: gradients of *TEMPERATURE count from none");
  EXPECT_EQ(read(initial("ALL, 20., 0.")).initial_temperature[0], 20);
  expect_error(initial("ALL"), 25, "*INITIAL CONDITIONS", "too few fields (1): node or set, temperature");
  expect_error(text_of(GOOD) + card + "TEMPERATURE\nALL, 20.\n", static_cast<int>(GOOD.size()) + 1,
               "*INITIAL CONDITIONS", "belongs before the first *STEP");
}

TEST(deck_temperature, yield_stress_of_one_temperature) {
  std::string text = inserted(18, "*PLASTIC\n235., 0., 20.\n250., .01, 20.");
  text.replace(text.find("*STATIC"), 7, "*STATIC, ELASTIC");
  EXPECT_EQ(read(text).materials[0].yield_stress, 235);
  expect_error(inserted(18, "*PLASTIC\n235., 0., 20.\n200., 0., 100."), 20, "*PLASTIC",
               "a yield stress that depends on temperature is not supported: give the lines of one temperature");
}

TEST(deck_temperature, cards_of_a_material_without_effect) {
  expect_notes(
      inserted(18, "*CONDUCTIVITY\n50., 0.\n*DAMPING, ALPHA=.1"),
      {"plate.inp:18: *CONDUCTIVITY: the card has no effect: heat does not flow here: temperatures are those of "
       "*TEMPERATURE",
       "plate.inp:20: *DAMPING: the card has no effect: steps with *STATIC, *BUCKLE and *FREQUENCY are those of "
       "the structure without damping"});
}

// E 2.6, nu 0.3: D1111 = E (1 - nu) / ((1 + nu) (1 - 2 nu)) = 3.5, D1122 = 1.5, D1212 = 1.
TEST(deck_temperature, a_matrix_of_an_isotropic_material) {
  for (const char* data :
       {"3.5, 1.5, 3.5, 1.5, 1.5, 3.5, 1., 1.\n1.", "3.5, 1.5, 3.5, 1.5, 1.5, 3.5, 1., 1.\n1., 20."}) {
    const solver::material m = read(elastic(", TYPE=ORTHO", data)).materials[0];
    EXPECT_TRUE(m.isotropic_in_space);
    EXPECT_NEAR(m.E1, 2.6, TOLERANCE);
    EXPECT_NEAR(m.E2, 2.6, TOLERANCE);
    EXPECT_NEAR(m.NU12, 0.3, TOLERANCE);
    EXPECT_EQ(m.G12, 1);
  }
}

// E1 40, E2 10, E3 20, nu12 0.2, nu13 0.1, nu23 0.05: the inverse of the flexibility 1/40, -0.005, -0.0025; 1/10,
// -0.005; 1/20 has the determinant 1.1125e-4 and the cofactors 4.975e-3, 2.625e-4, 2.75e-4, ...
TEST(deck_temperature, a_matrix_of_an_orthotropic_material) {
  const double det = 0.025 * (0.1 * 0.05 - 0.005 * 0.005) - 0.005 * (0.005 * 0.05 + 0.005 * 0.0025) -
                     0.0025 * (0.005 * 0.005 + 0.1 * 0.0025);
  const std::vector<double> d = {(0.1 * 0.05 - 0.005 * 0.005) / det,     (0.005 * 0.05 + 0.005 * 0.0025) / det,
                                 (0.025 * 0.05 - 0.0025 * 0.0025) / det, (0.005 * 0.005 + 0.1 * 0.0025) / det,
                                 (0.025 * 0.005 + 0.005 * 0.0025) / det, (0.025 * 0.1 - 0.005 * 0.005) / det};
  char ortho[400], aniso[400];
  std::snprintf(ortho, sizeof ortho, "%.17g, %.17g, %.17g, %.17g, %.17g, %.17g, 6., 7.\n8.", d[0], d[1], d[2], d[3],
                d[4], d[5]);
  std::snprintf(aniso, sizeof aniso,
                "%.17g, %.17g, %.17g, %.17g, %.17g, %.17g, 0., 0.\n0., 6., 0., 0., 0., 0., 7., 0.\n0., 0., 0., 0., 8.",
                d[0], d[1], d[2], d[3], d[4], d[5]);
  for (const std::string& deck : {elastic(", TYPE=ORTHO", ortho), elastic(", TYPE=ANISO", aniso)}) {
    const solver::material m = read(deck).materials[0];
    EXPECT_TRUE(m.orthotropic);
    EXPECT_FALSE(m.isotropic_in_space);
    EXPECT_NEAR(m.E1, 40, 1e-11);
    EXPECT_NEAR(m.E2, 10, 1e-11);
    EXPECT_NEAR(m.NU12, 0.2, 1e-12);
    EXPECT_EQ(m.G12, 6);
    EXPECT_EQ(m.G13, 7);
    EXPECT_EQ(m.G23, 8);
  }
}

TEST(deck_temperature, matrices_in_error) {
  expect_error(elastic(", TYPE=ORTHO", "3.5, 1.5, 3.5, 1.5, 1.5, 3.5, 1., 1."), 17, "*ELASTIC",
               "too few fields (8): D1111, D1122, D2222, D1133, D2233, D3333, D1212, D1313, D2323");
  // A material that swells when it is pressed: D1122 above D1111.
  expect_error(elastic(", TYPE=ORTHO", "1., 1.5, 1., .1, .1, 1., 1., 1.\n1."), 18, "*ELASTIC",
               "the constants give some strain no positive energy; look at their order");
  expect_error(
      elastic(", TYPE=ANISO",
              "3.5, 1.5, 3.5, 1.5, 1.5, 3.5, .1, 0.\n0., 1., 0., 0., 0., 0., 1., 0.\n0., 0., 0., 0., 1."),
      19, "*ELASTIC",
      "D1112 is not 0: the material is not orthotropic in its axes 1, 2, 3, and sections hold no other; where it is in "
      "other axes, give its constants in those and turn them by an *ORIENTATION");
}

TEST(deck_temperature, solids_and_members_take_isotropic_constants) {
  const std::string sentence =
      " take Young's modulus and Poisson's ratio (*ELASTIC without TYPE), or constants that are those of an isotropic "
      "material";
  const auto deck = [](const std::string& constants, const std::string& type, const std::string& section) {
    return "*NODE\n1, 0, 0, 0\n2, 1, 0, 0\n3, 0, 1, 0\n4, 0, 0, 1\n*MATERIAL, NAME=M\n*ELASTIC, TYPE=ORTHO\n" +
           constants + "\n*ELEMENT, TYPE=" + type + ", ELSET=E\n" + section +
           "\n*BOUNDARY\n1, 1, 3\n2, 1, 3\n3, 1, 3\n*STEP\n*STATIC\n*CLOAD\n2, 1, 1.\n*END STEP\n";
  };
  const std::string isotropic = "3.5, 1.5, 3.5, 1.5, 1.5, 3.5, 1., 1.\n1.";
  const std::string wood = "3.5, 1.5, 3.5, 1.5, 1.5, 3.5, 1., 1.\n1.1";
  const std::string brick = "1, 1, 2, 3, 4\n*SOLID SECTION, ELSET=E, MATERIAL=M";
  const std::string bar = "1, 1, 2\n*SOLID SECTION, ELSET=E, MATERIAL=M\n1.";
  EXPECT_EQ(read(deck(isotropic, "C3D4", brick)).materials.size(), 1u);
  EXPECT_EQ(read(deck(isotropic, "T3D2", bar)).materials.size(), 1u);
  expect_error(deck(wood, "C3D4", brick), 12, "*SOLID SECTION", "the material 'M' is not isotropic: solids" + sentence);
  expect_error(deck(wood, "T3D2", bar), 12, "*SOLID SECTION", "the material 'M' is not isotropic: members" + sentence);
}
