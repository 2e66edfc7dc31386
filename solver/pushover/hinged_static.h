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

// The path of the step from the unloaded frame to its full load. Nothing where no hinge forms on it: the elastic answer
// holds then. A frame that collapses within FULL_LOAD of its full load is given there, with a note. Throws model_error,
// with the member and what it carries by its capacity,
// - when the frame does not carry the full load, with the largest part of it that it does;
// - when an end is above its capacity and no node moves, so that hinges have no path to follow;
// - when a member is above its capacity between its ends, where no hinge can form, by more than SPAN_TOLERANCE; a note
//   where it is less.
std::optional<hinged_static> follow_hinges(const model& m, const step& s, static_solution& elastic,
                                           const step_results& elastic_results, library_model& library,
                                           linear_solver& solver, stopwatch& watch, std::size_t states = 0,
                                           path_restart* restart = nullptr);

constexpr double FULL_LOAD = 1 - 1e-6;
constexpr double SPAN_TOLERANCE = 0.01;

std::string hinged_static_summary(const model& m, const step& s, const hinged_static& solution);

}  // namespace solver

#endif
