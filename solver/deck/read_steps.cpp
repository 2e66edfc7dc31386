// read_steps.cpp: *HEADING, *STEP, *STATIC, *FREQUENCY, *BUCKLE, *END STEP, *LOAD CASE, and the output requests.
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
  if (c.further_case) b.further_cases.insert(count_of(b.result.steps));
  b.result.steps.push_back(s);
  b.inside_step = true;
}

void read_static(build& b, const card& c) {
  b.result.steps.back().elastic = c.find("ELASTIC") != nullptr;
  for (const parameter& p : c.parameters) {
    if (p.name != "DIRECT" && p.name != "SOLVER") continue;
    b.note(c, p.name + " has no effect: a linear step is solved at once, by the factorisation of this solver");
  }
  read_static_line(b, c);
}

static void read_modes(build& b, const card& c, step_kind kind) {
  step& s = b.result.steps.back();
  s.kind = kind;
  kind == step_kind::FREQUENCY ? read_frequency_line(b, c, s) : read_buckle_line(b, c, s);
  if (s.p_delta) b.deck.fail(c, "PDELTA belongs to a step with *STATIC");
}

void read_frequency(build& b, const card& c) {
  read_modes(b, c, step_kind::FREQUENCY);
  read_mass_choice(b, c);
}
void read_buckle(build& b, const card& c) { read_modes(b, c, step_kind::BUCKLE); }

void read_end_step(build& b, const card&) { b.inside_step = false; }

// Load cases have been written out as steps (load_cases.h), and what is wrong with them has been told.
void read_load_case(build& /*b*/, const card& /*c*/) {}

void note_output_request(build& b, const card& c) {
  b.note(c, "this solver writes its results in one fixed form; the request has no effect");
}

}  // namespace solver::deck
