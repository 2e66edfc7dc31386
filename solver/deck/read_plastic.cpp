// read_plastic.cpp: *PLASTIC, the yield stress of a material, and *ELASTOPLASTIC, the step in which plates yield.
#include <string>

#include "deck/fields.h"
#include "deck/keywords.h"

namespace solver::deck {

// A yield stress may name its temperature, the same in all lines.
static double temperature_of(const data_fields& row) {
  if (row.count() < 3) return 0;
  row.refuse_decimal_comma(2, 2);
  row.expect(1, 3, "yield stress, plastic strain, temperature");
  return row.has(2) ? row.real(2, "temperature") : 0;
}

static void check_one_temperature(const build& b, const card& c) {
  const double first = temperature_of(data_fields(b, c, *b.deck.begin_of(c)));
  for (const data_line* line = b.deck.begin_of(c); line != b.deck.end_of(c); ++line) {
    const data_fields row(b, c, *line);
    if (temperature_of(row) == first) continue;
    row.fail("a yield stress that depends on temperature is not supported: give the lines of one temperature");
  }
}

// One line is perfect plasticity, two give a straight line of hardening.
void read_plastic(build& b, const card& c) {
  material& m = b.result.materials.back();
  if (m.yield_stress > 0) b.deck.fail(c, "the material has a *PLASTIC already");
  const data_line* line = b.deck.begin_of(c);
  const char* const form = "yield stress, plastic strain";
  const data_fields first(b, c, line[0]);
  check_one_temperature(b, c);
  first.expect(1, 3, form);
  m.yield_stress = first.positive(0, "yield stress");
  if (first.has(1) && first.real(1, "plastic strain") != 0) first.fail("the plastic strain of the first line is 0");
  if (c.count == 1) return;
  if (c.count > 2) b.deck.fail(c, line[2], "a third line: hardening is linear, two lines give it");
  const data_fields second(b, c, line[1]);
  second.expect(2, 3, form);
  const double stress = second.positive(0, "yield stress"), strain = second.positive(1, "plastic strain");
  if (stress < m.yield_stress) second.fail("a yield stress that falls (softening) is not supported");
  m.plastic_modulus = (stress - m.yield_stress) / strain;
}

void read_elastoplastic(build& b, const card& c) {
  step& s = b.result.steps.back();
  s.kind = step_kind::ELASTOPLASTIC;
  elastoplastic_request& wanted = s.elastoplastic;
  wanted.goes_on = c.find("CONTINUE") != nullptr;
  read_curve_freedom(b, c, wanted.node, wanted.dof);
  if (s.p_delta) b.deck.fail(c, "PDELTA belongs to a step with *STATIC or *PUSHOVER");
  if (c.count == 0) return;
  const data_fields row = only_line(b, c, "*ELASTOPLASTIC takes one");
  row.expect(1, 3, "largest load factor, largest number of increments, largest increment");
  if (row.has(0)) wanted.largest_factor = row.positive(0, "largest load factor");
  if (row.has(1)) wanted.largest_increments = row.number(1, "largest number of increments");
  wanted.own_increment = row.has(2);
  if (wanted.own_increment) wanted.increment = row.positive(2, "largest increment");
}

static bool yields(const model& m, const shell_section& section) {
  return m.materials[section.material].yield_stress > 0;
}

static void check_yielding_sections(const build& b) {
  const model& m = b.result;
  bool any = false;
  for (const element& e : m.elements) {
    if (!is_plate(e.type)) continue;
    const shell_section& section = m.shell_sections[e.section];
    if (!yields(m, section)) continue;
    any = true;
    if (is_membrane(e.type)) {
      b.deck.fail(section.file, section.line, "*MEMBRANE SECTION",
                  "membranes do not yield: give element " + std::to_string(e.id) + " a material without *PLASTIC");
    }
  }
  if (!any) {
    const step& s = m.steps.front();
    b.deck.fail(s.file, s.line, "*STEP", "a step with *ELASTOPLASTIC needs shells of a material with *PLASTIC");
  }
}

static void check_elastoplastic(const build& b, const step& s, const step* before) {
  const model& m = b.result;
  check_yielding_sections(b);
  for (const auto* const list : {&m.boundaries, &s.boundaries}) {
    for (const boundary_condition& condition : *list) {
      if (condition.value != 0) {
        b.deck.fail(condition.file, condition.line, "*BOUNDARY",
                    "a prescribed displacement other than 0 in a step with *ELASTOPLASTIC");
      }
    }
  }
  if (!s.temperatures.empty()) {
    b.deck.fail(s.temperatures.front().file, s.temperatures.front().line, "*TEMPERATURE",
                "temperatures are not supported in a step with *ELASTOPLASTIC");
  }
  for (const frame_section& section : m.frame_sections) {
    if (section.pretension != 0) {
      b.deck.fail(section.file, section.line, "*SOLID SECTION", "PRETENSION is not supported with *ELASTOPLASTIC");
    }
  }
  if (s.nodal_loads.empty() && s.element_loads.empty()) {
    b.deck.fail(s.file, s.line, "*STEP", "the step with *ELASTOPLASTIC has no loads");
  }
  if (!s.elastoplastic.goes_on) return;
  if (before == nullptr || before->kind != step_kind::ELASTOPLASTIC) {
    b.deck.fail(s.file, s.line, "*STEP", "CONTINUE needs a step with *ELASTOPLASTIC right before");
  }
  if (!s.boundaries.empty() || !before->boundaries.empty()) {
    b.deck.fail(s.file, s.line, "*STEP", "CONTINUE goes on with the same structure: no *BOUNDARY in either step");
  }
  if (s.elastoplastic.largest_factor > 1e300) {
    b.deck.fail(s.file, s.line, "*STEP", "CONTINUE with *ELASTOPLASTIC needs a largest load factor");
  }
}

void check_elastoplastics(const build& b) {
  const step* before = nullptr;
  for (const step& s : b.result.steps) {
    if (s.kind == step_kind::ELASTOPLASTIC) check_elastoplastic(b, s, before);
    before = &s;
  }
}

// An orthotropic material has no yield condition; a line of hardening needs a modulus.
void check_plastic_materials(const build& b) {
  for (const material& m : b.result.materials) {
    if (!(m.yield_stress > 0)) continue;
    if (m.orthotropic || m.alpha1 != m.alpha2) {
      b.deck.fail(m.file, m.line, "*MATERIAL",
                  "the material " + in_quotes(m.name) + " has *PLASTIC: it must be isotropic");
    }
  }
}

}  // namespace solver::deck
