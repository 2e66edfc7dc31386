// stiffness.cpp: the packed stiffness of the thin triangle: membrane, bending and drilling side by side.
#include "shells/tri_thin/stiffness.h"

#include <algorithm>

#include "finites/records.h"
#include "shells/common/behaviour.h"
#include "shells/common/constitutive.h"
#include "shells/common/packed.h"
#include "shells/tri_thin/bending.h"
#include "shells/tri_thin/geometry.h"
#include "shells/tri_thin/membrane.h"

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
