// The decks of quadrilaterals, solved from their files: what the heading of each states must come out.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "frame_decks.h"
#include "shell_decks.h"

using namespace shell_test;
using frame_test::deck;

namespace {

constexpr double PI = 3.14159265358979323846;

// Of the plates of plates.py: E 1e7, nu 0.3, side 1.
double flexural(double h) { return 1e7 * h * h * h / (12 * 0.91); }

}  // namespace

TEST(AnalysisShellsDecks, ThickPlate) {
  const double w = (0.0040624 + 0.073677 * 0.01 / (6 * 0.7 * 5 / 6)) / flexural(0.1);
  EXPECT_WITHIN(solve(deck("thick_plate_quads.inp")).u(80, 'z'), w, w, 0.01);
}

TEST(AnalysisShellsDecks, BucklingPlate) {
  solver::model m = deck("buckling_plate_quads.inp");
  const double unit = PI * PI * flexural(1e-3);
  ASSERT_EQ(m.steps.size(), 3U);
  for (const double k : {4.0, 2.0}) {
    EXPECT_WITHIN(modes(m)[0], k * unit, k * unit, 0.02);
    m.steps.erase(m.steps.begin());
  }
}

TEST(AnalysisShellsDecks, VibratingPlate) {
  const std::vector<double> f = modes(deck("vibrating_plate_quads.inp"));
  const double unit = std::sqrt(flexural(1e-3) / 1e-3) / (2 * PI);
  const double expected[] = {35.985, 73.394, 73.394, 108.22};
  ASSERT_EQ(f.size(), 4U);
  for (std::size_t i = 0; i < 4; ++i) EXPECT_WITHIN(f[i], expected[i] * unit, expected[i] * unit, 0.03) << i;
}

TEST(AnalysisShellsDecks, MembranePatch) {
  const solved s = solve(deck("membrane_patch_quads.inp"));
  ASSERT_EQ(s.results.parts.size(), 8U);
  for (const solver::nodal_part& part : s.results.parts)
    for (const solver::surface_stress& at : part.at)
      EXPECT_WITHIN((std::vector<double>{at.stress[0], at.stress[1], at.stress[2]}),
                    (std::vector<double>{4000.0 / 3, 4000.0 / 3, 400}), 1000.0, 1e-10);
}

TEST(AnalysisShellsDecks, HeatedPlate) {
  const solved s = solve(deck("heated_plate_quads.inp"));
  const double M = 2e5 * 1e-4 * 1.2e-5 * 20 / (12 * 0.7);
  for (std::size_t e = 0; e < 4; ++e) EXPECT_WITHIN(s.results.elements[e].moment[0], -M, M, 1e-12);
  for (std::size_t e = 4; e < 8; ++e) EXPECT_LT(std::fabs(s.results.elements[e].moment[0]), 1e-9 * M);
  double lowest = 0;
  for (std::size_t f = 2; f < s.solution.displacement.size(); f += 6)
    lowest = std::min(lowest, s.solution.displacement[f]);
  EXPECT_WITHIN(lowest, -0.024, 0.024, 1e-9);
}
