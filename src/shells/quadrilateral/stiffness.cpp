// stiffness.cpp: the foundation of a quadrilateral, and the rotation of its stiffness to global axes.
//
// Mirror: shells/triangle/stiffness.cpp.
#include "shells/quadrilateral/stiffness.h"

#include "finites/records.h"
#include "shells/common/packed.h"
#include "shells/quadrilateral/geometry.h"

//     K(w_i, w_j) += sum_p  k N_i N_j w DET,      bilinear N
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
