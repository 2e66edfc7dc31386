// flow_products_test.cpp: the products and inverses of which the plastic stiffness is made, each by itself. Matrices
// have no symmetry, so that every transposition shows.
#include <gtest/gtest.h>

#include <cmath>

#include "comparison.h"
#include "finites/finites.h"
#include "guarded_buffer.h"
#include "hinges/hinge_stiffness.h"
#include "random_shapes.h"
#include "reference_hinge.h"

namespace {

using reference::matrix;
using support::guarded_buffer;
using support::seeded_random;

guarded_buffer zeros(int entries) {
  guarded_buffer b(entries);
  b.set_input(std::vector<double>(static_cast<std::size_t>(entries), 0.0));
  return b;
}

void expect_inside(const guarded_buffer& b, int entries) {
  for (const int position : b.changed()) EXPECT_TRUE(position >= 1 && position <= entries) << position;
}

// n n numbers of the order of 1, the diagonal above them: well conditioned.
std::vector<double> some_matrix(seeded_random& random, int n) {
  std::vector<double> M = random.vector(n * n, 1.0);
  for (int i = 0; i < n; ++i) M[static_cast<std::size_t>(i * (n + 1))] += n;
  return M;
}

struct beta_answer {
  std::vector<double> BETA;
  int IERR;
};

beta_answer beta_of(const std::vector<double>& KB, const std::vector<double>& N, int neq) {
  const std::int32_t NEQ = neq;
  std::int32_t IERR = 77;
  guarded_buffer BETA = zeros(neq * neq);
  CALCULATE_MAT_BETA_INVERSE(KB.data(), N.data(), &NEQ, BETA.data(), &IERR);
  expect_inside(BETA, neq * neq);
  return {support::values(BETA.data(), neq * neq), IERR};
}

std::vector<double> spread(const std::vector<double>& BETA, const std::vector<double>& N, int neq) {
  const std::int32_t NEQ = neq;
  guarded_buffer G(36);
  MAT_N_BETA_NT(BETA.data(), N.data(), &NEQ, G.data());
  EXPECT_EQ(G.changed(), support::range(1, 36));
  return support::values(G.data(), 36);
}

std::vector<double> multipliers(const std::vector<double>& K1, const std::vector<double>& K2,
                                const std::vector<double>& N, int neq, const std::vector<double>& BETA,
                                const std::vector<double>& D1, const std::vector<double>& D2) {
  const std::int32_t NEQ = neq;
  guarded_buffer OUT(neq);
  MATRIX_PLASTIC_MAGNITUDE_ONE_SIDE(K1.data(), K2.data(), N.data(), &NEQ, BETA.data(), D1.data(), D2.data(),
                                    OUT.data());
  EXPECT_EQ(OUT.changed(), support::range(1, neq));
  return support::values(OUT.data(), neq);
}

// 6 by 6 zeros with these four entries where rows and columns 1 and 5 meet.
std::vector<double> sparse(double k11, double k15, double k51, double k55) {
  std::vector<double> K(36, 0.0);
  K[0] = k11;
  K[4 * 6] = k15;
  K[4] = k51;
  K[4 * 6 + 4] = k55;
  return K;
}

// Columns e1 and e5.
std::vector<double> unit_columns() {
  std::vector<double> N(12, 0.0);
  N[0] = N[6 + 4] = 1.0;
  return N;
}

}  // namespace

TEST(Blocks, DecomposeTakesTheFourQuarters) {
  std::vector<double> K(144);
  // Row r, column c holds 100 r + c.
  for (std::size_t c = 0; c < 12; ++c) {
    for (std::size_t r = 0; r < 12; ++r)
      K[12 * c + r] = 100.0 * static_cast<double>(r + 1) + static_cast<double>(c + 1);
  }
  guarded_buffer B[4] = {guarded_buffer(36), guarded_buffer(36), guarded_buffer(36), guarded_buffer(36)};
  DECOMPOSE_KSTIF(K.data(), B[0].data(), B[1].data(), B[2].data(), B[3].data());
  const int first_row[4] = {0, 0, 6, 6}, first_column[4] = {0, 6, 0, 6};  // K11, K12, K21, K22
  for (int b = 0; b < 4; ++b) {
    EXPECT_EQ(B[b].changed(), support::range(1, 36));
    for (int c = 1; c <= 6; ++c) {
      for (int r = 1; r <= 6; ++r) EXPECT_EQ(B[b](6 * (c - 1) + r), 100 * (first_row[b] + r) + first_column[b] + c);
    }
  }
}

