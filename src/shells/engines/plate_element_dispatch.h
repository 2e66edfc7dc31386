// plate_element_dispatch.h: from an element kind to its engine.
#ifndef FINITES_PLATE_ELEMENT_DISPATCH_H
#define FINITES_PLATE_ELEMENT_DISPATCH_H

#include <cstdint>

#include "finites/records.h"
#include "finites/views.hpp"
#include "plate_material/state_in_use.h"
#include "shells/common/elem_loads.h"

// Calls the engine of a kind; an unknown kind does nothing. The arguments are those of the engines, and
//
//   kind         in   element kind
//   node_list    in   indices of the four node blocks
//   AXES         out  the element's axes, after the engine has returned
void PLATE_ELEMENT_DISPATCH(PLATEELEM_RECORD& EL, std::int32_t ident, std::int32_t kind, std::int32_t op,
                            const double* xyz, const ELEM_LOADS& LOADS, const double* U, double* F,
                            const VECTOR<4, std::int32_t>& node_list, int geometric, const double* U_TOTAL,
                            double* matrix, double* nodes, double* points, MATRIX<3, 3>& AXES, double& area,
                            double& volume, double& weight, int& point_flag1, int& point_flag2, double& distance,
                            const PLATE_STATE_IN_USE& state, int leading);

#endif
