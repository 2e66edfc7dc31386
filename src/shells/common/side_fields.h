// side_fields.h: curvatures and transverse shears of a thick plate whose rotations have an increment on every side.
//
// The kernels work in the rotations of the normal, beta x = theta y and beta y = -theta x, with columns (w, beta x,
// beta y) a node; the last step of each turns its columns to (w, theta x, theta y). Side k runs from node k to the
// next. A_DELTA gives the increments of side rotation from the nodal values, in the beta basis.
#ifndef FINITES_SIDE_FIELDS_H
#define FINITES_SIDE_FIELDS_H

#include <cmath>

#include "finites/views.hpp"
#include "shells/common/isotropic_products.h"
#include "shells/common/slopes.h"

template <int SIDES>
using SIDE_MATRIX = MATRIX<SIDES, 3 * SIDES>;

// Direction, length and ratio of the sides, and their matrix.
template <int SIDES>
struct PLATE_SIDES {
  VECTOR<SIDES> C, S, L, PHI;
  SIDE_MATRIX<SIDES> A_DELTA;
};

// L, C and S of side k, which runs along (x, y).
template <int SIDES>
void set_side_direction(int k, double x, double y, PLATE_SIDES<SIDES>& sides) {
  sides.L(k) = std::sqrt(x * x + y * y);
  sides.C(k) = x / sides.L(k);
  sides.S(k) = y / sides.L(k);
}

// A: row k is the condition of side k from node i to node j, w_i - w_j - (L/2)(beta_s at i + beta_s at j), from the
// side differences x_ji and y_ji.
template <int SIDES>
void SIDE_AMAT(const VECTOR<SIDES>& x, const VECTOR<SIDES>& y, SIDE_MATRIX<SIDES>& A) {
  A = SIDE_MATRIX<SIDES>{};
  for (int k = 1; k <= SIDES; ++k) {
    const int i = 3 * (k - 1);
    const int j = 3 * (k % SIDES);
    A(k, i + 1) = 1.0;
    A(k, j + 1) = -1.0;
    A(k, i + 2) = A(k, j + 2) = -x(k) / 2.0;
    A(k, i + 3) = A(k, j + 3) = -y(k) / 2.0;
  }
}
inline constexpr auto SIDE_AMAT_TRI = &SIDE_AMAT<3>;

// A_DELTA = diag(1.5 / (L (phi + 1))) A, with L and PHI set. Each entry is one product: a side of length zero spoils
// its whole row, zeros included, as the product of matrices does.
template <int SIDES>
void set_side_matrix(const VECTOR<SIDES>& x, const VECTOR<SIDES>& y, PLATE_SIDES<SIDES>& sides) {
  SIDE_MATRIX<SIDES> A;
  SIDE_AMAT(x, y, A);
  for (int k = 1; k <= SIDES; ++k) {
    const double d = 1.5 / (sides.L(k) * (sides.PHI(k) + 1.0));
    for (int column = 1; column <= 3 * SIDES; ++column) sides.A_DELTA(k, column) = d * A(k, column);
  }
}

// From (w, beta x, beta y) to (w, theta x, theta y), node by node.
template <int N>
inline void turn_columns(VECTOR<N>& row) {
  for (int at = 2; at <= N; at += 3) {
    const double bx = row(at);
    row(at) = -row(at + 1);
    row(at + 1) = bx;
  }
}

// Curvatures: the linear part from the nodes and the quadratic part from the sides. One loop serves the isotropic and
// the general form: it sums in the order of the matrix services.
template <int SIDES>
inline STRAIN_ROWS<3 * SIDES> thick_curvatures(const SLOPES<SIDES>& n, const SLOPES<SIDES>& p, const double* C,
                                               const double* S, const double* A_DELTA) {
  const MATRIX_VIEW<SIDES, const double> A(A_DELTA);
  VECTOR<SIDES> X;  // B_delta
  VECTOR<SIDES> Y;
  VECTOR<SIDES> XY;
  for (int k = 1; k <= SIDES; ++k) {
    X(k) = p.X(k) * C[k - 1];
    Y(k) = p.Y(k) * S[k - 1];
    XY(k) = p.X(k) * S[k - 1] + p.Y(k) * C[k - 1];
  }
  STRAIN_ROWS<3 * SIDES> B;
  for (int column = 1; column <= 3 * SIDES; ++column) {
    double x = 0.0;
    double y = 0.0;
    double xy = 0.0;
    for (int k = 1; k <= SIDES; ++k) {
      x += X(k) * A(k, column);
      y += Y(k) * A(k, column);
      xy += XY(k) * A(k, column);
    }
    B.X(column) = x;
    B.Y(column) = y;
    B.XY(column) = xy;
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

// Transverse shears G A_DELTA, G (2, SIDES) by its rows.
template <int SIDES>
inline SHEAR_ROWS<3 * SIDES> thick_shears(const VECTOR<SIDES>& GX, const VECTOR<SIDES>& GY, const double* A_DELTA) {
  const MATRIX_VIEW<SIDES, const double> A(A_DELTA);
  SHEAR_ROWS<3 * SIDES> B;
  for (int column = 1; column <= 3 * SIDES; ++column) {
    double x = 0.0;
    double y = 0.0;
    for (int k = 1; k <= SIDES; ++k) {
      x += GX(k) * A(k, column);
      y += GY(k) * A(k, column);
    }
    B.XZ(column) = x;
    B.YZ(column) = y;
  }
  turn_columns(B.XZ);
  turn_columns(B.YZ);
  return B;
}

#endif
