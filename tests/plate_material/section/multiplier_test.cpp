// multiplier_test.cpp: the function of the plastic multiplier, its derivative and Newton's method on them.
#include <cmath>

#include "assert_recorder.h"
#include "comparison.h"
#include "prepared_section.h"

using section_reference::column;
using section_reference::multiplier_problem;
using section_reference::real;
using support::seeded_random;

template <class WIDTH>
struct Multiplier : ::testing::Test {};
TYPED_TEST_SUITE(Multiplier, both_widths, width_names);

namespace {

// Trial resultants beyond the surface, on the branch of their own mixed term or on the other one.
struct problem {
  problem(seeded_random& random, int width, double hardening, bool own_branch)
      : s(random, hardening), trial(s.random_resultants(random, width, random.uniform(1.05, 3.0))) {
    const double qtm = static_cast<double>(section_reference::mixed_product(trial));
    branch = (qtm < 0.0) == own_branch ? -1 : 1;
    SECTION_SPECTRAL_SIGN(PLATEELEM, branch, s.p.h, s.p.sy);
    ebar0 = random.uniform(0.0, 0.5) * s.p.sy / s.p.E;
    x_scale = 1.0 / PLATEELEM.LAM8(1, 1);
  }
  multiplier_problem reference() const { return {s.p, section_reference::spectral_data_of(s.p, branch), trial, ebar0}; }

  prepared_section s;
  column trial;
  int branch;
  double ebar0, x_scale;
};

template <int W>
double F1(const problem& q, double x, double a = 1.0) {
  double f = NOT_A_NUMBER;
  routines<W>::f1(PLATEELEM, a, q.s.p.h, q.s.p.sy, vector_of<W>(q.trial), q.ebar0, x, f);
  return f;
}

template <int W>
double DF1(const problem& q, double x) {
  double df = NOT_A_NUMBER;
  routines<W>::df1(PLATEELEM, q.s.p.h, q.s.p.sy, vector_of<W>(q.trial), q.ebar0, x, df);
  return df;
}

}  // namespace

TYPED_TEST(Multiplier, FunctionAndDerivativeAreTheReference) {
  constexpr int W = TypeParam::value;
  seeded_random random(641);
  for (int trial = 0; trial < 200; ++trial) {
    const problem q(random, W, trial % 3 == 0 ? 0.0 : 0.3, trial % 2 == 0);
    const multiplier_problem m = q.reference();
    const double x = random.uniform(0.0, 3.0) * q.x_scale, a = random.uniform(0.5, 2.0);
    const double scale = static_cast<double>(m.f(0, a)) + 2.0, slope = scale / q.x_scale;
    EXPECT_CLOSE(F1<W>(q, x, a), static_cast<double>(m.f(x, a)), scale, 64);
    EXPECT_CLOSE(DF1<W>(q, x), static_cast<double>(m.df(x)), slope, 64);
  }
}

TYPED_TEST(Multiplier, DerivativeIsThatOfTheFunctionOnItsBranch) {
  // While the mixed term of the resultants keeps the sign of the branch.
  constexpr int W = TypeParam::value;
  seeded_random random(642);
  int compared = 0;
  for (int trial = 0; trial < 300; ++trial) {
    const problem q(random, W, trial % 3 == 0 ? 0.0 : 0.3, true);
    const multiplier_problem m = q.reference();
    const double x = random.uniform(0.0, 3.0) * q.x_scale, step = 1e-5 * q.x_scale;
    bool keeps = true;
    for (const double at : {x - step, x + step}) {
      keeps = keeps && q.branch * section_reference::mixed_product(m.resultants(at)) > 0;
    }
    if (!keeps) continue;
    ++compared;
    const double quotient = (F1<W>(q, x + step) - F1<W>(q, x - step)) / (2.0 * step);
    EXPECT_WITHIN(DF1<W>(q, x), quotient, std::fabs(DF1<W>(q, 0.0)), 1e-8);
  }
  EXPECT_GT(compared, 150);
}

TYPED_TEST(Multiplier, DerivativeOnTheOtherBranchIsThatOfItsOwnMetric) {
  // The function keeps the absolute value, the derivative does not: the two differ by twice the mixed term's slope.
  constexpr int W = TypeParam::value;
  seeded_random random(643);
  for (int trial = 0; trial < 50; ++trial) {
    const problem q(random, W, 0.0, false);
    const multiplier_problem m = q.reference();
    const double step = 1e-5 * q.x_scale;
    const auto metric = [&](double x) { return m.resultants(x).dot(m.P * m.resultants(x)); };
    const double quotient = static_cast<double>((metric(step) - metric(-step)) / (2.0L * step));
    EXPECT_WITHIN(DF1<W>(q, 0.0), quotient, std::fabs(quotient), 1e-8);
  }
}

