// own_conditions.cpp: *BOUNDARY, OP=NEW in a step: it takes away every condition that stood before, so that those
// before the first *STEP do not hold in it.
#include <algorithm>
#include <unordered_set>

#include "deck/fields.h"
#include "deck/keywords.h"

namespace solver::deck {

void check_boundary_options(const build& b, const card& c) {
  const std::string type = squeezed(c.value("TYPE")), load_case = squeezed(c.value("LOADCASE"));
  if (!type.empty() && type != "DISPLACEMENT") {
    b.deck.fail(c, "TYPE=" + c.value("TYPE") + " is not supported: nothing moves in time; DISPLACEMENT is");
  }
  if (load_case.empty()) return;
  if (load_case != "1" && load_case != "2") {
    b.deck.fail(c, "LOAD CASE is 1 or 2, not " + in_quotes(c.value("LOADCASE")));
  }
  if (!b.inside_step || b.result.steps.back().kind != step_kind::BUCKLE) {
    b.deck.fail(c, "LOAD CASE belongs to a step with *BUCKLE, below it");
  }
}

// The step that is open holds by its own conditions alone.
void open_own_conditions(build& b, const card& c) {
  const int now = count_of(b.result.steps) - 1;
  const bool loaded = std::any_of(b.result.steps.begin(), b.result.steps.end() - 1,
                                  [](const step& s) { return s.kind == step_kind::STATIC && !s.perturbation; });
  if (b.result.steps.back().perturbation && loaded) {
    b.deck.fail(c,
                "OP=NEW is not supported in a step with PERTURBATION that stands on a loaded state: what holds the "
                "state holds in the step");
  }
  if (b.own_steps.count(now) == 0 && !b.result.steps.back().boundaries.empty()) {
    b.deck.fail(c, "OP=NEW stands below another *BOUNDARY of the step: it belongs on the first one");
  }
  b.own_steps.insert(now);
}

static long long key_of(int node, int dof) { return 6LL * node + dof; }

static std::unordered_set<long long> freedoms_of(const std::vector<boundary_condition>& list) {
  std::unordered_set<long long> held;
  for (const boundary_condition& c : list) {
    for (int dof = c.first_dof; dof <= c.last_dof; ++dof) held.insert(key_of(c.node, dof));
  }
  return held;
}

// The conditions before the first step go to each step that keeps them, where it has no value of its own.
static void move_into(const std::vector<boundary_condition>& head, step& s) {
  const std::unordered_set<long long> own = freedoms_of(s.boundaries);
  std::vector<boundary_condition> moved;
  for (const boundary_condition& c : head) {
    for (int dof = c.first_dof; dof <= c.last_dof; ++dof) {
      if (own.count(key_of(c.node, dof)) > 0) continue;
      moved.push_back(c);
      moved.back().first_dof = moved.back().last_dof = dof;
    }
  }
  s.boundaries.insert(s.boundaries.begin(), moved.begin(), moved.end());
}

// In a step with PERTURBATION a condition of the head stays where the loaded state has put it, which a condition of
// the step does not say.
static void check_perturbed(const build& b) {
  const bool zero = std::all_of(b.result.boundaries.begin(), b.result.boundaries.end(),
                                [](const boundary_condition& c) { return c.value == 0; });
  if (zero) return;
  for (const step& s : b.result.steps) {
    if (!s.perturbation) continue;
    b.deck.fail(s.file, s.line, "*STEP",
                "a step with PERTURBATION beside one with *BOUNDARY, OP=NEW: conditions before the first *STEP with "
                "values other than 0 are not supported then; write them in the steps");
  }
}

void keep_second_case(build& b, const card& c, std::size_t before) {
  const std::vector<linear_constraint>& turned = b.result.steps.back().constraints;
  if (!turned.empty() && turned.back().keyword == "*BOUNDARY" && turned.back().line > c.line) {
    b.deck.fail(c, "LOAD CASE=2 is not supported in axes of a *TRANSFORM");
  }
  std::vector<boundary_condition>& all = b.result.steps.back().boundaries;
  std::vector<boundary_condition>& second = b.second_cases[count_of(b.result.steps) - 1];
  const auto from = all.begin() + signed_index(before);
  second.insert(second.end(), from, all.end());
  all.erase(from, all.end());
}

// LOAD CASE=2 holds the shapes of a *BUCKLE, LOAD CASE=1 the state under its loads: here both are held alike.
static void check_second_cases(const build& b) {
  for (const auto& [number, second] : b.second_cases) {
    if (second.empty() || freedoms_of(second) == freedoms_of(b.result.steps[number].boundaries)) continue;
    b.deck.fail(second.front().file, second.front().line, "*BOUNDARY",
                "LOAD CASE=2 holds other degrees of freedom than LOAD CASE=1: the shapes of a *BUCKLE are held as the "
                "state under its loads; take the whole structure where its shapes are not symmetric");
  }
}

// A condition in turned axes is one between several freedoms, which does not move from step to step.
static void check_turned(const build& b) {
  for (const linear_constraint& c : b.result.constraints) {
    if (c.keyword != "*BOUNDARY") continue;
    b.deck.fail(c.file, c.line, "*BOUNDARY",
                "a condition in axes of a *TRANSFORM before the first *STEP, which a step takes away by OP=NEW, is not "
                "supported: write it in the steps");
  }
}

void settle_own_conditions(build& b) {
  check_second_cases(b);
  if (b.own_steps.empty()) return;
  check_turned(b);
  check_perturbed(b);
  for (int i = 0; i < count_of(b.result.steps); ++i) {
    if (b.own_steps.count(i) == 0) move_into(b.result.boundaries, b.result.steps[i]);
  }
  b.result.boundaries.clear();
}

}  // namespace solver::deck
