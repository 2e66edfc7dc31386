// hinged_static.h: a static step of a frame in which plastic hinges may form.
#ifndef FINITES_SOLVER_HINGED_STATIC_H
#define FINITES_SOLVER_HINGED_STATIC_H

#include <optional>
#include <string>

#include "analyses/results.h"
#include "pushover/pushover.h"

namespace solver {

struct hinged_static {
  pushover_solution path;
  step_results results;
};

// The path of the step from the unloaded frame to its full load. Nothing where no hinge forms on it, or where the step
// loads nothing: the elastic answer holds then. Throws model_error when the frame does not carry the full load, with the
// largest part of it that it does.
std::optional<hinged_static> follow_hinges(const model& m, const step& s, const static_solution& elastic,
                                           library_model& library, linear_solver& solver, stopwatch& watch);

std::string hinged_static_summary(const model& m, const step& s, const hinged_static& solution);

}  // namespace solver

#endif
