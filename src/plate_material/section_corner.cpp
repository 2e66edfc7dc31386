// section_corner.cpp: the return of a section along both branches of its yield condition, by Newton's method in the two
// multipliers (Simo, Kennedy and Govindjee, 1988).
#include "plate_material/section_corner.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double MIXED = 0.28867513459481287;   // 1 / (2 sqrt(3)): the mixed term in the matrix of its quadratic form
constexpr double ROOT_2_3 = 0.816496580927726;  // from the norm of a strain tensor to its equivalent
constexpr double ROOT_HALF = 0.7071067811865476;
constexpr int PASSES = 100, HALVINGS = 20;
constexpr double CONVERGED = 1e-13, ENOUGH = 1e-7;  // of both conditions; ENOUGH where rounding ends the iteration
constexpr double CLOSE = 1e-15;                     // two ratios of the multipliers
constexpr double SLACK = 1e-6;                      // of a multiplier at the edge of the corner, by the sum of both

// A force and its moment, the two transverse shears, or two multipliers.
struct PAIR {
  double a, b;
};
PAIR operator+(PAIR x, PAIR y) { return {x.a + y.a, x.b + y.b}; }
PAIR operator*(double f, PAIR x) { return {f * x.a, f * x.b}; }
double dot(PAIR x, PAIR y) { return x.a * y.a + x.b * y.b; }

using SQUARE = MATRIX<2, 2>;
PAIR operator*(const SQUARE& A, PAIR x) { return {A(1, 1) * x.a + A(1, 2) * x.b, A(2, 1) * x.a + A(2, 2) * x.b}; }
SQUARE inverse_of(const SQUARE& A) {
  const double det = A(1, 1) * A(2, 2) - A(1, 2) * A(2, 1);
  return {{A(2, 2) / det, -A(2, 1) / det, -A(1, 2) / det, A(1, 1) / det}};
}

// The metric of von Mises and the stiffness of an isotropic section share their modes: the sum of the two normal
// components by the root of 2, their difference, and the shear component. The transverse shears stand alone.
constexpr int MODES = 3;
constexpr double METRIC[MODES] = {0.5, 1.5, 3.0};
constexpr double SHEAR_METRIC = 3.0;

// Forces, strains or gradients by mode, without dimension.
struct MODAL {
  PAIR s[MODES];
  PAIR q;
};

double dot(const MODAL& a, const MODAL& b) {
  double sum = dot(a.q, b.q);
  for (int i = 0; i < MODES; ++i) sum += dot(a.s[i], b.s[i]);
  return sum;
}

MODAL added(double x, const MODAL& a, double y, const MODAL& b) {
  MODAL c;
  for (int i = 0; i < MODES; ++i) c.s[i] = x * a.s[i] + y * b.s[i];
  c.q = x * a.q + y * b.q;
  return c;
}

MODAL to_modes(const VECTOR<8>& v, double membrane, double bending) {
  MODAL m;
  m.s[0] = {ROOT_HALF * membrane * (v(1) + v(2)), ROOT_HALF * bending * (v(4) + v(5))};
  m.s[1] = {ROOT_HALF * membrane * (v(1) - v(2)), ROOT_HALF * bending * (v(4) - v(5))};
  m.s[2] = {membrane * v(3), bending * v(6)};
  m.q = {membrane * v(7), membrane * v(8)};
  return m;
}

VECTOR<8> from_modes(const MODAL& m, double membrane, double bending) {
  const double n = membrane * ROOT_HALF;
  const double b = bending * ROOT_HALF;
  return {{n * (m.s[0].a + m.s[1].a), n * (m.s[0].a - m.s[1].a), membrane * m.s[2].a, b * (m.s[0].b + m.s[1].b),
           b * (m.s[0].b - m.s[1].b), bending * m.s[2].b, membrane * m.q.a, membrane * m.q.b}};
}

