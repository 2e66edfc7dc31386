// thermal_strains.cpp: free expansion and free bending of a plate by a temperature.
#include "elements/thermal_strains.h"

#include "elements/material_axes.h"

namespace solver {

namespace {

// A symmetric tensor of the plane in element axes: xx, yy, xy.
using plane_tensor = std::array<double, 3>;

double at(const std::vector<node>& nodes, int node, int i) {
  return nodes[static_cast<std::size_t>(node)].xyz[static_cast<std::size_t>(i - 1)];
}

// What a fibre at the height z of the mid surface does: u = z theta_y, v = -z theta_x, w = -(k : x x) / 2.
void set_corner(const plane_tensor& e, const plane_tensor& k, double x, double y, std::array<double, 3>& shift,
                std::array<double, 3>& turn) {
  shift = {e[0] * x + e[2] * y, e[2] * x + e[1] * y, -(k[0] * x * x + 2 * k[2] * x * y + k[1] * y * y) / 2};
  turn = {-(k[2] * x + k[1] * y), k[0] * x + k[2] * y, 0};
}

std::array<double, 3> to_global(const std::array<double, 3>& local, const MATRIX<3, 3>& axes) {
  std::array<double, 3> global{};
  for (int a = 1; a <= 3; ++a)
    for (int i = 1; i <= 3; ++i)
      global[static_cast<std::size_t>(i - 1)] += local[static_cast<std::size_t>(a - 1)] * axes(a, i);
  return global;
}

}  // namespace

// Node = corner + d: the node moves by the corner's displacement and rotation cross d.
element_vector free_expansion(const model& m, const element& e, const PLATE_RECORD& arms,
                              const distributed_load& load) {
  const shell_section& section = m.shell_sections[static_cast<std::size_t>(e.section)];
  const material& mat = m.materials[static_cast<std::size_t>(section.material)];
  const MATRIX<3, 3> axes = plate_axes(m, e);
  const plane_rotation from_material(material_axes(m, e), axes);
  const double per_height = load.temperature_difference / section.thickness;
  const double strain[3] = {mat.alpha1 * load.temperature_change, mat.alpha2 * load.temperature_change, 0};
  const double curvature[3] = {mat.alpha1 * per_height, mat.alpha2 * per_height, 0};
  const plane_tensor in_plane = from_material.tensor(strain), bent = from_material.tensor(curvature);

  element_vector u{};
  for (int n = 0; n < static_cast<int>(e.nodes.size()); ++n) {
    const int node = e.nodes[static_cast<std::size_t>(n)];
    double x = 0, y = 0;
    for (int i = 1; i <= 3; ++i) {
      const double from_first = at(m.nodes, node, i) - at(m.nodes, e.nodes[0], i);
      x += axes(1, i) * from_first;
      y += axes(2, i) * from_first;
    }
    std::array<double, 3> shift{}, turn{};
    set_corner(in_plane, bent, x, y, shift, turn);
    shift = to_global(shift, axes);
    turn = to_global(turn, axes);
    const std::array<double, 3> d = {arms.NODE_OFFSETS(n + 1, 1), arms.NODE_OFFSETS(n + 1, 2),
                                     arms.NODE_OFFSETS(n + 1, 3)};
    for (std::size_t i = 0; i < 3; ++i) {
      const std::size_t j = (i + 1) % 3, k = (i + 2) % 3;
      u(DIRECTIONS * n + static_cast<int>(i) + 1) = shift[i] + turn[j] * d[k] - turn[k] * d[j];
      u(DIRECTIONS * n + static_cast<int>(i) + 4) = turn[i];
    }
  }
  return u;
}

}  // namespace solver
