// page_envelope.cpp: the least and the largest values of several steps, and which of them governs.
#include <algorithm>
#include <cmath>
#include <limits>

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

// Some columns of a table of bounds, as a field and as extremes.
struct columns {
  const bounds_table& table;
  std::size_t first;
  const char *name, *label, *group, *on;
  names components;
  const char* form;
  const char* extremes;  // before the names of components; null: the field has none
};

// The extremes of one quantity of the whole model.
struct placed_extremes {
  bounds all;
  std::string least_at, largest_at;
};

class envelope_data {
 public:
  envelope_data(page_json& data, const page_mesh& mesh, const model& m, const step& s, page_buffers& buffers)
      : data_(data), mesh_(mesh), m_(m), step_(s), buffers_(buffers) {}

  // `row_of(i)`: the row of the table of item i of the field, of `items`; -1: it has no value. `place_of(row)`: text.
  template <class ROW, class PLACE>
  void add(const columns& c, std::size_t items, const ROW& row_of, const PLACE& place_of) {
    if (c.table.empty() || items == 0) return;
    if (!mesh_.outline && has_any(c)) {
      for (const bool least : {true, false}) add_field(c, items, row_of, least);
    }
    for (std::size_t k = 0; c.extremes != nullptr && k < c.components.size(); ++k) {
      placed_extremes found;
      for (std::size_t r = 0; r < c.table.rows(); ++r) take(c.table.at(r, c.first + k), place_of(r), found);
      add_extremes(c.extremes + c.components[k], found);
    }
  }

  // The exact extremes along members.
  void add_members(const envelope& e) {
    for (std::size_t i = 0; i < SECTION_FORCES; ++i) {
      placed_extremes found;
      for (std::size_t f = 0; f < e.members.size(); ++f) {
        const placed_bounds& own = e.members[f].force[i];
        const auto at = [&](double distance) { return place_name(m_, {-1, number_of(e.fields[f].element), distance}); };
        if (found.all.least_step < 0 || own.least < found.all.least) {
          found.all.least = own.least;
          found.all.least_step = own.least_step;
          found.least_at = at(own.least_at);
        }
        if (found.all.largest_step < 0 || own.largest > found.all.largest) {
          found.all.largest = own.largest;
          found.all.largest_step = own.largest_step;
          found.largest_at = at(own.largest_at);
        }
      }
      add_extremes(SECTION_FORCE_NAMES[i], found);
    }
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

  static void take(const bounds& b, const std::string& place, placed_extremes& found) {
    if (b.least_step >= 0 && (found.all.least_step < 0 || b.least < found.all.least)) {
      found.all.least = b.least;
      found.all.least_step = b.least_step;
      found.least_at = place;
    }
    if (b.largest_step >= 0 && (found.all.largest_step < 0 || b.largest > found.all.largest)) {
      found.all.largest = b.largest;
      found.all.largest_step = b.largest_step;
      found.largest_at = place;
    }
  }

  void add_extremes(const std::string& name, const placed_extremes& found) {
    if (found.all.least_step < 0 || (found.all.least == 0 && found.all.largest == 0)) return;
    const auto with_case = [&](const std::string& place, int step) { return place + ", " + case_name(m_, step); };
    data_["extremes"].push_back({{"name", name},
                                 {"min", found.all.least},
                                 {"min_at", with_case(found.least_at, found.all.least_step)},
                                 {"max", found.all.largest},
                                 {"max_at", with_case(found.largest_at, found.all.largest_step)}});
  }

  // The index of a step among those that the envelope spans.
  std::uint8_t case_of(int step) const {
    const auto found = std::find_if(step_.combined.begin(), step_.combined.end(),
                                    [step](const combined_step& c) { return c.step == step; });
    constexpr std::ptrdiff_t LAST = std::numeric_limits<std::uint8_t>::max();
    return static_cast<std::uint8_t>(std::min(found - step_.combined.begin(), LAST));
  }

  template <class ROW>
  void add_field(const columns& c, std::size_t items, const ROW& row_of, bool least) {
    page_field field{c.name, c.label, c.group, c.on, c.form, c.components, {}};
    std::vector<std::uint8_t> governs;
    for (std::size_t i = 0; i < items; ++i) {
      const int row = row_of(i);
      for (std::size_t k = 0; k < c.components.size(); ++k) {
        const bounds* const b = row < 0 ? nullptr : &c.table.at(subscript(row), c.first + k);
        const int step = b == nullptr ? -1 : least ? b->least_step : b->largest_step;
        field.values.push_back(step < 0 ? std::numeric_limits<float>::quiet_NaN()
                                        : as_float(least ? b->least : b->largest));
        governs.push_back(case_of(step));
      }
    }
    page_json own = as_data(std::move(field), buffers_);
    own["of"] = least ? "min" : "max";
    if (step_.combined.size() < std::numeric_limits<std::uint8_t>::max()) {
      own["governs"] = buffers_.bytes(governs, count_of(c.components));
    }
    data_["fields"].push_back(std::move(own));
  }

  page_json& data_;
  const page_mesh& mesh_;
  const model& m_;
  const step& step_;
  page_buffers& buffers_;
};

void add_plates(envelope_data& data, const model& m, const envelope& e) {
  const auto plate_row = [&](auto has) {
    return [&m, has](std::size_t i) { return has(m.elements[i]) ? number_of(i) : -1; };
  };
  const auto plate = plate_row([](const element& el) { return is_plate(el.type); });
  const auto shell = plate_row([](const element& el) { return is_shell(el.type); });
  const auto of_element = [&](std::size_t r) { return "element " + std::to_string(m.elements[r].id); };
  const std::size_t count = m.elements.size();
  const char* const forces = "Plates: forces per length";
  data.add({e.plates,
            OF_MEMBRANE,
            "membrane_force",
            "Membrane forces",
            forces,
            "element",
            {"N1", "N2", "N12"},
            "scalar",
            ""},
           count, plate, of_element);
  data.add({e.plates, OF_MOMENT, "moment", "Moments", forces, "element", {"M1", "M2", "M12"}, "scalar", ""}, count,
           shell, of_element);
  data.add({e.plates, OF_SHEAR, "shear_force", "Shear forces", forces, "element", {"Q1", "Q2"}, "scalar", ""}, count,
           shell, of_element);
  constexpr std::array<const char*, SURFACES> SURFACE_NAMES = {"top", "middle", "bottom"};
  const auto same = [](std::size_t i) { return number_of(i); };
  const auto of_part = [&](std::size_t r) { return node_name(m, e.at_parts[r].node); };
  for (std::size_t s = 0; s < SURFACES; ++s) {
    const std::string name = std::string("stress_") + SURFACE_NAMES[s];
    const std::string label = std::string("Stress, ") + SURFACE_NAMES[s];
    const std::string before = std::string(SURFACE_NAMES[s]) + " ";
    data.add({e.parts,
              s * STRESS_COLUMNS,
              name.c_str(),
              label.c_str(),
              "Plates: stresses",
              "plate_part",
              {"sx", "sy", "sxy", "first", "second", "von Mises"},
              "scalar",
              before.c_str()},
             e.at_parts.size(), same, of_part);
  }
}

}  // namespace

