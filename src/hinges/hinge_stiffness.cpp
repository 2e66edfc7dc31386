// hinge_stiffness.cpp: KSTIFB_PLAST, the change of a beam's stiffness by yielding ends.
//
// The plastic deformations of an end are along the gradients n of its active yield equations, the columns of N:
// dup = N dlam. The forces stay on the yield surface, N^T df = 0 with df = K (du - N dlam), which gives the multipliers
// dlam and the plastic stiffness (Orbison, McGuire and Abel, 1982):
//
//     dlam = (N^T K N)^-1 N^T K du,    KP = -K N (N^T K N)^-1 N^T K,    (K + KP) N = 0
#include "hinges/hinge_stiffness.h"

#include <algorithm>

#include "common/clear.h"
#include "common/diagnostics.h"
#include "common/member_order.h"
#include "finites/fields.h"
#include "finites/finites.h"
#include "finites/records.h"
#include "finites/services.h"
#include "finites/views.hpp"
#include "hinges/plastic_flow.h"
#include "hinges/yield_curves.h"

namespace {

constexpr int END_DOFS = 6;
constexpr double RELEASED_AXIAL_SHARE = 1e-06;  // axial stiffness left after an axial release: not 0, which could make
                                                // the assembled matrix singular
constexpr const char* SINGULAR_TEXT = "Verify Singular KP";

using BLOCK = MATRIX_VIEW<END_DOFS>;
using CONST_BLOCK = MATRIX_VIEW<END_DOFS, const double>;

struct BLOCKS {
  MATRIX<END_DOFS, END_DOFS> M11, M12, M21, M22;
};

// More directions than degrees of freedom are never independent.
constexpr int MOST_DIRECTIONS = MEMBER_DOFS;

// n_i^T K n_j for one end.
double bilinear(CONST_BLOCK K, CONST_BLOCK N, int i, int j) {
  double sum = 0.0;
  for (int c = 1; c <= END_DOFS; ++c) {
    double row = 0.0;
    for (int r = 1; r <= END_DOFS; ++r) row += N(r, i) * K(r, c);
    sum += row * N(c, j);
  }
  return sum;
}

void release_axial_force(MATRIX_VIEW<MEMBER_DOFS> K) {
  K(1, 1) *= RELEASED_AXIAL_SHARE;
  K(7, 1) *= RELEASED_AXIAL_SHARE;
  K(1, 7) *= RELEASED_AXIAL_SHARE;
  K(7, 7) *= RELEASED_AXIAL_SHARE;
}

// KP := -K N G. False where N^T K N is singular, as below.
bool both_ends(const double* K, const double* N, std::int32_t NTOT, double* KP) {
  double G[MOST_EQUATIONS * MEMBER_DOFS];
  std::int32_t IERR = 0;
  MATRIX_PLASTIC_MAGNITUDES_BOTH_SIDES(K, N, &NTOT, G, &IERR);
  if (IERR != 0) return false;
  constexpr std::int32_t dofs = MEMBER_DOFS;
  double X[MEMBER_DOFS * MOST_EQUATIONS];
  MATMUL_M1MN_M2MN_DBL(X, K, &dofs, &dofs, N, &dofs, &NTOT);
  MATMUL_M1MN_M2MN_DBL(KP, X, &dofs, &NTOT, G, &NTOT, &dofs);
  for (int i = 0; i < MEMBER_DOFS * MEMBER_DOFS; ++i) KP[i] = -KP[i];
  return true;
}

// The gradients of one end: its six rows of N.
void compress(const double* N, int first_column, std::int32_t NEQ, int first_row, double* NE) {
  const MATRIX_VIEW<MEMBER_DOFS, const double> NV(N);
  const MATRIX_VIEW<END_DOFS> to(NE);
  for (int j = 1; j <= NEQ; ++j) {
    for (int i = 1; i <= END_DOFS; ++i) to(i, j) = NV(first_row + i - 1, first_column + j - 1);
  }
}

// One end yields: N has rows of that end only, so that N^T K N needs its block of K alone:
//
//     KP = -[columns of K of the end] G [rows of K of the end],    G = N (N^T K N)^-1 N^T  (6 by 6)
bool one_end(const double* K, const double* N, const ACTIVE_EQUATIONS& equations, bool first, double* KP) {
  const std::int32_t NEQ = first ? equations.N1 : equations.N2;
  if (NEQ < 1) return true;
  double NE[END_DOFS * SEGMENTS];
  if (first) {
    compress(N, 1, NEQ, 1, NE);
  } else {
    compress(N, equations.N1 + 1, NEQ, END_DOFS + 1, NE);
  }
  BLOCKS k;
  DECOMPOSE_KSTIF(K, k.M11.data(), k.M12.data(), k.M21.data(), k.M22.data());

  double BETA[SEGMENTS * SEGMENTS] = {};
  std::int32_t IERR = 0;
  CALCULATE_MAT_BETA_INVERSE(first ? k.M11.data() : k.M22.data(), NE, &NEQ, BETA, &IERR);
  if (IERR != 0) return false;
  double G[END_DOFS * END_DOFS];
  MAT_N_BETA_NT(BETA, NE, &NEQ, G);

  // The columns and the rows of K that belong to the yielding end.
  const double* const column1 = first ? k.M11.data() : k.M12.data();
  const double* const column2 = first ? k.M21.data() : k.M22.data();
  const double* const row1 = first ? k.M11.data() : k.M21.data();
  const double* const row2 = first ? k.M12.data() : k.M22.data();
  BLOCKS p;
  MAT_TRIPLE_PRODUCT(G, column1, row1, p.M11.data());
  MAT_TRIPLE_PRODUCT(G, column2, row1, p.M21.data());
  MAT_TRIPLE_PRODUCT(G, column1, row2, p.M12.data());
  MAT_TRIPLE_PRODUCT(G, column2, row2, p.M22.data());
  KP_ASSEMBLE(KP, p.M11.data(), p.M12.data(), p.M21.data(), p.M22.data());
  for (int i = 0; i < MEMBER_DOFS * MEMBER_DOFS; ++i) KP[i] = -KP[i];
  return true;
}

struct YIELDING_ENDS {
  bool first, second;
};

// The end that yields alone; 0 for both.
std::int32_t yielding_end(const YIELDING_ENDS& ends) {
  if (ends.first == ends.second) return 0;
  return ends.first ? 1 : 2;
}

YIELDING_ENDS yielding_ends(const HINGE_RECORD& hinge) {
  return {hinge.END1_STATE == YIELDING, hinge.END2_STATE == YIELDING};
}

FLOW flow_of_ends(const double* K, const FLOW_COLUMN* N, const ACTIVE_EQUATIONS& e, const YIELDING_ENDS& ends,
                  double* KP) {
  if (ends.first && ends.second) return flow_of_both_sides(K, N, e.NTOT, KP);
  if (ends.first) return flow_of_one_side(K, N, e.N1, KP);
  if (ends.second) return flow_of_one_side(K, N + e.N1, e.N2, KP);
  return FLOW::added;
}

// With every product: for any K, and for values that are infinite or NaN.
bool full_flow_of_ends(const double* K, const FLOW_COLUMN* columns, const ACTIVE_EQUATIONS& e,
                       const YIELDING_ENDS& ends, double* KP) {
  double N[MEMBER_DOFS * MOST_EQUATIONS] = {};
  write_columns(columns, e.NTOT, N);
  return ends.first && ends.second ? both_ends(K, N, e.NTOT, KP) : one_end(K, N, e, ends.first, KP);
}

// A yielding end without an active segment leaves the element elastic.
bool end_without_segment(const HINGE_RECORD& hinge, const ACTIVE_EQUATIONS& equations) {
  if (hinge.CURVE_KIND != LINEAR_SEGMENTS) return false;
  return (hinge.END1_STATE == YIELDING && positive_entries(equations.SEG1.data()) == 0) ||
         (hinge.END2_STATE == YIELDING && positive_entries(equations.SEG2.data()) == 0);
}

}  // namespace

