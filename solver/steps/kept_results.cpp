// kept_results.cpp: counts who still needs a solution.
#include "steps/kept_results.h"

#include "model/base_step.h"
#include "system/ranks.h"

namespace solver {

namespace {

std::size_t index_of(const model& m, const step& s) { return number_of(m, s) - 1; }

}  // namespace

// Its terms, and the state on which they stand.
std::vector<std::size_t> kept_results::needed_by(const model& m, const step& combination) {
  std::vector<std::size_t> all;
  for (const combined_step& term : combination.combined) all.push_back(subscript(term.step));
  const step* const base = base_step(m, combination);
  if (base != nullptr) all.push_back(index_of(m, *base));
  return all;
}

kept_results::kept_results(const model& m, const envelope_contents& wanted)
    : wanted_(wanted), needed_(m.steps.size(), 0), taken_by_(m.steps.size()) {
  for (std::size_t i = 0; i < m.steps.size(); ++i) {
    const step& s = m.steps[i];
    if (s.kind == step_kind::COMBINATION) {
      for (const std::size_t each : needed_by(m, s)) ++needed_[each];
    }
    if (s.kind == step_kind::ENVELOPE) {
      for (const combined_step& member : s.combined) taken_by_[subscript(member.step)].push_back(i);
    }
  }
}

void kept_results::solved(const model& m, const step& s, const static_solution& solution, const step_results& results) {
  const std::size_t index = index_of(m, s);
  if (needed_[index] > 0) solutions_.emplace(index, solution);
  if (!is_first_rank()) return;  // who has all results
  for (const std::size_t each : taken_by_[index]) {
    take_step(m, number_of(index), solution, results, wanted_, envelopes_[each]);
  }
}

void kept_results::release(const model& m, const step& combination) {
  for (const std::size_t each : needed_by(m, combination)) {
    if (--needed_[each] == 0) solutions_.erase(each);
  }
}

}  // namespace solver
