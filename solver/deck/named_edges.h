// named_edges.h: elements that a mesher leaves on named edges and faces.
#ifndef FINITES_SOLVER_DECK_NAMED_EDGES_H
#define FINITES_SOLVER_DECK_NAMED_EDGES_H

#include <string>

#include "deck/cards.h"

namespace solver::deck {

// Gmsh saves an edge or face that has a name as elements too: T3D2 in sets LINE1, LINE2, ..., CPS3 and CPS4 in sets
// SURFACE1, ... They serve to name nodes. Where no section names any of them, their cards are taken out of the deck,
// and so are sets that hold nothing else. The note says so; empty where there is nothing of the kind.
std::string leave_out_named_edges(card_deck& deck);

}  // namespace solver::deck

#endif
