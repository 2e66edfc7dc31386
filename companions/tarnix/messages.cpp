// messages.cpp: the catalogue of numbered messages, and their formatting as a text of fixed length.
//
// A text of the catalogue has places for the values of the caller: {i1} to {i9} for its integers, {t1} to {t3} for its
// texts. A value that the caller did not give is written as a question mark.
#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "finites/services.h"

namespace {

struct message_entry {
  std::int32_t NUMBER;
  std::string_view TEXT;
};

// clang-format off
constexpr message_entry CATALOGUE[] = {
  {1228, "Solid element {i1}: the Jacobian is singular. Check the number of its nodes, their order "
         "and their positions."},
  {1264, "Cable element {i1}: {t2} ended with status {i2} (called by {t1})."},
};
// clang-format on

constexpr int MOST_INTEGERS = 9;
constexpr int MOST_TEXTS = 3;

struct given_values {
  const std::int32_t* INTEGER[MOST_INTEGERS];
  const char* TEXT[MOST_TEXTS];
  const std::int32_t* LENGTH[MOST_TEXTS];
  int INTEGERS_GIVEN;
  int TEXTS_GIVEN;
};

// Writes into a text of fixed length; what does not fit is cut off.
class fixed_text {
 public:
  fixed_text(char* base, std::size_t length) : at_(base), end_(base + length) {}

  void append(std::string_view text) {
    const std::size_t count = std::min(text.size(), static_cast<std::size_t>(end_ - at_));
    if (count > 0) std::memcpy(at_, text.data(), count);
    at_ += count;
  }
  void append(std::int32_t number) {
    char digits[11];  // a sign and ten digits
    const auto [last, error] = std::to_chars(digits, digits + sizeof digits, number);
    static_cast<void>(error);  // every 32-bit integer fits
    append({digits, static_cast<std::size_t>(last - digits)});
  }
  void fill_with_blanks() { at_ = std::fill_n(at_, end_ - at_, ' '); }

 private:
  char* at_;
  char* end_;
};

// A text in a field: up to its terminator, if it has one, without the blanks that fill the field.
std::string_view trimmed(const char* text, std::int32_t length) {
  if (text == nullptr || length < 1) return {};
  std::string_view field(text, static_cast<std::size_t>(length));
  field = field.substr(0, field.find('\0'));
  const std::size_t last = field.find_last_not_of(' ');
  return last == std::string_view::npos ? std::string_view{} : field.substr(0, last + 1);
}

void append_value(fixed_text& out, char kind, int place, const given_values& values) {
  if (kind == 'i' && place >= 1 && place <= values.INTEGERS_GIVEN && values.INTEGER[place - 1] != nullptr) {
    out.append(*values.INTEGER[place - 1]);
  } else if (kind == 't' && place >= 1 && place <= values.TEXTS_GIVEN && values.LENGTH[place - 1] != nullptr) {
    out.append(trimmed(values.TEXT[place - 1], *values.LENGTH[place - 1]));
  } else {
    out.append("?");
  }
}

// Copies the pattern; each place {kind, digit} takes its value.
void format(fixed_text& out, std::string_view pattern, const given_values& values) {
  while (!pattern.empty()) {
    const std::size_t open = std::min(pattern.find('{'), pattern.size());
    out.append(pattern.substr(0, open));
    pattern.remove_prefix(open);
    if (pattern.size() < 4) break;
    append_value(out, pattern[1], pattern[2] - '0', values);
    pattern.remove_prefix(4);
  }
}

void format_message(fixed_text& out, std::int32_t number, const given_values& values) {
  for (const message_entry& message : CATALOGUE) {
    if (message.NUMBER == number) return format(out, message.TEXT, values);
  }
  out.append("Message ");
  out.append(number);
  out.append(": no text is known for this number.");
}

}  // namespace

void WERRTU(const std::int32_t* code, const std::int32_t* types, const std::int32_t* i1, const std::int32_t* i2,
            const std::int32_t* i3, const std::int32_t* i4, const std::int32_t* i5, const std::int32_t* i6,
            const std::int32_t* i7, const std::int32_t* i8, const std::int32_t* i9, const char* text1,
            const std::int32_t* length1, const char* text2, const std::int32_t* length2, const char* text3,
            const std::int32_t* length3, std::int32_t* ierr, char* msg, const std::int32_t* msg_length) {
  const std::int32_t given = types != nullptr ? std::max(*types, 0) : 0;
  const given_values values{{i1, i2, i3, i4, i5, i6, i7, i8, i9},
                            {text1, text2, text3},
                            {length1, length2, length3},
                            std::min(given / 10, MOST_INTEGERS),
                            std::min(given % 10, MOST_TEXTS)};
  if (ierr != nullptr) *ierr = *code;
  if (msg == nullptr || msg_length == nullptr || *msg_length < 1) return;
  fixed_text out(msg, static_cast<std::size_t>(*msg_length));
  format_message(out, *code, values);
  out.fill_with_blanks();
}
