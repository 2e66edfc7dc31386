// conditions_csv.h: the forces of linear conditions of a step as a table.
#ifndef FINITES_SOLVER_CONDITIONS_CSV_H
#define FINITES_SOLVER_CONDITIONS_CSV_H

#include <ostream>

#include "analyses/static_analysis.h"
#include "model/model.h"

namespace solver {

// A line of names, then a line each:
//   node   a node that a card joins to others, with its place: what the conditions of the card exert on it
//   card   the sum of a card (analyses/condition_forces.h): 0 where its conditions hold in rigid motions
//   arms   in second order: what the turning of rigid arms adds at a node whose rotations turn them
//   total  "conditions", "reactions" and "loads": the sums of the step
// Moments of nodes are about the node, those of cards and sums about the origin.
void write_conditions_csv(std::ostream& out, const model& m, const static_solution& solution);

}  // namespace solver

#endif
