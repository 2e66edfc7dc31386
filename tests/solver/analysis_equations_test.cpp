// The scatter map against assembly by a dense matrix, and the solvers against a dense factorisation.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include <Eigen/Dense>

#include "analysis_support.h"
#include "elements/scatter_map.h"
#include "system/assembly.h"

using namespace analysis_test;
using namespace solver;

namespace {

// A wavy sheet whose nodes are numbered at random, with degrees of freedom prescribed at random.
grid random_sheet(std::mt19937& engine) {
  const auto wave = [&](double u, double v) {
    return point{3 * u, 2 * v, 0.3 * u * v + 0.1 * static_cast<double>(engine() % 1000) / 1000};
  };
  grid g(4, 3, wave, isotropic(1000, 0.3), 0.2);
  std::vector<int> order(g.m.nodes.size());
  for (std::size_t i = 0; i < order.size(); ++i) order[i] = static_cast<int>(i);
  std::shuffle(order.begin(), order.end(), engine);
  std::vector<solver::node> nodes = g.m.nodes;
  for (std::size_t i = 0; i < order.size(); ++i) nodes[static_cast<std::size_t>(order[i])] = g.m.nodes[i];
  g.m.nodes = nodes;
  for (element& e : g.m.elements)
    for (int& n : e.nodes) n = order[static_cast<std::size_t>(n)];
  for (int n = 0; n < static_cast<int>(order.size()); ++n)
    for (const char letter : std::string("xyzXYZ"))
      if (engine() % 4 == 0) g.fix({n}, std::string(1, letter), static_cast<double>(engine() % 100) * 1e-3);
  return g;
}

Eigen::MatrixXd dense_stiffness(const model& m, library_model& library) {
  const auto size = static_cast<Eigen::Index>(6 * m.nodes.size());
  Eigen::MatrixXd K = Eigen::MatrixXd::Zero(size, size);
  element_matrix stiffness;
  for (std::size_t e = 0; e < m.elements.size(); ++e) {
    library.stiffness(e, stiffness);
    for (int i = 0; i < 18; ++i)
      for (int j = 0; j < 18; ++j)
        K(static_cast<Eigen::Index>(element_freedom(m.elements[e], i)),
          static_cast<Eigen::Index>(element_freedom(m.elements[e], j))) += stiffness(i + 1, j + 1);
  }
  return K;
}

}  // namespace

TEST(AnalysisEquations, ScatterMapAgainstDenseAssembly) {
  std::mt19937 engine(7);
  for (int trial = 0; trial < 10; ++trial) {
    const grid g = random_sheet(engine);
    library_model library(g.m);
    const load_case loads = gather_load_case(g.m, g.m.steps.front());
    symmetric_matrix K;
    const scatter_map map = make_scatter_map(g.m, loads, K);
    std::vector<double> right(map.equations, 0.0);
    assemble_stiffness(g.m, library, loads, map, K, right, progress("", false));

    const Eigen::MatrixXd dense = dense_stiffness(g.m, library);
    const double scale = dense.cwiseAbs().maxCoeff();
    std::vector<std::size_t> free;
    for (std::size_t f = 0; f < map.equation.size(); ++f)
      if (map.equation[f] != PRESCRIBED) free.push_back(f);
    ASSERT_EQ(free.size(), K.order());
    std::size_t not_zero = 0, seen = 0;
    for (std::size_t j = 0; j < free.size(); ++j) {
      const auto column = static_cast<Eigen::Index>(free[j]);
      Eigen::VectorXd sparse = Eigen::VectorXd::Zero(dense.rows());
      for (auto p = static_cast<std::size_t>(K.column_start[j]); p < static_cast<std::size_t>(K.column_start[j + 1]);
           ++p) {
        if (p > static_cast<std::size_t>(K.column_start[j])) {
          ASSERT_GT(K.row[p], K.row[p - 1]);
        }
        sparse(static_cast<Eigen::Index>(free[static_cast<std::size_t>(K.row[p])])) = K.value[p];
        ++seen;
      }
      for (std::size_t i = j; i < free.size(); ++i) {
        const auto row = static_cast<Eigen::Index>(free[i]);
        EXPECT_WITHIN(sparse(row), dense(row, column), scale, 1e-15);
        if (dense(row, column) != 0) ++not_zero;
      }
      double pushed = 0;
      for (std::size_t f = 0; f < loads.prescribed.size(); ++f)
        if (loads.prescribed[f]) pushed -= dense(column, static_cast<Eigen::Index>(f)) * loads.prescribed_value[f];
      EXPECT_WITHIN(right[j], pushed, scale, 1e-14);
    }
    EXPECT_LE(not_zero, seen);
  }
}

