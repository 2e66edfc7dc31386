// print_file.h: the .dat file of a run, which holds the tables of all steps.
#ifndef FINITES_SOLVER_PRINT_FILE_H
#define FINITES_SOLVER_PRINT_FILE_H

#include <memory>
#include <string>

#include "model/model.h"
#include "options.h"
#include "output/output_file.h"

namespace solver {

// Beside the results for a viewer, with the ending .dat; null where no step asks for a table. A place that would take
// that of the deck or of other results is a usage_error.
std::unique_ptr<output_file> open_print_file(const options& wanted, const model& m);

}  // namespace solver

#endif
