// read_sections.cpp: *SHELL SECTION and *MEMBRANE SECTION.
#include "deck/fields.h"
#include "deck/keywords.h"
#include "finites/fields.h"

namespace solver::deck {

// In thicknesses, from the mid surface to the surface that holds the nodes, positive along the normal.
static double offset_of(const build& b, const card& c) {
  const std::string word = squeezed(c.value("OFFSET"));
  if (word.empty()) return 0;
  if (word == "SPOS") return 0.5;
  if (word == "SNEG") return -0.5;
  return real_parameter(b, c, "OFFSET");
}

int material_of_parameter(const build& b, const card& c) {
  const std::string name = c.value("MATERIAL");
  const auto found = b.materials.find(upper(name));
  if (found == b.materials.end() && b.lost_materials.count(upper(name)) + b.lost_materials.count(ANY_NAME) > 0) {
    throw consequence{};
  }
  if (found == b.materials.end()) b.deck.fail(c, "the material " + in_quotes(name) + " is not defined");
  return found->second;
}

void refuse_anisotropy(const build& b, const card& c, const char* what) {
  const material& m = b.result.materials[material_of_parameter(b, c)];
  if (!m.orthotropic || m.isotropic_in_space) return;
  b.deck.fail(c,
              "the material " + in_quotes(c.value("MATERIAL")) + " is not isotropic: " + what +
                  " take Young's modulus and Poisson's ratio (*ELASTIC without TYPE), or constants that are those of "
                  "an isotropic material");
}

const char* sections_that_fit(element_type type) {
  switch (type) {
    case element_type::S3: return "a shell (S3): it takes a *SHELL SECTION, with the thickness on its data line";
    case element_type::S4: return "a shell (S4): it takes a *SHELL SECTION, with the thickness on its data line";
    case element_type::M3D3:
      return "a membrane (M3D3): it takes a *MEMBRANE SECTION, with the thickness on its data line";
    case element_type::M3D4:
      return "a membrane (M3D4): it takes a *MEMBRANE SECTION, with the thickness on its data line";
    case element_type::B31: return "a beam (B31): it takes a *BEAM GENERAL SECTION or *BEAM SECTION";
    case element_type::B33: return "a beam (B33): it takes a *BEAM GENERAL SECTION or *BEAM SECTION";
    case element_type::T3D2:
      return "a bar (T3D2): it takes a *SOLID SECTION or *CABLE SECTION, with the area on its data line";
    case element_type::C3D4: return "a solid (C3D4): it takes a *SOLID SECTION";
    case element_type::C3D6: return "a solid (C3D6): it takes a *SOLID SECTION";
    case element_type::C3D8: return "a solid (C3D8): it takes a *SOLID SECTION";
    case element_type::MASS: return "a mass (MASS): it takes a *MASS";
    case element_type::ROTARYI: return "a rotary inertia (ROTARYI): it takes a *ROTARY INERTIA";
    case element_type::CONN3D2: return "a link (CONN3D2): it takes a *LINK SECTION";
    default: return "a spring: it takes a *SPRING";
  }
}

void check_carriers(build& b, const card& c, bool (*fits)(element_type)) {
  for (const int index : b.elements.members(set_of_parameter(b, c, b.elements, "ELSET"))) {
    const element& e = b.result.elements[index];
    if (fits(e.type)) continue;
    const bool plane = b.planar.count(index) > 0 && is_membrane(e.type);
    b.deck.fail(c, "element " + std::to_string(e.id) + " of " + b.other_place(c, e.file, e.line) + " is " +
                       (plane ? "one of plane stress: it takes a *SOLID SECTION" : sections_that_fit(e.type)));
  }
}

static void assign(build& b, const card& c, const std::vector<int>& members) {
  model& m = b.result;
  const int section = count_of(m.shell_sections);
  for (const int index : members) {
    element& e = m.elements[index];
    const std::string name = "element " + std::to_string(e.id);
    if (b.planar.count(index) > 0) b.deck.fail(c, name + " is one of plane stress: it takes a *SOLID SECTION");
    if (e.section >= 0) {
      const shell_section& first = m.shell_sections[e.section];
      b.deck.fail(c, name + " has a section already, of " + b.other_place(c, first.file, first.line));
    }
    e.section = section;
  }
}

static shell_formulation formulation_of(const build& b, const card& c) {
  const std::string word = squeezed(c.value("FORMULATION"));
  if (word == "THIN") return shell_formulation::THIN;
  if (!word.empty() && word != "THICK") {
    b.deck.fail(c, "FORMULATION is THIN or THICK, not " + in_quotes(c.value("FORMULATION")));
  }
  return shell_formulation::THICK;
}

// How firmly the rotation about the normal is tied to the sheet, by its shear modulus; 0: not at all.
static double drilling_of(const build& b, const card& c) {
  if (c.find("DRILLING") == nullptr) return shell_section{}.drilling;
  const double value = real_parameter(b, c, "DRILLING");
  if (value < 0) b.deck.fail(c, "DRILLING: " + in_quotes(c.value("DRILLING")) + " is negative");
  return value;
}

// What a plate of a material with *PLASTIC follows, and at how many points through the thickness.
static void read_yielding(const build& b, const card& c, shell_section& s) {
  const std::string word = squeezed(c.value("MODEL"));
  if (word == "LAYERED") {
    s.yielding = plate_model::LAYERED;
  } else if (!word.empty() && word != "SECTION") {
    b.deck.fail(c, "MODEL is SECTION or LAYERED, not " + in_quotes(c.value("MODEL")));
  }
  if (c.find("POINTS") == nullptr) return;
  if (s.yielding != plate_model::LAYERED) b.deck.fail(c, "POINTS belongs to MODEL=LAYERED");
  const number_fault fault = parse_integer(c.value("POINTS"), s.thickness_points);
  const bool known = s.thickness_points % 2 == 1 && s.thickness_points >= 3 && s.thickness_points <= 15;
  if (fault != number_fault::NONE || !known) {
    b.deck.fail(c, "POINTS: " + in_quotes(c.value("POINTS")) + " is not 3, 5, 7, 9, 11, 13 or 15");
  }
}

// The second field of the data line, as other programs have it: it counts where the section is LAYERED.
static void read_points(build& b, const card& c, const data_fields& row, shell_section& s) {
  const int points = row.number(1, "points through the thickness");
  if (s.yielding != plate_model::LAYERED) {
    return b.note(c, "the points through the thickness have no effect: the section is integrated exactly");
  }
  if (c.find("POINTS") != nullptr) row.fail("the points through the thickness are given by POINTS already");
  if (points % 2 != 1 || points < 3 || points > 15) {
    row.fail("points through the thickness: " + in_quotes(row.text(1)) + " is not 3, 5, 7, 9, 11, 13 or 15");
  }
  s.thickness_points = points;
}

static void read_thickness(build& b, const card& c, shell_section& s) {
  s.material = material_of_parameter(b, c);
  const data_fields row = only_line(b, c, "layers belong to a section with COMPOSITE");
  if (row.count() == 2 && (row.text(0) == "0" || row.text(1).substr(0, 1) == "0")) row.refuse_decimal_comma(1, 1);
  row.expect(1, 2, "thickness, points through it");
  s.thickness = row.positive(0, "thickness");
  if (row.has(1)) read_points(b, c, row, s);
}

static void check_layer_parameters(const build& b, const card& c) {
  const bool composite = c.find("COMPOSITE") != nullptr;
  for (const char* const name : {"SYMMETRIC", "LAYUP", "STACK DIRECTION"}) {
    if (!composite && c.find(squeezed(name)) != nullptr) b.deck.fail(c, std::string(name) + " belongs to COMPOSITE");
  }
  const bool material = c.find("MATERIAL") != nullptr;
  if (!composite && !material) b.deck.fail(c, "the parameter MATERIAL is missing");
  if (composite && material) b.deck.fail(c, "MATERIAL has no place beside COMPOSITE: each layer names its own");
  if (composite && c.find("MODEL") != nullptr) {
    b.deck.fail(c, "MODEL has no place beside COMPOSITE: layers are elastic");
  }
}

// Elements whose type says that they are thin have the section in another formulation.
static void assign_thin(build& b, shell_section s, const std::vector<int>& members) {
  s.formulation = shell_formulation::THIN;
  bool any = false;
  for (const int index : members) {
    if (b.thin.count(index) == 0) continue;
    b.result.elements[index].section = count_of(b.result.shell_sections);
    any = true;
  }
  if (any) b.result.shell_sections.push_back(s);
}

static void read_section(build& b, const card& c, bool (*fits)(element_type)) {
  const int set = set_of_parameter(b, c, b.elements, "ELSET");
  check_carriers(b, c, fits);
  check_layer_parameters(b, c);
  shell_section s;
  s.elset = upper(c.value("ELSET"));
  s.formulation = formulation_of(b, c);
  s.drilling = drilling_of(b, c);
  s.offset = offset_of(b, c);
  read_yielding(b, c, s);
  s.orientation = orientation_of_parameter(b, c);
  if (c.find("ORIENTATIONANGLE") != nullptr) s.orientation_angle = real_parameter(b, c, "ORIENTATION ANGLE");
  s.line = c.line;
  s.file = c.file;
  c.find("COMPOSITE") == nullptr ? read_thickness(b, c, s) : read_layers(b, c, s);
  assign(b, c, b.elements.members(set));
  b.result.shell_sections.push_back(s);
  if (!b.thin.empty()) assign_thin(b, s, b.elements.members(set));
}

void read_shell_section(build& b, const card& c) { read_section(b, c, is_shell); }
void read_membrane_section(build& b, const card& c) { read_section(b, c, is_membrane); }

}  // namespace solver::deck
