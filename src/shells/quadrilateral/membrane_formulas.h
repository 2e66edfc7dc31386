// membrane_formulas.h: isotropic membrane and drilling stiffness of the four-node elements, of one element or of one in
// every lane. For finite values: membrane.cpp has what infinities and NaN need.
//
// Mirror: shells/triangle/membrane_formulas.h.
#ifndef FINITES_QUAD_MEMBRANE_FORMULAS_H
#define FINITES_QUAD_MEMBRANE_FORMULAS_H

#include "common/constants.h"
#include "common/lane_pair.h"
#include "finites/views.hpp"
#include "shells/common/point_pairs.h"
#include "shells/common/slope_integrals.h"
#include "shells/common/slopes.h"
#include "shells/quadrilateral/geometry.h"
#include "shells/quadrilateral/membrane.h"

template <class L>
inline SLOPES<4, L> quad_slopes_at(const POINT_PAIR_OF<L>& p) {
  return bilinear_slopes(p.xi, p.eta, p.g11, p.g12, p.g21, p.g22);
}

template <class L>
inline SLOPE_INTEGRALS<4, REAL_OF<L>> quad_slope_integrals(const POINT_PAIRS_OF<L>& p) {
  return slope_integrals(quad_slopes_at(p.first), p.first.area, quad_slopes_at(p.second), p.second.area);
}

// The centre of an element: its slopes and its area.
template <class REAL>
struct QUAD_CENTRE {
  SLOPES<4, REAL> slopes;
  REAL area;
};

template <class REAL>
inline QUAD_CENTRE<REAL> quad_centre(const QUADRILATERAL_GEOMETRY_OF<REAL>& QUAD) {
  const SURFACE_STATION s = QUAD_RULE_CENTRE[0];
  const REAL xi = of_all<REAL>(s.xi);
  const REAL eta = of_all<REAL>(s.eta);
  const QUAD_POINT_OF<REAL> J = quad_jacobian(QUAD, xi, eta);
  return {bilinear_slopes(xi, eta, J.G11, J.G12, J.G21, J.G22), s.weight * J.DET};
}

// K(36): normal strains at the points, shear at the centre.
template <class REAL>
inline void quad_split_membrane(const QUAD_CENTRE<REAL>& centre, const ISOTROPIC_SECTION_OF<REAL>& ISO,
                                const POINT_PAIRS_OF<LANES_OF<REAL>>& points, REAL* K) {
  const SLOPES<4, REAL> sheared = scaled(centre.slopes, REAL(ISO.DM33 * centre.area));
  const SLOPE_INTEGRALS<4, REAL> S = quad_slope_integrals(points);
  const SECTION_TERMS_OF<REAL> D = membrane_terms(ISO, SPLIT_SHEAR);
  const auto block = [&](int i, int j) { return normal_block(S, D, i, j) + shear_block(centre.slopes, sheared, i, j); };
  place_packed_blocks<4>(block, K);
}

// The triangles 1-2-4 and 3-4-2 together, without the sign.
template <class REAL>
inline REAL quad_plan_area(const MATRIX<3, 4, REAL>& local) {
  const auto x = [&](int n) { return local(1, n); };
  const auto y = [&](int n) { return local(2, n); };
  return magnitude(REAL(((x(2) - x(1)) * (y(4) - y(1)) - (y(2) - y(1)) * (x(4) - x(1)) + (x(4) - x(3)) * (y(2) - y(3)) -
                         (x(2) - x(3)) * (y(4) - y(3))) /
                        2.0));
}

// Kd(10), of modulus E and thickness h.
template <class REAL>
inline void quad_drilling(const REAL& E, const REAL& h, const MATRIX<3, 4, REAL>& local, REAL* Kd) {
  const REAL e = DRILL_FACTOR * E * h * quad_plan_area(local);
  for (int j = 1; j <= 4; ++j) {
    for (int i = 1; i <= j; ++i) Kd[SYM(i, j) - 1] = i == j ? e : REAL(-e / 3.0);
  }
}

#endif
