// records_test.cpp: operation 5, word by word.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <tuple>
#include <utility>

#include "comparison.h"
#include "reference_solid.h"
#include "solid_cases.h"

namespace {

using reference::body;
using reference::body_of;
using reference::column;
using reference::listed;
using reference::rounded;
using reference::tensor;
using solid_cases::random_solid;
using support::seeded_random;
using support::solid_description;
using support::solid_model;

constexpr int NODE_COUNTS[] = {4, 6, 8};

// Strains and stresses at a place, element axes.
struct state {
  std::vector<double> strain, stress;
};

state state_at(const body& b, const std::vector<double>& place, const column& u) {
  const tensor R = reference::axes(b);
  const column e = reference::strain(b, place, u);
  const tensor stress = reference::stress_tensor(reference::elasticity(b) * e);
  return {rounded(reference::strain_column(R * reference::strain_tensor(e) * R.transpose())),
          rounded(reference::stress_column(R * stress * R.transpose()))};
}

// Eigenvalues in descending order and the von Mises stress as their differences give it.
std::vector<double> invariants(const std::vector<double>& stress) {
  const dense::eigen_system solver(reference::stress_tensor(listed(stress)));
  const auto& p = solver.eigenvalues();
  const reference::real a = p(2) - p(1), b = p(1) - p(0), c = p(2) - p(0);
  return {static_cast<double>(std::sqrt((a * a + b * b + c * c) / 2)), static_cast<double>(p(2)),
          static_cast<double>(p(1)), static_cast<double>(p(0))};
}

void expect_record(const double* record, const state& expected) {
  const double strain = support::max_norm(expected.strain), stress = support::max_norm(expected.stress);
  EXPECT_CLOSE(std::vector<double>(record + 3, record + 9), expected.strain, strain, 300);
  EXPECT_CLOSE(std::vector<double>(record + 9, record + 15), expected.stress, stress, 300);
  const std::vector<double> own = invariants(std::vector<double>(record + 9, record + 15));
  EXPECT_CLOSE(record[21], own[0], stress, 30);
  // The closed form has a root of 2 in single precision; near two equal values its angle takes the root of that error.
  EXPECT_WITHIN(std::vector<double>(record + 22, record + 25), std::vector<double>(own.begin() + 1, own.end()), stress,
                2e-4);
  for (const auto& [first, last] : {std::pair{1, 3}, {16, 21}, {26, 40}}) {
    for (int word = first; word <= last; ++word) EXPECT_EQ(record[word - 1], 0.0) << "word " << word;
  }
  for (int word = 41; word <= 50; ++word)
    EXPECT_TRUE(std::isnan(record[word - 1])) << "word " << word << " was written";
}

}  // namespace

TEST(SolidRecords, AtNodesAndPoints) {
  seeded_random random(6251);
  for (const int nodes : NODE_COUNTS) {
    for (int i = 0; i < 6; ++i) {
      const solid_description d = random_solid(random, nodes);
      const body b = body_of(d);
      solid_model model({random_solid(random, 8), d});
      const std::vector<double> u = random.vector(3 * nodes, 1e-3);
      const support::solid_status status = model.results(2, u);
      EXPECT_EQ(status.ierr, 0);
      EXPECT_EQ(status.msg, std::string(500, '~'));
      for (int k = 1; k <= nodes; ++k) {
        SCOPED_TRACE(::testing::Message() << nodes << " nodes, node " << k);
        expect_record(&model.record(2).RES50_NODE(1, k),
                      state_at(b, rounded(reference::node_coordinates(b.kind).col(k - 1)), listed(u)));
      }
      const std::vector<reference::station> points = reference::rule(b.kind);
      for (std::size_t p = 0; p < points.size(); ++p) {
        SCOPED_TRACE(::testing::Message() << nodes << " nodes, point " << p + 1);
        expect_record(&model.record(2).RES50_GAUSS(1, static_cast<int>(p) + 1),
                      state_at(b, {points[p].xi, points[p].eta, points[p].zeta}, listed(u)));
      }
    }
  }
}

