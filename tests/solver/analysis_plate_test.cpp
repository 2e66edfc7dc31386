// Plates and shells against series and published values, and the balance of forces and moments.
#include <gtest/gtest.h>

#include <cmath>

#include "analysis_support.h"
#include "output/summary.h"

using namespace analysis_test;

namespace {

const double PI = std::acos(-1.0);

// Deflection of the middle of a simply supported square under uniform load, in q a^4 / D (Navier 1820, Timoshenko and
// Woinowsky-Krieger 1959): the double sine series, summed here.
double navier_coefficient() {
  double sum = 0;
  for (int m = 1; m < 200; m += 2)
    for (int n = 1; n < 200; n += 2) {
      const double sign = ((m + n) / 2 - 1) % 2 == 0 ? 1 : -1;
      sum += sign / (m * n * std::pow(m * m + n * n, 2.0));
    }
  return 16 * sum / std::pow(PI, 6.0);
}

double plate_ratio(int sides, double q, double a, double h, double E, double nu) {
  grid g(
      sides, sides, [&](double u, double v) { return rectangle(a, a, u, v); }, isotropic(E, nu), h);
  g.fix(g.border(), "z");
  g.fix(g.along_x(0), "Y");
  g.fix(g.along_x(sides), "Y");
  g.fix(g.along_y(0), "X");
  g.fix(g.along_y(sides), "X");
  g.fix({g.node(0, 0)}, "xyZ");
  g.fix({g.node(sides, 0)}, "y");
  g.pressure(q);
  const double D = E * h * h * h / (12 * (1 - nu * nu));
  return solve(g.m).u(g.node(sides / 2, sides / 2), 'z') / (navier_coefficient() * q * std::pow(a, 4.0) / D);
}

// A quarter of the Scordelis-Lo roof: deflection of the middle of the free edge.
grid roof(int sides) {
  const double R = 25, half_length = 25, half_angle = 40 * PI / 180;
  solver::material concrete = isotropic(4.32e8, 0);
  concrete.density = 90 / 0.25 / 10;
  grid g(
      sides, sides,
      [=](double u, double v) {
        return point{half_length * u, R * std::sin(half_angle * v), R * std::cos(half_angle * v)};
      },
      concrete, 0.25);
  g.fix(g.along_y(0), "xYZ");
  g.fix(g.along_x(0), "yXZ");
  g.fix(g.along_y(sides), "yz");
  g.gravity(10, {0, 0, -1});
  return g;
}

}  // namespace

TEST(AnalysisPlate, SeriesValue) {
  EXPECT_WITHIN(navier_coefficient(), 0.0040624, 0.0040624, 1e-4);
  const double coarse = plate_ratio(8, 2.0, 10, 0.05, 2e5, 0.3), fine = plate_ratio(32, 2.0, 10, 0.05, 2e5, 0.3);
  EXPECT_WITHIN(fine, 1.0, 1.0, 0.005);
  EXPECT_LT(std::fabs(fine - 1), std::fabs(coarse - 1) / 4);
}

TEST(AnalysisPlate, ScordelisLoRoof) {
  // 0.3024 is the published deflection; deep shells converge to 0.3006. Flat triangles come from below.
  const double published = 0.3024, converged = 0.3006;
  double previous = 0;
  for (const int sides : {4, 8, 16, 32}) {
    const grid g = roof(sides);
    const double deflection = -solve(g.m).u(g.node(0, sides), 'z');
    EXPECT_GT(deflection, previous) << sides;
    EXPECT_LT(deflection, converged) << sides;
    previous = deflection;
  }
  EXPECT_WITHIN(previous, published, published, 0.02);
  EXPECT_WITHIN(previous, converged, converged, 0.01);
}

TEST(AnalysisPlate, LoadsAndReactionsBalance) {
  // The roof under its weight, a pressure and single forces and moments: six sums vanish.
  grid g = roof(8);
  g.pressure(-3);
  g.load(g.node(3, 5), 'x', 700);
  g.load(g.node(4, 8), 'Y', 900);
  const solved s = solve(g.m);
  const solver::equilibrium sums = solver::sum_forces(g.m, s.solution);
  for (std::size_t i = 0; i < 6; ++i) {
    const double scale = i < 3 ? 4e4 : 1e6;
    EXPECT_WITHIN(sums.applied[i] + sums.reaction[i], 0.0, scale, 1e-9) << i;
  }
}

TEST(AnalysisPlate, WeightComesBackAsReaction) {
  const grid g = roof(8);
  const solved s = solve(g.m);
  // The facets' chords are a little shorter than the arc.
  const double chord = 2 * 25 * std::sin(40 * PI / 180 / 16) * 8;
  double sum = 0;
  for (int n = 0; n < static_cast<int>(g.m.nodes.size()); ++n) sum += s.reaction(n, 'z');
  EXPECT_WITHIN(sum, 90 * chord * 25, 90 * chord * 25, 1e-9);
}

TEST(AnalysisPlate, PressureActsAlongTheNormal) {
  grid g(
      3, 2, [](double u, double v) { return rectangle(3, 2, u, v); }, isotropic(100, 0.2), 0.1);
  g.fix(g.border(), "xyzXYZ");
  g.pressure(4);
  const solved s = solve(g.m);
  EXPECT_WITHIN(s.reaction(g.border(), 'z'), -24.0, 24, 1e-12);
  EXPECT_GT(s.u(g.node(1, 1), 'z'), 0);
}

TEST(AnalysisPlate, BothSolversAgree) {
  const grid g = roof(12);
  const std::vector<double> first = solve(g.m, solvers().front()).solution.displacement;
  for (const solver::solver_kind kind : solvers())
    EXPECT_WITHIN(solve(g.m, kind).solution.displacement, first, max_norm(first), 1e-8);
}

TEST(AnalysisPlate, ResidualIsOfRounding) {
  for (const solver::solver_kind kind : solvers()) {
    const solved s = solve(roof(12).m, kind);
    EXPECT_LT(s.solution.residual, 1e-14);
    EXPECT_GT(s.solution.smallest_stiffness, 1e-9);
  }
}

TEST(AnalysisPlate, TurningTheModelTurnsTheAnswer) {
  // The same roof with x, y, z called z, x, y.
  const grid g = roof(6);
  grid turned = g;
  for (solver::node& n : turned.m.nodes) n.xyz = {n.xyz[1], n.xyz[2], n.xyz[0]};
  const auto turn = [](int dof) { return (dof - 1) / 3 * 3 + (dof + 1) % 3 + 1; };
  for (solver::boundary_condition& c : turned.m.boundaries) c.first_dof = c.last_dof = turn(c.first_dof);
  for (solver::element_load& l : turned.step().element_loads) l.direction = {0, -1, 0};
  const solved a = solve(g.m), b = solve(turned.m);
  const double scale = max_norm(a.solution.displacement);
  for (int n = 0; n < static_cast<int>(g.m.nodes.size()); ++n) {
    for (const auto& [before, after] : {std::pair('x', 'z'), std::pair('y', 'x'), std::pair('z', 'y'),
                                        std::pair('X', 'Z'), std::pair('Y', 'X'), std::pair('Z', 'Y')})
      EXPECT_WITHIN(b.u(n, after), a.u(n, before), scale, 1e-8);
  }
  for (std::size_t e = 0; e < a.results.elements.size(); ++e)
    EXPECT_WITHIN(b.results.elements[e].at[solver::TOP].equivalent, a.results.elements[e].at[solver::TOP].equivalent,
                  1e6, 1e-8);
}
