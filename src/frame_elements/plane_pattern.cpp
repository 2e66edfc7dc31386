// plane_pattern.cpp: matrices of a member from local axes to the solver's.
#include "frame_elements/plane_pattern.h"

#include <cmath>

#include "common/clear.h"
#include "common/member_order.h"
#include "frame_elements/member_axes.h"

namespace {

constexpr int GROUP = 3;

// The bits of entries that are not what they should be: differences of two numbers, which are zeros of either sign
// only for equal finite ones.
struct DEVIATION {
  LANE_BITS set{};

  void from_zero(const double* pair) { set = set | bits_of(lanes_at(pair)); }
  void from(const double* pair, double first, double second) {
    set = set | bits_of(lanes_at(pair) - LANES{first, second});
  }
  bool none() const { return static_cast<std::uint64_t>(set[0] | set[1]) << 1U == 0; }  // zeros of either sign
};

// Six rows of three columns of T: a translation and the rotation after it.
void expect_zeros(const double* rows, DEVIATION& deviation) {
  for (int j = 0; j < GROUP; ++j) {
    for (int i = 0; i < 2 * GROUP; i += 2) deviation.from_zero(rows + MEMBER_DOFS * j + i);
  }
}

// Is T = diag(R, R, R, R), R finite?
bool repeats(const double* T, const MATRIX<GROUP, GROUP>& R) {
  constexpr int HALF = 2 * GROUP;
  DEVIATION deviation;
  for (int end = 0; end < MEMBER_DOFS; end += HALF) {
    const double* const u = T + MEMBER_DOFS * end;  // columns of the translations of an end, then of its rotations
    const double* const theta = u + MEMBER_DOFS * GROUP;
    expect_zeros(u + HALF - end, deviation);
    expect_zeros(theta + HALF - end, deviation);
    for (int j = 0; j < GROUP; ++j) {
      const double* const of_u = u + MEMBER_DOFS * j + end;
      const double* const of_theta = theta + MEMBER_DOFS * j + end;
      deviation.from(of_u, R(1, j + 1), R(2, j + 1));
      deviation.from(of_u + 2, R(3, j + 1), 0.0);
      deviation.from_zero(of_u + 4);
      deviation.from_zero(of_theta);
      deviation.from(of_theta + 2, 0.0, R(1, j + 1));
      deviation.from(of_theta + 4, R(2, j + 1), R(3, j + 1));
    }
  }
  return deviation.none();
}

// A symmetric block at `corner`, from its entries (11, 21), (22, 32), (31, 33).
void store_symmetric(double* corner, LANES e11_21, LANES e22_32, LANES e31_33) {
  store_lanes(corner, e11_21);
  corner[2] = e31_33[0];
  store_lanes(corner + MEMBER_DOFS, LANES{e11_21[1], e22_32[0]});
  corner[MEMBER_DOFS + 2] = e22_32[1];
  store_lanes(corner + 2 * MEMBER_DOFS, LANES{e31_33[0], e22_32[1]});
  corner[2 * MEMBER_DOFS + 2] = e31_33[1];
}

// Two blocks side by side, the first lane of each entry at `first`, the second at `second`: both b := R' b R.
void turn_blocks(const LANES (&R)[GROUP][GROUP], double* first, double* second) {
  LANES t[GROUP][GROUP];  // b R, by columns as R
  for (int i = 0; i < GROUP; ++i) {
    const LANES b1{first[i], second[i]};
    const LANES b2{first[MEMBER_DOFS + i], second[MEMBER_DOFS + i]};
    const LANES b3{first[2 * MEMBER_DOFS + i], second[2 * MEMBER_DOFS + i]};
    for (int j = 0; j < GROUP; ++j) t[j][i] = b1 * R[j][0] + b2 * R[j][1] + b3 * R[j][2];
  }
  for (int j = 0; j < GROUP; ++j) {
    for (int i = 0; i < GROUP; ++i) {
      const LANES b = R[i][0] * t[j][0] + R[i][1] * t[j][1] + R[i][2] * t[j][2];
      first[MEMBER_DOFS * j + i] = b[0];
      second[MEMBER_DOFS * j + i] = b[1];
    }
  }
}

}  // namespace

