// geometry_test.cpp: local frame and geometry store, by hand and without area.
#include "shells/triangle/geometry.h"

#include <cmath>

#include "comparison.h"
#include "element_stores.h"
#include "prepared_triangle.h"

using support::values;

TEST(TriangleFrame, ByHand) {
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

TEST(TriangleFrame, CoincidentFirstNodesGiveZeroAxes) {
  const prepared_triangle t({{1.0, 2.0, 3.0}, {1.0, 2.0, 3.0}, {2.0, 2.0, 5.0}});
  EXPECT_EQ(values(&TRI.AXES(1, 1), 9), std::vector<double>(9, 0.0));
}

TEST(TriangleFrame, NodesOnALineHaveNoNormal) {
  const prepared_triangle t({{0.0, 0.0, 0.0}, {1.0, 0.0, 0.0}, {3.0, 0.0, 0.0}});
  EXPECT_EQ(values(&TRI.AXES(1, 1), 3, 3), (std::vector<double>{1.0, 0.0, 0.0}));
  EXPECT_EQ(values(&TRI.AXES(3, 1), 3, 3), std::vector<double>(3, 0.0));
  EXPECT_EQ(values(&TRI.AXES(2, 1), 3, 3), std::vector<double>(3, 0.0));
}

TEST(TriangleGeometry, ByHand) {
  const prepared_triangle t(plane_triangle());
  EXPECT_EQ((std::vector<double>{TRI.X21, TRI.X32, TRI.X13, TRI.Y21, TRI.Y32, TRI.Y13, TRI.TWO_AREA}),
            (std::vector<double>{5.0, -3.0, -2.0, 0.0, 3.0, -3.0, 15.0}));
  EXPECT_EQ((std::vector<double>{TRI.G11, TRI.G12, TRI.G21, TRI.G22}),
            (std::vector<double>{3.0 / 15.0, 0.0, -2.0 / 15.0, 5.0 / 15.0}));
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
  EXPECT_EQ((std::vector<double>{TRI.Y21, TRI.Y32, TRI.Y13, TRI.TWO_AREA}),
            (std::vector<double>{0.0, 2.5, -3.0, 15.0}));
}

TEST(TriangleGeometry, NoAreaSpreadsInfinitiesWithoutAStop) {
  const prepared_triangle t({{0.0, 0.0, 0.0}, {1.0, 0.0, 0.0}, {3.0, 0.0, 0.0}});
  EXPECT_EQ(TRI.TWO_AREA, 0.0);
  for (const double g : {TRI.G11, TRI.G21, TRI.G22}) EXPECT_FALSE(std::isfinite(g));
}
