// plane_pattern.h: matrices of a beam from local axes to the solver's, by the pattern that its planes give them.
//
// Axial force, torsion and bending in the two planes do not couple, so that a block of translations or of rotations is
// diagonal, and a block of translations by rotations has the entries (2, 3) and (3, 2) alone. With the rows r1, r2, r3
// of the rotation R of both ends and their dyads a block is
//
//     translations, rotations   k1 r1 r1' + k2 r2 r2' + k3 r3 r3'
//     between them              k23 r2 r3' + k32 r3 r2'
//
// Entries k11 k12 ... are read from the lower triangle of a symmetric K.
#ifndef FINITES_PLANE_PATTERN_H
#define FINITES_PLANE_PATTERN_H

#include <cstdint>
#include <cstring>

#include "finites/views.hpp"
#include "frame_elements/member_axes.h"

class PLANE_ROTATION {
 public:
  // T (12, 12), the rotation that a beam routine is handed.
  explicit PLANE_ROTATION(const double* T);

  // Is T one rotation four times over, zero elsewhere, and finite?
  bool usable() const { return usable_; }

  // K (12, 12) := T' K T for a symmetric K of the pattern. False, with K untouched, when an entry is not finite.
  bool turn(double* K) const;

 private:
  // Dyads of the rows: of one with itself the six entries 11, 12, 22, 13, 23, 33, of the second with the third all
  // nine.
  using SYMMETRIC = VECTOR<6>;

  void place_alike(const double* k, int row, int column, MATRIX_VIEW<12> K) const;
  void place_crossed(const double* k, int row, int column, MATRIX_VIEW<12> K) const;

  bool usable_;
  SYMMETRIC r11_, r22_, r33_;
  MATRIX<3, 3> r23_;
};

// K := T' K T and again with T2 when there is one, for a K of the pattern.
void turn_planes(const PLANE_ROTATION& rotation, const double* T, std::int32_t second, const double* T2, double* K);

#endif
