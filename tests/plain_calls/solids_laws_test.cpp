// solids_laws_test.cpp: laws and closed forms of solids as plain calls: rigid motions, constant stress, mass, loads,
// free expansion, the geometric stiffness of a constant stress.
#include <gtest/gtest.h>

#include <cmath>

#include "comparison.h"
#include "solids_support.h"

namespace {

using plain_solids::gradient;
using plain_solids::hooke;
using plain_solids::linear_field;
using plain_solids::NODE_COUNTS;
using plain_solids::random_gradient;
using plain_solids::random_solid;
using support::point;
using support::seeded_random;

// The rule of the wedge stands in single precision: places and weights have a relative error of 2e-8 and 3e-8.
double limit(const finites_solid& solid) { return solid.nodes == 6 ? 1e-7 : 1e-13; }

double norm(const gradient& H) {
  double largest = 0.0;
  for (const point& row : H) {
    for (const double h : row) largest = std::fmax(largest, std::fabs(h));
  }
  return largest;
}

// Sum over the nodes of F_k x_k^T, packed by rows; places from the first node.
std::vector<double> virial(const finites_solid& solid, const std::vector<double>& F) {
  std::vector<double> sum(9);
  for (std::size_t k = 0; k < static_cast<std::size_t>(solid.nodes); ++k) {
    for (std::size_t i = 0; i < 3; ++i) {
      for (std::size_t j = 0; j < 3; ++j) sum[3 * i + j] += F[3 * k + i] * (solid.xyz[k][j] - solid.xyz[0][j]);
    }
  }
  return sum;
}

std::vector<double> resultant(const std::vector<double>& F) {
  std::vector<double> sum(3);
  for (std::size_t i = 0; i < F.size(); ++i) sum[i % 3] += F[i];
  return sum;
}

std::vector<double> packed(const gradient& S, double factor) {
  std::vector<double> out;
  for (const point& row : S) {
    for (const double s : row) out.push_back(factor * s);
  }
  return out;
}

}  // namespace

TEST(SolidsLaws, StiffnessIsSymmetricAndRigidMotionsAreFree) {
  seeded_random random(9201);
  for (int e = 0; e < 60; ++e) {
    const finites_solid solid = random_solid(random, NODE_COUNTS[static_cast<std::size_t>(e % 3)]);
    const std::vector<double> K = plain_solids::stiffness(solid);
    const double size = support::max_norm(K);
    EXPECT_EQ(K, support::transposed(K));
    for (std::size_t m = 0; m < 3; ++m) {
      point shift{};
      shift[m] = 1.0;
      gradient turn{};
      turn[m][(m + 1) % 3] = 1.0;
      turn[(m + 1) % 3][m] = -1.0;
      for (const std::vector<double>& u : {linear_field(solid, shift, {}), linear_field(solid, {}, turn)}) {
        EXPECT_WITHIN(support::product(K, u), std::vector<double>(u.size()), size * 5, limit(solid));
        EXPECT_WITHIN(plain_solids::forces(solid, u), std::vector<double>(u.size()), size * 5, 1e-13);
      }
    }
  }
}

// Virtual work of any constant strain: the sum of F_k x_k^T is the volume times the stress, here Hooke's.
TEST(SolidsLaws, ForcesOfAConstantStrainAreVolumeTimesStress) {
  seeded_random random(9202);
  for (int e = 0; e < 60; ++e) {
    const finites_solid solid = random_solid(random, NODE_COUNTS[static_cast<std::size_t>(e % 3)]);
    const gradient H = random_gradient(random, 1e-3);
    const std::vector<double> u = linear_field(solid, {1e-3, 2e-3, -1e-3}, H);
    const gradient S = hooke(solid, H);
    const double V = plain_solids::volume(solid);
    const std::vector<double> expected = packed(S, V);
    EXPECT_WITHIN(virial(solid, plain_solids::forces(solid, u)), expected, V * norm(S), 10 * limit(solid));
    EXPECT_WITHIN(virial(solid, support::product(plain_solids::stiffness(solid), u)), expected, V * norm(S),
                  100 * limit(solid));
  }
}

