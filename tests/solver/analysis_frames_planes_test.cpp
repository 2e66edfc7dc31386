// Frames in the plane of the second axis, members along any line, and the shapes of modes: what symmetric examples
// hide.
#include <gtest/gtest.h>

#include <cmath>

#include "analyses/modal_analysis.h"
#include "frame_decks.h"
#include "system/stopwatch.h"

using namespace frame_test;

namespace {

const char* const MATERIAL = "*MATERIAL, NAME=M\n*ELASTIC\n200000, 0.25\n*DENSITY\n8E-9\n*EXPANSION\n1E-5\n";

std::string step(const std::string& cards) { return "*STEP\n" + cards + "*END STEP\n"; }

solver::modal_solution modal(const solver::model& m) {
  solver::library_model library(m);
  const std::unique_ptr<solver::linear_solver> equations = solver::make_linear_solver(solver::default_solver());
  solver::stopwatch watch;
  solver::static_solution state;
  const solver::step& s = m.steps.front();
  return s.kind == solver::step_kind::FREQUENCY ? solve_frequencies(m, s, library, *equations, watch)
                                                : solve_buckling(m, s, library, *equations, watch, state);
}

std::string taut_cable(const std::string& cards) {
  return "*NODE\n1, 0, 0, 0\n2, 3, 4, 0\n*ELEMENT, TYPE=T3D2, ELSET=C\n7, 1, 2\n*MATERIAL, NAME=M\n*ELASTIC\n1E6, 0\n"
         "*DENSITY\n0.5\n*EXPANSION\n1E-4\n*CABLE SECTION, ELSET=C, MATERIAL=M\n2, 4.95\n*BOUNDARY\n1, PINNED\n2, "
         "PINNED\n" +
         step("*STATIC\n" + cards);
}

}  // namespace

TEST(AnalysisFramePlanes, UnequalSemiRigidEndsAcrossTheSecondAxis) {
  // One element against two, as in the other plane; the planes differ in inertia and in shear.
  straight_member b;
  b.shear_y = 4e7;
  b.shear_z = 1e7;
  const double r1 = 0.3, r2 = 0.8, q = 12, L = b.length;
  const auto half = [](double r) { return r / (1 - r) / (r / (1 - r) + 2); };
  const auto ends = [](int last, double first_factor, double last_factor) {
    return "*FIXITY\n1, S1, " + number(first_factor) + ", 1.\n" + std::to_string(last) + ", S2, " +
           number(last_factor) + ", 1.\n";
  };
  const std::string load = "*STATIC\n*DLOAD\nMEMBER, P2, -12.\n";
  const solved one = solve(read(b.deck(ends(1, r1, r2), "ALL, ENCASTRE\n", load)));
  b.elements = 2;
  const solved two = solve(read(b.deck(ends(2, half(r1), half(r2)), "1, ENCASTRE\n3, ENCASTRE\n", load)));
  for (const char direction : {'z', 'Y'}) {
    const double size = q * L * (direction == 'z' ? 1 : L);
    EXPECT_WITHIN(one.reaction(0, direction), two.reaction(0, direction), size, 1e-12);
    EXPECT_WITHIN(one.reaction(1, direction), two.reaction(2, direction), size, 1e-12);
  }
  // By the force method, with the rotations of the simply supported beam: the springs 3 E I r / (L (1 - r)).
  const double EI = b.E * b.inertia_xz, shear = 1 / (b.shear_z * L), turn = q * L * L * L / (24 * EI);
  const double near = L / (3 * EI) + shear, far = L / (6 * EI) - shear;
  const double a1 = near + L * (1 - r1) / (3 * EI * r1), a2 = near + L * (1 - r2) / (3 * EI * r2);
  const double M1 = turn * (a2 - far) / (a1 * a2 - far * far), M2 = turn * (a1 - far) / (a1 * a2 - far * far);
  EXPECT_WITHIN(one.reaction(0, 'Y'), -M1, q * L * L, 1e-12);
  EXPECT_WITHIN(one.reaction(1, 'Y'), M2, q * L * L, 1e-12);
  EXPECT_WITHIN(one.reaction(0, 'z'), q * L / 2 + (M1 - M2) / L, q * L, 1e-12);
}

