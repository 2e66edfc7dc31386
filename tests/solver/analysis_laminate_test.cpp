// Laminates against classical lamination theory, with the textbook's formulas for the turned stiffness of a layer
// (Reddy, 2004): written out here, the code under test multiplies matrices.
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <string>
#include <vector>

#include "analysis_support.h"
#include "shell_decks.h"

using namespace analysis_test;
using shell_test::modes;
using shell_test::read;

namespace {

constexpr double E1 = 140, E2 = 10, NU12 = 0.3, G12 = 5, G13 = 4, G23 = 3, ALPHA1 = 1e-6, ALPHA2 = 3e-5;
constexpr double LENGTH = 4, WIDTH = 2;
constexpr double SINGLE = 2e-6;  // the library keeps the constants in single precision

struct ply {
  double thickness, angle;
};

struct turned {
  double Q11, Q12, Q22, Q16, Q26, Q66;
};

turned stiffness_at(double degrees) {
  const double q = 1 - NU12 * NU12 * E2 / E1, a = E1 / q, b = NU12 * E2 / q, d = E2 / q, g = G12;
  const double c = std::cos(degrees * M_PI / 180), s = std::sin(degrees * M_PI / 180);
  const double c2 = c * c, s2 = s * s, c4 = c2 * c2, s4 = s2 * s2;
  return {a * c4 + 2 * (b + 2 * g) * s2 * c2 + d * s4,
          (a + d - 4 * g) * s2 * c2 + b * (s4 + c4),
          a * s4 + 2 * (b + 2 * g) * s2 * c2 + d * c4,
          (a - b - 2 * g) * s * c * c2 + (b - d + 2 * g) * s * s2 * c,
          (a - b - 2 * g) * s * s2 * c + (b - d + 2 * g) * s * c * c2,
          (a + d - 2 * b - 2 * g) * s2 * c2 + g * (s4 + c4)};
}

double total(const std::vector<ply>& plies) {
  double h = 0;
  for (const ply& p : plies) h += p.thickness;
  return h;
}

// A (power 1) and D (power 3).
turned sum(const std::vector<ply>& plies, int power) {
  turned result{};
  double z = -total(plies) / 2;
  for (const ply& p : plies) {
    const turned Q = stiffness_at(p.angle);
    const double w = (std::pow(z + p.thickness, power) - std::pow(z, power)) / power;
    result.Q11 += w * Q.Q11;
    result.Q12 += w * Q.Q12;
    result.Q22 += w * Q.Q22;
    result.Q16 += w * Q.Q16;
    result.Q26 += w * Q.Q26;
    result.Q66 += w * Q.Q66;
    z += p.thickness;
  }
  return result;
}

std::array<double, 3> product(const turned& Q, const std::array<double, 3>& e) {
  return {Q.Q11 * e[0] + Q.Q12 * e[1] + Q.Q16 * e[2], Q.Q12 * e[0] + Q.Q22 * e[1] + Q.Q26 * e[2],
          Q.Q16 * e[0] + Q.Q26 * e[1] + Q.Q66 * e[2]};
}

std::string lines_of(const std::vector<ply>& plies) {
  std::string text;
  for (const ply& p : plies) text += std::to_string(p.thickness) + ", 3, PLY, " + std::to_string(p.angle) + "\n";
  return text;
}

// A rectangle of one distorted patch of four elements, all nodes in ALL, node 9 inside.
std::string patch(const std::string& type, const std::string& section, const std::string& rest) {
  return "*NODE, NSET=ALL\n1, 0, 0, 0\n2, 2.2, 0, 0\n3, 4, 0, 0\n4, 4, 1.1, 0\n5, 4, 2, 0\n6, 1.7, 2, 0\n7, 0, 2, 0\n"
         "8, 0, 0.8, 0\n9, 1.9, 1.2, 0\n*NSET, NSET=EDGE\n1, 2, 3, 4, 5, 6, 7, 8\n" +
         (type == "S4" ? std::string("*ELEMENT, TYPE=S4, ELSET=SKIN\n1, 1, 2, 9, 8\n2, 2, 3, 4, 9\n3, 9, 4, 5, 6\n"
                                     "4, 8, 9, 6, 7\n")
                       : std::string("*ELEMENT, TYPE=S3, ELSET=SKIN\n1, 1, 2, 9\n2, 1, 9, 8\n3, 2, 3, 4\n4, 2, 4, 9\n"
                                     "5, 9, 4, 5\n6, 9, 5, 6\n7, 8, 9, 6\n8, 8, 6, 7\n")) +
         "*MATERIAL, NAME=PLY\n*ELASTIC, TYPE=LAMINA\n140., 10., 0.3, 5., 4., 3.\n*DENSITY\n2.\n*EXPANSION, "
         "TYPE=ORTHO\n"
         "1.E-6, 3.E-5, 0.\n*SHELL SECTION, ELSET=SKIN, COMPOSITE" +
         section + "*BOUNDARY\n" + rest;
}

const std::string IDLE = "*STEP\n*STATIC\n*CLOAD\n9, 1, 0.\n*END STEP\n";

// The displacement of constant strains e and curvatures k at a node of the edge (or of all), prescribed.
void prescribe(solver::model& m, const std::array<double, 3>& e, const std::array<double, 3>& k) {
  for (int n = 0; n < 8; ++n) {
    const double x = m.nodes[n].xyz[0], y = m.nodes[n].xyz[1];
    const double values[6] = {
        e[0] * x + e[2] / 2 * y,    e[2] / 2 * x + e[1] * y, -(k[0] * x * x + k[2] * x * y + k[1] * y * y) / 2,
        -(k[2] / 2 * x + k[1] * y), k[0] * x + k[2] / 2 * y, 0};
    for (int d = 1; d <= 6; ++d) {
      solver::boundary_condition c;
      c.node = n;
      c.first_dof = c.last_dof = d;
      c.value = values[d - 1];
      m.steps[0].boundaries.push_back(c);
    }
  }
}

const std::array<double, 3> STRAIN = {1e-3, -4e-4, 7e-4}, CURVATURE = {2e-3, 5e-4, -1.2e-3};

// In every element forces A e and moments D k, and the stresses of the outer layers and of the middle one.
void expect_patch(const std::vector<ply>& plies, const std::string& section, const std::string& type) {
  solver::model m = read(patch(type, section, IDLE.empty() ? "" : "1, 6\n" + IDLE));
  m.boundaries.clear();
  prescribe(m, STRAIN, CURVATURE);
  const solved s = solve(m);
  const std::array<double, 3> N = product(sum(plies, 1), STRAIN), M = product(sum(plies, 3), CURVATURE);
  const double h = total(plies);
  std::array<double, 3> top{}, bottom{};
  for (std::size_t i = 0; i < 3; ++i) {
    top[i] = STRAIN[i] + h / 2 * CURVATURE[i];
    bottom[i] = STRAIN[i] - h / 2 * CURVATURE[i];
  }
  const std::array<double, 3> at_top = product(stiffness_at(plies.back().angle), top);
  const std::array<double, 3> at_bottom = product(stiffness_at(plies.front().angle), bottom);
  const std::array<double, 3> at_middle = product(stiffness_at(plies[plies.size() / 2].angle), STRAIN);
  for (const solver::element_result& r : s.results.elements) {
    for (std::size_t i = 0; i < 3; ++i) {
      EXPECT_WITHIN(r.force[i], N[i], std::abs(N[0]), SINGLE) << type << section << i;
      EXPECT_WITHIN(r.moment[i], M[i], std::abs(M[0]), SINGLE) << type << section << i;
      EXPECT_WITHIN(r.at[solver::TOP].stress[i], at_top[i], E1 * 2e-3, SINGLE) << type << section << i;
      EXPECT_WITHIN(r.at[solver::MIDDLE].stress[i], at_middle[i], E1 * 2e-3, SINGLE) << type << section << i;
      EXPECT_WITHIN(r.at[solver::BOTTOM].stress[i], at_bottom[i], E1 * 2e-3, SINGLE) << type << section << i;
    }
  }
}

std::string symmetric(const std::vector<ply>& half) { return lines_of(half); }

std::vector<ply> both_halves(std::vector<ply> half) {
  for (std::size_t i = half.size(); i > 0; --i) half.push_back(half[i - 1]);
  return half;
}

}  // namespace

