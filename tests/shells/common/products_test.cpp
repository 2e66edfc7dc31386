// products_test.cpp: the products of the kernels: their sums by hand, their order bit by bit, and the two forms against
// each other.
#include "shells/common/general_products.h"

#include <cstdint>

#include "comparison.h"
#include "finites/services.h"
#include "random_shapes.h"
#include "shells/common/isotropic_products.h"
#include "shells/common/strains.h"

using support::seeded_random;
using support::values;

namespace {

template <int N>
STRAIN_ROWS<N> random_rows(seeded_random& random) {
  STRAIN_ROWS<N> B;
  for (VECTOR<N>* row : {&B.X, &B.Y, &B.XY}) {
    for (double& entry : row->V) entry = random.uniform(-1.0, 1.0);
  }
  return B;
}

// Sizes far apart: another order of summation rounds otherwise.
template <int ROWS, int N>
MATRIX<ROWS, N> random_matrix(seeded_random& random) {
  MATRIX<ROWS, N> A;
  for (double& entry : A.V) entry = random.uniform(-1.0, 1.0) * random.log_uniform(1e-8, 1e8);
  return A;
}

}  // namespace

TEST(GeneralProduct, IsTheUpperTriangleOfTheServicesProductsTimesTheScaleAdded) {
  // B^T D first, then times B, each a plain sum; then the scale, then the sum with what is there.
  seeded_random random(611);
  constexpr std::int32_t three = 3, nine = 9;
  for (int trial = 0; trial < 20; ++trial) {
    const MATRIX<3, 9> B = random_matrix<3, 9>(random);
    const MATRIX<3, 3> D = random_matrix<3, 3>(random);  // not symmetric
    MATRIX<9, 3> BT, BTD;
    for (int i = 1; i <= 9; ++i) {
      for (int r = 1; r <= 3; ++r) BT(i, r) = B(r, i);
    }
    MATRIX<9, 9> K;
    MATMUL_M1MN_M2MN_DBL(BTD.data(), BT.data(), &nine, &three, D.data(), &three, &three);
    MATMUL_M1MN_M2MN_DBL(K.data(), BTD.data(), &nine, &three, B.data(), &three, &nine);
    const double scale = random.uniform(0.1, 3.0);
    std::vector<double> packed = random.vector(45, 1.0), expected = packed;
    std::size_t at = 0;
    for (int j = 1; j <= 9; ++j) {
      for (int i = 1; i <= j; ++i) expected[at++] += scale * K(i, j);
    }
    add_packed_btdb(B, D, scale, packed.data());
    EXPECT_EQ(packed, expected);
  }
}

TEST(IsotropicProduct, IsTheGeneralOneOfItsFewEntries) {
  seeded_random random(612);
  for (int trial = 0; trial < 20; ++trial) {
    const STRAIN_ROWS<6> B = random_rows<6>(random);
    const SECTION_TERMS D = {random.uniform(1.0, 2.0), random.uniform(0.1, 1.0), random.uniform(1.0, 2.0),
                             random.uniform(1.0, 2.0)};
    MATRIX<3, 6> rows;
    set_rows(B, rows);
    const MATRIX<3, 3> full{{D.D11, D.D12, 0.0, D.D12, D.D22, 0.0, 0.0, 0.0, D.D33}};
    std::vector<double> closed = random.vector(21, 1.0), general = closed;
    add_packed_product(B, D, 0.7, closed.data());
    add_packed_btdb(rows, full, 0.7, general.data());
    EXPECT_CLOSE(closed, general, 10.0, 16);
  }
}

TEST(RowTimesVector, AddsTheOddAndTheEvenTermsApart) {
  // 2^53 + 1 is not a double: what is added to 2^53 alone is lost, what is added to the other sum is kept.
  const double big = 0x1p53;
  EXPECT_EQ(row_times(VECTOR<4>{{big, 1.0, 1.0, 1.0}}, VECTOR<4>{{1.0, 1.0, 1.0, 1.0}}), big + 2.0);
  EXPECT_EQ(row_times(VECTOR<4>{{1.0, big, 1.0, 1.0}}, VECTOR<4>{{1.0, 1.0, 1.0, 1.0}}), big + 2.0);
  EXPECT_EQ(row_times(VECTOR<5>{{big, 1.0, 1.0, 1.0, 1.0}}, VECTOR<5>{{1.0, 1.0, 1.0, 1.0, 1.0}}), big + 2.0);
  EXPECT_EQ(row_times(VECTOR<5>{{1.0, big, 1.0, 0.0, 2.0}}, VECTOR<5>{{1.0, 1.0, 1.0, 1.0, 1.0}}), big + 4.0);
  EXPECT_EQ(row_times(VECTOR<3>{{2.0, 3.0, 5.0}}, VECTOR<3>{{7.0, 11.0, 13.0}}), 14.0 + 33.0 + 65.0);
}

TEST(Strains, AreSummedOverTheDegreesOfFreedomInTheirOrder) {
  const double big = 0x1p53;
  const VECTOR<4> ones{{1.0, 1.0, 1.0, 1.0}};
  EXPECT_EQ(strains_of(MATRIX<1, 4>{{big, 1.0, 1.0, 1.0}}, ones)(1), big);
  EXPECT_EQ(strains_of(MATRIX<1, 4>{{1.0, 1.0, 1.0, big}}, ones)(1), big + 4.0);  // 3 + 2^53, to even
  EXPECT_EQ(strains_of(MATRIX<1, 4>{{1.0, 1.0, big, 1.0}}, ones)(1), big + 4.0);
}

TEST(ForcesOfResultants, AreAddedAtTheirPlaces) {
  // B = [1 3; 2 4], resultants (10, 100), scale 2: 2 (210, 430) to the places 4 and 2.
  const int places[2] = {4, 2};
  std::vector<double> f = {1.0, 2.0, 3.0, 4.0};
  add_forces(MATRIX<2, 2>{{1.0, 2.0, 3.0, 4.0}}, VECTOR<2>{{10.0, 100.0}}, 2.0, places, f.data());
  EXPECT_EQ(f, (std::vector<double>{1.0, 862.0, 3.0, 424.0}));
}
