// guarded_buffer.cpp: the pattern and the search for what differs from it.
#include "guarded_buffer.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace support {

namespace {

// A quiet NaN with a payload that no arithmetic makes.
constexpr std::uint64_t PATTERN = 0x7FF8A55A5AA5C33CULL;

double pattern_value() {
  double value = 0.0;
  std::memcpy(&value, &PATTERN, sizeof value);
  return value;
}

}  // namespace

guarded_buffer::guarded_buffer(int count, int guard)
    : guard_(static_cast<std::size_t>(guard)), storage_(static_cast<std::size_t>(count + 2 * guard)) {
  refill();
}

void guarded_buffer::refill() {
  std::fill(storage_.begin(), storage_.end(), pattern_value());
  start_ = storage_;
}

void guarded_buffer::set_input(const std::vector<double>& values) {
  for (std::size_t i = 0; i < values.size(); ++i) start_.at(guard_ + i) = storage_.at(guard_ + i) = values[i];
}

bool guarded_buffer::holds_start(std::size_t s) const {
  return std::memcmp(&storage_.at(s), &start_[s], sizeof storage_[s]) == 0;
}

bool guarded_buffer::changed(int i) const {
  return !holds_start(static_cast<std::size_t>(i - 1 + static_cast<int>(guard_)));
}

std::vector<int> guarded_buffer::changed() const {
  std::vector<int> positions;
  for (std::size_t s = 0; s < storage_.size(); ++s) {
    if (!holds_start(s)) positions.push_back(static_cast<int>(s) - static_cast<int>(guard_) + 1);
  }
  return positions;
}

std::vector<int> range(int first, int last) {
  std::vector<int> positions;
  for (int i = first; i <= last; ++i) positions.push_back(i);
  return positions;
}

std::vector<int> leading_block(int n, int leading_dimension) {
  std::vector<int> positions;
  for (int j = 0; j < n; ++j) {
    for (int i = 1; i <= n; ++i) positions.push_back(j * leading_dimension + i);
  }
  return positions;
}

}  // namespace support
