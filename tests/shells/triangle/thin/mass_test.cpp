// mass_test.cpp: shape functions of the transverse displacement and consistent mass.
#include "shells/triangle/mass.h"

#include <cmath>

#include "comparison.h"
#include "element_cases.h"
#include "element_stores.h"
#include "engine_call.h"
#include "finites/records.h"
#include "prepared_triangle.h"
#include "shells/triangle/shape.h"

using reference::column;
using reference::listed;
using reference::matrix;
using reference::real;
using support::seeded_random;
using support::values;

namespace {

// The functions of w, theta x, theta y of each node at (xi, eta), as loads take them.
column load_functions(double xi, double eta) {
  VECTOR<9> a;
  TRI_W_SHAPE(xi, eta, a);
  const double two_area = TRI.TWO_AREA;
  double f[18] = {};
  TRI_W_LOAD(a, {{TRI.G22 * two_area, -TRI.G21 * two_area, -TRI.G12 * two_area, TRI.G11 * two_area}}, 1.0, f);
  column N(9);
  for (int i = 0; i < 9; ++i) N(i) = f[reference::BENDING[i] - 1];
  return N;
}

std::vector<double> bending_mass(double m) {
  std::vector<double> M(45);
  TRI_MASS_BENDING(TRI, m, TRI_RULE_FOUR, M.data());
  return M;
}

}  // namespace

TEST(DeflectionShape, NaturalFunctionsAtTheNodes) {
  // The value functions are 1 at their own node; the derivative functions are 0 at all.
  const double corners[3][2] = {{0.0, 0.0}, {1.0, 0.0}, {0.0, 1.0}};
  for (int n = 0; n < 3; ++n) {
    VECTOR<9> a;
    TRI_W_SHAPE(corners[n][0], corners[n][1], a);
    std::vector<double> expected(9, 0.0);
    expected[static_cast<std::size_t>(3 * n)] = 1.0;
    EXPECT_EQ(values(a.data(), 9), expected);
  }
}

TEST(DeflectionShape, ByHandAtOnePoint) {
  // xi = 1/2, eta = 1/4: s = 1/4, t = 1/32.
  VECTOR<9> a;
  TRI_W_SHAPE(0.5, 0.25, a);
  const std::vector<double> by_hand = {0.0625 * 2.5 + 0.0625, 0.03125 + 0.015625, 0.015625 + 0.015625,   // node 1
                                       0.25 * 2.0 + 0.0625,   -0.125 - 0.03125,   0.0625 + 0.015625,     // node 2
                                       0.0625 * 2.5 + 0.0625, 0.03125 + 0.015625, -0.046875 - 0.03125};  // node 3
  EXPECT_CLOSE(values(a.data(), 9), by_hand, 1.0, 2);
}

TEST(DeflectionShape, FreedomFunctionsAreThoseOfAreaCoordinates) {
  seeded_random random(91);
  for (int trial = 0; trial < 50; ++trial) {
    const prepared_triangle t(support::random_triangle(random));
    const double xi = random.uniform(0.0, 1.0), eta = random.uniform(0.0, 1.0 - xi);
    EXPECT_CLOSE(listed(load_functions(xi, eta)), listed(reference::w_functions(t.flat(), xi, eta)), 1.0, 16);
  }
}

TEST(DeflectionShape, ReproducesEveryQuadraticField) {
  seeded_random random(92);
  for (int trial = 0; trial < 50; ++trial) {
    const prepared_triangle t(support::random_triangle(random));
    const std::vector<double> c = random.vector(6, 1.0);
    const double xi = random.uniform(0.0, 1.0), eta = random.uniform(0.0, 1.0 - xi);
    const reference::flat_triangle X = t.flat();
    const dense::vector2 x = (1 - real(xi) - eta) * X.col(0) + xi * X.col(1) + eta * X.col(2);
    const real w =
        c[0] + c[1] * x(0) + c[2] * x(1) + c[3] * x(0) * x(0) / 2 + c[4] * x(1) * x(1) / 2 + c[5] * x(0) * x(1);
    const real interpolated = load_functions(xi, eta).dot(quadratic_deflection(X, c));
    EXPECT_CLOSE(static_cast<double>(interpolated), static_cast<double>(w), 5.0, 16);
  }
}

