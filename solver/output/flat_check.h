// flat_check.h: whether two models are the same to the elements and to the loads.
#ifndef FINITES_SOLVER_FLAT_CHECK_H
#define FINITES_SOLVER_FLAT_CHECK_H

#include <string>

#include "model/model.h"

namespace solver {

// Asks the elements of both for their stiffness and mass and both for the loads, prescribed values and conditions of
// every step. Empty where they agree to rounding, or what does not: "the stiffness of element 7".
std::string difference_between(const model& a, const model& b);

}  // namespace solver

#endif
