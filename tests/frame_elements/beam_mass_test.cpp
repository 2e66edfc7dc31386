// beam_mass_test.cpp: the mass of a beam against integrals of shape functions, totals and rigid accelerations, and the
// rules of releases.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "broken_values.h"
#include "comparison.h"
#include "finites/finites.h"
#include "member_cases.h"
#include "reference_member.h"

namespace {

using member_cases::random_beam;
using reference::by_diagonal;
using reference::listed;
using reference::matrix;
using reference::real;
using reference::square;
using support::frame_model;
using support::max_norm;
using support::member_description;
using support::seeded_random;

double at(const std::vector<double>& K, int i, int j) { return K[static_cast<std::size_t>((j - 1) * 12 + i - 1)]; }

constexpr real GRAVITY_MM = 9810;

// Consistent mass, local axes, before releases.
matrix consistent(const member_description& m) {
  const real A = real(m.area) * m.factor_area, L = m.length;
  const real cap = real(3) / 28;
  const real r1 = std::min(real(m.i1) * m.factor_i1 / (A * L * L), cap);
  const real r2 = std::min(real(m.i2) * m.factor_i2 / (A * L * L), cap);
  const real polar = real(m.j) * m.factor_j * m.factor_torsion / A;
  matrix M = matrix::Zero(12, 12);
  reference::place_xy(reference::plane_mass(r1, L), M);
  reference::place_xz(reference::plane_mass(r2, L), M);
  M(0, 0) = M(6, 6) = real(1) / 3;
  M(0, 6) = M(6, 0) = real(1) / 6;
  M(3, 3) = M(9, 9) = polar / 3;
  M(3, 9) = M(9, 3) = polar / 6;
  return M * (m.weight / GRAVITY_MM);
}

matrix lumped(const member_description& m) {
  matrix M = matrix::Zero(12, 12);
  for (const int d : {1, 2, 3, 7, 8, 9}) M(d - 1, d - 1) = 0.5;
  for (const int d : {5, 6, 11, 12}) M(d - 1, d - 1) = real(m.length) * m.length / 78;
  return M * (m.weight / GRAVITY_MM);
}

// The degree of freedom loses its row and column; what it had goes to the same degree of freedom of the other end, but
// for bending.
void release(matrix& M, int freedom) {
  const dense::index d = freedom - 1, along = d % 6, partner = (d + 6) % 12;
  const real given = along == 4 || along == 5 ? 0 : M(d, d);
  if (M(d, d) == 0) return;
  M.row(d).setZero();
  M.col(d).setZero();
  M(partner, partner) += given;
}

void expect_mass(const frame_model& model, const matrix& expected, const matrix& scale, double limit) {
  EXPECT_CLOSE(by_diagonal(model.beam_mass(), scale), by_diagonal(listed(expected), scale), 1.0, limit);
}

}  // namespace

TEST(BeamMass, ConsistentFormIntegratesShapeFunctionsWithRotaryInertia) {
  seeded_random random(4601);
  for (int trial = 0; trial < 50; ++trial) {
    const member_description m = random_beam(random);
    frame_model model({m});
    const matrix expected = consistent(m);
    expect_mass(model, expected, expected, 40);
  }
}

TEST(BeamMass, RotaryInertiaIsCappedInEachPlane) {
  for (const double stocky1 : {0.5, 0.99, 1.01, 3.0}) {
    for (const double stocky2 : {0.25, 0.99, 1.01, 8.0}) {
      member_description m;
      m.length = 0.5;
      m.factor_i1 = 0.5;
      m.factor_i2 = 2.0;
      m.i1 = stocky1 * 3.0 / 28.0 * m.area * 0.25 / m.factor_i1;
      m.i2 = stocky2 * 3.0 / 28.0 * m.area * 0.25 / m.factor_i2;
      frame_model model({m});
      const matrix expected = consistent(m);
      expect_mass(model, expected, expected, 40);
    }
  }
}

