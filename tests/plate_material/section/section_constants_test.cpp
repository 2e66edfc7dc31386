// section_constants_test.cpp: the tables of the spectral form to the last bit: a plate whose measures are powers of two
// leaves the constants as they are.
#include <cmath>

#include "prepared_section.h"

namespace {

// h = 1, sy = 1, E = 4, nu = 0: N0 = 1, M0 = 1/4, E / (4 h (1 + nu)) = 1.
const section_reference::plate UNIT_PLATE{1.0, 1.0, 4.0, 0.0, 0.0};

// Every entry of the four tables is not a number, so that what is not set shows.
void overwrite_tables() {
  for (MATRIX<8, 8>* M : {&PLATEELEM.P8, &PLATEELEM.Q8, &PLATEELEM.QINV8, &PLATEELEM.LAM8}) {
    for (double& v : M->V) v = NOT_A_NUMBER;
  }
}

struct entry {
  int row, column;
  double value;
};

// These entries, bit by bit, and zeros elsewhere.
void expect_table(const MATRIX<8, 8>& actual, const std::vector<entry>& entries, const char* name) {
  MATRIX<8, 8> expected{};
  for (const entry& e : entries) expected(e.row, e.column) = e.value;
  for (int j = 1; j <= 8; ++j) {
    for (int i = 1; i <= 8; ++i) EXPECT_EQ(actual(i, j), expected(i, j)) << name << " " << i << " " << j;
  }
}

void expect_unit_tables(double s) {
  const double direct = s / (3.464101552963257 * 0.25), cross = -s / (6.928203105926514 * 0.25);
  const double shear = 3.0 * s / (3.464101552963257 * 0.25);
  expect_table(PLATEELEM.P8,
               {{1, 1, 1.0},    {2, 2, 1.0},    {1, 2, -0.5},   {2, 1, -0.5},   {3, 3, 3.0},   {7, 7, 3.0},
                {8, 8, 3.0},    {4, 4, 16.0},   {5, 5, 16.0},   {4, 5, -8.0},   {5, 4, -8.0},  {6, 6, 48.0},
                {1, 4, direct}, {4, 1, direct}, {2, 5, direct}, {5, 2, direct}, {1, 5, cross}, {5, 1, cross},
                {2, 4, cross},  {4, 2, cross},  {3, 6, shear},  {6, 3, shear}},
               "P8");
  const double large = 9.236067771911621, small = 4.763932228088379;
  expect_table(PLATEELEM.LAM8,
               {{1, 1, large},
                {2, 2, large},
                {3, 3, small},
                {4, 4, small},
                {5, 5, large * 4.0 / 12.0},
                {6, 6, small * 4.0 / 12.0},
                {7, 7, 3.0 * 0.833333333333333 * 2.0},
                {8, 8, 3.0 * 0.833333333333333 * 2.0}},
               "LAM8");
  const double A = s * 2.140932559967041, B = s * 5.605034351348877;
  expect_table(PLATEELEM.Q8, {{1, 1, -A},  {1, 3, B},   {1, 5, A},   {1, 6, -B},  {2, 1, A},    {2, 3, -B},
                              {2, 5, A},   {2, 6, -B},  {3, 2, A},   {3, 4, -B},  {4, 1, -1.0}, {4, 3, -1.0},
                              {4, 5, 1.0}, {4, 6, 1.0}, {5, 1, 1.0}, {5, 3, 1.0}, {5, 5, 1.0},  {5, 6, 1.0},
                              {6, 2, 1.0}, {6, 4, 1.0}, {7, 7, 1.0}, {8, 8, 1.0}},
               "Q8");
  const double g = s * (3.872983455657959 / 60.0), g2 = s * (3.872983455657959 / 30.0);
  const double u = 0.36180341243743896, v = 0.13819660246372223, y = 0.7236068248748779, z = 0.27639320492744446;
  expect_table(PLATEELEM.QINV8,
               {{1, 1, -g}, {1, 2, g},  {1, 4, -u},  {1, 5, u}, {2, 3, g2},  {2, 6, y},  {3, 1, g}, {3, 2, -g},
                {3, 4, -v}, {3, 5, v},  {4, 3, -g2}, {4, 6, z}, {5, 1, g},   {5, 2, g},  {5, 4, u}, {5, 5, u},
                {6, 1, -g}, {6, 2, -g}, {6, 4, v},   {6, 5, v}, {7, 7, 1.0}, {8, 8, 1.0}},
               "QINV8");
}

}  // namespace

TEST(SectionConstants, OfAPlateOfUnitMeasuresStandToTheLastBit) {
  const prepared_section s(UNIT_PLATE);
  overwrite_tables();
  SECTION_SPECTRAL(PLATEELEM, BY_ASSERTF);
  expect_unit_tables(1.0);
}

TEST(SectionConstants, OfEitherBranchStandToTheLastBitAndWriteEveryEntry) {
  const prepared_section s(UNIT_PLATE);
  for (const double branch : {1.0, -1.0}) {
    overwrite_tables();
    SECTION_SPECTRAL_SIGN(PLATEELEM, branch, 1.0, 1.0);
    expect_unit_tables(branch);
  }
}

TEST(SectionConstants, OfTheTablesAreSinglePrecisionValues) {
  // Thickness and yield stress of one, as above: what stands in the tables narrows without loss.
  const prepared_section s(UNIT_PLATE);
  for (const MATRIX<8, 8>* M : {&PLATEELEM.Q8, &PLATEELEM.LAM8}) {
    for (const int i : {1, 2, 3, 4}) {
      for (int j = 1; j <= 8; ++j) {
        const double value = (*M)(i, j);
        EXPECT_EQ(static_cast<double>(static_cast<float>(value)), value) << i << " " << j;
      }
    }
  }
}

TEST(SpectralCheck, OfATenthToTheLastBitDoesNotHold) {
  // The guard of 1e-7 is lost beside 1e10, and 1e9 / 1e10 is the double of a tenth.
  MATRIX<8, 8> unit{};
  for (int i = 1; i <= 8; ++i) unit(i, i) = 1.0;
  MATRIX<8, 8> M = unit, R = unit;
  M(1, 1) = 1e10;
  R(1, 1) = 1.1e10;
  ASSERT_EQ((R(1, 1) - M(1, 1)) / (M(1, 1) + 1e-07), 0.1);
  std::int32_t ok = 7;
  SPECTRAL_CHECK(M, unit, unit, R, unit, ok);
  EXPECT_EQ(ok, 0);
  R(1, 1) = std::nextafter(R(1, 1), 0.0);
  SPECTRAL_CHECK(M, unit, unit, R, unit, ok);
  EXPECT_EQ(ok, 1);
}
