// hinged_static.cpp: the path of a pushover, up to load factor 1 and no further.
#include "pushover/hinged_static.h"

#include <algorithm>

#include <fmt/format.h>

#include "model/model_error.h"

namespace solver {

namespace {

constexpr double INSIDE = 1 - 1e-9;  // an end that is no nearer to its surface has not yielded, within rounding

bool nothing_moves(const static_solution& solution) {
  return solution.equations == 0 || std::all_of(solution.displacement.begin(), solution.displacement.end(),
                                                [](double value) { return value == 0; });
}

// The note of a member whose forces are above its capacity between its ends, by no more than a user may accept.
void check_spans(const model& m, const step& s, const step_results& results, std::vector<std::string>& notes) {
  const use_of_capacity most = most_used_span(m, results.fields);
  if (!(most.ratio > SPAN_ABOVE)) return;
  const std::string text =
      fmt::format("{} carries {:.6g} times the capacity of its hinges, which form at ends alone: put a node there",
                  name_of(m, most), most.ratio);
  if (most.ratio > 1 + SPAN_TOLERANCE) throw model_error(m, s, "*STATIC", text);
  notes.push_back("*STATIC: " + text);
}

pushover_solution path_to_full_load(const model& m, const step& s, library_model& library, linear_solver& solver,
                                    stopwatch& watch, std::size_t states, path_restart* restart) {
  step to_full_load = s;
  to_full_load.pushover = pushover_request{};
  to_full_load.pushover.largest_factor = 1;
  library.second_order(false);
  library.clear_state();
  pushover frame(m, library, solver);
  pushover_solution path = frame.solve(to_full_load, watch, states, restart);
  if (!(path.factor >= FULL_LOAD)) {
    throw model_error(
        m, s, "*STATIC",
        fmt::format("the hinges of the frame leave it no more than {:.6g} of the loads of the step; a step "
                    "with *PUSHOVER shows the path up to there",
                    path.factor));
  }
  if (path.end != pushover_end::FACTOR_REACHED) {
    path.frame.notes.push_back(
        "*STATIC: the path of the hinges ends at the full load, to the sixth digit: the frame is shown as it stands "
        "there, "
        "and a larger load may find no resistance");
  }
  return path;
}

}  // namespace

// In first order the forces grow in proportion to the factor: an end that is inside its surface under the full load has
// been inside before. In second order the path has to show it.
std::optional<hinged_static> follow_hinges(const model& m, const step& s, static_solution& elastic,
                                           const step_results& elastic_results, library_model& library,
                                           linear_solver& solver, stopwatch& watch, std::size_t states,
                                           path_restart* restart) {
  const bool still = nothing_moves(elastic);
  const use_of_capacity most = most_used_end(m, elastic_results.members);
  const bool inside = most.ratio < INSIDE && (still || !s.p_delta);
  if (still && most.ratio > SPAN_ABOVE) {
    throw model_error(
        m, s, "*STATIC",
        fmt::format(
            "element {} carries {:.6g} times the capacity of its hinges at end {}, and no node of "
            "the structure moves: hinges have no path to follow. Nodes between the ends of bent members give them one",
            m.elements[most.element].id, most.ratio, most.distance > 0 ? 2 : 1));
  }
  hinged_static found;
  if (!inside && !still) {
    found.path = path_to_full_load(m, s, library, solver, watch, states, restart);
    found.results = recover_pushover_results(m, library, found.path);
  }
  if (found.path.events.empty()) {
    check_spans(m, s, elastic_results, elastic.notes);
    return std::nullopt;
  }
  check_spans(m, s, found.results, found.path.frame.notes);
  return found;
}

// The first line of a pushover's summary says why it has ended: at the load of the step.
std::string hinged_static_summary(const model& m, const step& s, const hinged_static& solution) {
  const std::string path = pushover_summary(m, s, solution.path);
  return fmt::format("  hinges form from {:.6g} of the loads on\n", solution.path.events.front().factor) +
         path.substr(path.find('\n') + 1);
}

}  // namespace solver
