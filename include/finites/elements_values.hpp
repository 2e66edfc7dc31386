// elements_values.hpp: what the classes of elements.hpp take and return: views, vectors, matrices, and how a call tells
// that it has failed.
#ifndef FINITES_ELEMENTS_VALUES_HPP
#define FINITES_ELEMENTS_VALUES_HPP

#if __cplusplus < 201703L
#error "elements.hpp needs C++17: compile with -std=c++17 or later"
#endif

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <iterator>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>

#include "finites/elements.h"

namespace finites {

using point = std::array<double, 3>;

// A pointer and a size: what a call reads or fills, made from anything contiguous (array, std::array, std::vector,
// vector, matrix, a list in braces for what is read). It owns nothing. Without values it says "none" where a call
// allows that.
template <class T>
class view {
 public:
  constexpr view() = default;
  constexpr view(T* data, std::size_t size) : data_(data), size_(size) {}
  // A list lives until the end of the call that it is written in.
  constexpr view(std::initializer_list<std::remove_const_t<T>> list) : size_(list.size()) {
    static_assert(std::is_const_v<T>, "a list can be read only");
    data_ = list.begin();
  }
  template <class VALUES,
            class = std::enable_if_t<std::is_convertible_v<decltype(std::data(std::declval<VALUES&>())), T*>>>
  constexpr view(VALUES&& values) : data_(std::data(values)), size_(static_cast<std::size_t>(std::size(values))) {}

  constexpr T* data() const { return data_; }
  constexpr std::size_t size() const { return size_; }
  constexpr bool empty() const { return size_ == 0; }
  constexpr T& operator[](std::size_t i) const { return data_[i]; }
  constexpr T* begin() const { return data_; }
  constexpr T* end() const { return data_ + size_; }

 private:
  T* data_ = nullptr;
  std::size_t size_ = 0;
};

// Up to CAPACITY values inside the object; how many is known at run time. Numbered from 0.
template <int CAPACITY>
class vector {
 public:
  vector() = default;
  explicit vector(int size) : size_(size) {}
  vector(const vector& other) : size_(other.size_) { std::copy(other.begin(), other.end(), values_); }
  vector& operator=(const vector& other) {
    size_ = other.size_;
    std::copy(other.begin(), other.end(), values_);
    return *this;
  }

  int size() const { return size_; }
  bool empty() const { return size_ == 0; }
  double& operator[](int i) { return values_[i]; }
  const double& operator[](int i) const { return values_[i]; }
  double* data() { return values_; }
  const double* data() const { return values_; }
  double* begin() { return values_; }
  double* end() { return values_ + size_; }
  const double* begin() const { return values_; }
  const double* end() const { return values_ + size_; }

 private:
  int size_ = 0;
  double values_[CAPACITY];
};

// A square matrix of an order up to CAPACITY. K(i, j) is row i, column j, numbered from 0, as elsewhere in C++; the
// storage is column-major without gaps, as in elements.h, so that data() goes to Fortran, LAPACK and Eigen as it is.
template <int CAPACITY>
class matrix {
 public:
  matrix() = default;
  explicit matrix(int order) : order_(order) {}
  matrix(const matrix& other) : order_(other.order_) { std::copy_n(other.values_, size(), values_); }
  matrix& operator=(const matrix& other) {
    order_ = other.order_;
    std::copy_n(other.values_, size(), values_);
    return *this;
  }

  int rows() const { return order_; }
  int columns() const { return order_; }
  int size() const { return order_ * order_; }
  bool empty() const { return order_ == 0; }
  double& operator()(int i, int j) { return values_[j * order_ + i]; }
  const double& operator()(int i, int j) const { return values_[j * order_ + i]; }
  double* data() { return values_; }
  const double* data() const { return values_; }

 private:
  int order_ = 0;
  double values_[CAPACITY * CAPACITY];
};

// A call that has failed. what() names the call, in a batch the element, and says what is wrong.
class error : public std::runtime_error {
 public:
  error(finites_status status, const char* call, const std::string& text, std::int64_t element = -1)
      : std::runtime_error(std::string(call) + (element < 0 ? "" : ": element " + std::to_string(element)) + ": " +
                           text),
        status_(status),
        call_(call),
        element_(element) {}

  finites_status status() const { return status_; }
  const char* call() const { return call_; }         // "finites_plate_stiffness"
  std::int64_t element() const { return element_; }  // of a batch, from 0; -1: not one element's fault

 private:
  finites_status status_;
  const char* call_;
  std::int64_t element_;
};

// The last argument of every call, which is mostly left out. Left out, a failure throws finites::error. A
// finites_status in its place receives the status and nothing is thrown; the answer is then empty:
//
//     auto K = plate.stiffness();            // may throw
//     finites_status status;
//     auto K = plate.stiffness(status);      // K.empty() unless status is FINITES_OK
class outcome {
 public:
  outcome() = default;
  outcome(finites_status& status) : status_(&status) {}

  // Whether the call has succeeded.
  bool of(finites_status status, const char* call, std::int64_t element = -1) const {
    if (status_ == nullptr && status != FINITES_OK) throw error(status, call, finites_text(status), element);
    if (status_ != nullptr) *status_ = status;
    return status == FINITES_OK;
  }

  // Whether an argument has the values that the call reads or fills. Too few, or of a single element another number
  // than its own, are FINITES_RANGE.
  bool fits(bool fitting, const char* call, const char* argument, std::size_t size, std::size_t needed) const {
    if (fitting) return true;
    if (status_ == nullptr) {
      throw error(
          FINITES_RANGE, call,
          std::string(argument) + " has " + std::to_string(size) + " values in place of " + std::to_string(needed));
    }
    *status_ = FINITES_RANGE;
    return false;
  }

 private:
  finites_status* status_ = nullptr;
};

namespace detail {

// An argument of a fixed number of values; `none` is one that may be left out.
inline bool fits(const outcome& how, const char* call, const char* argument, view<const double> values, int needed,
                 bool may_be_none = false) {
  const auto count = static_cast<std::size_t>(needed);
  return how.fits(values.size() == count || (may_be_none && values.empty()), call, argument, values.size(), count);
}

template <int CAPACITY, class CALL>
matrix<CAPACITY> matrix_of(int order, const outcome& how, const char* name, const CALL& call) {
  matrix<CAPACITY> answer(order);
  if (!how.of(call(answer.data()), name)) return matrix<CAPACITY>();
  return answer;
}

template <int CAPACITY, class CALL>
vector<CAPACITY> vector_of(int size, const outcome& how, const char* name, const CALL& call) {
  vector<CAPACITY> answer(size);
  if (!how.of(call(answer.data()), name)) return vector<CAPACITY>();
  return answer;
}

// A struct of the C calls; zeros after a failure.
template <class ANSWER, class CALL>
ANSWER struct_of(const outcome& how, const char* name, const CALL& call) {
  ANSWER answer{};
  how.of(call(&answer), name);
  return answer;
}

// Nodes into the array of a description; what is beyond it does not fit, and the count of nodes says so to the calls.
template <std::size_t NODES>
void place(double (&xyz)[NODES][3], view<const point> nodes) {
  for (std::size_t n = 0; n < NODES && n < nodes.size(); ++n) {
    for (std::size_t i = 0; i < 3; ++i) xyz[n][i] = nodes[n][i];
  }
}

}  // namespace detail

}  // namespace finites

#endif
