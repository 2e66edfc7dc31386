// member_axes.h: length and local axes of frame elements.
#ifndef FINITES_SOLVER_MEMBER_AXES_H
#define FINITES_SOLVER_MEMBER_AXES_H

#include "finites/views.hpp"
#include "model/model.h"

namespace solver {

// Row 1 along the member, row 2 towards n1 of its section. A spring of global directions, and a link without length,
// have the global axes.
double member_length(const model& m, const element& e);
MATRIX<3, 3> member_axes(const model& m, const element& e);

// The unstressed length of a cable.
double cable_length(const model& m, const element& e);

}  // namespace solver

#endif
