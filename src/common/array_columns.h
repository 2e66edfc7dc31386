// array_columns.h: columns of the arrays that the solver allocates, found once and then run through.
#ifndef FINITES_ARRAY_COLUMNS_H
#define FINITES_ARRAY_COLUMNS_H

#include <cstdint>
#include <cstring>

#include "finites/views.hpp"

// Elements that lie a fixed number of bytes apart: COLUMN(i), from 1.
template <class T>
class ARRAY_COLUMN {
 public:
  ARRAY_COLUMN(T* first, std::int64_t stride) : first_(reinterpret_cast<std::uintptr_t>(first)), stride_(stride) {}
  T& operator()(int i) const { return *reinterpret_cast<T*>(first_ + static_cast<std::uintptr_t>((i - 1) * stride_)); }
  bool adjacent() const { return stride_ == static_cast<std::int64_t>(sizeof(T)); }

 private:
  std::uintptr_t first_;
  std::int64_t stride_;
};

// Column k of REF(i, k); the elements (1, c, k), (2, c, k) and so on of REF(i, c, k).
template <class T>
ARRAY_COLUMN<T> column_of(const ARRAY_REFERENCE<T, 2>& reference, std::int64_t k) {
  return {&reference(1, k), reference.DIMENSION[0].STRIDE};
}

template <class T>
ARRAY_COLUMN<T> column_of(const ARRAY_REFERENCE<T, 3>& reference, std::int64_t c, std::int64_t k) {
  return {&reference(1, c, k), reference.DIMENSION[0].STRIDE};
}

// The first N elements of a column as a vector, and back. Most solvers keep them next to each other.
template <int N>
VECTOR<N> loaded(const ARRAY_COLUMN<double>& column) {
  VECTOR<N> v;
  if (column.adjacent()) {
    std::memcpy(v.data(), &column(1), sizeof v);
  } else {
    for (int i = 1; i <= N; ++i) v(i) = column(i);
  }
  return v;
}

template <int N>
void store(const VECTOR<N>& v, const ARRAY_COLUMN<double>& column) {
  if (column.adjacent()) {
    std::memcpy(&column(1), v.data(), sizeof v);
  } else {
    for (int i = 1; i <= N; ++i) column(i) = v(i);
  }
}

#endif
