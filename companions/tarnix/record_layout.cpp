// record_layout.cpp: TARNIX_RECORD_LAYOUT, for callers that compare their declarations with the shared records.
#include "finites/record_layout.h"

#include <cstdint>
#include <string_view>

#include "tarnix.h"

namespace {

struct place {
  std::string_view record, field;  // an empty field is the record itself
  std::int64_t offset, size;
};

#define TARNIX_RECORD_PLACE(NAME, SIZE) {#NAME, "", 0, SIZE},
#define TARNIX_FIELD_PLACE(RECORD, NAME, OFFSET, SIZE) {#RECORD, #NAME, OFFSET, SIZE},
constexpr place PLACES[] = {FINITES_RECORD_LAYOUT(TARNIX_RECORD_PLACE, TARNIX_FIELD_PLACE)};
#undef TARNIX_RECORD_PLACE
#undef TARNIX_FIELD_PLACE

// Texts of counted length, blanks at the end not counted.
std::string_view name_of(const char* text, std::int32_t length) {
  if (length <= 0) return {};
  const std::string_view name(text, static_cast<std::size_t>(length));
  return name.substr(0, name.find_last_not_of(' ') + 1);
}

}  // namespace

void TARNIX_RECORD_LAYOUT(const char* record, const std::int32_t* record_length, const char* field,
                          const std::int32_t* field_length, std::int64_t* offset, std::int64_t* size) {
  const std::string_view of_record = name_of(record, *record_length);
  const std::string_view of_field = name_of(field, *field_length);
  *offset = *size = -1;
  for (const place& p : PLACES) {
    if (p.record != of_record || p.field != of_field) continue;
    *offset = p.offset;
    *size = p.size;
    return;
  }
}
