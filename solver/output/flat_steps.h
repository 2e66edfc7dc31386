// flat_steps.h: the conditions and steps of a model as cards, for flat_deck.cpp.
#ifndef FINITES_SOLVER_FLAT_STEPS_H
#define FINITES_SOLVER_FLAT_STEPS_H

#include <vector>

#include <fmt/format.h>

#include "model/model.h"

namespace solver {

void append_boundaries(fmt::memory_buffer& out, const model& m, const std::vector<boundary_condition>& list);
void append_constraints(fmt::memory_buffer& out, const model& m, const std::vector<linear_constraint>& list);
void append_step(fmt::memory_buffer& out, const model& m, const step& s);

}  // namespace solver

#endif
