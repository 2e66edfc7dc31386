// load_cases.h: a step with several *LOAD CASE written out as one step for each.
#ifndef FINITES_SOLVER_DECK_LOAD_CASES_H
#define FINITES_SOLVER_DECK_LOAD_CASES_H

#include "deck/cards.h"

namespace solver::deck {

// A deck without such cards stays as it is. What is wrong with one is in deck.errors.
void write_out_load_cases(card_deck& deck);

}  // namespace solver::deck

#endif
