// inverse_test.cpp: the inverse by its residual, its pivoting, its report of a singular matrix.
#include <gtest/gtest.h>

#include "finites/services.h"
#include "reference_matrix.h"

namespace {

double largest_row_sum(const DENSE& M) {
  double largest = 0.0;
  for (int i = 1; i <= M.rows; ++i) {
    double sum = 0.0;
    for (int j = 1; j <= M.columns; ++j) sum += std::fabs(M(i, j));
    largest = std::max(largest, sum);
  }
  return largest;
}

// norm(I - A X) / (n norm(A) norm(X) eps)
double residual_ratio(const DENSE& A, const DENSE& X) {
  DENSE residual = exact_product(A, X);
  for (int i = 1; i <= A.rows; ++i) residual(i, i) -= 1.0;
  const double eps = std::numeric_limits<double>::epsilon();
  return largest_row_sum(residual) / (A.rows * largest_row_sum(A) * largest_row_sum(X) * eps);
}

std::int32_t invert(DENSE& M) {
  std::int32_t ierr = -7;
  INVMAT_DB(M.data(), &M.rows, &M.ld, &ierr);
  return ierr;
}

DENSE square(int n, std::initializer_list<double> by_columns) {
  DENSE M(n, n);
  std::copy(by_columns.begin(), by_columns.end(), M.value.begin());
  return M;
}

}  // namespace

TEST(Inverse, ResidualOfRandomMatricesIsSmall) {
  std::mt19937_64 source(21);
  for (int n = 1; n <= 30; ++n) {
    for (int ld : {n, n + 4}) {
      const DENSE A = random_matrix(source, n, n, ld);
      DENSE X = A;
      EXPECT_EQ(invert(X), 0);
      EXPECT_LE(residual_ratio(A, X), 1.0) << "order " << n;
      expect_guards("INVMAT_DB", X);
    }
  }
}

TEST(Inverse, RowsAreInterchangedForALargePivot) {
  const DENSE A = square(2, {1e-20, 1.0, 1.0, 1.0});
  DENSE X = A;
  EXPECT_EQ(invert(X), 0);
  EXPECT_LE(residual_ratio(A, X), 1.0);
}

TEST(Inverse, APermutationIsInvertedExactly) {
  // Rows 1, 2, 3 of P are rows 2, 3, 1 of the identity: the inverse is the transpose.
  const DENSE P = square(3, {0.0, 0.0, 1.0, 1.0, 0.0, 0.0, 0.0, 1.0, 0.0});
  DENSE X = P;
  EXPECT_EQ(invert(X), 0);
  const DENSE expected = transposed(P);
  for (int j = 1; j <= 3; ++j) {
    for (int i = 1; i <= 3; ++i) EXPECT_EQ(X(i, j), expected(i, j)) << i << " " << j;
  }
}

TEST(Inverse, APivotOfExactlyZeroIsReported) {
  DENSE zero(1, 1), no_third = square(3, {2.0, 1.0, 0.0, 1.0, 3.0, 0.0, 0.0, 0.0, 0.0});
  DENSE equal_rows = square(2, {1.0, 1.0, 2.0, 2.0});
  EXPECT_NE(invert(zero), 0);
  EXPECT_NE(invert(no_third), 0);
  EXPECT_NE(invert(equal_rows), 0);
}

TEST(Inverse, ANearlySingularMatrixIsNotReported) {
  DENSE M = square(2, {1.0, 1.0, 1.0, 1.0 + 2.220446049250313e-16});
  EXPECT_EQ(invert(M), 0);
  DENSE tiny = square(1, {1e-300});
  EXPECT_EQ(invert(tiny), 0);
  EXPECT_EQ(tiny(1, 1), 1.0 / 1e-300);
}

TEST(Inverse, NotANumberTravels) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  for (int place = 0; place < 4; ++place) {
    DENSE M = square(2, {0.0, 1.0, 1.0, 0.0});
    M.value[static_cast<std::size_t>(place)] = nan;
    EXPECT_EQ(invert(M), 0) << place;
    int reached = 0;
    for (double entry : M.value) reached += std::isnan(entry) ? 1 : 0;
    EXPECT_GT(reached, 0) << place;
  }
  DENSE all(8, 8);
  std::fill(all.value.begin(), all.value.end(), nan);
  EXPECT_EQ(invert(all), 0);
  for (double entry : all.value) EXPECT_TRUE(std::isnan(entry));
}

TEST(Inverse, AnOrderWithoutMeaningIsReportedAndTouchesNothing) {
  double M[] = {GUARD};
  const std::int32_t one = 1, two = 2;
  for (std::int32_t n : {0, -3}) {
    std::int32_t ierr = 0;
    INVMAT_DB(M, &n, &one, &ierr);
    EXPECT_NE(ierr, 0);
  }
  std::int32_t ierr = 0;
  INVMAT_DB(M, &two, &one, &ierr);
  EXPECT_NE(ierr, 0);
  EXPECT_EQ(M[0], GUARD);
}
