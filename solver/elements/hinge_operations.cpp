// hinge_operations.cpp: how the library sees the hinges of beams.
#include <algorithm>

#include "elements/member_group.h"
#include "finites/fields.h"
#include "finites/finites.h"
#include "finites/services.h"
#include "tarnix.h"

namespace solver {

// End forces are the stored ones, HINGE_FORCE_MODE 0.
void member_group::plastic(bool on) {
  const std::int32_t members_yield = on ? 1 : 0;
  TARNIX_STORE_KNLMATERIAL_MEMBER(&members_yield);
  for (MEMBER_RECORD& record : frames_.members()) record.MEMBER_LOADS = {};
  if (on) return;
  for (HINGE_RECORD& record : frames_.hinges()) record.END1_STATE = record.END2_STATE = 0;
}

bool member_group::hinges_see_forces() {
  const std::int32_t library_length = 13, routine_length = 23;  // the terminators count
  void* slot = nullptr;
  LOAD_DLL_SUBROUTINE("Vornekal.DLL", &library_length, "NL_RotationMatrix_Beam", &routine_length, &slot);
  return slot != nullptr;
}

void member_group::set_hinges(std::size_t element, const hinge_state& state) {
  std::copy(state.forces.begin(), state.forces.end(), frames_.forces(element).F_END.V);
  HINGE_RECORD& record = frames_.hinge(element);
  record.END1_STATE = state.state[0];
  record.END2_STATE = state.state[1];
  std::copy(state.segment[0].begin(), state.segment[0].end(), record.END1_SEG.V);
  std::copy(state.segment[1].begin(), state.segment[1].end(), record.END2_SEG.V);
  frames_.member(element).AXIAL_FORCE = state.axial_force;
}

void member_group::keep_loads(std::size_t element, const end_forces& load) {
  end_forces& kept = loads_[frames_.position(element)];
  kept = load;
  frames_.member(element).MEMBER_LOADS = REFER_TO(kept.data(), kept.size(), 1);
}

void member_group::set_load_factor(double factor) { SOLANAELEM.LOAD_STEP = factor; }

// The library keeps it beside the hinges each time it builds the stiffness of a step.
const MATRIX<12, 12>& member_group::elastic_stiffness(std::size_t element) {
  step_stiffness(element, MODE_STEP, axes(element));
  return frames_.hinge(element).K_ELASTIC;
}

}  // namespace solver
