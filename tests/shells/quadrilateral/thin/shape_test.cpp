// shape_test.cpp: the twelve functions of the transverse displacement and the nodal loads that they make.
#include "shells/quadrilateral/shape.h"

#include "comparison.h"
#include "element_stores.h"
#include "prepared_quadrilateral.h"

using shell_reference::column;
using shell_reference::listed;
using support::seeded_random;
using support::values;

namespace {

// The functions of w, theta x, theta y of each node at (xi, eta), as loads take them.
column load_functions(double xi, double eta) {
  VECTOR<12> a;
  QUAD_W_SHAPE(xi, eta, a);
  const QUAD_POINT J = QUAD_JACOBIAN(QUAD, xi, eta);
  double f[24] = {};
  QUAD_W_LOAD(a, {{J.G22 * J.DET, -J.G21 * J.DET, -J.G12 * J.DET, J.G11 * J.DET}}, 1.0, f);
  column N(12);
  for (int i = 0; i < 12; ++i) N(i) = f[6 * (i / 3) + 2 + i % 3];
  return N;
}

constexpr double CORNERS[4][2] = {{-1, -1}, {1, -1}, {1, 1}, {-1, 1}};

}  // namespace

TEST(QuadrilateralShape, ByHandAtOnePoint) {
  // xi = 1/2, eta = -1/2: A = 3/2, B = C = 3/4; d = 3/32 (1 - xi with 1 - eta), 9/32, 3/32, 1/32.
  VECTOR<12> f;
  QUAD_W_SHAPE(0.5, -0.5, f);
  const std::vector<double> by_hand = {3.0 / 32 * 1.5, 3.0 / 32 * 0.75,  3.0 / 32 * 0.75,    // node 1
                                       9.0 / 32 * 2.5, -9.0 / 32 * 0.75, 9.0 / 32 * 0.75,    // node 2
                                       3.0 / 32 * 1.5, -3.0 / 32 * 0.75, -3.0 / 32 * 0.75,   // node 3
                                       1.0 / 32 * 0.5, 1.0 / 32 * 0.75,  -1.0 / 32 * 0.75};  // node 4
  EXPECT_CLOSE(values(f.data(), 12), by_hand, 1.0, 2);
}

TEST(QuadrilateralShape, ValuesAndSlopesAtTheNodes) {
  // By central differences: the functions are cubic, so that d^2 / 3 of the third derivative is left.
  const double d = 1e-6;
  for (int n = 0; n < 4; ++n) {
    VECTOR<12> at, ahead, behind;
    const double xi = CORNERS[n][0], eta = CORNERS[n][1];
    QUAD_W_SHAPE(xi, eta, at);
    std::vector<double> expected(12, 0.0), by_xi(12), by_eta(12);
    expected[static_cast<std::size_t>(3 * n)] = 1.0;
    EXPECT_EQ(values(at.data(), 12), expected);
    QUAD_W_SHAPE(xi + d, eta, ahead);
    QUAD_W_SHAPE(xi - d, eta, behind);
    for (int i = 1; i <= 12; ++i) by_xi[static_cast<std::size_t>(i - 1)] = (ahead(i) - behind(i)) / (2.0 * d);
    QUAD_W_SHAPE(xi, eta + d, ahead);
    QUAD_W_SHAPE(xi, eta - d, behind);
    for (int i = 1; i <= 12; ++i) by_eta[static_cast<std::size_t>(i - 1)] = (ahead(i) - behind(i)) / (2.0 * d);
    std::vector<double> slope(12, 0.0);
    slope[static_cast<std::size_t>(3 * n + 1)] = 1.0;
    EXPECT_WITHIN(by_xi, slope, 1.0, 1e-9);
    std::fill(slope.begin(), slope.end(), 0.0);
    slope[static_cast<std::size_t>(3 * n + 2)] = 1.0;
    EXPECT_WITHIN(by_eta, slope, 1.0, 1e-9);
  }
}

TEST(QuadrilateralShape, FreedomFunctionsAreTheReference) {
  seeded_random random(441);
  for (int trial = 0; trial < 50; ++trial) {
    const prepared_quadrilateral q(support::random_quadrilateral(random));
    const double xi = random.uniform(-1.0, 1.0), eta = random.uniform(-1.0, 1.0);
    EXPECT_CLOSE(listed(load_functions(xi, eta)), listed(shell_reference::w_functions(q.flat(), xi, eta)), 1.0, 32);
  }
}

TEST(QuadrilateralShape, ReproducesEveryQuadraticFieldOnAParallelogram) {
  seeded_random random(442);
  const std::vector<support::point> nodes = {{0, 0, 0}, {2, 0.3, 0}, {2.5, 1.7, 0}, {0.5, 1.4, 0}};
  const prepared_quadrilateral q(nodes);
  for (int trial = 0; trial < 50; ++trial) {
    const std::vector<double> c = random.vector(6, 1.0);
    const double xi = random.uniform(-1.0, 1.0), eta = random.uniform(-1.0, 1.0);
    const shell_reference::vector2 x = shell_reference::position(q.flat(), xi, eta);
    const shell_reference::real w =
        c[0] + c[1] * x(0) + c[2] * x(1) + c[3] * x(0) * x(0) / 2 + c[4] * x(1) * x(1) / 2 + c[5] * x(0) * x(1);
    const shell_reference::real found = load_functions(xi, eta).dot(shell_reference::quadratic_deflection(q.flat(), c));
    EXPECT_CLOSE(static_cast<double>(found), static_cast<double>(w), 5.0, 32);
  }
}

TEST(QuadrilateralShape, LoadsAreScaledAndAdded) {
  double f[24];
  std::fill(std::begin(f), std::end(f), 1.0);
  VECTOR<12> a{};
  a(7) = 2.0;  // node 3
  a(8) = 3.0;
  a(9) = 5.0;
  QUAD_W_LOAD(a, {{7.0, 11.0, 13.0, 17.0}}, 10.0, f);
  std::vector<double> expected(24, 1.0);
  expected[14] += 20.0;
  expected[15] += 10.0 * (3.0 * 13.0 + 5.0 * 17.0);
  expected[16] -= 10.0 * (3.0 * 7.0 + 5.0 * 11.0);
  EXPECT_EQ(values(f, 24), expected);
}
