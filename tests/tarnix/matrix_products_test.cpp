// matrix_products_test.cpp: the products against triple loops in long double, their order of summation, their bounds.
#include <gtest/gtest.h>

#include "finites/services.h"
#include "reference_matrix.h"

namespace {

constexpr int LARGEST = 27;  // above the orders that have working room in place

// The plain sum in the order k = 1, 2, ... n, started from 0.
double plain_sum(const DENSE& A, const DENSE& B, int i, int j) {
  double sum = 0.0;
  for (int k = 1; k <= A.columns; ++k) sum += A(i, k) * B(k, j);
  return sum;
}

void expect_plain_sums(const char* routine, const DENSE& C, const DENSE& A, const DENSE& B) {
  for (int j = 1; j <= C.columns; ++j) {
    for (int i = 1; i <= C.rows; ++i) EXPECT_EQ(C(i, j), plain_sum(A, B, i, j)) << routine << " " << i << " " << j;
  }
}

DENSE product(const DENSE& A, const DENSE& B) {
  DENSE C(A.rows, B.columns);
  MATMUL_M1MN_M2MN_DBL(C.data(), A.data(), &A.rows, &A.columns, B.data(), &B.rows, &B.columns);
  return C;
}

}  // namespace

TEST(MatrixProducts, RectangularProductsAreSumsInPlainOrder) {
  std::mt19937_64 source(11);
  for (int m : {1, 2, 3, 4, 5, 6, 7, 8, 9, 12, 18, 20, 24, 30}) {
    for (int n : {1, 2, 3, 4, 5, 7, 8, 9, 24}) {
      for (int p : {1, 2, 3, 9, 24}) {
        const DENSE A = random_matrix(source, m, n), B = random_matrix(source, n, p);
        const DENSE C = product(A, B);
        expect_close("MATMUL_M1MN_M2MN_DBL", C, exact_product(A, B), exact_product(magnitudes(A), magnitudes(B)), n);
        expect_plain_sums("MATMUL_M1MN_M2MN_DBL", C, A, B);
      }
    }
  }
}

TEST(MatrixProducts, SquareProductsAreSumsInPlainOrder) {
  std::mt19937_64 source(12);
  for (int n = 1; n <= LARGEST; ++n) {
    const DENSE A = random_matrix(source, n, n), B = random_matrix(source, n, n);
    DENSE C(n, n), D(n, n);
    MATMUL_M1_M2_DBL(C.data(), A.data(), B.data(), &n);
    MATMUL_M1_M2T_DBL(D.data(), A.data(), B.data(), &n, &n);
    expect_plain_sums("MATMUL_M1_M2_DBL", C, A, B);
    expect_plain_sums("MATMUL_M1_M2T_DBL", D, A, transposed(B));
    const DENSE scale = exact_product(magnitudes(A), magnitudes(transposed(B)));
    expect_close("MATMUL_M1_M2T_DBL", D, exact_product(A, transposed(B)), scale, n);
  }
}

TEST(MatrixProducts, CongruencesUseTheLeadingPartAlone) {
  std::mt19937_64 source(13);
  for (int n = 1; n <= LARGEST; ++n) {
    for (int ld : {n, n + 1, 2 * n + 3}) {
      const int ld_of_m = 3 * n - ld + 3;  // each its own: 2 n + 3, 2 n + 2, n
      const DENSE R = random_matrix(source, n, n, ld), M = random_matrix(source, n, n, ld_of_m);
      const DENSE RT = transposed(R);
      DENSE forth = M, back = M;
      MATMUL_RT_M_R_DBL(R.data(), forth.data(), &n, &ld, &ld_of_m);
      MATMUL_R_M_RT_DBL(R.data(), back.data(), &n, &ld, &ld_of_m);
      const DENSE scale_forth = exact_product(magnitudes(RT), exact_product(magnitudes(M), magnitudes(R)));
      const DENSE scale_back = exact_product(magnitudes(R), exact_product(magnitudes(M), magnitudes(RT)));
      // The reference rounds its inner product once: one rounding more than the 2 n of the service.
      expect_close("MATMUL_RT_M_R_DBL", forth, exact_product(RT, exact_product(M, R)), scale_forth, 2 * n + 2);
      expect_close("MATMUL_R_M_RT_DBL", back, exact_product(R, exact_product(M, RT)), scale_back, 2 * n + 2);
      expect_guards("MATMUL_RT_M_R_DBL", forth);
      expect_guards("MATMUL_R_M_RT_DBL", back);
    }
  }
}

// R^T (M R) as plain sums from zero, one entry after the other.
DENSE plain_congruence(const DENSE& R, const DENSE& M, int n) {
  DENSE P(n, n), Q(n, n);
  for (int j = 1; j <= n; ++j) {
    for (int i = 1; i <= n; ++i) {
      P(i, j) = 0.0;
      for (int k = 1; k <= n; ++k) P(i, j) += M(i, k) * R(k, j);
    }
  }
  for (int j = 1; j <= n; ++j) {
    for (int i = 1; i <= n; ++i) {
      Q(i, j) = 0.0;
      for (int k = 1; k <= n; ++k) Q(i, j) += R(k, i) * P(k, j);
    }
  }
  return Q;
}

