// layered_point.cpp: the stress update at a thickness point.
//
// Fractions are single-precision values, widened: they are part of the results.
#include "plate_material/layered_point.h"

#include <cmath>

#include "common_services.h"
#include "diagnostics.h"
#include "operations.h"
#include "plate_material/plastic_material.h"
#include "plate_material/through_thickness.h"
#include "shared_records.h"

namespace {

constexpr double TWO_THIRDS_SINGLE = 0.6666666865348816;
constexpr double ONE_THIRD_SINGLE = 0.3333333432674408;
constexpr double FIVE_TWELFTHS_SINGLE = 0.4166666567325592;
constexpr double FIVE_THIRDS_SINGLE = 1.6666666269302368;
constexpr double ROOT_1_2_SINGLE = 0.7071067690849304;

constexpr double SMALLEST = 1e-15;
constexpr double CONVERGED = 1e-6;
constexpr int MOST_PASSES = 500;

// Which tangent a plastic point stores: 0 the continuum one, 1 that of the algorithm, for studies of convergence.
constexpr int TANGENT_CHOICE = 0;

constexpr const char* RETURN_TEXT = "Plasticite Plaque: pb avec algorithme de rabattement radial";
constexpr const char* NEGATIVE_TEXT = "Plasticite Plaque- multiplicateur plastique negatif";
constexpr const char* DIVISION_TEXT = "Plaque plasticite-Division par zero";

double shear_modulus() { return PLATEELEM.E1 / (2.0 * (1.0 + PLATEELEM.NU1)); }

POINT_STATE_RECORD& state_of(std::int32_t plate, std::int32_t gp) {
  return SOLANAELEM.PLATE_STATE(plate).POINT_STATE(gp);
}

// The yield metric.
MATRIX5 metric(int theory) {
  MATRIX5 P{};
  P(1, 1) = P(2, 2) = TWO_THIRDS_SINGLE;
  P(1, 2) = P(2, 1) = -ONE_THIRD_SINGLE;
  P(3, 3) = 2.0;
  if (theory == THICK_THEORY) P(4, 4) = P(5, 5) = 2.0;
  return P;
}

MATRIX5 elastic_matrix(int theory) {
  const double E = PLATEELEM.E1;
  const double nu = PLATEELEM.NU1;
  MATRIX5 C{};
  C(1, 1) = C(2, 2) = E / (1.0 - nu * nu);
  C(1, 2) = C(2, 1) = nu * E / (1.0 - nu * nu);
  C(3, 3) = 0.5 * E / (1.0 + nu);
  if (theory == THICK_THEORY) C(4, 4) = C(5, 5) = FIVE_TWELFTHS_SINGLE * E / (1.0 + nu);
  return C;
}

MATRIX5 metric_eigenvalues(int theory) {
  MATRIX5 L{};
  L(1, 1) = ONE_THIRD_SINGLE;
  L(2, 2) = 1.0;
  L(3, 3) = 2.0;
  if (theory == THICK_THEORY) L(4, 4) = L(5, 5) = 2.0;
  return L;
}

MATRIX5 elastic_eigenvalues(int theory) {
  const double E = PLATEELEM.E1;
  const double nu = PLATEELEM.NU1;
  MATRIX5 L{};
  L(1, 1) = E / (1.0 - nu);
  L(2, 2) = E / (1.0 + nu);
  L(3, 3) = 0.5 * E / (1.0 + nu);
  if (theory == THICK_THEORY) L(4, 4) = L(5, 5) = FIVE_TWELFTHS_SINGLE * E / (1.0 + nu);
  return L;
}

// The eigenvectors that metric and elastic matrix have in common.
MATRIX5 eigenvectors(int theory) {
  MATRIX5 Q{};
  Q(1, 1) = Q(1, 2) = Q(2, 2) = ROOT_1_2_SINGLE;
  Q(2, 1) = -ROOT_1_2_SINGLE;
  Q(3, 3) = 1.0;
  if (theory == THICK_THEORY) Q(4, 4) = Q(5, 5) = 1.0;
  return Q;
}

VECTOR<5> times(const MATRIX5& M, const VECTOR<5>& v) {
  VECTOR<5> out{};
  for (int j = 1; j <= 5; ++j) {
    for (int i = 1; i <= 5; ++i) out(i) += M(i, j) * v(j);
  }
  return out;
}

VECTOR<5> transposed_times(const MATRIX5& M, const VECTOR<5>& v) {
  VECTOR<5> out{};
  for (int i = 1; i <= 5; ++i) {
    for (int j = 1; j <= 5; ++j) out(i) += M(j, i) * v(j);
  }
  return out;
}

MATRIX5 product(const MATRIX5& A, const MATRIX5& B) {
  constexpr std::int32_t five = 5;
  MATRIX5 C;
  MATMUL_M1_M2_DBL(C.data(), A.data(), B.data(), &five);
  return C;
}

double dot(const VECTOR<5>& a, const VECTOR<5>& b) {
  double sum = 0.0;
  for (int i = 1; i <= 5; ++i) sum += a(i) * b(i);
  return sum;
}

// sigma' P sigma.
double metric_norm(const MATRIX5& P, const VECTOR<5>& sigma) { return dot(sigma, times(P, sigma)); }

MATRIX<3, 3> tensor_of(double xx, double yy, double zz, double xy, double xz, double yz) {
  return {{xx, xy, xz, xy, yy, yz, xz, yz, zz}};
}

// R^T S R.
void turn_to_global(const MATRIX<3, 3>& S, VECTOR<6>& out) {
  constexpr std::int32_t three = 3;
  MATRIX<3, 3> RT;
  MATRIX<3, 3> RTS;
  MATRIX<3, 3> T;
  for (int j = 1; j <= 3; ++j) {
    for (int i = 1; i <= 3; ++i) RT(i, j) = PLATEELEM.AXES(j, i);
  }
  MATMUL_M1_M2_DBL(RTS.data(), RT.data(), S.data(), &three);
  MATMUL_M1_M2_DBL(T.data(), RTS.data(), PLATEELEM.AXES.data(), &three);
  out = {{T(1, 1), T(2, 2), T(3, 3), T(1, 2), T(1, 3), T(2, 3)}};
}

void store(const VECTOR<6>& v, const ARRAY_REFERENCE<double, 2>& field, std::int32_t k) {
  for (int i = 1; i <= 6; ++i) field(i, k) = v(i);
}

VECTOR<6> difference(const VECTOR<6>& a, const VECTOR<6>& b) {
  VECTOR<6> d;
  for (int i = 1; i <= 6; ++i) d(i) = a(i) - b(i);
  return d;
}

// What the increment of plastic strain is measured from.
VECTOR<6> reference_strain(const POINT_STATE_RECORD& s, std::int32_t k) {
  return global_values(SOLANAELEM.EP_INC_FROM_CUR == 0 ? s.EP_START : s.EP_CUR, k);
}

void store_tangent(const MATRIX5& C, const POINT_STATE_RECORD& s, std::int32_t k) {
  for (int c = 1; c <= 5; ++c) {
    for (int r = 1; r <= 5; ++r) s.TANGENT(r, c, k) = C(r, c);
  }
}

// 5/6 of the shear modulus, as the elastic tangent of a thick element has it: it rounds apart from the corrector's.
MATRIX5 stored_elastic_tangent(int theory) {
  MATRIX5 C = elastic_matrix(THIN_THEORY);
  if (theory == THICK_THEORY) {
    C(4, 4) = C(5, 5) = FIVE_SIXTHS_SINGLE * (0.5 * PLATEELEM.E1) / (1.0 + PLATEELEM.NU1);
  }
  return C;
}

}  // namespace

