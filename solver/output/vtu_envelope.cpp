// vtu_envelope.cpp: builds the XML tree of an envelope.
#include "output/vtu_envelope.h"

#include <algorithm>
#include <string>
#include <vector>

#include <fmt/format.h>
#include <pugixml.hpp>

#include "elements/load_case.h"
#include "output/case_names.h"
#include "output/vtu_arrays.h"
#include "output/vtu_components.h"
#include "output/vtu_mesh.h"
#include "output/vtu_model.h"

namespace solver {

namespace {

const bounds NO_BOUNDS;

// at(item, component) gives the bounds of a value, NO_BOUNDS where the item has no such value.
template <class AT>
void write_bounds(const vtu_data& data, const std::string& name, std::size_t items, const components& of,
                  const AT& at) {
  const auto array = [&](const char* ending) { return name + ending; };
  reals(data, array("_min").c_str(), items, of, [&](std::size_t i, int c) { return at(i, c).least; });
  reals(data, array("_max").c_str(), items, of, [&](std::size_t i, int c) { return at(i, c).largest; });
  data_array(data, array("_min_case").c_str(), "Int32", items, of,
             [&](std::size_t i, int c) { return at(i, c).least_step + 1; });
  data_array(data, array("_max_case").c_str(), "Int32", items, of,
             [&](std::size_t i, int c) { return at(i, c).largest_step + 1; });
}

// Columns of a table from `first` on as the components of an array; row(item) is the row, or -1.
template <class ROW>
void write_columns(const vtu_data& data, const std::string& name, std::size_t items, const components& of,
                   const bounds_table& table, std::size_t first, const ROW& row) {
  write_bounds(data, name, items, of, [&](std::size_t i, int c) -> const bounds& {
    const std::ptrdiff_t r = row(i);
    return r < 0 ? NO_BOUNDS : table.at(subscript(r), first + subscript(c));
  });
}

class envelope_writer {
 public:
  envelope_writer(const model& m, const envelope& e, const vtu_points& points) : m_(m), e_(e), points_(points) {}
  void write_points(const vtu_data& data) const;
  void write_cells(const vtu_data& data) const;

 private:
  void write_motions(const vtu_data& data) const;
  void write_stations(const vtu_data& data) const;
  void write_parts(const vtu_data& data) const;

