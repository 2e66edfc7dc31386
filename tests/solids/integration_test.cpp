// integration_test.cpp: every station and weight of the rules, and what their odd constants come to.
#include "solids/integration.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "comparison.h"
#include "reference_solid.h"

namespace {

using reference::real;
using reference::station;

std::int32_t count_of(int kind, int flag) {
  std::int32_t NP = -7;
  SOLID_GAUSS_COUNT(kind, flag, NP);
  return NP;
}

struct filled_rule {
  SOLID_STATIONS XI3;
  VECTOR<SOLID_ROOM> W;
};

filled_rule rule_of(int kind, int flag) {
  filled_rule R;
  std::fill_n(R.XI3.data(), 3 * SOLID_ROOM, -55.0);
  std::fill_n(R.W.data(), SOLID_ROOM, -55.0);
  SOLID_GAUSS_RULE(kind, flag, count_of(kind, flag), R.XI3, R.W);
  return R;
}

// The integral of xi^a eta^b zeta^c by a rule.
real moment(const std::vector<station>& points, int a, int b, int c) {
  real sum = 0;
  for (const station& p : points) {
    sum += real(p.weight) * std::pow(real(p.xi), a) * std::pow(real(p.eta), b) * std::pow(real(p.zeta), c);
  }
  return sum;
}

real total_weight(const filled_rule& R, int points) {
  real sum = 0;
  for (int p = 1; p <= points; ++p) sum += real(R.W(p));
  return sum;
}

}  // namespace

TEST(SolidIntegration, PointsOfEveryKind) {
  for (const reference::kind_facts& facts : reference::all_kinds()) {
    EXPECT_EQ(count_of(facts.kind, 0), facts.points) << facts.kind;
    EXPECT_EQ(count_of(facts.kind, 1), facts.kind == 21 ? 27 : facts.points) << facts.kind;
  }
  for (const int kind : {0, 11, 14, 19, 25, -1}) EXPECT_EQ(count_of(kind, 0), -7) << kind;
  EXPECT_EQ(SOLID_RULE, 0);
}

TEST(SolidIntegration, StationsAndWeightsOfEveryRule) {
  for (const reference::kind_facts& facts : reference::all_kinds()) {
    for (const int flag : {0, 1}) {
      SCOPED_TRACE(::testing::Message() << "kind " << facts.kind << ", flag " << flag);
      const filled_rule R = rule_of(facts.kind, flag);
      const std::vector<station> expected = reference::rule(facts.kind, flag);
      ASSERT_EQ(static_cast<int>(expected.size()), count_of(facts.kind, flag));
      for (int p = 1; p <= SOLID_ROOM; ++p) {
        const bool used = p <= static_cast<int>(expected.size());
        const station s = used ? expected[static_cast<std::size_t>(p - 1)] : station{-55.0, -55.0, -55.0, -55.0};
        EXPECT_EQ(R.XI3(1, p), s.xi) << "point " << p;
        EXPECT_EQ(R.XI3(2, p), s.eta) << "point " << p;
        EXPECT_EQ(R.XI3(3, p), s.zeta) << "point " << p;
        EXPECT_EQ(R.W(p), s.weight) << "point " << p;
      }
    }
  }
}

TEST(SolidIntegration, ConstantsAreSinglesWidened) {
  const auto widened = [](double value) { return static_cast<double>(static_cast<float>(value)); };
  EXPECT_EQ(rule_of(12, 0).XI3(3, 4), widened(1.0 / std::sqrt(3.0)));
  EXPECT_EQ(rule_of(21, 0).XI3(1, 2), widened(1.0 / std::sqrt(3.0)));
  EXPECT_EQ(rule_of(20, 0).XI3(1, 3), widened(std::sqrt(0.6)));
  EXPECT_EQ(rule_of(12, 0).W(1), widened(1.0 / 6.0));
  EXPECT_EQ(rule_of(22, 0).XI3(2, 1), widened(1.0 / 3.0));
  EXPECT_EQ(rule_of(24, 0).W(1), widened(1.0 / 24.0));
  // The eight-node brick alone has the double, to fifteen digits.
  EXPECT_EQ(rule_of(10, 0).XI3(1, 2), 0.577350269189626);
  // The places of the wedges off the centroid are doubles.
  EXPECT_EQ(rule_of(23, 0).XI3(2, 3), 0.6);
}

