// eigen_solver.cpp: an L D L^T factorisation with an approximate minimum degree ordering.
#include "system/eigen_solver.h"

#include <Eigen/SparseCholesky>

namespace solver {

namespace {

class eigen_solver : public linear_solver {
 public:
  std::string name() const override { return "Eigen"; }

  bool factorise(const symmetric_matrix& K) override {
    const auto order = static_cast<Eigen::Index>(K.order());
    const Eigen::Map<const Eigen::SparseMatrix<double>> matrix(order, order, static_cast<Eigen::Index>(K.value.size()),
                                                               K.column_start.data(), K.row.data(), K.value.data());
    factor_.compute(matrix);
    return factor_.info() == Eigen::Success;
  }

  std::size_t negative_pivots() const override {
    return static_cast<std::size_t>((factor_.vectorD().array() < 0).count());
  }

  void solve(std::vector<double>& x) override {
    Eigen::Map<Eigen::VectorXd> values(x.data(), static_cast<Eigen::Index>(x.size()));
    values = factor_.solve(values).eval();
  }

 private:
  Eigen::SimplicialLDLT<Eigen::SparseMatrix<double>, Eigen::Lower> factor_;
};

}  // namespace

std::unique_ptr<linear_solver> make_eigen_solver() { return std::make_unique<eigen_solver>(); }

}  // namespace solver
