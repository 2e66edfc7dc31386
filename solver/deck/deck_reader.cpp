// deck_reader.cpp: from the text of a deck to a model, stage by stage.
#include "deck/deck_reader.h"

#include <utility>

#include "deck/assembly.h"
#include "deck/build.h"
#include "deck/cards.h"
#include "deck/fields.h"
#include "deck/keywords.h"
#include "deck/named_edges.h"
#include "deck/note_folding.h"
#include "deck/noted_cards.h"

namespace solver {

static void check_after(deck::build& b, deck::stage done) {
  switch (done) {
    case deck::stage::ELEMENTS: return deck::check_mesh(b);
    case deck::stage::SECTIONS: return deck::check_sections(b);
    case deck::stage::CONDITIONS: return deck::check_coupling(b);
    case deck::stage::STEPS: return deck::check_steps(b);
    case deck::stage::NODES:
    case deck::stage::SETS:
    case deck::stage::SURFACES:
    case deck::stage::MATERIALS: return;
  }
}

// The card that a card of a material, a beam section or a coupling belongs to; itself for all others.
static std::size_t owner_of(const std::vector<const deck::keyword_rule*>& rules, std::size_t i) {
  const deck::place where = rules[i]->where;
  const bool below = where == deck::place::MATERIAL || where == deck::place::BEAM || where == deck::place::COUPLING;
  if (!below) return i;
  while (i > 0 && rules[i] != nullptr && rules[i]->where == where) --i;
  return i;
}

// False when it is not read: it is in error, or what it belongs to is.
static bool read_card(deck::build& b, const std::vector<const deck::keyword_rule*>& rules, std::vector<char>& sound,
                      std::size_t i) {
  const deck::card& c = b.deck.cards[i];
  if (!sound[owner_of(rules, i)]) return false;
  deck::note_idle_parameters(b, c);
  if (b.errors.attempt([&] { rules[i]->read(b, c); })) return true;
  b.lose(c);
  return false;
}

// The cards of a step whose *STEP is in error are read all the same.
static void open_step(deck::build& b, const deck::card& c) {
  step s;
  s.line = c.line;
  s.file = c.file;
  b.result.steps.push_back(s);
  b.inside_step = true;
}

static model build_model(deck::card_deck cards, const std::string& name, const reading& how) {
  const std::string left_out = deck::leave_out_named_edges(cards);
  deck::build b(cards);
  b.quadratic.refine = how.refine;
  b.errors = cards.errors;
  b.result.deck = name;
  b.result.files = cards.files;
  for (const deck::deck_note& each : cards.notes) {
    b.result.notes.push_back(place_of(b.result, each.file, each.line) + ": " + each.keyword + ": " + each.text);
  }
  if (!left_out.empty()) b.result.notes.push_back(left_out);
  try {
    const std::vector<const deck::keyword_rule*> rules = deck::check_structure(cards, b.errors);
    std::vector<char> sound(rules.size());
    for (std::size_t i = 0; i < rules.size(); ++i) {
      sound[i] = rules[i] != nullptr ? 1 : 0;
      if (rules[i] == nullptr) b.lose(cards.cards[i]);
    }
    for (const deck::stage now : deck::STAGES) {
      if (now == deck::stage::STEPS) deck::apply_amplitudes(b, cards);
      for (std::size_t i = 0; i < rules.size(); ++i) {
        if (rules[i] != nullptr && rules[i]->when == now) sound[i] = read_card(b, rules, sound, i) ? 1 : 0;
        const bool step = now == deck::stage::STEPS && deck::squeezed(cards.cards[i].keyword) == "*STEP";
        if (step && !sound[i]) open_step(b, cards.cards[i]);
      }
      check_after(b, now);
    }
  } catch (const deck::error_list::too_many&) {
  }
  b.errors.raise(cards);
  deck::fold_notes(b.result.notes);
  b.result.nsets = b.nodes.take_sets();
  b.result.elsets = b.elements.take_sets();
  return std::move(b.result);
}

model read_deck_text(const std::string& text, const std::string& name, const reading& how) {
  return build_model(deck::flat_cards(deck::cut_into_cards({text, "", true_path(name)}, name, how.source)), name, how);
}

model read_deck(const std::string& path, const reading& how) {
  file_text found = how.source(path);
  if (!found.fault.empty()) throw deck_error(path, 0, "", "the file cannot be opened: " + found.fault);
  return build_model(deck::flat_cards(deck::cut_into_cards(std::move(found), path, how.source)), path, how);
}

}  // namespace solver