VECTOR<6> global_values(const ARRAY_REFERENCE<double, 2>& field, std::int32_t k) {
  VECTOR<6> v;
  for (int i = 1; i <= 6; ++i) v(i) = field(i, k);
  return v;
}

void VEC6_TO_LOCAL5(const VECTOR<6>& in, VECTOR<5>& out) {
  constexpr std::int32_t three = 3;
  const MATRIX<3, 3> S = tensor_of(in(1), in(2), in(3), in(4), in(5), in(6));
  MATRIX<3, 3> RS;
  MATRIX<3, 3> T;
  MATMUL_M1_M2_DBL(RS.data(), PLATEELEM.AXES.data(), S.data(), &three);
  MATMUL_M1_M2T_DBL(T.data(), RS.data(), PLATEELEM.AXES.data(), &three, &three);
  out = {{T(1, 1), T(2, 2), T(1, 2), T(1, 3), T(2, 3)}};
}

void VEC5_TO_GLOBAL6(const VECTOR<5>& in, VECTOR<6>& out) {
  turn_to_global(tensor_of(in(1), in(2), 0.0, in(3), in(4), in(5)), out);
}

void EP5_TO_GLOBAL6(const VECTOR<5>& in, VECTOR<6>& out) {
  turn_to_global(tensor_of(in(1), in(2), -(in(1) + in(2)), in(3), in(4), in(5)), out);
}

