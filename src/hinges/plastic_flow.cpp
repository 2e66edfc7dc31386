// plastic_flow.cpp: KP = -K N (N^T K N)^-1 N^T K for a K whose entries are all finite.
//
// A column of N has the three entries of its end, P, My and Mz. With
//
//     X = K N,    Y = N^T K,    B = Y N,    W = B^-1 N^T,    G = W K,    KP = -X G
//
// X and Y take three columns and three rows of K, G three of each end. The products that are left out have a zero and a
// finite factor, and add nothing to a sum.
#include "hinges/plastic_flow.h"

#include <algorithm>

#include "common/finiteness.h"
#include "common/two_lanes.h"
#include "finites/services.h"

namespace {

constexpr int DOFS = 12;
constexpr int P = 0, MY = 4, MZ = 5;  // places of the forces among the six of an end

int first_of_end(const FLOW_COLUMN& column) { return column.end == 2 ? DOFS / 2 : 0; }

// x := K n
void multiply_columns(const double* K, const FLOW_COLUMN& column, double* x) {
  const double* const k = K + DOFS * first_of_end(column);
  for (int i = 0; i < DOFS; i += 2) {
    const LANES p = load_lanes(k + DOFS * P + i) * column.n.P;
    const LANES my = load_lanes(k + DOFS * MY + i) * column.n.MY;
    const LANES mz = load_lanes(k + DOFS * MZ + i) * column.n.MZ;
    store_lanes(x + i, p + my + mz);
  }
}

// y := n^T K, or y + n^T K
template <bool ADD>
void multiply_rows(const double* K, const FLOW_COLUMN& column, double* y) {
  const double* k = K + first_of_end(column);
  for (int j = 0; j < DOFS; j += 2, k += 2 * DOFS) {
    const LANES p = column.n.P * LANES{k[P], k[DOFS + P]};
    const LANES my = column.n.MY * LANES{k[MY], k[DOFS + MY]};
    const LANES mz = column.n.MZ * LANES{k[MZ], k[DOFS + MZ]};
    store_lanes(y + j, ADD ? load_lanes(y + j) + p + my + mz : p + my + mz);
  }
}

// y^T n
double along(const double* y, const FLOW_COLUMN& column) {
  const double* const at = y + first_of_end(column);
  return at[P] * column.n.P + at[MY] * column.n.MY + at[MZ] * column.n.MZ;
}

// A row of G: w^T K, where w is the sum of the columns of N by a row of the inverse. The columns of each end have their
// rows of K.
void row_of_G(const double* K, const FLOW_COLUMN* N, int formed, const double* row, std::int32_t n, double* g) {
  FLOW_COLUMN w[2] = {};  // by ends
  for (int j = 0; j < formed; ++j) {
    const double b = row[static_cast<std::ptrdiff_t>(j) * n];
    FLOW_COLUMN& of_end = w[N[j].end == 2 ? 1 : 0];
    of_end.end = N[j].end;
    of_end.n.P += b * N[j].n.P;
    of_end.n.MY += b * N[j].n.MY;
    of_end.n.MZ += b * N[j].n.MZ;
  }
  if (w[1].end == 0) return multiply_rows<false>(K, w[0], g);
  multiply_rows<false>(K, w[0].end != 0 ? w[0] : w[1], g);
  if (w[0].end != 0) multiply_rows<true>(K, w[1], g);
}

// KP := -(x g^T) of one column, or the sum of COUNT that follow each other.
template <int COUNT>
void set_products(const double* x, const double* g, double* KP) {
  constexpr int PAIRS = DOFS / 2;
  LANES X[COUNT][PAIRS];
  for (int k = 0; k < COUNT; ++k) {
    for (int i = 0; i < PAIRS; ++i) X[k][i] = load_lanes(x + DOFS * k + 2 * i);
  }
  for (int j = 0; j < DOFS; ++j) {
    LANES minus_g[COUNT];
    for (int k = 0; k < COUNT; ++k) minus_g[k] = LANES{-g[DOFS * k + j], -g[DOFS * k + j]};
    for (int i = 0; i < PAIRS; ++i) {
      LANES sum = X[0][i] * minus_g[0];
      for (int k = 1; k < COUNT; ++k) sum = sum + X[k][i] * minus_g[k];
      store_lanes(KP + DOFS * j + 2 * i, sum);
    }
  }
}

// KP := KP - x g^T
void subtract_product(const double* x, const double* g, double* KP) {
  for (int j = 0; j < DOFS; ++j) {
    for (int i = 0; i < DOFS; ++i) KP[DOFS * j + i] -= x[i] * g[j];
  }
}

using INVERSE = std::int32_t (*)(double* B, std::int32_t n);

// For n columns of N, of which the first ones are formed.
FLOW flow(const double* K, const FLOW_COLUMN* N, std::int32_t n, int formed, INVERSE inverse, double* KP) {
  if (!surely_finite(K, DOFS * DOFS)) return FLOW::not_finite;
  double X[DOFS * MOST_EQUATIONS];
  double Y[DOFS * MOST_EQUATIONS];
  double G[DOFS * MOST_EQUATIONS];
  double B[MOST_EQUATIONS * MOST_EQUATIONS];
  std::fill_n(B, n * n, 0.0);
  for (int i = 0; i < formed; ++i) {
    multiply_columns(K, N[i], X + DOFS * i);
    multiply_rows<false>(K, N[i], Y + DOFS * i);
    for (int j = 0; j < formed; ++j) B[j * n + i] = along(Y + DOFS * i, N[j]);
  }
  if (!surely_finite(B, n * n)) return FLOW::not_finite;
  if (inverse(B, n) != 0) return FLOW::singular;
  if (!surely_finite(B, n * n)) return FLOW::not_finite;
  for (int i = 0; i < formed; ++i) row_of_G(K, N, formed, B + i, n, G + DOFS * i);
  if (formed == 1) {
    set_products<1>(X, G, KP);
  } else {
    set_products<2>(X, G, KP);
  }
  for (int i = 2; i < formed; ++i) subtract_product(X + DOFS * i, G + DOFS * i, KP);
  return FLOW::added;
}

// The digits of a single.
std::int32_t invert_pair(double* B) {
  const auto b11 = static_cast<float>(B[0]);
  const auto b21 = static_cast<float>(B[1]);
  const auto b12 = static_cast<float>(B[2]);
  const auto b22 = static_cast<float>(B[3]);
  const float left = b11 * b22;
  const float right = b12 * b21;
  const float det = left - right;
  if (det == 0.0F) return 1;
  B[0] = static_cast<double>(b22 / det);
  B[1] = static_cast<double>(-b21 / det);
  B[2] = static_cast<double>(-b12 / det);
  B[3] = static_cast<double>(b11 / det);
  return 0;
}

}  // namespace

std::int32_t invert_both_sides(double* B, std::int32_t n) {
  if (n == 2) return invert_pair(B);
  std::int32_t IERR = 0;
  INVMAT_DB(B, &n, &n, &IERR);
  return IERR;
}

std::int32_t invert_one_side(double* B, std::int32_t n) {
  if (n == 1) {
    if (B[0] == 0.0) return 1;
    B[0] = 1.0 / B[0];
    return 0;
  }
  std::int32_t IERR = 0;
  INVMAT_DB(B, &n, &n, &IERR);
  return IERR;
}

FLOW flow_of_both_sides(const double* K, const FLOW_COLUMN* N, std::int32_t n, double* KP) {
  return flow(K, N, n, n, invert_both_sides, KP);
}

FLOW flow_of_one_side(const double* K, const FLOW_COLUMN* N, std::int32_t n, double* KP) {
  if (n < 1) return FLOW::added;
  return flow(K, N, n, std::min(n, 2), invert_one_side, KP);
}
