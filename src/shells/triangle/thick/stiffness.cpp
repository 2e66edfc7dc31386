// stiffness.cpp: the stiffness of the thick triangle: membrane, bending, transverse shear and drilling.
//
//     K(i, j) = sum_p  (B_b^T DB B_b + B_s^T DS B_s)(i, j) w TWO_AREA,      1 <= i <= j <= 9
//
// Bending and shear both take all four points of the rule: the shear field needs no reduced integration to avoid
// locking.
//
// Mirror: shells/quadrilateral/thick/stiffness.cpp.
#include "shells/triangle/thick/stiffness.h"

#include "common/finiteness.h"
#include "finites/records.h"
#include "shells/common/behaviour.h"
#include "shells/common/constitutive.h"
#include "shells/common/flat_parts.h"
#include "shells/common/point_pairs.h"
#include "shells/common/side_fields.h"
#include "shells/common/slopes.h"
#include "shells/triangle/geometry.h"
#include "shells/triangle/membrane.h"
#include "shells/triangle/point_pairs.h"
#include "shells/triangle/thick/bending.h"
#include "shells/triangle/thick/plate_formulas.h"
#include "shells/triangle/thick/side_constants.h"

namespace {

// K(45). NaN and infinities go through the sums over all sides.
template <class SECTION, class SHEAR_SECTION>
void plate_stiffness(const POINT_PAIRS& points, const TRI_SIDE_VALUES& sides, const SLOPES<3>& n, const SECTION& D,
                     const SHEAR_SECTION& H, double* K) {
  integrate_thick_tri<MEETING_SIDES>(points, sides, n, D, H, K);
  if (!all_finite(K, SYM(9, 9))) integrate_thick_tri<ALL_SIDES>(points, sides, n, D, H, K);
}

}  // namespace

void KSTIF_TRI_THICK_ELAS(const PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const ISOTROPIC_SECTION& ISO,
                          const ELEM_LOADS& LOADS, FLAT_PARTS<3>& parts) {
  if (isotropic(EL)) {
    const TRIANGLE_SIDES TRI_SIDES = SIDE_CONST_TRI_ISO(EL, TRI, LOADS);
    const SHEAR_TERMS H{ISO.DS1, ISO.DS2};
    TRI_KM_ISO(TRI, ISO, parts.membrane);
    plate_stiffness(tri_pairs_iso(TRI, TRI_RULE_FOUR), TRI_SIDE_VALUES(TRI_SIDES), tri_slopes_iso(TRI),
                    bending_terms(ISO), H, parts.plate);
  } else {
    const POINT_PAIRS points = tri_pairs_general(EL);
    const double detj = tri_point_at(TRI_RULE_FOUR[0], EL.LOCAL_XYZ.data()).detj;
    TRI_KM_GENERAL(EL, points, parts.membrane);
    plate_stiffness(points, TRI_SIDE_VALUES(EL), tri_slopes_general(EL, detj), EL.D_BENDING, EL.D_SHEAR, parts.plate);
  }
  TRI_KDRILL(EL, TRI, parts.drilling);
}
