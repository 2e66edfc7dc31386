// diagnostics.h: a failed condition, on its way to the common library.
#ifndef FINITES_DIAGNOSTICS_H
#define FINITES_DIAGNOSTICS_H

#include <cstdint>
#include <cstring>

#include "finites/services.h"

// ASSERTF with a false condition. It stops the run or returns, as the solver has set.
inline void report_failure(const char* text) {
  const auto length = static_cast<std::int32_t>(std::strlen(text));
  const std::int32_t condition = 0;
  ASSERTF(text, &length, &condition);
}

#endif
