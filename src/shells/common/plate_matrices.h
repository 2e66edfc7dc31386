// plate_matrices.h: the strain matrices of a plate element at a point, and their products with a full section matrix.
//
//     eps = [ B.m  0   ] [ um ]      um: degrees of freedom of the membrane, up: of the plate
//           [ 0    B.p ] [ up ]      eps: ex, ey, gxy, then kx, ky, kxy, then, of a thick element, gxz, gyz
//
// The plastic models see every plate element through its kernel, an ELEMENT that provides what differs:
//
//   NODES, WIDTH             nodes; strains at a point: 6 thin, 8 thick
//   MEMBRANE, PLATE          number of degrees of freedom of the membrane and of the plate
//   MEMBRANE_DOF, PLATE_DOF  their places among the element's degrees of freedom
//   point(gp), node(n)       integration point and node with their Jacobian
//   matrices(s, B)           the strain matrices there
//   EL                       the record of the element of the call
//   u_membrane(), u_plate()  the displacements of the call
//   slopes(s)                slopes of the displacement functions of the membrane
//   extrapolate(p, n)        values at the nodes from values at the points
#ifndef FINITES_PLATE_MATRICES_H
#define FINITES_PLATE_MATRICES_H

#include "finites/views.hpp"
#include "shells/common/strains.h"

// m: membrane strains from u, v of the nodes. p: curvatures, and transverse shears of a thick element, from w, theta x,
// theta y of the nodes.
template <int WIDTH, int MEMBRANE, int PLATE>
struct PLATE_MATRICES {
  MATRIX<3, MEMBRANE> m;
  MATRIX<WIDTH - 3, PLATE> p;
};

template <class ELEMENT>
using MATRICES_OF = PLATE_MATRICES<ELEMENT::WIDTH, ELEMENT::MEMBRANE, ELEMENT::PLATE>;

// Rows first + 1 to first + COUNT of a vector.
template <int COUNT, int N>
VECTOR<COUNT> part_of(const VECTOR<N>& v, int first) {
  VECTOR<COUNT> part;
  for (int i = 1; i <= COUNT; ++i) part(i) = v(first + i);
  return part;
}

// The degrees of freedom of a part, from all those of the element.
template <int N>
VECTOR<N> picked(const double* u, const int (&freedoms)[N]) {
  VECTOR<N> part;
  for (int i = 1; i <= N; ++i) part(i) = u[freedoms[i - 1] - 1];
  return part;
}

// p = [bending; shear], for the thick theory.
template <int PLATE>
void stack_plate_rows(const MATRIX<3, PLATE>& bending, const MATRIX<2, PLATE>& shear, MATRIX<5, PLATE>& p) {
  for (int i = 1; i <= PLATE; ++i) {
    for (int r = 1; r <= 3; ++r) p(r, i) = bending(r, i);
    for (int r = 1; r <= 2; ++r) p(3 + r, i) = shear(r, i);
  }
}

// eps = [B.m um; B.p up].
template <int WIDTH, int MEMBRANE, int PLATE>
VECTOR<WIDTH> section_strains(const PLATE_MATRICES<WIDTH, MEMBRANE, PLATE>& B, const VECTOR<MEMBRANE>& um,
                              const VECTOR<PLATE>& up) {
  const VECTOR<3> e = strains_of(B.m, um);
  const VECTOR<WIDTH - 3> k = strains_of(B.p, up);
  VECTOR<WIDTH> eps;
  for (int i = 1; i <= 3; ++i) eps(i) = e(i);
  for (int i = 4; i <= WIDTH; ++i) eps(i) = k(i - 3);
  return eps;
}

template <int N>
VECTOR<N> matrix_times(const MATRIX<N, N>& C, const VECTOR<N>& v) {
  VECTOR<N> out{};
  for (int j = 1; j <= N; ++j) {
    for (int i = 1; i <= N; ++i) out(i) += C(i, j) * v(j);
  }
  return out;
}

//     K_column(freedoms(i)) += sum_r  B(r, i) column(first + r),      column = c C B(:, j)
//
// The entries of column j of c B^T C B that belong to one part; its rows of C start at first + 1.
template <int ROWS, int N, int WIDTH>
void add_rows(const MATRIX<ROWS, N>& B, int first, const VECTOR<WIDTH>& column, const int (&freedoms)[N],
              double* K_column) {
  for (int i = 1; i <= N; ++i) {
    double k = 0.0;
    for (int r = 1; r <= ROWS; ++r) k += B(r, i) * column(first + r);
    K_column[freedoms[i - 1] - 1] += k;
  }
}

// The columns of K of one part of B, whose strains start at row first + 1 of C. C couples membrane and plate, so that
// each column receives rows of both.
template <class ELEMENT, int ROWS, int N>
void add_columns(const MATRICES_OF<ELEMENT>& B, const MATRIX<ROWS, N>& part, int first,
                 const MATRIX<ELEMENT::WIDTH, ELEMENT::WIDTH>& C, double c, const int (&freedoms)[N], double* K) {
  constexpr int order = 6 * ELEMENT::NODES;
  for (int j = 1; j <= N; ++j) {
    VECTOR<ELEMENT::WIDTH> column{};
    for (int r = 1; r <= ROWS; ++r) {
      for (int i = 1; i <= ELEMENT::WIDTH; ++i) column(i) += C(i, first + r) * part(r, j) * c;
    }
    double* const K_column = K + (freedoms[j - 1] - 1) * order;
    add_rows(B.m, 0, column, ELEMENT::MEMBRANE_DOF, K_column);
    add_rows(B.p, 3, column, ELEMENT::PLATE_DOF, K_column);
  }
}

// K (order 6 NODES, full, by columns) += c B^T C B.
template <class ELEMENT>
void add_section_product(const MATRICES_OF<ELEMENT>& B, const MATRIX<ELEMENT::WIDTH, ELEMENT::WIDTH>& C, double c,
                         double* K) {
  add_columns<ELEMENT>(B, B.m, 0, C, c, ELEMENT::MEMBRANE_DOF, K);
  add_columns<ELEMENT>(B, B.p, 3, C, c, ELEMENT::PLATE_DOF, K);
}

#endif
