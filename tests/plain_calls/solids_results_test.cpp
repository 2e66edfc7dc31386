// solids_results_test.cpp: strains, stresses and their invariants at nodes and points of solids as plain calls.
#include <gtest/gtest.h>

#include <cmath>

#include "comparison.h"
#include "plain_calls/principal_stresses.h"
#include "solids_support.h"

namespace {

using plain_solids::gradient;
using plain_solids::linear_field;
using plain_solids::NODE_COUNTS;
using support::point;
using support::rotation;
using support::seeded_random;

// xx, yy, zz, xy, xz, yz of R S R^T, R by rows the axes.
std::vector<double> in_axes(const double R[3][3], const gradient& S, double shear_factor) {
  const auto component = [&](std::size_t a, std::size_t b) {
    double sum = 0.0;
    for (std::size_t i = 0; i < 3; ++i) {
      for (std::size_t j = 0; j < 3; ++j) sum += R[a][i] * S[i][j] * R[b][j];
    }
    return sum;
  };
  return {component(0, 0),
          component(1, 1),
          component(2, 2),
          shear_factor * component(0, 1),
          shear_factor * component(0, 2),
          shear_factor * component(1, 2)};
}

gradient symmetric_part(const gradient& H) {
  gradient S;
  for (std::size_t i = 0; i < 3; ++i) {
    for (std::size_t j = 0; j < 3; ++j) S[i][j] = (H[i][j] + H[j][i]) / 2;
  }
  return S;
}

// The stress with the given principal values along the rows of R.
std::array<double, 6> turned_stress(const rotation& R, const point& values) {
  std::array<double, 6> s{};
  const std::size_t row[6] = {0, 1, 2, 0, 0, 1}, column[6] = {0, 1, 2, 1, 2, 2};
  for (std::size_t c = 0; c < 6; ++c) {
    for (std::size_t a = 0; a < 3; ++a) s[c] += R[a][row[c]] * values[a] * R[a][column[c]];
  }
  return s;
}

void expect_principal(const rotation& R, const point& descending) {
  double principal[3];
  principal_stresses(turned_stress(R, descending).data(), principal);
  const double scale = std::fmax(std::fabs(descending[0]), std::fabs(descending[2]));
  EXPECT_CLOSE(std::vector<double>(principal, principal + 3), std::vector<double>(descending.begin(), descending.end()),
               scale, 20);
  EXPECT_GE(principal[0], principal[1]);
  EXPECT_GE(principal[1], principal[2]);
}

}  // namespace

TEST(SolidsResults, AConstantStrainEverywhere) {
  seeded_random random(9401);
  for (int e = 0; e < 60; ++e) {
    const finites_solid solid = plain_solids::random_solid(random, NODE_COUNTS[static_cast<std::size_t>(e % 3)]);
    const gradient H = plain_solids::random_gradient(random, 1e-3), S = plain_solids::hooke(solid, H);
    const finites_solid_measures measures = plain_solids::measures(solid);
    const std::vector<double> strain = in_axes(measures.axes, symmetric_part(H), 2.0);
    const std::vector<double> stress = in_axes(measures.axes, S, 1.0);
    const finites_solid_results results = plain_solids::results(solid, linear_field(solid, {1, 2, 3}, H));
    const double mises = std::sqrt(
        0.5 * (std::pow(S[0][0] - S[1][1], 2) + std::pow(S[0][0] - S[2][2], 2) + std::pow(S[1][1] - S[2][2], 2)) +
        3 * (S[0][1] * S[0][1] + S[0][2] * S[0][2] + S[1][2] * S[1][2]));
    std::vector<finites_solid_point> all(results.node, results.node + results.nodes);
    all.insert(all.end(), results.point, results.point + results.points);
    for (const finites_solid_point& p : all) {
      EXPECT_WITHIN(std::vector<double>(p.strain, p.strain + 6), strain, 1e-3, 1e-11);
      EXPECT_WITHIN(std::vector<double>(p.stress, p.stress + 6), stress, support::max_norm(stress), 1e-11);
      EXPECT_WITHIN(p.von_mises, mises, mises, 1e-11);
      // Invariants of the stress: trace, and the von Mises stress from the principal ones.
      const double a = p.principal[0], b = p.principal[1], c = p.principal[2];
      EXPECT_WITHIN(a + b + c, S[0][0] + S[1][1] + S[2][2], support::max_norm(stress), 1e-11);
      EXPECT_WITHIN(std::sqrt(0.5 * ((a - b) * (a - b) + (a - c) * (a - c) + (b - c) * (b - c))), mises, mises, 1e-11);
    }
  }
}

