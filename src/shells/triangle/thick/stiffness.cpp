// stiffness.cpp: the packed stiffness of the thick triangle: membrane, bending, transverse shear and drilling.
//
//     K(i, j) = sum_p  (B_b^T DB B_b + B_s^T DS B_s)(i, j) w TWO_AREA,      1 <= i <= j <= 9
//
// Bending and shear both take all four points of the rule: the shear field needs no reduced integration to avoid
// locking.
//
// Mirror: shells/quadrilateral/thick/stiffness.cpp.
#include "shells/triangle/thick/stiffness.h"

#include <algorithm>

#include "finites/fields.h"
#include "finites/records.h"
#include "shells/common/behaviour.h"
#include "shells/common/constitutive.h"
#include "shells/common/general_products.h"
#include "shells/common/isotropic_products.h"
#include "shells/common/surface_points.h"
#include "shells/triangle/geometry.h"
#include "shells/triangle/membrane.h"
#include "shells/triangle/stiffness.h"
#include "shells/triangle/thick/bending.h"
#include "shells/triangle/thick/shear.h"
#include "shells/triangle/thick/side_constants.h"

void KB_TRI_THICK(const PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const ISOTROPIC_SECTION& ISO,
                  const TRIANGLE_SIDES& TRI_SIDES, double* K) {
  std::fill_n(K, SYM(9, 9), 0.0);
  if (isotropic(EL)) {
    const SECTION_TERMS D = bending_terms(ISO);
    for (const SURFACE_STATION& s : TRI_RULE_FOUR) {
      add_packed_product(tri_curvature_rows(TRI, TRI_SIDES, s.xi, s.eta, TRI_SIDES.A_DELTA), D, s.weight * TRI.TWO_AREA,
                         K);
    }
    return;
  }
  MATRIX<3, 9> B;
  for (int point = 1; point <= TRI_RULE_COUNT; ++point) {
    const SURFACE_POINT s = surface_point(RULE_ELEMENT, point, 3, EL.LOCAL_XYZ.data());
    B_BEND_TRI(EL, s.xi, s.eta, s.g11, s.g12, s.g21, s.g22, s.detj, B);
    add_packed_btdb(B, EL.D_BENDING, s.weight * s.detj, K);
  }
}

void KS_TRI_THICK(const PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const ISOTROPIC_SECTION& ISO,
                  const TRIANGLE_SIDES& TRI_SIDES, double* K) {
  std::fill_n(K, SYM(9, 9), 0.0);
  if (isotropic(EL)) {
    for (const SURFACE_STATION& s : TRI_RULE_FOUR) {
      add_packed_product(tri_shear_rows(TRI_SIDES, s.xi, s.eta), ISO.DS1, ISO.DS2, s.weight * TRI.TWO_AREA, K);
    }
    return;
  }
  MATRIX<2, 9> B;
  for (int point = 1; point <= TRI_RULE_COUNT; ++point) {
    const SURFACE_POINT s = surface_point(RULE_ELEMENT, point, 3, EL.LOCAL_XYZ.data());
    B_SHEAR_TRI(EL, s.xi, s.eta, B);
    add_packed_btdb(B, EL.D_SHEAR, s.weight * s.detj, K);
  }
}

void KSTIF_TRI_THICK_ELAS(const PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const ISOTROPIC_SECTION& ISO,
                          const ELEM_LOADS& LOADS, double* K) {
  double Kmem[SYM(6, 6)];
  double Kb[SYM(9, 9)];
  double Ks[SYM(9, 9)];
  double Kdrill[SYM(3, 3)];
  static constexpr double Kb_none[SYM(9, 9)] = {};
  static constexpr MATRIX<9, 6> Kcouple_none{};
  TRIANGLE_SIDES TRI_SIDES{};
  if (isotropic(EL)) {
    TRI_SIDES = SIDE_CONST_TRI_ISO(EL, TRI, LOADS);
    TRI_KM_ISO(TRI, ISO, Kmem);
  } else {
    TRI_KM_GENERAL(EL, TRI_RULE_COUNT, Kmem);
  }
  KB_TRI_THICK(EL, TRI, ISO, TRI_SIDES, Kb);
  KS_TRI_THICK(EL, TRI, ISO, TRI_SIDES, Ks);
  TRI_KDRILL(EL, TRI, Kdrill);
  TRI_ASSEMBLE_PACKED(Kdrill, Kmem, Kb, Ks, Kb_none, Kcouple_none, K);
}
