// section_corner.cpp: the return of a section along both branches of its yield condition, by Newton's method in the two
// multipliers (Simo, Kennedy and Govindjee, 1988).
#include "elastoplastic/section_corner.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <Eigen/Dense>

namespace solver {

namespace {

using pair = Eigen::Vector2d;  // a force and its moment

constexpr double MIXED = 0.28867513459481287;   // 1 / (2 sqrt(3)): the mixed term in the matrix of its quadratic form
constexpr double ROOT_2_3 = 0.816496580927726;  // from the norm of a strain tensor to its equivalent
constexpr double ROOT_HALF = 0.7071067811865476;
constexpr int PASSES = 100, HALVINGS = 20;
constexpr double CONVERGED = 1e-13, ENOUGH = 1e-7;  // of both conditions; ENOUGH where rounding ends the iteration
constexpr double SLACK = 1e-6;                      // of a multiplier at the edge of the corner, by the sum of both

// The metric of von Mises and the stiffness of an isotropic section share their modes: the sum of the two normal
// components by the root of 2, their difference, and the shear component. The transverse shears stand alone.
constexpr std::size_t MODES = 3;
constexpr std::array<double, MODES> METRIC{0.5, 1.5, 3};
constexpr double SHEAR_METRIC = 3;

// Forces, strains or gradients by mode, without dimension.
struct modal {
  std::array<pair, MODES> s;
  pair q;  // transverse shears
};

double dot(const modal& a, const modal& b) {
  double sum = a.q.dot(b.q);
  for (std::size_t i = 0; i < MODES; ++i) sum += a.s[i].dot(b.s[i]);
  return sum;
}

modal combined(double x, const modal& a, double y, const modal& b) {
  modal c;
  for (std::size_t i = 0; i < MODES; ++i) c.s[i] = x * a.s[i] + y * b.s[i];
  c.q = x * a.q + y * b.q;
  return c;
}

modal to_modes(const section_vector& v, double membrane, double bending) {
  modal m;
  m.s[0] = ROOT_HALF * pair(membrane * (v(1) + v(2)), bending * (v(4) + v(5)));
  m.s[1] = ROOT_HALF * pair(membrane * (v(1) - v(2)), bending * (v(4) - v(5)));
  m.s[2] = pair(membrane * v(3), bending * v(6));
  m.q = membrane * pair(v(7), v(8));
  return m;
}

section_vector from_modes(const modal& m, double membrane, double bending) {
  const auto of = [&](int part, double unit, double sign) {
    return unit * ROOT_HALF * (m.s[0](part) + sign * m.s[1](part));
  };
  return {{of(0, membrane, 1), of(0, membrane, -1), membrane * m.s[2](0), of(1, bending, 1), of(1, bending, -1),
           bending * m.s[2](1), membrane * m.q(0), membrane * m.q(1)}};
}

double normal_force(const section_strength& of) { return of.yield_stress * of.thickness; }
double moment(const section_strength& of) { return normal_force(of) * of.thickness / 4; }

modal forces_of(const section_strength& of, const section_vector& force) {
  return to_modes(force, 1 / normal_force(of), 1 / moment(of));
}

// Half the gradient of n'A m / sqrt(3).
modal mixed_gradient(const modal& f) {
  modal g;
  for (std::size_t i = 0; i < MODES; ++i) g.s[i] = MIXED * METRIC[i] * pair(f.s[i](1), f.s[i](0));
  g.q = pair::Zero();
  return g;
}

// Half the gradient of n'A n + m'A m + 3 q'q.
modal plain_gradient(const modal& f) {
  modal g;
  for (std::size_t i = 0; i < MODES; ++i) g.s[i] = METRIC[i] * f.s[i];
  g.q = SHEAR_METRIC * f.q;
  return g;
}

double radius(const section_strength& of, double equivalent) {
  return 1 + of.plastic_modulus * equivalent / of.yield_stress;
}

// The return for given multipliers.
struct returned {
  modal s, v0, v1;                       // forces and the two gradients
  std::array<Eigen::Matrix2d, MODES> X;  // (D^-1 + 2 (x P0 + y P1))^-1 by mode
  pair Xq;
  double equivalent = 0;
  double f0 = 0, f1 = 0;  // the two conditions
  double slope = 0;       // of k^2 by the first multiplier
  double error() const { return std::max(std::fabs(f0), std::fabs(f1)); }

  modal times_X(const modal& v) const {
    modal out;
    for (std::size_t i = 0; i < MODES; ++i) out.s[i] = X[i] * v.s[i];
    out.q = Xq.cwiseProduct(v.q);
    return out;
  }
  // V'X V for both gradients, with the hardening.
  Eigen::Matrix2d derivatives() const {
    const modal Xv0 = times_X(v0), Xv1 = times_X(v1);
    Eigen::Matrix2d J;
    J << dot(v0, Xv0) + slope, dot(v0, Xv1), dot(v1, Xv0), dot(v1, Xv1);
    return J;
  }
};

class corner_return {
 public:
  corner_return(const section_strength& of, const section_matrix& D, const section_vector& trial, double equivalent)
      : of_(of), trial_(forces_of(of, trial)), equivalent_(equivalent) {
    const double N = 1 / normal_force(of), M = 1 / moment(of);
    const auto stiffness = [&](int at, double unit) -> std::array<double, MODES> {
      return {unit * unit * (D(at, at) + D(at, at + 1)), unit * unit * (D(at, at) - D(at, at + 1)),
              unit * unit * D(at + 2, at + 2)};
    };
    membrane_ = stiffness(1, N);
    bending_ = stiffness(4, M);
    shear_ = N * N * pair(D(7, 7), D(8, 8));
  }

