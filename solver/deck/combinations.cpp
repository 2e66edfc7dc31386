// combinations.cpp: *COMBINATION and *ENVELOPE. They become steps behind those of the deck; what their lines name is
// looked up when all are there. A combination of combinations takes their steps, with the products of the factors.
#include <algorithm>
#include <map>

#include "deck/fields.h"
#include "deck/keywords.h"
#include "model/base_step.h"

namespace solver::deck {

namespace {

using term_of_deck = pending_combination::term;

pending_combination begin_combination(const build& b, const card& c, step_kind kind) {
  checked_name(b, c, c.value("NAME"));
  pending_combination result;
  result.made.kind = kind;
  result.made.name = c.value("NAME");
  result.made.line = c.line;
  result.made.file = c.file;
  return result;
}

term_of_deck term_in(const data_fields& row, int i) {
  if (!row.has(i)) row.fail("a name or a number of a step is missing");
  return {std::string(row.text(i)), 1, row.line().line, row.line().file};
}

}  // namespace

void read_combination(build& b, const card& c) {
  pending_combination result = begin_combination(b, c, step_kind::COMBINATION);
  b.each_line(c, [&](data_fields& row) {
    if (row.count() < 2 || row.count() % 2 != 0) {
      row.fail("expected: name or number of a step or load case, factor, and so on, in pairs");
    }
    for (int i = 0; i < row.count(); i += 2) {
      result.terms.push_back(term_in(row, i));
      result.terms.back().factor = row.real(i + 1, "factor");
    }
  });
  b.combinations.push_back(result);
}

void read_envelope(build& b, const card& c) {
  pending_combination result = begin_combination(b, c, step_kind::ENVELOPE);
  b.each_line(c, [&](data_fields& row) {
    for (int i = 0; i < row.count(); ++i) result.terms.push_back(term_in(row, i));
  });
  b.combinations.push_back(result);
}

namespace {

const char* keyword_of(const step& s) { return s.kind == step_kind::COMBINATION ? "*COMBINATION" : "*ENVELOPE"; }

class combination_reader {
 public:
  explicit combination_reader(build& b) : build_(b), steps_(b.result.steps), of_deck_(count_of(steps_)) {}
  bool run();

 private:
  void append(const pending_combination& p);
  void resolve(step& s, const pending_combination& p);
  void resolve_combination(step& s, const pending_combination& p);
  void resolve_envelope(step& s, const pending_combination& p);
  int step_of(const step& s, const term_of_deck& t) const;
  int step_by_number(const step& s, const term_of_deck& t) const;
  void check_kind(const step& s, const term_of_deck& t, int named) const;
  void check_once(const step& s, const term_of_deck& t, int named, std::vector<int>& seen) const;
  [[noreturn]] void fail(const step& s, const term_of_deck& t, const std::string& text) const {
    build_.deck.fail(t.file, t.line, keyword_of(s), text);
  }

