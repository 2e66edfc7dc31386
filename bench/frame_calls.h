// frame_calls.h: the benchmarks of frame members.
#ifndef FINITES_BENCH_FRAME_CALLS_H
#define FINITES_BENCH_FRAME_CALLS_H

namespace bench {

// One benchmark for each code path of beams, trusses, cables, links and springs.
void register_frames();

}  // namespace bench

#endif
