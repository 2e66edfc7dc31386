// probe.cpp: "probe LIBRARY ROUTINE" ends with status 0 when the routine is available, with 3 when it is not.
#include <cstdint>
#include <cstring>

#include "finites/services.h"

int main(int count, char** arguments) {
  if (count != 3) return 2;
  const auto library_length = static_cast<std::int32_t>(std::strlen(arguments[1]));
  const auto routine_length = static_cast<std::int32_t>(std::strlen(arguments[2]));
  void* slot = nullptr;
  LOAD_DLL_SUBROUTINE(arguments[1], &library_length, arguments[2], &routine_length, &slot);
  return slot != nullptr ? 0 : 3;
}