TEST(BeamMass, TheCapIsThreeTwentyEighths) {
  member_description m;
  m.weight = 9810.0;
  m.length = 0.01;  // far stockier
  frame_model model({m});
  const std::vector<double> M = model.beam_mass();
  EXPECT_EQ(at(M, 2, 2), 6.0 * 0.10714285714285714 / 5.0 + 0.37142857142857144);
  EXPECT_EQ(at(M, 9, 3), 0.12857142857142856 - 6.0 * 0.10714285714285714 / 5.0);
}

TEST(BeamMass, TotalsAndRigidAccelerations) {
  // Either form: W / 9810 for each translation. Consistent: the whole body of inertia about its first end.
  seeded_random random(4602);
  for (const int form : {0, 1}) {
    const member_description m = random_beam(random);
    frame_model model({m});
    model.set_lumped_mass(form);
    const matrix M = square(model.beam_mass());
    const matrix R = reference::rigid_motions(m.length);
    const matrix inertia = R.transpose() * M * R;
    const real mass = m.weight / GRAVITY_MM;
    for (dense::index i = 0; i < 3; ++i) {
      EXPECT_CLOSE(static_cast<double>(inertia(i, i)), static_cast<double>(mass), static_cast<double>(mass), 8);
    }
    if (form != 0) continue;
    const real A = real(m.area) * m.factor_area, L = m.length;
    const real about_z = mass * (L * L / 3 + real(m.i1) * m.factor_i1 / A);
    const real about_y = mass * (L * L / 3 + real(m.i2) * m.factor_i2 / A);
    EXPECT_CLOSE(static_cast<double>(inertia(5, 5)), static_cast<double>(about_z), static_cast<double>(about_z), 16);
    EXPECT_CLOSE(static_cast<double>(inertia(4, 4)), static_cast<double>(about_y), static_cast<double>(about_y), 16);
    EXPECT_CLOSE(static_cast<double>(inertia(1, 5)), static_cast<double>(mass * L / 2), static_cast<double>(mass * L),
                 16);
    EXPECT_CLOSE(static_cast<double>(inertia(2, 4)), static_cast<double>(-mass * L / 2), static_cast<double>(mass * L),
                 16);
    const real polar = mass * m.j * m.factor_j * m.factor_torsion / A;
    EXPECT_CLOSE(static_cast<double>(inertia(3, 3)), static_cast<double>(polar), static_cast<double>(polar), 16);
  }
}

TEST(BeamMass, WeightBecomesMassByTheFixedGravity) {
  member_description m;
  m.weight = 981.0;
  frame_model model({m});
  model.set_lumped_mass(1);
  EXPECT_EQ(at(model.beam_mass(), 1, 1), 0.5 * (981.0 / 9810.0));
}

TEST(BeamMass, LumpedForm) {
  seeded_random random(4603);
  for (const int form : {1, 2, -1}) {
    const member_description m = random_beam(random);
    frame_model model({m});
    model.set_lumped_mass(form);
    const std::vector<double> M = model.beam_mass();
    for (int j = 1; j <= 12; ++j) {
      for (int i = 1; i <= 12; ++i) EXPECT_TRUE(i == j || at(M, i, j) == 0.0) << i << ", " << j;
    }
    const matrix expected = lumped(m);
    expect_mass(model, expected, expected, 8);
    EXPECT_EQ(at(M, 4, 4), 0.0);
    EXPECT_EQ(at(M, 10, 10), 0.0);
  }
}

TEST(BeamMass, ATorsionReleaseOfTheLumpedFormDoesNothing) {
  member_description m;
  frame_model whole({m});
  whole.set_lumped_mass(1);
  const std::vector<double> expected = whole.beam_mass();
  for (const int code : {1, 2}) {
    m.release = {0, 0, 0, code};
    frame_model model({m});
    model.set_lumped_mass(1);
    EXPECT_EQ(model.beam_mass(), expected);
  }
}

