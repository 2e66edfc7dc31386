// findings.cpp: the texts of findings, and the checks of single numbers.
#include "plain_calls/checks/findings.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>

SENTENCE& SENTENCE::operator<<(const char* text) {
  if (text == nullptr) return *this;
  const std::size_t length = std::min(std::strlen(text), sizeof text_ - 1 - used_);
  std::memcpy(text_ + used_, text, length);
  used_ += length;
  text_[used_] = '\0';
  return *this;
}

SENTENCE& SENTENCE::operator<<(std::int64_t number) {
  char digits[32];
  std::snprintf(digits, sizeof digits, "%lld", static_cast<long long>(number));
  return *this << static_cast<const char*>(digits);
}

SENTENCE& SENTENCE::operator<<(double number) {
  char digits[32];
  std::snprintf(digits, sizeof digits, "%.6g", number);
  return *this << static_cast<const char*>(digits);
}

SUBJECT CHECK::field(const BLOCK& block, const FIELD_NAME& name) const {
  const std::int64_t place = block.start + name.place;
  SENTENCE s;
  if (block.letter == nullptr) {
    s << "A(" << name.text << ")";
  } else {
    s << "A(" << block.letter << " + " << name.text << ") = A(" << place << ")";
  }
  return {s, A(place)};
}

SUBJECT record_field(const char* name, const char* array, std::int64_t index, double value) {
  return {SENTENCE() << name << " of " << array << "(" << index << ")", value};
}

void CHECK::find(std::int32_t severity, std::int32_t code, const SENTENCE& sentence) {
  if (count_ < capacity_) {
    SENTENCE whole;
    if (elem_ > 0) {
      whole << "element " << std::int64_t{elem_};
      if (number_ > 0 && number_ != elem_) whole << " (number " << std::int64_t{number_} << ")";
      whole << ": ";
    }
    whole << sentence.text();
    finites_finding& to = findings_[count_];
    to.severity = severity;
    to.code = code;
    to.element = elem_;
    to.number = number_;
    std::memset(to.text, 0, sizeof to.text);
    std::memcpy(to.text, whole.text(), std::strlen(whole.text()));
  }
  ++count_;
}

void CHECK::find(std::int32_t severity, std::int32_t code, const SUBJECT& subject, const char* effect) {
  find(severity, code, SENTENCE() << subject.name.text() << " is " << subject.value << ": " << effect);
}

bool CHECK::finite(const SUBJECT& subject) {
  if (std::isfinite(subject.value)) return true;
  find(ERROR, FINITES_FOUND_NOT_FINITE, subject, "what is computed with it becomes NaN or infinite; fill it");
  return false;
}

bool CHECK::above_zero(const SUBJECT& subject, std::int32_t code, std::int32_t severity, const char* effect_of_zero) {
  if (!finite(subject)) return false;
  if (subject.value > 0.0) return true;
  if (subject.value == 0.0) {
    find(severity, code, subject, effect_of_zero);
  } else {
    find(std::max(severity, WARNING), code, subject, "it must be above 0; the stiffness is not positive");
  }
  return false;
}

bool CHECK::has_block(const SUBJECT& pointer, std::int64_t last, const char* what) {
  const std::int64_t start = TRUNCATED(pointer.value);
  if (start < 1) {
    find(ERROR, FINITES_FOUND_NO_BLOCK,
         SENTENCE() << pointer.name.text() << " is " << pointer.value << ": the library takes the header of A, or what "
                    << "lies before it, for the " << what << "; set it to the start of the block");
    return false;
  }
  if (A.has(start) && A.has(start + last)) return true;
  find(ERROR, FINITES_FOUND_BLOCK_OUTSIDE,
       SENTENCE() << pointer.name.text() << " is " << pointer.value << ": the " << what << " goes up to A("
                  << start + last << "), but A has " << A.length()
                  << " reals; the library reads beyond them or crashes");
  return false;
}
