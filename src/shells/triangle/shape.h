// shape.h: the transverse displacement of the three-node elements, for their mass and their loads.
#ifndef FINITES_TRI_SHAPE_H
#define FINITES_TRI_SHAPE_H

#include "finites/views.hpp"
#include "shells/common/w_load.h"

// Nine cubic functions: for each node the value and the two derivatives in the natural directions.
void TRI_W_SHAPE(double xi, double eta, VECTOR<9>& a);

// f(w, theta x, theta y of each node) += scale times the functions a, changed from natural derivatives to rotations.
//
//   c      in   of rotation_coefficients, which equal (x2, x3, 0, y3)
//   f(18)  i/o  six per node, element axes
inline void TRI_W_LOAD(const VECTOR<9>& a, const VECTOR<4>& c, double scale, double* f) {
  add_w_load<3>(a, c, scale, f);
}

#endif
