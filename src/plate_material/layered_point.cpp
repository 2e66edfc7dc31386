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
#include "finites/fields.h"
#include "finites/records.h"
#include "plate_material/layered_column.h"
#include "plate_material/layered_kernel.h"
#include "plate_material/layered_limits.h"
#include "plate_material/layered_store.h"
#include "plate_material/plastic_material.h"
#include "plate_material/through_thickness.h"

namespace {

constexpr const char* NEGATIVE_TEXT = "Plasticite Plaque- multiplicateur plastique negatif";

}  // namespace

// The elastic matrix of the thick theory is right for both: a thin element has no transverse shear strains.
void PLATE_TRIAL_STRESS(const PLATEELEM_RECORD& EL, VECTOR<5>& sigma, const VECTOR<5>& ep, const VECTOR<3>& strain,
                        const VECTOR<2>& shear) {
  sigma = elastic_stress(elastic_matrix(EL, THICK_THEORY), ep,
                         VECTOR<5>{{strain(1), strain(2), strain(3), shear(1), shear(2)}});
}

void PLATE_YIELD_TRIAL(const PLATEELEM_RECORD& EL, const VECTOR<5>& sigma, double& f, const THICKNESS_POINT& at,
                       int theory) {
  f = yield_function(yield_metric(theory), EL.YIELD_STRESS, plastic_modulus(EL), sigma, at.s.EPBAR_START(at.k));
}

namespace {

// sigma := Q^T D Q sigma. False when a divisor is zero. The transverse shears of a thin element become zero.
bool return_stress(double dlam, const MATRIX5& Lp, const MATRIX5& Lc, const MATRIX5& Q, int theory, VECTOR<5>& sigma) {
  VECTOR<5> D{};
  const int components = theory == THICK_THEORY ? 5 : 3;
  for (int i = 1; i <= components; ++i) {
    const double d = dlam * Lc(i, i) * Lp(i, i) + 1.0;
    if (std::fabs(d) < SMALLEST_LAYERED_DIVISOR) return false;
    D(i) = 1.0 / d;
  }
  VECTOR<5> turned = times(Q, sigma);
  for (int i = 1; i <= 5; ++i) turned(i) *= D(i);
  sigma = transposed_times(Q, turned);
  return true;
}

}  // namespace

// A negative multiplier is reported and then used. Only operation 33 stores.
void PLATE_RADIAL_RETURN(const PLATEELEM_RECORD& EL, const VECTOR<5>& sigma, const THICKNESS_POINT& at, int theory,
                         int op, std::int32_t& ok) {
  ok = 1;
  const MATRIX5 P = yield_metric(theory);
  const MATRIX5 Lp = metric_eigenvalues(theory);
  const MATRIX5 Lc = elastic_eigenvalues(EL, theory);
  const MATRIX5 Q = eigenvectors(theory);
  double dlam = 0.0;
  PLATE_PLAST_MULT(EL, dlam, sigma, ok, at, theory);
  if (ok == 0) return;
  if (dlam < 0.0) at.failures.remarked(NEGATIVE_TEXT);
  VECTOR<5> returned = sigma;
  if (!return_stress(dlam, Lp, Lc, Q, theory, returned)) {
    ok = 0;
    return;
  }
  if (op != OP_FORCES_COMMIT) return;

  const POINT_STATE_RECORD& s = at.s;
  const std::int32_t k = at.k;
  VECTOR<5> ep;
  VEC6_TO_LOCAL5(EL, global_values(s.EP_START, k), ep);
  const VECTOR<5> flow = times(P, returned);
  for (int i = 1; i <= 5; ++i) ep(i) += dlam * flow(i);
  VECTOR<6> stress;
  VECTOR<6> strain;
  VEC5_TO_GLOBAL6(EL, returned, stress);
  EP5_TO_GLOBAL6(EL, ep, strain);
  const double ebar = s.EPBAR_START(k) + dlam * ROOT_2_3_SINGLE * std::sqrt(dot(returned, flow));

  MATRIX5 C;
  if (at.stored_tangent == TANGENT::CONTINUUM) {
    C = continuum_tangent(EL, returned, P, theory);
  } else {
    PLATE_TANGENT_ALGO(EL, dlam, returned, P, Lp, Lc, Q, C);
  }
  store_point(s, at.increment_from_current, k, stress, strain, ebar, C);
}

void PLATE_LAYERED_POINT(const PLATEELEM_RECORD& EL, const VECTOR<3>& strain, const VECTOR<2>& shear,
                         const THICKNESS_POINT& at, int theory, int op) {
  const LAYERED_LAW law(EL, theory, op, {nullptr, 0, at.increment_from_current, at.failures, at.stored_tangent});
  update_layered_point(LAYERED_COLUMN(law, at.s, at.failures.point),
                       {{strain(1), strain(2), strain(3), shear(1), shear(2)}}, at.k);
}
