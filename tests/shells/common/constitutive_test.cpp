// constitutive_test.cpp: section matrices against their formulas, with a different number for every quantity, and their
// rotation against the transformation of a stiffness tensor.
#include "shells/common/constitutive.h"

#include <cmath>
#include <limits>

#include "comparison.h"
#include "dense.h"
#include "element_stores.h"
#include "finites/records.h"

namespace {

using dense::matrix2;
using dense::matrix3;
using support::values;

constexpr double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();
constexpr double PI = 3.14159265358979323846;
constexpr double SINGLE = 1e-6;  // what the single-precision rotations leave

matrix3 wide(const MATRIX<3, 3>& D) { return dense::widened(D.data(), 3, 3); }
matrix2 wide(const MATRIX<2, 2>& D) { return dense::widened(D.data(), 2, 2); }

// E1 = 910 and nu = 0.3 make E / (1 - nu^2) = 1000.
ELEM_LOADS isotropic_section() {
  PLATEELEM = PLATEELEM_RECORD{};
  PLATEELEM.E1 = 910.0;
  PLATEELEM.NU1 = 0.3;
  PLATEELEM.THICKNESS = 0.2;
  ISO = {NOT_A_NUMBER, NOT_A_NUMBER, NOT_A_NUMBER, NOT_A_NUMBER, NOT_A_NUMBER,
         NOT_A_NUMBER, NOT_A_NUMBER, NOT_A_NUMBER, NOT_A_NUMBER, NOT_A_NUMBER};
  ELEM_LOADS LOADS{};
  LOADS(35) = 2.0;
  LOADS(36) = 3.0;
  LOADS(37) = 5.0;
  LOADS(38) = 7.0;
  return LOADS;
}

// Numbers without a common factor: an exchanged modulus, ratio, modifier or correction shows.
void general_section(float angle) {
  PLATEELEM = PLATEELEM_RECORD{};
  PLATEELEM_RECORD& P = PLATEELEM;
  P.E1 = 1009.0;
  P.E2 = 367.0;
  P.NU1 = 0.31;
  P.NU2 = 0.17;
  P.G12 = 131.0;
  P.G13 = 173.0;
  P.G23 = 193.0;
  P.THICKNESS = 0.7;
  P.MOD_MEMBRANE = {{2.0, 3.0, 5.0}};
  P.MOD_BENDING = {{7.0, 11.0, 13.0}};
  P.MOD_SHEAR = {{17.0, 19.0}};
  P.CLT_FACTOR_1 = 23.0;
  P.CLT_FACTOR_2 = 29.0;
  P.ORTHO_ANGLE = angle;
  for (MATRIX<3, 3>* D : {&P.D_MEMBRANE_TOTAL, &P.D_MEMBRANE_NORMAL, &P.D_MEMBRANE_SHEAR, &P.D_BENDING}) {
    for (double& entry : D->V) entry = NOT_A_NUMBER;
  }
  for (double& entry : P.D_SHEAR.V) entry = NOT_A_NUMBER;
}

constexpr double Q = 1.0 - 0.31 * 0.17;

// In material axes, with the in-plane shear entry.
matrix3 expected_membrane() {
  matrix3 D = matrix3::Zero();
  D(0, 0) = 2.0 * 0.7 * 1009.0 / Q;
  D(1, 0) = 2.0 * 0.7 * 1009.0 * 0.17 / Q;
  D(0, 1) = 3.0 * 0.7 * 367.0 * 0.31 / Q;
  D(1, 1) = 3.0 * 0.7 * 367.0 / Q;
  D(2, 2) = 5.0 * 0.7 * 131.0 * 29.0;
  return D;
}

matrix3 expected_bending() {
  const double c = 0.343 / 12.0;
  matrix3 D = matrix3::Zero();
  D(0, 0) = 7.0 * c * 1009.0 / Q;
  D(0, 1) = 11.0 * c * 1009.0 * 0.17 / Q;
  D(1, 0) = 7.0 * c * 367.0 * 0.31 / Q;
  D(1, 1) = 11.0 * c * 367.0 / Q;
  D(2, 2) = 13.0 * c * 131.0 * 23.0;
  return D;
}

matrix2 expected_shear() {
  matrix2 D = matrix2::Zero();
  D(0, 0) = 17.0 * 0.7 * 0.833333333333333 * 173.0;
  D(1, 1) = 19.0 * 0.7 * 0.833333333333333 * 193.0;
  return D;
}

// The stiffness tensor C_ijkl of a plane section matrix turned from axes at `angle` to the reference axes, written back
// as a matrix. sigma_ij = C_ijkl eps_kl; the shear column acts on 2 eps_12.
matrix3 turned_stiffness(const matrix3& D, double angle) {
  const int pair[2][2] = {{0, 2}, {2, 1}};
  const double c = std::cos(angle), s = std::sin(angle);
  const double a[2][2] = {{c, -s}, {s, c}};  // reference component by material component
  const int first[3] = {0, 1, 0}, second[3] = {0, 1, 1};
  matrix3 out = matrix3::Zero();
  for (int row = 0; row < 3; ++row) {
    for (int column = 0; column < 3; ++column) {
      const int i = first[row], j = second[row], k = first[column], l = second[column];
      for (int p = 0; p < 2; ++p) {
        for (int q = 0; q < 2; ++q) {
          for (int r = 0; r < 2; ++r) {
            for (int t = 0; t < 2; ++t) {
              out(row, column) += a[i][p] * a[j][q] * a[k][r] * a[l][t] * D(pair[p][q], pair[r][t]);
            }
          }
        }
      }
    }
  }
  return out;
}

}  // namespace

