// geometry_test.cpp: frame, side differences and Jacobian of the quadrilateral.
#include "shells/quadrilateral/geometry.h"

#include <cmath>

#include "comparison.h"
#include "element_stores.h"
#include "prepared_quadrilateral.h"
#include "shells/common/surface_points.h"

using shell_reference::corners;
using shell_reference::largest;
using shell_reference::listed;
using shell_reference::matrix2;
using support::seeded_random;
using support::values;

namespace {

std::vector<double> side_coefficients() {
  std::vector<double> all;
  for (int k = 5; k <= 8; ++k)
    all.insert(all.end(), {QUAD.DKQ_A(k), QUAD.DKQ_B(k), QUAD.DKQ_C(k), QUAD.DKQ_D(k), QUAD.DKQ_E(k)});
  return all;
}

}  // namespace

TEST(QuadrilateralFrame, IsThatOfSideOneTwoAndNodeFourFromTheCentroid) {
  seeded_random random(401);
  for (int trial = 0; trial < 50; ++trial) {
    std::vector<support::point> nodes = support::random_quadrilateral(random);
    nodes[2][0] += random.uniform(-0.2, 0.2);  // warped: node 3 takes no part in the axes
    const prepared_quadrilateral q(nodes);
    const shell_reference::matrix3 axes = shell_reference::axes_of(nodes);
    EXPECT_CLOSE(values(QUAD.AXES.data(), 9), listed(axes), 1.0, 32);
    for (int n = 1; n <= 4; ++n) {
      const shell_reference::vector3 x =
          axes * (shell_reference::wide(nodes[static_cast<std::size_t>(n - 1)]) - shell_reference::origin_of(nodes));
      EXPECT_CLOSE(values(&q.local(1, n), 3), listed(x), 3.0, 16) << "node " << n;
    }
  }
}

TEST(QuadrilateralFrame, ByHandWithTheCentroid) {
  // Not in the origin, and not with node 2 on local y = 0.
  MATRIX<3, 4> local;
  double cx = 0.0, cy = 0.0, cz = 0.0;
  const double xyz[12] = {1.0, 1.0, 2.0, 1.0, 5.0, 2.0, -2.0, 6.0, 2.0, -3.0, 3.0, 2.0};
  QUAD_LOCAL_FRAME(xyz, QUAD, local, cx, cy, cz);
  EXPECT_EQ((std::vector<double>{cx, cy, cz}), (std::vector<double>{-0.75, 3.75, 2.0}));
  // x is the global y, y the global -x, z up.
  EXPECT_EQ(values(QUAD.AXES.data(), 9), (std::vector<double>{0, -1, 0, 1, 0, 0, 0, 0, 1}));
  EXPECT_EQ(values(local.data(), 12),
            (std::vector<double>{-2.75, -1.75, 0, 1.25, -1.75, 0, 2.25, 1.25, 0, -0.75, 2.25, 0}));
}

TEST(QuadrilateralFrame, CoincidentNodesGiveZeroAxes) {
  MATRIX<3, 4> local;
  double cx = 0.0, cy = 0.0, cz = 0.0;
  const double first[12] = {1, 2, 3, 1, 2, 3, 4, 4, 4, 0, 1, 0};
  QUAD_LOCAL_FRAME(first, QUAD, local, cx, cy, cz);
  EXPECT_EQ(values(QUAD.AXES.data(), 9), std::vector<double>(9, 0.0));
  const double along[12] = {0, 0, 0, 1, 0, 0, 1, 1, 0, 2, 0, 0};  // node 4 on the line of side 1-2
  QUAD_LOCAL_FRAME(along, QUAD, local, cx, cy, cz);
  EXPECT_EQ(values(QUAD.AXES.data(), 9), (std::vector<double>{1, 0, 0, 0, 0, 0, 0, 0, 0}));
}

TEST(QuadrilateralGeometry, ByHand) {
  // Sides (4, 0), (1, 3), (-3, 1), (-2, -4).
  const prepared_quadrilateral q(plane_quadrilateral());
  EXPECT_CLOSE((std::vector<double>{QUAD.QX12, QUAD.QX23, QUAD.QX34, QUAD.QX41}),
               (std::vector<double>{-4.0, -1.0, 3.0, 2.0}), 4.0, 4);
  EXPECT_CLOSE((std::vector<double>{QUAD.QY12, QUAD.QY23, QUAD.QY34, QUAD.QY41}),
               (std::vector<double>{0.0, -3.0, -1.0, 4.0}), 4.0, 4);
  EXPECT_CLOSE((std::vector<double>{QUAD.QJ0, QUAD.QJ1, QUAD.QJ2}), (std::vector<double>{3.25, -0.5, -0.25}), 4.0, 8);
  EXPECT_CLOSE((std::vector<double>{QUAD.QA1, QUAD.QA2, QUAD.QA3, QUAD.QA4, QUAD.QA5, QUAD.QA6}),
               (std::vector<double>{1.75, -0.25, -0.25, -0.25, 0.75, 1.75}), 4.0, 4);
}

