// constraint_checks.cpp: conditions and the steps that cannot take them.
#include "deck/keywords.h"
#include "model/yielding.h"

namespace solver::deck {

namespace {

bool is_path(const model& m, const step& s) {
  return s.kind == step_kind::PUSHOVER || s.kind == step_kind::ELASTOPLASTIC ||
         (s.kind == step_kind::STATIC && !s.perturbation && (follows_shells(m, s) || follows_hinges(m, s)));
}

bool goes_on(const step& s) {
  return (s.kind == step_kind::PUSHOVER && s.pushover.goes_on) ||
         (s.kind == step_kind::ELASTOPLASTIC && s.elastoplastic.goes_on);
}

// On a path all loads grow with one factor, from a state without displacements.
void check_values(const build& b, const std::vector<linear_constraint>& conditions) {
  for (const linear_constraint& condition : conditions) {
    if (condition.value == 0) continue;
    b.deck.fail(condition.file, condition.line, condition.keyword,
                "a prescribed displacement other than 0 has no place in a step in which hinges form or shells yield");
  }
}

}  // namespace

void check_constraints(const build& b) {
  const model& m = b.result;
  const step* before = nullptr;
  for (const step& s : m.steps) {
    if (is_path(m, s)) {
      check_values(b, m.constraints);
      check_values(b, s.constraints);
    }
    const bool other_structure = !s.constraints.empty() || (before != nullptr && !before->constraints.empty());
    if (goes_on(s) && other_structure) {
      b.deck.fail(s.file, s.line, "*STEP", "CONTINUE goes on with the same structure: no *BOUNDARY in either step");
    }
    before = &s;
  }
}

}  // namespace solver::deck
