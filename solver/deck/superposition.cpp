// superposition.cpp: whether the results of steps may be added. They may where all of them are linear answers of one
// and the same structure: the same stiffness, about the same state, with the same degrees of freedom held and the same
// conditions. Prescribed displacements and the values of conditions are then loads like others.
#include <algorithm>
#include <cmath>
#include <deque>
#include <map>
#include <utility>

#include "deck/fields.h"
#include "deck/keywords.h"
#include "elements/load_case.h"
#include "model/base_step.h"
#include "model/temperatures.h"
#include "model/yielding.h"

namespace solver::deck {

namespace {

bool same_terms(const linear_constraint& a, const linear_constraint& b) {
  return std::equal(a.terms.begin(), a.terms.end(), b.terms.begin(), b.terms.end(),
                    [](const constraint_term& x, const constraint_term& y) {
                      return x.node == y.node && x.dof == y.dof && x.factor == y.factor;
                    });
}

bool same_conditions(const load_case& a, const load_case& b) {
  return std::equal(a.conditions.begin(), a.conditions.end(), b.conditions.begin(), b.conditions.end(), same_terms);
}

class superposition {
 public:
  explicit superposition(build& b) : build_(b), m_(b.result) {}
  void check(const step& s);

 private:
  void check_term(const step& s, int term);
  void check_like(const step& s, const step& first, const step& other);
  void check_held(const step& s, const step& first, const step& other);
  void check_expansion(const step& s) const;
  void check_envelope(const step& s) const;
  void note_head(const step& s);
  const load_case& conditions_of(const step& s);
  std::string named(const step& s) const {
    return "step " + std::to_string(number_of(m_, s)) + (s.name.empty() ? "" : " (" + s.name + ")");
  }
  [[noreturn]] void fail(const step& s, const std::string& text) const {
    build_.deck.fail(s.file, s.line, s.kind == step_kind::COMBINATION ? "*COMBINATION" : "*ENVELOPE", text);
  }