// The shear entries stand in both theories: a thin element has no such strains.
void PLATE_TRIAL_STRESS(VECTOR<5>& sigma, const VECTOR<5>& ep, const VECTOR<3>& strain, const VECTOR<2>& shear) {
  VECTOR<5> e{{strain(1), strain(2), strain(3), shear(1), shear(2)}};
  for (int i = 1; i <= 5; ++i) e(i) -= ep(i);
  sigma = times(elastic_matrix(THICK_THEORY), e);
}

void PLATE_YIELD_TRIAL(const VECTOR<5>& sigma, double& f, std::int32_t plate, std::int32_t gp, std::int32_t k,
                       int theory) {
  const double kappa = PLATEELEM.YIELD_STRESS + plastic_modulus() * state_of(plate, gp).EPBAR_START(k);
  f = 0.5 * metric_norm(metric(theory), sigma) - kappa * kappa / 3.0;
}

namespace {

// The factors of the trial stress components at a multiplier: mean, deviator in the plane, transverse shear.
struct RETURN_FACTORS {
  double p, q, r;

  explicit RETURN_FACTORS(double dlam) {
    const double G = shear_modulus();
    p = 1.0 + PLATEELEM.E1 * dlam / (3.0 * (1.0 - PLATEELEM.NU1));
    q = 1.0 + 2.0 * G * dlam;
    r = 1.0 + FIVE_THIRDS_SINGLE * G * dlam;
  }
};

bool divisible(double divisor, std::int32_t& ok) {
  if (!(std::fabs(divisor) < SMALLEST)) return true;
  ok = 0;
  report_failure(DIVISION_TEXT);
  return false;
}

bool squares_divisible(const RETURN_FACTORS& s, std::int32_t& ok) {
  return divisible(s.p * s.p, ok) && divisible(s.q * s.q, ok) && divisible(s.r * s.r, ok);
}

double yield_stress_at(double dlam, double xi, std::int32_t plate, std::int32_t gp, std::int32_t k) {
  const double ebar = state_of(plate, gp).EPBAR_START(k) + dlam * ROOT_2_3_SINGLE * std::sqrt(xi);
  return PLATEELEM.YIELD_STRESS + plastic_modulus() * ebar;
}

}  // namespace

void PLATE_PHI(double a, double b, double c, double dlam, double& f, std::int32_t plate, std::int32_t gp,
               std::int32_t k, int theory, std::int32_t& ok) {
  const RETURN_FACTORS s(dlam);
  if (!squares_divisible(s, ok)) return;
  double xi = a / (s.p * s.p) + b / (s.q * s.q);
  if (theory == THICK_THEORY) xi += c / (s.r * s.r);
  const double kappa = yield_stress_at(dlam, xi, plate, gp, k);
  f = 0.5 * xi - kappa * kappa / 3.0;
}

