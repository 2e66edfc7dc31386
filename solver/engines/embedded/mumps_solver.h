// mumps_solver.h: MUMPS behind linear_solver.
#ifndef FINITES_SOLVER_MUMPS_SOLVER_H
#define FINITES_SOLVER_MUMPS_SOLVER_H

#include "system/linear_solver.h"

namespace solver {

std::unique_ptr<linear_solver> make_mumps_solver(double megabytes);

}  // namespace solver

#endif
