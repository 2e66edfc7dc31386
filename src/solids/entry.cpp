// entry.cpp: FINITES_SOLID_3D, the routine through which a solver calls every operation of a solid element.
#include <algorithm>

#include "finites/fields.h"
#include "finites/finites.h"
#include "finites/services.h"
#include "finites/views.hpp"
#include "solids/integration.h"
#include "solids/operations.h"
#include "solids/solid_data.h"

namespace {

constexpr std::int32_t MESSAGE_SINGULAR = 1228;
constexpr std::int32_t ONE_INTEGER = 10;
constexpr std::int32_t MESSAGE_LENGTH = 500;

void report(std::int32_t number, std::int32_t* IERR, char* MSG) {
  const std::int32_t zero = 0;
  const char* const none = "";
  WERRTU(&MESSAGE_SINGULAR, &ONE_INTEGER, &number, &zero, &zero, &zero, &zero, &zero, &zero, &zero, &zero, none, &zero,
         none, &zero, none, &zero, IERR, MSG, &MESSAGE_LENGTH);
}

// The geometric stiffness belongs to operation 1, except on the very first pass of a nonlinear run: no stress exists.
bool geometric_switch(const MODEL_DATA_READER& A) {
  const bool first_pass = A.INTEGER(ANALYSIS_STATE) == 1 && A.INTEGER(STEP_COUNTER) == 0;
  return A.INTEGER(SECOND_ORDER) == GEOMETRIC_ADDED && !first_pass;
}

// Reads the element: material, coordinates in element axes, integration rule. False when the node count is no kind or
// exceeds the node list of a record.
bool prepare(SOLID_CALL& S, std::int32_t pos, std::int32_t NN, const MODEL_DATA_READER& A) {
  S.KIND = 0;
  S.NN = NN;
  SOLID_KIND_OF_NODES(NN, S.KIND);
  if (S.KIND == 0 || NN > MOST_SOLID_NODES) return false;
  S.record = &SOLANAELEM.SOLID_REC(pos);
  S.nonlinear = HAS_ELEMENT(SOLANAELEM.SOLID_NL_REC, pos) ? &SOLANAELEM.SOLID_NL_REC(pos) : nullptr;
  const std::int64_t material = S.record->MAT_OFF;
  S.E = A(material + MATERIAL_YOUNG);
  S.nu = A(material + MATERIAL_POISSON);
  S.unit_weight = A(material + MATERIAL_UNIT_WEIGHT);
  SOLID_VECTORS global;
  SOLID_GATHER_XYZ(*S.record, A, NN, global);
  SOLIDELEM_AXE_DBL(&NN, global.data(), S.AX.data());
  SOLID_XYZ_TO_LOCAL(S.AX, NN, global, S.XYZ);
  SOLID_GAUSS_COUNT(S.KIND, SOLID_RULE, S.points);
  SOLID_GAUSS_RULE(S.KIND, SOLID_RULE, S.points, S.station, S.weight);
  return true;
}

// K := the matrix in global axes; the columns of K are 24 apart, whatever the number of nodes.
void copy_matrix(const SOLID_CALL& S, SOLID_MATRIX& local, double* K) {
  SOLID_K_TO_GLOBAL(S.AX, S.NN, local);
  const int order = 3 * S.NN;
  for (int j = 0; j < order; ++j) std::copy_n(&local(1, j + 1), order, K + j * SOLID_MATRIX_ROWS);
}

void operate_stiffness(const SOLID_CALL& S, bool geometric, double* K, std::int32_t& OK) {
  SOLID_MATRIX stiffness{};
  SOLID_K_LINEAR(S, stiffness, OK);
  if (OK != 1) return;
  if (geometric && S.nonlinear != nullptr) {
    // The stress is the one that the solver stores; no displacements are needed.
    const SOLID_VECTORS none{};
    SOLID_MATRIX KG{};
    SOLID_K_GEOM(S, OP_STIFFNESS, none, KG, OK);
    if (OK != 1) return;
    for (int i = 0; i < SOLID_MATRIX_ROWS * SOLID_MATRIX_ROWS; ++i) stiffness.V[i] += KG.V[i];
  }
  copy_matrix(S, stiffness, K);
}

void operate_mass(const SOLID_CALL& S, double* K, std::int32_t& OK) {
  SOLID_MATRIX M{};
  SOLID_MASS(S, M, OK);
  if (OK == 1) copy_matrix(S, M, K);
}

// Operation 7 returns the negative geometric stiffness, of the displacements; 71 the positive one, of the stored
// stress.
void operate_geometric(const SOLID_CALL& S, std::int32_t op, double* K, std::int32_t& OK) {
  SOLID_VECTORS u{};
  if (op == OP_GEOMETRIC) SOLID_VEC_TO_LOCAL(S.AX, S.NN, S.record->U_ELEM, u);
  SOLID_MATRIX KG{};
  SOLID_K_GEOM(S, op, u, KG, OK);
  if (OK != 1) return;
  const double sign = op == OP_GEOMETRIC ? -1.0 : 1.0;
  for (double& k : KG.V) k *= sign;
  copy_matrix(S, KG, K);
}

void operate_body_load(const SOLID_CALL& S, const double* G, double* F, std::int32_t& OK) {
  SOLID_VECTORS f;
  SOLID_BODY_LOAD(S, G, f, OK);
  if (OK == 1) std::copy_n(f.data(), 3 * S.NN, F);
}

void operate_forces(const SOLID_CALL& S, std::int32_t op, std::int32_t& OK) {
  SOLID_VECTORS f;
  SOLID_INTERNAL_FORCE(S, op, f, OK);
  if (OK == 1) std::copy_n(f.data(), 3 * S.NN, S.record->F_ELEM.data());
}

}  // namespace

void FINITES_SOLID_3D(const int32_t* OP, const int32_t* IELEM, const int32_t* /*IOFF*/, const double* A,
                      const int32_t* /*NDIM*/, const double* G, double* F, const int32_t* NN, double* K, int32_t* IERR,
                      char* MSG) {
  *IERR = 0;
  const MODEL_DATA_READER D(A);
  const std::int32_t pos = solid_position(*IELEM);
  if (pos == 0) {
    report(*IELEM, IERR, MSG);
    return;
  }
  SOLID_CALL S;
  std::int32_t OK = prepare(S, pos, *NN, D) ? 1 : 0;
  if (OK == 1) {
    switch (*OP) {
      case OP_MASS: operate_mass(S, K, OK); break;
      case OP_FORCES:
      case OP_FORCES_COMMIT: operate_forces(S, *OP, OK); break;
      case OP_RESULTS: SOLID_RESULTS(S, OK); break;
      case OP_GEOMETRIC:
      case OP_GEOMETRIC_STORED: operate_geometric(S, *OP, K, OK); break;
      case OP_BODY_LOAD: operate_body_load(S, G, F, OK); break;
      default: operate_stiffness(S, geometric_switch(D), K, OK); break;
    }
  }
  if (OK != 1) report(SOLANAELEM.SOLID_REC(pos).ELEM_NO, IERR, MSG);
}
