// Beams whose section lies off their nodes, or whose principal axes are turned: against hand formulas and laws.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <utility>

#include "analyses/modal_analysis.h"
#include "deck_builder.h"
#include "elements/section_stresses.h"
#include "frame_decks.h"
#include "run.h"
#include "run_support.h"
#include "system/stopwatch.h"

using namespace frame_test;

namespace {

constexpr double PI = 3.14159265358979323846;
constexpr double E = 210000, NU = 0.3, G = E / (2 * (1 + NU)), DENSITY = 7.85e-9;

// A cantilever along x, of `count` beams B33 between nodes 1 to count + 1; axis 1 is y, axis 2 z. `section` is the
// keyword line from SECTION on, with its data lines without n1.
struct cantilever {
  explicit cantilever(std::string form) : section(std::move(form)) {}

  std::string section;
  double length = 1000;
  int count = 1;
  std::string cards, supports = "1, ENCASTRE\n";

  std::string deck(const std::string& steps) const {
    std::string text = "*NODE, NSET=ALL\n";
    for (int n = 0; n <= count; ++n) text += std::to_string(n + 1) + ", " + number(length * n / count) + ", 0., 0.\n";
    text += "*ELEMENT, TYPE=B33, ELSET=B\n";
    for (int e = 1; e <= count; ++e)
      text += std::to_string(e) + ", " + std::to_string(e) + ", " + std::to_string(e + 1) + "\n";
    return text + "*MATERIAL, NAME=M\n*ELASTIC\n210000., 0.3\n*DENSITY\n7.85e-9\n*BEAM GENERAL SECTION, ELSET=B, " +
           "MATERIAL=M, SECTION=" + section + "\n0., 1., 0.\n" + cards + "*BOUNDARY\n" + supports + steps;
  }
  solver::model read(const std::string& step, const std::string& flags = "") const {
    return frame_test::read(deck("*STEP" + flags + "\n" + step + "*END STEP\n"));
  }
  solved solve_static(const std::string& loads) const { return solve(read("*STATIC\n" + loads)); }
};

const std::string ANGLE = "L\n120., 80., 10., 12.";

// Of the angle above, by its two rectangles, 120 x 10 and 12 x 70, from the point where the middle lines meet.
struct angle {
  double A = 1200 + 840, c1 = (1200 * 54.0) / A, c2 = (840 * 40.0) / A;
  double I11 = 120 * 1000 / 12.0 + 1200 * c2 * c2 + 12 * 343000 / 12.0 + 840 * (40 - c2) * (40 - c2);
  double I22 = 10 * 1728000 / 12.0 + 1200 * (54 - c1) * (54 - c1) + 70 * 1728 / 12.0 + 840 * c1 * c1;
  double I12 = 1200 * (54 - c1) * (0 - c2) + 840 * (0 - c1) * (40 - c2);
  double determinant = I11 * I22 - I12 * I12;
};

std::vector<double> modes(const solver::model& m) {
  solver::library_model library(m);
  const std::unique_ptr<solver::linear_solver> equations = solver::make_linear_solver(solver::default_solver());
  solver::stopwatch watch;
  solver::static_solution state;
  const solver::step& s = m.steps.front();
  const solver::modal_solution found = s.kind == solver::step_kind::FREQUENCY
                                           ? solve_frequencies(m, s, library, *equations, watch)
                                           : solve_buckling(m, s, library, *equations, watch, state);
  std::vector<double> values;
  for (const solver::mode& one : found.modes) values.push_back(one.value);
  return values;
}

std::vector<std::string> lines_of(const std::string& path) {
  std::ifstream in(path);
  std::vector<std::string> lines;
  for (std::string line; std::getline(in, line);) lines.push_back(line);
  return lines;
}

std::vector<double> numbers_of(const std::string& line) {
  std::istringstream cells(line);
  std::vector<double> values;
  for (std::string cell; std::getline(cells, cell, ',');) values.push_back(std::strtod(cell.c_str(), nullptr));
  return values;
}

void expect_same(const std::vector<double>& a, const std::vector<double>& b, double limit, std::size_t from = 0) {
  ASSERT_EQ(a.size(), b.size());
  for (std::size_t i = from; i < a.size(); ++i) EXPECT_WITHIN(a[i], b[i], b[i], limit) << i;
}

}  // namespace

