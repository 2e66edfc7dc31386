// mechanism.h: the motions that a structure resists least, and the words for those that it does not resist at all.
#ifndef FINITES_SOLVER_MECHANISM_H
#define FINITES_SOLVER_MECHANISM_H

#include <string>
#include <vector>

#include "elements/scatter_map.h"
#include "model/model.h"
#include "system/linear_solver.h"

namespace solver {

// Below this stiffness, in relation to the degrees of freedom' own, a motion counts as free. Rounding gives a free
// motion 1e-16 to 1e-15; the softest mode of a sound model of 100 elements a side is above 1e-10.
constexpr double FREE_STIFFNESS = 1e-14;

// The smallest Rayleigh quotient x^T K x / x^T x that two steps of inverse iteration find. K has a unit diagonal.
double smallest_stiffness(const symmetric_matrix& K, linear_solver& factorised);

// The same in its parts, for callers that solve for other right sides at the same time: the vector to start from,
// which each step solves with and brings back to length 1; and the quotient of the last one.
std::vector<double> start_of_iteration(std::size_t equations);
void normalise(std::vector<double>& x);
double stiffness_along(const symmetric_matrix& K, const std::vector<double>& x);

// What to say of a singular K: how many independent motions are free, and for each a node and direction that it moves,
// such that these degrees of freedom, once held, hold the structure. `scale` by equation takes K's unknowns to
// displacements. Empty when no motion is free.
std::string describe_mechanism(const model& m, const scatter_map& map, const symmetric_matrix& K,
                               const std::vector<double>& scale, linear_solver& solver);

}  // namespace solver

#endif
