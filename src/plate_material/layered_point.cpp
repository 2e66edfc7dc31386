// layered_point.cpp: the stress update at a thickness point: predictor, yield test, return (Simo and Taylor, 1986).
//
//     trial    sigma_t = Ce (strain - ep0)
//     yield    f = sigma_t^T P sigma_t / 2 - kappa^2 / 3,      kappa = YIELD_STRESS + H ebar0
//     return   sigma = Q^T D Q sigma_t,                        D = 1 / (1 + dlam Lp Lc)
//     strain   ep = ep0 + dlam P sigma,                        ebar = ebar0 + dlam sqrt(2/3) sqrt(sigma^T P sigma)
//
// ep0 and ebar0 are the plastic strains at the start of the step, dlam the multiplier (layered_return.cpp). f <= 0 is
// elastic; NaN is plastic and fails in the return.
#include "plate_material/layered_point.h"

#include <cmath>

#include "common/array_columns.h"
#include "common/diagnostics.h"
#include "finites/fields.h"
#include "finites/records.h"
#include "plate_material/plastic_material.h"
#include "plate_material/through_thickness.h"

namespace {

// The tangent that a plastic point stores: 0 the continuum tangent, 1 the consistent one, for studies of convergence.
// The stored forces are the tangent times the strains: the choice is part of the results (docs/decisions.md).
constexpr int TANGENT_CHOICE = 0;

// A divisor 1 + dlam Lp Lc below it counts as zero, and the return fails. Only a negative multiplier can make it small.
constexpr double SMALLEST = 1e-15;

constexpr const char* RETURN_TEXT = "Plasticite Plaque: pb avec algorithme de rabattement radial";
constexpr const char* NEGATIVE_TEXT = "Plasticite Plaque- multiplicateur plastique negatif";

void store(const VECTOR<6>& v, const ARRAY_REFERENCE<double, 2>& field, std::int32_t k) {
  const ARRAY_COLUMN<double> column = column_of(field, k);
  for (int i = 1; i <= 6; ++i) column(i) = v(i);
}

VECTOR<6> difference(const VECTOR<6>& a, const VECTOR<6>& b) {
  VECTOR<6> d;
  for (int i = 1; i <= 6; ++i) d(i) = a(i) - b(i);
  return d;
}

// The plastic strain from which the increment is measured: that at the start of the step, or the last stored one.
VECTOR<6> reference_strain(const POINT_STATE_RECORD& s, std::int32_t k) {
  return global_values(SOLANAELEM.EP_INC_FROM_CUR == 0 ? s.EP_START : s.EP_CUR, k);
}

void store_tangent(const MATRIX5& C, const POINT_STATE_RECORD& s, std::int32_t k) {
  for (int c = 1; c <= 5; ++c) {
    const ARRAY_COLUMN<double> column = column_of(s.TANGENT, c, k);
    for (int r = 1; r <= 5; ++r) column(r) = C(r, c);
  }
}

bool all_zero(const VECTOR<6>& v) {
  for (const double value : v.V) {
    if (value != 0.0) return false;
  }
  return true;
}

// The plastic strain of a point in element axes. Most points have none: nothing is turned then.
VECTOR<5> local_plastic_strain(const PLATEELEM_RECORD& EL, const VECTOR<6>& global) {
  VECTOR<5> local{};
  if (!all_zero(global)) VEC6_TO_LOCAL5(EL, global, local);
  return local;
}

// D (strain - ep). The matrix couples xx and yy alone.
VECTOR<5> elastic_stress(const MATRIX5& D, const VECTOR<5>& ep, const VECTOR<3>& strain, const VECTOR<2>& shear) {
  const double e1 = strain(1) - ep(1);
  const double e2 = strain(2) - ep(2);
  return {{0.0 + D(1, 1) * e1 + D(1, 2) * e2, 0.0 + D(2, 1) * e1 + D(2, 2) * e2, 0.0 + D(3, 3) * (strain(3) - ep(3)),
           0.0 + D(4, 4) * (shear(1) - ep(4)), 0.0 + D(5, 5) * (shear(2) - ep(5))}};
}

// sigma' P sigma. The metric couples xx and yy alone.
double metric_norm_of(const MATRIX5& P, const VECTOR<5>& s) {
  const double p1 = 0.0 + P(1, 1) * s(1) + P(1, 2) * s(2);
  const double p2 = 0.0 + P(2, 1) * s(1) + P(2, 2) * s(2);
  return 0.0 + s(1) * p1 + s(2) * p2 + s(3) * (P(3, 3) * s(3)) + s(4) * (P(4, 4) * s(4)) + s(5) * (P(5, 5) * s(5));
}

// 1/2 sigma' P sigma - kappa^2 / 3, kappa being the yield stress of the hardened point.
double yield_function(const PLATEELEM_RECORD& EL, const MATRIX5& P, double hardening, const VECTOR<5>& sigma,
                      double ebar) {
  const double kappa = EL.YIELD_STRESS + hardening * ebar;
  return 0.5 * metric_norm_of(P, sigma) - kappa * kappa / 3.0;
}

}  // namespace