TEST(IsotropicSection, ConstantsByHand) {
  ISO = PLATE_D_ISOTROPIC(PLATEELEM, 0, isotropic_section());
  EXPECT_CLOSE(ISO.DM11, 400.0, 400.0, 4);
  EXPECT_CLOSE(ISO.DM12, 120.0, 120.0, 4);
  EXPECT_CLOSE(ISO.DM22, 400.0, 400.0, 4);
  EXPECT_CLOSE(ISO.DM33, 210.0, 210.0, 4);
  EXPECT_CLOSE(ISO.DB11, 10.0 / 3.0, 3.0, 6);
  EXPECT_CLOSE(ISO.DB12, 1.0, 1.0, 6);
  EXPECT_CLOSE(ISO.DB22, 10.0 / 3.0, 3.0, 6);
  EXPECT_CLOSE(ISO.DB33, 7.0 / 6.0, 1.0, 6);
  EXPECT_CLOSE(ISO.DS1, 490.0 * 0.833333333333333, 400.0, 4);
  EXPECT_CLOSE(ISO.DS2, 490.0 * 0.833333333333333, 400.0, 4);
}

TEST(IsotropicSection, MembraneOnlyHasNoBendingAndTheSameMembrane) {
  const ELEM_LOADS LOADS = isotropic_section();
  ISO = PLATE_D_ISOTROPIC(PLATEELEM, 0, LOADS);
  const ISOTROPIC_SECTION shell = ISO;
  isotropic_section();
  ISO = PLATE_D_ISOTROPIC(PLATEELEM, 1, LOADS);
  for (const double constant : {ISO.DB11, ISO.DB12, ISO.DB22, ISO.DB33, ISO.DS1, ISO.DS2}) EXPECT_EQ(constant, 0.0);
  EXPECT_EQ(ISO.DM11, shell.DM11);
  EXPECT_EQ(ISO.DM12, shell.DM12);
  EXPECT_EQ(ISO.DM22, shell.DM22);
  EXPECT_EQ(ISO.DM33, shell.DM33);
}

TEST(IsotropicSection, ShearFactorHasFifteenDigits) {
  ELEM_LOADS LOADS = isotropic_section();
  LOADS(38) = 1.0;
  PLATEELEM.E1 = 2.0;
  PLATEELEM.NU1 = 0.0;
  PLATEELEM.THICKNESS = 1.0;
  ISO = PLATE_D_ISOTROPIC(PLATEELEM, 0, LOADS);
  EXPECT_EQ(ISO.DS1, 0.833333333333333);
  EXPECT_NE(ISO.DS1, 5.0 / 6.0);
}