TEST(AnalysisFramePlanes, UnequalSemiRigidEndsUnderANodalLoad) {
  // A cantilever on a spring at its foot, its tip's factor without meaning; the foot's spring alone gives way.
  straight_member b;
  const double L = b.length, P = 700;
  for (const double r : {0.25, 0.75}) {
    const solved s = solve(
        read(b.deck("*FIXITY\n1, S1, " + number(r) + ", 1.\n", "1, ENCASTRE\n", "*STATIC\n*CLOAD\n2, 3, 700.\n")));
    const double EI = b.E * b.inertia_xz, spring = 3 * EI * r / (L * (1 - r));
    const double w = P * L * L * L / (3 * EI) + P * L * L / spring;
    EXPECT_WITHIN(s.u(1, 'z'), w, w, 1e-11) << r;
    EXPECT_WITHIN(s.u(1, 'Y'), -P * L * L / (2 * EI) - P * L / spring, w / L, 1e-11) << r;
  }
}

TEST(AnalysisFramePlanes, ReleasedMomentsAndTorsion) {
  straight_member b;
  b.shear_y = 4e7;
  b.shear_z = 1e7;
  const double q = 12, L = b.length, EI = b.E * b.inertia_xz, GA = b.shear_z;
  // Pinned at the first end, clamped at the other.
  const double R = (q * L * L * L * L / (8 * EI) + q * L * L / (2 * GA)) / (L * L * L / (3 * EI) + L / GA);
  const solved s = solve(read(b.deck("*RELEASE\n1, S1, M1\n", "ALL, ENCASTRE\n", "*STATIC\n*DLOAD\n1, P2, -12.\n")));
  EXPECT_WITHIN(s.reaction(0, 'z'), R, R, 1e-11);
  EXPECT_WITHIN(s.reaction(0, 'Y'), 0.0, q * L * L, 1e-12);
  EXPECT_WITHIN(s.reaction(1, 'Y'), q * L * L / 2 - R * L, q * L * L, 1e-11);
  // A torque in the middle goes to the end that is not released.
  b.elements = 2;
  for (const int end : {1, 2}) {
    const std::string release = end == 1 ? "*RELEASE\n1, S1, T\n" : "*RELEASE\n2, S2, T\n";
    const solved t = solve(read(b.deck(release, "1, ENCASTRE\n3, ENCASTRE\n", "*STATIC\n*CLOAD\n2, 4, 9000.\n")));
    EXPECT_WITHIN(t.reaction(end == 1 ? 2 : 0, 'X'), -9000.0, 9000.0, 1e-12) << end;
    EXPECT_WITHIN(t.reaction(end == 1 ? 0 : 2, 'X'), 0.0, 9000.0, 1e-12) << end;
    EXPECT_WITHIN(t.u(1, 'X'), 9000 * (L / 2) / (b.G() * b.torsion), 1e-3, 1e-11) << end;
  }
}

TEST(AnalysisFramePlanes, ReleasedForcesBetweenLoadedNodes) {
  // A force in the middle; one end has lost its own direction, so that the other takes all of it. The moments are
  // 3 P L / 8 at the clamp and P L / 8 at the guide.
  straight_member b;
  b.elements = 2;
  const double P = 700, M = P * b.length / 8;
  const struct {
    const char* release;
    char force, moment;
    double sense;
  } cases[] = {{"N", 'x', 'X', 0}, {"V1", 'y', 'Z', -1}, {"V2", 'z', 'Y', 1}};
  for (const auto& c : cases) {
    for (const int end : {1, 2}) {
      const std::string cards = "*RELEASE\n" + std::string(end == 1 ? "1, S1, " : "2, S2, ") + c.release + "\n";
      const std::string load = "*STATIC\n*CLOAD\n2, " + std::to_string(c.force - 'x' + 1) + ", 700.\n";
      const solved s = solve(read(b.deck(cards, "1, ENCASTRE\n3, ENCASTRE\n", load)));
      const int loose = end == 1 ? 0 : 2, clamp = 2 - loose;
      EXPECT_WITHIN(s.reaction(loose, c.force), 0.0, P, 1e-12) << c.release << end;
      EXPECT_WITHIN(s.reaction(clamp, c.force), -P, P, 1e-12) << c.release << end;
      const double sense = end == 1 ? -c.sense : c.sense;  // seen from the other end the member turns the other way
      EXPECT_WITHIN(s.reaction(clamp, c.moment), 3 * sense * M, M, 1e-11) << c.release << end;
      EXPECT_WITHIN(s.reaction(loose, c.moment), sense * M, M, 1e-11) << c.release << end;
    }
  }
}