void DECOMPOSE_KSTIF(const double* K, double* K11, double* K12, double* K21, double* K22) {
  const MATRIX_VIEW<MEMBER_DOFS, const double> KV(K);
  const BLOCK B11(K11);
  const BLOCK B12(K12);
  const BLOCK B21(K21);
  const BLOCK B22(K22);
  for (int j = 1; j <= END_DOFS; ++j) {
    for (int i = 1; i <= END_DOFS; ++i) {
      B11(i, j) = KV(i, j);
      B12(i, j) = KV(i, END_DOFS + j);
      B21(i, j) = KV(END_DOFS + i, j);
      B22(i, j) = KV(END_DOFS + i, END_DOFS + j);
    }
  }
}

void KP_ASSEMBLE(double* KP, const double* P11, const double* P12, const double* P21, const double* P22) {
  const MATRIX_VIEW<MEMBER_DOFS> KV(KP);
  const CONST_BLOCK B11(P11);
  const CONST_BLOCK B12(P12);
  const CONST_BLOCK B21(P21);
  const CONST_BLOCK B22(P22);
  for (int j = 1; j <= END_DOFS; ++j) {
    for (int i = 1; i <= END_DOFS; ++i) {
      KV(i, j) = B11(i, j);
      KV(i, END_DOFS + j) = B12(i, j);
      KV(END_DOFS + i, j) = B21(i, j);
      KV(END_DOFS + i, END_DOFS + j) = B22(i, j);
    }
  }
}

