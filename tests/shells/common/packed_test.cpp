// packed_test.cpp: unpacking, places of the parts and rotation of packed matrices, against full matrices.
#include "shells/common/packed.h"
#include "dense.h"
#include "shells/common/flat_parts.h"

#include <cmath>
#include <cstring>

#include "broken_values.h"
#include "comparison.h"
#include "guarded_buffer.h"
#include "random_shapes.h"

namespace {

using dense::matrix;
using support::expect_same_places;
using support::seeded_random;
using support::turned_by_blocks;
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

// Does a flat element couple the degrees of freedom i and j, counted from 0? In its plane u with v; the deflection with
// the rotations about x and y; the rotation about z with itself.
bool coupled_in_a_flat_element(int i, int j) {
  constexpr int PART[6] = {0, 0, 1, 1, 1, 2};
  return PART[i % 6] == PART[j % 6];
}

template <int NODES>
std::vector<double> random_flat(seeded_random& random) {
  constexpr int n = 6 * NODES;
  std::vector<double> K = random.vector(SYM(n, n), 1.0);
  for (int j = 0; j < n; ++j) {
    for (int i = 0; i <= j; ++i) {
      if (!coupled_in_a_flat_element(i, j)) K[static_cast<std::size_t>(SYM(i + 1, j + 1) - 1)] = 0.0;
    }
  }
  return K;
}

// What turn(leading, matrix) writes, column by column without gaps; with columns 24 apart it writes the same bits there
// and nothing between them.
template <int NODES, class TURN>
std::vector<double> turned(const TURN& turn) {
  constexpr int n = 6 * NODES;
  support::guarded_buffer compact(n * n), apart(24 * 24);
  turn(n, compact.data());
  turn(24, apart.data());
  EXPECT_EQ(compact.changed(), support::range(1, n * n));
  std::vector<int> places;
  for (int j = 0; j < n; ++j) {
    for (int i = 0; i < n; ++i) places.push_back(24 * j + i + 1);
    EXPECT_EQ(std::memcmp(compact.data() + n * j, apart.data() + 24 * j, n * sizeof(double)), 0) << "column " << j + 1;
  }
  EXPECT_EQ(apart.changed(), places);
  return values(compact.data(), n * n);
}

template <int NODES>
std::vector<double> flat_turned(const MATRIX<3, 3>& AXES, const std::vector<double>& K) {
  return turned<NODES>([&](int leading, double* matrix) {
    std::vector<double> overwritten = K;
    flat_to_global<NODES>(AXES, overwritten.data(), leading, matrix);
  });
}

template <int NODES>
void expect_broken_entries_carried(unsigned seed) {
  seeded_random random(seed);
  MATRIX<3, 3> along{};  // the axes of an element in a plane of the global axes, with zeros of both signs
  along(1, 2) = along(3, 3) = 1.0;
  along(2, 1) = -1.0;
  along(1, 3) = -0.0;
  for (const MATRIX<3, 3>& AXES : {rotation_axes(random), along}) {
    const std::vector<double> K = random_flat<NODES>(random);
    for (const double broken : support::BROKEN) {
      for (std::size_t at = 0; at < K.size(); ++at) {
        SCOPED_TRACE(::testing::Message() << NODES << " nodes, " << broken << " at place " << at + 1 << " of K");
        std::vector<double> B = K;
        B[at] = broken;
        expect_same_places(flat_turned<NODES>(AXES, B), turned_by_blocks(AXES.data(), B, 6 * NODES));
      }
      for (int entry = 0; entry < 9; ++entry) {
        SCOPED_TRACE(::testing::Message() << NODES << " nodes, " << broken << " at place " << entry + 1 << " of AXES");
        MATRIX<3, 3> B = AXES;
        B.data()[entry] = broken;
        expect_same_places(flat_turned<NODES>(B, K), turned_by_blocks(B.data(), K, 6 * NODES));
      }
    }
  }
}

// The matrix of the parts of a flat K: as that of K itself, also with a broken entry in a part.
template <int NODES>
std::vector<double> parts_turned(const MATRIX<3, 3>& AXES, const FLAT_PARTS<NODES>& parts) {
  return turned<NODES>([&](int leading, double* matrix) { flat_to_global(AXES, parts, leading, matrix); });
}

template <int NODES>
void expect_parts_turned_as_the_whole(unsigned seed) {
  seeded_random random(seed);
  const MATRIX<3, 3> AXES = rotation_axes(random);
  std::vector<double> K = random_flat<NODES>(random);
  const FLAT_PARTS<NODES> parts = parts_of<NODES>(K.data());
  EXPECT_EQ(parts_turned(AXES, parts), flat_turned<NODES>(AXES, K));
  std::vector<double> again(K.size(), -1.0);
  assemble_parts(parts, again.data());
  EXPECT_EQ(again, K);
  for (std::size_t at = 0; at < K.size(); ++at) {
    if (K[at] == 0.0) continue;  // not in a part
    for (const double broken : support::BROKEN) {
      SCOPED_TRACE(::testing::Message() << NODES << " nodes, " << broken << " at place " << at + 1);
      std::vector<double> B = K;
      B[at] = broken;
      expect_same_places(parts_turned(AXES, parts_of<NODES>(B.data())), turned_by_blocks(AXES.data(), B, 6 * NODES));
    }
  }
}

// The numbers of the products by blocks to the last bit: the entries that are zero in a flat element add zeros there.
template <int NODES>
void expect_numbers_of_block_products(unsigned seed) {
  seeded_random random(seed);
  constexpr int n = 6 * NODES;
  for (int trial = 0; trial < 40; ++trial) {
    MATRIX<3, 3> AXES = rotation_axes(random);
    if (trial % 2 == 1) AXES = {{-0.0, -1.0, 0.0, 1.0, -0.0, 0.0, 0.0, -0.0, 1.0}};
    std::vector<double> K = random_flat<NODES>(random);
    const std::vector<double> actual = flat_turned<NODES>(AXES, K);
    packed_to_global(AXES, 2 * NODES, K.data());
    std::vector<double> expected(n * n);
    UNPACK_SYMMETRIC(n, SYM(n, n), K.data(), expected.data());
    for (std::size_t i = 0; i < expected.size(); ++i) {
      ASSERT_EQ(actual[i], expected[i]) << "trial " << trial << ", row " << i % n + 1 << ", column " << i / n + 1;
    }
  }
}

}  // namespace