  build& build_;
  model& m_;
  std::deque<load_case> known_;  // one for each set of conditions
  std::map<const step*, const load_case*> of_;
};

// The loads themselves are not kept: many steps have the same conditions.
const load_case& superposition::conditions_of(const step& s) {
  const auto found = of_.find(&s);
  if (found != of_.end()) return *found->second;
  load_case loads = gather_load_case(m_, s, base_step(m_, s));
  const auto same = std::find_if(known_.begin(), known_.end(), [&](const load_case& each) {
    return each.prescribed == loads.prescribed && same_conditions(each, loads);
  });
  if (same != known_.end()) return *(of_[&s] = &*same);
  loads.element.clear();
  loads.nodal_load.clear();
  known_.push_back(std::move(loads));
  return *(of_[&s] = &known_.back());
}

void superposition::check_held(const step& s, const step& first, const step& other) {
  const load_case &a = conditions_of(first), &b = conditions_of(other);
  for (std::size_t f = 0; f < a.prescribed.size(); ++f) {
    if (a.prescribed[f] == b.prescribed[f]) continue;
    const step &holds = a.prescribed[f] ? first : other, &leaves = a.prescribed[f] ? other : first;
    fail(s, named(holds) + " holds " + direction_name(number_of(f % DIRECTIONS)) + " of " +
                node_name(m_, number_of(f / DIRECTIONS)) + " and " + named(leaves) +
                " does not: results of different supports cannot be added; give the summed loads in a step of their "
                "own");
  }
  if (same_conditions(a, b)) return;
  fail(s, named(first) + " and " + named(other) +
              " have different conditions in turned axes: results of different supports cannot be added");
}

void superposition::check_term(const step& s, int term) {
  const step& t = m_.steps[term];
  if (t.p_delta) {
    fail(s, named(t) + " has PDELTA, which is not linear: give the summed loads in a step of their own with PDELTA");
  }
  if (follows_shells(m_, t) || follows_hinges(m_, t)) {
    fail(s, named(t) +
                " is not linear: material may yield in it; ELASTIC on its *STATIC makes it linear, a step of its own "
                "with the summed loads follows the yielding");
  }
  if (std::any_of(m_.elements.begin(), m_.elements.end(), [&](const element& e) { return is_cable(m_, e); })) {
    fail(s, "the model has cables, whose answer is not linear: give the summed loads in a step of their own");
  }
  const bool tensioned = std::any_of(m_.frame_sections.begin(), m_.frame_sections.end(),
                                     [](const frame_section& f) { return f.pretension != 0; });
  if (tensioned && base_step(m_, t) == nullptr) {
    fail(s,
         "the model has PRETENSION, which acts in every step and would count once with each factor: give it as a "
         "temperature of a step of its own, or the summed loads in a step of their own");
  }
}

void superposition::check_like(const step& s, const step& first, const step& other) {
  if (base_step(m_, first) != base_step(m_, other)) {
    fail(s, named(first) + " and " + named(other) +
                " do not stand on the same state: with PERTURBATION a step is the answer about the state that it "
                "stands on");
  }
  if (!have_same_constants(m_, first, other)) {
    fail(s, named(first) + " and " + named(other) +
                " have different temperatures, at which the materials have different constants: give the summed loads "
                "in a step of their own");
  }
  check_held(s, first, other);
}

// A strain that is not linear in the temperature counts once, as it is.
void superposition::check_expansion(const step& s) const {
  const bool curved = std::any_of(m_.materials.begin(), m_.materials.end(),
                                  [](const material& mat) { return mat.expansion_table.size() > 1; });
  if (!curved) return;
  int heated = 0;
  bool whole = true;
  for (const combined_step& term : s.combined) {
    if (m_.steps[term.step].temperatures.empty()) continue;
    ++heated;
    whole = whole && term.factor == 1;
  }
  if (heated == 0 || (heated == 1 && whole)) return;
  fail(s,
       "an *EXPANSION changes with the temperature, so that the strains of several temperatures, or of one times a "
       "factor other than 1, are not those of their sum: give the sum in a step of its own");
}

// What the head prescribes acts in every step.
void superposition::note_head(const step& s) {
  const step& first = m_.steps[s.combined.front().step];
  const auto moves = [](const auto& c) { return c.value != 0; };
  const bool moved = std::any_of(m_.boundaries.begin(), m_.boundaries.end(), moves) ||
                     std::any_of(m_.constraints.begin(), m_.constraints.end(), moves);
  double sum = 0;
  for (const combined_step& term : s.combined) sum += term.factor;
  if (!moved || base_step(m_, first) != nullptr || std::fabs(sum - 1) < 1e-9) return;
  m_.notes.push_back(place_of(m_, s.file, s.line) +
                     ": *COMBINATION: displacements that are prescribed before the first *STEP act in every step and "
                     "count with the sum of the factors, " +
                     text_of_real(sum));
}

void superposition::check_envelope(const step& s) const {
  const step& first = m_.steps[s.combined.front().step];
  for (const combined_step& member : s.combined) {
    const step& other = m_.steps[member.step];
    if (base_step(m_, first) == base_step(m_, other)) continue;
    fail(s, named(first) + " and " + named(other) +
                " do not stand on the same state: the answer to loads about a loaded state is an "
                "increment, which cannot be compared with the whole");
  }
}

void superposition::check(const step& s) {
  if (s.kind == step_kind::ENVELOPE) return check_envelope(s);
  const step& first = m_.steps[s.combined.front().step];
  for (const combined_step& term : s.combined) check_term(s, term.step);
  for (const combined_step& term : s.combined) check_like(s, first, m_.steps[term.step]);
  check_expansion(s);
  note_head(s);
}

}  // namespace

void check_combinations(build& b) {
  if (b.combinations.empty()) return;
  superposition rules(b);
  for (const step& s : b.result.steps) {
    if (solves_nothing(s)) b.errors.attempt([&] { rules.check(s); });
  }
}

}  // namespace solver::deck
