// pushover.cpp: a pushover step from its loads to its results.
#include "pushover/pushover.h"

#include "model/model_error.h"
#include "pushover/pushover_frame.h"
#include "pushover/pushover_path.h"
#include "system/assembly.h"

namespace solver {

pushover::pushover(const model& m, library_model& library, linear_solver& solver)
    : model_(m), library_(library), solver_(solver) {}

pushover::~pushover() { follow_hinges(library_, false); }

pushover_solution pushover::solve(const step& s, stopwatch& watch, std::size_t states, path_restart* restart) {
  if (!member_group::hinges_see_forces()) {
    throw model_error(model_, s, "*STEP",
                      "the nonlinear library libVornekal.so is missing: without it the hinges see no forces");
  }
  if (s.pushover.goes_on && frame_ != nullptr) {
    frame_->next_step(s);
  } else {
    frame_ = std::make_unique<pushover_frame>(model_, library_, solver_, s);
  }
  watch.lap("assembly");

  pushover_solution result;
  pushover_path(model_, *frame_, s, states).follow(result, restart);
  result.frame = frame_->solution();
  result.members = frame_->member_forces();
  result.states = frame_->member_states();
  if (result.span) {
    std::vector<member_field> fields;
    for (std::size_t i = 0; i < frame_->beams().size(); ++i) fields.push_back(frame_->field(i, frame_->now()));
    result.span->last = most_used_span(model_, fields);
  }
  watch.lap("pushover");
  return result;
}

step_results recover_pushover_results(const model& m, library_model& library, const pushover_solution& solution) {
  step_results results = recover_results(m, library, solution.frame);
  for (member_field& f : results.fields) {
    if (!is_beam(m.elements[f.element].type)) continue;
    results.members[f.element] = solution.members[f.element];
    f = field_of(m, library, f.element, gather(m.elements[f.element], solution.frame.displacement),
                 solution.frame.loads.element[f.element], solution.states[f.element]);
  }
  return results;
}

}  // namespace solver
