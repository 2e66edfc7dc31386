// note_folding.h: notes of one kind become one, with their count.
#ifndef FINITES_SOLVER_DECK_NOTE_FOLDING_H
#define FINITES_SOLVER_DECK_NOTE_FOLDING_H

#include <string>
#include <vector>

namespace solver::deck {

// "deck.inp:12: *CLOAD: sentence": the first of its kind stays, and says how many more there are.
void fold_notes(std::vector<std::string>& notes);

}  // namespace solver::deck

#endif
