// deck_reader.cpp: from the text of a deck to a model, stage by stage.
#include "deck/deck_reader.h"

#include <utility>

#include "deck/build.h"
#include "deck/cards.h"
#include "deck/keywords.h"

namespace solver {

static void check_after(deck::build& b, deck::stage done) {
  switch (done) {
    case deck::stage::ELEMENTS: return deck::check_mesh(b);
    case deck::stage::SECTIONS: return deck::check_sections(b);
    case deck::stage::STEPS: return deck::check_steps(b);
    case deck::stage::NODES:
    case deck::stage::SETS:
    case deck::stage::MATERIALS: return;
  }
}

static model build_model(const deck::card_deck& cards, const std::string& name) {
  const std::vector<const deck::keyword_rule*> rules = deck::check_structure(cards);
  deck::build b(cards);
  b.result.deck = name;
  b.result.files = cards.files;
  for (const deck::stage now : deck::STAGES) {
    for (std::size_t i = 0; i < rules.size(); ++i) {
      if (rules[i]->when == now) rules[i]->read(b, cards.cards[i]);
    }
    check_after(b, now);
  }
  b.result.nsets = b.nodes.take_sets();
  b.result.elsets = b.elements.take_sets();
  return std::move(b.result);
}

model read_deck_text(const std::string& text, const std::string& name) {
  return build_model(deck::cut_into_cards(text, name), name);
}

model read_deck(const std::string& path) {
  std::string text;
  if (!deck::read_file(path, text)) throw deck_error(path, 0, "", "the file cannot be opened");
  return build_model(deck::cut_into_cards(std::move(text), path), path);
}

}  // namespace solver
