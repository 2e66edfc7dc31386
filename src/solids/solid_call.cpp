// solid_call.cpp: what every call of a solid does before its operation, and when it fails.
#include "solids/solid_call.h"

#include "finites/services.h"

namespace {

constexpr std::int32_t MESSAGE_SINGULAR = 1228;
constexpr std::int32_t ONE_INTEGER = 10;

}  // namespace

void report_solid(std::int32_t number, std::int32_t* IERR, char* MSG) {
  const std::int32_t zero = 0;
  const char* const none = "";
  WERRTU(&MESSAGE_SINGULAR, &ONE_INTEGER, &number, &zero, &zero, &zero, &zero, &zero, &zero, &zero, &zero, none, &zero,
         none, &zero, none, &zero, IERR, MSG, &MESSAGE_LENGTH);
}

bool set_solid_kind(SOLID_CALL& S, std::int32_t NN) {
  S.KIND = 0;
  S.NN = NN;
  SOLID_KIND_OF_NODES(NN, S.KIND);
  if (S.KIND == 0 || NN > MOST_SOLID_NODES) return false;
  S.linear = linear_kind(S.KIND);
  S.points = S.linear->points;
  return true;
}

void set_solid_geometry(SOLID_CALL& S, const SOLID_VECTORS& global) {
  SOLIDELEM_AXE_DBL(&S.NN, global.data(), S.AX.data());
  SOLID_XYZ_TO_LOCAL(S.AX, S.NN, global, S.XYZ);
  edge_differences(*S.linear, S.XYZ, S.XE);
}

bool prepare_solid(SOLID_CALL& S, std::int32_t pos, std::int32_t NN, const MODEL_DATA_READER& A) {
  if (!set_solid_kind(S, NN)) return false;
  S.record = &SOLANAELEM.SOLID_REC(pos);
  S.U = S.record->U_ELEM.data();
  S.nonlinear = HAS_ELEMENT(SOLANAELEM.SOLID_NL_REC, pos) ? &SOLANAELEM.SOLID_NL_REC(pos) : nullptr;
  S.factor = static_cast<double>(S.record->STIFF_FACTOR);
  const std::int64_t material = S.record->MAT_OFF;
  S.E = A(material + MATERIAL_YOUNG);
  S.nu = A(material + MATERIAL_POISSON);
  S.unit_weight = A(material + MATERIAL_UNIT_WEIGHT);
  SOLID_VECTORS global;
  SOLID_GATHER_XYZ(*S.record, A, NN, global);
  set_solid_geometry(S, global);
  return true;
}
