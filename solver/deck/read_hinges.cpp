// read_hinges.cpp: *PLASTIC HINGE, the yield surfaces at the ends of beams, and *PUSHOVER, the step that follows them
// to collapse.
#include <algorithm>
#include <string>

#include "deck/fields.h"
#include "deck/keywords.h"
#include "finites/fields.h"

namespace solver::deck {

namespace {

// Which forces interact, in the words of the deck: N axial, M1 about axis 1 (local y), M2 about axis 2 (local z).
constexpr const char* FORCE_SETS[] = {"N", "M1", "M2", "N-M1", "N-M2", "M1-M2", "N-M1-M2"};  // sets 1 to 7
constexpr int ALL_FORCES = 7, LAST_SINGLE = 3, AXIAL_ALONE = 1;

}  // namespace

static yield_curve curve_of(const build& b, const card& c) {
  const std::string word = squeezed(c.value("CURVE"));
  if (word == "SINGLE") return yield_curve::SINGLE;
  if (word == "ORBISON") return yield_curve::ORBISON;
  if (word == "LINEAR") return yield_curve::LINEAR;
  b.deck.fail(c, "CURVE=" + c.value("CURVE") + " is not supported; SINGLE, ORBISON and LINEAR are");
}

static int force_set_of(const build& b, const card& c, yield_curve curve) {
  int set = ALL_FORCES;
  if (c.find("FORCES") != nullptr) {
    const std::string word = squeezed(c.value("FORCES"));
    const auto* const found =
        std::find_if(std::begin(FORCE_SETS), std::end(FORCE_SETS), [&](const char* name) { return word == name; });
    if (found == std::end(FORCE_SETS)) {
      b.deck.fail(c, "FORCES=" + c.value("FORCES") + " is not supported; N, M1, M2, N-M1, N-M2, M1-M2 and N-M1-M2 are");
    }
    set = number_of(found - std::begin(FORCE_SETS)) + 1;
  }
  if (curve == yield_curve::SINGLE && set > LAST_SINGLE) {
    b.deck.fail(c, "CURVE=SINGLE takes one force: FORCES is N, M1 or M2");
  }
  if (curve != yield_curve::SINGLE && set == AXIAL_ALONE) {
    b.deck.fail(c, "FORCES=N belongs to CURVE=SINGLE: this curve has no flow under an axial force alone");
  }
  return set;
}

void read_plastic_hinge(build& b, const card& c) {
  hinge_model h;
  h.curve = curve_of(b, c);
  h.force_set = force_set_of(b, c, h.curve);
  h.line = c.line;
  h.file = c.file;
  const data_fields row = only_line(b, c, "it takes one");
  row.expect(3, 3, "plastic axial force, plastic moment about axis 1, plastic moment about axis 2");
  h.cap_p = row.positive(0, "plastic axial force");
  h.cap_my = row.positive(1, "plastic moment about axis 1");
  h.cap_mz = row.positive(2, "plastic moment about axis 2");

  model& m = b.result;
  for (const int index : b.elements.members(set_of_parameter(b, c, b.elements, "ELSET"))) {
    element& e = m.elements[index];
    const std::string name = "element " + std::to_string(e.id);
    if (!is_beam(e.type)) b.deck.fail(c, name + " is not a beam (B31, B33)");
    if (e.parts > 1) {
      b.deck.fail(c, name + " is read as two beams: give it as two B31, so that every hinge has an element and an end");
    }
    if (e.hinges >= 0) {
      const hinge_model& first = m.hinges[e.hinges];
      b.deck.fail(c, name + " has hinges already, of " + b.other_place(c, first.file, first.line));
    }
    e.hinges = count_of(m.hinges);
  }
  m.hinges.push_back(h);
}

static int integer_parameter(const build& b, const card& c, const char* name) {
  const std::string text = c.value(name);
  int value = 0;
  const number_fault fault = parse_integer(text, value);
  if (fault != number_fault::NONE) b.deck.fail(c, std::string(name) + ": " + describe(fault, text, true));
  return value;
}

void read_curve_freedom(const build& b, const card& c, int& node, int& dof) {
  if (c.find("NODE") == nullptr && c.find("DOF") == nullptr) return;
  if (c.find("NODE") == nullptr || c.find("DOF") == nullptr) {
    b.deck.fail(c, "NODE and DOF belong together: they choose the displacement of the curve");
  }
  const int id = integer_parameter(b, c, "NODE");
  node = b.nodes.index_of(id);
  if (node < 0 && b.nodes.lost(id)) throw consequence{};
  if (node < 0) b.deck.fail(c, "node " + std::to_string(id) + " is not defined");
  dof = integer_parameter(b, c, "DOF");
  if (dof < 1 || dof > 6) b.deck.fail(c, "the degree of freedom " + std::to_string(dof) + " is not one of 1 to 6");
}

void read_pushover(build& b, const card& c) {
  step& s = b.result.steps.back();
  s.kind = step_kind::PUSHOVER;
  s.pushover.goes_on = c.find("CONTINUE") != nullptr;
  read_curve_freedom(b, c, s.pushover.node, s.pushover.dof);
  if (c.count == 0) return;
  const data_fields row = only_line(b, c, "*PUSHOVER takes one");
  row.expect(1, 2, "largest load factor, largest number of events");
  if (row.has(0)) s.pushover.largest_factor = row.positive(0, "largest load factor");
  if (row.has(1)) s.pushover.largest_events = row.number(1, "largest number of events");
}

// What carries a load before the first hinge can form, or grows by other laws than the loads, has no place in a step
// whose loads all grow with one factor.
static void check_pushover(const build& b, const step& s, const step* before) {
  const model& m = b.result;
  if (m.hinges.empty()) b.deck.fail(s.file, s.line, "*STEP", "a step with *PUSHOVER needs members with *PLASTIC HINGE");
  for (const auto* const list : {&m.boundaries, &s.boundaries}) {
    for (const boundary_condition& condition : *list) {
      if (condition.value != 0) {
        b.deck.fail(condition.file, condition.line, "*BOUNDARY",
                    "a prescribed displacement other than 0 in a pushover");
      }
    }
  }
  for (const frame_section& section : m.frame_sections) {
    if (section.pretension != 0) {
      b.deck.fail(section.file, section.line, "*SOLID SECTION", "PRETENSION is not supported in a pushover");
    }
  }
  const bool loaded = !s.nodal_loads.empty() || !s.element_loads.empty() || !s.temperatures.empty();
  if (!loaded) b.deck.fail(s.file, s.line, "*STEP", "the step with *PUSHOVER has no loads");
  if (!s.pushover.goes_on) return;
  if (before == nullptr || before->kind != step_kind::PUSHOVER) {
    b.deck.fail(s.file, s.line, "*STEP", "CONTINUE needs a step with *PUSHOVER right before");
  }
  if (!s.boundaries.empty() || !before->boundaries.empty() || s.p_delta != before->p_delta) {
    b.deck.fail(s.file, s.line, "*STEP",
                "CONTINUE goes on with the same structure: no *BOUNDARY in either step, PDELTA in both or none");
  }
}

void check_pushovers(const build& b) {
  const step* before = nullptr;
  for (const step& s : b.result.steps) {
    if (s.kind == step_kind::PUSHOVER) check_pushover(b, s, before);
    before = &s;
  }
}

}  // namespace solver::deck
