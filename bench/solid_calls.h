// solid_calls.h: the benchmarks of solid elements.
#ifndef FINITES_BENCH_SOLID_CALLS_H
#define FINITES_BENCH_SOLID_CALLS_H

namespace bench {

// One benchmark for each operation of the eight-node brick, stiffness of the other kinds, and the chain of results.
void register_solids();

}  // namespace bench

#endif
