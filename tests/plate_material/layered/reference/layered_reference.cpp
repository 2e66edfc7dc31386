// layered_reference.cpp: see the header. Rules: Abramowitz and Stegun (1964), 25.4; return mapping: Simo and Taylor
// (1986). Fractions in single precision are those of the library's results.
#include "layered_reference.h"

#include <cmath>

namespace layered_reference {

namespace {

constexpr double TWO_THIRDS = 0.6666666865348816, ONE_THIRD = 0.3333333432674408, FIVE_SIXTHS = 0.8333333134651184;
constexpr double FIVE_TWELFTHS = 0.4166666567325592, FIVE_THIRDS = 1.6666666269302368;
constexpr double ROOT_2_3 = 0.8164966106414795, ROOT_1_2 = 0.7071067690849304;

struct legendre_value {
  real P, before;  // degrees m and m - 1

  // dP/dx and d2P/dx2, inside the interval.
  real first(int m, real x) const { return m * (before - x * P) / (1 - x * x); }
  real second(int m, real x) const { return (2 * x * first(m, x) - m * (m + 1) * P) / (1 - x * x); }
};

legendre_value polynomial(int m, real x) {
  real before = 1, P = x;
  for (int d = 2; d <= m; ++d) {
    const real next = ((2 * d - 1) * x * P - (d - 1) * before) / d;
    before = P;
    P = next;
  }
  return {P, before};
}

const real PI = std::acos(real(-1));

}  // namespace

rule lobatto(int n) {
  const int m = n - 1;
  rule r;
  for (int k = 0; k < n; ++k) {
    real x = -std::cos(PI * k / m);
    if (k == 0 || k == m) {
      x = k == 0 ? -1 : 1;
    } else {
      for (int pass = 0; pass < 50; ++pass) {
        const legendre_value p = polynomial(m, x);
        x -= p.first(m, x) / p.second(m, x);
      }
    }
    const real P = polynomial(m, x).P;
    r.xi.push_back(x);
    r.w.push_back(2 / (n * (n - 1) * P * P));
  }
  return r;
}

rule legendre(int n) {
  rule r;
  for (int k = 1; k <= n; ++k) {
    real x = -std::cos(PI * (k - 0.25L) / (n + 0.5L));
    for (int pass = 0; pass < 50; ++pass) {
      const legendre_value p = polynomial(n, x);
      x -= p.P / p.first(n, x);
    }
    const real slope = polynomial(n, x).first(n, x);
    r.xi.push_back(x);
    r.w.push_back(2 / ((1 - x * x) * slope * slope));
  }
  return r;
}

material random_material(support::seeded_random& random, double hardening) {
  material m{};
  m.E = random.log_uniform(1e2, 1e6);
  m.nu = random.uniform(0.0, 0.45);
  m.sy = m.E * random.log_uniform(5e-4, 5e-3);
  m.Et = hardening > 0.0 ? m.E * random.uniform(0.001, hardening) : 0.0;
  return m;
}

matrix5 metric(int theory) {
  matrix5 P = matrix5::Zero();
  P.topLeftCorner(2, 2) << TWO_THIRDS, -ONE_THIRD, -ONE_THIRD, TWO_THIRDS;
  P(2, 2) = 2;
  if (theory == THICK) P(3, 3) = P(4, 4) = 2;
  return P;
}

matrix5 elastic(const material& m, int theory) {
  const real E = m.E, nu = m.nu, c = E / (1 - nu * nu);
  matrix5 C = matrix5::Zero();
  C.topLeftCorner(2, 2) << c, nu * c, nu * c, c;
  C(2, 2) = E / (2 * (1 + nu));
  if (theory == THICK) C(3, 3) = C(4, 4) = FIVE_TWELFTHS * E / (1 + nu);
  return C;
}

matrix5 stored_elastic(const material& m, int theory) {
  matrix5 C = elastic(m, THIN);
  if (theory == THICK) C(3, 3) = C(4, 4) = FIVE_SIXTHS * m.shear();
  return C;
}

namespace {

// Mean stress, deviator in the plane and transverse shear of the trial stress shrink by p, q and r.
struct invariants {
  real a, b, c, p, q, r;
};

invariants at(const material& m, const vector5& s, int theory, real x) {
  const real mean = s(0) + s(1), difference = s(0) - s(1);
  invariants i{};
  i.a = mean * mean / 6;
  i.b = difference * difference / 2 + 2 * s(2) * s(2);
  i.c = theory == THICK ? 2 * (s(3) * s(3) + s(4) * s(4)) : 0;
  i.p = 1 + real(m.E) * x / (3 * (1 - real(m.nu)));
  i.q = 1 + 2 * m.shear() * x;
  i.r = 1 + FIVE_THIRDS * m.shear() * x;
  return i;
}

real squared_norm(const invariants& i) { return i.a / (i.p * i.p) + i.b / (i.q * i.q) + i.c / (i.r * i.r); }

}  // namespace

real phi(const material& m, const vector5& trial, real ebar, int theory, real x) {
  const real xi = squared_norm(at(m, trial, theory, x));
  const real kappa = m.sy + m.hardening() * (ebar + x * ROOT_2_3 * std::sqrt(xi));
  return xi / 2 - kappa * kappa / 3;
}

real dphi(const material& m, const vector5& trial, real ebar, int theory, real x) {
  const invariants i = at(m, trial, theory, x);
  const real G = m.shear(), H = m.hardening(), xi = squared_norm(i), root_xi = std::sqrt(xi);
  const real dp = real(m.E) / (3 * (1 - real(m.nu))), dq = 2 * G, dr = FIVE_THIRDS * G;
  const real dxi = -2 * (i.a * dp / (i.p * i.p * i.p) + i.b * dq / (i.q * i.q * i.q) + i.c * dr / (i.r * i.r * i.r));
  const real kappa = m.sy + H * (ebar + x * ROOT_2_3 * root_xi);
  const real dkappa = H * ROOT_2_3 * (root_xi + x * dxi / (2 * root_xi));
  return dxi / 2 - 2 * kappa * dkappa / 3;
}

newton multiplier(const material& m, const vector5& trial, real ebar, int theory) {
  real x = 0;
  for (int pass = 1; pass <= 500; ++pass) {
    const real df = dphi(m, trial, ebar, theory, x);
    if (std::fabs(df) < 1e-15L) return {pass, false, 0};
    const real y = x - phi(m, trial, ebar, theory, x) / df;
    if (std::fabs(y - x) / (std::fabs(x) + 1e-15L) <= 1e-6L) return {pass, true, y};
    x = y;
  }
  return {501, false, 0};
}

real root(const material& m, const vector5& trial, real ebar, int theory) {
  real low = 0, high = 1 / real(m.E);
  while (phi(m, trial, ebar, theory, high) > 0) high *= 2;
  for (int pass = 0; pass < 120; ++pass) {
    const real middle = (low + high) / 2;
    (phi(m, trial, ebar, theory, middle) > 0 ? low : high) = middle;
  }
  return (low + high) / 2;
}

namespace {

matrix3 tensor(real xx, real yy, real zz, real xy, real xz, real yz) {
  matrix3 S;
  S << xx, xy, xz, xy, yy, yz, xz, yz, zz;
  return S;
}

}  // namespace

vector5 to_local(const vector6& v, const matrix3& axes) {
  const matrix3 S = axes * tensor(v(0), v(1), v(2), v(3), v(4), v(5)) * axes.transpose();
  vector5 out;
  out << S(0, 0), S(1, 1), S(0, 1), S(0, 2), S(1, 2);
  return out;
}

vector6 to_global(const vector5& v, const matrix3& axes, real zz) {
  const matrix3 S = axes.transpose() * tensor(v(0), v(1), zz, v(2), v(3), v(4)) * axes;
  vector6 out;
  out << S(0, 0), S(1, 1), S(2, 2), S(0, 1), S(0, 2), S(1, 2);
  return out;
}

matrix3 random_axes(support::seeded_random& random) {
  const support::rotation R = support::random_rotation(random);
  matrix3 axes;
  for (int i = 0; i < 3; ++i) {
    for (int j = 0; j < 3; ++j) axes(i, j) = R[static_cast<std::size_t>(i)][static_cast<std::size_t>(j)];
  }
  return axes;
}

vector5 trial_stress(const material& m, const matrix3& axes, const point_start& start, const vector5& strain) {
  return elastic(m, THICK) * (strain - to_local(start.ep, axes));
}

real yield_function(const material& m, int theory, const vector5& stress, real ebar) {
  const real kappa = m.sy + m.hardening() * ebar;
  return stress.dot(metric(theory) * stress) / 2 - kappa * kappa / 3;
}

namespace {

// The stress that the trial one shrinks to: its parts in the directions of the eigenvectors, each with its factor. The
// eigenvectors in single precision are not of unit length.
vector5 returned_stress(const material& m, int theory, real x, const vector5& trial) {
  const real E = m.E, nu = m.nu, square = real(ROOT_1_2) * ROOT_1_2;
  const real mean = square * (trial(0) + trial(1)) / (1 + x * E / (1 - nu) * ONE_THIRD);
  const real difference = square * (trial(0) - trial(1)) / (1 + x * E / (1 + nu));
  vector5 stress = vector5::Zero();
  stress(0) = mean + difference;
  stress(1) = mean - difference;
  stress(2) = trial(2) / (1 + x * E / (1 + nu));
  if (theory == THICK) stress.tail(2) = trial.tail(2) / (1 + 2 * x * FIVE_TWELFTHS * E / (1 + nu));
  return stress;
}

// (Ce^-1 + x P)^-1 on the components that the theory has.
matrix5 softened(const material& m, int theory, real x) {
  const int n = theory == THICK ? 5 : 3;
  const matrix C = elastic(m, theory).topLeftCorner(n, n), P = metric(theory).topLeftCorner(n, n);
  matrix5 X = matrix5::Zero();
  X.topLeftCorner(n, n) = (C.inverse() + x * P).inverse();
  return X;
}

}  // namespace

point_answer update(const material& m, const matrix3& axes, int theory, const point_start& start,
                    const vector5& strain) {
  point_answer a{};
  a.trial = trial_stress(m, axes, start, strain);
  a.f = yield_function(m, theory, a.trial, start.ebar);
  a.plastic = a.f > 0;
  if (!a.plastic) {
    a.stress = a.trial;
    a.sig = to_global(a.stress, axes);
    a.ep = start.ep;
    a.ebar = start.ebar;
    a.tangent = stored_elastic(m, theory);
    return a;
  }
  const real H = m.hardening();
  const matrix5 P = metric(theory), C = elastic(m, theory);
  a.multiplier = multiplier(m, a.trial, start.ebar, theory).multiplier;
  a.stress = returned_stress(m, theory, a.multiplier, a.trial);
  a.sig = to_global(a.stress, axes);
  const vector5 ep = to_local(start.ep, axes) + a.multiplier * P * a.stress;
  a.ep = to_global(ep, axes, -(ep(0) + ep(1)));
  const real beta = a.stress.dot(P * a.stress);
  a.ebar = start.ebar + a.multiplier * ROOT_2_3 * std::sqrt(beta);
  const vector5 n = C * P * a.stress;
  a.tangent = C - n * n.transpose() / (a.stress.dot(P * n) + TWO_THIRDS * beta * H);
  const matrix5 X = softened(m, theory, a.multiplier);
  const vector5 nx = X * P * a.stress;
  a.algorithmic = X - nx * nx.transpose() / (a.stress.dot(P * nx) + 2 * H * beta / (3 - 2 * H * a.multiplier));
  return a;
}

vector6 vector6_of(const std::vector<double>& values) { return dense::widened(values.data(), 6); }

}  // namespace layered_reference
