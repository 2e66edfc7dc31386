// shape.cpp: functions of the transverse displacement of a rectangle (after Melosh, 1963), used in the natural
// coordinates.
//
//     w = sum_i  f(3 i - 2) w_i + f(3 i - 1) w,xi_i + f(3 i) w,eta_i
//
//     f(3 i - 2) = (1 + xi_i xi)(1 + eta_i eta)(2 + xi_i xi + eta_i eta - xi^2 - eta^2) / 8
//     f(3 i - 1) = -xi_i (1 + xi_i xi)(1 + eta_i eta)(1 - xi^2) / 8,    f(3 i) likewise with eta
//
// Mirror: shells/triangle/shape.cpp.
#include "shells/quadrilateral/shape.h"

void QUAD_W_SHAPE(double xi, double eta, VECTOR<12>& f) {
  const double A = 2.0 - xi * xi - eta * eta;
  const double B = 1.0 - xi * xi;
  const double C = 1.0 - eta * eta;
  const double d1 = (1.0 - xi) * (1.0 - eta) / 8.0;
  const double d2 = (1.0 + xi) * (1.0 - eta) / 8.0;
  const double d3 = (1.0 + xi) * (1.0 + eta) / 8.0;
  const double d4 = (1.0 - xi) * (1.0 + eta) / 8.0;
  // clang-format off
  f(1)  = d1 * (A - xi - eta);  f(2)  = d1 * B;   f(3)  = d1 * C;
  f(4)  = d2 * (A + xi - eta);  f(5)  = -d2 * B;  f(6)  = d2 * C;
  f(7)  = d3 * (A + xi + eta);  f(8)  = -d3 * B;  f(9)  = -d3 * C;
  f(10) = d4 * (A - xi + eta);  f(11) = d4 * B;   f(12) = -d4 * C;
  // clang-format on
}
