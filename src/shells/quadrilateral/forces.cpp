// forces.cpp: what the internal forces of both theories share on a quadrilateral.
//
//     foundation   f(w_i) += k sum_p  N_i w w_p DET,      w = sum_j N_j w_j,  bilinear N
//     drilling     f(theta z_i) := sum_j Kdrill(i, j) theta z_j
//     in-plane shear of the centre   f += B(3, :)^T DM33 gxy w DET
//
// Mirror: shells/triangle/forces.cpp.
#include "shells/quadrilateral/forces.h"

#include <algorithm>

#include "finites/fields.h"
#include "finites/records.h"
#include "shells/common/constitutive.h"
#include "shells/common/drilling.h"
#include "shells/common/general_products.h"
#include "shells/common/groups.h"
#include "shells/common/isotropic_products.h"
#include "shells/common/packed.h"
#include "shells/common/plate_matrices.h"
#include "shells/common/strains.h"
#include "shells/quadrilateral/geometry.h"
#include "shells/quadrilateral/membrane.h"

void QUAD_DISP_LOCAL(const QUADRILATERAL_GEOMETRY& QUAD, const double* u, double* ul) {
  groups_to_local(QUAD.AXES, QUAD_GROUPS, u, ul);
}

QUAD_DISPLACEMENTS QUAD_DISP_SPLIT(const double* ul) {
  return {picked(ul, QUAD_MEMBRANE_DOF), picked(ul, QUAD_BENDING_DOF), picked(ul, QUAD_DRILL_DOF)};
}

namespace {

void add_foundation(const QUADRILATERAL_GEOMETRY& QUAD, const QUAD_DISPLACEMENTS& QUAD_U, double k, double* f) {
  for (const SURFACE_STATION& s : QUAD_RULE_FULL) {
    const QUAD_POINT J = QUAD_JACOBIAN(QUAD, s.xi, s.eta);
    const VECTOR<4> N = bilinear(s.xi, s.eta);
    double w = 0.0;
    for (int i = 1; i <= 4; ++i) w += N(i) * QUAD_U.BENDING(3 * i - 2);
    for (int i = 1; i <= 4; ++i) f[QUAD_W_DOF[i - 1] - 1] += k * w * N(i) * s.weight * J.DET;
  }
}

void set_drilling(const PLATEELEM_RECORD& EL, const QUAD_DISPLACEMENTS& QUAD_U, const MATRIX<3, 4>& local, double* f) {
  double Kdrill[SYM(4, 4)];
  quad_kdrill(EL, local, Kdrill);
  set_drilling_moments(Kdrill, QUAD_U.DRILL, QUAD_DRILL_DOF, f);
}

}  // namespace

// e = B u; of a split shear e(3) is that of the centre, where the stiffness has it.
VECTOR<3> QUAD_MEMBRANE_STRAINS_ISO(const QUADRILATERAL_GEOMETRY& QUAD, const QUAD_DISPLACEMENTS& QUAD_U, int split,
                                    double xi, double eta) {
  MATRIX<3, 8> B;
  const QUAD_POINT J = QUAD_JACOBIAN(QUAD, xi, eta);
  QUAD_B_MEMBRANE_STORED(J, xi, eta, B);
  VECTOR<3> e = strains_of(B, QUAD_U.MEMBRANE);
  if (split == SPLIT_SHEAR) {
    const SURFACE_STATION centre = QUAD_RULE_CENTRE[0];
    QUAD_B_MEMBRANE_STORED(QUAD_JACOBIAN(QUAD, centre.xi, centre.eta), centre.xi, centre.eta, B);
    e(3) = strains_of(B, QUAD_U.MEMBRANE)(3);
  }
  return e;
}

VECTOR<3> QUAD_MEMBRANE_STRAINS_GENERAL(const PLATEELEM_RECORD& EL, const QUAD_DISPLACEMENTS& QUAD_U, int split,
                                        const SURFACE_POINT& s) {
  MATRIX<3, 8> B;
  QUAD_B_MEMBRANE(s.xi, s.eta, s.g11, s.g12, s.g21, s.g22, B);
  VECTOR<3> e = product(B, QUAD_U.MEMBRANE);
  if (split == SPLIT_SHEAR) {
    const SURFACE_POINT c = surface_point(RULE_CENTRE, 1, 4, EL.LOCAL_XYZ_QUAD.data());
    QUAD_B_MEMBRANE(c.xi, c.eta, c.g11, c.g12, c.g21, c.g22, B);
    e(3) = product(B, QUAD_U.MEMBRANE)(3);
  }
  return e;
}

void QUAD_CENTRE_FORCES_ISO(const QUADRILATERAL_GEOMETRY& QUAD, const ISOTROPIC_SECTION& ISO,
                            const QUAD_DISPLACEMENTS& QUAD_U, int split, double* f) {
  if (split != SPLIT_SHEAR) return;
  MATRIX<3, 8> B;
  const SURFACE_STATION centre = QUAD_RULE_CENTRE[0];
  const QUAD_POINT J = QUAD_JACOBIAN(QUAD, centre.xi, centre.eta);
  QUAD_B_MEMBRANE_STORED(J, centre.xi, centre.eta, B);
  const double g = strains_of(B, QUAD_U.MEMBRANE)(3) * centre.weight * J.DET;
  for (int i = 1; i <= 8; ++i) f[QUAD_MEMBRANE_DOF[i - 1] - 1] += B(3, i) * ISO.DM33 * g;
}

void QUAD_CENTRE_FORCES_GENERAL(const PLATEELEM_RECORD& EL, const QUAD_DISPLACEMENTS& QUAD_U, int split, double* f) {
  if (split != SPLIT_SHEAR) return;
  MATRIX<3, 8> B;
  const SURFACE_POINT s = surface_point(RULE_CENTRE, 1, 4, EL.LOCAL_XYZ_QUAD.data());
  QUAD_B_MEMBRANE(s.xi, s.eta, s.g11, s.g12, s.g21, s.g22, B);
  const VECTOR<3> N = product(EL.D_MEMBRANE_SHEAR, product(B, QUAD_U.MEMBRANE));
  add_forces(B, N, s.weight * s.detj, QUAD_MEMBRANE_DOF, f);
}

void QUAD_FINISH_FORCES(const PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD,
                        const QUAD_DISPLACEMENTS& QUAD_U, const ELEM_LOADS& LOADS, const MATRIX<3, 4>& local, int op,
                        double* f) {
  set_drilling(EL, QUAD_U, local, f);
  if (LOADS(LOAD_FOUNDATION) != 0.0) add_foundation(QUAD, QUAD_U, LOADS(LOAD_FOUNDATION), f);
  if (op != OP_FORCES_COMMIT) groups_to_global(QUAD.AXES, QUAD_GROUPS, f);
}
