// slopes.h: derivatives by x and y of functions of the natural coordinates.
//
//     n.X(i) = g11 dxi(i) + g12 deta(i),    n.Y(i) = g21 dxi(i) + g22 deta(i)
//
// with the inverse Jacobian g (surface_points.h).
#ifndef FINITES_SLOPES_H
#define FINITES_SLOPES_H

#include "finites/views.hpp"

template <int N, class REAL = double>
struct SLOPES {
  VECTOR<N, REAL> X, Y;
};

// From the derivatives by xi and eta and the inverse Jacobian.
template <int N, class REAL>
inline SLOPES<N, REAL> slopes_of(const REAL (&dxi)[N], const REAL (&deta)[N], REAL g11, REAL g12, REAL g21, REAL g22) {
  SLOPES<N, REAL> n;
  for (int i = 1; i <= N; ++i) {
    n.X(i) = g11 * dxi[i - 1] + g12 * deta[i - 1];
    n.Y(i) = g21 * dxi[i - 1] + g22 * deta[i - 1];
  }
  return n;
}

// Of the three linear functions 1 - xi - eta, xi, eta of a triangle.
inline SLOPES<3> linear_slopes(double g11, double g12, double g21, double g22) {
  return {{{-g11 - g12, g11, g12}}, {{-g21 - g22, g21, g22}}};
}

// Of the four bilinear functions (1 + xi_i xi)(1 + eta_i eta) / 4 at a point.
template <class REAL>
inline SLOPES<4, REAL> bilinear_slopes(REAL xi, REAL eta, REAL g11, REAL g12, REAL g21, REAL g22) {
  const REAL dxi[4] = {-(1.0 - eta) / 4.0, (1.0 - eta) / 4.0, (1.0 + eta) / 4.0, -(1.0 + eta) / 4.0};
  const REAL deta[4] = {-(1.0 - xi) / 4.0, -(1.0 + xi) / 4.0, (1.0 + xi) / 4.0, (1.0 - xi) / 4.0};
  return slopes_of(dxi, deta, g11, g12, g21, g22);
}

// The four bilinear functions themselves.
template <class REAL>
inline VECTOR<4, REAL> bilinear(REAL xi, REAL eta) {
  return {{(1.0 - xi) * (1.0 - eta) / 4.0, (1.0 + xi) * (1.0 - eta) / 4.0, (1.0 + xi) * (1.0 + eta) / 4.0,
           (1.0 - xi) * (1.0 + eta) / 4.0}};
}

#endif
