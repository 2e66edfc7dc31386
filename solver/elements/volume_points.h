// volume_points.h: points at which forces on the volume of a solid are integrated.
#ifndef FINITES_SOLVER_VOLUME_POINTS_H
#define FINITES_SOLVER_VOLUME_POINTS_H

#include <array>
#include <vector>

#include "model/model.h"

namespace solver {

struct volume_point {
  std::array<double, 3> place{};
  std::array<double, 8> share{};  // functions of the nodes, in the order of element::nodes
  double volume = 0;
};

// Exact for a force per volume that varies linearly in space, on elements of any shape.
std::vector<volume_point> volume_points(const model& m, const element& e);

}  // namespace solver

#endif