TEST(GeneralSection, ShearFactorHasFifteenDigits) {
  general_section(0.0F);
  PLATEELEM.THICKNESS = 1.0;
  PLATEELEM.MOD_SHEAR = {{1.0, 1.0}};
  PLATEELEM.G13 = 1.0;
  PLATEELEM.G23 = 4.0;
  PLATE_D_GENERAL(PLATEELEM, 0, 0);
  EXPECT_EQ(values(PLATEELEM.D_SHEAR.data(), 4),
            (std::vector<double>{0.833333333333333, 0.0, 0.0, 4.0 * 0.833333333333333}));
}

TEST(GeneralSection, EveryEntryInMaterialAxes) {
  general_section(0.0F);
  PLATE_D_GENERAL(PLATEELEM, 0, 0);
  const matrix3 Dm = expected_membrane(), Db = expected_bending();
  EXPECT_CLOSE(listed(wide(PLATEELEM.D_MEMBRANE_NORMAL)), listed(Dm), 1e3, 8);
  EXPECT_CLOSE(listed(wide(PLATEELEM.D_MEMBRANE_TOTAL)), listed(Dm), 1e3, 8);
  EXPECT_EQ(listed(wide(PLATEELEM.D_MEMBRANE_SHEAR)), std::vector<double>(9, 0.0));
  EXPECT_CLOSE(listed(wide(PLATEELEM.D_BENDING)), listed(Db), 1e3, 8);
  EXPECT_CLOSE(listed(wide(PLATEELEM.D_SHEAR)), listed(expected_shear()), 1e3, 8);
}

TEST(GeneralSection, BendingCouplingStandsInTheTransposedPlace) {
  // E1 nu2 and E2 nu1 differ: (1,2) of the membrane is E2 nu1, (1,2) of bending is E1 nu2, each with the modifier 2.
  general_section(0.0F);
  PLATE_D_GENERAL(PLATEELEM, 0, 0);
  const double bending = PLATEELEM.D_BENDING(1, 2) / PLATEELEM.D_BENDING(2, 2);
  const double membrane = PLATEELEM.D_MEMBRANE_NORMAL(1, 2) / PLATEELEM.D_MEMBRANE_NORMAL(2, 2);
  EXPECT_CLOSE(membrane, 0.31, 0.31, 4);
  EXPECT_CLOSE(bending, 1009.0 * 0.17 / 367.0, 0.5, 4);
}

TEST(GeneralSection, SplitShearMovesOneEntry) {
  general_section(0.0F);
  PLATE_D_GENERAL(PLATEELEM, 1, 0);
  matrix3 normal = expected_membrane();
  matrix3 shear = matrix3::Zero();
  std::swap(normal(2, 2), shear(2, 2));
  EXPECT_CLOSE(listed(wide(PLATEELEM.D_MEMBRANE_NORMAL)), listed(normal), 1e3, 8);
  EXPECT_CLOSE(listed(wide(PLATEELEM.D_MEMBRANE_SHEAR)), listed(shear), 1e3, 8);
  EXPECT_CLOSE(listed(wide(PLATEELEM.D_MEMBRANE_TOTAL)), listed(expected_membrane()), 1e3, 8);
  EXPECT_EQ(PLATEELEM.D_MEMBRANE_NORMAL(3, 3), 0.0);
}

TEST(GeneralSection, SplitPartsAddUpInTurnedAxes) {
  general_section(0.6F);
  PLATE_D_GENERAL(PLATEELEM, 0, 0);
  const matrix3 whole = wide(PLATEELEM.D_MEMBRANE_NORMAL);
  general_section(0.6F);
  PLATE_D_GENERAL(PLATEELEM, 1, 0);
  EXPECT_CLOSE(listed(wide(PLATEELEM.D_MEMBRANE_TOTAL)), listed(whole), dense::largest(whole), 16);
  EXPECT_GT(PLATEELEM.D_MEMBRANE_SHEAR(1, 1), 0.0);
}

