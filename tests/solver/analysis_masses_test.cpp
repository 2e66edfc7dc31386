// Masses at nodes, lumped masses, and the modal masses: hand formulas, and the law that all modes move all of the mass.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "analyses/modal_analysis.h"
#include "frame_decks.h"
#include "run_support.h"
#include "solids_support.h"
#include "system/stopwatch.h"

using namespace frame_test;

namespace {

constexpr double PI = 3.14159265358979323846;

solver::modal_solution found(const solver::model& m) {
  solver::library_model library(m);
  const std::unique_ptr<solver::linear_solver> equations = solver::make_linear_solver(solver::default_solver());
  solver::stopwatch watch;
  return solve_frequencies(m, m.steps.front(), library, *equations, watch);
}

double sum(const solver::modal_masses& masses, std::size_t direction) {
  double all = 0;
  for (const solver::modal_mass& one : masses.modes) all += one.effective[direction];
  return all;
}

void expect_law(const solver::modal_masses& masses, double limit) {
  for (std::size_t i = 0; i < 6; ++i) EXPECT_WITHIN(sum(masses, i), masses.free[i], masses.total[i], limit) << i;
}

// Nodes 1, 2, ... along x at distances of 1, joined by springs along x of stiffness 1; masses at nodes from 2 on.
std::string chain(const std::vector<double>& masses, const std::string& step) {
  std::string text = "*NODE, NSET=ALL\n1, 0., 0., 0.\n", springs = "*ELEMENT, TYPE=SPRINGA, ELSET=S\n", points;
  for (std::size_t i = 0; i < masses.size(); ++i) {
    const std::string n = std::to_string(i + 2), set = "M" + n;
    text += n + ", " + std::to_string(i + 1) + "., 0., 0.\n";
    springs += std::to_string(i + 1) + ", " + std::to_string(i + 1) + ", " + n + "\n";
    points += "*ELEMENT, TYPE=MASS, ELSET=" + set + "\n10" + n + ", " + n + "\n*MASS, ELSET=" + set + "\n" +
              number(masses[i]) + "\n";
  }
  return text + springs + "*SPRING, ELSET=S\n1.\n" + points + "*BOUNDARY\n1, 1, 6\nALL, 2, 6\n" + step;
}

std::string frequencies(int count, const std::string& choice = "") {
  return "*STEP\n*FREQUENCY" + choice + "\n" + std::to_string(count) + "\n*END STEP\n";
}

}  // namespace

TEST(AnalysisMasses, OneMassOnASpring) {
  const solver::modal_solution s = found(read(chain({4}, frequencies(1))));
  ASSERT_EQ(s.modes.size(), 1U);
  EXPECT_WITHIN(s.modes[0].value, 0.5 / (2 * PI), 1, 1e-12);
  EXPECT_WITHIN(s.masses.modes[0].generalised, 4, 4, 1e-12);
  EXPECT_WITHIN(s.masses.modes[0].factor[0], 1, 1, 1e-12);
  EXPECT_WITHIN(s.masses.modes[0].effective[0], 4, 4, 1e-12);
  EXPECT_EQ(s.masses.total[1], 4);
  EXPECT_EQ(s.masses.free[1], 0);
  EXPECT_WITHIN(s.masses.total[5], 4, 4, 1e-15);  // at x = 1
  EXPECT_EQ(s.masses.centre, (std::array<double, 3>{1, 0, 0}));
}

// Two equal masses on two equal springs: omega^2 = (3 -+ sqrt 5) / 2, shapes (1, g) and (g, -1) with the golden ratio
// g.
TEST(AnalysisMasses, TwoMassChain) {
  const solver::modal_solution s = found(read(chain({1, 1}, frequencies(2))));
  const double g = (1 + std::sqrt(5.0)) / 2, both = 1 + g * g;
  ASSERT_EQ(s.modes.size(), 2U);
  for (std::size_t i = 0; i < 2; ++i) {
    const double omega = std::sqrt((3 + (i == 0 ? -1 : 1) * std::sqrt(5.0)) / 2), along = i == 0 ? 1 + g : g - 1;
    EXPECT_WITHIN(s.modes[i].value, omega / (2 * PI), 1, 1e-12);
    EXPECT_WITHIN(s.masses.modes[i].generalised, both / (g * g), 1, 1e-12);  // the largest displacement is 1
    EXPECT_WITHIN(std::fabs(s.masses.modes[i].factor[0]), along * g / both, 1, 1e-12);
    EXPECT_WITHIN(s.masses.modes[i].effective[0], along * along / both, 1, 1e-12);
  }
  expect_law(s.masses, 1e-12);
}

