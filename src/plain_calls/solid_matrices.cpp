// solid_matrices.cpp: stiffness, mass and geometric stiffness of a solid as plain calls.
#include <algorithm>

#include "common/finiteness.h"
#include "finites/elements.h"
#include "plain_calls/input_numbers.h"
#include "plain_calls/solid_input.h"
#include "solids/linear_matrices.h"

namespace {

using SOLID_MATRIX = MATRIX<SOLID_MATRIX_ROWS, SOLID_MATRIX_ROWS>;

// to := the matrix without the gaps between its columns.
finites_status hand_over_matrix(const SOLID_CALL& S, const SOLID_MATRIX& K, double* to) {
  const int order = 3 * S.NN;
  if (order == SOLID_MATRIX_ROWS) return copy_finite(K.data(), order * order, to);
  for (int j = 1; j <= order; ++j) {
    if (!all_finite(&K(1, j), order)) return FINITES_RESULT;
  }
  for (int j = 1; j <= order; ++j) {
    for (int i = 1; i <= order; ++i) *to++ = true_share(S, K(i, j));
  }
  return FINITES_OK;
}

finites_status hand_over_pairs(const SOLID_CALL& S, const NODE_PAIRS& k, double* to) {
  SOLID_MATRIX K;
  SOLID_K_TO_GLOBAL(S.AX, S.NN, k, K.data());
  return hand_over_matrix(S, K, to);
}

finites_status geometric(const SOLID_CALL& S, std::int32_t op, double* KG) {
  NODE_PAIRS k;
  std::int32_t OK = 1;
  SOLID_K_GEOM(S, op, k, OK);
  return OK == 1 ? hand_over_pairs(S, k, KG) : FINITES_DEGENERATE;
}

}  // namespace

void finites_solid_init(finites_solid* solid) {
  if (solid == nullptr) return;
  *solid = finites_solid{};
  solid->nodes = 8;
  solid->stiffness_factor = 1.0;
}

finites_status finites_solid_stiffness(const finites_solid* solid, double* K) {
  if (solid == nullptr || K == nullptr) return FINITES_NULL;
  SOLID_CALL S;
  const finites_status status = prepare_solid_input(*solid, S);
  if (status != FINITES_OK) return status;
  SOLID_MATRIX k;
  std::int32_t OK = 1;
  SOLID_K_LINEAR(S, k.data(), OK);
  return OK == 1 ? hand_over_matrix(S, k, K) : FINITES_DEGENERATE;
}

finites_status finites_solid_mass(const finites_solid* solid, double* M) {
  if (solid == nullptr || M == nullptr) return FINITES_NULL;
  SOLID_CALL S;
  const finites_status status = prepare_solid_input(*solid, S);
  if (status != FINITES_OK) return status;
  NODE_PAIRS m;
  std::int32_t OK = 1;
  SOLID_MASS(S, m, OK);
  return OK == 1 ? hand_over_pairs(S, m, M) : FINITES_DEGENERATE;
}

finites_status finites_solid_geometric(const finites_solid* solid, const double* u, double* KG) {
  if (solid == nullptr || u == nullptr || KG == nullptr) return FINITES_NULL;
  SOLID_CALL S;
  const finites_status status = prepare_solid_input(*solid, u, S);
  return status == FINITES_OK ? geometric(S, OP_GEOMETRIC, KG) : status;
}

// The stresses stand where a solver stores them.
finites_status finites_solid_geometric_of_stresses(const finites_solid* solid, const double (*stress)[6], double* KG) {
  if (solid == nullptr || stress == nullptr || KG == nullptr) return FINITES_NULL;
  SOLID_CALL S;
  const finites_status status = prepare_solid_input(*solid, S);
  if (status == FINITES_NODES) return status;
  const finites_status numbers = status_of_numbers(&stress[0][0], 6 * S.points);
  if (numbers != FINITES_OK) return numbers;
  if (status != FINITES_OK) return status;
  SOLID_NL_RECORD stored;
  std::copy_n(&stress[0][0], 6 * S.points, stored.GAUSS_STRESS.data());
  S.nonlinear = &stored;
  return geometric(S, OP_GEOMETRIC_STORED, KG);
}