TEST(GeneralSection, MembraneOnlyLeavesBendingAndShearZero) {
  general_section(0.4F);
  PLATE_D_GENERAL(PLATEELEM, 0, 0);
  const std::vector<double> membrane = listed(wide(PLATEELEM.D_MEMBRANE_NORMAL));
  general_section(0.4F);
  PLATE_D_GENERAL(PLATEELEM, 0, 1);
  EXPECT_EQ(listed(wide(PLATEELEM.D_MEMBRANE_NORMAL)), membrane);
  for (const double entry : PLATEELEM.D_BENDING.V) EXPECT_EQ(entry, 0.0);
  for (const double entry : PLATEELEM.D_SHEAR.V) EXPECT_EQ(entry, 0.0);
}

TEST(GeneralSection, EqualModuliAtAngleZeroAreIsotropic) {
  const ELEM_LOADS LOADS = isotropic_section();
  PLATEELEM.E2 = 910.0;
  PLATEELEM.NU2 = 0.3;
  PLATEELEM.G12 = PLATEELEM.G13 = PLATEELEM.G23 = 910.0 / 2.6;
  PLATEELEM.MOD_MEMBRANE = {{2.0, 2.0, 3.0}};
  PLATEELEM.MOD_BENDING = {{5.0, 5.0, 5.0}};
  PLATEELEM.MOD_SHEAR = {{7.0, 7.0}};
  PLATEELEM.CLT_FACTOR_1 = PLATEELEM.CLT_FACTOR_2 = 1.0;
  ISO = PLATE_D_ISOTROPIC(PLATEELEM, 0, LOADS);
  PLATE_D_GENERAL(PLATEELEM, 0, 0);
  const std::vector<double> membrane = {ISO.DM11, ISO.DM12, 0.0, ISO.DM12, ISO.DM22, 0.0, 0.0, 0.0, ISO.DM33};
  const std::vector<double> bending = {ISO.DB11, ISO.DB12, 0.0, ISO.DB12, ISO.DB22, 0.0, 0.0, 0.0, ISO.DB33};
  EXPECT_CLOSE(listed(wide(PLATEELEM.D_MEMBRANE_NORMAL)), membrane, 400.0, 8);
  EXPECT_CLOSE(listed(wide(PLATEELEM.D_BENDING)), bending, 4.0, 8);
  EXPECT_CLOSE(listed(wide(PLATEELEM.D_SHEAR)), (std::vector<double>{ISO.DS1, 0.0, 0.0, ISO.DS2}), 400.0, 8);
}

TEST(GeneralRotation, IsTheTensorTransformationToSinglePrecision) {
  for (const float angle : {0.35F, -1.1F, 2.6F}) {
    general_section(angle);
    PLATE_D_GENERAL(PLATEELEM, 0, 0);
    const double t = static_cast<double>(angle);
    const matrix3 Dm = turned_stiffness(expected_membrane(), t), Db = turned_stiffness(expected_bending(), t);
    EXPECT_WITHIN(listed(wide(PLATEELEM.D_MEMBRANE_NORMAL)), listed(Dm), dense::largest(Dm), SINGLE);
    EXPECT_WITHIN(listed(wide(PLATEELEM.D_BENDING)), listed(Db), dense::largest(Db), SINGLE);
    matrix2 R;
    R << std::cos(t), -std::sin(t), std::sin(t), std::cos(t);
    const matrix2 Ds = R * expected_shear() * R.transpose();
    EXPECT_WITHIN(listed(wide(PLATEELEM.D_SHEAR)), listed(Ds), dense::largest(Ds), SINGLE);
  }
}

