// thick_sections.h: sections of thick plates for tests that call kernels directly, and the basis of the side matrices.
#ifndef FINITES_TESTS_THICK_SECTIONS_H
#define FINITES_TESTS_THICK_SECTIONS_H

#include "finites/records.h"
#include "random_shapes.h"
#include "reference_section.h"
#include "shells/common/elem_loads.h"

// The same isotropic plate for both forms: THICKNESS, NU1 and modifiers; D_BENDING and D_SHEAR.
inline void set_isotropic(support::seeded_random& random, ELEM_LOADS& LOADS) {
  const double h = random.uniform(0.01, 0.5), nu = random.uniform(0.0, 0.45), E = 2000.0;
  const double mb = random.uniform(0.2, 1.0), mv = random.uniform(0.2, 1.0);
  PLATEELEM.THICKNESS = h;
  PLATEELEM.NU1 = nu;
  LOADS(LOAD_MOD_BENDING) = mb;
  LOADS(LOAD_MOD_SHEAR) = mv;
  const double D = mb * E * h * h * h / 12.0 / (1.0 - nu * nu), H = mv * 0.833333333333333 * E * h / (2.0 * (1.0 + nu));
  PLATEELEM.D_BENDING = {{D, D * nu, 0.0, D * nu, D, 0.0, 0.0, 0.0, D * (1.0 - nu) / 2.0}};
  PLATEELEM.D_SHEAR = {{H, 0.0, 0.0, H}};
}

// Section matrices without symmetry, in PLATEELEM and in s.
inline void set_random_section(support::seeded_random& random, shell_reference::section& s) {
  for (double& entry : PLATEELEM.D_BENDING.V) entry = random.uniform(-0.3, 0.3);
  for (double& entry : PLATEELEM.D_SHEAR.V) entry = random.uniform(-0.3, 0.3);
  for (int i = 1; i <= 3; ++i) PLATEELEM.D_BENDING(i, i) = random.uniform(1.0, 2.0);
  for (int i = 1; i <= 2; ++i) PLATEELEM.D_SHEAR(i, i) = random.uniform(1.0, 2.0);
  s.bending = dense::widened(PLATEELEM.D_BENDING.data(), 3, 3);
  s.shear = dense::widened(PLATEELEM.D_SHEAR.data(), 2, 2);
  s.isotropic = false;
}

// Columns per w, theta x, theta y changed to w, beta x = theta y, beta y = -theta x.
inline shell_reference::matrix beta_basis(const shell_reference::matrix& theta) {
  shell_reference::matrix beta = theta;
  for (int n = 0; 3 * n < theta.cols(); ++n) {
    beta.col(3 * n + 1) = theta.col(3 * n + 2);
    beta.col(3 * n + 2) = -theta.col(3 * n + 1);
  }
  return beta;
}

#endif
