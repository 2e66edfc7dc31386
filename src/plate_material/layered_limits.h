// layered_limits.h: the constants of the return mapping of thickness points.
#ifndef FINITES_LAYERED_LIMITS_H
#define FINITES_LAYERED_LIMITS_H

// Fractions and a root in single precision, widened to double: their digits are part of the results
// (docs/decisions.md).
constexpr double TWO_THIRDS_SINGLE = 0.6666666865348816;
constexpr double ONE_THIRD_SINGLE = 0.3333333432674408;
constexpr double FIVE_TWELFTHS_SINGLE = 0.4166666567325592;  // (5/6) / 2: the shear modulus is E / (2 (1 + nu))
constexpr double FIVE_THIRDS_SINGLE = 1.6666666269302368;
constexpr double ROOT_1_2_SINGLE = 0.7071067690849304;  // of the eigenvectors (1, 1) / sqrt 2, (1, -1) / sqrt 2

// SMALLEST_LAYERED_DIVISOR: a divisor below it counts as zero; it also keeps the relative change finite where the
// multiplier is 0. LAYERED_CONVERGED: the relative change |y - x| / (|x| + SMALLEST_LAYERED_DIVISOR) of the multiplier
// that ends Newton's method; the value kept is y, the one after that change. The digits that these leave in the
// multiplier are part of the results (docs/decisions.md).
constexpr double SMALLEST_LAYERED_DIVISOR = 1e-15;
constexpr double LAYERED_CONVERGED = 1e-6;
constexpr int MOST_LAYERED_PASSES = 500;

// Most points settle in about ten passes.
constexpr int USUAL_LAYERED_PASSES = 60;

#endif
