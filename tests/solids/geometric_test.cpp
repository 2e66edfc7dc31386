// geometric_test.cpp: operations 7 and 71 against the product G^T T G with the full matrix of 9 by 9.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>

#include "comparison.h"
#include "reference_solid.h"
#include "solid_cases.h"

namespace {

using reference::body;
using reference::body_of;
using reference::column;
using reference::listed;
using reference::norm;
using reference::rounded;
using reference::tensor;
using solid_cases::random_solid;
using support::seeded_random;
using support::solid_description;
using support::solid_model;

constexpr int NODE_COUNTS[] = {4, 6, 8};

// Stresses of displacements at the points, global axes.
std::vector<tensor> stresses_of(const body& b, const column& u) {
  std::vector<tensor> all;
  for (const reference::station& p : reference::rule(b.kind)) {
    all.push_back(reference::stress_tensor(reference::elasticity(b) * reference::strain(b, {p.xi, p.eta, p.zeta}, u)));
  }
  return all;
}

}  // namespace

TEST(SolidGeometric, SevenIsMinusTheMatrixOfTheDisplacements) {
  seeded_random random(6231);
  for (const int nodes : NODE_COUNTS) {
    for (int i = 0; i < 8; ++i) {
      const solid_description d = random_solid(random, nodes);
      solid_model model({random_solid(random, 8), d});
      model.allocate_nonlinear();  // not read
      for (double& s : model.nonlinear(2).GAUSS_STRESS.V) s = 1e9;
      const std::vector<double> u = random.vector(3 * nodes, 1e-3);
      model.set_displacements(2, u);
      const reference::matrix expected = -reference::geometric(body_of(d), stresses_of(body_of(d), listed(u)));
      EXPECT_CLOSE(model.matrix(7, 2), rounded(expected), norm(expected), 500) << nodes << " nodes";
    }
  }
}

TEST(SolidGeometric, SeventyOneIsPlusTheMatrixOfTheStoredStress) {
  seeded_random random(6232);
  for (const int nodes : NODE_COUNTS) {
    for (int i = 0; i < 8; ++i) {
      const solid_description d = random_solid(random, nodes);
      solid_model model({d, random_solid(random, 8)});
      model.allocate_nonlinear();
      for (double& s : model.nonlinear(1).GAUSS_STRESS.V) s = random.uniform(-1e3, 1e3);
      const tensor R = reference::axes(body_of(d));
      std::vector<tensor> stress;
      for (int p = 1; p <= static_cast<int>(reference::rule(body_of(d).kind).size()); ++p) {
        const double* s = &model.nonlinear(1).GAUSS_STRESS(1, p);
        stress.push_back(R.transpose() * reference::stress_tensor(listed(std::vector<double>(s, s + 6))) * R);
      }
      const reference::matrix expected = reference::geometric(body_of(d), stress);
      EXPECT_CLOSE(model.matrix(71, 1), rounded(expected), norm(expected), 500) << nodes << " nodes";
    }
  }
}

// The stored stress of the displacements: 71 is then the reverse of 7.
TEST(SolidGeometric, SevenAndSeventyOneAreOpposite) {
  seeded_random random(6233);
  for (const int nodes : NODE_COUNTS) {
    solid_model model({random_solid(random, nodes)});
    model.allocate_nonlinear();
    ASSERT_EQ(model.results(1, random.vector(3 * nodes, 1e-3)).ierr, 0);
    for (int p = 1; p <= 27; ++p) {
      for (int i = 1; i <= 6; ++i) model.nonlinear().GAUSS_STRESS(i, p) = model.record().RES50_GAUSS(9 + i, p);
    }
    std::vector<double> seven = model.matrix(7);
    for (double& k : seven) k = -k;
    EXPECT_CLOSE(model.matrix(71), seven, support::max_norm(seven), 10) << nodes << " nodes";
  }
}

// A box of edges 2, 3, 5 under a stress of 100 along x: G^T T G is 100 times the integral of dNi/dx dNj/dx, alike in
// the three components.
TEST(SolidGeometric, UnderOneStressByHand) {
  solid_model model({solid_cases::box(2.0, 3.0, 5.0)});
  model.allocate_nonlinear();
  for (int p = 1; p <= 8; ++p) model.nonlinear().GAUSS_STRESS(1, p) = 100.0;
  const std::vector<double> KG = model.matrix(71);
  const double edge = 100.0 / 2.0 * (3.0 / 3.0) * (5.0 / 3.0);  // (N1, N1): 1 / 2 along x, thirds across
  for (std::size_t t = 0; t < 3; ++t) {
    EXPECT_CLOSE(KG[25 * t], edge, edge, 20);
    EXPECT_CLOSE(KG[24 * (3 + t) + t], -edge, edge, 20);
  }
  EXPECT_CLOSE(KG[1], 0.0, edge, 20);
}

// A rotation about z of a bar under tension does work against it: u^T KG u is the stress times the volume times the
// square of the angle.
TEST(SolidGeometric, EnergyOfASmallRotation) {
  const solid_description d = solid_cases::box(2.0, 3.0, 5.0);
  solid_model model({d});
  model.allocate_nonlinear();
  for (int p = 1; p <= 8; ++p) model.nonlinear().GAUSS_STRESS(1, p) = 100.0;
  const std::vector<double> u = solid_cases::linear_field(d, {}, {{{0, -1e-3, 0}, {1e-3, 0, 0}, {0, 0, 0}}});
  EXPECT_CLOSE(support::dot(u, support::product(model.matrix(71), u)), 100.0 * 30.0 * 1e-6, 3e-3, 100);
}

TEST(SolidGeometric, LeavesTheRecordsAlone) {
  seeded_random random(6234);
  solid_model model({random_solid(random, 8)});
  model.allocate_nonlinear();
  model.set_displacements(1, random.vector(24, 1e-3));
  const SOLID_RECORD record = model.record();
  const SOLID_NL_RECORD nonlinear = model.nonlinear();
  for (const int op : {1, 2, 7, 71}) {
    model.matrix(op);
    EXPECT_EQ(std::memcmp(&record, &model.record(), sizeof record), 0) << op;
    EXPECT_EQ(std::memcmp(&nonlinear, &model.nonlinear(), sizeof nonlinear), 0) << op;
  }
}
