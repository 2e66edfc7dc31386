// Frequencies and buckling factors of members and of shells against closed forms.
#include <gtest/gtest.h>

#include <cmath>

#include "analyses/modal_analysis.h"
#include "frame_decks.h"
#include "system/stopwatch.h"

using namespace frame_test;

namespace {

constexpr double PI = 3.14159265358979323846;

std::vector<double> modes(const solver::model& m, std::vector<std::string>* notes = nullptr) {
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
  if (notes != nullptr) *notes = found.notes;
  return values;
}

// Motion in the x-y plane alone: slender, so that rotary inertia is of no weight.
straight_member slender(int elements) {
  straight_member b;
  b.length = 10000;
  b.area = 400;
  b.inertia_xy = b.inertia_xz = 1000;
  b.elements = elements;
  return b;
}

const char* const IN_PLANE = "ALL, 3, 5\n";

// (k_i L)^2 with frequencies (k_i L)^2 sqrt(EI / rho A) / (2 pi L^2).
double frequency(const straight_member& b, double kl) {
  return kl * kl * std::sqrt(b.E * b.inertia_xy / (b.density * b.area)) / (2 * PI * b.length * b.length);
}

double euler(const straight_member& b) { return PI * PI * b.E * b.inertia_xy / (b.length * b.length); }

}  // namespace

TEST(AnalysisModes, SimplySupportedBeam) {
  const straight_member b = slender(20);
  const std::vector<double> f = modes(read(b.deck("", std::string(IN_PLANE) + "1, 1, 2\n21, 2\n", "*FREQUENCY\n5\n")));
  ASSERT_EQ(f.size(), 5U);
  // The consistent mass gives frequencies that are too high by (k h)^4 / 1440.
  for (int i = 1; i <= 5; ++i) {
    const double kh = i * PI / 20, exact = frequency(b, i * PI);
    EXPECT_WITHIN(f[static_cast<std::size_t>(i - 1)], exact, exact, 1e-6 + kh * kh * kh * kh / 720) << i;
  }
}

TEST(AnalysisModes, Cantilever) {
  const straight_member b = slender(20);
  const std::vector<double> f = modes(read(b.deck("", std::string(IN_PLANE) + "1, ENCASTRE\n", "*FREQUENCY\n3\n")));
  // Roots of cos x cosh x = -1.
  const double roots[] = {1.8751040687119611, 4.6940911329741746, 7.8547574382376126};
  ASSERT_EQ(f.size(), 3U);
  for (std::size_t i = 0; i < 3; ++i) EXPECT_WITHIN(f[i], frequency(b, roots[i]), frequency(b, roots[i]), 5e-5) << i;
}

TEST(AnalysisModes, FreeBeamHasRigidMotions) {
  const straight_member b = slender(24);
  std::vector<std::string> notes;
  const std::vector<double> f = modes(read(b.deck("", "ALL, 3, 5\n", "*FREQUENCY\n5\n")), &notes);
  ASSERT_EQ(f.size(), 5U);
  const double first = frequency(b, 4.7300407448627040), second = frequency(b, 7.8532046240958376);
  for (std::size_t i = 0; i < 3; ++i) EXPECT_LT(f[i], 1e-3 * first) << i;
  EXPECT_WITHIN(f[3], first, first, 1e-4);
  EXPECT_WITHIN(f[4], second, second, 1e-4);
  ASSERT_EQ(notes.size(), 1U);
  EXPECT_EQ(notes[0], "the structure can move freely: its first modes have the frequency 0");
}

TEST(AnalysisModes, BarOfTrusses) {
  // One T3D2 of mass rho A L, fixed and free: consistent mass rho A L / 3 at the free end.
  const double f = std::sqrt(3 * 70000 / 2.7e-9) / 500 / (2 * PI);
  const std::vector<double> found = modes(read(
      "*NODE\n1, 0, 0, 0\n2, 300, 0, 400\n*ELEMENT, TYPE=T3D2, ELSET=E\n1, 1, 2\n*MATERIAL, NAME=M\n*ELASTIC\n"
      "70000, 0.3\n*DENSITY\n2.7E-9\n*SOLID SECTION, ELSET=E, MATERIAL=M\n12\n*ELEMENT, TYPE=SPRING1, ELSET=S\n2, 2\n"
      "*SPRING, ELSET=S\n2\n1E-3\n*BOUNDARY\n1, PINNED\n2, 3\n*STEP\n*FREQUENCY\n2\n*END STEP\n"));
  // Held along z, the end moves along x: stiffness (EA/L) 0.36, and the spring alone across.
  ASSERT_EQ(found.size(), 2U);
  EXPECT_WITHIN(found[1], 0.6 * f, f, 1e-10);
  EXPECT_WITHIN(found[0], std::sqrt(1e-3 * 3 / (2.7e-9 * 12 * 500)) / (2 * PI), found[0], 1e-6);
}

