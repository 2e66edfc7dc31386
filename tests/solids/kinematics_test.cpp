// kinematics_test.cpp: determinant, inverse, Jacobian, strain and gradient matrices.
#include "solids/kinematics.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "comparison.h"
#include "reference_solid.h"
#include "solid_cases.h"

namespace {

using reference::real;
using solid_cases::random_place;
using support::point;
using support::seeded_random;

MATRIX<3, 3> diagonal(double a, double b, double c) { return {{a, 0, 0, 0, b, 0, 0, 0, c}}; }

MATRIX<3, 3> random_matrix(seeded_random& random) {
  MATRIX<3, 3> M;
  for (double& entry : M.V) entry = random.uniform(-1, 1);
  return M;
}

reference::tensor wide(const MATRIX<3, 3>& M) { return dense::widened(M.data(), 3, 3); }

// An element of any kind: its natural shape stretched, sheared a little and made uneven. Kind 23 and 24 have
// derivatives of their own: the Jacobian is formed with them.
reference::body uneven(seeded_random& random, int kind) {
  reference::body b{kind, reference::node_coordinates(kind), 1, 0, 1, 1};
  for (dense::index k = 0; k < b.XYZ.cols(); ++k) {
    for (dense::index i = 0; i < 3; ++i) b.XYZ(i, k) = static_cast<double>(b.XYZ(i, k)) + random.uniform(-0.05, 0.05);
  }
  return b;
}

SOLID_VECTORS packed(const reference::body& b) {
  SOLID_VECTORS XYZ{};
  const std::vector<double> values = reference::rounded(b.XYZ);
  std::copy(values.begin(), values.end(), XYZ.data());
  return XYZ;
}

// The Jacobian and gradients from the library's derivatives.
reference::tensor jacobian_of(const reference::body& b, const std::vector<double>& p) {
  const std::vector<double> DN = solid_cases::shape_derivatives(b.kind, p);
  return dense::widened(DN.data(), 3, b.XYZ.cols()) * b.XYZ.transpose();
}

reference::matrix gradients_of(const reference::body& b, const std::vector<double>& p) {
  const std::vector<double> DN = solid_cases::shape_derivatives(b.kind, p);
  return jacobian_of(b, p).inverse() * dense::widened(DN.data(), 3, b.XYZ.cols());
}

}  // namespace

TEST(SolidKinematics, Determinant) {
  seeded_random random(6121);
  for (int i = 0; i < 50; ++i) {
    const MATRIX<3, 3> M = random_matrix(random);
    double det = -55.0;
    std::int32_t ok = 1;
    DET3_DBL(M, det, ok);
    EXPECT_CLOSE(det, static_cast<double>(wide(M).determinant()), 1.0, 10);
    EXPECT_EQ(ok, 1);
  }
}

TEST(SolidKinematics, DeterminantBelowTheLimitClearsOk) {
  for (const double det : {0.0, -0.0, 9.9e-21, -9.9e-21, 1e-300}) {
    double actual = -55.0;
    std::int32_t ok = 1;
    DET3_DBL(diagonal(det, 1, 1), actual, ok);
    EXPECT_EQ(ok, 0) << det;
    EXPECT_EQ(actual, det);
  }
  constexpr double inf = std::numeric_limits<double>::infinity(), nan = std::numeric_limits<double>::quiet_NaN();
  for (const double det : {1e-20, -1e-20, 1.0, -1.0, inf, nan}) {  // there is no other test
    double actual = -55.0;
    std::int32_t ok = 1;
    DET3_DBL(diagonal(det, 1, 1), actual, ok);
    EXPECT_EQ(ok, 1) << det;
  }
}

TEST(SolidKinematics, DeterminantNeverSetsOk) {
  for (const std::int32_t before : {0, 7}) {
    double det = 0.0;
    std::int32_t ok = before;
    DET3_DBL(diagonal(1, 2, 3), det, ok);
    EXPECT_EQ(ok, before);
  }
}

