// whole_shear_test.cpp: the kernels of the thin quadrilateral with the in-plane shear integrated with the other
// strains, split 0, and by stations that are no rule: flag, count and table are the caller's.
#include "whole_shear.h"

#include <cmath>

#include "comparison.h"
#include "element_stores.h"
#include "finites/fields.h"
#include "guarded_buffer.h"
#include "shells/quadrilateral/forces.h"
#include "shells/quadrilateral/geometric_stiffness.h"
#include "shells/quadrilateral/loads.h"
#include "shells/quadrilateral/mass.h"
#include "shells/quadrilateral/stiffness.h"
#include "shells/quadrilateral/thin/forces.h"
#include "shells/quadrilateral/thin/loads.h"
#include "shells/quadrilateral/thin/results.h"
#include "shells/quadrilateral/thin/stiffness.h"

using shell_reference::column;
using shell_reference::column_of;
using shell_reference::largest;
using shell_reference::listed;
using shell_reference::matrix;
using shell_reference::real;
using shell_reference::upper_mirrored;
using shell_reference::vector3;
using support::seeded_random;
using support::values;

namespace {

// The work of membrane forces N on the slopes at the stations: the same for the three translations.
matrix geometric(const shell_reference::corners& X, const rule_of_four& rule, const std::vector<vector3>& N) {
  matrix K = matrix::Zero(24, 24);
  for (std::size_t p = 0; p < 4; ++p) {
    shell_reference::matrix2 S;
    S << N[p](0), N[p](2), N[p](2), N[p](1);
    const matrix D = shell_reference::gradients(X, rule.at[p].xi, rule.at[p].eta);
    const matrix k =
        D.transpose() * S * D * (rule.at[p].weight * shell_reference::determinant(X, rule.at[p].xi, rule.at[p].eta));
    for (int b = 0; b < 4; ++b) {
      for (int a = 0; a < 4; ++a) {
        for (int t = 0; t < 3; ++t) K(6 * a + t, 6 * b + t) += k(a, b);
      }
    }
  }
  return K;
}

const rule_of_four FULL{{QUAD_RULE_FULL[0], QUAD_RULE_FULL[1], QUAD_RULE_FULL[2], QUAD_RULE_FULL[3]}};

}  // namespace

TEST(QuadrilateralWholeShear, StiffnessIsTheIntegralOfAllStrains) {
  seeded_random random(461);
  for (const element_subject& s : subjects_of(20)) {
    const whole_shear q(random, s);
    const rule_of_four rule = s.isotropic() ? random_rule(random) : FULL;
    FLAT_PARTS<4> parts{};
    if (s.isotropic()) {
      QUAD_STIFFNESS_ISO(QUAD, ISO, 0, rule.at, parts);
    } else {
      QUAD_STIFFNESS_GENERAL(PLATEELEM, QUAD, 0, parts);
    }
    const std::vector<double> K = packed_of(parts);
    const matrix expected = upper_mirrored(q.stiffness(rule.at, 4));
    EXPECT_CLOSE(unpacked(K), listed(expected), largest(expected), 100) << s.name;
  }
}

TEST(QuadrilateralWholeShear, ForcesAreTheIntegralOfAllStrains) {
  seeded_random random(462);
  for (const element_subject& s : subjects_of(20)) {
    const whole_shear q(random, s);
    const rule_of_four rule = s.isotropic() ? random_rule(random) : FULL;
    const std::vector<double> u = random_local(random);
    QUAD_U = QUAD_DISP_SPLIT(u.data());
    std::vector<double> f(24, std::nan(""));
    if (s.isotropic()) {
      QUAD_FORCES_ISO(PLATEELEM, QUAD, ISO, QUAD_U, q.call.LOADS, q.frame.local, 0, f.data(), 4, rule.at, 33);
    } else {
      QUAD_FORCES_GENERAL(PLATEELEM, QUAD, QUAD_U, q.call.LOADS, q.frame.local, 0, f.data(), 4, 33);
    }
    const matrix K = q.stiffness(rule.at, 4);
    EXPECT_CLOSE(f, listed(K * column_of(u)), largest(K), 100) << s.name;
  }
}

