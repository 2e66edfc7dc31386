// gauss_int_2d_test.cpp: the surface rules, digit by digit, and the Jacobian of the straight-sided map.
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <string>
#include <vector>

#include "comparison.h"
#include "finites/finites.h"
#include "random_shapes.h"

namespace {

using support::seeded_random;

constexpr double NOT_READ = std::numeric_limits<double>::quiet_NaN();

struct station {
  double xi, eta, weight;
};

struct answer {
  double xi, eta, detj, weight;
  double j11, j12, j21, j22;
  double g11, g12, g21, g22;
};

answer ask(std::int32_t rule, std::int32_t point, std::int32_t nodes, const std::vector<double>& xyz) {
  answer a{};
  GAUSS_INT_2D(&rule, &point, &nodes, xyz.data(), &a.xi, &a.eta, &a.detj, &a.weight, &a.j11, &a.j12, &a.j21, &a.j22,
               &a.g11, &a.g12, &a.g21, &a.g22);
  return a;
}

// Node coordinates with a third component that nobody may read.
std::vector<double> in_plane(const std::vector<std::array<double, 2>>& nodes) {
  std::vector<double> xyz;
  for (const std::array<double, 2>& node : nodes) xyz.insert(xyz.end(), {node[0], node[1], NOT_READ});
  return xyz;
}

const std::vector<double> UNIT_TRIANGLE = in_plane({{0.0, 0.0}, {1.0, 0.0}, {0.0, 1.0}});
const std::vector<double> UNIT_SQUARE = in_plane({{-1.0, -1.0}, {1.0, -1.0}, {1.0, 1.0}, {-1.0, 1.0}});

std::vector<double> random_nodes(seeded_random& random, int count) {
  const std::vector<support::point> shape =
      count == 4 ? support::random_quadrilateral(random) : support::random_triangle(random);
  std::vector<std::array<double, 2>> flat;
  for (const support::point& node : shape) flat.push_back({node[0], node[1]});
  return in_plane(flat);
}

void expect_rule(int rule, int nodes, const std::vector<double>& xyz, const std::vector<station>& stations) {
  for (std::size_t p = 0; p < stations.size(); ++p) {
    const answer a = ask(rule, static_cast<std::int32_t>(p) + 1, nodes, xyz);
    EXPECT_EQ(a.xi, stations[p].xi) << "rule " << rule << " point " << p + 1;
    EXPECT_EQ(a.eta, stations[p].eta) << "rule " << rule << " point " << p + 1;
    EXPECT_EQ(a.weight, stations[p].weight) << "rule " << rule << " point " << p + 1;
  }
  for (int p = static_cast<int>(stations.size()) + 1; p <= 100; ++p) {
    const answer a = ask(rule, p, nodes, xyz);
    EXPECT_EQ(a.xi, 0.0) << "rule " << rule << " point " << p;
    EXPECT_EQ(a.eta, 0.0) << "rule " << rule << " point " << p;
    EXPECT_EQ(a.weight, 0.0) << "rule " << rule << " point " << p;
  }
}

double weight_sum(int rule, int nodes, const std::vector<double>& xyz) {
  double sum = 0.0;
  for (int p = 1; p <= 4; ++p) sum += ask(rule, p, nodes, xyz).weight;
  return sum;
}

// x = a0 + a1 xi + a2 eta + a3 xi eta through the values at the four corners; its derivatives.
void bilinear_derivatives(double v1, double v2, double v3, double v4, double xi, double eta, double& dxi,
                          double& deta) {
  const double a1 = 0.25 * ((v2 + v3) - (v1 + v4));
  const double a2 = 0.25 * ((v3 + v4) - (v1 + v2));
  const double a3 = 0.25 * ((v1 + v3) - (v2 + v4));
  dxi = a1 + a3 * eta;
  deta = a2 + a3 * xi;
}

void expect_inverse(const answer& a) {
  const double scale =
      support::max_norm({a.j11, a.j12, a.j21, a.j22}) * support::max_norm({a.g11, a.g12, a.g21, a.g22});
  const std::vector<double> product = {a.j11 * a.g11 + a.j12 * a.g21, a.j11 * a.g12 + a.j12 * a.g22,
                                       a.j21 * a.g11 + a.j22 * a.g21, a.j21 * a.g12 + a.j22 * a.g22};
  EXPECT_CLOSE(product, (std::vector<double>{1.0, 0.0, 0.0, 1.0}), scale, 10.0);
}

}  // namespace

