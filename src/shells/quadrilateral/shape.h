// shape.h: the transverse displacement of the quadrilateral, for its loads.
#ifndef FINITES_QUAD_SHAPE_H
#define FINITES_QUAD_SHAPE_H

#include "finites/views.hpp"
#include "shells/common/w_load.h"

// Twelve functions: for each node the value and the two derivatives in the natural directions.
void QUAD_W_SHAPE(double xi, double eta, VECTOR<12>& f);

// f(w, theta x, theta y of each node) += scale times the functions a, changed from natural derivatives to rotations.
//
//   c      in   of rotation_coefficients
//   f(24)  i/o  six per node, element axes
inline void QUAD_W_LOAD(const VECTOR<12>& a, const VECTOR<4>& c, double scale, double* f) {
  add_w_load<4>(a, c, scale, f);
}

#endif