double normal_force(const SECTION_STRENGTH& of) { return of.yield_stress * of.thickness; }
double moment(const SECTION_STRENGTH& of) { return normal_force(of) * of.thickness / 4.0; }

MODAL forces_of(const SECTION_STRENGTH& of, const VECTOR<8>& force) {
  return to_modes(force, 1.0 / normal_force(of), 1.0 / moment(of));
}

// Half the gradient of n'A m / sqrt(3).
MODAL mixed_gradient(const MODAL& f) {
  MODAL g;
  for (int i = 0; i < MODES; ++i) g.s[i] = MIXED * METRIC[i] * PAIR{f.s[i].b, f.s[i].a};
  g.q = {0.0, 0.0};
  return g;
}

// Half the gradient of n'A n + m'A m + 3 q'q.
MODAL plain_gradient(const MODAL& f) {
  MODAL g;
  for (int i = 0; i < MODES; ++i) g.s[i] = METRIC[i] * f.s[i];
  g.q = SHEAR_METRIC * f.q;
  return g;
}

double radius(const SECTION_STRENGTH& of, double equivalent) {
  return 1.0 + of.plastic_modulus * equivalent / of.yield_stress;
}

// The return for given multipliers.
struct RETURNED {
  MODAL s, v0, v1;  // forces and the two gradients
  SQUARE X[MODES];  // (D^-1 + 2 (x P0 + y P1))^-1 by mode
  PAIR Xq;
  double equivalent = 0.0;
  double f0 = 0.0, f1 = 0.0;  // the two conditions
  double slope = 0.0;         // of k^2 by the first multiplier

  double error() const { return std::max(std::fabs(f0), std::fabs(f1)); }

  MODAL times_X(const MODAL& v) const {
    MODAL out;
    for (int i = 0; i < MODES; ++i) out.s[i] = X[i] * v.s[i];
    out.q = {Xq.a * v.q.a, Xq.b * v.q.b};
    return out;
  }

  // V'X V for both gradients, with the hardening.
  SQUARE derivatives() const {
    const MODAL Xv0 = times_X(v0);
    const MODAL Xv1 = times_X(v1);
    return {{dot(v0, Xv0) + slope, dot(v1, Xv0), dot(v0, Xv1), dot(v1, Xv1)}};
  }
};

class CORNER_RETURN {
 public:
  CORNER_RETURN(const SECTION_STRENGTH& of, const MATRIX<8, 8>& D, const VECTOR<8>& trial, double equivalent)
      : of_(of), trial_(forces_of(of, trial)), equivalent_(equivalent) {
    const double N = 1.0 / normal_force(of);
    const double M = 1.0 / moment(of);
    set_stiffness(D, 1, N, membrane_);
    set_stiffness(D, 4, M, bending_);
    shear_ = N * N * PAIR{D(7, 7), D(8, 8)};
  }

  RETURNED at(double x, double y) const {
    RETURNED r;
    for (int i = 0; i < MODES; ++i) {
      const double X = 2.0 * x * METRIC[i];
      const double Y = 2.0 * y * MIXED * METRIC[i];
      const SQUARE inverse =
          inverse_of({{1.0 + X * membrane_[i], Y * bending_[i], Y * membrane_[i], 1.0 + X * bending_[i]}});
      r.s.s[i] = inverse * trial_.s[i];
      r.X[i] = {{inverse(1, 1) * membrane_[i], inverse(2, 1) * membrane_[i], inverse(1, 2) * bending_[i],
                 inverse(2, 2) * bending_[i]}};
    }
    const PAIR divisor = {1.0 + 2.0 * x * SHEAR_METRIC * shear_.a, 1.0 + 2.0 * x * SHEAR_METRIC * shear_.b};
    r.s.q = {trial_.q.a / divisor.a, trial_.q.b / divisor.b};
    r.Xq = {shear_.a / divisor.a, shear_.b / divisor.b};
    const MODAL g0 = plain_gradient(r.s);
    const MODAL g1 = mixed_gradient(r.s);
    r.v0 = added(2.0, g0, 0.0, g1);
    r.v1 = added(0.0, g0, 2.0, g1);
    const double growth = equivalent_of(added(x, r.v0, y, r.v1));
    r.equivalent = equivalent_ + growth;
    const double k = radius(of_, r.equivalent);
    r.slope = x > 0.0 ? 2.0 * k * of_.plastic_modulus / of_.yield_stress * growth / x : 0.0;
    r.f0 = dot(r.s, g0) - k * k;
    r.f1 = dot(r.s, g1);
    return r;
  }

