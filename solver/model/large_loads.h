// large_loads.h: the load of a step that causes an answer beyond the range of a double.
#ifndef FINITES_SOLVER_LARGE_LOADS_H
#define FINITES_SOLVER_LARGE_LOADS_H

#include <string>

#include "model/model.h"

namespace solver {

// Throws model_error with the place of the largest load, temperature or prescribed displacement of the step, when it is
// so large that its square cannot be held. `what`, which is not finite, begins the sentence.
void report_large_load(const model& m, const step& s, const std::string& what);

}  // namespace solver

#endif
