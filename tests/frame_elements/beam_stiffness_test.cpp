// beam_stiffness_test.cpp: the linear stiffness of a beam against the flexibility method, block condensation and the
// textbook, in local axes.
#include <gtest/gtest.h>

#include <cmath>

#include "comparison.h"
#include "finites/finites.h"
#include "member_cases.h"
#include "reference_member.h"

namespace {

using member_cases::random_beam;
using member_cases::random_fixity;
using reference::by_diagonal;
using reference::listed;
using reference::matrix;
using support::frame_model;
using support::member_description;
using support::seeded_random;

constexpr int LOCAL = 1;

double at(const std::vector<double>& K, int i, int j) { return K[static_cast<std::size_t>((j - 1) * 12 + i - 1)]; }

void randomise_fixity(seeded_random& random, member_description& m) {
  for (std::size_t end = 0; end < 2; ++end) {
    m.fixity_y[end] = random_fixity(random);
    m.fixity_z[end] = random_fixity(random);
  }
}

// The library's matrix in MODE 1 against released reference stiffness; every entry by its own diagonal.
void expect_reference(const member_description& m, double shear_switch, double limit) {
  frame_model model({m});
  model.set_shear_deformation(shear_switch);
  const matrix whole = reference::beam_stiffness(reference::properties_of(m, static_cast<int>(shear_switch) == 1), m);
  const matrix expected = reference::released_stiffness(whole, m);
  EXPECT_CLOSE(by_diagonal(model.beam(LOCAL).K, whole), by_diagonal(listed(expected), whole), 1.0, limit);
}

}  // namespace

TEST(BeamStiffness, FlexibilityMethodForRandomFixities) {
  seeded_random random(4101);
  for (int trial = 0; trial < 300; ++trial) {
    SCOPED_TRACE(trial);
    member_description m = random_beam(random);
    randomise_fixity(random, m);
    expect_reference(m, 1.0, 40);
    expect_reference(m, 0.0, 40);
  }
}

TEST(BeamStiffness, ShearAreasCross) {
  // A(S+5) belongs to x-y bending with the factor of I1, A(S+4) to x-z bending with the factor of I2.
  member_description m;
  m.factor_i1 = 0.5;
  m.factor_i2 = 0.25;
  m.shear_area_y = 2e-4;
  frame_model xy({m});
  xy.set_shear_deformation(1.0);
  const std::vector<double> K1 = xy.beam(LOCAL).K;
  const double p1 = 12 * m.e1 * (3e-4 * 0.5) / (m.g * (2e-4 * 0.5) * 9.0);
  EXPECT_CLOSE(at(K1, 2, 2), 12 * m.e1 * 1.5e-4 / (27 * (1 + p1)), at(K1, 2, 2), 8);
  EXPECT_CLOSE(at(K1, 3, 3), 12 * m.e2 * 2.5e-5 / 27, at(K1, 3, 3), 8);
  m.shear_area_y = 0.0;
  m.shear_area_z = 2e-4;
  frame_model xz({m});
  xz.set_shear_deformation(1.0);
  const std::vector<double> K2 = xz.beam(LOCAL).K;
  const double p2 = 12 * m.e2 * (1e-4 * 0.25) / (m.g * (2e-4 * 0.25) * 9.0);
  EXPECT_CLOSE(at(K2, 3, 3), 12 * m.e2 * 2.5e-5 / (27 * (1 + p2)), at(K2, 3, 3), 8);
  EXPECT_CLOSE(at(K2, 2, 2), 12 * m.e1 * 1.5e-4 / 27, at(K2, 2, 2), 8);
}

TEST(BeamStiffness, ShearDeformationHasItsSwitchAndItsConditions) {
  seeded_random random(4102);
  const member_description m = random_beam(random);
  for (const double on : {0.0, 2.0, -1.0, 0.99, 1.99}) expect_reference(m, on, 40);  // 1.99 truncates to 1
  for (const double area : {0.0, -0.01}) {
    member_description without = m;
    without.shear_area_y = area;
    expect_reference(without, 1.0, 40);
    without = m;
    without.shear_area_z = area;
    expect_reference(without, 1.0, 40);
  }
  for (const double g : {0.0, -5e4, 0.125}) {
    member_description soft = m;
    soft.g = g;
    expect_reference(soft, 1.0, 40);
  }
}

