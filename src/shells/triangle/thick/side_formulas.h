// side_formulas.h: sides of the thick triangle (Katili, 1993), of one element or of one in every lane. Side k runs from
// node i = k to the next node j:
//
//     x = x_j - x_i,  y = y_j - y_i,    L = sqrt(x^2 + y^2),  C = x / L,  S = y / L
//     PHI = 12 D / (H L^2)              (shells/common/side_section.cpp)
//     A_DELTA                           (shells/common/side_fields.h)
//
// Mirror: shells/quadrilateral/thick/side_formulas.h.
#ifndef FINITES_TRI_SIDE_FORMULAS_H
#define FINITES_TRI_SIDE_FORMULAS_H

#include "finites/views.hpp"
#include "shells/common/side_fields.h"
#include "shells/triangle/geometry.h"
#include "shells/triangle/thick/side_constants.h"

// D(i): the sine of the angle between the sides that meet at node i, k = i and the one before it, for the corner values
// of the shear (plate_formulas.h). Zero in a triangle without area.
template <class REAL>
inline void set_determinants(TRIANGLE_SIDES_OF<REAL>& sides) {
  const VECTOR<3, REAL>& C = sides.C;
  const VECTOR<3, REAL>& S = sides.S;
  sides.D(1) = C(1) * S(3) - C(3) * S(1);
  sides.D(2) = C(2) * S(1) - C(1) * S(2);
  sides.D(3) = C(3) * S(2) - C(2) * S(3);
}

template <class REAL, class RATIO>
inline void set_tri_sides(const VECTOR<3, REAL>& x, const VECTOR<3, REAL>& y, RATIO ratio,
                          TRIANGLE_SIDES_OF<REAL>& sides) {
  for (int k = 1; k <= 3; ++k) {
    set_side_direction(k, x(k), y(k), sides);
    sides.PHI(k) = ratio(k);
  }
  set_determinants(sides);
  set_side_matrix(x, y, sides);
}

// c = phi L^2.
template <class REAL>
inline TRIANGLE_SIDES_OF<REAL> isotropic_tri_sides(const REAL& c, const TRIANGLE_GEOMETRY_OF<REAL>& TRI) {
  TRIANGLE_SIDES_OF<REAL> TRI_SIDES;
  const VECTOR<3, REAL> x{{TRI.X21, TRI.X32, TRI.X13}};
  const VECTOR<3, REAL> y{{TRI.Y21, TRI.Y32, TRI.Y13}};
  set_tri_sides(
      x, y, [&](int k) { return c / (TRI_SIDES.L(k) * TRI_SIDES.L(k)); }, TRI_SIDES);
  return TRI_SIDES;
}

#endif
