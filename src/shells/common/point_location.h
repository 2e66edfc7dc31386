// point_location.h: a point and a flat element: its distance from the plane, and on which side of the sides it lies.
#ifndef FINITES_POINT_LOCATION_H
#define FINITES_POINT_LOCATION_H

#include <cmath>

#include "common/constants.h"
#include "finites/views.hpp"
#include "shells/common/elem_loads.h"
#include "shells/common/frame.h"
#include "shells/common/groups.h"

inline VECTOR<3> point_of(const ELEM_LOADS& LOADS) { return node_of(&LOADS(LOAD_POINT), 1); }

// The point of the call in element axes, from an origin.
inline VECTOR<3> local_point(const ELEM_LOADS& LOADS, const MATRIX<3, 3>& AXES, const VECTOR<3>& origin) {
  const VECTOR<3> d = difference(point_of(LOADS), origin);
  VECTOR<3> p;
  vector_to_local(AXES, d.data(), p.data());
  return p;
}

// The force of the call in global axes: its global part and its local part.
inline VECTOR<3> global_force(const ELEM_LOADS& LOADS, const MATRIX<3, 3>& AXES) {
  VECTOR<3> F_g;
  vector_to_global(AXES, &LOADS(LOAD_FORCE_LOCAL), F_g.data());
  for (int i = 1; i <= 3; ++i) F_g(i) += LOADS(LOAD_FORCE + i - 1);
  return F_g;
}

// Distance from the plane of the first three nodes, positive on the side of its normal.
inline double distance_from_plane(const VECTOR<3>& P, const double* xyz) {
  const VECTOR<3> X1 = node_of(xyz, 1);
  const VECTOR<3> n = cross(difference(node_of(xyz, 2), X1), difference(node_of(xyz, 3), X1));
  const double d = -(n(1) * X1(1) + n(2) * X1(2) + n(3) * X1(3));
  const double r = std::pow(n(1) * n(1) + n(2) * n(2) + n(3) * n(3), 0.5);
  return (n(1) * P(1) + n(2) * P(2) + n(3) * P(3) + d) / r;
}

// The flags of operation 9, for a point p and node coordinates in element axes.
//
//   point_flag1  out  0 inside or on a side, 1 outside a side by more than INSIDE_LIMIT
//   point_flag2  out  0 near the plane, 1 above it by more than OUT_OF_PLANE_LIMIT times the longest side. The distance
//                     counts with its sign: a point below the plane is always near. NaN gives 1.
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
