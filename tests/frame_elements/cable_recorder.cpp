// cable_recorder.cpp: the recorder.
#include "cable_recorder.h"

#include <algorithm>

#include "finites/services.h"

namespace cable_recorder {

recorded_calls& calls() {
  static recorded_calls recorded;
  return recorded;
}

prepared_answers& answers() {
  static prepared_answers prepared;
  return prepared;
}

void reset() {
  calls() = recorded_calls{};
  answers() = prepared_answers{};
}

}  // namespace cable_recorder

using cable_recorder::answers;
using cable_recorder::calls;

// Visible, so that they go before those of the cable library.
extern "C" __attribute__((visibility("default"))) void CASE_1_L_0_3D2(
    const std::int32_t* elem, const double* X1, const double* X2, const double* area, const double* E, const double* L0,
    const double* e, const double* w, double* F, double* tension1, double* tension2, std::int32_t* status) {
  ++calls().equilibria;
  calls().equilibrium = {*elem, {X1[0], X1[1], X1[2]}, {X2[0], X2[1], X2[2]}, {w[0], w[1], w[2]}, *area, *E, *L0, *e};
  std::copy_n(answers().F.data(), 6, F);
  *tension1 = 71.0;
  *tension2 = 72.0;
  *status = answers().equilibrium_status;
}

// Even when it fails it leaves a matrix behind: the caller must not pass that on.
extern "C" __attribute__((visibility("default"))) void CALC_KT_TANGENT(
    const std::int32_t* elem, const double* X1, const double* X2, const double* F, const double* area, const double* E,
    const double* L0, const double* w, const double* e, double* KT, std::int32_t* status) {
  ++calls().tangents;
  calls().tangent = {*elem, {X1[0], X1[1], X1[2]}, {X2[0], X2[1], X2[2]}, {w[0], w[1], w[2]}, *area, *E, *L0, *e};
  std::copy_n(F, 6, calls().F.data());
  std::copy_n(answers().KT.data(), 36, KT);
  *status = answers().tangent_status;
}
