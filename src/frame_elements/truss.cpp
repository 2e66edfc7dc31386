// truss.cpp: the two-node axial element: stiffness with pretension and full yield, geometric stiffness, mass.
//
//     stiffness   E A / L [1 -1; -1 1] on u
//     string      P / L [1 -1; -1 1] on v and on w, for the axial force or the pretension A PRETENSION_STRESS
//     mass        per unit mass: 1/3, 1/6 between the ends (consistent) or 1/2 (lumped), the same for u, v, w
//
// P is positive in tension, which stiffens.

#include <initializer_list>

#include "common/clear.h"
#include "common/constants.h"
#include "common/member_order.h"
#include "finites/fields.h"
#include "finites/finites.h"
#include "finites/services.h"
#include "finites/views.hpp"
#include "frame_elements/member_axes.h"
#include "frame_elements/truss_matrices.h"

namespace {

constexpr double REDUCTION = 0.8;  // direct analysis: axial stiffness of a member with TAU_B > 0, whatever its value

// A yielded truss keeps this share of its axial stiffness, so that a node held by it alone does not make the assembled
// matrix singular.
constexpr double YIELDED_SHARE = 1e-06;

// q = P / L across the axis; along it q times 0, a zero with the sign of q.
void GEOM_KG_TRUSS(double P, double L, MATRIX_VIEW<TRUSS_DOFS> KG) {
  if (P == 0.0) return;
  const double q = P / L;
  KG(1, 1) = KG(4, 4) = KG(4, 1) = KG(1, 4) = q * 0.0;
  for (const int d : {2, 3}) {
    KG(d, d) = KG(d + 3, d + 3) = q;
    KG(d + 3, d) = KG(d, d + 3) = -q;
  }
}

// A := section area times the factor of the element, the reduction and, in MODE_STEP, the removal coefficient.
double effective_area(const MODEL_DATA_READER& A, std::int64_t I, std::int64_t S, const MEMBER_RECORD& record,
                      std::int32_t mode) {
  double factor = A(I + FACTOR_AREA);
  if (record.TAU_B > 0.0) factor *= REDUCTION;
  double area = A(S + SECTION_AREA) * factor;
  if (mode == MODE_STEP) {
    double coefficient = 1.0;
    GET_COEF_REMOVE(&record.REMOVE_STEP, &A(I + REMOVE_MIN), &coefficient);
    area *= coefficient;
  }
  return area;
}

}  // namespace

void truss_stiffness(double stiffness, double* K) {
  clear(K, TRUSS_DOFS * TRUSS_DOFS);
  const MATRIX_VIEW<TRUSS_DOFS> KV(K);
  KV(1, 1) = KV(4, 4) = stiffness;
  KV(4, 1) = KV(1, 4) = -KV(1, 1);
}

void truss_string(double P, double L, double* KG) {
  clear(KG, TRUSS_DOFS * TRUSS_DOFS);
  GEOM_KG_TRUSS(P, L, MATRIX_VIEW<TRUSS_DOFS>(KG));
}

void add_truss_string(double P, double L, double* K) {
  double KG[TRUSS_DOFS * TRUSS_DOFS] = {};
  GEOM_KG_TRUSS(P, L, MATRIX_VIEW<TRUSS_DOFS>(KG));
  for (int i = 0; i < TRUSS_DOFS * TRUSS_DOFS; ++i) K[i] += KG[i];
}

void truss_mass(double mass, bool consistent, double* M) {
  clear(M, TRUSS_DOFS * TRUSS_DOFS);
  const MATRIX_VIEW<TRUSS_DOFS> MV(M);
  for (int d = 1; d <= TRUSS_DOFS; ++d) MV(d, d) = consistent ? 1.0 / 3.0 : 0.5;
  if (consistent) {
    for (int d = 1; d <= 3; ++d) MV(d + 3, d) = MV(d, d + 3) = 1.0 / 6.0;
  }
  for (int i = 0; i < TRUSS_DOFS * TRUSS_DOFS; ++i) M[i] *= mass;
}

void truss_to_solver_axes(const double* T, double* K) { to_solver_axes<TRUSS_DOFS>(T, K); }