TEST(FlatRotation, IsTheFullTripleProduct) {
  seeded_random random(45);
  for (int trial = 0; trial < 20; ++trial) {
    const MATRIX<3, 3> AXES = rotation_axes(random);
    const std::vector<double> K3 = random_flat<3>(random), K4 = random_flat<4>(random);
    const matrix R3 = block_diagonal(AXES, 6), R4 = block_diagonal(AXES, 8);
    EXPECT_CLOSE(flat_turned<3>(AXES, K3), dense::listed(R3.transpose() * full_of(18, K3) * R3), 3.0, 8);
    EXPECT_CLOSE(flat_turned<4>(AXES, K4), dense::listed(R4.transpose() * full_of(24, K4) * R4), 3.0, 8);
  }
}

TEST(FlatRotation, HasTheNumbersOfTheProductsByBlocks) {
  expect_numbers_of_block_products<3>(46);
  expect_numbers_of_block_products<4>(47);
}

TEST(FlatParts, AreTurnedAsTheWholeMatrix) {
  expect_parts_turned_as_the_whole<3>(50);
  expect_parts_turned_as_the_whole<4>(51);
}

TEST(FlatRotation, CarriesInfinitiesAndNaNAsTheFullProductsDo) {
  expect_broken_entries_carried<3>(48);
  expect_broken_entries_carried<4>(49);
}

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
