// plate_checks_lanes.h: the checks of isotropic plates without offsets (plate_checks.cpp), one plate in every lane of
// V.
//
// The bounds are those of the single call moved to the safe side by a factor, so that a plate that passes here passes
// there whatever the rounding.
#ifndef FINITES_PLATE_CHECKS_LANES_H
#define FINITES_PLATE_CHECKS_LANES_H

#include "common/lane_pair.h"
#include "finites/views.hpp"
#include "plain_calls/lanes/gather.h"
#include "plain_calls/lanes/lane_conditions.h"
#include "plain_calls/lanes/lane_kernels.h"
#include "shells/common/frame.h"

constexpr double LANES_LARGEST = 1e29;
constexpr double LANES_SMALLEST = 1e-29;
constexpr double LANES_NO_LENGTH = 1e-11;

template <class V>
inline void expect_section(const PLATE_LANES& plates, LANE_CONDITIONS<V>& conditions) {
  const V h = gathered<V>(plates.h);
  const V E = gathered<V>(plates.E);
  const V nu = gathered<V>(plates.nu);
  const V density = gathered<V>(plates.density);
  conditions.expect(h > LANES_SMALLEST);
  conditions.expect(h < LANES_LARGEST);
  conditions.expect(E > LANES_SMALLEST);
  conditions.expect(E < LANES_LARGEST);
  conditions.expect(nu > -1.0);
  conditions.expect(nu <= 0.5);
  conditions.expect(density >= 0.0);
  conditions.expect(density < LANES_LARGEST);
}

template <class V>
inline V square_of(const VECTOR<3, V>& v) {
  return v(1) * v(1) + v(2) * v(2) + v(3) * v(3);
}

// The longest side is not above the root of the sum of all squares.
template <int NODES, class V>
bool plates_pass(const PLATE_LANES& plates) {
  LANE_CONDITIONS<V> conditions;
  expect_section(plates, conditions);
  V xyz[3 * NODES];
  gather(plates.xyz, xyz);
  for (const V& x : xyz) conditions.expect(magnitude(x) < LANES_LARGEST);

  VECTOR<3, V> d[NODES];
  V square[NODES + 2];
  V sum{};
  for (int i = 0; i < NODES; ++i) {
    d[i] = difference(node_of(xyz, i + 1 == NODES ? 1 : i + 2), node_of(xyz, i + 1));
    square[i] = square_of(d[i]);
    sum = sum + square[i];
  }
  square[NODES] = square[NODES + 1] = sum;
  if constexpr (NODES == 4) {
    square[NODES] = square_of(difference(node_of(xyz, 3), node_of(xyz, 1)));
    square[NODES + 1] = square_of(difference(node_of(xyz, 4), node_of(xyz, 2)));
  }
  for (const V& s : square) {
    conditions.expect(s > LANES_NO_LENGTH * LANES_NO_LENGTH * sum);
    conditions.expect(s > LANES_SMALLEST * LANES_SMALLEST);
  }

  const VECTOR<3, V> normal = cross(d[NODES - 1], d[0]);
  const V limit = LANES_NO_LENGTH * sum * root(square_of(normal));
  for (int i = 0; i < NODES; ++i) {
    const VECTOR<3, V> n = cross(d[i == 0 ? NODES - 1 : i - 1], d[i]);
    conditions.expect(n(1) * normal(1) + n(2) * normal(2) + n(3) * normal(3) > limit);
  }
  return conditions.all();
}

#endif
