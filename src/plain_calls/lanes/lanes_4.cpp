// lanes_4.cpp: the kernels of batches with 4 elements side by side, in 256-bit vectors (AVX2).
#include "plain_calls/lanes/lane_tables.h"

#if defined(__AVX2__)
#include "plain_calls/lanes/kernel_table.h"

const LANE_KERNELS* lane_kernels_4() { return &KERNEL_TABLE<LANES_4>; }

#else

const LANE_KERNELS* lane_kernels_4() { return nullptr; }

#endif
