// base_state.h: the state on which a step with PERTURBATION stands.
//
// Of the state at the end of an earlier step the axial forces of members, the membrane forces of shells and the
// stresses of solids are what a small motion feels: their geometric stiffness KG belongs to the stiffness of every
// perturbation, K + KG. Displacements are small, the geometry is that of the deck.
#ifndef FINITES_SOLVER_BASE_STATE_H
#define FINITES_SOLVER_BASE_STATE_H

#include <string>

#include "elements/library_model.h"
#include "model/model.h"

namespace solver {

struct static_solution;

struct base_state {
  const step* after = nullptr;  // null: the unloaded state
  const static_solution* at_end = nullptr;
  bool yielded = false;  // plastic strains: the tangent is no longer the elastic stiffness
};

inline bool is_loaded(const base_state& base) { return base.after != nullptr; }

// Stores the forces of the state, and from now on the stiffness of every element holds their geometric stiffness; of
// the unloaded state none. Throws model_error for a state that `s` cannot stand on.
void stand_on(const model& m, const step& s, library_model& library, const base_state& base);

// "the unloaded state", "the state at the end of step 1".
std::string name_of(const model& m, const base_state& base);

}  // namespace solver

#endif
