// matrix_products.cpp: products of small dense matrices, column-major.
//
// Every entry is the plain sum over k = 1, 2, ... n, started from 0: the same bits from every compiler. No term that
// could count is skipped, so that NaN and infinite values reach every entry that depends on them. Speed comes from the
// order in which the entries are formed, never from the order of a sum: four columns of A at a time are added to a
// column of the product.
//
// An order below 1, or a leading dimension below the order, does nothing. An argument that repeats an order (n_of_b)
// is not read.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

#include "finites/services.h"

namespace {

using std::ptrdiff_t;

// The right factor of a product, by strides: B itself, or its transpose in place.
struct right_factor {
  const double* base;
  ptrdiff_t row;     // from (k, j) to (k + 1, j)
  ptrdiff_t column;  // from (k, j) to (k, j + 1)
};

// C(1:m, 1:p) := A(1:m, 1:n) B(1:n, 1:p). ROWS is m when it is known at compile time, 0 otherwise.
template <int ROWS>
void multiply_rows(double* __restrict C, ptrdiff_t ldc, const double* __restrict A, ptrdiff_t lda, right_factor B,
                   ptrdiff_t m, ptrdiff_t n, ptrdiff_t p) {
  if (ROWS > 0) m = ROWS;
  for (ptrdiff_t j = 0; j < p; ++j) {
    double* __restrict c = C + j * ldc;
    const double* b = B.base + j * B.column;
    for (ptrdiff_t i = 0; i < m; ++i) c[i] = 0.0;
    ptrdiff_t k = 0;
    for (; k + 4 <= n; k += 4) {
      const double b1 = b[k * B.row], b2 = b[(k + 1) * B.row], b3 = b[(k + 2) * B.row], b4 = b[(k + 3) * B.row];
      const double* const a1 = A + k * lda;
      const double* const a2 = a1 + lda;
      const double* const a3 = a2 + lda;
      const double* const a4 = a3 + lda;
      for (ptrdiff_t i = 0; i < m; ++i) c[i] = (((c[i] + a1[i] * b1) + a2[i] * b2) + a3[i] * b3) + a4[i] * b4;
    }
    for (; k < n; ++k) {
      const double b1 = b[k * B.row];
      const double* const a1 = A + k * lda;
      for (ptrdiff_t i = 0; i < m; ++i) c[i] += a1[i] * b1;
    }
  }
}

// C(1:m, 1:p) := A(1:m, 1:n) B(1:n, 1:p). The row counts that the elements use have loops of fixed length: strains and
// axes 3, a node 6, generalised strains 5 and 8, triangles 9 and 18, members 6 and 12, quadrilaterals 12, 20 and 24.
void multiply(double* C, ptrdiff_t ldc, const double* A, ptrdiff_t lda, right_factor B, ptrdiff_t m, ptrdiff_t n,
              ptrdiff_t p) {
  switch (m) {
    case 2: return multiply_rows<2>(C, ldc, A, lda, B, m, n, p);
    case 3: return multiply_rows<3>(C, ldc, A, lda, B, m, n, p);
    case 5: return multiply_rows<5>(C, ldc, A, lda, B, m, n, p);
    case 6: return multiply_rows<6>(C, ldc, A, lda, B, m, n, p);
    case 8: return multiply_rows<8>(C, ldc, A, lda, B, m, n, p);
    case 9: return multiply_rows<9>(C, ldc, A, lda, B, m, n, p);
    case 12: return multiply_rows<12>(C, ldc, A, lda, B, m, n, p);
    case 18: return multiply_rows<18>(C, ldc, A, lda, B, m, n, p);
    case 20: return multiply_rows<20>(C, ldc, A, lda, B, m, n, p);
    case 24: return multiply_rows<24>(C, ldc, A, lda, B, m, n, p);
    default: return multiply_rows<0>(C, ldc, A, lda, B, m, n, p);
  }
}

// out(1:COUNT) := R(:, 1:COUNT)^T v. The sums of the columns are formed at the same time, so that none waits for
// another.
template <int COUNT>
void dot_columns(double* out, const double* R, ptrdiff_t ld, const double* v, ptrdiff_t n) {
  double sum[COUNT] = {};
  for (ptrdiff_t k = 0; k < n; ++k) {
    for (int j = 0; j < COUNT; ++j) sum[j] += R[j * ld + k] * v[k];
  }
  for (int j = 0; j < COUNT; ++j) out[j] = sum[j];
}

// Work space for two square matrices: on the stack up to the largest order of an element of the library (four shell
// nodes, eight solid nodes), on the heap beyond it.
constexpr ptrdiff_t LARGEST_ORDER = 24;

class working_room {
 public:
  explicit working_room(ptrdiff_t n) : size_(n * n) {
    if (n > LARGEST_ORDER) heap_.resize(static_cast<std::size_t>(2 * size_));
  }
  double* first() { return heap_.empty() ? fixed_ : heap_.data(); }
  double* second() { return first() + size_; }

