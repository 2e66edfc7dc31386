// bending_test.cpp: the discrete Kirchhoff triangle: its sides by hand, its matrix at any point and with any inverse
// Jacobian, fields of constant curvature.
#include "shells/triangle/thin/bending.h"

#include "comparison.h"
#include "element_stores.h"
#include "prepared_triangle.h"

using shell_reference::largest;
using shell_reference::listed;
using shell_reference::matrix;
using shell_reference::quadratic_deflection;
using support::seeded_random;

namespace {

matrix stored_B(double xi, double eta) {
  MATRIX<3, 9> B;
  DKT_BMATRIX_STORED(TRI, xi, eta, B);
  return dense::widened(B.data(), 3, 9);
}

// At (0.3, 0.25), with an inverse Jacobian of the test's own.
matrix B_of(double g11, double g12, double g21, double g22) {
  MATRIX<3, 9> B;
  DKT_BMATRIX(TRI, 0.3, 0.25, g11, g12, g21, g22, B);
  return dense::widened(B.data(), 3, 9);
}

}  // namespace

TEST(KirchhoffTriangle, EdgeCoefficientsByHand) {
  // Side 2-3 is (-3, 3), of length squared 18; side 3-1 is (-2, -3), 13; side 1-2 is (5, 0).
  const prepared_triangle t(plane_triangle());
  const DKT_EDGES EDGES = DKT_EDGE_COEFFICIENTS(TRI);
  const std::vector<double> actual = {EDGES.P4, EDGES.P5, EDGES.P6, EDGES.Q4, EDGES.Q5,
                                      EDGES.R4, EDGES.R5, EDGES.T4, EDGES.T5};
  const std::vector<double> expected = {-1.0, -12.0 / 13.0, 6.0 / 5.0, -1.5,        18.0 / 13.0,
                                        1.5,  27.0 / 13.0,  1.0,       -18.0 / 13.0};
  EXPECT_CLOSE(actual, expected, 1.0, 4);
}

TEST(KirchhoffTriangle, CurvatureMatrixIsThatOfRotationsOnSixNodesAtAnyPoint) {
  seeded_random random(61);
  for (int trial = 0; trial < 100; ++trial) {
    const prepared_triangle t(support::random_triangle(random));
    const double xi = random.uniform(0.0, 1.0), eta = random.uniform(0.0, 1.0 - xi);
    const matrix expected = shell_reference::kirchhoff_B(t.flat(), xi, eta);
    EXPECT_CLOSE(listed(stored_B(xi, eta)), listed(expected), largest(expected), 64) << "trial " << trial;
  }
}

TEST(KirchhoffTriangle, TakesTheInverseJacobianOfItsCaller) {
  // The matrix is linear in the four entries: each alone gives its part, and the parts add up.
  seeded_random random(63);
  const prepared_triangle t(support::random_triangle(random));
  const matrix by_x = B_of(TRI.G11, 0.0, 0.0, 0.0), by_y = B_of(0.0, 0.0, TRI.G21, 0.0) + B_of(0.0, 0.0, 0.0, TRI.G22);
  EXPECT_CLOSE(listed(by_x + by_y), listed(stored_B(0.3, 0.25)), largest(by_x + by_y), 8);
  // g12 and g22 bring the same derivatives, of Hx and Hy by eta, to different rows; so do g11 and g21.
  const matrix g12 = B_of(0.0, 1.0, 0.0, 0.0), g22 = B_of(0.0, 0.0, 0.0, 1.0);
  const matrix g11 = B_of(1.0, 0.0, 0.0, 0.0), g21 = B_of(0.0, 0.0, 1.0, 0.0);
  EXPECT_EQ(listed(g12.row(0)), listed(g22.row(2)));
  EXPECT_EQ(listed(g12.row(2)), listed(g22.row(1)));
  EXPECT_EQ(listed(g11.row(0)), listed(g21.row(2)));
  EXPECT_EQ(listed(g11.row(2)), listed(g21.row(1)));
  EXPECT_EQ(g11.row(1).cwiseAbs().sum() + g12.row(1).cwiseAbs().sum(), 0.0L);
  EXPECT_EQ(g21.row(0).cwiseAbs().sum() + g22.row(0).cwiseAbs().sum(), 0.0L);
}

TEST(KirchhoffTriangle, QuadraticDeflectionHasItsConstantCurvature) {
  // w = x^2/2 gives (-1, 0, 0), w = y^2/2 gives (0, -1, 0), w = x y gives (0, 0, -2), at every point; a linear w none.
  seeded_random random(65);
  for (int trial = 0; trial < 30; ++trial) {
    const prepared_triangle t(support::random_triangle(random));
    const shell_reference::corners X = t.flat();
    for (int point = 0; point < 5; ++point) {
      const double xi = random.uniform(0.0, 1.0), eta = random.uniform(0.0, 1.0 - xi);
      const matrix B = stored_B(xi, eta);
      const double scale = largest(B);
      EXPECT_CLOSE(listed(B * quadratic_deflection(X, {1, -2, 3, 0, 0, 0})), std::vector<double>(3, 0.0), scale, 128);
      EXPECT_CLOSE(listed(B * quadratic_deflection(X, {0, 0, 0, 1, 0, 0})), (std::vector<double>{-1, 0, 0}), scale, 64);
      EXPECT_CLOSE(listed(B * quadratic_deflection(X, {0, 0, 0, 0, 1, 0})), (std::vector<double>{0, -1, 0}), scale, 64);
      EXPECT_CLOSE(listed(B * quadratic_deflection(X, {0, 0, 0, 0, 0, 1})), (std::vector<double>{0, 0, -2}), scale, 64);
    }
  }
}
