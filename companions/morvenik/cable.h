// cable.h: the input of both routines: the cable as three numbers and a direction.
#ifndef MORVENIK_CABLE_H
#define MORVENIK_CABLE_H

#include "vector3.h"

namespace morvenik {

// With sigma = s/L0 - 1/2 and m the tension at the middle, t = m - weight sigma down and
//
//   (X2 - X1) / length = integral of t/T over sigma from -1/2 to 1/2  +  m / stiffness
struct cable {
  double length;     // (1 + e) L0
  double stiffness;  // (1 + e) E A
  double weight;     // |w| L0
  vector3 down;      // direction of the load; zero without load
};

// False when the data are no cable: L0, E A or 1 + e not positive, or any value infinite or NaN.
bool make_cable(double area, double E, double L0, double e, const double* w, cable& c);

}  // namespace morvenik

#endif
