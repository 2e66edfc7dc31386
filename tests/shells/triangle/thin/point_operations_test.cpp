// point_operations_test.cpp: point location with its thresholds, and the nodal loads of a point force.
#include "shells/triangle/point_operations.h"

#include <array>
#include <cmath>

#include "comparison.h"
#include "element_cases.h"
#include "element_stores.h"
#include "engine_call.h"
#include "prepared_triangle.h"

using reference::column;
using reference::column_of;
using reference::listed;
using reference::real;
using reference::vector3;
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
  engine_call call(d);
  for (int i = 0; i < 3; ++i) call.LOADS(16 + i) = P[static_cast<std::size_t>(i)];
  call.run(9);
  return {call.point_flag1, call.point_flag2, call.distance};
}

// A point given in the element's own plane and normal.
point in_space(const engine_call& call, real x, real y, real z) {
  const vector3 p = call.axes.transpose() * vector3(x, y, z);
  const point& origin = call.element.nodes.front();
  return {static_cast<double>(p(0) + origin[0]), static_cast<double>(p(1) + origin[1]),
          static_cast<double>(p(2) + origin[2])};
}

void set_three(ELEM_LOADS& LOADS, int first, const point& v) {
  for (int i = 0; i < 3; ++i) LOADS(first + i) = v[static_cast<std::size_t>(i)];
}

// Sides 5, sqrt(18), sqrt(13): the longest is 5.
const std::vector<point> FLAT = plane_triangle(5.0, 2.0, 3.0);

}  // namespace

TEST(PointLocation, InsideOnTheSidesAndOutside) {
  EXPECT_EQ(locate(FLAT, {2.0, 1.0, 0.0}).outside, 0);
  EXPECT_EQ(locate(FLAT, {0.0, 0.0, 0.0}).outside, 0);
  EXPECT_EQ(locate(FLAT, {2.5, 0.0, 0.0}).outside, 0);   // on side 1-2
  EXPECT_EQ(locate(FLAT, {3.5, 1.5, 0.0}).outside, 0);   // on side 2-3
  EXPECT_EQ(locate(FLAT, {1.0, 1.5, 0.0}).outside, 0);   // on side 3-1
  EXPECT_EQ(locate(FLAT, {2.5, -1.0, 0.0}).outside, 1);  // beyond side 1-2 only
  EXPECT_EQ(locate(FLAT, {4.0, 2.0, 0.0}).outside, 1);   // beyond side 2-3 only
  EXPECT_EQ(locate(FLAT, {0.0, 1.5, 0.0}).outside, 1);   // beyond side 3-1 only
}

TEST(PointLocation, SidesHaveAThousandthOfALengthUnit) {
  // From the middle of each side outwards, by an absolute length whatever the size of the element.
  for (const double size : {1.0, 100.0}) {
    const double x[3] = {0.0, 5.0 * size, 2.0 * size}, y[3] = {0.0, 0.0, 3.0 * size};
    const std::vector<point> nodes = plane_triangle(5.0 * size, 2.0 * size, 3.0 * size);
    for (int n = 0; n < 3; ++n) {
      const int m = (n + 1) % 3;
      const double dx = x[m] - x[n], dy = y[m] - y[n], length = std::hypot(dx, dy);
      const auto beyond = [&](double d) {
        return locate(nodes, {(x[n] + x[m]) / 2.0 + dy / length * d, (y[n] + y[m]) / 2.0 - dx / length * d, 0.0});
      };
      EXPECT_EQ(beyond(0.0).outside, 0);
      EXPECT_EQ(beyond(0.00099).outside, 0) << "side " << n + 1;
      EXPECT_EQ(beyond(0.00101).outside, 1) << "side " << n + 1;
      EXPECT_EQ(beyond(0.002).outside, 1) << "side " << n + 1;
      EXPECT_EQ(beyond(-0.1).outside, 0) << "side " << n + 1;
    }
  }
}

TEST(PointLocation, DistanceHasTheSignOfTheNormal) {
  EXPECT_EQ(locate(FLAT, {2.0, 1.0, 0.125}).distance, 0.125);
  EXPECT_EQ(locate(FLAT, {2.0, 1.0, -0.125}).distance, -0.125);
  EXPECT_EQ(locate({FLAT[0], FLAT[2], FLAT[1]}, {2.0, 1.0, 0.125}).distance, -0.125);
}

TEST(PointLocation, PlaneLimitIsATwentiethOfTheLongestSideOnOneSideOnly) {
  const auto above = [](double share) { return locate(FLAT, {2.0, 1.0, share * 5.0}); };
  EXPECT_EQ(above(0.06).far, 1);
  EXPECT_EQ(above(-0.06).far, 0);
  EXPECT_EQ(above(0.0501).far, 1);
  EXPECT_EQ(above(0.0499).far, 0);
  EXPECT_EQ(above(-50.0).far, 0);
  EXPECT_EQ(above(0.06).outside, 0);  // the two flags do not mix
}

