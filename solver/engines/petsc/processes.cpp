// processes.cpp: MPI by way of SLEPc, which starts PETSc and MPI.
#include "engines/petsc/processes.h"

#include <slepceps.h>

#include <chrono>
#include <cstdlib>
#include <stdexcept>
#include <thread>

#include "system/ranks.h"

namespace solver {

namespace {

// For the end alone: in the communicator of PETSc's objects others may still wait for one that has failed.
MPI_Comm& ending() {
  static MPI_Comm group = MPI_COMM_NULL;
  return group;
}

int asked(int (*what)(MPI_Comm, int*), MPI_Comm group) {
  int value = 0;
  what(group, &value);
  return value;
}

}  // namespace

int rank() {
  static const int own = asked(MPI_Comm_rank, PETSC_COMM_WORLD);
  return own;
}

int rank_count() {
  static const int all = asked(MPI_Comm_size, PETSC_COMM_WORLD);
  return all;
}

int ranks_on_this_machine() {
  static const int here = [] {
    MPI_Comm machine = MPI_COMM_NULL;
    MPI_Comm_split_type(PETSC_COMM_WORLD, MPI_COMM_TYPE_SHARED, 0, MPI_INFO_NULL, &machine);
    const int count = asked(MPI_Comm_size, machine);
    MPI_Comm_free(&machine);
    return count;
  }();
  return here;
}

std::string petsc_name() {
  return "PETSc " + std::to_string(PETSC_VERSION_MAJOR) + "." + std::to_string(PETSC_VERSION_MINOR) + "." +
         std::to_string(PETSC_VERSION_SUBMINOR);
}

std::string processes_text() { return rank_count() == 1 ? "" : " on " + std::to_string(rank_count()) + " processes"; }

processes::processes() {
  // Before the start: PETSc would take signals for itself and tell of its own calls.
  PetscOptionsSetValue(nullptr, "-no_signal_handler", "true");
  if (SlepcInitializeNoArguments() != 0) throw std::runtime_error("PETSc and SLEPc do not start");
  MPI_Comm_dup(MPI_COMM_WORLD, &ending());
  PetscPushErrorHandler(PetscReturnErrorHandler, nullptr);
}

processes::~processes() {
  MPI_Comm_free(&ending());
  SlepcFinalize();
}

bool all_have_failed() {
  using clock = std::chrono::steady_clock;
  constexpr std::chrono::milliseconds MOMENT(2000), PAUSE(5);
  if (rank_count() == 1) return true;
  MPI_Request request = MPI_REQUEST_NULL;
  MPI_Ibarrier(ending(), &request);
  int met = 0;
  for (const clock::time_point start = clock::now(); met == 0 && clock::now() - start < MOMENT;) {
    MPI_Test(&request, &met, MPI_STATUS_IGNORE);
    if (met == 0) std::this_thread::sleep_for(PAUSE);
  }
  return met != 0;
}

void end_all(int exit_code) {
  MPI_Abort(MPI_COMM_WORLD, exit_code);
  std::_Exit(exit_code);
}

}  // namespace solver