TEST(AnalysisModes, EulerColumns) {
  struct column {
    const char* supports;
    double length_factor;
  };
  const column COLUMNS[] = {{"1, ENCASTRE\n", 2},
                            {"1, 1, 2\n11, 2\n", 1},
                            {"1, ENCASTRE\n11, 2\n", 0.69915566007},  // tan x = x: 4.4934094579
                            {"1, ENCASTRE\n11, 2\n11, 6\n", 0.5}};
  const straight_member b = slender(10);
  for (const column& c : COLUMNS) {
    const std::vector<double> factors =
        modes(read(b.deck("", std::string(IN_PLANE) + c.supports, "*BUCKLE\n1\n*CLOAD\n11, 1, -1.\n")));
    ASSERT_EQ(factors.size(), 1U);
    const double exact = euler(b) / (c.length_factor * c.length_factor);
    EXPECT_WITHIN(factors[0], exact, exact, 3e-4) << c.supports;
    EXPECT_GT(factors[0], exact * (1 - 1e-8));  // cubic shapes give an upper bound
  }
}

TEST(AnalysisModes, OneElementColumns) {
  // The known errors of one cubic element: 12 / pi^2 of the pinned load and 1.0075 of the cantilever's.
  const straight_member b = slender(1);
  const double pinned =
      modes(read(b.deck("", std::string(IN_PLANE) + "1, 1, 2\n2, 2\n", "*BUCKLE\n1\n*CLOAD\n2, 1, -1.\n")))[0];
  EXPECT_WITHIN(pinned / euler(b), 12 / (PI * PI), 1.0, 1e-9);
  const double tip =
      modes(read(b.deck("", std::string(IN_PLANE) + "1, ENCASTRE\n", "*BUCKLE\n1\n*CLOAD\n2, 1, -1.\n")))[0];
  EXPECT_WITHIN(tip / (euler(b) / 4), 1.0075, 1.0, 1e-4);
}

TEST(AnalysisModes, TensionDoesNotBuckle) {
  const straight_member b = slender(4);
  std::vector<std::string> notes;
  EXPECT_TRUE(modes(read(b.deck("", "1, ENCASTRE\n", "*BUCKLE\n2\n*CLOAD\n5, 1, 1.\n")), &notes).empty());
  ASSERT_EQ(notes.size(), 1U);
  EXPECT_EQ(notes[0], "the loads have no buckling factor above 0");
}

TEST(AnalysisModes, SimplySupportedPlate) {
  const double a = 1, h = 0.01, E = 2e5, nu = 0.3, rho = 8e-3;
  solver::material mat = isotropic(E, nu);
  mat.density = rho;
  grid g(
      16, 16, [&](double u, double v) { return rectangle(a, a, u, v); }, mat, h);
  g.fix(g.border(), "z");
  std::vector<int> all;
  for (int i = 0; i <= 16; ++i)
    for (int j = 0; j <= 16; ++j) all.push_back(g.node(i, j));
  g.fix(all, "xyZ");
  g.step().kind = solver::step_kind::FREQUENCY;
  g.step().modes = 4;
  const std::vector<double> f = modes(g.m);
  const double unit = std::sqrt(E * h * h * h / (12 * (1 - nu * nu)) / (rho * h)) / (a * a) / (2 * PI);
  const double expected[] = {2 * PI * PI, 5 * PI * PI, 5 * PI * PI, 8 * PI * PI};
  ASSERT_EQ(f.size(), 4U);
  for (std::size_t i = 0; i < 4; ++i) EXPECT_WITHIN(f[i], expected[i] * unit, expected[i] * unit, 0.02) << i;
}

