// bending_test.cpp: the discrete Kirchhoff quadrilateral against rotations built from their conditions on the sides,
// against fields of constant curvature and by numerical differentiation.
#include "shells/quadrilateral/thin/bending.h"

#include "comparison.h"
#include "prepared_quadrilateral.h"
#include "shells/quadrilateral/rotations.h"

#include "element_stores.h"

using shell_reference::corners;
using shell_reference::largest;
using shell_reference::listed;
using shell_reference::matrix;
using shell_reference::quadratic_deflection;
using support::seeded_random;
using support::values;

namespace {

matrix wide_of(const MATRIX<3, 12>& B) { return dense::widened(B.data(), 3, 12); }

matrix stored_B(double xi, double eta) {
  MATRIX<3, 12> B;
  const QUAD_POINT J = QUAD_JACOBIAN(QUAD, xi, eta);
  DKQ_BMATRIX_STORED(QUAD, J, xi, eta, B);
  return wide_of(B);
}

// At (0.3, -0.55), with an inverse Jacobian of the test's own.
matrix B_of(double g11, double g12, double g21, double g22) {
  MATRIX<3, 12> B;
  DKQ_BMATRIX(QUAD, 0.3, -0.55, g11, g12, g21, g22, B);
  return wide_of(B);
}

}  // namespace

TEST(KirchhoffQuadrilateral, SerendipityDerivatives) {
  // At the eight nodes a function is 1 at its own; central differences over them and over random points: the
  // derivative of a function that is quadratic in either coordinate is exact over any step.
  const auto N = [](int i, double a, double b) {
    const double sign_xi[4] = {-1, 1, 1, -1}, sign_eta[4] = {-1, -1, 1, 1};
    if (i < 4) return (1 + sign_xi[i] * a) * (1 + sign_eta[i] * b) * (sign_xi[i] * a + sign_eta[i] * b - 1) / 4;
    if (i == 4 || i == 6) return (1 - a * a) * (i == 4 ? 1 - b : 1 + b) / 2;
    return (1 - b * b) * (i == 5 ? 1 + a : 1 - a) / 2;
  };
  seeded_random random(411);
  for (int trial = 0; trial < 20; ++trial) {
    const double xi = random.uniform(-1.0, 1.0), eta = random.uniform(-1.0, 1.0);
    const DKQ_DERIVATIVES NS = DKQ_SHAPE_DERIVS(xi, eta);
    for (int i = 1; i <= 8; ++i) {
      EXPECT_CLOSE(NS.XI(i), N(i - 1, xi + 0.5, eta) - N(i - 1, xi - 0.5, eta), 1.0, 16) << i;
      EXPECT_CLOSE(NS.ETA(i), N(i - 1, xi, eta + 0.5) - N(i - 1, xi, eta - 0.5), 1.0, 16) << i;
    }
  }
}

TEST(KirchhoffQuadrilateral, CurvatureMatrixIsThatOfItsSideConditions) {
  seeded_random random(412);
  for (int trial = 0; trial < 100; ++trial) {
    const prepared_quadrilateral q(support::random_quadrilateral(random));
    const double xi = random.uniform(-1.0, 1.0), eta = random.uniform(-1.0, 1.0);
    const matrix expected = shell_reference::kirchhoff_B(q.flat(), xi, eta);
    EXPECT_CLOSE(listed(stored_B(xi, eta)), listed(expected), largest(expected), 64) << "trial " << trial;
  }
}

TEST(KirchhoffQuadrilateral, RotationsAreThoseOfTheSideConditions) {
  seeded_random random(413);
  for (int trial = 0; trial < 100; ++trial) {
    const prepared_quadrilateral q(support::random_quadrilateral(random));
    const double xi = random.uniform(-1.0, 1.0), eta = random.uniform(-1.0, 1.0);
    VECTOR<12> Hx, Hy;
    DKQ_ROTATIONS(QUAD, xi, eta, Hx, Hy);
    const matrix expected = shell_reference::kirchhoff_rotations(q.flat(), xi, eta);
    EXPECT_CLOSE(values(Hx.data(), 12), listed(expected.row(0)), largest(expected), 32) << "trial " << trial;
    EXPECT_CLOSE(values(Hy.data(), 12), listed(expected.row(1)), largest(expected), 32) << "trial " << trial;
  }
}

TEST(KirchhoffQuadrilateral, RotationsAtTheNodesAreTheNodes) {
  const prepared_quadrilateral q(plane_quadrilateral());
  const double at[4][2] = {{-1, -1}, {1, -1}, {1, 1}, {-1, 1}};
  for (int n = 0; n < 4; ++n) {
    VECTOR<12> Hx, Hy;
    DKQ_ROTATIONS(QUAD, at[n][0], at[n][1], Hx, Hy);
    std::vector<double> beta_x(12, 0.0), beta_y(12, 0.0);
    beta_x[static_cast<std::size_t>(3 * n + 2)] = 1.0;   // theta y
    beta_y[static_cast<std::size_t>(3 * n + 1)] = -1.0;  // minus theta x
    EXPECT_CLOSE(values(Hx.data(), 12), beta_x, 1.0, 4);
    EXPECT_CLOSE(values(Hy.data(), 12), beta_y, 1.0, 4);
  }
}

