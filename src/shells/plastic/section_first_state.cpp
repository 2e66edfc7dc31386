// section_first_state.cpp: the state with which a plate of the whole-section model starts.
#include "shells/plastic/section_first_state.h"

#include "plate_material/section_decomposition.h"
#include "plate_material/section_state.h"
#include "shells/common/constitutive.h"

// The section and its spectral form are the same at all four points; they are computed, checked and reported at each.
void SECTION_STATE_INIT(PLATEELEM_RECORD& EL, const PLATE_STATE_IN_USE& in_use) {
  constexpr int no_split = 0;
  constexpr int whole_shell = 0;
  const SECTION_STATE state = section_state_of(in_use);
  for (int gp = 1; gp <= 4; ++gp) {
    if (state.complete) clear_section_state(*state.record, gp);
    PLATE_D_GENERAL(EL, no_split, whole_shell);
    SECTION_SPECTRAL(EL, in_use.failures);
    if (state.complete) store_section_tangent(*state.record, gp, EL.D8);
  }
}
