// vtu_model.cpp: arrays of the model, and field data.
#include "output/vtu_model.h"

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <set>

#include <fmt/format.h>

#include "finites/version.h"
#include "model/base_step.h"
#include "model/step_kinds.h"
#include "output/vtu_arrays.h"

namespace solver {

namespace {

// All sections of a model in one list: of shells and membranes, members, solids, points.
struct section_list {
  std::vector<std::string> names;
  int frames = 0, solids = 0, points = 0;  // where each kind begins
};

// A copy at a temperature is the section of which it is one.
template <class SECTION>
bool is_of_deck(const SECTION& s) {
  return s.of_deck < 0;
}
bool is_of_deck(const point_mass&) { return true; }

// A list of sections may end in copies at a temperature; those of the deck come first.
template <class SECTION, class KEYWORD>
void add_sections(std::vector<std::string>& names, const numbered<SECTION>& sections, const KEYWORD& keyword) {
  for (int i = 0; i < count_of(sections); ++i) {
    if (is_of_deck(sections[i])) names.push_back(fmt::format("{}, ELSET={}", keyword(i), sections[i].elset));
  }
}

// Shells and membranes have sections of one list.
std::vector<char> sections_of_membranes(const model& m) {
  std::vector<char> membrane(m.shell_sections.size(), 0);
  for (const element& e : m.elements) {
    if (is_membrane(e.type) && e.section >= 0) membrane[subscript(section_of_deck(m.shell_sections, e.section))] = 1;
  }
  return membrane;
}

section_list list_sections(const model& m) {
  section_list list;
  const std::vector<char> membrane = sections_of_membranes(m);
  add_sections(list.names, m.shell_sections,
               [&](int i) { return membrane[subscript(i)] != 0 ? "*MEMBRANE SECTION" : "*SHELL SECTION"; });
  list.frames = count_of(list.names);
  add_sections(list.names, m.frame_sections, [&](int i) { return m.frame_sections[i].keyword; });
  list.solids = count_of(list.names);
  add_sections(list.names, m.solid_sections, [](int) { return "*SOLID SECTION"; });
  list.points = count_of(list.names);
  add_sections(list.names, m.point_masses,
               [&](int i) { return m.point_masses[i].mass != 0 ? "*MASS" : "*ROTARY INERTIA"; });
  return list;
}

int section_in(const section_list& list, const model& m, const element& e) {
  if (e.section < 0) return -1;
  if (is_point(e.type)) return list.points + e.section;
  if (is_solid(e.type)) return list.solids + section_of_deck(m.solid_sections, e.section);
  if (is_plate(e.type)) return section_of_deck(m.shell_sections, e.section);
  return list.frames + section_of_deck(m.frame_sections, e.section);
}

// The material of the section of the deck, which a copy at a temperature does not have; -1: none.
int deck_material(const model& m, const element& e) {
  if (e.section < 0 || is_point(e.type)) return -1;
  const auto of = [&](const auto& sections) { return sections[section_of_deck(sections, e.section)].material; };
  if (is_solid(e.type)) return of(m.solid_sections);
  return is_plate(e.type) ? of(m.shell_sections) : of(m.frame_sections);
}

// Materials at a temperature follow those of the deck and have the names of theirs.
std::vector<std::string> material_names(const model& m) {
  std::vector<std::string> names;
  for (const material& each : m.materials) {
    if (std::find(names.begin(), names.end(), each.name) != names.end()) break;
    names.push_back(each.name);
  }
  return names;
}

double thickness_of(const model& m, const element& e) {
  return is_plate(e.type) && e.section >= 0 ? m.shell_sections[e.section].thickness : 0;
}

std::string safe(const std::string& name) {
  std::string text = name;
  for (char& c : text) {
    if (std::isalnum(static_cast<unsigned char>(c)) == 0 && c != '.' && c != '-' && c != '_') c = '_';
  }
  return text;
}

void write_sets(const vtu_data& data, const numbered<named_set>& sets, std::size_t items) {
  const std::vector<std::string> names = set_arrays(sets);
  std::vector<std::uint8_t> in_set;
  for (std::size_t k = 0; k < names.size(); ++k) {
    in_set.assign(items, 0);
    for (const int i : sets[k].members) in_set[subscript(i)] = 1;
    data_array(data, names[k].c_str(), "UInt8", items, SCALAR,
               [&](std::size_t i, int) { return static_cast<int>(in_set[i]); });
  }
}

void write_step(pugi::xml_node fields, const model& m, const vtu_about& about) {
  const step& s = *about.of;
  const auto number = static_cast<double>(number_of(m, s));
  field_numbers(fields, "TimeValue", "Float64", {about.time.value_or(number)});
  field_numbers(fields, "step_number", "Int32", {number});
  field_texts(fields, "step_name", {s.name});
  field_texts(fields, "step_kind", {kind_name(s)});
  if (about.load_factor) field_numbers(fields, "load_factor", "Float64", {*about.load_factor});
  if (about.mode > 0) field_numbers(fields, "mode", "Int32", {static_cast<double>(about.mode)});
  if (about.modes.empty()) return;
  field_numbers(fields, s.kind == step_kind::FREQUENCY ? "frequency" : "buckling_factor", "Float64", about.modes);
}

}  // namespace

std::vector<std::string> set_arrays(const std::vector<named_set>& sets) {
  std::vector<std::string> names;
  std::set<std::string> taken;
  for (const named_set& each : sets) {
    if (names.size() == MOST_SETS) break;
    const std::string first = "set_" + safe(each.name);
    std::string name = first;
    for (int k = 2; !taken.insert(name).second; ++k) name = fmt::format("{}_{}", first, k);
    names.push_back(name);
  }
  return names;
}

std::vector<std::string> left_out_sets(const model& m) {
  std::vector<std::string> names;
  for (const auto& [sets, kind] : {std::pair(&m.nsets, "*NSET"), std::pair(&m.elsets, "*ELSET")}) {
    for (std::size_t k = MOST_SETS; k < sets->size(); ++k) names.push_back(fmt::format("{} {}", kind, (*sets)[k].name));
  }
  return names;
}

std::string left_out_summary(const model& m) {
  const std::vector<std::string> names = left_out_sets(m);
  if (names.empty()) return "";
  return fmt::format("results for a viewer have arrays of {} sets of a kind at most, not of {}\n", MOST_SETS,
                     fmt::join(names, ", "));
}

void write_field_data(pugi::xml_node fields, const model& m, const vtu_about& about) {
  field_texts(fields, "program", {"finites-solve " FINITES_VERSION_TEXT});
  if (about.of != nullptr) write_step(fields, m, about);
  field_texts(fields, "material_names", material_names(m));
  field_texts(fields, "section_names", list_sections(m).names);
  field_texts(fields, "sets_left_out", left_out_sets(m));
}

void write_model_cells(const vtu_data& data, const model& m) {
  const std::size_t count = m.elements.size();
  data_array(data, "element_id", "Int32", count, SCALAR, [&](std::size_t e, int) { return m.elements[e].id; });
  if (std::any_of(m.elements.begin(), m.elements.end(), [](const element& e) { return e.parts > 1; })) {
    data_array(data, "element_part", "Int8", count, SCALAR,
               [&](std::size_t e, int) { return m.elements[e].parts > 1 ? m.elements[e].part + 1 : 0; });
  }
  const section_list sections = list_sections(m);
  data_array(data, "section", type_of_numbers(sections.names.size()), count, SCALAR,
             [&](std::size_t e, int) { return section_in(sections, m, m.elements[e]); });
  data_array(data, "material", type_of_numbers(m.materials.size()), count, SCALAR,
             [&](std::size_t e, int) { return deck_material(m, m.elements[e]); });
  if (std::none_of(m.elements.begin(), m.elements.end(), [](const element& e) { return is_plate(e.type); })) return;
  reals(data, "thickness", count, SCALAR, [&](std::size_t e, int) { return thickness_of(m, m.elements[e]); });
}

void write_element_sets(const vtu_data& data, const model& m) { write_sets(data, m.elsets, m.elements.size()); }
void write_node_sets(const vtu_data& data, const model& m, std::size_t points) { write_sets(data, m.nsets, points); }

}  // namespace solver
