// side_constants_test.cpp: directions, determinants, flexibility ratios and side matrix of the thick triangle.
#include "shells/triangle/thick/side_constants.h"

#include <cmath>

#include "comparison.h"
#include "element_call.h"
#include "element_stores.h"
#include "prepared_triangle.h"
#include "shells/common/side_section.h"
#include "thick_sections.h"

using shell_reference::column;
using shell_reference::largest;
using shell_reference::listed;
using shell_reference::matrix;
using support::seeded_random;
using support::values;

namespace {

std::vector<double> sides_of(const TRIANGLE_SIDES& s) {
  std::vector<double> all;
  for (int k = 1; k <= 3; ++k) all.insert(all.end(), {s.C(k), s.S(k), s.D(k), s.PHI(k)});
  return all;
}

std::vector<double> sides_of(const PLATEELEM_RECORD& P) {
  std::vector<double> all;
  for (int k = 1; k <= 3; ++k) all.insert(all.end(), {P.SIDE_C(k), P.SIDE_S(k), P.SIDE_DET(k), P.SIDE_PHI(k)});
  return all;
}

}  // namespace

TEST(TriangleSides, ByHand) {
  // Sides (5, 0), (-3, 3), (-2, -3) of lengths 5, sqrt(18), sqrt(13). h 0.5, nu 0.25, modifiers 0.6 and 0.3: the ratio
  // of modifiers is 2 and phi L^2 = 2 x 2 x 0.25 / (5/6 x 0.75) = 1.6.
  const prepared_triangle t({{0, 0, 0}, {5, 0, 0}, {2, 3, 0}});
  PLATEELEM.THICKNESS = 0.5;
  PLATEELEM.NU1 = 0.25;
  ELEM_LOADS LOADS{};
  LOADS(LOAD_MOD_BENDING) = 0.6;
  LOADS(LOAD_MOD_SHEAR) = 0.3;
  TRI_SIDES = SIDE_CONST_TRI_ISO(PLATEELEM, TRI, LOADS);
  const double r18 = std::sqrt(18.0), r13 = std::sqrt(13.0);
  const double C[3] = {1.0, -3.0 / r18, -2.0 / r13}, S[3] = {0.0, 3.0 / r18, -3.0 / r13};
  const double phi[3] = {1.6 / 25.0, 1.6 / 18.0, 1.6 / 13.0};
  const std::vector<double> expected = {C[0], S[0], C[0] * S[2] - C[2] * S[0], phi[0],   // 1 with 3
                                        C[1], S[1], C[1] * S[0] - C[0] * S[1], phi[1],   // 2 with 1
                                        C[2], S[2], C[2] * S[1] - C[1] * S[2], phi[2]};  // 3 with 2
  EXPECT_CLOSE(sides_of(TRI_SIDES), expected, 1.0, 16);
  const double x[3] = {5, -3, -2}, y[3] = {0, 3, -3}, L[3] = {5.0, r18, r13};
  MATRIX<3, 9> A{};
  for (int k = 1; k <= 3; ++k) {
    const double d = 1.5 / (L[k - 1] * (phi[k - 1] + 1.0));
    const int i = 3 * (k - 1), j = 3 * (k % 3);
    A(k, i + 1) = d;
    A(k, j + 1) = -d;
    A(k, i + 2) = A(k, j + 2) = -x[k - 1] / 2.0 * d;
    A(k, i + 3) = A(k, j + 3) = -y[k - 1] / 2.0 * d;
  }
  EXPECT_CLOSE(values(TRI_SIDES.A_DELTA.data(), 27), values(A.data(), 27), 1.0, 16);
}

TEST(TriangleSides, KeepTheFifteenDigitsOfTheShearFactor) {
  // 2 h^2 / (kappa (1 - nu) L^2) with h, L 1 and nu 0: the literal gives 2 / 0.833333333333333, not 2.4.
  const prepared_triangle t({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}});
  PLATEELEM.THICKNESS = 1.0;
  ELEM_LOADS LOADS{};
  LOADS(LOAD_MOD_BENDING) = LOADS(LOAD_MOD_SHEAR) = 1.0;
  TRI_SIDES = SIDE_CONST_TRI_ISO(PLATEELEM, TRI, LOADS);
  EXPECT_CLOSE(TRI_SIDES.PHI(1), 2.0 / 0.833333333333333, 2.4, 1);
  EXPECT_GT(TRI_SIDES.PHI(1), 2.4 * (1.0 + 3e-16));
}

