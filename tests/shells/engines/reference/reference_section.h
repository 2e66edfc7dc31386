// reference_section.h: section matrices of an element description, in element axes and in extended precision.
#ifndef FINITES_TESTS_REFERENCE_SECTION_H
#define FINITES_TESTS_REFERENCE_SECTION_H

#include "flat_element.h"

namespace shell_reference {

struct section {
  matrix3 membrane = matrix3::Zero();     // what the points of the rule carry
  matrix3 centre_only = matrix3::Zero();  // the in-plane shear of quadrilaterals
  matrix3 bending = matrix3::Zero();
  matrix2 shear = matrix2::Zero();
  real young = 0.0L, thickness = 0.0L;
  real alpha1 = 0.0L, alpha2 = 0.0L;
  bool isotropic = true;
  real ratio = 0.0L;  // isotropic: phi L^2 of a side

  matrix3 whole() const { return membrane + centre_only; }
};

section section_of(const support::plate_description& d);

// The flexibility ratios of the sides.
column ratios(const corners& X, const section& s);

}  // namespace shell_reference

#endif
