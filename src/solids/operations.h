// operations.h: the parts of FINITES_SOLID_3D, in element axes.
#ifndef FINITES_SOLID_OPERATIONS_H
#define FINITES_SOLID_OPERATIONS_H

#include <cstdint>

#include "finites/records.h"
#include "finites/views.hpp"
#include "solids/kinematics.h"
#include "solids/solid_data.h"

// A matrix of an element of eight nodes at most.
constexpr int SOLID_MATRIX_ROWS = 24;
using SOLID_MATRIX = MATRIX<SOLID_MATRIX_ROWS, SOLID_MATRIX_ROWS>;

// One element during a call.
struct SOLID_CALL {
  std::int32_t KIND, NN, points;
  SOLID_RECORD* record;
  const SOLID_NL_RECORD* nonlinear;  // null when it is not allocated
  MATRIX<3, 3> AX;                   // rows the axes
  SOLID_VECTORS XYZ;                 // coordinates in element axes
  SOLID_STATIONS station;            // of the rule
  VECTOR<SOLID_ROOM> weight;
  double E, nu, unit_weight;
};

// The elastic matrix with the element's stiffness factor. The library takes its three numbers (operations.cpp); only
// tests call this routine.
void SOLID_D_MATRIX(const SOLID_CALL& S, MATRIX<6, 6>& D);

// K += stiffness, M += consistent mass, KG += geometric stiffness of the stress of each point. OK is 0 when a Jacobian
// is singular.
void SOLID_K_LINEAR(const SOLID_CALL& S, SOLID_MATRIX& K, std::int32_t& OK);
void SOLID_MASS(const SOLID_CALL& S, SOLID_MATRIX& M, std::int32_t& OK);
void SOLID_K_GEOM(const SOLID_CALL& S, std::int32_t OP, const SOLID_VECTORS& u, SOLID_MATRIX& KG, std::int32_t& OK);

// The stress of point p: of the displacements u in operation 7, otherwise the one that the solver stores.
void SOLID_STRESS_MATRIX(const SOLID_CALL& S, std::int32_t OP, int p, const SOLID_GRADIENTS& g, const SOLID_VECTORS& u,
                         VECTOR<6>& stress);

// f (3, NN): nodal forces of a load g per unit volume, global axes; internal forces of U_ELEM, global axes in operation
// 3, element axes in 33.
void SOLID_BODY_LOAD(const SOLID_CALL& S, const double* G, SOLID_VECTORS& f, std::int32_t& OK);
void SOLID_INTERNAL_FORCE(const SOLID_CALL& S, std::int32_t OP, SOLID_VECTORS& f, std::int32_t& OK);

// RES50_NODE and RES50_GAUSS of the record.
void SOLID_RESULTS(const SOLID_CALL& S, std::int32_t& OK);

// K := the same in global axes, block by block.
void SOLID_K_TO_GLOBAL(const MATRIX<3, 3>& AX, std::int32_t NN, SOLID_MATRIX& K);

#endif
