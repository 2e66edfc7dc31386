// side_constants_test.cpp: directions, flexibility ratios and side matrix of the thick quadrilateral.
#include "shells/quadrilateral/thick/side_constants.h"

#include <cmath>

#include "comparison.h"
#include "element_stores.h"
#include "prepared_quadrilateral.h"
#include "thick_sections.h"

using shell_reference::column;
using shell_reference::largest;
using shell_reference::listed;
using shell_reference::matrix;
using support::seeded_random;
using support::values;

namespace {

std::vector<double> sides_of(const QUADRILATERAL_SIDES& s) {
  std::vector<double> all;
  for (int k = 1; k <= 4; ++k) all.insert(all.end(), {s.C(k), s.S(k), s.PHI(k), s.LPHI(k)});
  return all;
}

std::vector<double> sides_of(const PLATEELEM_RECORD& P) {
  std::vector<double> all;
  for (int k = 1; k <= 4; ++k) all.insert(all.end(), {P.SIDE_C(k), P.SIDE_S(k), P.SIDE_PHI(k), P.SIDE_LPHI(k)});
  return all;
}

}  // namespace

TEST(QuadrilateralSides, ByHand) {
  // Sides (4, 0), (1, 3), (-3, 1), (-2, -4), of squares 16, 10, 10, 20. h 0.5, nu 0.25, modifiers 0.6 and 0.3: the
  // ratio of modifiers is 2 and phi L^2 = 2 x 2 x 0.25 / (5/6 x 0.75) = 1.6.
  const prepared_quadrilateral q(plane_quadrilateral());
  PLATEELEM.THICKNESS = 0.5;
  PLATEELEM.NU1 = 0.25;
  ELEM_LOADS LOADS{};
  LOADS(LOAD_MOD_BENDING) = 0.6;
  LOADS(LOAD_MOD_SHEAR) = 0.3;
  QUAD_SIDES = SIDE_CONST_QUAD_ISO(PLATEELEM, QUAD, LOADS);
  const double x[4] = {4, 1, -3, -2}, y[4] = {0, 3, 1, -4};
  std::vector<double> expected;
  MATRIX<4, 12> A{};
  for (int k = 1; k <= 4; ++k) {
    const double L = std::hypot(x[k - 1], y[k - 1]), phi = 1.6 / (L * L), d = 1.5 / (L * (phi + 1.0));
    expected.insert(expected.end(), {x[k - 1] / L, y[k - 1] / L, phi, L * phi});
    const int i = 3 * (k - 1), j = 3 * (k % 4);
    A(k, i + 1) = d;
    A(k, j + 1) = -d;
    A(k, i + 2) = A(k, j + 2) = -x[k - 1] / 2.0 * d;
    A(k, i + 3) = A(k, j + 3) = -y[k - 1] / 2.0 * d;
  }
  EXPECT_CLOSE(sides_of(QUAD_SIDES), expected, 1.0, 16);
  EXPECT_CLOSE(values(QUAD_SIDES.A_DELTA.data(), 48), values(A.data(), 48), 1.0, 16);
}

TEST(QuadrilateralSides, WithoutShearModifierKeepTheRatioOfAPlainSection) {
  // Not above 0: 0, a negative one and what is not a number.
  const prepared_quadrilateral t({{0, 0, 0}, {1, 0, 0}, {1, 2, 0}, {0, 2, 0}});
  PLATEELEM.THICKNESS = 0.1;
  PLATEELEM.NU1 = 0.3;
  const double plain = 2.0 * 0.01 / (0.833333333333333 * 0.7);
  for (const double shear : {0.0, -0.5, std::nan("")}) {
    ELEM_LOADS LOADS{};
    LOADS(LOAD_MOD_BENDING) = 0.4;
    LOADS(LOAD_MOD_SHEAR) = shear;
    QUAD_SIDES = SIDE_CONST_QUAD_ISO(PLATEELEM, QUAD, LOADS);
    EXPECT_CLOSE(QUAD_SIDES.PHI(1), plain, plain, 8) << shear;
    EXPECT_CLOSE(QUAD_SIDES.PHI(2), plain / 4.0, plain, 8) << shear;
  }
}

TEST(QuadrilateralSides, IsotropicFormLeavesTheScratchRecordAlone) {
  seeded_random random(501);
  const prepared_quadrilateral t(support::random_quadrilateral(random));
  PLATEELEM.THICKNESS = 0.1;
  for (double& entry : PLATEELEM.A_DELTA.V) entry = 7.0;
  for (int k = 1; k <= 4; ++k)
    PLATEELEM.SIDE_C(k) = PLATEELEM.SIDE_S(k) = PLATEELEM.SIDE_PHI(k) = PLATEELEM.SIDE_LPHI(k) = 7.0;
  ELEM_LOADS LOADS{};
  LOADS(LOAD_MOD_BENDING) = LOADS(LOAD_MOD_SHEAR) = 1.0;
  QUAD_SIDES = SIDE_CONST_QUAD_ISO(PLATEELEM, QUAD, LOADS);
  EXPECT_EQ(values(PLATEELEM.A_DELTA.data(), 48), std::vector<double>(48, 7.0));
  EXPECT_EQ(sides_of(PLATEELEM), std::vector<double>(16, 7.0));
}

