// state_in_use.cpp: the state of an element of the protocol; failures.
#include "plate_material/state_in_use.h"

#include "common/diagnostics.h"
#include "common/plate_index.h"
#include "finites/views.hpp"

void FAILURES::failed(const char* text) const {
  if (noted == nullptr) {
    report_failure(text, elem, operation, point);
  } else {
    *noted = true;
  }
}

void FAILURES::remarked(const char* text) const {
  if (noted == nullptr) report_failure(text, elem, operation, point);
}

PLATE_STATE_IN_USE state_of_element(std::int32_t elem, std::int32_t operation) {
  const std::int32_t plate = plate_of(elem);
  PLATE_STATE_RECORD* const record =
      HAS_ELEMENT(SOLANAELEM.PLATE_STATE, plate) ? &SOLANAELEM.PLATE_STATE(plate) : nullptr;
  return {
      record, SOLANAELEM.NPT_THICK, SOLANAELEM.EP_INC_FROM_CUR != 0, {nullptr, elem, operation, 0}, TANGENT::CONTINUUM};
}
