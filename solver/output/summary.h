// summary.h: what the program prints: the model, the equilibrium, single values, the time that it took.
#ifndef FINITES_SOLVER_SUMMARY_H
#define FINITES_SOLVER_SUMMARY_H

#include <array>
#include <string>
#include <vector>

#include "analyses/modal_analysis.h"
#include "analyses/results.h"
#include "analyses/static_analysis.h"
#include "model/model.h"
#include "system/stopwatch.h"

namespace solver {

// A value to be printed beside a published one.
struct reference_value {
  int node = 0;       // the user's number
  int direction = 0;  // 0 to 5
  double value = 0;
  std::string source;
};

// Forces and moments about the origin: of the loads, and of the reactions.
struct equilibrium {
  std::array<double, DIRECTIONS> applied{}, reaction{};
};

equilibrium sum_forces(const model& m, const static_solution& solution);

std::string model_summary(const model& m, const static_solution& solution, const std::string& solver_name);
// The largest displacement and rotation, at a node or within a member whose field is given. Cables, which hang away
// from the chord on which the deck puts them, have their sag instead.
std::string displacement_summary(const model& m, const static_solution& solution,
                                 const std::vector<member_field>& fields = {});
std::string equilibrium_summary(const model& m, const static_solution& solution);
// The largest section forces of members, at their ends and between them; empty when there are no members.
std::string member_summary(const model& m, const step_results& results);
std::string modes_summary(const step& s, const modal_solution& solution);
std::string remarks_summary(const std::vector<std::string>& remarks);
// "warning: deck.inp:12: ...", a line per note: those of a deck hold their places, those of a step stand at its *STEP.
std::string deck_warnings(const std::vector<std::string>& notes);
std::string step_warnings(const model& m, const step& s, const std::vector<std::string>& notes);
std::string time_summary(const stopwatch& watch);

// Displacements of nodes, given by index.
std::string node_table(const model& m, const static_solution& solution, const std::vector<int>& nodes);

// "computed ..., published ..., ratio ...", for the node with this index.
std::string reference_line(const static_solution& solution, int node, const reference_value& reference);

}  // namespace solver

#endif
