// point_location.h: the position of a point relative to a flat element: its distance from the plane, and whether it is
// inside the sides.
#ifndef FINITES_POINT_LOCATION_H
#define FINITES_POINT_LOCATION_H

#include <cmath>

#include "common/constants.h"
#include "finites/views.hpp"
#include "shells/common/elem_loads.h"
#include "shells/common/frame.h"
#include "shells/common/groups.h"

inline VECTOR<3> point_of(const ELEM_LOADS& LOADS) { return node_of(&LOADS(LOAD_POINT), 1); }

// p = AXES (P - origin): the point of the call in element axes.
inline VECTOR<3> local_point(const ELEM_LOADS& LOADS, const MATRIX<3, 3>& AXES, const VECTOR<3>& origin) {
  const VECTOR<3> d = difference(point_of(LOADS), origin);
  VECTOR<3> p;
  vector_to_local(AXES, d.data(), p.data());
  return p;
}

// F_g = LOADS(LOAD_FORCE) + AXES^T LOADS(LOAD_FORCE_LOCAL): the force of the call in global axes.
inline VECTOR<3> global_force(const ELEM_LOADS& LOADS, const MATRIX<3, 3>& AXES) {
  VECTOR<3> F_g;
  vector_to_global(AXES, &LOADS(LOAD_FORCE_LOCAL), F_g.data());
  for (int i = 1; i <= 3; ++i) F_g(i) += LOADS(LOAD_FORCE + i - 1);
  return F_g;
}

// Distance from the plane of nodes 1, 2, 3, positive on the side of the normal n = (X2 - X1) x (X3 - X1):
//
//     (n . P + d) / r,      d = -n . X1,    r = |n|
//
// pow(x, 0.5) and not sqrt(x): sqrt is rounded correctly, pow of the C library is not, and the two differ in the last
// bit for some arguments (glibc 2.36: one in about 1200). The rounding of pow is part of the results
// (docs/decisions.md). NaN where the three nodes lie on a line.
inline double distance_from_plane(const VECTOR<3>& P, const double* xyz) {
  const VECTOR<3> X1 = node_of(xyz, 1);
  const VECTOR<3> n = cross(difference(node_of(xyz, 2), X1), difference(node_of(xyz, 3), X1));
  const double d = -(n(1) * X1(1) + n(2) * X1(2) + n(3) * X1(3));
  const double r = std::pow(n(1) * n(1) + n(2) * n(2) + n(3) * n(3), 0.5);
  return (n(1) * P(1) + n(2) * P(2) + n(3) * P(3) + d) / r;
}

// The flags of operation 9, for a point p and node coordinates in element axes. The distance from side n, positive to
// the inside where the nodes run counter-clockwise:
//
//     sd = (-dy (p1 - x_n) + dx (p2 - y_n)) / length
//
//   point_flag1  out  0 inside or on a side, 1 outside a side by more than INSIDE_LIMIT
//   point_flag2  out  0 near the plane, 1 above it by more than OUT_OF_PLANE_LIMIT times the longest side. The distance
//                     is compared with its sign: a point below the plane is always near. NaN gives 1.
template <int NODES>
inline void locate_point(const VECTOR<3>& p, const MATRIX<3, NODES>& local, double distance, int& point_flag1,
                         int& point_flag2) {
  VECTOR<NODES> dx;
  VECTOR<NODES> dy;
  VECTOR<NODES> length;
  double longest = 0.0;
  for (int n = 1; n <= NODES; ++n) {
    const int next = n % NODES + 1;
    dx(n) = local(1, next) - local(1, n);
    dy(n) = local(2, next) - local(2, n);
    length(n) = std::sqrt(dx(n) * dx(n) + dy(n) * dy(n));
    if (length(n) > longest) longest = length(n);
  }
  point_flag2 = distance / longest <= OUT_OF_PLANE_LIMIT ? 0 : 1;

  point_flag1 = 0;
  for (int n = 1; n <= NODES; ++n) {
    const double qx = p(1) - local(1, n);
    const double qy = p(2) - local(2, n);
    const double sd = (-dy(n) * qx + dx(n) * qy) / length(n);
    if (sd < -INSIDE_LIMIT) point_flag1 = 1;
  }
}

#endif