TEST(AnalysisFramePlanes, BarsAlongEachAxis) {
  // Sections without a direction of their own: none of the lines may be missing one.
  for (int axis = 1; axis <= 3; ++axis) {
    for (const double way : {5.0, -5.0}) {
      const std::string tip =
          number(axis == 1 ? way : 0) + ", " + number(axis == 2 ? way : 0) + ", " + number(axis == 3 ? way : 0) + "\n";
      std::string held;
      for (int i = 1; i <= 3; ++i)
        if (i != axis) held += "2, " + std::to_string(i) + "\n";
      const std::string load =
          "*STATIC\n*CLOAD\n2, " + std::to_string(axis) + ", " + number(way > 0 ? 600 : -600) + "\n";
      const solved s = solve(read("*NODE\n1, 0, 0, 0\n2, " + tip + "*ELEMENT, TYPE=T3D2, ELSET=B\n1, 1, 2\n" +
                                  "*ELEMENT, TYPE=SPRINGA, ELSET=A\n2, 1, 2\n" + MATERIAL +
                                  "*SOLID SECTION, ELSET=B, MATERIAL=M\n10\n*SPRING, ELSET=A\n100000\n*BOUNDARY\n1, "
                                  "PINNED\n" +
                                  held + step(load)));
      const double grown = 600 / (200000.0 * 10 / 5 + 100000);
      EXPECT_WITHIN(s.u(1, "xyz"[axis - 1]), way > 0 ? grown : -grown, grown, 1e-12) << axis << " " << way;
      EXPECT_WITHIN(s.results.members[0][6], 480.0, 600.0, 1e-12) << axis << " " << way;
      EXPECT_WITHIN(s.results.members[1][6], 120.0, 600.0, 1e-12) << axis << " " << way;
    }
  }
}

TEST(AnalysisFramePlanes, HeldBarsThatAreHotOrPretensioned) {
  const std::string head =
      std::string("*NODE, NSET=ALL\n1, 0, 0, 0\n2, 3, 4, 0\n*ELEMENT, TYPE=T3D2, ELSET=B\n1, 1, 2\n") + MATERIAL +
      "*BOUNDARY\n1, PINNED\n2, PINNED\n";
  const solved hot =
      solve(read(head + "*SOLID SECTION, ELSET=B, MATERIAL=M\n10\n" + step("*STATIC\n*TEMPERATURE\nALL, 50\n")));
  const double push = 200000 * 10 * 1e-5 * 50;
  EXPECT_WITHIN(hot.results.members[0][6], -push, push, 1e-12);
  EXPECT_WITHIN(hot.reaction(0, 'x'), 0.6 * push, push, 1e-12);
  EXPECT_WITHIN(hot.reaction(1, 'y'), -0.8 * push, push, 1e-12);
  const solved pulled =
      solve(read(head + "*SOLID SECTION, ELSET=B, MATERIAL=M, PRETENSION=40\n10\n" + step("*STATIC\n")));
  EXPECT_WITHIN(pulled.results.members[0][6], 400.0, 400.0, 1e-12);
  EXPECT_WITHIN(pulled.results.members[0][0], -400.0, 400.0, 1e-12);
  EXPECT_WITHIN(pulled.reaction(0, 'y'), -0.8 * 400, 400.0, 1e-12);
}

