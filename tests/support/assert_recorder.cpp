// assert_recorder.cpp: the recording ASSERTF.
#include "assert_recorder.h"

#include "finites/services.h"

namespace {

std::vector<std::string>& texts() {
  static std::vector<std::string> recorded;
  return recorded;
}

}  // namespace

namespace support {

const std::vector<std::string>& recorded_assertions() { return texts(); }
void forget_assertions() { texts().clear(); }

}  // namespace support

// Visible, so that calls from shared libraries find it too.
extern "C" __attribute__((visibility("default"))) void ASSERTF(const char* text, const std::int32_t* length,
                                                               const std::int32_t* condition) {
  if (*condition == 0) texts().emplace_back(text, static_cast<std::size_t>(*length));
}
