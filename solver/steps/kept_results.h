// kept_results.h: what later steps of a run need of earlier ones: the solutions that combinations add, and the bounds
// that envelopes gather.
//
// A solution is kept from its step to the last combination that takes it. Envelopes take each of their steps as it is
// solved.
#ifndef FINITES_SOLVER_KEPT_RESULTS_H
#define FINITES_SOLVER_KEPT_RESULTS_H

#include <cstddef>
#include <map>
#include <vector>

#include "analyses/envelope.h"
#include "steps/step_listener.h"

namespace solver {

class kept_results : public step_listener {
 public:
  kept_results(const model& m, const envelope_contents& wanted);

  void solved(const model& m, const step& s, const static_solution& solution, const step_results& results) override;

  // Of an earlier step that a combination names, or on which its steps stand.
  const static_solution& solution_of(std::size_t step) const { return solutions_.at(step); }
  // The combination has been solved: what no later one needs goes.
  void release(const model& m, const step& combination);

  const envelope& envelope_of(std::size_t step) const { return envelopes_.at(step); }
  void release_envelope(std::size_t step) { envelopes_.erase(step); }

 private:
  static std::vector<std::size_t> needed_by(const model& m, const step& combination);

  envelope_contents wanted_;
  std::vector<int> needed_;  // by step: how many combinations are still to take it
  std::map<std::size_t, static_solution> solutions_;
  std::map<std::size_t, envelope> envelopes_;
  std::vector<std::vector<std::size_t>> taken_by_;  // by step: the envelopes that it belongs to
};

}  // namespace solver

#endif
