// section_divisors_test.cpp: where divisors become too small and where Newton's method stops, to the last bit.
#include <cmath>

#include "assert_recorder.h"
#include "comparison.h"
#include "point_update.h"

using section_reference::column;
using section_reference::matrix;
using section_reference::point_start;
using support::seeded_random;
using texts = std::vector<std::string>;

template <class WIDTH>
struct SectionDivisors : ::testing::Test {
  void SetUp() override {
    PLATEELEM = PLATEELEM_RECORD{};
    PLATEELEM.E1 = 1.0;
    for (int i = 1; i <= 8; ++i) {
      PLATEELEM.P8(i, i) = PLATEELEM.Q8(i, i) = PLATEELEM.QINV8(i, i) = PLATEELEM.D8(i, i) = 1.0;
      PLATEELEM.LAM8(i, i) = 1.0;
    }
    support::forget_assertions();
  }
};
TYPED_TEST_SUITE(SectionDivisors, both_widths, width_names);

namespace {

constexpr double LEAST_DIVISOR = 1e-16;
const char* const DFONC = "Division by 0, DFONC_EVAL";

template <int W>
VECTOR<W> single(double value) {
  VECTOR<W> v{};
  v(1) = value;
  return v;
}

double above(double value) { return std::nextafter(value, 2.0 * value); }

// Newton's method with one resultant, its eigenvalue and a metric `slope` times the true one, from x = 7.
template <int W>
double multiplier_of(double resultant, double lambda, double slope) {
  PLATEELEM.LAM8(1, 1) = lambda;
  PLATEELEM.P8(1, 1) = slope;
  for (int i = 2; i <= 8; ++i) PLATEELEM.LAM8(i, i) = 0.0;
  double x = 7.0;
  support::forget_assertions();
  routines<W>::mult(PLATEELEM, 1.0, 1.0, 1.0, single<W>(resultant), 0.0, x);
  return x;
}

}  // namespace

// ---- divisors

TYPED_TEST(SectionDivisors, OfDerivativeAndTangentMayBeTheLeastStepAboveZero) {
  // LAM + 1 = 2^-53 = 1.1e-16 lies above what may not divide.
  constexpr int W = TypeParam::value;
  PLATEELEM.LAM8(W, W) = std::nextafter(-1.0, 0.0);
  double df = 7.0;
  VECTOR<W> ones{};
  for (double& v : ones.V) v = 1.0;
  routines<W>::df1(PLATEELEM, 1.0, 1.0, ones, 0.0, 0.5, df);
  EXPECT_EQ(support::recorded_assertions(), texts());
  EXPECT_GT(df, 1e40);
  MATRIX<W, W> C{};
  routines<W>::tangent(PLATEELEM, 1.0, 0.5, 1.0, 0.0, single<W>(1.0), C);
  EXPECT_EQ(support::recorded_assertions(), texts());
  EXPECT_EQ(C(W, W), 0x1p53);
}

TYPED_TEST(SectionDivisors, DerivativeOfATenthOfAQuadrillionthIsZeroAndTheNextOneIsNot) {
  // A resultant of one lies on the surface: f = 0 and df = -4 slope LAM.
  constexpr int W = TypeParam::value;
  EXPECT_EQ(multiplier_of<W>(1.0, 1.0, LEAST_DIVISOR / 4.0), 7.0);
  EXPECT_EQ(support::recorded_assertions(), texts{DFONC});
  EXPECT_EQ(multiplier_of<W>(1.0, 1.0, above(LEAST_DIVISOR) / 4.0), 0.0);
  EXPECT_EQ(support::recorded_assertions(), texts());
}

TYPED_TEST(SectionDivisors, TangentDivisorOfATenthOfAQuadrillionthIsZeroAndTheNextOneIsNot) {
  // x = 0 and one resultant of a half: v = 1 and v' X v = D(1, 1).
  constexpr int W = TypeParam::value;
  MATRIX<W, W> C{};
  PLATEELEM.D8(1, 1) = LEAST_DIVISOR;
  routines<W>::tangent(PLATEELEM, 1.0, 0.0, 1.0, 0.0, single<W>(0.5), C);
  EXPECT_EQ(support::recorded_assertions(), texts{"Division by 0, COEFF+xM"});
  EXPECT_EQ(listed(C), std::vector<double>(W * W, 0.0));
  support::forget_assertions();
  PLATEELEM.D8(1, 1) = above(LEAST_DIVISOR);
  routines<W>::tangent(PLATEELEM, 1.0, 0.0, 1.0, 0.0, single<W>(0.5), C);
  EXPECT_EQ(support::recorded_assertions(), texts());
  EXPECT_EQ(C(2, 2), 1.0);
  EXPECT_LT(std::fabs(C(1, 1)), 1e-30);
}