  returned at(double x, double y) const {
    returned r;
    for (std::size_t i = 0; i < MODES; ++i) {
      const double X = 2 * x * METRIC[i], Y = 2 * y * MIXED * METRIC[i];
      Eigen::Matrix2d A;
      A << 1 + X * membrane_[i], Y * membrane_[i], Y * bending_[i], 1 + X * bending_[i];
      const Eigen::Matrix2d inverse = A.inverse();
      r.s.s[i] = inverse * trial_.s[i];
      r.X[i] = inverse * pair(membrane_[i], bending_[i]).asDiagonal();
    }
    const pair divisor = pair::Ones() + 2 * x * SHEAR_METRIC * shear_;
    r.s.q = trial_.q.cwiseQuotient(divisor);
    r.Xq = shear_.cwiseQuotient(divisor);
    const modal g0 = plain_gradient(r.s), g1 = mixed_gradient(r.s);
    r.v0 = combined(2, g0, 0, g1);
    r.v1 = combined(0, g0, 2, g1);
    const double growth = equivalent_of(combined(x, r.v0, y, r.v1));
    r.equivalent = equivalent_ + growth;
    const double k = radius(of_, r.equivalent);
    r.slope = x > 0 ? 2 * k * of_.plastic_modulus / of_.yield_stress * growth / x : 0;
    r.f0 = dot(r.s, g0) - k * k;
    r.f1 = dot(r.s, g1);
    return r;
  }

  // The return along one branch, y = side x: its condition falls with x and is convex, so that Newton's method comes
  // from the left.
  double branch(double side, returned& r) const {
    double x = 0;
    r = at(0, 0);
    for (int pass = 0; pass < PASSES && r.f0 + side * r.f1 > CONVERGED; ++pass) {
      const pair along(1, side);
      const double slope = along.dot(r.derivatives() * along);
      x += (r.f0 + side * r.f1) / slope;
      r = at(x, side * x);
    }
    return x;
  }

  // Newton's method in both multipliers; steps are halved until the conditions come nearer.
  bool corner(double& x, double& y, returned& r) const {
    r = at(x, y);
    for (int pass = 0; pass < PASSES && r.error() > CONVERGED; ++pass) {
      const pair step = r.derivatives().inverse() * pair(r.f0, r.f1);
      if (!step.allFinite()) return false;
      double share = 1;
      returned next = at(x + step(0), y + step(1));
      for (int k = 0; k < HALVINGS && !(next.error() < r.error()); ++k) {
        share /= 2;
        next = at(x + share * step(0), y + share * step(1));
      }
      if (!(next.error() < r.error())) break;
      x += share * step(0);
      y += share * step(1);
      r = next;
    }
    return r.error() <= ENOUGH && std::fabs(y) <= x * (1 + SLACK);
  }

  // C = X - X V (V'X V + slope)^-1 V'X for the two gradients V = [v0 v1], column by column.
  section_matrix tangent(const returned& r) const {
    const double N = normal_force(of_), M = moment(of_);
    const modal Xv0 = r.times_X(r.v0), Xv1 = r.times_X(r.v1);
    const Eigen::Matrix2d inverse = r.derivatives().inverse();
    section_matrix C;
    for (int j = 1; j <= 8; ++j) {
      section_vector unit{};
      unit(j) = 1;
      const modal strain = to_modes(unit, N, M);
      const pair along = inverse * pair(dot(Xv0, strain), dot(Xv1, strain));
      const section_vector column =
          from_modes(combined(1, r.times_X(strain), -1, combined(along(0), Xv0, along(1), Xv1)), N, M);
      for (int i = 1; i <= 8; ++i) C(i, j) = column(i);
    }
    return C;
  }

  section_vector strain(const modal& flow) const { return from_modes(flow, 1 / normal_force(of_), 1 / moment(of_)); }

 private:
  // Two thirds of the square of the plastic strains at the upper face; their components in modes have the same norm.
  double equivalent_of(const modal& flow) const {
    double square = flow.q.squaredNorm();
    for (std::size_t i = 0; i < MODES; ++i) {
      const double face = flow.s[i](0) + of_.thickness / 2 * flow.s[i](1) * normal_force(of_) / moment(of_);
      square += face * face;
    }
    return ROOT_2_3 * std::sqrt(square) / normal_force(of_);
  }

  const section_strength& of_;
  modal trial_;
  std::array<double, MODES> membrane_{}, bending_{};
  pair shear_;
  double equivalent_;
};

}  // namespace

double mixed_product(const section_strength& of, const section_vector& force) {
  const modal f = forces_of(of, force);
  return dot(f, mixed_gradient(f)) / (2 * MIXED);
}

double yield_excess(const section_strength& of, const section_vector& force, double equivalent) {
  const modal f = forces_of(of, force);
  const double k = radius(of, equivalent);
  return dot(f, plain_gradient(f)) + std::fabs(dot(f, mixed_gradient(f))) - k * k;
}

yield_side return_side(const section_strength& of, const section_matrix& D, const section_vector& trial,
                       double equivalent, corner_state& corner) {
  if (yield_excess(of, trial, equivalent) <= 0) return yield_side::ELASTIC;
  const corner_return back(of, D, trial, equivalent);
  returned r;
  const double plus = back.branch(1, r);
  if (r.f1 >= 0) return yield_side::POSITIVE;
  const double minus = back.branch(-1, r);
  if (r.f1 <= 0) return yield_side::NEGATIVE;
  double x = (plus + minus) / 2, y = 0;
  if (!back.corner(x, y, r)) return yield_side::NONE;
  corner.flow = back.strain(combined(x, r.v0, y, r.v1));
  corner.equivalent = r.equivalent;
  corner.mixed = r.f1 / (2 * MIXED);
  corner.tangent = back.tangent(r);
  return yield_side::CORNER;
}

}  // namespace solver
