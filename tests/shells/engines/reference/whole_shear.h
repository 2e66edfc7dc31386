// whole_shear.h: a quadrilateral whose in-plane shear is integrated with the other strains, split 0, by any rule: what
// the kernels can do beside what the elastic engines ask of them.
#ifndef FINITES_TESTS_WHOLE_SHEAR_H
#define FINITES_TESTS_WHOLE_SHEAR_H

#include <cmath>
#include <vector>

#include "element_call.h"
#include "element_stores.h"
#include "element_subject.h"
#include "prepared_quadrilateral.h"
#include "shells/common/constitutive.h"
#include "shells/common/flat_parts.h"
#include "shells/common/surface_points.h"

// Stores and scratch record as an engine has them before it calls a kernel, with the section whole.
struct whole_shear {
  whole_shear(support::seeded_random& random, const element_subject& s)
      : frame(random_element(random, s).nodes), call(described(random, s, frame)) {
    PLATEELEM.AXES = QUAD.AXES;
    PLATEELEM.LOCAL_XYZ_QUAD = frame.local;
    if (s.isotropic()) {
      ISO = PLATE_D_ISOTROPIC(PLATEELEM, 0, call.LOADS);
    } else {
      PLATE_D_GENERAL(PLATEELEM, 0, 0);
      for (double& entry : PLATEELEM.D_MEMBRANE_SHEAR.V) entry = 1e9;  // what stands there is not looked at
    }
  }

  // Membrane, bending and shear over a table of stations, element axes; no drilling term.
  shell_reference::matrix stiffness(const SURFACE_STATION* rule, int count) const {
    using shell_reference::matrix;
    const shell_reference::reference_element& e = call.reference;
    matrix K = matrix::Zero(24, 24);
    for (int p = 0; p < count; ++p) {
      const shell_reference::real xi = rule[p].xi, eta = rule[p].eta;
      const shell_reference::real c = rule[p].weight * shell_reference::determinant(e.X, xi, eta);
      const matrix Bm = shell_reference::membrane_B(e.X, xi, eta), Bb = e.bending_B(xi, eta);
      const matrix Km = Bm.transpose() * e.s.whole() * Bm * c;
      matrix Kb = Bb.transpose() * e.s.bending * Bb * c;
      if (e.thick) Kb += e.shear_B(xi, eta).transpose() * e.s.shear * e.shear_B(xi, eta) * c;
      for (int j = 0; j < 8; ++j) {
        for (int i = 0; i < 8; ++i) K(e.membrane(i), e.membrane(j)) += Km(i, j);
      }
      for (int j = 0; j < 12; ++j) {
        for (int i = 0; i < 12; ++i) K(e.bending(i), e.bending(j)) += Kb(i, j);
      }
    }
    return K;
  }

  // Strains of the point itself, the shear too, and the membrane forces that they make.
  shell_reference::vector3 strains(const shell_reference::column& u, double xi, double eta) const {
    return shell_reference::membrane_B(call.reference.X, xi, eta) * call.reference.membrane_part(u);
  }
  shell_reference::vector3 forces(const shell_reference::column& u, double xi, double eta, double change) const {
    const shell_reference::section& s = call.reference.s;
    const shell_reference::vector3 free(s.alpha1 * change, s.alpha2 * change, 0.0L);
    return s.whole() * (strains(u, xi, eta) - free);
  }

  prepared_quadrilateral frame;
  element_call call;

 private:
  static support::plate_description described(support::seeded_random& random, const element_subject& s,
                                              const prepared_quadrilateral& frame) {
    std::vector<support::point> nodes;
    for (std::size_t n = 0; n < 4; ++n) nodes.push_back({frame.xyz[3 * n], frame.xyz[3 * n + 1], frame.xyz[3 * n + 2]});
    return random_element(random, s, nodes);
  }
};

// Another stiffness in the second direction, in ISO and in the reference.
inline void unequal_directions(shell_reference::section& s) {
  ISO.DM22 *= 1.75;
  ISO.DB22 *= 2.5;
  ISO.DS2 *= 1.25;
  s.membrane(1, 1) *= 1.75L;
  s.bending(1, 1) *= 2.5L;
  s.shear(1, 1) *= 1.25L;
}

// Three stations of no rule.
struct rule_of_four {
  SURFACE_STATION at[4];
};

inline rule_of_four random_rule(support::seeded_random& random) {
  rule_of_four rule{};
  for (SURFACE_STATION& s : rule.at) {
    const double xi = random.uniform(-1.0, 1.0), eta = random.uniform(-1.0, 1.0);
    s = {xi, eta, random.uniform(0.5, 2.0)};
  }
  return rule;
}

// The packed matrix of the parts.
template <int NODES>
std::vector<double> packed_of(const FLAT_PARTS<NODES>& parts) {
  std::vector<double> K(SYM(6 * NODES, 6 * NODES), std::nan(""));
  assemble_parts(parts, K.data());
  return K;
}

// Displacements in element axes without drilling rotations.
inline std::vector<double> random_local(support::seeded_random& random) {
  std::vector<double> u = random.vector(24, 1.0);
  for (std::size_t n = 0; n < 4; ++n) u[6 * n + 5] = 0.0;
  return u;
}

// The full matrix of 300 packed entries.
inline std::vector<double> unpacked(const std::vector<double>& K) {
  std::vector<double> M(576);
  for (std::size_t j = 0; j < 24; ++j) {
    for (std::size_t i = 0; i <= j; ++i) M[24 * j + i] = M[24 * i + j] = K[j * (j + 1) / 2 + i];
  }
  return M;
}

#endif