// Deflections of a tip force (P1, P2): L^3 / 3 E [I22 I12; I12 I11]^-1 (P1, P2). The shear centre of an angle is in its
// nodes: it does not twist.
TEST(AnalysisBeamSections, AngleBendsAboutBothAxes) {
  const cantilever c{ANGLE};
  const angle a;
  const double P = 100, k = P * 1e9 / (3 * E);
  for (const int count : {1, 3}) {
    cantilever parts = c;
    parts.count = count;
    const std::string tip = std::to_string(count + 1);
    const solved along_1 = parts.solve_static("*CLOAD\n" + tip + ", 2, 100.\n");
    EXPECT_WITHIN(along_1.u(count, 'y'), k * a.I11 / a.determinant, k * a.I11 / a.determinant, 1e-9);
    EXPECT_WITHIN(along_1.u(count, 'z'), -k * a.I12 / a.determinant, k * a.I11 / a.determinant, 1e-9);
    EXPECT_NEAR(along_1.u(count, 'X'), 0, 1e-9 * P);
    // Reactions in the axes of the model.
    EXPECT_WITHIN(along_1.reaction(0, 'y'), -P, P, 1e-9);
    EXPECT_WITHIN(along_1.reaction(0, 'Z'), -P * 1000, P * 1000, 1e-9);
    EXPECT_NEAR(along_1.reaction(0, 'Y'), 0, 1e-6 * P);
    const solved along_2 = parts.solve_static("*CLOAD\n" + tip + ", 3, 100.\n");
    EXPECT_WITHIN(along_2.u(count, 'z'), k * a.I22 / a.determinant, k * a.I22 / a.determinant, 1e-9);
  }
}

// The same section by its constants; J of the middle lines.
TEST(AnalysisBeamSections, ConstantsGiveWhatTheShapeGives) {
  const angle a;
  const double J = (114 * 1000 + 75 * 1728) / 3.0;
  cantilever general{"GENERAL\n" + number(a.A) + ", " + number(a.I11) + ", " + number(a.I12) + ", " + number(a.I22) +
                     ", " + number(J)};
  general.cards = "*CENTROID\n" + number(a.c1) + ", " + number(a.c2) + "\n";
  const std::string loads =
      "*CLOAD\n2, 1, 1000.\n2, 2, 30.\n2, 3, 50.\n2, 4, 2000.\n2, 5, 300.\n*DLOAD\nB, GRAV, 9810., 0., 0., -1.\n";
  const solved shape = cantilever{ANGLE}.solve_static(loads), constants = general.solve_static(loads);
  for (const char d : {'x', 'y', 'z', 'X', 'Y', 'Z'})
    EXPECT_WITHIN(constants.u(1, d), shape.u(1, d), std::fabs(shape.u(1, d)), 1e-9) << d;
}

// A force N at the nodes, e from the centroid, bends like a moment N e: u = N L / E A + N e^2 L / E I.
TEST(AnalysisBeamSections, EccentricForceBends) {
  const double b = 30, h = 60, N = 5000, L = 1000, A = b * h, I = b * h * h * h / 12, e = h / 2;
  cantilever c{"RECT, OFFSET2=0.5\n30., 60."};
  const solved s = c.solve_static("*CLOAD\n2, 1, 5000.\n");
  const double stretch = N * L / (E * A), rotation = N * e * L / (E * I);
  // The nodes lie on the side of axis 2: pulled there, the tip turns to -z.
  EXPECT_WITHIN(s.u(1, 'z'), -rotation * L / 2, rotation * L, 1e-9);
  EXPECT_WITHIN(s.u(1, 'Y'), rotation, rotation, 1e-9);
  EXPECT_WITHIN(s.u(1, 'x'), stretch + rotation * e, stretch, 1e-9);
  const solver::station mid = station_at(s.results.fields[0], 0.5);
  EXPECT_WITHIN(mid.force[0], N, N, 1e-9);
  EXPECT_WITHIN(mid.force[4], N * e, N * e, 1e-9);  // tension on the side of +z
  EXPECT_WITHIN(mid.displacement[0], s.u(1, 'x') / 2, s.u(1, 'x'), 1e-9);
  EXPECT_WITHIN(mid.displacement[2], s.u(1, 'z') / 4, rotation * L, 1e-9);
  // What the node exerts on the end: no moment there.
  EXPECT_NEAR(s.results.members[0][10], 0, 1e-6 * N * e);
  EXPECT_WITHIN(s.results.members[0][6], N, N, 1e-9);
}

