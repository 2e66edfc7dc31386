// stiffness.cpp: the packed stiffness of the thin triangle: K = membrane (u, v) + bending (w, theta x, theta y) +
// drilling (theta z), which share no degree of freedom.
//
// Mirror: shells/quadrilateral/thin/stiffness.cpp.
#include "shells/triangle/thin/stiffness.h"

#include <algorithm>

#include "finites/records.h"
#include "shells/common/behaviour.h"
#include "shells/common/constitutive.h"
#include "shells/common/packed.h"
#include "shells/triangle/geometry.h"
#include "shells/triangle/membrane.h"
#include "shells/triangle/stiffness.h"
#include "shells/triangle/thin/bending.h"

void TRI_STIFFNESS(const PLATEELEM_RECORD& EL, const TRIANGLE_GEOMETRY& TRI, const ISOTROPIC_SECTION& ISO, double* K) {
  double Kmem[SYM(6, 6)];
  double Kb1[SYM(9, 9)];
  double Kdrill[SYM(3, 3)];
  static constexpr double Kb_none[SYM(9, 9)] = {};
  static constexpr MATRIX<9, 6> Kcouple_none{};
  if (isotropic(EL)) {
    TRI_KM_ISO(TRI, ISO, Kmem);
    TRI_KB_ISO(TRI, ISO, TRI_RULE_COUNT, TRI_RULE_FOUR, Kb1);
  } else {
    TRI_KM_GENERAL(EL, TRI_RULE_COUNT, Kmem);
    TRI_KB_GENERAL(EL, TRI, TRI_RULE_COUNT, Kb1);
  }
  TRI_KDRILL(EL, TRI, Kdrill);
  TRI_ASSEMBLE_PACKED(Kdrill, Kmem, Kb1, Kb_none, Kb_none, Kcouple_none, K);
}
