// section_state.cpp: access to the state of the whole-section model.
#include "plate_material/section_state.h"

SECTION_STATE section_state_of(const PLATE_STATE_IN_USE& state) {
  PLATE_STATE_RECORD* const r = state.record;
  if (r == nullptr) return {nullptr, false};
  const bool complete = ALLOCATED(r->SEC_EP_START) && ALLOCATED(r->SEC_EP_CUR) && ALLOCATED(r->SEC_EPBAR_START) &&
                        ALLOCATED(r->SEC_EPBAR_CUR) && ALLOCATED(r->SEC_EP_INC) && ALLOCATED(r->SEC_TANGENT) &&
                        ALLOCATED(r->SEC_CURV_INC) && ALLOCATED(r->SEC_AUX) && ALLOCATED(r->SEC_SIGN_CUR) &&
                        ALLOCATED(r->SEC_SIGN_START);
  return {r, complete};
}

void clear_section_state(PLATE_STATE_RECORD& record, int gp) {
  record.SEC_EPBAR_CUR(gp) = record.SEC_EPBAR_START(gp) = 0.0;
  record.SEC_AUX(gp) = record.SEC_CURV_INC(gp) = 0.0;
  record.SEC_SIGN_START(gp) = record.SEC_SIGN_CUR(gp) = 1.0;
  for (int i = 1; i <= 12; ++i) {
    record.SEC_EP_CUR(i, gp) = record.SEC_EP_START(i, gp) = record.SEC_EP_INC(i, gp) = 0.0;
  }
}

VECTOR<12> plastic_strains(const ARRAY_REFERENCE<double, 2>& field, int gp) { return loaded<12>(column_of(field, gp)); }
