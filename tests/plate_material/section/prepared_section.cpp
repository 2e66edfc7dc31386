// prepared_section.cpp: the fields that the update of a point reads.
#include "prepared_section.h"

#include <cmath>

using section_reference::column;
using section_reference::matrix;
using section_reference::matrix3;
using section_reference::plate;
using section_reference::real;
using support::seeded_random;

namespace {

matrix3 random_axes(seeded_random& random) {
  const support::rotation R = support::random_rotation(random);
  matrix3 axes;
  for (int i = 0; i < 3; ++i) {
    for (int j = 0; j < 3; ++j) axes(i, j) = R[static_cast<std::size_t>(i)][static_cast<std::size_t>(j)];
  }
  return axes;
}

}  // namespace

prepared_section::prepared_section(const plate& plate, const matrix3& element_axes) : p(plate), axes(element_axes) {
  PLATEELEM_RECORD& P = PLATEELEM;
  P = PLATEELEM_RECORD{};
  P.MAT_BEHAV = 2;
  P.THICKNESS = p.h;
  P.YIELD_STRESS = p.sy;
  P.E1 = P.E2 = p.E;
  P.NU1 = P.NU2 = p.nu;
  P.TANGENT_MOD = p.Et;
  const matrix exact = section_reference::isotropic_section(p);
  for (int j = 1; j <= 3; ++j) {
    for (int i = 1; i <= 3; ++i) {
      P.AXES(i, j) = static_cast<double>(axes(i - 1, j - 1));
      P.D_MEMBRANE_NORMAL(i, j) = static_cast<double>(exact(i - 1, j - 1));
      P.D_BENDING(i, j) = static_cast<double>(exact(i + 2, j + 2));
    }
  }
  P.D_SHEAR = {{static_cast<double>(exact(6, 6)), 0.0, 0.0, static_cast<double>(exact(7, 7))}};
  SECTION_SPECTRAL(PLATEELEM, BY_ASSERTF);
  D = matrix_of(P.D8);
}

prepared_section::prepared_section(seeded_random& random, double hardening)
    : prepared_section{section_reference::random_plate(random, hardening), random_axes(random)} {}  // in this order

prepared_section::prepared_section(seeded_random& random, double hardening, const matrix3& element_axes)
    : prepared_section(section_reference::random_plate(random, hardening), element_axes) {}

column prepared_section::random_resultants(seeded_random& random, int width, double level) const {
  column sig(width);
  for (int i = 0; i < width; ++i) sig(i) = random.uniform(-1.0, 1.0) * (i >= 3 && i < 6 ? p.M0() : p.N0());
  plate ideal = p;
  ideal.Et = 0.0;
  return sig * (level / std::sqrt(section_reference::yield_function(ideal, sig, 0) + 1));
}

column prepared_section::strains_of(const column& sig) const {
  const auto n = sig.size();
  return dense::solve(D.topLeftCorner(n, n), sig);
}

section_reference::point_start random_start(seeded_random& random, const prepared_section& s, double ref) {
  section_reference::point_start start;
  const double scale = s.p.sy / s.p.E;
  column local(8);
  for (int i = 0; i < 8; ++i) local(i) = random.uniform(-1.0, 1.0) * scale / (i >= 3 && i < 6 ? s.p.h : 1.0);
  start.ep0 = section_reference::column_of(section_reference::listed(section_reference::to_global(local, s.axes)));
  start.ebar0 = random.uniform(0.0, 2.0) * scale;
  start.ref = ref;
  return start;
}

SECTION_POINT section_point(const section_reference::point_start& start) {
  return {vector_of<12>(start.ep0), static_cast<double>(start.ebar0), start.ref, NOT_A_NUMBER};
}

column without_units(const prepared_section& s, const column& sig) {
  column n = sig / s.p.N0();
  n.segment(3, 3) = sig.segment(3, 3) / s.p.M0();
  return n;
}

column strain_without_units(const prepared_section& s, const column& strain) {
  const real yield_strain = real(s.p.sy) / s.p.E;
  column e = strain / yield_strain;
  const int second = strain.size() == 12 ? 6 : 3, count = strain.size() == 12 ? 6 : 3;
  e.segment(second, count) *= s.p.h;
  return e;
}

matrix tangent_without_units(const prepared_section& s, const matrix& C) {
  column scale = column::Ones(C.rows());
  scale.segment(3, 3) /= s.p.h;
  return scale.asDiagonal() * C * scale.asDiagonal() / (real(s.p.E) * s.p.h);
}