TEST(AnalysisLaminate, CrossPly) {
  const std::vector<ply> half = {{0.25, 0}, {0.25, 90}};
  for (const char* type : {"S3", "S4"}) {
    for (const char* form : {", SYMMETRIC, FORMULATION=THIN\n", ", SYMMETRIC, FORMULATION=THICK\n"}) {
      expect_patch(both_halves(half), form + symmetric(half), type);
    }
  }
}

// D16 and D26 are not 0: the sum of layers, each in its own axes.
TEST(AnalysisLaminate, AnglePliesAndQuasiIsotropicThin) {
  for (const std::vector<ply>& half :
       {std::vector<ply>{{0.25, 45}, {0.25, -45}}, std::vector<ply>{{0.1, 0}, {0.1, 45}, {0.1, -45}, {0.1, 90}},
        std::vector<ply>{{0.2, 30}}, std::vector<ply>{{0.1, 20}, {0.2, 75}, {0.15, -10}}}) {
    for (const char* type : {"S3", "S4"})
      expect_patch(both_halves(half), ", SYMMETRIC, FORMULATION=THIN\n" + symmetric(half), type);
  }
}

// Orthotropic in turned axes: one part, thick shells as well.
TEST(AnalysisLaminate, TurnedCrossPlyThick) {
  const std::vector<ply> half = {{0.25, 30}, {0.25, -60}};
  for (const char* type : {"S3", "S4"}) expect_patch(both_halves(half), ", SYMMETRIC\n" + symmetric(half), type);
}

