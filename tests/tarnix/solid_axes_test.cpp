// solid_axes_test.cpp: the axes of each kind of solid, from elements whose edges lie along known directions.
#include <gtest/gtest.h>

#include <array>
#include <utility>

#include "finites/services.h"
#include "reference_matrix.h"

namespace {

using TRIPLE = std::array<double, 3>;

// The nodes that come first, in natural coordinates, up to the last corner of the first face. Later nodes must not
// matter: the tests give them places without sense.
std::vector<TRIPLE> first_nodes(int node_count) {
  switch (node_count) {
    case 8: return {{-1, -1, -1}, {1, -1, -1}, {1, 1, -1}, {-1, 1, -1}};
    case 10: return {{0, 0, 0}, {.5, 0, 0}, {1, 0, 0}, {.5, .5, 0}, {0, 1, 0}, {0, .5, 0}};
    case 15:
    case 18: return {{0, 0, -1}, {.5, 0, -1}, {1, 0, -1}, {.5, .5, -1}, {0, 1, -1}, {0, .5, -1}};
    case 20:
    case 27: return {{-1, -1, -1}, {0, -1, -1}, {1, -1, -1}, {1, 0, -1}, {1, 1, -1}, {0, 1, -1}, {-1, 1, -1}};
    default: return {{0, 0, -1}, {1, 0, -1}, {0, 1, -1}};
  }
}

// A rotation about a slanted axis (Rodrigues): its columns are the directions of the edges.
DENSE slanted_rotation() {
  const double kx = 2.0 / 7.0, ky = 3.0 / 7.0, kz = 6.0 / 7.0, c = std::cos(0.8), s = std::sin(0.8);
  DENSE Q(3, 3);
  const double k[] = {kx, ky, kz};
  for (int i = 1; i <= 3; ++i) {
    for (int j = 1; j <= 3; ++j) Q(i, j) = (i == j ? c : 0.0) + (1.0 - c) * k[i - 1] * k[j - 1];
  }
  Q(1, 2) -= s * kz;
  Q(2, 1) += s * kz;
  Q(1, 3) += s * ky;
  Q(3, 1) -= s * ky;
  Q(2, 3) -= s * kx;
  Q(3, 2) += s * kx;
  return Q;
}

// The element: natural coordinates stretched by 2, 3 and 0.5, sheared by `shear` in its first face, turned and moved.
DENSE element(int node_count, const DENSE& Q, double shear) {
  DENSE XYZ(3, node_count);
  std::fill(XYZ.value.begin(), XYZ.value.end(), 1e5);
  int k = 0;
  for (const TRIPLE& natural : first_nodes(node_count)) {
    ++k;
    const double local[] = {2.0 * natural[0] + shear * natural[1], 3.0 * natural[1], 0.5 * natural[2]};
    for (int i = 1; i <= 3; ++i) {
      XYZ(i, k) = 10.0 * i;
      for (int j = 1; j <= 3; ++j) XYZ(i, k) += Q(i, j) * local[j - 1];
    }
  }
  return XYZ;
}

DENSE axes(std::int32_t node_count, const DENSE& XYZ) {
  DENSE AX(3, 3);
  std::fill(AX.value.begin(), AX.value.end(), GUARD);
  SOLIDELEM_AXE_DBL(&node_count, XYZ.data(), AX.data());
  return AX;
}

void expect_rows(const DENSE& AX, const DENSE& Q, int node_count) {
  for (int a = 1; a <= 3; ++a) {
    for (int i = 1; i <= 3; ++i) EXPECT_NEAR(AX(a, i), Q(i, a), 1e-14) << node_count << " nodes: " << a << " " << i;
  }
}

void expect_zero_row(const DENSE& AX, int a) {
  for (int i = 1; i <= 3; ++i) EXPECT_EQ(AX(a, i), 0.0) << "axis " << a;
}

}  // namespace

