// read_loads.cpp: *BOUNDARY, *CLOAD, *DLOAD.
#include <algorithm>
#include <cmath>

#include "deck/fields.h"
#include "deck/keywords.h"
#include "deck/surface_loads.h"
#include "deck/transforms.h"
#include "elements/parts.h"
#include "elements/solid_faces.h"
#include "finites/fields.h"

namespace solver::deck {

// Steps are independent: what OP=NEW removes is never there, and what OP=MOD keeps can only be the head's conditions,
// in a step with PERTURBATION also those of the step that it stands on.
void check_op(build& b, const card& c) {
  if (c.find("OP") == nullptr) return;
  const std::string op = squeezed(c.value("OP"));
  if (op != "NEW" && op != "MOD") b.deck.fail(c, "OP=" + c.value("OP") + " is not supported; NEW and MOD are");
  if (!b.inside_step) b.deck.fail(c, "OP belongs inside a *STEP");
  if (op == "NEW" && c.keyword == "*BOUNDARY") open_own_conditions(b, c);
  if (op == "MOD" && c.keyword == "*BOUNDARY" && b.result.steps.back().perturbation) return;
  if (op == "MOD" && b.result.steps.size() > 1) {
    b.deck.fail(c, "OP=MOD is not supported after the first step: nothing carries over from step to step");
  }
}

static int freedom(const data_fields& row, int i) {
  const int dof = row.integer(i, "degree of freedom");
  if (dof < 1 || dof > 6) row.fail("the degree of freedom " + std::to_string(dof) + " is not one of 1 to 6");
  return dof;
}

namespace {

// A named support: the ranges of degrees of freedom that it holds.
struct support {
  const char* word;
  int ranges[3][2];  // 0, 0: none
};

}  // namespace

// Symmetry about a plane: no displacement along its normal, no rotation about the lines in it.
// clang-format off
static constexpr support SUPPORTS[] = {
    {"ENCASTRE", {{1, 6}, {0, 0}, {0, 0}}},
    {"PINNED",   {{1, 3}, {0, 0}, {0, 0}}},
    {"XSYMM",    {{1, 1}, {5, 6}, {0, 0}}},
    {"YSYMM",    {{2, 2}, {4, 4}, {6, 6}}},
    {"ZSYMM",    {{3, 5}, {0, 0}, {0, 0}}},
};
// clang-format on

static const support* support_of(const data_fields& row) {
  if (!row.has(1) || looks_like_number(row.text(1))) return nullptr;
  const std::string word = squeezed(row.text(1));
  const auto* const found =
      std::find_if(std::begin(SUPPORTS), std::end(SUPPORTS), [&](const support& s) { return word == s.word; });
  if (found == std::end(SUPPORTS)) {
    row.fail(in_quotes(row.text(1)) +
             " is neither a degree of freedom nor one of ENCASTRE, PINNED, XSYMM, YSYMM, ZSYMM");
  }
  return found;
}

static void prescribe(build& b, const data_fields& row, int first, int last, double value) {
  model& m = b.result;
  std::vector<boundary_condition>& list = b.inside_step ? m.steps.back().boundaries : m.boundaries;
  for (const int index : members_of(b, b.nodes, row, 0)) {
    boundary_condition condition;
    condition.node = index;
    condition.first_dof = first;
    condition.last_dof = last;
    condition.value = value;
    condition.line = row.line().line;
    condition.file = row.line().file;
    if (is_turned(b, index)) {
      prescribe_turned(b, condition);
    } else {
      list.push_back(condition);
    }
  }
}

static void read_boundary_line(build& b, const data_fields& row) {
  row.expect(2, 4, "node or set, first and last degree of freedom, value; or node or set, word", 3);
  if (const support* word = support_of(row)) {
    row.expect(2, 2, "node or set, word", 2);
    for (const auto& range : word->ranges) {
      if (range[0] > 0) prescribe(b, row, range[0], range[1], 0);
    }
    return;
  }
  const int first = freedom(row, 1);
  const int last = row.has(2) ? freedom(row, 2) : first;
  if (last < first) row.fail("the last degree of freedom is smaller than the first");
  prescribe(b, row, first, last, row.has(3) ? row.real(3, "value") : 0);
}

void read_boundary(build& b, const card& c) {
  check_op(b, c);
  check_boundary_options(b, c);
  const std::size_t before = b.inside_step ? b.result.steps.back().boundaries.size() : 0;
  b.each_line(c, [&](data_fields& row) { read_boundary_line(b, row); });
  if (squeezed(c.value("LOADCASE")) == "2") keep_second_case(b, c, before);
}

void read_cload(build& b, const card& c) {
  check_op(b, c);
  b.each_line(c, [&](data_fields& row) {
    row.expect(3, 3, "node or set, degree of freedom, value", 2);
    nodal_load load;
    load.dof = freedom(row, 1);
    load.value = row.real(2, "value");
    load.line = row.line().line;
    load.file = row.line().file;
    for (const int index : members_of(b, b.nodes, row, 0)) {
      if (!b.node_in_use[index]) {
        if (!b.errors.empty()) throw consequence{};  // its element may be in error
        row.fail("node " + std::to_string(b.result.nodes[index].id) +
                 " belongs to no element: nothing can carry the load");
      }
      load.node = index;
      for (const nodal_load& part : turned_load(b, load)) b.result.steps.back().nodal_loads.push_back(part);
    }
  });
}

// The direction is scaled by its largest part first: the squares of what a deck may hold need not be finite.
std::array<double, 3> unit_direction(const data_fields& row, int i, const std::string& of) {
  std::array<double, 3> d = {row.real(i, "x of the direction"), row.real(i + 1, "y of the direction"),
                             row.real(i + 2, "z of the direction")};
  const double largest = std::max({std::abs(d[0]), std::abs(d[1]), std::abs(d[2])});
  if (!(largest > 0)) row.fail("the direction of " + of + " is zero");
  for (double& part : d) part /= largest;
  const double length = std::sqrt(d[0] * d[0] + d[1] * d[1] + d[2] * d[2]);
  for (double& part : d) part /= length;
  return d;
}

void check_density(const build& b, const data_fields& row, const element& e, const std::string& label) {
  if (is_point(e.type)) return;  // what has no mass has no weight
  const int index = material_of(b.result, e);
  if (index < 0) row.fail(label + " on element " + std::to_string(e.id) + ": springs and links have no mass");
  const material& m = b.result.materials[index];
  if (m.density > 0) return;
  if (!b.errors.empty()) throw consequence{};  // its *DENSITY may be in error
  row.fail(label + " needs a *DENSITY: the material " + in_quotes(m.name) + " of element " + std::to_string(e.id) +
           " has none");
}

// P belongs to plates, P1 to P6 to the faces of solids, loads per length to beams, trusses and cables.
static void check_carrier(const model& m, const data_fields& row, const element& e, element_load_kind kind) {
  const std::string name = in_quotes(row.text(1)) + " on element " + std::to_string(e.id);
  if (kind == element_load_kind::PRESSURE && is_solid(e.type)) {
    row.fail(name + ": a pressure on a solid names the face, P1 to P" + std::to_string(face_count_of(e)));
  }
  if (kind == element_load_kind::PRESSURE && !is_plate(e.type)) row.fail(name + ": a pressure acts on plates");
  if (kind == element_load_kind::BODY && material_of(m, e) < 0) {
    row.fail(name + ": a force per volume acts on what has a volume, not on springs and links");
  }
  const bool along_member = kind == element_load_kind::LINE_GLOBAL || kind == element_load_kind::LINE_LOCAL;
  if (along_member && !is_beam(e.type) && e.type != element_type::T3D2) {
    row.fail(name + ": a load per length acts on beams, trusses and cables");
  }
  if (kind == element_load_kind::LINE_LOCAL && !is_beam(e.type)) row.fail(name + ": only beams have the axes 1 and 2");
}

// P1 to P6 on a solid: the face.
static void check_face(const data_fields& row, const element& e, int face) {
  const std::string name = in_quotes(row.text(1)) + " on element " + std::to_string(e.id);
  if (!is_solid(e.type)) row.fail(name + ": only solids have faces; P1 and P2 on beams are forces per length");
  if (face > face_count_of(e)) {
    row.fail(name + ": the element has the faces P1 to P" + std::to_string(face_count_of(e)));
  }
}

static constexpr char DLOAD_FORM[] =
    "element or set, P, pressure; or element or set, GRAV, acceleration, x, y, z; or element or set, BX, BY or BZ, "
    "force per volume; or element or set, PX, PY, PZ, P1 or P2, force per length; or solid or set, P1 to P6, pressure";

static element_load distributed_load_of(const data_fields& row) {
  if (row.count() < 3) row.expect(3, 6, DLOAD_FORM);  // the type of the load says how many they are
  const std::string label = squeezed(row.text(1));
  element_load load;
  load.line = row.line().line;
  load.file = row.line().file;
  const auto per_length = [&](element_load_kind kind, std::size_t direction) {
    row.expect(3, 3, "element or set, PX, PY, PZ, P1 or P2, force per length", 2);
    load.kind = kind;
    load.magnitude = row.real(2, "force per length");
    load.direction[direction] = 1;
  };
  if (label == "P") {
    row.expect(3, 3, "element or set, P, pressure", 2);
    load.magnitude = row.real(2, "pressure");
  } else if (label == "GRAV") {
    row.expect(6, 6, "element or set, GRAV, acceleration, x, y, z", 2);
    load.kind = element_load_kind::GRAVITY;
    load.magnitude = row.real(2, "acceleration");
    load.direction = unit_direction(row, 3, "GRAV");
  } else if (label == "BX" || label == "BY" || label == "BZ") {
    row.expect(3, 3, "element or set, BX, BY or BZ, force per volume", 2);
    load.kind = element_load_kind::BODY;
    load.magnitude = row.real(2, "force per volume");
    load.direction[subscript(label[1] - 'X')] = 1;
  } else if (label == "PX" || label == "PY" || label == "PZ") {
    per_length(element_load_kind::LINE_GLOBAL, subscript(label[1] - 'X'));
  } else if (label.size() == 2 && label[0] == 'P' && label[1] >= '1' && label[1] <= '6') {
    row.expect(3, 3, "beam or set, P1 or P2, force per length; or solid or set, P1 to P6, pressure", 2);
    load.kind = element_load_kind::FACE;
    load.face = label[1] - '0';
    load.magnitude = row.real(2, "pressure or force per length");
  } else {
    row.fail("the load type " + in_quotes(row.text(1)) + " is not supported; " + DLOAD_TYPES);
  }
  return load;
}

// On anything but a solid P1 and P2 are forces per length along the axes of a beam.
static void choose_face_or_axis(const data_fields& row, const element& e, element_load& load) {
  if (load.face == 0) return;
  const bool along_axis = !is_solid(e.type) && load.face <= 2;
  load.kind = along_axis ? element_load_kind::LINE_LOCAL : element_load_kind::FACE;
  load.direction = {};
  if (along_axis) {
    load.direction[subscript(load.face)] = 1;
  } else {
    check_face(row, e, load.face);
  }
}

// What GRAV without an element or set acts on, as other programs have it.
static std::vector<int> elements_with_weight(const model& m) {
  std::vector<int> all;
  for (int i = 0; i < count_of(m.elements); ++i) {
    const element& e = m.elements[i];
    if (e.section >= 0 && (is_point(e.type) || material_of(m, e) >= 0)) all.push_back(i);
  }
  return all;
}

void read_dload(build& b, const card& c) {
  check_op(b, c);
  check_follower(b, c);
  b.each_line(c, [&](data_fields& row) {
    if (takes_surface_load(b, row)) return;
    element_load load = distributed_load_of(row);
    const bool everywhere = load.kind == element_load_kind::GRAVITY && !row.has(0);
    for (const int index : everywhere ? elements_with_weight(b.result) : members_of(b, b.elements, row, 0)) {
      const element& e = b.result.elements[index];
      if (e.section < 0) continue;  // reported with the sections
      choose_face_or_axis(row, e, load);
      check_carrier(b.result, row, e, load.kind);
      if (load.kind == element_load_kind::GRAVITY) check_density(b, row, e, "GRAV");
      load.element = index;
      element_load on_part = load;
      on_part.face = load.kind == element_load_kind::FACE ? side_of_part(e, load.face) : 0;
      if (load.kind == element_load_kind::FACE && on_part.face == 0) continue;  // another part has the face
      b.result.steps.back().element_loads.push_back(on_part);
    }
  });
}

}  // namespace solver::deck
