// temperature_table.h: constants of a material that a deck gives at several temperatures.
//
// Between two of them constants are interpolated, below the first and above the last they stay what they are there.
#ifndef FINITES_SOLVER_TEMPERATURE_TABLE_H
#define FINITES_SOLVER_TEMPERATURE_TABLE_H

#include <array>
#include <vector>

namespace solver {

struct temperature_line {
  double temperature = 0;
  std::array<double, 2> value{};  // Young's modulus and Poisson's ratio; or one constant
};

using temperature_table = std::vector<temperature_line>;  // by rising temperature; empty: one constant for all

std::array<double, 2> value_at(const temperature_table& table, double temperature);  // of a table that has lines

}  // namespace solver

#endif
