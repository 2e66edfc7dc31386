// stiffness_test.cpp: places of the parts, foundation, and the rotation to global axes.
#include "shells/triangle/stiffness.h"

#include "comparison.h"
#include "element_stores.h"
#include "guarded_buffer.h"
#include "prepared_triangle.h"
#include "shells/common/packed.h"

using shell_reference::listed;
using shell_reference::matrix;
using support::seeded_random;
using support::values;

namespace {

const std::vector<double> NONE45(45, 0.0);
const MATRIX<9, 6> NO_COUPLING{};

}  // namespace

TEST(PackedAssembly, DrillingPositions) {
  const double Kdrill[6] = {2.0, 3.0, 5.0, 7.0, 11.0, 13.0};
  const std::vector<double> none(21, 0.0);
  support::guarded_buffer K(171);
  TRI_ASSEMBLE_PACKED(Kdrill, none.data(), NONE45.data(), NONE45.data(), NONE45.data(), NO_COUPLING, K.data());
  EXPECT_EQ(K.changed(), support::range(1, 171));
  std::vector<double> expected(171, 0.0);
  const std::size_t positions[6] = {21, 72, 78, 159, 165, 171};
  for (std::size_t i = 0; i < 6; ++i) expected[positions[i] - 1] = Kdrill[i];
  EXPECT_EQ(values(K.data(), 171), expected);
}

TEST(PackedAssembly, EveryPartAtItsPlace) {
  // Powers of two keep sums exact and tell the parts apart.
  std::vector<double> Kmem(21), Kb1(45), Kb2(45), Kb3(45), Kdrill(6);
  for (std::size_t i = 0; i < 45; ++i) {
    Kb1[i] = static_cast<double>(i + 1);
    Kb2[i] = static_cast<double>(i + 1) * 0x1p10;
    Kb3[i] = static_cast<double>(46 - i) * 0x1p20;
  }
  for (std::size_t i = 0; i < 21; ++i) Kmem[i] = static_cast<double>(i + 1) * 0x1p-10;
  for (std::size_t i = 0; i < 6; ++i) Kdrill[i] = static_cast<double>(i + 1) * 0x1p-20;
  MATRIX<9, 6> Kcouple;
  for (int j = 1; j <= 6; ++j) {
    for (int i = 1; i <= 9; ++i) Kcouple(i, j) = 100.0 * i + j + 0.5;
  }
  std::vector<double> K(171, -1.0);
  TRI_ASSEMBLE_PACKED(Kdrill.data(), Kmem.data(), Kb1.data(), Kb2.data(), Kb3.data(), Kcouple, K.data());

  const int membrane[6] = {0, 1, 6, 7, 12, 13}, bending[9] = {2, 3, 4, 8, 9, 10, 14, 15, 16}, drill[3] = {5, 11, 17};
  const matrix Km = full_of(6, Kmem.data()), Kd = full_of(3, Kdrill.data());
  const matrix Kb = full_of(9, Kb1.data()) + full_of(9, Kb2.data()) + full_of(9, Kb3.data());
  matrix expected = matrix::Zero(18, 18);
  for (int i = 0; i < 6; ++i) {
    for (int j = 0; j < 6; ++j) expected(membrane[i], membrane[j]) = Km(i, j);
  }
  for (int i = 0; i < 3; ++i) {
    for (int j = 0; j < 3; ++j) expected(drill[i], drill[j]) = Kd(i, j);
  }
  for (int i = 0; i < 9; ++i) {
    for (int j = 0; j < 9; ++j) expected(bending[i], bending[j]) = Kb(i, j);
    for (int j = 0; j < 6; ++j) {
      expected(bending[i], membrane[j]) = expected(membrane[j], bending[i]) = Kcouple(i + 1, j + 1);
    }
  }
  EXPECT_EQ(listed(full_of(18, K.data())), listed(expected));
}

TEST(Foundation, AddsToDeflectionsByHand) {
  const prepared_triangle t(plane_triangle());  // twice the area: 15
  std::vector<double> K(171, 0.5);
  TRI_FOUNDATION(TRI, 1.6, K.data());  // d = 15 * 1.6 / 24 = 1
  matrix expected = matrix::Constant(18, 18, 0.5L);
  const int w[3] = {2, 8, 14};
  for (const int i : w) {
    for (const int j : w) expected(i, j) += i == j ? 2.0L : 1.0L;
  }
  EXPECT_CLOSE(listed(full_of(18, K.data())), listed(expected), 2.0, 4);
}

TEST(GlobalRotation, ElementOfTheGlobalPlaneStaysAsItIs) {
  seeded_random random(82);
  const prepared_triangle t(plane_triangle());
  const std::vector<double> before = random.vector(171, 1.0);
  std::vector<double> K = before;
  TRI_TO_GLOBAL_PACKED(TRI, K.data());
  EXPECT_EQ(K, before);
}

TEST(GlobalRotation, IsTheFullProductWithTheAxesOfTheStore) {
  seeded_random random(83);
  for (int trial = 0; trial < 20; ++trial) {
    const std::vector<support::point> nodes = support::random_triangle(random);
    const prepared_triangle t(nodes);
    std::vector<double> K = random.vector(171, 1.0);
    const matrix R = shell_reference::groups(shell_reference::axes_of(nodes), 3);
    const matrix expected = R.transpose() * full_of(18, K.data()) * R;
    TRI_TO_GLOBAL_PACKED(TRI, K.data());
    EXPECT_CLOSE(listed(full_of(18, K.data())), listed(expected), 3.0, 16);

    std::vector<double> full = random.vector(18 * 18, 1.0);
    const matrix local = dense::widened(full.data(), 18, 18);
    const matrix turned = R.transpose() * local * R;
    TRI_TO_GLOBAL_FULL(TRI, full.data());
    EXPECT_CLOSE(full, listed(turned), 3.0, 16);
  }
}