TEST(Blocks, AssembleIsTheReverseOfDecompose) {
  seeded_random random(5301);
  const std::vector<double> K = random.vector(144, 5.0);
  std::vector<double> B[4];
  for (std::vector<double>& b : B) b.resize(36);
  DECOMPOSE_KSTIF(K.data(), B[0].data(), B[1].data(), B[2].data(), B[3].data());
  guarded_buffer KP(144);
  KP_ASSEMBLE(KP.data(), B[0].data(), B[1].data(), B[2].data(), B[3].data());
  EXPECT_EQ(KP.changed(), support::range(1, 144));
  EXPECT_EQ(support::values(KP.data(), 144), K);
}

TEST(Products, TheTripleProductIsLGR) {
  seeded_random random(5302);
  for (int i = 0; i < 20; ++i) {
    const std::vector<double> G = random.vector(36, 2.0), L = random.vector(36, 3.0), R = random.vector(36, 4.0);
    guarded_buffer OUT(36);
    MAT_TRIPLE_PRODUCT(G.data(), L.data(), R.data(), OUT.data());
    EXPECT_EQ(OUT.changed(), support::range(1, 36));
    const matrix expected = reference::of_columns(L, 6) * reference::of_columns(G, 6) * reference::of_columns(R, 6);
    EXPECT_CLOSE(support::values(OUT.data(), 36), reference::packed(expected), 36 * 24.0, 4);
  }
}

TEST(Products, NBetaNtOfOneAndTwoEquations) {
  seeded_random random(5303);
  for (int neq = 1; neq <= 2; ++neq) {
    const std::vector<double> N = random.vector(6 * neq, 2.0), BETA = random.vector(neq * neq, 3.0);
    const matrix n = reference::of_columns(N, 6);
    const matrix expected = n * reference::of_columns(BETA, neq) * n.transpose();
    EXPECT_CLOSE(spread(BETA, N, neq), reference::packed(expected), 48.0, 4) << neq;
  }
}

TEST(Products, NBetaNtLeavesOutAThirdEquation) {
  seeded_random random(5304);
  for (int neq = 3; neq <= 4; ++neq) {
    const std::vector<double> N = random.vector(6 * neq, 2.0), BETA = random.vector(neq * neq, 3.0);
    const matrix n = reference::of_columns(N, 6).leftCols(2);
    const matrix expected = n * reference::of_columns(BETA, neq).topLeftCorner(2, 2) * n.transpose();
    EXPECT_CLOSE(spread(BETA, N, neq), reference::packed(expected), 48.0, 4) << neq;
  }
}

TEST(BetaInverse, OneEquationIsAReciprocal) {
  // n = (3, 0, 0, 0, 2, 0): n^T KB n = 9*5 + 3*2*(7 + 11) + 4*13 = 45 + 108 + 52 = 205.
  const std::vector<double> N{3, 0, 0, 0, 2, 0};
  const beta_answer b = beta_of(sparse(5, 7, 11, 13), N, 1);
  EXPECT_EQ(b.IERR, 0);
  EXPECT_EQ(b.BETA[0], 1.0 / 205.0);
}

TEST(BetaInverse, OneEquationWithoutStiffnessIsSingular) {
  EXPECT_EQ(beta_of(sparse(0, 0, 0, 13), {1, 0, 0, 0, 0, 0}, 1).IERR, 1);
  EXPECT_EQ(beta_of(sparse(5, 7, 11, 13), {0, 0, 0, 0, 0, 0}, 1).IERR, 1);
  // Positive and negative parts that cancel exactly.
  EXPECT_EQ(beta_of(sparse(4, 0, 0, -1), {1, 0, 0, 0, 2, 0}, 1).IERR, 1);
}

TEST(BetaInverse, OneEquationIsSingularAtExactlyZeroAlone) {
  const std::vector<double> N{1, 0, 0, 0, 0, 0};
  for (const double k : {-4.0, 0x1p-80, -0x1p-80, 0x1p-900}) {
    const beta_answer b = beta_of(sparse(k, 7, 11, 13), N, 1);
    EXPECT_EQ(b.IERR, 0) << k;
    EXPECT_EQ(b.BETA[0], 1 / k);  // powers of two: exact
  }
}

TEST(BetaInverse, TwoEquationsInDoublePrecision) {
  seeded_random random(5305);
  for (int i = 0; i < 50; ++i) {
    const std::vector<double> KB = some_matrix(random, 6), N = random.vector(12, 1.0);
    const matrix n = reference::of_columns(N, 6);
    const matrix inverse = (n.transpose() * reference::of_columns(KB, 6) * n).inverse();
    const std::vector<double> expected = reference::packed(inverse);
    const double scale = support::max_norm(expected);
    const beta_answer b = beta_of(KB, N, 2);
    EXPECT_EQ(b.IERR, 0);
    // B has terms of up to 36 * 7; its condition is below scale * 252.
    EXPECT_CLOSE(b.BETA, expected, scale, 20 * (1 + 252 * scale));
  }
}

