// laws_of_calls.cpp: laws of offsets, modifiers, stored forces, the order of nodes, and of what a call writes.
#include <algorithm>
#include <cstring>

#include "asked_model.h"
#include "comparison.h"
#include "finites/fields.h"
#include "guarded_buffer.h"
#include "laws.h"

using shell_reference::column;
using shell_reference::column_of;
using shell_reference::largest;
using shell_reference::listed;
using shell_reference::matrix;
using shell_reference::matrix3;
using shell_reference::reference_element;
using shell_reference::vector3;
using support::plate_description;
using support::point;

namespace {

// Positions of A, from 1, whose bits changed.
std::vector<int> changes(const std::vector<double>& before, const double* after) {
  std::vector<int> positions;
  for (std::size_t i = 0; i < before.size(); ++i) {
    if (std::memcmp(&before[i], &after[i], sizeof(double)) != 0) positions.push_back(static_cast<int>(i) + 1);
  }
  return positions;
}

}  // namespace

namespace law {

// Nodes that rigid arms join to the element: stiffness, mass, geometric stiffness, surface load, body force and point
// load are those of the element where it is, with forces and displacements carried over the arms.
void offsets_join_the_nodes_rigidly(const element_subject& s, seeded_random& random) {
  const plate_description at_rest = random_element(random, s);
  plate_description offset = at_rest, moved = at_rest;
  support::add_random_offsets(random, offset);
  matrix P = matrix::Identity(6 * s.nodes, 6 * s.nodes);
  for (int n = 0; n < s.nodes; ++n) {
    const point& arm = offset.offsets[static_cast<std::size_t>(n)];
    for (std::size_t i = 0; i < 3; ++i) moved.nodes[static_cast<std::size_t>(n)][i] -= arm[i];
    // u of the element's corner = u + theta x (corner - node), corner - node = -arm.
    const vector3 r = -shell_reference::wide(arm);
    matrix3 cross;
    cross << 0.0L, r(2), -r(1), -r(2), 0.0L, r(0), r(1), -r(0), 0.0L;
    P.block(6 * n, 6 * n + 3, 3, 3) = cross;
  }
  const std::vector<double> u = random.vector(6 * s.nodes, 1e-3), stored = random.vector(24, 1.0);
  const std::vector<double> load = {0.3, -0.7, 1.1, 0.2, 0.1, -0.4};
  std::vector<double> K, M, G, S, f, b, T;
  {
    asked_model model(s, moved);
    std::copy(stored.begin(), stored.end(), model.state(1).STORED_NODAL_FORCES.V);
    K = model.stiffness(1);
    M = model.mass(1);
    S = model.matrix(71, 1);
    model.set_displacements(listed(P * column_of(u)));
    G = model.matrix(7, 1);
    f = model.loads(4, 1, load);
    b = model.loads(41, 1, load);
    T = model.loads(401, 1, {30.0, 20.0});
  }
  asked_model model(s, offset);
  std::copy(stored.begin(), stored.end(), model.state(1).STORED_NODAL_FORCES.V);
  const auto carried = [&P](const std::vector<double>& A) { return listed(P.transpose() * full(A) * P); };
  EXPECT_CLOSE(model.stiffness(1), carried(K), support::max_norm(K), 100);
  EXPECT_CLOSE(model.mass(1), carried(M), support::max_norm(M), 100);
  EXPECT_CLOSE(model.matrix(71, 1), carried(S), support::max_norm(S), 100);
  model.set_displacements(u);
  EXPECT_CLOSE(model.matrix(7, 1), carried(G), support::max_norm(G) + 1e-2 * support::max_norm(K), 100);
  const auto on_nodes = [&P](const std::vector<double>& forces) { return listed(P.transpose() * column_of(forces)); };
  EXPECT_CLOSE(model.loads(4, 1, load), on_nodes(f), support::max_norm(f), 100);
  EXPECT_CLOSE(model.loads(41, 1, load), on_nodes(b), support::max_norm(b), 100);
  EXPECT_CLOSE(model.loads(401, 1, {30.0, 20.0}), on_nodes(T), support::max_norm(T), 100);
}

// Each modifier scales its own part of the stiffness: membrane, and bending with shear of a thick plate together; the
// drilling term has none.
void modifiers_scale_their_parts(const element_subject& s, seeded_random& random) {
  plate_description d = random_element(random, s);
  const auto K_of = [&](double membrane, double plate) {
    d.modifier_membrane = membrane;
    d.modifier_bending = d.modifier_shear = plate;
    asked_model model(s, d);
    return column_of(model.stiffness(1));
  };
  const double tiny = 0x1p-40;  // a plate without shear stiffness has no ratio
  const column base = K_of(0.0, tiny), membrane = K_of(1.0, tiny), plate = K_of(0.0, 1.0), both = K_of(0.5, 0.25);
  const column expected = base + 0.5L * (membrane - base) + (0.25L - tiny) / (1.0L - tiny) * (plate - base);
  EXPECT_CLOSE(listed(both), listed(expected), largest(membrane) + largest(plate), 200);
  if (s.membrane_only()) {
    EXPECT_EQ(listed(plate), listed(base));
  } else {
    EXPECT_GT(largest(plate - base), 0.0);
  }
}

// With SECOND_ORDER operation 1 holds what operation 71 returns with the other sign, except on the very first pass.
void stored_forces_add_their_stiffness_with_second_order(const element_subject& s, seeded_random& random) {
  const plate_description d = random_element(random, s);
  asked_model model(s, d);
  const std::vector<double> K = model.stiffness(1);
  for (double& force : model.state(1).STORED_NODAL_FORCES.V) force = support::max_norm(K) * random.uniform(-1.0, 1.0);
  const std::vector<double> G = model.matrix(71, 1);
  EXPECT_EQ(model.stiffness(1), K);  // without the flag
  model.set_header(SECOND_ORDER, 1.0);
  EXPECT_CLOSE(model.stiffness(1), listed(column_of(K) - column_of(G)), support::max_norm(G), 32);
  EXPECT_GT(support::max_norm(G), 1e-3 * support::max_norm(K));
  model.set_header(ANALYSIS_STATE, 1.0);
  EXPECT_EQ(model.stiffness(1), K);  // the first pass: no forces exist yet
  model.set_header(STEP_COUNTER, 1.0);
  EXPECT_CLOSE(model.stiffness(1), listed(column_of(K) - column_of(G)), support::max_norm(G), 32);
}

// Another first node, another direction round the element: the matrices only change places. In-plane shear at the
// centre is a shear of the element's axes, which turn with the first side: the membrane of quadrilaterals keeps the law
// on rectangles alone, bending, shear, mass and loads on any shape.
void nodes_may_be_cycled(const element_subject& s, seeded_random& random) {
  plate_description d = random_element(random, s);
  const bool rectangular = s.nodes == 4 && random.integer(0, 1) == 0;
  if (rectangular) {
    const reference_element e(d);
    d.nodes = {e.in_space(0, 0, 0), e.in_space(0.7L, 0, 0), e.in_space(0.7L, 0.4L, 0), e.in_space(0, 0.4L, 0)};
  } else if (s.nodes == 4) {
    d.modifier_membrane = 0.0;
  }
  std::vector<double> K, M, f;
  {
    asked_model model(s, d);
    K = model.stiffness(1);
    M = model.mass(1);
    f = model.loads(4, 1, {0.3, -0.7, 1.1});
  }
  const int n = s.nodes;
  for (int first = 0; first < n; ++first) {
    for (const int step : {1, n - 1}) {
      plate_description other = d;
      matrix P = matrix::Zero(6 * n, 6 * n);
      for (int i = 0; i < n; ++i) {
        const int from = (first + step * i) % n;
        other.nodes[static_cast<std::size_t>(i)] = d.nodes[static_cast<std::size_t>(from)];
        P.block(6 * i, 6 * from, 6, 6).setIdentity();
      }
      asked_model model(s, other);
      EXPECT_CLOSE(model.stiffness(1), listed(P * full(K) * P.transpose()), support::max_norm(K), 200);
      EXPECT_CLOSE(model.mass(1), listed(P * full(M) * P.transpose()), support::max_norm(M), 200);
      EXPECT_CLOSE(model.loads(4, 1, {0.3, -0.7, 1.1}), listed(P * column_of(f)), support::max_norm(f), 200);
    }
  }
}

void nothing_else_is_written(const element_subject& s, seeded_random& random) {
  const plate_description d = random_element(random, s);
  asked_model model(s, d);
  const std::vector<int> none;
  for (const int op : {1, 2, 3, 33, 4, 41, 401, 5, 7, 71, 8, 9, 10, 6, 0, 77}) {
    support::guarded_buffer data(12), forces(24), matrix(576);
    data.set_input(random.vector(9, 1.0));
    model.set_displacements(random.vector(24, 1e-2));
    support::guarded_buffer pattern(24 + 720);
    std::copy_n(pattern.data(), 24 + 720, model.exchange_forces());
    const std::vector<double> before(model.raw(), model.raw() + model.extent());
    const int left = model.call(op, 1, data.data(), forces.data(), matrix.data());
    EXPECT_EQ(left, op == 41 || op == 401 ? 4 : op);

    const bool makes_matrix = op == 1 || op == 2 || op == 7 || op == 71;
    const bool makes_loads = op == 4 || op == 41 || op == 401 || op == 10;
    EXPECT_EQ(matrix.changed(), makes_matrix ? support::leading_block(6 * s.nodes, 24) : none) << "operation " << op;
    EXPECT_EQ(forces.changed(), makes_loads ? support::range(1, 24) : none) << "operation " << op;
    EXPECT_EQ(data.changed(), op == 9 ? support::range(10, 12) : none) << "operation " << op;
    const int exchange = static_cast<int>(model.exchange_forces() - model.raw()) + 1;
    std::vector<int> expected;
    if (op == 3 || op == 33) expected = support::range(exchange, exchange + 23);
    if (op == 5) expected = support::range(exchange + 24, exchange + 24 + 719);
    EXPECT_EQ(changes(before, model.raw()), expected) << "operation " << op;
  }
}

}  // namespace law