DENSE random_blocks(std::mt19937_64& source, int n, int block) {
  DENSE R = random_matrix(source, n, n);
  for (int j = 1; j <= n; ++j) {
    for (int i = 1; i <= n; ++i) {
      if ((i - 1) / block != (j - 1) / block) R(i, j) = (i + j) % 2 == 0 ? 0.0 : -0.0;
    }
  }
  return R;
}

TEST(MatrixProducts, BlockDiagonalTransformsHaveTheBitsOfTheFullProduct) {
  std::mt19937_64 source(16);
  for (int n : {3, 6, 9, 12, 18, 24}) {
    for (int block : {3, 6}) {
      const DENSE R = random_blocks(source, n, block), M = random_matrix(source, n, n);
      DENSE turned = M;
      MATMUL_RT_M_R_DBL(R.data(), turned.data(), &n, &n, &n);
      EXPECT_EQ(turned.value, plain_congruence(R, M, n).value) << "order " << n << ", blocks of " << block;
    }
  }
}

TEST(MatrixProducts, BlockDiagonalTransformsKeepToTheLeadingParts) {
  std::mt19937_64 source(19);
  for (int n : {6, 12, 18, 24}) {
    for (int block : {3, 6}) {
      const int ld = n + 5, ld_of_m = n + 2;
      const DENSE packed = random_blocks(source, n, block), M = random_matrix(source, n, n);
      DENSE R = random_matrix(source, n, n, ld), turned = random_matrix(source, n, n, ld_of_m);
      for (int j = 1; j <= n; ++j) {
        for (int i = 1; i <= n; ++i) {
          R(i, j) = packed(i, j);
          turned(i, j) = M(i, j);
        }
      }
      MATMUL_RT_M_R_DBL(R.data(), turned.data(), &n, &ld, &ld_of_m);
      const DENSE expected = plain_congruence(packed, M, n);
      for (int j = 1; j <= n; ++j) {
        for (int i = 1; i <= n; ++i) EXPECT_EQ(turned(i, j), expected(i, j)) << n << ": " << i << ", " << j;
      }
      expect_guards("MATMUL_RT_M_R_DBL", turned);
    }
  }
}

TEST(MatrixProducts, OneEntryOutsideTheBlocksCounts) {
  std::mt19937_64 source(17);
  const int n = 12;
  for (int i : {1, 4, 6, 7, 12}) {
    DENSE R = random_blocks(source, n, 3);
    const DENSE M = random_matrix(source, n, n);
    R(i, i <= 6 ? 10 : 3) = 0.25;
    DENSE turned = M;
    MATMUL_RT_M_R_DBL(R.data(), turned.data(), &n, &n, &n);
    EXPECT_EQ(turned.value, plain_congruence(R, M, n).value) << i;
  }
}

// One column or row of zeros does not make a full transform one of blocks, whichever it is.
TEST(MatrixProducts, FullTransformsWithAZeroColumnOrRow) {
  std::mt19937_64 source(20);
  for (int n : {6, 9, 12, 18, 24}) {
    for (int zero = 1; zero <= n; ++zero) {
      for (const bool is_column : {true, false}) {
        DENSE R = random_matrix(source, n, n);
        const DENSE M = random_matrix(source, n, n);
        for (int i = 1; i <= n; ++i) (is_column ? R(i, zero) : R(zero, i)) = 0.0;
        DENSE turned = M;
        MATMUL_RT_M_R_DBL(R.data(), turned.data(), &n, &n, &n);
        EXPECT_EQ(turned.value, plain_congruence(R, M, n).value)
            << "order " << n << (is_column ? ", column " : ", row ") << zero;
      }
    }
  }
}

// 0 times infinity: through a block diagonal transform too, what is not finite reaches all that it would reach
// otherwise.
TEST(MatrixProducts, WhatIsNotFiniteTravelsThroughBlockDiagonalTransforms) {
  std::mt19937_64 source(18);
  const int n = 12;
  for (double value : {std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()}) {
    const DENSE R = random_blocks(source, n, 3);
    DENSE M = random_matrix(source, n, n);
    M(5, 8) = value;
    const DENSE expected = plain_congruence(R, M, n);
    MATMUL_RT_M_R_DBL(R.data(), M.data(), &n, &n, &n);
    for (int j = 1; j <= n; ++j) {
      for (int i = 1; i <= n; ++i) EXPECT_EQ(std::isnan(M(i, j)), std::isnan(expected(i, j))) << i << ", " << j;
    }
  }
}

