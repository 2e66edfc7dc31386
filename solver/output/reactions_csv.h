// reactions_csv.h: the reactions of a step, node by node, by sets, and their sum beside that of the loads, as a table.
#ifndef FINITES_SOLVER_REACTIONS_CSV_H
#define FINITES_SOLVER_REACTIONS_CSV_H

#include <ostream>

#include "analyses/static_analysis.h"
#include "model/model.h"

namespace solver {

// A line of names, then a line each:
//   node   a node that is held, with its place: what the support exerts on it
//   set    a node set with held nodes (analyses/reaction_sums.h), and how many of them there are
//   total  "reactions" and "loads": the sums of the step
// Moments of nodes are about the node, those of sets and sums about the origin.
void write_reactions_csv(std::ostream& out, const model& m, const static_solution& solution);

}  // namespace solver

#endif
