// vtu_writer.cpp: builds the XML tree. Numbers are written with the fewest digits that read back as the same double.
#include "output/vtu_writer.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <string>

#include <fmt/format.h>
#include <pugixml.hpp>

namespace solver {

namespace {

int vtk_type(const element& e) {
  constexpr int VTK_OF_NODES[] = {0, 1, 3, 5, 9};  // vertex, line, triangle, quadrilateral
  constexpr int TETRA = 10, HEXAHEDRON = 12, WEDGE = 13;
  switch (e.type) {
    case element_type::C3D4: return TETRA;
    case element_type::C3D6: return WEDGE;
    case element_type::C3D8: return HEXAHEDRON;
    default: return VTK_OF_NODES[e.nodes.size()];
  }
}

// An array of `components` values an item; value(item, component) gives them.
template <class VALUE>
void data_array(pugi::xml_node parent, const char* name, const char* type, std::size_t items, int components,
                const VALUE& value) {
  pugi::xml_node array = parent.append_child("DataArray");
  array.append_attribute("type") = type;
  array.append_attribute("Name") = name;
  if (components > 1) array.append_attribute("NumberOfComponents") = components;
  array.append_attribute("format") = "ascii";
  fmt::memory_buffer text;
  for (std::size_t i = 0; i < items; ++i) {
    text.push_back('\n');
    for (int c = 0; c < components; ++c) fmt::format_to(std::back_inserter(text), "{} ", value(i, c));
  }
  text.push_back('\n');
  text.push_back('\0');
  array.text().set(text.data());
}

template <class VALUE>
void reals(pugi::xml_node parent, const char* name, std::size_t items, int components, const VALUE& value) {
  data_array(parent, name, "Float64", items, components, value);
}

constexpr const char* SURFACE_NAMES[SURFACES] = {"top", "middle", "bottom"};

double principal(const surface_stress& stress, int i) {
  return i == 0 ? stress.first : i == 1 ? stress.second : stress.angle;
}

void write_mesh(pugi::xml_node piece, const model& m) {
  reals(piece.append_child("Points"), "Points", m.nodes.size(), 3,
        [&](std::size_t n, int i) { return m.nodes[n].xyz[static_cast<std::size_t>(i)]; });
  pugi::xml_node cells = piece.append_child("Cells");
  std::vector<int> connectivity, offsets;
  for (const element& e : m.elements) {
    connectivity.insert(connectivity.end(), e.nodes.begin(), e.nodes.end());
    offsets.push_back(static_cast<int>(connectivity.size()));
  }
  data_array(cells, "connectivity", "Int32", connectivity.size(), 1,
             [&](std::size_t i, int) { return connectivity[i]; });
  data_array(cells, "offsets", "Int32", offsets.size(), 1, [&](std::size_t i, int) { return offsets[i]; });
  data_array(cells, "types", "UInt8", m.elements.size(), 1,
             [&](std::size_t e, int) { return vtk_type(m.elements[e]); });
}

bool has_only_solids(const model& m) {
  return std::all_of(m.elements.begin(), m.elements.end(), [](const element& e) { return is_solid(e.type); });
}

void write_point_data(pugi::xml_node data, const model& m, const static_solution& solution,
                      const step_results& results) {
  const std::size_t count = m.nodes.size();
  data_array(data, "node_id", "Int32", count, 1, [&](std::size_t n, int) { return m.nodes[n].id; });
  const auto vector = [&](const char* name, const std::vector<double>& by_freedom, int first) {
    reals(data, name, count, 3,
          [&, first](std::size_t n, int i) { return by_freedom[freedom(static_cast<int>(n), first + i)]; });
  };
  vector("displacement", solution.displacement, 0);
  vector("rotation", solution.displacement, 3);
  vector("reaction_force", solution.reaction, 0);
  vector("reaction_moment", solution.reaction, 3);
  if (has_only_solids(m)) return;
  const auto at = [&](std::size_t n) -> const nodal_result& { return results.nodes[n]; };
  reals(data, "nodal_stress_top", count, 6,
        [&](std::size_t n, int i) { return at(n).top[static_cast<std::size_t>(i)]; });
  reals(data, "nodal_stress_bottom", count, 6,
        [&](std::size_t n, int i) { return at(n).bottom[static_cast<std::size_t>(i)]; });
  reals(data, "nodal_von_mises_top", count, 1, [&](std::size_t n, int) { return at(n).equivalent_top; });
  reals(data, "nodal_von_mises_bottom", count, 1, [&](std::size_t n, int) { return at(n).equivalent_bottom; });
}

// The part of each node in which the largest von Mises stress of a surface lies; empty where no plate joins.
std::vector<const nodal_part*> governing_parts(const model& m, const step_results& results, std::vector<int>& count) {
  const auto largest = [](const nodal_part& part) {
    double value = 0;
    for (const surface_stress& at : part.at) value = std::fmax(value, at.equivalent);
    return value;
  };
  std::vector<const nodal_part*> chosen(m.nodes.size(), nullptr);
  count.assign(m.nodes.size(), 0);
  for (const nodal_part& part : results.parts) {
    const auto n = static_cast<std::size_t>(part.node);
    if (chosen[n] == nullptr || largest(part) > largest(*chosen[n])) chosen[n] = &part;
    ++count[n];
  }
  return chosen;
}

void write_parts(pugi::xml_node data, const model& m, const step_results& results) {
  static const nodal_part NONE;
  std::vector<int> number;
  const std::vector<const nodal_part*> chosen = governing_parts(m, results, number);
  const std::size_t count = chosen.size();
  const auto at = [&](std::size_t n) -> const nodal_part& { return chosen[n] == nullptr ? NONE : *chosen[n]; };
  data_array(data, "nodal_parts", "Int32", count, 1, [&](std::size_t n, int) { return number[n]; });
  reals(data, "nodal_axis_x", count, 3, [&](std::size_t n, int i) { return at(n).axes(1, i + 1); });
  reals(data, "nodal_normal", count, 3, [&](std::size_t n, int i) { return at(n).axes(3, i + 1); });
  for (std::size_t s = 0; s < SURFACES; ++s)
    reals(data, fmt::format("part_stress_{}", SURFACE_NAMES[s]).c_str(), count, 3,
          [&](std::size_t n, int i) { return at(n).at[s].stress[static_cast<std::size_t>(i)]; });
  for (std::size_t s = 0; s < SURFACES; ++s)
    reals(data, fmt::format("part_principal_{}", SURFACE_NAMES[s]).c_str(), count, 3,
          [&](std::size_t n, int i) { return principal(at(n).at[s], i); });
  for (std::size_t s = 0; s < SURFACES; ++s)
    reals(data, fmt::format("part_von_mises_{}", SURFACE_NAMES[s]).c_str(), count, 1,
          [&](std::size_t n, int) { return at(n).at[s].equivalent; });
}

void write_axes(pugi::xml_node data, const model& m) {
  std::vector<MATRIX<3, 3>> axes;
  axes.reserve(m.elements.size());
  constexpr MATRIX<3, 3> GLOBAL{{1, 0, 0, 0, 1, 0, 0, 0, 1}};
  for (const element& e : m.elements) {
    if (is_solid(e.type))
      axes.push_back(GLOBAL);
    else
      axes.push_back(is_plate(e.type) ? plate_axes(m, e) : member_axes(m, e));
  }
  reals(data, "axis_x", axes.size(), 3, [&](std::size_t e, int i) { return axes[e](1, i + 1); });
  reals(data, "normal", axes.size(), 3, [&](std::size_t e, int i) { return axes[e](3, i + 1); });
}

void write_members(pugi::xml_node data, const step_results& results) {
  const std::size_t count = results.members.size();
  const auto at = [&](std::size_t e, std::size_t i) { return results.members[e][i]; };
  reals(data, "axial_force", count, 1, [&](std::size_t e, int) { return (at(e, 6) - at(e, 0)) / 2; });
  const auto part = [&](const char* name, std::size_t first) {
    reals(data, name, count, 3,
          [&, first](std::size_t e, int i) { return at(e, first + static_cast<std::size_t>(i)); });
  };
  part("end_force_1", 0);
  part("end_moment_1", 3);
  part("end_force_2", 6);
  part("end_moment_2", 9);
}

bool has_members(const model& m) {
  return std::any_of(m.elements.begin(), m.elements.end(), [](const element& e) { return is_member(e.type); });
}

void write_solid_stresses(pugi::xml_node data, const std::vector<solid_stress>& all) {
  const std::size_t count = all.size();
  reals(data, "solid_stress", count, 6,
        [&](std::size_t i, int c) { return all[i].stress[static_cast<std::size_t>(c)]; });
  reals(data, "solid_principal", count, 3,
        [&](std::size_t i, int c) { return all[i].principal[static_cast<std::size_t>(c)]; });
  reals(data, "solid_von_mises", count, 1, [&](std::size_t i, int) { return all[i].equivalent; });
}

bool has_thick_shells(const model& m) {
  return std::any_of(m.shell_sections.begin(), m.shell_sections.end(),
                     [](const shell_section& s) { return s.formulation == shell_formulation::THICK; });
}

void write_cell_data(pugi::xml_node data, const model& m, const step_results& results) {
  const std::size_t count = m.elements.size();
  const auto at = [&](std::size_t e) -> const element_result& { return results.elements[e]; };
  data_array(data, "element_id", "Int32", count, 1, [&](std::size_t e, int) { return m.elements[e].id; });
  write_axes(data, m);
  if (has_members(m)) write_members(data, results);
  if (!results.in_solids.empty()) write_solid_stresses(data, results.in_solids);
  if (has_only_solids(m)) return;
  reals(data, "membrane_force", count, 3,
        [&](std::size_t e, int i) { return at(e).force[static_cast<std::size_t>(i)]; });
  reals(data, "moment", count, 3, [&](std::size_t e, int i) { return at(e).moment[static_cast<std::size_t>(i)]; });
  if (has_thick_shells(m))
    reals(data, "shear_force", count, 2,
          [&](std::size_t e, int i) { return at(e).shear_force[static_cast<std::size_t>(i)]; });
  for (std::size_t s = 0; s < SURFACES; ++s)
    reals(data, fmt::format("stress_{}", SURFACE_NAMES[s]).c_str(), count, 3,
          [&](std::size_t e, int i) { return at(e).at[s].stress[static_cast<std::size_t>(i)]; });
  for (std::size_t s = 0; s < SURFACES; ++s)
    reals(data, fmt::format("principal_{}", SURFACE_NAMES[s]).c_str(), count, 3,
          [&](std::size_t e, int i) { return principal(at(e).at[s], i); });
  for (std::size_t s = 0; s < SURFACES; ++s)
    reals(data, fmt::format("von_mises_{}", SURFACE_NAMES[s]).c_str(), count, 1,
          [&](std::size_t e, int) { return at(e).at[s].equivalent; });
}

void write_plastic_strains(pugi::xml_node data, const std::vector<element_result>& elements) {
  const std::size_t count = elements.size();
  for (std::size_t s = 0; s < SURFACES; ++s)
    reals(data, fmt::format("plastic_strain_{}", SURFACE_NAMES[s]).c_str(), count, 3,
          [&](std::size_t e, int i) { return elements[e].plastic[s][static_cast<std::size_t>(i)]; });
  reals(data, "plastic_shear_strain", count, 2,
        [&](std::size_t e, int i) { return elements[e].plastic_shear[static_cast<std::size_t>(i)]; });
  reals(data, "equivalent_plastic_strain", count, 1,
        [&](std::size_t e, int) { return elements[e].equivalent_plastic; });
}

pugi::xml_node start_piece(pugi::xml_document& document, const model& m) {
  pugi::xml_node file = document.append_child("VTKFile");
  file.append_attribute("type") = "UnstructuredGrid";
  file.append_attribute("version") = "0.1";
  file.append_attribute("byte_order") = "LittleEndian";
  pugi::xml_node piece = file.append_child("UnstructuredGrid").append_child("Piece");
  piece.append_attribute("NumberOfPoints") = m.nodes.size();
  piece.append_attribute("NumberOfCells") = m.elements.size();
  return piece;
}

}  // namespace

void write_vtu(std::ostream& out, const model& m, const static_solution& solution, const step_results& results) {
  pugi::xml_document document;
  pugi::xml_node piece = start_piece(document, m);
  pugi::xml_node points = piece.append_child("PointData");
  write_point_data(points, m, solution, results);
  if (!results.parts.empty()) write_parts(points, m, results);
  if (!results.solids.empty()) write_solid_stresses(points, governing_solids(results.solids, m.nodes.size()));
  pugi::xml_node cells = piece.append_child("CellData");
  write_cell_data(cells, m, results);
  if (results.yielding) write_plastic_strains(cells, results.elements);
  write_mesh(piece, m);
  document.save(out, "  ");
}

void write_modes_vtu(std::ostream& out, const model& m, const modal_solution& solution) {
  pugi::xml_document document;
  pugi::xml_node piece = start_piece(document, m);
  pugi::xml_node data = piece.append_child("PointData");
  const std::size_t count = m.nodes.size();
  data_array(data, "node_id", "Int32", count, 1, [&](std::size_t n, int) { return m.nodes[n].id; });
  for (std::size_t k = 0; k < solution.modes.size(); ++k) {
    const std::vector<double>& u = solution.modes[k].displacement;
    const auto part = [&](const char* form, int first) {
      reals(data, fmt::format(fmt::runtime(form), k + 1).c_str(), count, 3,
            [&, first](std::size_t n, int i) { return u[freedom(static_cast<int>(n), first + i)]; });
    };
    part("mode_{}", 0);
    part("mode_{}_rotation", 3);
  }
  data_array(piece.append_child("CellData"), "element_id", "Int32", m.elements.size(), 1,
             [&](std::size_t e, int) { return m.elements[e].id; });
  write_mesh(piece, m);
  document.save(out, "  ");
}

}  // namespace solver
