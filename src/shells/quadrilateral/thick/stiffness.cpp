// stiffness.cpp: the packed stiffness of the thick quadrilateral: membrane, bending and transverse shear.
//
//     K(i, j) = sum_p  (B_b^T DB B_b + B_s^T DS B_s)(i, j) w DET,      1 <= i <= j <= 12
//
// Bending and shear both take the 2 by 2 rule: the shear field needs no reduced integration to avoid locking.
//
// Mirror: shells/triangle/thick/stiffness.cpp.
#include "shells/quadrilateral/thick/stiffness.h"

#include <algorithm>

#include "finites/fields.h"
#include "finites/records.h"
#include "shells/common/constitutive.h"
#include "shells/common/general_products.h"
#include "shells/common/isotropic_products.h"
#include "shells/common/surface_points.h"
#include "shells/quadrilateral/geometry.h"
#include "shells/quadrilateral/membrane.h"
#include "shells/quadrilateral/stiffness.h"
#include "shells/quadrilateral/thick/bending.h"
#include "shells/quadrilateral/thick/shear.h"
#include "shells/quadrilateral/thick/side_constants.h"

void KSTIF_QUAD_THICK_ISO(const PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD, const ISOTROPIC_SECTION& ISO,
                          const ELEM_LOADS& LOADS, int split, double* K) {
  double Kmem[SYM(8, 8)];
  double Kplate[SYM(12, 12)] = {};
  const QUADRILATERAL_SIDES QUAD_SIDES = SIDE_CONST_QUAD_ISO(EL, QUAD, LOADS);
  QUAD_KM_ISO(QUAD, ISO, split, QUAD_RULE_COUNT, QUAD_RULE_FULL, Kmem);
  const SECTION_TERMS D = bending_terms(ISO);
  for (const SURFACE_STATION& s : QUAD_RULE_FULL) {
    const QUAD_POINT J = QUAD_JACOBIAN(QUAD, s.xi, s.eta);
    const double c = s.weight * J.DET;
    add_packed_product(quad_curvature_rows(QUAD_SIDES, J, s.xi, s.eta), D, c, Kplate);
    add_packed_product(quad_shear_rows(QUAD_SIDES, J, s.xi, s.eta), ISO.DS1, ISO.DS2, c, Kplate);
  }
  QUAD_ASSEMBLE_PACKED(Kmem, Kplate, K);
}

void KSTIF_QUAD_THICK_GEN(const PLATEELEM_RECORD& EL, int split, double* K) {
  double Kmem[SYM(8, 8)];
  double Kplate[SYM(12, 12)] = {};
  MATRIX<3, 12> B_b;
  MATRIX<2, 12> B_s;
  QUAD_KM_GENERAL(EL, split, QUAD_RULE_COUNT, Kmem);
  for (int point = 1; point <= QUAD_RULE_COUNT; ++point) {
    const SURFACE_POINT s = surface_point(RULE_FULL, point, 4, EL.LOCAL_XYZ_QUAD.data());
    const double c = s.weight * s.detj;
    B_BEND_QUAD(EL, s.xi, s.eta, s.g11, s.g12, s.g21, s.g22, B_b);
    B_SHEAR_QUAD(EL, s.xi, s.eta, s.g11, s.g12, s.g21, s.g22, B_s);
    add_packed_btdb(B_b, EL.D_BENDING, c, Kplate);
    add_packed_btdb(B_s, EL.D_SHEAR, c, Kplate);
  }
  QUAD_ASSEMBLE_PACKED(Kmem, Kplate, K);
}
