// side_fields.h: curvatures and transverse shears of a thick plate whose rotations have an increment on every side.
//
// After Katili (1993). The rotations of the normal, beta x = theta y and beta y = -theta x, are
//
//     (beta x, beta y) = sum_i N_i (beta x, beta y)_i  +  sum_k P_k (C_k, S_k) dB_k
//
// with the linear or bilinear functions N_i, the quadratic functions P_k of the sides and the increments dB_k along
// them. Side k runs from node i = k to the next node j in direction (C, S), has length L and the flexibility ratio phi.
// The condition of the side gives its increment from the nodal values:
//
//     (2/3) (1 + phi) L dB = w_i - w_j - (L/2) (beta_s at i + beta_s at j),      beta_s = C beta x + S beta y
//
// or dB = A_DELTA (w, beta x, beta y of each node). The shear along the side is -(2/3) phi dB. The kernels have the
// columns (w, beta x, beta y) per node; the last step of each changes them to (w, theta x, theta y).
#ifndef FINITES_SIDE_FIELDS_H
#define FINITES_SIDE_FIELDS_H

#include "common/lane_pair.h"
#include "finites/views.hpp"
#include "shells/common/isotropic_products.h"
#include "shells/common/slopes.h"

template <int SIDES, class REAL = double>
using SIDE_MATRIX = MATRIX<SIDES, 3 * SIDES, REAL>;

// Direction (C, S), length L and flexibility ratio PHI of the sides, and their matrix.
template <int SIDES, class REAL = double>
struct PLATE_SIDES {
  VECTOR<SIDES, REAL> C, S, L, PHI;
  SIDE_MATRIX<SIDES, REAL> A_DELTA;
};

// L, C and S of side k, which runs along (x, y).
template <int SIDES, class REAL>
void set_side_direction(int k, const REAL& x, const REAL& y, PLATE_SIDES<SIDES, REAL>& sides) {
  sides.L(k) = root(x * x + y * y);
  sides.C(k) = x / sides.L(k);
  sides.S(k) = y / sides.L(k);
}

// A: row k is the right side of the condition of side k,
//
//     w_i - w_j - (x/2) (beta x_i + beta x_j) - (y/2) (beta y_i + beta y_j),      x = x_j - x_i = L C,  y = L S
template <int SIDES, class REAL = double>
void SIDE_AMAT(const VECTOR<SIDES, REAL>& x, const VECTOR<SIDES, REAL>& y, SIDE_MATRIX<SIDES, REAL>& A) {
  A = SIDE_MATRIX<SIDES, REAL>{};
  for (int k = 1; k <= SIDES; ++k) {
    const int i = 3 * (k - 1);
    const int j = 3 * (k % SIDES);
    A(k, i + 1) = of_all<REAL>(1.0);
    A(k, j + 1) = of_all<REAL>(-1.0);
    A(k, i + 2) = A(k, j + 2) = -x(k) / 2.0;
    A(k, i + 3) = A(k, j + 3) = -y(k) / 2.0;
  }
}
// The routine of the triangle by its own name. The library calls the template; tests call this name.
inline constexpr auto SIDE_AMAT_TRI = &SIDE_AMAT<3>;

//     A_DELTA = diag(d) A,      d = 1.5 / (L (PHI + 1)),      L and PHI being set
//
// Every entry is a product, the zeros of A too: a side of length zero turns its whole row into NaN or infinite values,
// as the product of two matrices does.
template <int SIDES, class REAL>
void set_side_matrix(const VECTOR<SIDES, REAL>& x, const VECTOR<SIDES, REAL>& y, PLATE_SIDES<SIDES, REAL>& sides) {
  SIDE_MATRIX<SIDES, REAL> A;
  SIDE_AMAT(x, y, A);
  for (int k = 1; k <= SIDES; ++k) {
    const REAL d = 1.5 / (sides.L(k) * (sides.PHI(k) + 1.0));
    for (int column = 1; column <= 3 * SIDES; ++column) sides.A_DELTA(k, column) = d * A(k, column);
  }
}

// Columns (w, beta x, beta y) become (w, theta x, theta y), node by node: with beta x = theta y and beta y = -theta x
// the column of theta x is minus that of beta y, and the column of theta y is that of beta x.
template <int N, class REAL>
inline void turn_columns(VECTOR<N, REAL>& row) {
  for (int at = 2; at <= N; at += 3) {
    const REAL bx = row(at);
    row(at) = -row(at + 1);
    row(at + 1) = bx;
  }
}

