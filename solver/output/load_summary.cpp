// load_summary.cpp: a line for each resultant.
#include "output/load_summary.h"

#include <algorithm>
#include <cmath>

#include <fmt/format.h>

namespace solver {

// A part that is so small beside the others is the rounding of their sum.
static double without_rounding(const load_sum& sum, std::size_t i) {
  constexpr double NEGLIGIBLE = 1e-12;
  const std::size_t first = i < 3 ? 0 : 3;
  const double largest =
      std::max({std::fabs(sum.total[first]), std::fabs(sum.total[first + 1]), std::fabs(sum.total[first + 2])});
  return std::fabs(sum.total[i]) > NEGLIGIBLE * largest ? sum.total[i] : 0;
}

std::string load_summary(const std::vector<load_sum>& sums) {
  if (sums.size() < 2) return "";
  std::size_t width = 10;
  for (const load_sum& sum : sums) width = std::max(width, sum.name.size());
  std::string text = fmt::format("  {:<{}}", "loads", width);
  for (const char* const name : {"force x", "force y", "force z", "moment x", "moment y", "moment z"}) {
    text += fmt::format(" {:>14}", name);
  }
  text += '\n';
  for (const load_sum& sum : sums) {
    text += fmt::format("  {:<{}}", sum.name, width);
    for (std::size_t i = 0; i < sum.total.size(); ++i) text += fmt::format(" {:>14.6e}", without_rounding(sum, i));
    text += '\n';
  }
  return text;
}

}  // namespace solver