TEST(BeamMass, AnAxialReleaseMovesAThirdToTheOtherEnd) {
  member_description m;
  m.weight = 9810.0;
  m.release[0] = 1;
  frame_model model({m});
  const std::vector<double> M = model.beam_mass();
  EXPECT_EQ(at(M, 1, 1), 0.0);
  EXPECT_EQ(at(M, 7, 1), 0.0);
  EXPECT_EQ(at(M, 1, 7), 0.0);
  EXPECT_CLOSE(at(M, 7, 7), 2.0 / 3.0, 1.0, 2);
}

TEST(BeamMass, ReleasesAndPinsInEveryCombination) {
  seeded_random random(4604);
  for (int codes = 0; codes < 81; ++codes) {
    SCOPED_TRACE(codes);
    member_description m = random_beam(random);
    m.release = {codes % 3, codes / 3 % 3, codes / 9 % 3, codes / 27};
    for (std::size_t end = 0; end < 2; ++end) {
      m.fixity_y[end] = random.integer(0, 1);
      m.fixity_z[end] = random.integer(0, 1);
    }
    for (const int form : {0, 1}) {
      frame_model model({m});
      model.set_lumped_mass(form);
      const matrix whole = form == 0 ? consistent(m) : lumped(m);
      matrix expected = whole;
      if (m.fixity_y[0] == 0.0) release(expected, 5);
      if (m.fixity_z[0] == 0.0) release(expected, 6);
      if (m.fixity_y[1] == 0.0) release(expected, 11);
      if (m.fixity_z[1] == 0.0) release(expected, 12);
      for (int i = 0; i < 4; ++i) {
        const int code = m.release[static_cast<std::size_t>(i)];
        if (code != 0) release(expected, i + 1 + (code == 2 ? 6 : 0));
      }
      expect_mass(model, expected, whole, 40);
    }
  }
}

TEST(BeamMass, OtherReleaseCodesDoNothing) {
  member_description m;
  frame_model whole({m});
  const std::vector<double> expected = whole.beam_mass();
  for (const int code : {3, -1, 5}) {
    m.release = {code, code, code, code};
    frame_model model({m});
    EXPECT_EQ(model.beam_mass(), expected);
  }
}

TEST(BeamMass, ASemiRigidEndKeepsTheInertiaOfAllRotations) {
  member_description m;
  frame_model whole({m});
  const std::vector<double> expected = whole.beam_mass();
  for (int which = 0; which < 4; ++which) {
    m.fixity_y = m.fixity_z = {0.0, 0.0};
    (which < 2 ? m.fixity_y : m.fixity_z)[static_cast<std::size_t>(which % 2)] = 0.5;
    frame_model model({m});
    EXPECT_EQ(model.beam_mass(), expected) << which;
  }
  // Out of range is not between: the pins act.
  m.fixity_y = {1.5, 0.0};
  m.fixity_z = {-0.5, 1.0};
  frame_model model({m});
  EXPECT_EQ(at(model.beam_mass(), 11, 11), 0.0);
  EXPECT_NE(at(model.beam_mass(), 5, 5), 0.0);
  EXPECT_NE(at(model.beam_mass(), 6, 6), 0.0);
}

TEST(BeamMass, RemovalAndReductionsHaveNoInfluence) {
  member_description m;
  frame_model whole({m});
  const std::vector<double> expected = whole.beam_mass();
  m.tau_b = 0.5;
  m.remove_step = -40;
  m.reduction_index = 1;
  m.axial_force = 1e6;
  frame_model model({m});
  model.set_kind(1);
  model.set_stiff_reduction(1, {0.5F});
  EXPECT_EQ(model.beam_mass(), expected);
  EXPECT_TRUE(std::isnan(model.record().K11_COPY));
}

