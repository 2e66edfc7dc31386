// odd_records_test.cpp: records that do not fit together are read no further than they reach.
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

#include "plate_calls.h"
#include "plate_model.h"

using support::plate_model;

// The fourth pointer would lead far outside of MODEL_DATA.
TEST(OddRecords, FourthNodeIsReadOnlyForExactlyFourNodes) {
  for (const std::int32_t count : {-1, 0, 2, 3, 5, 100}) {
    plate_model model({plate_calls::isotropic(plate_calls::space_triangle())});
    model.plate(1).NODE_COUNT = count;
    model.plate(1).NODE_PTR(4) = std::numeric_limits<std::int32_t>::max();
    double data[64] = {}, forces[24] = {}, matrix[576] = {};
    model.call(8, 1, data, forces, matrix);
    EXPECT_EQ(PLATEELEM.ELEM_KIND, count == 3 ? 10 : 20) << count;
  }
}

TEST(OddRecords, ListOfFactorsIsSearchedNoFurtherThanItReaches) {
  for (const int stride : {1, 3}) {
    plate_model model({plate_calls::isotropic(plate_calls::space_triangle())});
    model.set_stiffness_factors({20, 730}, {9.0F, 9.0F, 8.0F, 8.0F}, stride);
    SOLANA.STIFF_LIST_COUNT = std::numeric_limits<std::int32_t>::max();
    double data[64] = {}, forces[24] = {}, matrix[576] = {};
    model.call(1, 1, data, forces, matrix);
    EXPECT_EQ(PLATEELEM.MAT_BEHAV, 0) << stride;
  }
}
