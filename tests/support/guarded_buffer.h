// guarded_buffer.h: an output buffer that shows which of its positions were written, and writes beside it.
//
// Every position, and a band before and after, holds NaN value of known bits, or what the test put there as
// input. A position counts as changed when its bits differ; storing the same pattern by arithmetic is as good as
// impossible.
#ifndef FINITES_TESTS_GUARDED_BUFFER_H
#define FINITES_TESTS_GUARDED_BUFFER_H

#include <cstddef>
#include <vector>

namespace support {

class guarded_buffer {
 public:
  explicit guarded_buffer(int count, int guard = 64);
  double* data() { return storage_.data() + guard_; }
  double operator()(int i) const { return storage_[guard_ + static_cast<std::size_t>(i - 1)]; }  // from 1
  void refill();
  // Puts input at the start of the buffer; it counts as unchanged until a call writes something else there.
  void set_input(const std::vector<double>& values);

  bool changed(int i) const;  // from 1; 0 and below, and above the count, are the guards
  // All positions that changed, guards too, ascending. EXPECT_EQ(buffer.changed(), range(1, 24)) says it all.
  std::vector<int> changed() const;

 private:
  bool holds_start(std::size_t s) const;

  std::size_t guard_;
  std::vector<double> storage_;
  std::vector<double> start_;  // what the storage held before
};

// first, first + 1, ... last.
std::vector<int> range(int first, int last);

// Positions of the leading n by n part of a matrix with a leading dimension, from 1 and ascending.
std::vector<int> leading_block(int n, int leading_dimension);

}  // namespace support

#endif
