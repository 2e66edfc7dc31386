// stiffness.cpp: the packed stiffness of the thin quadrilateral: K = membrane (u, v) + bending (w, theta x, theta y),
// which share no degree of freedom. The drilling stiffness follows later, in element.cpp.
//
// Mirror: shells/triangle/thin/stiffness.cpp.
#include "shells/quadrilateral/thin/stiffness.h"

#include <algorithm>

#include "finites/records.h"
#include "shells/common/constitutive.h"
#include "shells/common/packed.h"
#include "shells/quadrilateral/geometry.h"
#include "shells/quadrilateral/membrane.h"
#include "shells/quadrilateral/stiffness.h"
#include "shells/quadrilateral/thin/bending.h"

void QUAD_STIFFNESS_ISO(const QUADRILATERAL_GEOMETRY& QUAD, const ISOTROPIC_SECTION& ISO, int split, int count,
                        const SURFACE_STATION* rule, double* K) {
  double Kmem[SYM(8, 8)];
  double Kb[SYM(12, 12)];
  QUAD_KM_ISO(QUAD, ISO, split, count, rule, Kmem);
  QUAD_KB_ISO(QUAD, ISO, count, rule, Kb);
  QUAD_ASSEMBLE_PACKED(Kmem, Kb, K);
}

void QUAD_STIFFNESS_GENERAL(const PLATEELEM_RECORD& EL, const QUADRILATERAL_GEOMETRY& QUAD, int split, int count,
                            double* K) {
  double Kmem[SYM(8, 8)];
  double Kb[SYM(12, 12)];
  QUAD_KM_GENERAL(EL, split, count, Kmem);
  QUAD_KB_GENERAL(EL, QUAD, count, Kb);
  QUAD_ASSEMBLE_PACKED(Kmem, Kb, K);
}
