// section_corner.cpp: the return of a section along both branches of its yield condition, by Newton's method in the two
// multipliers (Simo, Kennedy and Govindjee, 1988).
#include "elastoplastic/section_corner.h"

#include <Eigen/Dense>
#include <cmath>

namespace solver {

namespace {

using vector8 = Eigen::Matrix<double, 8, 1>;
using matrix8 = Eigen::Matrix<double, 8, 8>;

constexpr double MIXED = 0.28867513459481287;    // 1 / (2 sqrt(3)): the mixed term in the matrix of its quadratic form
constexpr double ROOT_2_3 = 0.816496580927726;   // from the norm of a strain tensor to its equivalent
constexpr int PASSES = 40, HALVINGS = 20;
constexpr double CONVERGED = 1e-13;  // of both conditions, by k^2
constexpr double SLACK = 1e-9;       // of a multiplier at the edge of the corner, by the sum of both

// The metric of von Mises for three in-plane components.
Eigen::Matrix3d metric() {
  Eigen::Matrix3d A;
  A << 1, -0.5, 0, -0.5, 1, 0, 0, 0, 3;
  return A;
}

// s'P0 s = n'A n + m'A m + 3 q'q and s'P1 s = n'A m / sqrt(3), of forces by N0 and M0.
struct metrics {
  matrix8 P0 = matrix8::Zero(), P1 = matrix8::Zero();
  metrics() {
    P0.block<3, 3>(0, 0) = P0.block<3, 3>(3, 3) = metric();
    P0(6, 6) = P0(7, 7) = 3;
    P1.block<3, 3>(0, 3) = P1.block<3, 3>(3, 0) = MIXED * metric();
  }
};
const metrics& forms() {
  static const metrics both;
  return both;
}

// One over N0, M0, N0 on the diagonal: forces times it have no dimension, strains over it likewise.
vector8 unit(const section_strength& of) {
  const double N0 = of.yield_stress * of.thickness, M0 = N0 * of.thickness / 4;
  vector8 u = vector8::Constant(1 / N0);
  u.segment<3>(3).setConstant(1 / M0);
  return u;
}

vector8 from(const section_vector& v) { return Eigen::Map<const vector8>(v.V); }

double radius(const section_strength& of, double equivalent) {
  return 1 + of.plastic_modulus * equivalent / of.yield_stress;
}

// The equivalent of a plastic strain: two thirds of the square of the strains at the upper face.
double equivalent_of(const section_strength& of, const vector8& p) {
  const Eigen::Vector3d face = p.segment<3>(0) + of.thickness / 2 * p.segment<3>(3);
  return ROOT_2_3 * std::sqrt(face.squaredNorm() + p.segment<2>(6).squaredNorm());
}

// The return for given multipliers, without dimension.
struct returned {
  vector8 s, v0, v1;     // forces and the two gradients
  matrix8 X;             // (D^-1 + 2 (X P0 + y P1))^-1
  double equivalent = 0;
  double f0 = 0, f1 = 0;  // the two conditions
  double slope = 0;       // of k^2 by the first multiplier
  double error() const { return std::max(std::fabs(f0), std::fabs(f1)); }
};

class corner_return {
 public:
  corner_return(const section_strength& of, const section_matrix& D, const section_vector& trial, double equivalent)
      : of_(of), unit_(unit(of)), equivalent_(equivalent) {
    D_ = unit_.asDiagonal() * Eigen::Map<const matrix8>(D.V) * unit_.asDiagonal();
    trial_ = unit_.cwiseProduct(from(trial));
  }

