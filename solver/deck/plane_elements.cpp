// plane_elements.cpp: elements of a plane z = constant (CPS3, CPS4, T2D2, B21): their section, and their nodes, which
// do not leave the plane.
#include <algorithm>
#include <cmath>

#include "deck/fields.h"
#include "deck/keywords.h"

namespace solver::deck {

static bool is_plane_stress(const build& b, int index) {
  return b.planar.count(index) > 0 && is_membrane(b.result.elements[index].type);
}

static void assign_plane(build& b, const card& c, const std::vector<int>& members) {
  model& m = b.result;
  for (const int index : members) {
    element& e = m.elements[index];
    if (e.section >= 0) {
      const shell_section& first = m.shell_sections[e.section];
      b.deck.fail(c, "element " + std::to_string(e.id) + " has a section already, of " +
                         b.other_place(c, first.file, first.line));
    }
    e.section = count_of(m.shell_sections);
  }
}

// The data line of plane stress is the thickness, 1 where it is left out.
bool takes_plane_section(build& b, const card& c) {
  const std::vector<int>& members = b.elements.members(set_of_parameter(b, c, b.elements, "ELSET"));
  const auto plane =
      std::count_if(members.begin(), members.end(), [&](int index) { return is_plane_stress(b, index); });
  if (plane == 0) return false;
  if (plane != signed_index(members.size())) {
    b.deck.fail(c, "the set holds elements of plane stress and others; each takes a section of its own");
  }
  if (c.find("PRETENSION") != nullptr) b.deck.fail(c, "PRETENSION belongs to a section of trusses");
  shell_section s;
  s.elset = upper(c.value("ELSET"));
  s.material = material_of_parameter(b, c);
  s.orientation = orientation_of_parameter(b, c);
  s.thickness = 1;
  s.line = c.line;
  s.file = c.file;
  if (c.count > 0) {
    const data_fields row = only_line(b, c, "it takes one");
    row.expect(0, 1, "thickness");
    if (row.has(0)) s.thickness = row.positive(0, "thickness");
  }
  if (c.count == 0) b.note(c, "no data line gives the thickness of plane stress: it is 1");
  assign_plane(b, c, members);
  b.result.shell_sections.push_back(s);
  return true;
}

static void check_plane(const build& b) {
  const model& m = b.result;
  const element* first = nullptr;
  for (int i = 0; i < count_of(m.elements); ++i) {
    if (b.planar.count(i) == 0) continue;
    const element& e = m.elements[i];
    if (first == nullptr) first = &e;
    const double z = m.nodes[first->nodes.front()].xyz[2];
    double size = std::abs(z);
    for (const int n : e.nodes) {
      size = std::max({size, std::abs(m.nodes[n].xyz[0]), std::abs(m.nodes[n].xyz[1])});
    }
    for (const int n : e.nodes) {
      if (std::abs(m.nodes[n].xyz[2] - z) <= 1e-9 * size) continue;
      b.deck.fail(e.file, e.line, "*ELEMENT",
                  "element " + std::to_string(e.id) + " belongs to a plane z = constant, and " + node_name(m, n) +
                      " has another z than element " + std::to_string(first->id) +
                      ": membranes (M3D3, M3D4), trusses (T3D2) and beams (B31) lie anywhere");
    }
  }
}

// Plane members take the rotation about z, elements of plane stress none. A node that joins an element of space keeps
// the freedoms that this element resists.
void hold_plane_nodes(build& b) {
  if (b.planar.empty()) return;
  check_plane(b);
  model& m = b.result;
  numbered<char> joins_plane(m.nodes.size(), 0), joins_space(m.nodes.size(), 0);
  const element* first = nullptr;
  for (int i = 0; i < count_of(m.elements); ++i) {
    const bool plane = b.planar.count(i) > 0;
    if (plane && first == nullptr) first = &m.elements[i];
    for (const int n : m.elements[i].nodes) (plane ? joins_plane : joins_space)[n] = 1;
  }
  int shared = -1;
  for (int n = 0; n < count_of(m.nodes); ++n) {
    if (joins_plane[n] == 0) continue;
    if (joins_space[n] != 0) {
      if (shared < 0) shared = n;
      continue;
    }
    boundary_condition held;
    held.node = n;
    held.first_dof = 3;
    held.last_dof = 5;
    held.line = first->line;
    held.file = first->file;
    m.boundaries.push_back(held);
  }
  if (shared >= 0) {
    m.notes.push_back(place_of(m, first->file, first->line) + ": *ELEMENT: node " + std::to_string(m.nodes[shared].id) +
                      " joins elements of the plane and others: it is not held in the plane, nor are others like it");
  }
}

}  // namespace solver::deck
