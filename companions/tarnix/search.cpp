// search.cpp: search of a number in a sorted list, and the address stored in a real.
#include <algorithm>
#include <cstdint>
#include <cstring>

#include "finites/services.h"

// Of equal entries the first is found. In a list that is not sorted the key may not be found, but the search ends.
void QFIND_SORT_INTEGER(const std::int32_t* count, const std::int32_t* key, const std::int32_t* sorted,
                        std::int32_t* pos) {
  *pos = 0;
  if (sorted == nullptr || *count < 1) return;
  const std::int32_t* const end = sorted + *count;
  const std::int32_t* const found = std::lower_bound(sorted, end, *key);
  if (found != end && *found == *key) *pos = static_cast<std::int32_t>(found - sorted) + 1;
}

void INT_EQUIV_KPT(const double* cell, void** pointer) {
  static_assert(sizeof *cell == sizeof *pointer, "an address fits a double word");
  std::memcpy(pointer, cell, sizeof *pointer);
}
