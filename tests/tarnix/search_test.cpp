// search_test.cpp: positions in sorted lists, and addresses that travel in a real.
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <vector>

#include "finites/services.h"

namespace {

std::int32_t position(const std::vector<std::int32_t>& sorted, std::int32_t key) {
  const auto count = static_cast<std::int32_t>(sorted.size());
  std::int32_t pos = -1;
  QFIND_SORT_INTEGER(&count, &key, sorted.data(), &pos);
  return pos;
}

}  // namespace

TEST(Search, FindsEveryEntryAndNothingBetween) {
  for (std::int32_t length = 0; length <= 40; ++length) {
    std::vector<std::int32_t> sorted(static_cast<std::size_t>(length));
    for (std::int32_t i = 0; i < length; ++i) sorted[static_cast<std::size_t>(i)] = 3 * i - 20;
    for (std::int32_t i = 0; i < length; ++i) {
      EXPECT_EQ(position(sorted, 3 * i - 20), i + 1);
      EXPECT_EQ(position(sorted, 3 * i - 19), 0);
    }
    EXPECT_EQ(position(sorted, -21), 0);
    EXPECT_EQ(position(sorted, 3 * length - 20), 0);
  }
}

TEST(Search, CoversTheWholeRangeOfIntegers) {
  constexpr std::int32_t low = std::numeric_limits<std::int32_t>::min(),
                         high = std::numeric_limits<std::int32_t>::max();
  EXPECT_EQ(position({low, 0, high}, low), 1);
  EXPECT_EQ(position({low, 0, high}, high), 3);
  EXPECT_EQ(position({low, high}, 0), 0);
}

TEST(Search, OfEqualEntriesTheFirstCounts) { EXPECT_EQ(position({1, 4, 4, 4, 9}, 4), 2); }

TEST(Search, AnEmptyOrMissingListHasNothing) {
  const std::int32_t none = 0, negative = -4, three = 3, key = 1;
  std::int32_t pos = -1;
  QFIND_SORT_INTEGER(&none, &key, &key, &pos);
  EXPECT_EQ(pos, 0);
  pos = -1;
  QFIND_SORT_INTEGER(&negative, &key, &key, &pos);
  EXPECT_EQ(pos, 0);
  pos = -1;
  QFIND_SORT_INTEGER(&three, &key, nullptr, &pos);
  EXPECT_EQ(pos, 0);
}

TEST(Search, AnAddressComesBackFromTheBitsOfAReal) {
  int target = 0;
  void* const address = &target;
  double cell = 0.0;
  std::memcpy(&cell, &address, sizeof cell);
  void* found = nullptr;
  INT_EQUIV_KPT(&cell, &found);
  EXPECT_EQ(found, address);
  cell = 0.0;
  INT_EQUIV_KPT(&cell, &found);
  EXPECT_EQ(found, nullptr);
}
