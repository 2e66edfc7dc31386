// solid_lanes.h: the stiffness of bricks, one in every lane of V, in global axes. It puts the formulas of the solids
// together (solids/linear_matrices.cpp): each entry is the same sum over the same points.
#ifndef FINITES_SOLID_LANES_H
#define FINITES_SOLID_LANES_H

#include <initializer_list>

#include "common/lane_pair.h"
#include "finites/views.hpp"
#include "plain_calls/lanes/gather.h"
#include "plain_calls/lanes/lane_conditions.h"
#include "plain_calls/lanes/lane_kernels.h"
#include "solids/elastic.h"
#include "solids/kinematics.h"
#include "solids/linear_blocks.h"
#include "solids/linear_kinds.h"
#include "solids/linear_places.h"

constexpr int BRICK_NODES = 8;

template <class V>
using BRICK_VECTORS = MATRIX<3, BRICK_NODES, V>;
template <class V>
using BRICK_EDGES_OF = MATRIX<3, LINEAR_EDGES, V>;

// E(:, e) := X(:, head) - X(:, tail).
template <class V>
inline void brick_edges(const LINEAR_KIND& kind, const BRICK_VECTORS<V>& X, BRICK_EDGES_OF<V>& E) {
  for (int e = 1; e <= LINEAR_EDGES; ++e) {
    const LINEAR_EDGE edge = kind.edge[e - 1];
    for (int i = 1; i <= 3; ++i) E(i, e) = X(i, edge.head) - X(i, edge.tail);
  }
}

// The Jacobian at a place of a table.
template <class V>
inline MATRIX<3, 3, V> brick_jacobian(const EDGE_WEIGHTS& w, int p, const BRICK_EDGES_OF<V>& E) {
  MATRIX<3, 3, V> J;
  for (int d = 1; d <= 3; ++d) {
    const int e = 4 * d - 3;
    for (int i = 1; i <= 3; ++i) {
      J(d, i) = w(p, e) * E(i, e) + w(p, e + 1) * E(i, e + 1) + w(p, e + 2) * E(i, e + 2) + w(p, e + 3) * E(i, e + 3);
    }
  }
  return J;
}

// Coordinates in element axes, from the first node.
template <class V>
inline BRICK_VECTORS<V> brick_local(const SOLID_LANES& solids) {
  BRICK_VECTORS<V> x;
  MATRIX<3, 3, V> AX;
  BRICK_VECTORS<V> local;
  gather(solids.xyz, x.V);
  gather(solids.axes, AX.V);
  for (int k = 1; k <= BRICK_NODES; ++k) {
    const V d1 = x(1, k) - x(1, 1);
    const V d2 = x(2, k) - x(2, 1);
    const V d3 = x(3, k) - x(3, 1);
    for (int i = 1; i <= 3; ++i) local(i, k) = AX(i, 1) * d1 + AX(i, 2) * d2 + AX(i, 3) * d3;
  }
  return local;
}

// H(k, 3 (p - 1) + c): gradients in global axes, times the root of the volume of their point.
template <class V>
inline void brick_gradients(const LINEAR_KIND& kind, const SOLID_LANES& solids,
                            MATRIX<BRICK_NODES, 3 * BRICK_NODES, V>& H) {
  MATRIX<3, 3, V> AX;
  BRICK_EDGES_OF<V> E;
  gather(solids.axes, AX.V);
  brick_edges(kind, brick_local<V>(solids), E);
  for (int p = 1; p <= BRICK_NODES; ++p) {
    const INVERSE_OF<V> I = inverse_of(brick_jacobian(kind.at_points, p, E));
    MATRIX<3, 3, V> T = turned_rows(AX, I.ADJ);
    const V scale = root(kind.weight(p) / magnitude(I.DET));
    for (V& t : T.V) t = t * scale;
    const int q = 3 * (p - 1);
    for (int c = 1; c <= 3; ++c) {
      for (int k = 1; k <= BRICK_NODES; ++k) {
        H(k, q + c) = T(c, 1) * kind.derivative(k, q + 1) + T(c, 2) * kind.derivative(k, q + 2) +
                      T(c, 3) * kind.derivative(k, q + 3);
      }
    }
  }
}

// The sums over the points of the products of two components: C(r, s) of the nodes i and j, each in a register.
template <class V>
struct BRICK_DYAD {
  V xx, yx, zx, xy, yy, zy, xz, yz, zz;
};