void PLATE_DPHI(double a, double b, double c, const VECTOR<5>& sigma, int theory, double dlam, std::int32_t plate,
                std::int32_t gp, std::int32_t k, double& df, std::int32_t& ok) {
  const RETURN_FACTORS s(dlam);
  if (!squares_divisible(s, ok)) return;
  const double xi = a / (s.p * s.p) + b / (s.q * s.q) + c / (s.r * s.r);
  const double p3 = s.p * s.p * s.p;
  if (!divisible(p3, ok)) return;
  const double q3 = s.q * s.q * s.q;
  const double r3 = s.r * s.r * s.r;
  const double G = shear_modulus();
  const double sum = sigma(1) + sigma(2);
  const double difference = sigma(1) - sigma(2);
  double dxi = -(sum * sum) * PLATEELEM.E1 / (9.0 * (1.0 - PLATEELEM.NU1)) / p3 +
               (difference * difference + 4.0 * (sigma(3) * sigma(3))) * (-(2.0 * G) / q3);
  if (theory == THICK_THEORY) {
    dxi += 4.0 * (sigma(4) * sigma(4) + sigma(5) * sigma(5)) * (0.0 - FIVE_THIRDS_SINGLE * G / r3);
  }
  if (!divisible(xi, ok)) return;
  const double kappa = yield_stress_at(dlam, xi, plate, gp, k);
  const double root = std::sqrt(xi);
  df = 0.5 * dxi - 2.0 * kappa * plastic_modulus() * ROOT_2_3_SINGLE * (root + 0.5 * dlam * dxi / root) / 3.0;
}

// A pass that has failed runs to its end.
void PLATE_PLAST_MULT(double& dlam, const VECTOR<5>& sigma, std::int32_t& ok, std::int32_t plate, std::int32_t gp,
                      std::int32_t k, int theory) {
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
    if (count > MOST_PASSES) {
      ok = 0;
      done = true;
    }
    double f = 0.0;
    double df = 0.0;
    std::int32_t evaluated = 1;
    PLATE_PHI(a, b, c, x, f, plate, gp, k, theory, evaluated);
    PLATE_DPHI(a, b, c, sigma, theory, x, plate, gp, k, df, evaluated);
    if (evaluated == 0 || std::fabs(df) < SMALLEST) {
      ok = 0;
      done = true;
    }
    y = x - f / df;
    if (std::fabs(y - x) / (std::fabs(x) + SMALLEST) <= CONVERGED) {
      done = true;
    } else {
      x = y;
    }
  }
  if (ok == 1) dlam = y;
}

void PLATE_TANGENT_ALGO(double dlam, const VECTOR<5>& sigma, const MATRIX5& P, const MATRIX5& Lp, const MATRIX5& Lc,
                        const MATRIX5& Q, MATRIX5& C) {
  MATRIX5 scaled_Q;  // D Lc Q
  MATRIX5 QT;
  for (int j = 1; j <= 5; ++j) {
    for (int i = 1; i <= 5; ++i) {
      const double D = 1.0 / (dlam * Lp(i, i) * Lc(i, i) + 1.0);
      scaled_Q(i, j) = D * Lc(i, i) * Q(i, j);
      QT(j, i) = Q(i, j);
    }
  }
  const MATRIX5 X = product(QT, scaled_Q);
  const VECTOR<5> v = times(P, sigma);
  const VECTOR<5> n = times(X, v);
  const double H = plastic_modulus();
  const double a = dot(v, n);
  const double b = dot(sigma, v);
  const double divisor = a + 2.0 * H * b / (3.0 - 2.0 * H * dlam);
  for (int j = 1; j <= 5; ++j) {
    for (int i = 1; i <= 5; ++i) C(i, j) = X(i, j) - n(i) * n(j) / divisor;
  }
}

namespace {

MATRIX5 continuum_tangent(const VECTOR<5>& sigma, const MATRIX5& P, int theory) {
  const MATRIX5 Ce = elastic_matrix(theory);
  const VECTOR<5> n = times(product(Ce, P), sigma);
  const double alpha = dot(times(P, sigma), n);
  const double beta = metric_norm(P, sigma);
  const double divisor = alpha + TWO_THIRDS_SINGLE * beta * plastic_modulus();
  MATRIX5 C;
  for (int j = 1; j <= 5; ++j) {
    for (int i = 1; i <= 5; ++i) C(i, j) = Ce(i, j) - n(i) * n(j) / divisor;
  }
  return C;
}

// sigma := Q^T D Q sigma. False when a divisor is zero. The shears of a thin element have no factor and come out zero.
bool return_stress(double dlam, const MATRIX5& Lp, const MATRIX5& Lc, const MATRIX5& Q, int theory, VECTOR<5>& sigma) {
  VECTOR<5> D{};
  const int components = theory == THICK_THEORY ? 5 : 3;
  for (int i = 1; i <= components; ++i) {
    const double d = dlam * Lc(i, i) * Lp(i, i) + 1.0;
    if (std::fabs(d) < SMALLEST) return false;
    D(i) = 1.0 / d;
  }
  VECTOR<5> turned = times(Q, sigma);
  for (int i = 1; i <= 5; ++i) turned(i) *= D(i);
  sigma = transposed_times(Q, turned);
  return true;
}

}  // namespace

