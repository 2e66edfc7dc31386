// deck_sums.h: by what one deck is told from another.
#ifndef FINITES_SOLVER_DECK_SUMS_H
#define FINITES_SOLVER_DECK_SUMS_H

#include <string>

#include "model/model.h"

namespace solver {

// Length and sum of each file of the deck, as text.
std::string deck_sums(const model& m);

// Each process reads the deck where it runs. Throws std::runtime_error, in all of them, where one has read other files
// than the first. To be called by all processes.
void require_same_deck(const model& m);

}  // namespace solver

#endif
