// side_formulas.h: sides of the thick quadrilateral (Katili, 1993), of one element or of one in every lane. Side k runs
// from node i = k to the next node j:
//
//     x = x_j - x_i,  y = y_j - y_i,    L = sqrt(x^2 + y^2),  C = x / L,  S = y / L
//     PHI = 12 D / (H L^2),  LPHI = L PHI   (shells/common/side_section.cpp)
//     A_DELTA                               (shells/common/side_fields.h)
//
// Mirror: shells/triangle/thick/side_formulas.h.
#ifndef FINITES_QUAD_SIDE_FORMULAS_H
#define FINITES_QUAD_SIDE_FORMULAS_H

#include "finites/views.hpp"
#include "shells/common/side_fields.h"
#include "shells/quadrilateral/geometry.h"
#include "shells/quadrilateral/thick/side_constants.h"

template <class REAL, class RATIO>
inline void set_quad_sides(const VECTOR<4, REAL>& x, const VECTOR<4, REAL>& y, RATIO ratio,
                           QUADRILATERAL_SIDES_OF<REAL>& sides) {
  for (int k = 1; k <= 4; ++k) {
    set_side_direction(k, x(k), y(k), sides);
    sides.PHI(k) = ratio(k);
    sides.LPHI(k) = sides.L(k) * sides.PHI(k);
  }
  set_side_matrix(x, y, sides);
}

// c = phi L^2. QX12 is x1 - x2: the differences of the geometry have the opposite sign.
template <class REAL>
inline QUADRILATERAL_SIDES_OF<REAL> isotropic_quad_sides(const REAL& c, const QUADRILATERAL_GEOMETRY_OF<REAL>& QUAD) {
  QUADRILATERAL_SIDES_OF<REAL> QUAD_SIDES;
  const VECTOR<4, REAL> x{{-QUAD.QX12, -QUAD.QX23, -QUAD.QX34, -QUAD.QX41}};
  const VECTOR<4, REAL> y{{-QUAD.QY12, -QUAD.QY23, -QUAD.QY34, -QUAD.QY41}};
  set_quad_sides(
      x, y, [&](int k) { return c / (QUAD_SIDES.L(k) * QUAD_SIDES.L(k)); }, QUAD_SIDES);
  return QUAD_SIDES;
}

#endif
