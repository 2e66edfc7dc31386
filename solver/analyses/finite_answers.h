// finite_answers.h: an answer that holds an infinite value or a NaN is an error, whatever its cause.
//
// Data of a deck are finite one by one; their sums, products and squares need not be. What overflows on the way shows
// in the answer at the latest.
#ifndef FINITES_SOLVER_FINITE_ANSWERS_H
#define FINITES_SOLVER_FINITE_ANSWERS_H

#include <vector>

#include "analyses/modal_analysis.h"
#include "analyses/results.h"
#include "analyses/static_analysis.h"

namespace solver {

bool all_finite(const std::vector<double>& values);

// Displacements, loads and reactions. Throws model_error with the place of the step, and names node and direction.
void require_finite(const model& m, const step& s, const static_solution& solution);

// Stresses and section forces of elements and at nodes, end forces of members.
void require_finite(const model& m, const step& s, const step_results& results);

void require_finite(const model& m, const step& s, const modal_solution& solution);

// "`what` is not finite: ...", for a single value.
void require_finite(const model& m, const step& s, double value, const char* what);

}  // namespace solver

#endif