// ------------------------------------------------------------------------------------------------ the rules

TEST(SurfaceRules, QuadrilateralTwoByTwoHasFifteenDigits) {
  constexpr double g = 0.577350269189626;
  ASSERT_NE(g, 1.0 / std::sqrt(3.0)) << "the literal is not the rounded root";
  expect_rule(1, 4, UNIT_SQUARE, {{-g, -g, 1.0}, {g, -g, 1.0}, {g, g, 1.0}, {-g, g, 1.0}});
}

TEST(SurfaceRules, QuadrilateralCentre) { expect_rule(2, 4, UNIT_SQUARE, {{0.0, 0.0, 4.0}}); }

TEST(SurfaceRules, QuadrilateralNodes) {
  expect_rule(3, 4, UNIT_SQUARE, {{-1.0, -1.0, 0.0}, {1.0, -1.0, 0.0}, {1.0, 1.0, 0.0}, {-1.0, 1.0, 0.0}});
}

TEST(SurfaceRules, TriangleThreePointsAreTheClosestDoublesToSixths) {
  constexpr double sixth = 0x1.5555555555555p-3;
  constexpr double two_thirds = 0x1.5555555555555p-1;
  expect_rule(1, 3, UNIT_TRIANGLE, {{sixth, sixth, sixth}, {two_thirds, sixth, sixth}, {sixth, two_thirds, sixth}});
}

TEST(SurfaceRules, TriangleFourPointsHaveFifteenDigitsInTheirWeights) {
  constexpr double third = 0x1.5555555555555p-2;
  constexpr double w = 0.260416666666667;
  ASSERT_NE(w, 25.0 / 96.0) << "the literal is not the rounded fraction";
  expect_rule(2, 3, UNIT_TRIANGLE, {{third, third, -0.28125}, {0.2, 0.2, w}, {0.6, 0.2, w}, {0.2, 0.6, w}});
}

TEST(SurfaceRules, TriangleNodes) {
  expect_rule(3, 3, UNIT_TRIANGLE, {{0.0, 0.0, 0.0}, {1.0, 0.0, 0.0}, {0.0, 1.0, 0.0}});
}

TEST(SurfaceRules, WeightsAddUpToTheReferenceAreaAsTheyStand) {
  EXPECT_EQ(weight_sum(1, 4, UNIT_SQUARE), 4.0);
  EXPECT_EQ(weight_sum(2, 4, UNIT_SQUARE), 4.0);
  EXPECT_CLOSE(weight_sum(1, 3, UNIT_TRIANGLE), 0.5, 0.5, 2.0);

  char digits[32];
  std::snprintf(digits, sizeof digits, "%.15f", weight_sum(2, 3, UNIT_TRIANGLE));
  EXPECT_EQ(std::string(digits), "0.500000000000001");
}

TEST(SurfaceRules, AnyNodeCountButFourIsATriangle) {
  for (const int nodes : {3, 0, 1, 5, 8, -4}) {
    const answer a = ask(2, 1, nodes, UNIT_TRIANGLE);  // nine values: a fourth node cannot be read
    EXPECT_EQ(a.weight, -0.28125) << nodes;
    EXPECT_EQ(a.detj, 1.0) << nodes;
  }
}