// A rod of 2 by 3 by 5 pulled along x with Poisson's contraction: half of the stress times the area on each end of a
// brick by four nodes; a tetrahedron has a sixth of the area of its box at its tip.
TEST(SolidsLaws, UniaxialStressTimesArea) {
  const double strain = 1e-3;
  for (const int nodes : NODE_COUNTS) {
    finites_solid solid = plain_solids::block(nodes, 2.0, 3.0, 5.0);
    solid.stiffness_factor = 0.5;
    const gradient H = {{{strain, 0, 0}, {0, -solid.nu * strain, 0}, {0, 0, -solid.nu * strain}}};
    const std::vector<double> F = support::product(plain_solids::stiffness(solid), linear_field(solid, {}, H));
    const double stress = 0.5 * solid.E * strain;
    const double area = 3.0 * 5.0;
    double pull = 0.0;
    for (std::size_t k = 0; k < static_cast<std::size_t>(nodes); ++k) pull += solid.xyz[k][0] > 0 ? F[3 * k] : 0.0;
    const double share = nodes == 8 ? 1.0 : nodes == 6 ? 1.0 / 2.0 : 1.0 / 6.0;
    EXPECT_WITHIN(pull, stress * area * share, stress * area, limit(solid)) << nodes;
    EXPECT_WITHIN(resultant(F), std::vector<double>(3), stress * area, 1e-7) << nodes;
  }
}

TEST(SolidsLaws, MassAndMeasures) {
  seeded_random random(9203);
  for (int e = 0; e < 60; ++e) {
    const finites_solid solid = random_solid(random, NODE_COUNTS[static_cast<std::size_t>(e % 3)]);
    const double V = plain_solids::volume(solid);
    const finites_solid_measures measures = plain_solids::measures(solid);
    EXPECT_CLOSE(measures.volume, V, V, 20);
    EXPECT_CLOSE(measures.mass, solid.density * V, solid.density * V, 20);
    const std::vector<double> M = plain_solids::mass(solid);
    EXPECT_EQ(M, support::transposed(M));
    for (std::size_t i = 0; i < 3; ++i) {
      point direction{};
      direction[i] = 1.0;
      const std::vector<double> u = linear_field(solid, direction, {});
      const std::vector<double> Mu = support::product(M, u);
      std::vector<double> total(3);
      total[i] = solid.density * V;
      EXPECT_WITHIN(resultant(Mu), total, solid.density * V, limit(solid));
      double center = 0.0;
      for (int k = 0; k < solid.nodes; ++k) center += solid.xyz[k][i];
      EXPECT_CLOSE(measures.center[i], center / solid.nodes, 5.0, 20);
    }
  }
  EXPECT_DOUBLE_EQ(plain_solids::measures(plain_solids::block(8, 2, 3, 5)).volume, 30.0);
  EXPECT_DOUBLE_EQ(plain_solids::measures(plain_solids::block(6, 2, 3, 5)).volume, 15.0);
  EXPECT_DOUBLE_EQ(plain_solids::measures(plain_solids::block(4, 2, 3, 5)).volume, 5.0);
}

TEST(SolidsLaws, BodyLoadIsThatOfTheMass) {
  seeded_random random(9204);
  for (int e = 0; e < 30; ++e) {
    const finites_solid solid = random_solid(random, NODE_COUNTS[static_cast<std::size_t>(e % 3)]);
    const point g{random.uniform(-9, 9), random.uniform(-9, 9), random.uniform(-9, 9)};
    const std::vector<double> F =
        plain_solids::body_load(solid, {solid.density * g[0], solid.density * g[1], solid.density * g[2]});
    const std::vector<double> Ma = support::product(plain_solids::mass(solid), linear_field(solid, g, {}));
    EXPECT_WITHIN(F, Ma, support::max_norm(F), 1e-13);
    const double V = plain_solids::volume(solid);
    for (std::size_t i = 0; i < 3; ++i) {
      EXPECT_WITHIN(resultant(F)[i], solid.density * g[i] * V, solid.density * 9 * V, limit(solid));
    }
  }
}

