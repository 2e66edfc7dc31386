// read_laminates.cpp: *SHELL SECTION, COMPOSITE: the layers of a shell.
#include <cmath>

#include "deck/fields.h"
#include "deck/keywords.h"
#include "elements/laminate_stiffness.h"
#include "elements/material_axes.h"
#include "elements/plate_axes.h"
#include "model/vectors.h"

namespace solver::deck {

namespace {

// A line of the card, before the angle of an orientation is known.
struct layer_line {
  layer of;
  int orientation = -1;  // index into model::orientations; -1: an angle from axis 1 of the section
  const data_line* line = nullptr;
};

constexpr const char* FORM = "thickness, integration points, material, angle or orientation, name of the layer";

int layer_material(const build& b, const card& c, const data_fields& row) {
  const std::string name(row.text(2));
  const auto found = b.materials.find(upper(name));
  if (found == b.materials.end()) {
    if (b.lost_materials.count(upper(name)) + b.lost_materials.count(ANY_NAME) > 0) throw consequence{};
    row.fail("the material " + in_quotes(name) + " is not defined");
  }
  const material& m = b.result.materials[found->second];
  if (!m.elastic) b.deck.fail(m.file, m.line, "*MATERIAL", "the material has no *ELASTIC");
  if (m.yield_stress > 0) {
    b.deck.fail(c, row.line(), "the material " + in_quotes(name) + " has *PLASTIC: layers of a section do not yield");
  }
  if (!m.elastic_table.empty() || !m.density_table.empty() || !m.expansion_table.empty()) {
    row.fail("the constants of the material " + in_quotes(name) +
             " depend on temperature: layers take constants of one temperature");
  }
  return found->second;
}

int orientation_named(const build& b, const data_fields& row, std::string_view name) {
  const auto found = b.orientations.find(upper(name));
  if (found != b.orientations.end()) return found->second;
  if (b.lost_orientations.count(upper(name)) + b.lost_orientations.count(ANY_NAME) > 0) throw consequence{};
  row.fail("the orientation " + in_quotes(name) + " is not defined");
}

layer_line read_layer(const build& b, const card& c, const data_line& l, bool& has_points) {
  const data_fields row(b, c, l);
  row.expect(3, 5, FORM);
  layer_line result;
  result.line = &l;
  result.of.thickness = row.positive(0, "thickness");
  has_points = has_points || row.has(1);
  if (row.has(1)) row.number(1, "integration points");
  if (!row.has(2)) row.fail("a layer names its material in the third field");
  result.of.material = layer_material(b, c, row);
  if (!row.has(3)) return result;
  if (looks_like_number(row.text(3))) {
    result.of.angle = row.real(3, "angle");
  } else {
    result.orientation = orientation_named(b, row, row.text(3));
  }
  return result;
}

// The angle from axis 1 of the section to that of an orientation, degrees from 0 to 180: half a turn is none to a
// material.
double angle_between(const model& m, const element& e, const shell_section& s, int orientation) {
  const vector3 from = first_axis(m, e, s.orientation, s.orientation_angle);
  const vector3 to = first_axis(m, e, orientation, 0);
  const vector3 normal = row(plate_axes(m, e), 3);
  const double degrees = std::atan2(dot(cross(from, to), normal), dot(from, to)) * (180 / PI);
  const double within = std::fmod(degrees + 360, 180);
  constexpr double ROUNDING = 1e-9;
  for (const double whole : {0.0, 45.0, 90.0, 135.0}) {
    if (std::abs(within - whole) < ROUNDING) return whole;
  }
  return within > 180 - ROUNDING ? 0 : within;
}

// The angle must be the same in all elements of the section.
void settle_angle(build& b, const card& c, const shell_section& s, layer_line& l) {
  if (l.orientation < 0) return;
  constexpr double SAME = 1e-4;  // degrees
  const model& m = b.result;
  const std::vector<int>& members = b.elements.members(set_of_parameter(b, c, b.elements, "ELSET"));
  bool first = true;
  for (const int index : members) {
    const element& e = m.elements[index];
    if (!is_shell(e.type)) continue;  // reported with the set
    const double angle = angle_between(m, e, s, l.orientation);
    if (first) l.of.angle = angle;
    first = false;
    if (std::abs(std::remainder(angle - l.of.angle, 180.0)) < SAME) continue;
    b.deck.fail(c, *l.line,
                "the angle of this orientation to that of the section changes from element to element (element " +
                    std::to_string(e.id) + "): give the layer's angle, or the elements sections of their own");
  }
}

// One orientation for layers that name theirs: without one of the section the angles count from the first of them.
void settle_angles(build& b, const card& c, shell_section& s, std::vector<layer_line>& lines) {
  const bool own = s.orientation >= 0;
  for (const layer_line& l : lines) {
    if (!own && s.orientation < 0 && l.orientation >= 0) s.orientation = l.orientation;
  }
  if (!b.errors.empty()) throw consequence{};  // an element without an area has no axes
  for (layer_line& l : lines) settle_angle(b, c, s, l);
}

void note_masses(build& b, const card& c, const std::vector<layer>& layers, double density) {
  if (density == 0) return;
  for (const layer& l : layers) {
    const material& m = b.result.materials[l.material];
    if (m.density > 0) continue;
    b.note(c, "layers of the material " + in_quotes(m.name) + " have no mass: it has no *DENSITY");
    return;
  }
}

void check_stack(const build& b, const card& c) {
  const std::string stack = squeezed(c.value("STACKDIRECTION"));
  if (stack.empty() || stack == "3") return;
  b.deck.fail(c, "STACK DIRECTION=" + c.value("STACKDIRECTION") +
                     " is not supported: the layers of a shell lie one above the other along its normal, 3");
}

}  // namespace

void read_layers(build& b, const card& c, shell_section& s) {
  check_stack(b, c);
  bool has_points = false;
  std::vector<layer_line> lines;
  for (const data_line* l = b.deck.begin_of(c); l != b.deck.end_of(c); ++l) {
    lines.push_back(read_layer(b, c, *l, has_points));
  }
  settle_angles(b, c, s, lines);
  std::vector<layer> layers;
  layers.reserve(2 * lines.size());
  for (const layer_line& l : lines) layers.push_back(l.of);
  if (c.find("SYMMETRIC") != nullptr) {
    for (auto l = lines.rbegin(); l != lines.rend(); ++l) layers.push_back(l->of);
  }
  laminate_section made = make_laminate(layers, b.result.materials, s.formulation);
  if (!made.refusal.empty()) b.deck.fail(c, made.refusal);
  if (has_points) b.note(c, "the integration points of layers have no effect: each is integrated exactly");
  note_masses(b, c, layers, made.mean.density);

  model& m = b.result;
  made.mean.name = "layers of " + s.elset;
  made.mean.line = c.line;
  made.mean.file = c.file;
  made.section.first_part = count_of(m.laminate_parts);
  m.laminate_parts.insert(m.laminate_parts.end(), made.parts.begin(), made.parts.end());
  s.thickness = thickness_of(layers);
  s.material = count_of(m.materials);
  s.layup = count_of(m.laminates);
  m.materials.push_back(made.mean);
  m.laminates.push_back(made.section);
}

}  // namespace solver::deck
