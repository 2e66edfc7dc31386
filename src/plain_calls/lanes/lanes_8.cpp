// lanes_8.cpp: the kernels of batches with 8 elements side by side, in 512-bit vectors (AVX-512).
#include "plain_calls/lanes/lane_tables.h"

#if defined(__AVX512F__)
#include "plain_calls/lanes/kernel_table.h"

const LANE_KERNELS* lane_kernels_8() { return &KERNEL_TABLE<LANES_8>; }

#else

const LANE_KERNELS* lane_kernels_8() { return nullptr; }

#endif
