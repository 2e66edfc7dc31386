// Temperature: what expands freely has no stress, what is held has all of it.
#include <gtest/gtest.h>

#include "analysis_support.h"

using namespace analysis_test;

namespace {

constexpr double E = 2e5, NU = 0.3, ALPHA = 1.2e-5, A = 3, B = 2, H = 0.05;

grid plate(const solver::material& mat) {
  return grid(
      4, 3, [](double u, double v) { return rectangle(A, B, u, v); }, mat, H);
}

solver::material steel() {
  solver::material mat = isotropic(E, NU);
  mat.alpha1 = mat.alpha2 = ALPHA;
  return mat;
}

// Supports that hold the plate and hinder nothing. The rotation about the normal does not keep a plate from turning in
// its plane; a second point does.
void hold(grid& g) {
  g.fix({g.node(0, 0)}, "xyzXY");
  g.fix({g.node(4, 0)}, "y");
}

void expect_no_stress(const solved& s, double scale) {
  for (const solver::element_result& e : s.results.elements)
    for (const solver::surface_stress& at : e.at)
      EXPECT_WITHIN(std::vector<double>(at.stress.begin(), at.stress.end()), (std::vector<double>{0, 0, 0}), scale,
                    1e-8);
}

}  // namespace

TEST(AnalysisTemperature, FreeExpansion) {
  grid g = plate(steel());
  hold(g);
  g.temperature(50, 0);
  const solved s = solve(g.m);
  EXPECT_WITHIN(s.u(g.node(4, 3), 'x'), ALPHA * 50 * A, ALPHA * 50 * A, 1e-9);
  EXPECT_WITHIN(s.u(g.node(4, 3), 'y'), ALPHA * 50 * B, ALPHA * 50 * B, 1e-9);
  expect_no_stress(s, E * ALPHA * 50);
}

TEST(AnalysisTemperature, FreeBending) {
  // Warmer towards the top by g per length: the plate becomes a dome, w = -alpha g (x^2 + y^2) / 2.
  grid g = plate(steel());
  hold(g);
  g.temperature(0, 20 / H);
  const solved s = solve(g.m);
  const double w = -ALPHA * (20 / H) * (A * A + B * B) / 2;
  EXPECT_WITHIN(s.u(g.node(4, 3), 'z'), w, -w, 1e-9);
  expect_no_stress(s, E * ALPHA * 20);
}

TEST(AnalysisTemperature, HeldPlate) {
  grid g = plate(steel());
  for (int i = 0; i <= 4; ++i) g.fix(g.along_y(i), "xyzXYZ");
  g.temperature(50, 20 / H);
  const solved s = solve(g.m);
  const double middle = -E * ALPHA * 50 / (1 - NU), face = E * ALPHA * 10 / (1 - NU);
  for (const solver::element_result& e : s.results.elements) {
    EXPECT_WITHIN(e.at[solver::MIDDLE].stress[0], middle, -middle, 1e-12);
    EXPECT_WITHIN(e.at[solver::TOP].stress[1], middle - face, -middle, 1e-12);
    EXPECT_WITHIN(e.at[solver::BOTTOM].stress[1], middle + face, -middle, 1e-12);
    EXPECT_WITHIN(e.at[solver::MIDDLE].equivalent, -middle, -middle, 1e-12);
  }
}

TEST(AnalysisTemperature, NodesAreAveragedOverAnElement) {
  // One node of a corner triangle is warm: the element's change is a third of it.
  grid g(
      1, 1, [](double u, double v) { return rectangle(A, B, u, v); }, steel(), H);
  g.fix(g.border(), "xyzXYZ");
  solver::nodal_temperature warm;
  warm.node = g.node(1, 0);
  warm.change = 30;
  g.step().temperatures = {warm};
  const solved s = solve(g.m);
  EXPECT_WITHIN(s.results.elements[0].at[solver::MIDDLE].stress[0], -E * ALPHA * 10 / (1 - NU), E * ALPHA * 10, 1e-12);
  EXPECT_EQ(s.results.elements[1].at[solver::MIDDLE].stress[0], 0.0);
}

TEST(AnalysisTemperature, OrthotropicExpansionTurnsWithTheMaterial) {
  solver::material board = isotropic(4e4, 0.25);
  board.orthotropic = true;
  board.E2 = 2e4;
  board.alpha1 = 1e-5;
  board.alpha2 = 4e-5;
  for (const auto& [angle, along_x, along_y] :
       {std::array<double, 3>{0, 1e-5, 4e-5}, {90, 4e-5, 1e-5}, {-90, 4e-5, 1e-5}, {180, 1e-5, 4e-5}}) {
    grid g = plate(board);
    g.m.shell_sections[0].orientation_angle = angle;
    hold(g);
    g.temperature(50, 0);
    const solved s = solve(g.m);
    EXPECT_WITHIN(s.u(g.node(4, 3), 'x'), along_x * 50 * A, along_x * 50 * A, 1e-6) << angle;
    EXPECT_WITHIN(s.u(g.node(4, 3), 'y'), along_y * 50 * B, along_y * 50 * B, 1e-6) << angle;
  }
  // Between them the plate shears: xx, yy and half the shear strain turn as a tensor. The side y = 0 stays where it is.
  grid g = plate(board);
  g.m.shell_sections[0].orientation_angle = 45;
  hold(g);
  g.temperature(50, 0);
  const solved s = solve(g.m);
  EXPECT_WITHIN(s.u(g.node(4, 3), 'x'), 50 * (2.5e-5 * A - 3e-5 * B), 50 * 2.5e-5 * A, 1e-6);
  EXPECT_WITHIN(s.u(g.node(4, 3), 'y'), 50 * 2.5e-5 * B, 50 * 2.5e-5 * A, 1e-6);
  expect_no_stress(s, E * ALPHA * 50);
}
