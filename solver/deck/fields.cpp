// fields.cpp: the text of one line: blanks, letters, fields between commas, numbers.
#include "deck/fields.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <system_error>

namespace solver::deck {

static bool is_blank(char c) { return c == ' ' || c == '\t' || c == '\r'; }
static bool is_digit(char c) { return c >= '0' && c <= '9'; }
// Not std::toupper: the locale of the user must not change what a deck means.
static char upper_letter(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

std::string_view trimmed(std::string_view s) {
  while (!s.empty() && is_blank(s.front())) s.remove_prefix(1);
  while (!s.empty() && is_blank(s.back())) s.remove_suffix(1);
  return s;
}

std::string upper(std::string_view s) {
  std::string result(s);
  std::transform(result.begin(), result.end(), result.begin(), upper_letter);
  return result;
}

std::string squeezed(std::string_view s) {
  std::string result = upper(s);
  result.erase(std::remove_if(result.begin(), result.end(), is_blank), result.end());
  return result;
}

std::string_view without_quotes(std::string_view s) {
  return s.size() > 2 && s.front() == '"' && s.back() == '"' ? trimmed(s.substr(1, s.size() - 2)) : s;
}

std::string in_quotes(std::string_view s) {
  constexpr std::size_t LONGEST = 40;
  std::string result = "'";
  for (const char c : s.substr(0, LONGEST)) {
    const auto byte = static_cast<unsigned char>(c);
    result += byte < 32 || byte == 127 ? '?' : c;
  }
  return result + (s.size() > LONGEST ? "...'" : "'");
}

// The comma that ends the first field; one between quotes is part of a name.
static std::size_t end_of_field(std::string_view line) {
  std::size_t at = line.find_first_of(",\"");
  while (at != std::string_view::npos && line[at] == '"') {
    const std::size_t closing = line.find('"', at + 1);
    at = line.find_first_of(closing == std::string_view::npos ? "," : ",\"",
                            closing == std::string_view::npos ? at : closing + 1);
  }
  return at;
}

bool split_fields(std::string_view line, std::vector<std::string_view>& fields) {
  line = trimmed(line);
  const bool quotes = line.find('"') != std::string_view::npos;
  while (!line.empty()) {
    const std::size_t comma = quotes ? end_of_field(line) : line.find(',');
    fields.push_back(trimmed(line.substr(0, comma)));
    if (comma == std::string_view::npos) return false;
    line.remove_prefix(comma + 1);
  }
  return true;
}

// The part that from_chars reads: it knows no plus sign.
static std::string_view without_plus(std::string_view field) {
  if (field.size() > 1 && field[0] == '+' && (is_digit(field[1]) || field[1] == '.')) field.remove_prefix(1);
  return field;
}

static number_fault whole_field(std::from_chars_result result, const char* end) {
  // from_chars stops at the end of what it knows, also when the value is too large.
  if (result.ec == std::errc::invalid_argument || result.ptr != end) return number_fault::NOT_A_NUMBER;
  return result.ec == std::errc() ? number_fault::NONE : number_fault::OUT_OF_RANGE;
}

number_fault parse_real(std::string_view field, double& value) {
  const std::string_view digits = without_plus(field);
  std::string with_e;  // Fortran programs write 1.5D+03
  const char* begin = digits.data();
  const char* end = begin + digits.size();
  if (digits.find_first_of("dD") != std::string_view::npos) {
    with_e.assign(digits);
    std::replace_if(
        with_e.begin(), with_e.end(), [](char c) { return c == 'd' || c == 'D'; }, 'E');
    begin = with_e.data();
    end = begin + with_e.size();
  }
  const number_fault fault = whole_field(std::from_chars(begin, end, value), end);
  return fault == number_fault::NONE && !std::isfinite(value) ? number_fault::NOT_FINITE : fault;
}

number_fault parse_integer(std::string_view field, int& value) {
  const std::string_view digits = without_plus(field);
  const char* end = digits.data() + digits.size();
  return whole_field(std::from_chars(digits.data(), end, value), end);
}

std::string text_of_real(double value) {
  char text[40];
  const std::to_chars_result end = std::to_chars(text, text + sizeof text, value);
  return {text, end.ptr};
}

bool holds_several(std::string_view field) {
  return looks_like_number(field) && field.find_first_of(" \t;") != std::string_view::npos;
}

std::string describe(number_fault fault, std::string_view field, bool integer) {
  if (field.empty()) return "the field is empty";
  switch (fault) {
    case number_fault::NOT_FINITE: return in_quotes(field) + " is not finite";
    case number_fault::OUT_OF_RANGE: return in_quotes(field) + " is beyond the numbers that can be held";
    default:
      return in_quotes(field) + (integer ? " is not an integer" : " is not a number") +
             (holds_several(field) ? ": fields are separated by commas" : "");
  }
}

bool looks_like_number(std::string_view field) {
  return !field.empty() && (is_digit(field[0]) || field[0] == '+' || field[0] == '-' || field[0] == '.');
}

}  // namespace solver::deck
