// nodes.cpp: the nodes of the eight solid elements in natural coordinates, layer by layer from zeta = -1 to +1.
#include "solids/nodes.h"

#include <initializer_list>

#include "solids/linear_shapes.h"

namespace {

// (xi, eta) of the nine nodes of a layer of the quadratic bricks: around the edge, then the middle.
constexpr double BRICK_LAYER[9][2] = {{-1, -1}, {0, -1}, {1, -1}, {1, 0}, {1, 1}, {0, 1}, {-1, 1}, {-1, 0}, {0, 0}};

// (xi, eta) of the six nodes of a layer of the quadratic wedges, around the triangle.
constexpr double WEDGE_LAYER[6][2] = {{0, 0}, {0.5, 0}, {1, 0}, {0.5, 0.5}, {0, 1}, {0, 0.5}};

constexpr double CORNERS[4][2] = {{-1, -1}, {1, -1}, {1, 1}, {-1, 1}};
constexpr double TRIANGLE[3][2] = {{0, 0}, {1, 0}, {0, 1}};

constexpr NATURAL TETRA_10_NODES[10] = {{0, 0, 0},   {0.5, 0, 0}, {1, 0, 0},     {0.5, 0.5, 0}, {0, 1, 0},
                                        {0, 0.5, 0}, {0, 0, 0.5}, {0.5, 0, 0.5}, {0, 0.5, 0.5}, {0, 0, 1}};

// Adds a layer of nodes at a height.
template <int COUNT>
int add_layer(const double (&layer)[COUNT][2], int used, double zeta, int at, SOLID_STATIONS& XI3) {
  for (int k = 0; k < used; ++k) {
    XI3(1, at) = layer[k][0];
    XI3(2, at) = layer[k][1];
    XI3(3, at) = zeta;
    ++at;
  }
  return at;
}

template <int COUNT>
void set_nodes(const NATURAL (&nodes)[COUNT], SOLID_STATIONS& XI3) {
  for (int k = 0; k < COUNT; ++k) {
    XI3(1, k + 1) = nodes[k].xi;
    XI3(2, k + 1) = nodes[k].eta;
    XI3(3, k + 1) = nodes[k].zeta;
  }
}

}  // namespace

void SOLID_KIND_OF_NODES(std::int32_t NN, std::int32_t& KIND) {
  switch (NN) {
    case 4: KIND = TETRA_4; break;
    case 6: KIND = WEDGE_6; break;
    case 8: KIND = BRICK_8; break;
    case 10: KIND = TETRA_10; break;
    case 15: KIND = WEDGE_15; break;
    case 18: KIND = WEDGE_18; break;
    case 20: KIND = BRICK_20; break;
    case 27: KIND = BRICK_27; break;
    default: break;
  }
}

void SOLID_NODE_COORDS(std::int32_t KIND, std::int32_t /*NN*/, SOLID_STATIONS& XI3) {
  int at = 1;
  switch (KIND) {
    case BRICK_8: set_nodes(BRICK_8_NODES, XI3); break;
    case WEDGE_6: set_nodes(WEDGE_6_NODES, XI3); break;
    case TETRA_4: set_nodes(TETRA_4_NODES, XI3); break;
    case BRICK_27:
      for (const double zeta : {-1.0, 0.0, 1.0}) at = add_layer(BRICK_LAYER, 9, zeta, at, XI3);
      break;
    case BRICK_20:
      at = add_layer(BRICK_LAYER, 8, -1.0, at, XI3);
      at = add_layer(CORNERS, 4, 0.0, at, XI3);
      add_layer(BRICK_LAYER, 8, 1.0, at, XI3);
      break;
    case WEDGE_18:
      for (const double zeta : {-1.0, 0.0, 1.0}) at = add_layer(WEDGE_LAYER, 6, zeta, at, XI3);
      break;
    case WEDGE_15:
      at = add_layer(WEDGE_LAYER, 6, -1.0, at, XI3);
      at = add_layer(TRIANGLE, 3, 0.0, at, XI3);
      add_layer(WEDGE_LAYER, 6, 1.0, at, XI3);
      break;
    case TETRA_10: set_nodes(TETRA_10_NODES, XI3); break;
    default: break;
  }
}
