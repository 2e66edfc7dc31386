// entry.cpp: FINITES_SOLID_3D, the routine through which a solver calls every operation of a solid element.
#include <algorithm>

#include "finites/fields.h"
#include "finites/finites.h"
#include "finites/views.hpp"
#include "solids/linear_matrices.h"
#include "solids/operations.h"
#include "solids/solid_call.h"

namespace {

// The geometric stiffness belongs to operation 1, except on the very first pass of a nonlinear run: no stress exists.
bool geometric_switch(const MODEL_DATA_READER& A) {
  const bool first_pass = A.INTEGER(ANALYSIS_STATE) == 1 && A.INTEGER(STEP_COUNTER) == 0;
  return A.INTEGER(SECOND_ORDER) == GEOMETRIC_ADDED && !first_pass;
}

// The geometric part is of the stress that the solver stores.
void operate_stiffness(const SOLID_CALL& S, bool geometric, double* K, std::int32_t& OK) {
  const bool stressed = geometric && S.nonlinear != nullptr;
  NODE_PAIRS k;
  if (stressed) SOLID_K_GEOM(S, OP_STIFFNESS, k, OK);
  if (OK == 1) SOLID_K_LINEAR(S, K, OK);
  if (OK == 1 && stressed) SOLID_K_TO_GLOBAL_ADDED(S.AX, S.NN, k, K);
}

void operate_mass(const SOLID_CALL& S, double* K, std::int32_t& OK) {
  NODE_PAIRS m;
  SOLID_MASS(S, m, OK);
  if (OK == 1) SOLID_K_TO_GLOBAL(S.AX, S.NN, m, K);
}

// Operation 7 returns the negative geometric stiffness, of the displacements; 71 the positive one, of the stored
// stress.
void operate_geometric(const SOLID_CALL& S, std::int32_t op, double* K, std::int32_t& OK) {
  NODE_PAIRS k;
  SOLID_K_GEOM(S, op, k, OK);
  if (OK != 1) return;
  if (op == OP_GEOMETRIC) {
    for (int j = 1; j <= S.NN; ++j) {
      for (int i = 1; i <= S.NN; ++i) k(i, j) = -k(i, j);
    }
  }
  SOLID_K_TO_GLOBAL(S.AX, S.NN, k, K);
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
    report_solid(*IELEM, IERR, MSG);
    return;
  }
  SOLID_CALL S;
  std::int32_t OK = prepare_solid(S, pos, *NN, D) ? 1 : 0;
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
  if (OK != 1) report_solid(SOLANAELEM.SOLID_REC(pos).ELEM_NO, IERR, MSG);
}
