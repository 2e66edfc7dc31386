// analysis_cards_test.cpp: cards that meet on one place, and what becomes of a material on its way to the library.
#include <gtest/gtest.h>

#include <array>

#include "analysis_support.h"
#include "elements/library_model.h"
#include "finites/services.h"

using namespace analysis_test;

namespace {

grid plate() {
  return grid(
      2, 2, [](double u, double v) { return rectangle(3, 2, u, v); }, isotropic(1000, 0.25), 0.1);
}

solver::boundary_condition condition(int node, int first, int last, double value) {
  solver::boundary_condition c;
  c.node = node;
  c.first_dof = first;
  c.last_dof = last;
  c.value = value;
  return c;
}

}  // namespace

TEST(AnalysisCards, LoadsOnTheSamePlaceAdd) {
  grid g = plate();
  g.m.materials[0].density = 8;
  for (const double value : {3.0, 4.0}) g.load(4, 'Y', value);
  g.load(4, 'X', 16);
  g.pressure(5);
  g.pressure(-7);
  g.gravity(10, {0, 0, -1});
  g.gravity(2, {0.6, 0, 0.8});
  const solver::load_case loads = solver::gather_load_case(g.m, g.step());
  EXPECT_EQ(loads.nodal_load[6 * 4 + 4], 7);
  EXPECT_EQ(loads.nodal_load[6 * 4 + 3], 16);
  ASSERT_EQ(loads.element.size(), 8U);
  for (const solver::distributed_load& load : loads.element) {
    EXPECT_EQ(load.pressure, -2);
    EXPECT_WITHIN((std::vector<double>{load.body[0], load.body[1], load.body[2]}),
                  (std::vector<double>{8 * 1.2, 0, 8 * (1.6 - 10)}), 80, 1e-15);
  }
}

TEST(AnalysisCards, ConditionsOfAStepReplaceThoseOfTheHead) {
  grid g = plate();
  g.m.boundaries = {condition(1, 1, 3, 0.5), condition(2, 6, 6, 0.25)};
  g.step().boundaries = {condition(1, 2, 2, -4), condition(3, 5, 6, 8)};
  const solver::load_case loads = solver::gather_load_case(g.m, g.step());
  std::vector<char> prescribed(54, 0);
  std::vector<double> value(54, 0.0);
  const auto expect = [&](std::size_t node, std::size_t direction, double v) {
    prescribed[6 * node + direction] = 1;
    value[6 * node + direction] = v;
  };
  expect(1, 0, 0.5);
  expect(1, 1, -4);
  expect(1, 2, 0.5);
  expect(2, 5, 0.25);
  expect(3, 4, 8);
  expect(3, 5, 8);
  EXPECT_EQ(loads.prescribed, prescribed);
  EXPECT_EQ(loads.prescribed_value, value);
}

// Along the normal of the elements, wherever that points.
TEST(AnalysisCards, PressureOnATiltedPlate) {
  grid g(
      3, 2,
      [](double u, double v) {
        return point{3 * u, 2 * v + u, v - 2 * u};
      },
      isotropic(100, 0.2), 0.1);
  for (int i = 0; i <= 3; ++i) g.fix(g.along_y(i), "xyzXYZ");
  g.pressure(4);
  const solved s = solve(g.m);
  std::vector<int> all;
  for (int n = 0; n < 12; ++n) all.push_back(n);
  // (3, 1, -2) x (0, 2, 1) = (5, -3, 6) is the area along the normal.
  const std::vector<double> sum = {s.reaction(all, 'x'), s.reaction(all, 'y'), s.reaction(all, 'z')};
  EXPECT_WITHIN(sum, (std::vector<double>{-20, 12, -24}), 24, 1e-13);
}

TEST(AnalysisCards, IsotropicMaterialMayExpandDifferentlyInItsTwoDirections) {
  for (const bool turned : {false, true}) {
    grid g = plate();
    g.m.materials[0].alpha1 = 1e-5;
    g.m.materials[0].alpha2 = 4e-5;
    g.m.shell_sections[0].orientation_angle = turned ? 90 : 0;
    g.fix({g.node(0, 0)}, "xyzXY");
    g.fix({g.node(2, 0)}, "y");
    g.temperature(50, 0);
    const solved s = solve(g.m);
    EXPECT_WITHIN(s.u(g.node(2, 2), 'x'), (turned ? 4e-5 : 1e-5) * 50 * 3, 6e-3, 1e-6) << turned;
    EXPECT_WITHIN(s.u(g.node(2, 2), 'y'), (turned ? 1e-5 : 4e-5) * 50 * 2, 6e-3, 1e-6) << turned;
  }
}

// Numbers that single precision holds, all different.
TEST(AnalysisCards, OrthotropicMaterialReachesItsRecord) {
  grid g = plate();
  solver::material& mat = g.m.materials[0];
  mat.orthotropic = true;
  mat.E1 = 4096;
  mat.E2 = 1024;
  mat.NU12 = 0.25;
  mat.G12 = 512;
  mat.G13 = 256;
  mat.G23 = 128;
  mat.alpha1 = 0.5;
  mat.alpha2 = 0.125;
  const solver::library_model library(g.m);
  const std::int32_t number = 1;
  std::int32_t status = -1;
  MATERIAL_RECORD r{};
  ZelkMaterialGetRec(&number, &r, &status);
  EXPECT_EQ(status, 0);
  EXPECT_EQ(r.mtype, 0);
  EXPECT_EQ(r.ortho, 1);
  const std::array<float, 9> actual = {r.E1, r.E2, r.NU1, r.NU2, r.G12, r.G13, r.G23, r.ALPHA1, r.ALPHA2};
  const std::array<float, 9> expected = {4096, 1024, 0.25F, 0.0625F, 512, 256, 128, 0.5F, 0.125F};
  EXPECT_EQ(actual, expected);
}
