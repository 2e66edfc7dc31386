// batch_stiffness.h: the batches that run in vector lanes, with the kernels of a width.
#ifndef FINITES_PLAIN_BATCH_STIFFNESS_H
#define FINITES_PLAIN_BATCH_STIFFNESS_H

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include <cstdint>

#include "finites/elements.h"
#include "plain_calls/batch.h"
#include "plain_calls/lanes/lane_kernels.h"

finites_status stiffness_of_plates(const finites_plates* plates, const BATCH_RANGE& range, double* K,
                                   std::int64_t stride, const LANE_KERNELS& kernels);
finites_status stiffness_of_solids(const finites_solids* solids, const BATCH_RANGE& range, double* K,
                                   std::int64_t stride, const LANE_KERNELS& kernels);
finites_status stiffness_of_beams(const finites_beams* beams, const BATCH_RANGE& range, double* K, std::int64_t stride,
                                  const LANE_KERNELS& kernels);

// Matrices beyond this many bytes go past the caches: more than these hold.
constexpr std::int64_t STREAMED_BYTES = 8 << 20;

// Where the matrices of a call go, of `order` squared reals each.
inline LANE_OUTPUT lane_output(double* K, std::int64_t stride, const BATCH_RANGE& range, int order) {
  const bool large = (range.end - range.begin) * order * order * 8 > STREAMED_BYTES;
  return {K, stride, large && stride % 2 == 0 && reinterpret_cast<std::uintptr_t>(K) % 16 == 0};
}

inline LANE_OUTPUT output_from(const LANE_OUTPUT& all, std::int64_t element) {
  return {all.K + element * all.stride, all.stride, all.streamed};
}

// Before the call returns.
inline void finish_streams(const LANE_OUTPUT& out) {
#if defined(__SSE2__)
  if (out.streamed) _mm_sfence();
#else
  (void)out;
#endif
}

// The checks of a batch: passes(e) of the elements side by side from e on, and where it is false, and for those that
// are left over, check(range) one by one.
template <class PASSES, class CHECK>
finites_status check_groups(const BATCH_RANGE& range, int width, PASSES passes, CHECK check) {
  std::int64_t e = range.begin;
  for (; e + width <= range.end; e += width) {
    if (passes(e)) continue;
    const finites_status status = check(BATCH_RANGE{e, e + width, range.failed});
    if (status != FINITES_OK) return status;
  }
  return check(BATCH_RANGE{e, range.end, range.failed});
}

// The answers: write_group(e) of those side by side, and where it is false, and for those that are left over,
// write_one(e).
template <class GROUP, class ONE>
void write_groups(const BATCH_RANGE& range, int width, GROUP write_group, ONE write_one) {
  std::int64_t e = range.begin;
  for (; e + width <= range.end; e += width) {
    if (write_group(e)) continue;
    for (int l = 0; l < width; ++l) write_one(e + l);
  }
  for (; e < range.end; ++e) write_one(e);
}

// The reals of a batch from element e on; those of common where it has no array.
inline LANE_INPUT lane_input(const finites_reals& reals, const double* common, std::int64_t e) {
  if (reals.first == nullptr) return {common, 0};
  return {reals.first + e * reals.stride, reals.stride};
}

#endif
