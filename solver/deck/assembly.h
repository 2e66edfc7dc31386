// assembly.h: a deck of parts and instances as a flat one.
//
//   *PART, NAME=P ... *END PART         a mesh with its sets and sections, in coordinates of its own
//   *ASSEMBLY ... *END ASSEMBLY         the instances, sets, surfaces and conditions across them
//   *INSTANCE, NAME=I, PART=P           P once more, shifted by the first data line and turned by the second
//
// The cards of a part are written once for each instance: names get the instance in front (I.SET), numbers an offset
// where they are taken, coordinates and directions are moved. Every line keeps its place in the files.
#ifndef FINITES_SOLVER_DECK_ASSEMBLY_H
#define FINITES_SOLVER_DECK_ASSEMBLY_H

#include "deck/cards.h"

namespace solver::deck {

// Generated nodes and elements written out, parts and instances replaced. Throws deck_error.
card_deck flat_cards(card_deck deck);

}  // namespace solver::deck

#endif