TEST(GeneralRotation, IsTheProductWithItsMatricesToRounding) {
  general_section(0.83F);
  PLATE_D_GENERAL(PLATEELEM, 0, 0);
  const matrix3 T = wide(ROT_TENSOR_3(static_cast<double>(0.83F)));
  const matrix2 S = wide(ROT_SHEAR_2(static_cast<double>(0.83F)));
  const matrix3 Dm = T.transpose() * expected_membrane() * T, Db = T.transpose() * expected_bending() * T;
  const matrix2 Ds = S.transpose() * expected_shear() * S;
  EXPECT_CLOSE(listed(wide(PLATEELEM.D_MEMBRANE_NORMAL)), listed(Dm), 1e4, 16);
  EXPECT_CLOSE(listed(wide(PLATEELEM.D_BENDING)), listed(Db), 1e3, 16);
  EXPECT_CLOSE(listed(wide(PLATEELEM.D_SHEAR)), listed(Ds), 1e3, 16);
}

TEST(GeneralRotation, QuarterTurnExchangesTheDirections) {
  general_section(static_cast<float>(PI / 2.0));
  PLATE_D_GENERAL(PLATEELEM, 0, 0);
  const matrix3 Dm = expected_membrane(), Db = expected_bending();
  matrix3 swap;
  swap << 0, 1, 0, 1, 0, 0, 0, 0, 1;
  const matrix3 membrane = swap * Dm * swap, bending = swap * Db * swap;
  EXPECT_WITHIN(listed(wide(PLATEELEM.D_MEMBRANE_NORMAL)), listed(membrane), 1e4, SINGLE);
  EXPECT_WITHIN(listed(wide(PLATEELEM.D_BENDING)), listed(bending), 1e3, SINGLE);
  EXPECT_WITHIN(PLATEELEM.D_SHEAR(1, 1), listed(expected_shear())[3], 1e3, SINGLE);
  EXPECT_WITHIN(PLATEELEM.D_SHEAR(2, 2), listed(expected_shear())[0], 1e3, SINGLE);
}

TEST(RotationMatrices, TensorEntriesInTheirPrecision) {
  for (const double t : {0.7, -0.3, 1.9, 3.0}) {
    const float c = static_cast<float>(std::cos(t)), s = static_cast<float>(std::sin(t));
    const float cc = c * c, ss = s * s, cs = c * s;
    const float twice = 2.0F * cs, difference = cc - ss;
    const double wide = -2.0 * static_cast<double>(c) * static_cast<double>(s);
    const std::vector<double> columns = {
        static_cast<double>(cc), static_cast<double>(ss),  wide,                        // column 1
        static_cast<double>(ss), static_cast<double>(cc),  static_cast<double>(twice),  // column 2
        static_cast<double>(cs), -static_cast<double>(cs), static_cast<double>(difference)};
    EXPECT_EQ(values(ROT_TENSOR_3(t).data(), 9), columns);
    // One term in double, its mirror in single precision: they cancel to single precision only.
    EXPECT_NE(-wide, static_cast<double>(twice));
  }
}

TEST(RotationMatrices, TensorTurnsStrains) {
  // Uniaxial strain along x seen from axes at 30 degrees: 3/4, 1/4, -sqrt(3)/2; pure shear: sqrt(3)/4, -sqrt(3)/4, 1/2.
  const MATRIX<3, 3> T = ROT_TENSOR_3(PI / 6.0);
  const double root = std::sqrt(3.0);
  EXPECT_WITHIN(values(T.data(), 3), (std::vector<double>{0.75, 0.25, -root / 2.0}), 1.0, SINGLE);
  EXPECT_WITHIN(values(T.data() + 3, 3), (std::vector<double>{0.25, 0.75, root / 2.0}), 1.0, SINGLE);
  EXPECT_WITHIN(values(T.data() + 6, 3), (std::vector<double>{root / 4.0, -root / 4.0, 0.5}), 1.0, SINGLE);
}

TEST(RotationMatrices, ShearEntriesAreNarrowed) {
  const double t = 0.7;
  const double c = static_cast<double>(static_cast<float>(std::cos(t)));
  const double s = static_cast<double>(static_cast<float>(std::sin(t)));
  EXPECT_EQ(values(ROT_SHEAR_2(t).data(), 4), (std::vector<double>{c, -s, s, c}));
  EXPECT_NE(c, std::cos(t));
}
