// base_step.h: on the end of which step a step with PERTURBATION stands.
#ifndef FINITES_SOLVER_BASE_STEP_H
#define FINITES_SOLVER_BASE_STEP_H

#include <cstddef>

#include "model/model.h"

namespace solver {

// Frequencies and buckling factors are those of small motions about a state; the structure does not move on to another
// state.
inline bool ends_in_a_state(const step& s) {
  const bool small_motions = s.kind == step_kind::FREQUENCY || s.kind == step_kind::BUCKLE;
  return !s.perturbation && !small_motions;
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
  return s.perturbation ? last_state_before(m, s) : nullptr;
}

inline std::size_t number_of(const model& m, const step& s) { return subscript(&s - m.steps.data()) + 1; }

}  // namespace solver

#endif