// The load of a temperature is K times the free expansion; expanded so, the element has no stress.
TEST(SolidsLaws, FreeExpansion) {
  seeded_random random(9205);
  for (int e = 0; e < 30; ++e) {
    const finites_solid solid = random_solid(random, NODE_COUNTS[static_cast<std::size_t>(e % 3)]);
    const double T = random.uniform(-80, 120), strain = solid.expansion * T;
    const std::vector<double> u = linear_field(solid, {}, {{{strain, 0, 0}, {0, strain, 0}, {0, 0, strain}}});
    const std::vector<double> Ku = support::product(plain_solids::stiffness(solid), u);
    EXPECT_WITHIN(plain_solids::temperature_load(solid, T), Ku, support::max_norm(Ku), 1e-12);
    const double held = solid.stiffness_factor * solid.E * std::fabs(strain) / (1 - 2 * solid.nu);
    const finites_solid_results expanded = plain_solids::results(solid, u, T);
    const finites_solid_results fixed = plain_solids::results(solid, std::vector<double>(u.size()), T);
    for (int p = 0; p < expanded.points; ++p) {
      for (int i = 0; i < 6; ++i) {
        EXPECT_WITHIN(expanded.point[p].stress[i], 0.0, held, 1e-12);
        EXPECT_WITHIN(expanded.node[p].strain[i], i < 3 ? strain : 0.0, std::fabs(strain), 1e-12);
        EXPECT_WITHIN(fixed.node[p].stress[i], i < 3 ? -std::copysign(held, strain) : 0.0, held, 1e-14);
        EXPECT_EQ(fixed.point[p].strain[i], 0.0);
      }
      EXPECT_WITHIN(fixed.point[p].principal[0], -std::copysign(held, strain), held, 1e-14);
      EXPECT_WITHIN(fixed.point[p].von_mises, 0.0, held, 1e-14);
    }
  }
}

// u^T KG u of a linear field with the gradient G in a constant stress S: V sum G S G^T, and tension stiffens.
TEST(SolidsLaws, GeometricStiffnessOfAConstantStress) {
  seeded_random random(9206);
  for (int e = 0; e < 60; ++e) {
    const finites_solid solid = random_solid(random, NODE_COUNTS[static_cast<std::size_t>(e % 3)]);
    const gradient H = random_gradient(random, 1e-3), G = random_gradient(random, 1.0), S = hooke(solid, H);
    const std::vector<double> KG = plain_solids::geometric(solid, linear_field(solid, {}, H));
    const std::vector<double> u = linear_field(solid, {}, G);
    double work = 0.0;
    for (const point& row : G) {
      for (std::size_t i = 0; i < 3; ++i) {
        for (std::size_t j = 0; j < 3; ++j) work += row[i] * S[i][j] * row[j];
      }
    }
    const double V = plain_solids::volume(solid), scale = V * norm(S) * 9;
    EXPECT_WITHIN(support::dot(u, support::product(KG, u)), V * work, scale, 10 * limit(solid));
    EXPECT_WITHIN(KG, support::transposed(KG), support::max_norm(KG), 1e-14);
    const std::vector<double> shift = linear_field(solid, {1, 2, 3}, {});
    EXPECT_WITHIN(support::product(KG, shift), std::vector<double>(u.size()), support::max_norm(KG), 1e-13);

    // The same stress by integration point, from the results.
    const finites_solid_results results = plain_solids::results(solid, linear_field(solid, {}, H));
    std::vector<std::array<double, 6>> stress(static_cast<std::size_t>(results.points));
    for (std::size_t p = 0; p < stress.size(); ++p) {
      std::copy_n(results.point[p].stress, 6, stress[p].begin());
    }
    EXPECT_EQ(plain_solids::geometric_of_stresses(solid, stress), KG);
  }
}

TEST(SolidsLaws, ABarUnderTensionIsStiffenedAcross) {
  const finites_solid bar = plain_solids::block(8, 10.0, 1.0, 1.0);
  const double stress = 50.0, strain = stress / bar.E;
  const gradient pull = {{{strain, 0, 0}, {0, -bar.nu * strain, 0}, {0, 0, -bar.nu * strain}}};
  const std::vector<double> KG = plain_solids::geometric(bar, linear_field(bar, {}, pull));
  // Turned as a whole by v = theta x the bar stores N theta^2 L / 2: u^T KG u = N L.
  const std::vector<double> u = linear_field(bar, {}, {{{0, 0, 0}, {1, 0, 0}, {0, 0, 0}}});
  EXPECT_WITHIN(support::dot(u, support::product(KG, u)), stress * 1.0 * 10.0, stress * 10.0, 1e-13);
}