TEST(AnalysisFramePlanes, ABarOnSpringsBuckles) {
  // A rigid bar, pinned at its foot and held aside by springs at its head: it falls at k L.
  const double L = 5;
  const solver::modal_solution found = modal(
      read(std::string("*NODE\n1, 0, 0, 0\n2, 0, 0, 5\n*ELEMENT, TYPE=T3D2, ELSET=B\n1, 1, 2\n*ELEMENT, TYPE=SPRING1, "
                       "ELSET=X\n2, 2\n*ELEMENT, TYPE=SPRING1, ELSET=Y\n3, 2\n") +
           MATERIAL +
           "*SOLID SECTION, ELSET=B, MATERIAL=M\n10\n*SPRING, ELSET=X\n1\n24\n*SPRING, ELSET=Y\n2\n36\n*BOUNDARY\n1, "
           "PINNED\n" +
           step("*BUCKLE\n2\n*CLOAD\n2, 3, -2.\n")));
  ASSERT_EQ(found.modes.size(), 2U);
  EXPECT_WITHIN(found.modes[0].value, 24 * L / 2, 24 * L / 2, 1e-9);
  EXPECT_WITHIN(found.modes[1].value, 36 * L / 2, 36 * L / 2, 1e-9);
}

TEST(AnalysisFramePlanes, ShapeOfTheCantileversFirstMode) {
  straight_member b;
  b.length = 10000;
  b.area = 400;
  b.inertia_xy = b.inertia_xz = 1000;
  b.elements = 10;
  const solver::modal_solution found = modal(read(b.deck("", "ALL, 3, 5\n1, ENCASTRE\n", "*FREQUENCY\n1\n")));
  ASSERT_EQ(found.modes.size(), 1U);
  EXPECT_TRUE(found.notes.empty()) << found.notes.front();
  // cosh kx - cos kx - s (sinh kx - sin kx), the tip's displacement made 1.
  const double k = 1.8751040687119611;
  const double s = (std::cosh(k) + std::cos(k)) / (std::sinh(k) + std::sin(k));
  const auto shape = [&](double x) { return std::cosh(x) - std::cos(x) - s * (std::sinh(x) - std::sin(x)); };
  const auto slope = [&](double x) { return std::sinh(x) + std::sin(x) - s * (std::cosh(x) - std::cos(x)); };
  for (int n = 0; n <= 10; ++n) {
    const double x = k * n / 10;
    const auto at = [&](int direction) { return found.modes[0].displacement[solver::freedom(n, direction)]; };
    EXPECT_WITHIN(at(1), shape(x) / shape(k), 1.0, 1e-4) << n;
    EXPECT_WITHIN(at(5) * b.length, slope(x) * k / shape(k), 1.0, 1e-3) << n;
  }
}

TEST(AnalysisFramePlanes, ACableInTemperatureAndWeight) {
  // Taut: EA times chord over unstressed length, less 1 and the stress-free strain.
  const solved hot = solve(read(taut_cable("*TEMPERATURE\n1, 30\n2, 30\n")));
  const double T = 2e6 * (5 / 4.95 - 1 - 1e-4 * 30);
  EXPECT_WITHIN(hot.reaction(1, 'x'), 0.6 * T, T, 1e-8);
  EXPECT_WITHIN(hot.reaction(0, 'y'), -0.8 * T, T, 1e-8);
  const solver::end_forces f = hot.results.members[0];
  EXPECT_WITHIN(std::vector<double>(f.begin(), f.end()), (std::vector<double>{-T, 0, 0, 0, 0, 0, T, 0, 0, 0, 0, 0}), T,
                1e-8);
  // The weight is that of the unstressed length; across the chord each node has half of it.
  const solved heavy = solve(read(taut_cable("*DLOAD\nC, GRAV, 3, 0, 0, -1\n")));
  const double W = 0.5 * 2 * 4.95 * 3;
  EXPECT_WITHIN(heavy.reaction(0, 'z'), W / 2, W, 1e-10);
  EXPECT_WITHIN(heavy.reaction(1, 'z'), W / 2, W, 1e-10);
  for (const int n : {0, 1}) EXPECT_WITHIN(heavy.solution.load[solver::freedom(n, 2)], -W / 2, W, 1e-12) << n;
  const solver::end_forces h = heavy.results.members[0];
  EXPECT_WITHIN(std::hypot(h[1] + h[7], h[2] + h[8]), W, W, 1e-10);
}
