// section_stresses.cpp: the stresses of Euler and Bernoulli's beam.
#include "elements/section_stresses.h"

#include <cmath>

namespace solver {

point_stress stress_at(const frame_section& section, const section_point& point,
                       const std::array<double, SECTION_FORCES>& force) {
  const double c = std::cos(section.place.angle), s = std::sin(section.place.angle);
  const double x1 = point.x1 - section.place.centroid[0], x2 = point.x2 - section.place.centroid[1];
  const double y = c * x1 + s * x2, z = c * x2 - s * x1;
  const double My = c * force[4] + s * force[5], Mz = c * force[5] - s * force[4];
  return {force[0] / section.area, My * z / section.inertia_xz - Mz * y / section.inertia_xy};
}

}  // namespace solver