TEST(SolidsResults, PlacesOfNodesAndPoints) {
  const double g = 1 / std::sqrt(3.0);
  const finites_solid_results brick = plain_solids::results(plain_solids::block(8, 2, 2, 2), std::vector<double>(24));
  ASSERT_EQ(brick.points, 8);
  const finites_solid solid = plain_solids::block(8, 2, 2, 2);
  for (int k = 0; k < 8; ++k) {
    for (int i = 0; i < 3; ++i) {
      EXPECT_EQ(brick.node[k].xyz[i], solid.xyz[k][i]);
      EXPECT_NEAR(brick.point[k].xyz[i], 1 + g * (solid.xyz[k][i] - 1), 1e-14);
    }
  }
  const finites_solid_results wedge = plain_solids::results(plain_solids::block(6, 2, 2, 2), std::vector<double>(18));
  ASSERT_EQ(wedge.points, 6);
  const point sides[3] = {{1, 1, 0}, {0, 1, 0}, {1, 0, 0}};
  for (std::size_t p = 0; p < 6; ++p) {
    EXPECT_NEAR(wedge.point[p].xyz[0], sides[p % 3][0], 1e-14);
    EXPECT_NEAR(wedge.point[p].xyz[1], sides[p % 3][1], 1e-14);
    EXPECT_NEAR(wedge.point[p].xyz[2], p < 3 ? 1 - g : 1 + g, 3e-8);
  }
  const finites_solid_results tetra = plain_solids::results(plain_solids::block(4, 4, 8, 12), std::vector<double>(12));
  ASSERT_EQ(tetra.points, 1);
  for (int i = 0; i < 3; ++i) EXPECT_DOUBLE_EQ(tetra.point[0].xyz[i], 1.0 + i);
  EXPECT_EQ(tetra.node[4].xyz[0], 0.0);
  EXPECT_EQ(tetra.point[1].von_mises, 0.0);
}

// u = x z is a function of a brick and of a right wedge: strain xx = z and xz = x where each node and point lies. An
// extrapolation from the points of a wedge would miss it.
TEST(SolidsResults, StrainsOfABilinearFieldAtTheirPlaces) {
  for (const int nodes : {6, 8}) {
    const finites_solid solid = plain_solids::block(nodes, 2, 3, 5);
    std::vector<double> u(3 * static_cast<std::size_t>(nodes));
    for (std::size_t k = 0; k < static_cast<std::size_t>(nodes); ++k) u[3 * k] = solid.xyz[k][0] * solid.xyz[k][2];
    const finites_solid_results results = plain_solids::results(solid, u);
    for (int k = 0; k < nodes; ++k) {
      for (const finites_solid_point* p : {&results.node[k], &results.point[k]}) {
        EXPECT_NEAR(p->strain[0], p->xyz[2], 1e-13);
        EXPECT_NEAR(p->strain[4], p->xyz[0], 1e-13);
      }
    }
  }
}

TEST(SolidsResults, PrincipalStressesOfTurnedStates) {
  seeded_random random(9402);
  for (int i = 0; i < 200; ++i) {
    const rotation R = support::random_rotation(random);
    double a = random.uniform(-1, 1), b = random.uniform(-1, 1), c = random.uniform(-1, 1);
    if (a < b) std::swap(a, b);
    if (b < c) std::swap(b, c);
    if (a < b) std::swap(a, b);
    const double size = random.log_uniform(1e-80, 1e80);
    expect_principal(R, {a * size, b * size, c * size});
    expect_principal(R, {a, a, c});
    expect_principal(R, {a, c, c});
    expect_principal(R, {a, a * (1 - 1e-9 * (a > 0 ? 1 : -1)), a - 1});
    expect_principal(R, {a + 1, a, a - 1e-12});
    expect_principal(R, {a + 1, a, a - 1});  // no third invariant
    expect_principal(R, {b, b, b});
  }
}

TEST(SolidsResults, PrincipalStressesByHand) {
  const auto of = [](const std::array<double, 6>& stress) {
    double principal[3];
    principal_stresses(stress.data(), principal);
    return std::vector<double>(principal, principal + 3);
  };
  EXPECT_EQ(of({0, 0, 0, 0, 0, 0}), (std::vector<double>{0, 0, 0}));
  EXPECT_CLOSE(of({7, 7, 7, 0, 0, 0}), (std::vector<double>{7, 7, 7}), 7.0, 2);
  EXPECT_CLOSE(of({0, 100, 0, 0, 0, 0}), (std::vector<double>{100, 0, 0}), 100.0, 4);
  EXPECT_CLOSE(of({0, 0, -100, 0, 0, 0}), (std::vector<double>{0, 0, -100}), 100.0, 4);
  EXPECT_CLOSE(of({0, 0, 0, 0, 50, 0}), (std::vector<double>{50, 0, -50}), 50.0, 4);
  EXPECT_CLOSE(of({30, -10, 5, 0, 0, 0}), (std::vector<double>{30, 5, -10}), 30.0, 4);
  // All shears s: 2 s, -s, -s.
  EXPECT_CLOSE(of({0, 0, 0, 3, 3, 3}), (std::vector<double>{6, -3, -3}), 6.0, 4);
}

TEST(SolidsResults, AHydrostaticStateHasItsPressure) {
  const finites_solid solid = plain_solids::block(8, 1, 2, 3);
  const double strain = -1e-4, p = solid.E * strain / (1 - 2 * solid.nu);
  const finites_solid_results results =
      plain_solids::results(solid, linear_field(solid, {}, {{{strain, 0, 0}, {0, strain, 0}, {0, 0, strain}}}));
  for (int i = 0; i < 3; ++i) EXPECT_WITHIN(results.node[6].principal[i], p, std::fabs(p), 1e-13);
}
