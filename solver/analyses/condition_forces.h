// condition_forces.h: what linear conditions exert on the nodes that they join, card by card.
#ifndef FINITES_SOLVER_CONDITION_FORCES_H
#define FINITES_SOLVER_CONDITION_FORCES_H

#include <array>
#include <string>
#include <vector>

#include "analyses/static_analysis.h"
#include "model/model.h"

namespace solver {

struct node_force {
  int node = 0;
  std::array<double, DIRECTIONS> force{};  // and moment about the node, global axes
};

// The conditions of one line of the deck: an equation with all members of its sets, a rigid body, a tie.
struct card_force {
  std::string keyword;
  int line = 0;
  int file = 0;                          // index into model::files
  std::vector<node_force> nodes;         // ascending; those with a term, also where the force is 0
  std::array<double, DIRECTIONS> sum{};  // forces, and moments about the origin
};

// C^T lambda of each card, in the order of the model. Supports in axes of their own are no conditions here: their
// forces are reactions. Of conditions that follow from others the force is 0; those others carry it.
std::vector<card_force> forces_of_conditions(const model& m, const static_solution& solution);

// In second order what the turning of rigid arms adds at the nodes whose rotations turn them: -G theta, moments.
std::vector<node_force> moments_of_turned_arms(const static_solution& solution);

}  // namespace solver

#endif
