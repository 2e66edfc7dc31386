// bending_formulas.h: the stiffnesses of a beam in bending, of both planes at once.
//
// L holds the two planes, x-y in the first lane and x-z in the second: LANES for one beam, pairs of vectors for several
// beams side by side (common/lane_pair.h). The formulas stand in beam_planes.cpp.
#ifndef FINITES_BENDING_FORMULAS_H
#define FINITES_BENDING_FORMULAS_H

#include "common/lane_pair.h"

template <class L>
struct BENDING_OF {
  L shear;              // force per translation
  L couple1, couple2;   // moment of an end per translation
  L end1, end2, cross;  // moments per rotation
};

template <class L, class REAL>
inline BENDING_OF<L> bending_of(const L& E, const L& I, const REAL& length, const L& p, const L& f, const L& g) {
  const L d = 4.0 - f * g + p * (g + f * g + f);
  BENDING_OF<L> b;
  b.shear = 12.0 * E * I * (g + f * g + f) / (length * length * length * d);
  b.couple1 = 6.0 * E * I * (g + 2.0) * f / (length * length * d);
  b.couple2 = 6.0 * E * I * (f + 2.0) * g / (length * length * d);
  b.end1 = 3.0 * E * I * f * (p * g + 4.0) / (length * d);
  b.end2 = 3.0 * E * I * g * (p * f + 4.0) / (length * d);
  b.cross = 3.0 * E * I * (2.0 - p) * f * g / (length * d);
  return b;
}

// p = 12 E I / (G As L^2), for a shear area above 0.
template <class REAL>
inline REAL shear_parameter_of(const REAL& E, const REAL& I, const REAL& G, double shear_area, const REAL& length) {
  return 12.0 * E * I / (G * shear_area * length * length);
}

#endif
