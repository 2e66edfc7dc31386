// diagnostics.h: reports a failed condition to the common library.
#ifndef FINITES_DIAGNOSTICS_H
#define FINITES_DIAGNOSTICS_H

#include <cstdint>
#include <cstring>

#include "finites/services.h"

// A common library need not have it: its texts then stand without a place.
#pragma weak TARNIX_FAILURE_PLACE

// Where the failures of this scope are: the element by its sequential index, the operation and the point, each 0 where
// it is not known. Made only where a failure is near: what is usual announces nothing.
class FAILURE_PLACE {
 public:
  FAILURE_PLACE(std::int32_t elem, std::int32_t operation, std::int32_t point) { announce(elem, operation, point); }
  ~FAILURE_PLACE() { announce(0, 0, 0); }
  FAILURE_PLACE(const FAILURE_PLACE&) = delete;
  FAILURE_PLACE& operator=(const FAILURE_PLACE&) = delete;

 private:
  static void announce(std::int32_t elem, std::int32_t operation, std::int32_t point) {
    if (TARNIX_FAILURE_PLACE != nullptr) TARNIX_FAILURE_PLACE(&elem, &operation, &point);
  }
};

// ASSERTF with a false condition. The solver chooses whether ASSERTF stops the run or returns; callers here must go on
// correctly when it returns.
inline void report_failure(const char* text) {
  const auto length = static_cast<std::int32_t>(std::strlen(text));
  const std::int32_t condition = 0;
  ASSERTF(text, &length, &condition);
}

// The same of a place.
inline void report_failure(const char* text, std::int32_t elem, std::int32_t operation, std::int32_t point) {
  const FAILURE_PLACE place(elem, operation, point);
  report_failure(text);
}

#endif
