// centrifugal.cpp: solids and plates by integration, members by the values at their ends, masses by that at their node.
#include "elements/centrifugal.h"

#include "elements/element_faces.h"
#include "elements/volume_points.h"
#include "model/vectors.h"

namespace solver {

namespace {

// rho omega^2 r at a place.
struct rotating_field {
  const element_load& card;
  double density;

  vector3 at(const vector3& place) const {
    const vector3 arm = difference(card.origin, place);
    const double along = dot(arm, card.direction);
    vector3 force{};
    for (std::size_t i = 0; i < 3; ++i) force[i] = density * card.magnitude * (arm[i] - along * card.direction[i]);
    return force;
  }
};

void add_to_solid(const model& m, const element& e, const rotating_field& field, std::vector<double>& nodal_load) {
  for (const volume_point& p : volume_points(m, e)) {
    const vector3 force = field.at(p.place);
    for (std::size_t a = 0; a < e.nodes.size(); ++a) {
      add_nodal_force(nodal_load, e.nodes[a], 0, p.volume * p.share[a], force);
    }
  }
}

// The mid surface lies offset times thickness behind the nodes: its forces have an arm there.
void add_to_plate(const model& m, const element& e, const rotating_field& field, std::vector<double>& nodal_load) {
  const shell_section& section = m.shell_sections[e.section];
  for (const face_point& p : points_of_face(m, e, POSITIVE_SIDE)) {
    const double area = length_of(p.area), mass = area * section.thickness;
    vector3 arm{}, place{};
    for (std::size_t i = 0; i < 3; ++i) {
      arm[i] = -section.offset * section.thickness * p.area[i] / area;
      place[i] = p.place[i] + arm[i];
    }
    const vector3 force = field.at(place), moment = cross(arm, force);
    for (std::size_t a = 0; a < e.nodes.size(); ++a) {
      add_nodal_force(nodal_load, e.nodes[a], 0, mass * p.share[a], force);
      if (section.offset != 0) add_nodal_force(nodal_load, e.nodes[a], 3, mass * p.share[a], moment);
    }
  }
}

void add_to_member(const model& m, const element& e, const rotating_field& field, distributed_load& load) {
  const double area = frame_section_of(m, e).area;
  const vector3 first = field.at(m.nodes[e.nodes[0]].xyz), second = field.at(m.nodes[e.nodes[1]].xyz);
  for (std::size_t i = 0; i < 3; ++i) {
    load.line[i] += area * (first[i] + second[i]) / 2;
    load.line_rise[i] += area * (second[i] - first[i]);
  }
}

}  // namespace

void add_centrifugal(const model& m, const element_load& card, distributed_load& load,
                     std::vector<double>& nodal_load) {
  const element& e = m.elements[card.element];
  if (e.section < 0) return;  // reported with the elements themselves
  if (is_point(e.type)) {
    return add_nodal_force(nodal_load, e.nodes[0], 0, m.point_masses[e.section].mass,
                           rotating_field{card, 1}.at(m.nodes[e.nodes[0]].xyz));
  }
  const rotating_field field{card, m.materials[material_of(m, e)].density};
  if (is_solid(e.type)) return add_to_solid(m, e, field, nodal_load);
  if (is_plate(e.type)) return add_to_plate(m, e, field, nodal_load);
  add_to_member(m, e, field, load);
}

}  // namespace solver
