// read_transforms.cpp: *TRANSFORM, and conditions and loads in the axes that it gives.
#include <algorithm>
#include <cmath>

#include "deck/conditions.h"
#include "deck/fields.h"
#include "deck/keywords.h"
#include "deck/transforms.h"

namespace solver::deck {

namespace {

constexpr double ALONG = 1e-12;  // a component below it is the rounding of a direction along a global axis

vector3 unit_vector(vector3 v) {
  const double length = length_of(v);
  for (double& part : v) part /= length;
  return v;
}

// Rounding of a direction along an axis is taken off, so that a support along it is a plain one.
vector3 snapped(vector3 v) {
  for (double& part : v) {
    if (std::fabs(part) < ALONG) part = 0;
  }
  return unit_vector(v);
}

bool vanishes(const vector3& v, double beside) { return !(length_of(v) > 1e-9 * beside); }

// R: 1 from the origin to a, 2 square to it on the side of b. C: 3 along the line from a to b, 1 away from it, 2 round
// it. S: 1 away from the centre a, 2 round the polar axis from a to b, 3 along the meridian.
std::array<vector3, 3> axes_of(const transform& t, const vector3& place) {
  if (t.kind == 'R') {
    const vector3 first = unit_vector(t.a), third = unit_vector(cross(t.a, t.b));
    return {snapped(first), snapped(cross(third, first)), snapped(third)};
  }
  const vector3 axis = unit_vector(difference(t.a, t.b));
  vector3 arm = difference(t.a, place);
  if (t.kind == 'C') {
    const double along = dot(axis, arm);
    for (std::size_t i = 0; i < 3; ++i) arm[i] -= along * axis[i];
    const vector3 first = unit_vector(arm);
    return {snapped(first), snapped(cross(axis, first)), snapped(axis)};
  }
  const vector3 first = unit_vector(arm), second = unit_vector(cross(axis, first));
  return {snapped(first), snapped(second), snapped(cross(first, second))};
}

transform read_axes(const build& b, const card& c) {
  transform t;
  const std::string kind = c.find("TYPE") == nullptr ? "R" : squeezed(c.value("TYPE"));
  if (kind != "R" && kind != "C" && kind != "S") {
    b.deck.fail(c, "TYPE=" + c.value("TYPE") + " is none of R, C and S");
  }
  t.kind = kind[0];
  const data_fields row = only_line(b, c, "a *TRANSFORM has one line with two points");
  row.expect(6, 6, "x, y, z of a, x, y, z of b");
  for (int i = 0; i < 3; ++i) {
    t.a[subscript(i)] = row.real(i, "coordinate of a");
    t.b[subscript(i)] = row.real(3 + i, "coordinate of b");
  }
  const double size = std::fmax(length_of(t.a), length_of(t.b));
  if (t.kind == 'R' && vanishes(cross(t.a, t.b), size * size)) {
    row.fail("a and b lie on one line with the origin: they give no axes");
  }
  if (t.kind != 'R' && vanishes(difference(t.a, t.b), size)) row.fail("a and b are one point: they give no axis");
  return t;
}

void check_place(const build& b, const card& c, const transform& t, int node) {
  if (t.kind == 'R') return;
  const vector3& place = b.result.nodes[node].xyz;
  const double size = std::fmax(length_of(difference(t.a, t.b)), length_of(difference(t.a, place)));
  if (!vanishes(cross(unit_vector(difference(t.a, t.b)), difference(t.a, place)), size)) return;
  b.deck.fail(c, node_name(b, node) + " lies on the axis, where directions round it have no meaning");
}

}  // namespace

void read_transform(build& b, const card& c) {
  transform t = read_axes(b, c);
  t.line = c.line;
  t.file = c.file;
  if (b.transform_of.empty()) b.transform_of.assign(b.result.nodes.size(), -1);
  for (const int node : b.nodes.members(set_of_parameter(b, c, b.nodes, "NSET"))) {
    if (b.transform_of[node] >= 0) {
      const transform& first = b.transforms[b.transform_of[node]];
      b.deck.fail(c,
                  node_name(b, node) + " has axes of its own already, of " + b.other_place(c, first.file, first.line));
    }
    check_place(b, c, t, node);
    b.transform_of[node] = count_of(b.transforms);
    b.result.turned_nodes.push_back({node, axes_of(t, b.result.nodes[node].xyz)});
  }
  b.transforms.push_back(t);
}

vector3 direction_at(const build& b, int node, int dof) {
  const std::size_t i = subscript((dof - 1) % 3);
  if (is_turned(b, node)) return axes_of(b.transforms[b.transform_of[node]], b.result.nodes[node].xyz)[i];
  vector3 unit{};
  unit[i] = 1;
  return unit;
}

void add_turned_term(const build& b, linear_constraint& condition, const constraint_term& term) {
  const vector3 direction = direction_at(b, term.node, term.dof);
  const int first = term.dof <= 3 ? 1 : 4;
  const std::size_t most = largest_part(direction);  // it leads
  for (std::size_t k = 0; k < 3; ++k) {
    const std::size_t i = (most + k) % 3;
    if (direction[i] == 0) continue;
    condition.terms.push_back({term.node, first + number_of(i), term.factor * direction[i]});
  }
}

namespace {

// +1 to +3 or -1 to -3: the global axis that a direction lies along; 0: none.
int global_axis(const vector3& direction) {
  for (int i = 0; i < 3; ++i) {
    if (std::fabs(direction[subscript(i)]) == 1) return direction[subscript(i)] > 0 ? i + 1 : -(i + 1);
  }
  return 0;
}

void prescribe_one(build& b, const boundary_condition& card, int dof) {
  const int axis = global_axis(direction_at(b, card.node, dof));
  if (axis != 0) {
    boundary_condition plain = card;
    plain.first_dof = plain.last_dof = std::abs(axis) + (dof <= 3 ? 0 : 3);
    plain.value = axis > 0 ? card.value : -card.value;
    (b.inside_step ? b.result.steps.back().boundaries : b.result.boundaries).push_back(plain);
    return;
  }
  linear_constraint condition = start_condition({"*BOUNDARY", card.line, card.file});
  condition.value = card.value;
  add_turned_term(b, condition, {card.node, dof, 1});
  (b.inside_step ? b.result.steps.back().constraints : b.result.constraints).push_back(std::move(condition));
}

}  // namespace

void prescribe_turned(build& b, const boundary_condition& card) {
  for (int first = 1; first <= 4; first += 3) {
    const int from = std::max(card.first_dof, first), to = std::min(card.last_dof, first + 2);
    if (from > to) continue;
    if (from == first && to == first + 2 && card.value == 0) {
      boundary_condition all = card;
      all.first_dof = from;
      all.last_dof = to;
      (b.inside_step ? b.result.steps.back().boundaries : b.result.boundaries).push_back(all);
      continue;
    }
    for (int dof = from; dof <= to; ++dof) prescribe_one(b, card, dof);
  }
}

std::vector<nodal_load> turned_load(const build& b, const nodal_load& card) {
  if (!is_turned(b, card.node)) return {card};
  const vector3 direction = direction_at(b, card.node, card.dof);
  std::vector<nodal_load> parts;
  for (int i = 0; i < 3; ++i) {
    if (direction[subscript(i)] == 0) continue;
    nodal_load part = card;
    part.dof = i + (card.dof <= 3 ? 1 : 4);
    part.value = card.value * direction[subscript(i)];
    parts.push_back(part);
  }
  return parts;
}

}  // namespace solver::deck