TEST(PointLocation, LimitsThemselvesAreWithin) {
  // A leg of one along x makes the distance from it exact; 0.25 over a longest side of 5 is the double 0.05.
  const std::vector<point> unit = plane_triangle(1.0, 0.0, 1.0);
  EXPECT_EQ(locate(unit, {0.25, -0.001, 0.0}).outside, 0);
  EXPECT_EQ(locate(unit, {0.25, std::nextafter(-0.001, -1.0), 0.0}).outside, 1);
  EXPECT_EQ(locate(FLAT, {2.0, 1.0, 0.25}).far, 0);
  EXPECT_EQ(locate(FLAT, {2.0, 1.0, 0.25 * (1.0 + 1e-15)}).far, 1);
}

TEST(PointLocation, PlaneLimitShrinksWithTheElement) {
  const std::vector<point> small = plane_triangle(0.05, 0.02, 0.03);
  EXPECT_EQ(locate(small, {0.02, 0.01, 0.06 * 0.05}).far, 1);
  EXPECT_EQ(locate(small, {0.02, 0.01, 0.04 * 0.05}).far, 0);
}

TEST(PointLocation, TheLongestSideMayBeAnyOfTheThree) {
  // The same triangle from each of its nodes: the limit stays 0.25.
  for (int first = 0; first < 3; ++first) {
    std::vector<point> nodes;
    for (int n = 0; n < 3; ++n) nodes.push_back(FLAT[static_cast<std::size_t>((first + n) % 3)]);
    EXPECT_EQ(locate(nodes, {2.0, 1.0, 0.2499}).far, 0) << first;
    EXPECT_EQ(locate(nodes, {2.0, 1.0, 0.2501}).far, 1) << first;
  }
}

TEST(PointLocation, InSpace) {
  seeded_random random(161);
  for (int trial = 0; trial < 50; ++trial) {
    engine_call call(random_element(random, element_cases().front(), support::random_triangle(random, 4.0)));
    const double L2 = random.uniform(-0.5, 1.5), L3 = random.uniform(-0.5, 1.5), z = random.uniform(-0.4, 0.4);
    const dense::vector2 p = (1 - real(L2) - L3) * call.X.col(0) + L2 * call.X.col(1) + L3 * call.X.col(2);
    const location at = locate(call.element.nodes, in_space(call, p(0), p(1), z));
    const bool inside = L2 > 0.01 && L3 > 0.01 && L2 + L3 < 0.99;
    const bool outside = L2 < -0.01 || L3 < -0.01 || L2 + L3 > 1.01;
    if (inside || outside) {
      EXPECT_EQ(at.outside, outside ? 1 : 0);
    }
    EXPECT_CLOSE(at.distance, z, 10.0, 64);
  }
}

TEST(PointLocation, DegenerateElementIsFar) {
  // Nodes on a line and nodes in one point: the distance is not a number.
  const location line = locate({{0, 0, 0}, {1, 0, 0}, {3, 0, 0}}, {0.5, 0.2, 0.0});
  EXPECT_TRUE(std::isnan(line.distance));
  EXPECT_EQ(line.far, 1);
  const location single = locate({{1, 1, 1}, {1, 1, 1}, {1, 1, 1}}, {1.0, 1.0, 1.0});
  EXPECT_TRUE(std::isnan(single.distance));
  EXPECT_EQ(single.far, 1);
}

TEST(PointLoad, AtANodeGoesWholeToThatNode) {
  seeded_random random(162);
  for (const element_case& c : element_cases()) {
    for (int n = 0; n < 3; ++n) {
      engine_call call(random_element(random, c));
      const point F = {3.0, -2.0, 5.0};
      set_three(call.LOADS, 16, call.element.nodes[static_cast<std::size_t>(n)]);
      set_three(call.LOADS, 19, F);
      call.run(10);
      std::vector<double> expected(18, 0.0);
      for (std::size_t i = 0; i < 3; ++i) expected[static_cast<std::size_t>(6 * n) + i] = F[i];
      EXPECT_CLOSE(call.force_values(), expected, 5.0, 32) << c.name << " node " << n + 1;
      EXPECT_EQ(call.F.changed(), support::range(1, 18));
    }
  }
}

