// geometric_stiffness_test.cpp: geometric stiffness from stored forces and from displacements, its places and its sign.
#include "shells/triangle/geometric_stiffness.h"

#include <algorithm>
#include <limits>

#include "comparison.h"
#include "element_cases.h"
#include "element_stores.h"
#include "engine_call.h"
#include "finites/records.h"
#include "prepared_triangle.h"

using reference::listed;
using reference::matrix;
using reference::vector3;
using support::seeded_random;
using support::values;

namespace {

// The packed positions of the three translations, from their rows and columns.
std::vector<int> translation_positions() {
  std::vector<int> positions;
  const int u[3] = {1, 7, 13};
  for (int j = 0; j < 3; ++j) {
    for (int t = 0; t < 3; ++t) {
      for (int i = 0; i <= j; ++i) positions.push_back((u[j] + t - 1) * (u[j] + t) / 2 + u[i] + t);
    }
  }
  std::sort(positions.begin(), positions.end());
  return positions;
}

// Results with forces at the first point only; every other value is not a number.
std::vector<double> first_point_forces(const vector3& N) {
  std::vector<double> big(360, std::numeric_limits<double>::quiet_NaN());
  for (int i = 0; i < 3; ++i) big[static_cast<std::size_t>(36 + i)] = static_cast<double>(N(i));
  return big;
}

vector3 random_forces(seeded_random& random) {
  return {random.uniform(-1.0, 1.0), random.uniform(-1.0, 1.0), random.uniform(-1.0, 1.0)};
}

matrix to_global(const engine_call& call, const matrix& K) {
  const matrix R = reference::eighteen(call.axes);
  return R.transpose() * K * R;
}

// Membrane forces of global displacements, with free thermal strains taken out.
vector3 membrane_forces(const engine_call& call, double temperature) {
  const matrix ul = reference::eighteen(call.axes) * reference::column_of(call.U).head(18);
  reference::column u(6);
  for (int i = 0; i < 6; ++i) u(i) = ul(reference::MEMBRANE[i] - 1, 0);
  vector3 e = reference::membrane_B(call.X) * u;
  e(0) -= call.section.alpha1 * temperature;
  e(1) -= call.section.alpha2 * temperature;
  return call.section.membrane * e;
}

}  // namespace

TEST(GeometricStiffness, WritesTheTranslationsAlone) {
  seeded_random random(101);
  const prepared_triangle t(support::random_triangle(random));
  const std::vector<int> expected = translation_positions();
  ASSERT_EQ(expected.size(), 18U);
  std::vector<double> big = first_point_forces(random_forces(random));
  support::guarded_buffer iso(171), general(171);
  TRI_KG_ISO(PLATEELEM, TRI, ISO, 71, ELEM_LOADS{}, nullptr, big.data(), 1.0, iso.data());
  TRI_KG_GENERAL(PLATEELEM, 71, nullptr, big.data(), 1.0, general.data());
  EXPECT_EQ(iso.changed(), expected);
  EXPECT_EQ(general.changed(), expected);
}

TEST(GeometricStiffness, AddsEighteenPositions) {
  seeded_random random(102);
  std::vector<double> KG(171, std::numeric_limits<double>::quiet_NaN());
  support::guarded_buffer K(171);
  const std::vector<double> before = random.vector(171, 1.0);
  K.set_input(before);
  const std::vector<int> positions = translation_positions();
  for (const int p : positions) KG[static_cast<std::size_t>(p - 1)] = 2.0 * p;
  TRI_ADD_GEOMETRIC(KG.data(), K.data());
  EXPECT_EQ(K.changed(), positions);
  for (const int p : positions) EXPECT_EQ(K(p), before[static_cast<std::size_t>(p - 1)] + 2.0 * p);
}

