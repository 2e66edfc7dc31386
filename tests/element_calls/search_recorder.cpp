// search_recorder.cpp: the recording search.
#include "search_recorder.h"

#include "finites/services.h"

namespace {

bool recording = true;

std::vector<recorded_search>& searches() {
  static std::vector<recorded_search> all;
  return all;
}

}  // namespace

const std::vector<recorded_search>& recorded_searches() { return searches(); }
void forget_searches() { searches().clear(); }
void record_searches(bool on) { recording = on; }

extern "C" void QFIND_SORT_INTEGER(const std::int32_t* count, const std::int32_t* key, const std::int32_t* sorted,
                                   std::int32_t* pos) {
  if (recording) searches().push_back({*key, sorted, std::vector<std::int32_t>(sorted, sorted + *count)});
  *pos = 0;
  for (std::int32_t i = 0; i < *count && *pos == 0; ++i) {
    if (sorted[i] == *key) *pos = i + 1;
  }
}
