// eigen_solver.h: Eigen's simplicial factorisation L D L^T behind linear_solver.
#ifndef FINITES_SOLVER_EIGEN_SOLVER_H
#define FINITES_SOLVER_EIGEN_SOLVER_H

#include "system/linear_solver.h"

namespace solver {

std::unique_ptr<linear_solver> make_eigen_solver(double megabytes);

}  // namespace solver

#endif
