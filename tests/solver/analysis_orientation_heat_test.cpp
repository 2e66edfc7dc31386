// Heated plates whose material expands differently in its two directions, at any angle: free ones take the turned
// expansions without stress, held ones the stresses -Q alpha T of their material axes.
#include <gtest/gtest.h>

#include <cmath>

#include "finites/fields.h"
#include "frame_decks.h"
#include "orientation_support.h"

using namespace orientation_test;
using shell_test::read;

namespace {

const double PI = std::acos(-1.0);
constexpr double CHANGE = 40, DIFFERENCE = 15;  // of the mid surface; top less bottom

// The deck has the difference as a gradient; a membrane has none.
std::string temperatures(const lamina& l) {
  return "*TEMPERATURE\nALL, 40., " + frame_test::number(l.membrane() ? 0 : DIFFERENCE / l.thickness) + "\n";
}

// Expansion of the plate's directions: xx, yy and the shear angle xy.
point expansions(const lamina& l, double degrees) {
  const double c = std::cos(degrees * PI / 180), s = std::sin(degrees * PI / 180);
  return {l.alpha1 * c * c + l.alpha2 * s * s, l.alpha1 * s * s + l.alpha2 * c * c, 2 * (l.alpha1 - l.alpha2) * c * s};
}

lamina turned(const lamina& form, double degrees, double offset = 0) {
  lamina l = form;
  l.place = shaken(l, 31, 0.2);
  l.begin = [](int n) { return n * 5 % 4; };
  l.section += (l.section.empty() ? "" : ", ") + ("ORIENTATION ANGLE=" + std::to_string(degrees));
  if (offset != 0) l.section += ", OFFSET=" + std::to_string(offset);
  return l;
}

// The largest stress of a plate that is held everywhere.
double held_stress(const lamina& l) { return (l.Q22() + l.Q12()) * l.alpha2 * (CHANGE + DIFFERENCE / 2); }

}  // namespace

TEST(AnalysisOrientationHeat, AFreePlateTakesTheTurnedExpansions) {
  // With e the expansions times the change and k those times the gradient: w = -(kx x^2 + kxy x y + ky y^2) / 2, the
  // nodes lie d above the mid surface. The corner (0, 0) keeps its place, the corner (L, 0) its y.
  for (const lamina& form : all_types()) {
    for (const double degrees : {0.0, 30.0, -70.0, 90.0, 135.0}) {
      for (const double offset : {0.0, 0.5}) {
        if (offset != 0 && form.membrane()) continue;
        SCOPED_TRACE(name_of(form) + " " + std::to_string(degrees) + " " + std::to_string(offset));
        const lamina l = turned(form, degrees, offset);
        const std::string corner = std::to_string(l.node(l.nx, 0) + 1);
        const solver::model m =
            read(l.deck((l.membrane() ? "ALL, 3\n1, 1, 2\n" : "1, 1, 5\n") + corner + ", 2\n", temperatures(l)));
        const solved r = solve(m);
        const point a = expansions(l, degrees);
        const double T = CHANGE, g = l.membrane() ? 0 : DIFFERENCE / l.thickness, d = offset * l.thickness;
        const double largest = 4 * l.alpha2 * (T + g * d), deflection = 16 * l.alpha2 * g;
        for (const int n : {l.node(l.nx, l.ny), l.node(2, 1), l.node(0, l.ny)}) {
          const point& at = m.nodes[static_cast<std::size_t>(n)].xyz;
          const double x = at[0], y = at[1], e = T + g * d;
          EXPECT_WITHIN(r.u(n, 'x'), e * (a[0] * x + a[2] * y), largest, 1e-7);
          EXPECT_WITHIN(r.u(n, 'y'), e * a[1] * y, largest, 1e-7);
          const double w = -g * (a[0] * x * x + a[2] * x * y + a[1] * y * y) / 2;
          if (!l.membrane()) {
            EXPECT_WITHIN(r.u(n, 'z'), w, deflection, 1e-7);
          }
        }
        for (const solver::element_result& e : r.results.elements)
          for (const solver::surface_stress& at : e.at) EXPECT_LT(at.equivalent, 1e-7 * held_stress(l));
        for (const solver::nodal_result& n : r.results.nodes) EXPECT_LT(n.equivalent_top, 1e-7 * held_stress(l));
      }
    }
  }
}

