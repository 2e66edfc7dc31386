// surface_points.cpp: the integration points of a flat element, with their Jacobian.
//
//     j11 = dx/dxi,   j12 = dy/dxi        detj = j11 j22 - j12 j21        g = j^-1 = [j22 -j12; -j21 j11] / detj
//     j21 = dx/deta,  j22 = dy/deta
//
// The inverse multiplies by 1 / detj instead of dividing: the closed forms divide and may differ in the last bit. A
// determinant of zero gives infinite values or NaN.
//
// Triangle rules: Hammer, Marlowe and Stroud (1956); quadrilateral: the product Gauss rule.
#include "shells/common/surface_points.h"

#include "finites/fields.h"
#include "finites/views.hpp"

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

// j: sums over the nodes of the derivatives of the shape functions times x (column 1) and y (column 2).
template <int NODES>
void set_jacobian(const double (&dxi)[NODES], const double (&deta)[NODES], const double* xyz, SURFACE_POINT& p) {
  const MATRIX_VIEW<3, const double> X(xyz);
  p.j11 = p.j12 = p.j21 = p.j22 = 0.0;
  for (int n = 1; n <= NODES; ++n) {
    p.j11 += dxi[n - 1] * X(1, n);
    p.j12 += dxi[n - 1] * X(2, n);
    p.j21 += deta[n - 1] * X(1, n);
    p.j22 += deta[n - 1] * X(2, n);
  }
}

}  // namespace

SURFACE_POINT surface_point(std::int32_t rule, std::int32_t point, std::int32_t nodes, const double* xyz) {
  const bool quad = nodes == 4;
  const SURFACE_STATION station = find_station(rule, point, quad);
  SURFACE_POINT p;
  p.xi = station.xi;
  p.eta = station.eta;
  p.weight = station.weight;
  if (quad) {
    const double xi = p.xi;
    const double eta = p.eta;
    const double dxi[4] = {-(1.0 - eta) / 4.0, (1.0 - eta) / 4.0, (1.0 + eta) / 4.0, -(1.0 + eta) / 4.0};
    const double deta[4] = {-(1.0 - xi) / 4.0, -(1.0 + xi) / 4.0, (1.0 + xi) / 4.0, (1.0 - xi) / 4.0};
    set_jacobian(dxi, deta, xyz, p);
  } else {
    constexpr double dxi[3] = {-1.0, 1.0, 0.0};
    constexpr double deta[3] = {-1.0, 0.0, 1.0};
    set_jacobian(dxi, deta, xyz, p);
  }
  p.detj = p.j11 * p.j22 - p.j12 * p.j21;
  const double reciprocal = 1.0 / p.detj;
  p.g11 = reciprocal * p.j22;
  p.g12 = -reciprocal * p.j12;
  p.g21 = -reciprocal * p.j21;
  p.g22 = reciprocal * p.j11;
  return p;
}
