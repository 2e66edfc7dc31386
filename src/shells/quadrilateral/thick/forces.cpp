// forces.cpp: internal forces of the thick quadrilateral, the integral of B^T times the stress resultants.
//
//     f = sum_p  (B_m^T N + B_b^T M + B_s^T Q) w DET,      N = DM B_m u,    M = DB B_b u,    Q = DS B_s u
//
// With a split shear N lacks its third component at the points, and the centre adds it.
//
// Mirror: shells/triangle/thick/forces.cpp.
#include "shells/quadrilateral/thick/forces.h"

#include <algorithm>

#include "finites/fields.h"
#include "finites/records.h"
#include "shells/common/constitutive.h"
#include "shells/common/general_products.h"
#include "shells/common/isotropic_products.h"
#include "shells/common/packed.h"
#include "shells/common/strains.h"
#include "shells/common/surface_points.h"
#include "shells/quadrilateral/forces.h"
#include "shells/quadrilateral/geometry.h"
#include "shells/quadrilateral/membrane.h"
#include "shells/quadrilateral/thick/bending.h"
#include "shells/quadrilateral/thick/shear.h"
#include "shells/quadrilateral/thick/side_constants.h"

void FINT_QUAD_THICK_ISO(const PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD, const ISOTROPIC_SECTION& ISO,
                         const QUAD_DISPLACEMENTS& QUAD_U, const ELEM_LOADS& LOADS, const MATRIX<3, 4>& local,
                         int split, double* f, int op) {
  std::fill_n(f, QUAD_DOFS, 0.0);
  const QUADRILATERAL_SIDES QUAD_SIDES = SIDE_CONST_QUAD_ISO(EL, QUAD, LOADS);
  const SECTION_TERMS D = membrane_terms(ISO, split);
  VECTOR<8> f_m{};
  VECTOR<12> f_b{};
  for (const SURFACE_STATION& s : QUAD_RULE_FULL) {
    const QUAD_POINT J = QUAD_JACOBIAN(QUAD, s.xi, s.eta);
    const double c = s.weight * J.DET;
    const STRAIN_ROWS<8> B_m = quad_membrane_rows(J, s.xi, s.eta);
    const STRAIN_ROWS<12> B_b = quad_curvature_rows(QUAD_SIDES, J, s.xi, s.eta);
    const SHEAR_ROWS<12> B_s = quad_shear_rows(QUAD_SIDES, J, s.xi, s.eta);
    const VECTOR<3> N = resultants(D, strains_of(B_m, QUAD_U.MEMBRANE));
    const VECTOR<3> M = resultants(bending_terms(ISO), strains_of(B_b, QUAD_U.BENDING));
    const VECTOR<2> Q = shear_forces(ISO, strains_of(B_s, QUAD_U.BENDING));
    add_forces(B_m, N, c, f_m);
    add_forces(B_b, M, c, f_b);
    add_forces(B_s, Q, c, f_b);
  }
  place_part(f_m, QUAD_MEMBRANE_DOF, f);
  place_part(f_b, QUAD_BENDING_DOF, f);
  QUAD_CENTRE_FORCES_ISO(QUAD, ISO, QUAD_U, split, f);
  QUAD_FINISH_FORCES(EL, QUAD, QUAD_U, LOADS, local, op, f);
}

void FINT_QUAD_THICK_GEN(const PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD,
                         const QUAD_DISPLACEMENTS& QUAD_U, const ELEM_LOADS& LOADS, const MATRIX<3, 4>& local,
                         int split, double* f, int op) {
  std::fill_n(f, QUAD_DOFS, 0.0);
  MATRIX<3, 8> B_m;
  MATRIX<3, 12> B_b;
  MATRIX<2, 12> B_s;
  for (int point = 1; point <= QUAD_RULE_COUNT; ++point) {
    const SURFACE_POINT s = surface_point(RULE_FULL, point, 4, EL.LOCAL_XYZ_QUAD.data());
    const double c = s.weight * s.detj;
    QUAD_B_MEMBRANE(s.xi, s.eta, s.g11, s.g12, s.g21, s.g22, B_m);
    B_BEND_QUAD(EL, s.xi, s.eta, s.g11, s.g12, s.g21, s.g22, B_b);
    B_SHEAR_QUAD(EL, s.xi, s.eta, s.g11, s.g12, s.g21, s.g22, B_s);
    const VECTOR<3> N = product(EL.D_MEMBRANE_NORMAL, product(B_m, QUAD_U.MEMBRANE));
    const VECTOR<3> M = product(EL.D_BENDING, product(B_b, QUAD_U.BENDING));
    const VECTOR<2> Q = product(EL.D_SHEAR, product(B_s, QUAD_U.BENDING));
    add_forces(B_m, N, c, QUAD_MEMBRANE_DOF, f);
    add_forces(B_b, M, c, QUAD_BENDING_DOF, f);
    add_forces(B_s, Q, c, QUAD_BENDING_DOF, f);
  }
  QUAD_CENTRE_FORCES_GENERAL(EL, QUAD_U, split, f);
  QUAD_FINISH_FORCES(EL, QUAD, QUAD_U, LOADS, local, op, f);
}