TYPED_TEST(Multiplier, FoundIsTheReferenceOnEitherBranch) {
  constexpr int W = TypeParam::value;
  seeded_random random(644);
  support::forget_assertions();
  for (int trial = 0; trial < 200; ++trial) {
    const problem q(random, W, trial % 3 == 0 ? 0.0 : 0.3, trial % 2 == 0);
    const multiplier_problem m = q.reference();
    real expected = 0;
    for (int pass = 0; pass < 1000; ++pass) {
      const real y = expected - m.f(expected) / m.df(expected);
      const bool settled = std::abs(y - expected) <= 1e-4L * (std::abs(y) + 1e-9L);
      expected = y;
      if (settled) break;
    }
    double x = 0.0;
    routines<W>::mult(PLATEELEM, 1.0, q.s.p.h, q.s.p.sy, vector_of<W>(q.trial), q.ebar0, x);
    EXPECT_CLOSE(x, static_cast<double>(expected), std::fabs(x) + q.x_scale, 1000);
  }
  EXPECT_EQ(support::recorded_assertions(), std::vector<std::string>());
}

// ---- what Newton's method does by itself: one resultant, its eigenvalue lambda, and a derivative `slope` times the
// true one. With z = 1 + 2 x lambda, f = 4 / z^2 - 1 and df = -16 slope lambda / z^3.

namespace {

void set_single_resultant(double lambda, double slope) {
  PLATEELEM = PLATEELEM_RECORD{};
  PLATEELEM.E1 = 1.0;
  for (int i = 1; i <= 8; ++i) PLATEELEM.Q8(i, i) = PLATEELEM.QINV8(i, i) = 1.0;
  PLATEELEM.LAM8(1, 1) = lambda;
  PLATEELEM.P8(1, 1) = slope;
}

template <int W>
double found_multiplier() {
  VECTOR<W> trial{};
  trial(1) = 2.0;
  double x = NOT_A_NUMBER;
  routines<W>::mult(PLATEELEM, 1.0, 1.0, 1.0, trial, 0.0, x);
  return x;
}

// The same on a scalar.
double scalar_multiplier(double lambda, double slope, int& passes) {
  double x = 0.0;
  for (passes = 1; passes <= 1000; ++passes) {
    const double z = 1.0 + 2.0 * x * lambda;
    const double y = x - (4.0 / (z * z) - 1.0) / (-16.0 * slope * lambda / (z * z * z));
    const bool settled = std::fabs(y - x) / (std::fabs(y) + 1e-9) <= 1e-4;
    x = y;
    if (settled) break;
  }
  return x;
}

}  // namespace

TYPED_TEST(Multiplier, IsTakenAsSettledByALooseStepOnItsNewValue) {
  constexpr int W = TypeParam::value;
  for (const double slope : {1.0, 0.8, 0.6, 0.55, 3.0, 20.0}) {
    int passes = 0;
    set_single_resultant(1.0, slope);
    const double expected = scalar_multiplier(1.0, slope, passes);
    EXPECT_LT(passes, 1000);
    EXPECT_CLOSE(found_multiplier<W>(), expected, expected, 64) << slope;
    EXPECT_EQ(slope != 1.0, std::fabs(expected - 0.5) > 1e-7) << slope << ": all but Newton's own stop short of 1/2";
  }
}

TYPED_TEST(Multiplier, IsTakenAsSettledByTheGuardWhenItIsSmall) {
  constexpr int W = TypeParam::value;
  for (const double lambda : {1e8, 1e9, 1e10, 1e14}) {
    int passes = 0;
    set_single_resultant(lambda, 1.0);
    const double expected = scalar_multiplier(lambda, 1.0, passes);
    EXPECT_CLOSE(found_multiplier<W>(), expected, expected, 64) << lambda;
  }
  int passes = 0;
  scalar_multiplier(1e14, 1.0, passes);
  EXPECT_EQ(passes, 1);
}

TYPED_TEST(Multiplier, ThatDoesNotSettleIsTheLastOfAThousandPassesWithoutAText) {
  // A derivative of 0.47 times the true one swings between two values: the pass at which it stops tells them apart.
  constexpr int W = TypeParam::value;
  int passes = 0;
  set_single_resultant(1.0, 0.47);
  const double expected = scalar_multiplier(1.0, 0.47, passes);
  EXPECT_EQ(passes, 1001);
  EXPECT_GT(std::fabs(expected - 0.5), 0.05);
  support::forget_assertions();
  EXPECT_CLOSE(found_multiplier<W>(), expected, expected, 64);
  EXPECT_EQ(support::recorded_assertions(), std::vector<std::string>());
}

TYPED_TEST(Multiplier, OfNotANumberEndsWithoutAText) {
  constexpr int W = TypeParam::value;
  set_single_resultant(NOT_A_NUMBER, 1.0);
  support::forget_assertions();
  EXPECT_TRUE(std::isnan(found_multiplier<W>()));
  EXPECT_EQ(support::recorded_assertions(), std::vector<std::string>());
}

TYPED_TEST(Multiplier, DerivativeOfZeroResultantsIsNotANumber) {
  // The norm of the flow is zero, and nothing tests it.
  constexpr int W = TypeParam::value;
  set_single_resultant(1.0, 1.0);
  PLATEELEM.TANGENT_MOD = 0.5;
  double df = 7.0;
  support::forget_assertions();
  routines<W>::df1(PLATEELEM, 1.0, 1.0, VECTOR<W>{}, 0.0, 0.0, df);
  EXPECT_TRUE(std::isnan(df));
  EXPECT_EQ(support::recorded_assertions(), std::vector<std::string>());
}
