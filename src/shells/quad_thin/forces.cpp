// forces.cpp: internal forces of the thin quadrilateral, the integral of B^T times the stress resultants.
#include "shells/quad_thin/forces.h"

#include <algorithm>

#include "finites/fields.h"
#include "finites/records.h"
#include "shells/common/constitutive.h"
#include "shells/common/general_products.h"
#include "shells/common/groups.h"
#include "shells/common/isotropic_products.h"
#include "shells/common/packed.h"
#include "shells/common/strains.h"
#include "shells/quad_thin/bending.h"
#include "shells/quad_thin/geometry.h"
#include "shells/quad_thin/membrane.h"

void QUAD_DISP_LOCAL(const QUADRILATERAL_GEOMETRY& QUAD, const double* u, double* ul) {
  groups_to_local(QUAD.AXES, QUAD_GROUPS, u, ul);
}

QUAD_DISPLACEMENTS QUAD_DISP_SPLIT(const double* ul) {
  QUAD_DISPLACEMENTS QUAD_U;
  for (int i = 1; i <= 8; ++i) QUAD_U.MEMBRANE(i) = ul[QUAD_MEMBRANE_DOF[i - 1] - 1];
  for (int i = 1; i <= 12; ++i) QUAD_U.BENDING(i) = ul[QUAD_BENDING_DOF[i - 1] - 1];
  for (int i = 1; i <= 4; ++i) QUAD_U.DRILL(i) = ul[QUAD_DRILL_DOF[i - 1] - 1];
  return QUAD_U;
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

// The drilling moments are set, not added.
void set_drilling(const PLATEELEM_RECORD& EL, const QUAD_DISPLACEMENTS& QUAD_U, const MATRIX<3, 4>& local, double* f) {
  double Kdrill[SYM(4, 4)];
  quad_kdrill(EL, local, Kdrill);
  for (int n = 1; n <= 4; ++n) {
    double moment = 0.0;
    for (int m = 1; m <= 4; ++m) moment += Kdrill[SYM(std::min(n, m), std::max(n, m)) - 1] * QUAD_U.DRILL(m);
    f[QUAD_DRILL_DOF[n - 1] - 1] = moment;
  }
}

}  // namespace

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

void QUAD_FORCES_ISO(const PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD, const ISOTROPIC_SECTION& ISO,
                     const QUAD_DISPLACEMENTS& QUAD_U, const ELEM_LOADS& LOADS, const MATRIX<3, 4>& local, int split,
                     double* f, int count, const SURFACE_STATION* rule, int op) {
  std::fill_n(f, QUAD_DOFS, 0.0);
  const SECTION_TERMS D = membrane_terms(ISO, split);
  VECTOR<8> f_m{};
  VECTOR<12> f_b{};
  for (int point = 0; point < count; ++point) {
    const SURFACE_STATION s = rule[point];
    const QUAD_POINT J = QUAD_JACOBIAN(QUAD, s.xi, s.eta);
    const double c = s.weight * J.DET;
    const STRAIN_ROWS<8> B_m = quad_membrane_rows(J, s.xi, s.eta);
    const STRAIN_ROWS<12> B_b = dkq_rows(QUAD, J, s.xi, s.eta);
    const VECTOR<3> N = resultants(D, strains_of(B_m, QUAD_U.MEMBRANE));
    const VECTOR<3> M = resultants(bending_terms(ISO), strains_of(B_b, QUAD_U.BENDING));
    add_forces(B_m, N, c, f_m);
    add_forces(B_b, M, c, f_b);
  }
  place_part(f_m, QUAD_MEMBRANE_DOF, f);
  place_part(f_b, QUAD_BENDING_DOF, f);
  QUAD_CENTRE_FORCES_ISO(QUAD, ISO, QUAD_U, split, f);
  QUAD_FINISH_FORCES(EL, QUAD, QUAD_U, LOADS, local, op, f);
}

void QUAD_FORCES_GENERAL(const PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD,
                         const QUAD_DISPLACEMENTS& QUAD_U, const ELEM_LOADS& LOADS, const MATRIX<3, 4>& local,
                         int split, double* f, int count, int op) {
  std::fill_n(f, QUAD_DOFS, 0.0);
  MATRIX<3, 8> B_m;
  MATRIX<3, 12> B_b;
  for (int point = 1; point <= count; ++point) {
    const SURFACE_POINT s = surface_point(RULE_FULL, point, 4, EL.LOCAL_XYZ_QUAD.data());
    const double c = s.weight * s.detj;
    QUAD_B_MEMBRANE(s.xi, s.eta, s.g11, s.g12, s.g21, s.g22, B_m);
    DKQ_BMATRIX(QUAD, s.xi, s.eta, s.g11, s.g12, s.g21, s.g22, B_b);
    const VECTOR<3> N = product(EL.D_MEMBRANE_NORMAL, product(B_m, QUAD_U.MEMBRANE));
    const VECTOR<3> M = product(EL.D_BENDING, product(B_b, QUAD_U.BENDING));
    add_forces(B_m, N, c, QUAD_MEMBRANE_DOF, f);
    add_forces(B_b, M, c, QUAD_BENDING_DOF, f);
  }
  QUAD_CENTRE_FORCES_GENERAL(EL, QUAD_U, split, f);
  QUAD_FINISH_FORCES(EL, QUAD, QUAD_U, LOADS, local, op, f);
}
