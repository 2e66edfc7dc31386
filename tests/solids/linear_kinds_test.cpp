// linear_kinds_test.cpp: the tables of the linear kinds against their shape functions, sums along edges against sums
// over nodes, and inputs that are not finite.
#include "solids/linear_kinds.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "comparison.h"
#include "reference_solid.h"
#include "solid_cases.h"
#include "solids/integration.h"
#include "solids/operations.h"

namespace {

using solid_cases::random_solid;
using support::seeded_random;
using support::solid_description;
using support::solid_model;

constexpr int NODE_COUNTS[] = {4, 6, 8};
constexpr double INF = std::numeric_limits<double>::infinity();
constexpr double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();

std::vector<double> place(const SOLID_STATIONS& XI3, int at) { return {XI3(1, at), XI3(2, at), XI3(3, at)}; }

// Derivatives (3, n) as the weights of the edges give them: + at heads, - at tails.
std::vector<double> from_edges(const LINEAR_KIND& kind, const MATRIX<LINEAR_NODES, LINEAR_EDGES>& weight, int row) {
  std::vector<double> DN(static_cast<std::size_t>(3 * kind.nodes), 0.0);
  for (int e = 1; e <= LINEAR_EDGES; ++e) {
    const LINEAR_EDGE edge = kind.edge[e - 1];
    const int d = (e - 1) / 4;
    DN[static_cast<std::size_t>(3 * (edge.head - 1) + d)] += weight(row, e);
    DN[static_cast<std::size_t>(3 * (edge.tail - 1) + d)] -= weight(row, e);
  }
  return DN;
}

int not_finite(const std::vector<double>& values) {
  return static_cast<int>(std::count_if(values.begin(), values.end(), [](double x) { return !std::isfinite(x); }));
}

}  // namespace

TEST(SolidLinearKinds, AreThree) {
  for (int kind = -1; kind <= 30; ++kind) {
    const LINEAR_KIND* const table = linear_kind(kind);
    ASSERT_EQ(table != nullptr, kind == 10 || kind == 12 || kind == 13) << kind;
    if (table == nullptr) continue;
    EXPECT_EQ(table->nodes, reference::node_count(kind));
    EXPECT_EQ(table->nodes % 2, 0);
  }
}

TEST(SolidLinearKinds, TablesAreFunctionsDerivativesAndRule) {
  for (const int nodes : NODE_COUNTS) {
    const int kind = reference::kind_of(nodes);
    const LINEAR_KIND& table = *linear_kind(kind);
    std::int32_t points = 0;
    SOLID_STATIONS XI3;
    VECTOR<SOLID_ROOM> W;
    SOLID_GAUSS_COUNT(kind, 0, points);
    SOLID_GAUSS_RULE(kind, 0, points, XI3, W);
    ASSERT_EQ(table.points, points);
    for (int p = 1; p <= points; ++p) {
      const std::vector<double> N = solid_cases::shape(kind, place(XI3, p));
      const std::vector<double> DN = solid_cases::shape_derivatives(kind, place(XI3, p));
      EXPECT_EQ(table.weight(p), W(p));
      for (int k = 1; k <= nodes; ++k) {
        EXPECT_EQ(table.function(k, p), N[static_cast<std::size_t>(k - 1)]);
        for (int d = 1; d <= 3; ++d) {
          EXPECT_EQ(table.derivative(k, 3 * (p - 1) + d), DN[static_cast<std::size_t>(3 * (k - 1) + d - 1)]);
        }
      }
      EXPECT_EQ(from_edges(table, table.at_points, p), DN) << nodes << " nodes, point " << p;
    }
    SOLID_NODE_COORDS(kind, nodes, XI3);
    for (int k = 1; k <= nodes; ++k) {
      EXPECT_EQ(from_edges(table, table.at_nodes, k), solid_cases::shape_derivatives(kind, place(XI3, k))) << nodes;
    }
  }
}

// The second lane of the one point of a tetrahedron repeats it, so that it is singular where the point is, and has no
// weight.
TEST(SolidLinearKinds, ASecondLaneWithoutAPointHasNoWeight) {
  const LINEAR_KIND& table = *linear_kind(13);
  EXPECT_EQ(table.weight(2), 0.0);
  EXPECT_EQ(from_edges(table, table.at_points, 2), from_edges(table, table.at_points, 1));
}

