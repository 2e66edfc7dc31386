// surface_points.cpp: the integration points of a flat element, with their Jacobian.
//
//     j11 = dx/dxi,   j12 = dy/dxi        detj = j11 j22 - j12 j21        g = j^-1 = [j22 -j12; -j21 j11] / detj
//     j21 = dx/deta,  j22 = dy/deta
//
// Triangle rules: Hammer, Marlowe and Stroud (1956); quadrilateral: the product Gauss rule.
#include "shells/common/surface_points.h"

#include "finites/fields.h"

namespace {

template <int COUNT>
SURFACE_STATION station_of(const SURFACE_STATION (&rule)[COUNT], std::int32_t point) {
  if (point < 1 || point > COUNT) return {0.0, 0.0, 0.0};
  return rule[point - 1];
}

// The codes mean different rules on the two shapes: RULE_FULL has three points on a triangle and 2 by 2 on a
// quadrilateral, RULE_ELEMENT four points on a triangle and the centre of a quadrilateral.
SURFACE_STATION find_station(std::int32_t rule, std::int32_t point, bool quad) {
  switch (rule) {
    case RULE_FULL: return quad ? station_of(QUAD_RULE_FULL, point) : station_of(TRI_RULE_THREE, point);
    case RULE_ELEMENT: return quad ? station_of(QUAD_RULE_CENTRE, point) : station_of(TRI_RULE_FOUR, point);
    case RULE_NODES: return quad ? station_of(QUAD_RULE_NODES, point) : station_of(TRI_RULE_NODES, point);
    default: return {0.0, 0.0, 0.0};
  }
}

}  // namespace

SURFACE_POINT surface_point(std::int32_t rule, std::int32_t point, std::int32_t nodes, const double* xyz) {
  const bool quad = nodes == 4;
  const SURFACE_STATION station = find_station(rule, point, quad);
  return quad ? quad_point_at(station, xyz) : tri_point_at(station, xyz);
}
