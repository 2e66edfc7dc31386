// analysis_shear_test.cpp: shells and beams deform in shear unless the deck says otherwise.
#include <gtest/gtest.h>

#include <cmath>

#include "finites/fields.h"
#include "frame_decks.h"
#include "shell_decks.h"

namespace {

using analysis_test::point;
using analysis_test::solved;

constexpr double E = 2e5, NU = 0.3, G = E / (2 * (1 + NU)), LENGTH = 10, FORCE = 7;

// A cantilever of one element along x, n1 along y, with a force along y and one along z at its tip.
std::string cantilever(const std::string& type, const std::string& section) {
  return "*NODE\n1, 0, 0, 0\n2, 10, 0, 0\n*ELEMENT, TYPE=" + type +
         ", ELSET=B\n1, 1, 2\n*MATERIAL, NAME=M\n*ELASTIC\n2E5, 0.3\n" + section +
         "*BOUNDARY\n1, ENCASTRE\n*STEP\n*STATIC\n*CLOAD\n2, 2, 7\n2, 3, 7\n*END STEP\n";
}

std::string shape(const std::string& form, const std::string& data, const std::string& more = "") {
  return "*BEAM SECTION, ELSET=B, MATERIAL=M, SECTION=" + form + "\n" + data + "\n0, 1, 0\n" + more;
}

const char* const GENERAL = "*BEAM GENERAL SECTION, ELSET=B, MATERIAL=M\n12, 16, 0, 9, 20\n0, 1, 0\n";

// P L^3 / 3 E I + P L / kappa G A of Timoshenko's cantilever; a shear area of 0 stands for a slender one.
double tip(double inertia, double shear_area) {
  const double shear = shear_area > 0 ? FORCE * LENGTH / (G * shear_area) : 0;
  return FORCE * LENGTH * LENGTH * LENGTH / (3 * E * inertia) + shear;
}

// I22 belongs to the deflection along y, which is axis 1, and I11 to that along z, which is axis 2.
void expect_tip(const std::string& deck, double I11, double I22, double shear_area_1, double shear_area_2) {
  const solved s = analysis_test::solve(frame_test::read(deck));
  const double v = tip(I22, shear_area_1), w = tip(I11, shear_area_2);
  EXPECT_WITHIN(s.u(1, 'y'), v, v, 1e-11);
  EXPECT_WITHIN(s.u(1, 'z'), w, w, 1e-11);
}

std::string without(std::string text, const std::string& part) {
  const std::size_t at = text.find(part);
  EXPECT_NE(at, std::string::npos) << part;
  return text.erase(at, part.size());
}

// A strip that bends to a cylinder: nu is 0, so that it is a beam of rectangular section.
shell_test::sheet strip(shell_test::cells kind, const std::string& formulation, double thickness) {
  shell_test::sheet s;
  s.n = 8;
  s.kind = kind;
  s.formulation = formulation;
  s.nu = 0;
  s.thickness = thickness;
  s.place = [](double u, double v) { return point{u, v / 2, 0}; };
  return s;
}

std::string clamped(const shell_test::sheet& s) {
  return s.deck("LEFT, ENCASTRE\n", "*STATIC\n*CLOAD\n" + shell_test::line_load(s, 1, 3, 1));
}

constexpr shell_test::cells KINDS[] = {shell_test::cells::TRIANGLES, shell_test::cells::QUADS};

}  // namespace

TEST(AnalysisShear, AThickCantileverPlateDeflectsByShearToo) {
  // Length 1, width 1/2, thickness 0.3: P L^3 / 3 E I + P L / (5/6 G A); with nu = 0, G = E / 2, the shear adds
  // 0.6 (t / L)^2 = 5.4 per cent.
  const double bending = 1 / (3 * 2e5 * 0.5 * 0.027 / 12), shear = 1 / (5.0 / 6 * 1e5 * 0.5 * 0.3);
  ASSERT_NEAR(shear / bending, 0.054, 1e-12);
  for (const auto kind : KINDS) {
    const shell_test::sheet s = strip(kind, "THICK", 0.3);
    const solved by_default = analysis_test::solve(shell_test::read(without(clamped(s), ", FORMULATION=THICK")));
    EXPECT_WITHIN(by_default.u(s.node(s.n, s.n / 2), 'z'), bending + shear, bending, 5e-3) << shell_test::name_of(s);
    const solved thin = analysis_test::solve(shell_test::read(clamped(strip(kind, "THIN", 0.3))));
    EXPECT_WITHIN(thin.u(s.node(s.n, s.n / 2), 'z'), bending, bending, 5e-3) << shell_test::name_of(s);
  }
}

