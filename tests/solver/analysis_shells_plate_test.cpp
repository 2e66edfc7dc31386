// Plates of triangles, of quadrilaterals and of both, thin and thick: deflections, frequencies, buckling factors,
// temperature gradients.
#include <gtest/gtest.h>

#include <cmath>

#include "frame_decks.h"
#include "shell_decks.h"

using namespace shell_test;
using frame_test::number;

namespace {

constexpr double PI = 3.14159265358979323846;
const std::string SUPPORTED = "LEFT, 3, 4\nRIGHT, 3, 4\nLOWER, 3\nLOWER, 5\nUPPER, 3\nUPPER, 5\n";
const std::string IN_PLANE = "ALL, 1, 2\nALL, 6\n";

}  // namespace

TEST(AnalysisShellsPlate, ThickPlateDeflectsByItsShear) {
  // Hard simple supports, h / a = 0.1 and 1e-4: 0.0040624 + 0.073677 (h/a)^2 / (6 (1 - nu) 5/6), by q a^4 / D.
  for (sheet s : all_forms()) {
    for (const double h : {0.1, 1e-4}) {
      s.n = 16;
      s.thickness = h;
      const double load = s.D();  // the deflection in units of q a^4 / D
      const double w = solve(read(s.deck(IN_PLANE + SUPPORTED, "*STATIC\n*DLOAD\nSKIN, P, " + number(load) + "\n")))
                           .u(s.node(8, 8), 'z');
      const double shear = s.formulation == "THICK" ? 0.073677 * h * h / (6 * 0.7 * 5 / 6) : 0;
      EXPECT_WITHIN(w, 0.0040624 + shear, 0.004, 0.015) << name_of(s) << " " << h;
    }
  }
}

TEST(AnalysisShellsPlate, Frequencies) {
  const double expected[] = {2 * PI * PI, 5 * PI * PI, 5 * PI * PI, 8 * PI * PI};
  for (sheet s : all_forms()) {
    s.n = 16;
    s.thickness = 1e-3;
    const double unit = std::sqrt(s.D() / (s.density * s.thickness)) / (2 * PI);
    const std::vector<double> f = modes(read(s.deck(IN_PLANE + SUPPORTED, "*FREQUENCY\n4\n")));
    ASSERT_EQ(f.size(), 4U);
    for (std::size_t i = 0; i < 4; ++i)
      EXPECT_WITHIN(f[i], expected[i] * unit, expected[i] * unit, 0.02) << name_of(s) << " mode " << i + 1;
  }
}

TEST(AnalysisShellsPlate, BucklingFactors) {
  // Ncr = k pi^2 D / a^2; k is 4 for compression one way and 2 for both.
  for (sheet s : all_forms()) {
    s.n = 12;
    const std::string held = "ALL, 6\n1, 1, 2\n" + std::to_string(s.node(s.n, 0) + 1) + ", 2\n" + SUPPORTED;
    const std::string one_way = line_load(s, 0, 1, 1) + line_load(s, 1, 1, -1);
    const std::string other_way = line_load(s, 2, 2, 1) + line_load(s, 3, 2, -1);
    const double unit = PI * PI * s.D();
    EXPECT_WITHIN(modes(read(s.deck(held, "*BUCKLE\n1\n*CLOAD\n" + one_way)))[0], 4 * unit, 4 * unit, 0.03)
        << name_of(s);
    EXPECT_WITHIN(modes(read(s.deck(held, "*BUCKLE\n1\n*CLOAD\n" + one_way + other_way)))[0], 2 * unit, 2 * unit, 0.03)
        << name_of(s);
  }
}

TEST(AnalysisShellsPlate, PDeltaMagnifiesByTheBucklingLoad) {
  // Compression to a share c of the buckling load beside a pressure in the shape of the first mode, as good as uniform:
  // the deflection grows by nearly 1 / (1 - c).
  for (const char* const formulation : {"THIN", "THICK"}) {
    sheet s;
    s.n = 12;
    s.formulation = formulation;
    const std::string held = "ALL, 6\n1, 1, 2\n" + std::to_string(s.node(s.n, 0) + 1) + ", 2\n" + SUPPORTED;
    const std::string push = "*CLOAD\n" + line_load(s, 0, 1, 2 * PI * PI * s.D()) +
                             line_load(s, 1, 1, -2 * PI * PI * s.D()) + "*DLOAD\nSKIN, P, 1E-3\n";
    std::string deck = s.deck(held, "*STATIC\n" + push);
    const double first_order = solve(read(deck)).u(s.node(6, 6), 'z');
    deck.replace(deck.find("*STEP\n"), 6, "*STEP, PDELTA\n");
    EXPECT_WITHIN(solve(read(deck)).u(s.node(6, 6), 'z') / first_order, 2.0, 2.0, 0.03) << formulation;
  }
}

// The curvature of a free plate is alpha g, whatever its thickness: a dome where the top is warmer, w = -alpha g
// (x^2 + y^2) / 2 from the held corner, without stress.
TEST(AnalysisShellsPlate, FreeCurvatureOfATemperatureGradient) {
  for (sheet s : all_forms())
    for (const double thickness : {0.002, 0.01, 0.05}) {
      s.thickness = thickness;
      const std::string corner = std::to_string(s.node(s.n, 0) + 1);
      const solved r = solve(read(s.deck("1, 1, 5\n" + corner + ", 2\n", "*STATIC\n*TEMPERATURE\nALL, 50., 2000.\n")));
      const double w = -s.expansion * 2000, u = s.expansion * 50;
      EXPECT_WITHIN(r.u(s.node(s.n, s.n), 'z'), w, -w, 1e-8) << name_of(s);
      EXPECT_WITHIN(r.u(s.node(s.n, s.n), 'x'), u, u, 1e-8) << name_of(s);
      for (const solver::element_result& e : r.results.elements)
        for (const solver::surface_stress& at : e.at)
          EXPECT_LT(at.equivalent, 1e-7 * s.E * s.expansion * 50) << name_of(s);
    }
}

TEST(AnalysisShellsPlate, TemperatureGradientOfAClampedPlate) {
  // Nothing moves: M = E h^3 alpha g / 12 (1 - nu), pressure at the warm top.
  for (const sheet& s : all_forms()) {
    const solved r = solve(read(s.deck("ALL, ENCASTRE\n", "*STATIC\n*TEMPERATURE\nALL, 0., 2000.\n")));
    const double M = s.E * std::pow(s.thickness, 3) * s.expansion * 2000 / (12 * (1 - s.nu));
    for (const solver::element_result& e : r.results.elements) {
      EXPECT_WITHIN(e.moment[0], -M, M, 1e-12) << name_of(s);
      EXPECT_WITHIN(e.moment[1], -M, M, 1e-12) << name_of(s);
      EXPECT_WITHIN(e.moment[2], 0.0, M, 1e-12) << name_of(s);
    }
    // The reactions of the border hold the moment: about x on the lower edge, M times its length.
    EXPECT_WITHIN(std::fabs(r.reaction(s.edge(2), 'X')), M, M, 1e-9) << name_of(s);
  }
}
