// text.cpp: where formatting into a buffer is instantiated.
#include "output/text.h"

namespace solver {

void append_formatted(fmt::memory_buffer& text, fmt::string_view format, fmt::format_args arguments) {
  fmt::vformat_to(fmt::appender(text), format, arguments);
}

}  // namespace solver
