// vtu_writer.cpp: builds the XML tree.
#include "output/vtu_writer.h"

#include <algorithm>
#include <cmath>
#include <string>

#include <fmt/format.h>
#include <pugixml.hpp>

#include "elements/material_axes.h"
#include "output/vtu_arrays.h"
#include "output/vtu_components.h"
#include "output/vtu_mesh.h"
#include "output/vtu_model.h"
#include "output/vtu_pieces.h"
#include "output/vtu_stations.h"

namespace solver {

namespace {

int vtk_type(const element& e, std::size_t points) {
  constexpr int VTK_OF_NODES[] = {0, 1, 3, 5, 9};  // vertex, line, triangle, quadrilateral
  constexpr int POLYLINE = 4, TETRA = 10, HEXAHEDRON = 12, WEDGE = 13;
  if (is_member(e.type) && points > 2) return POLYLINE;
  switch (e.type) {
    case element_type::C3D4: return TETRA;
    case element_type::C3D6: return WEDGE;
    case element_type::C3D8: return HEXAHEDRON;
    default: return VTK_OF_NODES[e.nodes.size()];
  }
}

constexpr const char* SURFACE_NAMES[SURFACES] = {"top", "middle", "bottom"};

double principal(const surface_stress& stress, int i) {
  return i == 0 ? stress.first : i == 1 ? stress.second : stress.angle;
}

// `part`: null for the whole model.
vtu_data point_data(pugi::xml_node piece, const char* name, const vtu_piece* part) {
  return {piece.append_child(name), part == nullptr ? nullptr : &part->points};
}
vtu_data cell_data(pugi::xml_node piece, const vtu_piece* part) {
  return {piece.append_child("CellData"), part == nullptr ? nullptr : &part->cells};
}

void write_mesh(pugi::xml_node piece, const model& m, const vtu_points& points, const vtu_piece* part) {
  reals(point_data(piece, "Points", part), "Points", points.count(), XYZ,
        [&](std::size_t p, int i) { return points.place(p, i); });
  pugi::xml_node cells = piece.append_child("Cells");
  std::vector<int> connectivity, offsets, types;
  for (std::size_t e = 0; e < m.elements.size(); ++e) {
    if (part != nullptr && !is_own(m, e)) continue;
    const std::vector<int> own = points.of_element(e);
    for (const int p : own) connectivity.push_back(part == nullptr ? p : part->number[subscript(p)]);
    offsets.push_back(count_of(connectivity));
    types.push_back(vtk_type(m.elements[e], own.size()));
  }
  data_array(cells, "connectivity", "Int32", connectivity.size(), SCALAR,
             [&](std::size_t i, int) { return connectivity[i]; });
  data_array(cells, "offsets", "Int32", offsets.size(), SCALAR, [&](std::size_t i, int) { return offsets[i]; });
  data_array(cells, "types", "UInt8", types.size(), SCALAR, [&](std::size_t e, int) { return types[e]; });
}

template <class CONDITION>
bool any_element(const model& m, const CONDITION& condition) {
  return std::any_of(m.elements.begin(), m.elements.end(), condition);
}

bool has_plates(const model& m) {
  return any_element(m, [](const element& e) { return is_plate(e.type); });
}

// Whether anything of a model bends or turns: of solids, membranes, trusses, cables and springs along their line
// nothing does.
bool turns(const model& m, const element& e) {
  if (is_shell(e.type)) return true;
  if (!is_member(e.type) || e.type == element_type::T3D2 || e.type == element_type::SPRINGA) return false;
  if (e.type != element_type::SPRING1 && e.type != element_type::SPRING2) return true;
  const std::array<double, 6>& k = frame_section_of(m, e).stiffness;
  return k[3] != 0 || k[4] != 0 || k[5] != 0;
}

bool has_rotations(const model& m) {
  return any_element(m, [&](const element& e) { return turns(m, e); });
}

void write_displacements(const vtu_data& data, const model& m, const static_solution& solution,
                         const vtu_points& points) {
  const auto moved = [&](const char* name, int first, std::array<double, 3> station::*of_station) {
    reals(data, name, points.count(), XYZ, [&, first](std::size_t p, int i) {
      if (points.is_node(p)) return solution.displacement[freedom(number_of(p), first + i)];
      return (points.at(p).*of_station)[subscript(i)];
    });
  };
  const auto reaction = [&](const char* name, int first) {
    reals(data, name, points.count(), XYZ, [&, first](std::size_t p, int i) {
      return points.is_node(p) ? solution.reaction[freedom(number_of(p), first + i)] : 0.0;
    });
  };
  const bool rotations = has_rotations(m);
  moved("displacement", 0, &station::displacement);
  if (rotations) moved("rotation", 3, &station::rotation);
  reaction("reaction_force", 0);
  if (rotations) reaction("reaction_moment", 3);
}

// What belongs to plates is 0 at the stations of members.
void write_point_data(const vtu_data& data, const model& m, const static_solution& solution,
                      const step_results& results, const vtu_points& points) {
  data_array(data, "node_id", "Int32", points.count(), SCALAR, [&](std::size_t p, int) { return points.id(p); });
  write_displacements(data, m, solution, points);
  points.write(data);
  if (!has_plates(m)) return;
  static const nodal_result NONE;
  const std::size_t count = points.count();
  const auto at = [&](std::size_t p) -> const nodal_result& { return points.is_node(p) ? results.nodes[p] : NONE; };
  reals(data, "nodal_stress_top", count, TENSOR, [&](std::size_t n, int i) { return at(n).top[subscript(i)]; });
  reals(data, "nodal_stress_bottom", count, TENSOR, [&](std::size_t n, int i) { return at(n).bottom[subscript(i)]; });
  reals(data, "nodal_von_mises_top", count, SCALAR, [&](std::size_t n, int) { return at(n).equivalent_top; });
  reals(data, "nodal_von_mises_bottom", count, SCALAR, [&](std::size_t n, int) { return at(n).equivalent_bottom; });
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
    const auto n = subscript(part.node);
    if (chosen[n] == nullptr || largest(part) > largest(*chosen[n])) chosen[n] = &part;
    ++count[n];
  }
  return chosen;
}

void write_parts(const vtu_data& data, const model& m, const step_results& results, const vtu_points& points) {
  static const nodal_part NONE;
  std::vector<int> number;
  std::vector<const nodal_part*> chosen = governing_parts(m, results, number);
  const std::size_t count = points.count();
  chosen.resize(count, nullptr);
  number.resize(count, 0);
  const auto at = [&](std::size_t n) -> const nodal_part& { return chosen[n] == nullptr ? NONE : *chosen[n]; };
  data_array(data, "nodal_parts", "Int32", count, SCALAR, [&](std::size_t n, int) { return number[n]; });
  reals(data, "nodal_axis_x", count, XYZ, [&](std::size_t n, int i) { return at(n).axes(1, i + 1); });
  reals(data, "nodal_normal", count, XYZ, [&](std::size_t n, int i) { return at(n).axes(3, i + 1); });
  for (std::size_t s = 0; s < SURFACES; ++s) {
    reals(data, fmt::format("part_stress_{}", SURFACE_NAMES[s]).c_str(), count, SURFACE_STRESS,
          [&](std::size_t n, int i) { return at(n).at[s].stress[subscript(i)]; });
  }
  for (std::size_t s = 0; s < SURFACES; ++s) {
    reals(data, fmt::format("part_principal_{}", SURFACE_NAMES[s]).c_str(), count, SURFACE_PRINCIPAL,
          [&](std::size_t n, int i) { return principal(at(n).at[s], i); });
  }
  for (std::size_t s = 0; s < SURFACES; ++s) {
    reals(data, fmt::format("part_von_mises_{}", SURFACE_NAMES[s]).c_str(), count, SCALAR,
          [&](std::size_t n, int) { return at(n).at[s].equivalent; });
  }
}

void write_axes(const vtu_data& data, const model& m) {
  std::vector<MATRIX<3, 3>> axes;
  axes.reserve(m.elements.size());
  constexpr MATRIX<3, 3> GLOBAL{{1, 0, 0, 0, 1, 0, 0, 0, 1}};
  for (const element& e : m.elements) {
    if (is_solid(e.type) || is_point(e.type)) {
      axes.push_back(GLOBAL);
    } else {
      axes.push_back(is_plate(e.type) ? material_axes(m, e) : member_axes(m, e));
    }
  }
  reals(data, "axis_x", axes.size(), XYZ, [&](std::size_t e, int i) { return axes[e](1, i + 1); });
  reals(data, "normal", axes.size(), XYZ, [&](std::size_t e, int i) { return axes[e](3, i + 1); });
}

void write_members(const vtu_data& data, const model& m, const step_results& results) {
  const std::size_t count = results.members.size();
  const auto at = [&](std::size_t e, std::size_t i) { return results.members[e][i]; };
  reals(data, "axial_force", count, SCALAR, [&](std::size_t e, int) { return (at(e, 6) - at(e, 0)) / 2; });
  const auto part = [&](const char* name, std::size_t first) {
    reals(data, name, count, XYZ, [&, first](std::size_t e, int i) { return at(e, first + subscript(i)); });
  };
  const bool moments = any_element(m, [&](const element& e) { return is_member(e.type) && turns(m, e); });
  part("end_force_1", 0);
  if (moments) part("end_moment_1", 3);
  part("end_force_2", 6);
  if (moments) part("end_moment_2", 9);
}

bool has_members(const model& m) {
  return any_element(m, [](const element& e) { return is_member(e.type); });
}

void write_solid_stresses(const vtu_data& data, const std::vector<solid_stress>& all) {
  const std::size_t count = all.size();
  reals(data, "solid_stress", count, TENSOR, [&](std::size_t i, int c) { return all[i].stress[subscript(c)]; });
  reals(data, "solid_principal", count, SPACE_PRINCIPAL,
        [&](std::size_t i, int c) { return all[i].principal[subscript(c)]; });
  reals(data, "solid_von_mises", count, SCALAR, [&](std::size_t i, int) { return all[i].equivalent; });
}

bool has_thick_shells(const model& m) {
  return std::any_of(m.shell_sections.begin(), m.shell_sections.end(),
                     [](const shell_section& s) { return s.formulation == shell_formulation::THICK; });
}

void write_cell_data(const vtu_data& data, const model& m, const step_results& results) {
  const std::size_t count = m.elements.size();
  const auto at = [&](std::size_t e) -> const element_result& { return results.elements[e]; };
  write_model_cells(data, m);
  write_axes(data, m);
  if (has_members(m)) write_members(data, m, results);
  if (!results.in_solids.empty()) write_solid_stresses(data, results.in_solids);
  if (!has_plates(m)) return;
  reals(data, "membrane_force", count, MEMBRANE_FORCE, [&](std::size_t e, int i) { return at(e).force[subscript(i)]; });
  if (any_element(m, [](const element& e) { return is_shell(e.type); })) {
    reals(data, "moment", count, PLATE_MOMENT, [&](std::size_t e, int i) { return at(e).moment[subscript(i)]; });
  }
  if (has_thick_shells(m)) {
    reals(data, "shear_force", count, PLATE_SHEAR,
          [&](std::size_t e, int i) { return at(e).shear_force[subscript(i)]; });
  }
  for (std::size_t s = 0; s < SURFACES; ++s) {
    reals(data, fmt::format("stress_{}", SURFACE_NAMES[s]).c_str(), count, ELEMENT_STRESS,
          [&](std::size_t e, int i) { return at(e).at[s].stress[subscript(i)]; });
  }
  for (std::size_t s = 0; s < SURFACES; ++s) {
    reals(data, fmt::format("principal_{}", SURFACE_NAMES[s]).c_str(), count, SURFACE_PRINCIPAL,
          [&](std::size_t e, int i) { return principal(at(e).at[s], i); });
  }
  for (std::size_t s = 0; s < SURFACES; ++s) {
    reals(data, fmt::format("von_mises_{}", SURFACE_NAMES[s]).c_str(), count, SCALAR,
          [&](std::size_t e, int) { return at(e).at[s].equivalent; });
  }
}

void write_plastic_strains(const vtu_data& data, const std::vector<element_result>& elements) {
  const std::size_t count = elements.size();
  for (std::size_t s = 0; s < SURFACES; ++s) {
    reals(data, fmt::format("plastic_strain_{}", SURFACE_NAMES[s]).c_str(), count, PLATE_STRAIN,
          [&](std::size_t e, int i) { return elements[e].plastic[s][subscript(i)]; });
  }
  reals(data, "plastic_shear_strain", count, PLATE_SHEAR_STRAIN,
        [&](std::size_t e, int i) { return elements[e].plastic_shear[subscript(i)]; });
  reals(data, "equivalent_plastic_strain", count, SCALAR,
        [&](std::size_t e, int) { return elements[e].equivalent_plastic; });
}

pugi::xml_node start_piece(pugi::xml_document& document, const model& m, const vtu_points& points,
                           const vtu_about& about, vtu_form form, const vtu_piece* part = nullptr) {
  pugi::xml_node file = document.append_child("VTKFile");
  file.append_attribute("type") = "UnstructuredGrid";
  file.append_attribute("version") = "0.1";
  file.append_attribute("byte_order") = "LittleEndian";
  set_form(file, form);
  pugi::xml_node whole = file.append_child("UnstructuredGrid");
  write_field_data(whole.append_child("FieldData"), m, about);
  pugi::xml_node piece = whole.append_child("Piece");
  piece.append_attribute("NumberOfPoints") = part == nullptr ? points.count() : part->points.size();
  piece.append_attribute("NumberOfCells") = part == nullptr ? m.elements.size() : part->cells.size();
  return piece;
}

std::optional<vtu_piece> piece_in(const model& m, const vtu_points& points, vtu_extent extent) {
  if (extent == vtu_extent::MODEL) return {};
  return own_piece(m, points);
}

void write_shape(const vtu_data& data, const model& m, const std::vector<double>& u, const std::string& translations,
                 const std::string& rotations) {
  const auto part = [&](const std::string& name, int first) {
    reals(data, name.c_str(), m.nodes.size(), XYZ,
          [&, first](std::size_t n, int i) { return u[freedom(number_of(n), first + i)]; });
  };
  part(translations, 0);
  if (has_rotations(m)) part(rotations, 3);
}

// What follows the shapes in a file of modes or states.
void finish_shapes(pugi::xml_node piece, const vtu_data& data, const model& m, const vtu_piece* part = nullptr) {
  write_node_sets(data, m, m.nodes.size());
  const vtu_data cells = cell_data(piece, part);
  write_model_cells(cells, m);
  write_element_sets(cells, m);
  write_mesh(piece, m, vtu_points(m), part);
}

}  // namespace

