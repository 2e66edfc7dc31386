// offsets_test.cpp: rigid links against the motion of a rigid body.
#include <gtest/gtest.h>

#include <array>

#include "finites/services.h"
#include "reference_matrix.h"

namespace {

using TRIPLE = std::array<double, 3>;

DENSE rigid_link(const TRIPLE& d) {
  DENSE J(6, 6);
  std::fill(J.value.begin(), J.value.end(), GUARD);
  GET_JOINT_OFFSET_J6D(&d[0], &d[1], &d[2], J.data());
  return J;
}

}  // namespace

TEST(Offsets, TheBlockIsTheSkewMatrixOfTheOffset) {
  const DENSE J = rigid_link({2.0, 3.0, 5.0});
  const double expected[6][6] = {{1, 0, 0, 0, -5, 3}, {0, 1, 0, 5, 0, -2}, {0, 0, 1, -3, 2, 0},
                                 {0, 0, 0, 1, 0, 0},  {0, 0, 0, 0, 1, 0},  {0, 0, 0, 0, 0, 1}};
  for (int i = 1; i <= 6; ++i) {
    for (int j = 1; j <= 6; ++j) EXPECT_EQ(J(i, j), expected[i - 1][j - 1]) << i << " " << j;
  }
}

TEST(Offsets, CarriesARigidMotionToThePointAtMinusTheOffset) {
  // An element lies at the node's coordinates less the offset: a turn theta of the node moves it by theta x (-d).
  std::mt19937_64 source(41);
  for (int trial = 0; trial < 50; ++trial) {
    const DENSE d = random_matrix(source, 3, 1), q = random_matrix(source, 6, 1);
    const DENSE moved = exact_product(rigid_link({d(1, 1), d(2, 1), d(3, 1)}), q);
    const double ax = -d(1, 1), ay = -d(2, 1), az = -d(3, 1);
    const double tx = q(4, 1), ty = q(5, 1), tz = q(6, 1);
    const double expected[] = {q(1, 1) + ty * az - tz * ay, q(2, 1) + tz * ax - tx * az, q(3, 1) + tx * ay - ty * ax};
    for (int i = 1; i <= 3; ++i) EXPECT_NEAR(moved(i, 1), expected[i - 1], 1e-15);
    for (int i = 4; i <= 6; ++i) EXPECT_EQ(moved(i, 1), q(i, 1));
  }
}

TEST(Offsets, LinksInARowAddTheirOffsets) {
  const DENSE both = exact_product(rigid_link({1.0, 2.0, 3.0}), rigid_link({0.5, -4.0, 0.25}));
  EXPECT_EQ(both.value, rigid_link({1.5, -2.0, 3.25}).value);
}

TEST(Offsets, APlateHasTheLinksOfItsNodesOnTheDiagonal) {
  const TRIPLE d[4] = {{1, 2, 3}, {-4, 5, 6}, {7, -8, 9}, {10, 11, -12}};
  for (std::int32_t n = 1; n <= 4; ++n) {
    DENSE P(6 * n, 6 * n);
    std::fill(P.value.begin(), P.value.end(), GUARD);
    // The offsets of nodes that the plate does not have are not read.
    const double* at[12] = {};
    for (int i = 0; i < 3 * n; ++i) at[i] = &d[i / 3][static_cast<std::size_t>(i % 3)];
    GET_PLATE_OFFSET_P_DBL(&n, at[0], at[1], at[2], at[3], at[4], at[5], at[6], at[7], at[8], at[9], at[10], at[11],
                           P.data());
    for (int i = 1; i <= 6 * n; ++i) {
      for (int j = 1; j <= 6 * n; ++j) {
        const int node = (i - 1) / 6;
        const bool in_block = node == (j - 1) / 6;
        const double expected = in_block ? rigid_link(d[node])((i - 1) % 6 + 1, (j - 1) % 6 + 1) : 0.0;
        EXPECT_EQ(P(i, j), expected) << n << ": " << i << " " << j;
      }
    }
  }
}

TEST(Offsets, AnotherNodeCountDoesNothing) {
  const double d = 1.0;
  for (std::int32_t n : {0, -1, 5}) {
    std::array<double, 900> P;
    P.fill(GUARD);
    GET_PLATE_OFFSET_P_DBL(&n, &d, &d, &d, &d, &d, &d, &d, &d, &d, &d, &d, &d, P.data());
    for (double entry : P) EXPECT_EQ(entry, GUARD);
  }
}
