// thermal_loads_test.cpp: nodal loads of temperature against integrals and against the free expansion.
#include "shells/triangle/thin/loads.h"

#include <cmath>

#include "comparison.h"
#include "element_cases.h"
#include "element_stores.h"
#include "engine_call.h"
#include "finites/records.h"
#include "prepared_triangle.h"
#include "shells/triangle/loads.h"

using reference::column;
using reference::column_of;
using reference::listed;
using reference::matrix;
using reference::real;
using reference::vector3;
using support::seeded_random;
using support::values;

namespace {

// Nodal loads, element axes, of temperature: the integral of B^T D times the free strains.
column thermal_loads(const engine_call& call) {
  const reference::section& s = call.section;
  const vector3 alpha(s.alpha1, s.alpha2, 0.0L);
  const vector3 N = s.membrane * alpha * call.LOADS(26), M = s.bending * alpha * call.LOADS(27) / s.thickness;
  column f = column::Zero(18);
  const column membrane = reference::membrane_B(call.X).transpose() * N * (reference::twice_area(call.X) / 2.0L);
  for (int i = 0; i < 6; ++i) f(reference::MEMBRANE[i] - 1) = membrane(i);
  for (const reference::station& p : reference::FOUR_POINTS) {
    const column bending = reference::bending_B(call.X, p.xi, p.eta).transpose() * M;
    for (int i = 0; i < 9; ++i) f(reference::BENDING[i] - 1) += bending(i) * p.weight * reference::twice_area(call.X);
  }
  return f;
}

column to_global(const engine_call& call, const column& local) {
  return reference::eighteen(call.axes).transpose() * local;
}

void clear_rotations(column& f) {
  for (int n = 0; n < 3; ++n) f.segment(6 * n + 3, 3).setZero();
}

}  // namespace

TEST(ThermalLoad, IsTheIntegralForEveryKindAndSection) {
  // The membrane kind drops rotations here too; of the general form all three rows of the thermal forces count.
  seeded_random random(146);
  for (const element_case& c : element_cases()) {
    for (const auto& [tm, tb] : {std::pair{30.0, 0.0}, std::pair{0.0, 45.0}, std::pair{20.0, -20.0},
                                 std::pair{-30.0, 0.0}, std::pair{0.0, -45.0}}) {
      engine_call call(random_element(random, c));
      call.LOADS(26) = tm;
      call.LOADS(27) = tb;
      call.run(4);
      column expected = to_global(call, thermal_loads(call));
      if (c.formulation == 2) clear_rotations(expected);
      const double scale = reference::largest(thermal_loads(call));
      EXPECT_CLOSE(call.force_values(), listed(expected), scale, 200) << c.name << " " << tm << " " << tb;
    }
  }
}

TEST(ThermalLoad, IsTheStiffnessTimesTheFreeExpansion) {
  // Free expansion: u = alpha1 T x, v = alpha2 T y, and curvatures alpha dT / h by w = -(k1 x^2 + k2 y^2) / 2. The
  // material axes are those of the element, where free strains have no shear.
  seeded_random random(147);
  for (const element_case& c : element_cases()) {
    if (c.form == section_form::orthotropic_arbitrary) continue;  // K holds another matrix there
    support::plate_description d = random_element(random, c);
    d.ortho_angle = 0.0;
    engine_call call(d);
    call.LOADS(26) = 50.0;
    call.LOADS(27) = 20.0;
    const reference::section& s = call.section;
    const real k1 = s.alpha1 * 20.0L / s.thickness, k2 = s.alpha2 * 20.0L / s.thickness;
    column free = column::Zero(18);
    const column w = quadratic_deflection(call.X, {0, 0, 0, static_cast<double>(-k1), static_cast<double>(-k2), 0});
    for (int i = 0; i < 9; ++i) free(reference::BENDING[i] - 1) = w(i);
    for (int n = 0; n < 3; ++n) {
      free(6 * n) = s.alpha1 * 50.0L * call.X(0, n);
      free(6 * n + 1) = s.alpha2 * 50.0L * call.X(1, n);
    }
    call.run(1);
    const std::vector<double> K = call.matrix_values();
    const std::vector<double> u = listed(to_global(call, free));
    const std::vector<double> expected = support::product(K, u);
    call.run(4);
    const double scale = support::max_norm(K) * support::max_norm(u);
    EXPECT_CLOSE(call.force_values(), expected, scale, 100) << c.name;
  }
}

TEST(ThermalLoad, LeavesNoResultantForceOrMoment) {
  seeded_random random(148);
  for (const element_case& c : element_cases()) {
    engine_call call(random_element(random, c));
    call.LOADS(26) = 50.0;
    call.LOADS(27) = c.formulation == 1 ? 20.0 : 0.0;
    call.run(4);
    const column f = column_of(call.force_values());
    vector3 force = vector3::Zero(), moment = vector3::Zero();
    for (int n = 0; n < 3; ++n) {
      const support::point& p = call.element.nodes[static_cast<std::size_t>(n)];
      force += f.segment(6 * n, 3);
      moment += vector3(p[0], p[1], p[2]).cross(f.segment(6 * n, 3).head(3)) + f.segment(6 * n + 3, 3);
    }
    const double scale = reference::largest(f);
    EXPECT_CLOSE(listed(force), std::vector<double>(3, 0.0), scale, 32) << c.name;
    EXPECT_CLOSE(listed(moment), std::vector<double>(3, 0.0), 5.0 * scale, 64) << c.name;
  }
}

