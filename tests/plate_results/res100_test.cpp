// res100_test.cpp: the two routines by which a solver asks for principal values in a record of its own: which columns
// they read and write, and where the single-precision one rounds.
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstring>
#include <limits>
#include <vector>

#include "comparison.h"
#include "finites/finites.h"
#include "random_shapes.h"

namespace {

using support::seeded_random;

constexpr int LENGTH = 47;  // the routines reach no further
constexpr int GUARD = 16;

void update(float* res) { UPDATE_PRINCIPAUX_RES100_PLA(res); }
void update(double* res) { UPDATE_PRINCIPAUX_RES100_PLA_DBL(res); }

// A record of exactly 47 values between guards, all of which hold different numbers at first.
template <class REAL>
class res100 {
 public:
  res100() {
    for (std::size_t i = 0; i < storage_.size(); ++i) storage_[i] = static_cast<REAL>(-1000.0 - static_cast<double>(i));
    start_ = storage_;
  }
  REAL& operator()(int column) { return storage_[static_cast<std::size_t>(GUARD + column - 1)]; }
  void set(int column, double value) { (*this)(column) = static_cast<REAL>(value); }
  void set_stresses(const std::vector<double>& v) {  // nine stresses, two transverse shears
    for (int i = 0; i < 9; ++i) set(24 + i, v[static_cast<std::size_t>(i)]);
    set(46, v[9]);
    set(47, v[10]);
  }
  void complete() {
    start_ = storage_;
    update(&(*this)(1));
  }
  std::vector<int> changed() const {
    std::vector<int> columns;
    for (std::size_t i = 0; i < storage_.size(); ++i) {
      if (std::memcmp(&storage_[i], &start_[i], sizeof(REAL)) != 0) columns.push_back(static_cast<int>(i) - GUARD + 1);
    }
    return columns;
  }

 private:
  std::array<REAL, LENGTH + 2 * GUARD> storage_;
  std::array<REAL, LENGTH + 2 * GUARD> start_;
};

const std::vector<int> OUTPUT_COLUMNS = {7, 8, 9, 34, 35, 36, 37, 38, 39, 40, 41, 42, 43, 44, 45};

std::vector<double> random_stresses(seeded_random& random) { return random.vector(11, 100.0); }

double von_mises(double x, double y, double xy) { return std::sqrt(x * x + y * y - x * y + 3.0 * xy * xy); }

// Columns of one surface: stresses from `in`, results from `out`, equivalent stress at `eq`.
struct surface {
  int in, out, eq;
};
constexpr surface SURFACES[3] = {{24, 34, 7}, {27, 38, 8}, {30, 42, 9}};

}  // namespace

TEST(Res100, WritesFifteenColumnsAndNothingElse) {
  seeded_random random(31);
  for (int i = 0; i < 200; ++i) {
    const std::vector<double> v = random_stresses(random);
    res100<double> wide;
    res100<float> narrow;
    wide.set_stresses(v);
    narrow.set_stresses(v);
    wide.complete();
    narrow.complete();
    EXPECT_EQ(wide.changed(), OUTPUT_COLUMNS);
    EXPECT_EQ(narrow.changed(), OUTPUT_COLUMNS);
  }
}

TEST(Res100, EachSurfaceGoesToItsOwnColumns) {
  seeded_random random(32);
  for (int i = 0; i < 500; ++i) {
    const std::vector<double> v = random_stresses(random);
    res100<double> r;
    r.set_stresses(v);
    r.complete();
    for (const surface& s : SURFACES) {
      const double x = r(s.in), y = r(s.in + 1), xy = r(s.in + 2);
      const double size = std::fabs(x) + std::fabs(y) + std::fabs(xy);
      const double radius = std::hypot(0.5 * (x - y), xy);
      EXPECT_CLOSE(r(s.out), 0.5 * std::atan2(2.0 * xy, x - y), 1.0, 4.0);
      EXPECT_CLOSE(r(s.out + 1), 0.5 * (x + y) + radius, size, 4.0);
      EXPECT_CLOSE(r(s.out + 2), 0.5 * (x + y) - radius, size, 4.0);
      EXPECT_CLOSE(r(s.out + 3), radius, size, 4.0);
      const double shear = s.eq == 8 ? std::sqrt(3.0) * std::hypot(r(46), r(47)) : 0.0;
      EXPECT_CLOSE(r(s.eq), von_mises(x, y, xy) + shear, size + shear, 20.0);
    }
  }
}

