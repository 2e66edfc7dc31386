// shared_notes.h: notes of the deck reader that another part of the program gives in more detail.
#ifndef FINITES_SOLVER_SHARED_NOTES_H
#define FINITES_SOLVER_SHARED_NOTES_H

namespace solver {

// Of all such solids in one note; the checker of the library names each.
constexpr char FOLDED_CORNERS[] = "so distorted that the volume at a corner is negative or zero";

}  // namespace solver

#endif