// Cantilever with a tip mass mu times its own: 1 + cos x cosh x + mu x (cos x sinh x - sin x cosh x) = 0.
TEST(AnalysisMasses, CantileverWithATipMass) {
  straight_member b;
  b.length = 10000;
  b.area = 400;
  b.inertia_xy = b.inertia_xz = 1000;
  b.elements = 16;
  const double own = b.density * b.area * b.length, mu = 0.7;
  const std::string mass = "*ELEMENT, TYPE=MASS, ELSET=TIP\n99, 17\n*MASS, ELSET=TIP\n" + number(mu * own) + "\n";
  const solver::modal_solution s = found(read(b.deck(mass, "ALL, 3, 5\n1, ENCASTRE\n", "*FREQUENCY\n2\n")));
  const auto equation = [&](double x) {
    return 1 + std::cos(x) * std::cosh(x) + mu * x * (std::cos(x) * std::sinh(x) - std::sin(x) * std::cosh(x));
  };
  const double starts[][2] = {{0.5, 1.9}, {3, 4.7}};
  for (std::size_t i = 0; i < 2; ++i) {
    double low = starts[i][0], high = starts[i][1];
    ASSERT_LT(equation(low) * equation(high), 0);
    for (int k = 0; k < 60; ++k) {
      const double middle = (low + high) / 2;
      (equation(low) * equation(middle) <= 0 ? high : low) = middle;
    }
    const double f = low * low * std::sqrt(b.E * b.inertia_xy / (b.density * b.area)) / (2 * PI * b.length * b.length);
    EXPECT_WITHIN(s.modes[i].value, f, f, 5e-5) << i;
  }
  EXPECT_WITHIN(s.masses.total[1], own * (1 + mu), own, 1e-9);
  EXPECT_WITHIN(s.masses.centre[0], b.length * (0.5 + mu) / (1 + mu), b.length, 1e-9);
}

// All modes of a beam in space and of a brick; the free mass is what the supports leave.
TEST(AnalysisMasses, AllModesMoveAllOfTheMass) {
  straight_member b;
  b.elements = 3;
  b.area = 500;
  b.inertia_xy = 8e4;
  b.inertia_xz = 3e4;
  b.torsion = 1e4;
  for (const char* const choice : {"", ", MASS=LUMPED"}) {
    const solver::modal_solution s =
        found(read(b.deck("", "1, ENCASTRE\n", std::string("*FREQUENCY") + choice + "\n18\n")));
    EXPECT_EQ(s.modes.size(), *choice == 0 ? 18U : 9U);
    expect_law(s.masses, 1e-8);
    const double mass = b.density * b.area * b.length;
    for (std::size_t i = 0; i < 3; ++i) EXPECT_WITHIN(s.masses.total[i], mass, mass, 1e-6);
  }
  const solver::modal_solution free = found(read(b.deck("", "1, 1, 6\n2, 2, 2\n", "*FREQUENCY\n18\n")));
  expect_law(free.masses, 1e-8);
}

TEST(AnalysisMasses, RotaryInertiaInItsOwnAxes) {
  // Springs of one stiffness about x, y, z; the principal moments 1, 4, 9 in axes turned by 30 degrees about z.
  std::string deck = "*NODE\n1, 5., 6., 7.\n*ORIENTATION, NAME=O\n1., 0., 0., 0., 1., 0.\n3, 30.\n";
  for (int dof = 4; dof <= 6; ++dof) {
    const std::string set = "K" + std::to_string(dof);
    deck += "*ELEMENT, TYPE=SPRING1, ELSET=" + set + "\n" + std::to_string(dof) + ", 1\n*SPRING, ELSET=" + set + "\n" +
            std::to_string(dof) + "\n36.\n";
  }
  deck +=
      "*ELEMENT, TYPE=ROTARYI, ELSET=R\n10, 1\n*ROTARY INERTIA, ELSET=R, ORIENTATION=O\n1., 4., 9.\n*BOUNDARY\n1, 1, "
      "3\n";
  const solver::model m = read(deck + frequencies(3));
  const solver::modal_solution s = found(m);
  ASSERT_EQ(s.modes.size(), 3U);
  for (std::size_t i = 0; i < 3; ++i)
    EXPECT_WITHIN(s.modes[i].value, 6 / (3.0 - static_cast<double>(i)) / (2 * PI), 1, 1e-9) << i;
  EXPECT_WITHIN(m.point_masses[0].inertia[0], 0.75 * 1 + 0.25 * 4, 1, 1e-12);
  EXPECT_WITHIN(m.point_masses[0].inertia[3], -std::sqrt(3.0) / 4 * 3, 1, 1e-12);
  expect_law(s.masses, 1e-9);
}

// Gravity pulls at masses: m g / k, and the reaction.
TEST(AnalysisMasses, Weight) {
  const solved s = solve(
      read(chain({4, 2}, "*STEP\n*STATIC\n*DLOAD\nM2, GRAV, 10., 1., 0., 0.\nM3, GRAV, 10., 1., 0., 0.\n*END STEP\n")));
  EXPECT_WITHIN(s.u(1, 'x'), 60, 60, 1e-12);
  EXPECT_WITHIN(s.u(2, 'x'), 80, 80, 1e-12);
  EXPECT_WITHIN(s.reaction(0, 'x'), -60, 60, 1e-12);
}

