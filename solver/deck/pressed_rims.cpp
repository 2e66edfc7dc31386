// pressed_rims.cpp: P on shells along free edges that are curved, as the rim of an open cylinder.
//
// The library's load of a plate has moments at its nodes, of an element of the depth L across the edge p L^2 / 12 per
// length of it. Along a free edge no neighbour takes them up. The displacement w of the end of a long cylinder under
// the moment M per length is M / (2 b^2 D), b^4 = 3 (1 - nu^2) / (R t)^2 (Timoshenko and Woinowsky-Krieger, 1959):
// beside the p R^2 / (E t) of the pressure
//
//     w / w0 = (1 - nu^2)^1/2 / (2 3^1/2)  L^2 / (R t),
//
// 0.275 L^2 / (R t) for nu = 0.3, and less where the element is too deep to bend so within itself.
#include <algorithm>
#include <cmath>
#include <map>
#include <optional>
#include <set>
#include <utility>

#include "deck/keywords.h"
#include "elements/plate_axes.h"
#include "model/vectors.h"

namespace solver::deck {

namespace {

constexpr double BEND = 0.275;    // of L^2 / (R t), for nu = 0.3
constexpr double TOLD = 0.01;     // a smaller part of the displacement is not worth a note
constexpr double VALID = 0.15;    // beyond, the element does not follow the formula
constexpr double SHARP = PI / 4;  // an edge that turns by more has a corner there or belongs to a fold
constexpr double ALIKE = 1.01;    // sides that differ by less count as equal: the first one is named

using node_pair = std::pair<int, int>;

node_pair pair_of(int a, int b) { return {std::min(a, b), std::max(a, b)}; }

// Sides of plates that belong to one of them alone and along which no member runs.
std::map<node_pair, int> single_sides(const model& m) {
  std::map<node_pair, int> plate;
  std::set<node_pair> shared;
  for (int e = 0; e < static_cast<int>(m.elements.size()); ++e) {
    const element& own = m.elements[e];
    const numbered<int>& nodes = own.nodes;
    if (is_member(own.type) && nodes.size() == 2) shared.insert(pair_of(nodes[0], nodes[1]));
    if (!is_plate(own.type)) continue;
    for (std::size_t n = 0; n < nodes.size(); ++n) {
      const node_pair side = pair_of(nodes[n], nodes[(n + 1) % nodes.size()]);
      if (!plate.emplace(side, e).second) shared.insert(side);
    }
  }
  for (const node_pair& side : shared) plate.erase(side);
  return plate;
}

// Nodes that a support or a linear condition holds in a step.
std::set<int> bound_nodes(const model& m, const step& s) {
  std::set<int> nodes;
  for (const auto* list : {&m.boundaries, &s.boundaries}) {
    for (const boundary_condition& each : *list) nodes.insert(each.node);
  }
  for (const auto* list : {&m.constraints, &s.constraints}) {
    for (const linear_constraint& each : *list) {
      for (const constraint_term& term : each.terms) nodes.insert(term.node);
    }
  }
  return nodes;
}

// How much an edge a, b, c turns towards the normal at b, per length; 0 at a fold and at a corner.
double curvature(const model& m, const node_pair& first, const node_pair& second, const vector3& normal) {
  const int b = first.first == second.first || first.first == second.second ? first.first : first.second;
  const int a = first.first + first.second - b, c = second.first + second.second - b;
  const vector3 in = difference(m.nodes[a].xyz, m.nodes[b].xyz), out = difference(m.nodes[b].xyz, m.nodes[c].xyz);
  const vector3 before = scaled(in, 1 / norm(in)), after = scaled(out, 1 / norm(out));
  if (dot(before, after) < std::cos(SHARP)) return 0;
  return std::fabs(dot(difference(before, after), normal)) / ((norm(in) + norm(out)) / 2);
}

struct rim {
  int sides = 0;
  int element = -1;    // of the largest disturbance
  double largest = 0;  // by the formula above
};

class pressed_rims {
 public:
  explicit pressed_rims(const model& m) : model_(m), sides_(single_sides(m)) {
    for (const auto& side : sides_) {
      at_[side.first.first].push_back(side.first);
      at_[side.first.second].push_back(side.first);
    }
  }
  rim along(const step& s, const std::set<int>& pressed) const;

 private:
  double disturbance(const node_pair& side, int plate) const;

  const model& model_;
  std::map<node_pair, int> sides_;
  std::map<int, std::vector<node_pair>> at_;
};

double pressed_rims::disturbance(const node_pair& side, int plate) const {
  const element& e = model_.elements[plate];
  const MATRIX<3, 3> axes = plate_axes(model_, e);
  double largest = 0;
  for (const int node : {side.first, side.second}) {
    const std::vector<node_pair>& met = at_.at(node);
    if (met.size() == 2) largest = std::max(largest, curvature(model_, met[0], met[1], row(axes, 3)));
  }
  const vector3 along = difference(model_.nodes[side.first].xyz, model_.nodes[side.second].xyz);
  double depth = 0;  // of the node farthest from the edge
  for (const int n : e.nodes) {
    const vector3 across = cross(along, difference(model_.nodes[side.first].xyz, model_.nodes[n].xyz));
    depth = std::max(depth, norm(across) / norm(along));
  }
  return BEND * depth * depth * largest / model_.shell_sections[e.section].thickness;
}

rim pressed_rims::along(const step& s, const std::set<int>& pressed) const {
  const std::set<int> bound = bound_nodes(model_, s);
  rim found;
  for (const auto& [side, plate] : sides_) {
    if (pressed.count(plate) == 0 || bound.count(side.first) != 0 || bound.count(side.second) != 0) continue;
    const double own = disturbance(side, plate);
    if (own < TOLD) continue;
    ++found.sides;
    if (own <= ALIKE * found.largest) continue;
    found.largest = own;
    found.element = plate;
  }
  return found;
}

void note_rim(build& b, const element_load& load, const rim& found) {
  model& m = b.result;
  const std::string share =
      found.largest > VALID ? "more than a tenth" : "about " + std::to_string(std::lround(100 * found.largest)) + " %";
  m.notes.push_back(place_of(m, load.file, load.line) + ": " + load.keyword +
                    ": P on a shell has moments at its nodes, as a flat plate needs them; along " +
                    std::to_string(found.sides) + (found.sides == 1 ? " side" : " sides") +
                    " of a free curved edge (element " + std::to_string(m.elements[found.element].id) +
                    ") they change the displacements by " + share +
                    " of what the pressure causes: take smaller elements there, or HP, which presses by forces alone");
}

}  // namespace

void note_pressed_rims(build& b) {
  const model& m = b.result;
  std::optional<pressed_rims> rims;
  std::set<std::pair<int, int>> seen;  // file and line of a load that several steps have
  for (const step& s : m.steps) {
    std::map<std::pair<int, int>, std::pair<const element_load*, std::set<int>>> loads;
    for (const element_load& load : s.element_loads) {
      const bool presses = load.kind == element_load_kind::PRESSURE && load.magnitude != 0;
      if (!presses || !is_shell(m.elements[load.element].type)) continue;
      auto& card = loads[{load.file, load.line}];
      if (card.first == nullptr) card.first = &load;
      card.second.insert(load.element);
    }
    for (const auto& [place, card] : loads) {
      if (!seen.insert(place).second) continue;
      if (!rims) rims.emplace(m);
      const rim found = rims->along(s, card.second);
      if (found.sides > 0) note_rim(b, *card.first, found);
    }
  }
}

}  // namespace solver::deck
