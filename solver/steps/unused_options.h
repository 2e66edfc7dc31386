// unused_options.h: options of the command line that have no effect on a deck, so that nobody waits for a file.
#ifndef FINITES_SOLVER_UNUSED_OPTIONS_H
#define FINITES_SOLVER_UNUSED_OPTIONS_H

#include <string>

#include "model/model.h"
#include "options.h"

namespace solver {

// A warning a line; empty: all have an effect.
std::string unused_options(const model& m, const options& wanted);

// The same of a run that writes no results: `instead` is the option that asks for something else, "--check".
std::string unused_results(const options& wanted, const std::string& instead);

}  // namespace solver

#endif
