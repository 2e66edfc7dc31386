// shapes.h: shape functions of the solid elements and their derivatives.
//
// Every solid is isoparametric, with three translations per node. Some derivatives are not those of the functions
// beside them: they are part of the results (docs/decisions.md).
#ifndef FINITES_SOLID_SHAPES_H
#define FINITES_SOLID_SHAPES_H

#include <cstdint>

#include "finites/views.hpp"
#include "solids/nodes.h"

// Shape functions; their derivatives, rows d/dxi, d/deta, d/dzeta.
using SOLID_FUNCTIONS = VECTOR<SOLID_ROOM>;
using SOLID_DERIVATIVES = MATRIX<3, SOLID_ROOM>;

// N := the shape functions. In kinds 22 and 23 the third triangle coordinate is 1 - xi - eta - zeta.
void SOLID_SHAPE(std::int32_t KIND, double XI, double ETA, double ZETA, std::int32_t NN, SOLID_FUNCTIONS& N);

// DN := their derivatives, with these differences: kinds 22 and 23 are derived with 1 - xi - eta, without zeta; node 1
// of kind 23 has 2 zeta + 2 in d/dzeta where the function gives 2 zeta + 1; kind 24 has 1 - 2 xi - eta in place of its
// fourth coordinate, and is right where xi = zeta.
void SOLID_SHAPE_DERIV(double XI, double ETA, double ZETA, std::int32_t KIND, std::int32_t NN, SOLID_DERIVATIVES& DN);

// OUT(3 i - 2 .. 3 i) := the nodal vector V(3 NN) at the points XI3(3, points): sum_k N_k V_k. Without a caller in the
// library; tests call it.
void SOLID_INTERP_NODAL(std::int32_t KIND, std::int32_t NN, std::int32_t points, const double* XI3, const double* V,
                        double* OUT);

#endif
