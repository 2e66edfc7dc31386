// stiffness.cpp: assembly of the packed stiffness of a triangle from its parts, the foundation, the rotation to global
// axes.
//
// Mirror: shells/quadrilateral/stiffness.cpp.
#include "shells/triangle/stiffness.h"

#include <algorithm>

#include "finites/records.h"
#include "shells/common/packed.h"
#include "shells/triangle/geometry.h"

void TRI_ASSEMBLE_PACKED(const double* Kdrill, const double* Kmem, const double* Kb1, const double* Kb2,
                         const double* Kb3, const MATRIX<9, 6>& Kcouple, double* K) {
  std::fill_n(K, TRI_PACKED, 0.0);
  packed_add(K, Kb1, TRI_BENDING_DOF);
  packed_add(K, Kb2, TRI_BENDING_DOF);
  packed_add(K, Kb3, TRI_BENDING_DOF);
  packed_add(K, Kmem, TRI_MEMBRANE_DOF);
  packed_add(K, Kdrill, TRI_DRILL_DOF);
  for (int j = 1; j <= 6; ++j) {
    for (int i = 1; i <= 9; ++i) {
      const int row = TRI_BENDING_DOF[i - 1];
      const int column = TRI_MEMBRANE_DOF[j - 1];
      K[SYM(std::min(row, column), std::max(row, column)) - 1] += Kcouple(i, j);
    }
  }
}

//     K(w_i, w_j) += k (TWO_AREA / 24) (1 + delta_ij)
//
// The integral of two linear functions over a triangle of area A is (2 A / 24) (1 + delta_ij), and TWO_AREA = 2 A.
void TRI_FOUNDATION(const TRIANGLE_GEOMETRY& TRI, double k, double* K) {
  const double d = TRI.TWO_AREA * k / 24.0;
  K[SYM(3, 3) - 1] += 2.0 * d;
  K[SYM(9, 9) - 1] += 2.0 * d;
  K[SYM(15, 15) - 1] += 2.0 * d;
  K[SYM(3, 9) - 1] += d;
  K[SYM(3, 15) - 1] += d;
  K[SYM(9, 15) - 1] += d;
}

void TRI_TO_GLOBAL_PACKED(const TRIANGLE_GEOMETRY& TRI, double* K) { packed_to_global(TRI.AXES, TRI_GROUPS, K); }

void TRI_TO_GLOBAL_FULL(const TRIANGLE_GEOMETRY& TRI, double* K) { full_to_global(TRI.AXES, TRI_GROUPS, K); }
