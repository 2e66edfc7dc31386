// plugin_recorder.cpp: the recorder.
#include "plugin_recorder.h"

#include <algorithm>

#include "frame_model.h"

namespace plugin_recorder {

recorded_calls& calls() {
  static recorded_calls recorded;
  return recorded;
}

std::vector<double>& rotation() {
  static std::vector<double> R = support::unit_rotation();
  return R;
}

namespace {

answer& prepared() {
  static answer a = answer::stand_in;
  return a;
}

// What the slot gets when a stand-in is asked for.
void stand_in_rotation(const std::int32_t* I, const double* A, const std::int32_t* NDIM, double* R,
                       const std::int32_t* POS) {
  recorded_calls& call = calls();
  ++call.rotations;
  call.I = *I;
  call.A = A;
  call.extent = *NDIM;
  call.pos = *POS;
  std::copy_n(rotation().data(), 144, R);
}

}  // namespace

void reset(answer a) {
  calls() = recorded_calls{};
  rotation() = support::unit_rotation();
  prepared() = a;
}

}  // namespace plugin_recorder

void real_load(const char* library, const std::int32_t* library_length, const char* routine,
               const std::int32_t* routine_length, void** slot) __asm__("__real_LOAD_DLL_SUBROUTINE");

// What the linker calls instead of LOAD_DLL_SUBROUTINE.
void stand_in_load(const char* library, const std::int32_t* library_length, const char* routine,
                   const std::int32_t* routine_length, void** slot) __asm__("__wrap_LOAD_DLL_SUBROUTINE");
void stand_in_load(const char* library, const std::int32_t* library_length, const char* routine,
                   const std::int32_t* routine_length, void** slot) {
  using namespace plugin_recorder;
  recorded_calls& call = calls();
  ++call.loads;
  call.library.assign(library, static_cast<std::size_t>(*library_length));
  call.routine.assign(routine, static_cast<std::size_t>(*routine_length));
  call.slot = slot;
  *slot = nullptr;
  if (prepared() == answer::stand_in) *slot = reinterpret_cast<void*>(&stand_in_rotation);
  if (prepared() == answer::loaded) real_load(library, library_length, routine, routine_length, slot);
}
