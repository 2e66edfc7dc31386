// shared_deck.h: the deck of all processes of a run.
#ifndef FINITES_SOLVER_SHARED_DECK_H
#define FINITES_SOLVER_SHARED_DECK_H

#include <string>

#include "model/model.h"
#include "options.h"

namespace solver {

// The deck of the command line. The first process reads its files and gives their text to the others, so that it need
// not lie on their machines, and all have the same. To be called by all processes.
model read_shared_deck(const options& wanted);

// Length and sum of each file of the deck, as the first process finds them: by what one deck is told from another. To
// be called by all processes.
std::string deck_sums(const model& m);

}  // namespace solver

#endif
