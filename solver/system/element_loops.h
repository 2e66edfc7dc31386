// element_loops.h: loops over the elements that threads share.
//
// What an element answers is computed by several threads at once; what is summed over elements is summed in the order
// of the model, so that every number of threads gives the same bits.
#ifndef FINITES_SOLVER_ELEMENT_LOOPS_H
#define FINITES_SOLVER_ELEMENT_LOOPS_H

#include <algorithm>
#include <cstddef>
#include <vector>

#include "elements/library_model.h"

namespace solver {

// compute(e, value) for every element of this process (is_own), in any order and in any of the threads, take(e, value)
// in the order of the model, in the calling thread alone. One thread takes each value before it computes the next;
// several fill a block.
template <class VALUE, class COMPUTE, class TAKE>
void compute_and_take(const model& m, library_model& library, int threads, const COMPUTE& compute, const TAKE& take) {
  const std::size_t count = m.elements.size();
  constexpr std::size_t BLOCK_BYTES = 4 << 20, LEAST = 64;
  if (threads == 1) {
    VALUE value{};
    for (std::size_t e = 0; e < count; ++e) {
      if (!is_own(m, e)) continue;
      compute(e, value);
      take(e, value);
    }
    return;
  }
  const std::size_t most = std::max(BLOCK_BYTES / sizeof(VALUE), LEAST * static_cast<std::size_t>(threads));
  std::vector<VALUE> block(std::min(most, count));
  for (std::size_t first = 0; first < count; first += block.size()) {
    const std::size_t last = std::min(first + block.size(), count);
    library.divide(first, last, threads, [&](std::size_t, std::size_t from, std::size_t to) {
      for (std::size_t e = from; e < to; ++e) {
        if (is_own(m, e)) compute(e, block[e - first]);
      }
    });
    for (std::size_t e = first; e < last; ++e) {
      if (is_own(m, e)) take(e, block[e - first]);
    }
  }
}

}  // namespace solver

#endif
