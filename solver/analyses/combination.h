// combination.h: the sum of the answers of several linear static steps, each with its factor.
//
// All of them are answers of one stiffness with the same degrees of freedom held and the same conditions
// (deck/superposition.cpp sees to it): displacements, loads, reactions and the forces of conditions are sums. Stresses
// are made anew from them, since principal stresses and von Mises' are no sums.
#ifndef FINITES_SOLVER_COMBINATION_H
#define FINITES_SOLVER_COMBINATION_H

#include <vector>

#include "analyses/static_analysis.h"

namespace solver {

struct solution_term {
  const static_solution* solution = nullptr;
  double factor = 1;
};

// At least one term. Equations are those of the first, the residual is the largest.
static_solution combine(const std::vector<solution_term>& terms);

}  // namespace solver

#endif
