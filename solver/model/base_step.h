// base_step.h: on the end of which step a step with PERTURBATION stands.
#ifndef FINITES_SOLVER_BASE_STEP_H
#define FINITES_SOLVER_BASE_STEP_H

#include <cstddef>

#include "model/model.h"

namespace solver {

// What puts the results of other steps together solves nothing itself.
inline bool solves_nothing(const step& s) { return s.kind == step_kind::COMBINATION || s.kind == step_kind::ENVELOPE; }

// The step in whose place a combination or an envelope stands where only constants and states count: its first one.
inline const step& first_of(const model& m, const step& s) {
  const step* at = &s;
  while (solves_nothing(*at)) at = &m.steps[at->combined.front().step];
  return *at;
}

// Frequencies and buckling factors are those of small motions about a state; the structure does not move on to another
// state.
inline bool ends_in_a_state(const step& s) {
  const bool small_motions = s.kind == step_kind::FREQUENCY || s.kind == step_kind::BUCKLE;
  return !s.perturbation && !small_motions && !solves_nothing(s);
}

// The last step before this one that ends in a state; null for none.
inline const step* last_state_before(const model& m, const step& s) {
  const step* last = nullptr;
  for (const step& each : m.steps) {
    if (&each == &s) break;
    if (ends_in_a_state(each)) last = &each;
  }
  return last;
}

// What a step of the model stands on; null: the unloaded state.
inline const step* base_step(const model& m, const step& s) {
  const step& own = first_of(m, s);
  return own.perturbation ? last_state_before(m, own) : nullptr;
}

inline std::size_t number_of(const model& m, const step& s) { return subscript(&s - m.steps.data()) + 1; }

}  // namespace solver

#endif
