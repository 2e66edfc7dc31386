// frame_sections.h: what the readers of the sections of frame elements share.
#ifndef FINITES_SOLVER_DECK_FRAME_SECTIONS_H
#define FINITES_SOLVER_DECK_FRAME_SECTIONS_H

#include <cstddef>

#include "deck/build.h"

namespace solver::deck {

// A section with its place in the deck, its set and its material, which is isotropic; -1 where the card names none.
frame_section start_section(build& b, const card& c, frame_section_kind kind);

// The elements of the set take it; their types must fit.
void assign_section(build& b, const card& c, const frame_section& s);

// The direction n1 in data line `line`, which may be missing, the last one before `end`.
void read_n1(const build& b, const card& c, std::size_t line, std::size_t end, frame_section& s);

// How many data lines, from the first, give the shape of the section `form`; 0: no shape of that name.
std::size_t take_beam_shape(const build& b, const card& c, const std::string& form, frame_section& s);

// Moments of inertia about the principal axes of the section, and the angle to them.
void take_inertia(double I11, double I22, double I12, frame_section& s);

}  // namespace solver::deck

#endif
