// flat_formulas.h: the turn of a flat element's parts to global axes (flat_parts.h), of one element or of one in every
// lane.
//
// The block of the translations of two nodes and the block of their rotations have the same entries, so that they are
// turned side by side, one in each lane of a pair.
#ifndef FINITES_FLAT_FORMULAS_H
#define FINITES_FLAT_FORMULAS_H

#include "common/finiteness.h"
#include "common/lane_pair.h"
#include "finites/views.hpp"
#include "shells/common/flat_parts.h"

// Entries of the parts for the nodes i <= j: d, e = 1, 2 for u, v; d, e = 1, 2, 3 for w, theta x, theta y.
template <int NODES, class REAL>
struct NODE_ENTRIES {
  const FLAT_PARTS<NODES, REAL>& parts;
  int i, j;

  REAL membrane(int d, int e) const { return parts.membrane[SYM(2 * i + d, 2 * j + e) - 1]; }
  REAL plate(int d, int e) const { return parts.plate[SYM(3 * i + d, 3 * j + e) - 1]; }
  REAL drilling() const { return parts.drilling[SYM(i + 1, j + 1) - 1]; }
};

// Rows of AXES, each entry in both lanes.
template <class REAL>
struct FLAT_ROTATION {
  VECTOR<3, LANES_OF<REAL>> a1, a2, a3;

  explicit FLAT_ROTATION(const MATRIX<3, 3, REAL>& AXES) {
    for (int i = 1; i <= 3; ++i) {
      a1(i) = both(AXES(1, i));
      a2(i) = both(AXES(2, i));
      a3(i) = both(AXES(3, i));
    }
  }
};

// Where the entries of a symmetric matrix go, whose columns are LEADING apart; row and column are counted from 0.
template <int LEADING>
struct FULL_MATRIX {
  double* matrix;

  void place(double value, int i, int j) const {
    matrix[j * LEADING + i] = value;
    matrix[i * LEADING + j] = value;
  }
};

// The blocks of two nodes: of their translations (first lane) and rotations (second lane), then w by the rotations and
// the rotations by w.
template <class REAL>
struct NODE_BLOCKS {
  LANES_OF<REAL> b11, b21, b12, b22, b33;
  REAL w_tx, w_ty, tx_w, ty_w;

  template <int NODES>
  explicit NODE_BLOCKS(const NODE_ENTRIES<NODES, REAL>& b)
      : b11(pair_of(b.membrane(1, 1), b.plate(2, 2))),
        b21(pair_of(b.membrane(2, 1), b.plate(3, 2))),
        b12(pair_of(b.membrane(1, 2), b.plate(2, 3))),
        b22(pair_of(b.membrane(2, 2), b.plate(3, 3))),
        b33(pair_of(b.plate(1, 1), b.drilling())),
        w_tx(b.plate(1, 2)),
        w_ty(b.plate(1, 3)),
        tx_w(b.plate(2, 1)),
        ty_w(b.plate(3, 1)) {}
};

// Column J of the four blocks, the first of which begins at (row, column) of the matrix, counted from 0.
template <int J, class REAL, class MATRIX_OUT>
inline void place_column(const FLAT_ROTATION<REAL>& R, const NODE_BLOCKS<REAL>& b, int row, int column,
                         const MATRIX_OUT& out) {
  using L = LANES_OF<REAL>;
  const L t1 = b.b11 * R.a1(J) + b.b12 * R.a2(J);
  const L t2 = b.b21 * R.a1(J) + b.b22 * R.a2(J);
  const L t3 = b.b33 * R.a3(J);
  const REAL t_w = b.w_tx * R.a1(J)[0] + b.w_ty * R.a2(J)[0];
  const REAL t_tx = b.tx_w * R.a3(J)[0];
  const REAL t_ty = b.ty_w * R.a3(J)[0];
  for (int i = 1; i <= 3; ++i) {
    const L alike = R.a1(i) * t1 + R.a2(i) * t2 + R.a3(i) * t3;
    out.place(alike[0], row + i - 1, column + J - 1);
    out.place(alike[1], row + i + 2, column + J + 2);
    out.place(R.a3(i)[0] * t_w, row + i - 1, column + J + 2);
    out.place(R.a1(i)[0] * t_tx + R.a2(i)[0] * t_ty, row + i + 2, column + J - 1);
  }
}

// The same of a node with itself: the upper triangle counts.
template <int J, class REAL, class MATRIX_OUT>
inline void place_diagonal_column(const FLAT_ROTATION<REAL>& R, const NODE_BLOCKS<REAL>& b, int at,
                                  const MATRIX_OUT& out) {
  using L = LANES_OF<REAL>;
  const L t1 = b.b11 * R.a1(J) + b.b12 * R.a2(J);
  const L t2 = b.b12 * R.a1(J) + b.b22 * R.a2(J);
  const L t3 = b.b33 * R.a3(J);
  const REAL t_w = b.w_tx * R.a1(J)[0] + b.w_ty * R.a2(J)[0];
  for (int i = 1; i <= J; ++i) {
    const L alike = R.a1(i) * t1 + R.a2(i) * t2 + R.a3(i) * t3;
    out.place(alike[0], at + i - 1, at + J - 1);
    out.place(alike[1], at + i + 2, at + J + 2);
  }
  for (int i = 1; i <= 3; ++i) out.place(R.a3(i)[0] * t_w, at + i - 1, at + J + 2);
}

template <int NODES, class REAL, class MATRIX_OUT>
inline void turn_parts(const MATRIX<3, 3, REAL>& AXES, const FLAT_PARTS<NODES, REAL>& parts, const MATRIX_OUT& out) {
  const FLAT_ROTATION<REAL> R(AXES);
  for (int j = 0; j < NODES; ++j) {
    for (int i = 0; i < j; ++i) {
      const NODE_BLOCKS<REAL> b(NODE_ENTRIES<NODES, REAL>{parts, i, j});
      place_column<1>(R, b, 6 * i, 6 * j, out);
      place_column<2>(R, b, 6 * i, 6 * j, out);
      place_column<3>(R, b, 6 * i, 6 * j, out);
    }
    const NODE_BLOCKS<REAL> b(NODE_ENTRIES<NODES, REAL>{parts, j, j});
    place_diagonal_column<1>(R, b, 6 * j, out);
    place_diagonal_column<2>(R, b, 6 * j, out);
    place_diagonal_column<3>(R, b, 6 * j, out);
  }
}

template <int NODES, class REAL>
inline bool finite_parts(const FLAT_PARTS<NODES, REAL>& parts) {
  const bool membrane = all_finite(parts.membrane, SYM(2 * NODES, 2 * NODES));
  const bool plate = all_finite(parts.plate, SYM(3 * NODES, 3 * NODES));
  return membrane && plate && all_finite(parts.drilling, SYM(NODES, NODES));
}

#endif
