// Constants by temperature, initial temperatures and heated solids, against closed forms.
#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "run_support.h"

using namespace run_test;

namespace {

// Cards without the end of their last line.
std::string step(const std::string& flags, const std::string& cards) { return run_test::a_step(flags, cards + "\n"); }

// A bar of length 2 and area 3 on supports; its ends are nodes 1 and 2.
std::string bar(const std::string& material, const std::string& steps) {
  return "*NODE, NSET=ALL\n1, 0, 0, 0\n2, 2, 0, 0\n*ELEMENT, TYPE=T3D2, ELSET=BAR\n1, 1, 2\n*MATERIAL, NAME=M\n" +
         material + "\n*SOLID SECTION, ELSET=BAR, MATERIAL=M\n3.\n*BOUNDARY\n1, 1, 3\n2, 2, 3\n" + steps;
}

const std::string SOFTENING = "*ELASTIC\n200., 0.3, 0.\n100., 0.3, 100.";

// A beam across, clamped at node 1; depth and width 1, so I = 1/12.
std::string beam(const std::string& type, const std::string& material, const std::string& steps) {
  return "*NODE, NSET=ALL\n1, 0, 0, 0\n2, 5, 0, 0\n*ELEMENT, TYPE=" + type +
         ", ELSET=BEAM\n1, 1, 2\n*MATERIAL, NAME=M\n" + material +
         "\n*BEAM SECTION, SECTION=RECT, ELSET=BEAM, MATERIAL=M\n1., 1.\n*BOUNDARY\n1, 1, 6\n" + steps;
}

}  // namespace

TEST(AnalysisByTemperature, EachStepHasTheModulusOfItsTemperature) {
  const ran r = run(bar(SOFTENING, step("", "*STATIC\n*CLOAD\n2, 1, 6.") +
                                       step("", "*STATIC\n*CLOAD\n2, 1, 6.\n*TEMPERATURE\nALL, 50.") +
                                       step("", "*STATIC\n*CLOAD\n2, 1, 6.\n*TEMPERATURE\nALL, 400.") +
                                       step("", "*STATIC\n*CLOAD\n2, 1, 6.")));
  // F L / (A E): 4 / E
  EXPECT_WITHIN(r.u(1, 2, 'x'), 4.0 / 200, 1, 1e-12);
  EXPECT_WITHIN(r.u(2, 2, 'x'), 4.0 / 150, 1, 1e-12);
  EXPECT_WITHIN(r.u(3, 2, 'x'), 4.0 / 100, 1, 1e-12);
  EXPECT_WITHIN(r.u(4, 2, 'x'), 4.0 / 200, 1, 1e-12);
}

TEST(AnalysisByTemperature, TheMeanOfTheNodesCounts) {
  const ran r = run(bar(SOFTENING, step("", "*STATIC\n*CLOAD\n2, 1, 6.\n*TEMPERATURE\n1, 20.\n2, 80.")));
  EXPECT_WITHIN(r.u(1, 2, 'x'), 4.0 / 150, 1, 1e-12);
}

TEST(AnalysisByTemperature, InitialTemperaturesChooseTheModulus) {
  const std::string initial = "*INITIAL CONDITIONS, TYPE=TEMPERATURE\nALL, 25.\n";
  const ran r = run(bar(SOFTENING, initial + step("", "*STATIC\n*CLOAD\n2, 1, 6.")));
  EXPECT_WITHIN(r.u(1, 2, 'x'), 4.0 / 175, 1, 1e-12);
}

TEST(AnalysisByTemperature, SmallMotionsHaveTheConstantsOfTheirState) {
  // A beam of E 175 in the unloaded state and of E 100 about the heated one, and a mass that does not change:
  // omega^2 is proportional to E.
  const std::string material = SOFTENING + "\n*DENSITY\n2., 25.\n1., 30.";
  const ran r = run(beam("B33", material,
                         "*INITIAL CONDITIONS, TYPE=TEMPERATURE\nALL, 25.\n" + step("", "*FREQUENCY\n2") +
                             step("", "*STATIC\n*TEMPERATURE\nALL, 100.\n*CLOAD\n2, 2, 1e-9") +
                             step(", PERTURBATION", "*FREQUENCY\n2")));
  EXPECT_WITHIN(r.modes(3)[0] / r.modes(1)[0], std::sqrt(100.0 / 175), 1, 1e-9);
}

TEST(AnalysisByTemperature, ShearDeformationFollowsTheModulus) {
  // Bending and shear are both proportional to 1 / E where Poisson's ratio stays.
  const std::string load = "*STATIC\n*CLOAD\n2, 2, 1.";
  const ran r = run(beam("B31", SOFTENING, step("", load) + step("", load + "\n*TEMPERATURE\nALL, 60.")));
  EXPECT_WITHIN(r.u(2, 2, 'y') / r.u(1, 2, 'y'), 200.0 / 140, 1, 1e-12);
}

