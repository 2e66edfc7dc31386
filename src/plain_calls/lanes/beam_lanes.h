// beam_lanes.h: the stiffness of beams, one in every lane of V, in global axes. It puts the formulas of the beam
// together (plain_calls/member_frame.cpp, frame_elements/beam_planes.cpp, frame_elements/plane_pattern.cpp): each entry
// is made by the same operations in the same order.
#ifndef FINITES_BEAM_LANES_H
#define FINITES_BEAM_LANES_H

#include "common/lane_pair.h"
#include "finites/views.hpp"
#include "frame_elements/bending_formulas.h"
#include "plain_calls/lanes/beam_limits.h"
#include "plain_calls/lanes/gather.h"
#include "plain_calls/lanes/lane_conditions.h"
#include "plain_calls/lanes/lane_kernels.h"

template <class V>
using BEAM_VECTOR = VECTOR<3, V>;

template <class V>
inline BEAM_VECTOR<V> beam_cross(const BEAM_VECTOR<V>& a, const BEAM_VECTOR<V>& b) {
  return {{a(2) * b(3) - a(3) * b(2), a(3) * b(1) - a(1) * b(3), a(1) * b(2) - a(2) * b(1)}};
}

template <class V>
inline V beam_square(const BEAM_VECTOR<V>& a) {
  return a(1) * a(1) + a(2) * a(2) + a(3) * a(3);
}

template <class V>
inline BEAM_VECTOR<V> beam_divided(const BEAM_VECTOR<V>& a, const V& by) {
  return {{a(1) / by, a(2) / by, a(3) / by}};
}

template <class V>
inline V beam_larger(const V& a, const V& b) {  // of sizes: neither is negative
  const auto first = a > b;
  return where(first, a) + where(decltype(first)(~first), b);
}

template <class V>
inline V beam_largest(const BEAM_VECTOR<V>& a) {
  return beam_larger(magnitude(a(1)), beam_larger(magnitude(a(2)), magnitude(a(3))));
}

template <class V>
struct BEAM_ENDS_OF {
  BEAM_VECTOR<V> first, second, along;
};

template <class V>
inline BEAM_ENDS_OF<V> beam_ends(const BEAM_LANES& beams) {
  V xyz[6];
  gather(beams.xyz, xyz);
  BEAM_ENDS_OF<V> ends;
  for (int i = 1; i <= 3; ++i) {
    ends.first(i) = xyz[i - 1] + beams.common->offset[0][i - 1];
    ends.second(i) = xyz[i + 2] + beams.common->offset[1][i - 1];
    ends.along(i) = ends.second(i) - ends.first(i);
  }
  return ends;
}

template <class V>
inline BEAM_VECTOR<V> beam_up(const BEAM_LANES& beams) {
  BEAM_VECTOR<V> up;
  gather(beams.up, up.V);
  return up;
}

// The usual direction: global z, or global x where the member runs along z.
template <class V>
inline BEAM_VECTOR<V> usual_up(const BEAM_VECTOR<V>& x) {
  const V one = 1.0 - V{};
  const auto upright = root(beam_square(beam_cross(x, BEAM_VECTOR<V>{{V{}, V{}, one}}))) > LEAST_SINE;
  return {{where(decltype(upright)(~upright), one), V{}, where(upright, one)}};
}

// Rows: the local x, y, z.
template <class V>
struct BEAM_FRAME_OF {
  V length;
  BEAM_VECTOR<V> x, y, z;
};

// False where a direction runs along its member.
template <class V>
inline bool beam_frame(const BEAM_LANES& beams, BEAM_FRAME_OF<V>& frame) {
  const BEAM_ENDS_OF<V> ends = beam_ends<V>(beams);
  frame.length = root(beam_square(ends.along));
  frame.x = beam_divided(ends.along, frame.length);
  BEAM_VECTOR<V> up;
  if (beams.usual_direction) {
    up = usual_up(frame.x);
  } else {
    up = beam_up<V>(beams);
    up = beam_divided(up, beam_largest(up));
  }
  const BEAM_VECTOR<V> side = beam_cross(frame.x, up);
  const V size = root(beam_square(side));
  LANE_CONDITIONS<V> conditions;
  conditions.expect(size > LEAST_SINE * root(beam_square(up)));
  frame.z = beam_divided(side, size);
  frame.y = beam_cross(frame.z, frame.x);
  return conditions.all();
}

// The stiffness in local axes: axial force, torsion and bending.
template <class V>
struct BEAM_STIFFNESS_OF {
  V axial, torsion;
  BENDING_OF<LANE_PAIR<V>> bending;
};

template <class V>
inline BEAM_STIFFNESS_OF<V> beam_stiffness(const BEAM_LANES& beams, const V& length) {
  using L = LANE_PAIR<V>;
  const finites_beam& b = *beams.common;
  const V E = gathered<V>(beams.E);
  const V E2 = b.E2 > 0.0 ? of_all<V>(b.E2) : E;
  const V G = gathered<V>(beams.G);
  const V Iz = gathered<V>(beams.Iz);
  const V Iy = gathered<V>(beams.Iy);
  V pz{}, py{};
  if (b.shear_area_y > 0.0) pz = shear_parameter_of(E, Iz, G, b.shear_area_y, length);
  if (b.shear_area_z > 0.0) py = shear_parameter_of(E2, Iy, G, b.shear_area_z, length);
  return {E * gathered<V>(beams.area) / length, G * gathered<V>(beams.J) / length,
          bending_of(L(E, E2), L(Iz, Iy), length, L(pz, py), pair_of_all<L>(b.fixity_z[0], b.fixity_y[0]),
                     pair_of_all<L>(b.fixity_z[1], b.fixity_y[1]))};
}