void PLATE_RADIAL_RETURN(const VECTOR<5>& sigma, std::int32_t plate, std::int32_t gp, std::int32_t k, int theory,
                         int op, std::int32_t& ok) {
  ok = 1;
  const MATRIX5 P = metric(theory);
  const MATRIX5 Lp = metric_eigenvalues(theory);
  const MATRIX5 Lc = elastic_eigenvalues(theory);
  const MATRIX5 Q = eigenvectors(theory);
  double dlam = 0.0;
  PLATE_PLAST_MULT(dlam, sigma, ok, plate, gp, k, theory);
  if (ok == 0) return;
  if (dlam < 0.0) report_failure(NEGATIVE_TEXT);
  VECTOR<5> returned = sigma;
  if (!return_stress(dlam, Lp, Lc, Q, theory, returned)) {
    ok = 0;
    return;
  }
  if (op != OP_FORCES_COMMIT) return;

  const POINT_STATE_RECORD& s = state_of(plate, gp);
  const VECTOR<6> reference = reference_strain(s, k);
  VECTOR<6> global;
  VEC5_TO_GLOBAL6(returned, global);
  store(global, s.SIG, k);

  VECTOR<5> ep;
  VEC6_TO_LOCAL5(global_values(s.EP_START, k), ep);
  const VECTOR<5> flow = times(P, returned);
  for (int i = 1; i <= 5; ++i) ep(i) += dlam * flow(i);
  EP5_TO_GLOBAL6(ep, global);
  store(difference(global, reference), s.EP_INC, k);
  store(global, s.EP_CUR, k);
  s.EPBAR_CUR(k) = s.EPBAR_START(k) + dlam * ROOT_2_3_SINGLE * std::sqrt(dot(returned, flow));

  MATRIX5 C;
  if constexpr (TANGENT_CHOICE == 0) {
    C = continuum_tangent(returned, P, theory);
  } else {
    PLATE_TANGENT_ALGO(dlam, returned, P, Lp, Lc, Q, C);
  }
  store_tangent(C, s, k);
}

void PLATE_LAYERED_POINT(const VECTOR<3>& strain, const VECTOR<2>& shear, std::int32_t gp, std::int32_t k,
                         std::int32_t plate, int theory, int op) {
  const POINT_STATE_RECORD& s = state_of(plate, gp);
  const VECTOR<6> p0 = global_values(s.EP_START, k);
  VECTOR<5> ep;
  VEC6_TO_LOCAL5(p0, ep);
  VECTOR<5> trial;
  PLATE_TRIAL_STRESS(trial, ep, strain, shear);
  double f = 0.0;
  PLATE_YIELD_TRIAL(trial, f, plate, gp, k, theory);
  if (!(f <= 0.0)) {
    std::int32_t ok = 1;
    PLATE_RADIAL_RETURN(trial, plate, gp, k, theory, op, ok);
    if (ok == 0) report_failure(RETURN_TEXT);
    return;
  }
  const VECTOR<6> reference = reference_strain(s, k);
  VECTOR<6> global;
  VEC5_TO_GLOBAL6(trial, global);
  store(global, s.SIG, k);
  store(difference(p0, reference), s.EP_INC, k);
  store(p0, s.EP_CUR, k);
  s.EPBAR_CUR(k) = s.EPBAR_START(k);
  store_tangent(stored_elastic_tangent(theory), s, k);
}
