// yield_test.cpp: trial resultants and the yield function.
#include <cmath>

#include "comparison.h"
#include "prepared_section.h"

using section_reference::column;
using section_reference::matrix;
using support::seeded_random;

template <class WIDTH>
struct Yield : ::testing::Test {};
TYPED_TEST_SUITE(Yield, both_widths, width_names);

namespace {

template <int W>
int yields(const prepared_section& s, const column& sig, double ebar = 0.0, double a = 1.0) {
  std::int32_t plastic = 7;
  routines<W>::yield(PLATEELEM, a, s.p.h, s.p.sy, vector_of<W>(sig), ebar, plastic);
  return plastic;
}

// One resultant reaches the surface at `limit`, in either direction, and no sooner.
template <int W>
void expect_limit(const prepared_section& s, int entry, double limit) {
  column sig = column::Zero(W);
  for (const double sign : {-1.0, 1.0}) {
    sig(entry - 1) = sign * limit * (1.0 - 1e-6);
    EXPECT_EQ(yields<W>(s, sig), 0) << entry;
    sig(entry - 1) = sign * limit * (1.0 + 1e-6);
    EXPECT_EQ(yields<W>(s, sig), 1) << entry;
  }
}

section_reference::plate steel() { return {0.02, 235.0, 2.1e5, 0.3, 0.0}; }

}  // namespace

TYPED_TEST(Yield, OfEachResultantAloneIsThatOfTheFullyYieldingSection) {
  // sy h, sy h^2 / 4, and the shears by the square root of three.
  constexpr int W = TypeParam::value;
  const prepared_section s(steel());
  const double N = 235.0 * 0.02, M = 235.0 * 0.02 * 0.02 / 4.0, root3 = std::sqrt(3.0);
  for (const int entry : {1, 2}) expect_limit<W>(s, entry, N);
  expect_limit<W>(s, 3, N / root3);
  for (const int entry : {4, 5}) expect_limit<W>(s, entry, M);
  expect_limit<W>(s, 6, M / root3);
  for (int entry = 7; entry <= W; ++entry) expect_limit<W>(s, entry, N / root3);
}

TYPED_TEST(Yield, OfForceAndMomentTogether) {
  // n^2 + m^2 + n m / sqrt 3 = 1 for n, m of one sign, and of either: the mixed term is taken positive.
  constexpr int W = TypeParam::value;
  const prepared_section s(steel());
  for (const double n : {0.2, 0.5, 0.9}) {
    const double b = n / std::sqrt(3.0), m = -b / 2.0 + std::sqrt(b * b / 4.0 + 1.0 - n * n);
    for (const double sign : {-1.0, 1.0}) {
      column sig = column::Zero(W);
      sig(0) = n * static_cast<double>(s.p.N0());
      sig(3) = sign * m * static_cast<double>(s.p.M0());
      EXPECT_EQ(yields<W>(s, sig * 0.999999L), 0) << n;
      EXPECT_EQ(yields<W>(s, sig * 1.000001L), 1) << n;
    }
  }
}

TYPED_TEST(Yield, IsTheReferenceOverRandomStates) {
  constexpr int W = TypeParam::value;
  seeded_random random(621);
  for (int trial = 0; trial < 500; ++trial) {
    const prepared_section s(random, trial % 2 == 0 ? 0.0 : 0.2);
    const column sig = s.random_resultants(random, W, random.uniform(0.8, 1.2));
    const double ebar = random.uniform(0.0, 1.0) * s.p.sy / s.p.E, a = random.uniform(0.5, 2.0);
    const section_reference::real F = section_reference::yield_function(s.p, sig, ebar, a);
    if (std::fabs(static_cast<double>(F)) < 1e-12) continue;
    EXPECT_EQ(yields<W>(s, sig, ebar, a), F > 0 ? 1 : 0);
  }
}

TYPED_TEST(Yield, ExactlyOnTheSurfaceIsElastic) {
  constexpr int W = TypeParam::value;
  const prepared_section s({1.0, 2.0, 100.0, 0.25, 0.0});
  column sig = column::Zero(W);
  sig(0) = 2.0L;  // N = sy h to the last bit
  EXPECT_EQ(yields<W>(s, sig), 0);
  sig(0) = static_cast<double>(std::nextafter(2.0, 3.0));
  EXPECT_EQ(yields<W>(s, sig), 1);
  sig(0) = 0.0L;
  sig(4) = 0.5L;  // M = sy h^2 / 4
  EXPECT_EQ(yields<W>(s, sig), 0);
}

