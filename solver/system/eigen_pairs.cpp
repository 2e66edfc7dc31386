// eigen_pairs.cpp: Spectra's solver in its regular inverse mode, fed by our product and our factorisation.
#include "system/eigen_pairs.h"

#include <Spectra/SymGEigsSolver.h>

#include <algorithm>
#include <functional>
#include <stdexcept>
#include <string>

#include "system/full_matrices.h"
#include "system/linear_solver.h"
#include "system/progress.h"
#include "system/ranks.h"

namespace solver {

namespace {

constexpr Eigen::Index DENSE_ORDER = 120;  // up to here a dense solution is as quick, and misses nothing
constexpr double TOLERANCE = 1e-11;
constexpr Eigen::Index ITERATIONS = 1000;

Eigen::Map<const Eigen::SparseMatrix<double>> mapped(const symmetric_matrix& A) {
  const auto order = signed_index(A.order());
  return {order, order, signed_index(A.value.size()), A.column_start.data(), A.row.data(), A.value.data()};
}

void multiply(const symmetric_matrix& A, const double* x, double* y) {
  const auto order = signed_index(A.order());
  if (rank_count() > 1) {
    const std::vector<double> Ax = product(A, std::vector<double>(x, x + order));
    std::copy(Ax.begin(), Ax.end(), y);
    return;
  }
  Eigen::Map<Eigen::VectorXd>(y, order).noalias() =
      mapped(A).selfadjointView<Eigen::Lower>() * Eigen::Map<const Eigen::VectorXd>(x, order);
}

// What Spectra asks of A and of B.
class operator_a {
 public:
  using Scalar = double;
  explicit operator_a(const symmetric_matrix& A) : A_(A) {}
  Eigen::Index rows() const { return signed_index(A_.order()); }
  Eigen::Index cols() const { return rows(); }
  void perform_op(const double* x, double* y) const { multiply(A_, x, y); }

 private:
  const symmetric_matrix& A_;
};

class operator_b {
 public:
  using Scalar = double;
  operator_b(const symmetric_matrix& B, linear_solver& factorised) : B_(B), factorised_(factorised) {}
  Eigen::Index rows() const { return signed_index(B_.order()); }
  Eigen::Index cols() const { return rows(); }
  void perform_op(const double* x, double* y) const { multiply(B_, x, y); }
  void solve(const double* x, double* y) const {
    std::vector<double> values(x, x + B_.order());
    factorised_.solve(values);
    if (watch) watch();
    std::copy(values.begin(), values.end(), y);
  }

  std::function<void()> watch;  // told of each solution; none: nobody is

 private:
  const symmetric_matrix& B_;
  linear_solver& factorised_;
};

void append(eigen_pairs& pairs, double value, const Eigen::VectorXd& mode) {
  pairs.value.push_back(value);
  pairs.vector.emplace_back(mode.data(), mode.data() + mode.size());
}

// The lower triangle, of the matrix of all processes.
Eigen::MatrixXd dense(const symmetric_matrix& A) {
  Eigen::MatrixXd all = mapped(A);
  if (rank_count() == 1) return all;
  std::vector<double> values(all.data(), all.data() + all.size());
  sum_over_ranks(values);
  return Eigen::Map<const Eigen::MatrixXd>(values.data(), all.rows(), all.cols());
}

eigen_pairs dense_pairs(const symmetric_matrix& A, const symmetric_matrix& B, std::size_t count) {
  // The dense solver reads the lower triangles alone.
  const Eigen::MatrixXd a = dense(A), b = dense(B);
  const eigen_system solution = eigen_system_of(a, b);
  if (!solution.found) throw std::runtime_error("the eigenvalues of the structure were not found");
  eigen_pairs pairs;
  const Eigen::Index order = a.rows();
  for (Eigen::Index i = 0; i < order && pairs.value.size() < count; ++i) {
    append(pairs, solution.values(order - 1 - i), solution.vectors.col(order - 1 - i));
  }
  return pairs;
}

// Those that have converged; the iteration asks for a few more than the step.
std::string modes_found(Eigen::Index found, Eigen::Index wanted) {
  return std::to_string(std::min(found, wanted)) + " of " + std::to_string(wanted) + " found";
}

}  // namespace

// A few pairs more than wanted are asked for: so the last wanted ones of a group of equal values are found together.
eigen_pairs largest_pairs(const symmetric_matrix& A, const symmetric_matrix& B, linear_solver& factorised,
                          std::size_t count) {
  const bool nothing = std::all_of(A.value.begin(), A.value.end(), [](double value) { return value == 0; });
  if (true_for_all(nothing)) return {};
  const auto order = signed_index(A.order());
  const auto wanted = std::min(signed_index(count) + 4, order - 1);
  if (order <= DENSE_ORDER || wanted > order / 2) return dense_pairs(A, B, count);
  if (eigen_pairs found; factorised.find_pairs(A, B, count, found)) return found;
  operator_a a(A);
  operator_b b(B, factorised);
  const Eigen::Index space = std::min(order, std::max<Eigen::Index>(3 * wanted, 24));
  Spectra::SymGEigsSolver<operator_a, operator_b, Spectra::GEigsMode::RegularInverse> iteration(a, b, wanted, space);
  const progress report("modes");
  b.watch = [&] { report.at(modes_found(iteration.eigenvalues().size(), wanted)); };
  try {
    iteration.init();
    iteration.compute(Spectra::SortRule::LargestAlge, ITERATIONS, TOLERANCE);
  } catch (const std::exception&) {
    // Its own text is about its inner matrices.
    throw std::runtime_error("the iteration for the eigenvalues of the structure broke down");
  }
  if (iteration.info() != Spectra::CompInfo::Successful) {
    throw std::runtime_error("the iteration for the eigenvalues did not converge");
  }
  b.watch = nullptr;
  const Eigen::VectorXd values = iteration.eigenvalues();
  const Eigen::MatrixXd vectors = iteration.eigenvectors();
  eigen_pairs pairs;
  for (Eigen::Index i = 0; i < values.size() && pairs.value.size() < count; ++i) {
    append(pairs, values(i), vectors.col(i));
  }
  return pairs;
}

}  // namespace solver
