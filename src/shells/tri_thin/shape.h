// shape.h: the transverse displacement of the thin triangle, for its mass and its loads.
#ifndef FINITES_TRI_SHAPE_H
#define FINITES_TRI_SHAPE_H

#include "views.h"

// Nine cubic functions: for each node the value and the two derivatives in the natural directions.
void TRI_W_SHAPE(double xi, double eta, VECTOR<9>& a);

// (g22, -g21, -g12, g11) detj of the inverse Jacobian, which equal (x2, x3, 0, y3).
inline VECTOR<4> rotation_coefficients(double g11, double g12, double g21, double g22, double detj) {
  return {{g22 * detj, -g21 * detj, -g12 * detj, g11 * detj}};
}

// f(w, theta x, theta y of each node) += scale times the functions a, changed from natural derivatives to rotations.
//
//   c      in   of rotation_coefficients
//   f(18)  i/o  six a node, element axes
void TRI_W_LOAD(const VECTOR<9>& a, const VECTOR<4>& c, double scale, double* f);

#endif
