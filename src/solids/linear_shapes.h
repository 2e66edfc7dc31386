// linear_shapes.h: nodes, points, shape functions and derivatives of the three linear kinds, as constants that the
// compiler works out (linear_kinds.h). Formulas: shapes.cpp; rules: integration.cpp.
#ifndef FINITES_SOLID_LINEAR_SHAPES_H
#define FINITES_SOLID_LINEAR_SHAPES_H

#include <cstdint>

// Single-precision values, widened to double, except the first.
constexpr double BRICK_GAUSS = 0.577350269189626;  // 1/sqrt 3 in fifteen digits, for the eight-node brick only
constexpr double GAUSS = 0.5773502588272095;
constexpr double WEDGE_WEIGHT = 0.1666666716337204;

// A place in natural coordinates.
struct NATURAL {
  double xi, eta, zeta;
};

constexpr NATURAL BRICK_8_NODES[8] = {{-1, -1, -1}, {1, -1, -1}, {1, 1, -1}, {-1, 1, -1},
                                      {-1, -1, 1},  {1, -1, 1},  {1, 1, 1},  {-1, 1, 1}};
constexpr NATURAL WEDGE_6_NODES[6] = {{0, 0, -1}, {1, 0, -1}, {0, 1, -1}, {0, 0, 1}, {1, 0, 1}, {0, 1, 1}};
constexpr NATURAL TETRA_4_NODES[4] = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}};

constexpr NATURAL BRICK_8_POINTS[8] = {
    {-BRICK_GAUSS, -BRICK_GAUSS, -BRICK_GAUSS}, {BRICK_GAUSS, -BRICK_GAUSS, -BRICK_GAUSS},
    {BRICK_GAUSS, BRICK_GAUSS, -BRICK_GAUSS},   {-BRICK_GAUSS, BRICK_GAUSS, -BRICK_GAUSS},
    {-BRICK_GAUSS, -BRICK_GAUSS, BRICK_GAUSS},  {BRICK_GAUSS, -BRICK_GAUSS, BRICK_GAUSS},
    {BRICK_GAUSS, BRICK_GAUSS, BRICK_GAUSS},    {-BRICK_GAUSS, BRICK_GAUSS, BRICK_GAUSS}};
constexpr NATURAL WEDGE_6_POINTS[6] = {{0.5, 0.5, -GAUSS}, {0.0, 0.5, -GAUSS}, {0.5, 0.0, -GAUSS},
                                       {0.5, 0.5, GAUSS},  {0.0, 0.5, GAUSS},  {0.5, 0.0, GAUSS}};
constexpr NATURAL TETRA_4_POINTS[1] = {{0.25, 0.25, 0.25}};

// The function of node k, k = 0, 1, ..., and its derivatives by xi, eta, zeta.

constexpr double brick_8_function(int k, const NATURAL& at) {
  const NATURAL c = BRICK_8_NODES[k];
  return (1.0 + at.xi * c.xi) * (1.0 + at.eta * c.eta) * (1.0 + at.zeta * c.zeta) / 8.0;
}

constexpr NATURAL brick_8_slope(int k, const NATURAL& at) {
  const NATURAL c = BRICK_8_NODES[k];
  const double x = 1.0 + at.xi * c.xi;
  const double y = 1.0 + at.eta * c.eta;
  const double z = 1.0 + at.zeta * c.zeta;
  return {c.xi * y * z / 8.0, c.eta * x * z / 8.0, c.zeta * x * y / 8.0};
}

// The triangle's coordinates (L, xi, eta), times (1 - zeta) / 2 on the lower and (1 + zeta) / 2 on the upper triangle.
constexpr double wedge_6_function(int k, const NATURAL& at) {
  const double triangle[3] = {1.0 - at.xi - at.eta, at.xi, at.eta};
  return (k < 3 ? (1.0 - at.zeta) / 2.0 : (1.0 + at.zeta) / 2.0) * triangle[k % 3];
}

constexpr NATURAL wedge_6_slope(int k, const NATURAL& at) {
  constexpr double by_xi[3] = {-1.0, 1.0, 0.0};
  constexpr double by_eta[3] = {-1.0, 0.0, 1.0};
  const double triangle[3] = {1.0 - at.xi - at.eta, at.xi, at.eta};
  const double height = k < 3 ? (1.0 - at.zeta) / 2.0 : (1.0 + at.zeta) / 2.0;
  const double through = k < 3 ? -triangle[k % 3] / 2.0 : triangle[k % 3] / 2.0;
  return {height * by_xi[k % 3], height * by_eta[k % 3], through};
}

constexpr double tetra_4_function(int k, const NATURAL& at) {
  const double volume[4] = {1.0 - at.xi - at.eta - at.zeta, at.xi, at.eta, at.zeta};
  return volume[k];
}

constexpr NATURAL tetra_4_slope(int k, const NATURAL& /*at*/) {
  constexpr NATURAL slope[4] = {{-1.0, -1.0, -1.0}, {1.0, 0.0, 0.0}, {0.0, 1.0, 0.0}, {0.0, 0.0, 1.0}};
  return slope[k];
}

#endif