TEST(AnalysisLaminate, AnOddNumberOfLayers) {
  const std::vector<ply> plies = {{0.2, 90}, {0.5, 0}, {0.2, 90}};
  expect_patch(plies, "\n" + lines_of(plies), "S4");
}

// The angles of layers count from axis 1 of the section: turning the section by an angle is turning all layers.
TEST(AnalysisLaminate, TheSectionTurns) {
  const std::vector<ply> half = {{0.25, 10}, {0.25, 55}};
  const std::vector<ply> turned_half = {{0.25, 35}, {0.25, 80}};
  solver::model a =
      read(patch("S4", ", SYMMETRIC, FORMULATION=THIN, ORIENTATION ANGLE=25.\n" + lines_of(half), "1, 6\n" + IDLE));
  solver::model b = read(patch("S4", ", SYMMETRIC, FORMULATION=THIN\n" + lines_of(turned_half), "1, 6\n" + IDLE));
  for (solver::model* m : {&a, &b}) {
    m->boundaries.clear();
    prescribe(*m, {0, 0, 0}, {0, 0, 0});
    m->steps[0].nodal_loads.assign(1, {8, 3, 1.0, 0, 0});
  }
  const double w = solve(b).u(8, 'z');
  EXPECT_WITHIN(solve(a).u(8, 'z'), w, w, SINGLE);
}

