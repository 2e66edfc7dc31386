// exchange.h: calls of MPI whose faults become exceptions.
#ifndef FINITES_SOLVER_PETSC_EXCHANGE_H
#define FINITES_SOLVER_PETSC_EXCHANGE_H

namespace solver {

void must(int code);

}  // namespace solver

#endif
