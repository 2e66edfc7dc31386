// temperature_table.cpp: linear interpolation between the lines of a table.
#include "model/temperature_table.h"

#include <algorithm>

namespace solver {

std::array<double, 2> value_at(const temperature_table& table, double temperature) {
  const auto above = std::upper_bound(table.begin(), table.end(), temperature,
                                      [](double t, const temperature_line& line) { return t < line.temperature; });
  if (above == table.begin()) return table.front().value;
  if (above == table.end()) return table.back().value;
  const auto below = above - 1;
  const double share = (temperature - below->temperature) / (above->temperature - below->temperature);
  std::array<double, 2> result = below->value;
  for (std::size_t i = 0; i < result.size(); ++i) result[i] += share * (above->value[i] - below->value[i]);
  return result;
}

}  // namespace solver
