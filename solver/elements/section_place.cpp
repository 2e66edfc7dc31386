// section_place.cpp: matrices, forces and fields of beams whose section lies off the line of their nodes.
#include "elements/section_place.h"

#include <cmath>
#include <vector>

#include <Eigen/Dense>

#include "elements/member_field.h"
#include "model/vectors.h"

namespace solver {

namespace {

// p := c p + s q, q := c q - s p for two parts of a vector across the beam.
void turn(quintic& p, quintic& q, double c, double s) {
  for (std::size_t i = 0; i < p.size(); ++i) {
    const double a = p[i], b = q[i];
    p[i] = c * a + s * b;
    q[i] = c * b - s * a;
  }
}

void add_times(quintic& to, double factor, const quintic& p) {
  for (std::size_t i = 0; i < to.size(); ++i) to[i] += factor * p[i];
}

// The freedoms of the two ends that are released, from 1.
std::vector<int> released_freedoms(const member_ends& ends) {
  std::vector<int> all;
  for (int end = 0; end < 2; ++end) {
    for (int i = 0; i < 3; ++i) {
      if (ends.released[subscript(i)] == end + 1) all.push_back(6 * end + 1 + i);
    }
    if (ends.released[3] == end + 1) all.push_back(6 * end + 4);
    for (int i = 0; i < 2; ++i) {
      if (ends.fixity[subscript(end)][subscript(i)] == 0) all.push_back(6 * end + 5 + i);
    }
  }
  return all;
}

}  // namespace

MATRIX<12, 12> motion_of_section(const section_placement& place, across point) {
  const std::array<double, 2>& at = point == across::CENTROID ? place.centroid : place.shear_centre;
  const double c = std::cos(place.angle), s = std::sin(place.angle);
  MATRIX<12, 12> P{};
  for (const int d : {0, 6}) {
    P(d + 1, d + 1) = 1;
    P(d + 1, d + 5) = place.centroid[1];
    P(d + 1, d + 6) = -place.centroid[0];
    P(d + 2, d + 2) = P(d + 3, d + 3) = P(d + 5, d + 5) = P(d + 6, d + 6) = c;
    P(d + 2, d + 3) = P(d + 5, d + 6) = s;
    P(d + 3, d + 2) = P(d + 6, d + 5) = -s;
    P(d + 2, d + 4) = s * at[0] - c * at[1];
    P(d + 3, d + 4) = c * at[0] + s * at[1];
    P(d + 4, d + 4) = 1;
  }
  return P;
}

MATRIX<12, 12> congruent(const MATRIX<12, 12>& A, const MATRIX<12, 12>& P) {
  using matrix = Eigen::Matrix<double, 12, 12>;
  const Eigen::Map<const matrix> a(A.V), p(P.V);
  MATRIX<12, 12> result;
  Eigen::Map<matrix> r(result.V);
  r.noalias() = p.transpose() * (a * p);
  return result;
}

end_forces turned_back(const MATRIX<12, 12>& P, const end_forces& f) {
  end_forces result{};
  add_transposed_product(P, f.data(), result.data());
  return result;
}

void add_twist(const frame_section& section, double tension, MATRIX<12, 12>& KG) {
  const section_placement& place = section.place;
  const double c = std::cos(place.angle), s = std::sin(place.angle);
  const double d1 = place.centroid[0] - place.shear_centre[0], d2 = place.centroid[1] - place.shear_centre[1];
  const double ay = c * d1 + s * d2, az = c * d2 - s * d1;
  const double polar = (section.inertia_xy + section.inertia_xz) / section.area + ay * ay + az * az;
  const auto add = [&](int row, int column, double value) {
    for (const int i : {0, 6}) {
      for (const int j : {0, 6}) KG(row + i, column + j) += i == j ? value : -value;
    }
  };
  add(4, 4, tension * polar);
  for (const bool mirrored : {false, true}) {
    mirrored ? add(4, 2, -tension * az) : add(2, 4, -tension * az);
    mirrored ? add(4, 3, tension * ay) : add(3, 4, tension * ay);
  }
}

// M_centroid = M - r x F.
end_forces forces_in_section(const section_placement& place, const end_forces& at_nodes) {
  const double c = std::cos(place.angle), s = std::sin(place.angle);
  end_forces f{};
  for (const std::size_t d : {std::size_t{0}, std::size_t{6}}) {
    const double N = at_nodes[d], V1 = at_nodes[d + 1], V2 = at_nodes[d + 2];
    const double M1 = at_nodes[d + 4] - place.centroid[1] * N, M2 = at_nodes[d + 5] + place.centroid[0] * N;
    f[d] = N;
    f[d + 1] = c * V1 + s * V2;
    f[d + 2] = c * V2 - s * V1;
    f[d + 3] = at_nodes[d + 3] - (place.shear_centre[0] * V2 - place.shear_centre[1] * V1);
    f[d + 4] = c * M1 + s * M2;
    f[d + 5] = c * M2 - s * M1;
  }
  return f;
}

section_load load_on_section(const section_placement& place, const std::array<double, 3>& line,
                             const std::array<double, 3>& body) {
  const double c = std::cos(place.angle), s = std::sin(place.angle);
  const double ys = place.shear_centre[0], zs = place.shear_centre[1];
  const double yc = place.centroid[0], zc = place.centroid[1];
  const double q1 = line[1] + body[1], q2 = line[2] + body[2];
  section_load q;
  q.force = {line[0] + body[0], c * q1 + s * q2, c * q2 - s * q1};
  q.torque = zs * line[1] - ys * line[2] + (yc - ys) * body[2] - (zc - zs) * body[1];
  return q;
}

void show_at_nodes(const section_placement& place, member_field& f) {
  const double c = std::cos(place.angle), s = -std::sin(place.angle);
  turn(f.displacement[1], f.displacement[2], c, s);
  turn(f.rotation[1], f.rotation[2], c, s);
  turn(f.force[1], f.force[2], c, s);
  turn(f.force[4], f.force[5], c, s);
  add_times(f.displacement[0], -place.centroid[1], f.rotation[1]);
  add_times(f.displacement[0], place.centroid[0], f.rotation[2]);
  add_times(f.displacement[1], place.shear_centre[1], f.rotation[0]);
  add_times(f.displacement[2], -place.shear_centre[0], f.rotation[0]);
}

bool has_releases(const member_ends& ends) { return !released_freedoms(ends).empty(); }

// K(D, :) u + f(D) = 0 for the released freedoms D.
bool release(const member_ends& ends, const MATRIX<12, 12>& K, const end_forces& f, released_beam& r) {
  const std::vector<int> all = released_freedoms(ends);
  r = {};
  for (int i = 1; i <= 12; ++i) r.C(i, i) = 1;
  if (all.empty()) return true;
  const auto count = signed_index(all.size());
  Eigen::MatrixXd inner(count, count), right(count, 13);
  Eigen::VectorXd scale(count);
  for (Eigen::Index i = 0; i < count; ++i) {
    const double own = K(all[subscript(i)], all[subscript(i)]);
    if (!(own > 0)) return false;
    scale(i) = 1 / std::sqrt(own);
  }
  for (Eigen::Index i = 0; i < count; ++i) {
    const int row = all[subscript(i)];
    for (Eigen::Index j = 0; j < count; ++j) inner(i, j) = scale(i) * K(row, all[subscript(j)]) * scale(j);
    for (int j = 1; j <= 12; ++j) right(i, j - 1) = -scale(i) * K(row, j);
    right(i, 12) = -scale(i) * f[subscript(row - 1)];
  }
  constexpr double NO_RESISTANCE = 1e-10;
  const Eigen::SelfAdjointEigenSolver<Eigen::MatrixXd> modes(inner);
  if (!(modes.eigenvalues().minCoeff() > NO_RESISTANCE)) return false;
  for (Eigen::Index j = 0; j < count; ++j) right.col(all[subscript(j)] - 1).setZero();
  const Eigen::MatrixXd x = scale.asDiagonal() * inner.ldlt().solve(right);
  for (Eigen::Index i = 0; i < count; ++i) {
    const int row = all[subscript(i)];
    for (int j = 1; j <= 12; ++j) r.C(row, j) = x(i, j - 1);
    r.free[subscript(row - 1)] = x(i, 12);
  }
  return true;
}

}  // namespace solver
