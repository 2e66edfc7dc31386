// views.hpp: 1-based, column-major access for C++: views of plain buffers, small matrices and vectors of fixed size,
// the array references of the shared records, and MODEL_DATA.
//
// A view has no cost at run time: the leading dimension is a template argument, so that B(i, j) compiles to the same
// code as a plain subscript. Every array of this library is column-major and numbered from 1, as its formulas are.
#ifndef FINITES_VIEWS_HPP
#define FINITES_VIEWS_HPP

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>

// ---------------------------------------------------------------------------------------------- matrices, vectors

// A matrix of M rows in storage that the view does not own.
template <int M, class T = double>
class MATRIX_VIEW {
 public:
  constexpr explicit MATRIX_VIEW(T* base) : base_(base) {}
  constexpr T& operator()(int i, int j) const { return base_[static_cast<std::ptrdiff_t>(j - 1) * M + (i - 1)]; }

 private:
  T* base_;
};

// A vector in storage that the view does not own.
template <class T = double>
class VECTOR_VIEW {
 public:
  constexpr explicit VECTOR_VIEW(T* base) : base_(base) {}
  constexpr T& operator()(int i) const { return base_[i - 1]; }

 private:
  T* base_;
};

// A matrix of M rows and N columns that holds its values. An aggregate: MATRIX<3, 3> D{} is zero, MATRIX<3, 3> D is not
// initialised.
template <int M, int N, class T = double>
struct MATRIX {
  T V[static_cast<std::size_t>(M) * N];

  constexpr T& operator()(int i, int j) { return V[(j - 1) * M + (i - 1)]; }
  constexpr const T& operator()(int i, int j) const { return V[(j - 1) * M + (i - 1)]; }
  constexpr T* data() { return V; }
  constexpr const T* data() const { return V; }
};

// A vector of N values that it holds.
template <int N, class T = double>
struct VECTOR {
  T V[static_cast<std::size_t>(N)];

  constexpr T& operator()(int i) { return V[i - 1]; }
  constexpr const T& operator()(int i) const { return V[i - 1]; }
  constexpr T* data() { return V; }
  constexpr const T* data() const { return V; }
};

// Position of entry (i, j), i not above j, in the upper triangle stored by columns.
constexpr int SYM(int i, int j) { return (j - 1) * j / 2 + i; }

static_assert(SYM(6, 6) == 21 && SYM(9, 9) == 45 && SYM(18, 18) == 171 && SYM(24, 24) == 300);

// ---------------------------------------------------------------------------------------------- array references
//
// The form in which a shared record holds an array that the solver allocates. A reference has the address of its array,
// the length of an element, whether it is allocated, and for each dimension the extent, the stride in bytes and the
// lower bound. Strides in bytes let a reference stand for any regular section: every third element, one row of a
// matrix, or one member of an array of records.

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

// Whether there is an element with this subscript.
template <class T>
bool HAS_ELEMENT(const ARRAY_REFERENCE<T, 1>& reference, std::int64_t subscript) {
  const ARRAY_DIMENSION& dimension = reference.DIMENSION[0];
  return ALLOCATED(reference) && subscript >= dimension.LOWER && subscript - dimension.LOWER < dimension.EXTENT;
}

// Whether the elements are contiguous, in column-major order.
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

// ---------------------------------------------------------------------------------------------- MODEL_DATA

// The integer that a real holds: truncated towards zero. Defined for every input: beyond the range of an integer the
// nearest end of the range, for NaN 0.
inline std::int32_t TRUNCATED(double value) {
  constexpr double low = std::numeric_limits<std::int32_t>::min();
  constexpr double high = std::numeric_limits<std::int32_t>::max();
  if (std::isnan(value)) return 0;
  if (value <= low) return std::numeric_limits<std::int32_t>::min();
  if (value >= high) return std::numeric_limits<std::int32_t>::max();
  return static_cast<std::int32_t>(value);
}

// A(i), numbered from 1; A.INTEGER(i) truncates. Subscripts are 64 bits wide, so that a sum of a field number and a
// block start cannot overflow.
template <class REAL>
class MODEL_DATA_VIEW {
 public:
  explicit MODEL_DATA_VIEW(REAL* base) : base_(base) {}
  REAL& operator()(std::int64_t i) const { return base_[i - 1]; }
  std::int32_t INTEGER(std::int64_t i) const { return TRUNCATED(base_[i - 1]); }

 private:
  REAL* base_;
};

using MODEL_DATA = MODEL_DATA_VIEW<double>;
using MODEL_DATA_READER = MODEL_DATA_VIEW<const double>;

#endif
