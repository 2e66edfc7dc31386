// forces_test.cpp: internal forces against K u, against the records of operation 5 and against full section matrices.
#include "shells/triangle/thin/forces.h"

#include <cmath>

#include "comparison.h"
#include "element_cases.h"
#include "element_stores.h"
#include "engine_call.h"
#include "finites/records.h"
#include "prepared_triangle.h"
#include "shells/triangle/forces.h"
#include "shells/triangle/membrane.h"

using reference::column;
using reference::column_of;
using reference::listed;
using reference::matrix;
using reference::real;
using support::seeded_random;
using support::values;

namespace {

column local_displacements(const engine_call& call) {
  return reference::eighteen(call.axes) * column_of(call.U).head(18);
}

// The forces of the full section matrices, element axes.
column reference_forces(const engine_call& call) {
  return reference::stiffness(call.X, call.section) * local_displacements(call);
}

std::vector<double> forces_of(engine_call& call, int op) {
  call.run(op);
  return call.force_values();
}

}  // namespace

TEST(LocalDisplacements, GroupsOfThreeTurnWithTheAxes) {
  // Axes: local x is global y, local y global z, local z global x.
  const prepared_triangle t({{1.0, 2.0, 3.0}, {1.0, 5.0, 3.0}, {1.0, 2.0, 7.0}});
  std::vector<double> u(18), expected(18);
  for (std::size_t i = 0; i < 18; ++i) u[i] = static_cast<double>(i + 1);
  for (std::size_t g = 0; g < 18; g += 3) {
    expected[g] = u[g + 1];
    expected[g + 1] = u[g + 2];
    expected[g + 2] = u[g];
  }
  support::guarded_buffer ul(18);
  TRI_DISP_LOCAL(TRI, u.data(), ul.data());
  EXPECT_EQ(values(ul.data(), 18), expected);
  EXPECT_EQ(ul.changed(), support::range(1, 18));
}

TEST(LocalDisplacements, SplitByPart) {
  std::vector<double> ul(18);
  for (std::size_t i = 0; i < 18; ++i) ul[i] = static_cast<double>(i + 1);
  TRI_U = TRI_DISP_SPLIT(ul.data());
  EXPECT_EQ(values(TRI_U.MEMBRANE.data(), 6), (std::vector<double>{1, 2, 7, 8, 13, 14}));
  EXPECT_EQ(values(TRI_U.BENDING.data(), 9), (std::vector<double>{3, 4, 5, 9, 10, 11, 15, 16, 17}));
  EXPECT_EQ(values(TRI_U.DRILL.data(), 3), (std::vector<double>{6, 12, 18}));
}

TEST(InternalForces, AreThoseOfTheFullSectionMatrices) {
  seeded_random random(111);
  for (const element_case& c : element_cases()) {
    for (int trial = 0; trial < 5; ++trial) {
      engine_call call(random_element(random, c));
      call.U = random.vector(24, 1.0);
      const column local = reference_forces(call);
      const double scale = reference::largest(reference::stiffness(call.X, call.section));
      EXPECT_CLOSE(forces_of(call, 33), listed(local), scale, 200) << c.name;
      const column global = reference::eighteen(call.axes).transpose() * local;
      EXPECT_CLOSE(forces_of(call, 3), listed(global), scale, 200) << c.name;
    }
  }
}

TEST(InternalForces, OfBendingAloneHaveTheirOwnScale) {
  seeded_random random(112);
  for (const element_case& c : element_cases()) {
    engine_call call(random_element(random, c, plane_triangle(5.0, 2.0, 3.0)));
    call.U.assign(24, 0.0);
    for (const int i : reference::BENDING) call.U[static_cast<std::size_t>(i - 1)] = random.uniform(-1.0, 1.0);
    const double scale = reference::largest(reference::bending_stiffness(call.X, call.section.bending));
    EXPECT_CLOSE(forces_of(call, 33), listed(reference_forces(call)), scale, 200) << c.name;
  }
}

TEST(InternalForces, ClearAllTwentyFourValues) {
  seeded_random random(113);
  for (const element_case& c : element_cases()) {
    for (const int op : {3, 33}) {
      engine_call call(random_element(random, c));
      call.U = random.vector(24, 1.0);
      call.run(op);
      EXPECT_EQ(call.F.changed(), support::range(1, 24)) << c.name;
      for (int i = 19; i <= 24; ++i) EXPECT_EQ(call.F(i), 0.0) << c.name;
    }
  }
}

