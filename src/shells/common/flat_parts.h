// flat_parts.h: a symmetric matrix of a flat element by its parts, which share no degree of freedom, and its turn to
// global axes.
#ifndef FINITES_FLAT_PARTS_H
#define FINITES_FLAT_PARTS_H

#include <algorithm>

#include "finites/views.hpp"

constexpr int CALLER_LEADING = 24;  // leading dimension of the matrices of callers, also for a triangle

// Each part packed: u, v of the nodes; w, theta x, theta y; theta z.
template <int NODES, class REAL = double>
struct FLAT_PARTS {
  REAL membrane[SYM(2 * NODES, 2 * NODES)];
  REAL plate[SYM(3 * NODES, 3 * NODES)];
  REAL drilling[SYM(NODES, NODES)];
};

// K, packed and of order 6 NODES, := the parts at their places; the other entries are 0.
template <int NODES>
void assemble_parts(const FLAT_PARTS<NODES>& parts, double* K);

// The columns of a full matrix of `order`, `leading` apart in `matrix`; what lies between them is left alone.
inline void spread_columns(const double* full, int order, int leading, double* matrix) {
  for (int j = 0; j < order; ++j) std::copy_n(full + j * order, order, matrix + j * leading);
}

// The parts of a packed K; its other entries are not read.
template <int NODES>
FLAT_PARTS<NODES> parts_of(const double* K);

// matrix, full, order 6 NODES, its columns `leading` apart (6 NODES or 24), := the matrix in global axes.
//
// A flat element couples u, v with each other, w with the rotations about x and y, and the rotation about z with itself
// alone. With a1, a2, a3 the rows of AXES a block is a sum of few dyads, in the order of the full product:
//
//     translations, rotations       a1 t1' + a2 t2' + a3 t3',
//                                   t1 = b11 a1 + b12 a2,  t2 = b21 a1 + b22 a2,  t3 = b33 a3
//     translations by rotations     a3 t',                       t = b31 a1 + b32 a2
//     rotations by translations     a1 t1' + a2 t2',             t1 = b13 a3,  t2 = b23 a3
template <int NODES>
void flat_to_global(const MATRIX<3, 3>& AXES, const FLAT_PARTS<NODES>& parts, int leading, double* matrix);

// The same of a packed K, which is overwritten.
template <int NODES>
void flat_to_global(const MATRIX<3, 3>& AXES, double* K, int leading, double* matrix);

#endif
