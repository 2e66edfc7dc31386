// combination.cpp: sums of solutions and of the loads that belong to them.
#include "analyses/combination.h"

#include <algorithm>

#include "model/long_vectors.h"

namespace solver {

namespace {

void scale(std::vector<double>& values, double factor) {
  for (double& value : values) value *= factor;
}

template <std::size_t COUNT>
void add(std::array<double, COUNT>& sum, double factor, const std::array<double, COUNT>& part) {
  for (std::size_t i = 0; i < COUNT; ++i) sum[i] += factor * part[i];
}

void add(distributed_load& sum, double factor, const distributed_load& part) {
  sum.pressure += factor * part.pressure;
  add(sum.body, factor, part.body);
  add(sum.line, factor, part.line);
  add(sum.line_rise, factor, part.line_rise);
  sum.temperature_change += factor * part.temperature_change;
  sum.temperature_difference += factor * part.temperature_difference;
}

void add(load_case& sum, double factor, const load_case& part) {
  add_scaled(sum.prescribed_value, factor, part.prescribed_value);
  add_scaled(sum.nodal_load, factor, part.nodal_load);
  for (std::size_t e = 0; e < sum.element.size(); ++e) add(sum.element[e], factor, part.element[e]);
  for (std::size_t c = 0; c < sum.conditions.size(); ++c) sum.conditions[c].value += factor * part.conditions[c].value;
}

// The structure of the first one, without loads.
load_case without_loads(const load_case& first) {
  load_case loads = first;
  scale(loads.prescribed_value, 0);
  scale(loads.nodal_load, 0);
  for (distributed_load& load : loads.element) {
    const bool increment = load.increment;
    load = {};
    load.increment = increment;
  }
  for (linear_constraint& condition : loads.conditions) condition.value = 0;
  return loads;
}

}  // namespace

static_solution combine(const std::vector<solution_term>& terms) {
  const static_solution& first = *terms.front().solution;
  static_solution sum;
  sum.loads = without_loads(first.loads);
  sum.displacement.assign(first.displacement.size(), 0);
  sum.load.assign(first.load.size(), 0);
  sum.reaction.assign(first.reaction.size(), 0);
  sum.constraint.assign(first.constraint.size(), 0);
  sum.multiplier.assign(first.multiplier.size(), 0);
  sum.turned_arms = first.turned_arms;
  sum.equations = first.equations;
  sum.entries = first.entries;
  sum.smallest_stiffness = first.smallest_stiffness;
  for (const solution_term& term : terms) {
    add(sum.loads, term.factor, term.solution->loads);
    add_scaled(sum.displacement, term.factor, term.solution->displacement);
    add_scaled(sum.load, term.factor, term.solution->load);
    add_scaled(sum.reaction, term.factor, term.solution->reaction);
    add_scaled(sum.constraint, term.factor, term.solution->constraint);
    add_scaled(sum.multiplier, term.factor, term.solution->multiplier);
    sum.residual = std::max(sum.residual, term.solution->residual);
  }
  return sum;
}

}  // namespace solver
