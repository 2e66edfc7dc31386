// removal.cpp: the coefficient that removes a failing element from the structure, over several steps, not at once.
//
//     COEF = ratio^STEP,  at least RMIN,      STEP = 0, -1, -2, ...
//
// STEP counts down from 0; each step divides the stiffness by the ratio, until the least coefficient RMIN is reached in
//
//     NSTEP = trunc(-ln(max(RMIN, LEAST_COEFFICIENT)) / ln(ratio) + ROUND_UP),      1 <= NSTEP <= MOST_STEPS
#include <cmath>

#include "common/diagnostics.h"
#include "finites/fields.h"
#include "finites/finites.h"
#include "finites/services.h"
#include "finites/views.hpp"

namespace {

constexpr double LEAST_COEFFICIENT = 1e-20;  // keeps the logarithm finite for RMIN = 0; used for counting steps only
constexpr double ROUND_UP = 0.99;            // rounds up, except a count that exceeds a whole number by less than 0.01
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
  // A ratio of 1 makes the quotient infinite; TRUNCATED then gives the end of the integer range.
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
