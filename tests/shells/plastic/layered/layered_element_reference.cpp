// layered_element_reference.cpp: see the header.
#include "layered_element_reference.h"

#include <algorithm>
#include <cmath>

using layered_reference::real;
using layered_reference::THICK;
using shell_reference::column;
using shell_reference::matrix;
using shell_reference::station;
using support::plate_description;
using support::seeded_random;

namespace {

matrix blocks(const layered_section& s, const matrix& lower_coupling) {
  matrix C = matrix::Zero(8, 8);
  C << s.A, s.B, s.S, lower_coupling, s.D, s.T, s.S.transpose(), s.T.transpose(), s.H;
  return C;
}

}  // namespace

matrix layered_section::of_stiffness() const { return blocks(*this, B.transpose()); }
matrix layered_section::of_forces() const { return blocks(*this, B); }

layered_section section_of_point(const POINT_STATE_RECORD& state, int n, double t, int theory) {
  layered_section s{matrix::Zero(3, 3), matrix::Zero(3, 3), matrix::Zero(3, 3),
                    matrix::Zero(3, 2), matrix::Zero(3, 2), matrix::Zero(2, 2)};
  const bool known = n >= 3 && n <= 15 && n % 2 == 1;
  if (!known) return s;
  const layered_reference::rule r = layered_reference::lobatto(n);
  for (int k = 1; k <= n; ++k) {
    const std::size_t at = static_cast<std::size_t>(k - 1);
    const real w = r.w[at] * t / 2, z = r.xi[at] * t / 2;
    matrix C(5, 5);
    for (int j = 0; j < 5; ++j) {
      for (int i = 0; i < 5; ++i) C(i, j) = state.TANGENT(i + 1, j + 1, k);
    }
    s.A += w * C.topLeftCorner(3, 3);
    s.B += w * z * C.topLeftCorner(3, 3);
    s.D += w * z * z * C.topLeftCorner(3, 3);
    if (theory != THICK) continue;
    s.S += w * C.topRightCorner(3, 2);
    s.T += w * z * C.topRightCorner(3, 2);
    s.H += w * C.bottomRightCorner(2, 2);
  }
  return s;
}

layered_section elastic_section(const layered_reference::material& m, double t, int theory) {
  const matrix C = layered_reference::stored_elastic(m, theory);
  const real h = t;
  return {C.topLeftCorner(3, 3) * h, matrix::Zero(3, 3), C.topLeftCorner(3, 3) * (h * h * h / 12),
          matrix::Zero(3, 2),        matrix::Zero(3, 2), C.bottomRightCorner(2, 2) * h};
}

layered_element_reference::layered_element_reference(const layered_subject& subject, const plate_description& described)
    : s(subject), d(described), m(material_of(described)), e(described), axes(e.axes) {}

matrix layered_element_reference::B(double xi, double eta) const {
  matrix all = matrix::Zero(8, s.order());
  const matrix Bm = shell_reference::membrane_B(e.X, xi, eta), Bb = e.bending_B(xi, eta);
  for (int i = 0; i < 2 * s.nodes; ++i) all.block(0, e.membrane(i), 3, 1) = Bm.col(i);
  for (int i = 0; i < 3 * s.nodes; ++i) all.block(3, e.bending(i), 3, 1) = Bb.col(i);
  if (s.theory == THICK) {
    const matrix Bs = e.shear_B(xi, eta);
    for (int i = 0; i < 3 * s.nodes; ++i) all.block(6, e.bending(i), 2, 1) = Bs.col(i);
  }
  return all;
}

column layered_element_reference::strains(const column& u, int gp) const {
  const station p = shell_reference::element_rule(s.nodes)[static_cast<std::size_t>(gp - 1)];
  return B(p.xi, p.eta) * u;
}

layered_reference::vector5 layered_element_reference::strain_at(const column& strains, real z) const {
  layered_reference::vector5 v;
  v << strains(0) + z * strains(3), strains(1) + z * strains(4), strains(2) + z * strains(5), strains(6), strains(7);
  return v;
}

matrix layered_element_reference::drilling() const {
  matrix K = matrix::Zero(s.order(), s.order());
  const station o = shell_reference::centre(s.nodes);
  const real area = shell_reference::determinant(e.X, o.xi, o.eta) * (s.nodes == 3 ? 0.5L : 4.0L);
  // The constant of the triangle counts twice the area.
  const real k = 1e-6L * m.E * d.thickness * area * (s.nodes == 3 ? 2.0L : 1.0L);
  for (int j = 0; j < s.nodes; ++j) {
    for (int i = 0; i < s.nodes; ++i) K(e.drill(i), e.drill(j)) = i == j ? k : -k / (s.nodes - 1.0L);
  }
  return K;
}

matrix layered_element_reference::stiffness(const std::vector<matrix>& C) const {
  matrix K = drilling();
  for (int gp = 1; gp <= 4; ++gp) {
    const station p = shell_reference::element_rule(s.nodes)[static_cast<std::size_t>(gp - 1)];
    const matrix b = B(p.xi, p.eta);
    K += b.transpose() * C[static_cast<std::size_t>(gp - 1)] * b *
         (p.weight * shell_reference::determinant(e.X, p.xi, p.eta));
  }
  return K;
}

matrix layered_element_reference::stiffness(layered_model& model) const {
  std::vector<matrix> C;
  for (int gp = 1; gp <= 4; ++gp) {
    C.push_back(section_of_point(model.point(gp), SOLANAELEM.NPT_THICK, d.thickness, s.theory).of_stiffness());
  }
  return stiffness(C);
}

column layered_element_reference::forces(layered_model& model, const column& u) const {
  std::vector<matrix> C;
  for (int gp = 1; gp <= 4; ++gp) {
    C.push_back(section_of_point(model.point(gp), SOLANAELEM.NPT_THICK, d.thickness, s.theory).of_forces());
  }
  return stiffness(C) * u;
}

matrix layered_element_reference::elastic_stiffness() const {
  return stiffness(std::vector<matrix>(4, elastic_section(m, d.thickness, s.theory).of_stiffness()));
}

std::vector<double> random_displacements(seeded_random& random, const plate_description& d, double strain) {
  std::vector<double> u = random.vector(6 * static_cast<int>(d.nodes.size()), strain);
  // Curvatures give the strain at the faces.
  for (std::size_t i = 0; i < u.size(); ++i) {
    if (i % 6 >= 3) u[i] /= d.thickness;
  }
  return u;
}

std::vector<double> even_strains(const layered_element_reference& r, const std::vector<double>& membrane,
                                 const std::vector<double>& curvature) {
  column local = column::Zero(r.s.order());
  std::vector<double> c{0.0, 0.0, 0.0, -curvature[0], -curvature[1], -0.5 * curvature[2]};
  const column q = shell_reference::quadratic_deflection(r.e.X, c);
  for (int i = 0; i < 3 * r.s.nodes; ++i) local(r.e.bending(i)) = q(i);
  for (int n = 0; n < r.s.nodes; ++n) {
    local.segment(6 * n, 2) << membrane[0] * r.e.X(0, n) + membrane[2] * r.e.X(1, n), membrane[1] * r.e.X(1, n);
  }
  return shell_reference::listed(r.e.to_global(local));
}

std::vector<double> sum(const std::vector<double>& a, const std::vector<double>& b, double factor) {
  std::vector<double> c = a;
  for (std::size_t i = 0; i < c.size(); ++i) c[i] += factor * b[i];
  return c;
}