TEST(InternalForces, EqualStiffnessTimesDisplacementsOfASymmetricSection) {
  seeded_random random(114);
  for (const element_case& c : element_cases()) {
    if (c.form == section_form::orthotropic_arbitrary) continue;  // see the next test
    engine_call call(random_element(random, c));
    call.U = random.vector(24, 1.0);
    call.run(1);
    const std::vector<double> K = call.matrix_values();
    const std::vector<double> u(call.U.begin(), call.U.begin() + 18);
    EXPECT_CLOSE(forces_of(call, 3), support::product(K, u), support::max_norm(K), 200) << c.name;
  }
}

TEST(InternalForces, OfASectionWithoutSymmetryTakeTheWholeOfIt) {
  // The stiffness is stored packed and keeps the upper triangle of the product; the forces take the full matrix. The
  // two differ, and each is compared with its own definition.
  seeded_random random(115);
  for (const element_case& c : element_cases()) {
    if (c.form != section_form::orthotropic_arbitrary) continue;
    engine_call call(random_element(random, c));
    call.U = random.vector(24, 1.0);
    call.run(1);
    const matrix full = reference::stiffness(call.X, call.section), kept = reference::upper_mirrored(full);
    const matrix R = reference::eighteen(call.axes);
    const double scale = reference::largest(full);
    EXPECT_CLOSE(call.matrix_values(), listed(R.transpose() * kept * R), scale, 100) << c.name;
    const column by_stiffness = R.transpose() * kept * local_displacements(call);
    const column by_section = R.transpose() * full * local_displacements(call);
    EXPECT_CLOSE(forces_of(call, 3), listed(by_section), scale, 200) << c.name;
    EXPECT_GT(reference::largest(by_section - by_stiffness), 1e-6 * scale) << c.name;
  }
}

TEST(InternalForces, InElementAxesEqualThoseInGlobalAxesWhenTheAxesAreTheSame) {
  seeded_random random(116);
  for (const element_case& c : element_cases()) {
    engine_call call(random_element(random, c, plane_triangle(5.0, 2.0, 3.0)));
    call.U = random.vector(24, 1.0);
    const std::vector<double> local = forces_of(call, 33);
    EXPECT_EQ(forces_of(call, 3), local) << c.name;
  }
}

TEST(InternalForces, DrillingMomentsByHand) {
  seeded_random random(117);
  for (const element_case& c : element_cases()) {
    engine_call call(random_element(random, c, plane_triangle(5.0, 2.0, 3.0)));  // twice the area: 15
    call.U.assign(24, 0.0);
    call.U[5] = 1.0;
    call.U[11] = 3.0;
    call.U[17] = -2.0;
    const std::vector<double> f = forces_of(call, 33);
    const double e = static_cast<double>(call.section.drill) * 15.0;
    EXPECT_CLOSE(f[5], e * (1.0 - 1.5 + 1.0), e, 8) << c.name;
    EXPECT_CLOSE(f[11], e * (-0.5 + 3.0 + 1.0), e, 8) << c.name;
    EXPECT_CLOSE(f[17], e * (-0.5 - 1.5 - 2.0), e, 8) << c.name;
    for (const int i : reference::MEMBRANE) EXPECT_EQ(f[static_cast<std::size_t>(i - 1)], 0.0) << c.name;
    for (const int i : reference::BENDING) EXPECT_EQ(f[static_cast<std::size_t>(i - 1)], 0.0) << c.name;
  }
}

TEST(InternalForces, FoundationPushesBackOnDeflections) {
  seeded_random random(118);
  for (const element_case& c : element_cases()) {
    engine_call call(random_element(random, c, plane_triangle(5.0, 2.0, 3.0)));
    call.U.assign(24, 0.0);
    const double w[3] = {1.0, -4.0, 2.5};
    for (std::size_t n = 0; n < 3; ++n) call.U[6 * n + 2] = w[n];
    const std::vector<double> without = forces_of(call, 33);
    call.LOADS(8) = 1.6 * 1e4;  // d = 1e4
    const std::vector<double> with = forces_of(call, 33);
    std::vector<double> expected(18, 0.0), difference(18);
    expected[2] = 1e4 * (2.0 * w[0] + w[1] + w[2]);
    expected[8] = 1e4 * (w[0] + 2.0 * w[1] + w[2]);
    expected[14] = 1e4 * (w[0] + w[1] + 2.0 * w[2]);
    for (std::size_t i = 0; i < 18; ++i) difference[i] = with[i] - without[i];
    EXPECT_CLOSE(difference, expected, support::max_norm(with), 8) << c.name;
  }
}

