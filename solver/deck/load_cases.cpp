// load_cases.cpp: *LOAD CASE within a step. Each case becomes a step of its own with the name of the case: the cards of
// the step outside of all cases, and those of its own. Cards that stand in several steps then have copies of their data
// lines, since an amplitude changes them in place.
#include "deck/load_cases.h"

#include <algorithm>
#include <iterator>
#include <set>

#include "deck/build.h"
#include "deck/fields.h"

namespace solver::deck {

namespace {

bool opens(const card& c) { return squeezed(c.keyword) == "*LOADCASE"; }
bool closes(const card& c) { return squeezed(c.keyword) == "*ENDLOADCASE"; }

// The cards of a step between *STEP and *END STEP, and those between which each of its cases stands.
struct step_range {
  std::size_t begin = 0, end = 0;  // *STEP, *END STEP
  std::vector<std::pair<std::size_t, std::size_t>> cases;
};

bool is_procedure(const std::string& keyword) {
  static const char* const WORDS[] = {"*STATIC", "*FREQUENCY", "*BUCKLE", "*PUSHOVER", "*ELASTOPLASTIC"};
  return std::any_of(std::begin(WORDS), std::end(WORDS), [&](const char* word) { return keyword == word; });
}

class case_writer {
 public:
  explicit case_writer(card_deck& deck) : deck_(deck) {}
  void run();

 private:
  bool find_cases(step_range& range);
  void check_names(const step_range& range) const;
  void check_procedure(const step_range& range) const;
  void silence(const step_range& range);
  void write(const step_range& range);
  void write_case(const step_range& range, std::size_t which);
  void copy_lines(card& c);