TEST(GeometricStiffness, BothFormsAreTheIntegralOfForcesOnGradients) {
  seeded_random random(103);
  for (int trial = 0; trial < 30; ++trial) {
    const prepared_triangle t(support::random_triangle(random));
    const vector3 N = random_forces(random);
    std::vector<double> big = first_point_forces(N), iso(171, 0.0), general(171, 0.0);
    const int op = trial % 2 == 0 ? 1 : 71;
    const double factor = random.uniform(-2.0, 2.0);
    TRI_KG_ISO(PLATEELEM, TRI, ISO, op, ELEM_LOADS{}, nullptr, big.data(), factor, iso.data());
    TRI_KG_GENERAL(PLATEELEM, op, nullptr, big.data(), factor, general.data());
    const matrix expected = reference::geometric(t.flat(), N) * factor;
    EXPECT_CLOSE(listed(full_of(18, iso.data())), listed(expected), reference::largest(expected), 16);
    EXPECT_CLOSE(listed(full_of(18, general.data())), listed(expected), reference::largest(expected), 16);
  }
}

TEST(GeometricStiffness, QuadraticFormByHand) {
  // w = c1 x + c2 y on an area of 7.5: u K u = 7.5 (Nx c1^2 + Ny c2^2 + 2 Nxy c1 c2), for each translation.
  const prepared_triangle t(plane_triangle(5.0, 2.0, 3.0));
  std::vector<double> big = first_point_forces({2.0L, 3.0L, 0.5L}), packed(171, 0.0);
  TRI_KG_ISO(PLATEELEM, TRI, ISO, 71, ELEM_LOADS{}, nullptr, big.data(), 1.0, packed.data());
  const matrix K = full_of(18, packed.data());
  const double x[3] = {0.0, 5.0, 2.0}, y[3] = {0.0, 0.0, 3.0};
  for (int translation = 0; translation < 3; ++translation) {
    reference::column u = reference::column::Zero(18);
    for (int n = 0; n < 3; ++n) u(6 * n + translation) = 0.4L * x[n] - 1.5L * y[n];
    const double expected = 7.5 * (2.0 * 0.16 + 3.0 * 2.25 + 2.0 * 0.5 * (-0.6));
    EXPECT_CLOSE(static_cast<double>(u.dot(K * u)), expected, expected, 32);
  }
}

TEST(GeometricStiffness, StiffnessAddsItAndOperation71ReturnsItsNegative) {
  seeded_random random(104);
  for (const element_case& c : element_cases()) {
    const support::plate_description d = random_element(random, c);
    const vector3 N = random_forces(random) * reference::section_of(d).membrane(0, 0);
    const std::vector<double> big = first_point_forces(N);

    engine_call plain(d);
    plain.run(1);
    engine_call flagged(d);
    flagged.geometric = 1;
    flagged.points.set_input(big);
    flagged.run(1);
    engine_call negative(d);
    negative.points.set_input(big);
    negative.run(71);
    EXPECT_EQ(flagged.points.changed(), std::vector<int>()) << c.name;
    EXPECT_EQ(negative.matrix.changed(), support::range(1, 324)) << c.name;

    const matrix expected = to_global(plain, reference::geometric(plain.X, N));
    std::vector<double> difference = flagged.matrix_values();
    const std::vector<double> K = plain.matrix_values();
    for (std::size_t i = 0; i < difference.size(); ++i) difference[i] -= K[i];
    EXPECT_CLOSE(difference, listed(expected), support::max_norm(flagged.matrix_values()), 64) << c.name;
    EXPECT_CLOSE(negative.matrix_values(), listed(-expected), reference::largest(expected), 64) << c.name;
  }
}

TEST(GeometricStiffness, Operation71TakesNoDisplacements) {
  seeded_random random(105);
  for (const element_case& c : element_cases()) {
    engine_call call(random_element(random, c));
    call.U = random.vector(24, 1.0);
    call.LOADS(26) = 30.0;
    call.points.set_input(std::vector<double>(360, 0.0));
    call.run(71);
    EXPECT_EQ(support::max_norm(call.matrix_values()), 0.0) << c.name;
  }
}

