// flat_materials.h: materials, and the temperatures from which their strains count, as cards of a flat deck.
#ifndef FINITES_SOLVER_FLAT_MATERIALS_H
#define FINITES_SOLVER_FLAT_MATERIALS_H

#include <fmt/format.h>

#include "model/model.h"

namespace solver {

void append_material(fmt::memory_buffer& out, const material& x);
void append_initial_temperatures(fmt::memory_buffer& out, const model& m);

}  // namespace solver

#endif
