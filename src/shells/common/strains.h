// strains.h: strains from displacements and forces from resultants, for matrices with three rows.
#ifndef FINITES_STRAINS_H
#define FINITES_STRAINS_H

#include "views.h"

// B u, summed over the freedoms in their order.
template <int N>
VECTOR<3> strains_of(const MATRIX<3, N>& B, const VECTOR<N>& u) {
  VECTOR<3> e{};
  for (int i = 1; i <= N; ++i) {
    for (int r = 1; r <= 3; ++r) e(r) += B(r, i) * u(i);
  }
  return e;
}

// f(freedoms) += c B^T resultants
template <int N>
void add_forces(const MATRIX<3, N>& B, const VECTOR<3>& resultants, double c, const int (&freedoms)[N], double* f) {
  for (int i = 1; i <= N; ++i) {
    f[freedoms[i - 1] - 1] += c * (B(1, i) * resultants(1) + B(2, i) * resultants(2) + B(3, i) * resultants(3));
  }
}

#endif
