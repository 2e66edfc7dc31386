// plastic_flow.h: the change of a stiffness by the flow at its hinges, for a matrix K that the planes of the member
// give, without its zeros and those of the flow directions.
#ifndef FINITES_PLASTIC_FLOW_H
#define FINITES_PLASTIC_FLOW_H

#include <cstdint>

#include "hinges/yield_curves.h"

enum class FLOW {
  added,     // KP is written
  singular,  // N^T K N has no inverse; KP is untouched
  in_full,   // K is not of the pattern, or a value is infinite or NaN and would reach entries through zeros: all
             // products are needed; KP is untouched
};

// B := B^-1 of order n, 0 on success, for the equations of both ends: two of them in single precision, so that
// gradients which are equal in single precision count as parallel. The digits are part of the results
// (docs/decisions.md).
std::int32_t invert_both_sides(double* B, std::int32_t n);

// The same for the equations of one end, in double precision.
std::int32_t invert_one_side(double* B, std::int32_t n);

// KP (12, 12) := -K N (N^T K N)^-1 N^T K for the first n columns. The caller has cleared KP.
FLOW flow_of_both_sides(const double* K, const FLOW_COLUMN* N, std::int32_t n, double* KP);

// The same for n columns of one end. Two at most are formed: the row and column of a third stay zero, which makes the
// matrix singular. Nothing for n < 1.
FLOW flow_of_one_side(const double* K, const FLOW_COLUMN* N, std::int32_t n, double* KP);

#endif
