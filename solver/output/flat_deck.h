// flat_deck.h: a model as one deck: no includes, parts or aliases, every section by its constants, every load on its
// node or element.
#ifndef FINITES_SOLVER_FLAT_DECK_H
#define FINITES_SOLVER_FLAT_DECK_H

#include <string>

#include "model/model.h"

namespace solver {

// Solving the deck gives the answers of the model. Names of sets, materials, orientations and steps stay. The text is
// read again and its model compared. Throws deck_error for what no card can say.
std::string flat_deck(const model& m);

}  // namespace solver

#endif
