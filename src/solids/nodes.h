// nodes.h: kinds of solid elements and their nodes in natural coordinates.
#ifndef FINITES_SOLID_NODES_H
#define FINITES_SOLID_NODES_H

#include <cstdint>

#include "finites/views.hpp"

constexpr int SOLID_ROOM = 27;  // nodes or points of the largest kind

// Kinds.
constexpr std::int32_t BRICK_8 = 10, WEDGE_6 = 12, TETRA_4 = 13;
constexpr std::int32_t BRICK_27 = 20, BRICK_20 = 21, WEDGE_18 = 22, WEDGE_15 = 23, TETRA_10 = 24;

// Natural coordinates of nodes or points.
using SOLID_STATIONS = MATRIX<3, SOLID_ROOM>;

// The kind of a node count; a count without a kind leaves KIND unchanged.
void SOLID_KIND_OF_NODES(std::int32_t NN, std::int32_t& KIND);

// XI3 := the nodes in natural coordinates, NN of them.
void SOLID_NODE_COORDS(std::int32_t KIND, std::int32_t NN, SOLID_STATIONS& XI3);

#endif