TEST(AnalysisModes, HeldDrillingBringsNoMode) {
  // The same plate, held in its plane at two nodes only: the common rotation about the normal, which the solver holds
  // by itself, and the motions in the plane lie far above the first bending mode.
  solver::material mat = isotropic(2e5, 0.3);
  mat.density = 8e-3;
  grid g(
      12, 12, [](double u, double v) { return rectangle(1, 1, u, v); }, mat, 0.01);
  g.m.shell_sections[0].drilling = 0;
  g.fix(g.border(), "z");
  g.fix({g.node(0, 0)}, "xy");
  g.fix({g.node(12, 0)}, "y");
  g.step().kind = solver::step_kind::FREQUENCY;
  g.step().modes = 4;
  const std::vector<double> f = modes(g.m);
  const double unit = std::sqrt(2e5 * 1e-6 / (12 * 0.91) / (8e-3 * 0.01)) / (2 * PI);
  const double expected[] = {2 * PI * PI, 5 * PI * PI, 5 * PI * PI, 8 * PI * PI};
  ASSERT_EQ(f.size(), 4U);
  for (std::size_t i = 0; i < 4; ++i) EXPECT_WITHIN(f[i], expected[i] * unit, expected[i] * unit, 0.03) << i;
}

TEST(AnalysisModes, FreePlate) {
  // 10 x 10 x 0.05, E 200e9, rho 8000: 1.622, 2.360, 2.922 and 4.233 Hz (twice), after six rigid motions.
  solver::material mat = isotropic(200e9, 0.3);
  mat.density = 8000;
  grid g(
      16, 16, [](double u, double v) { return rectangle(10, 10, u, v); }, mat, 0.05);
  g.step().kind = solver::step_kind::FREQUENCY;
  g.step().modes = 11;
  const std::vector<double> f = modes(g.m);
  const double expected[] = {1.622, 2.360, 2.922, 4.233, 4.233};
  ASSERT_EQ(f.size(), 11U);
  for (std::size_t i = 0; i < 6; ++i) EXPECT_LT(f[i], 1e-2) << i;
  for (std::size_t i = 0; i < 5; ++i) EXPECT_WITHIN(f[6 + i], expected[i], expected[i], 0.02) << i;
}

TEST(AnalysisModes, PlateBuckling) {
  // Simply supported, compressed on two sides: k = 4; on all four: k = 2 (Ncr = k pi^2 D / b^2).
  const double a = 1, h = 0.01, E = 2e5, nu = 0.3;
  const int n = 16;
  for (const bool biaxial : {false, true}) {
    grid g(
        n, n, [&](double u, double v) { return rectangle(a, a, u, v); }, isotropic(E, nu), h);
    g.fix(g.border(), "z");
    g.fix({g.node(n / 2, n / 2)}, "xyZ");
    g.fix({g.node(n / 2, 0)}, "x");
    g.load_line(g.along_y(0), 'x', 1);
    g.load_line(g.along_y(n), 'x', -1);
    if (biaxial) {
      g.load_line(g.along_x(0), 'y', 1);
      g.load_line(g.along_x(n), 'y', -1);
    }
    g.step().kind = solver::step_kind::BUCKLE;
    g.step().modes = 1;
    const double k = modes(g.m)[0] / (PI * PI * E * h * h * h / (12 * (1 - nu * nu)) / (a * a));
    EXPECT_WITHIN(k, biaxial ? 2.0 : 4.0, biaxial ? 2.0 : 4.0, 0.02);
  }
}

TEST(AnalysisModes, VibratingBeamDeck) {
  const std::vector<double> f = modes(deck("vibrating_beam.inp"));
  const double first = PI / 2 * std::sqrt(210000 * 1000 / (7.85e-9 * 400)) / 1e8;
  ASSERT_EQ(f.size(), 5U);
  for (std::size_t i = 0; i < 5; ++i) {
    const double exact = first * static_cast<double>((i + 1) * (i + 1));
    EXPECT_WITHIN(f[i], exact, exact, 1e-3) << i;
  }
}

TEST(AnalysisModes, EulerColumnsDeck) {
  const std::vector<double> factors = modes(deck("euler_columns.inp"));
  const double pinned = PI * PI * 210000 * 1e6 / (4000.0 * 4000.0) / 1000;
  // Free head; pinned; clamped foot and pinned head; the free head's second mode; clamped ends, and the second pinned
  // mode.
  const double expected[] = {0.25, 1, 2.0457483, 2.25, 4, 4};
  ASSERT_EQ(factors.size(), 6U);
  for (std::size_t i = 0; i < 6; ++i) EXPECT_WITHIN(factors[i], expected[i] * pinned, expected[i] * pinned, 1e-3) << i;
}