TEST(SolidIntegration, PointFiveOfTheTwentySevenWeighsOne) {
  for (const auto& [kind, flag] : {std::pair{20, 0}, {20, 1}, {21, 1}}) {
    const filled_rule R = rule_of(kind, flag);
    EXPECT_EQ(R.XI3(1, 5), 0.0);
    EXPECT_EQ(R.XI3(2, 5), 0.0);
    EXPECT_EQ(R.XI3(3, 5), -0.7745966911315918);
    EXPECT_EQ(R.W(5), 1.0);
    EXPECT_EQ(R.W(23), 0.438957503466613);  // its mirror image above the middle
    // The cube of 2 would have 8: the odd weight adds what it has too much.
    EXPECT_WITHIN(static_cast<double>(total_weight(R, 27)), 8.0 + 1.0 - 0.438957503466613, 8.0, 1e-7);
  }
}

TEST(SolidIntegration, WeightsOfTheTwentySevenAreProducts) {
  constexpr double w[3] = {0.5555555820465088, 0.8888888955116272, 0.5555555820465088};
  const filled_rule R = rule_of(20, 0);
  for (int n = 0; n < 27; ++n) {
    if (n == 4) continue;
    const double product = static_cast<double>(real(w[n % 3]) * w[n / 3 % 3] * w[n / 9]);
    EXPECT_CLOSE(R.W(n + 1), product, product, 2) << "point " << n + 1;
  }
}

TEST(SolidIntegration, TetrahedronWeighsOneNotASixth) { EXPECT_EQ(rule_of(13, 0).W(1), 1.0); }

TEST(SolidIntegration, QuadraticWedgesTakeTheThroughValueFirst) {
  for (const int kind : {22, 23}) {
    const filled_rule R = rule_of(kind, 0);
    for (int p = 1; p <= 8; ++p) {
      EXPECT_EQ(R.XI3(1, p), p <= 4 ? -0.5773502588272095 : 0.5773502588272095) << p;
      EXPECT_GT(R.XI3(3, p), 0.0) << p;  // zeta never leaves the upper half
      EXPECT_EQ(R.W(p) < 0.0, p == 1 || p == 5) << p;
    }
  }
}

// Polynomials that a rule ought to integrate, up to the single precision of its constants.
TEST(SolidIntegration, MomentsOfTheNaturalElements) {
  EXPECT_WITHIN(static_cast<double>(moment(reference::rule(10), 2, 2, 2)), 8.0 / 27.0, 1.0, 1e-14);
  EXPECT_WITHIN(static_cast<double>(moment(reference::rule(21), 2, 2, 0)), 8.0 / 9.0, 1.0, 1e-7);
  EXPECT_WITHIN(static_cast<double>(moment(reference::rule(12), 1, 0, 0)), 1.0 / 3.0, 1.0, 1e-7);
  EXPECT_WITHIN(static_cast<double>(moment(reference::rule(12), 1, 1, 2)), 1.0 / 36.0, 1.0, 1e-7);
  EXPECT_WITHIN(static_cast<double>(moment(reference::rule(24), 0, 0, 0)), 1.0 / 6.0, 1.0, 1e-7);
  EXPECT_WITHIN(static_cast<double>(moment(reference::rule(24), 1, 1, 0)), 1.0 / 120.0, 1.0, 1e-7);
  // In the quadratic wedges the triangle is that of the last two coordinates.
  EXPECT_WITHIN(static_cast<double>(moment(reference::rule(22), 0, 0, 0)), 1.0, 1.0, 1e-6);
  EXPECT_WITHIN(static_cast<double>(moment(reference::rule(23), 2, 1, 1)), 1.0 / 36.0, 1.0, 1e-6);
}
