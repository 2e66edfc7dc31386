// memory.h: how much memory a factorisation may still take.
#ifndef FINITES_SOLVER_MEMORY_H
#define FINITES_SOLVER_MEMORY_H

#include <string>

namespace solver {

struct memory_bound {
  double megabytes = 0;  // of a million bytes; infinite where nothing is known
  std::string reason;    // "free on this machine"
};

// The smallest of what is free on the machine (MemAvailable), what the limit of the process on its address space leaves
// (RLIMIT_AS), what the control group leaves, and `wanted` megabytes less what the process holds; 0: no such wish. Of
// `processes` that share the machine each may take as much of all but its own address space.
memory_bound free_memory(double wanted, int processes = 1);

// What the process holds, in megabytes; 0 where the system does not say.
double held_memory();

// Throws std::runtime_error with both numbers when the work needs more than is free: in this one of `processes` that
// share the machine.
void require_memory(double megabytes, double wanted, int processes = 1);

}  // namespace solver

#endif
