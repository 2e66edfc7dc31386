// shape.h: the transverse displacement of the three-node elements, for their mass and their loads.
#ifndef FINITES_TRI_SHAPE_H
#define FINITES_TRI_SHAPE_H

#include "finites/views.hpp"
#include "shells/common/w_load.h"

// Nine cubic functions: for each node the value and the two derivatives in the natural directions.
void TRI_W_SHAPE(double xi, double eta, VECTOR<9>& a);

// The same inline, at one point or at a pair.
template <class REAL>
inline VECTOR<9, REAL> tri_w_shape(REAL xi, REAL eta) {
  const REAL s = 1.0 - xi - eta;
  const REAL t = xi * eta * s;
  // clang-format off
  return {{s * s * (3.0 - 2.0 * s) + 2.0 * t,
           s * s * xi + t / 2.0,
           s * s * eta + t / 2.0,
           xi * xi * (3.0 - 2.0 * xi) + 2.0 * t,
           xi * xi * (xi - 1.0) - t,
           xi * xi * eta + t / 2.0,
           eta * eta * (3.0 - 2.0 * eta) + 2.0 * t,
           eta * eta * xi + t / 2.0,
           eta * eta * (eta - 1.0) - t}};
  // clang-format on
}

// f(w, theta x, theta y of each node) += scale times the functions a, changed from natural derivatives to rotations.
//
//   c      in   of rotation_coefficients, which equal (x2, x3, 0, y3)
//   f(18)  i/o  six per node, element axes
inline void TRI_W_LOAD(const VECTOR<9>& a, const VECTOR<4>& c, double scale, double* f) {
  add_w_load<3>(a, c, scale, f);
}

#endif
