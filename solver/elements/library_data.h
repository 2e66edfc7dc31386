// library_data.h: the arrays that all groups of elements share: MODEL_DATA with its header, nodes and exchange area.
//
// Of several processes each holds its own elements alone and the nodes that they join; models with hinges are held by
// all, since a hinge that forms anywhere concerns them all.
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

  // Which elements this process holds, how many they are, and the place of one among them.
  bool holds(std::size_t element) const { return element_place_.empty() || element_place_[element] >= 0; }
  std::size_t held() const { return held_; }
  std::size_t place(std::size_t element) const {
    return element_place_.empty() ? element : subscript(element_place_[element]);
  }

  // The number by which the library knows an element, and where its block starts: its fields are A(entry + 1) and on.
  std::int32_t number(std::size_t element) const { return static_cast<std::int32_t>(place(element)) + 1; }
  std::int32_t entry(std::size_t element) const { return layout_.element(place(element)); }

  // Where the block of a node starts that an element of this process joins, and that of the displaced node.
  bool holds_node(std::size_t node) const { return node_place_.empty() || node_place_[node] >= 0; }
  std::int32_t node(int number) const { return layout_.node(node_place(number)); }
  std::int32_t displaced_node(int number) const { return layout_.displaced_node(node_place(number)); }

  // From now on stiffnesses hold the geometric stiffness of the stored state, or no longer do.
  void second_order(bool on) { A()(SECOND_ORDER) = on ? GEOMETRIC_ADDED : 0; }
  bool is_second_order() { return A()(SECOND_ORDER) == GEOMETRIC_ADDED; }

 private:
  // Places of elements and nodes in the model among those of this process, -1: not held; empty: all are held.
  struct held_parts {
    numbered<std::int32_t> elements, nodes;
    std::size_t element_count = 0, node_count = 0;
  };
  static held_parts find_held(const model& m);
  library_data(const model& m, held_parts parts);
  int node_place(int number) const { return node_place_.empty() ? number : node_place_[number]; }

  const model& model_;
  const numbered<std::int32_t> element_place_, node_place_;
  const std::size_t held_;
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
