// matrices_test.cpp: stiffness, mass and geometric stiffness of every kind and section against full matrices of the
// reference.
#include <cmath>

#include "comparison.h"
#include "element_call.h"
#include "element_subject.h"

using shell_reference::column;
using shell_reference::largest;
using shell_reference::listed;
using shell_reference::matrix;
using shell_reference::real;
using shell_reference::temperature;
using shell_reference::upper_mirrored;
using shell_reference::vector3;
using support::seeded_random;

namespace {

// Puts a different membrane force into each point's block.
std::vector<vector3> stored_forces(seeded_random& random, element_call& call) {
  std::vector<double> blocks(360, std::nan(""));
  std::vector<vector3> N;
  for (std::size_t p = 0; p < 4; ++p) {
    const std::vector<double> forces = random.vector(3, 1.0);
    for (std::size_t i = 0; i < 3; ++i) blocks[90 * p + 36 + i] = forces[i];
    N.emplace_back(forces[0], forces[1], forces[2]);
  }
  call.points.set_input(blocks);
  // A triangle has one membrane force: that of the first block.
  if (call.reference.n == 3) N.assign(4, N.front());
  return N;
}

}  // namespace

TEST(Stiffness, IsTheReferenceForEveryKindAndSection) {
  seeded_random random(301);
  for (const element_subject& s : subjects()) {
    for (int trial = 0; trial < 5; ++trial) {
      element_call call(random_element(random, s));
      call.run(1);
      const matrix expected = call.reference.to_global_matrix(upper_mirrored(call.reference.stiffness()));
      EXPECT_CLOSE(call.matrix_values(), listed(expected), largest(expected), 100) << s.name;
      const int order = call.order();
      EXPECT_EQ(call.matrix.changed(), support::range(1, order * order)) << s.name;
    }
  }
}

TEST(Stiffness, OfBendingAndShearAloneIsTheReference) {
  // Without the membrane, which outweighs them in a thin plate.
  seeded_random random(302);
  for (const element_subject& s : subjects()) {
    if (s.membrane_only()) continue;
    for (int trial = 0; trial < 5; ++trial) {
      support::plate_description d = random_element(random, s);
      d.modifier_membrane = 0.0;
      element_call call(d);
      call.run(1);
      const matrix K = upper_mirrored(call.reference.stiffness());
      const matrix expected = call.reference.to_global_matrix(K);
      EXPECT_CLOSE(call.matrix_values(), listed(expected), largest(expected), 200) << s.name;
    }
  }
}

TEST(Stiffness, OfTheDrillingRotationsAloneIsTheReference) {
  // Without modifiers nothing else is left: the modifiers do not scale it.
  seeded_random random(303);
  for (const element_subject& s : subjects()) {
    support::plate_description d = random_element(random, s);
    d.modifier_membrane = d.modifier_bending = 0.0;
    if (s.isotropic()) d.modifier_shear = 0.0;  // a general section without shear has no ratio
    if (s.thick() && !s.isotropic()) continue;
    element_call call(d);
    call.run(1);
    const matrix expected = call.reference.to_global_matrix(call.reference.stiffness());
    EXPECT_GT(largest(expected), 0.0);
    EXPECT_CLOSE(call.matrix_values(), listed(expected), largest(expected), 64) << s.name;
  }
}

TEST(Stiffness, OnAFoundationIsTheReference) {
  // FINITES never asks for it; callers of the engines may.
  seeded_random random(304);
  for (const element_subject& s : subjects()) {
    element_call call(random_element(random, s));
    call.run(1);
    const std::vector<double> without = call.matrix_values();
    call.LOADS(LOAD_FOUNDATION) = 3.0 * support::max_norm(without);
    call.run(1);
    const matrix K = call.reference.stiffness(call.LOADS(LOAD_FOUNDATION));
    const matrix expected = call.reference.to_global_matrix(upper_mirrored(K));
    EXPECT_CLOSE(call.matrix_values(), listed(expected), largest(expected), 64) << s.name;
  }
}

TEST(Stiffness, OnAFoundationThatPullsIsTheReference) {
  // The coefficient is asked whether it is zero, not whether it is positive.
  seeded_random random(314);
  for (const element_subject& s : subjects()) {
    element_call call(random_element(random, s));
    const double k = -2.0 * largest(call.reference.stiffness());
    call.LOADS(LOAD_FOUNDATION) = k;
    call.run(1);
    const matrix expected = call.reference.to_global_matrix(upper_mirrored(call.reference.stiffness(k)));
    EXPECT_CLOSE(call.matrix_values(), listed(expected), largest(expected), 64) << s.name;
  }
}

