// plane_pattern.cpp: matrices of a beam from local axes to the solver's, by the pattern of its planes.
#include "frame_elements/plane_pattern.h"

namespace {

constexpr int DOFS = 12;

// The bits of COUNT values beside their signs, one upon the other: 0 when all are zeros of either sign.
template <int COUNT>
std::uint64_t magnitude(const double* values) {
  std::uint64_t bits[COUNT];
  std::memcpy(bits, values, sizeof bits);
  std::uint64_t set = 0;
  for (const std::uint64_t b : bits) set |= b;
  return set << 1;
}

// Is T zero outside its four diagonal blocks? Between the blocks of two columns lie nine entries, twelve where the next
// block begins.
bool block_diagonal(const double* T) {
  std::uint64_t set = 0;
  const double* after = T + 3;  // the first entry after a column of a block
  for (int group = 0; group < 4; ++group, after += 15) {
    set |= magnitude<9>(after) | magnitude<9>(after + 12);
    after += 24;
    if (group < 3) set |= magnitude<12>(after);
  }
  return set == 0;
}

// Are the four blocks the same, bit by bit?
bool same_blocks(const double* T) {
  std::uint64_t apart = 0;
  for (int j = 0; j < 3; ++j) {
    std::uint64_t first[3];
    std::memcpy(first, T + DOFS * j, sizeof first);
    for (int block = 1; block < 4; ++block) {
      std::uint64_t other[3];
      std::memcpy(other, T + (DOFS + 1) * 3 * block + DOFS * j, sizeof other);
      for (int i = 0; i < 3; ++i) apart |= first[i] ^ other[i];
    }
  }
  return apart == 0;
}

// x - x is 0, or NaN where x is infinite or NaN.
template <int N>
double not_finite(const double (&values)[N]) {
  double sum = 0.0;
  for (const double x : values) sum += x - x;
  return sum;
}

// The lower triangle of a symmetric 3 by 3 matrix, by columns of its upper one.
constexpr int ROW[6] = {1, 1, 2, 1, 2, 3};
constexpr int COLUMN[6] = {1, 2, 2, 3, 3, 3};

// Translations and rotations of both ends: the groups of three, and the pairs of them in the lower triangle.
constexpr int GROUPS = 4;
constexpr int PAIRS = GROUPS * (GROUPS + 1) / 2;

}  // namespace

PLANE_ROTATION::PLANE_ROTATION(const double* T) {
  const MATRIX_VIEW<DOFS, const double> R(T);
  for (int e = 0; e < 6; ++e) {
    r11_.V[e] = R(1, ROW[e]) * R(1, COLUMN[e]);
    r22_.V[e] = R(2, ROW[e]) * R(2, COLUMN[e]);
    r33_.V[e] = R(3, ROW[e]) * R(3, COLUMN[e]);
  }
  for (int j = 1; j <= 3; ++j) {
    for (int i = 1; i <= 3; ++i) r23_(i, j) = R(2, i) * R(3, j);
  }
  usable_ = block_diagonal(T) && same_blocks(T) && not_finite(r11_.V) + not_finite(r22_.V) + not_finite(r33_.V) == 0.0;
}

// k1 r1 r1' + k2 r2 r2' + k3 r3 r3', symmetric in itself, at a pair of groups and its mirror.
void PLANE_ROTATION::place_alike(const double* k, int row, int column, MATRIX_VIEW<DOFS> K) const {
  for (int e = 0; e < 6; ++e) {
    const double value = k[0] * r11_.V[e] + k[1] * r22_.V[e] + k[2] * r33_.V[e];
    const int i = ROW[e];
    const int j = COLUMN[e];
    K(row + i, column + j) = K(row + j, column + i) = value;
    K(column + i, row + j) = K(column + j, row + i) = value;
  }
}

// k23 r2 r3' + k32 r3 r2' at a pair of groups, its transpose at the mirror.
void PLANE_ROTATION::place_crossed(const double* k, int row, int column, MATRIX_VIEW<DOFS> K) const {
  for (int j = 1; j <= 3; ++j) {
    for (int i = 1; i <= 3; ++i) {
      K(row + i, column + j) = K(column + j, row + i) = k[0] * r23_(i, j) + k[1] * r23_(j, i);
    }
  }
}

bool PLANE_ROTATION::turn(double* K) const {
  const MATRIX_VIEW<DOFS> KV(K);
  double k[3 * PAIRS] = {};
  double* at = k;
  for (int column = 0; column < DOFS; column += 3) {
    for (int row = column; row < DOFS; row += 3, at += 3) {
      const bool alike = (row - column) % 6 == 0;
      at[0] = alike ? KV(row + 1, column + 1) : KV(row + 2, column + 3);
      at[1] = alike ? KV(row + 2, column + 2) : KV(row + 3, column + 2);
      if (alike) at[2] = KV(row + 3, column + 3);
    }
  }
  if (!(not_finite(k) == 0.0)) return false;
  at = k;
  for (int column = 0; column < DOFS; column += 3) {
    for (int row = column; row < DOFS; row += 3, at += 3) {
      if ((row - column) % 6 == 0) {
        place_alike(at, row, column, KV);
      } else {
        place_crossed(at, row, column, KV);
      }
    }
  }
  return true;
}

void turn_planes(const PLANE_ROTATION& rotation, const double* T, std::int32_t second, const double* T2, double* K) {
  if (!rotation.usable() || !rotation.turn(K)) to_solver_axes<DOFS>(T, K);
  if (second > 0) to_solver_axes<DOFS>(T2, K);
}