TEST(QuadrilateralGeometry, SideCoefficientsByHand) {
  const prepared_quadrilateral q(plane_quadrilateral());
  // (x, y) = (-4, 0), (-1, -3), (3, -1), (2, 4), squares 16, 10, 10, 20.
  const std::vector<double> expected = {0.25, 0.0,    -0.25,  0.0,  -0.5,    // side 1-2
                                        0.1,  0.225,  0.425,  0.3,  0.175,   // side 2-3
                                        -0.3, -0.225, -0.175, 0.1,  -0.425,  // side 3-4
                                        -0.1, 0.3,    0.35,   -0.2, 0.1};    // side 4-1
  EXPECT_CLOSE(side_coefficients(), expected, 1.0, 8);
}

TEST(QuadrilateralGeometry, WithoutSidesKeepsThoseOfThePreviousElement) {
  const prepared_quadrilateral first(plane_quadrilateral());
  const std::vector<double> kept = side_coefficients();
  const prepared_quadrilateral second(rectangle(2.0, 7.0));
  EXPECT_NE(side_coefficients(), kept);
  QUAD_GEOMETRY(first.local, 0, QUAD);
  QUAD_GEOMETRY(second.local, 1, QUAD);
  EXPECT_EQ(side_coefficients(), kept);
  EXPECT_EQ(QUAD.QX12, -2.0);
  for (const int mode : {0, 2, -1}) {
    QUAD_GEOMETRY(first.local, 1, QUAD);
    QUAD_GEOMETRY(second.local, mode, QUAD);
    EXPECT_NE(side_coefficients(), kept) << mode;
    QUAD_GEOMETRY(first.local, 0, QUAD);
  }
}

TEST(QuadrilateralJacobian, IsThatOfTheBilinearMap) {
  seeded_random random(402);
  for (int trial = 0; trial < 100; ++trial) {
    const prepared_quadrilateral q(support::random_quadrilateral(random));
    const double xi = random.uniform(-1.0, 1.0), eta = random.uniform(-1.0, 1.0);
    const QUAD_POINT J = QUAD_JACOBIAN(QUAD, xi, eta);
    const matrix2 expected = shell_reference::jacobian(q.flat(), xi, eta), inverse = expected.inverse();
    EXPECT_CLOSE(J.DET, static_cast<double>(expected.determinant()), 1.0, 16);
    EXPECT_CLOSE((std::vector<double>{J.G11, J.G21, J.G12, J.G22}), listed(inverse), largest(inverse), 64);
  }
}

TEST(QuadrilateralJacobian, ClosedFormIsThatOfTheIntegrationRule) {
  seeded_random random(403);
  for (int trial = 0; trial < 50; ++trial) {
    const prepared_quadrilateral q(support::random_quadrilateral(random));
    for (const std::int32_t rule : {1, 2, 3}) {
      for (std::int32_t p = 1; p <= (rule == 2 ? 1 : 4); ++p) {
        const SURFACE_POINT s = surface_point(rule, p, 4, q.local.data());
        const QUAD_POINT J = QUAD_JACOBIAN(QUAD, s.xi, s.eta);
        const double scale = std::fabs(s.g11) + std::fabs(s.g22);
        EXPECT_CLOSE(J.DET, s.detj, 1.0, 16);
        EXPECT_CLOSE((std::vector<double>{J.G11, J.G12, J.G21, J.G22}),
                     (std::vector<double>{s.g11, s.g12, s.g21, s.g22}), scale, 64);
      }
    }
  }
}

TEST(QuadrilateralJacobian, OfARectangleIsConstant) {
  const prepared_quadrilateral q(rectangle(3.0, 5.0));
  EXPECT_EQ(QUAD.QJ1, 0.0);
  EXPECT_EQ(QUAD.QJ2, 0.0);
  for (const double at : {-1.0, 0.25, 1.0}) {
    const QUAD_POINT J = QUAD_JACOBIAN(QUAD, at, -at);
    EXPECT_CLOSE((std::vector<double>{J.DET, J.G11, J.G12, J.G21, J.G22}),
                 (std::vector<double>{15.0 / 4.0, 2.0 / 3.0, 0.0, 0.0, 2.0 / 5.0}), 1.0, 8);
  }
}
