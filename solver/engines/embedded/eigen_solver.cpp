// eigen_solver.cpp: an L D L^T factorisation with an approximate minimum degree ordering.
#include "engines/embedded/eigen_solver.h"

#include <new>
#include <stdexcept>

#include <Eigen/SparseCholesky>

#include "system/memory.h"
#include "system/progress.h"

namespace solver {

namespace {

// The entries of the factor are known once the pattern is analysed.
class sized_factor : public Eigen::SimplicialLDLT<Eigen::SparseMatrix<double>, Eigen::Lower> {
 public:
  double megabytes() const {
    constexpr double BYTES_PER_ENTRY = sizeof(double) + sizeof(StorageIndex), MEGABYTE = 1e6;
    return BYTES_PER_ENTRY * static_cast<double>(m_matrix.nonZeros()) / MEGABYTE;
  }
};

class eigen_solver : public linear_solver {
 public:
  explicit eigen_solver(double megabytes) : allowed_(megabytes) {}

  std::string name() const override { return "Eigen"; }

  bool factorise(const symmetric_matrix& K) override {
    if (has_factors_of(K)) return true;
    forget_factors();
    const mapped_matrix matrix = mapped(K);
    const ticking_clock clock("factorisation");
    try {
      factor_.analyzePattern(matrix);
      require_memory(factor_.megabytes(), allowed_);
      factor_.factorize(matrix);
    } catch (const std::bad_alloc&) {
      throw std::runtime_error("not enough memory for the factorisation; make the model smaller or the memory larger");
    }
    if (factor_.info() != Eigen::Success) return false;
    keep_factors_of(K);
    return true;
  }

  double megabytes_of_factors(const symmetric_matrix& K) override {
    constexpr double COPIES = 3, MEGABYTE = 1e6;  // of the matrix: its whole pattern, twice, and its order changed
    const double entries = static_cast<double>(K.value.size());
    factor_.analyzePattern(mapped(K));
    return factor_.megabytes() + COPIES * entries * (sizeof(double) + sizeof(std::int32_t)) / MEGABYTE;
  }

  std::size_t negative_pivots() const override { return subscript((factor_.vectorD().array() < 0).count()); }

  void solve(std::vector<double>& x) override {
    const Eigen::Index order = factor_.cols();
    Eigen::Map<Eigen::MatrixXd> values(x.data(), order, signed_index(x.size()) / order);
    values = factor_.solve(values).eval();
  }

 private:
  using mapped_matrix = Eigen::Map<const Eigen::SparseMatrix<double>>;
  static mapped_matrix mapped(const symmetric_matrix& K) {
    const auto order = signed_index(K.order());
    return {order, order, signed_index(K.value.size()), K.column_start.data(), K.row.data(), K.value.data()};
  }

  sized_factor factor_;
  double allowed_;
};

}  // namespace

std::unique_ptr<linear_solver> make_eigen_solver(double megabytes) { return std::make_unique<eigen_solver>(megabytes); }

}  // namespace solver
