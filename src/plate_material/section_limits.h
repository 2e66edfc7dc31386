// section_limits.h: the constants of the whole-section return mapping.
#ifndef FINITES_SECTION_LIMITS_H
#define FINITES_SECTION_LIMITS_H

constexpr double ROOT_3_SINGLE =
    1.7320507764816284;  // single precision, widened: part of the results (docs/decisions.md)

// A divisor at or below it counts as zero: the routine reports its text and writes nothing more. The divisors
// 1 + 2 x LAM are 1 or more for a multiplier that is not negative; the derivative and alpha + m are compared in their
// own units.
constexpr double SMALLEST_DIVISOR = 1e-16;

// Newton's method ends when |y - at| / (|y| + NEWTON_GUARD) is at most NEWTON_CONVERGED; y, the value after that
// change, is kept. NEWTON_GUARD keeps the quotient finite at 0 and makes the test absolute for multipliers far below
// it. The last digits of the multiplier, and so of the forces, depend on both: they are part of the results
// (docs/decisions.md).
constexpr int NEWTON_PASSES = 1000;
constexpr double NEWTON_CONVERGED = 1e-4;
constexpr double NEWTON_GUARD = 1e-9;

#endif
