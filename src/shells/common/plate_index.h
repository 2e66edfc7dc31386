// plate_index.h: from an element to its plate.
#ifndef FINITES_PLATE_INDEX_H
#define FINITES_PLATE_INDEX_H

#include <cstdint>

#include "finites/records.h"
#include "finites/views.hpp"

// Plate index of an element: PLATE_OF_ELEM, or the element index itself when that is not allocated.
inline std::int32_t plate_of(std::int32_t elem) {
  return ALLOCATED(SOLANAELEM.PLATE_OF_ELEM) ? SOLANAELEM.PLATE_OF_ELEM(elem) : elem;
}

#endif