TEST(AnalysisEquations, ReactionsAgainstDenseProduct) {
  std::mt19937 engine(11);
  const grid g = random_sheet(engine);
  const solved s = solve(g.m);
  library_model library(g.m);
  library.plates().choose_ties(s.solution.loads);
  const Eigen::MatrixXd dense = dense_stiffness(g.m, library);
  const Eigen::VectorXd u = Eigen::Map<const Eigen::VectorXd>(s.solution.displacement.data(), dense.rows());
  const Eigen::VectorXd forces = dense * u;
  const double scale = forces.cwiseAbs().maxCoeff();
  for (Eigen::Index f = 0; f < forces.size(); ++f)
    EXPECT_WITHIN(s.solution.reaction[static_cast<std::size_t>(f)], forces(f), scale, 1e-10);
}

TEST(AnalysisEquations, InternalForcesAreThoseOfTheStiffness) {
  std::mt19937 engine(13);
  const grid g = random_sheet(engine);
  library_model library(g.m);
  element_matrix K;
  element_vector u{}, f;
  for (std::size_t e = 0; e < g.m.elements.size(); ++e) {
    for (int i = 1; i <= 18; ++i) u(i) = static_cast<double>(engine() % 2001) / 1000 - 1;
    library.stiffness(e, K);
    library.plates().internal_forces(e, u, f);
    std::vector<double> product(18, 0.0);
    for (int i = 1; i <= 18; ++i)
      for (int j = 1; j <= 18; ++j) product[static_cast<std::size_t>(i - 1)] += K(i, j) * u(j);
    EXPECT_WITHIN(support::values(f.V, 18), product, max_norm(product), 1e-11);
  }
}

TEST(AnalysisEquations, LibraryClassifiesTheElements) {
  grid g(
      1, 1, [](double u, double v) { return rectangle(1, 1, u, v); }, isotropic(1, 0), 1);
  g.m.elements[1].type = element_type::M3D3;
  g.m.materials.push_back(g.m.materials[0]);
  g.m.materials[1].orthotropic = true;
  g.m.shell_sections.push_back(g.m.shell_sections[0]);
  g.m.shell_sections[1].material = 1;
  g.m.elements[1].section = 1;
  library_model library(g.m);
  int kind = 0, behaviour = -1;
  library.plates().classify(0, kind, behaviour);
  EXPECT_EQ(kind, 10);
  EXPECT_EQ(behaviour, 0);
  library.plates().classify(1, kind, behaviour);
  EXPECT_EQ(kind, 12);
  EXPECT_EQ(behaviour, 1);
}

TEST(AnalysisEquations, SolversAgainstADenseFactorisation) {
  // A tridiagonal band and some far entries, strongly diagonal.
  symmetric_matrix K;
  const std::int32_t order = 40;
  Eigen::MatrixXd dense = Eigen::MatrixXd::Zero(order, order);
  K.column_start.push_back(0);
  for (std::int32_t j = 0; j < order; ++j) {
    for (const std::int32_t i : {j, j + 1, j + 7}) {
      if (i >= order) continue;
      const double value = i == j ? 4.0 + 0.01 * j : -1.0 / (1 + 0.1 * (i + j));
      K.row.push_back(i);
      K.value.push_back(value);
      dense(i, j) = dense(j, i) = value;
    }
    K.column_start.push_back(static_cast<std::int32_t>(K.row.size()));
  }
  const Eigen::VectorXd b = Eigen::VectorXd::LinSpaced(order, -1, 2);
  const Eigen::VectorXd expected = dense.llt().solve(b);
  for (const solver_kind kind : solvers()) {
    const auto equations = make_linear_solver(kind);
    ASSERT_TRUE(equations->factorise(K));
    std::vector<double> x(b.data(), b.data() + order);
    equations->solve(x);
    EXPECT_WITHIN(x, std::vector<double>(expected.data(), expected.data() + order), 1.0, 1e-14);
    EXPECT_LT(backward_error(K, x, std::vector<double>(b.data(), b.data() + order)), 1e-15);
  }
}
