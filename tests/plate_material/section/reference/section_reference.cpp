// section_reference.cpp: see the header. Yield function after Ilyushin (1948); return mapping with spectral form after
// Simo and Govindjee (1988).
#include "section_reference.h"

#include <cmath>

namespace section_reference {

namespace {

constexpr real KAPPA = 0.833333333333333;  // the double of the literal

// An irrational number as the tables hold it.
real single(real value) { return static_cast<real>(static_cast<float>(value)); }

real root(real value) { return std::sqrt(value); }

matrix symmetric(const matrix& upper) { return dense::upper_mirrored(upper); }

// The plane form n1^2 + n2^2 - n1 n2 + 3 n12^2 as a matrix.
matrix3 mises_form() {
  matrix3 M;
  M << 1, -0.5L, 0, -0.5L, 1, 0, 0, 0, 3;
  return M;
}

matrix3 plane_section(real modulus, real nu) {
  matrix3 D;
  D << 1, nu, 0, nu, 1, 0, 0, 0, (1 - nu) / 2;
  return D * (modulus / (1 - nu * nu));
}

}  // namespace

plate random_plate(support::seeded_random& random, double hardening_share) {
  plate p{};
  p.h = random.log_uniform(0.004, 0.5);
  p.E = random.log_uniform(1e3, 1e6);
  p.sy = p.E * random.log_uniform(5e-4, 4e-3);
  p.nu = random.uniform(0.0, 0.45);
  p.Et = p.E * hardening_share * random.uniform(0.5, 1.0);
  return p;
}

matrix isotropic_section(const plate& p) {
  const real h = p.h, E = p.E, nu = p.nu;
  matrix D = matrix::Zero(8, 8);
  D.block(0, 0, 3, 3) = plane_section(E * h, nu);
  D.block(3, 3, 3, 3) = plane_section(E * h * h * h / 12, nu);
  D(6, 6) = D(7, 7) = KAPPA * h * E / (2 * (1 + nu));
  return D;
}

int branch_of(double ref) { return ref < 0.0 ? -1 : 1; }

// Eigenvectors pair the membrane with the bending part of the same plane mode: sum, difference, shear.
spectral_data spectral_data_of(const plate& p, int branch) {
  const real s = branch, h = p.h, E = p.E, nu = p.nu, sy = p.sy;
  spectral_data d;
  matrix P = matrix::Zero(8, 8);
  P.block(0, 0, 3, 3) = mises_form() / (p.N0() * p.N0());
  P.block(3, 3, 3, 3) = mises_form() / (p.M0() * p.M0());
  P.block(0, 3, 3, 3) = mises_form() * s / (single(2 * root(3)) * p.M0() * p.N0());
  P(6, 6) = P(7, 7) = 3 / (p.N0() * p.N0());
  d.P = symmetric(P);

  const real large = single(7 + root(5)), small = single(7 - root(5));
  const real twist = E / (sy * sy * 4 * h * (1 + nu)), even = E / (sy * sy * 12 * h * (1 - nu));
  column lambda(8);
  lambda << large * twist, large * twist, small * twist, small * twist, large * even, small * even, 6 * KAPPA * twist,
      6 * KAPPA * twist;
  d.L = lambda.asDiagonal();

  const real A = s * single(root(3) * (root(5) - 1)) / h, B = s * single(root(3) * (root(5) + 1)) / h;
  d.Q = matrix::Zero(8, 8);
  d.Q.row(0) << -A, 0, B, 0, A, -B, 0, 0;
  d.Q.row(1) << A, 0, -B, 0, A, -B, 0, 0;
  d.Q.row(2) << 0, A, 0, -B, 0, 0, 0, 0;
  d.Q.row(3) << -1, 0, -1, 0, 1, 1, 0, 0;
  d.Q.row(4) << 1, 0, 1, 0, 1, 1, 0, 0;
  d.Q.row(5) << 0, 1, 0, 1, 0, 0, 0, 0;
  d.Q(6, 6) = d.Q(7, 7) = 1;

  const real g = s * single(root(15)) * h / 60, u = single((5 + root(5)) / 20), v = single((5 - root(5)) / 20);
  const real y = single((5 + root(5)) / 10), z = single((5 - root(5)) / 10);
  d.QI = matrix::Zero(8, 8);
  d.QI.row(0) << -g, g, 0, -u, u, 0, 0, 0;
  d.QI.row(1) << 0, 0, 2 * g, 0, 0, y, 0, 0;
  d.QI.row(2) << g, -g, 0, -v, v, 0, 0, 0;
  d.QI.row(3) << 0, 0, -2 * g, 0, 0, z, 0, 0;
  d.QI.row(4) << g, g, 0, u, u, 0, 0, 0;
  d.QI.row(5) << -g, -g, 0, v, v, 0, 0, 0;
  d.QI(6, 6) = d.QI(7, 7) = 1;
  return d;
}

real mixed_product(const column& sig) { return sig.head(3).dot(mises_form() * sig.segment(3, 3)); }

real yield_function(const plate& p, const column& sig, real ebar, real a) {
  const column n = sig.head(3) / p.N0(), m = sig.segment(3, 3) / (p.M0() * a);
  real F = n.dot(mises_form() * n) + m.dot(mises_form() * m);
  F += std::abs(n.dot(mises_form() * m)) / single(root(3));
  if (sig.size() == 8) F += 3 * sig.tail(2).squaredNorm() / (p.N0() * p.N0());
  const real k = 1 + p.hardening() * ebar / p.sy;
  return F - k * k;
}

matrix upper_face(const plate& p, int width) {
  matrix T = matrix::Zero(width == 8 ? 5 : 3, width);
  T.block(0, 0, 3, 3).setIdentity();
  T.block(0, 3, 3, 3) = matrix3::Identity() * (real(p.h) / 2);
  if (width == 8) T(3, 6) = T(4, 7) = 1;
  return T;
}

namespace {

matrix3 tensor(const column& t) {
  matrix3 M;
  M << t(0), t(3), t(4), t(3), t(1), t(5), t(4), t(5), t(2);
  return M;
}

column values_of(const matrix3& M) {
  column t(6);
  t << M(0, 0), M(1, 1), M(2, 2), M(0, 1), M(0, 2), M(1, 2);
  return t;
}

}  // namespace

column to_local(const column& ep, const matrix3& axes, int width) {
  const matrix3 e = axes * tensor(ep.head(6)) * axes.transpose(), k = axes * tensor(ep.tail(6)) * axes.transpose();
  column local(8);
  local << e(0, 0), e(1, 1), e(0, 1), k(0, 0), k(1, 1), k(0, 1), e(0, 2), e(1, 2);
  return local.head(width);
}

column to_global(const column& local, const matrix3& axes) {
  column all = column::Zero(8);
  all.head(local.size()) = local;
  column e(6), k(6), ep(12);
  e << all(0), all(1), 0, all(2), all(6), all(7);
  k << all(3), all(4), 0, all(5), 0, 0;
  ep << values_of(axes.transpose() * tensor(e) * axes), values_of(axes.transpose() * tensor(k) * axes);
  return ep;
}

multiplier_problem::multiplier_problem(const plate& point, const spectral_data& d, const column& trial_resultants,
                                       real ebar_start)
    : p(point), trial(trial_resultants), ebar0(ebar_start) {
  const int n = static_cast<int>(trial.size());
  P = d.P.topLeftCorner(n, n);
  Q = d.Q.topLeftCorner(n, n);
  QI = d.QI.topLeftCorner(n, n);
  L = d.L.topLeftCorner(n, n);
  T = upper_face(p, n);
}

column multiplier_problem::resultants(real x) const {
  const column A = (2 * x * L.diagonal() + column::Ones(L.rows())).cwiseInverse();
  return Q * A.asDiagonal() * QI * trial;
}

real multiplier_problem::equivalent(real x, const column& sig) const {
  return ebar0 + x * single(root(2.0L / 3.0L)) * (T * 2 * P * sig).norm();
}

real multiplier_problem::f(real x, real a) const {
  const column sig = resultants(x);
  return yield_function(p, sig, equivalent(x, sig), a);
}

real multiplier_problem::df(real x) const {
  const column sig = resultants(x), w = T * 2 * P * sig;
  const column A = (2 * x * L.diagonal() + column::Ones(L.rows())).cwiseInverse();
  const column dA = -2 * L.diagonal().cwiseProduct(A.cwiseProduct(A));
  const column dn = P * Q * dA.asDiagonal() * QI * trial;
  const real H = p.hardening(), r = single(root(2.0L / 3.0L)), sy = p.sy;
  const real c = -2 * H * (sy + H * equivalent(x, sig)) / (sy * sy);
  return 2 * sig.dot(dn) + c * r * (w.norm() + 2 * x * w.dot(T * dn) / w.norm());
}

namespace {

column trial_resultants(const matrix& D, const column& strain) {
  const int n = static_cast<int>(strain.size());
  matrix seen = D.topLeftCorner(n, n).diagonal().asDiagonal();
  for (const int first : {0, 3}) {
    seen(first, first + 1) = D(first, first + 1);
    seen(first + 1, first) = D(first + 1, first);
  }
  return seen * strain;
}

// Newton's method as it stands: stopped by the relative step, at most a thousand passes.
real multiplier(const multiplier_problem& m, int& passes) {
  real x = 0;
  for (passes = 1; passes <= 1000; ++passes) {
    const real y = x - m.f(x) / m.df(x), step = std::abs(y - x) / (std::abs(y) + 1e-9L);
    x = y;
    if (step <= 1e-4L) break;
  }
  return x;
}

}  // namespace

matrix algorithmic_tangent(const multiplier_problem& m, const matrix& D, real x, const column& sig, real ebar) {
  const int n = static_cast<int>(sig.size());
  const column A = (2 * x * m.L.diagonal() + column::Ones(m.L.rows())).cwiseInverse(), v = 2 * m.P * sig;
  const matrix X = m.Q * A.asDiagonal() * m.QI * D.topLeftCorner(n, n);
  const real H = m.p.hardening(), sy = m.p.sy;
  const real beta = 2 * H * (sy + H * ebar) / (sy * sy);
  const real divisor = v.dot(X * v) + beta * single(root(2.0L / 3.0L)) * (m.T * v).norm();
  return X - X * v * v.transpose() * X / divisor;
}

point_answer update(const plate& p, const matrix& D, const matrix3& axes, const column& eps, const point_start& from) {
  const int n = static_cast<int>(eps.size());
  const column p0 = to_local(from.ep0, axes, n);
  column plastic_strain = p0;
  point_answer to;
  to.sig = trial_resultants(D, eps - p0);
  to.ebar = from.ebar0;
  to.C = D.topLeftCorner(n, n);
  to.plastic = yield_function(p, to.sig, from.ebar0) > 0 ? 1 : 0;
  if (to.plastic == 1) {
    const multiplier_problem m(p, spectral_data_of(p, branch_of(from.ref)), to.sig, from.ebar0);
    to.x = multiplier(m, to.passes);
    to.sig = m.resultants(to.x);
    plastic_strain = p0 + 2 * to.x * m.P * to.sig;
    to.ebar = m.equivalent(to.x, to.sig);
    to.C = algorithmic_tangent(m, D, to.x, to.sig, to.ebar);
  }
  const column d = (plastic_strain - p0).segment(3, 3);
  to.dkap = root(d(0) * d(0) + d(1) * d(1) + d(0) * d(1) + d(2) * d(2) / 4);
  to.qtm = mixed_product(to.sig);
  to.ep = to_global(plastic_strain, axes);
  return to;
}

exact_return return_exactly(const plate& p, const matrix& D, int branch, const column& trial, real ebar0) {
  const int n = static_cast<int>(trial.size());
  const matrix P = spectral_data_of(p, branch).P.topLeftCorner(n, n), T = upper_face(p, n);
  const matrix DP = D.topLeftCorner(n, n) * P;
  const auto at = [&](real x) {
    const column sig = dense::solve(matrix::Identity(n, n) + 2 * x * DP, trial);
    return exact_return{sig, x, ebar0 + x * root(2.0L / 3.0L) * (T * 2 * P * sig).norm()};
  };
  const auto outside = [&](real x) { return yield_function(p, at(x).sig, at(x).ebar) > 0; };
  real low = 0, high = 1 / DP.norm();
  while (outside(high)) high *= 2;
  for (int i = 0; i < 100; ++i) {
    const real middle = (low + high) / 2;
    (outside(middle) ? low : high) = middle;
  }
  return at(high);
}

}  // namespace section_reference
