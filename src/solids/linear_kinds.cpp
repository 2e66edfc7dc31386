// linear_kinds.cpp: the tables of the linear kinds, worked out by the compiler from functions, rules and edges.
#include "solids/linear_kinds.h"

#include "solids/linear_shapes.h"
#include "solids/nodes.h"

namespace {

constexpr LINEAR_EDGE NONE = {1, 1};
constexpr LINEAR_EDGE BRICK_EDGES[LINEAR_EDGES] = {{1, 2}, {4, 3}, {5, 6}, {8, 7},   // xi
                                                   {1, 4}, {2, 3}, {5, 8}, {6, 7},   // eta
                                                   {1, 5}, {2, 6}, {3, 7}, {4, 8}};  // zeta
constexpr LINEAR_EDGE WEDGE_EDGES[LINEAR_EDGES] = {{1, 2}, {4, 5}, NONE,   NONE,     // xi
                                                   {1, 3}, {4, 6}, NONE,   NONE,     // eta
                                                   {1, 4}, {2, 5}, {3, 6}, NONE};    // zeta
constexpr LINEAR_EDGE TETRA_EDGES[LINEAR_EDGES] = {{1, 2}, NONE, NONE, NONE,         // xi
                                                   {1, 3}, NONE, NONE, NONE,         // eta
                                                   {1, 4}, NONE, NONE, NONE};        // zeta

constexpr double component(const NATURAL& v, int d) { return d == 1 ? v.xi : d == 2 ? v.eta : v.zeta; }

// w_e at a place: the derivative of the function of the head.
template <class SLOPE>
constexpr void set_edge_weights(const LINEAR_KIND& kind, SLOPE slope, const NATURAL& place, int row,
                                MATRIX<LINEAR_NODES, LINEAR_EDGES>& weight) {
  for (int e = 1; e <= LINEAR_EDGES; ++e) {
    const LINEAR_EDGE edge = kind.edge[e - 1];
    weight(row, e) = edge.head == edge.tail ? 0.0 : component(slope(edge.head - 1, place), (e - 1) / 4 + 1);
  }
}

template <int NODES, int POINTS, class FUNCTION, class SLOPE>
constexpr LINEAR_KIND table_of(const NATURAL (&node)[NODES], const NATURAL (&point)[POINTS], double weight,
                               const LINEAR_EDGE (&edge)[LINEAR_EDGES], FUNCTION function, SLOPE slope) {
  LINEAR_KIND kind{};
  kind.nodes = NODES;
  kind.points = POINTS;
  for (int e = 0; e < LINEAR_EDGES; ++e) kind.edge[e] = edge[e];
  for (int k = 1; k <= NODES; ++k) set_edge_weights(kind, slope, node[k - 1], k, kind.at_nodes);
  for (int p = 1; p <= POINTS; ++p) {
    kind.weight(p) = weight;
    set_edge_weights(kind, slope, point[p - 1], p, kind.at_points);
    for (int k = 1; k <= NODES; ++k) {
      kind.function(k, p) = function(k - 1, point[p - 1]);
      for (int d = 1; d <= 3; ++d) kind.derivative(k, 3 * (p - 1) + d) = component(slope(k - 1, point[p - 1]), d);
    }
  }
  if (POINTS % 2 == 1) set_edge_weights(kind, slope, point[POINTS - 1], POINTS + 1, kind.at_points);
  return kind;
}

constexpr LINEAR_KIND BRICK =
    table_of(BRICK_8_NODES, BRICK_8_POINTS, 1.0, BRICK_EDGES, brick_8_function, brick_8_slope);
constexpr LINEAR_KIND WEDGE =
    table_of(WEDGE_6_NODES, WEDGE_6_POINTS, WEDGE_WEIGHT, WEDGE_EDGES, wedge_6_function, wedge_6_slope);
constexpr LINEAR_KIND TETRA =
    table_of(TETRA_4_NODES, TETRA_4_POINTS, 1.0, TETRA_EDGES, tetra_4_function, tetra_4_slope);

}  // namespace

const LINEAR_KIND* linear_kind(std::int32_t KIND) {
  switch (KIND) {
    case BRICK_8: return &BRICK;
    case WEDGE_6: return &WEDGE;
    case TETRA_4: return &TETRA;
    default: return nullptr;
  }
}
