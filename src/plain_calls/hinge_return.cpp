// hinge_return.cpp: closest-point return of the end forces of a beam with associated flow (Simo and Hughes, 1998).
//
// The forces x of a step solve, with the trial forces x_tr, the elastic stiffness C, the values f and gradients n of
// the active equations and their multipliers l,
//
//     x = x_tr - C sum l n(x),    l >= 0,    f(x) <= 1,    l (f(x) - 1) = 0,
//
// the conditions of the point of the elastic range that is nearest to x_tr in the energy of C^-1. Planes give it in
// finitely many steps (nearest_point.cpp). For a smooth surface Newton's method takes the planes that touch it at x,
// and the curvature of the surface W = sum l f'' into the energy:
//
//     C' = (I + C W)^-1 C,    x_tr' = x - (I + C W)^-1 (x - x_tr),
//
// which is the tangent too once the active normals are taken out of it. Far trial forces are approached along the ray
// from zero, where the surface is met first, in steps as large as Newton's method allows: the nearest point moves ever
// less the farther they are. The surface is not convex everywhere (between axial force and strong moment it has a
// hollow of some thousandths), so that from very far beyond the hollow a step may fail.
#include "plain_calls/hinge_return.h"

#include <algorithm>
#include <cmath>

#include "plain_calls/nearest_point.h"
#include "plain_calls/yield_surface.h"

namespace {

constexpr int N = SECTION_COMPONENTS;
// Values up to 1 and this much count as within: forces that lie on the surface do not flow by rounding.
constexpr double ON_SURFACE = 1e-11;
constexpr int MOST_ITERATIONS = 30, MOST_STAGES = 200;
constexpr double LONGEST_MOVE = 0.3;  // of a step of Newton's method
constexpr double CONVERGED = 1e-13, NEARLY = 1e-9;
constexpr double ROUNDING = 1e-15;  // in forces of size 1

struct PROBLEM {
  const finites_yield& yield;
  int ends;
  const SECTION_MATRIX& C;

