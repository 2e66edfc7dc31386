// removal.cpp: the coefficient by which a failing element leaves the structure, over several steps instead of at once.
//
// Its counter goes down from 0; each step divides the stiffness by the ratio, until the least coefficient is reached.
#include <cmath>

#include "common/diagnostics.h"
#include "finites/fields.h"
#include "finites/finites.h"
#include "finites/services.h"
#include "finites/views.hpp"

namespace {

constexpr double LEAST_COEFFICIENT = 1e-20;  // below it a least coefficient counts as this when steps are counted
constexpr double ROUND_UP = 0.99;
constexpr int MOST_STEPS = 100;

double removal_ratio() {
  SOLPARAM_RECORD parameters;
  ZelkuSolParamGetRec(&parameters);
  return static_cast<double>(parameters.REMOVE_RATIO);
}

}  // namespace

void GET_N_CONVERG_TOM(const double* RMIN, double* RATIO, int32_t* NSTEP) {
  *RATIO = removal_ratio();
  double x = *RMIN;
  if (x < LEAST_COEFFICIENT) x = LEAST_COEFFICIENT;
  // A ratio of 1 makes the quotient infinite, which the truncation takes to the end of its range.
  *NSTEP = TRUNCATED(-(std::log(x) / std::log(*RATIO)) + ROUND_UP);
  if (*NSTEP > MOST_STEPS) *NSTEP = MOST_STEPS;
  if (*NSTEP < 1) *NSTEP = 1;
}

void GET_COEF_REMOVE(const int32_t* STEP, const double* RMIN, double* COEF) {
  if (*STEP >= 0) {
    *COEF = 1.0;
    return;
  }
  double ratio = 0.0;
  std::int32_t steps = 0;
  GET_N_CONVERG_TOM(RMIN, &ratio, &steps);
  if (*STEP <= -steps) {
    *COEF = *RMIN;
    return;
  }
  *COEF = std::pow(ratio, *STEP);
  if (*COEF < *RMIN) *COEF = *RMIN;
}

void GET_COEF_REMOVE_SPRING(const int32_t* STEP, const double* RMIN, const int32_t* NLIDX, const int32_t* KIND,
                            double* COEF) {
  if (*KIND != COMPONENT_NONLINEAR) {
    GET_COEF_REMOVE(STEP, RMIN, COEF);
    return;
  }
  *COEF = 1.0;
  if (*NLIDX < 1) {
    report_failure("GET_COEF_REMOVE_SPRING");
    return;
  }
  if (!HAS_ELEMENT(SOLANAELEM.SPRING_NL_REC, *NLIDX)) return;
  const SPRING_NL_RECORD& spring = SOLANAELEM.SPRING_NL_REC(*NLIDX);
  *COEF = spring.K_CURRENT / spring.K_INITIAL;
}
