// conditions.cpp: linear conditions from cards, and the kinematics of a rigid body.
#include "deck/conditions.h"

#include <algorithm>
#include <numeric>

#include "deck/fields.h"

namespace solver::deck {

condition_source source_of(const card& c) { return {c.keyword, c.line, c.file}; }
condition_source source_of(const card& c, const data_line& l) { return {c.keyword, l.line, l.file}; }

linear_constraint start_condition(const condition_source& from) {
  linear_constraint condition;
  condition.keyword = from.keyword;
  condition.line = from.line;
  condition.file = from.file;
  return condition;
}

void add_condition(build& b, linear_constraint condition) {
  auto& terms = condition.terms;
  terms.erase(std::remove_if(terms.begin(), terms.end(), [](const constraint_term& t) { return t.factor == 0; }),
              terms.end());
  if (terms.empty()) return;
  for (const constraint_term& term : terms) b.node_in_use[term.node] = 1;
  b.result.constraints.push_back(std::move(condition));
}

static bool resists_rotation(const model& m, const element& e) {
  if (is_shell(e.type) || is_beam(e.type) || e.type == element_type::CONN3D2) return true;
  if (e.type != element_type::SPRING1 && e.type != element_type::SPRING2) return false;
  if (e.section < 0) return false;
  const std::array<double, 6>& k = frame_section_of(m, e).stiffness;
  return k[3] != 0 || k[4] != 0 || k[5] != 0;
}

bool turns(build& b, int node) {
  if (b.node_turns.empty()) {
    b.node_turns.assign(b.result.nodes.size(), 1);
    for (const element& e : b.result.elements) {
      const bool stiff = is_plate(e.type) || is_solid(e.type) || is_member(e.type);
      for (const int n : e.nodes) {
        if (stiff) b.node_turns[n] = 0;
      }
    }
    for (const element& e : b.result.elements) {
      if (!resists_rotation(b.result, e)) continue;
      for (const int n : e.nodes) b.node_turns[n] = 1;
    }
  }
  return b.node_turns[node] != 0;
}

void add_rotation(linear_constraint& condition, const body& of, const vector3& arm, std::size_t i, double factor) {
  const std::size_t j = (i + 1) % 3, k = (i + 2) % 3;  // (theta cross r)_i = theta_j r_k - theta_k r_j
  condition.terms.push_back({of.rotation_node, of.first_rotation + number_of(j), factor * arm[k]});
  condition.terms.push_back({of.rotation_node, of.first_rotation + number_of(k), -factor * arm[j]});
}

void follow_body(build& b, const condition_source& from, const body& of, int node, int dof) {
  linear_constraint condition = start_condition(from);
  condition.terms.push_back({node, dof, 1});
  if (dof <= 3) {
    if (node == of.node) return;
    const vector3 arm = difference(b.result.nodes[of.node].xyz, b.result.nodes[node].xyz);
    condition.terms.push_back({of.node, dof, -1});
    add_rotation(condition, of, arm, subscript(dof - 1), -1);
    condition.arm = {of.rotation_node, of.first_rotation, dof - 1, arm};
  } else {
    const int rotation = of.first_rotation + dof - 4;
    if (node == of.rotation_node && dof == rotation) return;
    condition.terms.push_back({of.rotation_node, rotation, -1});
  }
  add_condition(b, std::move(condition));
}

void join_to_body(build& b, const condition_source& from, const body& of, int node, bool with_rotations) {
  for (int dof = 1; dof <= (with_rotations ? 6 : 3); ++dof) follow_body(b, from, of, node, dof);
}

int freedom_field(const data_fields& row, int i) {
  const int dof = row.integer(i, "degree of freedom");
  if (dof < 1 || dof > 6) row.fail("the degree of freedom " + std::to_string(dof) + " is not one of 1 to 6");
  return dof;
}

int node_of_parameter(build& b, const card& c, const char* name) {
  const std::string text = c.value(squeezed(name));
  if (!looks_like_number(text)) {
    const int set = b.nodes.find_set(upper(text));
    if (set < 0 && b.nodes.lost_set(upper(text))) throw consequence{};
    if (set < 0) b.deck.fail(c, std::string(name) + ": the node set " + in_quotes(text) + " is not defined");
    const std::vector<int>& members = b.nodes.members(set);
    if (members.size() != 1) {
      b.deck.fail(c, std::string(name) + ": the node set " + in_quotes(text) + " has " +
                         std::to_string(members.size()) + " nodes, and a reference is one");
    }
    return members.front();
  }
  int id = 0;
  const number_fault fault = parse_integer(text, id);
  if (fault != number_fault::NONE) b.deck.fail(c, std::string(name) + ": " + describe(fault, text, true));
  const int index = b.nodes.index_of(id);
  if (index < 0 && b.nodes.lost(id)) throw consequence{};
  if (index < 0) b.deck.fail(c, std::string(name) + ": node " + std::to_string(id) + " is not defined");
  return index;
}

std::vector<int> nodes_of_field(build& b, const data_fields& row, int i) {
  std::vector<int> nodes = members_of(b, b.nodes, row, i);
  std::sort(nodes.begin(), nodes.end(), [&](int x, int y) { return b.result.nodes[x].id < b.result.nodes[y].id; });
  return nodes;
}

std::string node_name(const build& b, int node) { return "node " + std::to_string(b.result.nodes[node].id); }

}  // namespace solver::deck
