// page_envelope.cpp: the least and the largest values of several steps, and which of them governs.
#include <algorithm>
#include <cmath>
#include <limits>
#include <unordered_map>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "analyses/extremes.h"
#include "elements/load_case.h"
#include "output/case_names.h"
#include "report_page/page_fields.h"
#include "report_page/page_steps.h"

namespace solver {

namespace {

using names = std::vector<std::string>;

// Some columns of a table of bounds, as a field.
struct columns {
  const bounds_table& table;
  std::size_t first;
  const char *name, *label, *group, *on;
  names components;
  const char* form;
  bool zero_is_none = false;  // a value that is 0 in all steps is none: a reaction where nothing is held
};

class envelope_data {
 public:
  envelope_data(page_json& data, const page_mesh& mesh, const step& s, page_buffers& buffers)
      : data_(data), mesh_(mesh), buffers_(buffers) {
    for (std::size_t i = 0; i < s.combined.size(); ++i) case_of_step_.emplace(s.combined[i].step, number_of(i));
  }

  // `row_of(i)`: the row of the table of item i of the field, of `items`; -1: it has no value.
  template <class ROW>
  void add(const columns& c, std::size_t items, const ROW& row_of) {
    if (c.table.empty() || items == 0 || mesh_.outline || !has_any(c)) return;
    for (const bool least : {true, false}) add_field(c, items, row_of, least);
  }

 private:
  static bool has_any(const columns& c) {
    for (std::size_t r = 0; r < c.table.rows(); ++r) {
      for (std::size_t k = 0; k < c.components.size(); ++k) {
        const bounds& b = c.table.at(r, c.first + k);
        if (b.least != 0 || b.largest != 0) return true;
      }
    }
    return false;
  }

  // The index of a step among those that the envelope spans; -1: none of them.
  std::int32_t case_of(int step) const {
    const auto found = case_of_step_.find(step);
    return found == case_of_step_.end() ? -1 : found->second;
  }

  template <class ROW>
  void add_field(const columns& c, std::size_t items, const ROW& row_of, bool least) {
    page_field field{c.name, c.label, c.group, c.on, c.form, c.components, {}};
    std::vector<std::int32_t> governs;
    for (std::size_t i = 0; i < items; ++i) {
      const int row = row_of(i);
      for (std::size_t k = 0; k < c.components.size(); ++k) {
        const bounds* const b = row < 0 ? nullptr : &c.table.at(subscript(row), c.first + k);
        const bool none = b == nullptr || (c.zero_is_none && b->least == 0 && b->largest == 0);
        const int step = none ? -1 : least ? b->least_step : b->largest_step;
        field.values.push_back(step < 0 ? std::numeric_limits<float>::quiet_NaN()
                                        : as_float(least ? b->least : b->largest));
        governs.push_back(case_of(step));
      }
    }
    page_json own = as_data(std::move(field), buffers_);
    own["of"] = least ? "min" : "max";
    own["governs"] = buffers_.integers(governs, count_of(c.components));
    data_["fields"].push_back(std::move(own));
  }

  page_json& data_;
  const page_mesh& mesh_;
  page_buffers& buffers_;
  std::unordered_map<int, std::int32_t> case_of_step_;
};

void add_plates(envelope_data& data, const model& m, const envelope& e) {
  const auto plate_row = [&](auto has) {
    return [&m, has](std::size_t i) { return has(m.elements[i]) ? number_of(i) : -1; };
  };
  const auto plate = plate_row([](const element& el) { return is_plate(el.type); });
  const auto shell = plate_row([](const element& el) { return is_shell(el.type); });
  const std::size_t count = m.elements.size();
  const char* const forces = "Plates: forces per length";
  data.add(
      {e.plates, OF_MEMBRANE, "membrane_force", "Membrane forces", forces, "element", {"N1", "N2", "N12"}, "scalar"},
      count, plate);
  data.add({e.plates, OF_MOMENT, "moment", "Moments", forces, "element", {"M1", "M2", "M12"}, "scalar"}, count, shell);
  data.add({e.plates, OF_SHEAR, "shear_force", "Shear forces", forces, "element", {"Q1", "Q2"}, "scalar"}, count,
           shell);
  constexpr std::array<const char*, SURFACES> SURFACE_NAMES = {"top", "middle", "bottom"};
  const auto same = [](std::size_t i) { return number_of(i); };
  for (std::size_t s = 0; s < SURFACES; ++s) {
    const std::string name = std::string("stress_") + SURFACE_NAMES[s];
    const std::string label = std::string("Stress, ") + SURFACE_NAMES[s];
    data.add({e.parts,
              s * STRESS_COLUMNS,
              name.c_str(),
              label.c_str(),
              "Plates: stresses",
              "plate_part",
              {"sx", "sy", "sxy", "first", "second", "von Mises"},
              "scalar"},
             e.at_parts.size(), same);
  }
}

page_json extremes_of(const model& m, const envelope& e) {
  const auto at = [&](const placed_value& v) { return place_name(m, v.at) + ", " + case_name(m, v.step); };
  page_json all = page_json::array();
  for (const quantity_range& range : ranges_of(m, e)) {
    all.push_back({{"name", range.name},
                   {"min", range.least.value},
                   {"min_at", at(range.least)},
                   {"max", range.largest.value},
                   {"max_at", at(range.largest)}});
  }
  return all;
}

}  // namespace

void add_envelope(page_json& data, const page_mesh& mesh, const model& m, const step& s, const envelope& bounds,
                  page_buffers& buffers) {
  data["fields"] = page_json::array();
  data["extremes"] = extremes_of(m, bounds);
  data["summary"].push_back(page_json::array({"steps", std::to_string(bounds.steps.size())}));
  if (!s.combined.empty()) add_supports(data, mesh, m, m.steps[s.combined.front().step], buffers);
  envelope_data all(data, mesh, s, buffers);
  const auto node = [&](std::size_t i) { return mesh.nodes[i]; };
  const auto same = [](std::size_t i) { return number_of(i); };
  const std::size_t nodes = mesh.nodes.size();
  all.add(
      {bounds.displacement, 0, "displacement", "Displacement", "Displacements", "node", {"ux", "uy", "uz"}, "scalar"},
      nodes, node);
  all.add({bounds.displacement, 3, "rotation", "Rotation", "Displacements", "node", {"rx", "ry", "rz"}, "scalar"},
          nodes, node);
  all.add({bounds.reaction,
           0,
           "reaction",
           "Reactions",
           "Reactions",
           "node",
           {"fx", "fy", "fz", "mx", "my", "mz"},
           "scalar",
           true},
          nodes, node);
  all.add({bounds.stations,
           OF_FORCES,
           "section_force",
           "Section forces",
           "Members",
           "station",
           {SECTION_FORCE_NAMES.begin(), SECTION_FORCE_NAMES.end()},
           "scalar"},
          bounds.stations.rows(), same);
  all.add({bounds.stations,
           OF_DISPLACEMENT,
           "station_displacement",
           "Displacement of members",
           "Members",
           "station",
           {"ux", "uy", "uz"},
           "scalar"},
          bounds.stations.rows(), same);
  add_plates(all, m, bounds);
  all.add({bounds.solids,
           OF_STRESS,
           "stress_solid",
           "Stress of solids",
           "Solids: stresses",
           "solid_part",
           {"xx", "yy", "zz", "xy", "yz", "xz", "first", "second", "third", "von Mises"},
           "scalar"},
          bounds.at_solids.size(), same);
}

}  // namespace solver
