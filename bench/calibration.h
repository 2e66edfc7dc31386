// calibration.h: the reference of the benchmarks. A time in nanoseconds depends on the machine; as a multiple of the
// time of this kernel in the same run it is comparable between machines.
#ifndef FINITES_BENCH_CALIBRATION_H
#define FINITES_BENCH_CALIBRATION_H

constexpr int CALIBRATION_ORDER = 24;

// C := A B, dense, of order 24, column-major: plain loops over the columns, compiled with the flags of the library.
void calibration_product(const double* A, const double* B, double* C);

#endif