TEST(BeamStiffness, TextbookMatrixWithAllFactorsOne) {
  // The Euler-Bernoulli beam, entry by entry (Przemieniecki, 1968), E and L chosen so that numbers are round.
  member_description m;
  m.length = 2.0;
  m.area = 0.5;
  m.i1 = 0.25;
  m.i2 = 0.125;
  m.j = 0.0625;
  m.e1 = 64.0;
  m.e2 = 32.0;
  m.g = 16.0;
  m.shear_area_y = m.shear_area_z = 0.1;  // the switch is off
  frame_model model({m});
  const std::vector<double> K = model.beam(LOCAL).K;
  std::vector<double> expected(144, 0.0);
  const auto put = [&expected](int i, int j, double value) {
    expected[static_cast<std::size_t>((j - 1) * 12 + i - 1)] = value;
    expected[static_cast<std::size_t>((i - 1) * 12 + j - 1)] = value;
  };
  const double EI1 = 16.0, EI2 = 4.0;
  put(1, 1, 16.0), put(7, 7, 16.0), put(7, 1, -16.0);
  put(4, 4, 0.5), put(10, 10, 0.5), put(10, 4, -0.5);
  put(2, 2, 1.5 * EI1), put(8, 8, 1.5 * EI1), put(8, 2, -1.5 * EI1);
  put(6, 2, 1.5 * EI1), put(12, 2, 1.5 * EI1), put(8, 6, -1.5 * EI1), put(12, 8, -1.5 * EI1);
  put(6, 6, 2 * EI1), put(12, 12, 2 * EI1), put(12, 6, EI1);
  put(3, 3, 1.5 * EI2), put(9, 9, 1.5 * EI2), put(9, 3, -1.5 * EI2);
  put(5, 3, -1.5 * EI2), put(11, 3, -1.5 * EI2), put(9, 5, 1.5 * EI2), put(11, 9, 1.5 * EI2);
  put(5, 5, 2 * EI2), put(11, 11, 2 * EI2), put(11, 5, EI2);
  EXPECT_CLOSE(K, expected, 1.0, 0);
  EXPECT_EQ(at(K, 12, 6), 2.0 * m.e1 * m.i1 / m.length);
}

TEST(BeamStiffness, AllPinsLeaveAxialAndTorsionOnly) {
  seeded_random random(4103);
  member_description m = random_beam(random);
  m.fixity_y = m.fixity_z = {0.0, 0.0};
  frame_model model({m});
  model.set_shear_deformation(1.0);
  const std::vector<double> K = model.beam(LOCAL).K;
  for (int j = 1; j <= 12; ++j) {
    for (int i = 1; i <= 12; ++i) {
      const bool kept = i % 6 == j % 6 && (i % 6 == 1 || i % 6 == 4);
      EXPECT_EQ(at(K, i, j) != 0.0, kept) << i << ", " << j;
    }
  }
  const double EA = m.e1 * m.area * m.factor_area, GJ = m.g * m.j * m.factor_j * m.factor_torsion;
  EXPECT_CLOSE(at(K, 7, 1), -EA / m.length, EA / m.length, 4);
  EXPECT_CLOSE(at(K, 4, 10), -GJ / m.length, GJ / m.length, 4);
}

TEST(BeamStiffness, APinAtOneEndOfOnePlane) {
  // 3 E I / L^3 and its couples: each of the four fixity factors in its own place.
  for (int which = 0; which < 4; ++which) {
    member_description m;
    (which < 2 ? m.fixity_y : m.fixity_z)[static_cast<std::size_t>(which % 2)] = 0.0;
    frame_model model({m});
    const std::vector<double> K = model.beam(LOCAL).K;
    const int pinned = (which < 2 ? 5 : 6) + 6 * (which % 2), held = pinned > 6 ? pinned - 6 : pinned + 6;
    const double EI = which < 2 ? m.e2 * m.i2 : m.e1 * m.i1;
    const int v = which < 2 ? 3 : 2;
    for (int i = 1; i <= 12; ++i) EXPECT_EQ(at(K, i, pinned), 0.0) << which << ", " << i;
    EXPECT_CLOSE(at(K, v, v), 3 * EI / 27, EI, 4);
    EXPECT_CLOSE(at(K, held, held), 3 * EI / 3, EI, 4);
    const double sign = (which < 2 ? -1.0 : 1.0);
    EXPECT_CLOSE(at(K, held, v), sign * 3 * EI / 9, EI, 4);
    EXPECT_CLOSE(at(K, held, v + 6), -sign * 3 * EI / 9, EI, 4);
  }
}

