// layered_calls.h: the benchmarks of layered plates.
#ifndef FINITES_BENCH_LAYERED_CALLS_H
#define FINITES_BENCH_LAYERED_CALLS_H

namespace bench {

// Operations 1, 3 and 33 of each engine with five thickness points, and operation 33 of kind 21 with seven and fifteen.
void register_layered_plates();

}  // namespace bench

#endif
