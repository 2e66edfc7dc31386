// point_operations_test.cpp: point location on four sides and warped elements, the inverse of the bilinear map, and
// forces at points.
#include "shells/quadrilateral/point_operations.h"

#include <cmath>

#include "comparison.h"
#include "element_call.h"
#include "element_subject.h"
#include "prepared_quadrilateral.h"

using shell_reference::corners;
using shell_reference::vector2;
using support::point;
using support::seeded_random;

namespace {

struct location {
  int outside, far;
  double distance;
};

location locate(const std::vector<point>& nodes, const point& P) {
  support::plate_description d;
  d.nodes = nodes;
  element_call call(d);
  call.set(LOAD_POINT, P);
  call.run(9);
  return {call.point_flag1, call.point_flag2, call.distance};
}

MATRIX<3, 4> local_of(const std::vector<point>& nodes) {
  MATRIX<3, 4> local;
  for (int n = 1; n <= 4; ++n) {
    for (int i = 1; i <= 3; ++i) local(i, n) = nodes[static_cast<std::size_t>(n - 1)][static_cast<std::size_t>(i - 1)];
  }
  return local;
}

corners flat(const std::vector<point>& nodes) {
  corners X(2, 4);
  for (int n = 0; n < 4; ++n) X.col(n) << nodes[static_cast<std::size_t>(n)][0], nodes[static_cast<std::size_t>(n)][1];
  return X;
}

}  // namespace

TEST(QuadrilateralLocation, FourSides) {
  const std::vector<point> nodes = plane_quadrilateral();
  EXPECT_EQ(locate(nodes, {2.5, 1.5, 0.0}).outside, 0);
  for (int n = 0; n < 4; ++n) {
    const point &a = nodes[static_cast<std::size_t>(n)], &b = nodes[static_cast<std::size_t>((n + 1) % 4)];
    const double dx = b[0] - a[0], dy = b[1] - a[1], length = std::hypot(dx, dy);
    const auto beyond = [&](double d) {
      return locate(nodes, {(a[0] + b[0]) / 2.0 + dy / length * d, (a[1] + b[1]) / 2.0 - dx / length * d, 0.0}).outside;
    };
    EXPECT_EQ(beyond(0.0), 0) << "side " << n + 1;
    EXPECT_EQ(beyond(0.00099), 0) << "side " << n + 1;
    EXPECT_EQ(beyond(0.00101), 1) << "side " << n + 1;
    EXPECT_EQ(beyond(0.002), 1) << "side " << n + 1;
    EXPECT_EQ(beyond(-0.1), 0) << "side " << n + 1;
  }
}

TEST(QuadrilateralLocation, PlaneLimitIsATwentiethOfTheLongestOfFourSides) {
  // Each of the four sides in turn is the longest, sqrt(20), and the next longest is 4.
  const std::vector<point> nodes = plane_quadrilateral();
  for (std::size_t first = 0; first < 4; ++first) {
    std::vector<point> turned;
    for (std::size_t n = 0; n < 4; ++n) turned.push_back(nodes[(first + n) % 4]);
    const double L = std::sqrt(20.0);
    EXPECT_EQ(locate(turned, {2.5, 1.5, 0.0499 * L}).far, 0) << first;
    EXPECT_EQ(locate(turned, {2.5, 1.5, 0.0501 * L}).far, 1) << first;
    EXPECT_EQ(locate(turned, {2.5, 1.5, 0.06 * L}).far, 1) << first;
    EXPECT_EQ(locate(turned, {2.5, 1.5, -0.06 * L}).far, 0) << first;  // below counts as near, however far
    EXPECT_EQ(locate(turned, {2.5, 1.5, -50.0}).far, 0) << first;
    EXPECT_EQ(locate(turned, {2.5, 1.5, 0.06 * L}).outside, 0) << first;
  }
}

TEST(QuadrilateralLocation, OfAWarpedElementTakesThePlaneOfItsFirstThreeNodes) {
  // Node 4 lies 0.4 above the plane of the others; the axes are those of nodes 1, 2, 4.
  const std::vector<point> nodes = {{0, 0, 0}, {4, 0, 0}, {4, 3, 0}, {0, 3, 0.4}};
  EXPECT_CLOSE(locate(nodes, {2.0, 1.5, 0.125}).distance, 0.125, 1.0, 4);
  EXPECT_CLOSE(locate(nodes, {0.0, 3.0, 0.4}).distance, 0.4, 1.0, 4);
  EXPECT_EQ(locate(nodes, {2.0, 1.5, 0.125}).outside, 0);
  // In the plane of nodes 1, 2, 4, where the normal of the axes would see no distance.
  EXPECT_CLOSE(locate(nodes, {2.0, 1.5, 0.2}).distance, 0.2, 1.0, 4);
  EXPECT_EQ(locate(nodes, {2.0, 1.5, 0.2}).far, 0);
  EXPECT_EQ(locate(nodes, {2.0, 1.5, 0.26}).far, 1);
}

