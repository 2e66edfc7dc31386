// solids_faces_test.cpp: loads on the faces of solids: resultants, closed bodies, and the forces of a constant stress.
#include <gtest/gtest.h>

#include <cmath>
#include <set>

#include "comparison.h"
#include "solids_support.h"

namespace {

using plain_solids::face_load;
using plain_solids::gradient;
using plain_solids::linear_field;
using plain_solids::NODE_COUNTS;
using plain_solids::random_solid;
using support::point;
using support::seeded_random;

constexpr point NOTHING{};

// The nodes of the faces as the header lists them.
const std::vector<std::set<int>>& listed_faces(int nodes) {
  static const std::vector<std::set<int>> brick = {{1, 2, 3, 4}, {5, 6, 7, 8}, {1, 2, 6, 5},
                                                   {2, 3, 7, 6}, {3, 4, 8, 7}, {4, 1, 5, 8}};
  static const std::vector<std::set<int>> wedge = {{1, 2, 3}, {4, 5, 6}, {1, 2, 5, 4}, {2, 3, 6, 5}, {3, 1, 4, 6}};
  static const std::vector<std::set<int>> tetra = {{1, 2, 3}, {1, 2, 4}, {2, 3, 4}, {3, 1, 4}};
  return nodes == 8 ? brick : nodes == 6 ? wedge : tetra;
}

point at(const finites_solid& solid, int node) {
  return {solid.xyz[node - 1][0], solid.xyz[node - 1][1], solid.xyz[node - 1][2]};
}

point less(const point& a, const point& b) { return {a[0] - b[0], a[1] - b[1], a[2] - b[2]}; }

point cross(const point& a, const point& b) {
  return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

double length(const point& a) { return std::sqrt(a[0] * a[0] + a[1] * a[1] + a[2] * a[2]); }

std::vector<double> sum_of_forces(const std::vector<double>& F) {
  std::vector<double> sum(3);
  for (std::size_t i = 0; i < F.size(); ++i) sum[i % 3] += F[i];
  return sum;
}

std::vector<double> sum_of_moments(const finites_solid& solid, const std::vector<double>& F) {
  std::vector<double> sum(3);
  for (int k = 1; k <= solid.nodes; ++k) {
    const std::size_t f = 3 * static_cast<std::size_t>(k - 1);
    const point m = cross(at(solid, k), {F[f], F[f + 1], F[f + 2]});
    for (std::size_t i = 0; i < 3; ++i) sum[i] += m[i];
  }
  return sum;
}

}  // namespace

TEST(SolidsFaces, OnlyTheNodesOfTheFaceAreLoaded) {
  for (const int nodes : NODE_COUNTS) {
    const finites_solid solid = plain_solids::block(nodes, 2, 3, 5);
    const std::vector<std::set<int>>& faces = listed_faces(nodes);
    ASSERT_EQ(static_cast<int>(faces.size()), plain_solids::faces(solid));
    for (std::size_t f = 0; f < faces.size(); ++f) {
      const std::vector<double> F = face_load(solid, static_cast<int>(f) + 1, {1, 2, 3}, 0.0);
      for (int k = 1; k <= nodes; ++k) {
        EXPECT_EQ(F[3 * static_cast<std::size_t>(k) - 1] > 0.0, faces[f].count(k) == 1) << nodes << ' ' << f;
      }
    }
  }
}

// A block of 2 by 3 by 5: areas by hand, pressure into the solid.
TEST(SolidsFaces, PressureOnAFlatFace) {
  const finites_solid brick = plain_solids::block(8, 2, 3, 5);
  const double p = 7.0;
  const std::vector<point> brick_forces = {{0, 0, 6 * p},   {0, 0, -6 * p},  {0, 10 * p, 0},
                                           {-15 * p, 0, 0}, {0, -10 * p, 0}, {15 * p, 0, 0}};
  for (std::size_t f = 0; f < 6; ++f) {
    const std::vector<double> F = face_load(brick, static_cast<int>(f) + 1, NOTHING, p);
    const std::vector<double> sum(brick_forces[f].begin(), brick_forces[f].end());
    EXPECT_CLOSE(sum_of_forces(F), sum, 100.0, 10);
    for (std::size_t k = 0; k < 8; ++k) {
      const bool loaded = listed_faces(8)[f].count(static_cast<int>(k) + 1) == 1;
      for (std::size_t i = 0; i < 3; ++i) EXPECT_CLOSE(F[3 * k + i], loaded ? sum[i] / 4 : 0.0, 100.0, 10);
    }
  }
  const finites_solid tetra = plain_solids::block(4, 2, 3, 5);
  const std::vector<double> F = face_load(tetra, 3, NOTHING, p);  // n area = (15, 10, 6) / 2
  EXPECT_CLOSE(sum_of_forces(F), (std::vector<double>{-7.5 * p, -5 * p, -3 * p}), 100.0, 10);
  const finites_solid wedge = plain_solids::block(6, 2, 3, 5);
  EXPECT_CLOSE(sum_of_forces(face_load(wedge, 2, NOTHING, p)), (std::vector<double>{0, 0, -3 * p}), 100.0, 10);
  EXPECT_CLOSE(sum_of_forces(face_load(wedge, 5, NOTHING, p)), (std::vector<double>{15 * p, 0, 0}), 100.0, 10);
}

// A flat trapezium: the traction has the resultant of its area and acts through its centroid.
TEST(SolidsFaces, TractionOnATrapezium) {
  finites_solid solid = plain_solids::block(8, 4, 1, 1);
  solid.xyz[6][0] = solid.xyz[2][0] = 2.0;  // the faces 1 and 2: parallel sides 4 and 2, height 1
  const std::vector<double> F = face_load(solid, 2, {0, 0, 3}, 0.0);
  EXPECT_CLOSE(sum_of_forces(F), (std::vector<double>{0, 0, 9}), 9.0, 10);
  // Centroid of the area 3: x = (2 * 1 + 1 * (2 + 2/3)) / 3, y = (4 + 2 * 2) / (3 * (4 + 2)).
  EXPECT_CLOSE(sum_of_moments(solid, F), (std::vector<double>{9 * 8.0 / 18, -9 * (14.0 / 9), 0}), 20.0, 10);
}

TEST(SolidsFaces, TractionOnTrianglesIsAThirdAtEachNode) {
  seeded_random random(9301);
  const finites_solid solid = random_solid(random, 4);
  const point t{1, -2, 3};
  for (int f = 1; f <= 4; ++f) {
    std::vector<int> nodes;
    for (const int k : listed_faces(4)[static_cast<std::size_t>(f - 1)]) nodes.push_back(k);
    const double area =
        length(cross(less(at(solid, nodes[1]), at(solid, nodes[0])), less(at(solid, nodes[2]), at(solid, nodes[0])))) /
        2;
    const std::vector<double> F = face_load(solid, f, t, 0.0);
    for (const int k : nodes) {
      for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_CLOSE(F[3 * static_cast<std::size_t>(k - 1) + i], t[i] * area / 3, area, 20);
      }
    }
  }
}

