// hinge_return.h: the return of the end forces of a beam to the yield surfaces of its ends.
#ifndef FINITES_HINGE_RETURN_H
#define FINITES_HINGE_RETURN_H

#include "finites/elements.h"

// The section forces of a beam without loads along it: N, then My, Mz of the first and of the second end. Here in pure
// numbers: over the capacities.
constexpr int SECTION_COMPONENTS = 5;

struct SECTION_VECTOR {
  double V[SECTION_COMPONENTS];
};

struct SECTION_MATRIX {
  double V[SECTION_COMPONENTS][SECTION_COMPONENTS];
};

// Where component c (P, My, Mz) of an end (0, 1) stands in a section vector.
constexpr int place_of(int end, int c) { return c == 0 ? 0 : 2 * end + c; }

struct HINGE_RETURN {
  SECTION_VECTOR force;
  double flow[2][3];       // plastic deformation of the step: over the capacities too
  bool yields[2];          // with flow
  SECTION_MATRIX tangent;  // of the returned by the trial deformations; the elastic one where nothing flows
  bool elastic;
};

// The force nearest to the trial one in the energy of the elastic stiffness C, on the yield surface of the ends (1 the
// first, 2 the second, 3 both) or within. False where it was not found.
bool return_to_surface(const finites_yield& yield, int ends, const SECTION_MATRIX& C, const SECTION_VECTOR& trial,
                       HINGE_RETURN& answer);

#endif
