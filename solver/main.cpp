// main.cpp: the program with the embedded engine. Exit status 0: solved, or checked without an error; 1: an error in
// the deck or the model, or results that cannot be written; 2: usage.
#include <cstdlib>
#include <string>

#include "options.h"
#include "program.h"

namespace {

// Several processes of this engine would solve the same deck beside one another and write over each other's results.
void refuse_many_processes() {
  for (const char* const name : {"OMPI_COMM_WORLD_SIZE", "PMI_SIZE"}) {
    const char* const count = std::getenv(name);
    if (count == nullptr || std::atoi(count) <= 1) continue;
    throw solver::usage_error(std::string("mpirun has started ") + count +
                              " processes, and the embedded engine is one: add --engine petsc");
  }
}

}  // namespace

int main(int argc, char** argv) {
  try {
    solver::leave_to_engine(argc, argv);
    refuse_many_processes();
  } catch (const solver::usage_error& error) {
    solver::complain(std::string("finites-solve: ") + error.what() + "\n");
    return 2;
  }
  const solver::outcome ended = solver::run_program(argc, argv);
  solver::complain(ended.complaint);
  return ended.exit_code;
}
