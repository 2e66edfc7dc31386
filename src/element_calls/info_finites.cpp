// info_finites.cpp: INFO_FINITES classifies an element (kind, behaviour, active parts) and writes nothing else.
#include "element_calls/plate_material_choice.h"
#include "finites/fields.h"
#include "finites/finites.h"

void INFO_FINITES(const int32_t* elem, const double* A, const int32_t* /*n*/, int32_t* kind, int32_t* behav,
                  int32_t* parts) {
  const MODEL_DATA_READER D(A);
  const std::int64_t k =
      static_cast<std::int64_t>(*elem - std::int64_t{1}) * D.INTEGER(ENTRY_STRIDE) + D.INTEGER(ENTRY_START);
  const PLATE_RECORD& record = SOLANAELEM.PLATE_RECORDS(plate_of(*elem));
  const std::int64_t sec = record.SECTION_PTR;
  const std::int64_t mat = record.MATERIAL_PTR;
  const std::int32_t formulation = D.INTEGER(k + FORMULATION);

  *kind = element_kind(D.INTEGER(k + BLOCK_NODE_COUNT) == 3, formulation);
  *behav = classify_plate_material(D.INTEGER(sec + SECTION_TYPE), D.INTEGER(mat + MATERIAL_NUMBER), formulation,
                                   D.INTEGER(k + PLASTIC_SWITCH));
  *parts = active_parts(*kind, *behav);
}
