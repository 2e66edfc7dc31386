// shape.cpp: cubic functions of the transverse displacement (after Bazeley, Cheung, Irons and Zienkiewicz, 1965).
//
//     w = sum_i  a(3 i - 2) w_i + a(3 i - 1) w,xi_i + a(3 i) w,eta_i
//
// with the area coordinates s = 1 - xi - eta, xi, eta and the bubble t = xi eta s. At corner i, of coordinate L, with
// the coordinates M and N of the other two, the functions of w and of the slopes towards these two are
//
//     L^2 (3 - 2 L) + 2 t        L^2 M + t / 2        L^2 N + t / 2
//
// At node 1 the slopes along xi and eta are those towards nodes 2 and 3. At node 2 the slope along xi runs away from
// node 1 and takes part in both others, so that a(5) = -(xi^2 s + t / 2) - (xi^2 eta + t / 2) = xi^2 (xi - 1) - t; at
// node 3 a(9) likewise.
//
// Mirror: shells/quadrilateral/shape.cpp.
#include "shells/triangle/shape.h"

void TRI_W_SHAPE(double xi, double eta, VECTOR<9>& a) { a = tri_w_shape(xi, eta); }
