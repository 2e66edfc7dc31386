// forces_test.cpp: internal forces of every kind and section against the reference, and against equilibrium.
#include <cmath>

#include "comparison.h"
#include "element_call.h"
#include "element_subject.h"

using shell_reference::column;
using shell_reference::largest;
using shell_reference::listed;
using shell_reference::matrix;
using shell_reference::real;
using shell_reference::vector2;
using shell_reference::vector3;
using support::seeded_random;

TEST(Forces, AreTheReferenceInElementAndInGlobalAxes) {
  seeded_random random(321);
  for (const element_subject& s : subjects()) {
    for (int trial = 0; trial < 4; ++trial) {
      element_call call(random_element(random, s));
      call.U = random.vector(24, 1.0);
      const matrix K = call.reference.stiffness();
      const column local = K * call.reference.to_local(call.displacements());
      call.run(33);
      EXPECT_CLOSE(call.force_values(), listed(local), largest(K), 100) << s.name;
      EXPECT_EQ(call.F.changed(), support::range(1, 24)) << s.name;
      call.run(3);
      EXPECT_CLOSE(call.force_values(), listed(call.reference.to_global(local)), largest(K), 100) << s.name;
    }
  }
}

TEST(Forces, OfBendingAndShearAloneAreTheReference) {
  seeded_random random(322);
  for (const element_subject& s : subjects()) {
    if (s.membrane_only()) continue;
    support::plate_description d = random_element(random, s);
    d.modifier_membrane = 0.0;
    element_call call(d);
    call.U = random.vector(24, 1.0);
    const matrix K = call.reference.stiffness();
    call.run(33);
    EXPECT_CLOSE(call.force_values(), listed(K * call.reference.to_local(call.displacements())), largest(K), 200)
        << s.name;
  }
}

TEST(Forces, OfTheDrillingRotationsStandAtTheirPlaces) {
  // A turn of one node about the normal, and nothing else.
  seeded_random random(323);
  for (const element_subject& s : subjects()) {
    element_call call(random_element(random, s));
    for (int node = 0; node < s.nodes; ++node) {
      column u = column::Zero(call.order());
      u(6 * node + 5) = 1.0L;
      const std::vector<double> global = listed(call.reference.to_global(u));
      std::copy(global.begin(), global.end(), call.U.begin());
      call.run(33);
      const column f = call.reference.stiffness() * u;
      std::vector<double> actual, expected;
      for (int n = 0; n < s.nodes; ++n) {
        actual.push_back(call.force_values()[static_cast<std::size_t>(6 * n + 5)]);
        expected.push_back(static_cast<double>(f(6 * n + 5)));
      }
      EXPECT_CLOSE(actual, expected, support::max_norm(expected), 32) << s.name;
    }
  }
}

TEST(Forces, OfAFoundationAreTheReference) {
  seeded_random random(324);
  for (const element_subject& s : subjects()) {
    element_call call(random_element(random, s));
    call.U = random.vector(24, 1.0);
    for (const double sign : {1.0, -1.0}) {  // it counts when it is not zero, also where it pulls
      const double k = sign * 5.0 * largest(call.reference.stiffness());
      call.LOADS(LOAD_FOUNDATION) = k;
      call.run(33);
      const column f = call.reference.stiffness(k) * call.reference.to_local(call.displacements());
      EXPECT_CLOSE(call.force_values(), listed(f), std::fabs(k), 64) << s.name << " " << sign;
    }
  }
}

TEST(Forces, DoNotFeelTheTemperature) {
  seeded_random random(325);
  for (const element_subject& s : subjects()) {
    element_call call(random_element(random, s));
    call.U = random.vector(24, 1.0);
    call.run(3);
    const std::vector<double> cold = call.force_values();
    call.LOADS(LOAD_TEMPERATURE) = 100.0;
    call.LOADS(LOAD_TEMPERATURE_DIFF) = 50.0;
    call.run(3);
    EXPECT_EQ(call.force_values(), cold) << s.name;
  }
}

TEST(Forces, DoNotFeelTheTotalDisplacements) {
  seeded_random random(328);
  for (const element_subject& s : subjects()) {
    element_call call(random_element(random, s));
    call.U = random.vector(24, 1.0);
    call.run(3);
    const std::vector<double> expected = call.force_values();
    call.U_TOTAL = random.vector(24, 1.0);
    call.run(3);
    EXPECT_EQ(call.force_values(), expected) << s.name;
  }
}

TEST(Forces, OfASectionWithoutSymmetryAreNotItsStiffnessTimesTheDisplacements) {
  // The packed stiffness keeps the upper triangle of B^T D B; the forces take the whole of it.
  seeded_random random(329);
  for (const element_subject& s : subjects()) {
    if (s.symmetric()) continue;
    element_call call(random_element(random, s));
    call.U = random.vector(24, 1.0);
    call.run(1);
    const std::vector<double> K = call.matrix_values();
    call.run(3);
    const std::vector<double> by_stiffness = support::product(K, listed(call.displacements()));
    EXPECT_GT(largest(shell_reference::column_of(call.force_values()) - shell_reference::column_of(by_stiffness)),
              1e-6 * support::max_norm(K))
        << s.name;
  }
}