TEST(PointLoad, AtTheFirstNodeHasExactlyNoMoments) {
  engine_call call([] {
    support::plate_description d;
    d.nodes = FLAT;
    return d;
  }());
  set_three(call.LOADS, 19, {1.0, 2.0, 3.0});
  call.run(10);
  const std::vector<double> f = call.force_values();
  EXPECT_EQ((std::vector<double>(f.begin(), f.begin() + 3)), (std::vector<double>{1.0, 2.0, 3.0}));
  for (std::size_t i = 3; i < 18; ++i) EXPECT_EQ(f[i], 0.0) << i;
}

TEST(PointLoad, IsTheReferenceInsideAndOutside) {
  seeded_random random(163);
  for (const element_case& c : element_cases()) {
    for (int trial = 0; trial < 6; ++trial) {
      engine_call call(random_element(random, c));
      const double L2 = random.uniform(-0.5, 1.5), L3 = random.uniform(-0.5, 1.0);
      const real L[3] = {1 - real(L2) - L3, L2, L3};
      const dense::vector2 p = L[0] * call.X.col(0) + L[1] * call.X.col(1) + L[2] * call.X.col(2);
      const std::vector<double> g = random.vector(3, 1.0), l = random.vector(3, 1.0);
      set_three(call.LOADS, 16, in_space(call, p(0), p(1), random.uniform(-0.1, 0.1)));
      set_three(call.LOADS, 19, {g[0], g[1], g[2]});
      set_three(call.LOADS, 22, {l[0], l[1], l[2]});
      call.run(10);
      const vector3 F = call.axes * vector3(g[0], g[1], g[2]) + vector3(l[0], l[1], l[2]);
      const column N = reference::w_functions(call.X, L2, L3);
      column f = column::Zero(18);
      for (int n = 0; n < 3; ++n) {
        f(6 * n) = L[n] * F(0);
        f(6 * n + 1) = L[n] * F(1);
      }
      for (int i = 0; i < 9; ++i) f(reference::BENDING[i] - 1) = N(i) * F(2);
      column expected = reference::eighteen(call.axes).transpose() * f;
      if (c.formulation == 2) {
        for (int n = 0; n < 3; ++n) expected.segment(6 * n + 3, 3).setZero();
      }
      EXPECT_CLOSE(call.force_values(), listed(expected), 10.0, 64) << c.name;
    }
  }
}

TEST(PointLoad, HasTheForceAndTheMomentOfThePoint) {
  seeded_random random(164);
  for (const element_case& c : element_cases()) {
    if (c.formulation != 1) continue;
    engine_call call(random_element(random, c));
    const vector3 F(1.0L, -2.0L, 0.5L);
    const dense::vector2 p = 0.2L * call.X.col(0) + 0.5L * call.X.col(1) + 0.3L * call.X.col(2);
    const point P = in_space(call, p(0), p(1), 0.0L);
    set_three(call.LOADS, 16, P);
    set_three(call.LOADS, 19, {1.0, -2.0, 0.5});
    call.run(10);
    const column f = column_of(call.force_values());
    vector3 force = vector3::Zero(), moment = vector3::Zero();
    for (int n = 0; n < 3; ++n) {
      const point& at = call.element.nodes[static_cast<std::size_t>(n)];
      force += f.segment(6 * n, 3);
      moment += vector3(at[0], at[1], at[2]).cross(f.segment(6 * n, 3).head(3)) + f.segment(6 * n + 3, 3);
    }
    EXPECT_CLOSE(listed(force), listed(F), 2.0, 32) << c.name;
    EXPECT_CLOSE(listed(moment), listed(vector3(P[0], P[1], P[2]).cross(F)), 8.0, 64) << c.name;
  }
}

TEST(PointLoad, LumpedModeSpreadsTheGlobalForceLinearly) {
  seeded_random random(165);
  engine_call call(random_element(random, element_cases().front()));
  const prepared_triangle t(call.element.nodes);
  const dense::vector2 p = 0.2L * call.X.col(0) + 0.5L * call.X.col(1) + 0.3L * call.X.col(2);
  set_three(call.LOADS, 16, in_space(call, p(0), p(1), 0.0L));
  set_three(call.LOADS, 19, {1.0, -2.0, 0.5});
  set_three(call.LOADS, 22, {0.3, 0.6, -0.9});
  const vector3 F = vector3(1.0L, -2.0L, 0.5L) + call.axes.transpose() * vector3(0.3L, 0.6L, -0.9L);
  std::vector<double> f(18, 7.0);
  TRI_POINT_LOAD(TRI, call.LOADS, t.xyz.data(), 1, 0, f.data());
  const double L[3] = {0.2, 0.5, 0.3};
  column expected = column::Zero(18);
  for (int n = 0; n < 3; ++n) expected.segment(6 * n, 3) = F * L[n];
  EXPECT_CLOSE(f, listed(expected), 3.0, 64);
}
