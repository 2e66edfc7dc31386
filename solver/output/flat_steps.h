// flat_steps.h: the steps of a model as cards, for flat_deck.cpp.
#ifndef FINITES_SOLVER_FLAT_STEPS_H
#define FINITES_SOLVER_FLAT_STEPS_H

#include <fmt/format.h>

#include "model/model.h"
#include "output/flat_axes.h"

namespace solver {

void append_step(fmt::memory_buffer& out, const model& m, const flat_axes& axes, const step& s);

}  // namespace solver

#endif
