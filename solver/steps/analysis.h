// analysis.h: what carries out the steps of one kind, and the table of all kinds.
//
// A new kind of step is a value of step_kind (model/model.h), its keyword in the deck reader (deck/keywords.cpp and
// step_states.cpp), a file beside this one with a maker, and a line in analysis.cpp.
#ifndef FINITES_SOLVER_ANALYSIS_H
#define FINITES_SOLVER_ANALYSIS_H

#include <memory>
#include <vector>

#include "analyses/base_state.h"
#include "analyses/static_analysis.h"
#include "elements/library_model.h"
#include "model/model.h"
#include "options.h"
#include "steps/kept_results.h"
#include "steps/places.h"
#include "steps/restart_file.h"
#include "steps/step_listener.h"
#include "steps/wanted_values.h"
#include "system/linear_solver.h"
#include "system/stopwatch.h"

namespace solver {

// The state from which later steps may start: the end of the last static step that ended in one.
struct end_state {
  static_solution solution;
  bool yielded = false;
};

// What all steps of a run share.
struct run_context {
  const model& m;
  const options& wanted;
  const wanted_values& values;
  library_model& library;
  linear_solver& solver;
  stopwatch& watch;
  end_state last{};
  output_file* prints = nullptr;  // printed tables; null where no step asks for one
  std::vector<step_listener*> listeners{};
  std::size_t path_states = 0;      // how many deformed states of a path its listeners want, at most
  restart_file* restart = nullptr;  // where paths leave their states; null: nowhere
  kept_results* kept = nullptr;     // for combinations and envelopes; it is one of the listeners

  base_state base_of(const step& s) const;
  path_restart* restart_of(const step& s) const;  // null: the path of the step leaves nothing
};

// One object for consecutive steps of one kind; it keeps what a step passes to the next.
class analysis {
 public:
  virtual ~analysis() = default;
  analysis() = default;
  analysis(const analysis&) = delete;
  analysis& operator=(const analysis&) = delete;

  virtual void run(const step& s) = 0;
  // The files and the summary of the step that has been run.
  virtual void write(const step& s, const places& to) = 0;
};

std::unique_ptr<analysis> make_analysis(step_kind kind, run_context& context);

std::unique_ptr<analysis> make_static_steps(run_context& context);
std::unique_ptr<analysis> make_modal_steps(run_context& context);
std::unique_ptr<analysis> make_pushover_steps(run_context& context);
std::unique_ptr<analysis> make_elastoplastic_steps(run_context& context);
std::unique_ptr<analysis> make_combination_steps(run_context& context);
std::unique_ptr<analysis> make_envelope_steps(run_context& context);

}  // namespace solver

#endif
