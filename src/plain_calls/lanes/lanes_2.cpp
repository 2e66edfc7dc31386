// lanes_2.cpp: the kernels of batches with 2 elements side by side, on every processor.
#include "plain_calls/lanes/lane_tables.h"

#include "plain_calls/lanes/kernel_table.h"

const LANE_KERNELS* lane_kernels_2() { return &KERNEL_TABLE<LANES>; }
