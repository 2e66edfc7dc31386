// cable.cpp: the data of a cable, checked and reduced.
#include "cable.h"

#include <cmath>

namespace morvenik {

bool make_cable(double area, double E, double L0, double e, const double* w, cable& c) {
  const double stretch = 1.0 + e;
  const vector3 load = at(w);
  // Each comparison is also false for NaN.
  if (!(L0 > 0.0 && area * E > 0.0 && stretch > 0.0) || !finite(load)) return false;

  c.length = stretch * L0;
  c.stiffness = stretch * (area * E);
  // The direction is computed from components scaled to order one, so that a load near the smallest double has one too.
  const double size = largest(load);
  const vector3 direction = size > 0.0 ? load / size : vector3{0.0, 0.0, 0.0};
  const double slope = std::sqrt(dot(direction, direction));
  c.weight = size * slope * L0;
  c.down = size > 0.0 ? direction / slope : direction;
  return std::isfinite(c.length) && std::isfinite(c.stiffness) && std::isfinite(c.weight) && c.length > 0.0 &&
         c.stiffness > 0.0;
}

}  // namespace morvenik
