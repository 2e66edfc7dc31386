// linear_solver.h: factorises a sparse symmetric positive definite matrix and solves with it.
//
// Each engine has its own. The embedded one: MUMPS (Amestoy, Duff, L'Excellent and Koster, 2001), a multifrontal
// solver, where the build found it, and Eigen's own simplicial factorisation, which needs nothing else. That of PETSc,
// over several processes: MUMPS too, and conjugate gradients.
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

struct eigen_pairs;

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

  // An iterative engine gets, before the factorisation, the motions that no stiffness within the structure resists: the
  // six rigid ones, each by equation, in the scale of the matrix.
  virtual bool asks_for_rigid_motions() const { return false; }
  virtual void take_rigid_motions(const std::vector<std::vector<double>>& /*motions*/) {}

  // The largest eigenvalues of A x = mu B x by the engine's own iteration, of a B that was factorised last; false: it
  // has none. Throws std::runtime_error when it fails.
  virtual bool find_pairs(const symmetric_matrix& /*A*/, const symmetric_matrix& /*B*/, std::size_t /*count*/,
                          eigen_pairs& /*found*/) {
    return false;
  }

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

enum class solver_kind { MUMPS, EIGEN, GRADIENTS };

struct solver_choice {
  const char* name;
  solver_kind kind;
};

// Of the engine of this program. The first solver is the one that runs take unless they ask for another.
const char* engine_name();
const std::vector<solver_choice>& solver_choices();
solver_kind default_solver();

// `megabytes`: what the process may hold; 0: what the machine and the limits of the process leave.
std::unique_ptr<linear_solver> make_linear_solver(solver_kind kind, double megabytes = 0);

// How many entries the matrix has; those of nodes that processes share count for each of them.
std::size_t entries_of(const symmetric_matrix& K);

// The diagonal; like the products below of the matrix of all processes, whose parts are added up (system/ranks.h).
std::vector<double> diagonal_of(const symmetric_matrix& K);

// K x, from the lower triangle alone.
std::vector<double> product(const symmetric_matrix& K, const std::vector<double>& x);

// r := b - K x, from the lower triangle alone.
std::vector<double> residual(const symmetric_matrix& K, const std::vector<double>& x, const std::vector<double>& b);

// |b - K x| / | |K| |x| + |b| |: about 1e-16 when x is as good as doubles allow, however ill-conditioned K may be
// (Oettli and Prager, 1964). Not finite where those sums are not. Parts of one entry that several processes have count
// in |K| one by one.
double backward_error(const symmetric_matrix& K, const std::vector<double>& x, const std::vector<double>& b);

}  // namespace solver

#endif
