// derivatives_test.cpp: derivatives of the shape functions against difference quotients and against the polynomials of
// the nodes; each announced difference has a test that asks for it.
#include <gtest/gtest.h>

#include <algorithm>

#include "comparison.h"
#include "reference_solid.h"
#include "solid_cases.h"

namespace {

using reference::matrix;
using reference::real;
using solid_cases::random_place;
using solid_cases::shape;
using solid_cases::shape_derivatives;
using support::seeded_random;

// Central differences of the shape functions, one row a direction, packed like the derivatives. No function has a power
// above the second in one coordinate, so that they are exact within rounding.
std::vector<double> difference_quotients(int kind, const std::vector<double>& p) {
  constexpr double step = 1.0 / 1024.0;
  const std::size_t n = static_cast<std::size_t>(reference::node_count(kind));
  std::vector<double> DN(3 * n);
  for (std::size_t i = 0; i < 3; ++i) {
    std::vector<double> above = p, below = p;
    above[i] += step;
    below[i] -= step;
    const std::vector<double> high = shape(kind, above), low = shape(kind, below);
    for (std::size_t k = 0; k < n; ++k) DN[3 * k + i] = (high[k] - low[k]) / (above[i] - below[i]);
  }
  return DN;
}

// Rounding of values of order 1 over a step of 1/512.
constexpr double QUOTIENT_SCALE = 512.0;

// The derivatives of the library less those of the polynomials of the nodes, (3, n).
matrix difference(int kind, const std::vector<double>& p) {
  const std::vector<double> DN = shape_derivatives(kind, p);
  const dense::index n = reference::node_count(kind);
  return dense::widened(DN.data(), 3, n) - reference::derivatives(kind, p);
}

}  // namespace

TEST(SolidDerivatives, AreTheDifferenceQuotientsOfTheFunctions) {
  seeded_random random(6111);
  for (const int kind : {10, 12, 13, 20, 21}) {
    for (int i = 0; i < 30; ++i) {
      const std::vector<double> p = random_place(random, kind);
      EXPECT_CLOSE(shape_derivatives(kind, p), difference_quotients(kind, p), QUOTIENT_SCALE, 20) << "kind " << kind;
    }
  }
}

TEST(SolidDerivatives, AreThoseOfThePolynomials) {
  seeded_random random(6112);
  for (const int kind : {10, 12, 13, 20, 21, 22}) {
    for (int i = 0; i < 30; ++i) {
      const std::vector<double> p = random_place(random, kind);
      EXPECT_CLOSE(shape_derivatives(kind, p), reference::rounded(reference::derivatives(kind, p)), 4.0, 10)
          << "kind " << kind;
    }
  }
}

TEST(SolidDerivatives, AreAtNodesWhatThePolynomialsSay) {
  for (const int kind : {10, 12, 13, 20, 21, 22}) {
    const matrix XI = reference::node_coordinates(kind);
    for (dense::index k = 0; k < XI.cols(); ++k) {
      const std::vector<double> p = reference::rounded(XI.col(k));
      EXPECT_CLOSE(shape_derivatives(kind, p), reference::rounded(reference::derivatives(kind, p)), 4.0, 10)
          << "kind " << kind << ", node " << k + 1;
    }
  }
}

// They are formed without zeta in L: where zeta is 0 the first two rows are those of the functions, the third never.
TEST(SolidDerivatives, OfTheQuadraticWedgesHaveNoZetaInL) {
  seeded_random random(6113);
  for (const int kind : {22, 23}) {
    for (int i = 0; i < 30; ++i) {
      std::vector<double> p = random_place(random, kind);
      EXPECT_GT(reference::norm(reference::listed(shape_derivatives(kind, p)) -
                                reference::listed(difference_quotients(kind, p))),
                1e-3);
      p[2] = 0.0;
      std::vector<double> actual = shape_derivatives(kind, p), expected = difference_quotients(kind, p);
      for (std::size_t at = 2; at < actual.size(); at += 3) actual[at] = expected[at] = 0.0;
      EXPECT_CLOSE(actual, expected, QUOTIENT_SCALE, 20) << "kind " << kind;
    }
  }
}

// -L (2 L - 2 zeta - 2) / 2 where the function of node 1 has -L (2 L - 2 zeta - 1) / 2: L / 2 more.
TEST(SolidDerivatives, NodeOneOfKind23HasItsOwnThroughEntry) {
  seeded_random random(6114);
  for (int i = 0; i < 30; ++i) {
    const std::vector<double> p = random_place(random, 23);
    const real L = 1 - real(p[0]) - p[1];
    matrix expected = matrix::Zero(3, 15);
    expected(2, 0) = L / 2;
    EXPECT_CLOSE(reference::rounded(difference(23, p)), reference::rounded(expected), 4.0, 10);
  }
}

