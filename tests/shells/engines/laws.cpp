// laws.cpp: laws of strains, forces and matrices, each on one random element through FINITES.
#include "laws.h"

#include <cmath>

#include "asked_model.h"
#include "comparison.h"

using shell_reference::column;
using shell_reference::column_of;
using shell_reference::largest;
using shell_reference::listed;
using shell_reference::matrix;
using shell_reference::matrix3;
using shell_reference::real;
using shell_reference::reference_element;
using shell_reference::vector3;
using support::plate_description;
using support::point;

namespace {

std::vector<double> record(const std::vector<double>& blocks, int n, int first, int count) {
  const auto start = blocks.begin() + 90 * n + first - 1;
  return std::vector<double>(start, start + count);
}

matrix3 rows_of(const support::rotation& Q) {
  matrix3 R;
  for (int i = 0; i < 3; ++i) {
    for (int j = 0; j < 3; ++j) R(i, j) = Q[static_cast<std::size_t>(i)][static_cast<std::size_t>(j)];
  }
  return R;
}

std::vector<double> zeros(const element_subject& s) {
  return std::vector<double>(static_cast<std::size_t>(6 * s.nodes), 0.0);
}

// Six rigid motions: three shifts and three turns about the origin.
column rigid_mode(const plate_description& d, int mode) {
  const vector3 unit = vector3::Unit(mode % 3), none = vector3::Zero();
  return mode < 3 ? rigid_motion(d, unit, none) : rigid_motion(d, none, unit);
}

}  // namespace

column rigid_motion(const plate_description& d, const vector3& shift, const vector3& turn) {
  const int n = static_cast<int>(d.nodes.size());
  column u(6 * n);
  for (int i = 0; i < n; ++i) {
    u.segment(6 * i, 3) = shift + turn.cross(shell_reference::wide(d.nodes[static_cast<std::size_t>(i)]));
    u.segment(6 * i + 3, 3) = turn;
  }
  return u;
}

