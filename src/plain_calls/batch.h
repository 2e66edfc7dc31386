// batch.h: a call over many elements.
//
// All elements of the call are checked before the first is computed, so that an error leaves the answers untouched. The
// check of an element is that of its single call, and so is its answer.
#ifndef FINITES_PLAIN_BATCH_H
#define FINITES_PLAIN_BATCH_H

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <type_traits>

#include "finites/elements.h"

// The elements of a call, and where it tells the one at fault.
struct BATCH_RANGE {
  std::int64_t begin, end;
  std::int64_t* failed;  // may be null
};

inline finites_status fault_at(const BATCH_RANGE& range, std::int64_t element, finites_status status) {
  if (range.failed != nullptr) *range.failed = element;
  return status;
}

// ------------------------------------------------------------------------------------------------ arrays

// The reals of element e; null where there is no array.
inline const double* reals_of(const finites_reals& reals, std::int64_t e) {
  return reals.first == nullptr ? nullptr : reals.first + e * reals.stride;
}

constexpr finites_reals NO_REALS = {nullptr, 0};

inline void take(const finites_reals& reals, std::int64_t e, int count, double* to) {
  const double* const from = reals_of(reals, e);
  if (from != nullptr) std::copy_n(from, count, to);
}

finites_plate element_of(const finites_plates& plates, std::int64_t e);
finites_beam element_of(const finites_beams& beams, std::int64_t e);
finites_truss element_of(const finites_trusses& trusses, std::int64_t e);
finites_solid element_of(const finites_solids& solids, std::int64_t e);

// Whether no stride of the description is negative.
bool strides_stand(const finites_plates& plates);
bool strides_stand(const finites_beams& beams);
bool strides_stand(const finites_trusses& trusses);
bool strides_stand(const finites_solids& solids);

// ------------------------------------------------------------------------------------------------ calls

// The first that is not FINITES_OK.
inline finites_status first_of(finites_status first, finites_status second) {
  return first != FINITES_OK ? first : second;
}

// The pointers of a call, its range and the strides of its further arrays.
template <class BATCH>
finites_status check_batch(const BATCH* batch, const BATCH_RANGE& range, const void* out,
                           std::initializer_list<std::int64_t> strides = {}) {
  if (batch == nullptr || out == nullptr) return FINITES_NULL;
  if (range.begin < 0 || range.end < range.begin || range.end > batch->count) return FINITES_RANGE;
  const bool stand = std::all_of(strides.begin(), strides.end(), [](std::int64_t s) { return s >= 0; });
  return stand && strides_stand(*batch) ? FINITES_OK : FINITES_RANGE;
}

// Answers of `count` reals must not overlap; that of a single element may have any stride that is not negative.
inline finites_status check_stride(const BATCH_RANGE& range, std::int64_t stride, std::int64_t count) {
  const bool apart = range.end - range.begin < 2 || stride >= count;
  return stride >= 0 && apart ? FINITES_OK : FINITES_RANGE;
}

// status_at(element, e) of all elements; the first that is not FINITES_OK ends it.
template <class BATCH, class STATUS_AT>
finites_status for_elements(const BATCH& batch, const BATCH_RANGE& range, STATUS_AT status_at) {
  for (std::int64_t e = range.begin; e < range.end; ++e) {
    const finites_status status = status_at(element_of(batch, e), e);
    if (status != FINITES_OK) return fault_at(range, e, status);
  }
  return fault_at(range, -1, FINITES_OK);
}

// A batch element by element: check(element, e) says what the single call would return, compute(element, e) is the
// call.
template <class BATCH, class CHECK, class COMPUTE>
finites_status run_batch(const BATCH& batch, const BATCH_RANGE& range, CHECK check, COMPUTE compute) {
  const finites_status status = for_elements(batch, range, check);
  return status != FINITES_OK ? status : for_elements(batch, range, compute);
}

// A batch by the single calls: call(element, e, to) writes its answer to `to`. Where sure(element, e) knows that it
// succeeds it is made once, elsewhere it is tried first.
template <class ANSWER, class BATCH, class SURE, class CALL>
finites_status run_single_calls(const BATCH& batch, const BATCH_RANGE& range, ANSWER* out, std::int64_t stride,
                                SURE sure, CALL call) {
  return run_batch(
      batch, range,
      [&](const auto& element, std::int64_t e) {
        constexpr std::size_t ROOM = std::is_same_v<ANSWER, double> ? 24 * 24 : 1;
        ANSWER tried[ROOM];
        return sure(element, e) ? FINITES_OK : call(element, e, tried);
      },
      [&](const auto& element, std::int64_t e) { return call(element, e, out + e * stride); });
}

// Whether numbers are so far from the limits of their type that nothing computed from them overflows, once an element
// passes its checks. Null: none.
inline bool ordinary(const double* values, int count) {
  constexpr double LARGE = 1e12;
  return values == nullptr || std::all_of(values, values + count, [](double x) { return std::fabs(x) < LARGE; });
}

#endif
