// finiteness.h: whether values are numbers, neither infinite nor NaN.
#ifndef FINITES_FINITENESS_H
#define FINITES_FINITENESS_H

#include "common/two_lanes.h"

// 0, or NaN where x is infinite or NaN.
inline LANES not_finite(LANES x) { return x - x; }

// Two sums of two lanes run side by side.
inline bool all_finite(const double* values, int count) {
  LANES first{};
  LANES second{};
  int i = 0;
  for (; i + 4 <= count; i += 4) {
    first = first + not_finite(load_lanes(values + i));
    second = second + not_finite(load_lanes(values + i + 2));
  }
  double sum = first[0] + first[1] + second[0] + second[1];
  for (; i < count; ++i) sum += values[i] - values[i];
  return sum == 0.0;
}

#endif
