// plastic_flow.cpp: KP = -K N (N^T K N)^-1 N^T K for a finite K by its planes.
//
// A column of N has the three entries of its end, P, My and Mz, each of another plane. With
//
//     X = K N = (N^T K)^T,    B = X^T N,    W = B^-1 N^T,    G = W K,    KP = -X G
//
// a column of X has ten entries of one product each. The products that are left out have a zero and a finite factor,
// and add nothing to a sum.
#include "hinges/plastic_flow.h"

#include <algorithm>
#include <initializer_list>

#include "common/finiteness.h"
#include "common/lanes.h"
#include "common/member_order.h"
#include "common/plane_matrix.h"
#include "finites/services.h"

namespace {

using COLUMN = VECTOR<MEMBER_DOFS>;

int first_of_end(const FLOW_COLUMN& column) { return column.end == 2 ? MEMBER_DOFS / 2 : 0; }

// x := K n for forces n at an end, whose degrees of freedom are P, MY and MZ; torsion stays zero.
template <int P, int MY, int MZ>
void multiply(const PLANE_MATRIX& K, const SECTION_FORCES& n, COLUMN& x) {
  for (const int d : {1, 7}) x(d) = K(d, P) * n.P;
  for (const int d : {3, 5, 9, 11}) x(d) = K(d, MY) * n.MY;
  for (const int d : {2, 6, 8, 12}) x(d) = K(d, MZ) * n.MZ;
  for (const int d : {4, 10}) x(d) = 0.0;
}

void multiply(const PLANE_MATRIX& K, const FLOW_COLUMN& column, COLUMN& x) {
  if (column.end == 2) {
    multiply<7, 11, 12>(K, column.n, x);
  } else {
    multiply<1, 5, 6>(K, column.n, x);
  }
}

// x^T n
double along(const COLUMN& x, const FLOW_COLUMN& column) {
  const double* const at = x.data() + first_of_end(column);
  return at[0] * column.n.P + at[4] * column.n.MY + at[5] * column.n.MZ;
}

// A row of G: K w, where w is the sum of the columns of N by a row of the inverse; g1 and g2 of the ends are added.
void row_of_G(const PLANE_MATRIX& K, const FLOW_COLUMN* N, int formed, const double* row, std::int32_t n, COLUMN& g) {
  SECTION_FORCES w[2] = {};  // by ends
  for (int j = 0; j < formed; ++j) {
    const double b = row[static_cast<std::ptrdiff_t>(j) * n];
    SECTION_FORCES& of_end = w[N[j].end == 2 ? 1 : 0];
    of_end.P += b * N[j].n.P;
    of_end.MY += b * N[j].n.MY;
    of_end.MZ += b * N[j].n.MZ;
  }
  COLUMN g2;
  multiply<1, 5, 6>(K, w[0], g);
  multiply<7, 11, 12>(K, w[1], g2);
  for (int d = 1; d <= MEMBER_DOFS; ++d) g(d) += g2(d);
}

// KP := -(x g^T) of one column, or the sum of COUNT that follow each other. KP has been cleared.
template <int COUNT>
void set_products(const COLUMN* x, const COLUMN* g, double* KP) {
  constexpr int PAIRS = MEMBER_DOFS / 2;
  LANES X[COUNT][PAIRS];
  for (int k = 0; k < COUNT; ++k) {
    for (int i = 0; i < PAIRS; ++i) X[k][i] = lanes_at(x[k].data() + 2 * i);
  }
  for (const int j : {1, 2, 3, 5, 6, 7, 8, 9, 11, 12}) {  // no torsion
    LANES minus_g[COUNT];
    for (int k = 0; k < COUNT; ++k) minus_g[k] = LANES{-g[k](j), -g[k](j)};
    for (int i = 0; i < PAIRS; ++i) {
      LANES sum = X[0][i] * minus_g[0];
      for (int k = 1; k < COUNT; ++k) sum = sum + X[k][i] * minus_g[k];
      store_lanes(KP + MEMBER_DOFS * (j - 1) + 2 * i, sum);
    }
  }
}

// KP := KP - x g^T
void subtract_product(const COLUMN& x, const COLUMN& g, double* KP) {
  const MATRIX_VIEW<MEMBER_DOFS> KV(KP);
  for (int j = 1; j <= MEMBER_DOFS; ++j) {
    for (int i = 1; i <= MEMBER_DOFS; ++i) KV(i, j) -= x(i) * g(j);
  }
}

using INVERSE = std::int32_t (*)(double* B, std::int32_t n);

// For n columns of N, of which the first ones are formed.
FLOW flow(const double* stiffness, const FLOW_COLUMN* N, std::int32_t n, int formed, INVERSE inverse, double* KP) {
  PLANE_MATRIX K;
  if (!read_planes(stiffness, K)) return FLOW::in_full;
  COLUMN X[MOST_EQUATIONS];
  COLUMN G[MOST_EQUATIONS];
  double B[MOST_EQUATIONS * MOST_EQUATIONS];
  std::fill_n(B, n * n, 0.0);
  for (int i = 0; i < formed; ++i) {
    multiply(K, N[i], X[i]);
    for (int j = 0; j < formed; ++j) B[j * n + i] = along(X[i], N[j]);
  }
  if (!all_finite(B, n * n)) return FLOW::in_full;
  if (inverse(B, n) != 0) return FLOW::singular;
  if (!all_finite(B, n * n)) return FLOW::in_full;
  for (int i = 0; i < formed; ++i) row_of_G(K, N, formed, B + i, n, G[i]);
  if (formed == 1) {
    set_products<1>(X, G, KP);
  } else {
    set_products<2>(X, G, KP);
  }
  for (int i = 2; i < formed; ++i) subtract_product(X[i], G[i], KP);
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
