// case_names.h: how tables and summaries name the steps that govern an envelope.
#ifndef FINITES_SOLVER_CASE_NAMES_H
#define FINITES_SOLVER_CASE_NAMES_H

#include <string>

#include "model/model.h"

namespace solver {

// The name of a step, given by its index; of one without a name its number. -1: nothing.
std::string case_name(const model& m, int step);

// Likewise as a field of a table: in quotes where a comma or a quote stands in it.
std::string case_field(const model& m, int step);

}  // namespace solver

#endif