TEST(DeflectionShape, SlopesAtTheNodesAreTheRotations) {
  // By central differences in the natural directions, which are exact for a cubic except for the third derivative.
  seeded_random random(93);
  const prepared_triangle t(support::random_triangle(random));
  const real step = 1e-6L;
  const double corners[3][2] = {{0.0, 0.0}, {1.0, 0.0}, {0.0, 1.0}};
  for (int n = 0; n < 3; ++n) {
    const double xi = corners[n][0], eta = corners[n][1], d = static_cast<double>(step);
    const column by_xi = (load_functions(xi + d, eta) - load_functions(xi - d, eta)) / (2 * step);
    const column by_eta = (load_functions(xi, eta + d) - load_functions(xi, eta - d)) / (2 * step);
    const column by_x = TRI.G11 * by_xi + TRI.G12 * by_eta, by_y = TRI.G21 * by_xi + TRI.G22 * by_eta;
    column expected_x = column::Zero(9), expected_y = column::Zero(9);
    expected_y(3 * n + 1) = 1.0L;   // theta x = dw/dy
    expected_x(3 * n + 2) = -1.0L;  // theta y = -dw/dx
    EXPECT_WITHIN(listed(by_x), listed(expected_x), 1.0, 1e-8);
    EXPECT_WITHIN(listed(by_y), listed(expected_y), 1.0, 1e-8);
  }
}

TEST(MembraneMass, ByHand) {
  const prepared_triangle t(plane_triangle(5.0, 2.0, 3.0));
  support::guarded_buffer M(21);
  TRI_MASS_MEMBRANE(TRI, 1.6, M.data());  // d = 15 * 1.6 / 24 = 1
  EXPECT_EQ(M.changed(), support::range(1, 21));
  const std::vector<double> by_hand = {2, 0, 2, 1, 0, 2, 0, 1, 0, 2, 1, 0, 1, 0, 2, 0, 1, 0, 1, 0, 2};
  EXPECT_CLOSE(values(M.data(), 21), by_hand, 2.0, 4);
}

TEST(MembraneMass, UnitTriangleHasItsMassInEachDirection) {
  const prepared_triangle t(plane_triangle(1.0, 0.0, 1.0));
  std::vector<double> packed(21);
  TRI_MASS_MEMBRANE(TRI, 3.0, packed.data());
  const matrix M = full_of(6, packed.data());
  real u = 0.0L, v = 0.0L, mixed = 0.0L;
  for (int a = 0; a < 3; ++a) {
    for (int b = 0; b < 3; ++b) {
      u += M(2 * a, 2 * b);
      v += M(2 * a + 1, 2 * b + 1);
      mixed += std::abs(M(2 * a, 2 * b + 1));
    }
  }
  EXPECT_CLOSE(static_cast<double>(u), 1.5, 1.5, 4);
  EXPECT_CLOSE(static_cast<double>(v), 1.5, 1.5, 4);
  EXPECT_EQ(mixed, 0.0L);
}

TEST(BendingMass, IsTheIntegralOfTheCubicFunctions) {
  seeded_random random(94);
  for (int trial = 0; trial < 30; ++trial) {
    const prepared_triangle t(support::random_triangle(random));
    support::guarded_buffer M(45);
    TRI_MASS_BENDING(TRI, 0.7, TRI_RULE_FOUR, M.data());
    EXPECT_EQ(M.changed(), support::range(1, 45));
    matrix expected = matrix::Zero(9, 9);
    for (const reference::station& p : reference::FOUR_POINTS) {
      const column N = reference::w_functions(t.flat(), p.xi, p.eta);
      expected += N * N.transpose() * (p.weight * reference::twice_area(t.flat()) * 0.7);
    }
    EXPECT_CLOSE(values(M.data(), 45), packed_of(expected), reference::largest(expected), 32);
  }
}

