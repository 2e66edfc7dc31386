// dense_test.cpp: what the references compute with, by hand and by what defines it.
#include "dense.h"

#include <gtest/gtest.h>

#include <cmath>

#include "comparison.h"
#include "random_shapes.h"

namespace {

using dense::column;
using dense::matrix;
using dense::matrix2;
using dense::matrix3;
using dense::vector3;

matrix random_matrix(support::seeded_random& random, int rows, int columns) {
  return dense::widened(random.vector(rows * columns, 1.0).data(), rows, columns);
}

using listed_values = std::vector<double>;

void list_too_little() {
  matrix M(2, 2);
  M << 1, 2, 3;
}

}  // namespace

TEST(Dense, EntriesStandByColumnsAndAListRunsByRows) {
  matrix M(2, 3);
  M << 1, 2, 3, 4, 5, 6;
  EXPECT_EQ(dense::listed(M), (listed_values{1, 4, 2, 5, 3, 6}));
  EXPECT_EQ(dense::listed(M.transpose()), (listed_values{1, 2, 3, 4, 5, 6}));
  EXPECT_EQ(dense::listed(M.row(1)), (listed_values{4, 5, 6}));
  EXPECT_EQ(dense::listed(M.col(2).tail(1)), (listed_values{6}));
  EXPECT_EQ(dense::listed(M.bottomRightCorner(2, 1)), (listed_values{3, 6}));
  matrix wide(3, 4);
  wide << M, M.leftCols(1), column::Ones(4).transpose();
  EXPECT_EQ(dense::listed(wide), (listed_values{1, 4, 1, 2, 5, 1, 3, 6, 1, 1, 4, 1}));
}

TEST(Dense, AViewWritesToItsMatrixAndACopyDoesNot) {
  matrix M = matrix::Zero(3, 3);
  matrix copy = M;
  M.diagonal() << 1, 2, 3;
  M.block(0, 1, 2, 2).setConstant(7);
  M.row(2) += M.row(0);
  EXPECT_EQ(dense::listed(M), (listed_values{1, 0, 1, 7, 7, 7, 7, 7, 10}));
  EXPECT_EQ(dense::listed(copy), listed_values(9, 0.0));
  copy = M.topLeftCorner(2, 2);
  M.setZero();
  EXPECT_EQ(dense::listed(copy), (listed_values{1, 0, 7, 7}));
  M = matrix::Identity(3, 3);
  M = M.leftCols(2);  // a part of itself
  EXPECT_EQ(dense::listed(M), (listed_values{1, 0, 0, 0, 1, 0}));
}

TEST(Dense, ProductsByHand) {
  matrix A(2, 3), B(3, 2);
  A << 1, 2, 3, 4, 5, 6;
  B << 7, 8, 9, 10, 11, 12;
  EXPECT_EQ(dense::listed(A * B), (listed_values{58, 139, 64, 154}));
  EXPECT_EQ(dense::listed(vector3(1, 2, 3).cross(vector3(4, 5, 6))), (listed_values{-3, 6, -3}));
  EXPECT_EQ(vector3(1, 2, 3).dot(vector3(4, 5, 6)), 32.0L);
  EXPECT_EQ(A.squaredNorm(), 91.0L);
  EXPECT_EQ((-A).maxCoeff(), -1.0L);
  EXPECT_EQ((-A).minCoeff(), -6.0L);
  EXPECT_EQ(dense::largest(-A), 6.0);
}

TEST(Dense, DeterminantByHandWithAZeroPivot) {
  matrix3 M;
  M << 0, 2, 1, 3, 0, 5, 4, 1, 0;
  EXPECT_NEAR(static_cast<double>(M.determinant()), 43.0, 1e-16);
  matrix2 singular;
  singular << 1, 2, 2, 4;
  EXPECT_EQ(singular.determinant(), 0.0L);
  EXPECT_TRUE(std::isnan(dense::largest(singular.inverse())));
}

TEST(Dense, SystemsOfEquations) {
  support::seeded_random random(71);
  for (const int n : {1, 2, 5, 24}) {
    const matrix A = random_matrix(random, n, n), x = random_matrix(random, n, 2);
    EXPECT_WITHIN(dense::listed(dense::solve(A, A * x)), dense::listed(x), 1.0, 1e-14);
    EXPECT_WITHIN(dense::listed(A.inverse() * A), dense::listed(matrix::Identity(n, n)), 1.0, 1e-14);
    matrix S = A * A.transpose() + matrix::Identity(n, n);
    for (int i = 3; i < n; ++i) S.row(i).head(i - 2).setZero(), S.col(i).head(i - 2).setZero();  // a band
    S += 2.0L * static_cast<dense::real>(n) * matrix::Identity(n, n);
    EXPECT_WITHIN(dense::listed(dense::solve_definite(S, S * x)), dense::listed(x), 1.0, 1e-16);
  }
}

// The chain of n masses between two walls: 2 - 2 cos(k pi / (n + 1)).
TEST(Dense, EigenvaluesOfAChain) {
  constexpr int n = 9;
  matrix K = 2.0L * matrix::Identity(n, n);
  for (int i = 1; i < n; ++i) K(i, i - 1) = K(i - 1, i) = -1.0L;
  const dense::eigen_system modes(K);
  for (int k = 1; k <= n; ++k) {
    EXPECT_NEAR(static_cast<double>(modes.values(k - 1)), 2.0 - 2.0 * std::cos(k * std::acos(-1.0) / (n + 1)), 1e-14);
  }
  EXPECT_LT(dense::largest(K * modes.vectors - modes.vectors * modes.values.asDiagonal()), 1e-17);
  EXPECT_LT(dense::largest(modes.vectors.transpose() * modes.vectors - matrix::Identity(n, n)), 1e-17);
}

TEST(DenseDeathTest, AWrongIndexAndAListThatIsTooShortEndTheProgram) {
  const matrix M = matrix::Zero(2, 3);
  EXPECT_DEATH(M(2, 0), "entry .2, 0. of a matrix of 2 by 3");
  EXPECT_DEATH(M * M, "of a matrix of");
  EXPECT_DEATH(list_too_little(), "does not fill");
}
