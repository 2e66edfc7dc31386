// full_matrices.cpp: where the decompositions are instantiated.
#include "system/full_matrices.h"

#include <Eigen/Eigenvalues>
#include <Eigen/QR>

namespace solver {

eigen_system eigen_system_of(const Eigen::MatrixXd& A) {
  const Eigen::SelfAdjointEigenSolver<Eigen::MatrixXd> solution(A);
  return {solution.eigenvalues(), solution.eigenvectors(), solution.info() == Eigen::Success};
}

eigen_system eigen_system_of(const Eigen::MatrixXd& A, const Eigen::MatrixXd& B) {
  const Eigen::GeneralizedSelfAdjointEigenSolver<Eigen::MatrixXd> solution(A, B);
  return {solution.eigenvalues(), solution.eigenvectors(), solution.info() == Eigen::Success};
}

Eigen::MatrixXd orthonormal(const Eigen::MatrixXd& X) {
  const Eigen::HouseholderQR<Eigen::MatrixXd> factor(X);
  return factor.householderQ() * Eigen::MatrixXd::Identity(X.rows(), X.cols());
}

Eigen::MatrixXd shortest_solution(const Eigen::MatrixXd& A, const Eigen::MatrixXd& b, double dependent) {
  Eigen::CompleteOrthogonalDecomposition<Eigen::MatrixXd> factor;
  factor.setThreshold(dependent);
  factor.compute(A);
  return factor.solve(b);
}

}  // namespace solver