// 1 / H is the integral of g^2 / G, g the share of the shear force that flows above z: by a fine sum here.
TEST(AnalysisLaminate, TransverseShearOfACrossPly) {
  const std::vector<ply> plies = {{0.25, 0}, {0.25, 90}, {0.25, 90}, {0.25, 0}};
  constexpr int STRIPS = 100000;
  double D11 = 0, flow = 0, flexibility = 0;
  for (const bool first : {true, false}) {
    for (int i = 0; i < STRIPS; ++i) {
      const double dz = 1.0 / STRIPS, z = -0.5 + (i + 0.5) * dz;
      const bool outer = std::abs(z) > 0.25;
      const double Q11 = stiffness_at(outer ? 0 : 90).Q11;
      if (first) {
        D11 += Q11 * z * z * dz;
        continue;
      }
      const double g = -(flow + Q11 * z * dz / 2) / D11;
      flow += Q11 * z * dz;
      flexibility += g * g * dz / (outer ? G13 : G23);
    }
  }
  // A short strip in cylindrical bending, clamped at x = 0, with P per width at its end.
  const std::string deck = patch("S4", ", SYMMETRIC\n0.25, , PLY, 0.\n0.25, , PLY, 90.\n",
                                 "1, 1, 6\n7, 1, 6\n8, 1, 6\nALL, 2\nALL, 4\nALL, 6\n" + IDLE);
  solver::model m = read(deck);
  // Regular, so that the strip stays one.
  const double x[] = {0, 2, 4, 4, 4, 2, 0, 0, 2}, y[] = {0, 0, 0, 1, 2, 2, 2, 1, 1};
  for (int n = 0; n < 9; ++n) m.nodes[n].xyz = {x[n], y[n], 0};
  m.steps[0].nodal_loads = {{2, 3, 0.05, 0, 0}, {3, 3, 0.1, 0, 0}, {4, 3, 0.05, 0, 0}};
  const double P = 0.1, w = P * LENGTH * LENGTH * LENGTH / (3 * D11) + P * LENGTH * flexibility;
  EXPECT_WITHIN(solve(m).u(3, 'z'), w, w, 1e-5);
  EXPECT_GT(P * LENGTH * flexibility / w, 0.05);  // the shear is no trifle here
}

TEST(AnalysisLaminate, FreeExpansionAndItsLayerStresses) {
  const std::vector<ply> half = {{0.25, 0}, {0.25, 90}};
  for (const char* form : {"THIN", "THICK"}) {
    solver::model m = read(
        patch("S4", std::string(", SYMMETRIC, FORMULATION=") + form + "\n" + lines_of(half), "1, 1, 6\n7, 1\n" + IDLE));
    for (int n = 0; n < 9; ++n) {
      solver::nodal_temperature t;
      t.node = n;
      t.change = 50;
      m.steps[0].temperatures.push_back(t);
    }
    const solved s = solve(m);
    // Equal shares of both directions: e (Q11 + Q12 ...) balance,
    // e = ((Q11 + Q12) a1 + (Q22 + Q12) a2) / (Q11 + Q22 + 2 Q12)
    const turned Q = stiffness_at(0);
    const double e = 50 * ((Q.Q11 + Q.Q12) * ALPHA1 + (Q.Q22 + Q.Q12) * ALPHA2) / (Q.Q11 + Q.Q22 + 2 * Q.Q12);
    EXPECT_WITHIN(s.u(4, 'x'), e * LENGTH, e * LENGTH, 1e-5);
    EXPECT_WITHIN(s.u(4, 'y'), e * WIDTH, e * WIDTH, 1e-5);
    const double top = Q.Q11 * (e - 50 * ALPHA1) + Q.Q12 * (e - 50 * ALPHA2);
    for (const solver::element_result& r : s.results.elements) {
      EXPECT_WITHIN(r.force[0], 0, E1 * e, 1e-5);
      EXPECT_WITHIN(r.at[solver::TOP].stress[0], top, std::abs(top), 1e-5);
      EXPECT_WITHIN(r.at[solver::MIDDLE].stress[1], top, std::abs(top), 1e-5);
    }
  }
}