TEST(BeamStiffness, ReleasesAreStaticCondensation) {
  seeded_random random(4104);
  for (int codes = 0; codes < 81; ++codes) {
    SCOPED_TRACE(codes);
    member_description m = random_beam(random);
    randomise_fixity(random, m);
    m.release = {codes % 3, codes / 3 % 3, codes / 9 % 3, codes / 27};
    expect_reference(m, 1.0, 100);
  }
}

TEST(BeamStiffness, OtherReleaseCodesDoNothing) {
  seeded_random random(4105);
  const member_description whole = random_beam(random);
  for (const int code : {0, 3, -1, 4, 7, 12}) {
    member_description m = whole;
    m.release = {code, code, code, code};
    frame_model model({m});
    const std::vector<double> K = model.beam(LOCAL).K;
    frame_model other({whole});
    EXPECT_EQ(K, other.beam(LOCAL).K) << code;
  }
}

TEST(BeamStiffness, AReleasedPlaneLosesItsShearForce) {
  // A release of the force along y leaves a beam that carries pure bending alone: E I / L between its rotations.
  for (const int code : {1, 2}) {
    member_description m;
    m.release = {0, code, code, 0};
    frame_model model({m});
    const std::vector<double> K = model.beam(LOCAL).K;
    for (const auto& [rotation, EI] : {std::pair<int, double>{6, m.e1 * m.i1}, {5, m.e2 * m.i2}}) {
      EXPECT_CLOSE(at(K, rotation, rotation), EI / 3, EI, 4);
      EXPECT_CLOSE(at(K, rotation + 6, rotation), -EI / 3, EI, 4);
    }
  }
}

TEST(BeamStiffness, ReleasedAxialForceAndTorsionAreExactlyZero) {
  // They are switched off, not condensed: no rounding is left.
  seeded_random random(4107);
  for (int trial = 0; trial < 100; ++trial) {
    member_description m = random_beam(random);
    m.release = {1 + trial % 2, 0, 0, 1 + trial / 2 % 2};
    frame_model model({m});
    const std::vector<double> K = model.beam(LOCAL).K;
    for (const int d : {1, 4}) {
      EXPECT_EQ(at(K, d, d), 0.0);
      EXPECT_EQ(at(K, d + 6, d), 0.0);
      EXPECT_EQ(at(K, d, d + 6), 0.0);
      EXPECT_EQ(at(K, d + 6, d + 6), 0.0);
    }
    EXPECT_EQ(model.record().K11_COPY, 0.0);
  }
}

TEST(BeamStiffness, TorsionHasTwoFactors) {
  member_description m;
  m.factor_j = 0.5;
  m.factor_torsion = 0.25;
  frame_model model({m});
  EXPECT_EQ(at(model.beam(LOCAL).K, 4, 4), m.g * (m.j * 0.5) * 0.25 / m.length);
}

TEST(BeamStiffness, ModelDataAndOtherRecordsStayAsTheyAre) {
  seeded_random random(4106);
  member_description m = random_beam(random);
  m.tau_b = 0.7;
  m.remove_step = -2;
  frame_model model({m, m});
  const std::vector<double> before = model.storage();
  for (const int mode : {0, 1, 2}) model.beam(mode, 2);
  for (std::size_t i = 0; i < before.size(); ++i) {
    EXPECT_TRUE(before[i] == model.storage()[i] || (std::isnan(before[i]) && std::isnan(model.storage()[i]))) << i;
  }
  EXPECT_TRUE(std::isnan(model.record(1).K11_COPY));
  EXPECT_FALSE(std::isnan(model.record(2).K11_COPY));
  EXPECT_EQ(model.record(2).TAU_B, 0.7);
  EXPECT_EQ(model.record(2).REMOVE_STEP, -2);
}
