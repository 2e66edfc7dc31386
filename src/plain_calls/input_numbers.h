// input_numbers.h: whether the numbers of a caller can be worked with.
#ifndef FINITES_PLAIN_INPUT_NUMBERS_H
#define FINITES_PLAIN_INPUT_NUMBERS_H

#include <algorithm>
#include <cmath>

#include "common/finiteness.h"
#include "finites/elements.h"

// Below it no product inside a call overflows for lengths of ordinary size; nor do lengths below its inverse.
constexpr double LARGEST_INPUT = 1e30;
constexpr double SMALLEST_LENGTH = 1e-30;

// FINITES_NAN where a number is NaN or infinite, else FINITES_RANGE where one is too large.
inline finites_status status_of_numbers(const double* values, int count) {
  finites_status status = FINITES_OK;
  for (int i = 0; i < count; ++i) {
    if (std::fabs(values[i]) <= LARGEST_INPUT) continue;
    if (!std::isfinite(values[i])) return FINITES_NAN;
    status = FINITES_RANGE;
  }
  return status;
}

// The worse of two: what is no number comes before what is too large.
inline finites_status first_fault(finites_status a, finites_status b) {
  if (a == FINITES_NAN || b == FINITES_NAN) return FINITES_NAN;
  return a != FINITES_OK ? a : b;
}

// to := the answer; where it is not finite, FINITES_RESULT and nothing is written.
inline finites_status copy_finite(const double* answer, int count, double* to) {
  if (!all_finite(answer, count)) return FINITES_RESULT;
  std::copy_n(answer, count, to);
  return FINITES_OK;
}

#endif