void KSTIFT(const int32_t* MODE, const int32_t* IELEM, const int32_t* IOFF, const double* A, const int32_t* /*NDIM*/,
            const double* T, double* K, double* KG) {
  const MODEL_DATA_READER D(A);
  const std::int64_t I = *IOFF;
  const std::int64_t S = D.INTEGER(I + MEMBER_SECTION);
  const std::int64_t M = D.INTEGER(I + MEMBER_MATERIAL);
  const int kind = D.INTEGER(SECOND_ORDER);
  const int section_type = D.INTEGER(S + FRAME_SECTION_TYPE);
  MEMBER_RECORD& record = SOLANAELEM.MEMBER_REC(SOLANAELEM.ELEM_POS(*IELEM));
  const double L = record.LENGTH;
  const double area = effective_area(D, I, S, record, *MODE);

  truss_stiffness(area * D(M + MEMBER_E1) / L, K);
  clear(KG, TRUSS_DOFS * TRUSS_DOFS);

  // The area has the removal coefficient, and so has the pretension.
  double pretension = 0.0;
  if (section_type == PRETENSIONED_SECTION) {
    pretension = area * D(I + PRETENSION_STRESS);
    if (*MODE == MODE_STEP || kind != GEOMETRIC_ADDED) add_truss_string(pretension, L, K);
  }
  record.K11_COPY = K[0];
  record.PRESTRESS_FORCE = pretension;

  const bool geometric = kind == GEOMETRIC_ADDED || kind == GEOMETRIC_APART;
  if (geometric && *MODE == MODE_STEP) {
    GEOM_KG_TRUSS(record.AXIAL_FORCE, L, MATRIX_VIEW<TRUSS_DOFS>(KG));
    if (kind == GEOMETRIC_ADDED) {
      for (int i = 0; i < TRUSS_DOFS * TRUSS_DOFS; ++i) K[i] += KG[i];
    }
  }
  if (section_type == YIELDING_TRUSS_SECTION && kind == GEOMETRIC_ADDED) {
    std::int32_t members_yield = 0;
    ZELKU_SOLPARAM_GET_KNLMATERIAL_MEMBER(&members_yield);
    if (members_yield == 1) KSTIFT_PLAST(IELEM, K);
  }

  if (*MODE == MODE_LOCAL) return;
  to_solver_axes<TRUSS_DOFS>(T, K);
  if (geometric) to_solver_axes<TRUSS_DOFS>(T, KG);
}

// Axial yield of a truss: acts where hinge model 1 has AXIAL_RELEASE 1, unless both ends are in state 0 or both in
// state 2.
void KSTIFT_PLAST(const int32_t* IELEM, double* K) {
  const std::int32_t pos = SOLANAELEM.ELEM_POS(*IELEM);
  if (!HAS_ELEMENT(SOLANAELEM.HINGE_REC, pos)) return;
  const HINGE_RECORD& hinge = SOLANAELEM.HINGE_REC(pos);
  const bool both_elastic = hinge.END1_STATE == 0 && hinge.END2_STATE == 0;
  const bool both_apart = hinge.END1_STATE == 2 && hinge.END2_STATE == 2;
  if (hinge.HINGE_MODEL != 1 || both_elastic || both_apart || hinge.AXIAL_RELEASE != 1) return;
  const MATRIX_VIEW<TRUSS_DOFS> KV(K);
  KV(1, 1) *= YIELDED_SHARE;
  KV(4, 1) *= YIELDED_SHARE;
  KV(1, 4) *= YIELDED_SHARE;
  KV(4, 4) *= YIELDED_SHARE;
}

void KSTIFT_MASS(const int32_t* IOFF, const double* A, const int32_t* /*NDIM*/, const double* T, double* M) {
  const MODEL_DATA_READER D(A);
  SOLPARAM_RECORD parameters;
  ZelkuSolParamGetRec(&parameters);
  truss_mass(D(*IOFF + MEMBER_WEIGHT) / GRAVITY, parameters.LUMPED_MASS == 0, M);
  to_solver_axes<TRUSS_DOFS>(T, M);
}
