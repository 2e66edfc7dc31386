// program.h: the program behind both of its engines.
#ifndef FINITES_SOLVER_PROGRAM_H
#define FINITES_SOLVER_PROGRAM_H

#include <string>

namespace solver {

// What a run that has failed says, and the exit status 1, or 2 for errors of usage; an empty text: all went well.
struct outcome {
  int exit_code = 0;
  std::string complaint;
};

// Reads the command line and does what it asks for.
outcome run_program(int argc, const char* const* argv);

// The words of a complaint on the error stream, in the colours that are chosen.
void complain(const std::string& complaint);

// Where the command line asks for another engine than this program has: its program, which stands beside this one,
// takes the place of this one. Throws usage_error where there is none.
void leave_to_engine(int argc, char** argv);

}  // namespace solver

#endif