pugi::xml_document vtu_of(const model& m, const static_solution& solution, const step_results& results,
                          int station_count, vtu_form form, const vtu_about& about, vtu_extent extent) {
  const vtu_points points(m, results, station_count);
  const std::optional<vtu_piece> own = piece_in(m, points, extent);
  const vtu_piece* const part = own ? &*own : nullptr;
  pugi::xml_document document;
  pugi::xml_node piece = start_piece(document, m, points, about, form, part);
  const vtu_data data = point_data(piece, "PointData", part);
  write_point_data(data, m, solution, results, points);
  if (!results.parts.empty()) write_parts(data, m, results, points);
  if (!results.in_solids.empty()) write_solid_stresses(data, governing_solids(results.solids, points.count()));
  write_node_sets(data, m, points.count());
  const vtu_data cells = cell_data(piece, part);
  write_cell_data(cells, m, results);
  if (results.yielding) write_plastic_strains(cells, results.elements);
  write_element_sets(cells, m);
  write_mesh(piece, m, points, part);
  return document;
}

void write_vtu(std::ostream& out, const model& m, const static_solution& solution, const step_results& results,
               int station_count, vtu_form form, const vtu_about& about) {
  vtu_of(m, solution, results, station_count, form, about, vtu_extent::MODEL).save(out, "  ");
}