VECTOR<6> global_values(const ARRAY_REFERENCE<double, 2>& field, std::int32_t k) {
  const ARRAY_COLUMN<double> column = column_of(field, k);
  VECTOR<6> v;
  for (int i = 1; i <= 6; ++i) v(i) = column(i);
  return v;
}

// The elastic matrix of the thick theory is right for both: a thin element has no transverse shear strains.
void PLATE_TRIAL_STRESS(const PLATEELEM_RECORD& EL, VECTOR<5>& sigma, const VECTOR<5>& ep, const VECTOR<3>& strain,
                        const VECTOR<2>& shear) {
  sigma = elastic_stress(elastic_matrix(EL, THICK_THEORY), ep, strain, shear);
}

void PLATE_YIELD_TRIAL(const PLATEELEM_RECORD& EL, const VECTOR<5>& sigma, double& f, std::int32_t plate,
                       std::int32_t gp, std::int32_t k, int theory) {
  f = yield_function(EL, yield_metric(theory), plastic_modulus(EL), sigma, state_of(plate, gp).EPBAR_START(k));
}

namespace {

// sigma := Q^T D Q sigma. False when a divisor is zero. The transverse shears of a thin element become zero.
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

// A negative multiplier is reported and then used. Only operation 33 stores.
void PLATE_RADIAL_RETURN(const PLATEELEM_RECORD& EL, const VECTOR<5>& sigma, std::int32_t plate, std::int32_t gp,
                         std::int32_t k, int theory, int op, std::int32_t& ok) {
  ok = 1;
  const MATRIX5 P = yield_metric(theory);
  const MATRIX5 Lp = metric_eigenvalues(theory);
  const MATRIX5 Lc = elastic_eigenvalues(EL, theory);
  const MATRIX5 Q = eigenvectors(theory);
  double dlam = 0.0;
  PLATE_PLAST_MULT(EL, dlam, sigma, ok, plate, gp, k, theory);
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
  VEC5_TO_GLOBAL6(EL, returned, global);
  store(global, s.SIG, k);

  VECTOR<5> ep;
  VEC6_TO_LOCAL5(EL, global_values(s.EP_START, k), ep);
  const VECTOR<5> flow = times(P, returned);
  for (int i = 1; i <= 5; ++i) ep(i) += dlam * flow(i);
  EP5_TO_GLOBAL6(EL, ep, global);
  store(difference(global, reference), s.EP_INC, k);
  store(global, s.EP_CUR, k);
  s.EPBAR_CUR(k) = s.EPBAR_START(k) + dlam * ROOT_2_3_SINGLE * std::sqrt(dot(returned, flow));

  MATRIX5 C;
  if constexpr (TANGENT_CHOICE == 0) {
    C = continuum_tangent(EL, returned, P, theory);
  } else {
    PLATE_TANGENT_ALGO(EL, dlam, returned, P, Lp, Lc, Q, C);
  }
  store_tangent(C, s, k);
}

LAYERED_COLUMN::LAYERED_COLUMN(const PLATEELEM_RECORD& record, std::int32_t surface_point, std::int32_t plate_index,
                               int plate_theory, int operation)
    : EL(record),
      s(state_of(plate_index, surface_point)),
      gp(surface_point),
      plate(plate_index),
      theory(plate_theory),
      op(operation),
      D(elastic_matrix(record, THICK_THEORY)),
      tangent(elastic_matrix(record, plate_theory)),
      P(yield_metric(plate_theory)),
      hardening(plastic_modulus(record)) {}

namespace {

void store_elastic(const LAYERED_COLUMN& column, const VECTOR<5>& sigma, const VECTOR<6>& p0, std::int32_t k) {
  const POINT_STATE_RECORD& s = column.s;
  const VECTOR<6> reference = reference_strain(s, k);
  VECTOR<6> global;
  VEC5_TO_GLOBAL6(column.EL, sigma, global);
  store(global, s.SIG, k);
  store(difference(p0, reference), s.EP_INC, k);
  store(p0, s.EP_CUR, k);
  s.EPBAR_CUR(k) = s.EPBAR_START(k);
  store_tangent(column.tangent, s, k);
}

}  // namespace

void update_layered_point(const LAYERED_COLUMN& column, const VECTOR<3>& strain, const VECTOR<2>& shear,
                          std::int32_t k) {
  const VECTOR<6> p0 = global_values(column.s.EP_START, k);
  const VECTOR<5> trial = elastic_stress(column.D, local_plastic_strain(column.EL, p0), strain, shear);
  const double f = yield_function(column.EL, column.P, column.hardening, trial, column.s.EPBAR_START(k));
  if (f <= 0.0) {
    store_elastic(column, trial, p0, k);
    return;
  }
  std::int32_t ok = 1;
  PLATE_RADIAL_RETURN(column.EL, trial, column.plate, column.gp, k, column.theory, column.op, ok);
  if (ok == 0) report_failure(RETURN_TEXT);
}

void PLATE_LAYERED_POINT(const PLATEELEM_RECORD& EL, const VECTOR<3>& strain, const VECTOR<2>& shear, std::int32_t gp,
                         std::int32_t k, std::int32_t plate, int theory, int op) {
  update_layered_point(LAYERED_COLUMN(EL, gp, plate, theory, op), strain, shear, k);
}
