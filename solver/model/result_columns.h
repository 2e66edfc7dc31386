// result_columns.h: the columns of the library's result records that the solver reads, numbered from 1.
#ifndef FINITES_SOLVER_RESULT_COLUMNS_H
#define FINITES_SOLVER_RESULT_COLUMNS_H

#include <array>

namespace solver {

// Of the 90-value record: stresses at the top, in the middle and at the bottom, resultants, and of thick shells the
// transverse shear forces per length and mean shear stresses.
constexpr std::array<int, 3> STRESS_COLUMN = {7, 18, 29};
constexpr int FORCE_COLUMN = 37, MOMENT_COLUMN = 40, SHEAR_FORCE_COLUMN = 45, SHEAR_STRESS_COLUMN = 47;

// Plastic strains at the top, in the middle and at the bottom, and plastic transverse shear strains.
constexpr std::array<int, 3> PLASTIC_COLUMN = {51, 54, 57};
constexpr int PLASTIC_SHEAR_COLUMN = 60;

// Of the record of a solid: stresses xx, yy, zz, xy, xz, yz, von Mises stress, principal stresses.
constexpr int SOLID_STRESS = 10, SOLID_EQUIVALENT = 22, SOLID_PRINCIPAL = 23;

// Of the record in which principal values are made anew.
constexpr int ANEW_LENGTH = 47;
constexpr std::array<int, 3> ANEW_EQUIVALENT = {7, 8, 9};
constexpr std::array<int, 3> ANEW_STRESS = {24, 27, 30};
constexpr std::array<int, 3> ANEW_PRINCIPAL = {34, 38, 42};
constexpr int ANEW_SHEAR = 46;

}  // namespace solver

#endif