TEST(AnalysisOrientationHeat, AHeldPlateTakesTheStressesOfItsMaterialAxes) {
  // N = -h Q alpha T and M = -h^2 Q alpha dT / 12 in material axes, where neither has a shear; also with equal
  // expansions, whose moment in other axes has a twist.
  for (const lamina& form : all_types()) {
    for (const double alpha1 : {1e-6, 3e-5}) {
      SCOPED_TRACE(name_of(form) + " " + std::to_string(alpha1));
      lamina l = turned(form, 30);
      l.alpha1 = alpha1;
      const solved r = solve(read(l.deck("ALL, 1, 6\n", temperatures(l))));
      const double first = l.Q11() * l.alpha1 + l.Q12() * l.alpha2, second = l.Q12() * l.alpha1 + l.Q22() * l.alpha2;
      const double h = l.thickness, N = h * CHANGE * first, M = l.membrane() ? 0 : h * h * DIFFERENCE / 12 * first;
      for (const solver::element_result& e : r.results.elements) {
        EXPECT_WITHIN((std::vector<double>{e.force[0], e.force[1], e.force[2]}),
                      (std::vector<double>{-N, -N * second / first, 0}), N, 1e-6);
        EXPECT_WITHIN((std::vector<double>{e.moment[0], e.moment[1], e.moment[2]}),
                      (std::vector<double>{-M, -M * second / first, 0}), h * h * CHANGE * first, 1e-7);
      }
    }
  }
}

TEST(AnalysisOrientationHeat, AWarpedElementExpandsFreely) {
  // One quadrilateral, a node of it off the plane of the others, held as a rigid body is: no stress, and its sides
  // grow.
  for (const char* const formulation : {"FORMULATION=THIN", "FORMULATION=THICK"}) {
    lamina l;
    l.nx = l.ny = 1;
    l.section = std::string(formulation) + ", ORIENTATION ANGLE=30.";
    l.place = [](double u, double v) { return point{4 * u, 2 * v, 0.2 * u * v}; };
    const solved r =
        solve(read(l.deck("1, 1, 5\n" + std::to_string(l.node(1, 0) + 1) + ", 2\n", "*TEMPERATURE\nALL, 40.\n")));
    const point a = expansions(l, 30);
    for (const solver::surface_stress& at : r.results.elements[0].at) EXPECT_LT(at.equivalent, 1e-7 * held_stress(l));
    // The length of the side from (0, 0, 0) to (4, 0, 0).
    EXPECT_WITHIN(r.u(l.node(1, 0), 'x') - r.u(l.node(0, 0), 'x'), CHANGE * a[0] * 4, CHANGE * l.alpha2 * 4, 1e-7);
  }
}

TEST(AnalysisOrientationHeat, HeatMakesTheGeometricStiffnessOfAHeldPlate) {
  // The buckling factor of a heated plate, held in its plane, simply supported across it: N1 = N2 in material axes
  // where the material is isotropic except for its expansions; with expansions a1, a2 at 90 degrees the two change
  // places, and a square plate does not notice.
  double factor[2] = {};
  for (const int k : {0, 1}) {
    lamina l;
    l.nx = l.ny = 10;
    l.thickness = 0.02;
    l.E1 = l.E2 = 160000;
    l.G12 = l.G13 = l.G23 = 160000 / 2.6;
    l.place = [](double u, double v) { return point{2 * u, 2 * v, 0}; };
    l.section = "FORMULATION=THIN, ORIENTATION ANGLE=" + std::string(k == 0 ? "0." : "90.");
    std::string deck =
        l.deck("ALL, 1, 2\nALL, 6\n" + held(l.column(0), 3, 4) + held(l.column(10), 3, 4) + held(l.row(0), 3, 3) +
                   held(l.row(0), 5, 5) + held(l.row(10), 3, 3) + held(l.row(10), 5, 5),
               "*TEMPERATURE\nALL, 1.\n");
    deck.replace(deck.find("*STATIC\n"), 8, "*BUCKLE\n1\n");
    factor[k] = shell_test::modes(read(deck)).front();
    // N1 (pi / a)^2 + N2 (pi / a)^2 = D (2 pi^2 / a^2)^2.
    const double Q = l.Q11(), D = Q * std::pow(l.thickness, 3) / 12, h = l.thickness;
    const double N = h * (Q + l.Q12()) * (l.alpha1 + l.alpha2);
    EXPECT_WITHIN(factor[k], 4 * D * PI * PI / (4 * N), 4 * D * PI * PI / (4 * N), 0.02) << k;
  }
  EXPECT_WITHIN(factor[1], factor[0], factor[0], 1e-5);
}