TEST(KirchhoffQuadrilateral, CurvaturesAreTheDerivativesOfTheRotations) {
  // Both come from the library: by differences over half a unit, exact for quadratics.
  seeded_random random(414);
  for (int trial = 0; trial < 20; ++trial) {
    const prepared_quadrilateral q(support::random_quadrilateral(random));
    const double xi = random.uniform(-1.0, 1.0), eta = random.uniform(-1.0, 1.0);
    VECTOR<12> H[8];
    DKQ_ROTATIONS(QUAD, xi + 0.5, eta, H[0], H[1]);
    DKQ_ROTATIONS(QUAD, xi - 0.5, eta, H[2], H[3]);
    DKQ_ROTATIONS(QUAD, xi, eta + 0.5, H[4], H[5]);
    DKQ_ROTATIONS(QUAD, xi, eta - 0.5, H[6], H[7]);
    const QUAD_POINT J = QUAD_JACOBIAN(QUAD, xi, eta);
    std::vector<double> expected;
    for (int i = 1; i <= 12; ++i) {
      const double x_xi = H[0](i) - H[2](i), y_xi = H[1](i) - H[3](i), x_eta = H[4](i) - H[6](i),
                   y_eta = H[5](i) - H[7](i);
      expected.push_back(J.G11 * x_xi + J.G12 * x_eta);
      expected.push_back(J.G21 * y_xi + J.G22 * y_eta);
      expected.push_back(J.G11 * y_xi + J.G12 * y_eta + J.G21 * x_xi + J.G22 * x_eta);
    }
    EXPECT_CLOSE(listed(stored_B(xi, eta)), expected, support::max_norm(expected), 64);
  }
}

TEST(KirchhoffQuadrilateral, TakesTheInverseJacobianOfItsCaller) {
  const prepared_quadrilateral q(plane_quadrilateral());
  const QUAD_POINT J = QUAD_JACOBIAN(QUAD, 0.3, -0.55);
  const matrix parts = B_of(J.G11, 0, 0, 0) + B_of(0, J.G12, 0, 0) + B_of(0, 0, J.G21, 0) + B_of(0, 0, 0, J.G22);
  EXPECT_CLOSE(listed(parts), listed(stored_B(0.3, -0.55)), largest(parts), 16);
  const matrix g11 = B_of(1, 0, 0, 0), g12 = B_of(0, 1, 0, 0), g21 = B_of(0, 0, 1, 0), g22 = B_of(0, 0, 0, 1);
  EXPECT_EQ(listed(g11.row(0)), listed(g21.row(2)));
  EXPECT_EQ(listed(g11.row(2)), listed(g21.row(1)));
  EXPECT_EQ(listed(g12.row(0)), listed(g22.row(2)));
  EXPECT_EQ(listed(g12.row(2)), listed(g22.row(1)));
  EXPECT_EQ(g11.row(1).cwiseAbs().sum() + g12.row(1).cwiseAbs().sum(), 0.0L);
  EXPECT_EQ(g21.row(0).cwiseAbs().sum() + g22.row(0).cwiseAbs().sum(), 0.0L);
}

TEST(KirchhoffQuadrilateral, LinearDeflectionHasNoCurvatureOnADistortedElement) {
  seeded_random random(415);
  for (int trial = 0; trial < 30; ++trial) {
    const prepared_quadrilateral q(support::random_quadrilateral(random));
    const std::vector<double> c = random.vector(3, 1.0);
    const matrix B = stored_B(random.uniform(-1.0, 1.0), random.uniform(-1.0, 1.0));
    const matrix k = B * quadratic_deflection(q.flat(), {c[0], c[1], c[2], 0.0, 0.0, 0.0});
    EXPECT_CLOSE(listed(k), std::vector<double>(3, 0.0), largest(B), 64);
  }
}

TEST(KirchhoffQuadrilateral, QuadraticDeflectionHasItsConstantCurvatureOnADistortedElement) {
  // w = x^2/2 gives (-1, 0, 0), w = y^2/2 gives (0, -1, 0), w = x y gives (0, 0, -2), at every point.
  seeded_random random(416);
  for (int trial = 0; trial < 30; ++trial) {
    const prepared_quadrilateral q(support::random_quadrilateral(random));
    for (int point = 0; point < 5; ++point) {
      const matrix B = stored_B(random.uniform(-1.0, 1.0), random.uniform(-1.0, 1.0));
      const double scale = largest(B);
      const corners X = q.flat();
      EXPECT_CLOSE(listed(B * quadratic_deflection(X, {0, 0, 0, 1, 0, 0})), (std::vector<double>{-1, 0, 0}), scale, 64);
      EXPECT_CLOSE(listed(B * quadratic_deflection(X, {0, 0, 0, 0, 1, 0})), (std::vector<double>{0, -1, 0}), scale, 64);
      EXPECT_CLOSE(listed(B * quadratic_deflection(X, {0, 0, 0, 0, 0, 1})), (std::vector<double>{0, 0, -2}), scale, 64);
    }
  }
}

TEST(KirchhoffQuadrilateral, IsIndependentOfTheOriginAndTheDirectionOfItsAxes) {
  // The same coefficients from coordinates that are neither about the centroid nor along side 1-2.
  seeded_random random(417);
  prepared_quadrilateral q(plane_quadrilateral());
  for (int n = 1; n <= 4; ++n) {
    const double x = q.local(1, n), y = q.local(2, n);
    q.local(1, n) = 0.6 * x - 0.8 * y + 7.0;
    q.local(2, n) = 0.8 * x + 0.6 * y - 5.0;
  }
  QUAD_GEOMETRY(q.local, 0, QUAD);
  const double xi = random.uniform(-1.0, 1.0), eta = random.uniform(-1.0, 1.0);
  const matrix expected = shell_reference::kirchhoff_B(q.flat(), xi, eta);
  EXPECT_CLOSE(listed(stored_B(xi, eta)), listed(expected), largest(expected), 64);
}
