// processes.h: the start and the end of the ranks.
#ifndef FINITES_SOLVER_PETSC_PROCESSES_H
#define FINITES_SOLVER_PETSC_PROCESSES_H

#include <string>

namespace solver {

std::string petsc_name();      // "PETSc 3.18.5"
std::string processes_text();  // " on 4 processes", empty for one
int ranks_on_this_machine();

// From the first call of PETSc to the last. Faults of PETSc come back as codes, signals stay with the system.
class processes {
 public:
  processes();
  ~processes();
  processes(const processes&) = delete;
  processes& operator=(const processes&) = delete;
};

// True where every rank has come here within a moment: all have the same error, and the first one reports it. False:
// this one has failed alone.
bool all_have_failed();
// Ends all ranks at once, from any of them.
[[noreturn]] void end_all(int exit_code);

}  // namespace solver

#endif
