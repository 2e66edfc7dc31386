// linear_vectors.h: forces, loads, stresses and results of the linear kinds.
#ifndef FINITES_SOLID_LINEAR_VECTORS_H
#define FINITES_SOLID_LINEAR_VECTORS_H

#include <cstdint>

#include "solids/solid_call.h"

// U in element axes, along the edges, and its strains and stresses at the points of the rule.
struct POINT_STATES {
  EDGE_VECTORS UE;
  STATE_PAIR pair[LINEAR_PAIRS];
};

// OK := 0 where a Jacobian is singular.
void point_states(const SOLID_CALL& S, POINT_STATES& state, std::int32_t& OK);

// f (3, NN) := internal forces in element axes.
void linear_forces(const SOLID_CALL& S, const POINT_STATES& state, SOLID_VECTORS& f);

// n (NN) := the integrals of the shape functions.
void linear_integrals(const SOLID_CALL& S, VECTOR<SOLID_ROOM>& n, std::int32_t& OK);

// RES50_NODE and RES50_GAUSS of the record, node by node and point by point up to the first whose Jacobian is singular,
// which sets OK := 0. With the states of the points at hand, those are only copied.
void linear_results(const SOLID_CALL& S, std::int32_t& OK);
void linear_results(const SOLID_CALL& S, const POINT_STATES& state, std::int32_t& OK);

#endif
