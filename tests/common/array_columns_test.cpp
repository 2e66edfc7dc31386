// array_columns_test.cpp: columns of arrays with gaps, that run backwards and whose subscripts do not start from 1.
#include "common/array_columns.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

namespace {

// Elements of a storage of numbers 0, 1, 2 ... by strides of each dimension, in elements.
template <int RANK>
ARRAY_REFERENCE<double, RANK> section_of(double* first, const std::int64_t (&strides)[RANK],
                                         const std::int64_t (&lower)[RANK]) {
  ARRAY_REFERENCE<double, RANK> R{};
  R.BASE = first;
  R.ELEMENT_LENGTH = sizeof(double);
  R.ALLOCATED_FLAG = 1;
  const std::int64_t bytes = sizeof(double);
  for (int d = 0; d < RANK; ++d) R.DIMENSION[d] = {5, strides[d] * bytes, lower[d]};
  return R;
}

std::vector<double> numbers(int count) {
  std::vector<double> storage;
  for (int i = 0; i < count; ++i) storage.push_back(i);
  return storage;
}

}  // namespace

TEST(ArrayColumns, OfTwoDimensionsStepByTheFirstStride) {
  std::vector<double> storage = numbers(200);
  // Rows 3 apart, columns 20 apart.
  const auto gaps = column_of(section_of<2>(storage.data(), {3, 20}, {1, 1}), 4);
  for (int i = 1; i <= 5; ++i) EXPECT_EQ(gaps(i), 60 + 3 * (i - 1)) << i;
  // Rows side by side in memory, columns within them: the transposed order.
  const auto rows = column_of(section_of<2>(storage.data(), {10, 1}, {1, 1}), 4);
  for (int i = 1; i <= 5; ++i) EXPECT_EQ(rows(i), 3 + 10 * (i - 1)) << i;
  const auto backwards = column_of(section_of<2>(storage.data() + 100, {-2, 20}, {1, 1}), 2);
  for (int i = 1; i <= 5; ++i) EXPECT_EQ(backwards(i), 120 - 2 * (i - 1)) << i;
}

TEST(ArrayColumns, OfThreeDimensionsTakeTheSecondAndTheThirdSubscriptInTheirOrder) {
  std::vector<double> storage = numbers(1000);
  const auto column = column_of(section_of<3>(storage.data(), {2, 30, 200}, {1, 1, 1}), 2, 4);
  for (int i = 1; i <= 5; ++i) EXPECT_EQ(column(i), 30 + 600 + 2 * (i - 1)) << i;
}

TEST(ArrayColumns, CountFromSubscriptOneWhereverTheArrayStarts) {
  // Subscripts from -1 and from 0: element (1, k) is the third and the second of the first dimension.
  std::vector<double> storage = numbers(1000);
  const auto two = column_of(section_of<2>(storage.data(), {3, 20}, {-1, 2}), 4);
  for (int i = -1; i <= 3; ++i) EXPECT_EQ(two(i), 40 + 3 * (i + 1)) << i;
  const auto three = column_of(section_of<3>(storage.data(), {2, 30, 200}, {0, -3, 3}), 1, 4);
  for (int i = 0; i <= 4; ++i) EXPECT_EQ(three(i), 120 + 200 + 2 * i) << i;
}

TEST(ArrayColumns, AreWrittenInPlace) {
  std::vector<double> storage = numbers(100);
  const auto column = column_of(section_of<2>(storage.data(), {3, 20}, {1, 1}), 2);
  for (int i = 1; i <= 3; ++i) column(i) = -i;
  for (int i = 0; i < 100; ++i) {
    const int row = (i - 20) / 3 + 1;
    const bool written = i >= 20 && (i - 20) % 3 == 0 && row <= 3;
    EXPECT_EQ(storage[static_cast<std::size_t>(i)], written ? -row : i);
  }
}