namespace law {

void symmetry(const element_subject& s, seeded_random& random) {
  const plate_description d = random_element(random, s);
  asked_model model(s, d);
  for (double& force : model.state(1).STORED_NODAL_FORCES.V) force = random.uniform(-1.0, 1.0);
  model.set_displacements(random.vector(24, 1e-2));
  for (const int op : {1, 2, 7, 71}) {
    const std::vector<double> K = model.matrix(op, 1);
    EXPECT_EQ(support::transposed(K), K) << "operation " << op;
    EXPECT_GT(support::max_norm(K), 0.0) << "operation " << op;
  }
}

void rigid_motions_give_no_force_and_no_strain(const element_subject& s, seeded_random& random) {
  const plate_description d = random_element(random, s);
  asked_model model(s, d);
  const double K = support::max_norm(model.stiffness(1));
  for (int mode = 0; mode < 6; ++mode) {
    const column u = rigid_mode(d, mode);
    EXPECT_CLOSE(model.internal_forces(1, listed(u)), zeros(s), K * largest(u), 64) << mode;
    const support::plate_results results = model.results(1, listed(u));
    for (int n = 0; n < s.nodes; ++n) {
      for (const int strain : {4, 15, 26}) {
        EXPECT_CLOSE(record(results.nodes, n, strain, 3), std::vector<double>(3, 0.0), 10.0 * largest(u), 64) << mode;
      }
      EXPECT_CLOSE(record(results.nodes, n, 43, 2), std::vector<double>(2, 0.0), 10.0 * largest(u), 64) << mode;
    }
  }
}

void rigid_motions_have_no_stiffness(const element_subject& s, seeded_random& random) {
  const plate_description d = random_element(random, s);
  asked_model model(s, d);
  const std::vector<double> K = model.stiffness(1);
  for (int mode = 0; mode < 6; ++mode) {
    const column u = rigid_mode(d, mode);
    EXPECT_CLOSE(support::product(K, listed(u)), zeros(s), support::max_norm(K) * largest(u), 64) << mode;
  }
}

// Offsets of the corners of a quadrilateral leave it plane here: a warped one is projected, without a correction, and
// feels a turn.
void rigid_motions_with_offsets_give_no_force(const element_subject& s, seeded_random& random) {
  plate_description d = random_element(random, s);
  support::add_random_offsets(random, d);
  if (s.nodes == 4) {
    const matrix3 axes = shell_reference::axes_of(d.nodes);
    const double height = random.uniform(-0.25, 0.25);
    for (point& offset : d.offsets) {
      const vector3 arm = axes.transpose() * vector3(0.5L * offset[0], 0.5L * offset[1], height);
      for (std::size_t i = 0; i < 3; ++i) offset[i] = static_cast<double>(arm(static_cast<int>(i)));
    }
  }
  asked_model model(s, d);
  const double K = support::max_norm(model.stiffness(1));
  for (int mode = 0; mode < 6; ++mode) {
    const column u = rigid_mode(d, mode);
    EXPECT_CLOSE(model.internal_forces(1, listed(u)), zeros(s), K * largest(u), 100) << mode;
  }
}

void constant_strain_is_found(const element_subject& s, seeded_random& random) {
  const plate_description d = random_element(random, s);
  asked_model model(s, d);
  const reference_element e(d);
  const std::vector<double> a = random.vector(4, 1.0), c = random.vector(3, 1.0);
  column local = column::Zero(6 * s.nodes);
  const column q = shell_reference::quadratic_deflection(e.X, {0.0, 0.0, 0.0, c[0], c[1], c[2]});
  for (int i = 0; i < 3 * s.nodes; ++i) local(e.bending(i)) = q(i);
  for (int n = 0; n < s.nodes; ++n) {
    local.segment(6 * n, 2) << a[0] * e.X(0, n) + a[1] * e.X(1, n), a[2] * e.X(0, n) + a[3] * e.X(1, n);
  }
  const support::plate_results results = model.results(1, listed(e.to_global(local)));
  const double h = d.thickness;
  const std::vector<double> strain = {a[0], a[3], a[1] + a[2]};
  const std::vector<double> top = {a[0] - c[0] * h / 2.0, a[3] - c[1] * h / 2.0, a[1] + a[2] - c[2] * h};
  for (int p = 0; p < 4; ++p) {
    EXPECT_CLOSE(record(results.points, p, 15, 3), strain, 10.0, 100);
    EXPECT_CLOSE(record(results.points, p, 4, 3), top, 10.0, 100);
    EXPECT_CLOSE(record(results.points, p, 43, 2), std::vector<double>(2, 0.0), 10.0, 100);
  }
}

void whole_element_may_turn_and_move(const element_subject& s, seeded_random& random) {
  const plate_description d = random_element(random, s);
  const support::rotation Q = support::random_rotation(random);
  const std::vector<double> shift = random.vector(3, 2.0);
  plate_description turned = d;
  for (point& node : turned.nodes) {
    node = support::rotate(Q, node);
    for (std::size_t i = 0; i < 3; ++i) node[i] += shift[i];
  }
  const matrix R = shell_reference::groups(rows_of(Q), s.nodes);
  const std::vector<double> u = random.vector(6 * s.nodes, 1.0);
  std::vector<double> K, M, points;
  {
    asked_model model(s, d);
    K = model.stiffness(1);
    M = model.mass(1);
    points = model.results(1, u).points;
  }
  asked_model model(s, turned);
  EXPECT_CLOSE(model.stiffness(1), listed(R * full(K) * R.transpose()), support::max_norm(K), 200);
  EXPECT_CLOSE(model.mass(1), listed(R * full(M) * R.transpose()), support::max_norm(M), 200);
  // Strains and resultants stand in element axes and do not change.
  const std::vector<double> again = model.results(1, listed(R * column_of(u))).points;
  const double E = d.young, h = d.thickness;
  for (int p = 0; p < 4; ++p) {
    EXPECT_CLOSE(record(again, p, 15, 3), record(points, p, 15, 3), 10.0, 100);
    EXPECT_CLOSE(record(again, p, 37, 3), record(points, p, 37, 3), 10.0 * E * h, 100);
    EXPECT_CLOSE(record(again, p, 40, 3), record(points, p, 40, 3), 20.0 * E * h * h * h, 100);
    EXPECT_CLOSE(record(again, p, 45, 2), record(points, p, 45, 2), 10.0 * E * h, 100);
  }
}

void forces_are_stiffness_times_displacements(const element_subject& s, seeded_random& random) {
  const plate_description d = random_element(random, s);
  asked_model model(s, d);
  const std::vector<double> K = model.stiffness(1), u = random.vector(6 * s.nodes, 1.0);
  EXPECT_CLOSE(model.internal_forces(1, u), support::product(K, u), support::max_norm(K), 200);
}

void stiffness_is_the_difference_quotient_of_forces(const element_subject& s, seeded_random& random) {
  const plate_description d = random_element(random, s);
  asked_model model(s, d);
  const std::vector<double> K = model.stiffness(1), u = random.vector(6 * s.nodes, 1.0);
  for (std::size_t j = 0; j < u.size(); ++j) {
    std::vector<double> ahead = u, behind = u, quotient(u.size());
    ahead[j] += 0.5;
    behind[j] -= 0.5;
    const std::vector<double> f = model.internal_forces(1, ahead), g = model.internal_forces(1, behind);
    for (std::size_t i = 0; i < u.size(); ++i) quotient[i] = f[i] - g[i];
    EXPECT_CLOSE(quotient, support::values(&K[u.size() * j], 6 * s.nodes), support::max_norm(K), 400) << j + 1;
  }
}

void forces_in_element_axes_turn_to_global_ones(const element_subject& s, seeded_random& random) {
  const plate_description d = random_element(random, s);
  asked_model model(s, d);
  const std::vector<double> u = random.vector(6 * s.nodes, 1.0);
  const column local = column_of(model.internal_forces(1, u, 33));
  EXPECT_CLOSE(model.internal_forces(1, u, 3), listed(reference_element(d).to_global(local)), largest(local), 64);
}

// Zero modes: six rigid motions and the common drilling rotation, which its rows, adding up to zero, leave free; the
// membrane kinds have all bending degrees of freedom free, three a node, instead of their three rigid ones. The shear
// at the centre of quadrilaterals leaves no mode free: the direct strains of four points hold it.
void stiffness_has_its_rank(const element_subject& s, seeded_random& random) {
  const plate_description d = random_element(random, s);
  asked_model model(s, d);
  const std::vector<double> K = model.stiffness(1);
  const dense::matrix dense = dense::widened(K.data(), 6 * s.nodes, 6 * s.nodes);
  const std::vector<double> eigenvalues = listed(dense::eigen_system(dense).values);
  const int zero_modes = s.membrane_only() ? 4 + 3 * s.nodes : 7;
  const double greatest = eigenvalues.back();
  for (int i = 0; i < 6 * s.nodes; ++i) {
    if (i < zero_modes) {
      EXPECT_CLOSE(eigenvalues[static_cast<std::size_t>(i)], 0.0, greatest, 100) << "mode " << i + 1;
    } else {
      EXPECT_GT(eigenvalues[static_cast<std::size_t>(i)], 1e-10 * greatest) << "mode " << i + 1;
    }
  }
}

// The energy of a rigid motion: density times the integral of the squared velocity, by the element's own rule, which is
// exact for quadratics on triangles and bilinear maps; quadrilaterals have the rotary inertia of a turn in their
// plane's axes besides.
void mass_has_the_energy_of_rigid_motions(const element_subject& s, seeded_random& random) {
  const plate_description d = random_element(random, s);
  asked_model model(s, d);
  const std::vector<double> M = model.mass(1), a = random.vector(6, 1.0);
  const vector3 shift(a[0], a[1], a[2]), turn(a[3], a[4], a[5]);
  const column u = rigid_motion(d, shift, turn);
  const reference_element e(d);
  const vector3 local_turn = e.axes * turn;
  const real density = real(d.unit_weight) / 9810.0L * d.mass_factor;  // composites too: mass resolves no material
  real energy = 0.0L;
  for (const shell_reference::station& p : shell_reference::element_rule(s.nodes)) {
    const real c = p.weight * shell_reference::determinant(e.X, p.xi, p.eta);
    const shell_reference::vector2 at = shell_reference::position(e.X, p.xi, p.eta);
    const vector3 x = e.axes.transpose() * vector3(at(0), at(1), 0.0L) + e.origin;
    energy += c * d.thickness * (shift + turn.cross(x)).squaredNorm();
    if (s.nodes == 4) energy += c * std::pow(real(d.thickness), 3) / 12.0L * local_turn.head(2).squaredNorm();
  }
  energy *= density;
  const double actual = support::dot(listed(u), support::product(M, listed(u)));
  EXPECT_CLOSE(actual, static_cast<double>(energy), static_cast<double>(energy), 400);
  EXPECT_GT(actual, 0.0);
}

}  // namespace law
