// through_thickness_test.cpp: stations and weights through the thickness against the roots of Legendre polynomials.
#include <cmath>
#include <limits>
#include <numeric>

#include "comparison.h"
#include "finites/thickness_rule.h"
#include "guarded_buffer.h"
#include "prepared_point.h"

using layered_reference::real;

namespace {

constexpr int COUNTS[] = {3, 5, 7, 9, 11, 13, 15};

struct stored_rule {
  std::vector<double> xi, w;
};

stored_rule rule_of(std::int32_t selector, int n) {
  const std::size_t size = static_cast<std::size_t>(n);
  stored_rule r{std::vector<double>(size, NOT_A_NUMBER), std::vector<double>(size, NOT_A_NUMBER)};
  THICK_INT_POINTS(selector, n, r.xi.data(), r.w.data());
  return r;
}

real integral_of_power(const stored_rule& r, int power) {
  real sum = 0;
  for (std::size_t k = 0; k < r.xi.size(); ++k) sum += r.w[k] * std::pow(real(r.xi[k]), power);
  return sum;
}

}  // namespace

TEST(ThickIntPoints, HoldTheStationsAndWeightsOfLobatto) {
  for (const int n : COUNTS) {
    const stored_rule r = rule_of(1, n);
    const layered_reference::rule exact = layered_reference::lobatto(n);
    for (std::size_t k = 0; k < r.xi.size(); ++k) {
      EXPECT_CLOSE(r.xi[k], static_cast<double>(exact.xi[k]), 1.0, 1) << n << " station " << k + 1;
      if (n > 3) {
        EXPECT_CLOSE(r.w[k], static_cast<double>(exact.w[k]), r.w[k], 1) << n << " weight " << k + 1;
      }
    }
  }
}

// The digits of the table, from the bottom face to the middle.
TEST(ThickIntPoints, HaveTheDigitsOfTheirTable) {
  const std::pair<std::vector<double>, std::vector<double>> tables[] = {
      {{-1.0, 0.0}, {0.333333333333333, 1.333333333333333}},
      {{-1.0, -0.6546536707079772, 0.0}, {0.1, 0.5444444444444444, 0.7111111111111111}},
      {{-1.0, -0.830223896278567, -0.46884879347071423, 0.0},
       {0.047619047619047616, 0.27682604736156596, 0.4317453812098626, 0.4876190476190476}},
      {{-1.0, -0.8997579954114602, -0.6771862795107377, -0.36311746382617816, 0.0},
       {0.027777777777777776, 0.16549536156080552, 0.2745387125001617, 0.34642851097304633, 0.37151927437641724}},
      {{-1.0, -0.9340014304080592, -0.7844834736631444, -0.565235326996205, -0.2957581355869394, 0.0},
       {0.01818181818181818, 0.10961227326699487, 0.1871698817803052, 0.24804810426402832, 0.28687912477900807,
        0.3002175954556907}},
      {{-1.0, -0.9533098466421639, -0.8463475646518723, -0.6861884690817575, -0.4829098210913362, -0.24928693010623998,
        0.0},
       {0.01282051282051282, 0.07780168674681892, 0.13498192668960834, 0.18364686520355009, 0.2207677935661101,
        0.24401579030667636, 0.2519308493334467}},
      {{-1.0, -0.9652459265038386, -0.8850820442229763, -0.7635196899518152, -0.6062532054698457, -0.4206380547136725,
        -0.21535395536379423, 0.0},
       {0.009523809523809525, 0.05802989302860125, 0.10166007032571807, 0.1405116998024281, 0.17278964725360094,
        0.19698723596461334, 0.21197358592682092, 0.21704811634881566}},
  };
  for (const auto& [xi, w] : tables) {
    const std::size_t half = xi.size(), last = 2 * half - 2;
    const stored_rule r = rule_of(1, static_cast<int>(last) + 1);
    for (std::size_t k = 0; k < half; ++k) {
      EXPECT_EQ(r.xi[k], xi[k]) << last + 1;
      EXPECT_EQ(r.xi[last - k], -xi[k]) << last + 1;
      EXPECT_EQ(r.w[k], w[k]) << last + 1;
      EXPECT_EQ(r.w[last - k], w[k]) << last + 1;
    }
  }
}

TEST(ThickIntPoints, WeightsOfThreePointsHaveFifteenDigits) {
  const stored_rule r = rule_of(1, 3);
  EXPECT_EQ(r.xi, (std::vector<double>{-1.0, 0.0, 1.0}));
  EXPECT_EQ(r.w, (std::vector<double>{0.333333333333333, 1.333333333333333, 0.333333333333333}));
  EXPECT_EQ(r.w[0] + r.w[1] + r.w[2], 1.9999999999999991);
  EXPECT_NE(r.w[0], 1.0 / 3.0);
  EXPECT_NE(r.w[1], 4.0 / 3.0);
}

