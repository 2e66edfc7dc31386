// csv_writer.h: displacements and reactions of all nodes as a table for other programs.
#ifndef FINITES_SOLVER_CSV_WRITER_H
#define FINITES_SOLVER_CSV_WRITER_H

#include <ostream>

#include "model.h"
#include "static_analysis.h"

namespace solver {

// A line of names, then a line a node: number, coordinates, displacements, reactions; global axes.
void write_csv(std::ostream& out, const model& m, const static_solution& solution);

}  // namespace solver

#endif