  returned at(double x, double y) const {
    const metrics& form = forms();
    returned r;
    const matrix8 DP = D_ * (2 * x * form.P0 + 2 * y * form.P1);
    const Eigen::PartialPivLU<matrix8> factors(matrix8::Identity() + DP);
    r.X = factors.solve(D_);
    r.s = factors.solve(trial_);
    r.v0 = 2 * form.P0 * r.s;
    r.v1 = 2 * form.P1 * r.s;
    const vector8 p = strain(x * r.v0 + y * r.v1);
    const double growth = equivalent_of(of_, p);
    r.equivalent = equivalent_ + growth;
    const double k = radius(of_, r.equivalent);
    r.slope = x > 0 ? 2 * k * of_.plastic_modulus / of_.yield_stress * growth / x : 0;
    r.f0 = 0.5 * r.s.dot(r.v0) - k * k;
    r.f1 = 0.5 * r.s.dot(r.v1);
    return r;
  }

  // Newton's method in both multipliers; steps are halved until the conditions come nearer.
  bool solve(double& x, double& y, returned& r) const {
    x = y = 0;
    r = at(x, y);
    for (int pass = 0; pass < PASSES && r.error() > CONVERGED; ++pass) {
      const vector8 Xv0 = r.X * r.v0, Xv1 = r.X * r.v1;
      Eigen::Matrix2d J;
      J << r.v0.dot(Xv0) + r.slope, r.v0.dot(Xv1), r.v1.dot(Xv0), r.v1.dot(Xv1);
      const Eigen::Vector2d step = J.inverse() * Eigen::Vector2d(r.f0, r.f1);
      if (!step.allFinite()) return false;
      double share = 1;
      returned next = at(x + step(0), y + step(1));
      for (int k = 0; k < HALVINGS && !(next.error() < r.error()); ++k) {
        share /= 2;
        next = at(x + share * step(0), y + share * step(1));
      }
      if (!(next.error() < r.error())) return r.error() < std::sqrt(CONVERGED);
      x += share * step(0);
      y += share * step(1);
      r = next;
    }
    return r.error() <= std::sqrt(CONVERGED);
  }

  // C = X - X V (V'X V + slope)^-1 V'X for the two gradients V = [v0 v1], with dimensions.
  section_matrix tangent(const returned& r) const {
    Eigen::Matrix<double, 8, 2> V, XV;
    V << r.v0, r.v1;
    XV = r.X * V;
    Eigen::Matrix2d J = V.transpose() * XV;
    J(0, 0) += r.slope;
    const matrix8 C = r.X - XV * J.inverse() * XV.transpose();
    const vector8 back = unit_.cwiseInverse();
    section_matrix result;
    Eigen::Map<matrix8>(result.V) = back.asDiagonal() * C * back.asDiagonal();
    return result;
  }

  vector8 strain(const vector8& flow) const { return unit_.cwiseProduct(flow); }

 private:
  const section_strength& of_;
  vector8 unit_, trial_;
  matrix8 D_;
  double equivalent_;
};

}  // namespace

double mixed_product(const section_strength& of, const section_vector& force) {
  const vector8 s = unit(of).cwiseProduct(from(force));
  return s.segment<3>(0).dot(metric() * s.segment<3>(3));
}

double yield_excess(const section_strength& of, const section_vector& force, double equivalent) {
  const vector8 s = unit(of).cwiseProduct(from(force));
  const double k = radius(of, equivalent);
  return s.dot(forms().P0 * s) + std::fabs(s.dot(forms().P1 * s)) - k * k;
}

yield_side return_side(const section_strength& of, const section_matrix& D, const section_vector& trial,
                       double equivalent, corner_state& corner) {
  if (yield_excess(of, trial, equivalent) <= 0) return yield_side::ELASTIC;
  const corner_return back(of, D, trial, equivalent);
  double x = 0, y = 0;
  returned r;
  if (!back.solve(x, y, r)) return yield_side::NONE;
  if (y > x * (1 + SLACK)) return yield_side::POSITIVE;
  if (y < -x * (1 + SLACK)) return yield_side::NEGATIVE;
  Eigen::Map<vector8>(corner.flow.V) = back.strain(x * r.v0 + y * r.v1);
  corner.equivalent = r.equivalent;
  corner.mixed = r.f1 / MIXED / 2;
  corner.tangent = back.tangent(r);
  return yield_side::CORNER;
}

}  // namespace solver
