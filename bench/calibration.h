// calibration.h: the yardstick of the benchmarks. A time in nanoseconds speaks of the machine; as a multiple of this
// kernel, timed in the same run, it speaks of the code.
#ifndef FINITES_BENCH_CALIBRATION_H
#define FINITES_BENCH_CALIBRATION_H

constexpr int CALIBRATION_ORDER = 24;

// C := A B, dense, of order 24, column-major: plain loops over the columns, compiled with the flags of the library.
void calibration_product(const double* A, const double* B, double* C);

#endif
