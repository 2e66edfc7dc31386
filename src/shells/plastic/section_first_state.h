// section_first_state.h: the state with which a plate of the whole-section model starts.
#ifndef FINITES_SECTION_FIRST_STATE_H
#define FINITES_SECTION_FIRST_STATE_H

#include "finites/records.h"

// The first state of the element ELEM_INDEX: no plastic strain, the positive branch, the elastic tangent. Where a field
// is not allocated, nothing is stored.
void SECTION_STATE_INIT(PLATEELEM_RECORD& EL, std::int32_t operation = 0);

#endif
