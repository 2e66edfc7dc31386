// catenary_parameter.cpp: the root of the equation of the catenary, by Newton's method inside a bracket that shrinks
// with every step. The start is mostly within some per cent of the root.
#include "catenary_parameter.h"

#include <algorithm>
#include <cmath>

namespace morvenik {

namespace {

// At this lambda the left side exceeds 1 for every h and kappa that are accepted, and its square does not overflow.
constexpr double LARGEST_LAMBDA = 350.0;
constexpr int MAX_STEPS = 100;
// Rounding of the left side. In the chord it is half as much, relative to the length.
constexpr double ROUNDING = 2e-15;
// After a relative step of this size Newton's error is below rounding.
constexpr double LAST_STEP = 1e-8;

struct left_side {
  double excess;  // P^2 + Q^2 - 1, P along the load, Q across
  double slope;
  double tanh_lambda;
};

left_side evaluate(double lambda, double h, double v, double kappa) {
  const double grown = std::expm1(lambda);
  const double sinh_lambda = 0.5 * (grown + grown / (1.0 + grown));
  const double cosh_lambda = sinh_lambda + 1.0 / (1.0 + grown);
  const double tanh_lambda = sinh_lambda / cosh_lambda;
  // lambda cosh(lambda) - sinh(lambda), by its series where the difference would lose its digits.
  const double square = lambda * lambda;
  const double lag = lambda < 0.05 ? lambda * square * (1.0 + 0.1 * square) / 3.0 : lambda * cosh_lambda - sinh_lambda;

  const double along = tanh_lambda + kappa;
  const double across = lambda + kappa;
  const double P = v * (tanh_lambda / along);
  const double Q = h * (sinh_lambda / across);
  const double dP = v * (kappa / along) / (along * cosh_lambda * cosh_lambda);
  const double dQ = h * ((lag + kappa * cosh_lambda) / across) / across;
  return {P * P + Q * Q - 1.0, 2.0 * (P * dP + Q * dQ), tanh_lambda};
}

// To second order in lambda the equation is (1 + kappa/lambda)^2 = (1 + excess)^2 + a lambda^2 with a = h^2/3:
//
//   a lambda^4 + b lambda^2 - 2 kappa lambda - kappa^2 = 0
//
// with one positive root. From a start to its right Newton's method converges monotonically. For a large lambda the
// parabola is an estimate of sinh^2(lambda)/lambda^2, and lambda follows from a fit of the inverse of
// u = ln(sinh(lambda)/lambda) that is exact to second order at 0 and within 4 per cent up to lambda = 40.
double start_value(double h, double excess, double kappa) {
  const double a = h * h / 3.0;
  const double b = excess * (excess + 2.0);
  const double elastic = std::cbrt(2.0 * kappa / a) + std::sqrt(kappa / std::sqrt(a));
  double lambda = b > 0.0 ? std::min(kappa / excess, elastic) : std::sqrt(-b / a) + elastic;
  for (int i = 0; i < 4; ++i) {
    const double square = lambda * lambda;
    const double value = (a * square + b) * square - kappa * (2.0 * lambda + kappa);
    const double slope = (4.0 * a * square + 2.0 * b) * lambda - 2.0 * kappa;
    // Converged to the last digits, or squares below the range of a double.
    if (!(value > 0.0 && slope > 0.0)) break;
    lambda -= value / slope;
  }
  if (lambda > 0.1) {
    const double u = 0.5 * std::log1p(lambda * lambda / 3.0);
    lambda = std::sqrt(u * (6.0 + 1.2 * u));
  }
  return std::min(lambda, 0.5 * LARGEST_LAMBDA);
}

// Newton's step for ln(1 + excess), which grows like 2 lambda where the left side grows exponentially. Near the root
// the logarithm is replaced by a simple fraction.
double newton_step(const left_side& f) {
  const double logarithm = std::fabs(f.excess) < 0.5 ? 2.0 * f.excess / (2.0 + f.excess) : std::log1p(f.excess);
  return -logarithm * (1.0 + f.excess) / f.slope;
}

double between(double low, double high) {
  if (low > 0.0) return high > 4.0 * low ? std::sqrt(low) * std::sqrt(high) : 0.5 * (low + high);
  return 0.1 * high;
}

}  // namespace

catenary_parameter solve_catenary(double h, double v, double excess, double kappa) {
  double low = 0.0;
  double high = LARGEST_LAMBDA;
  double lambda = start_value(h, excess, kappa);
  for (int i = 0; i < MAX_STEPS; ++i) {
    const left_side f = evaluate(lambda, h, v, kappa);
    if (std::fabs(f.excess) <= ROUNDING) return {lambda, f.tanh_lambda, true};
    (f.excess > 0.0 ? high : low) = lambda;
    double next = lambda + newton_step(f);
    if (!(next > low && next < high)) next = between(low, high);
    const double step = std::fabs(next - lambda);
    lambda = next;
    if (step <= LAST_STEP * lambda) return {lambda, std::tanh(lambda), true};
  }
  return {lambda, std::tanh(lambda), false};
}

}  // namespace morvenik
