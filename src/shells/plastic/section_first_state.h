// section_first_state.h: the state with which a plate of the whole-section model starts.
#ifndef FINITES_SECTION_FIRST_STATE_H
#define FINITES_SECTION_FIRST_STATE_H

#include "finites/records.h"
#include "plate_material/state_in_use.h"

// No plastic strain, the positive branch, the elastic tangent. Where a field is not allocated, nothing is stored.
void SECTION_STATE_INIT(PLATEELEM_RECORD& EL, const PLATE_STATE_IN_USE& in_use);

// By the protocol: that of the element ELEM_INDEX.
inline void SECTION_STATE_INIT(PLATEELEM_RECORD& EL, std::int32_t operation = 0) {
  SECTION_STATE_INIT(EL, state_of_element(EL.ELEM_INDEX, operation));
}

#endif
