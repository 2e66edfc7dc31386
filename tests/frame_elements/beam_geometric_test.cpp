// beam_geometric_test.cpp: the geometric stiffness of a beam against integrals of cubic functions, the laws of
// equilibrium, and the closed form for semi-rigid ends in rational numbers.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "comparison.h"
#include "finites/finites.h"
#include "random_shapes.h"
#include "reference_member.h"

namespace {

using reference::listed;
using reference::matrix;
using reference::real;
using reference::square;
using support::max_norm;
using support::seeded_random;

const std::vector<double> ZEROS(144, 0.0);

struct geometric_case {
  double P = 1.0, L = 2.0, E1 = 1.0, E2 = 1.0, I1 = 1.0, I2 = 1.0;
  std::int32_t semi_y = 0, semi_z = 0, release_y = 0, release_z = 0;
  double a1 = 1.0, b1 = 1.0, a2 = 1.0, b2 = 1.0;

  std::vector<double> matrix_of() const {
    std::vector<double> KG(144, -9.0);
    KSTIFB_GEOM(&P, &L, &E1, &E2, &I1, &I2, &semi_y, &semi_z, &release_y, &release_z, &a1, &b1, &a2, &b2, KG.data());
    return KG;
  }
};

double at(const std::vector<double>& K, int i, int j) { return K[static_cast<std::size_t>((j - 1) * 12 + i - 1)]; }

matrix plain(double P, double L) {
  matrix G = matrix::Zero(12, 12);
  reference::place_xy(reference::plane_geometric(P, L), G);
  reference::place_xz(reference::plane_geometric(P, L), G);
  return G;
}

// The six coefficients of the closed form, each written as a sum over one denominator, in extended precision.
struct coefficients {
  real g1, g2, g3, g4, g5, g6;
};

coefficients closed_form(real EI, real L, real a, real b) {
  const real k = EI / (L * L);  // in this form the denominator is L^4 times a polynomial in k
  const real D = 540 * k * k * a * b + 24 * (a - b) * k - (1 - a) * (1 - b);
  coefficients g;
  g.g2 = (3 * a * (b - 1) * k - 54 * k * k * a * b) / D;
  g.g4 = (3 * b * (1 - a) * k - 54 * k * k * a * b) / D;
  g.g5 = -18 * a * b * k * k * L / D;
  // Equilibrium of a rigid rotation gives the others: no moments, and P times the rotation as a couple of forces.
  g.g1 = (1 - g.g2 - g.g4) / L;
  g.g3 = -g.g2 * L - g.g5;
  g.g6 = -g.g4 * L - g.g5;
  return g;
}

matrix plane_of(const coefficients& g) {
  matrix G(4, 4);
  G << g.g1, -g.g2, -g.g1, -g.g4,  //
      -g.g2, g.g3, g.g2, g.g5,     //
      -g.g1, g.g2, g.g1, g.g4,     //
      -g.g4, g.g5, g.g4, g.g6;
  return G;
}

matrix closed(const geometric_case& c) {
  matrix G = matrix::Zero(12, 12);
  reference::place_xy(plane_of(closed_form(real(c.E1) * c.I1, c.L, c.b1, c.b2)), G);
  reference::place_xz(plane_of(closed_form(real(c.E2) * c.I2, c.L, c.a1, c.a2)), G);
  return G * c.P;
}

geometric_case random_semi_rigid(seeded_random& random) {
  geometric_case c;
  c.P = random.uniform(-5.0, 5.0);
  c.L = random.uniform(0.5, 3.0);
  c.E1 = random.uniform(1.0, 3.0);
  c.E2 = random.uniform(1.0, 3.0);
  c.I1 = random.uniform(0.5, 2.0);
  c.I2 = random.uniform(0.5, 2.0);
  c.semi_y = random.integer(0, 1);
  c.semi_z = 1 - c.semi_y;
  for (double* f : {&c.a1, &c.b1, &c.a2, &c.b2}) *f = random.uniform(0.3, 1.0);
  return c;
}

}  // namespace