// One bar: half of its mass at the free end, a third where it is consistent. One beam: 3 E I / L^3 over half its mass.
TEST(AnalysisMasses, LumpedMassesOfBars) {
  const std::string bar =
      "*NODE\n1, 0., 0., 0.\n2, 3., 0., 4.\n*ELEMENT, TYPE=T3D2, ELSET=B\n1, 1, 2\n*MATERIAL, NAME=M\n*ELASTIC\n70., "
      "0.3\n"
      "*DENSITY\n2.\n*SOLID SECTION, ELSET=B, MATERIAL=M\n0.5\n*ELEMENT, TYPE=SPRING1, ELSET=S\n2, 2\n*SPRING, "
      "ELSET=S\n"
      "1\n1e-20\n*BOUNDARY\n1, 1, 3\n2, 2\n2, 1\n";
  // Along z alone: k = (E A / L) (4/5)^2.
  const double k = 70 * 0.5 / 5 * 0.64, mass = 2 * 0.5 * 5;
  EXPECT_WITHIN(found(read(bar + frequencies(1))).modes[0].value, std::sqrt(k / (mass / 3)) / (2 * PI), 1, 1e-9);
  EXPECT_WITHIN(found(read(bar + frequencies(1, ", MASS=LUMPED"))).modes[0].value, std::sqrt(k / (mass / 2)) / (2 * PI),
                1, 1e-9);
  straight_member b;
  const double stiffness = 3 * b.E * b.inertia_xy / std::pow(b.length, 3), half = b.density * b.area * b.length / 2;
  const solver::modal_solution s = found(read(b.deck("", "ALL, 3, 5\n1, ENCASTRE\n", "*FREQUENCY, MASS=LUMPED\n1\n")));
  EXPECT_WITHIN(s.modes[0].value, std::sqrt(stiffness / half) / (2 * PI), s.modes[0].value, 1e-6);
}

// Masses of beams off their nodes: the centroid carries them, whether consistent or lumped.
TEST(AnalysisMasses, EccentricBeams) {
  const std::string beam =
      "*NODE\n1, 0., 0., 0.\n2, 1000., 0., 0.\n*ELEMENT, TYPE=B33, ELSET=B\n1, 1, 2\n*MATERIAL, "
      "NAME=M\n*ELASTIC\n210000., "
      "0.3\n*DENSITY\n7.85e-9\n*BEAM SECTION, ELSET=B, MATERIAL=M, SECTION=RECT, OFFSET1=1., OFFSET2=0.5\n30., "
      "60.\n0., 1., "
      "0.\n*BOUNDARY\n1, ENCASTRE\n";
  for (const char* const choice : {"", ", MASS=LUMPED"}) {
    const solver::modal_solution s = found(read(beam + frequencies(2, choice)));
    EXPECT_WITHIN(s.masses.centre[0], 500, 500, 1e-6) << choice;
    EXPECT_WITHIN(s.masses.centre[1], -30, 30, 1e-6) << choice;
    EXPECT_WITHIN(s.masses.centre[2], -30, 30, 1e-6) << choice;
    EXPECT_WITHIN(s.masses.total[2], 7.85e-9 * 1800 * 1000, 1.4e-2, 1e-6) << choice;
  }
}

TEST(AnalysisMasses, BucklingDoesNotKnowMasses) {
  straight_member b;
  b.elements = 4;
  const std::string mass = "*ELEMENT, TYPE=MASS, ELSET=TIP\n99, 5\n*MASS, ELSET=TIP\n7.\n";
  const std::string step = "*BUCKLE\n2\n*CLOAD\n5, 1, -1.\n";
  const auto factors = [&](const std::string& cards) {
    const solver::model m = read(b.deck(cards, "1, ENCASTRE\n", step));
    solver::library_model library(m);
    const std::unique_ptr<solver::linear_solver> equations = solver::make_linear_solver(solver::default_solver());
    solver::stopwatch watch;
    solver::static_solution state;
    return solve_buckling(m, m.steps.front(), library, *equations, watch, state).modes[0].value;
  };
  EXPECT_EQ(factors(mass), factors(""));
}

TEST(AnalysisMasses, SummaryShowsSumsAgainstTheMass) {
  const run_test::ran r = run_test::run(chain({1, 1}, frequencies(1)));
  EXPECT_NE(r.text.find("effective modal masses"), std::string::npos);
  EXPECT_NE(r.text.find("94.7214 %"), std::string::npos) << r.text;  // (1 + g)^2 / (1 + g^2) / 2
  EXPECT_NE(r.text.find("centre of the mass at (1.500000e+00"), std::string::npos) << r.text;
}
