// wanted_values.h: what the user named by number or set, as indices into the model.
#ifndef FINITES_SOLVER_WANTED_VALUES_H
#define FINITES_SOLVER_WANTED_VALUES_H

#include <vector>

#include "model/model.h"
#include "options.h"

namespace solver {

struct wanted_values {
  std::vector<int> nodes;
  std::vector<int> reference_nodes;  // one per reference
};

// A node or a set that the model does not have is a usage_error.
wanted_values find_wanted(const model& m, const options& wanted);

}  // namespace solver

#endif
