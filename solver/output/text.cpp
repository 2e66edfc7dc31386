// text.cpp: where formatting into a buffer is instantiated.
#include "output/text.h"

namespace solver {

std::string table_field(const std::string& name) {
  if (name.find_first_of(",\"\n") == std::string::npos) return name;
  std::string quoted = "\"";
  for (const char letter : name) quoted += letter == '"' ? "\"\"" : std::string(1, letter);
  return quoted + '"';
}

void append_formatted(fmt::memory_buffer& text, fmt::string_view format, fmt::format_args arguments) {
  fmt::vformat_to(fmt::appender(text), format, arguments);
}

}  // namespace solver