TEST(ThickIntPoints, FacesAndMiddleAreStationsAndTheRuleIsSymmetric) {
  for (const int n : COUNTS) {
    const stored_rule r = rule_of(1, n);
    const std::size_t last = r.xi.size() - 1;
    EXPECT_EQ(r.xi.front(), -1.0);
    EXPECT_EQ(r.xi.back(), 1.0);
    EXPECT_EQ(r.xi[last / 2], 0.0);
    EXPECT_FALSE(std::signbit(r.xi[last / 2]));
    for (std::size_t k = 0; k <= last; ++k) {
      EXPECT_EQ(r.xi[k], -r.xi[last - k]);
      EXPECT_EQ(r.w[k], r.w[last - k]);
      if (k > 0) {
        EXPECT_GT(r.xi[k], r.xi[k - 1]);
      }
      EXPECT_GT(r.w[k], 0.0);
    }
  }
}

TEST(ThickIntPoints, IntegrateAllPolynomialsOfTheirOrder) {
  for (const int n : COUNTS) {
    const stored_rule r = rule_of(1, n);
    const double digits = n == 3 ? 8.0 : 4.0;  // the weights of three points fall short by 4.5 eps
    for (int power = 0; power <= 2 * n - 3; ++power) {
      const double exact = power % 2 == 0 ? 2.0 / (power + 1) : 0.0;
      EXPECT_CLOSE(static_cast<double>(integral_of_power(r, power)), exact, 1.0, digits) << n << " power " << power;
    }
  }
}

TEST(ThickIntPoints, MissTheNextPowerByTheErrorTermOfLobatto) {
  // The remainder n (n - 1)^3 2^(2n-1) (n - 2)!^4 / ((2n - 1) (2n - 2)!^3) times the derivative of order 2n - 2, which
  // of that power is (2n - 2)!; the rule is above the integral.
  for (const int n : COUNTS) {
    const auto factorial = [](int m) { return std::tgamma(real(m) + 1); };
    const real remainder = n * std::pow(real(n - 1), 3) * std::pow(real(2), 2 * n - 1) * std::pow(factorial(n - 2), 4) /
                           ((2 * n - 1) * std::pow(factorial(2 * n - 2), 2));
    const real error = integral_of_power(rule_of(1, n), 2 * n - 2) - real(2) / (2 * n - 1);
    EXPECT_WITHIN(static_cast<double>(error), static_cast<double>(remainder), 1.0, 2e-15) << n;
    EXPECT_GT(static_cast<double>(remainder), n == 15 ? 1e-9 : 1e-8) << n;
  }
}

TEST(ThickIntPoints, LobattoRunsOverLegendre) {
  // Selectors other than 1 and 2 store the rule of Gauss first; of every count that it has, Lobatto's follows.
  for (const int n : COUNTS) {
    const stored_rule lobatto = rule_of(1, n);
    for (const std::int32_t selector : {0, 3, -1, std::numeric_limits<std::int32_t>::min()}) {
      const stored_rule r = rule_of(selector, n);
      EXPECT_EQ(r.xi, lobatto.xi) << selector;
      EXPECT_EQ(r.w, lobatto.w) << selector;
    }
    if (n > 7) continue;
    const layered_reference::rule gauss = layered_reference::legendre(n);
    EXPECT_GT(std::fabs(static_cast<double>(gauss.xi[0]) - lobatto.xi[0]), 0.05);
  }
}

TEST(ThickIntPoints, WriteTheirCountAndNothingBeside) {
  for (const int n : COUNTS) {
    for (const std::int32_t selector : {0, 1}) {
      support::guarded_buffer xi(n), w(n);
      THICK_INT_POINTS(selector, n, xi.data(), w.data());
      EXPECT_EQ(xi.changed(), support::range(1, n));
      EXPECT_EQ(w.changed(), support::range(1, n));
    }
  }
}

