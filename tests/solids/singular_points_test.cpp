// singular_points_test.cpp: a Jacobian that is singular at some points of the rule and regular at those that follow:
// one such point stops the whole operation.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>

#include "comparison.h"
#include "guarded_buffer.h"
#include "reference_solid.h"
#include "solid_cases.h"

namespace {

using support::guarded_buffer;
using support::seeded_random;
using support::solid_description;
using support::solid_model;

// x = xi, y = eta, z = zeta h with h of xi and eta alone: the determinant is h. The element is 1e-7 thick, so that the
// rounding of a determinant that ought to be 0 stays far below the limit of 1e-20.
solid_description of_height(int nodes, double (*h)(double xi, double eta)) {
  solid_description d;
  const reference::matrix XI = reference::node_coordinates(reference::kind_of(nodes));
  for (dense::index k = 0; k < XI.cols(); ++k) {
    const double xi = static_cast<double>(XI(0, k)), eta = static_cast<double>(XI(1, k));
    d.nodes.push_back({xi, eta, 1e-7 * static_cast<double>(XI(2, k)) * h(xi, eta)});
  }
  return d;
}

// Zero at points 3 and 7, those with xi = eta = 1 / sqrt 3; at no node and no other point.
solid_description brick_singular_at_3_and_7() {
  return of_height(8, [](double xi, double eta) { return 2.0 * 0.577350269189626 - xi - eta; });
}

// Zero at points 4 and 8, those with xi = -1 / sqrt 3 and eta = 1 / sqrt 3: each the second of two that follow each
// other.
solid_description brick_singular_at_4_and_8() {
  return of_height(8, [](double xi, double eta) { return 2.0 * 0.577350269189626 + xi - eta; });
}

// Zero at points 2 and 5, those with xi = 0 and eta = 1/2; at no node and no other point.
solid_description wedge_singular_at_2_and_5() {
  return of_height(6, [](double xi, double eta) { return 0.5 - eta + 3.0 * xi; });
}

struct singular_case {
  solid_description element;
  int first_singular;
};

std::vector<singular_case> singular_cases() {
  return {{brick_singular_at_3_and_7(), 3}, {brick_singular_at_4_and_8(), 4}, {wedge_singular_at_2_and_5(), 2}};
}

}  // namespace

TEST(SolidSingularPoints, LieBetweenRegularOnes) {
  for (const singular_case& c : singular_cases()) {
    const reference::body b = reference::body_of(c.element);
    const std::vector<reference::station> points = reference::rule(b.kind);
    int p = 0;
    for (const reference::station& s : points) {
      ++p;
      const double det = static_cast<double>(reference::jacobian(b, {s.xi, s.eta, s.zeta}).determinant());
      const bool singular = p == c.first_singular || p == c.first_singular + static_cast<int>(points.size()) / 2;
      if (singular) {
        EXPECT_LT(std::fabs(det), 1e-21) << "point " << p;
      } else {
        EXPECT_GT(std::fabs(det), 1e-9) << "point " << p;
      }
    }
  }
}

TEST(SolidSingularPoints, StopEveryOperation) {
  seeded_random random(6351);
  for (const singular_case& c : singular_cases()) {
    for (const int op : {1, 2, 3, 33, 7, 41, 71, 9}) {
      solid_model model({c.element});
      model.allocate_nonlinear();
      const int nodes = model.nodes(1);
      model.set_displacements(1, random.vector(3 * nodes, 1e-3));
      const SOLID_RECORD before = model.record();
      guarded_buffer F(27), K(576);
      const double G[3] = {1, 2, 3};
      const support::solid_status status = model.call(op, 1, nodes, G, F.data(), K.data());
      EXPECT_EQ(status.ierr, 1228) << "operation " << op << ", " << nodes << " nodes";
      EXPECT_NE(status.msg.find(" 17:"), std::string::npos) << status.msg;
      EXPECT_EQ(F.changed(), std::vector<int>{}) << "operation " << op << ", " << nodes << " nodes";
      EXPECT_EQ(K.changed(), std::vector<int>{}) << "operation " << op << ", " << nodes << " nodes";
      EXPECT_EQ(std::memcmp(&before, &model.record(), sizeof before), 0) << "operation " << op;
    }
  }
}

// The records of the nodes and of the points before the singular one are filled, none behind it.
TEST(SolidSingularPoints, StopTheResultsWhereTheyAreMet) {
  seeded_random random(6352);
  for (const singular_case& c : singular_cases()) {
    solid_model model({c.element});
    const int nodes = model.nodes(1);
    EXPECT_EQ(model.results(1, random.vector(3 * nodes, 1e-3)).ierr, 1228) << nodes << " nodes";
    for (int column = 1; column <= 27; ++column) {
      EXPECT_EQ(std::isnan(model.record().RES50_NODE(4, column)), column > nodes) << "node " << column;
      EXPECT_EQ(std::isnan(model.record().RES50_GAUSS(4, column)), column >= c.first_singular) << "point " << column;
    }
  }
}

// Forces fail before the chain has any: what it hands back is cleared, its forces are not touched.
TEST(SolidSingularPoints, StopTheChainBeforeItsForces) {
  seeded_random random(6353);
  for (const singular_case& c : singular_cases()) {
    solid_model model({c.element});
    const std::size_t nodes = c.element.nodes.size();
    const support::solid_answer answer = model.answer(1, random.vector(3 * static_cast<int>(nodes), 1e-3));
    EXPECT_EQ(answer.status.ierr, 1228);
    EXPECT_EQ(answer.RES, std::vector<double>(50 * nodes, 0.0));
    EXPECT_EQ(answer.S, std::vector<double>(6 * nodes, 0.0));
    for (const double f : answer.FG) EXPECT_TRUE(std::isnan(f));
  }
}

TEST(SolidSingularPoints, LeaveStrainAndGradientMatrices) {
  std::vector<support::point> nodes = solid_cases::box(1, 1, 1).nodes;
  nodes[3] = nodes[2];
  nodes[7] = nodes[6];
  MATRIX<6, SOLID_DOFS> B;
  MATRIX<9, SOLID_DOFS> G;
  std::fill_n(B.data(), 6 * SOLID_DOFS, -55.0);
  std::fill_n(G.data(), 9 * SOLID_DOFS, -55.0);
  std::int32_t ok_B = 1, ok_G = 1;
  SOLID_B_MATRIX(10, 0.0, 1.0, 0.0, 8, solid_cases::coordinates(nodes), B, ok_B);
  SOLID_G_MATRIX(10, 0.0, 1.0, 0.0, 8, solid_cases::coordinates(nodes), G, ok_G);
  EXPECT_EQ(ok_B, 0);
  EXPECT_EQ(ok_G, 0);
  EXPECT_EQ(std::count(B.V, B.V + 6 * SOLID_DOFS, -55.0), 6 * SOLID_DOFS);
  EXPECT_EQ(std::count(G.V, G.V + 9 * SOLID_DOFS, -55.0), 9 * SOLID_DOFS);
}