// Water pressure on all faces of a closed body: no force, no moment, on warped faces too.
TEST(SolidsFaces, PressureOnAllFacesIsInEquilibrium) {
  seeded_random random(9302);
  for (int e = 0; e < 60; ++e) {
    const finites_solid solid = random_solid(random, NODE_COUNTS[static_cast<std::size_t>(e % 3)]);
    std::vector<double> F(3 * static_cast<std::size_t>(solid.nodes));
    for (int f = 1; f <= plain_solids::faces(solid); ++f) {
      const std::vector<double> part = face_load(solid, f, NOTHING, 10.0);
      for (std::size_t i = 0; i < F.size(); ++i) F[i] += part[i];
    }
    EXPECT_CLOSE(sum_of_forces(F), std::vector<double>(3), 100.0, 50);
    EXPECT_CLOSE(sum_of_moments(solid, F), std::vector<double>(3), 500.0, 50);
  }
}

// The pressure on all faces holds the solid in the constant stress -p: K u of the shrinking u = -p (1 - 2 nu) x / E.
TEST(SolidsFaces, PressureOnAllFacesIsTheForceOfThePressedSolid) {
  seeded_random random(9303);
  for (int e = 0; e < 60; ++e) {
    const finites_solid solid = random_solid(random, NODE_COUNTS[static_cast<std::size_t>(e % 3)]);
    const double p = 10.0, strain = -p * (1 - 2 * solid.nu) / (solid.stiffness_factor * solid.E);
    const std::vector<double> held =
        plain_solids::forces(solid, linear_field(solid, {}, {{{strain, 0, 0}, {0, strain, 0}, {0, 0, strain}}}));
    std::vector<double> F(held.size());
    for (int f = 1; f <= plain_solids::faces(solid); ++f) {
      const std::vector<double> part = face_load(solid, f, NOTHING, p);
      for (std::size_t i = 0; i < F.size(); ++i) F[i] += part[i];
    }
    EXPECT_WITHIN(F, held, support::max_norm(held), solid.nodes == 6 ? 1e-7 : 1e-12);
  }
}

// On flat faces any constant stress: tractions S n on the faces of a block, K u inside.
TEST(SolidsFaces, TractionsOfAConstantStressAreTheForcesOfTheSolid) {
  seeded_random random(9304);
  for (const int nodes : NODE_COUNTS) {
    const finites_solid solid = plain_solids::block(nodes, 2, 3, 5);
    const gradient H = plain_solids::random_gradient(random, 1e-3), S = plain_solids::hooke(solid, H);
    const std::vector<double> held = plain_solids::forces(solid, linear_field(solid, {}, H));
    std::vector<double> F(held.size());
    for (int f = 1; f <= plain_solids::faces(solid); ++f) {
      // The normal from the force of a pressure.
      const std::vector<double> n = sum_of_forces(face_load(solid, f, NOTHING, -1.0));
      const double area = length({n[0], n[1], n[2]});
      point t{};
      for (std::size_t i = 0; i < 3; ++i) t[i] = (S[i][0] * n[0] + S[i][1] * n[1] + S[i][2] * n[2]) / area;
      const std::vector<double> part = face_load(solid, f, t, 0.0);
      for (std::size_t i = 0; i < F.size(); ++i) F[i] += part[i];
    }
    EXPECT_WITHIN(F, held, support::max_norm(held), nodes == 6 ? 1e-7 : 1e-13) << nodes;
  }
}

TEST(SolidsFaces, TractionMayBeNull) {
  const finites_solid solid = plain_solids::straight(8);
  double F[24];
  ASSERT_EQ(finites_solid_face_load(&solid, 2, nullptr, 4.0, F), FINITES_OK);
  EXPECT_EQ(std::vector<double>(F, F + 24), face_load(solid, 2, NOTHING, 4.0));
}
