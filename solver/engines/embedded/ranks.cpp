// ranks.cpp: one process.
#include "system/ranks.h"

namespace solver {

int rank() { return 0; }
int rank_count() { return 1; }

element_division divide_elements(const model&) { return {}; }

void sum_over_ranks(std::vector<double>&) {}
double sum_over_ranks(double value) { return value; }
double largest_over_ranks(double value) { return value; }
bool true_for_all(bool here) { return here; }
std::vector<std::vector<char>> from_all_ranks(const std::vector<char>& own) { return {own}; }
std::vector<std::vector<char>> at_first_rank(const std::vector<char>& own) { return {own}; }
std::vector<char> of_first_rank(const std::vector<char>& own) { return own; }

void share_failure(const std::exception_ptr& failed) {
  if (failed != nullptr) std::rethrow_exception(failed);
}

}  // namespace solver
