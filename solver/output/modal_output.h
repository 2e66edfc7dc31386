// modal_output.h: modal masses, participation factors and effective masses, printed and as a table.
#ifndef FINITES_SOLVER_MODAL_OUTPUT_H
#define FINITES_SOLVER_MODAL_OUTPUT_H

#include <ostream>
#include <string>

#include "analyses/modal_analysis.h"
#include "model/model.h"

namespace solver {

std::string modal_masses_summary(const modal_solution& solution);

// A line of names, then a line per mode: number, frequency or factor; of frequencies also the generalised mass,
// participation factors and effective masses, and three more lines: the sum of the effective masses, that of all modes,
// and the mass with what stands on held degrees of freedom.
void write_modal_masses_csv(std::ostream& out, const step& s, const modal_solution& solution);

}  // namespace solver

#endif
