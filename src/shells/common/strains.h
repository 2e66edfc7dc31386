// strains.h: strains from displacements and forces from resultants.
#ifndef FINITES_STRAINS_H
#define FINITES_STRAINS_H

#include "finites/views.hpp"

// e = B u, summed over the degrees of freedom in their order.
template <int ROWS, int N>
VECTOR<ROWS> strains_of(const MATRIX<ROWS, N>& B, const VECTOR<N>& u) {
  VECTOR<ROWS> e{};
  for (int i = 1; i <= N; ++i) {
    for (int r = 1; r <= ROWS; ++r) e(r) += B(r, i) * u(i);
  }
  return e;
}

//     f(freedoms(i)) += c sum_r  B(r, i) resultants(r)
template <int ROWS, int N>
void add_forces(const MATRIX<ROWS, N>& B, const VECTOR<ROWS>& resultants, double c, const int (&freedoms)[N],
                double* f) {
  for (int i = 1; i <= N; ++i) {
    double force = B(1, i) * resultants(1);
    for (int r = 2; r <= ROWS; ++r) force += B(r, i) * resultants(r);
    f[freedoms[i - 1] - 1] += c * force;
  }
}

#endif
