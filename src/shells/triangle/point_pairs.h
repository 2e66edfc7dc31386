// point_pairs.h: the points of a triangle in pairs: of a rule, with its geometry, and the four points with the sums
// over the nodes. Determinant and inverse Jacobian are the same at all points.
//
// Mirror: shells/quadrilateral/point_pairs.h.
#ifndef FINITES_TRI_POINT_PAIRS_H
#define FINITES_TRI_POINT_PAIRS_H

#include "finites/records.h"
#include "shells/common/point_pairs.h"
#include "shells/common/surface_points.h"
#include "shells/triangle/geometry.h"

template <class REAL, class L = LANES_OF<REAL>>
inline POINT_PAIRS_OF<L> tri_pairs_iso(const TRIANGLE_GEOMETRY_OF<REAL>& TRI, const SURFACE_STATION (&rule)[4]) {
  return pairs_of<L>(rule, [&](const STATION_OF<L>& s) {
    return POINT_PAIR_OF<L>{s.xi,          s.eta,        s.weight * TRI.TWO_AREA, both(TRI.G11), both(TRI.G12),
                            both(TRI.G21), both(TRI.G22)};
  });
}

inline POINT_PAIRS tri_pairs_general(const PLATEELEM_RECORD& EL) {
  const SURFACE_POINT p = tri_point_at(TRI_RULE_FOUR[0], EL.LOCAL_XYZ.data());
  return pairs_of(TRI_RULE_FOUR, [&](const STATION_PAIR& s) {
    return POINT_PAIR{s.xi, s.eta, s.weight * p.detj, both(p.g11), both(p.g12), both(p.g21), both(p.g22)};
  });
}

#endif
