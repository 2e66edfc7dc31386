// linear_places.h: Jacobian, strain and stress of a linear kind, at two places at a time: a lane a place.
#ifndef FINITES_SOLID_LINEAR_PLACES_H
#define FINITES_SOLID_LINEAR_PLACES_H

#include <cstdint>

#include "common/lanes.h"
#include "finites/views.hpp"
#include "solids/elastic.h"
#include "solids/kinematics.h"
#include "solids/linear_kinds.h"

constexpr int LINEAR_PAIRS = LINEAR_NODES / 2;

using EDGE_WEIGHTS = MATRIX<LINEAR_NODES, LINEAR_EDGES>;
using EDGE_VECTORS = MATRIX<3, LINEAR_EDGES>;
using LANE_MATRIX = MATRIX<3, 3, LANES>;

// E(:, e) := V(:, head) - V(:, tail).
void edge_differences(const LINEAR_KIND& kind, const SOLID_VECTORS& V, EDGE_VECTORS& E);

// V(i),d at the places p and p + 1: D(d, i).
inline LANE_MATRIX natural_derivatives(const EDGE_WEIGHTS& w, int p, const EDGE_VECTORS& E) {
  LANE_MATRIX D;
  for (int d = 1; d <= 3; ++d) {
    const int e = 4 * d - 3;
    for (int i = 1; i <= 3; ++i) {
      D(d, i) = lanes_at(&w(p, e)) * E(i, e) + lanes_at(&w(p, e + 1)) * E(i, e + 1) +
                lanes_at(&w(p, e + 2)) * E(i, e + 2) + lanes_at(&w(p, e + 3)) * E(i, e + 3);
    }
  }
  return D;
}

// The inverse of the Jacobian is ADJ / DET. L: LANES are two places, wider vectors the same place of several elements.
template <class L>
struct INVERSE_OF {
  MATRIX<3, 3, L> ADJ;
  L DET;
};
using INVERSE_PAIR = INVERSE_OF<LANES>;

template <class L>
inline INVERSE_OF<L> inverse_of(const MATRIX<3, 3, L>& J) {
  INVERSE_OF<L> I;
  for (int j = 1; j <= 3; ++j) {
    const int j1 = j % 3 + 1;
    const int j2 = j1 % 3 + 1;
    for (int i = 1; i <= 3; ++i) {
      const int i1 = i % 3 + 1;
      const int i2 = i1 % 3 + 1;
      I.ADJ(j, i) = J(i1, j1) * J(i2, j2) - J(i1, j2) * J(i2, j1);
    }
  }
  I.DET = J(1, 1) * I.ADJ(1, 1) + J(1, 2) * I.ADJ(2, 1) + J(1, 3) * I.ADJ(3, 1);
  return I;
}

// The adjugate and the determinant at the places p and p + 1 of a table, from the coordinates along the edges.
inline INVERSE_PAIR inverse_at(const EDGE_WEIGHTS& w, int p, const EDGE_VECTORS& XE) {
  return inverse_of(natural_derivatives(w, p, XE));
}

// Strain and stress there, in the order of the strains, and the adjugate.
struct STATE_PAIR {
  INVERSE_PAIR inverse;
  VECTOR<6, LANES> strain, stress;
};

// The state at the places p and p + 1 of a table, from coordinates and displacements along the edges.
void state_at(const ELASTIC_TERMS& D, const EDGE_WEIGHTS& w, int p, const EDGE_VECTORS& XE, const EDGE_VECTORS& UE,
              STATE_PAIR& S);

#endif
