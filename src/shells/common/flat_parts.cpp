// flat_parts.cpp: the turn of a flat element's matrix to global axes, from its parts straight into the full matrix.
//
// The block of the translations of two nodes and the block of their rotations have the same entries, so that they are
// turned side by side, one in each lane.
#include "shells/common/flat_parts.h"

#include <algorithm>

#include "common/finiteness.h"
#include "common/lanes.h"
#include "shells/common/packed.h"

namespace {

// The places of the parts among the degrees of freedom.
template <int NODES>
struct PLACES;

template <>
struct PLACES<3> {
  static constexpr const int (&MEMBRANE)[6] = TRI_MEMBRANE_DOF;
  static constexpr const int (&PLATE)[9] = TRI_BENDING_DOF;
  static constexpr const int (&DRILLING)[3] = TRI_DRILL_DOF;
};

template <>
struct PLACES<4> {
  static constexpr const int (&MEMBRANE)[8] = QUAD_MEMBRANE_DOF;
  static constexpr const int (&PLATE)[12] = QUAD_BENDING_DOF;
  static constexpr const int (&DRILLING)[4] = QUAD_DRILL_DOF;
};

template <int N>
void packed_pick(const double* K, const int (&freedoms)[N], double* part) {
  for (int j = 0; j < N; ++j) {
    for (int i = 0; i <= j; ++i) *part++ = K[SYM(freedoms[i], freedoms[j]) - 1];
  }
}

// Entries of the parts for the nodes i <= j: d, e = 1, 2 for u, v; d, e = 1, 2, 3 for w, theta x, theta y.
template <int NODES>
struct NODE_ENTRIES {
  const FLAT_PARTS<NODES>& parts;
  int i, j;

  double membrane(int d, int e) const { return parts.membrane[SYM(2 * i + d, 2 * j + e) - 1]; }
  double plate(int d, int e) const { return parts.plate[SYM(3 * i + d, 3 * j + e) - 1]; }
  double drilling() const { return parts.drilling[SYM(i + 1, j + 1) - 1]; }
};

// Rows of AXES, each entry in both lanes.
struct FLAT_ROTATION {
  VECTOR<3, LANES> a1, a2, a3;

  explicit FLAT_ROTATION(const MATRIX<3, 3>& AXES) {
    for (int i = 1; i <= 3; ++i) {
      a1(i) = both(AXES(1, i));
      a2(i) = both(AXES(2, i));
      a3(i) = both(AXES(3, i));
    }
  }
};

// An entry at (i, j) and its mirror.
template <int ORDER>
inline void place(double value, int i, int j, double* matrix) {
  matrix[j * ORDER + i] = value;
  matrix[i * ORDER + j] = value;
}

// The blocks of two nodes: of their translations (first lane) and rotations (second lane), then w by the rotations and
// the rotations by w.
struct NODE_BLOCKS {
  LANES b11, b21, b12, b22, b33;
  double w_tx, w_ty, tx_w, ty_w;

