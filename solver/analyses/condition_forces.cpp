// condition_forces.cpp: the multipliers of conditions times their factors, gathered by cards and nodes.
#include "analyses/condition_forces.h"

#include <map>
#include <tuple>

#include "elements/constraints.h"
#include "model/vectors.h"

namespace solver {

namespace {

using forces_by_node = std::map<int, std::array<double, DIRECTIONS>>;

// Forces, and moments about the origin.
std::array<double, DIRECTIONS> sum_of(const model& m, const std::vector<node_force>& nodes) {
  std::array<double, DIRECTIONS> sum{};
  for (const node_force& at : nodes) {
    const vector3 moment = cross(m.nodes[at.node].xyz, {at.force[0], at.force[1], at.force[2]});
    for (std::size_t i = 0; i < DIRECTIONS; ++i) sum[i] += at.force[i] + (i < 3 ? 0 : moment[i - 3]);
  }
  return sum;
}

}  // namespace

std::vector<card_force> forces_of_conditions(const model& m, const static_solution& solution) {
  std::vector<card_force> cards;
  std::vector<forces_by_node> forces;  // by card
  std::map<std::tuple<int, int, std::string>, std::size_t> index_of;
  for (std::size_t c = 0; c < solution.multiplier.size(); ++c) {
    const linear_constraint& condition = solution.loads.conditions[c];
    if (is_support(condition)) continue;
    const auto [at, is_new] =
        index_of.emplace(std::make_tuple(condition.file, condition.line, condition.keyword), cards.size());
    if (is_new) {
      cards.push_back({condition.keyword, condition.line, condition.file, {}, {}});
      forces.emplace_back();
    }
    for (const constraint_term& term : condition.terms) {
      forces[at->second][term.node][subscript(term.dof - 1)] += solution.multiplier[c] * term.factor;
    }
  }
  for (std::size_t k = 0; k < cards.size(); ++k) {
    for (const auto& [node, force] : forces[k]) cards[k].nodes.push_back({node, force});
    cards[k].sum = sum_of(m, cards[k].nodes);
  }
  return cards;
}

std::vector<node_force> moments_of_turned_arms(const static_solution& solution) {
  std::vector<double> moments(solution.displacement.size(), 0.0);
  add_moments_of_arms(solution.turned_arms, solution.displacement, moments);
  forces_by_node forces;
  for (const arm_stiffness& arm : solution.turned_arms) {
    for (int d = 0; d < DIRECTIONS; ++d) forces[arm.node][subscript(d)] = -moments[freedom(arm.node, d)];
  }
  std::vector<node_force> result;
  for (const auto& [node, force] : forces) result.push_back({node, force});
  return result;
}

}  // namespace solver
