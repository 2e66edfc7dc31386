// page_fields.cpp: gathers fields out of the results of a step, one after the other.
#include "report_page/page_fields.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include <nlohmann/json.hpp>

#include "pushover/span_use.h"

namespace solver {

namespace {

constexpr float NONE = std::numeric_limits<float>::quiet_NaN();
constexpr std::array<const char*, SURFACES> SURFACE_NAMES = {"top", "middle", "bottom"};

bool any(const std::vector<float>& values) {
  return std::any_of(values.begin(), values.end(), [](float value) { return value != 0 && !std::isnan(value); });
}

class field_list {
 public:
  explicit field_list(page_buffers& buffers) : buffers_(buffers) {}
  void add(page_field field) { fields_.push_back(as_data(std::move(field), buffers_)); }
  page_json take() { return std::move(fields_); }

 private:
  page_buffers& buffers_;
  page_json fields_ = page_json::array();
};

// `count` components of the elements of which `has` holds; value(element, component).
template <class HAS, class VALUE>
std::vector<float> by_element(const model& m, int count, const HAS& has, const VALUE& value) {
  std::vector<float> values;
  values.reserve(m.elements.size() * subscript(count));
  for (std::size_t e = 0; e < m.elements.size(); ++e) {
    const bool own = has(m.elements[e]);
    for (int i = 0; i < count; ++i) values.push_back(own ? as_float(value(e, subscript(i))) : NONE);
  }
  return values;
}

void add_plate_forces(const model& m, const step_results& results, field_list& list) {
  const auto plate = [](const element& e) { return is_plate(e.type); };
  const auto shell = [](const element& e) { return is_shell(e.type); };
  const auto thick = [&](const element& e) {
    return is_shell(e.type) && m.shell_sections[e.section].formulation == shell_formulation::THICK;
  };
  const auto exists = [&](const auto& has) { return std::any_of(m.elements.begin(), m.elements.end(), has); };
  if (exists(plate)) {
    list.add({"membrane_force",
              "Membrane forces",
              "Plates: forces per length",
              "element",
              "scalar",
              {"N1", "N2", "N12"},
              by_element(m, 3, plate, [&](std::size_t e, std::size_t i) { return results.elements[e].force[i]; })});
  }
  if (exists(shell)) {
    list.add({"moment",
              "Moments",
              "Plates: forces per length",
              "element",
              "scalar",
              {"M1", "M2", "M12"},
              by_element(m, 3, shell, [&](std::size_t e, std::size_t i) { return results.elements[e].moment[i]; })});
  }
  if (exists(thick)) {
    list.add(
        {"shear_force",
         "Shear forces",
         "Plates: forces per length",
         "element",
         "scalar",
         {"Q1", "Q2"},
         by_element(m, 2, thick, [&](std::size_t e, std::size_t i) { return results.elements[e].shear_force[i]; })});
  }
}

// Membranes have the same stresses everywhere: those of the middle stand for all where there is no shell.
void add_plate_stresses(const model& m, const step_results& results, field_list& list) {
  if (results.parts.empty()) return;
  const bool shells =
      std::any_of(m.elements.begin(), m.elements.end(), [](const element& e) { return is_shell(e.type); });
  for (std::size_t s = 0; s < SURFACES; ++s) {
    if (!shells && s != MIDDLE) continue;
    const std::string name = SURFACE_NAMES[s];
    page_field field{"stress_" + name,
                     shells ? "Stress, " + name : "Stress",
                     "Plates: stresses",
                     "plate_part",
                     "plane_stress",
                     {"sx", "sy", "sxy"},
                     {}};
    for (const nodal_part& part : results.parts) {
      for (const double value : part.at[s].stress) field.values.push_back(as_float(value));
      if (s != MIDDLE) continue;
      for (const double value : part.shear) field.shear.push_back(as_float(value));
    }
    if (!any(field.shear)) field.shear.clear();
    list.add(std::move(field));
  }
}

void add_solid_stresses(const step_results& results, field_list& list) {
  if (results.solids.empty()) return;
  page_field field{"stress_solid",
                   "Stress of solids",
                   "Solids: stresses",
                   "solid_part",
                   "tensor",
                   {"xx", "yy", "zz", "xy", "yz", "xz"},
                   {}};
  for (const solid_part& part : results.solids) {
    for (const double value : part.at.stress) field.values.push_back(as_float(value));
  }
  list.add(std::move(field));
}

void add_members(const model& m, const step_results& results, field_list& list) {
  const auto member = [](const element& e) { return is_member(e.type); };
  if (std::none_of(m.elements.begin(), m.elements.end(), member)) return;
  list.add({"axial_force",
            "Axial force",
            "Members",
            "element",
            "scalar",
            {"N"},
            by_element(m, 1, member, [&](std::size_t e, std::size_t) {
              return (results.members[e][6] - results.members[e][0]) / 2;
            })});
}

void add_plastic_strains(const model& m, const step_results& results, field_list& list) {
  if (!results.yielding) return;
  const auto shell = [](const element& e) { return is_shell(e.type); };
  const auto of = [&](int count, const auto& value) { return by_element(m, count, shell, value); };
  list.add(equivalent_plastic_field(
      of(1, [&](std::size_t e, std::size_t) { return results.elements[e].equivalent_plastic; })));
  for (std::size_t s = 0; s < SURFACES; ++s) {
    const std::string name = SURFACE_NAMES[s];
    list.add({"plastic_strain_" + name,
              "Plastic strain, " + name,
              "Plasticity",
              "element",
              "scalar",
              {"e1", "e2", "gamma12"},
              of(3, [&](std::size_t e, std::size_t i) { return results.elements[e].plastic[s][i]; })});
  }
  std::vector<float> shear = of(2, [&](std::size_t e, std::size_t i) { return results.elements[e].plastic_shear[i]; });
  if (!any(shear)) return;
  list.add({"plastic_shear_strain",
            "Plastic shear strain",
            "Plasticity",
            "element",
            "scalar",
            {"gamma13", "gamma23"},
            std::move(shear)});
}

double yield_stress_of(const model& m, int material) { return material < 0 ? 0 : m.materials[material].yield_stress; }

float use_of(double equivalent, double yield_stress) {
  return yield_stress > 0 ? as_float(equivalent / yield_stress) : NONE;
}

// The von Mises stress by the yield stress, of plates the largest of the three surfaces; the hinges of beams have the
// forces of their ends by the capacity along their ray.
void add_utilisation(const model& m, const step_results& results, field_list& list) {
  const auto add = [&](const char* on, const char* name, const char* label, std::vector<float> values) {
    if (std::all_of(values.begin(), values.end(), [](float value) { return std::isnan(value); })) return;
    list.add({name, label, "Utilisation", on, "scalar", {"utilisation"}, std::move(values)});
  };
  std::vector<float> plates, solids;
  for (const nodal_part& part : results.parts) {
    const shell_section& s = m.shell_sections[part.section];
    double largest = 0;
    for (const surface_stress& at : part.at) largest = std::fmax(largest, at.equivalent);
    plates.push_back(use_of(largest, s.layup >= 0 ? 0 : yield_stress_of(m, s.material)));
  }
  for (const solid_part& part : results.solids) {
    solids.push_back(use_of(part.at.equivalent, yield_stress_of(m, m.solid_sections[part.section].material)));
  }
  add("plate_part", "utilisation_plates", "Utilisation of the yield stress, plates", std::move(plates));
  add("solid_part", "utilisation_solids", "Utilisation of the yield stress, solids", std::move(solids));
  if (m.hinges.empty()) return;
  add("element", "utilisation_hinges", "Utilisation of hinges",
      by_element(
          m, 1, [](const element& e) { return e.hinges >= 0; },
          [&](std::size_t e, std::size_t) {
            const hinge_model& h = m.hinges[m.elements[e].hinges];
            return std::fmax(capacity_ratio(h, forces_of_end(results.members[e], 0)),
                             capacity_ratio(h, forces_of_end(results.members[e], 1)));
          }));
}

}  // namespace

page_json as_data(page_field field, page_buffers& buffers) {
  const int count = count_of(field.components);
  page_json data = {{"name", field.name}, {"label", field.label},           {"group", field.group},
                    {"on", field.on},     {"components", field.components}, {"array", nullptr},
                    {"form", field.form}};
  data["array"] = buffers.results(std::move(field.values), count);
  if (!field.shear.empty()) data["shear"] = buffers.results(std::move(field.shear), 2);
  return data;
}

std::vector<float> by_node(const page_mesh& mesh, const std::vector<double>& by_freedom, int first, int count) {
  std::vector<float> values;
  values.reserve(mesh.nodes.size() * subscript(count));
  for (const int n : mesh.nodes) {
    for (int i = 0; i < count; ++i) values.push_back(as_float(by_freedom[freedom(n, first + i)]));
  }
  return values;
}

page_field equivalent_plastic_field(std::vector<float> values) {
  return {"equivalent_plastic_strain",
          "Equivalent plastic strain",
          "Plasticity",
          "element",
          "scalar",
          {"equivalent plastic strain"},
          std::move(values)};
}

page_json fields_of_step(const page_mesh& mesh, const model& m, const std::vector<double>& displacement,
                         const step_results& results, page_buffers& buffers) {
  if (mesh.outline) return page_json::array();
  field_list list(buffers);
  std::vector<float> rotation = by_node(mesh, displacement, 3, 3);
  if (any(rotation)) {
    list.add({"rotation", "Rotation", "Displacements", "node", "vector", {"rx", "ry", "rz"}, std::move(rotation)});
  }
  add_plate_forces(m, results, list);
  add_plate_stresses(m, results, list);
  add_solid_stresses(results, list);
  add_members(m, results, list);
  add_plastic_strains(m, results, list);
  add_utilisation(m, results, list);
  return list.take();
}

}  // namespace solver
