// step_listener.h: what gathers the results of all steps of a run: the report, files over several steps, combinations.
//
// A run tells each listener of each step as soon as its files are written, in the order of the steps. What is handed
// over lives until the call returns; a listener keeps copies of what it needs later, no larger than it must.
#ifndef FINITES_SOLVER_STEP_LISTENER_H
#define FINITES_SOLVER_STEP_LISTENER_H

#include "analyses/envelope.h"
#include "analyses/modal_analysis.h"
#include "analyses/results.h"
#include "analyses/static_analysis.h"
#include "elastoplastic/elastoplastic.h"
#include "model/model.h"
#include "pushover/pushover.h"

namespace solver {

class step_listener {
 public:
  step_listener() = default;
  virtual ~step_listener() = default;
  step_listener(const step_listener&) = delete;
  step_listener& operator=(const step_listener&) = delete;

  // A step that ends in displacements and forces; of a path its end. `m` is the model that the step has used, whose
  // sections may be copies at a temperature.
  virtual void solved(const model& /*m*/, const step& /*s*/, const static_solution& /*solution*/,
                      const step_results& /*results*/) {}
  virtual void found_modes(const model& /*m*/, const step& /*s*/, const modal_solution& /*solution*/) {}
  // The end of an envelope; solved() has told of each step that it spans.
  virtual void enveloped(const model& /*m*/, const step& /*s*/, const envelope& /*bounds*/) {}
  // The path of the step whose end solved() has been told before.
  virtual void followed_hinges(const model& /*m*/, const step& /*s*/, const pushover_solution& /*path*/) {}
  virtual void followed_plates(const model& /*m*/, const step& /*s*/, const elastoplastic_solution& /*path*/) {}
};

}  // namespace solver

#endif
