// stiffness.cpp: the stiffness of the thick quadrilateral: membrane, bending and transverse shear.
//
//     K(i, j) = sum_p  (B_b^T DB B_b + B_s^T DS B_s)(i, j) w DET,      1 <= i <= j <= 12
//
// Bending and shear both take the 2 by 2 rule: the shear field needs no reduced integration to avoid locking.
//
// Mirror: shells/triangle/thick/stiffness.cpp.
#include "shells/quadrilateral/thick/stiffness.h"

#include "common/finiteness.h"
#include "finites/records.h"
#include "shells/common/constitutive.h"
#include "shells/common/flat_parts.h"
#include "shells/common/point_pairs.h"
#include "shells/common/side_fields.h"
#include "shells/quadrilateral/geometry.h"
#include "shells/quadrilateral/membrane.h"
#include "shells/quadrilateral/point_pairs.h"
#include "shells/quadrilateral/thick/plate_formulas.h"
#include "shells/quadrilateral/thick/side_constants.h"

namespace {

// K(78). NaN and infinities go through the sums over all sides.
template <class SECTION, class SHEAR_SECTION>
void plate_stiffness(const POINT_PAIRS& points, const QUAD_SIDE_VALUES& sides, const SECTION& D, const SHEAR_SECTION& H,
                     double* K) {
  integrate_thick_quad<MEETING_SIDES>(points, sides, D, H, K);
  if (!all_finite(K, SYM(12, 12))) integrate_thick_quad<ALL_SIDES>(points, sides, D, H, K);
}

}  // namespace

void KSTIF_QUAD_THICK_ISO(const PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD, const ISOTROPIC_SECTION& ISO,
                          const ELEM_LOADS& LOADS, int split, FLAT_PARTS<4>& parts) {
  const POINT_PAIRS points = quad_pairs_iso(QUAD, QUAD_RULE_FULL);
  const QUADRILATERAL_SIDES QUAD_SIDES = SIDE_CONST_QUAD_ISO(EL, QUAD, LOADS);
  QUAD_KM_ISO(QUAD, ISO, split, points, parts.membrane);
  const SHEAR_TERMS H{ISO.DS1, ISO.DS2};
  plate_stiffness(points, QUAD_SIDE_VALUES(QUAD_SIDES), bending_terms(ISO), H, parts.plate);
}

void KSTIF_QUAD_THICK_GEN(const PLATEELEM_RECORD& EL, int split, FLAT_PARTS<4>& parts) {
  const POINT_PAIRS points = quad_pairs_general(EL);
  QUAD_KM_GENERAL(EL, split, points, parts.membrane);
  plate_stiffness(points, QUAD_SIDE_VALUES(EL), EL.D_BENDING, EL.D_SHEAR, parts.plate);
}
