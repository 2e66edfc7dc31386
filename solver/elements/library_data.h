// library_data.h: the arrays that all groups of elements share: MODEL_DATA with its header, nodes and exchange area.
//
// The records of the common library are empty when this object is made, and again when it goes.
#ifndef FINITES_SOLVER_LIBRARY_DATA_H
#define FINITES_SOLVER_LIBRARY_DATA_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "elements/library_layout.h"
#include "finites/fields.h"
#include "finites/views.hpp"
#include "model/model.h"

namespace solver {

// The library keeps the constants of a material, and stiffnesses of springs and links, in single precision.
constexpr float single(double value) { return static_cast<float>(value); }

class library_data {
 public:
  explicit library_data(const model& m);  // which must outlive it
  ~library_data();
  library_data(const library_data&) = delete;
  library_data& operator=(const library_data&) = delete;

  const model& of() const { return model_; }
  const element& at(std::size_t element) const { return model_.elements[element]; }
  const library_layout& layout() const { return layout_; }

  // MODEL_DATA by its fields and, for calls, as an array with its length.
  MODEL_DATA A() { return MODEL_DATA(values_.data()); }
  double* values() { return values_.data(); }
  std::int32_t length() const { return count_of(values_); }

  // The exchange area of the calling thread: that of MODEL_DATA for the first one, an area of its own for each other.
  double* exchange() { return thread() == 0 ? values_.data() + EXCHANGE_START - 1 : areas_[thread() - 1].data(); }

  // Room for as many threads. From 0: the number of the calling one, which library_thread sets.
  void make_room(int threads) { areas_.resize(subscript(threads - 1)); }
  static std::size_t thread() { return thread_; }

  // The number of an element, and where its block starts: its fields are A(entry + 1) and on.
  static std::int32_t number(std::size_t element) { return static_cast<std::int32_t>(element) + 1; }
  std::int32_t entry(std::size_t element) const { return layout_.element(element); }

  // From now on stiffnesses hold the geometric stiffness of the stored state, or no longer do.
  void second_order(bool on) { A()(SECOND_ORDER) = on ? GEOMETRIC_ADDED : 0; }
  bool is_second_order() { return A()(SECOND_ORDER) == GEOMETRIC_ADDED; }

 private:
  const model& model_;
  const library_layout layout_;
  std::vector<double> values_;
  std::vector<std::array<double, EXCHANGE_LENGTH>> areas_;
  static thread_local std::size_t thread_;
  friend class library_thread;
};

// While it lives, the calling thread is the one of this number: its calls exchange vectors in its own area.
class library_thread {
 public:
  library_thread(library_data& data, std::size_t number);
  ~library_thread();
  library_thread(const library_thread&) = delete;
  library_thread& operator=(const library_thread&) = delete;
};

}  // namespace solver

#endif
