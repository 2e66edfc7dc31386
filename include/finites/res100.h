// res100.h: from the result record of operation 5 to the solver's record of 100, on which UPDATE_PRINCIPAUX_RES100_PLA
// works. For C99 and C++.
#ifndef FINITES_RES100_H
#define FINITES_RES100_H

#include "finites/fields.h"

// res100(100) := the stresses, mean shear stresses, principal and equivalent values of record(90); its other columns
// stay unchanged. The principal values of the two records belong to the same stresses: UPDATE_PRINCIPAUX_RES100_PLA_DBL
// changes them only after the stresses of res100 have been changed, for example by averaging at a node.
static inline void RES100_FROM_RECORD(const double* record, double* res100) {
  // clang-format off
  static const int32_t COLUMNS[][3] = {
      // of record, of res100, count
      {COL_STRESS_TOP, RES100_STRESS_TOP, 3},
      {COL_STRESS_MID, RES100_STRESS_MID, 3},
      {COL_STRESS_BOTTOM, RES100_STRESS_BOTTOM, 3},
      {COL_SHEAR_STRESS, RES100_SHEAR_STRESS, 2},
      {COL_PRINCIPAL_TOP, RES100_PRINCIPAL_TOP, 4},
      {COL_PRINCIPAL_MID, RES100_PRINCIPAL_MID, 4},
      {COL_PRINCIPAL_BOTTOM, RES100_PRINCIPAL_BOTTOM, 4},
      {COL_PRINCIPAL_TOP + 4, RES100_EQUIVALENT_TOP, 1},
      {COL_PRINCIPAL_MID + 4, RES100_EQUIVALENT_MID, 1},
      {COL_PRINCIPAL_BOTTOM + 4, RES100_EQUIVALENT_BOTTOM, 1},
  };
  // clang-format on
  for (unsigned group = 0; group < sizeof COLUMNS / sizeof COLUMNS[0]; ++group) {
    for (int32_t i = 0; i < COLUMNS[group][2]; ++i) {
      res100[COLUMNS[group][1] - 1 + i] = record[COLUMNS[group][0] - 1 + i];
    }
  }
}

#endif
