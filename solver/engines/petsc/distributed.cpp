// distributed.cpp: parts of rows go to the rank that has them.
#include "engines/petsc/distributed.h"

#include <algorithm>
#include <limits>
#include <stdexcept>
#include <utility>

#include "engines/petsc/exchange.h"
#include "model/long_vectors.h"
#include "system/ranks.h"

namespace solver {

static_assert(sizeof(PetscInt) == sizeof(std::int32_t) && sizeof(PetscScalar) == sizeof(double),
              "the build of PETSc with 32-bit numbers and real doubles, whose arrays are ours");

own_rows rows_of_rank(std::size_t order) { return rows_of_rank(order, rank()); }

own_rows rows_of_rank(std::size_t order, int process) {
  const auto n = static_cast<PetscInt>(order), ranks = static_cast<PetscInt>(rank_count()), own = process;
  const PetscInt least = n / ranks, longer = n % ranks;  // the first ones have one more
  own_rows rows;
  rows.first = own * least + std::min(own, longer);
  rows.end = rows.first + least + (own < longer ? 1 : 0);
  return rows;
}

upper_rows::upper_rows(const symmetric_matrix& part) : order_(part.order()), rows_(rows_of_rank(part.order())) {
  if (rank_count() > 1) exchange_pattern(part);
}

// Equations ascend from rank to rank, so that what goes to a rank is a stretch of the entries here.
void upper_rows::exchange_pattern(const symmetric_matrix& part) {
  const std::size_t ranks = subscript(rank_count()), own = subscript(rows_.count());
  std::vector<int> lengths(order_), first_row(ranks), rows(ranks), from(ranks), own_count(ranks, rows_.count());
  for (std::size_t i = 0; i < order_; ++i) lengths[i] = part.column_start[i + 1] - part.column_start[i];
  for (std::size_t r = 0; r < ranks; ++r) {
    const own_rows theirs = rows_of_rank(order_, number_of(r));
    first_row[r] = theirs.first;
    rows[r] = theirs.count();
    from[r] = number_of(r * own);
    sent_from_.push_back(number_of(part.begin_of(subscript(theirs.first))));
    sent_.push_back(number_of(part.begin_of(subscript(theirs.end))) - sent_from_.back());
  }
  std::vector<int> length(own * ranks);  // of my rows, from each rank
  must(MPI_Alltoallv(lengths.data(), rows.data(), first_row.data(), MPI_INT, length.data(), own_count.data(),
                     from.data(), MPI_INT, PETSC_COMM_WORLD));
  std::size_t all = 0;
  for (std::size_t r = 0; r < ranks; ++r) {
    received_at_.push_back(number_of(all));
    const std::size_t before = all;
    for (std::size_t i = 0; i < own; ++i) all += subscript(length[r * own + i]);
    received_.push_back(number_of(all - before));
  }
  if (all > subscript(std::numeric_limits<int>::max())) {
    throw std::runtime_error("a process has more entries of the equations than it can number: take more processes");
  }
  std::vector<PetscInt> columns(all);
  must(MPI_Alltoallv(part.row.data(), sent_.data(), sent_from_.data(), MPI_INT, columns.data(), received_.data(),
                     received_at_.data(), MPI_INT, PETSC_COMM_WORLD));
  position_.resize(all);
  start_.assign(1, 0);
  std::vector<std::size_t> at(received_at_.begin(), received_at_.end());
  std::vector<PetscInt> row;
  for (std::size_t i = 0; i < own; ++i) {
    row.clear();
    for (std::size_t r = 0; r < ranks; ++r) {
      const auto begin = columns.begin() + signed_index(at[r]);
      row.insert(row.end(), begin, begin + length[r * own + i]);
    }
    std::sort(row.begin(), row.end());
    row.erase(std::unique(row.begin(), row.end()), row.end());
    for (std::size_t r = 0; r < ranks; ++r) {
      for (int k = 0; k < length[r * own + i]; ++k, ++at[r]) {
        const auto found = std::lower_bound(row.begin(), row.end(), columns[at[r]]);
        position_[at[r]] = start_.back() + static_cast<PetscInt>(found - row.begin());
      }
    }
    column_.insert(column_.end(), row.begin(), row.end());
    start_.push_back(static_cast<PetscInt>(column_.size()));
  }
}

upper_rows::entries upper_rows::sum(const symmetric_matrix& part) const {
  if (rank_count() == 1) return {part.column_start.data(), part.row.data(), part.value.data(), {}};
  std::vector<double> received(position_.size()), sums(column_.size(), 0.0);
  must(MPI_Alltoallv(part.value.data(), sent_.data(), sent_from_.data(), MPI_DOUBLE, received.data(), received_.data(),
                     received_at_.data(), MPI_DOUBLE, PETSC_COMM_WORLD));
  for (std::size_t k = 0; k < received.size(); ++k) sums[subscript(position_[k])] += received[k];
  const double* const value = sums.data();
  return {start_.data(), column_.data(), value, std::move(sums)};
}

void make_symmetric(const upper_rows& rows, const symmetric_matrix& A, owned_matrix& to) {
  const PetscInt count = rows.rows().count();
  const auto order = static_cast<PetscInt>(rows.order());
  const upper_rows::entries all = rows.sum(A);
  require(MatCreate(PETSC_COMM_WORLD, to.place()), "a matrix");
  require(MatSetSizes(to.get(), count, count, order, order), "a matrix");
  require(MatSetType(to.get(), MATSBAIJ), "a matrix");
  // Each of the two forms takes its own call: of several ranks, and of one.
  require(MatMPISBAIJSetPreallocationCSR(to.get(), 1, all.start, all.column, all.value), "a matrix");
  require(MatSeqSBAIJSetPreallocationCSR(to.get(), 1, all.start, all.column, all.value), "a matrix");
  require(MatSetOption(to.get(), MAT_SYMMETRIC, PETSC_TRUE), "a matrix");
}

void fill_symmetric(const upper_rows& rows, const symmetric_matrix& A, Mat to) {
  const upper_rows::entries all = rows.sum(A);
  for (PetscInt i = 0; i < rows.rows().count(); ++i) {
    const PetscInt row = rows.rows().first + i, begin = all.start[i];
    require(MatSetValues(to, 1, &row, all.start[i + 1] - begin, all.column + begin, all.value + begin, INSERT_VALUES),
            "values of a matrix");
  }
  require(MatAssemblyBegin(to, MAT_FINAL_ASSEMBLY), "a matrix");
  require(MatAssemblyEnd(to, MAT_FINAL_ASSEMBLY), "a matrix");
}

void make_full(const symmetric_matrix& A, owned_matrix& to) {
  owned_matrix upper;
  make_symmetric(upper_rows(A), A, upper);
  require(MatConvert(upper.get(), MATAIJ, MAT_INITIAL_MATRIX, to.place()), "a matrix");
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
