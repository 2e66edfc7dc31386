// flexibility.h: the change of the mean direction of the tension with the tension at the middle.
#ifndef MORVENIK_FLEXIBILITY_H
#define MORVENIK_FLEXIBILITY_H

#include "vector3.h"

namespace morvenik {

// Mean of (I - t tT/T^2)/T over the cable, symmetric, in two unit vectors e1, e2 of the plane of the cable (at right
// angles to each other) and the direction out of that plane. Without a plane e1 or e2 may be zero: the directions
// without a vector then have the stiffness out of plane.
struct flexibility {
  vector3 e1, e2;
  double f11, f12, f22;
  double out;
};

// The tension at the middle is middle, the load weight * down; at least one of them is of order one, none is larger.
flexibility make_flexibility(const vector3& middle, double weight, const vector3& down);

}  // namespace morvenik

#endif
