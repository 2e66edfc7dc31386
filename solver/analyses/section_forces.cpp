// section_forces.cpp: nodal forces of the elements beside a surface.
#include "analyses/section_forces.h"

#include <algorithm>
#include <iterator>
#include <map>

#include "elements/centrifugal.h"
#include "elements/element_faces.h"
#include "elements/scatter_map.h"
#include "elements/section_sides.h"
#include "elements/solid_faces.h"
#include "elements/surface_forces.h"
#include "system/assembly.h"
#include "system/ranks.h"

namespace solver {

namespace {

constexpr double NO_DIRECTION = 1e-6;  // a mean normal below it, by the area, is rounding

bool is_in_surface(const named_surface& surface, const element_load& load) {
  return std::any_of(surface.faces.begin(), surface.faces.end(),
                     [&](const surface_face& f) { return f.element == load.element && f.face == load.face; });
}

// The part of a load that the load case has put on nodes, by degree of freedom.
void add_nodal_part(const model& m, const element_load& load, std::vector<double>& by_freedom) {
  const element& e = m.elements[load.element];
  distributed_load in_element;
  switch (load.kind) {
    case element_load_kind::PRESSURE:
    case element_load_kind::GRAVITY:
    case element_load_kind::BODY:
    case element_load_kind::LINE_GLOBAL:
    case element_load_kind::LINE_LOCAL: return;
    case element_load_kind::CENTRIFUGAL: return add_centrifugal(m, load, in_element, by_freedom);
    case element_load_kind::FACE: {
      const std::vector<int> nodes = nodes_of_face(e, load.face);
      const std::vector<vector3> forces = unit_pressure_forces(m, e, load.face);
      for (std::size_t a = 0; a < nodes.size(); ++a) {
        add_nodal_force(by_freedom, nodes[a], 0, load.magnitude, forces[a]);
      }
      return;
    }
    default: return add_surface_forces(m, load, by_freedom);
  }
}

// K u - f of one element after another.
class element_forces {
 public:
  element_forces(const model& m, const step& s, const named_surface& surface, library_model& library,
                 const static_solution& solution)
      : m_(m), library_(library), solution_(solution), on_nodes_(solution.displacement.size(), 0.0) {
    take_loads(s, surface, 1);
    for (const combined_step& term : s.combined) take_loads(m.steps[term.step], surface, term.factor);
  }

  element_vector of(int element_index) {
    const element& e = m_.elements[element_index];
    const auto index = subscript(element_index);
    element_matrix K;
    element_vector forces{}, loads{};
    library_.stiffness(index, K);
    library_.loads(index, solution_.loads.element[index], loads);
    const element_vector u = gather(e, solution_.displacement), on_nodes = nodal_part(element_index, e);
    for (int i = 1; i <= element_freedoms(e); ++i) {
      forces(i) = -loads(i) - on_nodes(i);
      for (int j = 1; j <= element_freedoms(e); ++j) forces(i) += K(i, j) * u(j);
    }
    return forces;
  }

 private:
  struct scaled_load {
    const element_load* load;
    double factor;
  };

  void take_loads(const step& s, const named_surface& surface, double factor) {
    for (const element_load& load : s.element_loads) {
      if (!is_in_surface(surface, load)) loads_[load.element].push_back({&load, factor});
    }
  }

  element_vector nodal_part(int element_index, const element& e) {
    const auto found = loads_.find(element_index);
    if (found == loads_.end()) return {};
    for (const auto& [load, factor] : found->second) {
      element_load scaled = *load;
      scaled.magnitude *= factor;
      add_nodal_part(m_, scaled, on_nodes_);
    }
    const element_vector part = gather(e, on_nodes_);
    for (int i = 0; i < element_freedoms(e); ++i) on_nodes_[element_freedom(e, i)] = 0;
    return part;
  }

  const model& m_;
  library_model& library_;
  const static_solution& solution_;
  std::map<int, std::vector<scaled_load>> loads_;  // by element
  std::vector<double> on_nodes_;                   // by degree of freedom, 0 between two elements
};

void add(vector3& sum, const vector3& v, double factor = 1) {
  for (std::size_t i = 0; i < 3; ++i) sum[i] += factor * v[i];
}

vector3 place_of_node(const model& m, const step& s, const static_solution& solution, int node) {
  vector3 x = m.nodes[node].xyz;
  if (!s.p_delta) return x;
  for (std::size_t i = 0; i < 3; ++i) x[i] += solution.displacement[freedom(node, i)];
  return x;
}

// Adds what an element exerts at its node `place`.
void add_at_node(const element& e, std::size_t place, const element_vector& forces, const vector3& x,
                 section_force& sum) {
  const int count = freedoms_per_node(e), first = count * number_of(place);
  vector3 force{}, moment{};
  for (int i = 0; i < 3; ++i) {
    force[subscript(i)] = forces(first + i + 1);
    if (count == DIRECTIONS) moment[subscript(i)] = forces(first + i + 4);
  }
  add(sum.force, force);
  add(sum.moment, cross(x, force));
  add(sum.moment, moment);
}

void add_area(const model& m, const surface_face& f, section_force& sum) {
  const element& e = m.elements[f.element];
  const double thickness = is_edge(f.face) ? m.shell_sections[e.section].thickness : 1;
  for (const face_point& p : points_of_face(m, e, f.face)) {
    const double area = thickness * length_of(p.area);
    sum.area += area;
    add(sum.centre, p.place, area);
    if (is_edge(f.face)) {
      add(sum.normal, axes_of_edge(m, e, f.face).inward, -area);
    } else {
      add(sum.normal, p.area, -1);  // which points into a solid
    }
  }
}

void add_areas(const model& m, const named_surface& surface, section_force& sum) {
  for (const surface_face& f : surface.faces) add_area(m, f, sum);
  const double size = length_of(sum.normal);
  sum.normal = size > NO_DIRECTION * sum.area ? scaled(sum.normal, 1 / size) : vector3{};
  sum.centre = scaled(sum.centre, 1 / sum.area);
}

}  // namespace

section_force force_through(const model& m, const step& s, const named_surface& surface, library_model& library,
                            const static_solution& solution) {
  section_force sum;
  add_areas(m, surface, sum);
  const section_sides sides = sides_of(m, surface);
  std::map<int, std::vector<int>> nodes_of;  // by element: those at which it counts
  for (std::size_t i = 0; i < surface.nodes.size(); ++i) {
    for (const int e : sides.elements[i]) nodes_of[e].push_back(surface.nodes[i]);
  }
  element_forces all(m, s, surface, library, solution);
  std::vector<double> of_elements;
  fail_together([&] {
    for (const auto& [index, nodes] : nodes_of) {
      const element_vector forces = is_own(m, subscript(index)) ? all.of(index) : element_vector{};
      of_elements.insert(of_elements.end(), std::begin(forces.V), std::end(forces.V));
    }
  });
  sum_over_ranks(of_elements);  // each element has one part that is not 0
  const double* next = of_elements.data();
  for (const auto& [index, nodes] : nodes_of) {
    const element& e = m.elements[index];
    element_vector forces;
    std::copy_n(next, std::size(forces.V), forces.V);
    next += std::size(forces.V);
    for (const int node : nodes) {
      for (std::size_t place = 0; place < e.nodes.size(); ++place) {
        if (e.nodes[number_of(place)] != node) continue;
        add_at_node(e, place, forces, place_of_node(m, s, solution, node), sum);
      }
    }
  }
  return sum;
}

}  // namespace solver
