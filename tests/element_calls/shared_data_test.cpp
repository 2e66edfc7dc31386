// shared_data_test.cpp: array references, and the integers that MODEL_DATA holds as reals.
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <vector>

#include "finites/fields.h"
#include "finites/views.hpp"

TEST(ArrayReference, EachDimensionHasItsOwnStrideAndLowerBound) {
  std::vector<int> storage(2 * 3 * 4);
  for (std::size_t i = 0; i < storage.size(); ++i) storage[i] = static_cast<int>(i);
  ARRAY_REFERENCE<int, 3> R = REFER_TO(storage.data(), 2, 3, 4);
  EXPECT_EQ(R(1, 1, 1), 0);
  EXPECT_EQ(R(2, 3, 4), 23);
  EXPECT_EQ(R(2, 1, 3), 1 + 2 * 6);
  R.DIMENSION[0].LOWER = -5;
  R.DIMENSION[1].LOWER = 0;
  R.DIMENSION[2].LOWER = 7;
  EXPECT_EQ(R(-5, 0, 7), 0);
  EXPECT_EQ(R(-4, 2, 10), 23);
  EXPECT_EQ(R(-4, 0, 9), 1 + 2 * 6);
}

TEST(ArrayReference, StridesMayGoBackwardsAndThroughRecords) {
  struct pair_of {
    double value;
    std::int32_t number, other;
  };
  pair_of records[3] = {{0.5, 10, -1}, {1.5, 20, -2}, {2.5, 30, -3}};
  const std::int64_t step = sizeof(pair_of);
  const ARRAY_REFERENCE<std::int32_t, 1> forwards = REFER_TO_SECTION(&records[0].number, 3, step, 4);
  const ARRAY_REFERENCE<std::int32_t, 1> backwards = REFER_TO_SECTION(&records[2].number, 3, -step);
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(forwards(4 + i), 10 * (i + 1));
    EXPECT_EQ(backwards(1 + i), 10 * (3 - i));
  }
  EXPECT_FALSE(CONTIGUOUS(forwards));
  EXPECT_FALSE(CONTIGUOUS(backwards));
}

TEST(ArrayReference, ContiguousMeansWithoutGapsInEveryDimension) {
  double storage[24] = {};
  ARRAY_REFERENCE<double, 2> R = REFER_TO(storage, 2, 3);
  EXPECT_TRUE(CONTIGUOUS(R));
  R.DIMENSION[1].LOWER = -9;  // where the numbers start does not matter
  EXPECT_TRUE(CONTIGUOUS(R));
  R.DIMENSION[1].STRIDE = 4 * sizeof(double);
  EXPECT_FALSE(CONTIGUOUS(R));
  R = REFER_TO(storage, 2, 3);
  R.DIMENSION[0].STRIDE = 2 * sizeof(double);
  EXPECT_FALSE(CONTIGUOUS(R));
  // Elements longer than what is read of them.
  R = REFER_TO(storage, 2, 3);
  R.ELEMENT_LENGTH = 2 * sizeof(double);
  EXPECT_FALSE(CONTIGUOUS(R));
}

TEST(ArrayReference, AllocatedIsWhatTheFlagSays) {
  double storage[2] = {};
  ARRAY_REFERENCE<double, 1> R{};
  EXPECT_FALSE(ALLOCATED(R));
  R.BASE = storage;
  EXPECT_FALSE(ALLOCATED(R));
  R = REFER_TO(storage, 2);
  R.BASE = nullptr;
  EXPECT_TRUE(ALLOCATED(R));
}

TEST(ModelData, IntegersAreTruncatedTowardsZero) {
  constexpr double inf = std::numeric_limits<double>::infinity();
  constexpr std::int32_t low = std::numeric_limits<std::int32_t>::min();
  constexpr std::int32_t high = std::numeric_limits<std::int32_t>::max();
  const struct {
    double real;
    std::int32_t integer;
  } cases[] = {
      {0.0, 0},
      {-0.0, 0},
      {2.99, 2},
      {-2.99, -2},
      {0.999, 0},
      {-0.999, 0},
      {4e9, high},
      {-4e9, low},
      {2147483646.9, high - 1},
      {2147483647.5, high},
      {-2147483647.9, low + 1},
      {inf, high},
      {-inf, low},
      {-2147483648.5, low},
      {std::numeric_limits<double>::quiet_NaN(), 0},
  };
  for (const auto& c : cases) EXPECT_EQ(TRUNCATED(c.real), c.integer) << c.real;
}

TEST(ModelData, IsNumberedFromOne) {
  double storage[3] = {1.5, 2.5, 3.5};
  const MODEL_DATA A(storage);
  EXPECT_EQ(A(1), 1.5);
  EXPECT_EQ(A(3), 3.5);
  EXPECT_EQ(A.INTEGER(2), 2);
}

TEST(PackedIndex, CountsTheUpperTriangleColumnByColumn) {
  int position = 0;
  for (int j = 1; j <= 24; ++j) {
    for (int i = 1; i <= j; ++i) EXPECT_EQ(SYM(i, j), ++position) << i << ", " << j;
  }
}