TEST(SolidAxes, LieAlongTheEdgesOfEveryKind) {
  const DENSE Q = slanted_rotation();
  for (int node_count : {4, 6, 8, 10, 15, 18, 20, 27}) {
    expect_rows(axes(node_count, element(node_count, Q, 0.0)), Q, node_count);
  }
}

TEST(SolidAxes, StayOrthonormalOnAShearedFace) {
  const DENSE Q = slanted_rotation();
  for (int node_count : {4, 6, 8, 10, 15, 18, 20, 27}) {
    expect_rows(axes(node_count, element(node_count, Q, 1.5)), Q, node_count);
  }
}

TEST(SolidAxes, FollowTheCornersOfACurvedEdge) {
  const DENSE Q = slanted_rotation();
  for (int node_count : {10, 15, 18, 20, 27}) {
    DENSE XYZ = element(node_count, Q, 0.0);
    for (int i = 1; i <= 3; ++i) XYZ(i, 2) += 0.3 * Q(i, 2) + 0.2 * Q(i, 3);
    expect_rows(axes(node_count, XYZ), Q, node_count);
  }
}

// Of the first face the three corners alone give the axes: every other node of it is moved out of its edge and plane.
TEST(SolidAxes, MidSideNodesOfTheFirstFaceDoNotMatter) {
  const DENSE Q = slanted_rotation();
  for (int node_count : {10, 15, 18, 20, 27}) {
    DENSE XYZ = element(node_count, Q, 0.7);
    for (int k = 2; k <= (node_count >= 20 ? 8 : 6); k += 2) {
      for (int i = 1; i <= 3; ++i) XYZ(i, k) += k * (0.3 * Q(i, 1) + 0.2 * Q(i, 2) + 0.4 * Q(i, 3));
    }
    expect_rows(axes(node_count, XYZ), Q, node_count);
  }
}

TEST(SolidAxes, TheOppositeCornerOfAWarpedFaceDoesNotMatter) {
  const DENSE Q = slanted_rotation();
  for (const auto& [node_count, opposite] : {std::pair{8, 3}, {20, 5}, {27, 5}}) {
    DENSE XYZ = element(node_count, Q, 0.0);
    for (int i = 1; i <= 3; ++i) XYZ(i, opposite) += 0.4 * Q(i, 3);
    expect_rows(axes(node_count, XYZ), Q, node_count);
  }
}

TEST(SolidAxes, ACountThatIsNoKindTakesItsFirstThreeNodes) {
  const DENSE Q = slanted_rotation();
  for (int node_count : {3, 5, 7, 9, 100}) expect_rows(axes(node_count, element(node_count, Q, 0.0)), Q, node_count);
}

TEST(SolidAxes, FewerThanThreeNodesHaveNoAxes) {
  DENSE XYZ(3, 1);
  for (std::int32_t node_count : {2, 1, 0, -8}) {
    const DENSE AX = axes(node_count, XYZ);
    for (int a = 1; a <= 3; ++a) expect_zero_row(AX, a);
  }
}

TEST(SolidAxes, ALengthOfZeroGivesZeroRows) {
  DENSE XYZ = element(8, slanted_rotation(), 0.0);
  for (int i = 1; i <= 3; ++i) XYZ(i, 2) = XYZ(i, 1);
  const DENSE no_edge = axes(8, XYZ);
  for (int a = 1; a <= 3; ++a) expect_zero_row(no_edge, a);

  DENSE line(3, 4);  // nodes 1, 2, 3 on global x: an edge, but no plane
  for (int k = 1; k <= 4; ++k) line(1, k) = k;
  const DENSE no_plane = axes(4, line);
  EXPECT_EQ(no_plane(1, 1), 1.0);
  expect_zero_row(no_plane, 2);
  expect_zero_row(no_plane, 3);
}

TEST(SolidAxes, NotANumberTravels) {
  DENSE XYZ = element(8, slanted_rotation(), 0.0);
  XYZ(2, 2) = std::numeric_limits<double>::quiet_NaN();
  const DENSE AX = axes(8, XYZ);
  for (double entry : AX.value) EXPECT_TRUE(std::isnan(entry));
}
