// stored_state.cpp: what a layered surface point holds.
#include "shells/plastic/stored_state.h"

#include <cstdint>

#include "finites/records.h"
#include "plate_material/layered_axes.h"
#include "plate_material/layered_store.h"

namespace {

VECTOR<COMPONENTS> local_values(const PLATEELEM_RECORD& EL, const ARRAY_REFERENCE<double, 2>& field, std::int32_t k) {
  VECTOR<COMPONENTS> v;
  VEC6_TO_LOCAL5(EL, global_values(field, k), v);
  return v;
}

}  // namespace

LAYERED_POINT_RESULT stored_layered_point(const PLATEELEM_RECORD& EL, const POINT_STATE_RECORD& state, std::int32_t n) {
  const THICKNESS_SECTION rule(n, EL.THICKNESS);
  LAYERED_POINT_RESULT result{};
  for (std::int32_t k = 1; k <= n; ++k) {
    const VECTOR<COMPONENTS> s = local_values(EL, state.SIG, k);
    const LANES w = rule.weights[k - 1];
    for (int i = 1; i <= 3; ++i) {
      result.forces(i) += w[0] * s(i);
      result.forces(3 + i) += w[1] * s(i);
    }
    for (int i = 1; i <= 2; ++i) result.forces(6 + i) += w[0] * s(3 + i);
  }
  const std::int32_t shown[HEIGHTS] = {1, middle_point(n), n};
  for (int at = 0; at < HEIGHTS; ++at) {
    const VECTOR<COMPONENTS> stress = local_values(EL, state.SIG, shown[at]);
    const VECTOR<COMPONENTS> plastic = local_values(EL, state.EP_CUR, shown[at]);
    for (int i = 1; i <= COMPONENTS; ++i) {
      result.stress(COMPONENTS * at + i) = stress(i);
      result.plastic(COMPONENTS * at + i) = plastic(i);
    }
  }
  return result;
}