 private:
  ptrdiff_t size_;
  std::vector<double> heap_;
  double fixed_[2 * LARGEST_ORDER * LARGEST_ORDER];  // not cleared: both matrices are written before they are read
};

// T(i, j) := R(j, i), T packed
void transpose(double* T, const double* R, ptrdiff_t ld, ptrdiff_t n) {
  for (ptrdiff_t j = 0; j < n; ++j) {
    for (ptrdiff_t i = 0; i < n; ++i) T[j * n + i] = R[i * ld + j];
  }
}

// ---- transforms that are block diagonal
//
// The transforms of elements have one rotation or one rigid link per node on the diagonal, and zeros elsewhere. A
// product with a zero adds nothing to a sum that starts from +0, so the products of the blocks have the bits of the
// full product as long as everything is finite; otherwise the full product is computed.

// The bits of `count` values without their signs, combined by or: 0 when all are zeros of either sign.
std::uint64_t magnitude_bits(const double* values, ptrdiff_t count) {
  std::uint64_t set = 0;
  for (ptrdiff_t i = 0; i < count; ++i) {
    std::uint64_t bits = 0;
    std::memcpy(&bits, values + i, sizeof bits);
    set |= bits;
  }
  return set << 1;
}

// Whether R, of order n, is zero outside its diagonal blocks.
template <int BLOCK>
bool block_diagonal(const double* R, ptrdiff_t ld, ptrdiff_t n) {
  for (ptrdiff_t j = 0; j < n; ++j) {
    const double* const column = R + j * ld;
    const ptrdiff_t first = j / BLOCK * BLOCK;
    if ((magnitude_bits(column, first) | magnitude_bits(column + first + BLOCK, n - first - BLOCK)) != 0) return false;
  }
  return true;
}

// x - x is 0 except for infinite values and NaN. Four sums at the same time; count is a multiple of four.
bool all_finite(const double* values, ptrdiff_t count) {
  constexpr int LANES = 4;
  double sum[LANES] = {};
  for (ptrdiff_t i = 0; i < count; i += LANES) {
    for (int lane = 0; lane < LANES; ++lane) sum[lane] += values[i + lane] - values[i + lane];
  }
  return sum[0] + sum[1] + sum[2] + sum[3] == 0.0;
}

// out := (X R)^T for a block diagonal R, out packed. Applied twice, this is R^T M R, and columns of X are contiguous.
template <int ROWS, int BLOCK>
void transposed_product(double* __restrict out, const double* __restrict X, ptrdiff_t ldx, const double* __restrict R,
                        ptrdiff_t ld) {
  for (ptrdiff_t corner = 0; corner < ROWS; corner += BLOCK) {
    for (ptrdiff_t j = corner; j < corner + BLOCK; ++j) {
      double column[ROWS] = {};
      for (ptrdiff_t k = corner; k < corner + BLOCK; ++k) {
        const double factor = R[j * ld + k];
        const double* const x = X + k * ldx;
        for (int i = 0; i < ROWS; ++i) column[i] += x[i] * factor;
      }
      for (int i = 0; i < ROWS; ++i) out[i * ROWS + j] = column[i];
    }
  }
}

// M := R^T M R through two packed work matrices; false, with M unchanged, when a value is infinite or NaN.
template <int ROWS, int BLOCK>
bool turn_by_blocks(const double* R, ptrdiff_t ld, double* M, ptrdiff_t ldm, double* product, double* result) {
  transposed_product<ROWS, BLOCK>(product, M, ldm, R, ld);
  transposed_product<ROWS, BLOCK>(result, product, ROWS, R, ld);
  if (!all_finite(result, ROWS * ROWS)) return false;
  for (ptrdiff_t j = 0; j < ROWS; ++j) std::copy_n(result + j * ROWS, ROWS, M + j * ldm);
  return true;
}

template <int ROWS>
bool turn_if_block_diagonal(const double* R, ptrdiff_t ld, double* M, ptrdiff_t ldm, double* product, double* result) {
  if (block_diagonal<3>(R, ld, ROWS)) return turn_by_blocks<ROWS, 3>(R, ld, M, ldm, product, result);
  return ROWS > 6 && block_diagonal<6>(R, ld, ROWS) && turn_by_blocks<ROWS, 6>(R, ld, M, ldm, product, result);
}

// Orders with six or three degrees of freedom per node: trusses 6, members 12, triangles 18, quadrilaterals 24.
bool turned_by_blocks(const double* R, ptrdiff_t ld, double* M, ptrdiff_t ldm, ptrdiff_t n, double* product,
                      double* result) {
  switch (n) {
    case 6: return turn_if_block_diagonal<6>(R, ld, M, ldm, product, result);
    case 12: return turn_if_block_diagonal<12>(R, ld, M, ldm, product, result);
    case 18: return turn_if_block_diagonal<18>(R, ld, M, ldm, product, result);
    case 24: return turn_if_block_diagonal<24>(R, ld, M, ldm, product, result);
    default: return false;
  }
}

bool usable(ptrdiff_t n, ptrdiff_t ld) { return n >= 1 && ld >= n; }

}  // namespace