// xi = 1/4, eta = 1/8, zeta = 1/2: L = 5/8 here.
TEST(SolidDerivatives, OfTheQuadraticWedgesByHand) {
  const std::vector<double> p = {0.25, 0.125, 0.5};
  const std::vector<double> lagrange = shape_derivatives(22, p), serendipity = shape_derivatives(23, p);
  EXPECT_EQ(lagrange[0], -0.125 * (1.0 - 2.5));                       // p (1 - 4 L)
  EXPECT_EQ(lagrange[1], -0.125 * (1.0 - 2.5));                       //
  EXPECT_EQ(lagrange[2], 0.0);                                        // (zeta - 1/2) L (2 L - 1)
  EXPECT_EQ(lagrange[3], -0.125 * 4.0 * (0.625 - 0.25));              // 4 p (L - xi)
  EXPECT_EQ(lagrange[18 + 2], -2.0 * 0.5 * 0.625 * 0.25);             // -2 zeta L (2 L - 1)
  EXPECT_EQ(serendipity[0], -0.25 * (2.5 - 0.5 - 2.0));               // -a (4 L - zeta - 2)
  EXPECT_EQ(serendipity[2], -0.625 * (1.25 - 1.0 - 2.0) / 2.0);       // with 2, not 1
  EXPECT_EQ(serendipity[6 + 2], -0.25 * (0.5 - 1.0 - 1.0) / 2.0);     // node 3, with 1
  EXPECT_EQ(serendipity[12 + 2], -0.125 * (0.25 - 1.0 - 1.0) / 2.0);  // node 5
  EXPECT_EQ(serendipity[27 + 2], 0.625 * (1.25 + 1.0 - 1.0) / 2.0);   // node 10
  EXPECT_EQ(serendipity[33 + 2], 0.25 * (0.5 + 1.0 - 1.0) / 2.0);     // node 12
  EXPECT_EQ(serendipity[39 + 2], 0.125 * (0.25 + 1.0 - 1.0) / 2.0);   // node 14
}

TEST(SolidDerivatives, OfKind24AreRightWhereXiIsZeta) {
  seeded_random random(6115);
  for (int i = 0; i < 30; ++i) {
    std::vector<double> p = random_place(random, 24);
    p[2] = p[0];
    EXPECT_CLOSE(shape_derivatives(24, p), difference_quotients(24, p), QUOTIENT_SCALE, 20);
    EXPECT_CLOSE(reference::rounded(difference(24, p)), std::vector<double>(30, 0.0), 4.0, 10);
  }
  for (const double eta : {0.0, 0.5, 1.0}) {
    EXPECT_CLOSE(reference::rounded(difference(24, {0.0, eta, 0.0})), std::vector<double>(30, 0.0), 4.0, 10);
  }
}

// M = 1 - xi - eta - xi stands where L = 1 - xi - eta - zeta belongs: M - L = zeta - xi, four times in each place.
TEST(SolidDerivatives, OfKind24DifferByZetaLessXi) {
  seeded_random random(6116);
  for (int i = 0; i < 30; ++i) {
    const std::vector<double> p = random_place(random, 24);
    const real four = 4 * (real(p[2]) - p[0]);
    matrix expected = matrix::Zero(3, 10);
    expected.col(0).setConstant(-four);
    expected(0, 1) = expected(1, 5) = expected(2, 6) = four;
    EXPECT_CLOSE(reference::rounded(difference(24, p)), reference::rounded(expected), 4.0, 10);
  }
}

// A displacement that is the same everywhere has no gradient: so it is for every kind but 23, whose node 1 lets L / 2
// through.
TEST(SolidDerivatives, AddUpToZero) {
  seeded_random random(6117);
  for (const int kind : reference::kinds()) {
    for (int i = 0; i < 20; ++i) {
      const std::vector<double> p = random_place(random, kind);
      const std::vector<double> DN = shape_derivatives(kind, p);
      std::vector<double> sum(3, 0.0);
      for (std::size_t at = 0; at < DN.size(); ++at) sum[at % 3] += DN[at];
      const std::vector<double> expected = {0.0, 0.0, kind == 23 ? (1.0 - p[0] - p[1]) / 2.0 : 0.0};
      EXPECT_CLOSE(sum, expected, 8.0, 20) << "kind " << kind;
    }
  }
}
