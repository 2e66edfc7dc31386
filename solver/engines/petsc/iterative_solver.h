// iterative_solver.h: conjugate gradients over all ranks behind linear_solver.
#ifndef FINITES_SOLVER_PETSC_ITERATIVE_SOLVER_H
#define FINITES_SOLVER_PETSC_ITERATIVE_SOLVER_H

#include "system/linear_solver.h"

namespace solver {

std::unique_ptr<linear_solver> make_iterative_solver();

}  // namespace solver

#endif
