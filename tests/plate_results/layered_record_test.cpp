// layered_record_test.cpp: the record of the layered model, column by column, on a block that held something else.
#include "plate_results/element_record.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

#include "comparison.h"

namespace {

// Numbers that tell where they came from: bottom 1.., middle 2.., top 3...
LAYERED_RECORD numbered() {
  LAYERED_RECORD r{};
  r.e = {{100.0, 200.0, 300.0}};
  r.k = {{8.0, 16.0, 24.0}};
  r.g = {{5.0, 10.0}};
  for (int at = 0; at < 3; ++at) {
    const double own = 10.0 * (at + 1);
    r.stress[at] = {{own + 1.0, own + 2.0, own + 3.0}};
    r.plastic[at] = {{own + 4.0, own + 5.0, own + 6.0}};
  }
  r.shear_stress = {{41.0, 42.0}};
  r.plastic_shear = {{43.0, 44.0}};
  r.N = {{51.0, 52.0, 53.0}};
  r.M = {{61.0, 62.0, 63.0}};
  r.Q = {{71.0, 72.0}};
  return r;
}

std::vector<double> columns(const std::vector<double>& block, int first, int last) {
  return std::vector<double>(block.begin() + first - 1, block.begin() + last);
}

}  // namespace

TEST(LayeredRecord, EveryColumnByHand) {
  for (const double before : {0.0, 7.0, std::numeric_limits<double>::quiet_NaN()}) {
    std::vector<double> R(90, before);
    fill_layered_record(-3.0, 4.0, numbered(), 0.5, R.data());
    EXPECT_EQ(columns(R, 1, 3), (std::vector<double>{-3.0, 4.0, 0.0}));
    // Half the thickness is a quarter: the curvatures give 2, 4 and 6.
    EXPECT_EQ(columns(R, 4, 9), (std::vector<double>{102.0, 204.0, 306.0, 31.0, 32.0, 33.0})) << "top";
    EXPECT_EQ(columns(R, 15, 20), (std::vector<double>{100.0, 200.0, 300.0, 21.0, 22.0, 23.0})) << "middle";
    EXPECT_EQ(columns(R, 26, 31), (std::vector<double>{98.0, 196.0, 294.0, 11.0, 12.0, 13.0})) << "bottom";
    EXPECT_EQ(columns(R, 37, 42), (std::vector<double>{51.0, 52.0, 53.0, 61.0, 62.0, 63.0}));
    EXPECT_EQ(columns(R, 43, 44), (std::vector<double>{5.0 / 0.833333333333333, 10.0 / 0.833333333333333}));
    EXPECT_EQ(columns(R, 45, 50), (std::vector<double>{71.0, 72.0, 41.0, 42.0, 0.0, 0.0}));
    EXPECT_EQ(columns(R, 51, 59), (std::vector<double>{34.0, 35.0, 36.0, 24.0, 25.0, 26.0, 14.0, 15.0, 16.0}))
        << "plastic strains from the top down";
    EXPECT_EQ(columns(R, 60, 62), (std::vector<double>{43.0, 44.0, 0.0}));
    for (std::size_t i = 62; i < 90; ++i) {
      EXPECT_TRUE(R[i] == before || (std::isnan(R[i]) && std::isnan(before))) << "column " << i + 1;
    }
  }
}

TEST(LayeredRecord, PrincipalValuesAreThoseOfItsStresses) {
  // sx = s and sy = -s with a shear t: the circle is about zero. Its own shears count at mid surface alone.
  LAYERED_RECORD r{};
  const double s[3] = {3.0, 6.0, 12.0}, t[3] = {4.0, 8.0, 5.0}, radius[3] = {5.0, 10.0, 13.0};
  for (int at = 0; at < 3; ++at) r.stress[at] = {{s[at], -s[at], t[at]}};
  r.shear_stress = {{3.0, 4.0}};
  std::vector<double> R(90, 0.0);
  fill_layered_record(0.0, 0.0, r, 0.5, R.data());
  const int column[3] = {32, 21, 10};  // bottom, middle, top
  for (int at = 0; at < 3; ++at) {
    const double mises = std::sqrt(3.0) * (radius[at] + (at == 1 ? 5.0 : 0.0));
    EXPECT_CLOSE(columns(R, column[at], column[at] + 4),
                 (std::vector<double>{0.5 * std::atan2(t[at], s[at]), radius[at], -radius[at], radius[at], mises}),
                 mises, 4);
  }
}
