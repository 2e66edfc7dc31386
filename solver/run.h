// run.h: one run of the program, from the command line's options to the written results.
#ifndef FINITES_SOLVER_RUN_H
#define FINITES_SOLVER_RUN_H

#include "options.h"

namespace solver {

// Prints to the standard output. Throws deck_error, usage_error or another exception with a sentence for the user.
void run(const options& wanted);

// Reads the deck and writes its model as one deck, for --write.
void write_deck(const options& wanted);

}  // namespace solver

#endif
