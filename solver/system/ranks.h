// ranks.h: the processes that share a run. The embedded engine is one process; of a distributed engine each runs the
// same steps on the same deck, and what one learns from the engine all learn, so that they take the same way.
#ifndef FINITES_SOLVER_RANKS_H
#define FINITES_SOLVER_RANKS_H

namespace solver {

// The number of this process among them, from 0. The first one writes what the run tells, the others nothing.
int rank();
int rank_count();
inline bool is_first_rank() { return rank() == 0; }

}  // namespace solver

#endif