TEST(QuadrilateralWholeShear, GeneralForcesTakeAsManyPointsAsTheyAreTold) {
  seeded_random random(463);
  for (const element_subject& s : subjects_of(20)) {
    if (s.isotropic()) continue;
    const whole_shear q(random, s);
    for (const int count : {1, 3}) {
      const matrix K = q.stiffness(FULL.at, count);
      std::vector<double> f(24);
      const std::vector<double> u = random_local(random);
      QUAD_U = QUAD_DISP_SPLIT(u.data());
      QUAD_FORCES_GENERAL(PLATEELEM, QUAD, QUAD_U, q.call.LOADS, q.frame.local, 0, f.data(), count, 33);
      EXPECT_CLOSE(f, listed(K * column_of(u)), largest(K), 100) << s.name << " " << count;
    }
  }
}

TEST(QuadrilateralWholeShear, RecordsShowTheShearOfTheirPoint) {
  seeded_random random(464);
  for (const element_subject& s : subjects_of(20)) {
    const whole_shear q(random, s);
    const std::vector<double> u = random_local(random);
    QUAD_U = QUAD_DISP_SPLIT(u.data());
    const double h = q.call.element.thickness;
    for (std::int32_t p = 1; p <= 4; ++p) {
      const SURFACE_POINT at = surface_point(RULE_NODES, p, 4, q.frame.local.data());
      support::guarded_buffer block(90);
      if (s.isotropic()) {
        QUAD_RESULT_POINT_ISO(PLATEELEM, QUAD, ISO, QUAD_U, 0.0, 0.0, 0, 5.0, 7.0, at.xi, at.eta, block.data());
      } else {
        QUAD_RESULT_POINT_GENERAL(PLATEELEM, QUAD, QUAD_U, 0, 5.0, 7.0, at, block.data());
      }
      const vector3 e = q.strains(column_of(u), at.xi, at.eta), N = q.forces(column_of(u), at.xi, at.eta, 0.0);
      EXPECT_EQ(values(block.data(), 2), (std::vector<double>{5.0, 7.0}));
      EXPECT_CLOSE(values(block.data() + 14, 3), listed(e), 20.0, 64) << s.name << " " << p;
      EXPECT_CLOSE(values(block.data() + 17, 3), listed(N / h), 20.0 * largest(q.call.reference.s.whole()) / h, 64)
          << s.name << " " << p;
    }
  }
}

TEST(QuadrilateralWholeShear, GeometricStiffnessHasTheShearForceOfEachPoint) {
  seeded_random random(465);
  for (const element_subject& s : subjects_of(20)) {
    whole_shear q(random, s);
    q.call.LOADS(LOAD_TEMPERATURE) = 1000.0;
    if (!s.isotropic()) set_thermal_strains(PLATEELEM, q.call.LOADS);
    const rule_of_four rule = s.isotropic() ? random_rule(random) : FULL;
    const std::vector<double> u = random_local(random);
    std::vector<vector3> N;
    for (const SURFACE_STATION& at : rule.at) N.push_back(q.forces(column_of(u), at.xi, at.eta, 1000.0));
    std::vector<double> K(300, 0.0);
    if (s.isotropic()) {
      QUAD_KG_ISO(PLATEELEM, QUAD, ISO, 7, 0, q.call.LOADS, 4, rule.at, u.data(), nullptr, 1.5, K.data());
    } else {
      QUAD_KG_GENERAL(PLATEELEM, 7, 0, 4, u.data(), nullptr, 1.5, K.data());
    }
    const matrix expected = 1.5L * geometric(q.call.reference.X, rule, N);
    const double scale = largest(expected) + largest(q.call.reference.s.whole());
    EXPECT_CLOSE(unpacked(K), listed(expected), scale, 100) << s.name;
  }
}