// The same routines without the tables sum over the nodes.
TEST(SolidLinearKinds, SumsAlongEdgesAreSumsOverNodes) {
  seeded_random random(6361);
  for (const int nodes : NODE_COUNTS) {
    for (int i = 0; i < 10; ++i) {
      solid_model model({random_solid(random, nodes)});
      model.set_displacements(1, random.vector(3 * nodes, 1e-3));
      SOLID_CALL S;
      ASSERT_TRUE(prepare_solid(S, model.position(1), nodes, MODEL_DATA_READER(model.raw())));
      ASSERT_NE(S.linear, nullptr);
      SOLID_CALL by_nodes = S;
      by_nodes.linear = nullptr;
      SOLID_GAUSS_RULE(S.KIND, SOLID_RULE, S.points, by_nodes.station, by_nodes.weight);
      const double G[3] = {1, -2, 3};
      std::int32_t ok = 1;
      const auto close = [&](const SOLID_VECTORS& f, const SOLID_VECTORS& g) {
        const std::vector<double> expected(g.V, g.V + 3 * nodes);
        EXPECT_CLOSE(std::vector<double>(f.V, f.V + 3 * nodes), expected, support::max_norm(expected), 200) << nodes;
      };
      SOLID_VECTORS f, g;
      for (const int op : {3, 33}) {
        SOLID_INTERNAL_FORCE(S, op, f, ok);
        SOLID_INTERNAL_FORCE(by_nodes, op, g, ok);
        close(f, g);
      }
      SOLID_BODY_LOAD(S, G, f, ok);
      SOLID_BODY_LOAD(by_nodes, G, g, ok);
      close(f, g);
      SOLID_RESULTS(S, ok);
      const SOLID_RECORD first = model.record();
      SOLID_RESULTS(by_nodes, ok);
      EXPECT_EQ(ok, 1);
      for (int k = 1; k <= nodes; ++k) {
        const double *a = &first.RES50_NODE(4, k), *b = &model.record().RES50_NODE(4, k);
        EXPECT_CLOSE(std::vector<double>(a, a + 12), std::vector<double>(b, b + 12), 500.0, 200) << nodes;
      }
    }
  }
}

TEST(SolidLinearKinds, MatricesAreSymmetricToTheLastBit) {
  seeded_random random(6362);
  for (const int nodes : NODE_COUNTS) {
    solid_model model({random_solid(random, nodes)});
    model.set_displacements(1, random.vector(3 * nodes, 1e-3));
    const std::size_t n = static_cast<std::size_t>(3 * nodes);
    for (const int op : {1, 2, 7}) {
      const std::vector<double> K = model.matrix(op);
      for (std::size_t j = 0; j < n; ++j) {
        for (std::size_t i = 0; i < j; ++i) ASSERT_EQ(K[n * j + i], K[n * i + j]) << op << ": " << i << ", " << j;
      }
    }
  }
}

// What is not finite spreads over the whole matrix or vector: no factor of zero is left out.
TEST(SolidLinearKinds, ANodeThatIsNotFinite) {
  for (const int nodes : NODE_COUNTS) {
    for (const double value : {NOT_A_NUMBER, INF, -INF}) {
      for (int k = 0; k < nodes; ++k) {
        solid_description d = solid_cases::box(1, 1, 1);
        if (nodes == 6) d.nodes = {d.nodes[0], d.nodes[1], d.nodes[3], d.nodes[4], d.nodes[5], d.nodes[7]};
        if (nodes == 4) d.nodes = {d.nodes[0], d.nodes[1], d.nodes[3], d.nodes[4]};
        d.nodes[static_cast<std::size_t>(k)][static_cast<std::size_t>(k % 3)] = value;
        solid_model model({d});
        for (const int op : {1, 2}) EXPECT_EQ(not_finite(model.matrix(op)), 9 * nodes * nodes) << nodes << " " << op;
        const std::vector<double> u(static_cast<std::size_t>(3 * nodes), 0.0);
        EXPECT_EQ(not_finite(model.forces(33, 1, u)), 3 * nodes) << nodes << " nodes, node " << k + 1;
        EXPECT_EQ(not_finite(model.body_load(1, {1, 2, 3})), 3 * nodes) << nodes;
      }
    }
  }
}

TEST(SolidLinearKinds, AMaterialThatIsNotFinite) {
  for (const double value : {NOT_A_NUMBER, INF}) {
    solid_description d = solid_cases::box(1, 2, 3);
    d.young = value;
    solid_model model({d});
    EXPECT_EQ(not_finite(model.matrix(1)), 576);
    d.young = 1000.0;
    d.unit_weight = value;
    solid_model heavy({d});
    EXPECT_EQ(not_finite(heavy.matrix(2)), 576);
    EXPECT_EQ(not_finite(heavy.matrix(1)), 0);
  }
}

// The couplings of different directions are zero up to rounding, and not finite where the number of the nodes is not.
TEST(SolidLinearKinds, AStressThatIsNotFinite) {
  solid_model model({solid_cases::box(1, 2, 3)});
  model.allocate_nonlinear();
  model.nonlinear().GAUSS_STRESS(1, 5) = NOT_A_NUMBER;
  EXPECT_EQ(not_finite(model.matrix(71)), 576);
  model.nonlinear().GAUSS_STRESS(1, 5) = 1.0;
  EXPECT_EQ(not_finite(model.matrix(71)), 0);
}