TEST(BeamGeometric, PlainFormIntegratesCubicFunctions) {
  seeded_random random(4501);
  for (int trial = 0; trial < 50; ++trial) {
    geometric_case c;
    c.P = random.uniform(-100.0, 100.0);
    c.L = random.log_uniform(0.01, 100.0);
    const matrix expected = plain(c.P, c.L);
    EXPECT_CLOSE(reference::by_diagonal(c.matrix_of(), expected), reference::by_diagonal(listed(expected), expected),
                 1.0, 8);
  }
}

TEST(BeamGeometric, TensionIsPositive) {
  geometric_case c;
  c.P = 3.0;
  EXPECT_GT(at(c.matrix_of(), 2, 2), 0.0);
  EXPECT_GT(at(c.matrix_of(), 3, 3), 0.0);
  geometric_case d = c;
  d.P = -3.0;
  std::vector<double> opposite = d.matrix_of();
  for (double& entry : opposite) entry = -entry;
  EXPECT_EQ(c.matrix_of(), opposite);
}

TEST(BeamGeometric, NoForceGivesZerosWhateverElseIsGiven) {
  constexpr double nan = std::numeric_limits<double>::quiet_NaN();
  for (const double zero : {0.0, -0.0}) {
    geometric_case c;
    c.P = zero;
    EXPECT_EQ(c.matrix_of(), ZEROS);
    c.L = 0.0;
    c.E1 = c.E2 = c.I1 = c.I2 = nan;
    c.a1 = c.a2 = c.b1 = c.b2 = nan;
    c.semi_y = -5;
    c.release_y = 1;
    c.release_z = 77;
    EXPECT_EQ(c.matrix_of(), ZEROS);
  }
}

TEST(BeamGeometric, NoAxialAndNoTorsionalTerms) {
  seeded_random random(4502);
  geometric_case c = random_semi_rigid(random);
  for (const int semi : {0, 1}) {
    c.semi_y = c.semi_z = semi;
    const std::vector<double> G = c.matrix_of();
    for (const int d : {1, 4, 7, 10}) {
      for (int i = 1; i <= 12; ++i) EXPECT_EQ(at(G, i, d), 0.0);
      for (int i = 1; i <= 12; ++i) EXPECT_EQ(at(G, d, i), 0.0);
    }
  }
}

TEST(BeamGeometric, PinsOfThePlainFormAreCondensed) {
  // Each rotation whose factor is exactly 0, alone and in every combination.
  for (int pins = 0; pins < 16; ++pins) {
    geometric_case c;
    c.P = -7.0;
    std::vector<int> freedoms;
    const std::pair<double*, int> factors[4] = {{&c.a1, 5}, {&c.b1, 6}, {&c.a2, 11}, {&c.b2, 12}};
    for (int i = 0; i < 4; ++i) {
      if ((pins >> i & 1) == 0) continue;
      *factors[i].first = 0.0;
      freedoms.push_back(factors[i].second);
    }
    const matrix whole = plain(c.P, c.L);
    EXPECT_CLOSE(c.matrix_of(), listed(reference::condensed(whole, freedoms)), 7.0, 8) << pins;
  }
}

TEST(BeamGeometric, OnlyAFactorOfExactlyZeroIsAPin) {
  geometric_case c;
  c.a1 = 1e-300;
  c.b2 = -1.0;
  c.a2 = 0.5;  // the flags say what is semi-rigid, not the factors
  EXPECT_EQ(c.matrix_of(), geometric_case{}.matrix_of());
  geometric_case d;
  d.b1 = -0.0;
  const matrix expected = reference::condensed(plain(1.0, 2.0), {6});
  EXPECT_CLOSE(d.matrix_of(), listed(expected), 1.0, 8);
}