TEST(QuadrilateralLocation, DistanceHasTheSignOfTheNormal) {
  const std::vector<point> nodes = rectangle(2.0, 1.0);
  EXPECT_EQ(locate(nodes, {1.0, 0.5, 0.125}).distance, 0.125);
  EXPECT_EQ(locate(nodes, {1.0, 0.5, -0.125}).distance, -0.125);
  EXPECT_EQ(locate({nodes[0], nodes[3], nodes[2], nodes[1]}, {1.0, 0.5, 0.125}).distance, -0.125);
}

TEST(QuadrilateralLocation, DegenerateElementIsFar) {
  const location line = locate({{0, 0, 0}, {1, 0, 0}, {3, 0, 0}, {4, 0, 0}}, {0.5, 0.2, 0.0});
  EXPECT_TRUE(std::isnan(line.distance));
  EXPECT_EQ(line.far, 1);
}

TEST(NaturalPoint, InvertsTheMapFromSeveralStarts) {
  seeded_random random(431);
  for (int trial = 0; trial < 50; ++trial) {
    const prepared_quadrilateral q(support::random_quadrilateral(random));
    const double xi = random.uniform(-1.0, 1.0), eta = random.uniform(-1.0, 1.0);
    const vector2 p = shell_reference::position(q.flat(), xi, eta);
    for (const auto& [a, b] : {std::pair{0.0, 0.0}, std::pair{0.9, -0.9}, std::pair{-1.0, -1.0}, std::pair{xi, eta}}) {
      double found_xi = a, found_eta = b;
      QUAD_NATURAL_POINT(static_cast<double>(p(0)), static_cast<double>(p(1)), q.local, found_xi, found_eta);
      EXPECT_WITHIN((std::vector<double>{found_xi, found_eta}), (std::vector<double>{xi, eta}), 1.0, 1e-8);
    }
  }
}

TEST(NaturalPoint, ASolutionIsLeftAlone) {
  // Residuals are looked at before the first step.
  const std::vector<point> nodes = rectangle(2.0, 1.0);
  double xi = 0.5, eta = -0.25;
  QUAD_NATURAL_POINT(1.5, 0.375, local_of(nodes), xi, eta);
  EXPECT_EQ(xi, 0.5);
  EXPECT_EQ(eta, -0.25);
  // Within half of 1e-10 of four times the map; 0.4e-10 in the map is 0.8e-10 there.
  QUAD_NATURAL_POINT(1.5 + 0.4e-10, 0.375, local_of(nodes), xi, eta);
  EXPECT_EQ(xi, 0.5);
  QUAD_NATURAL_POINT(1.5, 0.375 - 0.4e-10, local_of(nodes), xi, eta);
  EXPECT_EQ(eta, -0.25);
  QUAD_NATURAL_POINT(1.5 + 0.6e-10, 0.375, local_of(nodes), xi, eta);
  EXPECT_NE(xi, 0.5);
  EXPECT_WITHIN(xi, 0.5 + 0.6e-10, 1.0, 1e-14);
}

TEST(NaturalPoint, AResidualOfTheToleranceItselfIsNotBelowIt) {
  // About the origin four times the map misses by -4 x: half of it is 1e-10 to the last bit, and a step is taken.
  const std::vector<point> nodes = {{-1, -1, 0}, {1, -1, 0}, {1, 1, 0}, {-1, 1, 0}};
  const double at_limit = 0.5 * 1e-10, below = std::nextafter(at_limit, 0.0);
  for (const bool along : {true, false}) {
    for (const double offset : {at_limit, below}) {
      double xi = 0.0, eta = 0.0;
      QUAD_NATURAL_POINT(along ? offset : 0.0, along ? 0.0 : offset, local_of(nodes), xi, eta);
      EXPECT_EQ(along ? xi : eta, offset == at_limit ? at_limit : 0.0) << along;
      EXPECT_EQ(along ? eta : xi, 0.0) << along;
    }
  }
}

