// read_frames.cpp: what the sections of frame elements share, and *SOLID SECTION, *CABLE SECTION, *SPRING, *LINK
// SECTION.
#include <algorithm>
#include <cmath>

#include "deck/fields.h"
#include "deck/frame_sections.h"
#include "deck/keywords.h"

namespace solver::deck {

static bool is_bar(element_type type) { return type == element_type::T3D2; }
static bool is_link(element_type type) { return type == element_type::CONN3D2; }
static bool is_spring(element_type type) {
  return type == element_type::SPRING1 || type == element_type::SPRING2 || type == element_type::SPRINGA;
}

static bool (*carriers_of(frame_section_kind kind))(element_type) {
  switch (kind) {
    case frame_section_kind::BEAM: return is_beam;
    case frame_section_kind::TRUSS:
    case frame_section_kind::CABLE: return is_bar;
    case frame_section_kind::LINK: return is_link;
    default: return is_spring;
  }
}

// Of plane stress there are membranes too, which are told apart below.
static bool has_solid_section(element_type type) { return is_bar(type) || is_solid(type) || is_membrane(type); }

frame_section start_section(build& b, const card& c, frame_section_kind kind) {
  check_carriers(b, c, carriers_of(kind));
  frame_section s;
  s.kind = kind;
  s.keyword = c.keyword;
  s.elset = upper(c.value("ELSET"));
  if (c.find("MATERIAL") != nullptr) s.material = material_of_parameter(b, c);
  if (s.material >= 0) refuse_anisotropy(b, c, "members");
  s.line = c.line;
  s.file = c.file;
  return s;
}

void assign_section(build& b, const card& c, const frame_section& s) {
  model& m = b.result;
  for (const int index : b.elements.members(set_of_parameter(b, c, b.elements, "ELSET"))) {
    element& e = m.elements[index];
    const std::string name = "element " + std::to_string(e.id);
    if (e.section >= 0) {
      const frame_section& first = frame_section_of(m, e);
      b.deck.fail(c, name + " has a section already, of " + b.other_place(c, first.file, first.line));
    }
    e.section = count_of(m.frame_sections);
  }
  m.frame_sections.push_back(s);
}

void read_n1(const build& b, const card& c, std::size_t line, std::size_t end, frame_section& s) {
  if (line + 1 < end) {
    b.deck.fail(c, b.deck.begin_of(c)[line + 1], "a data line too many: the constants stand in the *MATERIAL");
  }
  if (line >= end) return;
  const data_fields row(b, c, b.deck.begin_of(c)[line]);
  row.expect(3, 3, "x, y, z of the direction n1");
  s.n1 = {row.real(0, "x of n1"), row.real(1, "y of n1"), row.real(2, "z of n1")};
  const double largest = std::max({std::abs(s.n1[0]), std::abs(s.n1[1]), std::abs(s.n1[2])});
  if (!(largest > 0)) row.fail("the direction n1 is zero");
  for (double& part : s.n1) part /= largest;
  s.has_n1 = true;
}

void read_solid_section(build& b, const card& c) {
  check_carriers(b, c, has_solid_section);
  const bool accepts = c.find("ACCEPT") != nullptr;
  if (takes_solid_section(b, c)) {
    if (accepts) b.note(c, "ACCEPT has no effect: tetrahedra have the stiffness and the mass of their volume");
    return;
  }
  if (accepts) b.deck.fail(c, "ACCEPT belongs to a section of solids");
  if (takes_plane_section(b, c)) return;
  frame_section s = start_section(b, c, frame_section_kind::TRUSS);
  if (c.count == 0) b.deck.fail(c, "no data line follows");
  const data_fields row = only_line(b, c, "it takes one");
  row.expect(1, 1, "area");
  s.area = row.positive(0, "area");
  if (c.find("PRETENSION") != nullptr) s.pretension = real_parameter(b, c, "PRETENSION");
  assign_section(b, c, s);
}

void read_cable_section(build& b, const card& c) {
  frame_section s = start_section(b, c, frame_section_kind::CABLE);
  const data_fields row = only_line(b, c, "it takes one");
  row.expect(1, 2, "area, unstressed length");
  s.area = row.positive(0, "area");
  const bool by_ratio = c.find("LENGTHRATIO") != nullptr;
  if (by_ratio && row.has(1)) row.fail("the unstressed length and LENGTH RATIO: one of them is enough");
  s.length_ratio = by_ratio ? real_parameter(b, c, "LENGTH RATIO") : 1;
  if (!(s.length_ratio > 0)) b.deck.fail(c, "LENGTH RATIO: " + in_quotes(c.value("LENGTHRATIO")) + " is not positive");
  if (row.has(1)) s.unstressed_length = row.positive(1, "unstressed length");
  assign_section(b, c, s);
}

// The direction of SPRING1, or the two equal directions of SPRING2.
static std::size_t spring_direction(const build& b, const card& c, element_type type) {
  const data_fields row(b, c, *b.deck.begin_of(c));
  const int directions = type == element_type::SPRING1 ? 1 : 2;
  row.expect(directions, directions, directions == 1 ? "degree of freedom" : "degree of freedom at each node",
             directions);
  const int dof = row.integer(0, "degree of freedom");
  if (dof < 1 || dof > 6) row.fail("the degree of freedom " + std::to_string(dof) + " is not one of 1 to 6");
  if (directions == 2 && row.integer(1, "degree of freedom") != dof) {
    row.fail("two different degrees of freedom are not supported: the spring acts in one direction");
  }
  return subscript(dof - 1);
}

void read_spring(build& b, const card& c) {
  frame_section s = start_section(b, c, frame_section_kind::SPRING);
  const std::vector<int>& members = b.elements.members(set_of_parameter(b, c, b.elements, "ELSET"));
  const element_type type = b.result.elements[members.front()].type;
  for (const int index : members) {
    const element& e = b.result.elements[index];
    if (e.type != type) b.deck.fail(c, "the set holds springs of several types; each takes a *SPRING of its own");
  }
  const std::size_t lines = type == element_type::SPRINGA ? 1 : 2;
  if (c.count != lines) {
    b.deck.fail(c, lines == 1 ? "one data line belongs here: stiffness"
                              : "two data lines belong here: degrees of freedom, then stiffness");
  }
  const std::size_t direction = lines == 1 ? 0 : spring_direction(b, c, type);
  const data_fields row(b, c, b.deck.begin_of(c)[lines - 1]);
  row.expect(1, 1, "stiffness");
  s.stiffness[direction] = row.positive(0, "stiffness");
  assign_section(b, c, s);
}

void read_link_section(build& b, const card& c) {
  frame_section s = start_section(b, c, frame_section_kind::LINK);
  const std::string form = squeezed(c.value("FORM"));
  if (!form.empty() && form != "NODES" && form != "MIDDLE") {
    b.deck.fail(c, "FORM=" + c.value("FORM") + " is not supported; NODES and MIDDLE are");
  }
  s.deforms_at_mid_length = form == "MIDDLE";
  const data_fields row(b, c, *b.deck.begin_of(c));
  row.expect(6, 6, "kx, ky, kz, kxx, kyy, kzz");
  for (int i = 0; i < 6; ++i) {
    const double k = row.real(i, "stiffness");
    if (k < 0) row.fail("stiffness: " + in_quotes(row.text(i)) + " is negative");
    s.stiffness[subscript(i)] = k;
  }
  read_n1(b, c, 1, c.count, s);
  assign_section(b, c, s);
}

}  // namespace solver::deck