  card_deck& deck_;
  std::vector<card> flat_;
};

// False where the step has none.
bool case_writer::find_cases(step_range& range) {
  const card* open = nullptr;
  for (std::size_t i = range.begin; i <= range.end; ++i) {
    const card& c = deck_.cards[i];
    if (closes(c) && open == nullptr) deck_.fail(c, "no *LOAD CASE is open");
    if (closes(c)) {
      range.cases.back().second = i;
      open = nullptr;
    }
    if (opens(c) && open != nullptr) {
      deck_.fail(*open, "it has no *END LOAD CASE before the *LOAD CASE of line " + std::to_string(c.line));
    }
    if (opens(c)) {
      open = &c;
      range.cases.emplace_back(i, range.end);
    }
  }
  // The only case of a step goes to its end: the card names the step.
  if (open != nullptr && range.cases.size() > 1) {
    deck_.fail(*open, "it has no *END LOAD CASE before the end of the step");
  }
  return !range.cases.empty();
}

void case_writer::check_names(const step_range& range) const {
  std::set<std::string> names;
  for (const auto& [begin, end] : range.cases) {
    const card& c = deck_.cards[begin];
    if (c.broken) throw consequence{};
    const std::string name = c.value("NAME");
    if (name.empty()) deck_.fail(c, "the parameter NAME is missing");
    if (!names.insert(upper(name)).second) {
      deck_.fail(c, "the step has a load case " + in_quotes(name) + " already");
    }
    for (const parameter& p : c.parameters) {
      if (p.name != "NAME") deck_.fail(c, "the parameter " + in_quotes(p.written) + " is not known; known here: NAME");
    }
    if (c.count > 0) {
      deck_.fail(c, *deck_.begin_of(c), "no data line belongs here: *CLOAD, *DLOAD and so on follow with theirs");
    }
  }
}

void case_writer::check_procedure(const step_range& range) const {
  const card& first = deck_.cards[range.cases.front().first];
  bool is_static = false;
  for (std::size_t i = range.begin; i < range.end; ++i) {
    const card& c = deck_.cards[i];
    const std::string keyword = squeezed(c.keyword);
    if (!is_procedure(keyword)) continue;
    is_static = keyword == "*STATIC";
    if (!is_static) deck_.fail(first, "load cases belong to a step with *STATIC, and this one has " + c.keyword);
    const bool named_alone = range.cases.size() == 1 && range.cases[0].second == range.end;
    for (const auto& [begin, end] : range.cases) {
      if (begin < i && i < end && !named_alone) {
        deck_.fail(c, "it stands in a *LOAD CASE: it belongs to the whole step, above its load cases");
      }
    }
  }
  if (!is_static) deck_.fail(first, "load cases belong to a step with *STATIC");
}

// What is in error is not read any more.
void case_writer::silence(const step_range& range) {
  for (std::size_t i = range.begin; i <= range.end; ++i) {
    if (opens(deck_.cards[i]) || closes(deck_.cards[i])) deck_.cards[i].broken = true;
  }
}

void case_writer::copy_lines(card& c) {
  const std::size_t first = deck_.lines.size();
  for (std::size_t l = 0; l < c.count; ++l) deck_.lines.push_back(data_line(deck_.lines[c.first + l]));
  c.first = first;
}

// The name of a case is that of its step; messages about the step show the line of the case.
card named_step(card step, const card& of) {
  const auto is_name = [](const parameter& p) { return p.name == "NAME"; };
  const auto at = std::find_if(step.parameters.begin(), step.parameters.end(), is_name);
  const parameter name = *std::find_if(of.parameters.begin(), of.parameters.end(), is_name);
  at == step.parameters.end() ? step.parameters.push_back(name) : void(*at = name);
  step.line = of.line;
  step.file = of.file;
  return step;
}

void case_writer::write_case(const step_range& range, std::size_t which) {
  std::size_t next = 0;
  for (std::size_t i = range.begin; i <= range.end; ++i) {
    if (next < range.cases.size() && i == range.cases[next].first) {
      const auto [begin, end] = range.cases[next++];
      if (next - 1 != which) i = end == range.end ? end - 1 : end;
      continue;
    }
    if (closes(deck_.cards[i])) continue;
    card c = deck_.cards[i];
    if (i == range.begin) {
      c = named_step(c, deck_.cards[range.cases[which].first]);
      c.further_case = which > 0;
    }
    if (which > 0) copy_lines(c);
    flat_.push_back(std::move(c));
  }
}

void case_writer::write(const step_range& range) {
  for (std::size_t which = 0; which < range.cases.size(); ++which) write_case(range, which);
}

void case_writer::run() {
  for (std::size_t i = 0; i < deck_.cards.size(); ++i) {
    step_range range{i, i, {}};
    if (squeezed(deck_.cards[i].keyword) == "*STEP" && !deck_.cards[i].broken) {
      const auto ends = [](const card& c) {
        return squeezed(c.keyword) == "*ENDSTEP" || squeezed(c.keyword) == "*STEP";
      };
      const auto end = std::find_if(deck_.cards.begin() + signed_index(i) + 1, deck_.cards.end(), ends);
      const bool closed = end != deck_.cards.end() && squeezed(end->keyword) == "*ENDSTEP";
      if (closed) range.end = subscript(end - deck_.cards.begin());
    }
    bool cases = false;
    const bool sound = range.end == range.begin || deck_.errors.attempt([&] {
      cases = find_cases(range);
      if (!cases) return;
      check_names(range);
      check_procedure(range);
    });
    if (!sound) silence(range);
    if (sound && cases) {
      write(range);
    } else {
      const auto begin = deck_.cards.begin();
      flat_.insert(flat_.end(), begin + signed_index(range.begin), begin + signed_index(range.end) + 1);
    }
    i = range.end;
  }
  deck_.cards.swap(flat_);
}

}  // namespace

void write_out_load_cases(card_deck& deck) {
  if (std::any_of(deck.cards.begin(), deck.cards.end(), [](const card& c) { return opens(c) || closes(c); })) {
    case_writer(deck).run();
  }
}

}  // namespace solver::deck
