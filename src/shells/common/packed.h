// packed.h: symmetric matrices in packed storage, and the places of an element's parts in them.
//
// The upper triangle by columns: entry (i, j), i <= j, is value SYM(i, j) = i + j (j - 1) / 2, counted from 1.
// Stiffness and mass of the elastic plates stay packed, part by part (flat_parts.h), until the last step.
#ifndef FINITES_PACKED_H
#define FINITES_PACKED_H

#include "finites/views.hpp"

// The places of an element's parts among its degrees of freedom, six per node: u, v, w, theta x, theta y, theta z.
// Membrane: u, v; bending: w, theta x, theta y; drilling: theta z.
constexpr int TRI_MEMBRANE_DOF[6] = {1, 2, 7, 8, 13, 14};
constexpr int TRI_BENDING_DOF[9] = {3, 4, 5, 9, 10, 11, 15, 16, 17};
constexpr int TRI_DRILL_DOF[3] = {6, 12, 18};

constexpr int TRI_DOFS = 18;
constexpr int TRI_GROUPS = 6;  // groups of three degrees of freedom
constexpr int TRI_PACKED = SYM(TRI_DOFS, TRI_DOFS);

constexpr int QUAD_MEMBRANE_DOF[8] = {1, 2, 7, 8, 13, 14, 19, 20};
constexpr int QUAD_BENDING_DOF[12] = {3, 4, 5, 9, 10, 11, 15, 16, 17, 21, 22, 23};
constexpr int QUAD_DRILL_DOF[4] = {6, 12, 18, 24};
constexpr int QUAD_W_DOF[4] = {3, 9, 15, 21};

constexpr int QUAD_DOFS = 24;
constexpr int QUAD_GROUPS = 8;
constexpr int QUAD_PACKED = SYM(QUAD_DOFS, QUAD_DOFS);

//     K(freedoms(i), freedoms(j)) += part(i, j),      1 <= i <= j <= N,  both packed
//
// The places ascend, so that the upper triangle of the part falls on the upper triangle of K.
template <int N>
inline void packed_add(double* K, const double* part, const int (&freedoms)[N]) {
  int at = 0;
  for (int j = 0; j < N; ++j) {
    for (int i = 0; i <= j; ++i) K[SYM(freedoms[i], freedoms[j]) - 1] += part[at++];
  }
}

// Full n by n matrix M from packed storage of count = SYM(n, n) entries.
void UNPACK_SYMMETRIC(int n, int count, const double* packed, double* M);

// K := the packed matrix K in global axes, in place, for `groups` groups of three degrees of freedom. Each 3 by 3 block
// b of the upper triangle becomes AXES^T b AXES.
void packed_to_global(const MATRIX<3, 3>& AXES, int groups, double* K);

// The same for a full matrix of order 3 groups.
void full_to_global(const MATRIX<3, 3>& AXES, int groups, double* K);

#endif