// A channel with its nodes in the web: a force there twists it by its distance to the shear centre, 3 b^2 / (h + 6 b);
// its weight acts in the centroid, b^2 / (2 b + h) on the other side.
TEST(AnalysisBeamSections, ChannelTwists) {
  const double b = 60, h = 140, t = 4, L = 1000, P = 10;
  cantilever c{"ARBITRARY\n3, 60., -70., 0., -70., 4.\n0., 70., 4.\n60., 70., 4."};
  const double e = 3 * b * b / (h + 6 * b), centre = b * b / (2 * b + h), A = t * (2 * b + h);
  const double J = A * t * t / 3, I11 = t * h * h * h / 12 + b * t * h * h / 2 + b * t * t * t / 6;
  const solved s = c.solve_static("*CLOAD\n2, 3, 10.\n");
  const double twist = P * e * L / (G * J);
  EXPECT_WITHIN(s.u(1, 'X'), twist, twist, 1e-9);
  EXPECT_WITHIN(s.u(1, 'z'), P * L * L * L / (3 * E * I11) + twist * e, twist * e, 1e-9);
  const solved own = c.solve_static("*DLOAD\nB, GRAV, 9810., 0., 0., 1.\n");
  const double w = DENSITY * 9810 * A, sag = w * L * L * L * L / (8 * E * I11);
  const double weight_twist = w * (centre + e) * L * L / (2 * G * J);
  EXPECT_WITHIN(own.u(1, 'X'), weight_twist, weight_twist, 1e-9);
  EXPECT_WITHIN(own.u(1, 'z'), sag + weight_twist * e, sag, 1e-9);
  EXPECT_WITHIN(own.reaction(0, 'X'), -w * L * centre, w * L * centre, 1e-9);
  const solver::station mid = station_at(own.results.fields[0], 0.5);
  EXPECT_WITHIN(mid.rotation[0], weight_twist * 0.75, weight_twist, 1e-9);  // 2 xi - xi^2
  EXPECT_WITHIN(mid.force[3], w * (centre + e) * L / 2, w * L, 1e-9);
  // A force per length acts in the line of nodes.
  const solved line = c.solve_static("*DLOAD\nB, P2, 0.01\n");
  EXPECT_WITHIN(line.u(1, 'X'), 0.01 * e * L * L / (2 * G * J), 1e-3, 1e-9);
}

// Pins at the nodes, half a depth above the centroid: the span bends as if they were in it, and the free node moves by
// both end rotations times the distance.
TEST(AnalysisBeamSections, PinsActInTheNodes) {
  const double I = 30 * 60.0 * 60 * 60 / 12, q = 2, L = 1000, e = 30;
  cantilever c{"RECT, OFFSET2=0.5\n30., 60."};
  c.supports = "1, 1, 6\n2, 2, 6\n";
  c.cards = "*RELEASE\n1, S1, M1\n1, S2, M1\n";
  const solved s = c.solve_static("*DLOAD\n1, P2, -2.\n");
  const double rotation = q * L * L * L / (24 * E * I), sag = 5 * q * L * L * L * L / (384 * E * I);
  EXPECT_WITHIN(s.u(1, 'x'), -2 * rotation * e, rotation * e, 1e-9);
  const solver::station mid = station_at(s.results.fields[0], 0.5);
  EXPECT_WITHIN(mid.force[4], -q * L * L / 8, q * L * L, 1e-9);  // tension below
  EXPECT_WITHIN(mid.displacement[2], -sag, sag, 1e-9);
  EXPECT_NEAR(mid.force[0], 0, 1e-6);
  EXPECT_NEAR(s.results.members[0][4], 0, 1e-6);
  EXPECT_NEAR(s.results.members[0][10], 0, 1e-6);
}

