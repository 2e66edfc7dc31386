// array_reference.h: the run-time array reference, the form in which a shared record holds an array that the solver
// allocates.
//
// A reference knows where its array lies, how long an element is, whether it is allocated, and for each dimension the
// extent, the stride in bytes and the lower bound. Strides in bytes let a reference stand for any regular section:
// every third element, one row of a matrix, or one member of an array of records.
#ifndef FINITES_ARRAY_REFERENCE_H
#define FINITES_ARRAY_REFERENCE_H

#include <cstddef>
#include <cstdint>

struct ARRAY_DIMENSION {
  std::int64_t EXTENT;
  std::int64_t STRIDE;  // bytes from one element to the next
  std::int64_t LOWER;   // subscript of the first element
};

// REF(i), REF(i, j), REF(i, j, k): the element with these subscripts, counted from the lower bounds. Nothing is
// checked.
template <class T, int RANK>
struct ARRAY_REFERENCE {
  T* BASE;  // the element whose subscripts are the lower bounds
  std::int64_t ELEMENT_LENGTH;
  std::int32_t ALLOCATED_FLAG;  // 1 when there is an array
  ARRAY_DIMENSION DIMENSION[RANK];

  template <class... SUBSCRIPTS>
  T& operator()(SUBSCRIPTS... subscripts) const {
    static_assert(sizeof...(SUBSCRIPTS) == RANK, "one subscript a dimension");
    const std::int64_t at[RANK] = {static_cast<std::int64_t>(subscripts)...};
    std::int64_t bytes = 0;
    for (int d = 0; d < RANK; ++d) bytes += (at[d] - DIMENSION[d].LOWER) * DIMENSION[d].STRIDE;
    return *reinterpret_cast<T*>(reinterpret_cast<std::uintptr_t>(BASE) + static_cast<std::uintptr_t>(bytes));
  }
};

template <class T, int RANK>
bool ALLOCATED(const ARRAY_REFERENCE<T, RANK>& reference) {
  return reference.ALLOCATED_FLAG != 0;
}

// Is there an element with this subscript?
template <class T>
bool HAS_ELEMENT(const ARRAY_REFERENCE<T, 1>& reference, std::int64_t subscript) {
  const ARRAY_DIMENSION& dimension = reference.DIMENSION[0];
  return ALLOCATED(reference) && subscript >= dimension.LOWER && subscript - dimension.LOWER < dimension.EXTENT;
}

// Are the elements packed without gaps, in column-major order?
template <class T, int RANK>
bool CONTIGUOUS(const ARRAY_REFERENCE<T, RANK>& reference) {
  std::int64_t packed = reference.ELEMENT_LENGTH;
  for (const ARRAY_DIMENSION& dimension : reference.DIMENSION) {
    if (dimension.STRIDE != packed) return false;
    packed *= dimension.EXTENT;
  }
  return true;
}

// A reference to a contiguous column-major array whose lower bounds are 1: REFER_TO(base, 6, 4) is base(6, 4).
template <class T, class... EXTENTS>
ARRAY_REFERENCE<T, sizeof...(EXTENTS)> REFER_TO(T* base, EXTENTS... extents) {
  constexpr int rank = sizeof...(EXTENTS);
  const std::int64_t extent[rank] = {static_cast<std::int64_t>(extents)...};
  ARRAY_REFERENCE<T, rank> reference{base, static_cast<std::int64_t>(sizeof(T)), 1, {}};
  std::int64_t stride = reference.ELEMENT_LENGTH;
  for (int d = 0; d < rank; ++d) {
    reference.DIMENSION[d] = {extent[d], stride, 1};
    stride *= extent[d];
  }
  return reference;
}

// A reference to a section of rank 1: `extent` elements that lie `stride` bytes apart, the first with subscript
// `lower`.
template <class T>
ARRAY_REFERENCE<T, 1> REFER_TO_SECTION(T* first, std::int64_t extent, std::int64_t stride, std::int64_t lower = 1) {
  return {first, static_cast<std::int64_t>(sizeof(T)), 1, {{extent, stride, lower}}};
}

#endif
