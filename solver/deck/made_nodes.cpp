// made_nodes.cpp: what a deck gives at the nodes of a quadratic element holds at the nodes that were made in it.
//
// A displacement that is prescribed at all nodes round a made node, and temperatures, are what the functions of the
// element make of their values in the middle: on a plane of symmetry the middle of a face is held as its corners are.
#include <algorithm>
#include <map>
#include <utility>

#include "deck/build.h"
#include "model/base_step.h"

namespace solver::deck {

namespace {

constexpr int DOFS = 6;

// Which degrees of freedom of the nodes are prescribed, with the last value.
struct prescribed_values {
  explicit prescribed_values(const model& m) : held(DOFS * m.nodes.size(), 0), value(held.size(), 0) {}

  void add(const std::vector<boundary_condition>& list, double factor = 1) {
    for (const boundary_condition& c : list) {
      for (int dof = c.first_dof; dof <= c.last_dof; ++dof) {
        held[DOFS * c.node + dof - 1] = 1;
        value[DOFS * c.node + dof - 1] = factor * c.value;
      }
    }
  }

  numbered<char> held;
  numbered<double> value;
};

// One more condition for each freedom of a made node whose neighbours are all in `all`, and one at least in `own`.
void complete_boundaries(const model& m, const prescribed_values& all, const prescribed_values& own,
                         std::vector<boundary_condition>& list) {
  if (list.empty()) return;
  boundary_condition c = list.front();
  for (const made_node& made : m.made_nodes) {
    for (int dof = 1; dof <= DOFS; ++dof) {
      const auto in = [&](const prescribed_values& p) {
        return [&p, dof](int n) { return p.held[DOFS * n + dof - 1] != 0; };
      };
      if (own.held[DOFS * made.node + dof - 1] != 0) continue;
      if (!std::all_of(made.from.begin(), made.from.end(), in(all))) continue;
      if (!std::any_of(made.from.begin(), made.from.end(), in(own))) continue;
      c.node = made.node;
      c.first_dof = c.last_dof = dof;
      c.value = 0;
      for (std::size_t i = 0; i < made.from.size(); ++i) {
        c.value += made.weights[i] * all.value[DOFS * made.from[i] + dof - 1];
      }
      list.push_back(c);
    }
  }
}

// In a step with PERTURBATION what the head and its base state hold stays where it is.
void complete_step(const model& m, step& s) {
  const step* const base = base_step(m, s);
  prescribed_values all(m), own(m);
  all.add(m.boundaries, base == nullptr ? 1 : 0);
  if (base != nullptr) all.add(base->boundaries, 0);
  all.add(s.boundaries);
  own.add(s.boundaries);
  complete_boundaries(m, all, own, s.boundaries);
}

void complete_temperatures(const model& m, std::vector<nodal_temperature>& list) {
  if (list.empty()) return;
  numbered<nodal_temperature> at_node(m.nodes.size());
  for (const nodal_temperature& t : list) at_node[t.node] = t;
  nodal_temperature t = list.front();
  for (const made_node& made : m.made_nodes) {
    t.node = made.node;
    t.change = t.gradient = 0;
    for (std::size_t i = 0; i < made.from.size(); ++i) {
      t.change += made.weights[i] * at_node[made.from[i]].change;
      t.gradient += made.weights[i] * at_node[made.from[i]].gradient;
    }
    if (t.change != 0 || t.gradient != 0) list.push_back(t);
  }
}

void complete_initial_temperatures(model& m) {
  if (m.initial_temperature.empty()) return;
  m.initial_temperature.resize(m.nodes.size(), 0.0);
  for (const made_node& made : m.made_nodes) {
    double& value = m.initial_temperature[made.node];
    value = 0;
    for (std::size_t i = 0; i < made.from.size(); ++i) value += made.weights[i] * m.initial_temperature[made.from[i]];
  }
}

using factors = std::vector<std::pair<int, double>>;  // degree of freedom, factor

// Conditions on one node in a direction that is no axis: by their factors, the node and which condition it is.
std::map<factors, std::map<int, std::size_t>> conditions_by_direction(const std::vector<linear_constraint>& list) {
  std::map<factors, std::map<int, std::size_t>> result;
  for (std::size_t i = 0; i < list.size(); ++i) {
    const std::vector<constraint_term>& terms = list[i].terms;
    if (terms.empty()) continue;
    const bool alone =
        std::all_of(terms.begin(), terms.end(), [&](const constraint_term& t) { return t.node == terms.front().node; });
    if (!alone) continue;
    factors direction;
    for (const constraint_term& t : terms) direction.emplace_back(t.dof, t.factor);
    result[direction][terms.front().node] = i;
  }
  return result;
}

void complete_constraints(const model& m, std::vector<linear_constraint>& list) {
  for (const auto& [direction, at_nodes] : conditions_by_direction(list)) {
    for (const made_node& made : m.made_nodes) {
      const bool all =
          std::all_of(made.from.begin(), made.from.end(), [&nodes = at_nodes](int n) { return nodes.count(n) > 0; });
      if (!all) continue;
      linear_constraint c = list[at_nodes.at(made.from.front())];
      c.value = 0;
      for (constraint_term& t : c.terms) t.node = made.node;
      for (std::size_t i = 0; i < made.from.size(); ++i) {
        c.value += made.weights[i] * list[at_nodes.at(made.from[i])].value;
      }
      list.push_back(c);
    }
  }
}

// A node that is held as those that it is made from has their axes.
void complete_axes(model& m) {
  std::map<int, std::size_t> turned;
  for (std::size_t i = 0; i < m.turned_nodes.size(); ++i) turned[m.turned_nodes[i].node] = i;
  for (const made_node& made : m.made_nodes) {
    const auto first = turned.find(made.from.front());
    if (first != turned.end()) m.turned_nodes.push_back({made.node, m.turned_nodes[first->second].axes});
  }
}

}  // namespace

void complete_made_nodes(build& b) {
  model& m = b.result;
  if (m.made_nodes.empty()) return;
  complete_initial_temperatures(m);
  for (step& s : m.steps) {
    complete_step(m, s);
    complete_temperatures(m, s.temperatures);
    complete_constraints(m, s.constraints);
  }
  prescribed_values head(m);
  head.add(m.boundaries);
  complete_boundaries(m, head, head, m.boundaries);
  complete_constraints(m, m.constraints);
  complete_axes(m);
}

}  // namespace solver::deck
