// membrane_formulas.h: isotropic membrane and drilling stiffness of the three-node elements, of one element or of one
// in every lane.
//
// Mirror: shells/quadrilateral/membrane_formulas.h.
#ifndef FINITES_TRI_MEMBRANE_FORMULAS_H
#define FINITES_TRI_MEMBRANE_FORMULAS_H

#include "common/constants.h"
#include "common/lane_pair.h"
#include "finites/views.hpp"
#include "shells/common/constitutive.h"
#include "shells/triangle/geometry.h"

// K(21).
//
// With B = [a 0 b 0 0 0; 0 p 0 q 0 r; p a q b r 0] / TWO_AREA, in which a = y2 - y3, b = y3 - y1, y1 = y2 = 0 and
// p = x3 - x2, q = x1 - x3, r = x2 - x1, each entry of K is a sum of products over 2 TWO_AREA: d = D / (2 TWO_AREA).
template <class REAL>
inline void tri_membrane(const TRIANGLE_GEOMETRY_OF<REAL>& TRI, const ISOTROPIC_SECTION_OF<REAL>& ISO, REAL* K) {
  const REAL c = 2.0 * TRI.TWO_AREA;
  const REAL d1 = ISO.DM11 / c;
  const REAL d2 = ISO.DM12 / c;
  const REAL d3 = ISO.DM22 / c;
  const REAL d4 = ISO.DM33 / c;
  const REAL a = -TRI.Y32;
  const REAL b = -TRI.Y13;
  const REAL p = TRI.X32;
  const REAL q = TRI.X13;
  const REAL r = TRI.X21;
  // clang-format off
  K[0]  = d1 * a * a + d4 * p * p;
  K[1]  = (d2 + d4) * a * p;
  K[2]  = d3 * p * p + d4 * a * a;
  K[3]  = d1 * a * b + d4 * p * q;
  K[4]  = d2 * b * p + d4 * a * q;
  K[5]  = d1 * b * b + d4 * q * q;
  K[6]  = d2 * a * q + d4 * b * p;
  K[7]  = d3 * p * q + d4 * a * b;
  K[8]  = (d2 + d4) * b * q;
  K[9]  = d3 * q * q + d4 * b * b;
  K[10] = d4 * p * r;
  K[11] = d4 * a * r;
  K[12] = d4 * q * r;
  K[13] = d4 * b * r;
  K[14] = d4 * r * r;
  K[15] = d2 * a * r;
  K[16] = d3 * p * r;
  K[17] = d2 * b * r;
  K[18] = d3 * q * r;
  K[19] = REAL{};
  K[20] = d3 * r * r;
  // clang-format on
}

// K(6), of modulus E and thickness h.
template <class REAL>
inline void tri_drilling(const REAL& E, const REAL& h, const TRIANGLE_GEOMETRY_OF<REAL>& TRI, REAL* K) {
  const REAL e = DRILL_FACTOR * E * h * TRI.TWO_AREA;
  K[SYM(1, 1) - 1] = K[SYM(2, 2) - 1] = K[SYM(3, 3) - 1] = e;
  K[SYM(1, 2) - 1] = K[SYM(1, 3) - 1] = K[SYM(2, 3) - 1] = -e / 2.0;
}

#endif