PLANE_ROTATION::PLANE_ROTATION(const double* T) {
  const MATRIX_VIEW<MEMBER_DOFS, const double> TV(T);
  for (int j = 1; j <= GROUP; ++j) {
    for (int i = 1; i <= GROUP; ++i) R_(i, j) = TV(i, j);
  }
  r11_ = dyad({{R_(1, 1), R_(1, 2), R_(1, 3)}});
  r22_ = dyad({{R_(2, 1), R_(2, 2), R_(2, 3)}});
  r33_ = dyad({{R_(3, 1), R_(3, 2), R_(3, 3)}});
  const LANES r2_12{R_(2, 1), R_(2, 2)};
  r23_.e11_21 = r2_12 * R_(3, 1);
  r23_.e12_22 = r2_12 * R_(3, 2);
  r23_.e13_23 = r2_12 * R_(3, 3);
  r23_.e31_32 = R_(2, 3) * LANES{R_(3, 1), R_(3, 2)};
  r23_.e33 = R_(2, 3) * R_(3, 3);
  const LANES sum = sum_of(r11_) + sum_of(r22_) + sum_of(r33_);
  usable_ = repeats(T, R_) && std::isfinite(sum[0] + sum[1]);
}

PLANE_ROTATION::SYMMETRIC PLANE_ROTATION::dyad(const VECTOR<3>& r) {
  return {r(1) * LANES{r(1), r(2)}, r(2) * LANES{r(2), r(3)}, r(3) * LANES{r(1), r(3)}};
}

LANES PLANE_ROTATION::sum_of(const SYMMETRIC& s) { return s.e11_21 + s.e22_32 + s.e31_33; }

// k1 r1 r1' + k2 r2 r2' + k3 r3 r3', symmetric in itself, at a pair of groups and its mirror.
inline void PLANE_ROTATION::place_alike(double k1, double k2, double k3, int row, int column, double* K) const {
  const LANES e11_21 = k1 * r11_.e11_21 + k2 * r22_.e11_21 + k3 * r33_.e11_21;
  const LANES e22_32 = k1 * r11_.e22_32 + k2 * r22_.e22_32 + k3 * r33_.e22_32;
  const LANES e31_33 = k1 * r11_.e31_33 + k2 * r22_.e31_33 + k3 * r33_.e31_33;
  store_symmetric(K + MEMBER_DOFS * column + row, e11_21, e22_32, e31_33);
  if (row != column) store_symmetric(K + MEMBER_DOFS * row + column, e11_21, e22_32, e31_33);
}

// k23 r2 r3' + k32 r3 r2' at a pair of groups, its transpose at the mirror. r3 r2' has the entries (11, 12), (21, 22)
// of r2 r3' in its first columns, and (31, 32) and (13, 23) change places.
inline void PLANE_ROTATION::place_crossed(double k23, double k32, int row, int column, double* K) const {
  const CROSSED& D = r23_;
  const LANES e11_21 = k23 * D.e11_21 + k32 * LANES{D.e11_21[0], D.e12_22[0]};
  const LANES e12_22 = k23 * D.e12_22 + k32 * LANES{D.e11_21[1], D.e12_22[1]};
  const LANES e13_23 = k23 * D.e13_23 + k32 * D.e31_32;
  const LANES e31_32 = k23 * D.e31_32 + k32 * D.e13_23;
  const double e33 = k23 * D.e33 + k32 * D.e33;

  double* const block = K + MEMBER_DOFS * column + row;
  store_lanes(block, e11_21);
  block[2] = e31_32[0];
  store_lanes(block + MEMBER_DOFS, e12_22);
  block[MEMBER_DOFS + 2] = e31_32[1];
  store_lanes(block + 2 * MEMBER_DOFS, e13_23);
  block[2 * MEMBER_DOFS + 2] = e33;

  double* const mirror = K + MEMBER_DOFS * row + column;
  store_lanes(mirror, LANES{e11_21[0], e12_22[0]});
  mirror[2] = e13_23[0];
  store_lanes(mirror + MEMBER_DOFS, LANES{e11_21[1], e12_22[1]});
  mirror[MEMBER_DOFS + 2] = e13_23[1];
  store_lanes(mirror + 2 * MEMBER_DOFS, e31_32);
  mirror[2 * MEMBER_DOFS + 2] = e33;
}