TEST(TriangleSides, WithoutShearModifierKeepTheRatioOfAPlainSection) {
  // Not above 0: 0, a negative one and what is not a number.
  const prepared_triangle t({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}});
  PLATEELEM.THICKNESS = 0.1;
  PLATEELEM.NU1 = 0.3;
  const double plain = 2.0 * 0.01 / (0.833333333333333 * 0.7);
  for (const double shear : {0.0, -0.5, std::nan("")}) {
    ELEM_LOADS LOADS{};
    LOADS(LOAD_MOD_BENDING) = 0.4;
    LOADS(LOAD_MOD_SHEAR) = shear;
    TRI_SIDES = SIDE_CONST_TRI_ISO(PLATEELEM, TRI, LOADS);
    EXPECT_CLOSE(TRI_SIDES.PHI(1), plain, plain, 8) << shear;
    EXPECT_CLOSE(TRI_SIDES.PHI(2), plain / 2.0, plain, 8) << shear;
  }
}

TEST(TriangleSides, IsotropicFormLeavesTheScratchRecordAlone) {
  seeded_random random(501);
  const prepared_triangle t(support::random_triangle(random));
  PLATEELEM.THICKNESS = 0.1;
  for (double& entry : PLATEELEM.A_DELTA.V) entry = 7.0;
  for (int k = 1; k <= 4; ++k)
    PLATEELEM.SIDE_C(k) = PLATEELEM.SIDE_S(k) = PLATEELEM.SIDE_PHI(k) = PLATEELEM.SIDE_DET(k) = 7.0;
  ELEM_LOADS LOADS{};
  LOADS(LOAD_MOD_BENDING) = LOADS(LOAD_MOD_SHEAR) = 1.0;
  TRI_SIDES = SIDE_CONST_TRI_ISO(PLATEELEM, TRI, LOADS);
  EXPECT_EQ(values(PLATEELEM.A_DELTA.data(), 48), std::vector<double>(48, 7.0));
  EXPECT_EQ(sides_of(PLATEELEM), std::vector<double>(12, 7.0));
}

TEST(TriangleSides, IsotropicAndGeneralFormsAgree) {
  seeded_random random(502);
  for (int trial = 0; trial < 50; ++trial) {
    const prepared_triangle t(support::random_triangle(random));
    ELEM_LOADS LOADS{};
    set_isotropic(random, LOADS);
    SIDE_CONST_TRI(PLATEELEM);
    TRI_SIDES = SIDE_CONST_TRI_ISO(PLATEELEM, TRI, LOADS);
    EXPECT_CLOSE(sides_of(PLATEELEM), sides_of(TRI_SIDES), 1.0, 100);
    const std::vector<double> A = values(TRI_SIDES.A_DELTA.data(), 27);
    EXPECT_CLOSE(values(PLATEELEM.A_DELTA.data(), 27), A, support::max_norm(A), 100);
  }
}

TEST(TriangleSides, GeneralFormTakesTheSectionInTheAxesOfTheSide) {
  // Sections without any symmetry: the twisting moment and the shear across the side have their part.
  seeded_random random(503);
  for (int trial = 0; trial < 50; ++trial) {
    const prepared_triangle t(support::random_triangle(random));
    shell_reference::section s;
    set_random_section(random, s);
    SIDE_CONST_TRI(PLATEELEM);
    const column phi = shell_reference::ratios(t.flat(), s);
    EXPECT_CLOSE(values(PLATEELEM.SIDE_PHI.data(), 3), listed(phi), largest(phi), 200);
    const matrix beta = beta_basis(shell_reference::side_increments(t.flat(), phi));
    EXPECT_CLOSE(values(PLATEELEM.A_DELTA.data(), 27), listed(beta), largest(beta), 200);
  }
}