TEST(MatrixProducts, VectorsUseTheLeadingPartAlone) {
  std::mt19937_64 source(14);
  for (int n = 1; n <= LARGEST; ++n) {
    for (int ld : {n, n + 5}) {
      const DENSE R = random_matrix(source, n, n, ld), v = random_matrix(source, n, 1);
      DENSE forth = random_matrix(source, n, 1, n + 2), back = forth;
      MATMUL_R_V_DBL(R.data(), v.data(), forth.data(), &n, &ld);
      MATMUL_RT_V_DBL(R.data(), v.data(), back.data(), &n, &ld);
      expect_plain_sums("MATMUL_R_V_DBL", forth, R, v);
      expect_plain_sums("MATMUL_RT_V_DBL", back, transposed(R), v);
      expect_guards("MATMUL_R_V_DBL", forth);
      expect_guards("MATMUL_RT_V_DBL", back);
    }
  }
}

TEST(MatrixProducts, AnOrthogonalMatrixGoesForthAndBack) {
  std::mt19937_64 source(15);
  const int n = 12, ld = 12;
  // A reflection I - 2 w w^T / (w^T w) is orthogonal.
  const DENSE w = random_matrix(source, n, 1), M = random_matrix(source, n, n);
  double square = 0.0;
  for (int i = 1; i <= n; ++i) square += w(i, 1) * w(i, 1);
  DENSE R(n, n);
  for (int j = 1; j <= n; ++j) {
    for (int i = 1; i <= n; ++i) R(i, j) = (i == j ? 1.0 : 0.0) - 2.0 * w(i, 1) * w(j, 1) / square;
  }
  DENSE turned = M;
  MATMUL_RT_M_R_DBL(R.data(), turned.data(), &n, &ld, &n);
  MATMUL_R_M_RT_DBL(R.data(), turned.data(), &n, &ld, &n);
  DENSE scale(n, n);
  std::fill(scale.value.begin(), scale.value.end(), static_cast<double>(n));
  expect_close("there and back", turned, M, scale, 4 * n);
}

TEST(MatrixProducts, TheTransformMayBeTheMatrixItself) {
  const int n = 2, ld = 2;
  double M[] = {1.0, 3.0, 2.0, 4.0};  // [1 2; 3 4]
  MATMUL_RT_M_R_DBL(M, M, &n, &ld, &n);
  // M M = [7 10; 15 22]; M^T (M M) = [1*7+3*15, 1*10+3*22; 2*7+4*15, 2*10+4*22]
  const double expected[] = {52.0, 74.0, 76.0, 108.0};
  for (int i = 0; i < 4; ++i) EXPECT_EQ(M[i], expected[i]) << i;
}

TEST(MatrixProducts, NotANumberTravelsAlsoThroughZeros) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const int n = 3, ld = 3;
  DENSE A(n, n), B(n, n), C(n, n);
  A(2, 2) = nan;  // B is zero: 0 times nan is nan
  MATMUL_M1_M2_DBL(C.data(), A.data(), B.data(), &n);
  for (int j = 1; j <= n; ++j) {
    EXPECT_EQ(C(1, j), 0.0);
    EXPECT_TRUE(std::isnan(C(2, j)));
  }
  DENSE M = A;
  MATMUL_RT_M_R_DBL(B.data(), M.data(), &n, &ld, &n);
  for (double entry : M.value) EXPECT_TRUE(std::isnan(entry));
}

TEST(MatrixProducts, AnOrderWithoutMeaningDoesNothing) {
  const DENSE A(3, 3), B(3, 3);
  DENSE C(3, 3);
  std::fill(C.value.begin(), C.value.end(), GUARD);
  const std::int32_t three = 3, two = 2;
  for (std::int32_t n : {0, -1, std::numeric_limits<std::int32_t>::min()}) {
    MATMUL_M1MN_M2MN_DBL(C.data(), A.data(), &n, &three, B.data(), &three, &three);
    MATMUL_M1MN_M2MN_DBL(C.data(), A.data(), &three, &n, B.data(), &n, &three);
    MATMUL_M1MN_M2MN_DBL(C.data(), A.data(), &three, &three, B.data(), &three, &n);
    MATMUL_M1_M2_DBL(C.data(), A.data(), B.data(), &n);
    MATMUL_M1_M2T_DBL(C.data(), A.data(), B.data(), &n, &n);
    MATMUL_RT_M_R_DBL(A.data(), C.data(), &n, &three, &n);
    MATMUL_R_M_RT_DBL(A.data(), C.data(), &n, &three, &n);
    MATMUL_R_V_DBL(A.data(), B.data(), C.data(), &n, &three);
    MATMUL_RT_V_DBL(A.data(), B.data(), C.data(), &n, &three);
  }
  MATMUL_RT_M_R_DBL(A.data(), C.data(), &three, &two, &three);  // a leading dimension below the order
  MATMUL_R_M_RT_DBL(A.data(), C.data(), &three, &two, &three);
  MATMUL_RT_M_R_DBL(A.data(), C.data(), &three, &three, &two);
  MATMUL_R_M_RT_DBL(A.data(), C.data(), &three, &three, &two);
  MATMUL_R_V_DBL(A.data(), B.data(), C.data(), &three, &two);
  MATMUL_RT_V_DBL(A.data(), B.data(), C.data(), &three, &two);
  for (double entry : C.value) EXPECT_EQ(entry, GUARD);
}