  build& build_;
  numbered<step>& steps_;
  const int of_deck_;                              // how many steps the deck has
  std::map<std::string, std::vector<int>> named_;  // in upper case
};

void combination_reader::append(const pending_combination& p) {
  const auto found = named_.find(upper(p.made.name));
  if (found != named_.end()) {
    const step& first = steps_[found->second.front()];
    build_.deck.fail(p.made.file, p.made.line, keyword_of(p.made),
                     "the name " + in_quotes(p.made.name) + " is that of step " +
                         std::to_string(found->second.front() + 1) + " already (" +
                         place_of(build_.result, first.file, first.line) + "): take another");
  }
  named_[upper(p.made.name)] = {count_of(steps_)};
  steps_.push_back(p.made);
}

int combination_reader::step_by_number(const step& s, const term_of_deck& t) const {
  int number = 0;
  if (parse_integer(t.name, number) != number_fault::NONE) {
    fail(s, t,
         "there is no step, load case or combination " + in_quotes(t.name) +
             "; a step without a name is named by its number");
  }
  if (number < 1 || number > count_of(steps_)) {
    fail(s, t,
         "there is no step " + std::to_string(number) + ": the deck has " + std::to_string(of_deck_) +
             ", each load case counted as one, and " + std::to_string(count_of(steps_) - of_deck_) +
             " combinations and envelopes behind them");
  }
  return number - 1;
}

int combination_reader::step_of(const step& s, const term_of_deck& t) const {
  const auto found = named_.find(upper(t.name));
  if (found == named_.end()) return step_by_number(s, t);
  if (found->second.size() > 1) {
    fail(s, t,
         "the name " + in_quotes(t.name) + " is that of steps " + std::to_string(found->second[0] + 1) + " and " +
             std::to_string(found->second[1] + 1) + ": give the number");
  }
  return found->second.front();
}

void combination_reader::check_kind(const step& s, const term_of_deck& t, int named) const {
  const step& term = steps_[named];
  if (term.kind == step_kind::ENVELOPE) {
    fail(s, t, in_quotes(t.name) + " is an envelope, whose values belong to several combinations: name these");
  }
  if (term.kind == step_kind::STATIC || term.kind == step_kind::COMBINATION) return;
  fail(s, t,
       "step " + std::to_string(named + 1) + " has no *STATIC: " +
           (s.kind == step_kind::COMBINATION ? "a combination adds the results of linear static steps"
                                             : "an envelope spans static steps and combinations"));
}

void combination_reader::check_once(const step& s, const term_of_deck& t, int named, std::vector<int>& seen) const {
  if (std::find(seen.begin(), seen.end(), named) != seen.end()) {
    fail(s, t,
         in_quotes(t.name) + " stands there already" +
             (s.kind == step_kind::COMBINATION ? ": give it once, with the sum of the factors" : ""));
  }
  seen.push_back(named);
}

void add_term(step& s, const combined_step& term) {
  const auto at = std::find_if(s.combined.begin(), s.combined.end(),
                               [&](const combined_step& each) { return each.step == term.step; });
  if (at == s.combined.end()) {
    s.combined.push_back(term);
  } else {
    at->factor += term.factor;
  }
}

void combination_reader::resolve_combination(step& s, const pending_combination& p) {
  const int own = number_of(&s - steps_.data());
  std::vector<int> seen;
  for (const term_of_deck& t : p.terms) {
    const int named = step_of(s, t);
    check_kind(s, t, named);
    check_once(s, t, named, seen);
    if (named == own) fail(s, t, "the combination takes itself");
    if (named > own) fail(s, t, "the combination " + in_quotes(t.name) + " stands below: put it above this one");
    if (steps_[named].kind == step_kind::STATIC) {
      add_term(s, {named, t.factor});
      continue;
    }
    if (steps_[named].combined.empty()) throw consequence{};
    for (const combined_step& inner : steps_[named].combined) add_term(s, {inner.step, t.factor * inner.factor});
  }
}

void combination_reader::resolve_envelope(step& s, const pending_combination& p) {
  std::vector<int> seen;
  for (const term_of_deck& t : p.terms) {
    const int named = step_of(s, t);
    check_kind(s, t, named);
    check_once(s, t, named, seen);
  }
  for (int i = of_deck_; i < count_of(steps_) && p.terms.empty(); ++i) {
    if (steps_[i].kind == step_kind::COMBINATION) seen.push_back(i);
  }
  if (seen.empty()) {
    build_.deck.fail(s.file, s.line, "*ENVELOPE",
                     "it spans nothing: no data line names a step, and the deck has no *COMBINATION");
  }
  for (const int each : seen) s.combined.push_back({each, 1});
}

void combination_reader::resolve(step& s, const pending_combination& p) {
  build_.errors.attempt([&] { s.kind == step_kind::COMBINATION ? resolve_combination(s, p) : resolve_envelope(s, p); });
}

bool combination_reader::run() {
  for (int i = 0; i < of_deck_; ++i) {
    if (!steps_[i].name.empty()) named_[upper(steps_[i].name)].push_back(i);
  }
  for (const pending_combination& p : build_.combinations) build_.errors.attempt([&] { append(p); });
  if (!build_.errors.empty()) return false;
  for (std::size_t i = 0; i < build_.combinations.size(); ++i) {
    resolve(steps_[subscript(of_deck_) + i], build_.combinations[i]);
  }
  return build_.errors.empty();
}

}  // namespace

void append_combinations(build& b) {
  const std::size_t before = b.result.steps.size();
  if (b.errors.empty() && !combination_reader(b).run()) b.result.steps.resize(before);
}

}  // namespace solver::deck
