// geometry_formulas.h: local frame and geometry of the three-node elements, of one element or of one in every lane.
//
//     axes         e1 along 1-2, e3 normal to 1-2 and 1-3, e2 = e3 x e1;  node 1 is the origin, y2 = 0
//     X_ji         x_j - x_i;  Y_ji likewise
//     TWO_AREA     x2 y3, the determinant of the map
//     inverse      [G11 G12; G21 G22] = [y3 0; -x3 x2] / TWO_AREA
//
// Mirror: shells/quadrilateral/geometry_formulas.h.
#ifndef FINITES_TRI_GEOMETRY_FORMULAS_H
#define FINITES_TRI_GEOMETRY_FORMULAS_H

#include "finites/views.hpp"
#include "shells/common/frame.h"
#include "shells/common/groups.h"
#include "shells/triangle/geometry.h"

template <class REAL>
inline void tri_local_frame(const REAL* xyz, TRIANGLE_GEOMETRY_OF<REAL>& TRI, MATRIX<3, 3, REAL>& local) {
  const VECTOR<3, REAL> X1 = node_of(xyz, 1);
  TRI.AXES = axes_from(difference(node_of(xyz, 2), X1), difference(node_of(xyz, 3), X1));
  for (int m = 1; m <= 3; ++m) {
    const VECTOR<3, REAL> d = difference(node_of(xyz, m), X1);
    vector_to_local(TRI.AXES, d.data(), &local(1, m));
  }
}

template <class REAL>
inline void tri_geometry(const MATRIX<3, 3, REAL>& local, TRIANGLE_GEOMETRY_OF<REAL>& TRI) {
  const REAL x2 = local(1, 2);
  const REAL x3 = local(1, 3);
  const REAL y2 = local(2, 2);
  const REAL y3 = local(2, 3);
  TRI.X21 = x2;
  TRI.X32 = x3 - x2;
  TRI.X13 = -x3;
  TRI.Y21 = REAL{};
  TRI.Y32 = y3 - y2;
  TRI.Y13 = -y3;
  TRI.TWO_AREA = x2 * y3;
  TRI.G11 = y3 / TRI.TWO_AREA;
  TRI.G12 = REAL{};
  TRI.G21 = -x3 / TRI.TWO_AREA;
  TRI.G22 = x2 / TRI.TWO_AREA;
}

#endif