TYPED_TEST(Yield, NotANumberIsPlastic) {
  constexpr int W = TypeParam::value;
  const prepared_section s(steel());
  for (int entry = 0; entry < W; ++entry) {
    column sig = column::Zero(W);
    sig(entry) = NOT_A_NUMBER;
    EXPECT_EQ(yields<W>(s, sig), 1) << entry;
  }
  EXPECT_EQ(yields<W>(s, column::Zero(W), NOT_A_NUMBER), 1);
}

TYPED_TEST(Yield, HardeningMovesTheSurface) {
  // With E = 100 and Et = 20: H = 25, and ebar = 0.04 adds 1 to a yield stress of 2.
  constexpr int W = TypeParam::value;
  const prepared_section s({1.0, 2.0, 100.0, 0.25, 20.0});
  column sig = column::Zero(W);
  sig(1) = 2.999L;
  EXPECT_EQ(yields<W>(s, sig, 0.04), 0);
  sig(1) = 3.001L;
  EXPECT_EQ(yields<W>(s, sig, 0.04), 1);
}

TYPED_TEST(Yield, ScaleOfTheMomentsEntersOnceInTheMixedTermAndTwiceInTheirOwn) {
  constexpr int W = TypeParam::value;
  const prepared_section s(steel());
  column sig = column::Zero(W);
  sig(3) = 2.0L * s.p.M0();
  EXPECT_EQ(yields<W>(s, sig * 0.999999L, 0.0, 2.0), 0);
  EXPECT_EQ(yields<W>(s, sig * 1.000001L, 0.0, 2.0), 1);
  // n = m / a = 1 / sqrt(2 + 1 / sqrt 3)
  const double n = 1.0 / std::sqrt(2.0 + 1.0 / std::sqrt(3.0));
  sig(0) = n * s.p.N0();
  sig(3) = n * 2.0L * s.p.M0();
  EXPECT_EQ(yields<W>(s, sig * 0.999999L, 0.0, 2.0), 0);
  EXPECT_EQ(yields<W>(s, sig * 1.000001L, 0.0, 2.0), 1);
}

// ---- trial resultants

template <class WIDTH>
struct Trial : ::testing::Test {};
TYPED_TEST_SUITE(Trial, both_widths, width_names);

TYPED_TEST(Trial, TakesDirectTermsAndTheCouplingOfTheFirstTwoComponents) {
  // Full matrices without symmetry; every entry that is left out is not a number.
  constexpr int W = TypeParam::value;
  seeded_random random(622);
  prepared_section s(random, 0.0);
  PLATEELEM_RECORD& P = PLATEELEM;
  for (MATRIX<3, 3>* D : {&P.D_MEMBRANE_NORMAL, &P.D_BENDING}) {
    for (double& v : D->V) v = random.uniform(1.0, 2.0);
    (*D)(1, 3) = (*D)(2, 3) = (*D)(3, 1) = (*D)(3, 2) = NOT_A_NUMBER;
  }
  for (double& v : P.D_SHEAR.V) v = random.uniform(1.0, 2.0);
  P.D_SHEAR(1, 2) = P.D_SHEAR(2, 1) = NOT_A_NUMBER;
  for (double& v : P.D8.V) v = NOT_A_NUMBER;
  for (double& v : P.D_MEMBRANE_SHEAR.V) v = NOT_A_NUMBER;
  const column eps = section_reference::column_of(random.vector(W, 1.0));
  const column p0 = section_reference::column_of(random.vector(W, 1.0)), d = eps - p0;
  VECTOR<W> sig{};
  routines<W>::trial(PLATEELEM, vector_of<W>(eps), vector_of<W>(p0), sig);
  const MATRIX<3, 3>&Dm = P.D_MEMBRANE_NORMAL, &Db = P.D_BENDING;
  column expected(8);
  expected << Dm(1, 1) * d(0) + Dm(1, 2) * d(1), Dm(2, 1) * d(0) + Dm(2, 2) * d(1), Dm(3, 3) * d(2),
      Db(1, 1) * d(3) + Db(1, 2) * d(4), Db(2, 1) * d(3) + Db(2, 2) * d(4), Db(3, 3) * d(5),
      W == 8 ? P.D_SHEAR(1, 1) * d(W - 2) : 0.0L, W == 8 ? P.D_SHEAR(2, 2) * d(W - 1) : 0.0L;
  EXPECT_CLOSE(listed(sig), section_reference::listed(expected.head(W)), 4.0, 8);
}