  // The return along one ray, y = ratio x: its condition falls with x. Without hardening it is convex, and Newton's
  // method comes from the left; with it the derivative leaves out how the length of the flow changes with its
  // direction, and a step may go too far: it then stays between the values that lie on both sides.
  double branch(double ratio, RETURNED& r) const {
    const PAIR along = {1.0, ratio};
    double x = 0.0;
    double low = 0.0;
    double high = HUGE_VAL;
    r = at(0.0, 0.0);
    for (int pass = 0; pass < PASSES; ++pass) {
      const double f = r.f0 + ratio * r.f1;
      if (std::fabs(f) <= CONVERGED) break;
      (f > 0.0 ? low : high) = x;
      double next = x + f / dot(along, r.derivatives() * along);
      if (!(next > low && next < high)) next = high < HUGE_VAL ? low + (high - low) / 2.0 : 2.0 * x;
      if (next == x) break;
      x = next;
      r = at(x, ratio * x);
    }
    return x;
  }

  // Newton's method in both multipliers; steps are halved until the conditions come nearer.
  bool corner(double& x, double& y, RETURNED& r) const {
    r = at(x, y);
    for (int pass = 0; pass < PASSES && r.error() > CONVERGED; ++pass) {
      const PAIR step = inverse_of(r.derivatives()) * PAIR{r.f0, r.f1};
      if (!std::isfinite(step.a) || !std::isfinite(step.b)) return false;
      double share = 1.0;
      RETURNED next = at(x + step.a, y + step.b);
      for (int k = 0; k < HALVINGS && !(next.error() < r.error()); ++k) {
        share /= 2.0;
        next = at(x + share * step.a, y + share * step.b);
      }
      if (!(next.error() < r.error())) break;
      x += share * step.a;
      y += share * step.b;
      r = next;
    }
    return r.error() <= ENOUGH && std::fabs(y) <= x * (1.0 + SLACK);
  }

  // The same from any distance: along the ray y = ratio x the return is one branch; where it ends the mixed term falls
  // with the ratio, from f1_minus above 0 at -1 to f1_plus below 0 at 1. (The dual problem of the projection is
  // concave, so that its largest value on a ray has one maximum over the rays.) Regula falsi, the end that stays being
  // halved (Dowell and Jarratt, 1971).
  bool corner_by_ratio(double f1_minus, double f1_plus, double& x, double& y, RETURNED& r) const {
    double low = -1.0;
    double high = 1.0;
    int stayed = 0;  // which end: -1 low, 1 high
    for (int pass = 0; pass < PASSES; ++pass) {
      const double ratio = (low * f1_plus - high * f1_minus) / (f1_plus - f1_minus);
      x = branch(ratio, r);
      y = ratio * x;
      if (r.error() <= CONVERGED || !(high - low > CLOSE)) break;
      if (r.f1 > 0.0) {
        low = ratio;
        f1_minus = r.f1;
        if (stayed == 1) f1_plus /= 2.0;
        stayed = 1;
      } else {
        high = ratio;
        f1_plus = r.f1;
        if (stayed == -1) f1_minus /= 2.0;
        stayed = -1;
      }
    }
    return r.error() <= ENOUGH;
  }