TEST(Forces, DoTheWorkThatTheRecordsHold) {
  // u f = the integral of N e + M k + Q g over the four points, plus the work of the drilling moments. Strains,
  // curvatures and forces come from the records: the curvature from the strains of top and bottom, and g is kappa times
  // the shear strain shown. The in-plane shear of a quadrilateral is the same at every point; of turned material axes
  // its part of the section has all entries and takes the direct strains of the centre too, which no record shows.
  seeded_random random(330);
  for (const element_subject& s : subjects()) {
    if (s.nodes == 4 && !s.isotropic()) continue;
    for (int trial = 0; trial < 5; ++trial) {
      element_call call(random_element(random, s));
      call.U = random.vector(24, 1.0);
      call.run(3);
      const double work = support::dot(call.force_values(), listed(call.displacements()));
      call.run(5);
      const double h = call.element.thickness;
      const shell_reference::corners& X = call.reference.X;
      real energy = 0.0L, size = 0.0L;
      for (int p = 1; p <= 4; ++p) {
        const std::vector<double> R = call.point_record(p);
        const shell_reference::station& at = shell_reference::element_rule(s.nodes)[static_cast<std::size_t>(p - 1)];
        real density = 0.0L;
        for (std::size_t i = 0; i < 3; ++i) density += R[36 + i] * real(R[14 + i]);
        for (std::size_t i = 0; i < 3; ++i) density += R[39 + i] * (R[3 + i] - real(R[25 + i])) / h;
        for (std::size_t i = 0; i < 2; ++i) density += R[44 + i] * 0.833333333333333L * R[42 + i];
        const real part = density * at.weight * shell_reference::determinant(X, at.xi, at.eta);
        energy += part;
        size += std::fabs(part);
      }
      const matrix K = call.reference.stiffness();
      const column u = call.reference.to_local(call.displacements());
      for (int n = 0; n < s.nodes; ++n) {
        for (int m = 0; m < s.nodes; ++m) energy += u(6 * n + 5) * K(6 * n + 5, 6 * m + 5) * u(6 * m + 5);
      }
      EXPECT_CLOSE(work, static_cast<double>(energy), static_cast<double>(size), 2000) << s.name;
    }
  }
}

TEST(Forces, OfConstantStrainAreTheTractionsOnTheSides) {
  // Half the traction of each side at either end: equilibrium of the linear and bilinear fields, whatever the shape.
  seeded_random random(326);
  for (const element_subject& s : subjects()) {
    element_call call(random_element(random, s));
    const shell_reference::corners& X = call.reference.X;
    const std::vector<double> a = random.vector(4, 1.0);
    column u = column::Zero(call.order()), f = column::Zero(call.order());
    const vector3 N = call.reference.s.whole() * vector3(a[0], a[3], real(a[1]) + a[2]);
    for (int n = 0; n < s.nodes; ++n) {
      u.segment(6 * n, 2) << a[0] * X(0, n) + a[1] * X(1, n), a[2] * X(0, n) + a[3] * X(1, n);
      const vector2 d = shell_reference::side(X, n);  // outward normal times the length: (dy, -dx)
      const vector2 traction(N(0) * d(1) - N(2) * d(0), N(2) * d(1) - N(1) * d(0));
      f.segment(6 * n, 2) += traction / 2.0L;
      f.segment(6 * ((n + 1) % s.nodes), 2) += traction / 2.0L;
    }
    const std::vector<double> global = listed(call.reference.to_global(u));
    std::copy(global.begin(), global.end(), call.U.begin());
    call.run(33);
    EXPECT_CLOSE(call.force_values(), listed(f), largest(call.reference.s.whole()), 100) << s.name;
  }
}

TEST(Forces, OfConstantCurvatureDoTheWorkOfTheMoments) {
  // For each of the twelve or nine rigid and constant-curvature fields v: v f = area times curvature of v times M.
  seeded_random random(327);
  for (const element_subject& s : subjects()) {
    if (s.membrane_only()) continue;
    element_call call(random_element(random, s));
    const shell_reference::corners& X = call.reference.X;
    const std::vector<double> w = random.vector(6, 1.0);
    const auto freedoms = [&](const std::vector<double>& c) {
      const column q = shell_reference::quadratic_deflection(X, c);
      column u = column::Zero(call.order());
      for (int i = 0; i < 3 * s.nodes; ++i) u(call.reference.bending(i)) = q(i);
      return u;
    };
    const std::vector<double> global = listed(call.reference.to_global(freedoms(w)));
    std::copy(global.begin(), global.end(), call.U.begin());
    call.run(33);
    const column f = shell_reference::column_of(call.force_values());
    const vector3 M = call.reference.s.bending * vector3(-w[3], -w[4], -2.0L * w[5]);
    real area = 0.0L;
    for (const auto& p : shell_reference::element_rule(s.nodes)) {
      area += p.weight * shell_reference::determinant(X, p.xi, p.eta);
    }
    const vector3 curvature[6] = {vector3::Zero(),
                                  vector3::Zero(),
                                  vector3::Zero(),
                                  vector3(-1.0L, 0.0L, 0.0L),
                                  vector3(0.0L, -1.0L, 0.0L),
                                  vector3(0.0L, 0.0L, -2.0L)};
    for (std::size_t i = 0; i < 6; ++i) {
      std::vector<double> v(6, 0.0);
      v[i] = 1.0;
      const real work = freedoms(v).dot(f), expected = area * curvature[i].dot(M);
      const double scale = largest(call.reference.stiffness()) * 1e-1;
      EXPECT_CLOSE(static_cast<double>(work), static_cast<double>(expected), scale, 400) << s.name << " " << i;
    }
  }
}
