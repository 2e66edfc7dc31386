// check.h: --check: the deck is read, the model is built, every element is checked; nothing is solved or written.
#ifndef FINITES_SOLVER_CHECK_H
#define FINITES_SOLVER_CHECK_H

#include "options.h"

namespace solver {

// False where an element has an error. Throws what run() throws for a deck that cannot be read or built.
bool check(const options& wanted);

}  // namespace solver

#endif
