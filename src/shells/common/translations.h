// translations.h: the geometric stiffness, the same for the three translations of the nodes and zero for their
// rotations.
//
//     k(a, b) = integral of  (d n_a)^T [Nx Nxy; Nxy Ny] (d n_b),      d n = (n.X, n.Y)
//
// Nx, Ny and Nxy are positive in tension, which stiffens.
#ifndef FINITES_TRANSLATIONS_H
#define FINITES_TRANSLATIONS_H

#include <algorithm>
#include <cmath>

#include "finites/fields.h"
#include "finites/views.hpp"
#include "plate_results/res_record.h"
#include "shells/common/flat_parts.h"
#include "shells/common/slopes.h"

// In operations 1 and 71 the membrane forces are those of the last converged state, in the record of a point; otherwise
// they come from the displacements.
inline bool takes_stored_forces(int op) { return op == OP_STIFFNESS || op == OP_GEOMETRIC_STORED; }

inline VECTOR<3> stored_membrane_forces(const double* points, int point) {
  const RES_READER R = BLOCK_OF(points, point);
  return {{R(COL_FORCES), R(COL_FORCES + 1), R(COL_FORCES + 2)}};
}

//     k(a, b) += c (Nx n.X(a) n.X(b) + Ny n.Y(a) n.Y(b) + Nxy (n.X(a) n.Y(b) + n.X(b) n.Y(a))),      a <= b,  packed
//
// n are the slopes of the displacement functions; c is the area of the point times the factor of the operation.
template <int NODES>
inline void add_geometric_pairs(const VECTOR<3>& N, double c, const SLOPES<NODES>& n, double* k) {
  const double fx = N(1) * c;
  const double fy = N(2) * c;
  const double fxy = N(3) * c;
  for (int b = 1; b <= NODES; ++b) {
    for (int a = 1; a <= b; ++a) {
      *k++ += fx * n.X(a) * n.X(b) + fy * n.Y(a) * n.Y(b) + fxy * (n.X(a) * n.Y(b) + n.X(b) * n.Y(a));
    }
  }
}

// Calls visit(place, pair) for the place of each pair of nodes in the packed matrix of the element, for u, v and w.
template <int NODES, class VISIT>
inline void for_translations(VISIT visit) {
  int pair = 0;
  for (int b = 0; b < NODES; ++b) {
    for (int a = 0; a <= b; ++a, ++pair) {
      for (int t = 1; t <= 3; ++t) visit(SYM(6 * a + t, 6 * b + t) - 1, pair);
    }
  }
}

// K(places of the translations) := k(pairs); the other entries are left alone.
template <int NODES>
inline void set_translations(const double* k, double* K) {
  for_translations<NODES>([=](int place, int pair) { K[place] = k[pair]; });
}

// parts += k(pairs) at the places of u, v and w.
template <int NODES>
inline void add_translations(const double* k, FLAT_PARTS<NODES>& parts) {
  for (int b = 0; b < NODES; ++b) {
    for (int a = 0; a <= b; ++a, ++k) {
      parts.membrane[SYM(2 * a + 1, 2 * b + 1) - 1] += *k;
      parts.membrane[SYM(2 * a + 2, 2 * b + 2) - 1] += *k;
      parts.plate[SYM(3 * a + 1, 3 * b + 1) - 1] += *k;
    }
  }
}

// K += KG at the places of the translations; the other entries of KG are not read, since nothing sets them.
template <int NODES>
inline void add_translations(const double* KG, double* K) {
  for_translations<NODES>([=](int place, int /*pair*/) { K[place] += KG[place]; });
}

// Whether A^T A is the unit matrix up to rounding: 1e-14 is some 45 units in the last place of 1.
inline bool orthonormal(const MATRIX<3, 3>& A) {
  for (int i = 1; i <= 3; ++i) {
    for (int j = i; j <= 3; ++j) {
      const double product = A(1, i) * A(1, j) + A(2, i) * A(2, j) + A(3, i) * A(3, j);
      if (!(std::fabs(product - (i == j ? 1.0 : 0.0)) < 1e-14)) return false;
    }
  }
  return true;
}

template <int NODES, int LEADING>
inline void place_translations(const double* KG, double* matrix) {
  const MATRIX_VIEW<LEADING> M(matrix);
  for (int j = 1; j <= 6 * NODES; ++j) std::fill_n(&M(1, j), 6 * NODES, 0.0);
  for (int b = 0; b < NODES; ++b) {
    for (int a = 0; a <= b; ++a) {
      const double k = KG[SYM(6 * a + 1, 6 * b + 1) - 1];
      for (int t = 1; t <= 3; ++t) M(6 * a + t, 6 * b + t) = M(6 * b + t, 6 * a + t) = k;
    }
  }
}

// matrix, full, order 6 NODES, its columns `leading` apart (6 NODES or 24), := KG in global axes. A pair of nodes has
// the same k for u, v and w, and AXES^T (k 1)
// AXES = k 1: no turn is needed. Returns false where KG or its sum is not finite, or AXES are none: the products of the
// blocks decide then.
template <int NODES>
inline bool translations_to_global(const MATRIX<3, 3>& AXES, const double* KG, int leading, double* matrix) {
  double sum = 0.0;
  for_translations<NODES>([&](int place, int /*pair*/) { sum += KG[place]; });
  if (!std::isfinite(sum) || !orthonormal(AXES)) return false;
  if (leading == 6 * NODES) {
    place_translations<NODES, 6 * NODES>(KG, matrix);
  } else {
    place_translations<NODES, CALLER_LEADING>(KG, matrix);
  }
  return true;
}

// K += k(pairs) for the translations, K being full and of order 6 NODES: both triangles receive the pair.
template <int NODES>
inline void add_translations_full(const double* k, double* K) {
  const MATRIX_VIEW<6 * NODES> KV(K);
  for (int b = 0; b < NODES; ++b) {
    for (int a = 0; a <= b; ++a, ++k) {
      for (int t = 1; t <= 3; ++t) {
        KV(6 * a + t, 6 * b + t) += *k;
        if (a != b) KV(6 * b + t, 6 * a + t) += *k;
      }
    }
  }
}

#endif