TEST(TriangleSides, RatioByHandOfTwoMaterials) {
  // Side 1 along x: bending stiffness along it D11, shear G13; side 3 of a right triangle along y: D22 and G23.
  const prepared_triangle t({{0, 0, 0}, {2, 0, 0}, {0, 3, 0}});
  PLATEELEM.D_BENDING = {{5.0, 1.0, 0.0, 1.0, 7.0, 0.0, 0.0, 0.0, 2.0}};
  PLATEELEM.D_SHEAR = {{11.0, 0.0, 0.0, 13.0}};
  SIDE_CONST_TRI(PLATEELEM);
  EXPECT_CLOSE(PLATEELEM.SIDE_PHI(1), 12.0 / 4.0 * 5.0 / 11.0, 1.0, 8);
  EXPECT_CLOSE(PLATEELEM.SIDE_PHI(3), 12.0 / 9.0 * 7.0 / 13.0, 1.0, 8);
}

TEST(TriangleSides, SectionOfASideIsThatOfItsNormalAndItsTangent) {
  // R turns strains: (a^2, b^2, -a b; b^2, a^2, a b; 2 a b, -2 a b, a^2 - b^2) with the normal (a, b) = (S, -C).
  MATRIX<3, 3> R;
  MATRIX<2, 2> R2;
  SIDE_ROT_SECTION(0.6, 0.8, R, R2);
  EXPECT_CLOSE(values(R.data(), 9), (std::vector<double>{0.64, 0.36, -0.96, 0.36, 0.64, 0.96, 0.48, -0.48, 0.28}), 1.0,
               4);
  EXPECT_CLOSE(values(R2.data(), 4), (std::vector<double>{0.8, -0.6, 0.6, 0.8}), 1.0, 1);
}

TEST(TriangleSides, RigidMotionsHaveNoIncrement) {
  seeded_random random(504);
  for (int trial = 0; trial < 30; ++trial) {
    const prepared_triangle t(support::random_triangle(random));
    ELEM_LOADS LOADS{};
    set_isotropic(random, LOADS);
    TRI_SIDES = SIDE_CONST_TRI_ISO(PLATEELEM, TRI, LOADS);
    const std::vector<double> c = random.vector(3, 1.0);
    const column q = shell_reference::quadratic_deflection(t.flat(), {c[0], c[1], c[2], 0.0, 0.0, 0.0});
    for (int k = 1; k <= 3; ++k) {
      shell_reference::real dB = 0.0L;
      for (int n = 0; n < 3; ++n) {  // beta x = theta y, beta y = -theta x
        dB += TRI_SIDES.A_DELTA(k, 3 * n + 1) * q(3 * n) + TRI_SIDES.A_DELTA(k, 3 * n + 2) * q(3 * n + 2) -
              TRI_SIDES.A_DELTA(k, 3 * n + 3) * q(3 * n + 1);
      }
      EXPECT_CLOSE(static_cast<double>(dB), 0.0, 10.0, 32);
    }
  }
}

TEST(TriangleSides, ZeroSideAndZeroShearTravelOn) {
  const prepared_triangle line({{0, 0, 0}, {1, 0, 0}, {1, 0, 0}});
  PLATEELEM.D_BENDING = {{1.0, 0.0, 0.0, 0.0, 1.0, 0.0, 0.0, 0.0, 1.0}};
  PLATEELEM.D_SHEAR = {{1.0, 0.0, 0.0, 1.0}};
  SIDE_CONST_TRI(PLATEELEM);
  EXPECT_FALSE(std::isfinite(PLATEELEM.SIDE_PHI(2)));
  const prepared_triangle t({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}});
  PLATEELEM.D_BENDING = {{1.0, 0.0, 0.0, 0.0, 1.0, 0.0, 0.0, 0.0, 1.0}};
  SIDE_CONST_TRI(PLATEELEM);
  EXPECT_FALSE(std::isfinite(PLATEELEM.SIDE_PHI(1)));
}