pugi::xml_document modes_vtu(const model& m, const modal_solution& solution, vtu_form form, const vtu_about& about,
                             vtu_extent extent) {
  const vtu_points points(m);
  const std::optional<vtu_piece> own = piece_in(m, points, extent);
  const vtu_piece* const part = own ? &*own : nullptr;
  pugi::xml_document document;
  pugi::xml_node piece = start_piece(document, m, points, about, form, part);
  const vtu_data data = point_data(piece, "PointData", part);
  data_array(data, "node_id", "Int32", points.count(), SCALAR, [&](std::size_t n, int) { return points.id(n); });
  for (std::size_t k = 0; k < solution.modes.size(); ++k) {
    const std::string name = fmt::format("mode_{}", k + 1);
    write_shape(data, m, solution.modes[k].displacement, name, name + "_rotation");
  }
  finish_shapes(piece, data, m, part);
  return document;
}

void write_modes_vtu(std::ostream& out, const model& m, const modal_solution& solution, vtu_form form,
                     const vtu_about& about) {
  modes_vtu(m, solution, form, about, vtu_extent::MODEL).save(out, "  ");
}

void write_mode_vtu(std::ostream& out, const model& m, const mode& one, vtu_form form, const vtu_about& about) {
  const vtu_points points(m);
  pugi::xml_document document;
  pugi::xml_node piece = start_piece(document, m, points, about, form);
  pugi::xml_node data = piece.append_child("PointData");
  data_array(data, "node_id", "Int32", points.count(), SCALAR, [&](std::size_t n, int) { return points.id(n); });
  write_shape(data, m, one.displacement, "displacement", "rotation");
  finish_shapes(piece, data, m);
  document.save(out, "  ");
}

