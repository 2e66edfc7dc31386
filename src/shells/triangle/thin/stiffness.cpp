// stiffness.cpp: the stiffness of the thin triangle: membrane (u, v) + bending (w, theta x, theta y) +
// drilling (theta z), which share no degree of freedom.
//
// Mirror: shells/quadrilateral/thin/stiffness.cpp.
#include "shells/triangle/thin/stiffness.h"

#include "finites/records.h"
#include "shells/common/behaviour.h"
#include "shells/common/constitutive.h"
#include "shells/common/flat_parts.h"
#include "shells/triangle/geometry.h"
#include "shells/triangle/membrane.h"
#include "shells/triangle/point_pairs.h"
#include "shells/triangle/thin/bending.h"

void TRI_STIFFNESS(const PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const ISOTROPIC_SECTION& ISO,
                   FLAT_PARTS<3>& parts) {
  if (isotropic(EL)) {
    TRI_KM_ISO(TRI, ISO, parts.membrane);
    TRI_KB_ISO(TRI, ISO, tri_pairs_iso(TRI, TRI_RULE_FOUR), parts.plate);
  } else {
    const POINT_PAIRS points = tri_pairs_general(EL);
    TRI_KM_GENERAL(EL, points, parts.membrane);
    TRI_KB_GENERAL(EL, TRI, points, parts.plate);
  }
  TRI_KDRILL(EL, TRI, parts.drilling);
}
