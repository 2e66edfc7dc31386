// reference_section.cpp: isotropic sections, orthotropic and composite ones with their single-precision rotation, and
// the flexibility ratio of a side from the equilibrium of its moments.
#include "reference_section.h"

#include <cmath>

#include "finites/fields.h"
#include "finites/views.hpp"

namespace shell_reference {

namespace {

constexpr real KAPPA = 0.833333333333333;  // fifteen digits; the double of the literal

matrix3 plane_stress(real E, real nu) {
  const real c = E / (1.0L - nu * nu);
  matrix3 D;
  D << c, c * nu, 0.0L, c * nu, c, 0.0L, 0.0L, 0.0L, c * (1.0L - nu) / 2.0L;
  return D;
}

section isotropic(const support::plate_description& d) {
  const real h = d.thickness, nu = d.poisson, mv = d.modifier_shear;
  section s;
  s.membrane = plane_stress(d.young, nu) * (h * d.modifier_membrane);
  s.bending = plane_stress(d.young, nu) * (h * h * h / 12.0L * d.modifier_bending);
  s.shear = matrix2::Identity() * (mv * KAPPA * h * d.young / (2.0L * (1.0L + nu)));
  s.young = d.young;
  s.alpha1 = s.alpha2 = d.expansion;
  // Without a shear modifier the sides keep the ratio of a section without modifiers.
  const real r = d.modifier_shear > 0.0 ? real(d.modifier_bending) / mv : 1.0L;
  s.ratio = 2.0L * r * h * h / (KAPPA * (1.0L - nu));
  return s;
}

// Strains in material axes per strains in element axes; cosine, sine and their products in single precision.
struct rotations {
  matrix3 plane;
  matrix2 shear;
};

rotations material_axes(double angle) {
  const float c = static_cast<float>(std::cos(angle)), s = static_cast<float>(std::sin(angle));
  const float cc = c * c, ss = s * s, cs = c * s;
  rotations T;
  T.plane << real(cc), real(ss), real(cs), real(ss), real(cc), -real(cs), -2.0L * real(c) * real(s), 2.0L * real(cs),
      real(cc - ss);
  T.shear << real(c), real(s), -real(s), real(c);
  return T;
}

template <class RECORD>
section orthotropic(const support::plate_description& d, const RECORD& r, real twist, real in_plane) {
  const real q = 1.0L - real(r.NU1) * r.NU2, h = d.thickness, inertia = h * h * h / 12.0L;
  section s;
  s.membrane << r.E1 / q, real(r.E2) * r.NU1 / q, 0.0L, real(r.E1) * r.NU2 / q, r.E2 / q, 0.0L, 0.0L, 0.0L,
      r.G12 * in_plane;
  s.membrane *= d.modifier_membrane * h;
  s.bending << r.E1 / q, real(r.E1) * r.NU2 / q, 0.0L, real(r.E2) * r.NU1 / q, r.E2 / q, 0.0L, 0.0L, 0.0L,
      r.G12 * twist;
  s.bending *= d.modifier_bending * inertia;
  s.shear << r.G13, 0.0L, 0.0L, r.G23;
  s.shear *= d.modifier_shear * h * KAPPA;
  s.young = r.E1;
  s.alpha1 = r.ALPHA1;
  s.alpha2 = r.ALPHA2;
  s.isotropic = false;
  return s;
}

// In material axes the shear entry leaves the others; then all turn.
void split(section& s) {
  s.centre_only(2, 2) = s.membrane(2, 2);
  s.membrane(2, 2) = 0.0L;
}

void turn(section& s, double angle) {
  const rotations T = material_axes(static_cast<double>(static_cast<float>(angle)));
  for (matrix3* D : {&s.membrane, &s.centre_only, &s.bending}) *D = (T.plane.transpose() * *D * T.plane);
  s.shear = (T.shear.transpose() * s.shear * T.shear);
}

}  // namespace

section section_of(const support::plate_description& d) {
  section s;
  const bool composite = d.section_type == COMPOSITE_SECTION;
  if (composite) {
    s = orthotropic(d, d.composite, d.composite.CLT_FACTOR_1, d.composite.CLT_FACTOR_2);
  } else if (d.material.ortho == 1) {
    s = orthotropic(d, d.material, 1.0L, 1.0L);
  } else {
    s = isotropic(d);
  }
  if (d.nodes.size() == 4) split(s);
  if (!s.isotropic) turn(s, d.ortho_angle);
  s.thickness = d.thickness;
  if (d.formulation == 2) {
    s.bending.setZero();
    s.shear.setZero();
  }
  return s;
}

// With a unit increment the side bends by a tangential curvature that changes along it: M_tt and M_nt change, and the
// shear forces that hold them (Q_t and Q_n) shear the side through the inverse of the shear section.
column ratios(const corners& X, const section& s) {
  column phi(count_of(X));
  for (int k = 0; k < count_of(X); ++k) {
    const vector2 d = side(X, k), t = d.normalized(), n(t(1), -t(0));
    if (s.isotropic) {
      phi(k) = s.ratio / d.squaredNorm();
      continue;
    }
    const vector3 bent(t(0) * t(0), t(1) * t(1), 2.0L * t(0) * t(1));
    const vector3 twisted(n(0) * t(0), n(1) * t(1), n(0) * t(1) + n(1) * t(0));
    const real M_tt = bent.dot(s.bending * bent), M_nt = twisted.dot(s.bending * bent);
    const matrix2 flexibility = s.shear.inverse();
    phi(k) = 12.0L / d.squaredNorm() * (t.dot(flexibility * n) * M_nt + t.dot(flexibility * t) * M_tt);
  }
  return phi;
}

}  // namespace shell_reference
