// section_tables.h: the tables of *SECTION PRINT, in the form that CalculiX gives its .dat file.
#ifndef FINITES_SOLVER_SECTION_TABLES_H
#define FINITES_SOLVER_SECTION_TABLES_H

#include <ostream>

#include "analyses/static_analysis.h"
#include "model/model.h"

namespace solver {

// Those of one step, behind its other tables. The library holds the state that the solution has come from.
void write_section_prints(std::ostream& out, const model& m, const step& s, library_model& library,
                          const static_solution& solution);

}  // namespace solver

#endif
