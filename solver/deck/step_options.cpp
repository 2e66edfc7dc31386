// step_options.cpp: the options of *STEP, *STATIC, *FREQUENCY and *BUCKLE.
#include "deck/fields.h"
#include "deck/keywords.h"

namespace solver::deck {

void check_nlgeom(const build& b, const card& c) {
  const parameter* p = c.find("NLGEOM");
  if (p == nullptr || squeezed(p->value) == "NO") return;
  if (p->has_value && squeezed(p->value) != "YES") b.deck.fail(c, "NLGEOM is YES or NO, not " + in_quotes(p->value));
  b.deck.fail(
      c,
      "NLGEOM is not supported: a step is linear, its displacements are small. Write PDELTA in its place for the "
      "effect of the axial and membrane forces in the displaced position, or NLGEOM=NO");
}

void check_increments(build& b, const card& c) {
  if (c.find("INC") == nullptr) return;
  int increments = 0;
  if (parse_integer(c.value("INC"), increments) != number_fault::NONE || increments < 1) {
    b.deck.fail(c, "INC: " + in_quotes(c.value("INC")) + " is not a number from 1");
  }
  b.note(c, "INC has no effect: a linear step is solved at once");
}

void read_static_line(build& b, const card& c) {
  if (c.count == 0) return;
  const data_fields row = only_line(b, c, "*STATIC takes one");
  row.expect(0, 4, "first increment, length of the step, smallest and largest increment");
  for (int i = 0; i < row.count(); ++i) {
    if (row.has(i) && row.real(i, "time") < 0) row.fail("time: " + in_quotes(row.text(i)) + " is negative");
  }
  if (row.count() == 0) return;
  const bool timed = !b.amplitude_tables.empty();
  b.note(c, timed ? "the times serve the amplitudes alone: a linear step is solved at once, for its end"
                  : "the times have no effect: a linear step is solved at once");
}

// number, lowest, highest frequency, and what steers the search of other programs: shift point, block size, steps.
void read_frequency_line(build& b, const card& c, step& s) {
  const std::string shape = squeezed(c.value("NORMALIZATION"));
  if (!shape.empty() && shape != "DISPLACEMENT" && shape != "MASS") {
    b.deck.fail(c, "NORMALIZATION is DISPLACEMENT or MASS, not " + in_quotes(c.value("NORMALIZATION")));
  }
  if (shape == "MASS") b.note(c, "NORMALIZATION has no effect: the largest displacement of a shape is 1");
  const std::string solver = squeezed(c.value("EIGENSOLVER"));
  if (!solver.empty() && solver != "LANCZOS" && solver != "SUBSPACE" && solver != "AMS") {
    b.deck.fail(c, "EIGENSOLVER is LANCZOS, SUBSPACE or AMS, not " + in_quotes(c.value("EIGENSOLVER")));
  }
  if (!solver.empty()) b.note(c, "EIGENSOLVER has no effect: frequencies are found by this solver's own method");
  const data_fields row = only_line(b, c, "it takes one");
  row.expect(1, 7, "number of frequencies, lowest, highest frequency", 1);
  s.modes = row.number(0, "number of frequencies");
  // Subspace iteration of other programs has the highest frequency in the second place, and no lowest one.
  const bool subspace = solver == "SUBSPACE";
  const int lowest = subspace ? -1 : 1, highest = subspace ? 1 : 2;
  if (lowest > 0 && row.has(lowest)) s.lowest_frequency = row.real(lowest, "lowest frequency");
  if (row.has(highest) && row.real(highest, "highest frequency") > 0) {
    s.highest_frequency = row.real(highest, "highest frequency");
  }
  if (!(s.lowest_frequency < s.highest_frequency)) row.fail("the highest frequency does not lie above the lowest");
  bool more = false;
  for (int i = highest + 1; i < row.count(); ++i) more = more || (row.has(i) && row.real(i, "option") != 0);
  if (more) b.note(c, "the fields after the highest frequency have no effect: they steer the search of other programs");
}

void read_buckle_line(build& b, const card& c, step& s) {
  const data_fields row = only_line(b, c, "it takes one");
  row.expect(1, 5, "number of buckling factors", 1);
  s.modes = row.number(0, "number of buckling factors");
  bool more = false;
  for (int i = 1; i < row.count(); ++i) more = more || row.has(i);
  for (int i = 1; i < row.count(); ++i) {
    if (row.has(i)) row.real(i, "option");
  }
  if (more) {
    b.note(c, "the fields after the number have no effect: the factors are found to the accuracy of the arithmetic");
  }
}

}  // namespace solver::deck
