// hinge_records.cpp: the records through which the library sees the hinges of beams.
#include <algorithm>

#include "elements/library_model.h"
#include "finites/fields.h"
#include "finites/finites.h"
#include "finites/services.h"
#include "finites/views.hpp"
#include "tarnix.h"

namespace solver {

namespace {

constexpr std::int32_t WITH_HINGES = 1;

}  // namespace

HINGE_RECORD library_model::hinge_record(std::size_t element) const {
  HINGE_RECORD record{};
  if (at(element).hinges < 0) return record;
  const hinge_model& h = model_.hinges[static_cast<std::size_t>(at(element).hinges)];
  record.HINGE_MODEL = WITH_HINGES;
  record.CURVE_KIND = static_cast<std::int32_t>(h.curve);
  record.FORCE_SET = h.force_set;
  record.CAP_P = h.cap_p;
  record.CAP_MY = h.cap_my;
  record.CAP_MZ = h.cap_mz;
  return record;
}

// The hinges of the library belong to the kind of analysis that adds the geometric stiffness: that of first order has
// axial forces 0. End forces are the stored ones, HINGE_FORCE_MODE 0.
void library_model::plastic(bool on) {
  const std::int32_t members_yield = on ? 1 : 0;
  TARNIX_STORE_KNLMATERIAL_MEMBER(&members_yield);
  second_order(on);
  clear_state();
  for (MEMBER_RECORD& record : member_records_) record.MEMBER_LOADS = {};
  member_loads_.assign(on ? member_records_.size() : 0, end_forces{});
  if (on) return;
  for (HINGE_RECORD& record : hinge_records_) record.END1_STATE = record.END2_STATE = 0;
}

bool library_model::hinges_see_forces() {
  const std::int32_t library_length = 13, routine_length = 23;  // the terminators count
  void* slot = nullptr;
  LOAD_DLL_SUBROUTINE("Vornekal.DLL", &library_length, "NL_RotationMatrix_Beam", &routine_length, &slot);
  return slot != nullptr;
}

void library_model::set_hinges(std::size_t element, const hinge_state& state) {
  const std::size_t pos = position(element);
  std::copy(state.forces.begin(), state.forces.end(), force_records_[pos].F_END.V);
  HINGE_RECORD& record = hinge_records_[pos];
  record.END1_STATE = state.state[0];
  record.END2_STATE = state.state[1];
  std::copy(state.segment[0].begin(), state.segment[0].end(), record.END1_SEG.V);
  std::copy(state.segment[1].begin(), state.segment[1].end(), record.END2_SEG.V);
  member_records_[pos].AXIAL_FORCE = state.axial_force;
}

void library_model::keep_member_loads(std::size_t element, const end_forces& load) {
  const std::size_t pos = position(element);
  member_loads_[pos] = load;
  member_records_[pos].MEMBER_LOADS = REFER_TO(member_loads_[pos].data(), member_loads_[pos].size(), 1);
}

void library_model::set_load_factor(double factor) { SOLANAELEM.LOAD_STEP = factor; }

// The library keeps it beside the hinges each time it builds the stiffness of a step.
const MATRIX<12, 12>& library_model::elastic_stiffness(std::size_t element) {
  MATRIX<12, 12> K, KG;
  member_stiffness(element, MODE_STEP, axes(element), K, KG);
  return hinge_records_[position(element)].K_ELASTIC;
}

}  // namespace solver