  template <int NODES>
  explicit NODE_BLOCKS(const NODE_ENTRIES<NODES>& b)
      : b11(LANES{b.membrane(1, 1), b.plate(2, 2)}),
        b21(LANES{b.membrane(2, 1), b.plate(3, 2)}),
        b12(LANES{b.membrane(1, 2), b.plate(2, 3)}),
        b22(LANES{b.membrane(2, 2), b.plate(3, 3)}),
        b33(LANES{b.plate(1, 1), b.drilling()}),
        w_tx(b.plate(1, 2)),
        w_ty(b.plate(1, 3)),
        tx_w(b.plate(2, 1)),
        ty_w(b.plate(3, 1)) {}
};

// Column J of the four blocks, the first of which begins at (row, column) of the matrix, counted from 0.
template <int ORDER, int J>
inline void place_column(const FLAT_ROTATION& R, const NODE_BLOCKS& b, int row, int column, double* matrix) {
  const LANES t1 = b.b11 * R.a1(J) + b.b12 * R.a2(J);
  const LANES t2 = b.b21 * R.a1(J) + b.b22 * R.a2(J);
  const LANES t3 = b.b33 * R.a3(J);
  const double t_w = b.w_tx * R.a1(J)[0] + b.w_ty * R.a2(J)[0];
  const double t_tx = b.tx_w * R.a3(J)[0];
  const double t_ty = b.ty_w * R.a3(J)[0];
  for (int i = 1; i <= 3; ++i) {
    const LANES alike = R.a1(i) * t1 + R.a2(i) * t2 + R.a3(i) * t3;
    place<ORDER>(alike[0], row + i - 1, column + J - 1, matrix);
    place<ORDER>(alike[1], row + i + 2, column + J + 2, matrix);
    place<ORDER>(R.a3(i)[0] * t_w, row + i - 1, column + J + 2, matrix);
    place<ORDER>(R.a1(i)[0] * t_tx + R.a2(i)[0] * t_ty, row + i + 2, column + J - 1, matrix);
  }
}

// The same of a node with itself: the upper triangle counts.
template <int ORDER, int J>
inline void place_diagonal_column(const FLAT_ROTATION& R, const NODE_BLOCKS& b, int at, double* matrix) {
  const LANES t1 = b.b11 * R.a1(J) + b.b12 * R.a2(J);
  const LANES t2 = b.b12 * R.a1(J) + b.b22 * R.a2(J);
  const LANES t3 = b.b33 * R.a3(J);
  const double t_w = b.w_tx * R.a1(J)[0] + b.w_ty * R.a2(J)[0];
  for (int i = 1; i <= J; ++i) {
    const LANES alike = R.a1(i) * t1 + R.a2(i) * t2 + R.a3(i) * t3;
    place<ORDER>(alike[0], at + i - 1, at + J - 1, matrix);
    place<ORDER>(alike[1], at + i + 2, at + J + 2, matrix);
  }
  for (int i = 1; i <= 3; ++i) place<ORDER>(R.a3(i)[0] * t_w, at + i - 1, at + J + 2, matrix);
}

template <int NODES>
void turn_parts(const MATRIX<3, 3>& AXES, const FLAT_PARTS<NODES>& parts, double* matrix) {
  constexpr int ORDER = 6 * NODES;
  const FLAT_ROTATION R(AXES);
  for (int j = 0; j < NODES; ++j) {
    for (int i = 0; i < j; ++i) {
      const NODE_BLOCKS b(NODE_ENTRIES<NODES>{parts, i, j});
      place_column<ORDER, 1>(R, b, 6 * i, 6 * j, matrix);
      place_column<ORDER, 2>(R, b, 6 * i, 6 * j, matrix);
      place_column<ORDER, 3>(R, b, 6 * i, 6 * j, matrix);
    }
    const NODE_BLOCKS b(NODE_ENTRIES<NODES>{parts, j, j});
    place_diagonal_column<ORDER, 1>(R, b, 6 * j, matrix);
    place_diagonal_column<ORDER, 2>(R, b, 6 * j, matrix);
    place_diagonal_column<ORDER, 3>(R, b, 6 * j, matrix);
  }
}

template <int NODES>
bool finite_parts(const FLAT_PARTS<NODES>& parts) {
  const bool membrane = all_finite(parts.membrane, SYM(2 * NODES, 2 * NODES));
  const bool plate = all_finite(parts.plate, SYM(3 * NODES, 3 * NODES));
  return membrane && plate && all_finite(parts.drilling, SYM(NODES, NODES));
}

// Infinities and NaN go through the full products, which carry them into all that they touch.
template <int NODES>
void turn_by_full_products(const MATRIX<3, 3>& AXES, double* K, double* matrix) {
  packed_to_global(AXES, 2 * NODES, K);
  UNPACK_SYMMETRIC(6 * NODES, SYM(6 * NODES, 6 * NODES), K, matrix);
}

}  // namespace

template <int NODES>
void assemble_parts(const FLAT_PARTS<NODES>& parts, double* K) {
  std::fill_n(K, SYM(6 * NODES, 6 * NODES), 0.0);
  packed_add(K, parts.membrane, PLACES<NODES>::MEMBRANE);
  packed_add(K, parts.plate, PLACES<NODES>::PLATE);
  packed_add(K, parts.drilling, PLACES<NODES>::DRILLING);
}

template <int NODES>
FLAT_PARTS<NODES> parts_of(const double* K) {
  FLAT_PARTS<NODES> parts;
  packed_pick(K, PLACES<NODES>::MEMBRANE, parts.membrane);
  packed_pick(K, PLACES<NODES>::PLATE, parts.plate);
  packed_pick(K, PLACES<NODES>::DRILLING, parts.drilling);
  return parts;
}

template <int NODES>
void flat_to_global(const MATRIX<3, 3>& AXES, const FLAT_PARTS<NODES>& parts, double* matrix) {
  if (finite_parts(parts) && all_finite(AXES.data(), 9)) {
    turn_parts(AXES, parts, matrix);
    return;
  }
  double K[SYM(6 * NODES, 6 * NODES)];
  assemble_parts(parts, K);
  turn_by_full_products<NODES>(AXES, K, matrix);
}

template <int NODES>
void flat_to_global(const MATRIX<3, 3>& AXES, double* K, double* matrix) {
  if (all_finite(K, SYM(6 * NODES, 6 * NODES)) && all_finite(AXES.data(), 9)) {
    turn_parts(AXES, parts_of<NODES>(K), matrix);
    return;
  }
  turn_by_full_products<NODES>(AXES, K, matrix);
}

template void assemble_parts(const FLAT_PARTS<3>& parts, double* K);
template void assemble_parts(const FLAT_PARTS<4>& parts, double* K);
template FLAT_PARTS<3> parts_of<3>(const double* K);
template FLAT_PARTS<4> parts_of<4>(const double* K);
template void flat_to_global(const MATRIX<3, 3>& AXES, const FLAT_PARTS<3>& parts, double* matrix);
template void flat_to_global(const MATRIX<3, 3>& AXES, const FLAT_PARTS<4>& parts, double* matrix);
template void flat_to_global<3>(const MATRIX<3, 3>& AXES, double* K, double* matrix);
template void flat_to_global<4>(const MATRIX<3, 3>& AXES, double* K, double* matrix);