TEST(BetaInverse, TwoEquationsKeepRowAndColumnApart) {
  // B = [5 7; 11 13], det = -12: inverse [13 -7; -11 5] / -12, by columns.
  const beta_answer b = beta_of(sparse(5, 7, 11, 13), unit_columns(), 2);
  EXPECT_EQ(b.IERR, 0);
  EXPECT_CLOSE(b.BETA, (std::vector<double>{-13 / 12.0, 11 / 12.0, 7 / 12.0, -5 / 12.0}), 1.0, 16);
}

TEST(BetaInverse, TwoEquationsAreNotNarrowed) {
  // 2^24 + 1 is no number of single precision. [2^24+1 1; 1 1] has the determinant 2^24 and the inverse
  // [1 -1; -1 2^24+1] / 2^24; narrowed, its determinant would be 2^24 - 1.
  constexpr double big = 16777216.0;
  const beta_answer b = beta_of(sparse(big + 1, 1, 1, 1), unit_columns(), 2);
  EXPECT_EQ(b.IERR, 0);
  EXPECT_CLOSE(b.BETA[0], 1 / big, 1 / big, 16);
  EXPECT_CLOSE(b.BETA[1], -1 / big, 1 / big, 16);
  EXPECT_CLOSE(b.BETA[2], -1 / big, 1 / big, 16);
  EXPECT_CLOSE(b.BETA[3], (big + 1) / big, 1.0, 16);
}

TEST(BetaInverse, TwoEqualEquationsAreSingular) {
  const std::vector<double> N{1, 2, 3, 4, 5, 6, 1, 2, 3, 4, 5, 6};
  std::vector<double> KB(36, 0.0);
  for (std::size_t i = 0; i < 6; ++i) KB[7 * i] = 2.0;
  EXPECT_NE(beta_of(KB, N, 2).IERR, 0);
}

TEST(BetaInverse, ThreeEquationsAreSingularHoweverSoundTheyAre) {
  seeded_random random(5306);
  for (int neq = 3; neq <= 4; ++neq) {
    const std::vector<double> KB = some_matrix(random, 6), N = random.vector(6 * neq, 1.0);
    EXPECT_NE(beta_of(KB, N, neq).IERR, 0) << neq;
  }
}

TEST(OneSide, MultipliersOfOneTwoAndThreeEquations) {
  seeded_random random(5307);
  for (int neq = 1; neq <= 3; ++neq) {
    const std::vector<double> K1 = random.vector(36, 2.0), K2 = random.vector(36, 2.0), N = random.vector(6 * neq, 1.0),
                              BETA = random.vector(neq * neq, 1.0), D1 = random.vector(6, 3.0),
                              D2 = random.vector(6, 3.0);
    const matrix v =
        reference::of_columns(N, 6).transpose() * (reference::of_columns(K1, 6) * reference::of_columns(D1, 6) +
                                                   reference::of_columns(K2, 6) * reference::of_columns(D2, 6));
    const matrix expected = reference::of_columns(BETA, neq) * v;
    EXPECT_CLOSE(multipliers(K1, K2, N, neq, BETA, D1, D2), reference::packed(expected), neq * 72 * 6.0, 4) << neq;
  }
}

TEST(OneSide, TheThirdEquationIsFormed) {
  // K1 = unit, K2 = 0, n3 = e6: v = (0, 0, d6); BETA passes it on to all three.
  std::vector<double> unit(36, 0.0), N(18, 0.0), BETA(9, 0.0);
  for (std::size_t i = 0; i < 6; ++i) unit[7 * i] = 1.0;
  N[17] = 1.0;
  BETA[6] = 2;
  BETA[7] = 3;
  BETA[8] = 4;
  EXPECT_EQ(multipliers(unit, std::vector<double>(36, 0.0), N, 3, BETA, {1, 1, 1, 1, 1, 5}, {9, 9, 9, 9, 9, 9}),
            (std::vector<double>{10, 15, 20}));
}

TEST(OneSide, BeyondThreeEquationsTheFirstTwoTakePart) {
  // The third is formed when there are exactly three.
  seeded_random random(5308);
  const std::vector<double> K1 = random.vector(36, 2.0), K2 = random.vector(36, 2.0), N = random.vector(24, 1.0),
                            BETA = random.vector(16, 1.0), D1 = random.vector(6, 3.0), D2 = random.vector(6, 3.0);
  const matrix v = reference::of_columns(N, 6).leftCols(2).transpose() *
                   (reference::of_columns(K1, 6) * reference::of_columns(D1, 6) +
                    reference::of_columns(K2, 6) * reference::of_columns(D2, 6));
  const matrix expected = reference::of_columns(BETA, 4).leftCols(2) * v;
  EXPECT_CLOSE(multipliers(K1, K2, N, 4, BETA, D1, D2), reference::packed(expected), 4 * 72 * 6.0, 4);
}
