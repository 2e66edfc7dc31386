// surface_loads.cpp: *DSLOAD, and the lines of *DLOAD that load faces, sides and edges; CENTRIF.
#include "deck/surface_loads.h"

#include <algorithm>

#include "deck/fields.h"
#include "deck/keywords.h"
#include "deck/surfaces.h"
#include "elements/element_faces.h"
#include "elements/surface_forces.h"

namespace solver::deck {

namespace {

enum class load_values { MAGNITUDE, LEVELS, DIRECTION, AXIS };

// A type of load; *DLOAD writes the number of a face or edge behind it.
struct load_type {
  const char* word;
  element_load_kind kind;
  load_values fields;
};

constexpr load_type SURFACE_LOADS[] = {
    {"P", element_load_kind::FACE, load_values::MAGNITUDE},
    {"HP", element_load_kind::HYDROSTATIC, load_values::LEVELS},
    {"TRVEC", element_load_kind::TRACTION, load_values::DIRECTION},
    {"TRSHR", element_load_kind::SHEAR_TRACTION, load_values::DIRECTION},
    {"EDLD", element_load_kind::TRACTION, load_values::DIRECTION},
    {"EDNOR", element_load_kind::EDGE_NORMAL, load_values::MAGNITUDE},
    {"EDSHR", element_load_kind::EDGE_SHEAR, load_values::MAGNITUDE},
    {"EDTRA", element_load_kind::EDGE_TRANSVERSE, load_values::MAGNITUDE},
    {"EDMOM", element_load_kind::EDGE_MOMENT, load_values::MAGNITUDE},
    {"CENTRIF", element_load_kind::CENTRIFUGAL, load_values::AXIS},
};

const load_type* find_type(const std::string& word) {
  const auto* const found = std::find_if(std::begin(SURFACE_LOADS), std::end(SURFACE_LOADS),
                                         [&](const load_type& t) { return word == t.word; });
  return found == std::end(SURFACE_LOADS) ? nullptr : found;
}

bool is_edge_type(const load_type& t) { return t.word[0] == 'E'; }

std::string quoted_label(const data_fields& row) { return in_quotes(row.text(1)); }

std::string type_on_element(const data_fields& row, const element& e) {
  return quoted_label(row) + " on element " + std::to_string(e.id);
}

// The values behind the type; `what` is loaded: "surface", "element or set".
element_load read_load_values(const data_fields& row, const load_type& type, const std::string& what) {
  const std::string form = what + ", " + std::string(row.text(1)) + ", ";
  element_load load;
  load.kind = type.kind;
  load.line = row.line().line;
  load.file = row.line().file;
  switch (type.fields) {
    case load_values::MAGNITUDE: row.expect(3, 3, (form + "magnitude").c_str(), 2); break;
    case load_values::LEVELS: {
      row.expect(5, 5, (form + "pressure, z where it is zero, z where it is given").c_str(), 2);
      load.origin = {row.real(3, "z of no pressure"), row.real(4, "z of the pressure"), 0};
      if (load.origin[0] == load.origin[1]) row.fail("the pressure is zero and given at the same z");
      break;
    }
    case load_values::DIRECTION:
      row.expect(6, 6, (form + "magnitude, x, y, z").c_str(), 2);
      load.direction = unit_direction(row, 3, std::string(row.text(1)));
      break;
    case load_values::AXIS:
      row.expect(9, 9, (form + "squared angular velocity, x, y, z of a point of the axis, x, y, z along it").c_str(),
                 2);
      for (int i = 0; i < 3; ++i) load.origin[subscript(i)] = row.real(3 + i, "point of the axis");
      load.direction = unit_direction(row, 6, std::string(row.text(1)));
  }
  load.magnitude = row.real(2, "magnitude");
  return load;
}

// A pressure: on sides it is the plate's own load, along its normal; on the edge of a membrane it acts on its area.
void settle_pressure(const model& m, const data_fields& row, const element& e, element_load& load) {
  if (is_solid(e.type)) return;
  if (is_edge(load.face)) {
    if (is_shell(e.type)) row.fail(type_on_element(row, e) + ": edges of shells take EDNOR, a force per length");
    load.kind = element_load_kind::EDGE_NORMAL;
    load.magnitude *= m.shell_sections[e.section].thickness;
    return;
  }
  load.kind = element_load_kind::PRESSURE;
  if (load.face == POSITIVE_SIDE) load.magnitude = -load.magnitude;
  load.face = 0;
}

void check_loaded_face(const model& m, const data_fields& row, const element& e, const load_type& type,
                       const element_load& load) {
  if (is_edge_type(type) != is_edge(load.face) && type.word != std::string("P")) {
    row.fail(type_on_element(row, e) + (is_edge_type(type) ? ": it is a load on edges, and this is a face"
                                                           : ": it is a load on faces, and this is an edge"));
  }
  if (load.face == BOTH_SIDES && type.kind != element_load_kind::TRACTION) {
    row.fail(type_on_element(row, e) + ": the surface names no side: SPOS or SNEG");
  }
  if (type.kind == element_load_kind::EDGE_MOMENT && is_membrane(e.type)) {
    row.fail(type_on_element(row, e) + ": membranes have no rotations");
  }
  if (type.kind == element_load_kind::SHEAR_TRACTION && !has_projection(m, e, load.face, load.direction)) {
    row.fail(type_on_element(row, e) + ": the direction is normal to the face");
  }
}

void add_on_face(build& b, const data_fields& row, const load_type& type, element_load load, int index) {
  model& m = b.result;
  const element& e = m.elements[index];
  if (e.section < 0) return;  // reported with the sections
  load.element = index;
  check_loaded_face(m, row, e, type, load);
  if (type.kind == element_load_kind::FACE) settle_pressure(m, row, e, load);
  m.steps.back().element_loads.push_back(load);
}

void add_on_surface(build& b, const data_fields& row, const load_type& type, const char* keyword) {
  const int index = surface_of_field(b, row, 0);
  element_load load = read_load_values(row, type, "surface");
  load.keyword = keyword;
  const named_surface& s = b.result.surfaces[index];
  if (s.faces.empty()) row.fail("the surface " + in_quotes(row.text(0)) + " has nodes and no faces: it takes a *CLOAD");
  for (const surface_face& f : s.faces) {
    load.face = f.face;
    add_on_face(b, row, type, load, f.element);
  }
}

// The number behind the word of a *DLOAD: a face of a solid, an edge of a plate; none: the side along the normal.
int face_of_number(const data_fields& row, const element& e, const load_type& type, int number) {
  const std::string name = type_on_element(row, e);
  if (!is_plate(e.type) && !is_solid(e.type)) row.fail(name + ": members have neither faces nor edges");
  const int face = is_solid(e.type) ? number : number > 0 ? EDGE + number : NEGATIVE_SIDE;
  const bool edge = is_edge_type(type) || (type.kind == element_load_kind::FACE && is_plate(e.type));
  if (is_solid(e.type) && is_edge_type(type)) row.fail(name + ": edges belong to shells and membranes");
  if (edge && number == 0) row.fail(name + ": the type needs the number of the edge, as in " + type.word + "1");
  if (is_solid(e.type) && number == 0) {
    row.fail(name + ": the type needs the number of the face, as in " + type.word + "1");
  }
  if (is_plate(e.type) && !edge && number > 0) row.fail(name + ": a plate has one such load, " + type.word);
  if (!has_face(e, face)) {
    row.fail(name + ": the element has the " + (edge ? "edges" : "faces") + " 1 to " + std::to_string(face_count(e)));
  }
  return face;
}

void add_centrifugal(build& b, const data_fields& row, const load_type& type) {
  element_load load = read_load_values(row, type, "element or set");
  if (load.magnitude < 0) row.fail("CENTRIF takes the square of the angular velocity, which is not negative");
  for (const int index : members_of(b, b.elements, row, 0)) {
    const element& e = b.result.elements[index];
    if (e.section < 0) continue;
    check_density(b, row, e, "CENTRIF");
    if (is_beam(e.type) && is_placed(frame_section_of(b.result, e).place)) {
      row.fail(type_on_element(row, e) +
               ": its section lies off the line of its nodes or its principal axes are turned; " +
               "put the nodes into the centroid and give the section by its constants");
    }
    if (is_cable(b.result, e)) row.fail(type_on_element(row, e) + ": a cable hangs under a uniform load");
    load.element = index;
    b.result.steps.back().element_loads.push_back(load);
  }
}

// P1 to P4 on membranes alone are pressures on edges; elsewhere they are faces of solids or axes of beams.
bool is_on_membranes(build& b, const data_fields& row) {
  const std::vector<int>& members = members_of(b, b.elements, row, 0);
  return !members.empty() && std::all_of(members.begin(), members.end(),
                                         [&](int index) { return is_membrane(b.result.elements[index].type); });
}

}  // namespace

bool takes_surface_load(build& b, const data_fields& row) {
  if (row.count() < 3) return false;
  std::string word = squeezed(row.text(1));
  const bool is_name = set_in_field(b.elements, row.text(0)) < 0;
  if (is_name && find_surface(b, row.text(0)) >= 0 && find_type(word) != nullptr) {
    add_on_surface(b, row, *find_type(word), "*DLOAD");
    return true;
  }
  int number = 0;
  if (word.size() > 1 && word.back() >= '1' && word.back() <= '6') {
    number = word.back() - '0';
    word.pop_back();
  }
  const load_type* const type = find_type(word);
  if (type == nullptr) return false;
  if (type->kind == element_load_kind::FACE && (number == 0 || !is_on_membranes(b, row))) return false;
  if (type->kind == element_load_kind::CENTRIFUGAL) {
    if (number == 0) add_centrifugal(b, row, *type);
    return number == 0;
  }
  element_load load = read_load_values(row, *type, "element or set");
  for (const int index : members_of(b, b.elements, row, 0)) {
    const element& e = b.result.elements[index];
    load.face = face_of_part(e, face_of_number(row, e, *type, number));
    if (load.face != 0) add_on_face(b, row, *type, load, index);
  }
  return true;
}

void check_follower(const build& b, const card& c) {
  const std::string word = squeezed(c.value("FOLLOWER"));
  if (word.empty() || word == "NO") return;
  if (word != "YES") b.deck.fail(c, "FOLLOWER is YES or NO, not " + in_quotes(c.value("FOLLOWER")));
  b.deck.fail(c, "FOLLOWER=YES is not supported: loads keep their direction and size; leave it out, or write NO");
}

void read_dsload(build& b, const card& c) {
  check_op(b, c);
  check_follower(b, c);
  b.each_line(c, [&](data_fields& row) {
    if (row.count() < 3) row.expect(3, 6, "surface, type of the load, magnitude, ...");
    const load_type* const type = find_type(squeezed(row.text(1)));
    if (type == nullptr || type->kind == element_load_kind::CENTRIFUGAL) {
      row.fail("the load type " + quoted_label(row) +
               " is not supported on a surface; P, HP, TRVEC and TRSHR are, and on edges EDNOR, EDSHR, EDTRA, EDMOM "
               "and EDLD");
    }
    add_on_surface(b, row, *type, "*DSLOAD");
  });
}

}  // namespace solver::deck