  // C = X - X V (V'X V + slope)^-1 V'X for the two gradients V = [v0 v1], column by column.
  MATRIX<8, 8> tangent(const RETURNED& r) const {
    const double N = normal_force(of_);
    const double M = moment(of_);
    const MODAL Xv0 = r.times_X(r.v0);
    const MODAL Xv1 = r.times_X(r.v1);
    const SQUARE inverse = inverse_of(r.derivatives());
    MATRIX<8, 8> C;
    for (int j = 1; j <= 8; ++j) {
      VECTOR<8> unit{};
      unit(j) = 1.0;
      const MODAL strain = to_modes(unit, N, M);
      const PAIR along = inverse * PAIR{dot(Xv0, strain), dot(Xv1, strain)};
      const VECTOR<8> column = from_modes(added(1.0, r.times_X(strain), -1.0, added(along.a, Xv0, along.b, Xv1)), N, M);
      for (int i = 1; i <= 8; ++i) C(i, j) = column(i);
    }
    return C;
  }

  VECTOR<8> strain(const MODAL& flow) const { return from_modes(flow, 1.0 / normal_force(of_), 1.0 / moment(of_)); }

 private:
  static void set_stiffness(const MATRIX<8, 8>& D, int at, double unit, double (&by_mode)[MODES]) {
    by_mode[0] = unit * unit * (D(at, at) + D(at, at + 1));
    by_mode[1] = unit * unit * (D(at, at) - D(at, at + 1));
    by_mode[2] = unit * unit * D(at + 2, at + 2);
  }

  // Two thirds of the square of the plastic strains at the upper face; their components in modes have the same norm.
  double equivalent_of(const MODAL& flow) const {
    double square = dot(flow.q, flow.q);
    for (const PAIR& part : flow.s) {
      const double face = part.a + of_.thickness / 2.0 * part.b * normal_force(of_) / moment(of_);
      square += face * face;
    }
    return ROOT_2_3 * std::sqrt(square) / normal_force(of_);
  }

  const SECTION_STRENGTH& of_;
  MODAL trial_;
  double membrane_[MODES], bending_[MODES];
  PAIR shear_;
  double equivalent_;
};

}  // namespace

double mixed_share(const SECTION_STRENGTH& of, const VECTOR<8>& force) {
  const MODAL f = forces_of(of, force);
  return dot(f, mixed_gradient(f)) / (2.0 * MIXED);
}

double yield_excess(const SECTION_STRENGTH& of, const VECTOR<8>& force, double equivalent) {
  const MODAL f = forces_of(of, force);
  const double k = radius(of, equivalent);
  return dot(f, plain_gradient(f)) + std::fabs(dot(f, mixed_gradient(f))) - k * k;
}

YIELD_SIDE return_side(const SECTION_STRENGTH& of, const MATRIX<8, 8>& D, const VECTOR<8>& trial, double equivalent,
                       CORNER_STATE& corner) {
  if (yield_excess(of, trial, equivalent) <= 0.0) return YIELD_SIDE::ELASTIC;
  const CORNER_RETURN back(of, D, trial, equivalent);
  RETURNED r;
  const double plus = back.branch(1.0, r);
  const double f1_plus = r.f1;
  if (r.f1 >= 0.0) return YIELD_SIDE::POSITIVE;
  const double minus = back.branch(-1.0, r);
  const double f1_minus = r.f1;
  if (r.f1 <= 0.0) return YIELD_SIDE::NEGATIVE;
  double x = (plus + minus) / 2.0;
  double y = 0.0;
  if (!back.corner(x, y, r) && !back.corner_by_ratio(f1_minus, f1_plus, x, y, r)) return YIELD_SIDE::NONE;
  corner.flow = back.strain(added(x, r.v0, y, r.v1));
  corner.equivalent = r.equivalent;
  corner.mixed = r.f1 / (2.0 * MIXED);
  corner.tangent = back.tangent(r);
  return YIELD_SIDE::CORNER;
}
