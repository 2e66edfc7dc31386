// stiffness.cpp: the stiffness of the thin quadrilateral: membrane (u, v) + bending (w, theta x, theta y),
// which share no degree of freedom. The drilling stiffness follows later, in element.cpp.
//
// Mirror: shells/triangle/thin/stiffness.cpp.
#include "shells/quadrilateral/thin/stiffness.h"

#include "finites/records.h"
#include "shells/common/constitutive.h"
#include "shells/common/flat_parts.h"
#include "shells/quadrilateral/geometry.h"
#include "shells/quadrilateral/membrane.h"
#include "shells/quadrilateral/point_pairs.h"
#include "shells/quadrilateral/thin/bending.h"

void QUAD_STIFFNESS_ISO(const QUADRILATERAL_GEOMETRY& QUAD, const ISOTROPIC_SECTION& ISO, int split,
                        const SURFACE_STATION (&rule)[4], FLAT_PARTS<4>& parts) {
  const POINT_PAIRS points = quad_pairs_iso(QUAD, rule);
  QUAD_KM_ISO(QUAD, ISO, split, points, parts.membrane);
  QUAD_KB_ISO(QUAD, ISO, points, parts.plate);
}

void QUAD_STIFFNESS_GENERAL(const PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD, int split,
                            FLAT_PARTS<4>& parts) {
  const POINT_PAIRS points = quad_pairs_general(EL);
  QUAD_KM_GENERAL(EL, split, points, parts.membrane);
  QUAD_KB_GENERAL(EL, QUAD, points, parts.plate);
}