TEST(GeometricStiffness, Operation7TakesTheForcesOfDisplacementsAndTemperature) {
  seeded_random random(106);
  for (const element_case& c : element_cases()) {
    for (const double temperature : {0.0, 40.0}) {
      engine_call call(random_element(random, c));
      call.U = random.vector(24, 1e-3);
      call.LOADS(26) = temperature;
      call.LOADS(27) = 25.0;  // bends, and does not matter here
      call.points.set_input(std::vector<double>(360, 1e6));
      call.run(7);
      const vector3 N = membrane_forces(call, temperature);
      const matrix expected = to_global(call, -reference::geometric(call.X, N));
      EXPECT_CLOSE(call.matrix_values(), listed(expected), reference::largest(expected), 500) << c.name;
    }
  }
}

TEST(GeometricStiffness, Operation7ClearsTheResultPoints) {
  seeded_random random(107);
  for (const element_case& c : {element_cases()[0], element_cases()[1]}) {
    engine_call call(random_element(random, c));
    call.points.set_input(std::vector<double>(360, 5.0));
    call.run(7);
    EXPECT_EQ(values(call.points.data(), 360), std::vector<double>(360, 0.0)) << c.name;
  }
}

TEST(GeometricStiffness, NoDisplacementAndNoTemperatureGiveNothing) {
  seeded_random random(108);
  for (const element_case& c : element_cases()) {
    engine_call call(random_element(random, c));
    call.points.set_input(std::vector<double>(360, 0.0));
    call.run(7);
    EXPECT_EQ(support::max_norm(call.matrix_values()), 0.0) << c.name;
  }
}

TEST(GeometricStiffness, NoStoredForcesLeaveTheStiffnessAsItIs) {
  seeded_random random(109);
  for (const element_case& c : element_cases()) {
    const support::plate_description d = random_element(random, c);
    engine_call plain(d), flagged(d);
    engine_call first(d);
    first.run(1);
    engine_call second(d);
    second.geometric = 1;
    second.points.set_input(std::vector<double>(360, 0.0));
    second.run(1);
    EXPECT_EQ(second.matrix_values(), first.matrix_values()) << c.name;
  }
}

TEST(GeometricStiffness, IsTheTiltOfTheMembraneForces) {
  // A facet under constant membrane forces that turns rigidly by a small angle: the forces follow it. Their first-order
  // change on a transverse motion w = c1 x + c2 y is the geometric stiffness times that motion.
  const prepared_triangle t(plane_triangle(5.0, 2.0, 3.0));
  const vector3 N(2.0L, 3.0L, 0.5L);
  std::vector<double> big = first_point_forces(N), packed(171, 0.0);
  TRI_KG_ISO(PLATEELEM, TRI, ISO, 71, ELEM_LOADS{}, nullptr, big.data(), 1.0, packed.data());
  const matrix K = full_of(18, packed.data());
  const matrix f = reference::membrane_B(t.flat()).transpose() * N * 7.5L;  // in-plane nodal forces
  const reference::real c1 = 0.4L, c2 = -1.5L;
  reference::column u = reference::column::Zero(18);
  for (int n = 0; n < 3; ++n) u(6 * n + 2) = c1 * t.local(1, n + 1) + c2 * t.local(2, n + 1);
  const reference::column change = K * u;
  for (int n = 0; n < 3; ++n) {
    // A force (fx, fy) on a surface that has tilted points out of the old plane by c1 fx + c2 fy.
    const reference::real tilted = c1 * f(2 * n, 0) + c2 * f(2 * n + 1, 0);
    EXPECT_CLOSE(static_cast<double>(change(6 * n + 2)), static_cast<double>(tilted), 10.0, 32);
  }
}

TEST(GeometricStiffness, GeneralFormReadsTheNormalPart) {
  seeded_random random(110);
  const prepared_triangle t(support::random_triangle(random));
  for (double& entry : PLATEELEM.D_MEMBRANE_TOTAL.V) entry = std::numeric_limits<double>::quiet_NaN();
  PLATEELEM.D_MEMBRANE_SHEAR = PLATEELEM.D_MEMBRANE_TOTAL;
  std::vector<double> big(360, 1.0), K(171, 0.0);
  TRI_KG_GENERAL(PLATEELEM, 7, random.vector(18, 1.0).data(), big.data(), 1.0, K.data());
  EXPECT_EQ(K, std::vector<double>(171, 0.0));  // the normal part is zero
}
