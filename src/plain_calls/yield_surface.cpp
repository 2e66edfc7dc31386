// yield_surface.cpp: the plain calls of yield surfaces.
#include "plain_calls/yield_surface.h"

#include <algorithm>
#include <cmath>

#include "finites/fields.h"
#include "finites/finites.h"
#include "plain_calls/member_frame.h"

namespace {

static_assert(FINITES_SINGLE == SINGLE_FORCES && FINITES_ORBISON == ORBISON && FINITES_SEGMENTS == LINEAR_SEGMENTS);

constexpr double UNIT = 1.0;  // a capacity in pure numbers

void gradient_of(const finites_yield& y, std::int32_t segment, const double* f, double* g) {
  const double* const C = y.capacity;
  switch (y.curve) {
    case FINITES_SINGLE:
      SINGLE_FORCES_CURVE_GRADIENT(&segment, &y.forces, C, C + 1, C + 2, f, f + 1, f + 2, g, g + 1, g + 2);
      break;
    case FINITES_ORBISON: ORBISON_CURVE_GRADIENT(&y.forces, C, C + 1, C + 2, f, f + 1, f + 2, g, g + 1, g + 2); break;
    default: LINEAR_SEGMENT_GRADIENT(&y.forces, &segment, C, C + 1, C + 2, f, f + 1, f + 2, g, g + 1, g + 2); break;
  }
}

void set_values(const finites_yield& y, const double* f, YIELD_EQUATIONS& e) {
  const double* const C = y.capacity;
  switch (y.curve) {
    case FINITES_SINGLE:
      SINGLE_FORCES_SEGMENT_EQUATION(C, C + 1, C + 2, &y.forces, f, f + 1, f + 2, &e.count, e.segment);
      PHI_SINGLE_FORCES(e.segment, C, C + 1, C + 2, &y.forces, f, f + 1, f + 2, e.value);
      break;
    case FINITES_ORBISON:
      e.count = 1;
      PHI_ORBISON(C, C + 1, C + 2, &y.forces, f, f + 1, f + 2, e.value);
      break;
    default:
      LINEAR_SEGMENT_EQUATION(C, C + 1, C + 2, &y.forces, f, f + 1, f + 2, &e.count, e.segment);
      PHI_LINEAR_SEGMENT(e.segment, C, C + 1, C + 2, &y.forces, f, f + 1, f + 2, e.value);
      break;
  }
}

// The coefficient of a plane at a force: the value of the plane where this force alone is 1.
double coefficient(const finites_yield& y, std::int32_t segment, int force) {
  const std::int32_t list[SEGMENTS] = {segment, 0, 0, 0};
  double x[3] = {0.0, 0.0, 0.0};
  x[force] = 1.0;
  double value[SEGMENTS] = {};
  if (y.curve == FINITES_SINGLE) {
    PHI_SINGLE_FORCES(list, &UNIT, &UNIT, &UNIT, &y.forces, x, x + 1, x + 2, value);
  } else {
    PHI_LINEAR_SEGMENT(list, &UNIT, &UNIT, &UNIT, &y.forces, x, x + 1, x + 2, value);
  }
  return value[0];
}

finites_status finite_equations(const YIELD_EQUATIONS& e) {
  for (int i = 0; i < e.count; ++i) {
    double checked[3];
    const finites_status status = first_fault(hand_over(e.value + i, 1, checked), hand_over(e.gradient[i], 3, checked));
    if (status != FINITES_OK) return status;
  }
  return FINITES_OK;
}

finites_status read_equations(const finites_yield* yield, const double* force, YIELD_EQUATIONS& equations) {
  const finites_status status = first_fault(check_yield(*yield), check_member_numbers(force, 3));
  if (status != FINITES_OK) return status;
  set_equations(*yield, force, equations);
  return finite_equations(equations);
}

}  // namespace

bool in_force_set(std::int32_t set, int force) {
  constexpr bool member[7][3] = {{true, false, false}, {false, true, false}, {false, false, true}, {true, true, false},
                                 {true, false, true},  {false, true, true},  {true, true, true}};
  return member[set - 1][force];
}