TEST(QuadrilateralWholeShear, MassAndFoundationTakeTheTableOfTheirCaller) {
  seeded_random random(466);
  whole_shear q(random, isotropic_subject(20));
  const shell_reference::corners& X = q.call.reference.X;
  const rule_of_four rule = random_rule(random);
  const real h = PLATEELEM.THICKNESS = 0.8;
  q.call.LOADS(LOAD_DENSITY) = 0.5;
  matrix mass = matrix::Zero(24, 24), foundation = matrix::Zero(24, 24);
  for (const SURFACE_STATION& at : rule.at) {
    const real c = at.weight * shell_reference::determinant(X, at.xi, at.eta);
    const column N = shell_reference::functions(4, at.xi, at.eta);
    for (int a = 0; a < 4; ++a) {
      for (int b = 0; b < 4; ++b) {
        for (int t = 0; t < 3; ++t) mass(6 * a + t, 6 * b + t) += 0.5L * h * N(a) * N(b) * c;
        foundation(6 * a + 2, 6 * b + 2) -= 3.0L * N(a) * N(b) * c;
      }
    }
    const matrix H = shell_reference::kirchhoff_rotations(X, at.xi, at.eta);
    const matrix rotary = H.transpose() * H * (0.5L * h * h * h / 12.0L * c);
    for (int j = 0; j < 12; ++j) {
      for (int i = 0; i < 12; ++i) mass(q.call.reference.bending(i), q.call.reference.bending(j)) += rotary(i, j);
    }
  }
  std::vector<double> K(300, 0.0);
  FLAT_PARTS<4> M;
  QUAD_MASS(PLATEELEM, QUAD, q.call.LOADS, rule.at, M);
  EXPECT_CLOSE(unpacked(packed_of(M)), listed(mass), largest(mass), 64);
  QUAD_FOUNDATION(QUAD, -3.0, 4, rule.at, K.data());
  EXPECT_CLOSE(unpacked(K), listed(foundation), largest(foundation), 64);
}

TEST(QuadrilateralKernels, KeepTheConstantsOfTheTwoDirectionsApart) {
  // The section of an engine has the same ones in both; the kernels do not count on it.
  seeded_random random(467);
  whole_shear q(random, isotropic_subject(20));
  shell_reference::section& D = q.call.reference.s;
  unequal_directions(D);
  const matrix K = q.stiffness(FULL.at, 4);
  FLAT_PARTS<4> parts{};
  std::vector<double> f(24);
  QUAD_STIFFNESS_ISO(QUAD, ISO, 0, QUAD_RULE_FULL, parts);
  EXPECT_CLOSE(unpacked(packed_of(parts)), listed(K), largest(K), 100);
  const std::vector<double> u = random_local(random);
  QUAD_U = QUAD_DISP_SPLIT(u.data());
  QUAD_FORCES_ISO(PLATEELEM, QUAD, ISO, QUAD_U, q.call.LOADS, q.frame.local, 0, f.data(), 4, QUAD_RULE_FULL, 33);
  EXPECT_CLOSE(f, listed(K * column_of(u)), largest(K), 100);
  EXPECT_CLOSE(values(QUAD_MEMBRANE_FORCES(QUAD, ISO, QUAD_U, 0, 0.0, 0.3, -0.6).data(), 3),
               listed(q.forces(column_of(u), 0.3, -0.6, 0.0)), 20.0 * largest(D.whole()), 64);

  support::guarded_buffer block(90);
  const double h = q.call.element.thickness;
  QUAD_RESULT_POINT_ISO(PLATEELEM, QUAD, ISO, QUAD_U, 0.0, 0.0, 0, 0.0, 0.0, 0.3, -0.6, block.data());
  const vector3 M = D.bending * q.call.reference.bending_B(0.3L, -0.6L) * q.call.reference.bending_part(column_of(u));
  EXPECT_CLOSE(values(block.data() + 36, 3), listed(q.forces(column_of(u), 0.3, -0.6, 0.0)), 20.0 * largest(D.whole()),
               64);
  EXPECT_CLOSE(values(block.data() + 39, 3), listed(M), 200.0 * largest(D.bending), 64);

  // Thermal forces take the sum of each row; the moments of a record the sum of the first for both.
  const double tm = 0.02, tb = 0.5;
  std::vector<double> loads(24, 0.0);
  QUAD_THERMAL_ISO(PLATEELEM, QUAD, ISO, tm, tb, 4, QUAD_RULE_FULL, loads.data());
  column expected = column::Zero(24);
  const vector3 N_t = D.whole() * vector3(tm, tm, 0.0L), M_t = D.bending * vector3(tb, tb, 0.0L) / h;
  for (const SURFACE_STATION& at : FULL.at) {
    const real c = shell_reference::determinant(q.call.reference.X, at.xi, at.eta);
    const column in_plane = shell_reference::membrane_B(q.call.reference.X, at.xi, at.eta).transpose() * N_t * c;
    const column bent = q.call.reference.bending_B(at.xi, at.eta).transpose() * M_t * c;
    for (int i = 0; i < 8; ++i) expected(q.call.reference.membrane(i)) += in_plane(i);
    for (int i = 0; i < 12; ++i) expected(q.call.reference.bending(i)) += bent(i);
  }
  EXPECT_CLOSE(loads, listed(q.call.reference.to_global(expected)), largest(expected), 100);
  QUAD_RESULT_POINT_ISO(PLATEELEM, QUAD, ISO, QUAD_U, 0.0, tb, 0, 0.0, 0.0, 0.3, -0.6, block.data());
  EXPECT_CLOSE(values(block.data() + 39, 3), listed(M - vector3(M_t(0), M_t(0), 0.0L)), 200.0 * largest(D.bending), 64);
}

