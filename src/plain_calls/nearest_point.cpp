// nearest_point.cpp: the dual method of Goldfarb and Idnani (1983) for the few planes of two hinges.
//
// The planes that x violates are taken in one after the other, the worst first. With the active normals N and a new one
// n, x moves by -t C (n - N r), N^T C N r = N^T C n, and the multipliers by (-t r, t): along the planes that hold,
// until the new one holds (t = violation / n^T C (n - N r)) or the multiplier of an old one would become negative,
// which is left then. The energy grows in each step, so that no set of planes returns.
#include "plain_calls/nearest_point.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr int N = SECTION_COMPONENTS;
// A step takes in one plane or leaves one, and never comes back to the same set: only rounding can ask for more.
constexpr int MOST_STEPS = 200;
// A normal whose independent part has less than this share of its energy depends on the active ones.
constexpr double DEPENDENT = 1e-11;
// The violation that rounding gives, for trial forces of size 1.
constexpr double ROUNDING = 1e-14;

// r := (N^T C N)^-1 N^T C n by Cholesky.
struct SYSTEM {
  int count = 0;
  SECTION_VECTOR moved[N];  // C n of the active normals
  double L[N][N];

  void factor(const SECTION_MATRIX& C, const CUTS& cuts, const ACTIVE_CUTS& active) {
    count = active.count;
    for (int i = 0; i < count; ++i) moved[i] = product(C, cuts.normal[active.number[i]]);
    for (int i = 0; i < count; ++i) {
      for (int j = 0; j <= i; ++j) {
        double sum = product(cuts.normal[active.number[i]], moved[j]);
        for (int k = 0; k < j; ++k) sum -= L[i][k] * L[j][k];
        L[i][j] = i == j ? std::sqrt(std::fmax(sum, std::numeric_limits<double>::min())) : sum / L[j][j];
      }
    }
  }

  // r: right side on entry.
  void solve(double* r) const {
    for (int i = 0; i < count; ++i) {
      for (int k = 0; k < i; ++k) r[i] -= L[i][k] * r[k];
      r[i] /= L[i][i];
    }
    for (int i = count - 1; i >= 0; --i) {
      for (int k = i + 1; k < count; ++k) r[i] -= L[k][i] * r[k];
      r[i] /= L[i][i];
    }
  }
};

double violation(const CUTS& cuts, int i, const SECTION_VECTOR& x) {
  return product(cuts.normal[i], x) - cuts.limit[i];
}

bool is_active(const ACTIVE_CUTS& active, int i) {
  return std::find(active.number, active.number + active.count, i) != active.number + active.count;
}

// The plane that x violates most, of those along whose normal x can move; -1: none beyond `tolerance`.
int worst_cut(const SECTION_MATRIX& C, const CUTS& cuts, const ACTIVE_CUTS& active, const SECTION_VECTOR& x,
              double tolerance) {
  int worst = -1;
  double most = tolerance;
  for (int i = 0; i < cuts.count; ++i) {
    const double v = violation(cuts, i, x);
    if (!(v > most) || is_active(active, i) || !(product(cuts.normal[i], product(C, cuts.normal[i])) > 0.0)) continue;
    worst = i;
    most = v;
  }
  return worst;
}

void leave(ACTIVE_CUTS& active, int i) {
  --active.count;
  for (int k = i; k < active.count; ++k) {
    active.number[k] = active.number[k + 1];
    active.multiplier[k] = active.multiplier[k + 1];
  }
}

// One step towards plane `cut`, whose multiplier so far is `own`.
enum class STEP { holds, left_one, stuck };

