// plane_pattern.h: matrices of a member from local axes to the solver's, by its planes.
//
// In blocks of three degrees of freedom, a block of translations or of rotations is diagonal, and a block of rotations
// by translations has the entries (2, 3) and (3, 2) alone. With the rows r1, r2, r3 of the rotation R of both ends a
// block is in the solver's axes
//
//     translations, rotations   k1 r1 r1' + k2 r2 r2' + k3 r3 r3'
//     between them              k23 r2 r3' + k32 r3 r2'
#ifndef FINITES_PLANE_PATTERN_H
#define FINITES_PLANE_PATTERN_H

#include <cstdint>

#include "common/lanes.h"
#include "common/plane_matrix.h"
#include "finites/views.hpp"

class PLANE_ROTATION {
 public:
  // T (12, 12), the rotation that a beam routine is handed.
  explicit PLANE_ROTATION(const double* T);

  // Is T one rotation four times over, zero elsewhere, and finite?
  bool usable() const { return usable_; }

  // K (12, 12) := T' P T for a finite P.
  void turn(const PLANE_MATRIX& P, double* K) const;

  // K (12, 12) := T' K T for any K. False, with K untouched, where an entry of K is not finite.
  bool turn(double* K) const;

 private:
  // Dyads of the rows. Of one with itself the entries (11, 21), (22, 32), (31, 33); of the second with the third,
  // r2 r3', the entries (11, 21), (12, 22), (13, 23), (31, 32), and (33) alone.
  struct SYMMETRIC {
    LANES e11_21, e22_32, e31_33;
  };
  struct CROSSED {
    LANES e11_21, e12_22, e13_23, e31_32;
    double e33;
  };

  static SYMMETRIC dyad(const VECTOR<3>& r);
  static LANES sum_of(const SYMMETRIC& s);
  void place_alike(double k1, double k2, double k3, int row, int column, double* K) const;
  void place_crossed(double k23, double k32, int row, int column, double* K) const;

  bool usable_;
  MATRIX<3, 3> R_;
  SYMMETRIC r11_, r22_, r33_;
  CROSSED r23_;
};

// K := T' P T and again with T2 when there is one (second > 0).
void turn_planes(const PLANE_ROTATION& rotation, const PLANE_MATRIX& P, const double* T, std::int32_t second,
                 const double* T2, double* K);

// The same for a matrix K of any pattern, in place.
void turn_full(const PLANE_ROTATION& rotation, const double* T, std::int32_t second, const double* T2, double* K);

// The same for K = 0, which stays zero unless a transformation is not finite.
void turn_zero(const PLANE_ROTATION& rotation, const double* T, std::int32_t second, const double* T2, double* K);

#endif
