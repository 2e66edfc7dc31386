// load_case.cpp: gathers the cards of a step. Nodal temperatures become the mean of an element's nodes, which is what
// the element's load knows.
#include "elements/load_case.h"

#include <algorithm>

#include "elements/centrifugal.h"
#include "elements/member_axes.h"
#include "elements/solid_faces.h"
#include "elements/surface_forces.h"
#include "finites/fields.h"
#include "model/model_error.h"
#include "model/temperatures.h"
#include "model/vectors.h"

namespace solver {

const char* direction_name(int direction) {
  static const char* const names[DIRECTIONS] = {"translation x", "translation y", "translation z",
                                                "rotation x",    "rotation y",    "rotation z"};
  return names[direction];
}

const char* direction_short_name(int direction) {
  static const char* const names[DIRECTIONS] = {"ux", "uy", "uz", "rx", "ry", "rz"};
  return names[direction];
}

std::string direction_with_number(int direction) {
  return direction_name(direction) + std::string(" (degree of freedom ") + std::to_string(direction + 1) + ")";
}

namespace {

void prescribe(load_case& loads, const std::vector<boundary_condition>& cards) {
  for (const boundary_condition& card : cards) {
    for (int dof = card.first_dof; dof <= card.last_dof; ++dof) {
      loads.prescribed[freedom(card.node, dof - 1)] = 1;
      loads.prescribed_value[freedom(card.node, dof - 1)] = card.value;
      if (!loads.prescribed_by.empty()) loads.prescribed_by[freedom(card.node, dof - 1)] = {card.file, card.line};
    }
  }
}

void hold_where_it_is(load_case& loads, const step& base) {
  prescribe(loads, base.boundaries);
  for (double& value : loads.prescribed_value) value = 0;
  for (distributed_load& load : loads.element) load.increment = true;
}

bool same_terms(const linear_constraint& a, const linear_constraint& b) {
  return std::equal(a.terms.begin(), a.terms.end(), b.terms.begin(), b.terms.end(),
                    [](const constraint_term& x, const constraint_term& y) {
                      return x.node == y.node && x.dof == y.dof && x.factor == y.factor;
                    });
}

// A support in axes of its own, prescribed again by the step: its value replaces the one of the head.
bool replaces(std::vector<linear_constraint>& conditions, const linear_constraint& card) {
  if (card.keyword != "*BOUNDARY") return false;
  const auto found = std::find_if(conditions.begin(), conditions.end(), [&](const linear_constraint& one) {
    return one.keyword == card.keyword && same_terms(one, card);
  });
  if (found == conditions.end()) return false;
  *found = card;
  return true;
}

void gather_conditions(const model& m, const step& s, const step* base, load_case& loads) {
  std::vector<linear_constraint>& all = loads.conditions;
  all = m.constraints;
  if (base != nullptr) {
    for (const linear_constraint& card : base->constraints) {
      if (!replaces(all, card)) all.push_back(card);
    }
    for (linear_constraint& met : all) met.value = 0;
  }
  for (const linear_constraint& card : s.constraints) {
    if (!replaces(all, card)) all.push_back(card);
  }
  if (all.empty()) return;
  loads.in_condition.assign(loads.prescribed.size(), 0);
  loads.prescribed_by.assign(loads.prescribed.size(), {0, 0});
  for (const linear_constraint& condition : all) {
    for (const constraint_term& term : condition.terms) {
      if (term.factor != 0) loads.in_condition[freedom(term.node, term.dof - 1)] = 1;
    }
  }
}

// Body force per volume: density times acceleration.
void add_gravity(const model& m, const element_load& card, distributed_load& load) {
  const element& e = m.elements[card.element];
  if (e.section < 0) return;  // reported with the elements themselves
  const int index = material_of(m, e);
  const material& mat = m.materials[index];
  if (mat.density == 0) {
    throw model_error(m, card, "*DLOAD",
                      "gravity on element " + std::to_string(e.id) + ", but material " + mat.name + " has no *DENSITY");
  }
  for (std::size_t i = 0; i < 3; ++i) load.body[i] += mat.density * card.magnitude * card.direction[i];
}

// The weight of a mass acts on its node; a rotary inertia has none.
void add_weight(const model& m, const element_load& card, numbered<double>& nodal_load) {
  const element& e = m.elements[card.element];
  if (e.section < 0) return;
  const double mass = m.point_masses[e.section].mass;
  for (std::size_t i = 0; i < 3; ++i) nodal_load[freedom(e.nodes[0], i)] += mass * card.magnitude * card.direction[i];
}

void add_line_load(const model& m, const element_load& card, distributed_load& load) {
  if (card.kind == element_load_kind::LINE_GLOBAL) {
    for (std::size_t i = 0; i < 3; ++i) load.line[i] += card.magnitude * card.direction[i];
    return;
  }
  const MATRIX<3, 3> axes = member_axes(m, m.elements[card.element]);
  for (int a = 1; a <= 3; ++a) {
    const double along = card.magnitude * card.direction[subscript(a - 1)];
    for (std::size_t i = 0; i < 3; ++i) load.line[i] += along * row(axes, a)[i];
  }
}

// The thickness through which a gradient makes a difference of temperatures, top minus bottom; 0: it makes none.
double thickness_of(const model& m, const element& e) {
  if (!is_shell(e.type) || e.section < 0) return 0;
  return m.shell_sections[e.section].thickness;
}

// A pressure on a face of a solid acts on its nodes.
void add_face_pressure(const model& m, const element_load& card, std::vector<double>& nodal_load) {
  const element& e = m.elements[card.element];
  const std::vector<int> face = solid_face(e.type, card.face);
  const std::vector<std::array<double, 3>> forces = unit_pressure_forces(m, e, card.face);
  for (std::size_t a = 0; a < face.size(); ++a) {
    for (std::size_t i = 0; i < 3; ++i) nodal_load[freedom(e.nodes[face[a]], i)] += card.magnitude * forces[a][i];
  }
}

// The change of an element's mean temperature and the difference through its thickness, as its coefficient of expansion
// measures them: one that depends on temperature counts at the temperatures between which it expands.
void add_temperatures(const model& m, const step& s, const step* base, load_case& loads) {
  if (s.temperatures.empty()) return;
  numbered<nodal_temperature> at_node(m.nodes.size());
  for (const nodal_temperature& card : s.temperatures) at_node[card.node] = card;
  const numbered<double> before = node_temperatures(m, base);
  for (std::size_t e = 0; e < m.elements.size(); ++e) {
    const double count = count_of(m.elements[e].nodes);
    const double thickness = thickness_of(m, m.elements[e]);
    double change = 0, difference = 0;
    for (const int n : m.elements[e].nodes) {
      change += at_node[n].change / count;
      difference += thickness * at_node[n].gradient / count;
    }
    const int index = m.elements[e].section < 0 ? -1 : material_of(m, m.elements[e]);
    if (index >= 0 && !m.materials[index].expansion_table.empty()) {
      const double start = mean_temperature(m.elements[e], before), end = start + change;
      change = expanding_change(m.materials[index], start, end);
      difference = expanding_change(m.materials[index], end - difference / 2, end + difference / 2);
    }
    loads.element[e].temperature_change += change;
    loads.element[e].temperature_difference += difference;
  }
}

}  // namespace

load_case gather_load_case(const model& m, const step& s, const step* base) {
  load_case loads;
  const std::size_t freedoms = DIRECTIONS * m.nodes.size();
  loads.prescribed.assign(freedoms, 0);
  loads.prescribed_value.assign(freedoms, 0);
  loads.nodal_load.assign(freedoms, 0);
  loads.element.resize(m.elements.size());

  gather_conditions(m, s, base, loads);
  prescribe(loads, m.boundaries);
  if (base != nullptr) hold_where_it_is(loads, *base);
  prescribe(loads, s.boundaries);
  for (const nodal_load& card : s.nodal_loads) loads.nodal_load[freedom(card.node, card.dof - 1)] += card.value;
  for (const element_load& card : s.element_loads) {
    distributed_load& load = loads.element[card.element];
    switch (card.kind) {
      case element_load_kind::PRESSURE: load.pressure += card.magnitude; break;
      case element_load_kind::FACE: add_face_pressure(m, card, loads.nodal_load); break;
      case element_load_kind::GRAVITY:
        is_point(m.elements[card.element].type) ? add_weight(m, card, loads.nodal_load) : add_gravity(m, card, load);
        break;
      case element_load_kind::BODY:
        for (std::size_t i = 0; i < 3; ++i) load.body[i] += card.magnitude * card.direction[i];
        break;
      case element_load_kind::LINE_GLOBAL:
      case element_load_kind::LINE_LOCAL: add_line_load(m, card, load); break;
      case element_load_kind::CENTRIFUGAL: add_centrifugal(m, card, load, loads.nodal_load); break;
      default: add_surface_forces(m, card, loads.nodal_load);
    }
  }
  add_temperatures(m, s, base, loads);
  return loads;
}

}  // namespace solver
