// exchange.cpp: sums and lists over the ranks of PETSC_COMM_WORLD, in the order of the ranks.
//
// A reduction of MPI may add up in any order. Here each rank gets a slice of the parts of all, adds them up in their
// order and gives the sum to all: as much goes over the network, and the bits are the same in every run.
#include <petscsys.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <new>
#include <stdexcept>

#include "engines/petsc/exchange.h"
#include "model/deck_error.h"
#include "system/ranks.h"

namespace solver {

namespace {

constexpr std::size_t SHORT = 1024;  // up to here all get all parts
// Counts of MPI are ints: longer lists go in several pieces.
constexpr std::size_t LONGEST = std::size_t{1} << 26;

void add_in_order(const std::vector<double>& parts, std::size_t length, double* sum) {
  std::copy_n(parts.data(), length, sum);
  for (std::size_t first = length; first < parts.size(); first += length) {
    for (std::size_t i = 0; i < length; ++i) sum[i] += parts[first + i];
  }
}

void sum_short(double* values, std::size_t count) {
  std::vector<double> parts(count * subscript(rank_count()));
  const int length = number_of(count);
  must(MPI_Allgather(values, length, MPI_DOUBLE, parts.data(), length, MPI_DOUBLE, PETSC_COMM_WORLD));
  add_in_order(parts, count, values);
}

void sum_long(double* values, std::size_t count) {
  const std::size_t ranks = subscript(rank_count()), slice = (count + ranks - 1) / ranks;
  std::vector<int> length(ranks), start(ranks), from(ranks), own_length(ranks);
  for (std::size_t r = 0; r < ranks; ++r) {
    const std::size_t first = std::min(r * slice, count);
    start[r] = number_of(first);
    length[r] = number_of(std::min(first + slice, count) - first);
  }
  const std::size_t own = subscript(length[subscript(rank())]);
  for (std::size_t r = 0; r < ranks; ++r) {
    from[r] = number_of(r * own);
    own_length[r] = number_of(own);
  }
  std::vector<double> parts(own * ranks), sum(own);
  must(MPI_Alltoallv(values, length.data(), start.data(), MPI_DOUBLE, parts.data(), own_length.data(), from.data(),
                     MPI_DOUBLE, PETSC_COMM_WORLD));
  if (own > 0) add_in_order(parts, own, sum.data());
  must(MPI_Allgatherv(sum.data(), number_of(own), MPI_DOUBLE, values, length.data(), start.data(), MPI_DOUBLE,
                      PETSC_COMM_WORLD));
}

// What each rank has of a list of bytes, one after the other.
struct list_of_bytes {
  std::vector<int> length, start;
  std::size_t size = 0;

  explicit list_of_bytes(std::size_t own) {
    std::vector<std::size_t> sizes(subscript(rank_count()));
    must(MPI_Allgather(&own, sizeof own, MPI_BYTE, sizes.data(), sizeof own, MPI_BYTE, PETSC_COMM_WORLD));
    for (const std::size_t each : sizes) {
      if (size + each > subscript(std::numeric_limits<int>::max())) {
        throw std::runtime_error("the processes have more to exchange than one message holds");
      }
      length.push_back(number_of(each));
      start.push_back(number_of(size));
      size += each;
    }
  }

