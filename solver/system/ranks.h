// ranks.h: the processes that share a run, and what they tell one another.
//
// The embedded engine is one process. Of a distributed engine each has the same deck and takes the same steps; the
// elements are divided over them (divide_elements), and with the elements the matrix. Vectors by degree of freedom, by
// equation and by element are whole everywhere: what each process has summed over its own elements is added up, and
// what one process alone has found all learn, so that they take the same way. The calls of this file have to be made by
// all processes, in the same order; of one process they give back what they get.
#ifndef FINITES_SOLVER_RANKS_H
#define FINITES_SOLVER_RANKS_H

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <exception>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "model/model.h"

namespace solver {

// The number of this process among them, from 0. The first one writes what the run tells, the others nothing.
int rank();
int rank_count();
inline bool is_first_rank() { return rank() == 0; }

// Which process has which element, and how that was found, for the user: both empty where one process has them all.
struct element_division {
  numbered<int> process_of;
  std::string how;
};
element_division divide_elements(const model& m);

// Adds up over the processes, in their order: the same bits everywhere, and in every run with as many processes.
void sum_over_ranks(std::vector<double>& values);
double sum_over_ranks(double value);
double largest_over_ranks(double value);
// True where it is true for all.
bool true_for_all(bool here);
// What each process has in `own`, by process.
std::vector<std::vector<char>> from_all_ranks(const std::vector<char>& own);
// Likewise in the first process alone; nothing in the others.
std::vector<std::vector<char>> at_first_rank(const std::vector<char>& own);

// What the first process has, in all of them; what the others have does not count.
std::vector<char> of_first_rank(const std::vector<char>& own);

// Before what has thrown in one process alone leaves the others waiting: all throw what the first one of the processes
// has met, of errors of the deck that which comes first there. `failed`: null where nothing was thrown. A process that
// is out of memory ends the run by itself.
void share_failure(const std::exception_ptr& failed);

// work(), in which processes may fail one without the other and call nothing of this file.
template <class WORK>
void fail_together(const WORK& work) {
  if (rank_count() == 1) return work();
  std::exception_ptr failed;
  try {
    work();
  } catch (...) {
    failed = std::current_exception();
  }
  share_failure(failed);
}

// Plain values one after the other, for from_all_ranks().
class packed_values {
 public:
  packed_values() = default;
  explicit packed_values(std::vector<char> bytes) : bytes_(std::move(bytes)) {}

  template <class VALUE>
  void put(const VALUE* values, std::size_t count) {
    static_assert(std::is_trivially_copyable_v<VALUE>);
    const auto* const from = reinterpret_cast<const char*>(values);
    bytes_.insert(bytes_.end(), from, from + count * sizeof(VALUE));
  }
  template <class VALUE>
  void put(const VALUE& value) {
    put(&value, 1);
  }
  template <class VALUE>
  void take(VALUE* values, std::size_t count) {
    static_assert(std::is_trivially_copyable_v<VALUE>);
    if (count > 0) std::memcpy(static_cast<void*>(values), bytes_.data() + at_, count * sizeof(VALUE));
    at_ += count * sizeof(VALUE);
  }
  template <class VALUE>
  VALUE take() {
    VALUE value;
    take(&value, 1);
    return value;
  }
  const std::vector<char>& bytes() const { return bytes_; }

 private:
  std::vector<char> bytes_;
  std::size_t at_ = 0;
};

// Of elements that are divided: put(e, values) in the process that has the element, take(e, values) for all of them, in
// the order of the model, in every process or in the first alone; take() finds what put() has left. Blocks of elements
// are exchanged one after the other. Not to be called with one process.
enum class takers { ALL, FIRST };
template <class PUT, class TAKE>
void share_by_element(const model& m, takers who, const PUT& put, const TAKE& take) {
  constexpr std::size_t BLOCK = 8192;
  for (std::size_t first = 0; first < m.elements.size(); first += BLOCK) {
    const std::size_t last = std::min(first + BLOCK, m.elements.size());
    packed_values own;
    fail_together([&] {
      for (std::size_t e = first; e < last; ++e) {
        if (is_own(m, e)) put(e, own);
      }
    });
    std::vector<packed_values> all;
    for (std::vector<char>& bytes : who == takers::ALL ? from_all_ranks(own.bytes()) : at_first_rank(own.bytes())) {
      all.emplace_back(std::move(bytes));
    }
    if (all.empty()) continue;
    for (std::size_t e = first; e < last; ++e) take(e, all[subscript(m.process_of[e])]);
  }
}

}  // namespace solver

#endif
