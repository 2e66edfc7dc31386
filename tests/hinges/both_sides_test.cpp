// both_sides_test.cpp: the plastic multipliers of both ends, G = (N^T K N)^-1 N^T K: two equations are inverted in
// single precision at every operation, every other number of them in double.
#include <gtest/gtest.h>

#include <cmath>

#include "comparison.h"
#include "finites/finites.h"
#include "guarded_buffer.h"
#include "random_shapes.h"
#include "reference_hinge.h"

namespace {

using reference::matrix;
using support::guarded_buffer;
using support::seeded_random;

struct multiplier_answer {
  std::vector<double> G;  // NTOT by 12
  int IERR;
};

multiplier_answer both_sides(const std::vector<double>& K, const std::vector<double>& N, int ntot) {
  const std::int32_t NTOT = ntot;
  std::int32_t IERR = 77;
  guarded_buffer G(12 * ntot);
  MATRIX_PLASTIC_MAGNITUDES_BOTH_SIDES(K.data(), N.data(), &NTOT, G.data(), &IERR);
  EXPECT_EQ(G.changed(), support::range(1, 12 * ntot));
  return {support::values(G.data(), 12 * ntot), IERR};
}

std::vector<double> some_stiffness(seeded_random& random) {
  std::vector<double> K = random.vector(144, 1.0);
  for (std::size_t i = 0; i < 12; ++i) K[13 * i] += 12.0;
  return K;
}

// N = (e1, e7) and a K that shows B = [b11 b12; b21 b22] and its inverse: row 1 of K is (b11, 1, 0, ..., b12 at 7),
// row 7 is (b21, 0, 1, ..., b22 at 7). Column 2 of G is then the first column of the inverse, column 3 the second, and
// no rounding stands between: the products are by 1 and 0.
struct visible_inverse {
  std::vector<double> K = std::vector<double>(144, 0.0), N = std::vector<double>(24, 0.0);

  visible_inverse(double b11, double b12, double b21, double b22) {
    at(1, 1) = b11;
    at(1, 7) = b12;
    at(7, 1) = b21;
    at(7, 7) = b22;
    at(1, 2) = at(7, 3) = 1.0;
    N[0] = N[12 + 6] = 1.0;
  }
  double& at(std::size_t row, std::size_t column) { return K[12 * (column - 1) + row - 1]; }
  // By columns.
  std::vector<double> inverse() const {
    const multiplier_answer a = both_sides(K, N, 2);
    EXPECT_EQ(a.IERR, 0);
    return support::values(a.G.data() + 2, 4);
  }
  int status() const { return both_sides(K, N, 2).IERR; }
};

// The closed form, each step stored as a single.
std::vector<double> single_inverse(double d11, double d12, double d21, double d22) {
  const volatile float b11 = static_cast<float>(d11), b12 = static_cast<float>(d12), b21 = static_cast<float>(d21),
                       b22 = static_cast<float>(d22);
  const volatile float first = b11 * b22, second = b12 * b21;
  const volatile float det = first - second;
  const volatile float i11 = b22 / det, i21 = -b21 / det, i12 = -b12 / det, i22 = b11 / det;
  return {static_cast<double>(i11), static_cast<double>(i21), static_cast<double>(i12), static_cast<double>(i22)};
}

// How far rounding in double may carry G: by the condition of N^T K N.
double condition(const matrix& B) {
  return static_cast<double>(B.cwiseAbs().maxCoeff() * B.inverse().cwiseAbs().maxCoeff()) *
         static_cast<double>(B.rows());
}

}  // namespace

TEST(BothSides, EveryOtherNumberOfEquationsInDoublePrecision) {
  seeded_random random(5401);
  for (const int ntot : {1, 3, 4, 5, 6, 7, 8, 12}) {
    for (int i = 0; i < 10; ++i) {
      const std::vector<double> K = some_stiffness(random), N = random.vector(12 * ntot, 1.0);
      const matrix k = reference::of_columns(K, 12), n = reference::of_columns(N, 12);
      const matrix B = n.transpose() * k * n;
      const std::vector<double> expected = reference::packed(B.inverse() * n.transpose() * k);
      const multiplier_answer a = both_sides(K, N, ntot);
      EXPECT_EQ(a.IERR, 0);
      EXPECT_CLOSE(a.G, expected, support::max_norm(expected), 100 * condition(B)) << ntot;
    }
  }
}

TEST(BothSides, TwoEquationsToSinglePrecision) {
  seeded_random random(5402);
  double furthest = 0.0;
  for (int i = 0; i < 50; ++i) {
    const std::vector<double> K = some_stiffness(random), N = random.vector(24, 1.0);
    const matrix k = reference::of_columns(K, 12), n = reference::of_columns(N, 12);
    const matrix B = n.transpose() * k * n;
    const std::vector<double> expected = reference::packed(B.inverse() * n.transpose() * k);
    const double scale = support::max_norm(expected);
    const multiplier_answer a = both_sides(K, N, 2);
    EXPECT_EQ(a.IERR, 0);
    EXPECT_WITHIN(a.G, expected, scale, 6e-8 * 20 * condition(B));
    for (std::size_t k0 = 0; k0 < a.G.size(); ++k0)
      furthest = std::fmax(furthest, std::fabs(a.G[k0] - expected[k0]) / scale);
  }
  EXPECT_GT(furthest, 1e-9);  // the loss of single precision is there
}

