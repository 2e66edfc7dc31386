// lane_kernels.cpp: the choice of the vectors that the processor has.
#include "plain_calls/lanes/lane_kernels.h"

#include "plain_calls/lanes/lane_tables.h"

namespace {

bool processor_has(int width) {
  if (width == 2) return true;
#if defined(__x86_64__) || defined(__i386__)
  __builtin_cpu_init();
  if (width == 4) return __builtin_cpu_supports("avx2") != 0;
  if (width == 8) return __builtin_cpu_supports("avx512f") != 0;
#endif
  return false;
}

}  // namespace

const LANE_KERNELS* lane_kernels(int width) {
  if (!processor_has(width)) return nullptr;
  switch (width) {
    case 2: return lane_kernels_2();
    case 4: return lane_kernels_4();
    case 8: return lane_kernels_8();
    default: return nullptr;
  }
}

const LANE_KERNELS& widest_lanes() {
  if (const LANE_KERNELS* const kernels = lane_kernels(8)) return *kernels;
  if (const LANE_KERNELS* const kernels = lane_kernels(4)) return *kernels;
  return *lane_kernels_2();
}