// Polynomials that the rules must integrate: two directions of degree 3 on the square, degree 3 on the triangle.
TEST(SurfaceRules, IntegratePolynomialsOfTheirDegree) {
  double square = 0.0, triangle_2 = 0.0, triangle_3 = 0.0;
  for (int p = 1; p <= 4; ++p) {
    const answer q = ask(1, p, 4, UNIT_SQUARE);
    square += q.weight * q.xi * q.xi * q.eta * q.eta;
    const answer t = ask(2, p, 3, UNIT_TRIANGLE);
    triangle_3 += t.weight * t.xi * t.xi * t.eta;
    const answer s = ask(1, p, 3, UNIT_TRIANGLE);
    triangle_2 += s.weight * s.xi * s.eta;
  }
  // 15 digits of the literals bound the accuracy.
  EXPECT_WITHIN(square, 4.0 / 9.0, 1.0, 1e-14);
  EXPECT_WITHIN(triangle_3, 1.0 / 60.0, 1.0, 1e-14);  // 2! 1! / 5!
  EXPECT_WITHIN(triangle_2, 1.0 / 24.0, 1.0, 1e-15);  // 1! 1! / 4!
}

// ------------------------------------------------------------------------------------------------ the map

TEST(SurfaceJacobian, QuadrilateralIsThatOfTheBilinearMap) {
  seeded_random random(11);
  for (int shape = 0; shape < 200; ++shape) {
    const std::vector<double> x = random_nodes(random, 4);
    const double scale = support::max_norm({x[0], x[1], x[3], x[4], x[6], x[7], x[9], x[10]});
    for (int rule = 1; rule <= 4; ++rule) {
      for (int point = 1; point <= 4; ++point) {
        const answer a = ask(rule, point, 4, x);
        double x_xi = 0.0, x_eta = 0.0, y_xi = 0.0, y_eta = 0.0;
        bilinear_derivatives(x[0], x[3], x[6], x[9], a.xi, a.eta, x_xi, x_eta);
        bilinear_derivatives(x[1], x[4], x[7], x[10], a.xi, a.eta, y_xi, y_eta);
        const std::vector<double> actual = {a.j11, a.j12, a.j21, a.j22};
        EXPECT_CLOSE(actual, (std::vector<double>{x_xi, y_xi, x_eta, y_eta}), scale, 8.0);
        EXPECT_CLOSE(a.detj, x_xi * y_eta - y_xi * x_eta, scale * scale, 20.0);
      }
    }
  }
}

TEST(SurfaceJacobian, TriangleIsMadeOfItsSides) {
  seeded_random random(12);
  for (int shape = 0; shape < 200; ++shape) {
    const std::vector<double> x = random_nodes(random, 3);
    const double scale = support::max_norm({x[0], x[1], x[3], x[4], x[6], x[7]});
    const double shoelace = (x[3] - x[0]) * (x[7] - x[1]) - (x[6] - x[0]) * (x[4] - x[1]);
    for (int point = 1; point <= 4; ++point) {
      const answer a = ask(2, point, 3, x);
      const std::vector<double> actual = {a.j11, a.j12, a.j21, a.j22};
      const std::vector<double> sides = {x[3] - x[0], x[4] - x[1], x[6] - x[0], x[7] - x[1]};
      EXPECT_CLOSE(actual, sides, scale, 4.0);
      EXPECT_CLOSE(a.detj, shoelace, scale * scale, 20.0);
    }
  }
}

TEST(SurfaceJacobian, InverseTimesJacobianIsTheIdentity) {
  seeded_random random(13);
  for (int shape = 0; shape < 200; ++shape) {
    for (const int nodes : {3, 4}) {
      const std::vector<double> x = random_nodes(random, nodes);
      const answer a = ask(1, random.integer(1, 3), nodes, x);
      expect_inverse(a);
      // One reciprocal and four products, not four divisions: this is how the library rounds.
      const double r = 1.0 / a.detj;
      EXPECT_EQ(a.g11, r * a.j22);
      EXPECT_EQ(a.g12, -(r * a.j12));
      EXPECT_EQ(a.g21, -(r * a.j21));
      EXPECT_EQ(a.g22, r * a.j11);
    }
  }
}

