// main.cpp: the program with the engine of PETSc, alone or under mpirun. Exit status as that of the embedded one.
#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <string>

#include "engines/petsc/processes.h"
#include "options.h"
#include "program.h"
#include "system/ranks.h"
#include "system/threads.h"

namespace {

// The first rank alone prints; where another one fails alone, the error stream is there again.
class silence {
 public:
  silence() : error_stream_(dup(STDERR_FILENO)) {
    if (solver::is_first_rank()) return;
    const int nowhere = open("/dev/null", O_WRONLY);
    dup2(nowhere, STDOUT_FILENO);
    dup2(nowhere, STDERR_FILENO);
    close(nowhere);
  }
  void end() const {
    std::fflush(stderr);
    dup2(error_stream_, STDERR_FILENO);
  }

 private:
  int error_stream_;
};

// An error that all ranks have is reported by the first one. A rank that fails alone reports its error itself and ends
// the others, which would wait for it.
int end_of_ranks(const solver::outcome& ended, const silence& quiet) {
  if (ended.complaint.empty()) return ended.exit_code;
  if (solver::all_have_failed()) {
    if (solver::is_first_rank()) solver::complain(ended.complaint);
    return ended.exit_code;
  }
  quiet.end();
  const std::string of_rank = "finites-solve: process " + std::to_string(solver::rank() + 1) + " of " +
                              std::to_string(solver::rank_count()) + " has failed alone\n";
  solver::complain(of_rank + ended.complaint);
  std::fflush(stderr);
  solver::end_all(ended.exit_code);
}

}  // namespace

int main(int argc, char** argv) {
  try {
    solver::leave_to_engine(argc, argv);
    const solver::processes started;
    const silence quiet;
    // Threads of the dense kernels beside other ranks would take their processors; --threads asks for them.
    if (solver::rank_count() > 1) solver::set_threads(1);
    return end_of_ranks(solver::run_program(argc, argv), quiet);
  } catch (const std::exception& error) {
    solver::complain(std::string("finites-solve: ") + error.what() + "\n");
    return 1;
  }
}