TEST(QuadrilateralKernels, LoadsTakeTheTableOfTheirCaller) {
  seeded_random random(468);
  const whole_shear q(random, isotropic_subject(20));
  const shell_reference::reference_element& e = q.call.reference;
  const rule_of_four rule = random_rule(random);
  ELEM_LOADS LOADS{};
  LOADS(LOAD_SURFACE_LOCAL) = 2.0;
  LOADS(LOAD_SURFACE_LOCAL + 1) = -3.0;
  LOADS(LOAD_SURFACE_LOCAL + 2) = 5.0;
  const double tm = 0.02, tb = 0.5;
  const vector3 N = e.s.whole() * vector3(tm, tm, 0.0L);
  const vector3 M = e.s.bending * vector3(tb, tb, 0.0L) / e.s.thickness;
  column surface = column::Zero(24), thermal = column::Zero(24);
  for (const SURFACE_STATION& at : rule.at) {
    const real c = at.weight * shell_reference::determinant(e.X, at.xi, at.eta);
    surface += e.point_load(vector3(2.0L, -3.0L, 5.0L) * c, at.xi, at.eta);
    const column in_plane = shell_reference::membrane_B(e.X, at.xi, at.eta).transpose() * N * c;
    const column bent = e.bending_B(at.xi, at.eta).transpose() * M * c;
    for (int i = 0; i < 8; ++i) thermal(e.membrane(i)) += in_plane(i);
    for (int i = 0; i < 12; ++i) thermal(e.bending(i)) += bent(i);
  }
  std::vector<double> f(24, 0.0), g(24, 0.0);
  QUAD_SURFACE_LOADS_ISO(PLATEELEM, QUAD, LOADS, 4, rule.at, f.data());
  EXPECT_CLOSE(f, listed(e.to_global(surface)), largest(surface), 64);
  QUAD_THERMAL_ISO(PLATEELEM, QUAD, ISO, tm, tb, 4, rule.at, g.data());
  EXPECT_CLOSE(g, listed(e.to_global(thermal)), largest(thermal), 100);
}
