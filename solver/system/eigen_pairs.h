// eigen_pairs.h: the largest eigenvalues of A x = mu B x for symmetric sparse matrices, B positive definite.
//
// The Lanczos iteration of Spectra, or that of the engine, runs on B^-1 A in the scalar product of B, with B
// factorised: what shift-invert does with the shift at 0. Frequencies and buckling factors are 1 / mu. Small systems
// are solved densely.
#ifndef FINITES_SOLVER_EIGEN_PAIRS_H
#define FINITES_SOLVER_EIGEN_PAIRS_H

#include <vector>

#include "elements/scatter_map.h"

namespace solver {

class linear_solver;

struct eigen_pairs {
  std::vector<double> value;                // descending
  std::vector<std::vector<double>> vector;  // by equation
};

// At most `count` pairs; none where A is zero. `factorised` holds the factors of B. Throws std::runtime_error when the
// iteration fails.
eigen_pairs largest_pairs(const symmetric_matrix& A, const symmetric_matrix& B, linear_solver& factorised,
                          std::size_t count);

}  // namespace solver

#endif
