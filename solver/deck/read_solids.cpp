// read_solids.cpp: *SOLID SECTION of solids, and what solids are refused and their user is reminded of.
#include <algorithm>

#include "deck/fields.h"
#include "deck/keywords.h"
#include "model/shared_notes.h"

namespace solver::deck {

static int solid_material(const build& b, const card& c) {
  const int index = material_of_parameter(b, c);
  const material& m = b.result.materials[index];
  refuse_anisotropy(b, c, "solids");
  if (m.NU12 >= 0.5) {
    b.deck.fail(c, "Poisson's ratio of the material " + in_quotes(c.value("MATERIAL")) +
                       " is 0.5: a solid that keeps its volume has no finite stiffness");
  }
  if (m.alpha1 != m.alpha2 || m.alpha1 != m.alpha3) {
    b.deck.fail(c, "the material " + in_quotes(c.value("MATERIAL")) +
                       " expands differently in its three directions; solids take one coefficient of expansion");
  }
  return index;
}

static void assign_solids(build& b, const card& c, const std::vector<int>& members) {
  model& m = b.result;
  for (const int index : members) {
    element& e = m.elements[index];
    if (e.section >= 0) {
      const solid_section& first = m.solid_sections[e.section];
      b.deck.fail(c, "element " + std::to_string(e.id) + " has a section already, of " +
                         b.other_place(c, first.file, first.line));
    }
    e.section = count_of(m.solid_sections);
  }
}

// The data line of other programs: nothing, or a thickness of 1, which a solid does not have.
static void check_empty_line(build& b, const card& c) {
  if (c.count == 0) return;
  const data_fields row = only_line(b, c, "no number belongs to a section of solids");
  row.expect(0, 1, "nothing: a section of solids has no numbers");
  if (!row.has(0)) return;
  row.real(0, "number");
  b.note(c, "the number below a section of solids has no effect");
}

bool takes_solid_section(build& b, const card& c) {
  const std::vector<int>& members = b.elements.members(set_of_parameter(b, c, b.elements, "ELSET"));
  const auto solids =
      std::count_if(members.begin(), members.end(), [&](int index) { return is_solid(b.result.elements[index].type); });
  if (solids == 0) return false;
  if (solids != signed_index(members.size())) {
    b.deck.fail(c, "the set holds solids and other elements; each takes a section of its own");
  }
  if (c.find("PRETENSION") != nullptr) b.deck.fail(c, "PRETENSION belongs to a section of trusses");
  check_empty_line(b, c);
  solid_section s;
  s.elset = upper(c.value("ELSET"));
  s.material = solid_material(b, c);
  s.line = c.line;
  s.file = c.file;
  assign_solids(b, c, members);
  b.result.solid_sections.push_back(s);
  return true;
}

// The library has no hinges and no yielding in solids.
void check_solids(const build& b, const step& s) {
  const model& m = b.result;
  if (m.solid_sections.empty()) return;
  if (s.kind == step_kind::PUSHOVER || s.kind == step_kind::ELASTOPLASTIC) {
    b.deck.fail(s.file, s.line, "*STEP", "solids are supported in steps with *STATIC, *FREQUENCY and *BUCKLE");
  }
}

// A corner that points inwards invalidates the stresses there and nothing else, as long as the integration points are
// sound.
void note_solids(build& b) {
  const model& m = b.result;
  const element* first = nullptr;
  int count = 0, corner = -1;
  for (const element& e : m.elements) {
    const int node = is_solid(e.type) ? folded_node(m, e) : -1;
    if (node < 0) continue;
    if (first == nullptr) {
      first = &e;
      corner = node;
    }
    ++count;
  }
  if (first == nullptr) return;
  b.result.notes.push_back(place_of(m, first->file, first->line) +
                           ": *ELEMENT: " + (count == 1 ? "1 solid is" : std::to_string(count) + " solids are") + " " +
                           FOLDED_CORNERS + ", element " + std::to_string(first->id) + " at " + node_name(m, corner) +
                           " the first: stresses at such corners are not reliable");
}

}  // namespace solver::deck