// Blocks of three degrees of freedom in global axes, by their first row and column from 0. r1, r2, r3 are x, y, z.
template <class V>
class BEAM_BLOCKS {
 public:
  BEAM_BLOCKS(const BEAM_FRAME_OF<V>& frame, V* packed) : K_{packed} {
    dyad(frame.x, r11_);
    dyad(frame.y, r22_);
    dyad(frame.z, r33_);
    for (int j = 1; j <= 3; ++j) {
      for (int i = 1; i <= 3; ++i) r23_(i, j) = frame.y(i) * frame.z(j);
    }
  }

  // k1 r1 r1' + k2 r2 r2' + k3 r3 r3'.
  void place_alike(const V& k1, const V& k2, const V& k3, int row, int column) const {
    for (int j = 1; j <= 3; ++j) {
      for (int i = j; i <= 3; ++i) {
        const int d = SYM(j, i) - 1;
        const V value = k1 * r11_[d] + k2 * r22_[d] + k3 * r33_[d];
        K_.place(value, column + j - 1, row + i - 1);
        if (row != column && i != j) K_.place(value, column + i - 1, row + j - 1);
      }
    }
  }

  // k23 r2 r3' + k32 r3 r2', below the diagonal.
  void place_crossed(const V& k23, const V& k32, int row, int column) const {
    for (int j = 1; j <= 3; ++j) {
      for (int i = 1; i <= 3; ++i) K_.place(k23 * r23_(i, j) + k32 * r23_(j, i), column + j - 1, row + i - 1);
    }
  }

 private:
  static void dyad(const BEAM_VECTOR<V>& r, V (&d)[6]) {
    for (int j = 1; j <= 3; ++j) {
      for (int i = 1; i <= j; ++i) d[SYM(i, j) - 1] = r(i) * r(j);
    }
  }

  PACKED_MATRIX<V> K_;
  V r11_[6], r22_[6], r33_[6];
  MATRIX<3, 3, V> r23_;
};

template <class V>
bool beam_lanes(const BEAM_LANES& beams, const LANE_OUTPUT& out) {
  constexpr int ORDER = 12;
  constexpr int U1 = 0, THETA1 = 3, U2 = 6, THETA2 = 9;  // where the groups begin
  constexpr int z = 0, y = 1;                            // lanes: bending in x-y, in x-z
  BEAM_FRAME_OF<V> frame;
  if (!beam_frame(beams, frame)) return false;
  const BEAM_STIFFNESS_OF<V> k = beam_stiffness(beams, frame.length);
  const BENDING_OF<LANE_PAIR<V>>& b = k.bending;
  V packed[SYM(ORDER, ORDER)];
  const BEAM_BLOCKS<V> blocks(frame, packed);
  for (const int end : {U1, U2}) blocks.place_alike(k.axial, b.shear[z], b.shear[y], end, end);
  blocks.place_alike(k.torsion, b.end1[y], b.end1[z], THETA1, THETA1);
  blocks.place_alike(k.torsion, b.end2[y], b.end2[z], THETA2, THETA2);
  blocks.place_alike(-k.axial, -b.shear[z], -b.shear[y], U2, U1);
  blocks.place_alike(-k.torsion, b.cross[y], b.cross[z], THETA2, THETA1);
  blocks.place_crossed(-b.couple1[y], b.couple1[z], THETA1, U1);
  blocks.place_crossed(-b.couple1[z], b.couple1[y], U2, THETA1);
  blocks.place_crossed(-b.couple2[y], b.couple2[z], THETA2, U1);
  blocks.place_crossed(b.couple2[y], -b.couple2[z], THETA2, U2);
  if (!all_finite(packed, SYM(ORDER, ORDER))) return false;
  scatter_symmetric<ORDER>(packed, out);
  return true;
}

// What surely_reads() asks of each beam; of what they share it is asked with the first.
template <class V>
bool beams_pass(const BEAM_LANES& beams) {
  using LIMITS = SURE_LIMITS;
  LANE_CONDITIONS<V> conditions;
  for (const LANE_INPUT* const constant : {&beams.E, &beams.G, &beams.area, &beams.Iz, &beams.Iy, &beams.J}) {
    const V value = gathered<V>(*constant);
    conditions.expect(value > LIMITS::SMALL);
    conditions.expect(value < LIMITS::LARGE);
  }
  const V density = gathered<V>(beams.density);
  conditions.expect(density >= 0.0);
  conditions.expect(density < LIMITS::LARGE);
  const BEAM_ENDS_OF<V> ends = beam_ends<V>(beams);
  const V largest = beam_larger(beam_largest(ends.first), beam_largest(ends.second));
  const V square = beam_square(ends.along);
  conditions.expect(largest < LIMITS::LARGE);
  conditions.expect(square > LIMITS::SHORT * LIMITS::SHORT);
  conditions.expect(square > LIMITS::APART * LIMITS::APART * largest * largest);
  if (beams.usual_direction) return conditions.all();
  const BEAM_VECTOR<V> up = beam_up<V>(beams);
  const V of_up = beam_square(up);
  conditions.expect(beam_largest(up) < LIMITS::LARGE);
  conditions.expect(of_up > LIMITS::SHORT * LIMITS::SHORT);
  conditions.expect(beam_square(beam_cross(ends.along, up)) > LIMITS::SINE * LIMITS::SINE * of_up * square);
  return conditions.all();
}

#endif
