// state.cpp: further routines that a solver calls for solids: the results of an element for given displacements, its
// axes, its forces added to joint reactions, and its displacements taken from a solution vector.
#include <algorithm>

#include "finites/fields.h"
#include "finites/finites.h"
#include "finites/services.h"
#include "finites/views.hpp"
#include "solids/linear_vectors.h"
#include "solids/operations.h"
#include "solids/results.h"
#include "solids/solid_call.h"

namespace {

constexpr int RECORD_WORDS = 50;
constexpr int FREEDOMS = 6;

// Three values per node, but six are written from the place of each node on: degrees of freedom 4 to 6 fall on the
// place of the next node, those of the last node behind it, where there is room for one node more. The translations of
// the next node replace them, but one with equation 0 does not: part of the results (docs/decisions.md).
constexpr int WORK_VALUES = 3 * (SOLID_ROOM + 1);

std::int32_t bounded(std::int32_t NN) { return std::clamp(NN, std::int32_t{0}, std::int32_t{SOLID_ROOM}); }

void set_state(std::int32_t pos, std::int32_t NN, const double* U) {
  SOLID_RECORD& record = SOLANAELEM.SOLID_REC(pos);
  record.U_ELEM = MATRIX<3, SOLID_ROOM>{};
  record.F_ELEM = MATRIX<3, SOLID_ROOM>{};
  std::copy_n(U, 3 * NN, record.U_ELEM.data());
  if (HAS_ELEMENT(SOLANAELEM.SOLID_NL_REC, pos)) {
    std::copy_n(U, 3 * NN, SOLANAELEM.SOLID_NL_REC(pos).U_NL.data());
  }
}

}  // namespace

namespace {

// Operations 3, 33 and 5 of the displacements in the record, with the strains and stresses of the points formed once:
// forces in global axes to FG, in element axes to F_ELEM and RES. What was written before a failure stays.
void answer(const SOLID_CALL& S, std::int32_t nodes, double* RES, double* stress, double* FG, std::int32_t& OK) {
  SOLID_RECORD& record = *S.record;
  POINT_STATES state;
  point_states(S, state, OK);
  if (OK != 1) return;
  SOLID_VECTORS f;
  linear_forces(S, state, f);
  const MATRIX_VIEW<RECORD_WORDS> res(RES);
  for (int i = 1; i <= nodes; ++i) {
    for (int j = 1; j <= 3; ++j) record.F_ELEM(j, i) = res(WORD_FORCE + j - 1, i) = f(j, i);
  }
  forces_to_global(S.AX, S.NN, f);
  std::copy_n(f.data(), 3 * nodes, FG);
  linear_results(S, state, OK);
  if (OK != 1) return;
  const MATRIX_VIEW<6> s(stress);
  for (int i = 1; i <= nodes; ++i) {
    for (int word = 1; word <= WORDS_OF_POINT; ++word) res(word, i) = record.RES50_NODE(word, i);
    for (int j = 1; j <= 6; ++j) s(j, i) = record.RES50_GAUSS(WORD_STRESS - 1 + j, i);
  }
}

}  // namespace

void GET_ELEM3D(const int32_t* IELEM, const int32_t* /*IOFF*/, const int32_t* /*ISPARE*/, const double* A,
                const int32_t* /*NDIM*/, const int32_t* NN, double* RES, double* S, const double* U, double* FG,
                int32_t* IERR, char* MSG) {
  *IERR = 0;
  const std::int32_t nodes = bounded(*NN);
  std::fill_n(RES, RECORD_WORDS * nodes, 0.0);
  std::fill_n(S, 6 * nodes, 0.0);
  const std::int32_t pos = solid_position(*IELEM);
  if (pos == 0) {
    report_solid(*IELEM, IERR, MSG);
    return;
  }
  set_state(pos, nodes, U);
  SOLID_CALL call;
  std::int32_t OK = prepare_solid(call, pos, *NN, MODEL_DATA_READER(A)) ? 1 : 0;
  if (OK == 1) answer(call, nodes, RES, S, FG, OK);
  if (OK != 1) report_solid(SOLANAELEM.SOLID_REC(pos).ELEM_NO, IERR, MSG);
}

void TRFA_3DSOLID(const int32_t* IELEM, int32_t* NN, const double* A, const int32_t* /*NDIM*/, double* AXES) {
  const std::int32_t pos = solid_position(*IELEM);
  if (pos == 0) {
    std::fill_n(AXES, 9, 0.0);
    return;
  }
  const SOLID_RECORD& record = SOLANAELEM.SOLID_REC(pos);
  *NN = record.NNODE;
  SOLID_VECTORS XYZ{};
  SOLID_GATHER_XYZ(record, MODEL_DATA_READER(A), record.NNODE, XYZ);
  SOLIDELEM_AXE_DBL(NN, XYZ.data(), AXES);
}

// A(b + 2 .. b + 4) += f of each node with a joint, b being the entry of the joint and the load case, 8 places long.
void RAMSR_SOLID(const int32_t* ILOAD, const int32_t* /*NDIM*/, double* A, const int32_t* NN, const int32_t* ID,
                 const double* F) {
  constexpr int entry = 8;
  constexpr int force = 2;
  const MODEL_DATA D(A);
  const std::int64_t cases = D.INTEGER(LOAD_CASES);
  const std::int64_t base = D.INTEGER(JOINT_RESULTS);
  const MATRIX_VIEW<3, const double> f(F);
  for (std::int32_t k = 1; k <= *NN; ++k) {
    const std::int64_t joint = ID[k - 1];
    if (joint <= 0) continue;
    const std::int64_t b = ((joint - 1) * cases + *ILOAD - 1) * entry + base;
    for (int i = 1; i <= 3; ++i) D(b + force + i - 1) += f(i, k);
  }
}

void GET_NONLIN_UGLO_SOLIDELEM_RAM(const int32_t* IELEM, int32_t* NN, const int32_t* IOFF, const double* A,
                                   const int32_t* /*NDIM*/, const double* UG, const int32_t* NUG) {
  constexpr int places = 7;          // of a joint in the table of equations
  constexpr std::int64_t shift = 3;  // of an equation in the solution
  const std::int32_t pos = solid_position(*IELEM);
  if (pos == 0) return;
  SOLID_RECORD& record = SOLANAELEM.SOLID_REC(pos);
  const MODEL_DATA_READER D(A);
  double work[WORK_VALUES] = {};
  if (D.INTEGER(*IOFF) == SOLID_CODE) {
    *NN = record.NNODE;
    const std::int64_t table = D.INTEGER(EQUATION_TABLE);
    for (std::int32_t k = 1; k <= std::min(*NN, MOST_SOLID_NODES); ++k) {
      const std::int64_t joint = D.INTEGER(std::int64_t{record.NODE_OFF(k)} + NODE_JOINT);
      for (int j = 1; j <= FREEDOMS; ++j) {
        const std::int64_t equation = D.INTEGER(table + (joint - 1) * places + j);
        if (equation > 0 && equation + shift <= *NUG) work[3 * (k - 1) + j - 1] = UG[equation + shift - 1];
      }
    }
  }
  record.U_ELEM = MATRIX<3, SOLID_ROOM>{};
  std::copy_n(work, 3 * bounded(*NN), record.U_ELEM.data());
}