// Two equations at most are formed: the row and column of a third keep the caller's zeros, and the matrix is then
// singular.
void CALCULATE_MAT_BETA_INVERSE(const double* KB, const double* N, const int32_t* NEQ, double* BETA, int32_t* IERR) {
  const std::int32_t n = *NEQ;
  const CONST_BLOCK K(KB);
  const CONST_BLOCK NV(N);
  const std::int32_t formed = std::min(n, 2);
  for (int j = 1; j <= formed; ++j) {
    for (int i = 1; i <= formed; ++i) BETA[(j - 1) * n + i - 1] = bilinear(K, NV, i, j);
  }
  *IERR = invert_one_side(BETA, n);
}

void MAT_N_BETA_NT(const double* BETA, const double* N, const std::int32_t* NEQ, double* G) {
  const std::int32_t n = *NEQ;
  const CONST_BLOCK NV(N);
  const MATRIX_VIEW<END_DOFS> GV(G);
  const std::int32_t formed = std::min(n, 2);
  std::fill_n(G, END_DOFS * END_DOFS, 0.0);
  for (int i = 1; i <= formed; ++i) {
    for (int j = 1; j <= formed; ++j) {
      const double beta = BETA[(j - 1) * n + i - 1];
      for (int c = 1; c <= END_DOFS; ++c) {
        for (int r = 1; r <= END_DOFS; ++r) GV(r, c) += beta * NV(r, i) * NV(c, j);
      }
    }
  }
}

void MAT_TRIPLE_PRODUCT(const double* G, const double* L, const double* R, double* OUT) {
  constexpr std::int32_t n = END_DOFS;
  double LG[END_DOFS * END_DOFS];
  MATMUL_M1_M2_DBL(LG, L, G, &n);
  MATMUL_M1_M2_DBL(OUT, LG, R, &n);
}

void MATRIX_PLASTIC_MAGNITUDES_BOTH_SIDES(const double* K, const double* N, const int32_t* NTOT, double* G,
                                          int32_t* IERR) {
  constexpr std::int32_t dofs = MEMBER_DOFS;
  const std::int32_t n = *NTOT;
  *IERR = 1;
  if (n < 1) return;
  std::fill_n(G, static_cast<std::ptrdiff_t>(n) * MEMBER_DOFS, 0.0);
  if (n > MOST_DIRECTIONS) return;

  double NT[MOST_DIRECTIONS * MEMBER_DOFS];
  for (int j = 0; j < n; ++j) {
    for (int i = 0; i < MEMBER_DOFS; ++i) NT[i * n + j] = N[j * MEMBER_DOFS + i];
  }
  double Y[MOST_DIRECTIONS * MEMBER_DOFS];
  double B[MOST_DIRECTIONS * MOST_DIRECTIONS];
  MATMUL_M1MN_M2MN_DBL(Y, NT, &n, &dofs, K, &dofs, &dofs);
  MATMUL_M1MN_M2MN_DBL(B, Y, &n, &dofs, N, &dofs, &n);
  *IERR = invert_both_sides(B, n);
  if (*IERR != 0) return;
  double W[MOST_DIRECTIONS * MEMBER_DOFS];
  MATMUL_M1MN_M2MN_DBL(W, B, &n, &n, NT, &n, &dofs);
  MATMUL_M1MN_M2MN_DBL(G, W, &n, &dofs, K, &dofs, &dofs);
}

