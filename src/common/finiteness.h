// finiteness.h: whether values are numbers, neither infinite nor NaN.
//
// For short cuts that leave out products with zeros: only finite factors make such a product zero, and every other way
// must go through the full sums.
#ifndef FINITES_FINITENESS_H
#define FINITES_FINITENESS_H

#include <cmath>

#include "common/lanes.h"

// True only where all values are finite: an infinite value or NaN never leaves a sum. False also where the sum of
// finite values overflows, so that the full way must give the same answer there.
inline bool all_finite(const double* values, int count) {
  LANES sum[4] = {};
  int i = 0;
  for (; i + 8 <= count; i += 8) {
    for (int s = 0; s < 4; ++s) sum[s] = sum[s] + lanes_at(values + i + 2 * s);
  }
  double rest = sum_of((sum[0] + sum[1]) + (sum[2] + sum[3]));
  for (; i < count; ++i) rest += values[i];
  return std::isfinite(rest);
}

#endif
