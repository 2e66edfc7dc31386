// point_operations_test.cpp: point location with its thresholds, and the nodal loads of a point force, by hand.
#include "shells/triangle/point_operations.h"

#include <cmath>

#include "comparison.h"
#include "element_call.h"
#include "element_stores.h"
#include "element_subject.h"
#include "prepared_triangle.h"
#include "shells/triangle/loads.h"

using shell_reference::column;
using shell_reference::listed;
using shell_reference::vector2;
using shell_reference::vector3;
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

// Sides 5, sqrt(18), sqrt(13): the longest is 5.
const std::vector<point> FLAT = plane_triangle();

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

TEST(PointLocation, DegenerateElementIsFar) {
  // Nodes on a line and nodes in one point: the distance is not a number.
  const location line = locate({{0, 0, 0}, {1, 0, 0}, {3, 0, 0}}, {0.5, 0.2, 0.0});
  EXPECT_TRUE(std::isnan(line.distance));
  EXPECT_EQ(line.far, 1);
  const location single = locate({{1, 1, 1}, {1, 1, 1}, {1, 1, 1}}, {1.0, 1.0, 1.0});
  EXPECT_TRUE(std::isnan(single.distance));
  EXPECT_EQ(single.far, 1);
}

TEST(PointLoad, AtTheFirstNodeHasExactlyNoMoments) {
  support::plate_description d;
  d.nodes = FLAT;
  element_call call(d);
  call.set(LOAD_FORCE, {1.0, 2.0, 3.0});
  call.run(10);
  std::vector<double> expected(18, 0.0);
  expected[0] = 1.0;
  expected[1] = 2.0;
  expected[2] = 3.0;
  EXPECT_EQ(call.force_values(), expected);
}

TEST(PointLoad, OfTheLumpedModeIsSpreadLinearlyInGlobalAxes) {
  // No engine asks for it.
  seeded_random random(165);
  element_call call(random_element(random, isotropic_subject(10)));
  const prepared_triangle t(call.element.nodes);
  const shell_reference::corners& X = call.reference.X;
  const vector2 p = 0.2L * X.col(0) + 0.5L * X.col(1) + 0.3L * X.col(2);
  call.set(LOAD_POINT, call.reference.in_space(p(0), p(1), 0.0L));
  call.set(LOAD_FORCE, {1.0, -2.0, 0.5});
  call.set(LOAD_FORCE_LOCAL, {0.3, 0.6, -0.9});
  const vector3 F = vector3(1.0L, -2.0L, 0.5L) + call.reference.axes.transpose() * vector3(0.3L, 0.6L, -0.9L);
  std::vector<double> f(18, 7.0);
  TRI_POINT_LOAD(TRI, call.LOADS, t.xyz.data(), LUMPED_LOADS, 0, f.data());
  const double L[3] = {0.2, 0.5, 0.3};
  column expected = column::Zero(18);
  for (int n = 0; n < 3; ++n) expected.segment(6 * n, 3) = F * L[n];
  EXPECT_CLOSE(f, listed(expected), 3.0, 64);
}
