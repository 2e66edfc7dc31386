// strain_cases.h: the strains of a plastic plate for two displacements at a time, those of the call and the total ones.
#ifndef FINITES_STRAIN_CASES_H
#define FINITES_STRAIN_CASES_H

#include "common/lanes.h"
#include "finites/views.hpp"
#include "shells/common/plate_matrices.h"

// The displacements of a part: of the call in one lane, total in the other.
template <int N>
struct STRAIN_CASES {
  LANES u[N];

  STRAIN_CASES(const VECTOR<N>& of_call, const VECTOR<N>& total) {
    for (int i = 1; i <= N; ++i) u[i - 1] = LANES{of_call(i), total(i)};
  }
};

// B u, summed as in strains_of.
template <int ROWS, int N>
void set_strain_cases(const MATRIX<ROWS, N>& B, const STRAIN_CASES<N>& cases, LANES* e) {
  LANES sum[ROWS] = {};
  for (int i = 1; i <= N; ++i) {
    for (int r = 1; r <= ROWS; ++r) sum[r - 1] = sum[r - 1] + B(r, i) * cases.u[i - 1];
  }
  for (int r = 0; r < ROWS; ++r) e[r] = sum[r];
}

// The section strains of both (section_strains).
template <int WIDTH>
struct SECTION_STRAINS {
  VECTOR<WIDTH> of_call, total;

  SECTION_STRAINS() = default;

  explicit SECTION_STRAINS(const LANES (&e)[WIDTH]) {
    for (int i = 1; i <= WIDTH; ++i) {
      of_call(i) = e[i - 1][0];
      total(i) = e[i - 1][1];
    }
  }
};

template <int WIDTH, int MEMBRANE, int PLATE>
SECTION_STRAINS<WIDTH> section_strain_cases(const PLATE_MATRICES<WIDTH, MEMBRANE, PLATE>& B,
                                            const STRAIN_CASES<MEMBRANE>& membrane, const STRAIN_CASES<PLATE>& plate) {
  LANES e[WIDTH];
  set_strain_cases(B.m, membrane, e);
  set_strain_cases(B.p, plate, e + 3);
  return SECTION_STRAINS<WIDTH>(e);
}

#endif
