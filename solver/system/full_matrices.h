// full_matrices.h: the decompositions of full matrices that the solver takes from Eigen.
//
// Each is instantiated once, in full_matrices.cpp: in every file that asks for one the compiler would take as long for
// it as for thirty files without.
#ifndef FINITES_SOLVER_SYSTEM_FULL_MATRICES_H
#define FINITES_SOLVER_SYSTEM_FULL_MATRICES_H

#include <Eigen/Core>

namespace solver {

// Eigenvalues from the smallest up, and in the columns beside them their vectors of length 1 (of length 1 in the metric
// of B where there is one).
struct eigen_system {
  Eigen::VectorXd values;
  Eigen::MatrixXd vectors;
  bool found = false;
};

// Of a symmetric matrix, and of A x = value B x with a positive definite B. Lower triangles alone are read.
eigen_system eigen_system_of(const Eigen::MatrixXd& A);
eigen_system eigen_system_of(const Eigen::MatrixXd& A, const Eigen::MatrixXd& B);

// Columns of length 1 at right angles that span what those of X span (Householder 1958).
Eigen::MatrixXd orthonormal(const Eigen::MatrixXd& X);

// The x of the smallest length among those that come nearest to A x = b; pivots of A below `dependent` times the
// largest count as 0.
Eigen::MatrixXd shortest_solution(const Eigen::MatrixXd& A, const Eigen::MatrixXd& b, double dependent);

}  // namespace solver

#endif