TEST(SolidRecords, ColumnsBeyondNodesAndPointsStay) {
  seeded_random random(6252);
  for (const int nodes : NODE_COUNTS) {
    const solid_description d = random_solid(random, nodes);
    solid_model model({d, random_solid(random, 8)});
    model.set_displacements(1, random.vector(3 * nodes, 1e-3));
    const SOLID_RECORD before = model.record(1), other = model.record(2);
    model.results(1, random.vector(3 * nodes, 1e-3));
    const int points = static_cast<int>(reference::rule(body_of(d).kind).size());
    for (int column = 1; column <= 27; ++column) {
      EXPECT_EQ(std::isnan(model.record(1).RES50_NODE(4, column)), column > nodes) << column;
      EXPECT_EQ(std::isnan(model.record(1).RES50_GAUSS(4, column)), column > points) << column;
    }
    EXPECT_EQ(std::memcmp(before.F_ELEM.V, model.record(1).F_ELEM.V, sizeof before.F_ELEM), 0);
    EXPECT_EQ(std::memcmp(&other, &model.record(2), sizeof other), 0);
  }
}

// u = c x y along x: the strain xx is c y, xy is c x, at the node itself and not carried there from the points.
TEST(SolidRecords, StrainsAtNodesAreComputedThere) {
  const solid_description d = solid_cases::box(2.0, 3.0, 5.0);
  solid_model model({d});
  std::vector<double> u;
  for (const support::point& x : d.nodes) {
    u.push_back(1e-3 * x[0] * x[1]);
    u.insert(u.end(), {0.0, 0.0});
  }
  ASSERT_EQ(model.results(1, u).ierr, 0);
  for (std::size_t k = 0; k < 8; ++k) {
    const int column = static_cast<int>(k) + 1;
    EXPECT_CLOSE(model.record().RES50_NODE(4, column), 1e-3 * d.nodes[k][1], 3e-3, 30);
    EXPECT_CLOSE(model.record().RES50_NODE(7, column), 1e-3 * d.nodes[k][0], 3e-3, 30);
  }
  constexpr double g = 0.577350269189626;
  for (const auto& [column, sx, sy] : {std::tuple{1, -1, -1}, {2, 1, -1}, {3, 1, 1}, {8, -1, 1}}) {
    EXPECT_CLOSE(model.record().RES50_GAUSS(4, column), 1e-3 * 1.5 * (1.0 + sy * g), 3e-3, 30) << column;
    EXPECT_CLOSE(model.record().RES50_GAUSS(7, column), 1e-3 * 1.0 * (1.0 + sx * g), 3e-3, 30) << column;
  }
}

// Six different strains by hand, element axes along the global ones: E 1000, v 0.25: c = 1600, c (1 - v) = 1200,
// c v = 400, shear 400.
TEST(SolidRecords, StressesByHand) {
  solid_description d = solid_cases::box(1, 1, 1);
  d.young = 1000.0;
  d.poisson = 0.25;
  solid_model model({d});
  const std::vector<double> u = solid_cases::linear_field(d, {}, {{{0.01, 0.04, 0.05}, {0, 0.02, 0.06}, {0, 0, 0.03}}});
  ASSERT_EQ(model.results(1, u).ierr, 0);
  const double* r = &model.record().RES50_NODE(1, 7);
  EXPECT_CLOSE(std::vector<double>(r + 3, r + 9), (std::vector<double>{0.01, 0.02, 0.03, 0.04, 0.05, 0.06}), 0.06, 30);
  EXPECT_CLOSE(std::vector<double>(r + 9, r + 15), (std::vector<double>{32, 40, 48, 16, 20, 24}), 48.0, 30);
  EXPECT_CLOSE(r[21], std::sqrt(3888.0), 84.0, 30);  // (64 + 256 + 64) / 2 + 3 (256 + 400 + 576)
}

TEST(SolidRecords, NoOtherOutputIsTouched) {
  seeded_random random(6253);
  solid_model model({random_solid(random, 8)});
  model.set_displacements(1, random.vector(24, 1e-3));
  double F[24], K[576];
  std::fill_n(F, 24, -55.0);
  std::fill_n(K, 576, -55.0);
  const double G[3] = {1, 2, 3};
  EXPECT_EQ(model.call(5, 1, 8, G, F, K).ierr, 0);
  EXPECT_EQ(std::count(F, F + 24, -55.0), 24);
  EXPECT_EQ(std::count(K, K + 576, -55.0), 576);
}