void PLANE_ROTATION::turn(const PLANE_MATRIX& P, double* K) const {
  constexpr int U1 = 0, THETA1 = 3, U2 = 6, THETA2 = 9;  // where the groups begin
  place_alike(P(1, 1), P(2, 2), P(3, 3), U1, U1, K);
  place_alike(P(4, 4), P(5, 5), P(6, 6), THETA1, THETA1, K);
  place_alike(P(7, 7), P(8, 8), P(9, 9), U2, U2, K);
  place_alike(P(10, 10), P(11, 11), P(12, 12), THETA2, THETA2, K);
  place_alike(P(7, 1), P(8, 2), P(9, 3), U2, U1, K);
  place_alike(P(10, 4), P(11, 5), P(12, 6), THETA2, THETA1, K);
  place_crossed(P(5, 3), P(6, 2), THETA1, U1, K);
  place_crossed(P(8, 6), P(9, 5), U2, THETA1, K);
  place_crossed(P(11, 3), P(12, 2), THETA2, U1, K);
  place_crossed(P(11, 9), P(12, 8), THETA2, U2, K);
}

bool PLANE_ROTATION::turn(double* K) const {
  if (!all_finite(K, MEMBER_DOFS * MEMBER_DOFS)) return false;
  LANES R[GROUP][GROUP];
  for (int j = 0; j < GROUP; ++j) {
    for (int i = 0; i < GROUP; ++i) R[j][i] = LANES{R_(i + 1, j + 1), R_(i + 1, j + 1)};
  }
  for (int j = 0; j < MEMBER_DOFS; j += GROUP) {
    double* const column = K + MEMBER_DOFS * j;
    turn_blocks(R, column, column + GROUP);
    turn_blocks(R, column + 2 * GROUP, column + 3 * GROUP);
  }
  return true;
}

void turn_planes(const PLANE_ROTATION& rotation, const PLANE_MATRIX& P, const double* T, std::int32_t second,
                 const double* T2, double* K) {
  if (rotation.usable() && all_finite(P)) {
    rotation.turn(P, K);
  } else {
    write_planes(P, K);
    to_solver_axes<MEMBER_DOFS>(T, K);
  }
  if (second > 0) to_solver_axes<MEMBER_DOFS>(T2, K);
}

void turn_full(const PLANE_ROTATION& rotation, const double* T, std::int32_t second, const double* T2, double* K) {
  if (!rotation.usable() || !rotation.turn(K)) to_solver_axes<MEMBER_DOFS>(T, K);
  if (second > 0) to_solver_axes<MEMBER_DOFS>(T2, K);
}

// T' 0 T is 0 for a finite T, and NaN wherever the full product meets a value that is not finite.
void turn_zero(const PLANE_ROTATION& rotation, const double* T, std::int32_t second, const double* T2, double* K) {
  clear(K, MEMBER_DOFS * MEMBER_DOFS);
  const bool first_finite = rotation.usable() || all_finite(T, MEMBER_DOFS * MEMBER_DOFS);
  if (first_finite && (second <= 0 || all_finite(T2, MEMBER_DOFS * MEMBER_DOFS))) return;
  to_solver_axes<MEMBER_DOFS>(T, K);
  if (second > 0) to_solver_axes<MEMBER_DOFS>(T2, K);
}