TEST(BeamGeometric, ForceReleasesFollowThePins) {
  seeded_random random(4503);
  for (int codes = 0; codes < 9; ++codes) {
    for (const int semi : {0, 1}) {
      geometric_case c = random_semi_rigid(random);
      c.semi_y = c.semi_z = semi;
      c.release_y = codes % 3;
      c.release_z = codes / 3;
      if (semi == 0) c.a2 = c.b1 = 0.0;
      matrix G = semi == 0 ? plain(c.P, c.L) : closed(c);
      std::vector<int> freedoms;
      if (semi == 0) freedoms = {6, 11};
      if (c.release_y != 0) freedoms.push_back(c.release_y == 1 ? 2 : 8);
      if (c.release_z != 0) freedoms.push_back(c.release_z == 1 ? 3 : 9);
      const double scale = static_cast<double>(G.cwiseAbs().maxCoeff());
      G = reference::condensed(G, freedoms);
      EXPECT_CLOSE(c.matrix_of(), listed(G), scale, 200) << codes << ", semi " << semi;
    }
  }
}

TEST(BeamGeometric, PinsAreReleasedInTheirOrderBeforeForces) {
  // Condensation rounds by its order: the rotations 5, 6, 11, 12, then the forces along y and z.
  seeded_random random(4508);
  int different = 0;
  for (int trial = 0; trial < 50; ++trial) {
    geometric_case c;
    c.L = random.uniform(0.5, 5.0);
    const auto released = [&c](const std::vector<std::int32_t>& order) {
      std::vector<double> G = c.matrix_of();
      const std::int32_t n = 12;
      for (const std::int32_t d : order) RELEASE_DOF(&d, G.data(), &n);
      return G;
    };
    const std::vector<double> expected = released({5, 6, 11, 12, 2, 9});
    const std::vector<double> other = released({12, 11, 6, 5, 2, 9}), last = released({2, 9, 5, 6, 11, 12});
    c.a1 = c.a2 = c.b1 = c.b2 = 0.0;
    c.release_y = 1;
    c.release_z = 2;
    EXPECT_EQ(c.matrix_of(), expected);
    if (other != expected && last != expected) ++different;
  }
  EXPECT_GT(different, 5);
}

TEST(BeamGeometric, PinsAndAForceReleaseThatLeaveNothing) {
  // Both rotations of a plane pinned leave 1 / L between the translations; the release of one takes that too.
  geometric_case c;
  c.L = 4.0;
  c.b1 = c.b2 = 0.0;
  EXPECT_CLOSE(at(c.matrix_of(), 2, 2), 0.25, 0.25, 8);
  EXPECT_CLOSE(at(c.matrix_of(), 8, 2), -0.25, 0.25, 8);
  c.release_y = 2;
  EXPECT_CLOSE(at(c.matrix_of(), 2, 2), 0.0, 0.25, 8);
}

TEST(BeamGeometric, OtherReleaseCodesDoNothing) {
  for (const int code : {3, -1, 4}) {
    geometric_case c;
    c.release_y = c.release_z = code;
    EXPECT_EQ(c.matrix_of(), geometric_case{}.matrix_of());
  }
}

TEST(BeamGeometric, ClosedFormForRandomFixities) {
  seeded_random random(4504);
  for (int trial = 0; trial < 300; ++trial) {
    const geometric_case c = random_semi_rigid(random);
    const matrix expected = closed(c);
    EXPECT_CLOSE(c.matrix_of(), listed(expected), static_cast<double>(expected.cwiseAbs().maxCoeff()), 100) << trial;
  }
}

