// views.h: 1-based, column-major access to plain buffers, and small matrices and vectors of fixed size.
//
// A view costs nothing: the leading dimension is a template argument, and B(i, j) is the subscript that one would write
// by hand. Every array of this library is column-major and numbered from 1, as its formulas are.
#ifndef FINITES_VIEWS_H
#define FINITES_VIEWS_H

#include <cstddef>

// A matrix of M rows in storage that belongs to somebody else.
template <int M, class T = double>
class MATRIX_VIEW {
 public:
  constexpr explicit MATRIX_VIEW(T* base) : base_(base) {}
  constexpr T& operator()(int i, int j) const { return base_[static_cast<std::ptrdiff_t>(j - 1) * M + (i - 1)]; }

 private:
  T* base_;
};

// A vector in storage that belongs to somebody else.
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
  T V[N];

  constexpr T& operator()(int i) { return V[i - 1]; }
  constexpr const T& operator()(int i) const { return V[i - 1]; }
  constexpr T* data() { return V; }
  constexpr const T* data() const { return V; }
};

// Position of entry (i, j), i not above j, in the upper triangle stored by columns.
constexpr int SYM(int i, int j) { return (j - 1) * j / 2 + i; }

static_assert(SYM(6, 6) == 21 && SYM(9, 9) == 45 && SYM(18, 18) == 171 && SYM(24, 24) == 300);

#endif
