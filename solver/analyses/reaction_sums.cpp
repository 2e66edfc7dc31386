// reaction_sums.cpp: reactions added up by node sets.
#include "analyses/reaction_sums.h"

#include <algorithm>

#include "analyses/load_sums.h"

namespace solver {

namespace {

// Only the reactions of some nodes, the others 0.
class part_of_reactions {
 public:
  part_of_reactions(const model& m, const static_solution& solution)
      : model_(m), solution_(solution), part_(solution.reaction.size(), 0.0) {}

  void take(int node) {
    for (int d = 0; d < DIRECTIONS; ++d) part_[freedom(node, d)] = solution_.reaction[freedom(node, d)];
    taken_.push_back(node);
  }
  // The sum of what was taken, and an empty part again.
  std::array<double, DIRECTIONS> finish() {
    const std::array<double, DIRECTIONS> sum = resultant_of(model_, part_);
    for (const int n : taken_) {
      for (int d = 0; d < DIRECTIONS; ++d) part_[freedom(n, d)] = 0;
    }
    taken_.clear();
    return sum;
  }

 private:
  const model& model_;
  const static_solution& solution_;
  std::vector<double> part_;
  std::vector<int> taken_;
};

// Held nodes that no deck has, with the nodes round them.
std::vector<const made_node*> held_made_nodes(const model& m, const std::vector<char>& held) {
  std::vector<const made_node*> found;
  for (const made_node& made : m.made_nodes) {
    if (held[subscript(made.node)] != 0) found.push_back(&made);
  }
  return found;
}

}  // namespace

// The load case says which freedoms are held; whether the deck or the analysis holds them, the records of the deck.
std::vector<char> supported_freedoms(const model& m, const load_case& loads) {
  std::vector<char> held(loads.prescribed.size(), 0);
  const auto mark = [&](const std::vector<boundary_condition>& boundaries) {
    for (const boundary_condition& c : boundaries) {
      for (int dof = c.first_dof; dof <= c.last_dof; ++dof) {
        const std::size_t f = freedom(c.node, dof - 1);
        if (f < held.size() && loads.prescribed[f] != 0) held[f] = 1;
      }
    }
  };
  mark(m.boundaries);
  for (const step& s : m.steps) mark(s.boundaries);
  return held;
}

std::vector<char> held_nodes(const model& m, const load_case& loads) {
  std::vector<char> held(m.nodes.size(), 0);
  const std::vector<char> freedoms = supported_freedoms(m, loads);
  for (std::size_t f = 0; f < freedoms.size(); ++f) {
    if (freedoms[f] != 0) held[f / DIRECTIONS] = 1;
  }
  for (const linear_constraint& c : loads.conditions) {
    if (!is_support(c)) continue;
    for (const constraint_term& t : c.terms) held[subscript(t.node)] = 1;
  }
  return held;
}

std::vector<set_reaction> reactions_by_set(const model& m, const static_solution& solution) {
  const std::vector<char> held = held_nodes(m, solution.loads);
  const std::vector<const made_node*> made = held_made_nodes(m, held);
  std::vector<char> in_set(m.nodes.size(), 0), named(m.nodes.size(), 0);
  part_of_reactions part(m, solution);
  std::vector<set_reaction> result;
  for (const named_set& set : m.nsets) {
    set_reaction own{set.name, 0, {}};
    for (const int n : set.members) in_set[subscript(n)] = 1;
    for (const int n : set.members) {
      if (held[subscript(n)] == 0) continue;
      part.take(n);
      named[subscript(n)] = 1;
      if (!is_made(m.nodes[n])) ++own.nodes;
    }
    for (const made_node* each : made) {
      const auto inside = [&](int n) { return in_set[subscript(n)] != 0; };
      if (!std::all_of(each->from.begin(), each->from.end(), inside)) continue;
      if (in_set[subscript(each->node)] == 0) part.take(each->node);
      named[subscript(each->node)] = 1;
    }
    for (const int n : set.members) in_set[subscript(n)] = 0;
    own.sum = part.finish();
    if (own.nodes > 0) result.push_back(own);
  }
  set_reaction others{OTHER_SUPPORTS, 0, {}};
  bool any = false;
  for (std::size_t n = 0; n < held.size(); ++n) {
    if (held[n] == 0 || named[n] != 0) continue;
    part.take(number_of(n));
    any = true;
    if (!is_made(m.nodes[n])) ++others.nodes;
  }
  others.sum = part.finish();
  if (any) result.push_back(others);
  return result;
}

}  // namespace solver
