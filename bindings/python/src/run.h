// run.h: what all bindings share. Elements come as arrays of the records of elements.h, numbers as arrays of reals;
// a call runs over the elements without the lock of the interpreter, cut among threads; the answer is a status and the
// first element at fault.
#ifndef FINITES_PYTHON_RUN_H
#define FINITES_PYTHON_RUN_H

#include <pybind11/numpy.h>
#include <pybind11/pybind11.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <string>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

#include "finites/elements.h"

namespace py = pybind11;

using Answer = std::pair<int, int64_t>;  // status, first element at fault or -1
using Reals = py::array_t<double, py::array::c_style>;
template <class Record>
using Records = py::array_t<Record, py::array::c_style>;

// The package checks shapes before it calls and names them in its messages; these checks keep a wrong direct call of
// this module from reading or writing beyond an array.
inline void require(bool fits, const char* what) {
  if (!fits) throw std::invalid_argument(std::string(what) + " has the wrong size");
}

template <class Record>
int64_t length(const Records<Record>& elements) {
  require(elements.size() > 0, "elements");
  return elements.size();
}

// The degrees of freedom of plates and solids, the same for all of a batch.
template <class Record>
int64_t freedoms(const Records<Record>& elements, int64_t per_node) {
  const Record* first = elements.data();
  const int64_t count = length(elements);
  require(std::all_of(first, first + count, [=](const Record& r) { return r.nodes == first->nodes; }), "nodes");
  require(first->nodes > 0 && first->nodes <= 8, "nodes");
  return per_node * first->nodes;
}

// Reals that go in: those of element e start at first + e * stride; one row serves all elements.
struct Input {
  const double* first;
  int64_t stride;
  const double* operator()(int64_t e) const { return first + e * stride; }
  finites_reals reals() const { return {first, stride}; }
};

// Reals that may be left out: null then.
struct OptionalInput {
  const double* first;
  int64_t stride;
  const double* operator()(int64_t e) const { return first == nullptr ? nullptr : first + e * stride; }
  finites_reals reals() const { return {first, stride}; }
};

inline Input input(const Reals& values, int64_t count, int64_t width, const char* name) {
  if (values.size() == width) return {values.data(), 0};
  require(values.size() == count * width, name);
  return {values.data(), width};
}

inline OptionalInput optional_input(const py::object& values, int64_t count, int64_t width, const char* name) {
  if (values.is_none()) return {nullptr, 0};
  const Input given = input(values.cast<Reals>(), count, width, name);
  return {given.first, given.stride};
}

// Where answers go: width values of type T an element.
template <class T>
T* output(py::array_t<T, py::array::c_style>& values, int64_t count, int64_t width, const char* name) {
  require(values.size() == count * width, name);
  return values.mutable_data();
}

// One call per element, as a piece of work from begin to end.
template <class Call>
auto each(Call call) {
  return [call](int64_t begin, int64_t end, int64_t* failed) {
    for (int64_t e = begin; e < end; ++e) {
      const finites_status status = call(e);
      if (status == FINITES_OK) continue;
      *failed = e;
      return status;
    }
    return FINITES_OK;
  };
}

// Runs a piece of work over count elements on so many threads: piece(begin, end, &failed).
template <class Piece>
Answer run(int64_t count, int threads, const Piece& piece) {
  const py::gil_scoped_release unlocked;
  const int64_t parts = std::clamp<int64_t>(threads, 1, count);
  std::vector<finites_status> status(static_cast<size_t>(parts), FINITES_OK);
  std::vector<int64_t> failed(static_cast<size_t>(parts), -1);
  const auto part = [&](int64_t p) {
    const auto i = static_cast<size_t>(p);
    status[i] = piece(count * p / parts, count * (p + 1) / parts, &failed[i]);
  };
  std::vector<std::thread> others;
  others.reserve(static_cast<size_t>(parts));
  for (int64_t p = 1; p < parts; ++p) {
    try {
      others.emplace_back(part, p);
    } catch (const std::system_error&) {
      part(p);  // the system gives no more threads
    }
  }
  part(0);
  for (std::thread& other : others) other.join();
  for (size_t i = 0; i < status.size(); ++i) {
    if (status[i] != FINITES_OK) return {status[i], failed[i]};
  }
  return {FINITES_OK, -1};
}

// call(element, given(e)..., out) of every element, where answers have size values of type T each.
template <class Record, class T, class Call, class... Given>
Answer one_by_one(const Records<Record>& elements, py::array_t<T, py::array::c_style>& values, int64_t size,
                  int threads, Call call, Given... given) {
  const int64_t count = length(elements);
  const Record* first = elements.data();
  T* out = output(values, count, size, "out");
  return run(count, threads, each([=](int64_t e) { return call(first + e, given(e)..., out + e * size); }));
}

// An array of one record as the library initialises it.
template <class Record, void (*init)(Record*)>
Records<Record> fresh() {
  Records<Record> one(1);
  std::memset(one.mutable_data(), 0, sizeof(Record));
  init(one.mutable_data());
  return one;
}

void bind_plates(py::module_& module);
void bind_beams(py::module_& module);
void bind_members(py::module_& module);
void bind_solids(py::module_& module);
void bind_states(py::module_& module);

#endif
