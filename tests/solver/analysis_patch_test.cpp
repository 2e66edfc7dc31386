// Fields of constant strain and of constant curvature through the whole solver, on the distorted mesh of MacNeal and
// Harder (1985) with its quadrilaterals cut in two: exact whatever the mesh.
#include <gtest/gtest.h>

#include "analysis_support.h"

using namespace analysis_test;

namespace {

constexpr double E = 1e6, NU = 0.25, T = 0.001;

solver::model patch(solver::element_type type) {
  solver::model m;
  m.deck = "patch.inp";
  m.materials = {isotropic(E, NU)};
  solver::shell_section section;
  section.material = 0;
  section.formulation = solver::shell_formulation::THIN;
  section.thickness = T;
  m.shell_sections = {section};
  m.steps.resize(1);
  for (const point& xyz : {point{0, 0, 0},
                           {.24, 0, 0},
                           {.24, .12, 0},
                           {0, .12, 0},
                           {.04, .02, 0},
                           {.18, .03, 0},
                           {.16, .08, 0},
                           {.08, .08, 0}}) {
    solver::node n;
    n.id = 10 * (static_cast<int>(m.nodes.size()) + 1);
    n.xyz = xyz;
    m.nodes.push_back(n);
  }
  const int quads[5][4] = {{0, 1, 5, 4}, {1, 2, 6, 5}, {2, 3, 7, 6}, {3, 0, 4, 7}, {4, 5, 6, 7}};
  for (const auto& q : quads) {
    for (const std::array<int, 3>& corners : {std::array<int, 3>{q[0], q[1], q[2]}, {q[2], q[3], q[0]}}) {
      solver::element e;
      e.id = static_cast<int>(m.elements.size()) + 1;
      e.type = type;
      e.nodes = {corners[0], corners[1], corners[2]};
      e.section = 0;
      m.elements.push_back(e);
    }
  }
  return m;
}

void prescribe(solver::model& m, int node, int dof, double value) {
  solver::boundary_condition condition;
  condition.node = node;
  condition.first_dof = condition.last_dof = dof;
  condition.value = value;
  m.boundaries.push_back(condition);
}

double x(const solver::model& m, int n) { return m.nodes[static_cast<std::size_t>(n)].xyz[0]; }
double y(const solver::model& m, int n) { return m.nodes[static_cast<std::size_t>(n)].xyz[1]; }
double membrane_u(const solver::model& m, int n) { return 1e-3 * (x(m, n) + y(m, n) / 2); }
double membrane_v(const solver::model& m, int n) { return 1e-3 * (y(m, n) + x(m, n) / 2); }

}  // namespace

TEST(AnalysisPatch, ConstantMembraneStress) {
  for (const solver::element_type type : {solver::element_type::S3, solver::element_type::M3D3}) {
    solver::model m = patch(type);
    for (int n = 0; n < 4; ++n) {
      prescribe(m, n, 1, membrane_u(m, n));
      prescribe(m, n, 2, membrane_v(m, n));
      for (int dof = 3; dof <= 6; ++dof) prescribe(m, n, dof, 0);
    }
    const solved s = solve(m);
    for (int n = 4; n < 8; ++n) {
      EXPECT_WITHIN(s.u(n, 'x'), membrane_u(m, n), 1e-4, 1e-10);
      EXPECT_WITHIN(s.u(n, 'y'), membrane_v(m, n), 1e-4, 1e-10);
    }
    // s = E / (1 - nu^2) (1 + nu) 1e-3 in both directions, tau = G 1e-3; xx, yy, zz, xy, yz, xz.
    const double normal = E / (1 - NU) * 1e-3, shear = E / (2 * (1 + NU)) * 1e-3;
    const std::vector<double> expected = {normal, normal, 0, shear, 0, 0};
    for (const solver::nodal_result& node : s.results.nodes)
      EXPECT_WITHIN(std::vector<double>(node.top.begin(), node.top.end()), expected, normal, 1e-10);
    // Both rows of tractions of the upper and lower side cancel: what is left is the normal force of the right side.
    EXPECT_WITHIN(s.reaction({1, 2}, 'x'), normal * T * 0.12, normal * T * 0.12, 1e-9);
    EXPECT_WITHIN(s.reaction({1, 2}, 'y'), shear * T * 0.12, normal * T * 0.12, 1e-9);
  }
}

TEST(AnalysisPatch, ConstantCurvature) {
  solver::model m = patch(solver::element_type::S3);
  const auto w = [&](int n) { return 0.5e-3 * (x(m, n) * x(m, n) + x(m, n) * y(m, n) + y(m, n) * y(m, n)); };
  const auto wx = [&](int n) { return 0.5e-3 * (2 * x(m, n) + y(m, n)); };
  const auto wy = [&](int n) { return 0.5e-3 * (x(m, n) + 2 * y(m, n)); };
  for (int n = 0; n < 4; ++n) {
    prescribe(m, n, 1, 0);
    prescribe(m, n, 2, 0);
    prescribe(m, n, 3, w(n));
    prescribe(m, n, 4, wy(n));
    prescribe(m, n, 5, -wx(n));
    prescribe(m, n, 6, 0);
  }
  const solved s = solve(m);
  for (int n = 4; n < 8; ++n) {
    EXPECT_WITHIN(s.u(n, 'z'), w(n), 1e-5, 1e-9);
    EXPECT_WITHIN(s.u(n, 'X'), wy(n), 1e-4, 1e-9);
    EXPECT_WITHIN(s.u(n, 'Y'), -wx(n), 1e-4, 1e-9);
  }
  // A surface that is hollow upwards is pressed at its top: s = -6 M / t^2 with the published moments.
  const double D = E * T * T * T / (12 * (1 - NU * NU));
  const double normal = 6 * D * (1 + NU) * 1e-3 / (T * T), twist = 6 * D * (1 - NU) * 0.5e-3 / (T * T);
  EXPECT_WITHIN(normal, 0.667, 0.667, 1e-3);
  EXPECT_WITHIN(twist, 0.2, 0.2, 1e-3);
  for (const solver::nodal_result& node : s.results.nodes) {
    EXPECT_WITHIN(std::vector<double>(node.top.begin(), node.top.end()),
                  (std::vector<double>{-normal, -normal, 0, -twist, 0, 0}), normal, 1e-8);
    EXPECT_WITHIN(std::vector<double>(node.bottom.begin(), node.bottom.end()),
                  (std::vector<double>{normal, normal, 0, twist, 0, 0}), normal, 1e-8);
  }
}