TEST(BeamGeometric, ClosedFormInRationalNumbers) {
  // x-y plane: E I = 2, L = 2, a = 1/2, b = 1/4: D = 270 + 48 - 6 = 312. x-z plane: E I = 1, a = 3/4, b = 1/2:
  // D = 202.5 + 24 - 2 = 224.5. Numerators by hand.
  geometric_case c;
  c.P = 1.0;
  c.L = 2.0;
  c.E1 = 4.0;
  c.I1 = 0.5;
  c.E2 = 0.5;
  c.I2 = 2.0;
  c.b1 = 0.5;
  c.b2 = 0.25;
  c.a1 = 0.75;
  c.a2 = 0.5;
  c.semi_z = 1;
  const std::vector<double> G = c.matrix_of();
  const auto expect = [&G](int i, int j, double value) {
    EXPECT_CLOSE(at(G, i, j), value, value, 4) << i << ", " << j;
    EXPECT_EQ(at(G, j, i), at(G, i, j));
  };
  // g1 = (-3 + 27 + 162) / 312, g2 = (-9 - 27) / 312, g3 = (18 + 72) / 312, g4 = (3 - 27) / 312, g5 = -18 / 312,
  // g6 = 3 (-2 + 24) / 312
  expect(2, 2, 186.0 / 312), expect(8, 8, 186.0 / 312), expect(8, 2, -186.0 / 312);
  expect(6, 2, 36.0 / 312), expect(8, 6, -36.0 / 312);
  expect(12, 2, 24.0 / 312), expect(12, 8, -24.0 / 312);
  expect(6, 6, 90.0 / 312), expect(12, 6, -18.0 / 312), expect(12, 12, 66.0 / 312);
  // h1 = (-1 + 13.5 + 121.5) / 224.5, h2 = (-4.5 - 20.25) / 224.5, h3 = (9 + 54) / 224.5,
  // h4 = (1.5 - 20.25) / 224.5, h5 = -13.5 / 224.5, h6 = 3 (-1 + 18) / 224.5
  expect(3, 3, 134.0 / 224.5), expect(9, 9, 134.0 / 224.5), expect(9, 3, -134.0 / 224.5);
  expect(5, 3, -24.75 / 224.5), expect(9, 5, 24.75 / 224.5);
  expect(11, 3, -18.75 / 224.5), expect(11, 9, 18.75 / 224.5);
  expect(5, 5, 63.0 / 224.5), expect(11, 5, -13.5 / 224.5), expect(11, 11, 51.0 / 224.5);
}

TEST(BeamGeometric, ClosedFormWithAllFactorsOneIsThePlainOne) {
  seeded_random random(4505);
  for (int trial = 0; trial < 20; ++trial) {
    geometric_case c = random_semi_rigid(random);
    c.a1 = c.b1 = c.a2 = c.b2 = 1.0;
    const matrix expected = plain(c.P, c.L);
    EXPECT_CLOSE(c.matrix_of(), listed(expected), static_cast<double>(expected.cwiseAbs().maxCoeff()), 16);
  }
}

TEST(BeamGeometric, ARigidRotationMeetsNoMoments) {
  // Either form: the forces of a rigid rotation are the couple of P, with no moments. No force in a translation.
  seeded_random random(4506);
  for (int trial = 0; trial < 50; ++trial) {
    geometric_case c = random_semi_rigid(random);
    if (trial % 3 == 0) c.semi_y = c.semi_z = 0;
    const matrix F = square(c.matrix_of()) * reference::rigid_motions(c.L);
    matrix expected = matrix::Zero(12, 6);
    expected(1, 5) = -c.P;
    expected(7, 5) = c.P;
    expected(2, 4) = c.P;
    expected(8, 4) = -c.P;
    EXPECT_CLOSE(listed(F), listed(expected), max_norm(c.matrix_of()) * (1 + c.L), 20);
  }
}

TEST(BeamGeometric, OneFlagGivesBothPlanesTheClosedForm) {
  // The x-y plane has factors of 0 and 1 only, and gets the closed form all the same; its pin is in the formulas.
  for (const auto& [b1, b2] : {std::pair<double, double>{1, 1}, {0, 1}, {1, 0}, {0, 0}}) {
    for (const int which : {0, 1}) {
      geometric_case c;
      c.P = 2.0;
      c.E1 = 3.0;
      c.b1 = b1;
      c.b2 = b2;
      c.a1 = 0.5;
      c.semi_y = 1 - which;
      c.semi_z = which;
      const matrix expected = closed(c);
      EXPECT_CLOSE(c.matrix_of(), listed(expected), static_cast<double>(expected.cwiseAbs().maxCoeff()), 20);
    }
  }
}