  std::vector<std::vector<char>> split(const std::vector<char>& bytes) const {
    std::vector<std::vector<char>> parts;
    for (std::size_t r = 0; r < length.size(); ++r) {
      const auto first = bytes.begin() + start[r];
      parts.emplace_back(first, first + length[r]);
    }
    return parts;
  }
};

// What a rank tells of its failure.
struct failure {
  bool is_of_deck = false;
  int line = 0;
  std::string file, keyword, text;
};

failure read_failure(std::vector<char> bytes) {
  packed_values packed(std::move(bytes));
  const auto text = [&] {
    std::string read(packed.take<std::size_t>(), ' ');
    packed.take(read.data(), read.size());
    return read;
  };
  failure told;
  told.is_of_deck = packed.take<bool>();
  told.line = packed.take<int>();
  told.file = text();
  told.keyword = text();
  told.text = text();
  return told;
}

std::vector<char> written(const failure& told) {
  packed_values packed;
  packed.put(told.is_of_deck);
  packed.put(told.line);
  for (const std::string& text : {told.file, told.keyword, told.text}) {
    packed.put(text.size());
    packed.put(text.data(), text.size());
  }
  return packed.bytes();
}

failure describe(const std::exception_ptr& failed) {
  try {
    std::rethrow_exception(failed);
  } catch (const std::bad_alloc&) {
    throw;
  } catch (const deck_error& error) {
    return {true, error.line, error.file, error.keyword, error.text};
  } catch (const std::exception& error) {
    return {false, 0, "", "", error.what()};
  }
}

}  // namespace

void must(int code) {
  if (code != MPI_SUCCESS) throw std::runtime_error("the processes cannot exchange their data");
}

void sum_over_ranks(std::vector<double>& values) {
  if (rank_count() == 1) return;
  for (std::size_t first = 0; first < values.size(); first += LONGEST) {
    const std::size_t count = std::min(LONGEST, values.size() - first);
    if (count <= SHORT) {
      sum_short(values.data() + first, count);
    } else {
      sum_long(values.data() + first, count);
    }
  }
}

double sum_over_ranks(double value) {
  if (rank_count() > 1) sum_short(&value, 1);
  return value;
}

double largest_over_ranks(double value) {
  double largest = value;
  if (rank_count() > 1) must(MPI_Allreduce(&value, &largest, 1, MPI_DOUBLE, MPI_MAX, PETSC_COMM_WORLD));
  return largest;
}

bool true_for_all(bool here) {
  int own = here ? 1 : 0, all = own;
  if (rank_count() > 1) must(MPI_Allreduce(&own, &all, 1, MPI_INT, MPI_MIN, PETSC_COMM_WORLD));
  return all != 0;
}

std::vector<std::vector<char>> from_all_ranks(const std::vector<char>& own) {
  if (rank_count() == 1) return {own};
  const list_of_bytes all(own.size());
  std::vector<char> bytes(all.size);
  must(MPI_Allgatherv(own.data(), number_of(own.size()), MPI_BYTE, bytes.data(), all.length.data(), all.start.data(),
                      MPI_BYTE, PETSC_COMM_WORLD));
  return all.split(bytes);
}

std::vector<std::vector<char>> at_first_rank(const std::vector<char>& own) {
  if (rank_count() == 1) return {own};
  const list_of_bytes all(own.size());
  std::vector<char> bytes(is_first_rank() ? all.size : 0);
  must(MPI_Gatherv(own.data(), number_of(own.size()), MPI_BYTE, bytes.data(), all.length.data(), all.start.data(),
                   MPI_BYTE, 0, PETSC_COMM_WORLD));
  return is_first_rank() ? all.split(bytes) : std::vector<std::vector<char>>{};
}

std::vector<char> of_first_rank(const std::vector<char>& own) {
  if (rank_count() == 1) return own;
  std::size_t size = own.size();
  must(MPI_Bcast(&size, sizeof size, MPI_BYTE, 0, PETSC_COMM_WORLD));
  std::vector<char> all(size);
  if (is_first_rank()) all = own;
  for (std::size_t first = 0; first < size; first += LONGEST) {
    must(MPI_Bcast(all.data() + first, number_of(std::min(LONGEST, size - first)), MPI_BYTE, 0, PETSC_COMM_WORLD));
  }
  return all;
}

void share_failure(const std::exception_ptr& failed) {
  const std::vector<char> own = failed == nullptr ? std::vector<char>{} : written(describe(failed));
  if (true_for_all(failed == nullptr)) return;
  failure first;
  bool found = false;
  for (std::vector<char>& bytes : from_all_ranks(own)) {
    if (bytes.empty()) continue;
    failure other = read_failure(std::move(bytes));
    const bool earlier = other.is_of_deck && first.is_of_deck && other.line < first.line;
    if (!found || earlier) first = std::move(other);
    found = true;
  }
  if (first.is_of_deck) throw deck_error(first.file, first.line, first.keyword, first.text);
  throw std::runtime_error(first.text);
}

}  // namespace solver
