// flat_parts.h: the connected parts of a model's shells that lie in one plane.
#ifndef FINITES_SOLVER_FLAT_PARTS_H
#define FINITES_SOLVER_FLAT_PARTS_H

#include <array>
#include <vector>

#include "model/model.h"

namespace solver {

struct flat_part {
  std::vector<int> nodes;  // ascending
  std::array<double, 3> normal{};
  bool tied = false;  // a section ties the rotation about the normal to the sheet
};

// Parts are joined where elements share a node. A part with a fold or a curvature is not among them.
std::vector<flat_part> find_flat_parts(const model& m);

// Parallel parts whose rotations a condition ties together stand as one.
std::vector<flat_part> joined_by_conditions(const std::vector<flat_part>& parts,
                                            const std::vector<linear_constraint>& conditions, std::size_t nodes);

}  // namespace solver

#endif