TEST(InternalForces, WithFoundationStillEqualStiffnessTimesDisplacements) {
  seeded_random random(119);
  for (const element_case& c : element_cases()) {
    if (c.form == section_form::orthotropic_arbitrary) continue;
    engine_call call(random_element(random, c));
    call.U = random.vector(24, 1.0);
    call.LOADS(8) = static_cast<double>(call.section.membrane(0, 0));
    call.run(1);
    const std::vector<double> K = call.matrix_values();
    const std::vector<double> u(call.U.begin(), call.U.begin() + 18);
    EXPECT_CLOSE(forces_of(call, 3), support::product(K, u), support::max_norm(K), 200) << c.name;
  }
}

TEST(InternalForces, TemperatureDoesNotEnter) {
  seeded_random random(120);
  for (const element_case& c : element_cases()) {
    engine_call call(random_element(random, c));
    call.U = random.vector(24, 1e-3);
    const std::vector<double> cold = forces_of(call, 3);
    call.LOADS(26) = 50.0;
    call.LOADS(27) = -30.0;
    EXPECT_EQ(forces_of(call, 3), cold) << c.name;
  }
}

TEST(InternalForces, TotalDisplacementsAreNotRead) {
  seeded_random random(121);
  for (const element_case& c : element_cases()) {
    engine_call call(random_element(random, c));
    call.U = random.vector(24, 1e-3);
    const std::vector<double> before = forces_of(call, 3);
    call.U_TOTAL = random.vector(24, 1.0);
    EXPECT_EQ(forces_of(call, 3), before) << c.name;
  }
}

TEST(InternalForces, DoTheWorkThatTheRecordsHold) {
  // u f = integral of N e + M k over the four points, plus the work of the drilling moments. Strains, curvatures and
  // forces come from the records: the curvature from the strains of top and bottom.
  seeded_random random(122);
  for (const element_case& c : element_cases()) {
    for (int trial = 0; trial < 5; ++trial) {
      engine_call call(random_element(random, c));
      call.U = random.vector(24, 1.0);
      const std::vector<double> f = forces_of(call, 3);
      call.run(5);
      const double work = support::dot(f, std::vector<double>(call.U.begin(), call.U.begin() + 18));
      const double h = call.element.thickness;
      real energy = 0.0L;
      for (int p = 1; p <= 4; ++p) {
        const std::vector<double> R = call.point_record(p);
        real density = 0.0L;
        for (std::size_t i = 0; i < 3; ++i) {
          const real e = R[14 + i], k = (R[3 + i] - R[25 + i]) / h;
          density += R[36 + i] * e + (c.formulation == 1 ? R[39 + i] * k : 0.0L);
        }
        energy += density * reference::FOUR_POINTS[p - 1].weight * reference::twice_area(call.X);
      }
      const column ul = local_displacements(call);
      column z(3);
      for (int n = 0; n < 3; ++n) z(n) = ul(6 * n + 5);
      energy += z.dot(reference::drill_stiffness(call.X, call.section.drill) * z);
      EXPECT_CLOSE(work, static_cast<double>(energy), static_cast<double>(energy), 2000) << c.name;
    }
  }
}

TEST(InternalForces, GeneralFormReadsTheNormalPart) {
  seeded_random random(123);
  const prepared_triangle t(support::random_triangle(random));
  for (double& entry : PLATEELEM.D_MEMBRANE_TOTAL.V) entry = std::nan("");
  PLATEELEM.D_MEMBRANE_SHEAR = PLATEELEM.D_MEMBRANE_TOTAL;
  TRI_U = TRI_DISP_SPLIT(random.vector(18, 1.0).data());
  std::vector<double> f(24, 1.0);
  TRI_FORCES_GENERAL(PLATEELEM, TRI, TRI_U, ELEM_LOADS{}, f.data(), TRI_RULE_COUNT, 33);
  EXPECT_EQ(f, std::vector<double>(24, 0.0));  // the normal part is zero
}
