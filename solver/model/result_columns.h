// result_columns.h: columns of the library's result records by surface: top, middle, bottom.
#ifndef FINITES_SOLVER_RESULT_COLUMNS_H
#define FINITES_SOLVER_RESULT_COLUMNS_H

#include <array>

#include "finites/fields.h"

namespace solver {

constexpr std::array<int, 3> STRESS_COLUMN = {COL_STRESS_TOP, COL_STRESS_MID, COL_STRESS_BOTTOM};
constexpr std::array<int, 3> PLASTIC_COLUMN = {COL_PLASTIC_TOP, COL_PLASTIC_MID, COL_PLASTIC_BOTTOM};

// Of the record in which principal values are computed again.
constexpr std::array<int, 3> RECOMPUTED_STRESS = {RES100_STRESS_TOP, RES100_STRESS_MID, RES100_STRESS_BOTTOM};
constexpr std::array<int, 3> RECOMPUTED_PRINCIPAL = {RES100_PRINCIPAL_TOP, RES100_PRINCIPAL_MID,
                                                     RES100_PRINCIPAL_BOTTOM};
constexpr std::array<int, 3> RECOMPUTED_EQUIVALENT = {RES100_EQUIVALENT_TOP, RES100_EQUIVALENT_MID,
                                                      RES100_EQUIVALENT_BOTTOM};

}  // namespace solver

#endif
