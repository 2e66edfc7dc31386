// equilibrium.cpp: CASE_1_L_0_3D2, the forces at the ends of a cable that hangs between two nodes.
#include <algorithm>
#include <cmath>
#include <cstdint>

#include "cable.h"
#include "catenary_parameter.h"
#include "morvenik.h"

namespace morvenik {

namespace {

// A cable stretched beyond 1/NEGLIGIBLE times its length counts as a spring, and an offset across the load of less than
// NEGLIGIBLE times its length counts as zero.
constexpr double NEGLIGIBLE = 1e-30;
constexpr double SMALLEST_KAPPA = 1e-280;

struct chord {
  vector3 span;    // (X2 - X1) / length
  double size;     // |span|
  double excess;   // |span| - 1, from the difference of the lengths themselves
  double along;    // component of the span along the load
  vector3 across;  // what is left of it
};

chord make_chord(const cable& c, const vector3& difference) {
  chord d;
  const double distance = norm(difference);
  d.span = difference / c.length;
  d.size = distance / c.length;
  d.excess = (distance - c.length) / c.length;
  d.along = dot(d.span, c.down);
  d.across = d.span - d.along * c.down;
  return d;
}

// The tension at the middle is (factor across) * chord across + (factor along) * chord along.
struct tension_factors {
  double across, along;
  bool found;
};

tension_factors factors(double weight, double lambda, double tanh_lambda, double kappa) {
  return {0.5 * weight / (lambda + kappa), 0.5 * weight / (tanh_lambda + kappa), true};
}

// Chord along the load. Taut, the tension keeps its sign: |v| = 1 + kappa coth(lambda). Slack, both parts hang from the
// nodes on one line: tanh(lambda) = 1.
tension_factors upright(double weight, double v, double kappa) {
  const double strain = std::fabs(v) - 1.0;
  const double tanh_lambda = strain > kappa ? kappa / strain : 1.0;
  return factors(weight, tanh_lambda, tanh_lambda, kappa);
}

tension_factors loaded(const cable& c, const chord& d) {
  const double kappa = 0.5 * c.weight / c.stiffness;
  if (std::max(kappa, d.size) > 1.0 / NEGLIGIBLE) return {c.stiffness, c.stiffness, true};
  const double bar = c.stiffness * (d.excess / d.size);
  if (kappa < SMALLEST_KAPPA && d.excess > 0.0) return {bar, bar, true};
  const double h = norm(d.across);
  if (h < NEGLIGIBLE) return upright(c.weight, d.along, kappa);
  // The floor is reached only by a straight cable of exactly its length: its tension is that of a very stiff one.
  const double floored = std::max(kappa, SMALLEST_KAPPA);
  const catenary_parameter p = solve_catenary(h, d.along, d.excess, floored);
  tension_factors result = factors(c.weight, p.lambda, p.tanh_lambda, floored);
  result.found = p.found;
  return result;
}

void store(const vector3& a, double* x) {
  x[0] = a.x;
  x[1] = a.y;
  x[2] = a.z;
}

std::int32_t solve(const cable& c, const vector3& difference, vector3& first, vector3& second) {
  const chord d = make_chord(c, difference);
  vector3 middle;
  if (c.weight > 0.0) {
    const tension_factors factor = loaded(c, d);
    if (!factor.found) return CABLE_NOT_CONVERGED;
    middle = factor.across * d.across + factor.along * d.along * c.down;
  } else {
    if (!(d.excess > 0.0)) return CABLE_SLACK_WITHOUT_LOAD;
    middle = c.stiffness * (d.excess / d.size) * d.span;
  }
  const vector3 half = 0.5 * c.weight * c.down;
  first = middle + half;
  second = middle - half;
  return finite(first) && finite(second) ? CABLE_SOLVED : CABLE_NOT_CONVERGED;
}

}  // namespace

}  // namespace morvenik

void CASE_1_L_0_3D2(const std::int32_t* /*elem*/, const double* X1, const double* X2, const double* area,
                    const double* E, const double* L0, const double* e, const double* w, double* F, double* tension1,
                    double* tension2, std::int32_t* status) {
  using namespace morvenik;
  std::fill_n(F, 6, 0.0);
  *tension1 = 0.0;
  *tension2 = 0.0;
  cable c;
  const vector3 difference = at(X2) - at(X1);
  if (!make_cable(*area, *E, *L0, *e, w, c) || !finite(difference)) {
    *status = CABLE_BAD_DATA;
    return;
  }
  vector3 first;
  vector3 second;
  *status = solve(c, difference, first, second);
  if (*status != CABLE_SOLVED) return;
  store(-1.0 * first, F);
  store(second, F + 3);
  *tension1 = norm(first);
  *tension2 = norm(second);
}
