// hinge_recorder.cpp: the recorder.
#include "hinge_recorder.h"

#include <algorithm>
#include <cstdint>

namespace hinge_recorder {

recorded_call& recorded() {
  static recorded_call call;
  return call;
}

std::vector<double>& prepared_KP() {
  static std::vector<double> KP(144, 0.0);
  return KP;
}

const double*& watched() {
  static const double* place = nullptr;
  return place;
}

double& axial_share() {
  static double share = 1.0;
  return share;
}

void reset() {
  recorded() = recorded_call{};
  prepared_KP().assign(144, 0.0);
  watched() = nullptr;
  axial_share() = 1.0;
}

namespace {

void record(const std::int32_t* number, const double* A, const std::int32_t* extent, const std::int32_t* elem,
            double* K, double* KP) {
  recorded_call& call = recorded();
  ++call.calls;
  call.number = *number;
  call.elem = *elem;
  call.extent = *extent;
  call.A = A;
  call.K.assign(K, K + 144);
  if (watched() != nullptr) call.K_ELASTIC.assign(watched(), watched() + 144);
  K[0] *= axial_share();
  std::copy_n(prepared_KP().data(), 144, KP);
}

}  // namespace

}  // namespace hinge_recorder

// What the linker calls instead of KSTIFB_PLAST.
void stand_in(const std::int32_t* number, const double* A, const std::int32_t* extent, const std::int32_t* elem,
              double* K, double* KP) __asm__("__wrap_KSTIFB_PLAST");
void stand_in(const std::int32_t* number, const double* A, const std::int32_t* extent, const std::int32_t* elem,
              double* K, double* KP) {
  hinge_recorder::record(number, A, extent, elem, K, KP);
}
