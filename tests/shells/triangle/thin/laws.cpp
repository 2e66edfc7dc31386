// laws.cpp: the laws of the thin triangle, each on one random element through FINITES.
#include "laws.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "comparison.h"
#include "dense.h"
#include "guarded_buffer.h"
#include "reference_triangle.h"

using reference::column;
using reference::column_of;
using reference::listed;
using reference::matrix;
using reference::matrix3;
using reference::real;
using reference::vector3;
using support::plate_description;
using support::plate_model;
using support::point;
using support::seeded_random;

namespace {

plate_description describe(seeded_random& random, const subject& s) {
  plate_description d = random_element(random, s.element);
  if (s.listed_factors) {
    d.material.E1 = static_cast<float>(d.young);
    d.material.NU1 = static_cast<float>(d.poisson);
    d.material.G12 = static_cast<float>(d.young / (2.0 * (1.0 + d.poisson)));
    d.material.ALPHA1 = static_cast<float>(d.expansion);
    d.ortho_angle = random.uniform(-1.5, 1.5);
  }
  return d;
}

// The model of one element, in the state that the properties ask it in.
struct asked_model : plate_model {
  asked_model(const subject& s, const plate_description& d) : plate_model(std::vector<plate_description>{d}) {
    if (s.listed_factors) set_stiffness_factors({10}, {0.75F, 0.5F});
    allocate_state();
  }
};

// ---- displacement fields

vector3 at_node(const plate_description& d, int n) {
  const point& p = d.nodes[static_cast<std::size_t>(n)];
  return {p[0], p[1], p[2]};
}

// A shift and a small rotation about the origin.
column rigid_motion(const plate_description& d, const vector3& shift, const vector3& turn) {
  column u(18);
  for (int n = 0; n < 3; ++n) {
    u.segment(6 * n, 3) = shift + turn.cross(at_node(d, n));
    u.segment(6 * n + 3, 3) = turn;
  }
  return u;
}

double size_of(const column& u) { return reference::largest(u); }

std::vector<double> record(const std::vector<double>& blocks, int n, int first, int count) {
  const auto start = blocks.begin() + 90 * n + first - 1;
  return std::vector<double>(start, start + count);
}

matrix full(const std::vector<double>& K) { return dense::widened(K.data(), 18, 18); }

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

void symmetry(const subject& s, seeded_random& random) {
  const plate_description d = describe(random, s);
  asked_model model(s, d);
  for (double& force : model.state(1).STORED_NODAL_FORCES.V) force = random.uniform(-1.0, 1.0);
  model.set_displacements(random.vector(18, 1e-2));
  for (const int op : {1, 2, 7, 71}) {
    const std::vector<double> K = model.matrix(op, 1);
    EXPECT_EQ(support::transposed(K), K) << "operation " << op;
    EXPECT_GT(support::max_norm(K), 0.0) << "operation " << op;
  }
}

void rigid_motions_give_no_force_and_no_strain(const subject& s, seeded_random& random) {
  const plate_description d = describe(random, s);
  asked_model model(s, d);
  const double K = support::max_norm(model.stiffness(1));
  for (int mode = 0; mode < 6; ++mode) {
    const vector3 unit = vector3::Unit(mode % 3), none = vector3::Zero();
    const column u = mode < 3 ? rigid_motion(d, unit, none) : rigid_motion(d, none, unit);
    EXPECT_CLOSE(model.internal_forces(1, listed(u)), std::vector<double>(18, 0.0), K * size_of(u), 64) << mode;
    const support::plate_results results = model.results(1, listed(u));
    for (int n = 0; n < 3; ++n) {
      for (const int strain : {4, 15, 26}) {
        EXPECT_CLOSE(record(results.nodes, n, strain, 3), std::vector<double>(3, 0.0), 10.0 * size_of(u), 64) << mode;
      }
    }
  }
}

void rigid_motions_have_no_stiffness(const subject& s, seeded_random& random) {
  const plate_description d = describe(random, s);
  asked_model model(s, d);
  const std::vector<double> K = model.stiffness(1);
  for (int mode = 0; mode < 6; ++mode) {
    const vector3 unit = vector3::Unit(mode % 3), none = vector3::Zero();
    const column u = mode < 3 ? rigid_motion(d, unit, none) : rigid_motion(d, none, unit);
    EXPECT_CLOSE(support::product(K, listed(u)), std::vector<double>(18, 0.0), support::max_norm(K) * size_of(u), 64)
        << mode;
  }
}

void rigid_motions_with_offsets_give_no_force(const subject& s, seeded_random& random) {
  plate_description d = describe(random, s);
  support::add_random_offsets(random, d);
  asked_model model(s, d);
  const double K = support::max_norm(model.stiffness(1));
  for (int mode = 0; mode < 6; ++mode) {
    const vector3 unit = vector3::Unit(mode % 3), none = vector3::Zero();
    const column u = mode < 3 ? rigid_motion(d, unit, none) : rigid_motion(d, none, unit);
    EXPECT_CLOSE(model.internal_forces(1, listed(u)), std::vector<double>(18, 0.0), K * size_of(u), 64) << mode;
  }
}

void constant_strain_is_found(const subject& s, seeded_random& random) {
  const plate_description d = describe(random, s);
  asked_model model(s, d);
  const matrix3 axes = reference::axes_of(d.nodes);
  const reference::flat_triangle X = reference::seen_from(axes, d.nodes);
  const std::vector<double> a = random.vector(4, 1.0), c = random.vector(3, 1.0);
  column local = column::Zero(18);
  for (int n = 0; n < 3; ++n) {
    const real x = X(0, n), y = X(1, n);
    local.segment(6 * n, 5) << a[0] * x + a[1] * y, a[2] * x + a[3] * y,
        c[0] * x * x / 2 + c[1] * y * y / 2 + c[2] * x * y, c[1] * y + c[2] * x, -(c[0] * x + c[2] * y);
  }
  const column u = reference::eighteen(axes).transpose() * local;
  const support::plate_results results = model.results(1, listed(u));
  const double h = d.thickness;
  const std::vector<double> strain = {a[0], a[3], a[1] + a[2]};
  const std::vector<double> top = {a[0] - c[0] * h / 2.0, a[3] - c[1] * h / 2.0, a[1] + a[2] - c[2] * h};
  for (int p = 0; p < 4; ++p) {
    EXPECT_CLOSE(record(results.points, p, 15, 3), strain, 10.0, 64);
    EXPECT_CLOSE(record(results.points, p, 4, 3), top, 10.0, 64);
  }
}

void whole_element_may_turn(const subject& s, seeded_random& random) {
  const plate_description d = describe(random, s);
  const support::rotation Q = support::random_rotation(random);
  plate_description turned = d;
  for (point& node : turned.nodes) node = support::rotate(Q, node);
  matrix3 R;
  for (int i = 0; i < 3; ++i) {
    for (int j = 0; j < 3; ++j) R(i, j) = Q[static_cast<std::size_t>(i)][static_cast<std::size_t>(j)];
  }
  const matrix R18 = reference::eighteen(R);
  const std::vector<double> u = random.vector(18, 1.0);
  std::vector<double> K, M, points;
  {
    asked_model model(s, d);
    K = model.stiffness(1);
    M = model.mass(1);
    points = model.results(1, u).points;
  }
  asked_model model(s, turned);
  EXPECT_CLOSE(model.stiffness(1), listed(R18 * full(K) * R18.transpose()), support::max_norm(K), 100);
  EXPECT_CLOSE(model.mass(1), listed(R18 * full(M) * R18.transpose()), support::max_norm(M), 100);
  // Strains and resultants stand in element axes and do not change.
  const std::vector<double> again = model.results(1, listed(R18 * column_of(u))).points;
  for (int p = 0; p < 4; ++p) {
    EXPECT_CLOSE(record(again, p, 15, 3), record(points, p, 15, 3), 10.0, 64);
    EXPECT_CLOSE(record(again, p, 37, 3), record(points, p, 37, 3), 10.0 * d.young * d.thickness, 64);
    EXPECT_CLOSE(record(again, p, 40, 3), record(points, p, 40, 3), 20.0 * d.young * std::pow(d.thickness, 3), 64);
  }
}

void forces_are_stiffness_times_displacements(const subject& s, seeded_random& random) {
  const plate_description d = describe(random, s);
  asked_model model(s, d);
  const std::vector<double> K = model.stiffness(1), u = random.vector(18, 1.0);
  EXPECT_CLOSE(model.internal_forces(1, u), support::product(K, u), support::max_norm(K), 200);
}

void stiffness_is_the_difference_quotient_of_forces(const subject& s, seeded_random& random) {
  const plate_description d = describe(random, s);
  asked_model model(s, d);
  const std::vector<double> K = model.stiffness(1), u = random.vector(18, 1.0);
  for (std::size_t j = 0; j < 18; ++j) {
    std::vector<double> ahead = u, behind = u, quotient(18);
    ahead[j] += 0.5;
    behind[j] -= 0.5;
    const std::vector<double> f = model.internal_forces(1, ahead), g = model.internal_forces(1, behind);
    for (std::size_t i = 0; i < 18; ++i) quotient[i] = f[i] - g[i];
    EXPECT_CLOSE(quotient, support::values(&K[18 * j], 18), support::max_norm(K), 400) << "column " << j + 1;
  }
}

void forces_in_element_axes_turn_to_global_ones(const subject& s, seeded_random& random) {
  const plate_description d = describe(random, s);
  asked_model model(s, d);
  const std::vector<double> u = random.vector(18, 1.0);
  const column local = column_of(model.internal_forces(1, u, 33));
  const column global = reference::eighteen(reference::axes_of(d.nodes)).transpose() * local;
  EXPECT_CLOSE(model.internal_forces(1, u, 3), listed(global), size_of(local), 32);
}

// Zero modes: six rigid motions and the common drilling rotation, which its rows, adding up to zero, leave free; the
// membrane kind has the nine bending degrees of freedom free instead of their three rigid ones.
void stiffness_has_its_rank(const subject& s, seeded_random& random) {
  const plate_description d = describe(random, s);
  asked_model model(s, d);
  const std::vector<double> K = model.stiffness(1);
  const dense::matrix dense = dense::widened(K.data(), 18, 18);
  const std::vector<double> eigenvalues = listed(dense::eigen_system(dense).values);
  const int zeros = d.formulation == 1 ? 7 : 13;
  const double largest = eigenvalues.back();
  for (int i = 0; i < 18; ++i) {
    if (i < zeros) {
      EXPECT_CLOSE(eigenvalues[static_cast<std::size_t>(i)], 0.0, largest, 64) << "mode " << i + 1;
    } else {
      EXPECT_GT(eigenvalues[static_cast<std::size_t>(i)], 1e-10 * largest) << "mode " << i + 1;
    }
  }
}

// The integral over the element of a quadratic function: the area times the mean at the middles of the sides.
void mass_has_the_energy_of_rigid_motions(const subject& s, seeded_random& random) {
  const plate_description d = describe(random, s);
  asked_model model(s, d);
  const std::vector<double> M = model.mass(1), a = random.vector(6, 1.0);
  const vector3 shift(a[0], a[1], a[2]), turn(a[3], a[4], a[5]);
  const column u = rigid_motion(d, shift, turn);
  real energy = 0.0L;
  for (int n = 0; n < 3; ++n) {
    const vector3 middle = (at_node(d, n) + at_node(d, (n + 1) % 3)) / 2.0L;
    energy += (shift + turn.cross(middle)).squaredNorm() / 3.0L;
  }
  const reference::flat_triangle X = reference::seen_from(reference::axes_of(d.nodes), d.nodes);
  energy *= real(d.unit_weight) / 9810.0L * d.mass_factor * d.thickness * reference::twice_area(X) / 2.0L;
  const double actual = support::dot(listed(u), support::product(M, listed(u)));
  EXPECT_CLOSE(actual, static_cast<double>(energy), static_cast<double>(energy), 400);
  EXPECT_GT(actual, 0.0);
}

// Another first node, another direction round the element: the matrices only change places.
void nodes_may_be_renumbered(const subject& s, seeded_random& random) {
  const plate_description d = describe(random, s);
  const int orders[5][3] = {{1, 2, 0}, {2, 0, 1}, {0, 2, 1}, {2, 1, 0}, {1, 0, 2}};
  std::vector<double> K, M, f;
  {
    asked_model model(s, d);
    K = model.stiffness(1);
    M = model.mass(1);
    f = model.loads(4, 1, {0.3, -0.7, 1.1});
  }
  for (const auto& order : orders) {
    plate_description other = d;
    matrix P = matrix::Zero(18, 18);
    for (int n = 0; n < 3; ++n) {
      other.nodes[static_cast<std::size_t>(n)] = d.nodes[static_cast<std::size_t>(order[n])];
      P.block(6 * n, 6 * order[n], 6, 6).setIdentity();
    }
    asked_model model(s, other);
    EXPECT_CLOSE(model.stiffness(1), listed(P * full(K) * P.transpose()), support::max_norm(K), 100);
    EXPECT_CLOSE(model.mass(1), listed(P * full(M) * P.transpose()), support::max_norm(M), 100);
    EXPECT_CLOSE(model.loads(4, 1, {0.3, -0.7, 1.1}), listed(P * column_of(f)), support::max_norm(f), 100);
  }
}

void nothing_else_is_written(const subject& s, seeded_random& random) {
  const plate_description d = describe(random, s);
  asked_model model(s, d);
  const std::vector<int> none;
  for (const int op : {1, 2, 3, 33, 4, 41, 401, 5, 7, 71, 8, 9, 10, 6, 0, 77}) {
    support::guarded_buffer data(12), forces(24), matrix(576);
    data.set_input(random.vector(9, 1.0));
    model.set_displacements(random.vector(18, 1e-2));
    support::guarded_buffer pattern(24 + 720);
    std::copy_n(pattern.data(), 24 + 720, model.exchange_forces());
    const std::vector<double> before(model.raw(), model.raw() + model.extent());
    model.call(op, 1, data.data(), forces.data(), matrix.data());

    const bool makes_matrix = op == 1 || op == 2 || op == 7 || op == 71;
    const bool makes_loads = op == 4 || op == 41 || op == 401 || op == 10;
    EXPECT_EQ(matrix.changed(), makes_matrix ? support::leading_block(18, 24) : none) << "operation " << op;
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
