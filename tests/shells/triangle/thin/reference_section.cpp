// reference_section.cpp: the section matrices of an element description.
#include <cmath>

#include "finites/fields.h"
#include "finites/views.hpp"
#include "reference_triangle.h"

namespace reference {

namespace {

matrix3 plane_stress(real E, real nu, real axial, real shear) {
  const real c = E / (1.0L - nu * nu);
  matrix3 D = matrix3::Zero();
  D(0, 0) = D(1, 1) = axial * c;
  D(0, 1) = D(1, 0) = axial * c * nu;
  D(2, 2) = shear * c * (1.0L - nu) / 2.0L;
  return D;
}

// Strains in material axes per strains in element axes, with the single-precision entries that define the rotation.
matrix3 strain_rotation(double angle) {
  const float c = static_cast<float>(std::cos(angle)), s = static_cast<float>(std::sin(angle));
  const float cc = c * c, ss = s * s, cs = c * s;
  matrix3 T;
  T << real(cc), real(ss), real(cs), real(ss), real(cc), -real(cs), -2.0L * real(c) * real(s), 2.0L * real(cs),
      real(cc - ss);
  return T;
}

template <class RECORD>
section orthotropic(const support::plate_description& d, const RECORD& r, real twist, real shear) {
  const real q = 1.0L - real(r.NU1) * r.NU2, h = d.thickness, inertia = h * h * h / 12.0L;
  const real m = d.modifier_membrane, b = d.modifier_bending;
  section s;
  s.membrane << r.E1 / q, real(r.E2) * r.NU1 / q, 0.0L, real(r.E1) * r.NU2 / q, r.E2 / q, 0.0L, 0.0L, 0.0L,
      r.G12 * shear;
  s.bending << r.E1 / q, real(r.E1) * r.NU2 / q, 0.0L, real(r.E2) * r.NU1 / q, r.E2 / q, 0.0L, 0.0L, 0.0L,
      r.G12 * twist;
  const matrix3 T = strain_rotation(static_cast<double>(static_cast<float>(d.ortho_angle)));
  s.membrane = (T.transpose() * s.membrane * T * (m * h));
  s.bending = (T.transpose() * s.bending * T * (b * inertia));
  s.drill = 1e-6L * r.E1 * h;
  s.alpha1 = r.ALPHA1;
  s.alpha2 = r.ALPHA2;
  return s;
}

}  // namespace

section section_of(const support::plate_description& d) {
  const real h = d.thickness;
  section s;
  if (d.section_type == COMPOSITE_SECTION) {
    s = orthotropic(d, d.composite, d.composite.CLT_FACTOR_1, d.composite.CLT_FACTOR_2);
  } else if (d.material.ortho == 1) {
    s = orthotropic(d, d.material, 1.0L, 1.0L);
  } else {
    s.membrane = plane_stress(d.young, d.poisson, d.modifier_membrane, d.modifier_membrane) * h;
    s.bending = plane_stress(d.young, d.poisson, d.modifier_bending, d.modifier_bending) * (h * h * h / 12.0L);
    s.drill = 1e-6L * d.young * h;
    s.alpha1 = s.alpha2 = d.expansion;
  }
  s.thickness = h;
  if (d.formulation != 1) s.bending.setZero();
  return s;
}

}  // namespace reference
