// geometry_formulas.h: local frame and geometry of the four-node elements, of one element or of one in every lane.
//
//     axes         e1 along 1-2, e3 normal to 1-2 and 1-4, e2 = e3 x e1;  the centroid is the origin
//     QX_ij        x_i - x_j;  QY_ij likewise
//     Jacobian     dx/dxi  = QA1 + eta QA2        dy/dxi  = QA3 + eta QA4
//                  dx/deta = QA5 + xi QA2         dy/deta = QA6 + xi QA4
//     determinant  QJ0 + QJ1 xi + QJ2 eta
//     inverse      [G11 G12; G21 G22] = [dy/deta -dy/dxi; -dx/deta dx/dxi] / DET
//
// Mirror: shells/triangle/geometry_formulas.h.
#ifndef FINITES_QUAD_GEOMETRY_FORMULAS_H
#define FINITES_QUAD_GEOMETRY_FORMULAS_H

#include "common/lane_pair.h"
#include "finites/views.hpp"
#include "shells/common/frame.h"
#include "shells/common/groups.h"
#include "shells/quadrilateral/geometry.h"

template <class REAL>
inline void quad_local_frame(const REAL* xyz, QUADRILATERAL_GEOMETRY_OF<REAL>& QUAD, MATRIX<3, 4, REAL>& local,
                             VECTOR<3, REAL>& centroid) {
  VECTOR<3, REAL> C{};
  for (int m = 1; m <= 4; ++m) {
    for (int i = 1; i <= 3; ++i) C(i) += node_of(xyz, m)(i);
  }
  for (int i = 1; i <= 3; ++i) C(i) *= 0.25;
  centroid = C;

  const VECTOR<3, REAL> X1 = node_of(xyz, 1);
  QUAD.AXES = axes_from(difference(node_of(xyz, 2), X1), difference(node_of(xyz, 4), X1));
  for (int m = 1; m <= 4; ++m) {
    const VECTOR<3, REAL> d = difference(node_of(xyz, m), C);
    vector_to_local(QUAD.AXES, d.data(), &local(1, m));
  }
}

// Side k and the one after it.
inline void store_sides(double* at, LANES v) { store_lanes(at, v); }
template <class V>
inline void store_sides(V* at, const LANE_PAIR<V>& v) {
  at[0] = v.first;
  at[1] = v.second;
}

// The coefficients of side k (Batoz and Ben Tahar, 1982), with x = x_i - x_j, y = y_i - y_j, l = x^2 + y^2:
//
//     A = -x / l,   B = (3/4) x y / l,   C = (y^2 / 2 - x^2 / 4) / l,   D = -y / l,   E = (y^2 / 4 - x^2 / 2) / l
//
// C is minus the c of the paper: Hx(theta y) has + C N where the paper has - c N (rotations.h).
// Sides k and k + 1 go in the two lanes.
template <class L, class REAL>
inline void set_dkq_sides(int k, L x, L y, QUADRILATERAL_GEOMETRY_OF<REAL>& QUAD) {
  const L l = x * x + y * y;
  store_sides(&QUAD.DKQ_A(k), -x / l);
  store_sides(&QUAD.DKQ_B(k), 0.75 * x * y / l);
  store_sides(&QUAD.DKQ_C(k), (2.0 * y * y - x * x) * 0.25 / l);
  store_sides(&QUAD.DKQ_D(k), -y / l);
  store_sides(&QUAD.DKQ_E(k), (y * y - 2.0 * x * x) * 0.25 / l);
}

template <class REAL>
inline void quad_geometry(const MATRIX<3, 4, REAL>& local, int mode, QUADRILATERAL_GEOMETRY_OF<REAL>& QUAD) {
  const REAL x1 = local(1, 1);
  const REAL x2 = local(1, 2);
  const REAL x3 = local(1, 3);
  const REAL x4 = local(1, 4);
  const REAL y1 = local(2, 1);
  const REAL y2 = local(2, 2);
  const REAL y3 = local(2, 3);
  const REAL y4 = local(2, 4);
  QUAD.QX12 = x1 - x2;
  QUAD.QX23 = x2 - x3;
  QUAD.QX34 = x3 - x4;
  QUAD.QX41 = x4 - x1;
  QUAD.QY12 = y1 - y2;
  QUAD.QY23 = y2 - y3;
  QUAD.QY34 = y3 - y4;
  QUAD.QY41 = y4 - y1;
  QUAD.QJ0 = ((y4 - y2) * (x3 - x1) - (y3 - y1) * (x4 - x2)) / 8.0;
  QUAD.QJ1 = (QUAD.QY12 * QUAD.QX34 - QUAD.QY34 * QUAD.QX12) / 8.0;
  QUAD.QJ2 = (QUAD.QY23 * QUAD.QX41 - QUAD.QY41 * QUAD.QX23) / 8.0;
  QUAD.QA1 = (QUAD.QX34 - QUAD.QX12) / 4.0;
  QUAD.QA2 = (QUAD.QX12 + QUAD.QX34) / 4.0;
  QUAD.QA3 = (QUAD.QY34 - QUAD.QY12) / 4.0;
  QUAD.QA4 = (QUAD.QY12 + QUAD.QY34) / 4.0;
  QUAD.QA5 = (QUAD.QX41 - QUAD.QX23) / 4.0;
  QUAD.QA6 = (QUAD.QY41 - QUAD.QY23) / 4.0;
  if (mode == WITHOUT_SIDES) return;
  set_dkq_sides(5, pair_of(QUAD.QX12, QUAD.QX23), pair_of(QUAD.QY12, QUAD.QY23), QUAD);
  set_dkq_sides(7, pair_of(QUAD.QX34, QUAD.QX41), pair_of(QUAD.QY34, QUAD.QY41), QUAD);
}

#endif
