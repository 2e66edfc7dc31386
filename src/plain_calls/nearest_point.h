// nearest_point.h: the point nearest to another one behind a number of planes.
#ifndef FINITES_NEAREST_POINT_H
#define FINITES_NEAREST_POINT_H

#include "plain_calls/hinge_return.h"

constexpr int MOST_CUTS = 32;

// Planes normal.x <= limit.
struct CUTS {
  int count;
  SECTION_VECTOR normal[MOST_CUTS];
  double limit[MOST_CUTS];
};

// The planes on which the point lies, with their multipliers, all at least 0.
struct ACTIVE_CUTS {
  int count;
  int number[SECTION_COMPONENTS];
  double multiplier[SECTION_COMPONENTS];
};

SECTION_VECTOR product(const SECTION_MATRIX& A, const SECTION_VECTOR& x);
double product(const SECTION_VECTOR& x, const SECTION_VECTOR& y);
double largest(const SECTION_VECTOR& x);

// x := the point behind the planes with the least (x - trial)^T C^-1 (x - trial), x = trial on entry; C may be
// singular, x moves in its range. False where there is none or rounding prevents it.
bool nearest_point(const SECTION_MATRIX& C, const CUTS& cuts, SECTION_VECTOR& x, ACTIVE_CUTS& active);

// C := C less its parts along the active normals, C - C N (N^T C N)^-1 N^T C.
void take_out(const CUTS& cuts, const ACTIVE_CUTS& active, SECTION_MATRIX& C);

#endif