TEST(AnalysisByTemperature, AGivenShearStiffnessStays) {
  // P L^3 / (3 E I) + P L / K: only the first part follows the modulus, 200 and 140. I = 2, K = 25.
  const std::string load = "*STATIC\n*CLOAD\n2, 2, 1.";
  const ran r = run(
      "*NODE, NSET=ALL\n1, 0, 0, 0\n2, 5, 0, 0\n*ELEMENT, TYPE=B31, ELSET=BEAM\n1, 1, 2\n*MATERIAL, NAME=M\n" +
      SOFTENING +
      "\n*BEAM GENERAL SECTION, ELSET=BEAM, MATERIAL=M\n3., 2., 0., 2., 1.\n0., 1., 0.\n*TRANSVERSE SHEAR STIFFNESS\n"
      "25., 25.\n*BOUNDARY\n1, 1, 6\n" +
      step("", load) + step("", load + "\n*TEMPERATURE\nALL, 60."));
  EXPECT_WITHIN(r.u(1, 2, 'y'), 125.0 / (3 * 200 * 2) + 5.0 / 25, 1, 1e-12);
  EXPECT_WITHIN(r.u(2, 2, 'y'), 125.0 / (3 * 140 * 2) + 5.0 / 25, 1, 1e-12);
}

TEST(AnalysisByTemperature, SectionsOfDifferentKindsDoNotMix) {
  // A sheet of 2 by 1 and thickness 0.5 and a bar of area 3, both of the first section of their kind and of one
  // material: F L / (A E), E = 140. Poisson's ratio is 0, so that the sheet is in uniaxial tension everywhere.
  const ran r = run(
      "*NODE, NSET=ALL\n1, 0, 0, 0\n2, 2, 0, 0\n3, 2, 1, 0\n4, 0, 1, 0\n5, 0, 5, 0\n6, 2, 5, 0\n*ELEMENT, TYPE=M3D4, "
      "ELSET=SHEET\n1, 1, 2, 3, 4\n*ELEMENT, TYPE=T3D2, ELSET=BAR\n2, 5, 6\n*MATERIAL, NAME=M\n*ELASTIC\n200., 0., 0.\n"
      "100., 0., 100.\n*MEMBRANE SECTION, ELSET=SHEET, MATERIAL=M\n0.5\n*SOLID SECTION, ELSET=BAR, MATERIAL=M\n3.\n"
      "*BOUNDARY\nALL, 2, 3\n1, 1\n4, 1\n5, 1\n" +
      step("", "*STATIC\n*TEMPERATURE\nALL, 60.\n*CLOAD\n2, 1, 1.\n3, 1, 1.\n6, 1, 3."));
  EXPECT_WITHIN(r.u(1, 2, 'x'), 2.0 * 2 / (0.5 * 140), 1, 1e-12);
  EXPECT_WITHIN(r.u(1, 6, 'x'), 3.0 * 2 / (3 * 140), 1, 1e-12);
}

TEST(AnalysisByTemperature, TheCoefficientOfExpansionCountsFromZero) {
  const std::string material = "*ELASTIC\n100., 0.3\n*EXPANSION, ZERO=10.\n1.E-5, 0.\n3.E-5, 100.";
  const std::string initial = "*INITIAL CONDITIONS, TYPE=TEMPERATURE\nALL, 20.\n";
  const ran r = run(bar(material, initial + step("", "*STATIC\n*TEMPERATURE\nALL, 60.") +
                                      step("", "*STATIC\n*BOUNDARY\n2, 1\n*TEMPERATURE\nALL, 60.") +
                                      step(", PERTURBATION", "*STATIC\n*TEMPERATURE\nALL, 40.")));
  // alpha(60) 50 - alpha(20) 10 = 2.2e-5 50 - 1.4e-5 10 = 9.6e-4
  EXPECT_WITHIN(r.u(1, 2, 'x'), 9.6e-4 * 2, 1e-3, 1e-12);
  EXPECT_WITHIN(r.force(2, 1, 2, "force_x"), -100 * 3 * 9.6e-4, 1, 1e-12);
  // From 60 to 100: 3e-5 90 - 2.2e-5 50 = 1.6e-3; the node stays where the state before has held it.
  EXPECT_WITHIN(r.force(3, 1, 2, "force_x"), -100 * 3 * 1.6e-3, 1, 1e-12);
}

TEST(AnalysisByTemperature, AShellUnderAGradient) {
  // Clamped all round: M = -D (1 + nu) times the curvature of free bending. At the top 60 degrees, at the bottom 20.
  const double E = 100, nu = 0.25, h = 0.5, zero = 10;
  const auto alpha = [](double t) { return 1e-5 + 2e-7 * t; };
  const auto strain = [&](double t) { return alpha(t) * (t - zero); };
  const double curvature = (strain(60) - strain(20)) / h;
  const std::string deck =
      "*NODE, NSET=ALL\n1, 0, 0, 0\n2, 2, 0, 0\n3, 2, 1, 0\n4, 0, 1, 0\n*ELEMENT, TYPE=S4, ELSET=SKIN\n1, 1, 2, 3, 4\n"
      "*MATERIAL, NAME=M\n*ELASTIC\n100., 0.25\n*EXPANSION, ZERO=10.\n1.E-5, 0.\n3.E-5, 100.\n"
      "*SHELL SECTION, ELSET=SKIN, MATERIAL=M, FORMULATION=THIN\n0.5\n*BOUNDARY\nALL, 1, 6\n" +
      step("", "*STATIC\n*TEMPERATURE\nALL, 40., 80.");
  const ran r = run(deck);
  const double D = E * h * h * h / (12 * (1 - nu * nu));
  // The moments of the edges balance M: at node 1 along its side of length 2 half of M times 2, about x.
  const double held = std::abs(r.steps[0].rows[0].at(13));
  EXPECT_WITHIN(held, D * (1 + nu) * curvature, D, 1e-9);
}