TEST(AnalysisShear, ShellsWithoutAFormulationAreThickToTheLastBit) {
  for (const auto kind : KINDS) {
    const std::string deck = clamped(strip(kind, "THICK", 0.05));
    const solved named = analysis_test::solve(shell_test::read(deck));
    const solved by_default = analysis_test::solve(shell_test::read(without(deck, ", FORMULATION=THICK")));
    EXPECT_EQ(named.solution.displacement, by_default.solution.displacement);
  }
}

// The shear areas by Cowper's formulas, worked out with nu = 0.3; a test of the shapes themselves holds the
// coefficients against his flexure problem.
TEST(AnalysisShear, ARectangle) {
  const double k = 13 / 15.3;  // 10 (1 + nu) / (12 + 11 nu)
  expect_tip(cantilever("B31", shape("RECT", "2, 3")), 2 * 27 / 12.0, 3 * 8 / 12.0, k * 6, k * 6);
}

TEST(AnalysisShear, ACircleByItsRadiusAndByItsDiameters) {
  const double pi = std::acos(-1.0), k = 7.8 / 8.8;  // 6 (1 + nu) / (7 + 6 nu)
  const double I = pi * 16 / 4, A = pi * 4;
  expect_tip(cantilever("B31", shape("CIRC", "2")), I, I, k * A, k * A);
  expect_tip(cantilever("B31", shape("CIRC", "4, 4")), I, I, k * A, k * A);
}

TEST(AnalysisShear, AnEllipseIsStifferInShearAlongItsLongAxis) {
  // Half axes 1 along axis 1, 2 along axis 2.
  const double pi = std::acos(-1.0), A = 2 * pi;
  const double k1 = 15.6 * (3 + 4) / (51.1 + 19 * 4 + 0.3 * 16), k2 = 15.6 * 4 * (12 + 1) / (51.1 * 16 + 19 * 4 + 0.3);
  ASSERT_GT(k2, k1);
  expect_tip(cantilever("B31", shape("CIRC", "2, 4")), pi * 8 / 4, pi * 2 / 4, k1 * A, k2 * A);
}

TEST(AnalysisShear, APipe) {
  // Radii 2 and 1: m = 1/2, (1 + m^2)^2 = 25/16.
  const double pi = std::acos(-1.0), I = pi / 4 * 15, A = 3 * pi;
  const double k = 7.8 * 25 / 16 / (8.8 * 25 / 16 + 23.6 / 4);
  expect_tip(cantilever("B31", shape("PIPE", "2, 1")), I, I, k * A, k * A);
}

TEST(AnalysisShear, ABox) {
  // Middle lines 2 by 4, walls 0.1 at the ends of axis 1 and 0.2 at those of axis 2. Along axis 2: m = 2 * 0.2 / (4 *
  // 0.1) = 1, n = 1/2; along axis 1 m = 1, n = 2.
  const double A = 2 * (2.1 * 0.2 + 3.8 * 0.1), webs = 324 + 0.3 * 302;
  const double k2 = 208 / (webs + 2.5 * 6.3), k1 = 208 / (webs + 40 * 6.3);
  const double I11 = (2.1 * std::pow(4.2, 3) - 1.9 * std::pow(3.8, 3)) / 12;
  const double I22 = (4.2 * std::pow(2.1, 3) - 3.8 * std::pow(1.9, 3)) / 12;
  expect_tip(cantilever("B31", shape("BOX", "2.1, 4.2, 0.1, 0.2, 0.1, 0.2")), I11, I22, k1 * A, k2 * A);
}

TEST(AnalysisShear, AWideFlange) {
  // Depth of the middle lines 4, flanges 2 by 0.2, web 0.1: m = 2 * 2 * 0.2 / (4 * 0.1) = 2, n = 1/2. Along axis 1 the
  // flanges are two rectangles.
  const double flanges = 2 * 2 * 0.2, A = flanges + 3.8 * 0.1;
  const double below = 12 + 144 + 600 + 720 + 0.3 * (11 + 132 + 540 + 720) + 0.25 * (30 * 6 + 1.5 * (16 + 36));
  const double k2 = 13 * 49 / below, k_rectangle = 13 / 15.3;
  const double I11 = (2 * std::pow(4.2, 3) - 1.9 * std::pow(3.8, 3)) / 12, I22 = (0.4 * 8 + 3.8 * 0.001) / 12;
  expect_tip(cantilever("B31", shape("I", "2.1, 4.2, 2, 2, 0.2, 0.2, 0.1")), I11, I22, k_rectangle * flanges, k2 * A);
}

