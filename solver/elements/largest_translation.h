// largest_translation.h: where a structure moves most.
#ifndef FINITES_SOLVER_LARGEST_TRANSLATION_H
#define FINITES_SOLVER_LARGEST_TRANSLATION_H

#include <cmath>
#include <cstddef>
#include <vector>

#include "elements/load_case.h"
#include "model/model.h"

namespace solver {

// The degree of freedom with the largest translation, at a node of the deck. Of those that differ by no more than
// `equal`, a share, the first: which one it is does not depend on the last digits.
inline std::size_t largest_translation(const model& m, const std::vector<double>& u, double equal) {
  std::size_t most = 0;
  double largest = -1;
  for (std::size_t f = 0; f < u.size(); ++f) {
    if (f % DIRECTIONS >= 3 || is_made(m.nodes[f / DIRECTIONS])) continue;
    if (!(std::fabs(u[f]) > largest * (1 + equal))) continue;
    most = f;
    largest = std::fabs(u[f]);
  }
  return most;
}

}  // namespace solver

#endif