TEST(AnalysisByTemperature, AHeatedSolidOfUnevenElements) {
  // Two wedges and a brick over a folded base, free: no stress, and every node moves by alpha dT times its place.
  const std::string deck =
      "*NODE, NSET=ALL\n1, 0, 0, 0\n2, 2, 0, 0\n3, 2, 1, 0\n4, 0, 1, 0\n5, 0, 0, 1\n6, 2.2, 0.1, 1.3\n7, 1.9, 1, 1\n"
      "8, 0, 1.2, 1\n9, 0, 0, 2\n10, 2, 0, 2.5\n11, 2, 1, 2\n12, 0, 1, 2\n"
      "*ELEMENT, TYPE=C3D8, ELSET=SOLID\n1, 1, 2, 3, 4, 5, 6, 7, 8\n"
      "*ELEMENT, TYPE=C3D6, ELSET=SOLID\n2, 5, 6, 7, 9, 10, 11\n3, 5, 7, 8, 9, 11, 12\n"
      "*MATERIAL, NAME=M\n*ELASTIC\n1000., 0.3\n*EXPANSION\n1.E-4\n*SOLID SECTION, ELSET=SOLID, MATERIAL=M\n"
      "*BOUNDARY\n1, 1, 3\n2, 2, 3\n4, 3\n" +
      step("", "*STATIC\n*TEMPERATURE\nALL, 30.");
  const ran r = run(deck);
  EXPECT_WITHIN(r.u(1, 11, 'x'), 3e-3 * 2, 1e-2, 1e-9);
  EXPECT_WITHIN(r.u(1, 11, 'y'), 3e-3 * 1, 1e-2, 1e-9);
  EXPECT_WITHIN(r.u(1, 6, 'z'), 3e-3 * 1.3, 1e-2, 1e-9);
  EXPECT_WITHIN(r.u(1, 10, 'z'), 3e-3 * 2.5, 1e-2, 1e-9);
}

TEST(AnalysisByTemperature, ABlockOfTetrahedraInARigidBox) {
  // sigma = -E alpha dT / (1 - 2 nu), and the reaction on a side is sigma times its area.
  const std::string deck =
      "*NODE, NSET=ALL\n1, 0, 0, 0\n2, 1, 0, 0\n3, 1, 1, 0\n4, 0, 1, 0\n5, 0, 0, 1\n6, 1, 0, 1\n7, 1, 1, 1\n8, 0, 1, "
      "1\n"
      "*ELEMENT, TYPE=C3D4, ELSET=SOLID\n1, 1, 2, 3, 6\n2, 1, 3, 4, 8\n3, 1, 6, 8, 5\n4, 3, 8, 6, 7\n5, 1, 3, 8, 6\n"
      "*MATERIAL, NAME=M\n*ELASTIC\n1000., 0.25\n*EXPANSION\n1.E-4\n*SOLID SECTION, ELSET=SOLID, MATERIAL=M\n"
      "*BOUNDARY\nALL, 1, 3\n" +
      step("", "*STATIC\n*TEMPERATURE\nALL, 20.");
  const ran r = run(deck);
  double side = 0;
  for (const auto& row : r.steps[0].rows) {
    if (row.at(1) == 1) side += row.at(10);  // x and force_x
  }
  EXPECT_WITHIN(side, -1000 * 1e-4 * 20 / (1 - 0.5), 4, 1e-12);
}

TEST(AnalysisByTemperature, APathDoesNotGoOnWithOtherConstants) {
  const std::string portal =
      "*NODE, NSET=ALL\n1, 0, 0, 0\n2, 0, 0, 3\n*ELEMENT, TYPE=B33, ELSET=POST\n1, 1, 2\n*MATERIAL, NAME=M\n" +
      SOFTENING +
      "\n*BEAM GENERAL SECTION, SECTION=GENERAL, ELSET=POST, MATERIAL=M\n1., 1., 0., 1., 1.\n1., 0., 0.\n"
      "*PLASTIC HINGE, ELSET=POST, CURVE=SINGLE, FORCES=M1\n10., 10., 10.\n*BOUNDARY\n1, 1, 6\n2, 2\n";
  const std::string error = run_error(portal + step("", "*PUSHOVER\n0.5\n*CLOAD\n2, 1, 1.") +
                                      step("", "*PUSHOVER, CONTINUE\n0.5\n*CLOAD\n2, 1, 1.\n*TEMPERATURE\nALL, 50."));
  EXPECT_NE(error.find("the temperatures of this step give it other constants"), std::string::npos) << error;
}
