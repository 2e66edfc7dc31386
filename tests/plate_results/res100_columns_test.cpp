// res100_columns_test.cpp: the converter from the result record to the solver's record of 100, column by column.
#include <gtest/gtest.h>

#include <vector>

#include "finites/res100.h"

TEST(Res100Columns, HaveThoseOfTheResultRecordAndNoOthersChange) {
  // Column c of the result record holds c; those of the other record are 0 before.
  std::vector<double> record(90), res100(100, 0.0), expected(100, 0.0);
  for (std::size_t c = 1; c <= 90; ++c) record[c - 1] = static_cast<double>(c);
  RES100_FROM_RECORD(record.data(), res100.data());
  const auto put = [&expected](std::size_t first, const std::vector<double>& values) {
    for (std::size_t i = 0; i < values.size(); ++i) expected[first - 1 + i] = values[i];
  };
  put(7, {14, 25, 36});       // equivalent stresses: top, middle, bottom
  put(24, {7, 8, 9});         // stresses x, y, xy of the top face
  put(27, {18, 19, 20});      // of the mid surface
  put(30, {29, 30, 31});      // of the bottom face
  put(34, {10, 11, 12, 13});  // angle, two principal stresses, largest shear: top
  put(38, {21, 22, 23, 24});  // middle
  put(42, {32, 33, 34, 35});  // bottom
  put(46, {47, 48});          // mean transverse shear stresses
  EXPECT_EQ(res100, expected);
}
