// mass.cpp: consistent mass of the three-node elements: linear in the plane, cubic across it (Bazeley, Cheung, Irons
// and Zienkiewicz, 1965), without rotary inertia.
//
//     membrane   M(u_i, u_j) = M(v_i, v_j) = m (TWO_AREA / 24) (1 + delta_ij)
//     bending    M(i, j) = sum_p  m N(i) N(j) w TWO_AREA,      1 <= i <= j <= 9
//
// m is the mass per area. TWO_AREA / 24 (1 + delta_ij) is the integral of two linear functions; the bending integrand,
// of degree six, is under-integrated by the four points.
//
// Mirror: shells/quadrilateral/mass.cpp.
#include "shells/triangle/mass.h"

#include <algorithm>

#include "shells/common/flat_parts.h"
#include "shells/common/point_pairs.h"
#include "shells/triangle/geometry.h"
#include "shells/triangle/shape.h"

void TRI_MASS_MEMBRANE(const TRIANGLE_GEOMETRY& TRI, double m, double* M) {
  const double d = TRI.TWO_AREA * m / 24.0;
  std::fill_n(M, SYM(6, 6), 0.0);
  for (int i = 1; i <= 6; ++i) M[SYM(i, i) - 1] = 2.0 * d;
  for (int direction = 1; direction <= 2; ++direction) {
    M[SYM(direction, direction + 2) - 1] = d;
    M[SYM(direction, direction + 4) - 1] = d;
    M[SYM(direction + 2, direction + 4) - 1] = d;
  }
}

namespace {

// The functions of w, theta x, theta y of each node from those of w, w,xi, w,eta of TRI_W_SHAPE:
//
//     N(theta x) = y3 a_eta,    N(theta y) = -(x2 a_xi + x3 a_eta),      x2 = X21, x3 = -X13, y3 = -Y13
//
// The loads compute the same from the inverse Jacobian (w_load.h): the two round differently, and both are part of the
// results (docs/decisions.md).
VECTOR<9, LANES> freedom_functions(const TRIANGLE_GEOMETRY& TRI, const STATION_PAIR& s) {
  const VECTOR<9, LANES> a = tri_w_shape(s.xi, s.eta);
  VECTOR<9, LANES> N;
  for (int n = 1; n <= 3; ++n) {
    N(3 * n - 2) = a(3 * n - 2);
    N(3 * n - 1) = -TRI.Y13 * a(3 * n);
    N(3 * n) = -(a(3 * n - 1) * TRI.X21 - a(3 * n) * TRI.X13);
  }
  return N;
}

}  // namespace

void TRI_MASS_BENDING(const TRIANGLE_GEOMETRY& TRI, double m, const SURFACE_STATION (&rule)[4], double* M) {
  const STATION_PAIR s1 = station_pair(rule[0], rule[1]);
  const STATION_PAIR s2 = station_pair(rule[2], rule[3]);
  const double c = TRI.TWO_AREA * m;
  integrate_packed(freedom_functions(TRI, s1), s1.weight * c, freedom_functions(TRI, s2), s2.weight * c, M);
}

void TRI_MASS(const TRIANGLE_GEOMETRY& TRI, double m, FLAT_PARTS<3>& parts) {
  TRI_MASS_MEMBRANE(TRI, m, parts.membrane);
  TRI_MASS_BENDING(TRI, m, TRI_RULE_FOUR, parts.plate);
  std::fill_n(parts.drilling, SYM(3, 3), 0.0);
}
