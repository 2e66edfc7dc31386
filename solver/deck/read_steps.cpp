// read_steps.cpp: *HEADING, *STEP, *STATIC, *FREQUENCY, *BUCKLE, *END STEP, and the output requests.
#include "deck/fields.h"
#include "deck/keywords.h"

namespace solver::deck {

// The lines of a card as one text.
static std::string free_text(const build& b, const card& c) {
  std::string text;
  for (const data_line* l = b.deck.begin_of(c); l != b.deck.end_of(c); ++l) {
    if (!text.empty()) text += ' ';
    text += l->text;
  }
  return text;
}

void read_heading(build& b, const card& c) {
  if (!b.result.title.empty()) b.deck.fail(c, "the deck has a *HEADING already");
  b.result.title = free_text(b, c);
}

static void check_nlgeom(const build& b, const card& c) {
  const parameter* p = c.find("NLGEOM");
  if (p == nullptr || squeezed(p->value) == "NO") return;
  if (p->has_value && squeezed(p->value) != "YES") b.deck.fail(c, "NLGEOM is YES or NO, not " + in_quotes(p->value));
  b.deck.fail(c, "NLGEOM is not supported: a step is linear, its displacements are small");
}

static void check_increments(build& b, const card& c) {
  if (c.find("INC") == nullptr) return;
  int increments = 0;
  if (parse_integer(c.value("INC"), increments) != number_fault::NONE || increments < 1) {
    b.deck.fail(c, "INC: " + in_quotes(c.value("INC")) + " is not a number from 1");
  }
  b.note(c, "INC has no effect: a linear step is solved at once");
}

void read_step(build& b, const card& c) {
  check_nlgeom(b, c);
  check_increments(b, c);
  step s;
  s.name = c.value("NAME");
  s.title = free_text(b, c);
  s.p_delta = c.find("PDELTA") != nullptr;
  s.perturbation = c.find("PERTURBATION") != nullptr;
  s.line = c.line;
  s.file = c.file;
  b.result.steps.push_back(s);
  b.inside_step = true;
}

void read_static(build& b, const card& c) {
  b.result.steps.back().elastic = c.find("ELASTIC") != nullptr;
  for (const parameter& p : c.parameters) {
    if (p.name == "ELASTIC") continue;
    b.note(c, p.name + " has no effect: a linear step is solved at once, by the factorisation of this solver");
  }
  if (c.count == 0) return;
  const data_fields row = only_line(b, c, "*STATIC takes one");
  row.expect(1, 4, "first increment, length of the step, smallest and largest increment");
  for (int i = 0; i < row.count(); ++i) {
    if (row.has(i) && row.real(i, "time") < 0) row.fail("time: " + in_quotes(row.text(i)) + " is negative");
  }
  b.note(c, "the times have no effect: a linear step is solved at once");
}

static void read_modes(build& b, const card& c, step_kind kind, const char* what) {
  step& s = b.result.steps.back();
  const data_fields row = only_line(b, c, "it takes one");
  row.expect(1, 1, what, 1);
  s.kind = kind;
  s.modes = row.number(0, what);
  if (s.p_delta) b.deck.fail(c, "PDELTA belongs to a step with *STATIC");
}

void read_frequency(build& b, const card& c) {
  read_modes(b, c, step_kind::FREQUENCY, "number of frequencies");
  read_mass_choice(b, c);
}
void read_buckle(build& b, const card& c) { read_modes(b, c, step_kind::BUCKLE, "number of buckling factors"); }

void read_end_step(build& b, const card&) { b.inside_step = false; }

void note_output_request(build& b, const card& c) {
  b.note(c, "this solver writes its results in one fixed form; the request has no effect");
}

}  // namespace solver::deck
