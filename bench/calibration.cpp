// calibration.cpp: the dense 24 by 24 by 24 product, in a file of its own so that the compiler cannot use the values of
// a caller.
#include "calibration.h"

void calibration_product(const double* A, const double* B, double* C) {
  constexpr int n = CALIBRATION_ORDER;
  for (int j = 0; j < n; ++j) {
    for (int i = 0; i < n; ++i) C[n * j + i] = 0.0;
    for (int k = 0; k < n; ++k) {
      const double b = B[n * j + k];
      for (int i = 0; i < n; ++i) C[n * j + i] += A[n * k + i] * b;
    }
  }
}