// C := A B
void MATMUL_M1MN_M2MN_DBL(double* C, const double* A, const std::int32_t* m, const std::int32_t* n, const double* B,
                          const std::int32_t*, const std::int32_t* p) {
  if (*m < 1 || *n < 1 || *p < 1) return;
  multiply(C, *m, A, *m, {B, 1, *n}, *m, *n, *p);
}

// C := A B
void MATMUL_M1_M2_DBL(double* C, const double* A, const double* B, const std::int32_t* n) {
  if (*n < 1) return;
  multiply(C, *n, A, *n, {B, 1, *n}, *n, *n, *n);
}

// C := A B^T
void MATMUL_M1_M2T_DBL(double* C, const double* A, const double* B, const std::int32_t* n, const std::int32_t*) {
  if (*n < 1) return;
  multiply(C, *n, A, *n, {B, *n, 1}, *n, *n, *n);
}

// M := R^T (M R)
void MATMUL_RT_M_R_DBL(const double* R, double* M, const std::int32_t* n, const std::int32_t* ld,
                       const std::int32_t* ld_of_m) {
  if (!usable(*n, *ld) || !usable(*n, *ld_of_m)) return;
  working_room room(*n);
  double* const product = room.first();
  double* const transposed = room.second();
  if (turned_by_blocks(R, *ld, M, *ld_of_m, *n, product, transposed)) return;
  multiply(product, *n, M, *ld_of_m, {R, 1, *ld}, *n, *n, *n);
  transpose(transposed, R, *ld, *n);
  multiply(M, *ld_of_m, transposed, *n, {product, 1, *n}, *n, *n, *n);
}

// M := R (M R^T)
void MATMUL_R_M_RT_DBL(const double* R, double* M, const std::int32_t* n, const std::int32_t* ld,
                       const std::int32_t* ld_of_m) {
  if (!usable(*n, *ld) || !usable(*n, *ld_of_m)) return;
  working_room room(*n);
  double* const product = room.first();
  multiply(product, *n, M, *ld_of_m, {R, *ld, 1}, *n, *n, *n);
  multiply(M, *ld_of_m, R, *ld, {product, 1, *n}, *n, *n, *n);
}

// out := R v
void MATMUL_R_V_DBL(const double* R, const double* v, double* out, const std::int32_t* n, const std::int32_t* ld) {
  if (!usable(*n, *ld)) return;
  multiply(out, *n, R, *ld, {v, 1, *n}, *n, *n, 1);
}

// out := R^T v
void MATMUL_RT_V_DBL(const double* R, const double* v, double* out, const std::int32_t* n, const std::int32_t* ld) {
  if (!usable(*n, *ld)) return;
  ptrdiff_t j = 0;
  for (; j + 3 <= *n; j += 3) dot_columns<3>(out + j, R + j * *ld, *ld, v, *n);
  for (; j < *n; ++j) dot_columns<1>(out + j, R + j * *ld, *ld, v, *n);
}
