// release_test.cpp: static condensation of one degree of freedom, and the release of a mass.
#include <gtest/gtest.h>

#include "comparison.h"
#include "finites/finites.h"
#include "guarded_buffer.h"
#include "random_shapes.h"
#include "reference_member.h"

namespace {

using reference::listed;
using reference::matrix;
using support::guarded_buffer;
using support::seeded_random;

std::vector<double> random_symmetric(seeded_random& random, int n) {
  std::vector<double> K(static_cast<std::size_t>(n) * static_cast<std::size_t>(n));
  for (int j = 0; j < n; ++j) {
    for (int i = 0; i <= j; ++i) {
      const double value = random.uniform(-1.0, 1.0) + (i == j ? 2.0 * n : 0.0);
      K[static_cast<std::size_t>(j * n + i)] = K[static_cast<std::size_t>(i * n + j)] = value;
    }
  }
  return K;
}

std::vector<double> values_of(guarded_buffer& buffer, int count) { return support::values(buffer.data(), count); }

}  // namespace

TEST(ReleaseDof, CondensesAnyFreedomOfAnyOrder) {
  seeded_random random(4401);
  for (std::int32_t n = 1; n <= 30; ++n) {
    for (std::int32_t d = 1; d <= n; ++d) {
      const std::vector<double> K = random_symmetric(random, n);
      guarded_buffer buffer(n * n);
      buffer.set_input(K);
      RELEASE_DOF(&d, buffer.data(), &n);
      const matrix expected = reference::condensed(reference::square(K), {d});
      EXPECT_CLOSE(values_of(buffer, n * n), listed(expected), 2.0 * n, 8) << "order " << n << ", freedom " << d;
      for (const int position : buffer.changed()) EXPECT_TRUE(position >= 1 && position <= n * n);
    }
  }
}

TEST(ReleaseDof, RowAndColumnComeOutByTheArithmetic) {
  // Powers of two: exact zeros. Others: what c - c p / p rounds to, not a zero put there.
  const std::int32_t n = 2, d = 1;
  std::vector<double> K{4.0, 2.0, 2.0, 8.0};
  RELEASE_DOF(&d, K.data(), &n);
  EXPECT_EQ(K, (std::vector<double>{0.0, 0.0, 0.0, 7.0}));
  seeded_random random(4402);
  int residues = 0;
  for (int trial = 0; trial < 200; ++trial) {
    const double p = random.uniform(1.0, 2.0), c = random.uniform(1.0, 2.0);
    std::vector<double> L{p, c, c, 9.0};
    RELEASE_DOF(&d, L.data(), &n);
    EXPECT_EQ(L[0], 0.0 + (p - p * p / p));
    EXPECT_EQ(L[1], c - c * p / p);
    EXPECT_EQ(L[2], c - p * c / p);
    EXPECT_EQ(L[3], 9.0 - c * c / p);
    if (L[1] != 0.0) ++residues;
  }
  EXPECT_GT(residues, 0);
}

TEST(ReleaseDof, UsesTheColumnOnBothSides) {
  // A matrix that is not symmetric: K(r, s) loses column times column, not column times row.
  const std::int32_t n = 3, d = 2;
  std::vector<double> K{1, 2, 3, 4, 2, 8, 5, 6, 7};
  RELEASE_DOF(&d, K.data(), &n);
  // c = (4, 2, 8), pivot 2
  EXPECT_EQ(K, (std::vector<double>{1 - 8.0, 2 - 4.0, 3 - 16.0, 4 - 4.0, 0, 8 - 8.0, 5 - 16.0, 6 - 8.0, 7 - 32.0}));
}

TEST(ReleaseDof, AZeroPivotOrNoSuchFreedomDoesNothing) {
  seeded_random random(4403);
  const std::int32_t n = 5;
  std::vector<double> K = random_symmetric(random, n);
  K[12] = 0.0;
  for (const std::int32_t d : {3, 0, -1, 6, 7, 1000000, -2147483647 - 1, 2147483647}) {
    guarded_buffer buffer(n * n);
    buffer.set_input(K);
    RELEASE_DOF(&d, buffer.data(), &n);
    EXPECT_EQ(buffer.changed(), std::vector<int>{}) << d;
  }
  K[12] = -0.0;
  std::vector<double> before = K;
  const std::int32_t d = 3;
  RELEASE_DOF(&d, K.data(), &n);
  EXPECT_EQ(K, before);
}

TEST(ReleaseDof, ATinyOrNegativePivotStillCounts) {
  for (const double pivot : {1e-300, -2.0, 5e-324}) {
    const std::int32_t n = 2, d = 2;
    std::vector<double> K{3.0, 0.0, 0.0, pivot};
    RELEASE_DOF(&d, K.data(), &n);
    EXPECT_EQ(K[0], 3.0);
    EXPECT_EQ(K[3], pivot - pivot * pivot / pivot);
  }
}

TEST(ReleaseDof, ASecondReleaseOfTheSameFreedomDoesNothing) {
  const std::int32_t n = 2, d = 1;
  std::vector<double> K{4.0, 2.0, 2.0, 8.0};
  RELEASE_DOF(&d, K.data(), &n);
  const std::vector<double> once = K;
  RELEASE_DOF(&d, K.data(), &n);
  EXPECT_EQ(K, once);
}

TEST(ReleaseDof, NoOrderNoAccess) {
  const std::int32_t n = 0, d = 1;
  RELEASE_DOF(&d, nullptr, &n);
}

TEST(ReleaseDofMas, HandsTranslationAndTorsionToTheOtherEnd) {
  seeded_random random(4404);
  for (std::int32_t d = 1; d <= 12; ++d) {
    const std::vector<double> M = random_symmetric(random, 12);
    guarded_buffer buffer(144);
    buffer.set_input(M);
    RELEASE_DOF_MAS(&d, buffer.data());
    std::vector<double> expected = M;
    const auto place = [](int i, int j) { return static_cast<std::size_t>(12 * (j - 1) + i - 1); };
    for (int i = 1; i <= 12; ++i) expected[place(i, d)] = expected[place(d, i)] = 0.0;
    const int partner = d <= 6 ? d + 6 : d - 6;
    const int along = (d - 1) % 6 + 1;
    if (along != 5 && along != 6) expected[place(partner, partner)] = M[place(partner, partner)] + M[place(d, d)];
    EXPECT_EQ(values_of(buffer, 144), expected) << d;
    for (const int position : buffer.changed()) EXPECT_TRUE(position >= 1 && position <= 144);
  }
}

TEST(ReleaseDofMas, AZeroDiagonalOrNoSuchFreedomDoesNothing) {
  seeded_random random(4405);
  std::vector<double> M = random_symmetric(random, 12);
  M[3 * 13] = 0.0;
  M[8 * 13] = -0.0;
  for (const std::int32_t d : {4, 9, 0, -1, 13, 14, 2147483647, -2147483647 - 1}) {
    guarded_buffer buffer(144);
    buffer.set_input(M);
    RELEASE_DOF_MAS(&d, buffer.data());
    EXPECT_EQ(buffer.changed(), std::vector<int>{}) << d;
  }
}
