// thermal_strains.cpp: free expansion and free bending of a plate by a temperature.
#include "elements/thermal_strains.h"

#include "elements/material_axes.h"
#include "elements/plate_axes.h"
#include "model/vectors.h"

namespace solver {

namespace {

// A symmetric tensor of the plane in element axes: xx, yy, xy.
using plane_tensor = std::array<double, 3>;

// Of strains with an engineering shear strain.
plane_tensor tensor_of(const plane_vector& strain) { return {strain[0], strain[1], strain[2] / 2}; }

// What a fibre at the height z of the mid surface does: u = z theta_y, v = -z theta_x, w = -(k : x x) / 2.
void set_corner(const plane_tensor& e, const plane_tensor& k, double x, double y, vector3& shift, vector3& turn) {
  shift = {e[0] * x + e[2] * y, e[2] * x + e[1] * y, -(k[0] * x * x + 2 * k[2] * x * y + k[1] * y * y) / 2};
  turn = {-(k[2] * x + k[1] * y), k[0] * x + k[2] * y, 0};
}

}  // namespace

// Node = corner + d: the node moves by the corner's displacement and rotation cross d.
element_vector free_expansion(const model& m, const element& e, const PLATE_RECORD& arms,
                              const distributed_load& load) {
  const shell_section& section = m.shell_sections[e.section];
  const material& mat = m.materials[section.material];
  const MATRIX<3, 3> axes = plate_axes(m, e);
  const plane_rotation from_material(material_axes(m, e), axes);
  const double per_height = load.temperature_difference / section.thickness;
  plane_tensor per_degree = {mat.alpha1, mat.alpha2, 0}, per_gradient = per_degree;
  if (section.layup >= 0) {
    per_degree = tensor_of(m.laminates[section.layup].expansion);
    per_gradient = tensor_of(m.laminates[section.layup].bending_expansion);
  }
  const plane_tensor in_plane = from_material.tensor(scaled(per_degree, load.temperature_change).data());
  const plane_tensor bent = from_material.tensor(scaled(per_gradient, per_height).data());

  element_vector u{};
  for (int n = 0; n < count_of(e.nodes); ++n) {
    const vector3 local = product(axes, difference(m.nodes[e.nodes[0]].xyz, m.nodes[e.nodes[n]].xyz));
    vector3 shift{}, turn{};
    set_corner(in_plane, bent, local[0], local[1], shift, turn);
    shift = transposed_product(axes, shift);
    turn = transposed_product(axes, turn);
    const vector3 d = row(arms.NODE_OFFSETS, n + 1);
    double* const at_node = u.V + DIRECTIONS * n;
    for (std::size_t i = 0; i < 3; ++i) {
      const std::size_t j = (i + 1) % 3, k = (i + 2) % 3;
      at_node[i] = shift[i] + turn[j] * d[k] - turn[k] * d[j];
      at_node[3 + i] = turn[i];
    }
  }
  return u;
}

}  // namespace solver