void add_envelope(page_json& data, const page_mesh& mesh, const model& m, const step& s, const envelope& bounds,
                  page_buffers& buffers) {
  data["fields"] = page_json::array();
  data["extremes"] = page_json::array();
  data["summary"].push_back(page_json::array({"steps", std::to_string(bounds.steps.size())}));
  envelope_data all(data, mesh, m, s, buffers);
  const auto node = [&](std::size_t i) { return mesh.nodes[i]; };
  const auto of_node = [&](std::size_t r) { return node_name(m, number_of(r)); };
  const auto same = [](std::size_t i) { return number_of(i); };
  const std::size_t nodes = mesh.nodes.size();
  all.add({bounds.displacement,
           0,
           "displacement",
           "Displacement",
           "Displacements",
           "node",
           {"ux", "uy", "uz"},
           "scalar",
           ""},
          nodes, node, of_node);
  all.add({bounds.displacement, 3, "rotation", "Rotation", "Displacements", "node", {"rx", "ry", "rz"}, "scalar", ""},
          nodes, node, of_node);
  all.add({bounds.reaction,
           0,
           "reaction",
           "Reactions",
           "Reactions",
           "node",
           {"fx", "fy", "fz", "mx", "my", "mz"},
           "scalar",
           "reaction "},
          nodes, node, of_node);
  all.add_members(bounds);
  const auto of_station = [](std::size_t) { return std::string(); };
  all.add({bounds.stations,
           OF_FORCES,
           "section_force",
           "Section forces",
           "Members",
           "station",
           {SECTION_FORCE_NAMES.begin(), SECTION_FORCE_NAMES.end()},
           "scalar",
           nullptr},
          bounds.stations.rows(), same, of_station);
  all.add({bounds.stations,
           OF_DISPLACEMENT,
           "station_displacement",
           "Displacement of members",
           "Members",
           "station",
           {"ux", "uy", "uz"},
           "scalar",
           nullptr},
          bounds.stations.rows(), same, of_station);
  add_plates(all, m, bounds);
  all.add({bounds.solids,
           OF_STRESS,
           "stress_solid",
           "Stress of solids",
           "Solids: stresses",
           "solid_part",
           {"xx", "yy", "zz", "xy", "yz", "xz", "first", "second", "third", "von Mises"},
           "scalar",
           "solid "},
          bounds.at_solids.size(), same, [&](std::size_t r) { return node_name(m, bounds.at_solids[r].node); });
}

}  // namespace solver