  const model& m_;
  const envelope& e_;
  const vtu_points& points_;
};

// Nodes and stations are one list of points.
void envelope_writer::write_motions(const vtu_data& data) const {
  const bool rotations = turns_anywhere(m_);
  const auto moved = [&](const char* name, std::size_t first) {
    write_bounds(data, name, points_.count(), XYZ, [&, first](std::size_t p, int c) -> const bounds& {
      const std::size_t column = first + subscript(c);
      return points_.is_node(p) ? e_.displacement.at(p, column) : e_.stations.at(p - m_.nodes.size(), column);
    });
  };
  const auto of_node = [&](std::size_t p) { return points_.is_node(p) ? signed_index(p) : -1; };
  moved("displacement", OF_DISPLACEMENT);
  if (rotations) moved("rotation", OF_ROTATION);
  write_columns(data, "reaction_force", points_.count(), XYZ, e_.reaction, 0, of_node);
  if (rotations) write_columns(data, "reaction_moment", points_.count(), XYZ, e_.reaction, 3, of_node);
}

void envelope_writer::write_stations(const vtu_data& data) const {
  if (e_.stations.empty()) return;
  points_.write_places(data);
  const auto station = [&](std::size_t p) { return points_.is_node(p) ? -1 : signed_index(p - m_.nodes.size()); };
  const bool beams = std::any_of(e_.fields.begin(), e_.fields.end(), [&](const member_field& f) {
    return frame_section_of(m_, m_.elements[f.element]).kind == frame_section_kind::BEAM;
  });
  for (std::size_t i = 0; i < (beams ? SECTION_FORCES : 1); ++i) {
    write_columns(data, SECTION_FORCE_NAMES[i], points_.count(), SCALAR, e_.stations, OF_FORCES + i, station);
  }
}

// The part of a node with the largest of the stresses that `largest` gives for a row.
template <class PARTS, class LARGEST>
std::vector<std::ptrdiff_t> governing(const PARTS& parts, std::size_t points, const LARGEST& largest) {
  std::vector<std::ptrdiff_t> chosen(points, -1);
  for (std::size_t p = 0; p < parts.size(); ++p) {
    std::ptrdiff_t& at = chosen[subscript(parts[p].node)];
    if (at < 0 || largest(p) > largest(subscript(at))) at = signed_index(p);
  }
  return chosen;
}

void envelope_writer::write_parts(const vtu_data& data) const {
  const std::vector<std::ptrdiff_t> chosen = governing(e_.at_parts, points_.count(), [&](std::size_t p) {
    double most = 0;
    for (std::size_t s = 0; s < SURFACES; ++s) {
      most = std::max(most, e_.parts.at(p, s * STRESS_COLUMNS + VON_MISES).largest);
    }
    return most;
  });
  std::vector<int> count(points_.count(), 0);
  for (const nodal_part& part : e_.at_parts) ++count[subscript(part.node)];
  data_array(data, "nodal_parts", "Int32", count.size(), SCALAR, [&](std::size_t p, int) { return count[p]; });
  for (const auto& [name, row] : {std::pair<const char*, int>{"nodal_axis_x", 1}, {"nodal_normal", 3}}) {
    reals(data, name, chosen.size(), XYZ, [&, axis = row](std::size_t p, int i) {
      return chosen[p] < 0 ? 0.0 : e_.at_parts[subscript(chosen[p])].axes(axis, i + 1);
    });
  }
  const auto row_of = [&](std::size_t p) { return chosen[p]; };
  const char* const surfaces[] = {"top", "middle", "bottom"};
  for (std::size_t s = 0; s < SURFACES; ++s) {
    const std::size_t first = s * STRESS_COLUMNS, count_of_points = chosen.size();
    write_columns(data, fmt::format("part_stress_{}", surfaces[s]), count_of_points, SURFACE_STRESS, e_.parts, first,
                  row_of);
    write_columns(data, fmt::format("part_principal_{}", surfaces[s]), count_of_points, PLANE_PRINCIPAL, e_.parts,
                  first + FIRST, row_of);
    write_columns(data, fmt::format("part_von_mises_{}", surfaces[s]), count_of_points, SCALAR, e_.parts,
                  first + VON_MISES, row_of);
  }
}

template <class ROW>
void write_solids(const vtu_data& data, std::size_t items, const bounds_table& table, const ROW& row) {
  write_columns(data, "solid_stress", items, TENSOR, table, OF_STRESS, row);
  write_columns(data, "solid_principal", items, SPACE_PRINCIPAL, table, OF_PRINCIPAL, row);
  write_columns(data, "solid_von_mises", items, SCALAR, table, OF_EQUIVALENT, row);
}

void envelope_writer::write_points(const vtu_data& data) const {
  data_array(data, "node_id", "Int32", points_.count(), SCALAR, [&](std::size_t p, int) { return points_.id(p); });
  write_motions(data);
  write_stations(data);
  if (!e_.parts.empty()) write_parts(data);
  if (e_.solids.empty()) return;
  const std::vector<std::ptrdiff_t> chosen =
      governing(e_.at_solids, points_.count(), [&](std::size_t p) { return e_.solids.at(p, OF_EQUIVALENT).largest; });
  write_solids(data, chosen.size(), e_.solids, [&](std::size_t p) { return chosen[p]; });
}

void envelope_writer::write_cells(const vtu_data& data) const {
  write_vtu_cells(data, m_);
  const std::size_t count = m_.elements.size();
  const auto of = [&](bool (*is)(element_type)) {
    return [this, is](std::size_t i) { return is(m_.elements[i].type) ? signed_index(i) : -1; };
  };
  if (!e_.in_solids.empty()) write_solids(data, count, e_.in_solids, of(is_solid));
  if (e_.plates.empty()) return;
  write_columns(data, "membrane_force", count, MEMBRANE_FORCE, e_.plates, OF_MEMBRANE, of(is_plate));
  write_columns(data, "moment", count, PLATE_MOMENT, e_.plates, OF_MOMENT, of(is_shell));
  write_columns(data, "shear_force", count, PLATE_SHEAR, e_.plates, OF_SHEAR, of(is_shell));
  const char* const surfaces[] = {"top", "middle", "bottom"};
  for (std::size_t s = 0; s < SURFACES; ++s) {
    write_columns(data, fmt::format("von_mises_{}", surfaces[s]), count, SCALAR, e_.plates, OF_VON_MISES + s,
                  of(is_plate));
  }
}

void write_cases(pugi::xml_node fields, const model& m, const envelope& e) {
  std::vector<double> numbers;
  std::vector<std::string> names;
  for (const int step : e.steps) {
    numbers.push_back(step + 1);
    names.push_back(case_name(m, step));
  }
  field_numbers(fields, "case_numbers", "Int32", numbers);
  field_texts(fields, "case_names", names);
}

}  // namespace

pugi::xml_document envelope_vtu(const model& m, const step& s, const envelope& e, int station_count, vtu_form form) {
  step_results places;  // of the stations
  places.fields = e.fields;
  const vtu_points points(m, places, station_count);
  pugi::xml_document document;
  pugi::xml_node piece = start_vtu(document, m, points, {&s}, form);
  const envelope_writer writer(m, e, points);
  pugi::xml_node at_points = piece.append_child("PointData");
  writer.write_points(at_points);
  write_node_sets(at_points, m, points.count());
  pugi::xml_node of_cells = piece.append_child("CellData");
  writer.write_cells(of_cells);
  write_element_sets(of_cells, m);
  write_vtu_mesh(piece, m, points);
  write_cases(piece.parent().child("FieldData"), m, e);
  return document;
}

}  // namespace solver