  bool may_yield(int end) const { return (ends & (end + 1)) != 0; }
};

void forces_of_end(const SECTION_VECTOR& x, int end, double* f) {
  for (int c = 0; c < 3; ++c) f[c] = x.V[place_of(end, c)];
}

SECTION_VECTOR vector_of_end(const double* n, int end) {
  SECTION_VECTOR v{};
  for (int c = 0; c < 3; ++c) v.V[place_of(end, c)] = n[c];
  return v;
}

// ---------------------------------------------------------------------------------------------- planes

void set_cuts(const PROBLEM& p, CUTS& cuts) {
  double n[MOST_PLANES][3];
  const int planes = planes_of(p.yield, n);
  cuts.count = 0;
  for (int end = 0; end < 2; ++end) {
    for (int i = 0; i < planes && p.may_yield(end); ++i) {
      cuts.normal[cuts.count] = vector_of_end(n[i], end);
      cuts.limit[cuts.count++] = 1.0;
    }
  }
}

// Cuts come by ends, the same number of each that may yield.
int end_of_cut(const PROBLEM& p, const CUTS& cuts, int i) { return p.ends == 3 ? 2 * i / cuts.count : p.ends - 1; }

// An axial hinge at both ends stretches as one, each by half.
void share_axial_flow(HINGE_RETURN& a) {
  a.flow[0][0] = a.flow[1][0] = (a.flow[0][0] + a.flow[1][0]) / 2.0;
  a.yields[0] = a.yields[1] = a.yields[0] || a.yields[1];
}

double worst_violation(const CUTS& cuts, const SECTION_VECTOR& x) {
  double worst = -1.0;
  for (int i = 0; i < cuts.count; ++i) worst = std::fmax(worst, product(cuts.normal[i], x) - cuts.limit[i]);
  return worst;
}

bool return_to_planes(const PROBLEM& p, const CUTS& cuts, HINGE_RETURN& a) {
  ACTIVE_CUTS active;
  if (!nearest_point(p.C, cuts, a.force, active) || worst_violation(cuts, a.force) > ON_SURFACE) return false;
  for (int i = 0; i < active.count; ++i) {
    const int end = end_of_cut(p, cuts, active.number[i]);
    if (active.multiplier[i] > 0.0) a.yields[end] = true;
    for (int c = 0; c < 3; ++c) {
      a.flow[end][c] += active.multiplier[i] * cuts.normal[active.number[i]].V[place_of(end, c)];
    }
  }
  if (p.ends == 3 && p.yield.curve == FINITES_SINGLE && p.yield.forces == 1) share_axial_flow(a);
  take_out(cuts, active, a.tangent);
  return true;
}

// ---------------------------------------------------------------------------------------------- a smooth surface

double smooth_violation(const PROBLEM& p, const SECTION_VECTOR& x) {
  double worst = -1.0;
  for (int end = 0; end < 2; ++end) {
    if (!p.may_yield(end)) continue;
    double f[3];
    forces_of_end(x, end, f);
    worst = std::fmax(worst, smooth_value(p.yield, f) - 1.0);
  }
  return worst;
}

struct SMOOTH_POINT {
  SECTION_VECTOR x;
  double multiplier[2];
};

// The planes that touch the surfaces of the ends at x, and B = (I + C W)^-1, C' = B C.
struct MODEL {
  CUTS cuts;
  int end[2];
  SECTION_MATRIX B, C;
};

// A := A^-1 by Gauss and Jordan with pivots. False for a singular matrix.
bool invert(SECTION_MATRIX& A) {
  SECTION_MATRIX I{};
  for (int i = 0; i < N; ++i) I.V[i][i] = 1.0;
  for (int d = 0; d < N; ++d) {
    int best = d;
    for (int r = d + 1; r < N; ++r) {
      if (std::fabs(A.V[r][d]) > std::fabs(A.V[best][d])) best = r;
    }
    if (!(std::fabs(A.V[best][d]) > 0.0)) return false;
    std::swap_ranges(A.V[d], A.V[d] + N, A.V[best]);
    std::swap_ranges(I.V[d], I.V[d] + N, I.V[best]);
    const double pivot = A.V[d][d];
    for (int c = 0; c < N; ++c) {
      A.V[d][c] /= pivot;
      I.V[d][c] /= pivot;
    }
    for (int r = 0; r < N; ++r) {
      const double factor = A.V[r][d];
      if (r == d || factor == 0.0) continue;
      for (int c = 0; c < N; ++c) {
        A.V[r][c] -= factor * A.V[d][c];
        I.V[r][c] -= factor * I.V[d][c];
      }
    }
  }
  A = I;
  return true;
}

SECTION_MATRIX product(const SECTION_MATRIX& A, const SECTION_MATRIX& B) {
  SECTION_MATRIX P{};
  for (int i = 0; i < N; ++i) {
    for (int k = 0; k < N; ++k) {
      for (int j = 0; j < N; ++j) P.V[i][j] += A.V[i][k] * B.V[k][j];
    }
  }
  return P;
}

bool set_model(const PROBLEM& p, const SMOOTH_POINT& at, MODEL& m) {
  SECTION_MATRIX W{};
  m.cuts.count = 0;
  for (int end = 0; end < 2; ++end) {
    if (!p.may_yield(end)) continue;
    double f[3];
    forces_of_end(at.x, end, f);
    const SMOOTH_YIELD s = smooth_yield(p.yield, f);
    const SECTION_VECTOR n = vector_of_end(s.gradient, end);
    m.end[m.cuts.count] = end;
    m.cuts.normal[m.cuts.count] = n;
    m.cuts.limit[m.cuts.count++] = product(n, at.x) - (s.value - 1.0);
    for (int i = 0; i < 3; ++i) {
      for (int j = 0; j < 3; ++j) W.V[place_of(end, i)][place_of(end, j)] += at.multiplier[end] * s.second[i][j];
    }
  }
  m.B = product(p.C, W);
  for (int i = 0; i < N; ++i) m.B.V[i][i] += 1.0;
  if (!invert(m.B)) return false;
  const SECTION_MATRIX BC = product(m.B, p.C);
  for (int i = 0; i < N; ++i) {
    for (int j = 0; j < N; ++j) m.C.V[i][j] = 0.5 * (BC.V[i][j] + BC.V[j][i]);
  }
  return true;
}

// The largest move among the forces that can yield. The others follow linearly, however far they go.
double move_on_surface(const PROBLEM& p, const SECTION_VECTOR& dx) {
  double move = 0.0;
  for (int end = 0; end < 2; ++end) {
    for (int c = 0; c < 3; ++c) {
      if (!p.may_yield(end) || !in_force_set(p.yield.forces, c)) continue;
      move = std::fmax(move, std::fabs(dx.V[place_of(end, c)]));
    }
  }
  return move;
}

// One step of Newton's method. The move it wants to make, or a negative number where it fails.
double newton_step(const PROBLEM& p, const SECTION_VECTOR& trial, SMOOTH_POINT& at) {
  MODEL m;
  if (!set_model(p, at, m)) return -1.0;
  SECTION_VECTOR gap;
  for (int k = 0; k < N; ++k) gap.V[k] = at.x.V[k] - trial.V[k];
  gap = product(m.B, gap);
  SECTION_VECTOR x;
  for (int k = 0; k < N; ++k) x.V[k] = at.x.V[k] - gap.V[k];
  ACTIVE_CUTS active;
  if (!nearest_point(m.C, m.cuts, x, active)) return -1.0;
  at.multiplier[0] = at.multiplier[1] = 0.0;
  for (int i = 0; i < active.count; ++i) at.multiplier[m.end[active.number[i]]] = active.multiplier[i];
  SECTION_VECTOR dx;
  for (int k = 0; k < N; ++k) dx.V[k] = x.V[k] - at.x.V[k];
  const double move = move_on_surface(p, dx);
  if (!std::isfinite(move) || !std::isfinite(largest(dx))) return -1.0;
  if (move <= LONGEST_MOVE) {
    at.x = x;
  } else {
    for (int k = 0; k < N; ++k) at.x.V[k] += LONGEST_MOVE / move * dx.V[k];
  }
  return move;
}

bool newton(const PROBLEM& p, const SECTION_VECTOR& trial, SMOOTH_POINT& at) {
  const double rounding = ROUNDING * largest(trial);
  bool nearly = false;
  for (int i = 0; i < MOST_ITERATIONS; ++i) {
    const double move = newton_step(p, trial, at);
    if (move < 0.0) return false;
    // Quadratic convergence: after a small move another one ends at the last digits, or at what rounding leaves.
    const bool small = move < NEARLY + 100.0 * rounding;
    if (move < CONVERGED + rounding || (nearly && small)) return smooth_violation(p, at.x) <= ON_SURFACE;
    nearly = small;
  }
  return false;
}

SECTION_VECTOR scaled(const SECTION_VECTOR& x, double by) {
  SECTION_VECTOR y;
  for (int k = 0; k < N; ++k) y.V[k] = by * x.V[k];
  return y;
}

// The share of the trial forces, beyond the surface, at which the ray from zero meets it.
double first_yield(const PROBLEM& p, const SECTION_VECTOR& trial) {
  double inside = 0.0;
  double outside = 1.0;
  for (int i = 0; i < 2000 && outside - inside > 1e-15 * outside; ++i) {
    const double middle =
        inside > 0.0 && outside > 4.0 * inside ? std::sqrt(inside * outside) : 0.5 * (inside + outside);
    (smooth_violation(p, scaled(trial, middle)) > 0.0 ? outside : inside) = middle;
  }
  return inside;
}

// From the surface to the trial forces in stages, each from the nearest point of the one before.
bool approach(const PROBLEM& p, const SECTION_VECTOR& trial, double first, SMOOTH_POINT& at) {
  const SMOOTH_POINT start{scaled(trial, first), {0.0, 0.0}};
  at = start;
  if (newton(p, trial, at)) return true;
  at = start;
  double reached = first;
  double growth = 2.0;
  for (int stage = 0; stage < MOST_STAGES && growth - 1.0 > 1e-7; ++stage) {
    const double next = std::fmin(1.0, reached * growth);
    SMOOTH_POINT attempt = at;
    for (double& l : attempt.multiplier) l *= next / reached;
    if (!newton(p, scaled(trial, next), attempt)) {
      growth = std::sqrt(growth);
      continue;
    }
    at = attempt;
    if (next >= 1.0) return true;
    reached = next;
    growth = std::fmin(growth * growth, 16.0);
  }
  return false;
}

bool return_to_smooth(const PROBLEM& p, const SECTION_VECTOR& trial, HINGE_RETURN& a) {
  SMOOTH_POINT at;
  MODEL m;
  if (!approach(p, trial, first_yield(p, trial), at) || !set_model(p, at, m)) return false;
  a.force = at.x;
  a.tangent = m.C;
  ACTIVE_CUTS active{};
  for (int i = 0; i < m.cuts.count; ++i) {
    const int end = m.end[i];
    if (!(at.multiplier[end] > 0.0)) continue;
    a.yields[end] = true;
    for (int c = 0; c < 3; ++c) a.flow[end][c] = at.multiplier[end] * m.cuts.normal[i].V[place_of(end, c)];
    active.number[active.count++] = i;
  }
  take_out(m.cuts, active, a.tangent);
  return true;
}

}  // namespace

bool return_to_surface(const finites_yield& yield, int ends, const SECTION_MATRIX& C, const SECTION_VECTOR& trial,
                       HINGE_RETURN& answer) {
  const PROBLEM p{yield, ends, C};
  answer = {};
  answer.force = trial;
  answer.tangent = C;
  answer.elastic = true;
  if (yield.curve == FINITES_ORBISON) {
    if (smooth_violation(p, trial) <= ON_SURFACE) return true;
    answer.elastic = false;
    return return_to_smooth(p, trial, answer);
  }
  CUTS cuts;
  set_cuts(p, cuts);
  if (worst_violation(cuts, trial) <= ON_SURFACE) return true;
  answer.elastic = false;
  return return_to_planes(p, cuts, answer);
}