TEST(BeamMass, IsAlwaysTurned) {
  seeded_random random(4605);
  for (const int count : {0, 1, -1, 3}) {
    for (const int form : {0, 1}) {
      const member_description m = random_beam(random);
      frame_model model({m});
      model.set_lumped_mass(form);
      const std::vector<double> T = member_cases::full_transformation(random);
      const std::vector<double> T2 = member_cases::full_transformation(random);
      model.set_rotation(T);
      model.set_second_transformation(count, T2);
      matrix expected = reference::turned(form == 0 ? consistent(m) : lumped(m), T);
      if (count > 0) expected = reference::turned(expected, T2);
      EXPECT_CLOSE(model.beam_mass(), listed(expected), static_cast<double>(expected.cwiseAbs().maxCoeff()), 100);
    }
  }
}

TEST(BeamMass, LengthIsThatOfTheMembersOwnRecord) {
  member_description small, large;
  small.length = 2.0;
  large.length = 5.0;
  frame_model model({small, large});
  model.set_lumped_mass(1);
  EXPECT_EQ(at(model.beam_mass(1), 5, 5), 4.0 / 78.0 * (small.weight / 9810.0));
  EXPECT_EQ(at(model.beam_mass(2), 5, 5), 25.0 / 78.0 * (large.weight / 9810.0));
}

TEST(BeamMass, OneRotationOfBothEndsIsTheDenseProduct) {
  seeded_random random(4651);
  for (const int form : {0, 1}) {
    for (int trial = 0; trial < 20; ++trial) {
      member_description m = random_beam(random);
      if (trial % 2 == 0) m.release = {1, 2, 0, 1};
      if (trial % 3 == 0) m.fixity_y = {0.0, 1.0};
      frame_model model({m});
      model.set_lumped_mass(form);
      const matrix local = square(model.beam_mass());  // the identity: the same numbers
      const std::vector<double> T = member_cases::node_rotation(support::random_rotation(random));
      const std::vector<double> T2 = member_cases::full_transformation(random);
      model.set_rotation(T);
      for (const int count : {0, 1}) {
        model.set_second_transformation(count, T2);
        matrix expected = reference::turned(local, T);
        if (count > 0) expected = reference::turned(expected, T2);
        EXPECT_CLOSE(model.beam_mass(), listed(expected), static_cast<double>(expected.cwiseAbs().maxCoeff()), 100);
      }
    }
  }
}

TEST(BeamMass, InfinitiesAndNaNGoWhereTheFullProductCarriesThem) {
  seeded_random random(4652);
  const member_description sound = random_beam(random);
  for (const double broken : support::BROKEN) {
    for (double member_description::*field :
         {&member_description::area, &member_description::i1, &member_description::i2, &member_description::j,
          &member_description::weight, &member_description::length}) {
      member_description m = sound;
      m.*field = broken;
      frame_model model({m});
      const std::vector<double> T = member_cases::node_rotation(support::random_rotation(random));
      model.set_rotation(T);
      support::expect_same_places(model.beam_mass(), support::full_product(T.data(), listed(consistent(m)), 12));
    }
    support::rotation R = support::random_rotation(random);
    R[2][0] = broken;
    const std::vector<double> T = member_cases::node_rotation(R);
    frame_model model({sound});
    model.set_rotation(T);
    support::expect_same_places(model.beam_mass(), support::full_product(T.data(), listed(consistent(sound)), 12));
  }
}

TEST(BeamMass, AnInfiniteMassMultipliesZerosToo) {
  // The zeros beside the planes become NaN. Without them, and with the signs of the couples in the transformation,
  // every sum would be that of infinities of one sign.
  member_description m;
  m.weight = support::BROKEN[1];
  frame_model model({m});
  std::vector<double> T(144, 0.5);
  for (std::size_t j = 0; j < 12; ++j) T[12 * j + 4] = T[12 * j + 11] = -0.5;
  model.set_rotation(T);
  for (const double entry : model.beam_mass()) EXPECT_TRUE(std::isnan(entry)) << entry;
}