TEST(AnalysisShear, GivenShearStiffnessWinsOverThatOfTheShape) {
  // K23 belongs to the force along axis 2, K13 to that along axis 1.
  const std::string given = "*TRANSVERSE SHEAR STIFFNESS\n1E5, 4E5\n";
  expect_tip(cantilever("B31", shape("RECT", "2, 3", given)), 4.5, 2, 4e5 / G, 1e5 / G);
  expect_tip(cantilever("B31", GENERAL + given), 16, 9, 4e5 / G, 1e5 / G);
}

TEST(AnalysisShear, B33IsSlenderWhateverItsSection) {
  expect_tip(cantilever("B33", shape("RECT", "2, 3")), 4.5, 2, 0, 0);
  expect_tip(cantilever("B33", GENERAL), 16, 9, 0, 0);
  const std::string given = cantilever("B33", shape("RECT", "2, 3", "*TRANSVERSE SHEAR STIFFNESS\n1E5, 4E5\n"));
  expect_tip(given, 4.5, 2, 0, 0);
  const solver::model m = frame_test::read(given);
  ASSERT_EQ(m.notes.size(), 1U);
  EXPECT_NE(m.notes[0].find("*TRANSVERSE SHEAR STIFFNESS has no effect on the elements B33 of the set B"),
            std::string::npos);
  EXPECT_TRUE(frame_test::read(cantilever("B33", GENERAL)).notes.empty());
  EXPECT_TRUE(frame_test::read(cantilever("B31", shape("RECT", "2, 3"))).notes.empty());
}

TEST(AnalysisShear, AGeneralSectionWithoutShearStiffnessIsNoted) {
  const std::string deck = cantilever("B31", GENERAL);
  expect_tip(deck, 16, 9, 0, 0);
  const solver::model m = frame_test::read(deck);
  ASSERT_EQ(m.notes.size(), 1U);
  EXPECT_NE(m.notes[0].find("the elements B31 of the set B count no shear deformation"), std::string::npos);
}

TEST(AnalysisShear, OneSectionServesBothTypes) {
  // Element 1 is a B31, element 2 a B33, both of the set B.
  const std::string deck =
      "*NODE\n1, 0, 0, 0\n2, 10, 0, 0\n3, 0, 50, 0\n4, 10, 50, 0\n*ELEMENT, TYPE=B31, ELSET=B\n1, 1, 2\n"
      "*ELEMENT, TYPE=B33, ELSET=B\n2, 3, 4\n*MATERIAL, NAME=M\n*ELASTIC\n2E5, 0.3\n" +
      shape("RECT", "2, 3") +
      "*BOUNDARY\n1, ENCASTRE\n3, ENCASTRE\n*STEP\n*STATIC\n*CLOAD\n2, 3, 7\n4, 3, 7\n*END STEP\n";
  const solved s = analysis_test::solve(frame_test::read(deck));
  const double k = 13 / 15.3;
  EXPECT_WITHIN(s.u(1, 'z'), tip(4.5, 6 * k), 1e-2, 1e-11);
  EXPECT_WITHIN(s.u(3, 'z'), tip(4.5, 0), 1e-2, 1e-11);
  EXPECT_GT(s.u(1, 'z') / s.u(3, 'z'), 1.02);
}

TEST(AnalysisShear, FrequenciesFallWithTheShearOfTheShape) {
  // A simply supported beam by Timoshenko's frequency equation without rotary inertia: in the first mode the shear
  // multiplies the frequency by 1 / sqrt(1 + pi^2 E I / (kappa G A L^2)). In the ratio of the two types the mass matrix
  // and the mesh drop out.
  const auto first = [](const std::string& type) {
    std::string deck = "*NODE, NSET=ALL\n";
    for (int n = 0; n <= 20; ++n) deck += std::to_string(n + 1) + ", " + std::to_string(n) + ", 0, 0\n";
    deck += "*ELEMENT, TYPE=" + type + ", ELSET=B\n";
    for (int e = 1; e <= 20; ++e)
      deck += std::to_string(e) + ", " + std::to_string(e) + ", " + std::to_string(e + 1) + "\n";
    return shell_test::modes(
        frame_test::read(deck + "*MATERIAL, NAME=M\n*ELASTIC\n2E5, 0.3\n*DENSITY\n8E-9\n" + shape("RECT", "2, 3") +
                         "*BOUNDARY\nALL, 3, 5\n1, 1, 2\n21, 2\n*STEP\n*FREQUENCY\n1\n*END STEP\n"))[0];
  };
  const double pi = std::acos(-1.0), shear = pi * pi * E * 2 / (13 / 15.3 * G * 6 * 400);
  ASSERT_GT(shear, 0.02);
  EXPECT_NEAR(first("B31") / first("B33"), 1 / std::sqrt(1 + shear), 1e-4);
}