TEST(Stiffness, TellsTheAxialFromTheInPlaneShearModifier) {
  // The call block may carry different ones: a hundredth of the axial stiffness for one formulation of membranes.
  seeded_random random(305);
  for (const int kind : {10, 11, 12, 20, 21, 22}) {
    element_call call(random_element(random, isotropic_subject(kind)));
    call.LOADS(LOAD_MOD_AXIAL) = 0.01 * call.LOADS(LOAD_MOD_INPLANE);
    call.reference.s.membrane.topLeftCorner(2, 2) *= 0.01L;
    call.run(1);
    const matrix expected = call.reference.to_global_matrix(call.reference.stiffness());
    EXPECT_CLOSE(call.matrix_values(), listed(expected), largest(expected), 64) << kind;
  }
}

TEST(Mass, IsTheReferenceForEveryKindAndSection) {
  seeded_random random(306);
  for (const element_subject& s : subjects()) {
    for (int trial = 0; trial < 5; ++trial) {
      element_call call(random_element(random, s));
      call.LOADS(LOAD_DENSITY) = random.uniform(1e-3, 1.0) * (trial == 4 ? -1.0 : 1.0);
      call.run(2);
      const matrix expected = call.reference.to_global_matrix(call.reference.mass(call.LOADS(LOAD_DENSITY)));
      EXPECT_CLOSE(call.matrix_values(), listed(expected), largest(expected), 64) << s.name;
    }
  }
}

TEST(Mass, OfRotationsIsTheReference) {
  // Rotary inertia is small: a thickness of the size of the element shows it.
  seeded_random random(307);
  for (const element_subject& s : subjects()) {
    support::plate_description d = random_element(random, s);
    d.thickness = 2.0;
    element_call call(d);
    call.LOADS(LOAD_DENSITY) = 0.5;
    call.run(2);
    const matrix expected = call.reference.to_global_matrix(call.reference.mass(0.5L));
    EXPECT_CLOSE(call.matrix_values(), listed(expected), largest(expected), 64) << s.name;
  }
}

TEST(Mass, HasNothingOnTheDrillingRotations) {
  // The membrane kinds have the mass of deflections and rotations about x and y all the same.
  seeded_random random(315);
  for (const element_subject& s : subjects()) {
    element_call call(random_element(random, s));
    call.LOADS(LOAD_DENSITY) = 0.5;
    call.run(2);
    const matrix R = shell_reference::groups(call.reference.axes, s.nodes);
    const matrix M = R * dense::widened(call.matrix_values().data(), call.order(), call.order()) * R.transpose();
    for (int n = 0; n < s.nodes; ++n) {
      for (int i = 0; i < call.order(); ++i) {
        EXPECT_CLOSE(static_cast<double>(M(i, 6 * n + 5)), 0.0, largest(M), 16) << s.name;
      }
      for (const int i : {2, 3, 4}) EXPECT_GT(M(6 * n + i, 6 * n + i), 1e-8 * largest(M)) << s.name;
    }
  }
}

TEST(Mass, WithoutDensityIsZero) {
  seeded_random random(308);
  for (const element_subject& s : subjects()) {
    element_call call(random_element(random, s));
    call.run(2);
    const int entries = call.order() * call.order();
    EXPECT_EQ(call.matrix_values(), std::vector<double>(static_cast<std::size_t>(entries), 0.0)) << s.name;
    EXPECT_EQ(call.matrix.changed(), support::range(1, entries)) << s.name;
  }
}

TEST(GeometricStiffness, OfStoredForcesHasAMinus) {
  // Displacements and temperature play no part.
  seeded_random random(309);
  for (const element_subject& s : subjects()) {
    element_call call(random_element(random, s));
    call.U = random.vector(24, 1.0);
    call.LOADS(LOAD_TEMPERATURE) = 30.0;
    const std::vector<vector3> N = stored_forces(random, call);
    call.run(71);
    const matrix expected = call.reference.to_global_matrix(-call.reference.geometric(N));
    EXPECT_CLOSE(call.matrix_values(), listed(expected), largest(expected), 64) << s.name;
  }
}