TEST(ThermalLoad, AnyOneOfTheFourStrainsOfTheGeneralFormCounts) {
  seeded_random random(152);
  const prepared_triangle t(support::random_triangle(random));
  PLATEELEM.THICKNESS = 0.5;
  for (double PLATEELEM_RECORD::*strain : {&PLATEELEM_RECORD::THERMAL_M1, &PLATEELEM_RECORD::THERMAL_M2,
                                           &PLATEELEM_RECORD::THERMAL_B1, &PLATEELEM_RECORD::THERMAL_B2}) {
    PLATEELEM.D_MEMBRANE_TOTAL = PLATEELEM.D_BENDING = unsymmetric_section(random);
    PLATEELEM.*strain = 1e-3;
    std::vector<double> f(18, 0.0), kernel(18, 0.0);
    TRI_LOADS_GENERAL(PLATEELEM, TRI, ELEM_LOADS{}, TRI_RULE_COUNT, f.data(), TRI_LOAD_MODE, 0);
    TRI_THERMAL_GENERAL(PLATEELEM, TRI, TRI_RULE_COUNT, kernel.data());
    EXPECT_EQ(f, kernel);
    EXPECT_GT(support::max_norm(f), 0.0);
    PLATEELEM.*strain = 0.0;
  }
}

TEST(ThermalLoad, SectionIsNotReadWithoutATemperature) {
  const prepared_triangle t(plane_triangle(5.0, 2.0, 3.0));
  for (double& entry : PLATEELEM.D_MEMBRANE_TOTAL.V) entry = std::nan("");
  PLATEELEM.D_BENDING = PLATEELEM.D_MEMBRANE_TOTAL;
  std::vector<double> f(18, 0.0);
  TRI_LOADS_GENERAL(PLATEELEM, TRI, ELEM_LOADS{}, TRI_RULE_COUNT, f.data(), TRI_LOAD_MODE, 0);
  EXPECT_EQ(f, std::vector<double>(18, 0.0));
}

TEST(ThermalLoad, FormsAgreeForAnIsotropicSection) {
  seeded_random random(150);
  engine_call call(random_element(random, element_cases().front()));
  call.LOADS(26) = 30.0;
  call.LOADS(27) = -12.0;
  call.run(4);
  PLATEELEM_RECORD& P = PLATEELEM;
  P.MAT_BEHAV = 1;
  P.E2 = P.E1;
  P.NU2 = P.NU1;
  P.G12 = P.G13 = P.G23 = P.E1 / (2.0 * (1.0 + P.NU1));
  P.ALPHA2 = P.ALPHA1;
  const std::vector<double> isotropic = call.force_values();
  call.run(4);
  EXPECT_CLOSE(call.force_values(), isotropic, support::max_norm(isotropic), 64);
}

TEST(ThermalLoad, KernelByHand) {
  // Half of twice the area times B^T N on the triangle (0,0), (5,0), (2,3): node forces are N times the sides.
  const prepared_triangle t(plane_triangle(5.0, 2.0, 3.0));
  PLATEELEM.THICKNESS = 0.5;
  ISO = ISOTROPIC_SECTION{};
  ISO.DM11 = 3.0;
  ISO.DM12 = 1.0;
  ISO.DM22 = 5.0;
  std::vector<double> f(18, 0.0);
  TRI_THERMAL_ISO(PLATEELEM, TRI, ISO, 2.0, 0.0, TRI_RULE_COUNT, TRI_RULE_FOUR, f.data());  // a = 8, b = 12
  std::vector<double> expected(18, 0.0);
  expected[0] = -12.0;
  expected[1] = -18.0;
  expected[6] = 12.0;
  expected[7] = -12.0;
  expected[13] = 30.0;
  EXPECT_CLOSE(f, expected, 30.0, 8);
}

TEST(ThermalLoad, BendingKernelTakesBothDirections) {
  // The four constants of bending are different here, and so are the moments c and d of the two directions.
  seeded_random random(151);
  const prepared_triangle t(support::random_triangle(random));
  PLATEELEM.THICKNESS = 0.5;
  set_distinct_constants(random);
  std::vector<double> f(18, 0.0);
  TRI_THERMAL_ISO(PLATEELEM, TRI, ISO, 0.0, 3.0, TRI_RULE_COUNT, TRI_RULE_FOUR, f.data());
  const vector3 M = bending_constants() * vector3(3.0L, 3.0L, 0.0L) / 0.5L;
  column local = column::Zero(18);
  const reference::flat_triangle X = t.flat();
  for (const reference::station& p : reference::FOUR_POINTS) {
    const column bending = reference::bending_B(X, p.xi, p.eta).transpose() * M;
    for (int i = 0; i < 9; ++i) local(reference::BENDING[i] - 1) += bending(i) * p.weight * reference::twice_area(X);
  }
  const column expected = reference::eighteen(wide(TRI.AXES)).transpose() * local;
  EXPECT_CLOSE(f, listed(expected), reference::largest(expected), 64);
}
