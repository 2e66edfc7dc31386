// centrifugal.h: the loads of a structure that rotates about an axis at constant speed, as it sees them itself: rho
// omega^2 r per volume, r from the axis to the place, square to the axis.
//
// Solids and plates get nodal forces consistent with their functions, members a load per length that is linear along
// them. The change of r by displacements is not part of it.
#ifndef FINITES_SOLVER_CENTRIFUGAL_H
#define FINITES_SOLVER_CENTRIFUGAL_H

#include <vector>

#include "elements/load_case.h"
#include "model/model.h"

namespace solver {

void add_centrifugal(const model& m, const element_load& card, distributed_load& load, std::vector<double>& nodal_load);

}  // namespace solver

#endif
