// page_sections.cpp: materials and sections as tables of the page.
#include <nlohmann/json.hpp>

#include "report_page/page_model.h"

namespace solver {

namespace {

// Rows of two columns; what is 0 is left out unless it means something.
class table_rows {
 public:
  void add(const char* name, double value) { rows_.push_back(page_json::array({name, value})); }
  void add(const char* name, const std::string& text) { rows_.push_back(page_json::array({name, text})); }
  void add_unless_zero(const char* name, double value) {
    if (value != 0) add(name, value);
  }
  page_json take() { return std::move(rows_); }

 private:
  page_json rows_ = page_json::array();
};

page_json rows_of(const material& mat) {
  table_rows rows;
  if (mat.elastic && !mat.orthotropic) {
    rows.add("Young's modulus", mat.E1);
    rows.add("Poisson's ratio", mat.NU12);
  } else if (mat.elastic) {
    rows.add("E1", mat.E1);
    rows.add("E2", mat.E2);
    rows.add("nu12", mat.NU12);
    rows.add("G12", mat.G12);
    rows.add("G13", mat.G13);
    rows.add("G23", mat.G23);
  }
  rows.add_unless_zero("density", mat.density);
  if (mat.expansion && mat.alpha1 == mat.alpha2) rows.add("thermal expansion", mat.alpha1);
  if (mat.expansion && mat.alpha1 != mat.alpha2) {
    rows.add("thermal expansion 1", mat.alpha1);
    rows.add("thermal expansion 2", mat.alpha2);
  }
  rows.add_unless_zero("yield stress", mat.yield_stress);
  rows.add_unless_zero("plastic modulus", mat.plastic_modulus);
  if (!mat.elastic_table.empty() || !mat.density_table.empty() || !mat.expansion_table.empty()) {
    rows.add("by temperature", "constants of the first line of each table");
  }
  return rows.take();
}

std::string name_of(const char* keyword, const std::string& elset) {
  return std::string(keyword) + (elset.empty() ? "" : ", ELSET=" + elset);
}

page_json entry(const std::string& name, const char* kind, int material, table_rows& rows) {
  return {{"name", name}, {"kind", kind}, {"material", material}, {"rows", rows.take()}, {"elements", 0}};
}

page_json shell_entry(const model& m, const shell_section& s, bool shell) {
  table_rows rows;
  rows.add("thickness", s.thickness);
  rows.add_unless_zero("offset of the nodes, in thicknesses", s.offset);
  if (shell) rows.add("theory", s.formulation == shell_formulation::THIN ? "thin (Kirchhoff)" : "thick (Mindlin)");
  if (s.layup >= 0) {
    int number = 0;
    for (const layer& each : m.laminates[s.layup].layers) {
      rows.add(("layer " + std::to_string(++number) + ": thickness").c_str(), each.thickness);
      rows.add(("layer " + std::to_string(number) + ": angle").c_str(), each.angle);
    }
  }
  page_json result = entry(name_of(shell ? "*SHELL SECTION" : "*MEMBRANE SECTION", s.elset),
                           shell ? "shell" : "membrane", s.layup >= 0 ? -1 : s.material, rows);
  result["thickness"] = s.thickness;
  result["offset"] = s.offset;
  return result;
}

const char* kind_of(frame_section_kind kind) {
  switch (kind) {
    case frame_section_kind::BEAM: return "beam";
    case frame_section_kind::TRUSS: return "truss";
    case frame_section_kind::CABLE: return "cable";
    case frame_section_kind::SPRING: return "spring";
    default: return "link";
  }
}

page_json frame_entry(const frame_section& s) {
  table_rows rows;
  rows.add_unless_zero("area", s.area);
  if (s.kind == frame_section_kind::BEAM) {
    rows.add("moment of inertia about y", s.inertia_xz);
    rows.add("moment of inertia about z", s.inertia_xy);
    rows.add("torsion constant", s.torsion);
    rows.add_unless_zero("shear stiffness along y", s.shear_stiffness_y);
    rows.add_unless_zero("shear stiffness along z", s.shear_stiffness_z);
    rows.add_unless_zero("principal axes turned by, in radians", s.place.angle);
  }
  rows.add_unless_zero("pretension", s.pretension);
  rows.add_unless_zero("unstressed length", s.unstressed_length);
  rows.add_unless_zero("unstressed length by chord", s.length_ratio);
  constexpr std::array<const char*, 6> STIFFNESS = {"stiffness ux", "stiffness uy", "stiffness uz",
                                                    "stiffness rx", "stiffness ry", "stiffness rz"};
  for (std::size_t i = 0; i < STIFFNESS.size(); ++i) rows.add_unless_zero(STIFFNESS[i], s.stiffness[i]);
  page_json result = entry(name_of(s.keyword.c_str(), s.elset), kind_of(s.kind), s.material, rows);
  if (!s.outline.empty()) result["outline"] = s.outline;
  return result;
}

page_json mass_entry(const point_mass& mass) {
  table_rows rows;
  rows.add_unless_zero("mass", mass.mass);
  constexpr std::array<const char*, 6> INERTIA = {"inertia xx", "inertia yy", "inertia zz",
                                                  "inertia xy", "inertia xz", "inertia yz"};
  for (std::size_t i = 0; i < INERTIA.size(); ++i) rows.add_unless_zero(INERTIA[i], mass.inertia[i]);
  return entry(name_of(mass.mass != 0 ? "*MASS" : "*ROTARY INERTIA", mass.elset), "mass", -1, rows);
}

}  // namespace

page_json materials_of_page(const model& m) {
  page_json all = page_json::array();
  for (const material& mat : m.materials) all.push_back({{"name", mat.name}, {"rows", rows_of(mat)}});
  return all;
}

page_json sections_of_page(const page_mesh& mesh) {
  const model& m = mesh.m;
  std::vector<int> elements(subscript(mesh.sections.count), 0);
  std::vector<char> bends(subscript(mesh.sections.count), 0);
  for (const element& e : m.elements) {
    const int section = mesh.sections.of(m, e);
    if (section < 0) continue;
    ++elements[subscript(section)];
    if (is_shell(e.type)) bends[subscript(section)] = 1;
  }
  page_json all = page_json::array();
  for (const shell_section& s : m.shell_sections) all.push_back(shell_entry(m, s, bends[all.size()] != 0));
  for (const frame_section& s : m.frame_sections) all.push_back(frame_entry(s));
  for (const solid_section& s : m.solid_sections) {
    table_rows rows;
    all.push_back(entry(name_of("*SOLID SECTION", s.elset), "solid", s.material, rows));
  }
  for (const point_mass& mass : m.point_masses) all.push_back(mass_entry(mass));
  for (std::size_t i = 0; i < all.size(); ++i) all[i]["elements"] = elements[i];
  return all;
}

}  // namespace solver
