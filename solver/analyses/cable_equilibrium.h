// cable_equilibrium.h: a static step of a model with cables, whose forces depend on where their nodes are.
#ifndef FINITES_SOLVER_CABLE_EQUILIBRIUM_H
#define FINITES_SOLVER_CABLE_EQUILIBRIUM_H

#include "analyses/static_analysis.h"

namespace solver {

bool has_cables(const model& m);

// Newton's method on the displacements, with the tangents of the cables and a step that is halved until the forces out
// of balance shrink. Cables move by any amount; everything else is linear. Throws model_error when no equilibrium is
// found, with the message of the cable library where a cable is the cause.
static_solution solve_with_cables(const model& m, const step& s, library_model& library, linear_solver& solver,
                                  stopwatch& watch);

}  // namespace solver

#endif
