// distributed.h: matrices and vectors by rows over the ranks of PETSC_COMM_WORLD: matrices from the parts that each
// rank has summed over its own elements, vectors from values that every rank has.
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
own_rows rows_of_rank(std::size_t order, int process);

// The rows of a rank in the upper triangle of a matrix that is the sum of the parts of all ranks; row i of it is column
// i of the lower one. Made by all ranks together, as its values are. One rank has them all in the matrix itself, and
// keeps no copy.
class upper_rows {
 public:
  explicit upper_rows(const symmetric_matrix& part);

  own_rows rows() const { return rows_; }
  std::size_t order() const { return order_; }

  // Where each row begins among the entries, one more than there are rows; columns ascend. The values are the sums of
  // the parts in the order of the ranks; `part` has the pattern of the one above, and has to stay as long as the
  // entries.
  struct entries {
    const PetscInt *start, *column;
    const double* value;
    std::vector<double> summed;
  };
  entries sum(const symmetric_matrix& part) const;

 private:
  void exchange_pattern(const symmetric_matrix& part);

  std::size_t order_;
  own_rows rows_;
  std::vector<PetscInt> start_, column_;
  // What goes to each rank of the entries here, and comes from each; where each that comes is added.
  std::vector<int> sent_, sent_from_, received_, received_at_;
  std::vector<PetscInt> position_;
};

// The form with the upper triangle alone, which the factorisation takes.
void make_symmetric(const upper_rows& rows, const symmetric_matrix& A, owned_matrix& to);
// New values of the same pattern.
void fill_symmetric(const upper_rows& rows, const symmetric_matrix& A, Mat to);
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