TYPED_TEST(SectionDivisors, TangentDivisorIsTheSumWithTheHardeningTerm) {
  // H = 1, ebar = 0: m = 2 sqrt(2/3) of the unit flow. A section of nothing leaves m to divide; one of -m leaves
  // nothing.
  constexpr int W = TypeParam::value;
  PLATEELEM.TANGENT_MOD = 0.5;
  const double m = 2.0 * 0.8164966106414795;
  MATRIX<W, W> C{};
  PLATEELEM.D8(1, 1) = 0.0;
  routines<W>::tangent(PLATEELEM, 1.0, 0.0, 1.0, 0.0, single<W>(0.5), C);
  EXPECT_EQ(support::recorded_assertions(), texts());
  EXPECT_EQ(C(2, 2), 1.0);
  PLATEELEM.D8(1, 1) = 3.0 * m;
  routines<W>::tangent(PLATEELEM, 1.0, 0.0, 1.0, 0.0, single<W>(0.5), C);
  EXPECT_CLOSE(C(1, 1), 0.75 * m, m, 4);  // X - X^2 / (X + m)
  support::forget_assertions();
  PLATEELEM.D8(1, 1) = -m;
  routines<W>::tangent(PLATEELEM, 1.0, 0.0, 1.0, 0.0, single<W>(0.5), C);
  EXPECT_EQ(support::recorded_assertions(), texts{"Division by 0, COEFF+xM"});
}

// ---- where Newton's method stops. One resultant of 2: f = 3 and df = -16 slope LAM at x = 0.

TYPED_TEST(SectionDivisors, NewtonStepIsMeasuredOnItsNewValueNotOnTheOldOne) {
  // The first step y is 1e-4 of y + 1e-9 at 1.0001e-13; of 0 + 1e-9 it would be at 1e-13.
  constexpr int W = TypeParam::value;
  const double settles = 1.00005e-13, goes_on = 1.00015e-13;
  EXPECT_CLOSE(multiplier_of<W>(2.0, 3.0 / (16.0 * settles), 1.0), settles, settles, 8);
  const double lambda = 3.0 / (16.0 * goes_on), z = 1.0 + 2.0 * goes_on * lambda;
  const double second = goes_on + (4.0 / (z * z) - 1.0) * (z * z * z) / (16.0 * lambda);
  const double found = multiplier_of<W>(2.0, lambda, 1.0);
  EXPECT_GT(found, 1.5 * goes_on);
  EXPECT_GE(found, second * 0.999999);
}

TYPED_TEST(SectionDivisors, NewtonStepOfExactlyTheLimitSettles) {
  // The eigenvalue whose first step is 1e-4 of itself and the guard, to the last bit.
  constexpr int W = TypeParam::value;
  double lambda = 3.0 / (16.0 * 1.0001e-13 * (1.0 + 1e-8)), y = 0.0;
  bool exact = false;
  for (int trial = 0; trial < 100000 && !exact; ++trial) {
    lambda = std::nextafter(lambda, 0.0);
    y = 3.0 / (16.0 * lambda);
    exact = y / (y + 1e-9) == 1e-4;
  }
  if (!exact) GTEST_FAIL() << "no eigenvalue found";
  EXPECT_EQ(multiplier_of<W>(2.0, lambda, 1.0), y);
}

TYPED_TEST(SectionDivisors, NewtonStepWithoutEndIsNotSettled) {
  // f / df overflows; infinity less infinity is not a number, and so is all that follows.
  constexpr int W = TypeParam::value;
  EXPECT_TRUE(std::isnan(multiplier_of<W>(1e150, 1e-160, 1e-156)));
  EXPECT_EQ(support::recorded_assertions(), texts());
}

// ---- limits of the model

TYPED_TEST(SectionDivisors, ResultantsOfZeroAreElasticForAnyPositiveYieldStress) {
  // F = -1 at least: no plastic step starts where its derivative would divide by zero.
  constexpr int W = TypeParam::value;
  for (const double sy : {1e-150, 1e-3, 235.0, 1e150}) {
    for (const double ebar : {0.0, 0.5, 100.0}) {
      std::int32_t plastic = 7;
      PLATEELEM.TANGENT_MOD = 0.2;
      routines<W>::yield(PLATEELEM, 1.0, 1.0, sy, VECTOR<W>{}, ebar, plastic);
      EXPECT_EQ(plastic, 0) << sy;
    }
  }
}

TYPED_TEST(SectionDivisors, TangentModulusOfZeroIsPerfectPlasticity) {
  // The equivalent plastic strain is carried along and changes nothing.
  constexpr int W = TypeParam::value;
  seeded_random random(661);
  for (int trial = 0; trial < 20; ++trial) {
    const prepared_section s(random, 0.0);
    point_start fresh = random_start(random, s, 1.0), worn = fresh;
    fresh.ebar0 = 0;
    worn.ebar0 = 1e3;
    const column eps = strain_beyond<W>(random, s, fresh, random.uniform(0.8, 2.0));
    const SECTION_ANSWER<W> a = updated<W>(s, eps, fresh), b = updated<W>(s, eps, worn);
    EXPECT_EQ(listed(a.sig), listed(b.sig));
    EXPECT_EQ(listed(a.C), listed(b.C));
    EXPECT_EQ(listed(a.ep), listed(b.ep));
    EXPECT_CLOSE(b.ebar - 1e3, a.ebar, 1e3, 2);
  }
}