TEST(BendingMass, RigidMotionsHaveMassAndMomentsOfInertia) {
  // Deflections 1, x and y are linear: the rule integrates their products exactly. For a triangle the integral of
  // x^2 is the area times the mean of the squares of x at the middles of the sides.
  const double m = 2.5;
  const prepared_triangle t(plane_triangle(5.0, 2.0, 3.0));
  const std::vector<double> packed = bending_mass(m);
  const matrix M = full_of(9, packed.data());
  const reference::flat_triangle X = t.flat();
  const column one = quadratic_deflection(X, {1, 0, 0, 0, 0, 0}), x = quadratic_deflection(X, {0, 1, 0, 0, 0, 0}),
               y = quadratic_deflection(X, {0, 0, 1, 0, 0, 0});
  const double area = 7.5, xx = (6.25 + 12.25 + 1.0) / 3.0, yy = (0.0 + 2.25 + 2.25) / 3.0;
  const double xy = (0.0 + 3.5 * 1.5 + 1.0 * 1.5) / 3.0, xc = 7.0 / 3.0;
  EXPECT_CLOSE(static_cast<double>(one.dot(M * one)), m * area, m * area, 32);
  EXPECT_CLOSE(static_cast<double>(one.dot(M * x)), m * area * xc, m * area * xc, 32);
  EXPECT_CLOSE(static_cast<double>(x.dot(M * x)), m * area * xx, m * area * xx, 64);
  EXPECT_CLOSE(static_cast<double>(y.dot(M * y)), m * area * yy, m * area * xx, 64);
  EXPECT_CLOSE(static_cast<double>(x.dot(M * y)), m * area * xy, m * area * xx, 64);
}

TEST(ElementMass, IsTheReferenceForBothKinds) {
  seeded_random random(95);
  for (const element_case& c : element_cases()) {
    for (int trial = 0; trial < 5; ++trial) {
      engine_call call(random_element(random, c));
      call.LOADS(4) = random.uniform(1e-3, 1.0);
      call.run(2);
      EXPECT_EQ(call.matrix.changed(), support::range(1, 324));
      const matrix M = reference::mass(call.X, real(call.LOADS(4)) * call.element.thickness);
      const matrix R = reference::eighteen(call.axes);
      const matrix expected = R.transpose() * M * R;
      EXPECT_CLOSE(call.matrix_values(), listed(expected), reference::largest(expected), 64) << c.name;
    }
  }
}

TEST(ElementMass, MembraneKindHasMassOnDeflectionAndRotationsButNotOnDrilling) {
  seeded_random random(96);
  for (const element_case& c : element_cases()) {
    engine_call call(random_element(random, c, plane_triangle(5.0, 2.0, 3.0)));
    call.LOADS(4) = 0.5;
    call.run(2);
    const std::vector<double> M = call.matrix_values();
    const auto entry = [&M](int i, int j) { return M[static_cast<std::size_t>(18 * (j - 1) + i - 1)]; };
    for (const int w : {3, 9, 15}) EXPECT_GT(entry(w, w), 0.0) << c.name;
    EXPECT_GT(entry(4, 4), 0.0) << c.name;
    for (const int z : reference::DRILL) {
      for (int i = 1; i <= 18; ++i) {
        EXPECT_EQ(entry(i, z), 0.0);
        EXPECT_EQ(entry(z, i), 0.0);
      }
    }
  }
}

TEST(ElementMass, NoDensityClearsTheMatrix) {
  seeded_random random(97);
  for (const element_case& c : element_cases()) {
    engine_call call(random_element(random, c));
    call.LOADS(4) = 0.0;
    call.run(2);
    EXPECT_EQ(call.matrix_values(), std::vector<double>(324, 0.0)) << c.name;
    EXPECT_EQ(call.matrix.changed(), support::range(1, 324)) << c.name;
  }
}

TEST(ElementMass, OnlyADensityOfZeroIsNone) {
  // A weight with a sign is a mass with a sign.
  seeded_random random(98);
  for (const element_case& c : element_cases()) {
    engine_call call(random_element(random, c));
    call.LOADS(4) = 0.5;
    call.run(2);
    std::vector<double> expected = call.matrix_values();
    for (double& entry : expected) entry = -entry;
    call.LOADS(4) = -0.5;
    call.run(2);
    EXPECT_EQ(call.matrix_values(), expected) << c.name;
    EXPECT_GT(support::max_norm(expected), 0.0) << c.name;
  }
}