// The multipliers of an end from the displacements of both ends: OUT = BETA N^T (K1 D1 + K2 D2). Unlike above, a third
// equation enters where there are exactly three.
void MATRIX_PLASTIC_MAGNITUDE_ONE_SIDE(const double* K1, const double* K2, const double* N, const int32_t* NEQ,
                                       const double* BETA, const double* D1, const double* D2, double* OUT) {
  constexpr std::int32_t six = END_DOFS;
  const std::int32_t n = *NEQ;
  const std::int32_t formed = n == 3 ? 3 : std::min(n, 2);
  VECTOR<END_DOFS> F1;
  VECTOR<END_DOFS> F2;
  MATMUL_R_V_DBL(K1, D1, F1.data(), &six, &six);
  MATMUL_R_V_DBL(K2, D2, F2.data(), &six, &six);

  const CONST_BLOCK NV(N);
  VECTOR<3> v{};
  for (int k = 1; k <= formed; ++k) {
    double along1 = 0.0;
    double along2 = 0.0;
    for (int r = 1; r <= END_DOFS; ++r) {
      along1 += NV(r, k) * F1(r);
      along2 += NV(r, k) * F2(r);
    }
    v(k) = along1 + along2;
  }
  for (int i = 0; i < n; ++i) {
    OUT[i] = 0.0;
    for (int k = 1; k <= formed; ++k) OUT[i] += BETA[static_cast<std::ptrdiff_t>(k - 1) * n + i] * v(k);
  }
}

bool plastic_matrix(const HINGE_RECORD& hinge, const HINGE_FORCES& forces, const double* K, double* KP) {
  ACTIVE_EQUATIONS equations{};
  count_equations(hinge, forces, equations);
  if (equations.NTOT < 1 || end_without_segment(hinge, equations)) return true;

  FLOW_COLUMN columns[MOST_EQUATIONS];
  std::fill_n(columns, equations.NTOT, FLOW_COLUMN{});
  set_flow_columns(hinge, forces, equations, columns);
  const YIELDING_ENDS ends = yielding_ends(hinge);
  const FLOW outcome = flow_of_ends(K, columns, equations, ends, KP);
  if (outcome == FLOW::in_full) return full_flow_of_ends(K, columns, equations, ends, KP);
  return outcome == FLOW::added;
}

void KSTIFB_PLAST(const int32_t* /*ELNO*/, const double* A, const int32_t* NDIM, const int32_t* IELEM, double* K,
                  double* KP) {
  clear(KP, MEMBER_DOFS * MEMBER_DOFS);
  const std::int32_t pos = SOLANAELEM.ELEM_POS(*IELEM);
  if (!HAS_ELEMENT(SOLANAELEM.HINGE_REC, pos)) return;
  const HINGE_RECORD& hinge = SOLANAELEM.HINGE_REC(pos);
  if (hinge.HINGE_MODEL != 1) return;
  if (hinge.END1_STATE == NO_HINGE && hinge.END2_STATE == NO_HINGE) return;
  if (hinge.END1_STATE == NO_PART && hinge.END2_STATE == NO_PART) return;
  if (hinge.AXIAL_RELEASE == 1) {
    release_axial_force(MATRIX_VIEW<MEMBER_DOFS>(K));
    return;
  }

  SOLPARAM_RECORD parameters;
  ZelkuSolParamGetRec(&parameters);
  const HINGE_FORCES forces = hinge_forces(hinge, IELEM, A, NDIM, &pos, &parameters.HINGE_FORCE_MODE);
  if (plastic_matrix(hinge, forces, K, KP)) return;
  report_failure(SINGULAR_TEXT, *IELEM, 0, yielding_end(yielding_ends(hinge)));
}
