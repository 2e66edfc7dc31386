// Matrices that are large enough for an order of elimination of their own: the grid of five points, whose eigenvalues
// are known, with several unknowns at a place, and beside it unknowns that touch nothing.
#include <gtest/gtest.h>

#include <cmath>
#include <memory>

#include "system/linear_solver.h"

namespace {

constexpr int SIDE = 40, AT_NODE = 3, ALONE = 700;

// Kronecker product of the grid less `shift` and the unit matrix plus a full block of ones, 1 + 3 = 4 and 1, 1; behind
// it unknowns of their own with 2 on the diagonal.
solver::symmetric_matrix grid_matrix(double shift) {
  solver::symmetric_matrix K;
  const auto block = [&](int column, int row, int d, double factor) {
    for (int i = column == row ? d : 0; i < AT_NODE; ++i) {
      K.row.push_back(row * AT_NODE + i);
      K.value.push_back(factor * (i == d ? 2.0 : 1.0));
    }
  };
  K.column_start.push_back(0);
  for (int n = 0; n < SIDE * SIDE; ++n) {
    for (int d = 0; d < AT_NODE; ++d) {
      block(n, n, d, 4 - shift);
      if (n % SIDE < SIDE - 1) block(n, n + 1, d, -1);
      if (n + SIDE < SIDE * SIDE) block(n, n + SIDE, d, -1);
      K.column_start.push_back(solver::count_of(K.row));
    }
  }
  for (int i = 0; i < ALONE; ++i) {
    K.row.push_back(SIDE * SIDE * AT_NODE + i);
    K.value.push_back(2);
    K.column_start.push_back(solver::count_of(K.row));
  }
  return K;
}

// 4 - 2 cos(i pi / (n + 1)) - 2 cos(k pi / (n + 1)), three times each: the block has the eigenvalues 4, 1, 1.
std::size_t eigenvalues_below(double shift) {
  const double step = std::acos(-1.0) / (SIDE + 1);
  std::size_t count = 0;
  for (int i = 1; i <= SIDE; ++i)
    for (int k = 1; k <= SIDE; ++k) count += 4 - 2 * std::cos(i * step) - 2 * std::cos(k * step) < shift ? AT_NODE : 0;
  return count;
}

class LinearSolverOrder : public testing::TestWithParam<solver::solver_kind> {};

TEST_P(LinearSolverOrder, SolvesForSeveralRightSides) {
  const solver::symmetric_matrix K = grid_matrix(0);
  const std::unique_ptr<solver::linear_solver> equations = solver::make_linear_solver(GetParam());
  ASSERT_TRUE(equations->factorise(K));
  EXPECT_EQ(equations->negative_pivots(), 0U);
  std::vector<double> expected, right;
  for (int column = 0; column < 3; ++column) {
    std::vector<double> x(K.order());
    for (std::size_t i = 0; i < x.size(); ++i) x[i] = std::sin(1.0 + column + 0.37 * static_cast<double>(i));
    const std::vector<double> b = product(K, x);
    expected.insert(expected.end(), x.begin(), x.end());
    right.insert(right.end(), b.begin(), b.end());
  }
  equations->solve(right);
  for (std::size_t i = 0; i < right.size(); ++i) ASSERT_NEAR(right[i], expected[i], 1e-11) << i;
}

// Bit by bit the same matrix is not factorised again, and any other one is.
TEST_P(LinearSolverOrder, FactorsOfTheSameMatrixServeAgain) {
  const solver::symmetric_matrix K = grid_matrix(0), other = grid_matrix(0.5003);
  solver::symmetric_matrix nearly = K;
  nearly.value.front() *= 1 + 1e-6;
  const auto solution = [](solver::linear_solver& equations, const solver::symmetric_matrix& matrix) {
    EXPECT_TRUE(equations.factorise(matrix));
    std::vector<double> x(matrix.order());
    for (std::size_t i = 0; i < x.size(); ++i) x[i] = std::sin(0.37 * static_cast<double>(i));
    equations.solve(x);
    return x;
  };
  const std::unique_ptr<solver::linear_solver> keeps = solver::make_linear_solver(GetParam());
  keeps->expect_repeats();
  const std::vector<const solver::symmetric_matrix*> sequence = {&K, &K, &nearly, &other, &other, &K};
  for (const solver::symmetric_matrix* matrix : sequence) {
    const std::unique_ptr<solver::linear_solver> fresh = solver::make_linear_solver(GetParam());
    EXPECT_EQ(solution(*keeps, *matrix), solution(*fresh, *matrix));
    EXPECT_EQ(keeps->negative_pivots(), fresh->negative_pivots());
  }
}

// Matrices of one order with as many entries, which stand at other places: the analysis of one is not that of the
// other.
TEST_P(LinearSolverOrder, OtherPlacesOfAsManyEntriesAreAnotherPattern) {
  const auto pairs = [](int apart) {  // 0 and `apart` touch, and the other two of four
    solver::symmetric_matrix K;
    K.column_start.push_back(0);
    for (int j = 0; j < 4; ++j) {
      K.row.push_back(j);
      K.value.push_back(2);
      const bool first = apart == 1 ? j % 2 == 0 : j < 2;
      if (first) {
        K.row.push_back(j + apart);
        K.value.push_back(-1);
      }
      K.column_start.push_back(solver::count_of(K.row));
    }
    return K;
  };
  const std::unique_ptr<solver::linear_solver> equations = solver::make_linear_solver(GetParam());
  for (const int apart : {1, 2, 1}) {
    const solver::symmetric_matrix K = pairs(apart);
    ASSERT_TRUE(equations->factorise(K));
    std::vector<double> x = {3, 0, 0, 0};  // of [2 -1; -1 2]: 2 and 1
    equations->solve(x);
    std::vector<double> expected = {2, 0, 0, 0};
    expected[static_cast<std::size_t>(apart)] = 1;
    for (std::size_t i = 0; i < 4; ++i) EXPECT_NEAR(x[i], expected[i], 1e-14) << apart << ", " << i;
  }
}

TEST_P(LinearSolverOrder, CountsTheEigenvaluesBelowAShift) {
  const std::unique_ptr<solver::linear_solver> equations = solver::make_linear_solver(GetParam());
  for (const double shift : {0.1, 0.5003, 1.9}) {
    ASSERT_TRUE(equations->factorise(grid_matrix(shift)));
    EXPECT_EQ(equations->negative_pivots(), eigenvalues_below(shift)) << shift;
  }
}

INSTANTIATE_TEST_SUITE_P(Kinds, LinearSolverOrder,
                         testing::Values(solver::default_solver(), solver::solver_kind::EIGEN));

}  // namespace
