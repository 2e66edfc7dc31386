// assembly_motion.h: where an instance puts its part.
#ifndef FINITES_SOLVER_DECK_ASSEMBLY_MOTION_H
#define FINITES_SOLVER_DECK_ASSEMBLY_MOTION_H

#include <array>

#include "deck/cards.h"
#include "model/vectors.h"

namespace solver::deck {

// x' = turn (x + shift - point) + point: first the translation, then the rotation about an axis through the point.
struct rigid_motion {
  bool turns = false, shifts = false;
  std::array<vector3, 3> turn{{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};  // by rows
  vector3 shift{}, point{};

  bool moves() const { return turns || shifts; }
  vector3 direction(const vector3& v) const;
  vector3 position(const vector3& x) const;
};

// The data lines of an *INSTANCE: dx, dy, dz; and two points of the axis and an angle in degrees, by the right hand
// from the first to the second.
rigid_motion read_motion(const card_deck& deck, const card& c, const data_line* lines, std::size_t count);

}  // namespace solver::deck

#endif
