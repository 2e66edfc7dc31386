// plastic_strain_test.cpp: plastic strains between element and global axes, and what the multiplier makes of them.
#include <cmath>

#include "comparison.h"
#include "prepared_section.h"

using section_reference::column;
using section_reference::matrix3;
using support::seeded_random;

template <class WIDTH>
struct PlasticStrain : ::testing::Test {};
TYPED_TEST_SUITE(PlasticStrain, both_widths, width_names);

TYPED_TEST(PlasticStrain, GoesToGlobalAxesAndBack) {
  constexpr int W = TypeParam::value;
  seeded_random random(631);
  for (int trial = 0; trial < 50; ++trial) {
    const prepared_section s(random, 0.0);
    const column local = section_reference::column_of(random.vector(W, 1.0));
    VECTOR<12> ep{};
    VECTOR<W> back{};
    routines<W>::to_global(PLATEELEM, vector_of<W>(local), ep);
    EXPECT_CLOSE(listed(ep), section_reference::listed(section_reference::to_global(local, s.axes)), 1.0, 32);
    routines<W>::to_local(PLATEELEM, ep, back);
    EXPECT_CLOSE(listed(back), section_reference::listed(local), 1.0, 64);
  }
}

TYPED_TEST(PlasticStrain, OfAnyTwelveValuesInElementAxesIsTheReference) {
  // Twelve values that no plate made: what has no place in the vector is left out.
  constexpr int W = TypeParam::value;
  seeded_random random(632);
  for (int trial = 0; trial < 50; ++trial) {
    const prepared_section s(random, 0.0);
    const column ep = section_reference::column_of(random.vector(12, 1.0));
    VECTOR<W> local{};
    routines<W>::to_local(PLATEELEM, vector_of<12>(ep), local);
    EXPECT_CLOSE(listed(local), section_reference::listed(section_reference::to_local(ep, s.axes, W)), 1.0, 64);
  }
}

TYPED_TEST(PlasticStrain, StandsAtItsPlacesWhenTheAxesAreTheGlobalOnes) {
  // First tensor xx, yy, zz, xy, xz, yz from entries 1, 2, -, 3, 7, 8; second from 4, 5, -, 6. Shears as they stand.
  constexpr int W = TypeParam::value;
  const prepared_section s({1.0, 1.0, 1.0, 0.0, 0.0});
  const VECTOR<8> all{{1.0, 2.0, 3.0, 4.0, 5.0, 6.0, 7.0, 8.0}};
  VECTOR<W> local{};
  for (int i = 1; i <= W; ++i) local(i) = all(i);
  VECTOR<12> ep{};
  routines<W>::to_global(PLATEELEM, local, ep);
  const double xz = W == 8 ? 7.0 : 0.0, yz = W == 8 ? 8.0 : 0.0;
  EXPECT_EQ(listed(ep), (std::vector<double>{1.0, 2.0, 0.0, 3.0, xz, yz, 4.0, 5.0, 0.0, 6.0, 0.0, 0.0}));
}

TEST(PlasticStrainNarrow, IgnoresTransverseShearsOnTheWayIn) {
  const prepared_section s({1.0, 1.0, 1.0, 0.0, 0.0});
  const VECTOR<12> ep{{1.0, 2.0, 9.0, 3.0, 9.0, 9.0, 4.0, 5.0, 9.0, 6.0, 9.0, 9.0}};
  VECTOR<6> local{};
  SECTION_EP_TO_LOCAL6(PLATEELEM, ep, local);
  EXPECT_EQ(listed(local), (std::vector<double>{1.0, 2.0, 3.0, 4.0, 5.0, 6.0}));
}

TYPED_TEST(PlasticStrain, GrowsBesideTheFlowAndItsNormByTheStrainOfTheUpperFace) {
  constexpr int W = TypeParam::value;
  seeded_random random(633);
  for (int trial = 0; trial < 50; ++trial) {
    const prepared_section s(random, 0.2);
    const double ref = trial % 2 == 0 ? 1.0 : -1.0;
    SECTION_SPECTRAL_SIGN(PLATEELEM, ref, s.p.h, s.p.sy);
    const section_reference::matrix P =
        section_reference::spectral_data_of(s.p, section_reference::branch_of(ref)).P.topLeftCorner(W, W);
    const column sig = column_of(vector_of<W>(s.random_resultants(random, W, 1.0)));
    const column p0 = s.strains_of(s.random_resultants(random, W, 1.0));
    const double x = random.uniform(0.0, 1.0) * s.p.sy * s.p.sy * s.p.h / s.p.E, ebar0 = s.p.sy / s.p.E;
    VECTOR<W> p{};
    double ebar = 7.0;
    routines<W>::ep(PLATEELEM, x, vector_of<W>(sig), vector_of<W>(p0), p);
    routines<W>::epbar(PLATEELEM, x, s.p.h, vector_of<W>(sig), ebar0, ebar);
    const column grown = p0 + 2 * x * P * sig;
    EXPECT_CLOSE(section_reference::listed(strain_without_units(s, column_of(p))),
                 section_reference::listed(strain_without_units(s, grown)), 4.0, 32);
    const column face = section_reference::upper_face(s.p, W) * (2 * x * P * sig);
    const double root = static_cast<double>(static_cast<float>(std::sqrt(2.0 / 3.0)));
    EXPECT_CLOSE(ebar, ebar0 + root * static_cast<double>(face.norm()), ebar, 32);
  }
}
