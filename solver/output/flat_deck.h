// flat_deck.h: a model as one deck: no includes, parts or aliases, every section by its constants, every load on its
// node or element.
#ifndef FINITES_SOLVER_FLAT_DECK_H
#define FINITES_SOLVER_FLAT_DECK_H

#include <ostream>

#include "model/model.h"

namespace solver {

// Solving the deck gives the answers of the model. Names of sets, materials, orientations and steps stay. Throws
// deck_error, by the line of the deck, for what no card can say.
void write_flat_deck(std::ostream& out, const model& m);

}  // namespace solver

#endif
