<<<<<<< HEAD
// bending_test.cpp: the discrete Kirchhoff triangle: its sides by hand, its matrix at any point and with any inverse
// Jacobian, fields of constant curvature.
=======
// bending_test.cpp: the discrete Kirchhoff triangle against rotations built on six nodes, against fields of constant
// curvature and against numbers by hand.
#include "shells/triangle/point_pairs.h"
>>>>>>> 7ab4b2f (Tests of the short cuts against plain sums, of parts and of plastic tangents without symmetry)
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
<<<<<<< HEAD
=======

TEST(KirchhoffTriangle, FourPointRuleHasItsDigits) {
  EXPECT_EQ(TRI_RULE_COUNT, 4);
  long double sum = 0.0L;
  for (int p = 0; p < 4; ++p) {
    EXPECT_EQ(TRI_RULE_FOUR[p].xi, reference::FOUR_POINTS[p].xi);
    EXPECT_EQ(TRI_RULE_FOUR[p].eta, reference::FOUR_POINTS[p].eta);
    EXPECT_EQ(TRI_RULE_FOUR[p].weight, reference::FOUR_POINTS[p].weight);
    sum += static_cast<long double>(TRI_RULE_FOUR[p].weight);
  }
  EXPECT_LT(TRI_RULE_FOUR[0].weight, 0.0);
  EXPECT_GT(sum, 0.5L + 0.9e-15L);
  EXPECT_LT(sum, 0.5L + 1.1e-15L);
}

TEST(KirchhoffStiffness, IsotropicFormIsTheIntegral) {
  seeded_random random(66);
  for (int trial = 0; trial < 40; ++trial) {
    const prepared_triangle t(support::random_triangle(random));
    set_distinct_constants(random);
    support::guarded_buffer K(45);
    TRI_KB_ISO(TRI, ISO, tri_pairs_iso(TRI), K.data());
    EXPECT_EQ(K.changed(), support::range(1, 45));
    const matrix expected = reference::bending_stiffness(t.flat(), bending_constants());
    EXPECT_CLOSE(values(K.data(), 45), packed_of(expected), reference::largest(expected), 64);
  }
}

TEST(KirchhoffStiffness, GeneralFormKeepsTheUpperTriangle) {
  seeded_random random(67);
  for (int trial = 0; trial < 40; ++trial) {
    const prepared_triangle t(support::random_triangle(random));
    PLATEELEM.D_BENDING = unsymmetric_section(random);
    support::guarded_buffer K(45);
    TRI_KB_GENERAL(PLATEELEM, TRI, tri_pairs_general(PLATEELEM), K.data());
    EXPECT_EQ(K.changed(), support::range(1, 45));
    const matrix expected = reference::bending_stiffness(t.flat(), wide(PLATEELEM.D_BENDING));
    EXPECT_CLOSE(values(K.data(), 45), packed_of(expected), reference::largest(expected), 64);
    const matrix lower = expected.transpose();
    EXPECT_GT(support::max_norm(packed_of(lower - expected)), 0.01);
  }
}

TEST(KirchhoffStiffness, FormsAgreeForTheSameSection) {
  seeded_random random(68);
  for (int trial = 0; trial < 20; ++trial) {
    const prepared_triangle t(support::random_triangle(random));
    set_distinct_constants(random);
    PLATEELEM.D_BENDING = {{ISO.DB11, ISO.DB12, 0.0, ISO.DB12, ISO.DB22, 0.0, 0.0, 0.0, ISO.DB33}};
    std::vector<double> closed(45), general(45);
    TRI_KB_ISO(TRI, ISO, tri_pairs_iso(TRI), closed.data());
    TRI_KB_GENERAL(PLATEELEM, TRI, tri_pairs_general(PLATEELEM), general.data());
    EXPECT_CLOSE(closed, general, support::max_norm(general), 64);
  }
}

TEST(KirchhoffStiffness, EnergyOfConstantCurvatureByHand) {
  // On a triangle of area 7.5: u K u is the area times the entry of the section that the curvature calls.
  const prepared_triangle t(plane_triangle(5.0, 2.0, 3.0));
  ISO = ISOTROPIC_SECTION{};
  ISO.DB11 = 2.0;
  ISO.DB12 = 0.5;
  ISO.DB22 = 3.0;
  ISO.DB33 = 0.7;
  std::vector<double> packed(45);
  TRI_KB_ISO(TRI, ISO, tri_pairs_iso(TRI), packed.data());
  const matrix K = full_of(9, packed.data());
  const reference::column xx = quadratic_deflection(t.flat(), {0, 0, 0, 1, 0, 0});
  const reference::column yy = quadratic_deflection(t.flat(), {0, 0, 0, 0, 1, 0});
  const reference::column xy = quadratic_deflection(t.flat(), {0, 0, 0, 0, 0, 1});
  EXPECT_CLOSE(listed(xx.transpose() * K * xx), std::vector<double>{7.5 * 2.0}, 15.0, 256);
  EXPECT_CLOSE(listed(yy.transpose() * K * yy), std::vector<double>{7.5 * 3.0}, 15.0, 256);
  EXPECT_CLOSE(listed(xx.transpose() * K * yy), std::vector<double>{7.5 * 0.5}, 15.0, 256);
  EXPECT_CLOSE(listed(xy.transpose() * K * xy), std::vector<double>{7.5 * 4.0 * 0.7}, 15.0, 256);
}

TEST(KirchhoffStiffness, NoConstantsGiveFortyFiveZeros) {
  seeded_random random(69);
  const prepared_triangle t(support::random_triangle(random));
  ISO = ISOTROPIC_SECTION{};
  support::guarded_buffer K(45);
  TRI_KB_ISO(TRI, ISO, tri_pairs_iso(TRI), K.data());
  EXPECT_EQ(values(K.data(), 45), std::vector<double>(45, 0.0));
  EXPECT_EQ(K.changed(), support::range(1, 45));
}
>>>>>>> 7ab4b2f (Tests of the short cuts against plain sums, of parts and of plastic tangents without symmetry)