finites_status check_yield(const finites_yield& yield) {
  const finites_status status = check_member_numbers(yield.capacity, 3);
  if (status != FINITES_OK) return status;
  if (yield.curve < FINITES_SINGLE || yield.curve > FINITES_SEGMENTS) return FINITES_BAD_CODE;
  const bool single = yield.curve == FINITES_SINGLE;
  if (yield.forces < (single ? ONLY_P : ONLY_MY) || yield.forces > (single ? ONLY_MZ : ALL_FORCES)) {
    return FINITES_BAD_CODE;
  }
  for (const double capacity : yield.capacity) {
    if (!(capacity > 0.0)) return FINITES_YIELD;
  }
  return FINITES_OK;
}

void set_equations(const finites_yield& yield, const double* force, YIELD_EQUATIONS& equations) {
  equations = {};
  set_values(yield, force, equations);
  for (int i = 0; i < equations.count; ++i) gradient_of(yield, equations.segment[i], force, equations.gradient[i]);
}

double largest_value(const YIELD_EQUATIONS& e) {
  double largest = e.value[0];
  for (int i = 1; i < e.count; ++i) largest = std::fmax(largest, e.value[i]);
  return largest;
}

int planes_of(const finites_yield& yield, double (*n)[3]) {
  if (yield.curve == FINITES_ORBISON) return 0;
  int count = 0;
  for (std::int32_t segment = 1; segment <= MOST_PLANES; ++segment, ++count) {
    for (int force = 0; force < 3; ++force) n[count][force] = coefficient(yield, segment, force);
    if (n[count][0] == 0.0 && n[count][1] == 0.0 && n[count][2] == 0.0) break;
  }
  return count;
}

double smooth_value(const finites_yield& yield, const double* x) {
  double value = 0.0;
  PHI_ORBISON(&UNIT, &UNIT, &UNIT, &yield.forces, x, x + 1, x + 2, &value);
  return value;
}

SMOOTH_YIELD smooth_yield(const finites_yield& yield, const double* x) {
  SMOOTH_YIELD s{};
  s.value = smooth_value(yield, x);
  double* const g = s.gradient;
  ORBISON_CURVE_GRADIENT(&yield.forces, &UNIT, &UNIT, &UNIT, x, x + 1, x + 2, g, g + 1, g + 2);
  const bool P = in_force_set(yield.forces, 0);
  const bool MY = in_force_set(yield.forces, 1);
  const bool MZ = in_force_set(yield.forces, 2);
  const double p = P ? x[0] : 0.0;
  const double y = MY ? x[1] : 0.0;
  const double z = MZ ? x[2] : 0.0;
  const double p2 = p * p;
  const double z2 = z * z;
  if (P) s.second[0][0] = 2.3 + 7.34 * z2 + 90.0 * p2 * p2 * y * y;
  if (MY) s.second[1][1] = 12.0 * y * y + 6.0 * p2 * p2 * p2 + 9.3 * z2 * z2;
  if (MZ) s.second[2][2] = 2.0 + 7.34 * p2 + 55.8 * z2 * y * y;
  s.second[0][1] = s.second[1][0] = 36.0 * p2 * p2 * p * y;
  s.second[0][2] = s.second[2][0] = 14.68 * p * z;
  s.second[1][2] = s.second[2][1] = 37.2 * z2 * z * y;
  return s;
}

finites_status finites_yield_equations(const finites_yield* yield, const double force[3], int32_t* count,
                                       int32_t segment[4], double value[4], double gradient[4][3]) {
  if (yield == nullptr || force == nullptr || count == nullptr) return FINITES_NULL;
  YIELD_EQUATIONS e;
  const finites_status status = read_equations(yield, force, e);
  if (status != FINITES_OK) return status;
  *count = e.count;
  for (int i = 0; i < std::min(e.count, SEGMENTS); ++i) {
    if (segment != nullptr) segment[i] = e.segment[i];
    if (value != nullptr) value[i] = e.value[i];
    if (gradient != nullptr) std::copy_n(e.gradient[i], 3, gradient[i]);
  }
  return FINITES_OK;
}

finites_status finites_yield_value(const finites_yield* yield, const double force[3], double* value) {
  if (yield == nullptr || force == nullptr || value == nullptr) return FINITES_NULL;
  YIELD_EQUATIONS e;
  const finites_status status = read_equations(yield, force, e);
  if (status == FINITES_OK) *value = largest_value(e);
  return status;
}
