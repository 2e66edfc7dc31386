// direct_solver.h: factorisation over all ranks behind linear_solver.
#ifndef FINITES_SOLVER_PETSC_DIRECT_SOLVER_H
#define FINITES_SOLVER_PETSC_DIRECT_SOLVER_H

#include "system/linear_solver.h"

namespace solver {

std::unique_ptr<linear_solver> make_direct_solver(double megabytes);

}  // namespace solver

#endif