STEP step_towards(const SECTION_MATRIX& C, const CUTS& cuts, int cut, double& own, SECTION_VECTOR& x,
                  ACTIVE_CUTS& active) {
  SYSTEM system;
  system.factor(C, cuts, active);
  const SECTION_VECTOR& n = cuts.normal[cut];
  SECTION_VECTOR move = product(C, n);
  const double energy = product(n, move);
  double r[N] = {};
  for (int i = 0; i < active.count; ++i) r[i] = product(n, system.moved[i]);
  system.solve(r);
  for (int i = 0; i < active.count; ++i) {
    for (int k = 0; k < N; ++k) move.V[k] -= r[i] * system.moved[i].V[k];
  }
  const double independent = product(n, move);

  int first = -1;
  double t = std::numeric_limits<double>::infinity();
  for (int i = 0; i < active.count; ++i) {
    if (!(r[i] > 0.0) || !(active.multiplier[i] / r[i] < t)) continue;
    t = active.multiplier[i] / r[i];
    first = i;
  }
  const bool moves = independent > DEPENDENT * energy && active.count < N;
  if (!moves && first < 0) return STEP::stuck;
  const double full = moves ? std::fmax(violation(cuts, cut, x), 0.0) / independent : t;
  const bool holds = moves && full <= t;
  if (holds) t = full;
  for (int k = 0; k < N && moves; ++k) x.V[k] -= t * move.V[k];
  for (int i = 0; i < active.count; ++i) active.multiplier[i] = std::fmax(active.multiplier[i] - t * r[i], 0.0);
  own += t;
  if (holds) return STEP::holds;
  leave(active, first);
  return STEP::left_one;
}

// Takes the rounding of the way out of x: the active planes hold to the last digits.
void settle(const SECTION_MATRIX& C, const CUTS& cuts, const ACTIVE_CUTS& active, SECTION_VECTOR& x) {
  SYSTEM system;
  system.factor(C, cuts, active);
  for (int pass = 0; pass < 2; ++pass) {
    double y[N] = {};
    for (int i = 0; i < active.count; ++i) y[i] = violation(cuts, active.number[i], x);
    system.solve(y);
    for (int i = 0; i < active.count; ++i) {
      for (int k = 0; k < N; ++k) x.V[k] -= y[i] * system.moved[i].V[k];
    }
  }
}

}  // namespace

SECTION_VECTOR product(const SECTION_MATRIX& A, const SECTION_VECTOR& x) {
  SECTION_VECTOR y{};
  for (int i = 0; i < N; ++i) {
    for (int k = 0; k < N; ++k) y.V[i] += A.V[i][k] * x.V[k];
  }
  return y;
}

double product(const SECTION_VECTOR& x, const SECTION_VECTOR& y) {
  double sum = 0.0;
  for (int k = 0; k < N; ++k) sum += x.V[k] * y.V[k];
  return sum;
}

double largest(const SECTION_VECTOR& x) {
  double size = 0.0;
  for (const double v : x.V) size = std::fmax(size, std::fabs(v));
  return size;
}

bool nearest_point(const SECTION_MATRIX& C, const CUTS& cuts, SECTION_VECTOR& x, ACTIVE_CUTS& active) {
  const double tolerance = ROUNDING * (1.0 + largest(x));
  active = {};
  int steps = 0;
  for (;;) {
    const int cut = worst_cut(C, cuts, active, x, tolerance);
    if (cut < 0) break;
    double own = 0.0;
    STEP outcome = STEP::left_one;
    while (outcome == STEP::left_one) {
      if (++steps > MOST_STEPS) return false;
      outcome = step_towards(C, cuts, cut, own, x, active);
    }
    if (outcome == STEP::stuck) return false;
    active.number[active.count] = cut;
    active.multiplier[active.count++] = own;
  }
  settle(C, cuts, active, x);
  return true;
}

void take_out(const CUTS& cuts, const ACTIVE_CUTS& active, SECTION_MATRIX& C) {
  for (int i = 0; i < active.count; ++i) {
    const SECTION_VECTOR& n = cuts.normal[active.number[i]];
    const SECTION_VECTOR Cn = product(C, n);
    const double energy = product(n, Cn);
    if (!(energy > 0.0)) continue;
    for (int r = 0; r < N; ++r) {
      for (int c = 0; c < N; ++c) C.V[r][c] -= Cn.V[r] * Cn.V[c] / energy;
    }
  }
}
