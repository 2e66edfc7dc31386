// reference_element.h: an element of any kind in full matrices and extended precision, element axes throughout.
#ifndef FINITES_TESTS_REFERENCE_ELEMENT_H
#define FINITES_TESTS_REFERENCE_ELEMENT_H

#include "reference_section.h"

namespace shell_reference {

struct temperature {
  double change = 0.0, difference = 0.0;
};

// What a result record is made of.
struct point_state {
  vector3 strain, curvature, stress, moment;
  vector2 shear_strain = vector2::Zero(), shear_force = vector2::Zero();
  vector2 position;
};

struct reference_element {
  explicit reference_element(const support::plate_description& d);

  // Places among the 6 n degrees of freedom, from 0.
  int membrane(int i) const { return 6 * (i / 2) + i % 2; }
  int bending(int i) const { return 6 * (i / 3) + 2 + i % 3; }
  int drill(int i) const { return 6 * i + 5; }

  matrix bending_B(real xi, real eta) const;
  matrix shear_B(real xi, real eta) const;
  column membrane_part(const column& u) const;
  column bending_part(const column& u) const;

  // K u for the section as it is, symmetric or not.
  matrix stiffness(double foundation = 0.0) const;
  matrix mass(real density) const;  // per volume
  // The matrix of the membrane forces (Nx, Ny, Nxy) at each of the four points.
  matrix geometric(const std::vector<vector3>& N) const;
  vector3 membrane_forces(const column& u, const temperature& T, real xi, real eta) const;

  column surface_loads(const vector3& q) const;  // q in element axes, per area
  column thermal_loads(const temperature& T) const;
  column point_load(const vector3& F, real xi, real eta) const;

  point_state state_at(const column& u, const temperature& T, real xi, real eta) const;

  column to_local(const column& u) const { return groups(axes, n) * u; }
  column to_global(const column& f) const { return groups(axes, n).transpose() * f; }
  matrix to_global_matrix(const matrix& K) const { return groups(axes, n).transpose() * K * groups(axes, n); }
  support::point in_space(real x, real y, real z) const;

  int n;
  bool thick, membrane_only;
  section s;
  matrix3 axes;
  vector3 origin;
  corners X;
  column phi;  // of the sides, thick kinds
};

using dense::upper_mirrored;

}  // namespace shell_reference

#endif
