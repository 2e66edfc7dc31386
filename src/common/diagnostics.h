// diagnostics.h: reports a failed condition to the common library.
#ifndef FINITES_DIAGNOSTICS_H
#define FINITES_DIAGNOSTICS_H

#include <cstdint>
#include <cstring>

#include "finites/services.h"

// ASSERTF with a false condition. The solver chooses whether ASSERTF stops the run or returns; callers here must go on
// correctly when it returns.
inline void report_failure(const char* text) {
  const auto length = static_cast<std::int32_t>(std::strlen(text));
  const std::int32_t condition = 0;
  ASSERTF(text, &length, &condition);
}

#endif