TEST(SolidKinematics, Inverse) {
  seeded_random random(6122);
  for (int i = 0; i < 50; ++i) {
    MATRIX<3, 3> M = random_matrix(random);
    for (int d = 1; d <= 3; ++d) M(d, d) += i % 2 == 0 ? 3.0 : -3.0;  // negative determinants too
    MATRIX<3, 3> inverse = diagonal(-55, -55, -55);
    std::int32_t ok = 1;
    INV3_DBL(M, inverse, ok);
    EXPECT_EQ(ok, 1);
    EXPECT_CLOSE(std::vector<double>(inverse.V, inverse.V + 9), reference::rounded(wide(M).inverse()), 1.0, 10);
  }
}

TEST(SolidKinematics, InverseOfASingularMatrixIsZero) {
  for (const double det : {0.0, 9.9e-21}) {
    MATRIX<3, 3> inverse{{1, 2, 3, 4, 5, 6, 7, 8, 9}};
    std::int32_t ok = 1;
    INV3_DBL(diagonal(1, det, 1), inverse, ok);
    EXPECT_EQ(ok, 0);
    for (const double entry : inverse.V) EXPECT_EQ(entry, 0.0);
  }
}

// A parallelepiped: rows of the Jacobian are the halves of its edges.
TEST(SolidKinematics, JacobianHasANaturalDirectionARow) {
  const SOLID_VECTORS XYZ = solid_cases::coordinates(solid_cases::box(2.0, 6.0, 10.0).nodes);
  MATRIX<3, 3> J{};
  double det = 0.0;
  std::int32_t ok = -7;
  SOLID_JACOBIAN(0.3, -0.4, 0.5, 10, 8, XYZ, J, det, ok);
  EXPECT_EQ(ok, 1);
  EXPECT_CLOSE(std::vector<double>(J.V, J.V + 9), (std::vector<double>{1, 0, 0, 0, 3, 0, 0, 0, 5}), 5.0, 5);
  EXPECT_CLOSE(det, 15.0, 15.0, 5);

  SOLID_VECTORS sheared = XYZ;
  for (int k = 5; k <= 8; ++k) sheared(1, k) += 4.0;  // x grows with zeta
  SOLID_JACOBIAN(0.3, -0.4, 0.5, 10, 8, sheared, J, det, ok);
  EXPECT_CLOSE(J(3, 1), 2.0, 5.0, 5);
  EXPECT_CLOSE(J(1, 3), 0.0, 5.0, 5);
}

TEST(SolidKinematics, JacobianStrainAndGradientMatricesOfEveryKind) {
  seeded_random random(6123);
  for (const int kind : reference::kinds()) {
    const int n = reference::node_count(kind);
    int done = 0;
    for (int i = 0; i < 60 && done < 20; ++i) {
      const reference::body b = uneven(random, kind);
      const std::vector<double> p = random_place(random, kind);
      const reference::tensor expected = jacobian_of(b, p);
      const real scale = expected.cwiseAbs().maxCoeff();
      // Kinds 23 and 24 have places where their derivatives give next to no volume. Elsewhere the inverse makes of a
      // rounding error in J at most 6 scale^2 / (scale^3 / 20) of it twice over: some thousands, for the limits below.
      if (std::fabs(expected.determinant()) < 0.05L * scale * scale * scale) continue;
      ++done;
      SCOPED_TRACE(::testing::Message() << "kind " << kind);
      const SOLID_VECTORS XYZ = packed(b);
      MATRIX<3, 3> J{};
      double det = 0.0;
      std::int32_t ok = 0;
      SOLID_JACOBIAN(p[0], p[1], p[2], kind, n, XYZ, J, det, ok);
      EXPECT_EQ(ok, 1);
      EXPECT_CLOSE(std::vector<double>(J.V, J.V + 9), reference::rounded(expected), static_cast<double>(scale), 60);

      const reference::matrix g = gradients_of(b, p);
      MATRIX<6, SOLID_DOFS> B;
      MATRIX<9, SOLID_DOFS> G;
      std::fill_n(B.data(), 6 * SOLID_DOFS, -55.0);
      std::fill_n(G.data(), 9 * SOLID_DOFS, -55.0);
      std::int32_t ok_B = 0, ok_G = 0;
      SOLID_B_MATRIX(kind, p[0], p[1], p[2], n, XYZ, B, ok_B);
      SOLID_G_MATRIX(kind, p[0], p[1], p[2], n, XYZ, G, ok_G);
      EXPECT_EQ(ok_B, 1);
      EXPECT_EQ(ok_G, 1);
      std::vector<double> all_B = reference::rounded(reference::strain_matrix(g));
      std::vector<double> all_G = reference::rounded(reference::gradient_matrix(g));
      const double size = support::max_norm(all_B);
      all_B.resize(6 * SOLID_DOFS, -55.0);  // columns beyond the nodes stay
      all_G.resize(9 * SOLID_DOFS, -55.0);
      EXPECT_CLOSE(std::vector<double>(B.V, B.V + 6 * SOLID_DOFS), all_B, size, 3000);
      EXPECT_CLOSE(std::vector<double>(G.V, G.V + 9 * SOLID_DOFS), all_G, size, 3000);
    }
    EXPECT_GE(done, 10) << "kind " << kind;
  }
}

