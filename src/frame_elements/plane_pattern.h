// plane_pattern.h: symmetric matrices of a member by the planes in which it acts, and their way from local axes to the
// solver's.
//
// Axial force, torsion and bending in the two planes do not couple: of the degrees of freedom 1 to 12 the pairs (1, 7)
// and (4, 10) and the fours (2, 6, 8, 12) and (3, 5, 9, 11) each have a matrix of their own, and every other entry is
// zero. In blocks of three, a block of translations or of rotations is diagonal, and a block of rotations by
// translations has the entries (2, 3) and (3, 2) alone. With the rows r1, r2, r3 of the rotation R of both ends a block
// is in the solver's axes
//
//     translations, rotations   k1 r1 r1' + k2 r2 r2' + k3 r3 r3'
//     between them              k23 r2 r3' + k32 r3 r2'
#ifndef FINITES_PLANE_PATTERN_H
#define FINITES_PLANE_PATTERN_H

#include <cstdint>

#include "common/finiteness.h"
#include "common/two_lanes.h"
#include "finites/views.hpp"

// The symmetric matrix of the degrees of freedom of one plane, two or four of them, among which one has `number`.
struct PLANE_TRIANGLE {
  double* first;
  int order, number;

  double& operator()(int r, int s) const { return first[r < s ? SYM(r, s) - 1 : SYM(s, r) - 1]; }
};

// The lower triangle of a symmetric matrix of this pattern: P(i, j), i not below j, both in the same pair or four. An
// aggregate: PLANE_MATRIX P{} is zero.
struct PLANE_MATRIX {
  static constexpr int ENTRIES = 3 + 3 + 10 + 10;

  double V[ENTRIES];

  constexpr double& operator()(int i, int j) { return V[place(i, j)]; }
  constexpr const double& operator()(int i, int j) const { return V[place(i, j)]; }

  PLANE_TRIANGLE triangle_of(int d) {
    const int first = START[d - 1];
    return {V + first, first < START[1] ? 2 : 4, NUMBER[d - 1]};
  }

 private:
  // Where the triangle of a degree of freedom begins, and its number in it.
  static constexpr int START[12] = {0, 6, 16, 3, 16, 6, 0, 6, 16, 3, 16, 6};
  static constexpr int NUMBER[12] = {1, 1, 1, 1, 2, 2, 2, 3, 3, 2, 4, 4};

  static constexpr int place(int i, int j) { return START[i - 1] + SYM(NUMBER[j - 1], NUMBER[i - 1]) - 1; }
};

inline bool surely_finite(const PLANE_MATRIX& P) { return surely_finite(P.V, PLANE_MATRIX::ENTRIES); }

// K (12, 12) := P, both triangles.
void write_planes(const PLANE_MATRIX& P, double* K);

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
