// linear_solver.cpp: what all solvers share: the product with the matrix, and whether a matrix comes again.
#include "system/linear_solver.h"

#include <cmath>
#include <cstring>

#include "system/ranks.h"

namespace solver {

bool linear_solver::has_factors_of(const symmetric_matrix& K) const {
  const symmetric_matrix& last = factorised_;
  if (!repeats_) return false;
  const bool same =
      last.order() > 0 && K.column_start == last.column_start && K.row == last.row &&
      (K.value.empty() || std::memcmp(K.value.data(), last.value.data(), K.value.size() * sizeof(double)) == 0);
  return true_for_all(same);
}

solver_kind default_solver() { return solver_choices().front().kind; }

std::size_t entries_of(const symmetric_matrix& K) {
  return static_cast<std::size_t>(sum_over_ranks(static_cast<double>(K.value.size())));
}

std::vector<double> diagonal_of(const symmetric_matrix& K) {
  std::vector<double> diagonal(K.order(), 0.0);
  for (std::size_t j = 0; j < K.order(); ++j) {
    if (!K.is_empty(j)) diagonal[j] = K.value[K.begin_of(j)];
  }
  sum_over_ranks(diagonal);
  return diagonal;
}

namespace {

// r := r - K x, of the part of the matrix that is here.
void subtract_product(const symmetric_matrix& K, const std::vector<double>& x, std::vector<double>& r) {
  for (std::size_t j = 0; j < K.order(); ++j) {
    double below = 0;  // what row j of the upper triangle, which is column j of the lower, takes from r[j]
    for (std::size_t p = K.begin_of(j); p < K.begin_of(j + 1); ++p) {
      const auto i = subscript(K.row[p]);
      r[i] -= K.value[p] * x[j];
      if (i != j) below += K.value[p] * x[i];
    }
    r[j] -= below;
  }
}

}  // namespace

std::vector<double> residual(const symmetric_matrix& K, const std::vector<double>& x, const std::vector<double>& b) {
  std::vector<double> r(b.size(), 0.0);
  if (is_first_rank()) r = b;
  subtract_product(K, x, r);
  sum_over_ranks(r);
  return r;
}

std::vector<double> product(const symmetric_matrix& K, const std::vector<double>& x) {
  std::vector<double> y = residual(K, x, std::vector<double>(x.size(), 0.0));
  for (double& value : y) value = -value;
  return y;
}

double backward_error(const symmetric_matrix& K, const std::vector<double>& x, const std::vector<double>& b) {
  std::vector<double> size(b.size(), 0.0), r(b.size(), 0.0);
  if (is_first_rank()) {
    r = b;
    for (std::size_t i = 0; i < b.size(); ++i) size[i] = std::fabs(b[i]);
  }
  for (std::size_t j = 0; j < K.order(); ++j) {
    double below = 0, size_below = 0;  // what row j of the upper triangle has, as in residual()
    for (std::size_t p = K.begin_of(j); p < K.begin_of(j + 1); ++p) {
      const auto i = subscript(K.row[p]);
      const double part = K.value[p] * x[j];
      r[i] -= part;
      size[i] += std::fabs(part);
      if (i == j) continue;
      const double mirrored = K.value[p] * x[i];
      below += mirrored;
      size_below += std::fabs(mirrored);
    }
    r[j] -= below;
    size[j] += size_below;
  }
  sum_over_ranks(size);
  sum_over_ranks(r);
  const double whole = norm(size);
  if (!std::isfinite(whole)) return whole;
  return whole > 0 ? norm(r) / whole : 0;
}

}  // namespace solver
