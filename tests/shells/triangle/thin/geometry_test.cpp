// geometry_test.cpp: local frame and geometry store.
#include "shells/triangle/geometry.h"

#include <cmath>

#include "comparison.h"
#include "element_stores.h"
#include "prepared_triangle.h"

using reference::listed;
using support::values;

TEST(TriangleFrame, AxesByHand) {
  // Side 1-2 along global y, side 1-3 along global z: the normal is global x.
  const prepared_triangle t({{1.0, 2.0, 3.0}, {1.0, 5.0, 3.0}, {1.0, 2.0, 7.0}});
  EXPECT_EQ(values(&TRI.AXES(1, 1), 9), (std::vector<double>{0, 0, 1, 1, 0, 0, 0, 1, 0}));
  EXPECT_EQ(values(&t.local(1, 1), 9), (std::vector<double>{0, 0, 0, 3, 0, 0, 0, 4, 0}));
}

TEST(TriangleFrame, NormalFollowsTheNodeOrder) {
  prepared_triangle({{0, 0, 0}, {2, 0, 0}, {0.5, 1, 0}});
  EXPECT_EQ(values(&TRI.AXES(3, 1), 3, 3), (std::vector<double>{0, 0, 1}));
  prepared_triangle({{0, 0, 0}, {0.5, 1, 0}, {2, 0, 0}});
  EXPECT_EQ(values(&TRI.AXES(3, 1), 3, 3), (std::vector<double>{0, 0, -1}));
}

TEST(TriangleFrame, RandomTrianglesAgreeWithTheReference) {
  support::seeded_random random(51);
  for (int trial = 0; trial < 50; ++trial) {
    const std::vector<support::point> nodes = support::random_triangle(random, 3.0);
    const prepared_triangle t(nodes);
    const reference::matrix3 axes = reference::axes_of(nodes);
    EXPECT_CLOSE(values(&TRI.AXES(1, 1), 9), listed(axes), 1.0, 16);
    const reference::flat_triangle X = reference::seen_from(axes, nodes);
    EXPECT_CLOSE(listed(t.flat()), listed(X), 6.0, 16);
    for (int n = 1; n <= 3; ++n) EXPECT_CLOSE(t.local(3, n), 0.0, 6.0, 16);
    EXPECT_GT(t.local(1, 2), 0.0);
    EXPECT_GT(t.local(2, 3), 0.0);
  }
}

TEST(TriangleFrame, CoincidentFirstNodesGiveZeroAxes) {
  const prepared_triangle t({{1.0, 2.0, 3.0}, {1.0, 2.0, 3.0}, {2.0, 2.0, 5.0}});
  EXPECT_EQ(values(&TRI.AXES(1, 1), 3, 3), std::vector<double>(3, 0.0));
  EXPECT_EQ(values(&TRI.AXES(1, 1), 9), std::vector<double>(9, 0.0));
}

TEST(TriangleFrame, NodesOnALineHaveNoNormal) {
  const prepared_triangle t({{0.0, 0.0, 0.0}, {1.0, 0.0, 0.0}, {3.0, 0.0, 0.0}});
  EXPECT_EQ(values(&TRI.AXES(1, 1), 3, 3), (std::vector<double>{1.0, 0.0, 0.0}));
  EXPECT_EQ(values(&TRI.AXES(3, 1), 3, 3), std::vector<double>(3, 0.0));
  EXPECT_EQ(values(&TRI.AXES(2, 1), 3, 3), std::vector<double>(3, 0.0));
}

TEST(TriangleGeometry, StoreByHand) {
  const prepared_triangle t(plane_triangle(5.0, 2.0, 3.0));
  EXPECT_EQ(TRI.X21, 5.0);
  EXPECT_EQ(TRI.X32, -3.0);
  EXPECT_EQ(TRI.X13, -2.0);
  EXPECT_EQ(TRI.Y21, 0.0);
  EXPECT_EQ(TRI.Y32, 3.0);
  EXPECT_EQ(TRI.Y13, -3.0);
  EXPECT_EQ(TRI.TWO_AREA, 15.0);
  EXPECT_EQ(TRI.G11, 3.0 / 15.0);
  EXPECT_EQ(TRI.G12, 0.0);
  EXPECT_EQ(TRI.G21, -2.0 / 15.0);
  EXPECT_EQ(TRI.G22, 5.0 / 15.0);
}

TEST(TriangleGeometry, ReadsTheHeightOfTheSecondNodeForTheOppositeSideAlone) {
  // Node 2 lies on x within rounding; a height of it reaches Y32 and nothing else.
  MATRIX<3, 3> local{};
  local(1, 2) = 5.0;
  local(2, 2) = 0.5;
  local(3, 2) = 99.0;
  local(1, 3) = 2.0;
  local(2, 3) = 3.0;
  local(3, 3) = 99.0;
  TRI_GEOMETRY(local, TRI);
  EXPECT_EQ(TRI.Y21, 0.0);
  EXPECT_EQ(TRI.Y32, 2.5);
  EXPECT_EQ(TRI.Y13, -3.0);
  EXPECT_EQ(TRI.TWO_AREA, 15.0);
}

TEST(TriangleGeometry, InverseJacobianGivesGradients) {
  support::seeded_random random(52);
  for (int trial = 0; trial < 20; ++trial) {
    const prepared_triangle t(support::random_triangle(random));
    const std::vector<double> c = random.vector(2, 1.0);
    double f[3];
    for (int n = 1; n <= 3; ++n) f[n - 1] = c[0] * t.local(1, n) + c[1] * t.local(2, n);
    EXPECT_CLOSE(TRI.G11 * (f[1] - f[0]) + TRI.G12 * (f[2] - f[0]), c[0], 4.0, 16);
    EXPECT_CLOSE(TRI.G21 * (f[1] - f[0]) + TRI.G22 * (f[2] - f[0]), c[1], 4.0, 16);
  }
}

TEST(TriangleGeometry, NoAreaSpreadsInfinitiesWithoutAStop) {
  const prepared_triangle t({{0.0, 0.0, 0.0}, {1.0, 0.0, 0.0}, {3.0, 0.0, 0.0}});
  EXPECT_EQ(TRI.TWO_AREA, 0.0);
  for (const double g : {TRI.G11, TRI.G21, TRI.G22}) EXPECT_FALSE(std::isfinite(g));
}
