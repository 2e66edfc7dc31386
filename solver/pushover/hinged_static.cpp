// hinged_static.cpp: the path of a pushover, up to load factor 1 and no further.
#include "pushover/hinged_static.h"

#include <algorithm>
#include <cstddef>

#include <fmt/format.h>

#include "model/model_error.h"

namespace solver {

std::optional<hinged_static> follow_hinges(const model& m, const step& s, const static_solution& elastic,
                                           library_model& library, linear_solver& solver, stopwatch& watch) {
  const auto is_zero = [](double value) { return value == 0; };
  if (std::all_of(elastic.displacement.begin(), elastic.displacement.end(), is_zero)) return std::nullopt;
  step path = s;
  path.pushover = pushover_request{};
  path.pushover.largest_factor = 1;
  library.second_order(false);
  library.clear_state();
  pushover frame(m, library, solver);
  hinged_static found;
  found.path = frame.solve(path, watch);
  if (found.path.end != pushover_end::FACTOR_REACHED)
    throw model_error(
        m, s, "*STATIC",
        fmt::format("the hinges of the frame leave it no more than {:.6g} of the loads of the step; a step "
                    "with *PUSHOVER shows the path up to there",
                    found.path.factor));
  if (found.path.events.empty()) return std::nullopt;
  found.results = recover_pushover_results(m, library, found.path);
  return found;
}

// The first line of a pushover's summary says why it has ended: at the load of the step.
std::string hinged_static_summary(const model& m, const step& s, const hinged_static& solution) {
  const std::string path = pushover_summary(m, s, solution.path);
  return fmt::format("  hinges form from {:.6g} of the loads on\n", solution.path.events.front().factor) +
         path.substr(path.find('\n') + 1);
}

}  // namespace solver
