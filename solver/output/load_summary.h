// load_summary.h: the resultants of the loads of a step as a table of plain text.
#ifndef FINITES_SOLVER_LOAD_SUMMARY_H
#define FINITES_SOLVER_LOAD_SUMMARY_H

#include <string>
#include <vector>

#include "analyses/load_sums.h"

namespace solver {

// Nothing for a single one, which is the sum of the step.
std::string load_summary(const std::vector<load_sum>& sums);

}  // namespace solver

#endif
