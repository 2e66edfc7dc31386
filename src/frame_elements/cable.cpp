// cable.cpp: KSTIFT_CATENARY, the tangent stiffness of a hanging cable. The cable library has the mechanics (exact
// elastic catenary, Irvine, 1981); this file gathers input, chooses axes and reports failures.
#include <algorithm>
#include <array>
#include <string_view>

#include "common/clear.h"
#include "common/member_order.h"
#include "finites/fields.h"
#include "finites/finites.h"
#include "finites/services.h"
#include "finites/views.hpp"
#include "frame_elements/member_axes.h"

namespace {

constexpr std::int32_t MESSAGE_CABLE = 1264;
constexpr std::int32_t TWO_INTEGERS_TWO_TEXTS = 22;

struct CABLE_LOAD {
  VECTOR<3> w;
  double e;
};

// Weight per length, in the direction -y of the global axes.
CABLE_LOAD self_weight(double weight, double L) { return {{{0.0, -weight / L, 0.0}}, 0.0}; }

// A load case: load per length w in global axes and free strain e. A missing case or array leaves the cable without
// load.
CABLE_LOAD load_case(const ARRAY_REFERENCE<double, 2>& loads, std::int32_t number) {
  CABLE_LOAD load{};
  if (!ALLOCATED(loads)) return load;
  const ARRAY_DIMENSION& rows = loads.DIMENSION[0];
  const ARRAY_DIMENSION& cases = loads.DIMENSION[1];
  const bool has_case = number >= cases.LOWER && number - cases.LOWER < cases.EXTENT;
  const bool has_rows = rows.LOWER <= LOAD_ROW_X && LOAD_ROW_STRAIN - rows.LOWER < rows.EXTENT;
  if (!has_case || !has_rows) return load;
  for (int i = 1; i <= 3; ++i) load.w(i) = loads(LOAD_ROW_X + i - 1, number);
  load.e = loads(LOAD_ROW_STRAIN, number);
  return load;
}

// A text, padded with blanks to its field of 70 characters.
constexpr std::int32_t FIELD = 70;

std::array<char, FIELD> in_field(std::string_view text) {
  std::array<char, FIELD> field;
  field.fill(' ');
  std::copy_n(text.data(), std::min<std::size_t>(text.size(), FIELD), field.data());
  return field;
}

void report(std::int32_t number, std::int32_t status, std::string_view routine, int32_t* IERR, char* MSG) {
  const std::array<char, FIELD> caller = in_field("kStifT");
  const std::array<char, FIELD> failed = in_field(routine);
  const std::array<char, FIELD> none = in_field("");
  const std::int32_t zero = 0;
  WERRTU(&MESSAGE_CABLE, &TWO_INTEGERS_TWO_TEXTS, &number, &status, &zero, &zero, &zero, &zero, &zero, &zero, &zero,
         caller.data(), &FIELD, failed.data(), &FIELD, none.data(), &FIELD, IERR, MSG, &MESSAGE_LENGTH);
}

}  // namespace

void KSTIFT_CATENARY(const int32_t* MODE, const int32_t* IELEM, const int32_t* IOFF, const int32_t* ILOAD,
                     const double* A, const int32_t* /*NDIM*/, const double* T, double* K, double* KG, int32_t* IERR,
                     char* MSG) {
  const MODEL_DATA_READER D(A);
  const std::int64_t I = *IOFF;
  const std::int64_t S = D.INTEGER(I + MEMBER_SECTION);
  const std::int64_t M = D.INTEGER(I + MEMBER_MATERIAL);
  const std::int64_t N1 = D.INTEGER(I + MEMBER_NODE_1);
  const std::int64_t N2 = D.INTEGER(I + MEMBER_NODE_2);
  const MEMBER_RECORD& record = SOLANAELEM.MEMBER_REC(SOLANAELEM.ELEM_POS(*IELEM));
  const std::int32_t number = D.INTEGER(I + ELEM_ID);
  const double area = D(S + SECTION_AREA) * D(I + FACTOR_AREA);

  *IERR = 0;
  clear(KG, TRUSS_DOFS * TRUSS_DOFS);

  CABLE_LOAD load =
      *ILOAD < 1 ? self_weight(D(I + MEMBER_WEIGHT), record.LENGTH) : load_case(record.MEMBER_LOADS, *ILOAD);
  if (D.INTEGER(SECOND_ORDER) == GEOMETRIC_ADDED) {
    for (int i = 1; i <= 3; ++i) load.w(i) = SOLANA.LOAD_FACTOR * load.w(i);
    load.e = SOLANA.LOAD_FACTOR * load.e;
  }

  double F[TRUSS_DOFS];
  double tension1 = 0.0;
  double tension2 = 0.0;
  std::int32_t status = 0;
  const double* X1 = &D(N1 + NODE_X);
  const double* X2 = &D(N2 + NODE_X);
  const double& E = D(M + MEMBER_E1);
  const double& L0 = D(I + UNSTRESSED_LENGTH);
  CASE_1_L_0_3D2(&number, X1, X2, &area, &E, &L0, &load.e, load.w.data(), F, &tension1, &tension2, &status);
  if (status != 0) {
    clear(K, TRUSS_DOFS * TRUSS_DOFS);
    report(number, status, "Case_1_L_0_3D2", IERR, MSG);
    return;
  }
  CALC_KT_TANGENT(&number, X1, X2, F, &area, &E, &L0, load.w.data(), &load.e, K, &status);
  if (status != 0) {
    clear(K, TRUSS_DOFS * TRUSS_DOFS);
    report(number, status, "Calc_Kt_Tangent", IERR, MSG);
    return;
  }
  if (*MODE == MODE_LOCAL) {
    // The result is in global axes: K_local = T K T^T, the inverse of the rotation of a beam.
    constexpr std::int32_t n = TRUSS_DOFS;
    MATMUL_R_M_RT_DBL(T, K, &n, &ROTATION_ORDER, &n);
  }
}
