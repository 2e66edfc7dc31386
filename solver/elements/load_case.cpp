// load_case.cpp: gathers the cards of a step. Nodal temperatures become the mean of an element's nodes, which is what
// the element's load knows.
#include "elements/load_case.h"

#include "elements/member_axes.h"
#include "elements/solid_faces.h"
#include "finites/fields.h"
#include "model/model_error.h"
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
    }
  }
}

void hold_where_it_is(load_case& loads, const step& base) {
  prescribe(loads, base.boundaries);
  for (double& value : loads.prescribed_value) value = 0;
  for (distributed_load& load : loads.element) load.increment = true;
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

void add_temperatures(const model& m, const step& s, load_case& loads) {
  if (s.temperatures.empty()) return;
  numbered<nodal_temperature> at_node(m.nodes.size());
  for (const nodal_temperature& card : s.temperatures) at_node[card.node] = card;
  for (std::size_t e = 0; e < m.elements.size(); ++e) {
    const double count = count_of(m.elements[e].nodes);
    const double thickness = thickness_of(m, m.elements[e]);
    for (const int n : m.elements[e].nodes) {
      loads.element[e].temperature_change += at_node[n].change / count;
      loads.element[e].temperature_difference += thickness * at_node[n].gradient / count;
    }
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
      default: add_line_load(m, card, load);
    }
  }
  add_temperatures(m, s, loads);
  return loads;
}

}  // namespace solver
