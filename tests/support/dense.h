// dense.h: full matrices in extended precision, for the references of the tests.
//
// The names are those of Eigen as far as the references need them. Its expression templates would be instantiated in
// every file of tests, which takes many times as long as what the tests compute; here everything that is not an access
// to an entry is compiled once, in dense.cpp. Every access is checked: a wrong index ends the program with a message.
//
// A `view` is a rectangle of the entries of a matrix: what row(), col(), block() and the like return. It is assigned to
// entry by entry, and lives no longer than its matrix. Everything else returns matrices of its own.
#ifndef FINITES_TESTS_DENSE_H
#define FINITES_TESTS_DENSE_H

#include <cstddef>
#include <initializer_list>
#include <utility>
#include <vector>

namespace dense {

using real = long double;
using index = std::ptrdiff_t;

class matrix;
class filling;

[[noreturn]] void outside(index i, index j, index rows, index columns);

class view {
 public:
  view(real* first, index rows, index columns, index down, index along)
      : first_(first), rows_(rows), columns_(columns), down_(down), along_(along) {}
  view(const view& other) = default;

  index rows() const { return rows_; }
  index cols() const { return columns_; }
  index size() const { return rows_ * columns_; }

  const real& operator()(index i, index j) const { return *place(i, j); }
  real& operator()(index i, index j) { return *place(i, j); }
  // Of a row or a column.
  const real& operator()(index i) const { return columns_ == 1 ? *place(i, 0) : *place(0, i); }
  real& operator()(index i) { return columns_ == 1 ? *place(i, 0) : *place(0, i); }

  view& operator=(const view& other);  // of the same shape; overwrites the entries
  view& operator+=(const view& other);
  view& operator-=(const view& other);
  view& operator*=(real factor);
  view& operator/=(real divisor);
  void setConstant(real value);
  void setZero() { setConstant(0.0L); }
  void setIdentity();

  // view << a, b, c: by rows, of numbers or of blocks beside and below each other. All places are filled.
  filling operator<<(real value);
  filling operator<<(const view& block);

  view block(index i, index j, index rows, index columns);
  const view block(index i, index j, index rows, index columns) const;
  view diagonal();
  const view diagonal() const;
  view row(index i) { return block(i, 0, 1, columns_); }
  view col(index j) { return block(0, j, rows_, 1); }
  view segment(index first, index count) {
    return columns_ == 1 ? block(first, 0, count, 1) : block(0, first, 1, count);
  }
  view head(index count) { return segment(0, count); }
  view tail(index count) { return segment(size() - count, count); }
  view topRows(index count) { return block(0, 0, count, columns_); }
  view middleRows(index first, index count) { return block(first, 0, count, columns_); }
  view bottomRows(index count) { return block(rows_ - count, 0, count, columns_); }
  view middleCols(index first, index count) { return block(0, first, rows_, count); }
  view leftCols(index count) { return block(0, 0, rows_, count); }
  view rightCols(index count) { return block(0, columns_ - count, rows_, count); }
  view topLeftCorner(index rows, index columns) { return block(0, 0, rows, columns); }
  view topRightCorner(index rows, index columns) { return block(0, columns_ - columns, rows, columns); }
  view bottomLeftCorner(index rows, index columns) { return block(rows_ - rows, 0, rows, columns); }
  view bottomRightCorner(index rows, index columns) { return block(rows_ - rows, columns_ - columns, rows, columns); }
  const view row(index i) const { return block(i, 0, 1, columns_); }
  const view col(index j) const { return block(0, j, rows_, 1); }
  const view segment(index first, index count) const {
    return columns_ == 1 ? block(first, 0, count, 1) : block(0, first, 1, count);
  }
  const view head(index count) const { return segment(0, count); }
  const view tail(index count) const { return segment(size() - count, count); }
  const view topRows(index count) const { return block(0, 0, count, columns_); }
  const view middleRows(index first, index count) const { return block(first, 0, count, columns_); }
  const view bottomRows(index count) const { return block(rows_ - count, 0, count, columns_); }
  const view middleCols(index first, index count) const { return block(0, first, rows_, count); }
  const view leftCols(index count) const { return block(0, 0, rows_, count); }
  const view rightCols(index count) const { return block(0, columns_ - count, rows_, count); }
  const view topLeftCorner(index rows, index columns) const { return block(0, 0, rows, columns); }
  const view topRightCorner(index rows, index columns) const { return block(0, columns_ - columns, rows, columns); }
  const view bottomLeftCorner(index rows, index columns) const { return block(rows_ - rows, 0, rows, columns); }
  const view bottomRightCorner(index rows, index columns) const {
    return block(rows_ - rows, columns_ - columns, rows, columns);
  }

