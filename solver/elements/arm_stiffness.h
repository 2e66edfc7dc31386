// arm_stiffness.h: the geometric stiffness of rigid arms, which are conditions between nodes and not elements.
//
// An arm r that turns by theta carries its end by theta cross r + theta cross (theta cross r) / 2. The second part
// meets the force on the end: of a condition on component i with the multiplier lambda
//     G = lambda (sym(e_i r^T) - r_i 1)
// for the rotations of the body. A load -P at the top of a rigid column of height h makes -P h of it, whatever the
// mesh.
#ifndef FINITES_SOLVER_ARM_STIFFNESS_H
#define FINITES_SOLVER_ARM_STIFFNESS_H

#include <array>
#include <vector>

#include "elements/scatter_map.h"
#include "model/model.h"

namespace solver {

// Of all arms that turn with one body.
struct arm_stiffness {
  int node = 0;            // whose degrees of freedom turn it
  int first_rotation = 4;  // the one about x
  std::array<std::array<double, 3>, 3> G{};
};

// Sorted as scatter_map::bodies is; bodies without a force have none.
std::vector<arm_stiffness> stiffness_of_arms(const std::vector<linear_constraint>& conditions,
                                             const std::vector<double>& multipliers);

// A += G of each body, over its equations.
void add_arms(const scatter_map& map, const std::vector<arm_stiffness>& arms, symmetric_matrix& A);
// The same, and right -= G theta of prescribed rotations.
void add_arms(const scatter_map& map, const std::vector<arm_stiffness>& arms, symmetric_matrix& A,
              std::vector<double>& right);

// forces += G theta, by degree of freedom.
void add_moments_of_arms(const std::vector<arm_stiffness>& arms, const std::vector<double>& displacement,
                         std::vector<double>& forces);

}  // namespace solver

#endif