// A gradient bends the laminate freely: D k = the thermal moments, and w = -(k1 x^2 + k2 y^2) / 2.
TEST(AnalysisLaminate, FreeBendingByAGradient) {
  const std::vector<ply> plies = both_halves({{0.25, 0}, {0.25, 90}});
  const double g = 20;
  double m1 = 0, m2 = 0, z = -0.5;
  for (const ply& p : plies) {
    const turned Q = stiffness_at(p.angle);
    const double w = (std::pow(z + p.thickness, 3) - std::pow(z, 3)) / 3;
    const double a1 = p.angle == 0 ? ALPHA1 : ALPHA2, a2 = p.angle == 0 ? ALPHA2 : ALPHA1;
    m1 += w * (Q.Q11 * a1 + Q.Q12 * a2) * g;
    m2 += w * (Q.Q12 * a1 + Q.Q22 * a2) * g;
    z += p.thickness;
  }
  const turned D = sum(plies, 3);
  const double determinant = D.Q11 * D.Q22 - D.Q12 * D.Q12;
  const double k1 = (D.Q22 * m1 - D.Q12 * m2) / determinant, k2 = (D.Q11 * m2 - D.Q12 * m1) / determinant;
  for (const char* form : {"THIN", "THICK"}) {
    solver::model m =
        read(patch("S4", std::string(", SYMMETRIC, FORMULATION=") + form + "\n" + lines_of({{0.25, 0}, {0.25, 90}}),
                   "1, 1, 6\n7, 1\n" + IDLE));
    for (int n = 0; n < 9; ++n) {
      solver::nodal_temperature t;
      t.node = n;
      t.gradient = g;
      m.steps[0].temperatures.push_back(t);
    }
    const solved s = solve(m);
    const double w = -(k1 * LENGTH * LENGTH + k2 * WIDTH * WIDTH) / 2;
    EXPECT_WITHIN(s.u(4, 'z'), w, std::abs(w), 1e-5);
    const turned Q = stiffness_at(0);
    const double top = Q.Q11 * (k1 - ALPHA1 * g) / 2 + Q.Q12 * (k2 - ALPHA2 * g) / 2;
    for (const solver::element_result& r : s.results.elements) {
      EXPECT_WITHIN(r.moment[0], 0, D.Q11 * k2, 1e-5);
      EXPECT_WITHIN(r.at[solver::TOP].stress[0], top, std::abs(top), 1e-5);
    }
  }
}

// One layer is the homogeneous section, in all its results, with P-delta's geometric stiffness and in vibration.
TEST(AnalysisLaminate, OneLayerIsTheHomogeneousSection) {
  const std::string supports = "1, 1, 6\n7, 1, 6\n8, 1, 6\n";
  const std::string steps = "*STEP, PDELTA\n*STATIC\n*CLOAD\n3, 1, 0.2\n5, 1, 0.2\n4, 3, 0.01\n*END STEP\n";
  const std::string deck = patch("S4", "\n0.4, , PLY, 0.\n", supports + steps);
  std::string plain = deck;
  const std::string from = "*SHELL SECTION, ELSET=SKIN, COMPOSITE\n0.4, , PLY, 0.\n";
  plain.replace(plain.find(from), from.size(), "*SHELL SECTION, ELSET=SKIN, MATERIAL=PLY\n0.4\n");
  const solved a = solve(read(deck)), b = solve(read(plain));
  EXPECT_WITHIN(a.u(3, 'z'), b.u(3, 'z'), b.u(3, 'z'), 1e-5);
  EXPECT_WITHIN(a.results.elements[0].at[solver::TOP].stress[0], b.results.elements[0].at[solver::TOP].stress[0],
                b.results.elements[0].at[solver::TOP].stress[0], 1e-5);
  EXPECT_WITHIN(a.results.elements[0].shear_force[0], b.results.elements[0].shear_force[0],
                b.results.elements[0].shear_force[0], 1e-5);
  const std::string vibrates = "*STEP\n*FREQUENCY\n3\n*END STEP\n";
  const std::vector<double> fa = modes(read(patch("S4", "\n0.4, , PLY, 0.\n", supports + vibrates)));
  plain = patch("S4", "\n0.4, , PLY, 0.\n", supports + vibrates);
  plain.replace(plain.find(from), from.size(), "*SHELL SECTION, ELSET=SKIN, MATERIAL=PLY\n0.4\n");
  const std::vector<double> fb = modes(read(plain));
  for (std::size_t i = 0; i < 3; ++i) EXPECT_WITHIN(fa[i], fb[i], fb[i], 1e-5);
}