// Where both nodes are held the span pulls at them: its end rotations q L^3 / 24 E I would move the pins apart by twice
// their distance e, and a force H in them moves them by L / E A + e^2 L / E I.
TEST(AnalysisBeamSections, ThrustBetweenEccentricPins) {
  const double A = 30 * 60, I = 30 * 60.0 * 60 * 60 / 12, q = 2, L = 1000, e = 30;
  cantilever c{"RECT, OFFSET2=0.5\n30., 60."};
  c.supports = "1, 1, 6\n2, 1, 6\n";
  c.cards = "*RELEASE\n1, S1, M1\n1, S2, M1\n";
  const solved s = c.solve_static("*DLOAD\n1, P2, -2.\n");
  const double H = q * L * L * L * e / (12 * E * I) / (L / (E * A) + e * e * L / (E * I));
  EXPECT_WITHIN(s.results.fields[0].force[0][0], H, H, 1e-9);
}

// A cantilever does not know where its nodes are: neither its frequencies nor its buckling loads.
TEST(AnalysisBeamSections, ModesDoNotDependOnWhereTheNodesAre) {
  cantilever middle{"RECT\n30., 60."}, off{"RECT, OFFSET1=0.7, OFFSET2=-1.5\n30., 60."};
  middle.count = off.count = 4;
  const std::string step = "*FREQUENCY\n12\n";
  middle.supports = off.supports = "5, ENCASTRE\n";
  expect_same(modes(off.read(step)), modes(middle.read(step)), 1e-8);
  const std::string buckle = "*BUCKLE\n2\n*CLOAD\n1, 1, 1.\n";
  expect_same(modes(off.read(buckle)), modes(middle.read(buckle)), 1e-8);
  EXPECT_WITHIN(modes(off.read(buckle))[0], PI * PI * E * (60 * 27000 / 12.0) / 4e6, 1e6, 1e-3);
}

// A flag pole under a force e beside it: the tip goes to e (sec kL - 1).
TEST(AnalysisBeamSections, SecantFormula) {
  const double I = 60 * 27000 / 12.0, e = 0.5 * 30, L = 1000, N = 40000;
  cantilever c{"RECT, OFFSET1=0.5\n30., 60."};
  c.count = 8;
  const solved s = solve(c.read("*STATIC\n*CLOAD\n9, 1, -40000.\n", ", PDELTA"));
  const double kL = L * std::sqrt(N / (E * I)), sway = e * (1 / std::cos(kL) - 1);
  EXPECT_GT(kL, 1);
  EXPECT_WITHIN(std::fabs(s.u(8, 'y')), sway, sway, 1e-4);
}

// An angle of equal legs bends about its axis of symmetry as it twists: (N - Nu) (N - Nt) = N^2 y0^2 / r0^2 with Nt =
// G J / r0^2 and r0^2 = Ip / A + y0^2 (Vlasov). One end is clamped, sections are free to warp: 1 - cos(pi x / 2 L).
TEST(AnalysisBeamSections, AngleBucklesByBendingAndTwisting) {
  const double t = 4, a = 100, A = (2 * (a - t / 2)) * t;
  cantilever c{"ARBITRARY\n2, 98., 0., 0., 0., 4.\n0., 98., 4."};
  c.length = 1500;
  c.count = 16;
  // The line of nodes is the shear centre; the force acts in the centroid: 24.5 along both axes.
  const double leg = a - t / 2, c1 = leg / 4, y0 = c1 * std::sqrt(2.0);
  // Of thin lines: about the centroid I11 = I22, I12; with the thickness of the strips.
  const double own = leg * t * t * t / 12;
  const double I11 = t * leg * leg * leg / 3 - A * c1 * c1 + own, I12 = -A * c1 * c1;
  const double strong = I11 - I12, Ip = 2 * I11;
  const double Nu = PI * PI * E * strong / (4 * c.length * c.length);
  const double r2 = Ip / A + y0 * y0, Nt = G * A * t * t / 3 / r2, shape = 1 - y0 * y0 / r2;
  const double sum = Nu + Nt, N = (sum - std::sqrt(sum * sum - 4 * shape * Nu * Nt)) / (2 * shape);
  const double weak = PI * PI * E * (I11 + I12) / (4 * c.length * c.length);
  const std::string moments = "17, 5, " + number(-24.5) + "\n17, 6, " + number(24.5) + "\n";
  const std::vector<double> found = modes(c.read("*BUCKLE\n2\n*CLOAD\n17, 1, -1.\n" + moments));
  ASSERT_EQ(found.size(), 2U);
  EXPECT_WITHIN(found[0], std::min(N, weak), N, 5e-3);
  EXPECT_WITHIN(found[1], std::max(N, weak), N, 5e-3);
}

