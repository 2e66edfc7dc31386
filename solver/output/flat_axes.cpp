// flat_axes.cpp: *TRANSFORM, and what stands in its axes.
#include "output/flat_axes.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <string>

#include "elements/constraints.h"
#include "model/model_error.h"
#include "model/vectors.h"
#include "output/text.h"

namespace solver {

namespace {

constexpr double NO_PART = 1e-14;  // by the largest component

// Components of one node of one kind, translations or rotations, that stand behind one another: one vector.
struct triple {
  int node = 0, first = 1;  // 1 or 4
  vector3 value{};
};

int first_of(int dof) { return dof <= 3 ? 1 : 4; }

}  // namespace

flat_axes::flat_axes(const model& m) : model_(m) {
  std::map<int, const node_axes*> all;
  for (const node_axes& each : m.turned_nodes) all[each.node] = &each;
  const auto take = [&](const std::vector<linear_constraint>& list) {
    for (const linear_constraint& c : list) {
      if (!is_support(c)) continue;
      const auto own = all.find(c.terms.front().node);
      if (own == all.end()) throw model_error(m, c, c.keyword, "--write knows no axes in which this condition holds");
      turned_.insert(*own);
    }
  };
  take(m.constraints);
  for (const step& s : m.steps) take(s.constraints);
}

const node_axes* flat_axes::of(int node) const {
  const auto found = turned_.find(node);
  return found == turned_.end() ? nullptr : found->second;
}

std::string flat_axes::free_name() const {
  std::string name = "AXES";
  const auto taken = [&](const named_set& set) { return set.name.rfind(name + "_", 0) == 0; };
  while (std::any_of(model_.nsets.begin(), model_.nsets.end(), taken)) name.insert(name.begin(), '_');
  return name;
}

void flat_axes::append_cards(fmt::memory_buffer& out) const {
  std::map<std::array<std::array<double, 3>, 3>, std::vector<int>> alike;
  for (const auto& [node, own] : turned_) alike[own->axes].push_back(node);
  const std::string name = free_name();
  int number = 0;
  for (const auto& [axes, nodes] : alike) {
    append(out, "*NSET, NSET={}_{}\n", name, ++number);
    for (const int node : nodes) append(out, "{}\n", model_.nodes[node].id);
    append(out, "*TRANSFORM, NSET={}_{}, TYPE=R\n", name, number);
    append(out, "{}, {}, {}, {}, {}, {}\n", axes[0][0], axes[0][1], axes[0][2], axes[1][0], axes[1][1], axes[1][2]);
  }
}

// The axis of the node along which its condition holds.
flat_axes::component flat_axes::support(const linear_constraint& c) const {
  triple along{c.terms.front().node, first_of(c.terms.front().dof), {}};
  for (const constraint_term& t : c.terms) along.value[subscript(t.dof - along.first)] = t.factor;
  const node_axes& own = *of(along.node);
  std::size_t most = 0;
  for (std::size_t k = 1; k < 3; ++k) {
    if (std::fabs(dot(own.axes[k], along.value)) > std::fabs(dot(own.axes[most], along.value))) most = k;
  }
  return {along.node, along.first + number_of(most), c.value};
}

// Global components, those of nodes with axes of their own turned into these.
std::vector<flat_axes::component> flat_axes::own_components(const std::vector<component>& global) const {
  std::vector<component> result;
  std::set<int> seen;  // directions of the vector that is gathered
  triple vector;
  const auto close = [&] {
    if (seen.empty()) return;
    const node_axes& own = *of(vector.node);
    for (std::size_t k = 0; k < 3; ++k) {
      const double along = dot(own.axes[k], vector.value);
      if (std::fabs(along) <= NO_PART * norm(vector.value)) continue;
      result.push_back({vector.node, vector.first + number_of(k), along});
    }
    seen.clear();
  };
  for (const component& each : global) {
    const bool goes_on = each.node == vector.node && first_of(each.dof) == vector.first && seen.count(each.dof) == 0;
    if (!goes_on) close();
    if (of(each.node) == nullptr) {
      result.push_back(each);
      continue;
    }
    if (seen.empty()) vector = {each.node, first_of(each.dof), {}};
    vector.value[subscript(each.dof - vector.first)] = each.value;
    seen.insert(each.dof);
  }
  close();
  return result;
}

// A support along a global axis at such a node lies along one of its own, which is then exact, or holds all three.
void flat_axes::append_boundaries(fmt::memory_buffer& out, const std::vector<boundary_condition>& list) const {
  if (!list.empty()) append(out, "*BOUNDARY\n");
  for (const boundary_condition& c : list) {
    const node_axes* const own = of(c.node);
    const bool all = c.value == 0 && first_of(c.first_dof) == c.first_dof && c.last_dof % 3 == 0;
    if (own == nullptr || all) {
      append(out, "{}, {}, {}, {}\n", model_.nodes[c.node].id, c.first_dof, c.last_dof, c.value);
      continue;
    }
    for (int dof = c.first_dof; dof <= c.last_dof; ++dof) {
      for (const component& part : own_components({{c.node, dof, 1}})) {
        append(out, "{}, {}, {}, {}\n", model_.nodes[c.node].id, part.dof, part.dof, part.value * c.value);
      }
    }
  }
}

void flat_axes::append_constraints(fmt::memory_buffer& out, const std::vector<linear_constraint>& list) const {
  for (const linear_constraint& c : list) {
    if (is_support(c)) {
      const component held = support(c);
      append(out, "*BOUNDARY\n{0}, {1}, {1}, {2}\n", model_.nodes[held.node].id, held.dof, held.value);
      continue;
    }
    if (c.value != 0) {
      throw model_error(model_, c, c.keyword, "an *EQUATION of a flat deck has no value on its right side");
    }
    std::vector<component> terms;
    terms.reserve(c.terms.size());
    for (const constraint_term& t : c.terms) terms.push_back({t.node, t.dof, t.factor});
    terms = own_components(terms);
    append(out, "*EQUATION\n{}\n", terms.size());
    for (const component& t : terms) append(out, "{}, {}, {}\n", model_.nodes[t.node].id, t.dof, t.value);
  }
}

void flat_axes::append_loads(fmt::memory_buffer& out, const std::vector<nodal_load>& list) const {
  if (!list.empty()) append(out, "*CLOAD\n");
  std::vector<component> loads;
  loads.reserve(list.size());
  for (const nodal_load& load : list) loads.push_back({load.node, load.dof, load.value});
  for (const component& load : own_components(loads)) {
    append(out, "{}, {}, {}\n", model_.nodes[load.node].id, load.dof, load.value);
  }
}

}  // namespace solver
