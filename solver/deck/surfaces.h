// surfaces.h: the surfaces that *SURFACE names, for the cards that stand on one.
#ifndef FINITES_SOLVER_DECK_SURFACES_H
#define FINITES_SOLVER_DECK_SURFACES_H

#include <string_view>

#include "deck/build.h"

namespace solver::deck {

// An index into model::surfaces; -1: no *SURFACE has this name.
int find_surface(const build& b, std::string_view name);

// The surface that a parameter or a field of a data line names, which must be there: an index into model::surfaces.
int surface_of_parameter(const build& b, const card& c, const char* name);
int surface_of_field(const build& b, const data_fields& row, int i);

}  // namespace solver::deck

#endif
