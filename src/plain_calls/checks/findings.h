// findings.h: how a check reads MODEL_DATA and the records without harm, and how it says what it finds.
#ifndef FINITES_FINDINGS_H
#define FINITES_FINDINGS_H

#include <cstddef>
#include <cstdint>

#include "finites/checks.h"
#include "finites/views.hpp"

constexpr std::int32_t NOTE = FINITES_SEVERITY_NOTE;
constexpr std::int32_t WARNING = FINITES_SEVERITY_WARNING;
constexpr std::int32_t ERROR = FINITES_SEVERITY_ERROR;

// A text in a buffer of fixed length: what does not fit is left out.
class SENTENCE {
 public:
  SENTENCE& operator<<(const char* text);
  SENTENCE& operator<<(std::int64_t number);
  SENTENCE& operator<<(double number);
  const char* text() const { return text_; }

 private:
  char text_[FINITES_FINDING_LENGTH] = "";
  std::size_t used_ = 0;
};

// MODEL_DATA within its length.
class GUARDED_DATA {
 public:
  GUARDED_DATA(const double* a, std::int64_t n) : a_(a), n_(a == nullptr || n < 0 ? 0 : n) {}
  std::int64_t length() const { return n_; }
  bool has(std::int64_t i) const { return i >= 1 && i <= n_; }
  double operator()(std::int64_t i) const { return has(i) ? a_[i - 1] : 0.0; }
  std::int32_t INTEGER(std::int64_t i) const { return TRUNCATED((*this)(i)); }
  const double* address(std::int64_t i) const { return has(i) ? a_ + (i - 1) : nullptr; }

 private:
  const double* a_;
  std::int64_t n_;
};

// A name of fields.h with its number: NAMED(MODIFIER_BENDING).
struct FIELD_NAME {
  const char* text;
  std::int64_t place;
};
#define NAMED(NAME) (FIELD_NAME{#NAME, NAME})

// A block of MODEL_DATA and the letter that the documents write for its start; the header has none and starts at 0.
struct BLOCK {
  const char* letter;
  std::int64_t start;
};
constexpr BLOCK HEADER{nullptr, 0};

// A number with its name for a text: "A(k + MODIFIER_BENDING) = A(1359)", "HARDENING of material 3".
struct SUBJECT {
  SENTENCE name;
  double value;
};

// What a check works with: the data, the findings of the caller, and the element that they are of.
class CHECK {
 public:
  CHECK(const double* a, std::int64_t n, finites_finding* findings, std::int32_t capacity)
      : A(a, n), findings_(findings), capacity_(findings == nullptr ? 0 : capacity) {}

  const GUARDED_DATA A;

  void begin(std::int32_t elem, std::int32_t number) {
    elem_ = elem;
    number_ = number;
  }
  std::int32_t elem() const { return elem_; }
  std::int32_t count() const { return count_; }

  SUBJECT field(const BLOCK& block, const FIELD_NAME& name) const;

  void find(std::int32_t severity, std::int32_t code, const SENTENCE& sentence);
  // "<name> is <value>: <effect>".
  void find(std::int32_t severity, std::int32_t code, const SUBJECT& subject, const char* effect);

  // Each says false where it has found something: NaN and infinity; these and what is not above 0, a zero being of the
  // given severity (with its effect) and a negative value a warning.
  bool finite(const SUBJECT& subject);
  bool above_zero(const SUBJECT& subject, std::int32_t code, std::int32_t severity, const char* effect_of_zero);

  // Whether A holds a block from `start` up to its place `last`. `pointer` is the name of what holds the start.
  bool has_block(const SUBJECT& pointer, std::int64_t last, const char* what);

 private:
  finites_finding* findings_;
  std::int32_t capacity_;
  std::int32_t count_ = 0;
  std::int32_t elem_ = 0, number_ = 0;
};

// A value of a record: "<name> of <array>(<index>)".
SUBJECT record_field(const char* name, const char* array, std::int64_t index, double value);

// The element of an array that the library addresses without looking at flag or extents; null, with the finding,
// where that would read beyond it.
template <class T>
T* required_record(CHECK& check, const ARRAY_REFERENCE<T, 1>& array, std::int64_t subscript, const char* name) {
  if (array.BASE == nullptr) {
    check.find(ERROR, FINITES_FOUND_NO_RECORDS,
               SENTENCE() << "SOLANAELEM." << name
                          << " is missing: the library reads it through its address, and the process crashes; refer "
                             "it to an array of yours (REFER_TO, FINITES_REFER_1)");
    return nullptr;
  }
  const ARRAY_DIMENSION& d = array.DIMENSION[0];
  if (subscript < d.LOWER || subscript - d.LOWER >= d.EXTENT) {
    check.find(ERROR, FINITES_FOUND_NO_RECORD,
               SENTENCE() << "SOLANAELEM." << name << "(" << subscript << ") does not exist: its subscripts go from "
                          << d.LOWER << " to " << d.LOWER + d.EXTENT - 1
                          << "; the library reads what lies beyond the array, or crashes");
    return nullptr;
  }
  if (!ALLOCATED(array)) {
    check.find(WARNING, FINITES_FOUND_RECORD_FLAG,
               SENTENCE() << "SOLANAELEM." << name
                          << " has an address but the flag 0: the library reads it all the same; set ALLOCATED_FLAG to "
                             "1");
  }
  return &array(subscript);
}

// The element of an array that the library reads only where it is allocated; null where it is not, or where a flag
// without an address would crash.
template <class T>
T* optional_record(CHECK& check, const ARRAY_REFERENCE<T, 1>& array, std::int64_t subscript, const char* name) {
  if (!HAS_ELEMENT(array, subscript)) return nullptr;
  if (array.BASE != nullptr) return &array(subscript);
  check.find(ERROR, FINITES_FOUND_RECORD_FLAG,
             SENTENCE() << name
                        << " has the flag 1 but no address: the process crashes; set its flag to 0 or its BASE "
                           "to the array");
  return nullptr;
}

#endif