void write_state_vtu(std::ostream& out, const model& m, const path_state& at, const std::vector<int>& hinges,
                     vtu_form form, const vtu_about& about) {
  const vtu_points points(m);
  pugi::xml_document document;
  pugi::xml_node piece = start_piece(document, m, points, about, form);
  pugi::xml_node data = piece.append_child("PointData");
  data_array(data, "node_id", "Int32", points.count(), SCALAR, [&](std::size_t n, int) { return points.id(n); });
  reals(data, "displacement", points.count(), XYZ,
        [&](std::size_t n, int i) { return static_cast<double>(at.displacement[3 * n + subscript(i)]); });
  finish_shapes(piece, data, m);
  pugi::xml_node cells = piece.child("CellData");
  if (!at.equivalent_plastic.empty()) {
    reals(cells, "equivalent_plastic_strain", m.elements.size(), SCALAR,
          [&](std::size_t e, int) { return static_cast<double>(at.equivalent_plastic[e]); });
  }
  if (!hinges.empty()) {
    data_array(cells, "open_hinges", "UInt8", m.elements.size(), SCALAR, [&](std::size_t e, int) { return hinges[e]; });
  }
  document.save(out, "  ");
}

pugi::xml_node start_vtu(pugi::xml_document& document, const model& m, const vtu_points& points, const vtu_about& about,
                         vtu_form form) {
  return start_piece(document, m, points, about, form);
}

void write_vtu_mesh(pugi::xml_node piece, const model& m, const vtu_points& points) {
  write_mesh(piece, m, points, nullptr);
}

void write_vtu_cells(const vtu_data& data, const model& m) {
  write_model_cells(data, m);
  write_axes(data, m);
}

bool turns_anywhere(const model& m) { return has_rotations(m); }

}  // namespace solver
