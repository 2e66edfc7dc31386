// linear_matrices.h: matrices of the linear kinds. K: the caller's, columns 24 apart; it is written only when OK is 1.
#ifndef FINITES_SOLID_LINEAR_MATRICES_H
#define FINITES_SOLID_LINEAR_MATRICES_H

#include <cstdint>

#include "solids/solid_call.h"

constexpr int SOLID_MATRIX_ROWS = 24;

// A number for each two nodes.
using NODE_PAIRS = MATRIX<LINEAR_NODES, LINEAR_NODES>;

// K := the elastic stiffness in global axes.
void SOLID_K_LINEAR(const SOLID_CALL& S, double* K, std::int32_t& OK);

// m, k := consistent mass and geometric stiffness of two nodes, the same for u, v and w.
void SOLID_MASS(const SOLID_CALL& S, NODE_PAIRS& m, std::int32_t& OK);
void SOLID_K_GEOM(const SOLID_CALL& S, std::int32_t OP, NODE_PAIRS& k, std::int32_t& OK);

// The block of two nodes, their number times the unit matrix, in global axes: K := AX^T k AX, or K += it.
void SOLID_K_TO_GLOBAL(const MATRIX<3, 3>& AX, std::int32_t NN, const NODE_PAIRS& k, double* K);
void SOLID_K_TO_GLOBAL_ADDED(const MATRIX<3, 3>& AX, std::int32_t NN, const NODE_PAIRS& k, double* K);

#endif