TEST(Res100, ColumnThirtyThreeHasNoEffect) {
  seeded_random random(33);
  const std::vector<double> v = random_stresses(random);
  res100<double> plain;
  plain.set_stresses(v);
  plain.complete();
  for (const double value : {0.0, 1e300, std::numeric_limits<double>::infinity(), std::nan("")}) {
    res100<double> r;
    r.set_stresses(v);
    r(33) = value;
    r.complete();
    for (const int column : OUTPUT_COLUMNS) EXPECT_EQ(r(column), plain(column)) << column;
  }
}

TEST(Res100, ReadsNoOtherColumn) {
  res100<double> r;
  for (int column = 1; column <= LENGTH; ++column) r(column) = std::nan("");
  r.set_stresses({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11});
  r.complete();
  for (const int column : OUTPUT_COLUMNS) EXPECT_TRUE(std::isfinite(r(column))) << column;
}

TEST(Res100, LeavesUntouchedEveryColumnOutsideItsTable) {
  res100<float> r;
  r.set_stresses({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11});
  r(1) = std::numeric_limits<float>::quiet_NaN();
  r(10) = std::numeric_limits<float>::infinity();
  r(33) = -0.0F;
  r.complete();
  EXPECT_EQ(r.changed(), OUTPUT_COLUMNS);
}

// All the arithmetic is double: what comes out is the double result, rounded once.
TEST(Res100, SinglePrecisionRoundsOnlyAtTheLastStep) {
  seeded_random random(34);
  int would_differ = 0;
  for (int i = 0; i < 1000; ++i) {
    const std::vector<double> v = random_stresses(random);
    res100<float> narrow;
    res100<double> wide;
    narrow.set_stresses(v);
    for (const int column : {24, 25, 26, 27, 28, 29, 30, 31, 32, 33, 46, 47}) {
      // Through a volatile: at -O3 one compiler takes a narrowing that a widening follows for nothing.
      const volatile float input = narrow(column);
      wide(column) = static_cast<double>(input);
    }
    narrow.complete();
    wide.complete();
    for (const int column : OUTPUT_COLUMNS) EXPECT_EQ(narrow(column), static_cast<float>(wide(column))) << column;

    const float d = (narrow(24) - narrow(25)) * 0.5F;
    if (std::sqrt(d * d + narrow(26) * narrow(26)) != narrow(37)) ++would_differ;
  }
  EXPECT_GT(would_differ, 100) << "single-precision arithmetic would show";
}

// A difference that single precision cannot hold, in the squares or in the sum.
TEST(Res100, SinglePrecisionKeepsWhatItsOwnArithmeticWouldLose) {
  res100<float> r;
  r.set_stresses({1e25, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0});
  r.complete();
  EXPECT_EQ(r(35), 1e25F);  // its square is beyond the range of a float
  EXPECT_EQ(r(7), 1e25F);
}

TEST(Res100, PureShearInBothPrecisions) {
  res100<float> narrow;
  res100<double> wide;
  const std::vector<double> v = {0, 0, 10, 0, 0, 0, 0, 0, 0, 3, 4};
  narrow.set_stresses(v);
  wide.set_stresses(v);
  narrow.complete();
  wide.complete();
  EXPECT_DOUBLE_EQ(wide(34), 0.5 * std::atan2(20.0, 0.0));
  EXPECT_EQ(wide(35), 10.0);
  EXPECT_EQ(wide(36), -10.0);
  EXPECT_EQ(wide(37), 10.0);
  EXPECT_CLOSE(wide(7), std::sqrt(300.0), 10.0, 4.0);
  EXPECT_EQ(wide(8), std::sqrt(75.0));
  EXPECT_EQ(wide(9), 0.0);
  EXPECT_FLOAT_EQ(narrow(34), static_cast<float>(0.5 * std::atan2(20.0, 0.0)));
  EXPECT_EQ(narrow(8), static_cast<float>(std::sqrt(75.0)));
}