// d/dx and d/dy of a linear field must come out of the inverse, in the order that the kernels read it.
TEST(SurfaceJacobian, InverseTurnsNaturalDerivativesIntoCartesianOnes) {
  const std::vector<double> x = in_plane({{1.0, 2.0}, {4.0, 3.0}, {2.0, 6.0}});
  const answer a = ask(1, 1, 3, x);
  const auto field = [](double px, double py) { return 5.0 * px - 7.0 * py; };
  const double f1 = field(1.0, 2.0), f_xi = field(4.0, 3.0) - f1, f_eta = field(2.0, 6.0) - f1;
  EXPECT_CLOSE(a.g11 * f_xi + a.g12 * f_eta, 5.0, 30.0, 4.0);
  EXPECT_CLOSE(a.g21 * f_xi + a.g22 * f_eta, -7.0, 30.0, 4.0);
}

TEST(SurfaceJacobian, ClockwiseNodesGiveANegativeDeterminant) {
  EXPECT_EQ(ask(1, 1, 3, in_plane({{0.0, 0.0}, {0.0, 1.0}, {1.0, 0.0}})).detj, -1.0);
}

TEST(SurfaceJacobian, DegenerateElementHasAnInverseThatIsNotFinite) {
  const std::vector<double> line = in_plane({{0.0, 0.0}, {1.0, 2.0}, {2.0, 4.0}});
  const std::vector<double> spot = in_plane({{3.0, 3.0}, {3.0, 3.0}, {3.0, 3.0}, {3.0, 3.0}});
  for (const answer& a : {ask(2, 1, 3, line), ask(1, 1, 4, spot), ask(2, 1, 4, spot)}) {
    EXPECT_EQ(a.detj, 0.0);
    for (const double g : {a.g11, a.g12, a.g21, a.g22}) EXPECT_FALSE(std::isfinite(g)) << g;
  }
}

// ------------------------------------------------------------------------------------------------ named cases

TEST(SurfaceEdgeCases, TriangleRuleTwoPointOneIsTheCentroidWithANegativeWeight) {
  const answer a = ask(2, 1, 3, UNIT_TRIANGLE);
  EXPECT_EQ(a.weight, -0.28125);
  EXPECT_EQ(a.xi, 1.0 / 3.0);
  EXPECT_EQ(a.eta, 1.0 / 3.0);
}

TEST(SurfaceEdgeCases, QuadrilateralRuleTwoPointTwoIsTheOriginWithoutWeight) {
  const answer a = ask(2, 2, 4, UNIT_SQUARE);
  EXPECT_EQ(a.weight, 0.0);
  EXPECT_EQ(a.xi, 0.0);
  EXPECT_EQ(a.eta, 0.0);
  EXPECT_EQ(a.detj, 1.0);
}

TEST(SurfaceEdgeCases, RuleThreeHasNoWeightAndAValidJacobianAtEachNode) {
  const std::vector<double> kite = in_plane({{0.0, 0.0}, {2.0, 0.0}, {3.0, 3.0}, {0.0, 2.0}});
  const double corners[4] = {1.0, 1.5, 2.0, 1.5};  // a quarter of the parallelogram that the sides of a corner span
  for (int node = 1; node <= 4; ++node) {
    const answer a = ask(3, node, 4, kite);
    EXPECT_EQ(a.weight, 0.0);
    EXPECT_CLOSE(a.detj, corners[node - 1], 1.0, 4.0);
    expect_inverse(a);
  }
  for (int node = 1; node <= 3; ++node) EXPECT_EQ(ask(3, node, 3, UNIT_TRIANGLE).detj, 1.0);
}

TEST(SurfaceEdgeCases, UnitRightTriangleHasDeterminantOneAndTheIdentityAsInverse) {
  for (int rule = 1; rule <= 3; ++rule) {
    const answer a = ask(rule, 1, 3, UNIT_TRIANGLE);
    EXPECT_EQ(a.detj, 1.0);
    EXPECT_EQ(a.g11, 1.0);
    EXPECT_EQ(a.g12, 0.0);
    EXPECT_EQ(a.g21, 0.0);
    EXPECT_EQ(a.g22, 1.0);
  }
}

TEST(SurfaceEdgeCases, RuleFourHasAllPointsAtTheOriginWithoutWeight) {
  for (const int rule : {4, 0, -1, 1000}) {
    expect_rule(rule, 3, UNIT_TRIANGLE, {});
    expect_rule(rule, 4, UNIT_SQUARE, {});
  }
}
