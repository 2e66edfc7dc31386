// distributed.h: matrices and vectors by rows over the ranks of PETSC_COMM_WORLD, from values that every rank has.
#ifndef FINITES_SOLVER_PETSC_DISTRIBUTED_H
#define FINITES_SOLVER_PETSC_DISTRIBUTED_H

#include <vector>

#include "elements/scatter_map.h"
#include "engines/petsc/handles.h"

namespace solver {

// The rows first to end - 1 that this rank holds of a matrix of this order.
struct own_rows {
  PetscInt first = 0, end = 0;
  PetscInt count() const { return end - first; }
};
own_rows rows_of_rank(std::size_t order);

// The form with the upper triangle alone, which the factorisation takes; its row i is column i of the lower one.
void make_symmetric(const symmetric_matrix& A, owned_matrix& to);
// New values of the same pattern.
void fill_symmetric(const symmetric_matrix& A, Mat to);
// Both triangles, for multigrid.
void make_full(const symmetric_matrix& A, owned_matrix& to);

// Vectors by rows, and all of one on every rank.
class shared_vectors {
 public:
  explicit shared_vectors(std::size_t order);

  Vec right() const { return right_.get(); }
  Vec left() const { return left_.get(); }
  // The rank's rows of `values`, which hold a whole vector.
  void put(const double* values, Vec to) const;
  // The whole vector to every rank.
  void take(Vec from, double* values) const;

 private:
  std::size_t order_;
  own_rows rows_;
  owned_vector right_, left_, whole_;
  owned_scatter scatter_;
};

}  // namespace solver

#endif
