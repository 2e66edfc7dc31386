// operations.h: loads, forces and results of a solid of any kind.
#ifndef FINITES_SOLID_OPERATIONS_H
#define FINITES_SOLID_OPERATIONS_H

#include <cstdint>

#include "finites/views.hpp"
#include "solids/solid_call.h"

// The elastic matrix with the element's stiffness factor. The library takes its three numbers (elastic.h); only tests
// call this routine.
void SOLID_D_MATRIX(const SOLID_CALL& S, MATRIX<6, 6>& D);

// f (3, NN): nodal forces of a load g per unit volume, global axes; internal forces of U, global axes in operation
// 3, element axes in 33. OK is 0 when a Jacobian is singular.
void SOLID_BODY_LOAD(const SOLID_CALL& S, const double* G, SOLID_VECTORS& f, std::int32_t& OK);
void SOLID_INTERNAL_FORCE(const SOLID_CALL& S, std::int32_t OP, SOLID_VECTORS& f, std::int32_t& OK);

// f := AX^T f of each node.
void forces_to_global(const MATRIX<3, 3>& AX, std::int32_t NN, SOLID_VECTORS& f);

// RES50_NODE and RES50_GAUSS of the record.
void SOLID_RESULTS(const SOLID_CALL& S, std::int32_t& OK);

#endif