  matrix transpose() const;
  matrix cwiseAbs() const;
  matrix cwiseSqrt() const;
  matrix cwiseInverse() const;
  matrix cwiseProduct(const view& other) const;
  matrix asDiagonal() const;
  matrix normalized() const;
  matrix cross(const view& other) const;  // of three entries; the shape is that of this one
  matrix inverse() const;                 // by elimination with complete pivoting; NaN of a singular one

  real determinant() const;
  real dot(const view& other) const;
  real sum() const;
  real trace() const;
  real squaredNorm() const;
  real norm() const;
  real maxCoeff() const;
  real minCoeff() const;
  real value() const;  // of a matrix of one entry

 protected:
  real* place(index i, index j) const {
    if (i < 0 || j < 0 || i >= rows_ || j >= columns_) outside(i, j, rows_, columns_);
    return first_ + i * down_ + j * along_;
  }

  real* first_;
  index rows_, columns_, down_, along_;
};

// Entries by columns, without gaps; zero at first.
class matrix : public view {
 public:
  matrix() : matrix(0, 0) {}
  matrix(index rows, index columns);
  matrix(const view& other);
  matrix(const matrix& other);
  matrix(matrix&& other) noexcept;
  matrix& operator=(const view& other);
  matrix& operator=(const matrix& other);
  matrix& operator=(matrix&& other) noexcept;
  ~matrix() = default;

  static matrix Zero(index rows, index columns) { return matrix(rows, columns); }
  static matrix Constant(index rows, index columns, real value);
  static matrix Identity(index rows, index columns);

  const real* data() const { return first_; }
  real* data() { return first_; }

 private:
  std::vector<real> entries_;
};

class column : public matrix {
 public:
  column() : matrix(0, 1) {}
  explicit column(index rows) : matrix(rows, 1) {}
  column(const view& other);
  using matrix::operator=;

  static column Zero(index rows) { return column(rows); }
  static column Constant(index rows, real value) { return matrix::Constant(rows, 1, value); }
  static column Ones(index rows) { return Constant(rows, 1.0L); }
  static column Unit(index rows, index i);
};

void check_shape(const view& v, index rows, index columns);
void list_entries(view& v, std::initializer_list<real> values);

// A matrix whose shape is part of its type.
template <int ROWS, int COLUMNS>
class fixed : public matrix {
 public:
  fixed() : matrix(ROWS, COLUMNS) {}
  fixed(const view& other) : matrix(other) { check_shape(*this, ROWS, COLUMNS); }
  fixed(real a, real b) : fixed() { list_entries(*this, {a, b}); }
  fixed(real a, real b, real c) : fixed() { list_entries(*this, {a, b, c}); }

  static fixed Zero() { return fixed(); }
  static fixed Constant(real value) { return matrix::Constant(ROWS, COLUMNS, value); }
  static fixed Ones() { return Constant(1.0L); }
  static fixed Identity() { return matrix::Identity(ROWS, COLUMNS); }
  static fixed Unit(index i) {
    fixed unit;
    unit(i) = 1.0L;
    return unit;
  }
};

using matrix2 = fixed<2, 2>;
using matrix3 = fixed<3, 3>;
using vector2 = fixed<2, 1>;
using vector3 = fixed<3, 1>;

// What follows the first value of view << a, b, c.
class filling {
 public:
  filling(view& target, const view& block);
  filling(const filling& other) = delete;
  filling& operator=(const filling& other) = delete;
  filling& operator,(real value);
  filling& operator,(const view& block);
  ~filling();

 private:
  void put(const view& block);
  view target_;
  index row_ = 0, column_ = 0, height_ = 0;
};

matrix operator+(const view& a, const view& b);
matrix operator-(const view& a, const view& b);
matrix operator-(const view& a);
matrix operator*(const view& a, const view& b);
matrix operator*(const view& a, real factor);
matrix operator*(real factor, const view& a);
matrix operator/(const view& a, real divisor);
bool operator==(const view& a, const view& b);
bool operator!=(const view& a, const view& b);

matrix widened(const double* by_columns, index rows, index columns = 1);
column column_of(const std::vector<double>& values);
std::vector<double> listed(const view& M);   // by columns, rounded once
double largest(const view& M);               // absolute
matrix upper_mirrored(const view& M);        // the symmetric matrix with the upper triangle of M
matrix solve(const view& A, const view& b);  // A x = b, by elimination with complete pivoting
// A positive definite: by Cholesky's factors, within the profile of its rows.
matrix solve_definite(const view& A, const view& b);

// Of a symmetric matrix, by the rotations of Jacobi (1846): the eigenvalues from the smallest up, and their vectors.
struct eigen_system {
  explicit eigen_system(const view& symmetric);
  const column& eigenvalues() const { return values; }
  const matrix& eigenvectors() const { return vectors; }

  column values;
  matrix vectors;
};

}  // namespace dense

#endif
