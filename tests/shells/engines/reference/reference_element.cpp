// reference_element.cpp: integrals of B^T D B over the four points, and what the kinds do differently.
#include "reference_element.h"

namespace shell_reference {

reference_element::reference_element(const support::plate_description& d)
    : n(static_cast<int>(d.nodes.size())),
      thick(d.formulation == 0),
      membrane_only(d.formulation == 2),
      s(section_of(d)),
      axes(axes_of(d.nodes)),
      origin(origin_of(d.nodes)),
      X(seen_from(axes, d.nodes)) {
  if (thick) phi = ratios(X, s);
}

matrix reference_element::bending_B(real xi, real eta) const {
  return thick ? mindlin_B(X, phi, xi, eta) : kirchhoff_B(X, xi, eta);
}

matrix reference_element::shear_B(real xi, real eta) const { return shell_reference::shear_B(X, phi, xi, eta); }

column reference_element::membrane_part(const column& u) const {
  column part(2 * n);
  for (int i = 0; i < 2 * n; ++i) part(i) = u(membrane(i));
  return part;
}

column reference_element::bending_part(const column& u) const {
  column part(3 * n);
  for (int i = 0; i < 3 * n; ++i) part(i) = u(bending(i));
  return part;
}

matrix reference_element::stiffness(double foundation) const {
  matrix Km = matrix::Zero(2 * n, 2 * n), Kb = matrix::Zero(3 * n, 3 * n), K = matrix::Zero(6 * n, 6 * n);
  for (const station& p : element_rule(n)) {
    const real c = p.weight * determinant(X, p.xi, p.eta);
    const matrix Bm = membrane_B(X, p.xi, p.eta), Bb = bending_B(p.xi, p.eta);
    Km += Bm.transpose() * s.membrane * Bm * c;
    Kb += Bb.transpose() * s.bending * Bb * c;
    if (thick) Kb += shear_B(p.xi, p.eta).transpose() * s.shear * shear_B(p.xi, p.eta) * c;
    const column N = functions(n, p.xi, p.eta);
    for (int i = 0; i < n; ++i) {
      for (int j = 0; j < n; ++j) Kb(3 * i, 3 * j) += foundation * N(i) * N(j) * c;
    }
  }
  const station o = centre(n);
  const matrix B0 = membrane_B(X, o.xi, o.eta);
  Km += B0.transpose() * s.centre_only * B0 * (o.weight * determinant(X, o.xi, o.eta));
  const real e = 1e-6L * s.young * s.thickness * determinant(X, o.xi, o.eta) * (n == 3 ? 1.0L : 4.0L);
  for (int j = 0; j < 2 * n; ++j) {
    for (int i = 0; i < 2 * n; ++i) K(membrane(i), membrane(j)) = Km(i, j);
  }
  for (int j = 0; j < 3 * n; ++j) {
    for (int i = 0; i < 3 * n; ++i) K(bending(i), bending(j)) = Kb(i, j);
  }
  for (int j = 0; j < n; ++j) {
    for (int i = 0; i < n; ++i) K(drill(i), drill(j)) = i == j ? e : -e / (n - 1.0L);
  }
  return K;
}

// Triangles: the linear functions in the plane, integrated exactly, the cubic ones across it. Quadrilaterals: bilinear
// functions for all three translations, and the rotary inertia of the discrete Kirchhoff rotations, thick or thin.
matrix reference_element::mass(real density) const {
  const real m = density * s.thickness, rotary = density * s.thickness * s.thickness * s.thickness / 12.0L;
  matrix M = matrix::Zero(6 * n, 6 * n), Mb = matrix::Zero(3 * n, 3 * n);
  for (const station& p : element_rule(n)) {
    const real c = p.weight * determinant(X, p.xi, p.eta);
    const column N = functions(n, p.xi, p.eta);
    for (int i = 0; i < n; ++i) {
      for (int j = 0; j < n; ++j) {
        const real both = m * N(i) * N(j) * c;
        M(6 * i, 6 * j) += both;
        M(6 * i + 1, 6 * j + 1) += both;
        if (n == 4) Mb(3 * i, 3 * j) += both;
      }
    }
    if (n == 3) {
      const column W = w_functions(X, p.xi, p.eta);
      Mb += W * W.transpose() * (m * c);
    } else {
      const matrix H = kirchhoff_rotations(X, p.xi, p.eta);
      Mb += H.transpose() * H * (rotary * c);
    }
  }
  for (int j = 0; j < 3 * n; ++j) {
    for (int i = 0; i < 3 * n; ++i) M(bending(i), bending(j)) = Mb(i, j);
  }
  return M;
}

matrix reference_element::geometric(const std::vector<vector3>& N) const {
  matrix K = matrix::Zero(6 * n, 6 * n);
  for (std::size_t p = 0; p < 4; ++p) {
    const station& at = element_rule(n)[p];
    matrix2 S;
    S << N[p](0), N[p](2), N[p](2), N[p](1);
    const matrix D = gradients(X, at.xi, at.eta);
    const matrix k = D.transpose() * S * D * (at.weight * determinant(X, at.xi, at.eta));
    for (int b = 0; b < n; ++b) {
      for (int a = 0; a < n; ++a) {
        for (int t = 0; t < 3; ++t) K(6 * a + t, 6 * b + t) += k(a, b);
      }
    }
  }
  return K;
}

namespace {

vector3 free_strains(const section& s, double T) { return {s.alpha1 * T, s.alpha2 * T, 0.0L}; }

// ex and ey of the point, gxy of the centre (of a triangle they are the same everywhere).
vector3 strains_at(const reference_element& e, const column& u, real xi, real eta) {
  const station o = centre(e.n);
  vector3 strain = membrane_B(e.X, xi, eta) * e.membrane_part(u);
  strain(2) = (membrane_B(e.X, o.xi, o.eta) * e.membrane_part(u))(2);
  return strain;
}

}  // namespace

vector3 reference_element::membrane_forces(const column& u, const temperature& T, real xi, real eta) const {
  return s.whole() * (strains_at(*this, u, xi, eta) - free_strains(s, T.change));
}

column reference_element::surface_loads(const vector3& q) const {
  column f = column::Zero(6 * n);
  for (const station& p : element_rule(n)) {
    f += point_load(q * (p.weight * determinant(X, p.xi, p.eta)), p.xi, p.eta);
  }
  return f;
}

column reference_element::point_load(const vector3& F, real xi, real eta) const {
  const column N = functions(n, xi, eta), W = w_functions(X, xi, eta);
  column f = column::Zero(6 * n);
  for (int i = 0; i < n; ++i) {
    f(6 * i) = N(i) * F(0);
    f(6 * i + 1) = N(i) * F(1);
  }
  for (int i = 0; i < 3 * n; ++i) f(bending(i)) = W(i) * F(2);
  return f;
}

column reference_element::thermal_loads(const temperature& T) const {
  const vector3 N = s.whole() * free_strains(s, T.change);
  const vector3 M = s.bending * free_strains(s, T.difference) / s.thickness;
  column f = column::Zero(6 * n);
  for (const station& p : element_rule(n)) {
    const real c = p.weight * determinant(X, p.xi, p.eta);
    const column in_plane = membrane_B(X, p.xi, p.eta).transpose() * N * c;
    const column bent = bending_B(p.xi, p.eta).transpose() * M * c;
    for (int i = 0; i < 2 * n; ++i) f(membrane(i)) += in_plane(i);
    for (int i = 0; i < 3 * n; ++i) f(bending(i)) += bent(i);
  }
  return f;
}

// The twisting moment has no thermal part.
point_state reference_element::state_at(const column& u, const temperature& T, real xi, real eta) const {
  point_state p;
  p.position = shell_reference::position(X, xi, eta);
  p.strain = strains_at(*this, u, xi, eta);
  p.curvature = bending_B(xi, eta) * bending_part(u);
  p.stress = membrane_forces(u, T, xi, eta) / s.thickness;
  vector3 thermal = s.bending * free_strains(s, T.difference) / s.thickness;
  thermal(2) = 0.0L;
  p.moment = s.bending * p.curvature - thermal;
  if (thick) {
    p.shear_strain = shear_B(xi, eta) * bending_part(u);
    p.shear_force = s.shear * p.shear_strain;
  }
  return p;
}

support::point reference_element::in_space(real x, real y, real z) const {
  const vector3 p = axes.transpose() * vector3(x, y, z) + origin;
  return {static_cast<double>(p(0)), static_cast<double>(p(1)), static_cast<double>(p(2))};
}

}  // namespace shell_reference
