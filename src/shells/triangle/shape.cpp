// shape.cpp: cubic functions of the transverse displacement (after Bazeley, Cheung, Irons and Zienkiewicz, 1965).
//
//     w = sum_i  a(3 i - 2) w_i + a(3 i - 1) w,xi_i + a(3 i) w,eta_i
//
// with the area coordinates s = 1 - xi - eta, xi, eta and the bubble t = xi eta s.
//
// Mirror: shells/quadrilateral/shape.cpp.
#include "shells/triangle/shape.h"

void TRI_W_SHAPE(double xi, double eta, VECTOR<9>& a) {
  const double s = 1.0 - xi - eta;
  const double t = xi * eta * s;
  // clang-format off
  a(1) = s * s * (3.0 - 2.0 * s) + 2.0 * t;
  a(2) = s * s * xi + t / 2.0;
  a(3) = s * s * eta + t / 2.0;
  a(4) = xi * xi * (3.0 - 2.0 * xi) + 2.0 * t;
  a(5) = xi * xi * (xi - 1.0) - t;
  a(6) = xi * xi * eta + t / 2.0;
  a(7) = eta * eta * (3.0 - 2.0 * eta) + 2.0 * t;
  a(8) = eta * eta * xi + t / 2.0;
  a(9) = eta * eta * (eta - 1.0) - t;
  // clang-format on
}
