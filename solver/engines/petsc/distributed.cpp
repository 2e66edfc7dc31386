// distributed.cpp: each rank puts in the rows that are its own.
#include "engines/petsc/distributed.h"

#include <algorithm>

#include "model/long_vectors.h"
#include "system/ranks.h"

namespace solver {

static_assert(sizeof(PetscInt) == sizeof(std::int32_t) && sizeof(PetscScalar) == sizeof(double),
              "the build of PETSc with 32-bit numbers and real doubles, whose arrays are ours");

own_rows rows_of_rank(std::size_t order) {
  const auto n = static_cast<PetscInt>(order), ranks = static_cast<PetscInt>(rank_count()), own = rank();
  const PetscInt least = n / ranks, longer = n % ranks;  // the first ones have one more
  own_rows rows;
  rows.first = own * least + std::min(own, longer);
  rows.end = rows.first + least + (own < longer ? 1 : 0);
  return rows;
}

void make_symmetric(const symmetric_matrix& A, owned_matrix& to) {
  const own_rows rows = rows_of_rank(A.order());
  const auto order = static_cast<PetscInt>(A.order());
  require(MatCreate(PETSC_COMM_WORLD, to.place()), "a matrix");
  require(MatSetSizes(to.get(), rows.count(), rows.count(), order, order), "a matrix");
  require(MatSetType(to.get(), MATSBAIJ), "a matrix");
  std::vector<PetscInt> start(subscript(rows.count()) + 1);
  const auto first = A.begin_of(subscript(rows.first)), end = A.begin_of(subscript(rows.end));
  for (std::size_t i = 0; i < start.size(); ++i) {
    start[i] = static_cast<PetscInt>(A.begin_of(subscript(rows.first) + i) - first);
  }
  // Each of the two forms takes its own call: of several ranks, and of one.
  const std::vector<PetscInt> column(A.row.begin() + signed_index(first), A.row.begin() + signed_index(end));
  require(MatMPISBAIJSetPreallocationCSR(to.get(), 1, start.data(), column.data(), A.value.data() + first), "a matrix");
  require(MatSeqSBAIJSetPreallocationCSR(to.get(), 1, start.data(), column.data(), A.value.data() + first), "a matrix");
  require(MatSetOption(to.get(), MAT_SYMMETRIC, PETSC_TRUE), "a matrix");
}

void fill_symmetric(const symmetric_matrix& A, Mat to) {
  const own_rows rows = rows_of_rank(A.order());
  for (PetscInt i = rows.first; i < rows.end; ++i) {
    const std::size_t begin = A.begin_of(subscript(i)), end = A.begin_of(subscript(i) + 1);
    require(MatSetValues(to, 1, &i, static_cast<PetscInt>(end - begin), A.row.data() + begin, A.value.data() + begin,
                         INSERT_VALUES),
            "values of a matrix");
  }
  require(MatAssemblyBegin(to, MAT_FINAL_ASSEMBLY), "a matrix");
  require(MatAssemblyEnd(to, MAT_FINAL_ASSEMBLY), "a matrix");
}

void make_full(const symmetric_matrix& A, owned_matrix& to) {
  const own_rows rows = rows_of_rank(A.order());
  const auto order = static_cast<PetscInt>(A.order());
  const auto is_own = [&](PetscInt i) { return i >= rows.first && i < rows.end; };
  // Entry (i, j) of the lower triangle stands in row i, and where it is not on the diagonal in row j too. Columns come
  // in rising order: those left of the diagonal by the loop over j, the others by the order of each column.
  std::vector<PetscInt> start(subscript(rows.count()) + 1, 0);
  for (PetscInt j = 0; j < order; ++j) {
    for (std::size_t p = A.begin_of(subscript(j)); p < A.begin_of(subscript(j) + 1); ++p) {
      if (is_own(A.row[p])) ++start[subscript(A.row[p] - rows.first) + 1];
      if (A.row[p] != j && is_own(j)) ++start[subscript(j - rows.first) + 1];
    }
  }
  for (std::size_t i = 1; i < start.size(); ++i) start[i] += start[i - 1];
  std::vector<PetscInt> column(subscript(start.back())), next(start.begin(), start.end() - 1);
  std::vector<double> value(column.size());
  const auto put = [&](PetscInt i, PetscInt j, double entry) {
    const auto at = subscript(next[subscript(i - rows.first)]++);
    column[at] = j;
    value[at] = entry;
  };
  for (PetscInt j = 0; j < order; ++j) {
    for (std::size_t p = A.begin_of(subscript(j)); p < A.begin_of(subscript(j) + 1); ++p) {
      if (A.row[p] != j && is_own(A.row[p])) put(A.row[p], j, A.value[p]);
    }
    if (!is_own(j)) continue;
    for (std::size_t p = A.begin_of(subscript(j)); p < A.begin_of(subscript(j) + 1); ++p) put(j, A.row[p], A.value[p]);
  }
  require(MatCreateMPIAIJWithArrays(PETSC_COMM_WORLD, rows.count(), rows.count(), order, order, start.data(),
                                    column.data(), value.data(), to.place()),
          "a matrix");
  require(MatSetOption(to.get(), MAT_SPD, PETSC_TRUE), "a matrix");
}

shared_vectors::shared_vectors(std::size_t order) : order_(order), rows_(rows_of_rank(order)) {
  const auto n = static_cast<PetscInt>(order);
  require(VecCreateMPI(PETSC_COMM_WORLD, rows_.count(), n, right_.place()), "a vector");
  require(VecDuplicate(right_.get(), left_.place()), "a vector");
  require(VecScatterCreateToAll(right_.get(), scatter_.place(), whole_.place()), "a vector");
}

void shared_vectors::put(const double* values, Vec to) const {
  double* own = nullptr;
  require(VecGetArray(to, &own), "a vector");
  std::copy(values + rows_.first, values + rows_.end, own);
  require(VecRestoreArray(to, &own), "a vector");
}

void shared_vectors::take(Vec from, double* values) const {
  require(VecScatterBegin(scatter_.get(), from, whole_.get(), INSERT_VALUES, SCATTER_FORWARD), "a vector");
  require(VecScatterEnd(scatter_.get(), from, whole_.get(), INSERT_VALUES, SCATTER_FORWARD), "a vector");
  const double* all = nullptr;
  require(VecGetArrayRead(whole_.get(), &all), "a vector");
  std::copy(all, all + order_, values);
  require(VecRestoreArrayRead(whole_.get(), &all), "a vector");
}

}  // namespace solver
