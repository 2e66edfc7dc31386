// dense.cpp: see the header.
#include "dense.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <numeric>

namespace dense {

namespace {

[[noreturn]] void stop(const char* what) {
  std::fprintf(stderr, "dense.cpp: %s\n", what);
  std::abort();
}

void same_shape(const view& a, const view& b) { check_shape(a, b.rows(), b.cols()); }

template <class FUNCTION>
matrix each(const view& a, const FUNCTION& f) {
  matrix result(a.rows(), a.cols());
  for (index j = 0; j < a.cols(); ++j) {
    for (index i = 0; i < a.rows(); ++i) result(i, j) = f(a(i, j));
  }
  return result;
}

// Of each entry of a with that of b in the same place.
template <class FUNCTION>
matrix each_pair(const view& a, const view& b, const FUNCTION& f) {
  same_shape(a, b);
  matrix result(a.rows(), a.cols());
  for (index j = 0; j < a.cols(); ++j) {
    for (index i = 0; i < a.rows(); ++i) result(i, j) = f(a(i, j), b(i, j));
  }
  return result;
}

template <class FUNCTION>
real gathered(const view& a, real start, const FUNCTION& f) {
  for (index j = 0; j < a.cols(); ++j) {
    for (index i = 0; i < a.rows(); ++i) start = f(start, a(i, j));
  }
  return start;
}

void swap_rows(matrix& A, index i, index k) {
  if (i == k) return;
  for (index j = 0; j < A.cols(); ++j) std::swap(A(i, j), A(k, j));
}

void swap_columns(matrix& A, index j, index k) {
  if (j == k) return;
  for (index i = 0; i < A.rows(); ++i) std::swap(A(i, j), A(i, k));
}

// Elimination with complete pivoting after Gauss and Jordan: makes A the identity and b the solution for unknowns in
// the order of `places`. Returns the determinant, zero when nothing is left to divide by.
real eliminate(matrix& A, matrix& b, std::vector<index>& places) {
  const index n = A.rows();
  if (A.cols() != n || b.rows() != n) stop("a system of equations that is not square");
  real determinant = 1.0L;
  places.resize(static_cast<std::size_t>(n));
  std::iota(places.begin(), places.end(), index{0});
  for (index k = 0; k < n; ++k) {
    index p = k, q = k;
    for (index j = k; j < n; ++j) {
      for (index i = k; i < n; ++i) {
        if (std::fabs(A(i, j)) > std::fabs(A(p, q))) {
          p = i;
          q = j;
        }
      }
    }
    if (p != k) determinant = -determinant;
    if (q != k) determinant = -determinant;
    swap_rows(A, k, p);
    swap_rows(b, k, p);
    swap_columns(A, k, q);
    std::swap(places[static_cast<std::size_t>(k)], places[static_cast<std::size_t>(q)]);
    const real pivot = A(k, k);
    determinant *= pivot;
    if (pivot == 0.0L) return 0.0L;
    A.row(k) /= pivot;
    b.row(k) /= pivot;
    for (index i = 0; i < n; ++i) {
      const real factor = A(i, k);
      if (i == k || factor == 0.0L) continue;
      for (index j = k; j < n; ++j) A(i, j) -= factor * A(k, j);
      for (index j = 0; j < b.cols(); ++j) b(i, j) -= factor * b(k, j);
    }
  }
  return determinant;
}

}  // namespace

void outside(index i, index j, index rows, index columns) {
  std::fprintf(stderr, "dense.cpp: entry (%td, %td) of a matrix of %td by %td\n", i, j, rows, columns);
  std::abort();
}

void check_shape(const view& v, index rows, index columns) {
  if (v.rows() == rows && v.cols() == columns) return;
  std::fprintf(stderr, "dense.cpp: %td by %td where %td by %td is wanted\n", v.rows(), v.cols(), rows, columns);
  std::abort();
}

void list_entries(view& v, std::initializer_list<real> values) {
  if (v.size() != static_cast<index>(values.size())) stop("a list that is not as long as the vector");
  index i = 0;
  for (const real value : values) v(i++) = value;
}

// ---- views

view& view::operator=(const view& other) {
  same_shape(*this, other);
  for (index j = 0; j < columns_; ++j) {
    for (index i = 0; i < rows_; ++i) *place(i, j) = other(i, j);
  }
  return *this;
}

view& view::operator+=(const view& other) { return *this = *this + other; }
view& view::operator-=(const view& other) { return *this = *this - other; }
view& view::operator*=(real factor) { return *this = *this * factor; }
view& view::operator/=(real divisor) { return *this = *this / divisor; }

void view::setConstant(real value) {
  for (index j = 0; j < columns_; ++j) {
    for (index i = 0; i < rows_; ++i) *place(i, j) = value;
  }
}

void view::setIdentity() {
  setZero();
  diagonal().setConstant(1.0L);
}

view view::block(index i, index j, index rows, index columns) {
  if (i < 0 || j < 0 || rows < 0 || columns < 0) outside(i, j, rows, columns);
  if (i + rows > rows_ || j + columns > columns_) outside(i + rows - 1, j + columns - 1, rows_, columns_);
  real* const first = rows > 0 && columns > 0 ? first_ + i * down_ + j * along_ : first_;  // an empty block has none
  return {first, rows, columns, down_, along_};
}

const view view::block(index i, index j, index rows, index columns) const {
  return view(*this).block(i, j, rows, columns);
}

view view::diagonal() { return {first_, std::min(rows_, columns_), 1, down_ + along_, 0}; }
const view view::diagonal() const { return view(*this).diagonal(); }

matrix view::transpose() const { return matrix(view(first_, columns_, rows_, along_, down_)); }
matrix view::cwiseAbs() const {
  return each(*this, [](real x) { return std::fabs(x); });
}
matrix view::cwiseSqrt() const {
  return each(*this, [](real x) { return std::sqrt(x); });
}
matrix view::cwiseInverse() const {
  return each(*this, [](real x) { return 1.0L / x; });
}
matrix view::cwiseProduct(const view& other) const {
  return each_pair(*this, other, [](real x, real y) { return x * y; });
}

matrix view::asDiagonal() const {
  matrix D(size(), size());
  for (index i = 0; i < size(); ++i) D(i, i) = (*this)(i);
  return D;
}

matrix view::normalized() const { return *this / norm(); }

matrix view::cross(const view& other) const {
  if (size() != 3 || other.size() != 3) stop("a vector product of other vectors than those of space");
  matrix product(rows_, columns_);
  for (index i = 0; i < 3; ++i) {
    const index j = (i + 1) % 3, k = (i + 2) % 3;
    product(i) = (*this)(j)*other(k) - (*this)(k)*other(j);
  }
  return product;
}

matrix view::inverse() const { return solve(*this, matrix::Identity(rows_, rows_)); }

real view::determinant() const {
  matrix A(*this), none(rows_, 0);
  std::vector<index> places;
  return eliminate(A, none, places);
}

real view::dot(const view& other) const {
  if (size() != other.size()) stop("a scalar product of vectors that are not equally long");
  real sum = 0.0L;
  for (index i = 0; i < size(); ++i) sum += (*this)(i)*other(i);
  return sum;
}

real view::sum() const {
  return gathered(*this, 0.0L, [](real a, real b) { return a + b; });
}
real view::trace() const { return diagonal().sum(); }
real view::squaredNorm() const {
  return gathered(*this, 0.0L, [](real a, real b) { return a + b * b; });
}
real view::norm() const { return std::sqrt(squaredNorm()); }

// NaN where one entry is NaN, so that no comparison with a bound passes.
real view::maxCoeff() const {
  return gathered(*this, -std::numeric_limits<real>::infinity(),
                  [](real a, real b) { return b > a || b != b ? b : a; });
}
real view::minCoeff() const { return -(-*this).maxCoeff(); }

real view::value() const {
  check_shape(*this, 1, 1);
  return (*this)(0, 0);
}

// ---- filling

filling view::operator<<(real value) { return {*this, view(&value, 1, 1, 1, 1)}; }
filling view::operator<<(const view& block) { return {*this, block}; }

filling::filling(view& target, const view& block) : target_(target) { put(block); }

filling &filling::operator,(real value) {
  put(view(&value, 1, 1, 1, 1));
  return *this;
}

filling &filling::operator,(const view&block) {
  put(block);
  return *this;
}

void filling::put(const view& block) {
  if (column_ == target_.cols()) {
    row_ += height_;
    column_ = 0;
  }
  if (column_ > 0 && block.rows() != height_) stop("blocks of different heights beside each other");
  height_ = block.rows();
  target_.block(row_, column_, block.rows(), block.cols()) = block;
  column_ += block.cols();
}

filling::~filling() {
  if (row_ + height_ != target_.rows() || column_ != target_.cols()) stop("a list that does not fill its matrix");
}

// ---- matrices

matrix::matrix(index rows, index columns)
    : view(nullptr, rows, columns, 1, rows), entries_(static_cast<std::size_t>(rows * columns)) {
  first_ = entries_.data();
}

matrix::matrix(const view& other) : matrix(other.rows(), other.cols()) { view::operator=(other); }
matrix::matrix(const matrix& other) : view(other), entries_(other.entries_) { first_ = entries_.data(); }
matrix::matrix(matrix&& other) noexcept : view(other), entries_(std::move(other.entries_)) {
  first_ = entries_.data();
  other.rows_ = other.columns_ = 0;
}

// By way of a copy: the other one may be a part of this one.
matrix& matrix::operator=(const view& other) { return *this = matrix(other); }
matrix& matrix::operator=(const matrix& other) {
  if (this != &other) *this = matrix(other);
  return *this;
}
matrix& matrix::operator=(matrix&& other) noexcept {
  rows_ = other.rows_;
  columns_ = other.columns_;
  down_ = other.down_;
  along_ = other.along_;
  entries_ = std::move(other.entries_);
  first_ = entries_.data();
  other.rows_ = other.columns_ = 0;
  return *this;
}

matrix matrix::Constant(index rows, index columns, real value) {
  matrix M(rows, columns);
  M.setConstant(value);
  return M;
}

matrix matrix::Identity(index rows, index columns) {
  matrix M(rows, columns);
  M.setIdentity();
  return M;
}

column::column(const view& other) : matrix(other) { check_shape(other, other.rows(), 1); }

column column::Unit(index rows, index i) {
  column unit(rows);
  unit(i) = 1.0L;
  return unit;
}

matrix operator+(const view& a, const view& b) {
  return each_pair(a, b, [](real x, real y) { return x + y; });
}
matrix operator-(const view& a, const view& b) {
  return each_pair(a, b, [](real x, real y) { return x - y; });
}
matrix operator-(const view& a) {
  return each(a, [](real x) { return -x; });
}
matrix operator*(const view& a, real factor) {
  return each(a, [factor](real x) { return x * factor; });
}
matrix operator*(real factor, const view& a) { return a * factor; }
matrix operator/(const view& a, real divisor) {
  return each(a, [divisor](real x) { return x / divisor; });
}

matrix operator*(const view& a, const view& b) {
  if (a.cols() != b.rows()) outside(a.rows(), a.cols(), b.rows(), b.cols());
  matrix product(a.rows(), b.cols());
  for (index j = 0; j < b.cols(); ++j) {
    for (index k = 0; k < a.cols(); ++k) {
      const real factor = b(k, j);
      for (index i = 0; i < a.rows(); ++i) product(i, j) += a(i, k) * factor;
    }
  }
  return product;
}

bool operator==(const view& a, const view& b) {
  same_shape(a, b);
  for (index j = 0; j < a.cols(); ++j) {
    for (index i = 0; i < a.rows(); ++i) {
      if (!(a(i, j) == b(i, j))) return false;
    }
  }
  return true;
}
bool operator!=(const view& a, const view& b) { return !(a == b); }

matrix widened(const double* by_columns, index rows, index columns) {
  matrix M(rows, columns);
  for (index j = 0; j < columns; ++j) {
    for (index i = 0; i < rows; ++i) M(i, j) = static_cast<real>(by_columns[rows * j + i]);
  }
  return M;
}

column column_of(const std::vector<double>& values) {
  return widened(values.data(), static_cast<index>(values.size()));
}

std::vector<double> listed(const view& M) {
  std::vector<double> values;
  values.reserve(static_cast<std::size_t>(M.size()));
  for (index j = 0; j < M.cols(); ++j) {
    for (index i = 0; i < M.rows(); ++i) values.push_back(static_cast<double>(M(i, j)));
  }
  return values;
}

double largest(const view& M) { return static_cast<double>(M.cwiseAbs().maxCoeff()); }

matrix upper_mirrored(const view& M) {
  matrix S(M);
  for (index j = 0; j < M.cols(); ++j) {
    for (index i = 0; i < j; ++i) S(j, i) = M(i, j);
  }
  return S;
}

matrix solve(const view& A, const view& b) {
  matrix reduced(A), ordered(b), x(b.rows(), b.cols());
  std::vector<index> places;
  if (eliminate(reduced, ordered, places) == 0.0L) {
    return matrix::Constant(x.rows(), x.cols(), std::numeric_limits<real>::quiet_NaN());
  }
  for (index k = 0; k < x.rows(); ++k) x.row(places[static_cast<std::size_t>(k)]) = ordered.row(k);
  return x;
}

matrix solve_definite(const view& A, const view& b) {
  const index n = A.rows();
  check_shape(A, n, n);
  check_shape(b, n, b.cols());
  matrix L(n, n), x(b);  // the rows of L stand in columns: its entries lie beside each other
  std::vector<index> first(static_cast<std::size_t>(n));
  const auto start = [&first](index i) -> index& { return first[static_cast<std::size_t>(i)]; };
  for (index i = 0; i < n; ++i) {
    start(i) = i;
    for (index j = i; j-- > 0;) {
      if (A(i, j) != 0.0L) start(i) = j;
    }
    for (index j = start(i); j <= i; ++j) {
      real rest = A(i, j);
      for (index k = std::max(start(i), start(j)); k < j; ++k) rest -= L(k, i) * L(k, j);
      if (i == j && !(rest > 0.0L)) stop("a matrix that is not positive definite");
      L(j, i) = i == j ? std::sqrt(rest) : rest / L(j, j);
    }
  }
  for (index c = 0; c < x.cols(); ++c) {
    for (index i = 0; i < n; ++i) {
      for (index k = start(i); k < i; ++k) x(i, c) -= L(k, i) * x(k, c);
      x(i, c) /= L(i, i);
    }
    for (index i = n; i-- > 0;) {
      x(i, c) /= L(i, i);
      for (index k = start(i); k < i; ++k) x(k, c) -= L(k, i) * x(i, c);
    }
  }
  return x;
}

// Each rotation takes one pair of entries beside the diagonal to zero: with t = tan of its angle, the smaller root of
// t^2 + 2 t (A_qq - A_pp) / (2 A_pq) - 1 = 0. The sum of their squares falls quadratically in the end.
eigen_system::eigen_system(const view& symmetric) {
  matrix A = symmetric, V = matrix::Identity(A.rows(), A.rows());
  const index n = A.rows();
  const real enough = std::numeric_limits<real>::epsilon() * A.norm() / 16.0L;
  for (int sweep = 0; sweep < 60; ++sweep) {
    real beside = 0.0L;
    for (index q = 1; q < n; ++q) {
      for (index p = 0; p < q; ++p) beside = std::max(beside, std::fabs(A(p, q)));
    }
    if (!(beside > enough)) break;
    for (index q = 1; q < n; ++q) {
      for (index p = 0; p < q; ++p) {
        if (A(p, q) == 0.0L) continue;
        const real theta = (A(q, q) - A(p, p)) / (2.0L * A(p, q));
        const real t = (theta < 0.0L ? -1.0L : 1.0L) / (std::fabs(theta) + std::hypot(theta, 1.0L));
        const real c = 1.0L / std::hypot(t, 1.0L), s = t * c;
        for (index k = 0; k < n; ++k) {
          const real u = A(k, p), v = A(k, q), x = V(k, p), y = V(k, q);
          A(k, p) = c * u - s * v;
          A(k, q) = s * u + c * v;
          V(k, p) = c * x - s * y;
          V(k, q) = s * x + c * y;
        }
        for (index k = 0; k < n; ++k) {
          const real u = A(p, k), v = A(q, k);
          A(p, k) = c * u - s * v;
          A(q, k) = s * u + c * v;
        }
      }
    }
  }
  std::vector<index> order(static_cast<std::size_t>(n));
  std::iota(order.begin(), order.end(), index{0});
  std::sort(order.begin(), order.end(), [&A](index i, index j) { return A(i, i) < A(j, j); });
  values = column(n);
  vectors = matrix(n, n);
  for (index k = 0; k < n; ++k) {
    const index from = order[static_cast<std::size_t>(k)];
    values(k) = A(from, from);
    vectors.col(k) = V.col(from);
  }
}

}  // namespace dense