// sum_k  X(k) A_DELTA(k, column), over all sides: zeros of A_DELTA meet NaN and infinities, which go on.
struct ALL_SIDES {
  template <int SIDES, class REAL, class BASE>
  static REAL sum(const VECTOR<SIDES, REAL>& X, const MATRIX_VIEW<SIDES, const BASE>& A, int column) {
    REAL x{};
    for (int k = 1; k <= SIDES; ++k) x += X(k) * A(k, column);
    return x;
  }
};

// The same over the two sides that meet at the node of the column: those of the others are zero. The order is that of
// the whole sum.
struct MEETING_SIDES {
  template <int SIDES, class REAL, class BASE>
  static REAL sum(const VECTOR<SIDES, REAL>& X, const MATRIX_VIEW<SIDES, const BASE>& A, int column) {
    const int i = (column + 2) / 3;
    const int k = i == 1 ? 1 : i - 1;
    const int m = i == 1 ? SIDES : i;
    return X(k) * A(k, column) + X(m) * A(m, column);
  }
};

// Curvatures, the derivatives of the rotations, with the slopes n of N_i and p of P_k:
//
//     chi x  = beta x,x             = sum_i n.X beta x_i               + sum_k p.X C dB_k
//     chi y  = beta y,y             = sum_i n.Y beta y_i               + sum_k p.Y S dB_k
//     chi xy = beta x,y + beta y,x  = sum_i n.Y beta x_i + n.X beta y_i + sum_k (p.X S + p.Y C) dB_k
//
// The isotropic and the general form share this loop: it sums in the order of the matrix services.
template <class OVER = ALL_SIDES, int SIDES, class REAL, class BASE>
inline STRAIN_ROWS<3 * SIDES, REAL> thick_curvatures(const SLOPES<SIDES, REAL>& n, const SLOPES<SIDES, REAL>& p,
                                                     const BASE* C, const BASE* S, const BASE* A_DELTA) {
  const MATRIX_VIEW<SIDES, const BASE> A(A_DELTA);
  VECTOR<SIDES, REAL> X;  // B_delta
  VECTOR<SIDES, REAL> Y;
  VECTOR<SIDES, REAL> XY;
  for (int k = 1; k <= SIDES; ++k) {
    X(k) = p.X(k) * C[k - 1];
    Y(k) = p.Y(k) * S[k - 1];
    XY(k) = p.X(k) * S[k - 1] + p.Y(k) * C[k - 1];
  }
  STRAIN_ROWS<3 * SIDES, REAL> B;
  for (int column = 1; column <= 3 * SIDES; ++column) {
    B.X(column) = OVER::sum(X, A, column);
    B.Y(column) = OVER::sum(Y, A, column);
    B.XY(column) = OVER::sum(XY, A, column);
  }
  for (int i = 1; i <= SIDES; ++i) {
    const int bx = 3 * i - 1;
    const int by = 3 * i;
    B.X(bx) += n.X(i);
    B.XY(bx) += n.Y(i);
    B.Y(by) += n.Y(i);
    B.XY(by) += n.X(i);
  }
  turn_columns(B.X);
  turn_columns(B.Y);
  turn_columns(B.XY);
  return B;
}

// Transverse shears (gxz, gyz) = G dB = G A_DELTA u, G (2, SIDES) given by its rows GX, GY.
template <class OVER = ALL_SIDES, int SIDES, class REAL, class BASE>
inline SHEAR_ROWS<3 * SIDES, REAL> thick_shears(const VECTOR<SIDES, REAL>& GX, const VECTOR<SIDES, REAL>& GY,
                                                const BASE* A_DELTA) {
  const MATRIX_VIEW<SIDES, const BASE> A(A_DELTA);
  SHEAR_ROWS<3 * SIDES, REAL> B;
  for (int column = 1; column <= 3 * SIDES; ++column) {
    B.XZ(column) = OVER::sum(GX, A, column);
    B.YZ(column) = OVER::sum(GY, A, column);
  }
  turn_columns(B.XZ);
  turn_columns(B.YZ);
  return B;
}

#endif
