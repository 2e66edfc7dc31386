// mass_load_test.cpp: the consistent mass and the nodal forces of a load on the volume.
#include <gtest/gtest.h>

#include <cmath>

#include "comparison.h"
#include "guarded_buffer.h"
#include "reference_solid.h"
#include "solid_cases.h"

namespace {

using reference::body_of;
using reference::norm;
using reference::rounded;
using solid_cases::random_solid;
using support::point;
using support::seeded_random;
using support::solid_description;
using support::solid_model;

constexpr int NODE_COUNTS[] = {4, 6, 8};

// What an element integrates to over its volume: a tetrahedron six times as much; a wedge has single-precision weights
// and points, a brick is exact.
struct measure {
  double factor, tolerance;
};

measure measure_of(int nodes) {
  switch (nodes) {
    case 4: return {6.0, 1e-14};
    case 6: return {1.0, 1e-7};
    default: return {1.0, 1e-14};
  }
}

double sum_of(const std::vector<double>& f, std::size_t component) {
  double sum = 0.0;
  for (std::size_t at = component; at < f.size(); at += 3) sum += f[at];
  return sum;
}

}  // namespace

TEST(SolidMass, IsTheFullProduct) {
  seeded_random random(6211);
  for (const int nodes : NODE_COUNTS) {
    for (int i = 0; i < 8; ++i) {
      const solid_description d = random_solid(random, nodes);
      solid_model model({d, random_solid(random, 4)});
      const reference::matrix M = reference::mass(body_of(d));
      EXPECT_CLOSE(model.matrix(2, 1), rounded(M), norm(M), 60) << nodes << " nodes";
    }
  }
}

TEST(SolidMass, AddsUpToThatOfTheVolume) {
  seeded_random random(6212);
  for (const int nodes : NODE_COUNTS) {
    for (int i = 0; i < 8; ++i) {
      const solid_description d = random_solid(random, nodes);
      solid_model model({d});
      const std::vector<double> M = model.matrix(2);
      const measure m = measure_of(nodes);
      const double expected = m.factor * d.unit_weight / 9810.0 * static_cast<double>(reference::volume(body_of(d)));
      for (std::size_t i_component = 0; i_component < 3; ++i_component) {
        std::vector<double> motion(static_cast<std::size_t>(3 * nodes), 0.0);
        for (std::size_t at = i_component; at < motion.size(); at += 3) motion[at] = 1.0;
        EXPECT_WITHIN(support::dot(motion, support::product(M, motion)), expected, expected, m.tolerance)
            << nodes << " nodes";
      }
    }
  }
}

// The mass of a cube of 2 with unit weight 9810: 8, and the corner's own share 8 (2/3)^3 / 8.
TEST(SolidMass, OfACubeByHand) {
  solid_description d = solid_cases::box(2, 2, 2);
  d.unit_weight = 9810.0;
  d.stiff_factor = 0.25F;  // does not matter
  solid_model model({d});
  const std::vector<double> M = model.matrix(2);
  EXPECT_CLOSE(M[0], 8.0 / 27.0, 1.0, 20);        // integral of N1^2
  EXPECT_CLOSE(M[3 * 24], 4.0 / 27.0, 1.0, 20);   // N1 N2, one edge apart
  EXPECT_CLOSE(M[6 * 24], 2.0 / 27.0, 1.0, 20);   // N1 N3, across a face
  EXPECT_CLOSE(M[18 * 24], 1.0 / 27.0, 1.0, 20);  // N1 N7, across the cube
  EXPECT_CLOSE(M[1], 0.0, 1.0, 20);               // components do not couple
}

TEST(SolidBodyLoad, IsTheIntegralOfTheFunctions) {
  seeded_random random(6213);
  for (const int nodes : NODE_COUNTS) {
    for (int i = 0; i < 8; ++i) {
      const solid_description d = random_solid(random, nodes);
      solid_model model({d, random_solid(random, 4)});
      const std::vector<double> G = random.vector(3, 10.0);
      const reference::matrix f = reference::body_load(body_of(d), reference::listed(G));
      EXPECT_CLOSE(model.body_load(1, {G[0], G[1], G[2]}), rounded(f), norm(f), 60) << nodes << " nodes";
    }
  }
}

// G is the load per unit volume: no density, and global axes.
TEST(SolidBodyLoad, AddsUpToTheLoadOnTheVolume) {
  seeded_random random(6214);
  for (const int nodes : NODE_COUNTS) {
    for (const double weight : {0.0, 7.0}) {
      solid_description d = random_solid(random, nodes);
      d.unit_weight = weight;
      solid_model model({d});
      const point G{3.0, -2.0, 0.5};
      const std::vector<double> F = model.body_load(1, G);
      const measure m = measure_of(nodes);
      const double volume = m.factor * static_cast<double>(reference::volume(body_of(d)));
      for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_WITHIN(sum_of(F, i), G[i] * volume, 3.0 * volume, m.tolerance) << nodes << " nodes";
      }
    }
  }
}

// A tetrahedron with edges of 3 on the axes has the volume 4.5 and integrates to 27, a quarter to each node.
TEST(SolidBodyLoad, OnATetrahedronByHand) {
  solid_model model({solid_cases::corner_tetrahedron(3.0)});
  const std::vector<double> F = model.body_load(1, {0, 0, -2});
  for (std::size_t k = 0; k < 4; ++k) {
    EXPECT_CLOSE(F[3 * k], 0.0, 13.5, 10);
    EXPECT_CLOSE(F[3 * k + 2], -13.5, 13.5, 10);
  }
}

TEST(SolidBodyLoad, WritesItsForcesAlone) {
  seeded_random random(6215);
  for (const int nodes : NODE_COUNTS) {
    solid_model model({random_solid(random, nodes)});
    support::guarded_buffer F(27), K(576);
    const double G[3] = {1, 2, 3};
    const std::string untouched(500, '~');
    const support::solid_status status = model.call(41, 1, nodes, G, F.data(), K.data());
    EXPECT_EQ(status.ierr, 0);
    EXPECT_EQ(status.msg, untouched);
    EXPECT_EQ(F.changed(), support::range(1, 3 * nodes));
    EXPECT_EQ(K.changed(), std::vector<int>{});
  }
}