TEST(BothSides, TheInverseOfTwoEquationsHasTheBitsOfSinglePrecision) {
  // det = 3*7 - 2*5 = 11 exactly; the quotients are those of single precision.
  const std::vector<double> small = visible_inverse(3, 2, 5, 7).inverse();
  EXPECT_EQ(small, (std::vector<double>{static_cast<double>(7.0F / 11.0F), static_cast<double>(-5.0F / 11.0F),
                                        static_cast<double>(-2.0F / 11.0F), static_cast<double>(3.0F / 11.0F)}));
  // 7 * 2^24 / 11 = 10676410.18: the single next to 7/11 is 10676410 / 2^24.
  EXPECT_EQ(small[0], 10676410.0 / 16777216.0);

  seeded_random random(5403);
  for (int i = 0; i < 500; ++i) {
    double b[4];
    for (double& x : b) x = random.uniform(-1, 1) * random.log_uniform(1e-3, 1e6);
    const std::vector<double> expected = single_inverse(b[0], b[1], b[2], b[3]);
    EXPECT_EQ(visible_inverse(b[0], b[1], b[2], b[3]).inverse(), expected);
  }
}

TEST(BothSides, NarrowingComesBeforeTheDeterminant) {
  // 2^24 + 1 narrows to 2^24: det = 2^24 * 3 - 2^24 * 2 = 2^24 exactly, where the doubles give 2^24 + 3.
  constexpr double big = 16777216.0;
  const std::vector<double> inverse = visible_inverse(big + 1, big, 2, 3).inverse();
  EXPECT_EQ(inverse, (std::vector<double>{3 / big, -2 / big, -1, 1}));
}

TEST(BothSides, ProductsOfTheDeterminantAreSinglesToo) {
  // 4097^2 = 2^24 + 2^13 + 1 rounds to 2^24 + 2^13 as a single; minus (2^24 + 2^13) * 1 that is exactly 0, while the
  // determinant in double is 1.
  const visible_inverse v(4097, 16777216.0 + 8192.0, 1, 4097);
  EXPECT_EQ(v.status(), 1);
}

TEST(BothSides, GradientsThatAreParallelInSinglePrecisionAreSingular) {
  constexpr double nearly = 1.0 + 1e-9;
  EXPECT_EQ(visible_inverse(1, -1, -1, 1).status(), 1);
  EXPECT_EQ(visible_inverse(nearly, -1, -1, nearly).status(), 1);
  EXPECT_EQ(visible_inverse(1.0 + 1e-6, -1, -1, 1.0 + 1e-6).status(), 0);
}

TEST(BothSides, OnlyADeterminantOfExactlyZeroIsSingular) {
  // 2^-60 times the unit matrix: the determinant 2^-120 is a sound single, and so is the inverse 2^60.
  const double small = std::ldexp(1.0, -60), large = std::ldexp(1.0, 60);
  EXPECT_EQ(visible_inverse(small, 0, 0, small).inverse(), (std::vector<double>{large, 0, 0, large}));
  // 2^-90 squared is below the smallest single.
  EXPECT_EQ(visible_inverse(std::ldexp(1.0, -90), 0, 0, std::ldexp(1.0, -90)).status(), 1);
}

TEST(BothSides, NumbersOfEquationsThatHaveNoInverse) {
  // Thirteen directions of twelve degrees of freedom are dependent, whatever rounding makes of them.
  seeded_random random(5406);
  const multiplier_answer many = both_sides(some_stiffness(random), random.vector(12 * 13, 1.0), 13);
  EXPECT_EQ(many.IERR, 1);
  EXPECT_EQ(many.G, std::vector<double>(12 * 13, 0.0));
  // None at all: nothing is written but the status.
  for (const std::int32_t none : {0, -1, -2147483647 - 1}) {
    const std::vector<double> K = some_stiffness(random), N(12, 1.0);
    std::int32_t IERR = 77;
    guarded_buffer G(12);
    MATRIX_PLASTIC_MAGNITUDES_BOTH_SIDES(K.data(), N.data(), &none, G.data(), &IERR);
    EXPECT_EQ(IERR, 1) << none;
    EXPECT_EQ(G.changed(), std::vector<int>()) << none;
  }
}

TEST(BothSides, ASingularMatrixLeavesGZero) {
  const visible_inverse two(1, -1, -1, 1);
  EXPECT_EQ(both_sides(two.K, two.N, 2).G, std::vector<double>(24, 0.0));
  // Three equations, of which one has no gradient: a column of zeros.
  seeded_random random(5404);
  std::vector<double> N = random.vector(36, 1.0);
  std::fill_n(N.begin() + 12, 12, 0.0);
  const multiplier_answer three = both_sides(some_stiffness(random), N, 3);
  EXPECT_NE(three.IERR, 0);
  // One equation without a gradient.
  EXPECT_NE(both_sides(some_stiffness(random), std::vector<double>(12, 0.0), 1).IERR, 0);
}

TEST(BothSides, TheMultipliersAnnihilateTheStiffnessAlongTheFlow) {
  // G K-projection: G n_j is the unit column, so that (K - K N G) N = 0.
  seeded_random random(5405);
  for (const int ntot : {1, 2, 3, 4}) {
    const std::vector<double> K = some_stiffness(random), N = random.vector(12 * ntot, 1.0);
    const matrix n = reference::of_columns(N, 12);
    const matrix B = n.transpose() * reference::of_columns(K, 12) * n;
    const matrix unit = reference::of_columns(both_sides(K, N, ntot).G, ntot) * n - matrix::Identity(ntot, ntot);
    EXPECT_WITHIN(static_cast<double>(unit.cwiseAbs().maxCoeff()), 0.0, 1.0, (ntot == 2 ? 1e-6 : 1e-14) * condition(B))
        << ntot;
  }
}
