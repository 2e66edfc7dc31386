// hinge_forces.cpp: GET_HINGE_FORCES, the current axial force P and moments My, Mz at an end of a member, and the part
// of them that comes from loads on the member.
//
//     load part     f v           f: load step of the state, v: end loads of the first load column, local axes
//     stored        F_END         FMODE 0
//     otherwise     F_END_STEP + F_END_ITER + load part    (second state: without F_END_ITER)
#include <algorithm>

#include "common/member_order.h"
#include "finites/fields.h"
#include "finites/finites.h"
#include "finites/records.h"
#include "finites/services.h"
#include "finites/views.hpp"
#include "hinges/yield_forces.h"

namespace {

// Kinds of element, A(I), whose load column holds three forces of each end in global axes.
constexpr std::int32_t FIRST_GLOBAL_KIND = 10, SECOND_GLOBAL_KIND = 14;

// The places of P, My and Mz of each end in a vector of end forces.
struct PLACES {
  int P, MY, MZ;
};
constexpr PLACES END_PLACES[2] = {{1, 5, 6}, {7, 11, 12}};

// The rotation of a member is in the nonlinear analysis library, which is looked up by name in every call. The lengths
// of the names include a terminator.
constexpr char LIBRARY_NAME[] = "Vornekal.DLL";
constexpr char ROUTINE_NAME[] = "NL_RotationMatrix_Beam";
constexpr std::int32_t LIBRARY_NAME_LENGTH = 13, ROUTINE_NAME_LENGTH = 23;

using ROTATION_ROUTINE = void (*)(const std::int32_t* I, const double* A, const std::int32_t* NDIM, double* R,
                                  const std::int32_t* POS);

// The loads of the first load column; rows that the array does not have are zero.
VECTOR<MEMBER_DOFS> member_loads(const ARRAY_REFERENCE<double, 2>& loads) {
  VECTOR<MEMBER_DOFS> v{};
  const ARRAY_DIMENSION& columns = loads.DIMENSION[1];
  if (columns.LOWER > 1 || columns.EXTENT < 2 - columns.LOWER) return v;
  const ARRAY_DIMENSION& rows = loads.DIMENSION[0];
  const auto last = std::min<std::int64_t>(MEMBER_DOFS, rows.LOWER + rows.EXTENT - 1);
  for (auto i = static_cast<int>(std::max<std::int64_t>(1, rows.LOWER)); i <= last; ++i) v(i) = loads(i, 1);
  return v;
}

// v: a global vector per end, at 1 to 3 and 4 to 6. Answer: the local vectors, at 1 to 3 and 7 to 9.
VECTOR<MEMBER_DOFS> turned(ROTATION_ROUTINE rotation, const VECTOR<MEMBER_DOFS>& v, std::int32_t I, const double* A,
                           const std::int32_t* NDIM, const std::int32_t* POS) {
  constexpr std::int32_t three = 3, twelve = MEMBER_DOFS;
  MATRIX<MEMBER_DOFS, MEMBER_DOFS> R{};
  rotation(&I, A, NDIM, R.data(), POS);
  VECTOR<MEMBER_DOFS> local{};
  MATMUL_R_V_DBL(R.data(), &v(1), &local(1), &three, &twelve);
  MATMUL_R_V_DBL(R.data(), &v(4), &local(7), &three, &twelve);
  return local;
}

// The loads at the places of an end; zero without a load array, which has no rotation either.
SECTION_FORCES loads_of_end(ROTATION_ROUTINE rotation, const PLACES& at, std::int32_t elem, const double* A,
                            const std::int32_t* NDIM, const std::int32_t* POS) {
  const ARRAY_REFERENCE<double, 2>& loads = SOLANAELEM.MEMBER_REC(*POS).MEMBER_LOADS;
  if (!ALLOCATED(loads)) return {0.0, 0.0, 0.0};
  VECTOR<MEMBER_DOFS> v = member_loads(loads);
  const MODEL_DATA_READER D(A);
  const std::int64_t I = (std::int64_t{elem} - 1) * D.INTEGER(ENTRY_STRIDE) + D.INTEGER(ENTRY_START);
  const std::int32_t kind = D.INTEGER(I);
  if (kind == FIRST_GLOBAL_KIND || kind == SECOND_GLOBAL_KIND) {
    v = turned(rotation, v, static_cast<std::int32_t>(I), A, NDIM, POS);
  }
  return {v(at.P), v(at.MY), v(at.MZ)};
}

// Whether the member has a record, and forces in the state that is asked for.
bool has_records(bool current, std::int32_t pos) {
  if (!HAS_ELEMENT(SOLANAELEM.MEMBER_REC, pos)) return false;
  if (current) return HAS_ELEMENT(SOLANAELEM.MEMBER_FORCES, pos);
  return HAS_ELEMENT(SOLANAELEM.ALT_STATE, 1) && HAS_ELEMENT(SOLANAELEM.ALT_STATE(1).MEMBER_FORCES, pos);
}

}  // namespace

void GET_HINGE_FORCES(const int32_t* IELEM, const double* A, const int32_t* NDIM, const int32_t* POS,
                      const int32_t* FMODE, const int32_t* END, const int32_t* SET, double* P, double* MY, double* MZ,
                      double* LP, double* LMY, double* LMZ) {
  *P = *MY = *MZ = *LP = *LMY = *LMZ = 0.0;
  void* slot = nullptr;
  LOAD_DLL_SUBROUTINE(LIBRARY_NAME, &LIBRARY_NAME_LENGTH, ROUTINE_NAME, &ROUTINE_NAME_LENGTH, &slot);
  if (slot == nullptr) return;
  if (*END != 1 && *END != 2) return;
  const bool current = *SET == CURRENT_STATE;
  if (!current && *SET != SECOND_STATE) return;
  if (!has_records(current, *POS)) return;

  const PLACES& at = END_PLACES[*END - 1];
  const SECTION_FORCES v = loads_of_end(reinterpret_cast<ROTATION_ROUTINE>(slot), at, *IELEM, A, NDIM, POS);
  const double f = current ? SOLANAELEM.LOAD_STEP : SOLANAELEM.ALT_STATE(1).LOAD_STEP;
  *LP = f * v.P;
  *LMY = f * v.MY;
  *LMZ = f * v.MZ;

  const bool stored = *FMODE == 0;
  if (current) {
    const MEMBER_FORCES_RECORD& F = SOLANAELEM.MEMBER_FORCES(*POS);
    const auto force = [&](int i, double load) {
      return stored ? F.F_END(i) : F.F_END_STEP(i) + F.F_END_ITER(i) + load;
    };
    *P = force(at.P, *LP);
    *MY = force(at.MY, *LMY);
    *MZ = force(at.MZ, *LMZ);
  } else {
    const ALT_FORCES_RECORD& F = SOLANAELEM.ALT_STATE(1).MEMBER_FORCES(*POS);
    const auto force = [&](int i, double load) { return stored ? F.F_END(i) : F.F_END_STEP(i) + load; };
    *P = force(at.P, *LP);
    *MY = force(at.MY, *LMY);
    *MZ = force(at.MZ, *LMZ);
  }
}