template <class V>
inline BRICK_DYAD<V> brick_dyad(const MATRIX<BRICK_NODES, 3 * BRICK_NODES, V>& H, int i, int j) {
  V xx{}, yx{}, zx{}, xy{}, yy{}, zy{}, xz{}, yz{}, zz{};
  for (int q = 0; q < 3 * BRICK_NODES; q += 3) {
    const V a = H(i, q + 1);
    const V b = H(i, q + 2);
    const V c = H(i, q + 3);
    const V x = H(j, q + 1);
    const V y = H(j, q + 2);
    const V z = H(j, q + 3);
    xx = xx + a * x;
    yx = yx + b * x;
    zx = zx + c * x;
    xy = xy + a * y;
    yy = yy + b * y;
    zy = zy + c * y;
    xz = xz + a * z;
    yz = yz + b * z;
    zz = zz + c * z;
  }
  return {xx, yx, zx, xy, yy, zy, xz, yz, zz};
}

// The checks of bricks (solid_input.cpp), for numbers of ordinary size. A determinant does not depend on the axes but
// for its rounding, a small part of the cube of the element's size: the bounds leave room for it.
template <class V>
bool bricks_pass(const SOLID_LANES& solids) {
  constexpr double LARGEST = 1e12;
  constexpr double ROUNDING = 1e-10;
  LANE_CONDITIONS<V> conditions;
  const V E = gathered<V>(solids.E);
  const V nu = gathered<V>(solids.nu);
  const V density = gathered<V>(solids.density);
  conditions.expect(E > 0.0);
  conditions.expect(E < LARGEST);
  conditions.expect(nu > -1.0);
  conditions.expect(nu < 0.5);
  conditions.expect(density >= 0.0);
  conditions.expect(density < LARGEST);

  const LINEAR_KIND& kind = *solids.brick;
  BRICK_VECTORS<V> x;
  BRICK_EDGES_OF<V> edges;
  gather(solids.xyz, x.V);
  for (const V& component : x.V) conditions.expect(magnitude(component) < LARGEST);
  brick_edges(kind, x, edges);
  V sum{};
  for (const V& component : edges.V) sum = sum + component * component;
  const V limit = 10.0 * SINGULAR_DETERMINANT + ROUNDING * (sum * root(sum));
  for (const EDGE_WEIGHTS* const weights : {&kind.at_nodes, &kind.at_points}) {
    for (int p = 1; p <= BRICK_NODES; ++p) {
      conditions.expect(inverse_of(brick_jacobian(*weights, p, edges)).DET > limit);
    }
  }
  return conditions.all();
}

template <class V>
bool brick_lanes(const SOLID_LANES& solids, const LANE_OUTPUT& out) {
  constexpr int ORDER = 3 * BRICK_NODES;
  const LINEAR_KIND& kind = *solids.brick;
  const auto D = elastic_terms(solids.factor, gathered<V>(solids.E), gathered<V>(solids.nu));
  MATRIX<BRICK_NODES, 3 * BRICK_NODES, V> H;
  brick_gradients(kind, solids, H);
  V packed[SYM(ORDER, ORDER)];
  const PACKED_MATRIX<V> K{packed};
  for (int j = 1; j <= BRICK_NODES; ++j) {
    for (int i = 1; i <= j; ++i) {
      const BRICK_DYAD<V> C = brick_dyad(H, i, j);  // the block of it: elastic_block() of linear_blocks.h
      const int r = 3 * i - 3;
      const int s = 3 * j - 3;
      K.place(D.direct * C.xx + D.shear * (C.yy + C.zz), r, s);
      K.place(D.cross * C.xy + D.shear * C.yx, r, s + 1);
      K.place(D.direct * C.yy + D.shear * (C.zz + C.xx), r + 1, s + 1);
      K.place(D.cross * C.xz + D.shear * C.zx, r, s + 2);
      K.place(D.cross * C.yz + D.shear * C.zy, r + 1, s + 2);
      K.place(D.direct * C.zz + D.shear * (C.xx + C.yy), r + 2, s + 2);
      if (i == j) continue;
      K.place(D.cross * C.yx + D.shear * C.xy, r + 1, s);
      K.place(D.cross * C.zx + D.shear * C.xz, r + 2, s);
      K.place(D.cross * C.zy + D.shear * C.yz, r + 2, s + 1);
    }
  }
  if (!all_finite(packed, SYM(ORDER, ORDER))) return false;
  scatter_symmetric<ORDER>(packed, out);
  return true;
}

#endif
