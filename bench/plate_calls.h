// plate_calls.h: the benchmarks of plates that yield.
#ifndef FINITES_BENCH_PLATE_CALLS_H
#define FINITES_BENCH_PLATE_CALLS_H

namespace bench {

// Whole-section plasticity: operations 1, 3 and 33 of each engine.
void register_yielding_plates();

}  // namespace bench

#endif
