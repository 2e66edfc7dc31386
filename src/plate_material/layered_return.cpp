// layered_return.cpp: the consistency function of the return mapping, its derivative and its root (Simo and Taylor,
// 1986). With the invariants of the trial stress
//
//     a = (s1 + s2)^2 / 6,    b = (s1 - s2)^2 / 2 + 2 s3^2,    c = 2 (s4^2 + s5^2)
//
// the metric norm of the returned stress and the consistency function of the multiplier dlam are
//
//     xi  = a / p^2 + b / q^2 + c / r^2
//     phi = xi / 2 - kappa^2 / 3,      kappa = YIELD_STRESS + H (ebar0 + dlam sqrt(2/3) sqrt(xi))
//
//     p = 1 + E dlam / (3 (1 - nu)),    q = 1 + 2 G dlam,    r = 1 + (5/3) G dlam
//
//     dphi = dxi / 2 - (2/3) kappa H sqrt(2/3) (sqrt(xi) + dlam dxi / (2 sqrt(xi)))
#include "plate_material/layered_return.h"

#include <cmath>

#include "finites/records.h"
#include "plate_material/layered_limits.h"
#include "plate_material/layered_matrices.h"
#include "plate_material/plastic_material.h"
#include "plate_material/through_thickness.h"

namespace {

constexpr const char* DIVISION_TEXT = "Plaque plasticite-Division par zero";

// The factors of the trial stress components at a multiplier: mean, deviator in the plane, transverse shear.
struct RETURN_FACTORS {
  double p, q, r;

  RETURN_FACTORS(const PLATEELEM_RECORD& EL, double dlam) {
    const double G = shear_modulus(EL);
    p = 1.0 + EL.E1 * dlam / (3.0 * (1.0 - EL.NU1));
    q = 1.0 + 2.0 * G * dlam;
    r = 1.0 + FIVE_THIRDS_SINGLE * G * dlam;
  }
};

bool divisible(double divisor, const THICKNESS_POINT& at, std::int32_t& ok) {
  if (!(std::fabs(divisor) < SMALLEST_LAYERED_DIVISOR)) return true;
  ok = 0;
  at.failures.failed(DIVISION_TEXT);
  return false;
}

bool squares_divisible(const RETURN_FACTORS& s, const THICKNESS_POINT& at, std::int32_t& ok) {
  return divisible(s.p * s.p, at, ok) && divisible(s.q * s.q, at, ok) && divisible(s.r * s.r, at, ok);
}

double yield_stress_at(const PLATEELEM_RECORD& EL, double dlam, double xi, const THICKNESS_POINT& at) {
  const double ebar = at.s.EPBAR_START(at.k) + dlam * ROOT_2_3_SINGLE * std::sqrt(xi);
  return EL.YIELD_STRESS + plastic_modulus(EL) * ebar;
}

}  // namespace

void PLATE_PHI(const PLATEELEM_RECORD& EL, double a, double b, double c, double dlam, double& f,
               const THICKNESS_POINT& at, int theory, std::int32_t& ok) {
  const RETURN_FACTORS s(EL, dlam);
  if (!squares_divisible(s, at, ok)) return;
  double xi = a / (s.p * s.p) + b / (s.q * s.q);
  if (theory == THICK_THEORY) xi += c / (s.r * s.r);
  const double kappa = yield_stress_at(EL, dlam, xi, at);
  f = 0.5 * xi - kappa * kappa / 3.0;
}

void PLATE_DPHI(const PLATEELEM_RECORD& EL, double a, double b, double c, const VECTOR<5>& sigma, int theory,
                double dlam, const THICKNESS_POINT& at, double& df, std::int32_t& ok) {
  const RETURN_FACTORS s(EL, dlam);
  if (!squares_divisible(s, at, ok)) return;
  const double xi = a / (s.p * s.p) + b / (s.q * s.q) + c / (s.r * s.r);
  const double p3 = s.p * s.p * s.p;
  if (!divisible(p3, at, ok)) return;
  const double q3 = s.q * s.q * s.q;
  const double r3 = s.r * s.r * s.r;
  const double G = shear_modulus(EL);
  const double sum = sigma(1) + sigma(2);
  const double difference = sigma(1) - sigma(2);
  double dxi = -(sum * sum) * EL.E1 / (9.0 * (1.0 - EL.NU1)) / p3 +
               (difference * difference + 4.0 * (sigma(3) * sigma(3))) * (-(2.0 * G) / q3);
  if (theory == THICK_THEORY) {
    dxi += 4.0 * (sigma(4) * sigma(4) + sigma(5) * sigma(5)) * (0.0 - FIVE_THIRDS_SINGLE * G / r3);
  }
  if (!divisible(xi, at, ok)) return;
  const double kappa = yield_stress_at(EL, dlam, xi, at);
  const double root = std::sqrt(xi);
  df = 0.5 * dxi - 2.0 * kappa * plastic_modulus(EL) * ROOT_2_3_SINGLE * (root + 0.5 * dlam * dxi / root) / 3.0;
}

// x := x - phi / dphi from 0. After a failure the rest of the pass still executes, but dlam is not written.
void PLATE_PLAST_MULT(const PLATEELEM_RECORD& EL, double& dlam, const VECTOR<5>& sigma, std::int32_t& ok,
                      const THICKNESS_POINT& at, int theory) {
  const double sum = sigma(1) + sigma(2);
  const double difference = sigma(1) - sigma(2);
  const double a = sum * sum / 6.0;
  const double b = difference * difference / 2.0 + 2.0 * (sigma(3) * sigma(3));
  const double c = theory == THICK_THEORY ? 2.0 * (sigma(4) * sigma(4) + sigma(5) * sigma(5)) : 0.0;
  double x = 0.0;
  double y = 0.0;
  bool done = false;
  ok = 1;
  for (int count = 1; !done; ++count) {
    if (count > MOST_LAYERED_PASSES) {
      ok = 0;
      done = true;
    }
    double f = 0.0;
    double df = 0.0;
    std::int32_t evaluated = 1;
    PLATE_PHI(EL, a, b, c, x, f, at, theory, evaluated);
    PLATE_DPHI(EL, a, b, c, sigma, theory, x, at, df, evaluated);
    if (evaluated == 0 || std::fabs(df) < SMALLEST_LAYERED_DIVISOR) {
      ok = 0;
      done = true;
    }
    y = x - f / df;
    if (std::fabs(y - x) / (std::fabs(x) + SMALLEST_LAYERED_DIVISOR) <= LAYERED_CONVERGED) {
      done = true;
    } else {
      x = y;
    }
  }
  if (ok == 1) dlam = y;
}
