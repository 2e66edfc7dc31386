// text.h: text of many pieces. What formats it is compiled once, in text.cpp: fmt::format_to brings all of it into
// every file.
#ifndef FINITES_SOLVER_TEXT_H
#define FINITES_SOLVER_TEXT_H

#include <string>

#include <fmt/format.h>

namespace solver {

// A name as a field of a table: in quotes where it has a comma or a quote, which is doubled (RFC 4180).
std::string table_field(const std::string& name);

void append_formatted(fmt::memory_buffer& text, fmt::string_view format, fmt::format_args arguments);

template <class... ARGUMENTS>
void append(fmt::memory_buffer& text, fmt::format_string<ARGUMENTS...> format, const ARGUMENTS&... arguments) {
  append_formatted(text, format, fmt::make_format_args(arguments...));
}

}  // namespace solver

#endif
