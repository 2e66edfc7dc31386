// point_pairs.h: the points of a quadrilateral in pairs: of a rule, with the closed form of the Jacobian, and the 2 by
// 2 points with its sums over the nodes.
//
// Mirror: shells/triangle/point_pairs.h.
#ifndef FINITES_QUAD_POINT_PAIRS_H
#define FINITES_QUAD_POINT_PAIRS_H

#include "finites/records.h"
#include "shells/common/point_pairs.h"
#include "shells/common/surface_points.h"
#include "shells/quadrilateral/geometry.h"

template <class REAL, class L = LANES_OF<REAL>>
inline POINT_PAIRS_OF<L> quad_pairs_iso(const QUADRILATERAL_GEOMETRY_OF<REAL>& QUAD, const SURFACE_STATION (&rule)[4]) {
  return pairs_of<L>(rule, [&](const STATION_OF<L>& s) {
    const QUAD_POINT_OF<L> J = quad_jacobian(QUAD, s.xi, s.eta);
    return POINT_PAIR_OF<L>{s.xi, s.eta, s.weight * J.DET, J.G11, J.G12, J.G21, J.G22};
  });
}

inline POINT_PAIRS quad_pairs_general(const PLATEELEM_RECORD& EL) {
  return pairs_of(QUAD_RULE_FULL, [&](const STATION_PAIR& s) {
    const auto p = quad_point_at(s, EL.LOCAL_XYZ_QUAD.data());
    return POINT_PAIR{s.xi, s.eta, p.weight * p.detj, p.g11, p.g12, p.g21, p.g22};
  });
}

#endif
