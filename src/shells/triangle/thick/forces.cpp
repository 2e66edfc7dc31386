// forces.cpp: internal forces of the thick triangle, the integral of B^T times the stress resultants.
//
//     f = sum_p  (B_m^T N + B_b^T M + B_s^T Q) w TWO_AREA,      N = DM B_m u,    M = DB B_b u,    Q = DS B_s u
//
// The isotropic form computes N once: it is constant.
//
// Mirror: shells/quadrilateral/thick/forces.cpp.
#include "shells/triangle/thick/forces.h"

#include <algorithm>

#include "finites/fields.h"
#include "finites/records.h"
#include "shells/common/constitutive.h"
#include "shells/common/general_products.h"
#include "shells/common/isotropic_products.h"
#include "shells/common/packed.h"
#include "shells/common/strains.h"
#include "shells/common/surface_points.h"
#include "shells/triangle/forces.h"
#include "shells/triangle/geometry.h"
#include "shells/triangle/membrane.h"
#include "shells/triangle/thick/bending.h"
#include "shells/triangle/thick/shear.h"
#include "shells/triangle/thick/side_constants.h"

void FINT_TRI_THICK_ISO(const PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const ISOTROPIC_SECTION& ISO,
                        const TRI_DISPLACEMENTS& TRI_U, const ELEM_LOADS& LOADS, double* f, int op) {
  std::fill_n(f, 24, 0.0);
  const TRIANGLE_SIDES TRI_SIDES = SIDE_CONST_TRI_ISO(EL, TRI, LOADS);
  VECTOR<6> f_m{};
  VECTOR<9> f_b{};
  const STRAIN_ROWS<6> B_m = tri_membrane_rows(TRI);
  const VECTOR<3> N = resultants(membrane_terms(ISO), strains_of(B_m, TRI_U.MEMBRANE));
  for (const SURFACE_STATION& s : TRI_RULE_FOUR) {
    const double c = s.weight * TRI.TWO_AREA;
    const STRAIN_ROWS<9> B_b = tri_curvature_rows(TRI, TRI_SIDES, s.xi, s.eta, TRI_SIDES.A_DELTA);
    const SHEAR_ROWS<9> B_s = tri_shear_rows(TRI_SIDES, s.xi, s.eta);
    const VECTOR<3> M = resultants(bending_terms(ISO), strains_of(B_b, TRI_U.BENDING));
    const VECTOR<2> Q = shear_forces(ISO, strains_of(B_s, TRI_U.BENDING));
    add_forces(B_m, N, c, f_m);
    add_forces(B_b, M, c, f_b);
    add_forces(B_s, Q, c, f_b);
  }
  place_part(f_m, TRI_MEMBRANE_DOF, f);
  place_part(f_b, TRI_BENDING_DOF, f);
  TRI_FINISH_FORCES(EL, TRI, TRI_U, LOADS, op, f);
}

void FINT_TRI_THICK_GEN(const PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const TRI_DISPLACEMENTS& TRI_U,
                        const ELEM_LOADS& LOADS, double* f, int op) {
  std::fill_n(f, 24, 0.0);
  MATRIX<3, 6> B_m;
  MATRIX<3, 9> B_b;
  MATRIX<2, 9> B_s;
  for (int point = 1; point <= TRI_RULE_COUNT; ++point) {
    const SURFACE_POINT s = surface_point(RULE_ELEMENT, point, 3, EL.LOCAL_XYZ.data());
    const double c = s.weight * s.detj;
    TRI_B_MEMBRANE(s.g11, s.g12, s.g21, s.g22, B_m);
    B_BEND_TRI(EL, s.xi, s.eta, s.g11, s.g12, s.g21, s.g22, s.detj, B_b);
    B_SHEAR_TRI(EL, s.xi, s.eta, B_s);
    const VECTOR<3> N = product(EL.D_MEMBRANE_NORMAL, product(B_m, TRI_U.MEMBRANE));
    const VECTOR<3> M = product(EL.D_BENDING, product(B_b, TRI_U.BENDING));
    const VECTOR<2> Q = product(EL.D_SHEAR, product(B_s, TRI_U.BENDING));
    add_forces(B_m, N, c, TRI_MEMBRANE_DOF, f);
    add_forces(B_b, M, c, TRI_BENDING_DOF, f);
    add_forces(B_s, Q, c, TRI_BENDING_DOF, f);
  }
  TRI_FINISH_FORCES(EL, TRI, TRI_U, LOADS, op, f);
}
