// arm_stiffness.cpp: G by body, from the multipliers of the conditions, and its place in the matrix.
#include "elements/arm_stiffness.h"

#include <algorithm>
#include <map>
#include <utility>

#include "elements/tied_element.h"

namespace solver {

namespace {

using body_key = std::pair<int, int>;  // node, degree of freedom of the rotation about x

void add_arm(const rigid_arm& arm, double force, arm_stiffness& to) {
  const std::size_t i = subscript(arm.component);
  for (std::size_t j = 0; j < 3; ++j) {
    to.G[i][j] += force * arm.along[j] / 2;
    to.G[j][i] += force * arm.along[j] / 2;
    to.G[j][j] -= force * arm.along[i];
  }
}

element_matrix matrix_of(const arm_stiffness& arm) {
  element_matrix K{};
  for (int i = 0; i < 3; ++i) {
    for (int j = 0; j < 3; ++j) K(i + 1, j + 1) = arm.G[subscript(i)][subscript(j)];
  }
  return K;
}

// Null where no condition of the step turns the body.
const turning_body* find_body(const scatter_map& map, const arm_stiffness& arm) {
  const body_key key{arm.node, arm.first_rotation};
  const auto at = std::lower_bound(
      map.bodies.begin(), map.bodies.end(), key,
      [](const turning_body& body, const body_key& k) { return body_key(body.node, body.first_rotation) < k; });
  const bool found = at != map.bodies.end() && body_key(at->node, at->first_rotation) == key;
  return found ? &*at : nullptr;
}

}  // namespace

std::vector<arm_stiffness> stiffness_of_arms(const std::vector<linear_constraint>& conditions,
                                             const std::vector<double>& multipliers) {
  std::map<body_key, arm_stiffness> bodies;
  for (std::size_t c = 0; c < multipliers.size(); ++c) {
    const rigid_arm& arm = conditions[c].arm;
    if (arm.node < 0 || multipliers[c] == 0) continue;
    arm_stiffness& body = bodies[{arm.node, arm.first_rotation}];
    body.node = arm.node;
    body.first_rotation = arm.first_rotation;
    add_arm(arm, multipliers[c], body);
  }
  std::vector<arm_stiffness> result;
  result.reserve(bodies.size());
  for (const auto& [key, body] : bodies) result.push_back(body);
  return result;
}

void add_arms(const scatter_map& map, const std::vector<arm_stiffness>& arms, symmetric_matrix& A) {
  if (!map.has_bodies) return;
  for (const arm_stiffness& arm : arms) {
    if (const turning_body* const body = find_body(map, arm); body != nullptr) {
      add_tied(body->tied, 3, matrix_of(arm), A);
    }
  }
}

void add_arms(const scatter_map& map, const std::vector<arm_stiffness>& arms, symmetric_matrix& A,
              std::vector<double>& right) {
  add_arms(map, arms, A);
  for (const arm_stiffness& arm : arms) {
    if (const turning_body* const body = find_body(map, arm); body != nullptr) {
      move_tied(body->tied, 3, matrix_of(arm), right);
    }
  }
}

void add_moments_of_arms(const std::vector<arm_stiffness>& arms, const std::vector<double>& displacement,
                         std::vector<double>& forces) {
  for (const arm_stiffness& arm : arms) {
    const std::size_t first = freedom(arm.node, arm.first_rotation - 1);
    for (std::size_t i = 0; i < 3; ++i) {
      for (std::size_t j = 0; j < 3; ++j) forces[first + i] += arm.G[i][j] * displacement[first + j];
    }
  }
}

}  // namespace solver