TEST(GeometricStiffness, OfConstantForcesIsTheirTilt) {
  // An element under constant membrane forces that turns rigidly by a small angle: the forces follow it. A nodal force
  // (fx, fy) on a surface that has tilted by w = c1 x + c2 y points out of the old plane by c1 fx + c2 fy; the nodal
  // forces are half the tractions of the sides that meet.
  seeded_random random(316);
  for (const element_subject& s : subjects()) {
    element_call call(random_element(random, s));
    const vector3 N(2.0L, 3.0L, 0.5L);
    std::vector<double> blocks(360, 0.0);
    for (std::size_t p = 0; p < 4; ++p) {
      for (std::size_t i = 0; i < 3; ++i) blocks[90 * p + 36 + i] = static_cast<double>(N(static_cast<int>(i)));
    }
    call.points.set_input(blocks);
    call.run(71);
    const matrix R = shell_reference::groups(call.reference.axes, s.nodes);
    const matrix K = R * dense::widened(call.matrix_values().data(), call.order(), call.order()) * R.transpose();
    const shell_reference::corners& X = call.reference.X;
    const real c1 = 0.4L, c2 = -1.5L;
    column w = column::Zero(call.order()), tilted = column::Zero(call.order());
    for (int n = 0; n < s.nodes; ++n) {
      w(6 * n + 2) = c1 * X(0, n) + c2 * X(1, n);
      const shell_reference::vector2 d = shell_reference::side(X, n);  // outward normal times the length: (dy, -dx)
      const real fx = N(0) * d(1) - N(2) * d(0), fy = N(2) * d(1) - N(1) * d(0);
      for (const int m : {n, (n + 1) % s.nodes}) tilted(6 * m + 2) += (c1 * fx + c2 * fy) / 2.0L;
    }
    const column change = -(K * w);
    EXPECT_CLOSE(listed(change), listed(tilted), 10.0, 64) << s.name;
  }
}

TEST(GeometricStiffness, OfStoredForcesIsAddedToTheStiffnessWithItsFlag) {
  seeded_random random(310);
  for (const element_subject& s : subjects()) {
    element_call call(random_element(random, s));
    std::vector<vector3> N = stored_forces(random, call);
    call.run(1);
    const std::vector<double> K = call.matrix_values();
    call.geometric = 1;
    // Forces of the size of the stiffness.
    const double size = support::max_norm(K);
    for (int p = 0; p < 4; ++p) {
      for (int i = 0; i < 3; ++i) call.points.data()[90 * p + 36 + i] *= size;
    }
    for (vector3& forces : N) forces *= size;
    call.run(1);
    const matrix both = upper_mirrored(call.reference.stiffness()) + call.reference.geometric(N);
    const matrix expected = call.reference.to_global_matrix(both);
    EXPECT_CLOSE(call.matrix_values(), listed(expected), largest(expected), 100) << s.name;
  }
}

TEST(GeometricStiffness, WithoutStoredForcesAddsNothing) {
  seeded_random random(311);
  for (const element_subject& s : subjects()) {
    element_call call(random_element(random, s));
    call.run(1);
    const std::vector<double> K = call.matrix_values();
    call.points.set_input(std::vector<double>(360, 0.0));
    call.geometric = 1;
    call.run(1);
    EXPECT_EQ(call.matrix_values(), K) << s.name;
  }
}

TEST(GeometricStiffness, OfDisplacementsTakesTheForcesOfEachPoint) {
  // ex and ey of the point; of quadrilaterals the shear strain of the centre.
  seeded_random random(312);
  for (const element_subject& s : subjects()) {
    for (const double change : {0.0, 80.0}) {
      element_call call(random_element(random, s));
      call.U = random.vector(24, 1e-3);
      call.LOADS(LOAD_TEMPERATURE) = change;
      call.LOADS(LOAD_TEMPERATURE_DIFF) = 1000.0;  // bends, and has no membrane force
      call.run(7);
      const column u = call.reference.to_local(call.displacements());
      std::vector<vector3> N;
      for (const shell_reference::station& p : shell_reference::element_rule(s.nodes)) {
        N.push_back(call.reference.membrane_forces(u, {change, 0.0}, p.xi, p.eta));
      }
      const matrix expected = call.reference.to_global_matrix(-call.reference.geometric(N));
      const double scale = largest(expected) + largest(call.reference.s.whole()) * 1e-3;
      EXPECT_CLOSE(call.matrix_values(), listed(expected), scale, 200) << s.name;
    }
  }
}

TEST(GeometricStiffness, OfNoDisplacementIsZero) {
  seeded_random random(313);
  for (const element_subject& s : subjects()) {
    element_call call(random_element(random, s));
    call.run(7);
    const std::size_t entries = static_cast<std::size_t>(call.order() * call.order());
    EXPECT_EQ(call.matrix_values(), std::vector<double>(entries, 0.0)) << s.name;
  }
}
