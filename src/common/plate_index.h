// plate_index.h: the plate index of an element.
#ifndef FINITES_PLATE_INDEX_H
#define FINITES_PLATE_INDEX_H

#include <cstdint>

#include "finites/records.h"
#include "finites/views.hpp"

// PLATE_OF_ELEM(elem), or elem itself when that array is not allocated.
inline std::int32_t plate_of(std::int32_t elem) {
  return ALLOCATED(SOLANAELEM.PLATE_OF_ELEM) ? SOLANAELEM.PLATE_OF_ELEM(elem) : elem;
}

#endif
