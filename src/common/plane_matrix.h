// plane_matrix.h: symmetric matrices of a member by the planes in which it acts.
//
// Axial force, torsion and bending in the two planes do not couple: of the degrees of freedom 1 to 12 the pairs (1, 7)
// and (4, 10) and the fours (2, 6, 8, 12) and (3, 5, 9, 11) each have a matrix of their own, and every other entry is
// zero.
#ifndef FINITES_PLANE_MATRIX_H
#define FINITES_PLANE_MATRIX_H

#include "common/finiteness.h"
#include "finites/views.hpp"

// The symmetric matrix of the degrees of freedom of one plane, two or four of them, among which one has `number`.
struct PLANE_TRIANGLE {
  double* first;
  int order, number;

  double& operator()(int r, int s) const { return first[r < s ? SYM(r, s) - 1 : SYM(s, r) - 1]; }
};

// P(i, j) = P(j, i), both in the same pair or four. The lower triangle is stored. An aggregate: PLANE_MATRIX P{} is
// zero.
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

  static constexpr int place(int i, int j) {
    const int r = NUMBER[i - 1];
    const int s = NUMBER[j - 1];
    return START[i - 1] + (r < s ? SYM(r, s) : SYM(s, r)) - 1;
  }
};

inline bool all_finite(const PLANE_MATRIX& P) { return all_finite(P.V, PLANE_MATRIX::ENTRIES); }

// K (12, 12) := P, both triangles.
void write_planes(const PLANE_MATRIX& P, double* K);

// P := K (12, 12). False where K is not finite, not symmetric or not of this pattern, bit by bit.
bool read_planes(const double* K, PLANE_MATRIX& P);

#endif
