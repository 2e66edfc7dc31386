// lane_tables.h: the kernels of each width. Null where the compiler builds none for this machine. Those of a width that
// the processor does not have must not run.
#ifndef FINITES_LANE_TABLES_H
#define FINITES_LANE_TABLES_H

struct LANE_KERNELS;

const LANE_KERNELS* lane_kernels_2();
const LANE_KERNELS* lane_kernels_4();
const LANE_KERNELS* lane_kernels_8();

#endif
