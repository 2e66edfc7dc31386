// observed.h: the memory that one call may write, watched from before the call on.
#ifndef FINITES_TESTS_OBSERVED_H
#define FINITES_TESTS_OBSERVED_H

#include <cstdint>
#include <string>
#include <vector>

#include "finites/views.hpp"

namespace every_call {

// An output before the call: NaN.
std::vector<double> unwritten(int count);

// The bits of a value. All values that are not numbers count as one: their sign and payload are not part of the
// arithmetic.
std::uint64_t bits_of(double value);

class observed {
 public:
  // Before the call.
  void watch(const double* first, int count) { add({first, nullptr, nullptr, nullptr, count}); }
  void watch(const float* first, int count) { add({nullptr, first, nullptr, nullptr, count}); }
  void watch(const std::int32_t* first, int count) { add({nullptr, nullptr, first, nullptr, count}); }
  void watch(const char* first, int count) { add({nullptr, nullptr, nullptr, first, count}); }
  void watch(const std::vector<double>& values) { watch(values.data(), static_cast<int>(values.size())); }
  template <int N>
  void watch(const VECTOR<N>& v) {
    watch(v.data(), N);
  }
  template <int M, int N>
  void watch(const MATRIX<M, N>& m) {
    watch(m.data(), M * N);
  }
  template <int RANK>
  void watch(const ARRAY_REFERENCE<double, RANK>& field) {  // contiguous
    if (!ALLOCATED(field)) return;
    std::int64_t count = 1;
    for (const ARRAY_DIMENSION& dimension : field.DIMENSION) count *= dimension.EXTENT;
    watch(field.BASE, static_cast<int>(count));
  }

  // After the call.
  void read();
  // Does the memory hold the values still that were read? To the bit.
  bool holds() const;
  const std::vector<double>& values() const { return after_; }
  std::uint64_t hash() const;  // FNV-1a over the bits of the values (Fowler, Noll and Vo)
  // Did the call write anything but zeros and values that are not numbers? A value that stays does not count.
  bool shows_something() const;

 private:
  struct place {
    const double* reals;
    const float* narrow;
    const std::int32_t* integers;
    const char* text;
    int count;
  };
  void add(const place& p);
  static double value_at(const place& p, int i);
  static void append(const place& p, std::vector<double>& values);

  std::vector<place> places_;
  std::vector<double> before_, after_;
};

// What gets the answer of every call. Calls of several threads arrive at listeners of their own.
class listener {
 public:
  listener() = default;
  listener(const listener&) = delete;
  listener& operator=(const listener&) = delete;
  virtual ~listener() = default;
  // `what` distinguishes the calls of one routine by what they do: the operation, the kind of element.
  virtual void called(const char* routine, const std::string& what, const observed& written) = 0;
  // How often a call is made whose answer does not change when it is made again.
  virtual int repetitions() const { return 1; }
};

// Makes a call and reports it.
template <class CALL>
void tell(listener& to, const char* routine, const std::string& what, observed& written, const CALL& call) {
  call();
  written.read();
  to.called(routine, what, written);
}

// The same for a call that gives its answer as often as it is made: each repetition has to give the first one's bits,
// or its own are reported.
template <class CALL>
void tell_repeated(listener& to, const char* routine, const std::string& what, observed& written, const CALL& call) {
  call();
  written.read();
  for (int i = 1; i < to.repetitions() && written.holds(); ++i) call();
  if (!written.holds()) written.read();
  to.called(routine, what, written);
}

// Part of the label of a call whose answer is zero whatever it is given.
constexpr const char* ZERO_BY_RULE = "zero_by_rule";

// A label: tag("operation", 3) is "operation_3".
std::string tag(const char* name, int number);

}  // namespace every_call

#endif
