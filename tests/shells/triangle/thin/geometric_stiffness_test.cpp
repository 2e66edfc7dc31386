// geometric_stiffness_test.cpp: the places that the geometric stiffness writes, its energy by hand and its sign.
#include "shells/triangle/geometric_stiffness.h"

#include <algorithm>
#include <limits>

#include "comparison.h"
#include "element_stores.h"
#include "finites/records.h"
#include "guarded_buffer.h"
#include "prepared_triangle.h"

using shell_reference::column;
using shell_reference::matrix;
using shell_reference::vector3;
using support::seeded_random;

namespace {

// The packed positions of the three translations, from their rows and columns.
std::vector<int> translation_positions() {
  std::vector<int> positions;
  const int u[3] = {1, 7, 13};
  for (int j = 0; j < 3; ++j) {
    for (int t = 0; t < 3; ++t) {
      for (int i = 0; i <= j; ++i) positions.push_back((u[j] + t - 1) * (u[j] + t) / 2 + u[i] + t);
    }
  }
  std::sort(positions.begin(), positions.end());
  return positions;
}

// Results with forces at the first point only; every other value is NaN.
std::vector<double> first_point_forces(const vector3& N) {
  std::vector<double> big(360, std::numeric_limits<double>::quiet_NaN());
  for (int i = 0; i < 3; ++i) big[static_cast<std::size_t>(36 + i)] = static_cast<double>(N(i));
  return big;
}

vector3 random_forces(seeded_random& random) {
  return {random.uniform(-1.0, 1.0), random.uniform(-1.0, 1.0), random.uniform(-1.0, 1.0)};
}

}  // namespace

TEST(GeometricStiffness, WritesTheTranslationsAlone) {
  seeded_random random(101);
  const prepared_triangle t(support::random_triangle(random));
  const std::vector<int> expected = translation_positions();
  ASSERT_EQ(expected.size(), 18U);
  std::vector<double> big = first_point_forces(random_forces(random));
  support::guarded_buffer iso(171), general(171);
  TRI_KG_ISO(PLATEELEM, TRI, ISO, 71, ELEM_LOADS{}, nullptr, big.data(), 1.0, iso.data());
  TRI_KG_GENERAL(PLATEELEM, 71, nullptr, big.data(), 1.0, general.data());
  EXPECT_EQ(iso.changed(), expected);
  EXPECT_EQ(general.changed(), expected);
}

TEST(GeometricStiffness, AddsEighteenPositions) {
  seeded_random random(102);
  std::vector<double> KG(171, std::numeric_limits<double>::quiet_NaN());
  support::guarded_buffer K(171);
  const std::vector<double> before = random.vector(171, 1.0);
  K.set_input(before);
  const std::vector<int> positions = translation_positions();
  for (const int p : positions) KG[static_cast<std::size_t>(p - 1)] = 2.0 * p;
  TRI_ADD_GEOMETRIC(KG.data(), K.data());
  EXPECT_EQ(K.changed(), positions);
  for (const int p : positions) EXPECT_EQ(K(p), before[static_cast<std::size_t>(p - 1)] + 2.0 * p);
}

TEST(GeometricStiffness, QuadraticFormByHand) {
  // w = c1 x + c2 y on an area of 7.5: u K u = 7.5 (Nx c1^2 + Ny c2^2 + 2 Nxy c1 c2), for each translation.
  const prepared_triangle t(plane_triangle());
  std::vector<double> big = first_point_forces({2.0L, 3.0L, 0.5L}), packed(171, 0.0);
  TRI_KG_ISO(PLATEELEM, TRI, ISO, 71, ELEM_LOADS{}, nullptr, big.data(), 1.0, packed.data());
  const matrix K = full_of(18, packed.data());
  const double x[3] = {0.0, 5.0, 2.0}, y[3] = {0.0, 0.0, 3.0};
  for (int translation = 0; translation < 3; ++translation) {
    column u = column::Zero(18);
    for (int n = 0; n < 3; ++n) u(6 * n + translation) = 0.4L * x[n] - 1.5L * y[n];
    const double expected = 7.5 * (2.0 * 0.16 + 3.0 * 2.25 + 2.0 * 0.5 * (-0.6));
    EXPECT_CLOSE(static_cast<double>(u.dot(K * u)), expected, expected, 32);
  }
}
