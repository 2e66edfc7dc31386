// read_temperatures.cpp: *INITIAL CONDITIONS and *TEMPERATURE.
#include <algorithm>

#include "deck/fields.h"
#include "deck/keywords.h"
#include "model/base_step.h"

namespace solver::deck {

// Strains count from these temperatures. Of two values of a node the later one holds, so that a part may be changed
// after the whole.
void read_initial_conditions(build& b, const card& c) {
  if (squeezed(c.value("TYPE")) != "TEMPERATURE") {
    b.deck.fail(c, "TYPE=" + c.value("TYPE") +
                       " is not supported, TEMPERATURE is: steps begin without displacements, velocities and stresses; "
                       "a state under load is that of a *STATIC step, on which one with PERTURBATION stands");
  }
  numbered<double>& initial = b.result.initial_temperature;
  initial.resize(b.result.nodes.size(), 0);
  b.each_line(c, [&](data_fields& row) {
    row.expect(2, 3, "node or set, temperature", 1);
    const double value = row.real(1, "temperature");
    if (row.has(2) && row.real(2, "gradient") != 0) {
      row.fail("an initial gradient is not supported: gradients of *TEMPERATURE count from none");
    }
    for (const int index : members_of(b, b.nodes, row, 0)) initial[index] = value;
  });
}

// What a step with PERTURBATION gives is added to the temperature of the state on which it stands.
static bool gives_increments(const model& m, const step& s) {
  return s.perturbation && last_state_before(m, s) != nullptr;
}

void read_temperature(build& b, const card& c) {
  check_op(b, c);
  const std::vector<material>& all = b.result.materials;
  if (std::none_of(all.begin(), all.end(), [](const material& m) { return m.expansion || !m.elastic_table.empty(); })) {
    b.note(c, "no material has an *EXPANSION; the temperatures have no effect");
  }
  step& s = b.result.steps.back();
  const numbered<double>& initial = b.result.initial_temperature;
  const bool from_initial = !initial.empty() && !gives_increments(b.result, s);
  if (!initial.empty() && !from_initial) {
    b.note(c, "the step has PERTURBATION: the values are added to the temperatures of the state on which it stands");
  }
  b.each_line(c, [&](data_fields& row) {
    row.expect(2, 3, "node or set, temperature, gradient through the thickness", 1);
    nodal_temperature temperature;
    const double value = row.real(1, "temperature");
    if (row.has(2)) temperature.gradient = row.real(2, "gradient");
    temperature.line = row.line().line;
    temperature.file = row.line().file;
    for (const int index : members_of(b, b.nodes, row, 0)) {
      temperature.node = index;
      temperature.change = from_initial ? value - initial[index] : value;
      s.temperatures.push_back(temperature);
    }
  });
}

}  // namespace solver::deck