TEST(ThickIntPoints, SelectorTwoAndUnknownCountsWriteNothing) {
  constexpr std::int32_t least = std::numeric_limits<std::int32_t>::min();
  constexpr std::int32_t most = std::numeric_limits<std::int32_t>::max();
  for (const std::int32_t n : {0, 1, 2, 4, 6, 8, 10, 12, 14, 16, 17, 19, -1, -3, -5, least, most}) {
    for (const std::int32_t selector : {0, 1, 2}) {
      support::guarded_buffer xi(32), w(32);
      THICK_INT_POINTS(selector, n, xi.data(), w.data());
      EXPECT_EQ(xi.changed(), std::vector<int>()) << n;
      EXPECT_EQ(w.changed(), std::vector<int>()) << n;
    }
  }
  for (const int n : COUNTS) {
    support::guarded_buffer xi(32), w(32);
    THICK_INT_POINTS(2, n, xi.data(), w.data());
    EXPECT_EQ(xi.changed(), std::vector<int>());
    EXPECT_EQ(w.changed(), std::vector<int>());
  }
}

// What a caller asks of the header: whether there is such a rule.
TEST(ThicknessRule, SaysWhetherThereIsOne) {
  for (const int n : COUNTS) {
    support::guarded_buffer xi(n), w(n);
    EXPECT_EQ(THICKNESS_RULE(n, xi.data(), w.data()), 1) << n;
    EXPECT_EQ(xi.changed(), support::range(1, n)) << n;
    EXPECT_EQ(w.changed(), support::range(1, n)) << n;
  }
  for (const int n : {-3, 0, 1, 2, 4, 6, 8, 10, 12, 14, 16, 17}) {
    support::guarded_buffer xi(32), w(32);
    EXPECT_EQ(THICKNESS_RULE(n, xi.data(), w.data()), 0) << n;
    EXPECT_EQ(xi.changed(), std::vector<int>()) << n;
    EXPECT_EQ(w.changed(), std::vector<int>()) << n;
  }
}

TEST(ThicknessStations, RunFromTheBottomFaceToTheTopFace) {
  for (const double t : {0.1, 1.0, 3e-7}) {
    PLATEELEM.THICKNESS = t;
    for (const int n : COUNTS) {
      const THICKNESS_STATIONS z(n, PLATEELEM.THICKNESS);
      const layered_reference::rule exact = layered_reference::lobatto(n);
      EXPECT_EQ(z(1), -t / 2.0);
      EXPECT_EQ(z(n), t / 2.0);
      EXPECT_EQ(z((n + 1) / 2), 0.0);
      for (int k = 1; k <= n; ++k) {
        EXPECT_CLOSE(z(k), static_cast<double>(exact.xi[static_cast<std::size_t>(k - 1)] * t / 2), t, 2) << n;
      }
    }
  }
}

TEST(ThicknessStations, HaveTheBitsOfTheMeanOfTheFaces) {
  // Each face has its share; the product of the station and half the thickness rounds apart.
  int apart = 0;
  for (const double t : {0.1, 0.37, 12.3}) {
    PLATEELEM.THICKNESS = t;
    for (const int n : COUNTS) {
      const THICKNESS_STATIONS z(n, PLATEELEM.THICKNESS);
      const stored_rule r = rule_of(1, n);
      for (int k = 1; k <= n; ++k) {
        const double xi = r.xi[static_cast<std::size_t>(k - 1)];
        EXPECT_EQ(z(k), (1.0 - xi) * (-t / 2.0) / 2.0 + (1.0 + xi) * (t / 2.0) / 2.0) << n;
        apart += z(k) != xi * t / 2.0 ? 1 : 0;
      }
    }
  }
  EXPECT_GT(apart, 0);
}

TEST(ThicknessStations, OfAnUnknownCountAreZero) {
  PLATEELEM.THICKNESS = 0.1;
  for (const int n : {1, 2, 4, 16, 17, 0, -3}) {
    const THICKNESS_STATIONS z(n, PLATEELEM.THICKNESS);
    for (int k = 1; k <= 20; ++k) EXPECT_EQ(z(k), 0.0) << n;
  }
}

TEST(MiddlePoint, RoundsTheHalfAwayFromZero) {
  const std::pair<int, int> expected[] = {{1, 1},  {2, 2},   {3, 2},   {4, 3},   {5, 3},  {6, 4},  {7, 4},
                                          {9, 5},  {11, 6},  {13, 7},  {15, 8},  {16, 9}, {17, 9}, {0, 1},
                                          {-1, 0}, {-2, -1}, {-3, -1}, {-4, -2}, {-5, -2}};
  for (const auto& [n, middle] : expected) EXPECT_EQ(middle_point(n), middle) << n;
}

TEST(MiddlePoint, FormsTheHalfInSinglePrecision) {
  // 2^25 + 2 lies half way between two numbers of single precision; the even one below is taken.
  EXPECT_EQ(middle_point(33554433), 16777216);
  EXPECT_EQ(middle_point(std::numeric_limits<std::int32_t>::max()), 1073741824);
}