TEST(NaturalPoint, OfAParallelogramTakesOneStep) {
  // The map is linear: the answer is exact to rounding from any start.
  const std::vector<point> nodes = {{0, 0, 0}, {4, 1, 0}, {5, 4, 0}, {1, 3, 0}};
  for (const double start : {0.0, 50.0, -1000.0}) {
    double xi = start, eta = -start;
    QUAD_NATURAL_POINT(2.5 + 2.0 * 0.3 + 0.5 * 0.7, 2.0 + 0.5 * 0.3 + 1.5 * 0.7, local_of(nodes), xi, eta);
    EXPECT_WITHIN((std::vector<double>{xi, eta}), (std::vector<double>{0.3, 0.7}), 1.0 + std::fabs(start), 1e-14);
  }
}

TEST(NaturalPoint, OfANodeIsFoundInFewSteps) {
  // The test's own steps, on the residuals of the four functions: no more than seven from the centre, and the library's
  // answer is where they end.
  seeded_random random(432);
  for (int trial = 0; trial < 50; ++trial) {
    const prepared_quadrilateral q(support::random_quadrilateral(random));
    const corners X = q.flat();
    for (int n = 0; n < 4; ++n) {
      shell_reference::real a = 0.0L, b = 0.0L;
      int steps = 0;
      for (;; ++steps) {
        const vector2 off = 4.0L * (shell_reference::position(X, a, b) - X.col(n));
        if (off.cwiseAbs().maxCoeff() / 2.0L < 1e-10L) break;
        ASSERT_LT(steps, 7);
        const vector2 step = shell_reference::jacobian(X, a, b).transpose().inverse() * off / 4.0L;
        a -= step(0);
        b -= step(1);
      }
      double xi = 0.0, eta = 0.0;
      QUAD_NATURAL_POINT(q.local(1, n + 1), q.local(2, n + 1), q.local, xi, eta);
      EXPECT_WITHIN((std::vector<double>{xi, eta}), (std::vector<double>{double(a), double(b)}), 1.0, 1e-12);
      const double at[4][2] = {{-1, -1}, {1, -1}, {1, 1}, {-1, 1}};
      EXPECT_WITHIN((std::vector<double>{xi, eta}), (std::vector<double>{at[n][0], at[n][1]}), 1.0, 1e-9) << n;
    }
  }
}

TEST(NaturalPoint, OutsideIsExtrapolated) {
  const std::vector<point> nodes = plane_quadrilateral();
  const corners X = flat(nodes);
  for (const auto& [a, b] : {std::pair{1.5, 0.2}, std::pair{-1.4, -1.3}, std::pair{0.1, 1.8}, std::pair{1.2, 1.2}}) {
    const vector2 p = shell_reference::position(X, a, b);
    double xi = 0.0, eta = 0.0;
    QUAD_NATURAL_POINT(static_cast<double>(p(0)), static_cast<double>(p(1)), local_of(nodes), xi, eta);
    EXPECT_WITHIN((std::vector<double>{xi, eta}), (std::vector<double>{a, b}), 1.0, 1e-8);
  }
}