TEST(BeamGeometric, APinOfTheClosedFormIsNotCondensedAgain) {
  // a = 0, b = 1: D = -24 L^2 E I, so g1 = 27 / (24 L), g4 = -3 / 24, g6 = 3 L / 24: the numbers that condensation
  // gives too. The row of the pin holds zeros by the formulas, without residues of rounding.
  geometric_case c;
  c.semi_y = 1;
  c.b1 = 0.0;
  const std::vector<double> G = c.matrix_of();
  EXPECT_CLOSE(at(G, 2, 2), 27.0 / 24.0 / 2.0, 1.0, 4);
  EXPECT_CLOSE(at(G, 12, 2), 3.0 / 24.0, 1.0, 4);
  EXPECT_CLOSE(at(G, 12, 12), 3.0 * 2.0 / 24.0, 1.0, 4);
  EXPECT_EQ(at(G, 6, 6), 0.0);
  EXPECT_EQ(at(G, 12, 6), 0.0);
}

TEST(BeamGeometric, APlaneOfTwoPinsInTheClosedForm) {
  geometric_case c;
  c.P = 1.0;
  c.L = 4.0;
  c.semi_y = 1;
  c.b1 = c.b2 = 0.0;
  const std::vector<double> G = c.matrix_of();
  EXPECT_EQ(at(G, 2, 2), 0.25);
  EXPECT_EQ(at(G, 8, 2), -0.25);
  for (const int d : {6, 12}) {
    for (int i = 1; i <= 12; ++i) EXPECT_EQ(at(G, i, d), 0.0);
  }
}

TEST(BeamGeometric, OtherFlagsAreThePlainFormWithoutPins) {
  // A flag that is neither 0 nor 1.
  geometric_case c;
  c.a1 = c.b1 = 0.0;
  c.semi_y = 2;
  EXPECT_EQ(c.matrix_of(), geometric_case{}.matrix_of());
  c.semi_y = 0;
  c.semi_z = -1;
  EXPECT_EQ(c.matrix_of(), geometric_case{}.matrix_of());
}

TEST(BeamGeometric, TheStiffnessHasAFloor) {
  // So short a member that 1e-37 counts beside L^2: what is not above the floor is raised to it, in each plane.
  geometric_case c;
  c.L = 1e-18;
  c.semi_y = 1;
  c.a1 = c.b1 = 0.5;
  c.a2 = c.b2 = 0.25;
  geometric_case floor = c;
  floor.I1 = floor.I2 = 1e-37;
  const matrix expected = closed(floor);
  for (const double stiffness : {0.0, 1e-38, 1e-37, -1.0, -1e300}) {
    geometric_case low = c;
    low.I1 = low.I2 = stiffness;
    EXPECT_EQ(low.matrix_of(), floor.matrix_of()) << stiffness;
    EXPECT_CLOSE(reference::by_diagonal(low.matrix_of(), expected), reference::by_diagonal(listed(expected), expected),
                 1.0, 50);
  }
  geometric_case above = c;
  above.I1 = 1.1e-37;
  above.I2 = 1e-37;
  EXPECT_NE(at(above.matrix_of(), 6, 2), at(floor.matrix_of(), 6, 2));
  EXPECT_EQ(at(above.matrix_of(), 5, 3), at(floor.matrix_of(), 5, 3));
}

TEST(BeamGeometric, DenominatorAndFirstNumeratorRoundInTheirOwnOrder) {
  // Without stiffness g1 is (a + b - 1 - a b) / (a + b - a b - 1): 1 except for the order of the terms.
  seeded_random random(4507);
  int different = 0;
  for (int trial = 0; trial < 200; ++trial) {
    geometric_case c;
    c.L = 1.0;
    c.I1 = c.I2 = 0.0;
    c.semi_z = 1;
    const double a = c.b1 = random.uniform(0.02, 0.4), b = c.b2 = random.uniform(0.02, 0.4);
    const volatile double sum = a + b, product = a * b;
    const volatile double less_one = sum - 1.0, less_product = sum - product;
    const double expected = (less_one - product) / (less_product - 1.0);
    EXPECT_EQ(at(c.matrix_of(), 2, 2), expected);
    if (expected != 1.0) ++different;
  }
  EXPECT_GT(different, 20);
}
