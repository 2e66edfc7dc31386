// forces.cpp: internal forces of the thin quadrilateral, the integral of B^T times the stress resultants.
//
//     f = sum_p  (B_m^T N + B_b^T M) w DET,      N = DM B_m u,    M = DB B_b u
//
// With a split shear N lacks its third component at the points, and the centre adds it.
//
// Mirror: shells/triangle/thin/forces.cpp.
#include "shells/quadrilateral/thin/forces.h"

#include <algorithm>

#include "finites/fields.h"
#include "finites/records.h"
#include "shells/common/constitutive.h"
#include "shells/common/general_products.h"
#include "shells/common/groups.h"
#include "shells/common/isotropic_products.h"
#include "shells/common/packed.h"
#include "shells/common/strains.h"
#include "shells/quadrilateral/forces.h"
#include "shells/quadrilateral/geometry.h"
#include "shells/quadrilateral/membrane.h"
#include "shells/quadrilateral/thin/bending.h"

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