TEST(NaturalPoint, StopsAfterFiftySteps) {
  // Points that no finite natural point maps to, shapes without area, and what is not a number: all come back.
  const std::vector<std::vector<point>> shapes = {{{0, 0, 0}, {0, 0, 0}, {0, 0, 0}, {0, 0, 0}},
                                                  {{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {3, 0, 0}},
                                                  {{0, 0, 0}, {1, 1, 0}, {1, 0, 0}, {0, 1, 0}},
                                                  {{0, 0, 0}, {4, 0, 0}, {0.5, 0.5, 0}, {0, 4, 0}},
                                                  {{0, 0, 0}, {1e200, 0, 0}, {1e200, 1e200, 0}, {0, 1e200, 0}},
                                                  {{std::nan(""), 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}}};
  for (const std::vector<point>& nodes : shapes) {
    for (const double x : {0.3, -7.0, 1e300, std::nan("")}) {
      double xi = 0.0, eta = 0.0;
      QUAD_NATURAL_POINT(x, 0.7, local_of(nodes), xi, eta);
      element_call call([&nodes] {
        support::plate_description d;
        d.nodes = nodes;
        return d;
      }());
      call.set(LOAD_POINT, {x, 0.7, 0.0});
      call.set(LOAD_FORCE, {1.0, 1.0, 1.0});
      call.run(10);
      EXPECT_EQ(call.F.changed(), support::range(1, 24));
    }
  }
}

TEST(NaturalPoint, TakesFiftyStepsAndNoMore) {
  // The sum of the natural coordinates as one coordinate, their product as the other: the point of sum 2 and product 1
  // is a double root at xi = eta = 1, where Newton's method converges by halves. The sum is right after the first step;
  // the difference is halved by each. Four times the product misses by the square of the difference.
  const double sx[4] = {-1, 1, 1, -1}, sy[4] = {-1, -1, 1, 1};
  for (const int sum : {1, 2}) {  // x is the sum, then y
    MATRIX<3, 4> local{};
    for (int n = 1; n <= 4; ++n) {
      local(sum, n) = sx[n - 1] + sy[n - 1];
      local(3 - sum, n) = sx[n - 1] * sy[n - 1];
    }
    const double x = sum == 1 ? 2.0 : 1.0, y = sum == 1 ? 1.0 : 2.0;
    double xi = 3.0, eta = -1.0;  // a difference of 4
    QUAD_NATURAL_POINT(x, y, local, xi, eta);
    // Half of the residual below 1e-10 is a difference below 1.4142e-5: 4 2^-19 = 7.6e-6, and no sooner.
    EXPECT_WITHIN(xi - eta, std::ldexp(4.0, -19), std::ldexp(4.0, -19), 1e-3) << sum;
    EXPECT_WITHIN(xi + eta, 2.0, 1.0, 1e-12) << sum;
    // So far away that halving needs more than fifty steps: what is left is 2^-50 of the difference of 2^61.
    xi = 1.0 + std::ldexp(1.0, 60);
    eta = 1.0 - std::ldexp(1.0, 60);
    QUAD_NATURAL_POINT(x, y, local, xi, eta);
    EXPECT_WITHIN(xi - eta, std::ldexp(1.0, 61 - 50), std::ldexp(1.0, 61 - 50), 0.01) << sum;
  }
}

TEST(QuadrilateralPointLoad, StartsInTheCentre) {
  // The centroid of the nodes is the natural origin: no step is taken, and the weights are a quarter to the last bit.
  support::plate_description d;
  d.nodes = plane_quadrilateral();
  element_call call(d);
  call.set(LOAD_POINT, {2.75, 1.75, 0.0});
  call.set(LOAD_FORCE, {4.0, 8.0, 0.0});
  call.run(10);
  for (int n = 0; n < 4; ++n) {
    EXPECT_EQ(call.F(6 * n + 1), 1.0);
    EXPECT_EQ(call.F(6 * n + 2), 2.0);
  }
}

TEST(QuadrilateralPointLoad, StartsInTheCentreAndStaysThereWithinTheTolerance) {
  // 0.4e-10 beside the centroid is a residual of 0.8e-10: from the centre no step is taken. Any other start would end
  // somewhere else, with weights that are no quarters.
  support::plate_description d;
  d.nodes = plane_quadrilateral();
  for (const auto& [x, y] : {std::pair{0.4e-10, 0.0}, std::pair{0.0, -0.4e-10}}) {
    element_call call(d);
    call.set(LOAD_POINT, {2.75 + x, 1.75 + y, 0.0});
    call.set(LOAD_FORCE, {4.0, 8.0, 0.0});
    call.run(10);
    for (int n = 0; n < 4; ++n) {
      EXPECT_EQ(call.F(6 * n + 1), 1.0);
      EXPECT_EQ(call.F(6 * n + 2), 2.0);
    }
  }
}

TEST(QuadrilateralPointLoad, AtTheCentroidOfASquareIsAQuarterAtEachNode) {
  support::plate_description d;
  d.nodes = rectangle(2.0, 2.0);
  for (const int formulation : {0, 1, 2}) {
    d.formulation = formulation;
    element_call call(d);
    call.set(LOAD_POINT, {1.0, 1.0, 0.0});
    call.set(LOAD_FORCE, {4.0, 8.0, 12.0});
    call.run(10);
    for (int n = 0; n < 4; ++n) {
      for (int i = 1; i <= 3; ++i) EXPECT_CLOSE(call.F(6 * n + i), 4.0 * i / 4.0, 12.0, 4) << n;
      EXPECT_EQ(call.F(6 * n + 6), 0.0);
    }
    // Moments of the transverse part, F side / 16 in the two directions, and their signs.
    const double M = formulation == 2 ? 0.0 : 12.0 * 2.0 / 16.0;
    for (int n = 0; n < 4; ++n) {
      const double sign_x = n == 0 || n == 3 ? -1.0 : 1.0, sign_y = n < 2 ? -1.0 : 1.0;
      EXPECT_CLOSE(std::fabs(call.F(6 * n + 4)), M, 12.0, 8) << n;
      EXPECT_CLOSE(call.F(6 * n + 4), -sign_y * M, 12.0, 8) << n;
      EXPECT_CLOSE(call.F(6 * n + 5), sign_x * M, 12.0, 8) << n;
    }
  }
}
