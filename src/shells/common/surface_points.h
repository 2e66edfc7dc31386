// surface_points.h: integration points of a flat three- or four-node element.
//
// The rules are constants with exactly these digits: several have only fifteen, and correctly rounded fractions in
// their place would change results. The weights of a triangle add up to 1/2, those of a quadrilateral to 4: weight
// times detj is the area of a point.
#ifndef FINITES_SURFACE_POINTS_H
#define FINITES_SURFACE_POINTS_H

#include <cstdint>

#include "finites/fields.h"
#include "finites/views.hpp"

template <class REAL>
struct STATION_OF {
  REAL xi, eta, weight;
};
using SURFACE_STATION = STATION_OF<double>;

constexpr double QUAD_GAUSS = 0.577350269189626;  // 1 / sqrt 3, fifteen digits

constexpr SURFACE_STATION QUAD_RULE_FULL[4] = {{-QUAD_GAUSS, -QUAD_GAUSS, 1.0},
                                               {QUAD_GAUSS, -QUAD_GAUSS, 1.0},
                                               {QUAD_GAUSS, QUAD_GAUSS, 1.0},
                                               {-QUAD_GAUSS, QUAD_GAUSS, 1.0}};
constexpr SURFACE_STATION QUAD_RULE_CENTRE[1] = {{0.0, 0.0, 4.0}};
constexpr SURFACE_STATION QUAD_RULE_NODES[4] = {{-1.0, -1.0, 0.0}, {1.0, -1.0, 0.0}, {1.0, 1.0, 0.0}, {-1.0, 1.0, 0.0}};

constexpr double SIXTH = 1.0 / 6.0;
constexpr double THIRD = 1.0 / 3.0;
constexpr double TWO_THIRDS = 2.0 / 3.0;

// The four-point rule is exact to degree three. The weight of its centroid is negative, -9/32; the others are 25/96 in
// fifteen digits, so that the weights add up to 0.500000000000001.
constexpr double TRI_CENTROID_WEIGHT = -0.28125;
constexpr double TRI_CORNER_WEIGHT = 0.260416666666667;

constexpr SURFACE_STATION TRI_RULE_THREE[3] = {
    {SIXTH, SIXTH, SIXTH}, {TWO_THIRDS, SIXTH, SIXTH}, {SIXTH, TWO_THIRDS, SIXTH}};
constexpr SURFACE_STATION TRI_RULE_FOUR[4] = {{THIRD, THIRD, TRI_CENTROID_WEIGHT},
                                              {0.2, 0.2, TRI_CORNER_WEIGHT},
                                              {0.6, 0.2, TRI_CORNER_WEIGHT},
                                              {0.2, 0.6, TRI_CORNER_WEIGHT}};
constexpr SURFACE_STATION TRI_RULE_NODES[3] = {{0.0, 0.0, 0.0}, {1.0, 0.0, 0.0}, {0.0, 1.0, 0.0}};

constexpr int TRI_RULE_COUNT = 4;
constexpr int QUAD_RULE_COUNT = 4;

// One point with the Jacobian of the straight-sided map there.
//
//     j = [dx/dxi dy/dxi; dx/deta dy/deta],   g = its inverse:   d/dx = g11 d/dxi + g12 d/deta,   d/dy = g21, g22
template <class REAL>
struct POINT_OF {
  REAL xi, eta, detj, weight;
  REAL j11, j12, j21, j22;
  REAL g11, g12, g21, g22;
};
using SURFACE_POINT = POINT_OF<double>;

// j: sums over the nodes of the derivatives of the shape functions times x (column 1) and y (column 2). The inverse
// multiplies by 1 / detj instead of dividing: the closed forms divide and may differ in the last bit. A determinant of
// zero gives infinite values or NaN.
template <int NODES, class REAL>
inline POINT_OF<REAL> point_with_jacobian(const STATION_OF<REAL>& s, const REAL (&dxi)[NODES],
                                          const REAL (&deta)[NODES], const double* xyz) {
  const MATRIX_VIEW<3, const double> X(xyz);
  POINT_OF<REAL> p{};
  p.xi = s.xi;
  p.eta = s.eta;
  p.weight = s.weight;
  for (int n = 1; n <= NODES; ++n) {
    p.j11 += dxi[n - 1] * X(1, n);
    p.j12 += dxi[n - 1] * X(2, n);
    p.j21 += deta[n - 1] * X(1, n);
    p.j22 += deta[n - 1] * X(2, n);
  }
  p.detj = p.j11 * p.j22 - p.j12 * p.j21;
  const REAL reciprocal = 1.0 / p.detj;
  p.g11 = reciprocal * p.j22;
  p.g12 = -reciprocal * p.j12;
  p.g21 = -reciprocal * p.j21;
  p.g22 = reciprocal * p.j11;
  return p;
}

// A station of the quadrilateral, with xyz (3, 4), and one of the triangle, with xyz (3, 3).
template <class REAL>
inline POINT_OF<REAL> quad_point_at(const STATION_OF<REAL>& s, const double* xyz) {
  const REAL dxi[4] = {-(1.0 - s.eta) / 4.0, (1.0 - s.eta) / 4.0, (1.0 + s.eta) / 4.0, -(1.0 + s.eta) / 4.0};
  const REAL deta[4] = {-(1.0 - s.xi) / 4.0, -(1.0 + s.xi) / 4.0, (1.0 + s.xi) / 4.0, (1.0 - s.xi) / 4.0};
  return point_with_jacobian(s, dxi, deta, xyz);
}

inline SURFACE_POINT tri_point_at(const SURFACE_STATION& s, const double* xyz) {
  constexpr double dxi[3] = {-1.0, 1.0, 0.0};
  constexpr double deta[3] = {-1.0, 0.0, 1.0};
  return point_with_jacobian(s, dxi, deta, xyz);
}

// What GAUSS_INT_2D returns, by value. xyz (3, nodes).
SURFACE_POINT surface_point(std::int32_t rule, std::int32_t point, std::int32_t nodes, const double* xyz);

#endif
