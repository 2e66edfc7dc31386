// noted_cards.h: keywords and parameters of other programs that have no effect on what is computed here: they are read
// over, with a note.
#ifndef FINITES_SOLVER_DECK_NOTED_CARDS_H
#define FINITES_SOLVER_DECK_NOTED_CARDS_H

#include <string>

#include "deck/build.h"

namespace solver::deck {

struct keyword_rule;

// Null for every other keyword (squeezed).
const keyword_rule* find_noted_rule(const std::string& keyword);

// Why a parameter has no effect; null: it may have one.
const char* without_effect(const std::string& keyword, const std::string& parameter);

// A note for each parameter of the card that has no effect.
void note_idle_parameters(build& b, const card& c);

}  // namespace solver::deck

#endif
