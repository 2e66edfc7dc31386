// solid_call.cpp: what every call of a solid does before its operation, and when it fails.
#include "solids/solid_call.h"

#include "finites/services.h"

namespace {

constexpr std::int32_t MESSAGE_SINGULAR = 1228;
constexpr std::int32_t ONE_INTEGER = 10;
constexpr std::int32_t MESSAGE_LENGTH = 500;

}  // namespace

void report_solid(std::int32_t number, std::int32_t* IERR, char* MSG) {
  const std::int32_t zero = 0;
  const char* const none = "";
  WERRTU(&MESSAGE_SINGULAR, &ONE_INTEGER, &number, &zero, &zero, &zero, &zero, &zero, &zero, &zero, &zero, none, &zero,
         none, &zero, none, &zero, IERR, MSG, &MESSAGE_LENGTH);
}

bool prepare_solid(SOLID_CALL& S, std::int32_t pos, std::int32_t NN, const MODEL_DATA_READER& A) {
  S.KIND = 0;
  S.NN = NN;
  SOLID_KIND_OF_NODES(NN, S.KIND);
  if (S.KIND == 0 || NN > MOST_SOLID_NODES) return false;
  S.linear = linear_kind(S.KIND);
  S.points = S.linear->points;
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
  edge_differences(*S.linear, S.XYZ, S.XE);
  return true;
}
