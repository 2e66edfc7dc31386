// linear_kinds.h: tables of the three linear kinds, the brick, the wedge and the tetrahedron.
//
// A linear function changes along a natural direction as it changes along the edges of that direction: with the edges e
// from node tail to node head,
//
//     dN_k/d xi_d  is  +w_e at the head of e,  -w_e at its tail,      V,d = sum_e  w_e (V_head - V_tail)
//
// for a quantity V of the nodes. A brick has four edges in each direction; a wedge has two, two and three, a
// tetrahedron one, filled up with edges from node 1 to itself of weight 0.
#ifndef FINITES_SOLID_LINEAR_KINDS_H
#define FINITES_SOLID_LINEAR_KINDS_H

#include <cstdint>

#include "finites/views.hpp"

constexpr int LINEAR_NODES = 8;  // nodes or points of the largest of them
constexpr int LINEAR_EDGES = 12;

struct LINEAR_EDGE {
  int tail, head;
};

// Places stand first in the tables of edge weights: two neighbours make a pair of lanes. The nodes are an even number;
// the one point of a tetrahedron is followed by a copy whose weight is 0.
struct LINEAR_KIND {
  int nodes, points;
  LINEAR_EDGE edge[LINEAR_EDGES];                     // four of xi, four of eta, four of zeta
  VECTOR<LINEAR_NODES> weight;                        // of the points
  MATRIX<LINEAR_NODES, LINEAR_EDGES> at_points;       // w_e at the points of the rule
  MATRIX<LINEAR_NODES, LINEAR_EDGES> at_nodes;        // w_e at the nodes
  MATRIX<LINEAR_NODES, LINEAR_NODES> function;        // N_k at point p: (k, p)
  MATRIX<LINEAR_NODES, 3 * LINEAR_NODES> derivative;  // dN_k/d xi_d at point p: (k, 3 (p - 1) + d)
};

// The tables of a kind; null for a kind that is not linear.
const LINEAR_KIND* linear_kind(std::int32_t KIND);

#endif
