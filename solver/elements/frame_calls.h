// frame_calls.h: matrices of trusses, which have three degrees of freedom per end, among those of a node's six.
#ifndef FINITES_SOLVER_FRAME_CALLS_H
#define FINITES_SOLVER_FRAME_CALLS_H

#include "elements/element_group.h"
#include "finites/views.hpp"

namespace solver {

// Place of a translation of either end, from 1 to 6, among the twelve degrees of freedom of two nodes.
constexpr int place_of_translation(int i) { return i <= 3 ? i : i + 3; }

inline MATRIX<12, 12> identity_of_twelve() {
  MATRIX<12, 12> one{};
  for (int i = 1; i <= 12; ++i) one(i, i) = 1;
  return one;
}

template <int N>
void spread(const MATRIX<6, 6>& from, MATRIX<N, N>& to) {
  to = MATRIX<N, N>{};
  for (int j = 1; j <= 6; ++j) {
    for (int i = 1; i <= 6; ++i) to(place_of_translation(i), place_of_translation(j)) = from(i, j);
  }
}

}  // namespace solver

#endif