TEST(QuadrilateralSides, IsotropicAndGeneralFormsAgree) {
  seeded_random random(502);
  for (int trial = 0; trial < 50; ++trial) {
    const prepared_quadrilateral t(support::random_quadrilateral(random));
    ELEM_LOADS LOADS{};
    set_isotropic(random, LOADS);
    SIDE_CONST_QUAD(PLATEELEM);
    QUAD_SIDES = SIDE_CONST_QUAD_ISO(PLATEELEM, QUAD, LOADS);
    EXPECT_CLOSE(sides_of(PLATEELEM), sides_of(QUAD_SIDES), 1.0, 100);
    const std::vector<double> A = values(QUAD_SIDES.A_DELTA.data(), 48);
    EXPECT_CLOSE(values(PLATEELEM.A_DELTA.data(), 48), A, support::max_norm(A), 100);
  }
}

TEST(QuadrilateralSides, GeneralFormTakesTheSectionInTheAxesOfTheSide) {
  // Sections without any symmetry: the twisting moment and the shear across the side have their part.
  seeded_random random(503);
  for (int trial = 0; trial < 50; ++trial) {
    const prepared_quadrilateral t(support::random_quadrilateral(random));
    shell_reference::section s;
    set_random_section(random, s);
    SIDE_CONST_QUAD(PLATEELEM);
    const column phi = shell_reference::ratios(t.flat(), s);
    EXPECT_CLOSE(values(PLATEELEM.SIDE_PHI.data(), 4), listed(phi), largest(phi), 200);
    const matrix beta = beta_basis(shell_reference::side_increments(t.flat(), phi));
    EXPECT_CLOSE(values(PLATEELEM.A_DELTA.data(), 48), listed(beta), largest(beta), 200);
  }
}

TEST(QuadrilateralSides, RatioByHandOfTwoMaterials) {
  // Sides 1 and 3 along x: bending stiffness along them D11, shear G13; sides 2 and 4 along y: D22 and G23.
  const prepared_quadrilateral t(rectangle(2.0, 3.0));
  PLATEELEM.D_BENDING = {{5.0, 1.0, 0.0, 1.0, 7.0, 0.0, 0.0, 0.0, 2.0}};
  PLATEELEM.D_SHEAR = {{11.0, 0.0, 0.0, 13.0}};
  SIDE_CONST_QUAD(PLATEELEM);
  const double along_x = 12.0 / 4.0 * 5.0 / 11.0, along_y = 12.0 / 9.0 * 7.0 / 13.0;
  EXPECT_CLOSE(values(PLATEELEM.SIDE_PHI.data(), 4), (std::vector<double>{along_x, along_y, along_x, along_y}), 1.0, 8);
  EXPECT_CLOSE(values(PLATEELEM.SIDE_LPHI.data(), 4),
               (std::vector<double>{2.0 * along_x, 3.0 * along_y, 2.0 * along_x, 3.0 * along_y}), 1.0, 8);
}

TEST(QuadrilateralSides, RigidMotionsHaveNoIncrement) {
  seeded_random random(504);
  for (int trial = 0; trial < 30; ++trial) {
    const prepared_quadrilateral t(support::random_quadrilateral(random));
    ELEM_LOADS LOADS{};
    set_isotropic(random, LOADS);
    QUAD_SIDES = SIDE_CONST_QUAD_ISO(PLATEELEM, QUAD, LOADS);
    const std::vector<double> c = random.vector(3, 1.0);
    const column q = shell_reference::quadratic_deflection(t.flat(), {c[0], c[1], c[2], 0.0, 0.0, 0.0});
    for (int k = 1; k <= 4; ++k) {
      shell_reference::real dB = 0.0L;
      for (int n = 0; n < 4; ++n) {  // beta x = theta y, beta y = -theta x
        dB += QUAD_SIDES.A_DELTA(k, 3 * n + 1) * q(3 * n) + QUAD_SIDES.A_DELTA(k, 3 * n + 2) * q(3 * n + 2) -
              QUAD_SIDES.A_DELTA(k, 3 * n + 3) * q(3 * n + 1);
      }
      EXPECT_CLOSE(static_cast<double>(dB), 0.0, 10.0, 32);
    }
  }
}

TEST(QuadrilateralSides, ZeroSideAndZeroShearTravelOn) {
  const prepared_quadrilateral line({{0, 0, 0}, {1, 0, 0}, {1, 0, 0}, {0, 1, 0}});
  PLATEELEM.D_BENDING = {{1.0, 0.0, 0.0, 0.0, 1.0, 0.0, 0.0, 0.0, 1.0}};
  PLATEELEM.D_SHEAR = {{1.0, 0.0, 0.0, 1.0}};
  SIDE_CONST_QUAD(PLATEELEM);
  EXPECT_FALSE(std::isfinite(PLATEELEM.SIDE_PHI(2)));
  const prepared_quadrilateral t({{0, 0, 0}, {1, 0, 0}, {1, 2, 0}, {0, 2, 0}});
  PLATEELEM.D_BENDING = {{1.0, 0.0, 0.0, 0.0, 1.0, 0.0, 0.0, 0.0, 1.0}};
  SIDE_CONST_QUAD(PLATEELEM);
  EXPECT_FALSE(std::isfinite(PLATEELEM.SIDE_PHI(1)));
}
