// linear_solver.h: factorises a sparse symmetric positive definite matrix and solves with it.
//
// Two implementations: MUMPS (Amestoy, Duff, L'Excellent and Koster, 2001), a multifrontal solver, where the build
// found it; and Eigen's own simplicial factorisation, which needs nothing else.
#ifndef FINITES_SOLVER_LINEAR_SOLVER_H
#define FINITES_SOLVER_LINEAR_SOLVER_H

#include <cstddef>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "elements/scatter_map.h"
#include "model/long_vectors.h"

namespace solver {

class linear_solver {
 public:
  virtual ~linear_solver() = default;
  virtual std::string name() const = 0;

  // False when a pivot vanishes: the matrix is singular. May be called again with another matrix. Throws
  // std::runtime_error where the factors need more memory than there is, before they are computed.
  virtual bool factorise(const symmetric_matrix& K) = 0;

  // From now on a matrix that is bit by bit the one factorised last is not factorised again: several steps with other
  // loads alone follow one another. It takes a copy of the matrix.
  void expect_repeats() { repeats_ = true; }

  // What a factorisation of a matrix of this pattern needs, in megabytes of a million bytes, by the analysis of the
  // pattern alone, whether there is so much or not.
  virtual double megabytes_of_factors(const symmetric_matrix& K) = 0;

  // Of the matrix factorised last; 0 when it is positive definite (Sylvester's law of inertia).
  virtual std::size_t negative_pivots() const = 0;

  // x := K^-1 x, after a factorisation that went well. Several right sides stand in x one after the other.
  virtual void solve(std::vector<double>& x) = 0;

 protected:
  // Whether the last factorisation went well and was that of this matrix.
  bool has_factors_of(const symmetric_matrix& K) const;
  void forget_factors() { factorised_ = {}; }
  void keep_factors_of(const symmetric_matrix& K) {
    if (repeats_) factorised_ = K;
  }

 private:
  bool repeats_ = false;
  symmetric_matrix factorised_;  // empty: not known
};

enum class solver_kind { MUMPS, EIGEN };

// MUMPS where the build has it.
solver_kind default_solver();

// `megabytes`: what the process may hold; 0: what the machine and the limits of the process leave.
std::unique_ptr<linear_solver> make_linear_solver(solver_kind kind, double megabytes = 0);

// K x, from the lower triangle alone.
std::vector<double> product(const symmetric_matrix& K, const std::vector<double>& x);

// r := b - K x, from the lower triangle alone.
std::vector<double> residual(const symmetric_matrix& K, const std::vector<double>& x, const std::vector<double>& b);

// |b - K x| / | |K| |x| + |b| |: about 1e-16 when x is as good as doubles allow, however ill-conditioned K may be
// (Oettli and Prager, 1964). Not finite where those sums are not.
double backward_error(const symmetric_matrix& K, const std::vector<double>& x, const std::vector<double>& b);

}  // namespace solver

#endif
