// mesh_generators.h: *NGEN, *NFILL, *NCOPY, *ELGEN and *ELCOPY written out as *NODE, *ELEMENT and their sets.
#ifndef FINITES_SOLVER_DECK_MESH_GENERATORS_H
#define FINITES_SOLVER_DECK_MESH_GENERATORS_H

#include "deck/cards.h"

namespace solver::deck {

// A deck without such cards stays as it is. What is wrong with one is in deck.errors.
void write_out_generators(card_deck& deck);

}  // namespace solver::deck

#endif
