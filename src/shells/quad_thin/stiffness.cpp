// stiffness.cpp: the packed stiffness of the thin quadrilateral: membrane and bending side by side.
#include "shells/quad_thin/stiffness.h"

#include <algorithm>

#include "finites/records.h"
#include "shells/common/constitutive.h"
#include "shells/common/packed.h"
#include "shells/quad_thin/bending.h"
#include "shells/quad_thin/geometry.h"
#include "shells/quad_thin/membrane.h"

void QUAD_ASSEMBLE_PACKED(const double* Kmem, const double* Kb, double* K) {
  std::fill_n(K, QUAD_PACKED, 0.0);
  packed_add(K, Kb, QUAD_BENDING_DOF);
  packed_add(K, Kmem, QUAD_MEMBRANE_DOF);
}

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

void QUAD_FOUNDATION(const QUADRILATERAL_GEOMETRY& QUAD, double k, int count, const SURFACE_STATION* rule, double* K) {
  for (int point = 0; point < count; ++point) {
    const SURFACE_STATION s = rule[point];
    const QUAD_POINT J = QUAD_JACOBIAN(QUAD, s.xi, s.eta);
    const VECTOR<4> N = bilinear(s.xi, s.eta);
    for (int j = 1; j <= 4; ++j) {
      for (int i = 1; i <= j; ++i) {
        K[SYM(QUAD_W_DOF[i - 1], QUAD_W_DOF[j - 1]) - 1] += k * N(i) * N(j) * s.weight * J.DET;
      }
    }
  }
}

void QUAD_TO_GLOBAL_PACKED(const QUADRILATERAL_GEOMETRY& QUAD, double* K) {
  packed_to_global(QUAD.AXES, QUAD_GROUPS, K);
}

void QUAD_TO_GLOBAL_FULL(const QUADRILATERAL_GEOMETRY& QUAD, double* K) { full_to_global(QUAD.AXES, QUAD_GROUPS, K); }
