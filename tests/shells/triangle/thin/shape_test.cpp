// shape_test.cpp: the functions of the transverse displacement, for loads and mass, and the masses that follow by hand.
#include "shells/triangle/shape.h"

#include "comparison.h"
#include "element_stores.h"
#include "guarded_buffer.h"
#include "prepared_triangle.h"
#include "shells/common/surface_points.h"
#include "shells/triangle/mass.h"

using shell_reference::column;
using shell_reference::listed;
using shell_reference::matrix;
using shell_reference::quadratic_deflection;
using shell_reference::real;
using support::seeded_random;
using support::values;

namespace {

constexpr double CORNERS[3][2] = {{0.0, 0.0}, {1.0, 0.0}, {0.0, 1.0}};

// The functions of w, theta x, theta y of each node at (xi, eta), as loads take them.
column load_functions(double xi, double eta) {
  VECTOR<9> a;
  TRI_W_SHAPE(xi, eta, a);
  const double two_area = TRI.TWO_AREA;
  double f[18] = {};
  TRI_W_LOAD(a, {{TRI.G22 * two_area, -TRI.G21 * two_area, -TRI.G12 * two_area, TRI.G11 * two_area}}, 1.0, f);
  column N(9);
  for (int i = 0; i < 9; ++i) N(i) = f[6 * (i / 3) + 2 + i % 3];
  return N;
}

}  // namespace

TEST(DeflectionShape, NaturalFunctionsAtTheNodes) {
  // The value functions are 1 at their own node; the derivative functions are 0 at all.
  for (std::size_t n = 0; n < 3; ++n) {
    VECTOR<9> a;
    TRI_W_SHAPE(CORNERS[n][0], CORNERS[n][1], a);
    std::vector<double> expected(9, 0.0);
    expected[3 * n] = 1.0;
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

TEST(DeflectionShape, FreedomFunctionsAreTheReference) {
  seeded_random random(91);
  for (int trial = 0; trial < 50; ++trial) {
    const prepared_triangle t(support::random_triangle(random));
    const double xi = random.uniform(0.0, 1.0), eta = random.uniform(0.0, 1.0 - xi);
    EXPECT_CLOSE(listed(load_functions(xi, eta)), listed(shell_reference::w_functions(t.flat(), xi, eta)), 1.0, 16);
  }
}

TEST(DeflectionShape, ReproducesEveryQuadraticField) {
  seeded_random random(92);
  for (int trial = 0; trial < 50; ++trial) {
    const prepared_triangle t(support::random_triangle(random));
    const std::vector<double> c = random.vector(6, 1.0);
    const double xi = random.uniform(0.0, 1.0), eta = random.uniform(0.0, 1.0 - xi);
    const shell_reference::corners X = t.flat();
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
  const double d = 1e-6;
  for (int n = 0; n < 3; ++n) {
    const double xi = CORNERS[n][0], eta = CORNERS[n][1];
    const column by_xi = (load_functions(xi + d, eta) - load_functions(xi - d, eta)) / (2 * d);
    const column by_eta = (load_functions(xi, eta + d) - load_functions(xi, eta - d)) / (2 * d);
    const column by_x = TRI.G11 * by_xi + TRI.G12 * by_eta, by_y = TRI.G21 * by_xi + TRI.G22 * by_eta;
    column expected_x = column::Zero(9), expected_y = column::Zero(9);
    expected_y(3 * n + 1) = 1.0L;   // theta x = dw/dy
    expected_x(3 * n + 2) = -1.0L;  // theta y = -dw/dx
    EXPECT_WITHIN(listed(by_x), listed(expected_x), 1.0, 1e-8);
    EXPECT_WITHIN(listed(by_y), listed(expected_y), 1.0, 1e-8);
  }
}

TEST(MembraneMass, ByHand) {
  const prepared_triangle t(plane_triangle());
  support::guarded_buffer M(21);
  TRI_MASS_MEMBRANE(TRI, 1.6, M.data());  // d = 15 * 1.6 / 24 = 1
  EXPECT_EQ(M.changed(), support::range(1, 21));
  const std::vector<double> by_hand = {2, 0, 2, 1, 0, 2, 0, 1, 0, 2, 1, 0, 1, 0, 2, 0, 1, 0, 1, 0, 2};
  EXPECT_CLOSE(values(M.data(), 21), by_hand, 2.0, 4);
}

TEST(BendingMass, OfRigidMotionsByHand) {
  // Deflections 1, x and y are linear: the rule integrates their products exactly. For a triangle the integral of
  // x^2 is the area times the mean of the squares of x at the middles of the sides.
  const double m = 2.5;
  const prepared_triangle t(plane_triangle());
  support::guarded_buffer packed(45);
  TRI_MASS_BENDING(TRI, m, TRI_RULE_FOUR, packed.data());
  EXPECT_EQ(packed.changed(), support::range(1, 45));
  const matrix M = full_of(9, packed.data());
  const shell_reference::corners X = t.flat();
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
