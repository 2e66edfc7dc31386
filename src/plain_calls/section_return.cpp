// section_return.cpp: the calls finites_section_...: the yield surface of a whole section and the side of a return.
#include <algorithm>

#include "common/finiteness.h"
#include "finites/elements.h"
#include "plain_calls/plate_checks.h"
#include "plate_material/section_corner.h"

namespace {

finites_status check_section(const finites_section& s, double equivalent) {
  const double numbers[4] = {s.thickness, s.yield_stress, s.plastic_modulus, equivalent};
  const finites_status status = check_reals(numbers, 4);
  if (status != FINITES_OK) return status;
  if (!(s.thickness > 0.0)) return FINITES_THICKNESS;
  if (!(s.yield_stress > 0.0)) return FINITES_YIELD;
  return s.plastic_modulus >= 0.0 && equivalent >= 0.0 ? FINITES_OK : FINITES_HARDENING;
}

// A stiffness on the diagonal: not of the shears, which thin plates do not have.
finites_status check_stiffness(const MATRIX<8, 8>& D) {
  for (int i = 1; i <= 6; ++i) {
    if (!(D(i, i) > 0.0)) return FINITES_STIFFNESS;
  }
  return D(7, 7) >= 0.0 && D(8, 8) >= 0.0 ? FINITES_OK : FINITES_STIFFNESS;
}

SECTION_STRENGTH strength_of(const finites_section& s) { return {s.thickness, s.yield_stress, s.plastic_modulus}; }

VECTOR<8> vector_of(const double* values) {
  VECTOR<8> v;
  std::copy_n(values, 8, v.data());
  return v;
}

std::int32_t code_of(YIELD_SIDE side) {
  switch (side) {
    case YIELD_SIDE::POSITIVE: return FINITES_SIDE_POSITIVE;
    case YIELD_SIDE::NEGATIVE: return FINITES_SIDE_NEGATIVE;
    case YIELD_SIDE::CORNER: return FINITES_SIDE_CORNER;
    default: return FINITES_SIDE_ELASTIC;
  }
}

void fill_corner(const CORNER_STATE& from, finites_section_corner& corner) {
  std::copy_n(from.flow.data(), 8, corner.flow);
  std::copy_n(from.tangent.data(), 64, corner.tangent);
  corner.equivalent = from.equivalent;
  corner.mixed = from.mixed;
}

bool finite(const CORNER_STATE& corner) {
  return all_finite(corner.flow.data(), 8) && all_finite(corner.tangent.data(), 64) &&
         all_finite(&corner.equivalent, 1) && all_finite(&corner.mixed, 1);
}

}  // namespace

finites_status finites_section_value(const finites_section* section, const double force[8], double equivalent,
                                     double* excess, double* mixed) {
  if (section == nullptr || force == nullptr) return FINITES_NULL;
  finites_status status = check_section(*section, equivalent);
  if (status == FINITES_OK) status = check_reals(force, 8);
  if (status != FINITES_OK) return status;
  const SECTION_STRENGTH strength = strength_of(*section);
  const VECTOR<8> f = vector_of(force);
  const double values[2] = {yield_excess(strength, f, equivalent), mixed_share(strength, f)};
  if (!all_finite(values, 2)) return FINITES_RESULT;
  if (excess != nullptr) *excess = values[0];
  if (mixed != nullptr) *mixed = values[1];
  return FINITES_OK;
}

finites_status finites_section_return(const finites_section* section, const double D[64], const double trial[8],
                                      double equivalent, std::int32_t* side, finites_section_corner* corner) {
  if (section == nullptr || D == nullptr || trial == nullptr || side == nullptr) return FINITES_NULL;
  finites_status status = check_section(*section, equivalent);
  if (status == FINITES_OK) status = check_reals(D, 64);
  if (status == FINITES_OK) status = check_reals(trial, 8);
  if (status != FINITES_OK) return status;
  MATRIX<8, 8> stiffness;
  std::copy_n(D, 64, stiffness.data());
  status = check_stiffness(stiffness);
  if (status != FINITES_OK) return status;
  CORNER_STATE state;
  const YIELD_SIDE found = return_side(strength_of(*section), stiffness, vector_of(trial), equivalent, state);
  if (found == YIELD_SIDE::NONE) return FINITES_RETURN;
  if (found == YIELD_SIDE::CORNER) {
    if (!finite(state)) return FINITES_RESULT;
    if (corner != nullptr) fill_corner(state, *corner);
  }
  *side = code_of(found);
  return FINITES_OK;
}
