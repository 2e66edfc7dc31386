// balance.h: whether loads and reactions of a linear solution balance.
#ifndef FINITES_SOLVER_BALANCE_H
#define FINITES_SOLVER_BALANCE_H

#include <string>

#include "analyses/static_analysis.h"
#include "model/model.h"

namespace solver {

// Every element answers a rigid motion with nothing, so that loads, reactions and forces of conditions balance. The
// library keeps orthotropic constants in single precision, and their shells a trace of stiffness against rotations as
// rigid bodies, 1e-9 of that against bending: where nothing else resists, a mechanism has a solution. It shows in the
// sums. Empty where these balance, where the stiffness is not next to singular, and where they need not balance: in
// second order, with pretension, with springs and links, which may stand on the ground or join places apart.
std::string note_imbalance(const model& m, const step& s, const base_state& base, const static_solution& solution);

}  // namespace solver

#endif
