// extrapolation_test.cpp: values at the points to the nodes, against fields that the maps hold exactly. A linear field
// is the best plane of a triangle's points, a bilinear one goes through the four of a quadrilateral. The names of the
// two widths are the templates component by component.
#include "plate_results/extrapolation.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

// Area coordinates of the points: the centroid, then 0.6 at the node next to the point and 0.2 at the others.
constexpr double TRIANGLE_POINT[4][3] = {
    {1.0 / 3, 1.0 / 3, 1.0 / 3}, {0.6, 0.2, 0.2}, {0.2, 0.6, 0.2}, {0.2, 0.2, 0.6}};
constexpr double CORNER[4][2] = {{-1, -1}, {1, -1}, {1, 1}, {-1, 1}};

// a at node 1, b at node 2, c at node 3.
VECTOR<4> linear(double a, double b, double c) {
  VECTOR<4> v;
  for (int p = 0; p < 4; ++p) {
    v(p + 1) = a * TRIANGLE_POINT[p][0] + b * TRIANGLE_POINT[p][1] + c * TRIANGLE_POINT[p][2];
  }
  return v;
}

double bilinear(const double (&k)[4], double xi, double eta) { return k[0] + k[1] * xi + k[2] * eta + k[3] * xi * eta; }

VECTOR<4> at_points(const double (&k)[4]) {
  const double g = 1 / std::sqrt(3.0);
  VECTOR<4> v;
  for (int p = 0; p < 4; ++p) v(p + 1) = bilinear(k, g * CORNER[p][0], g * CORNER[p][1]);
  return v;
}

// Of a quadrilateral, component i.
constexpr double FIELD[3][4] = {{1, 2, -3, 0.5}, {-2, 0.25, 1, 3}, {0, 0, 0, 1}};

}  // namespace

// The shares have seven decimals, and the field at most 5: 4 shares, each off by at most 5e-8.
TEST(Extrapolation, HoldsALinearFieldOfATriangle) {
  VECTOR<3> out;
  TRI_GP_TO_NODE(linear(5.0, -2.0, 3.0), out);
  EXPECT_NEAR(out(1), 5.0, 1e-6);
  EXPECT_NEAR(out(2), -2.0, 1e-6);
  EXPECT_NEAR(out(3), 3.0, 1e-6);
}

TEST(Extrapolation, HoldsABilinearFieldOfAQuadrilateral) {
  for (const auto& k : FIELD) {
    VECTOR<4> out;
    QUAD_GP_TO_NODE(at_points(k), out);
    for (int n = 0; n < 4; ++n) EXPECT_NEAR(out(n + 1), bilinear(k, CORNER[n][0], CORNER[n][1]), 1e-6) << n;
  }
}

TEST(Extrapolation, OfATriangleTakesEveryComponent) {
  VECTOR<8> points[4]{}, nodes[3]{};
  VECTOR<6> narrow_points[4]{}, narrow_nodes[3]{};
  for (int i = 1; i <= 8; ++i) {
    const VECTOR<4> v = linear(i, 10.0 * i, -2.0 * i);
    for (int p = 0; p < 4; ++p) {
      points[p](i) = v(p + 1);
      if (i <= 6) narrow_points[p](i) = v(p + 1);
    }
  }
  EXTRAP_TRI_8(points, nodes);
  EXTRAP_TRI_6(narrow_points, narrow_nodes);
  for (int i = 1; i <= 8; ++i) {
    const double expected[3] = {1.0 * i, 10.0 * i, -2.0 * i};
    for (int n = 0; n < 3; ++n) {
      EXPECT_NEAR(nodes[n](i), expected[n], 1e-5) << i;
      if (i <= 6) {
        EXPECT_NEAR(narrow_nodes[n](i), expected[n], 1e-5) << i;
      }
    }
  }
}

TEST(Extrapolation, OfAQuadrilateralTakesEveryComponent) {
  VECTOR<8> points[4]{}, nodes[4]{};
  VECTOR<6> narrow_points[4]{}, narrow_nodes[4]{};
  for (int i = 1; i <= 8; ++i) {
    const double k[4] = {1.0 * i, 2.0, -1.0 * i, 0.5 * i};
    const VECTOR<4> v = at_points(k);
    for (int p = 0; p < 4; ++p) {
      points[p](i) = v(p + 1);
      if (i <= 6) narrow_points[p](i) = v(p + 1);
    }
  }
  EXTRAP_QUAD_8(points, nodes);
  EXTRAP_QUAD_6(narrow_points, narrow_nodes);
  for (int i = 1; i <= 8; ++i) {
    const double k[4] = {1.0 * i, 2.0, -1.0 * i, 0.5 * i};
    for (int n = 0; n < 4; ++n) {
      const double expected = bilinear(k, CORNER[n][0], CORNER[n][1]);
      EXPECT_NEAR(nodes[n](i), expected, 1e-5) << i;
      if (i <= 6) {
        EXPECT_NEAR(narrow_nodes[n](i), expected, 1e-5) << i;
      }
    }
  }
}