// Stresses at the points of the angle under N, M1, M2 in its centroid:
//     sigma = N / A + (a x1 + b x2),  I22 a + I12 b = -M2,  I12 a + I11 b = M1.
TEST(AnalysisBeamSections, StressesAtSectionPoints) {
  const angle a;
  const double M1 = 3e5, M2 = -2e5, N = 1e4;
  cantilever c{ANGLE};
  // Moments at the nodes that leave N in the centroid.
  const solver::model m = c.read("*STATIC\n*CLOAD\n2, 1, 10000.\n2, 5, " + number(M1 + N * a.c2) + "\n2, 6, " +
                                 number(M2 - N * a.c1) + "\n");
  const solved s = solve(m);
  const double p = (-M2 * a.I11 - M1 * a.I12) / a.determinant, q = (M1 * a.I22 + M2 * a.I12) / a.determinant;
  const solver::station mid = station_at(s.results.fields[0], 0.3);
  ASSERT_EQ(m.frame_sections[0].points.size(), 9U);
  for (const solver::section_point& at : m.frame_sections[0].points) {
    const solver::point_stress stress = stress_at(m.frame_sections[0], at, mid.force);
    const double bending = p * (at.x1 - a.c1) + q * (at.x2 - a.c2);
    EXPECT_WITHIN(stress.axial, N / a.A, N / a.A, 1e-9);
    EXPECT_WITHIN(stress.bending, bending, 10, 1e-9);
  }
}

TEST(AnalysisBeamSections, EndForcesInTheTableOfMembers) {
  const cantilever c{"T\n100., 150., 60., 14., 8."};
  const run_test::ran r = run_test::run(c.deck("*STEP\n*STATIC\n*CLOAD\n2, 3, -100.\n*END STEP\n"));
  EXPECT_WITHIN(r.force(1, 1, 1, "moment_y"), 100 * 1000 * -1.0, 1e5, 1e-9);
}

// Tables of a step with forces and of one with modes: a rectangle of 2 by 3 under 60 and a moment of 120 about axis 1
// at the tip, I = 4.5.
TEST(AnalysisBeamSections, TablesOfPointsAndOfModes) {
  const cantilever c{"RECT\n2., 3."};
  const deck_test::scratch_folder scratch;
  solver::options wanted;
  wanted.deck = scratch.write("run.inp", c.deck("*STEP\n*STATIC\n*CLOAD\n2, 1, 60.\n2, 5, 120.\n*END STEP\n"
                                                "*STEP\n*FREQUENCY\n6\n*END STEP\n"));
  wanted.output = scratch.path("run.vtu");
  wanted.points = scratch.path("points.csv");
  wanted.modes = scratch.path("modes.csv");
  wanted.station_count = 2;
  wanted.quiet = true;
  solver::run(wanted);
  const std::vector<std::string> points = lines_of(scratch.path("points.1.csv"));
  ASSERT_EQ(points.size(), 51U);
  EXPECT_EQ(points[0], "element,distance,point,x1,x2,axial,bending,stress,shear_1,shear_2");
  const std::vector<double> last = numbers_of(points[50]), wanted_row = {1, 1000, 25, 1, 1.5, 10, 40, 50, 0, 0};
  ASSERT_EQ(last.size(), wanted_row.size());
  for (std::size_t i = 0; i < last.size(); ++i) EXPECT_NEAR(last[i], wanted_row[i], 1e-9) << i;
  const std::vector<std::string> modes = lines_of(scratch.path("modes.2.csv"));
  ASSERT_EQ(modes.size(), 10U);
  EXPECT_EQ(modes[0].substr(0, 44), "mode,frequency,generalized_mass,factor_x,fac");
  EXPECT_EQ(modes[7].substr(0, 4), "sum,");
  EXPECT_EQ(modes[8].substr(0, 5), "free,");
  // All modes of one element: of the consistent mass along the beam a third is free.
  const double mass = DENSITY * 6 * 1000;
  EXPECT_WITHIN(numbers_of(modes[7]).at(9), mass / 3, mass, 1e-9);
  EXPECT_WITHIN(numbers_of(modes[9]).at(9), mass, mass, 1e-6);
}
