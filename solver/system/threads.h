// threads.h: how many threads the dense kernels of the factorisation take.
#ifndef FINITES_SOLVER_THREADS_H
#define FINITES_SOLVER_THREADS_H

namespace solver {

// Says it to OpenBLAS, whose matrix products are what a factorisation by MUMPS takes its time for. False where another
// BLAS was linked, which does not take it.
bool set_threads(int count);

}  // namespace solver

#endif
