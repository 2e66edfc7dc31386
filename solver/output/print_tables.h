// print_tables.h: the tables of *NODE PRINT and *EL PRINT, in the form that CalculiX gives its .dat file.
#ifndef FINITES_SOLVER_PRINT_TABLES_H
#define FINITES_SOLVER_PRINT_TABLES_H

#include <ostream>
#include <string>

#include "analyses/modal_analysis.h"
#include "analyses/results.h"
#include "analyses/static_analysis.h"
#include "model/model.h"

namespace solver {

// Whether any step asks for a table.
bool has_prints(const model& m);
bool has_prints(const step& s);

// The number of a step as the time of headings: " 0.1000000E+01".
std::string printed_time(const model& m, const step& s);

// The tables of one step. Its time is its number: steps take a unit of time each.
void write_prints(std::ostream& out, const model& m, const step& s, const static_solution& solution,
                  const step_results& results);
// The frequencies or factors, then the displacements of every mode.
void write_prints(std::ostream& out, const model& m, const step& s, const modal_solution& solution);

}  // namespace solver

#endif
