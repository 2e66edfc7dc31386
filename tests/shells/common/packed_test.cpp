// packed_test.cpp: unpacking, places of the parts and rotation of packed matrices, against full matrices.
#include "shells/common/packed.h"
#include "dense.h"

#include "comparison.h"
#include "guarded_buffer.h"
#include "random_shapes.h"

namespace {

using dense::matrix;
using support::seeded_random;
using support::values;

// The full symmetric matrix of packed storage, read entry by entry at position (j - 1) j / 2 + i.
matrix full_of(int n, const std::vector<double>& packed) {
  matrix M(n, n);
  for (int j = 1; j <= n; ++j) {
    for (int i = 1; i <= j; ++i)
      M(i - 1, j - 1) = M(j - 1, i - 1) = packed.at(static_cast<std::size_t>((j - 1) * j / 2 + i - 1));
  }
  return M;
}

matrix block_diagonal(const MATRIX<3, 3>& AXES, int groups) {
  matrix R = matrix::Zero(3 * groups, 3 * groups);
  for (int g = 0; g < groups; ++g) R.block(3 * g, 3 * g, 3, 3) = dense::widened(AXES.data(), 3, 3);
  return R;
}

MATRIX<3, 3> rotation_axes(seeded_random& random) {
  const support::rotation R = support::random_rotation(random);
  MATRIX<3, 3> AXES;
  for (int a = 1; a <= 3; ++a) {
    for (int i = 1; i <= 3; ++i) AXES(a, i) = R.at(static_cast<std::size_t>(a - 1)).at(static_cast<std::size_t>(i - 1));
  }
  return AXES;
}

}  // namespace

TEST(PackedStorage, UnpacksToBothTriangles) {
  for (const int n : {1, 3, 18, 24}) {
    const int count = n * (n + 1) / 2;
    std::vector<double> packed;
    for (int at = 1; at <= count; ++at) packed.push_back(at);
    support::guarded_buffer M(n * n);
    UNPACK_SYMMETRIC(n, count, packed.data(), M.data());
    EXPECT_EQ(M.changed(), support::range(1, n * n));
    const matrix expected = full_of(n, packed);
    EXPECT_EQ(values(M.data(), n * n), dense::listed(expected)) << "order " << n;
  }
}

TEST(PackedStorage, PlacesOfThreeByThreeByHand) {
  const double packed[6] = {11.0, 12.0, 22.0, 13.0, 23.0, 33.0};
  double M[9];
  UNPACK_SYMMETRIC(3, 6, packed, M);
  EXPECT_EQ(values(M, 9), (std::vector<double>{11, 12, 13, 12, 22, 23, 13, 23, 33}));
}

TEST(PackedStorage, PartsAreAddedAtTheirPlaces) {
  const int places[3] = {6, 12, 18};
  const double part[6] = {1.0, 2.0, 4.0, 8.0, 16.0, 32.0};
  std::vector<double> K(171, 0.25);
  packed_add(K.data(), part, places);
  std::vector<double> expected(171, 0.25);
  const std::size_t positions[6] = {21, 72, 78, 159, 165, 171};
  for (std::size_t i = 0; i < 6; ++i) expected[positions[i] - 1] += part[i];
  EXPECT_EQ(K, expected);
}

TEST(PackedRotation, IsTheFullTripleProduct) {
  seeded_random random(41);
  for (const int groups : {1, 2, 6, 8}) {
    for (int trial = 0; trial < 20; ++trial) {
      const MATRIX<3, 3> AXES = rotation_axes(random);
      const int n = 3 * groups, count = n * (n + 1) / 2;
      std::vector<double> K = random.vector(count, 1.0);
      const matrix R = block_diagonal(AXES, groups);
      const matrix expected = R.transpose() * full_of(n, K) * R;
      packed_to_global(AXES, groups, K.data());
      const matrix actual = full_of(n, K);
      EXPECT_CLOSE(dense::listed(actual), dense::listed(expected), 3.0, 8);
    }
  }
}

TEST(FullRotation, IsTheTripleProductOfAMatrixThatIsNotSymmetric) {
  seeded_random random(44);
  for (const int groups : {1, 6, 8}) {
    const MATRIX<3, 3> AXES = rotation_axes(random);
    const int n = 3 * groups;
    std::vector<double> K = random.vector(n * n, 1.0);
    const matrix R = block_diagonal(AXES, groups);
    const matrix expected = R.transpose() * dense::widened(K.data(), n, n) * R;
    full_to_global(AXES, groups, K.data());
    EXPECT_CLOSE(K, dense::listed(expected), 3.0, 8);
  }
}

TEST(PackedRotation, UnitAxesChangeNothing) {
  seeded_random random(42);
  const std::vector<double> before = random.vector(171, 1.0);
  std::vector<double> K = before;
  MATRIX<3, 3> AXES{};
  AXES(1, 1) = AXES(2, 2) = AXES(3, 3) = 1.0;
  packed_to_global(AXES, 6, K.data());
  EXPECT_EQ(K, before);
}

TEST(PackedRotation, StaysWithinItsStorage) {
  seeded_random random(43);
  const MATRIX<3, 3> AXES = rotation_axes(random);
  support::guarded_buffer K(171);
  K.set_input(random.vector(171, 1.0));
  packed_to_global(AXES, 6, K.data());
  EXPECT_EQ(K.changed(), support::range(1, 171));
}
