// inverse.cpp: the inverse of a small dense matrix, by Gauss-Jordan elimination in place with partial pivoting.
//
// Elimination with row interchanges: G. H. Golub and C. F. Van Loan, Matrix Computations (1983). The matrices of
// this package are small (yield equations of a beam, at most eight by eight), so the n^3 form in place is the shortest.
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "finites/services.h"

namespace {

using std::ptrdiff_t;

// M(i, j) with i, j from 0 and leading dimension ld.
struct square_matrix {
  double* base;
  ptrdiff_t n;
  ptrdiff_t ld;
  double& operator()(ptrdiff_t i, ptrdiff_t j) const { return base[j * ld + i]; }
};

// The row, from k down, with the largest entry of column k. NaN is taken at once: it is no zero, and as the
// pivot it reaches every entry of the inverse.
ptrdiff_t pivot_row(const square_matrix& M, ptrdiff_t k) {
  ptrdiff_t row = k;
  double largest = std::fabs(M(k, k));
  for (ptrdiff_t i = k + 1; i < M.n && !std::isnan(largest); ++i) {
    const double size = std::fabs(M(i, k));
    if (size <= largest) continue;
    largest = size;
    row = i;
  }
  return row;
}

void swap_rows(const square_matrix& M, ptrdiff_t i, ptrdiff_t k) {
  for (ptrdiff_t j = 0; j < M.n; ++j) std::swap(M(i, j), M(k, j));
}

void swap_columns(const square_matrix& M, ptrdiff_t j, ptrdiff_t k) {
  for (ptrdiff_t i = 0; i < M.n; ++i) std::swap(M(i, j), M(i, k));
}

// One step: unknown k of the right-hand side and of the solution change places.
void exchange(const square_matrix& M, ptrdiff_t k) {
  const double pivot = M(k, k);
  for (ptrdiff_t j = 0; j < M.n; ++j) {
    if (j == k) continue;
    const double t = M(k, j) / pivot;
    for (ptrdiff_t i = 0; i < M.n; ++i) {
      if (i != k) M(i, j) -= M(i, k) * t;
    }
    M(k, j) = t;
  }
  for (ptrdiff_t i = 0; i < M.n; ++i) {
    if (i != k) M(i, k) = -M(i, k) / pivot;
  }
  M(k, k) = 1.0 / pivot;
}

// False when a pivot is exactly 0.
bool invert(const square_matrix& M, ptrdiff_t* taken) {
  for (ptrdiff_t k = 0; k < M.n; ++k) {
    taken[k] = pivot_row(M, k);
    if (taken[k] != k) swap_rows(M, taken[k], k);
    if (M(k, k) == 0.0) return false;
    exchange(M, k);
  }
  for (ptrdiff_t k = M.n - 1; k >= 0; --k) {
    if (taken[k] != k) swap_columns(M, taken[k], k);
  }
  return true;
}

}  // namespace

// A matrix of order below 1, or with a leading dimension below its order, is left unchanged and reported as singular.
void INVMAT_DB(double* M, const std::int32_t* n, const std::int32_t* ld, std::int32_t* ierr) {
  constexpr std::int32_t FIXED_ORDER = 24;
  *ierr = 1;
  if (*n < 1 || *ld < *n) return;
  const square_matrix matrix{M, *n, *ld};
  ptrdiff_t rows[FIXED_ORDER];
  std::vector<ptrdiff_t> more_rows;
  if (*n > FIXED_ORDER) more_rows.resize(static_cast<std::size_t>(*n));
  if (invert(matrix, more_rows.empty() ? rows : more_rows.data())) *ierr = 0;
}
