// estimate.h: --memory: what a run would take, without running.
#ifndef FINITES_SOLVER_ESTIMATE_H
#define FINITES_SOLVER_ESTIMATE_H

#include "options.h"

namespace solver {

// Reads the deck, builds records and equations, asks the solver what their factors need, and prints it phase by phase,
// in megabytes of a million bytes. False where less is free than the run would take. Throws what run() throws for a
// deck that cannot be read or built.
bool estimate_memory(const options& wanted);

}  // namespace solver

#endif
