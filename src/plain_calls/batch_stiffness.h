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

// The reals of a batch from element e on; those of common where it has no array.
inline LANE_INPUT lane_input(const finites_reals& reals, const double* common, std::int64_t e) {
  if (reals.first == nullptr) return {common, 0};
  return {reals.first + e * reals.stride, reals.stride};
}

#endif
