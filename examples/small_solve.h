/* small_solve.h: elimination without pivoting for the examples, K x = f with K (n, n) by rows; K and f are overwritten,
 * f by x. Returns how many pivots were negative: with K + P KG, how many critical loads lie below P. */
#ifndef FINITES_SMALL_SOLVE_H
#define FINITES_SMALL_SOLVE_H

static inline int small_solve(double* K, double* f, int n) {
  int i, j, k, negative = 0;
  for (k = 0; k < n; ++k) {
    if (K[k * n + k] < 0) ++negative;
    for (i = k + 1; i < n; ++i) {
      const double factor = K[i * n + k] / K[k * n + k];
      for (j = k; j < n; ++j) K[i * n + j] -= factor * K[k * n + j];
      f[i] -= factor * f[k];
    }
  }
  for (k = n - 1; k >= 0; --k) {
    for (j = k + 1; j < n; ++j) f[k] -= K[k * n + j] * f[j];
    f[k] /= K[k * n + k];
  }
  return negative;
}

#endif