TEST(SolidKinematics, StrainsOfAUnitGradientByHand) {
  const support::solid_description d = solid_cases::box(2.0, 3.0, 5.0);
  const SOLID_VECTORS XYZ = solid_cases::coordinates(d.nodes);
  MATRIX<6, SOLID_DOFS> B;
  std::int32_t ok = 0;
  SOLID_B_MATRIX(10, 0.1, 0.2, -0.3, 8, XYZ, B, ok);
  // Component i grows along coordinate j: one strain of the six is 1.
  constexpr int row[3][3] = {{1, 4, 5}, {4, 2, 6}, {5, 6, 3}};
  for (std::size_t i = 0; i < 3; ++i) {
    for (std::size_t j = 0; j < 3; ++j) {
      std::array<point, 3> H{};
      H[i][j] = 1.0;
      const std::vector<double> u = solid_cases::linear_field(d, {}, H);
      std::vector<double> e(6, 0.0), expected(6, 0.0);
      for (int r = 1; r <= 6; ++r) {
        for (int c = 1; c <= 24; ++c)
          e[static_cast<std::size_t>(r - 1)] += B(r, c) * u[static_cast<std::size_t>(c - 1)];
      }
      expected[static_cast<std::size_t>(row[i][j] - 1)] = 1.0;
      EXPECT_CLOSE(e, expected, 1.0, 20) << i << " " << j;
    }
  }
}

TEST(SolidKinematics, ADegenerateBrickIsSingularAtItsPoint) {
  std::vector<point> nodes = solid_cases::box(1, 1, 1).nodes;
  nodes[3] = nodes[2];  // one edge of the first face and one of the last shrink to points
  nodes[7] = nodes[6];
  const SOLID_VECTORS XYZ = solid_cases::coordinates(nodes);
  MATRIX<3, 3> J;
  double det = 0.0;
  std::int32_t ok = 1;
  SOLID_JACOBIAN(0.0, 1.0, 0.0, 10, 8, XYZ, J, det, ok);
  EXPECT_EQ(ok, 0);
  EXPECT_EQ(det, 0.0);
  SOLID_JACOBIAN(0.0, 0.9, 0.0, 10, 8, XYZ, J, det, ok);
  EXPECT_EQ(ok, 1) << "set again at each point";
  MATRIX<6, SOLID_DOFS> B;
  MATRIX<9, SOLID_DOFS> G;
  std::int32_t ok_B = 1, ok_G = 1;
  SOLID_B_MATRIX(10, 0.0, 1.0, 0.0, 8, XYZ, B, ok_B);
  SOLID_G_MATRIX(10, 0.0, 1.0, 0.0, 8, XYZ, G, ok_G);
  EXPECT_EQ(ok_B, 0);
  EXPECT_EQ(ok_G, 0);
}

TEST(SolidKinematics, AMirroredNumberingHasANegativeDeterminant) {
  std::vector<point> nodes = solid_cases::box(2, 2, 2).nodes;
  std::swap_ranges(nodes.begin(), nodes.begin() + 4, nodes.begin() + 4);
  MATRIX<3, 3> J;
  double det = 0.0;
  std::int32_t ok = 0;
  SOLID_JACOBIAN(0.2, 0.1, 0.3, 10, 8, solid_cases::coordinates(nodes), J, det, ok);
  EXPECT_EQ(ok, 1);
  EXPECT_CLOSE(det, -1.0, 1.0, 5);
}
