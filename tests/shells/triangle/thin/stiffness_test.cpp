// stiffness_test.cpp: places of the parts, foundation, and the whole stiffness in element and in global axes.
#include "shells/triangle/thin/stiffness.h"

#include "comparison.h"
#include "element_cases.h"
#include "element_stores.h"
#include "engine_call.h"
#include "finites/records.h"
#include "prepared_triangle.h"
#include "shells/triangle/stiffness.h"

using reference::listed;
using reference::matrix;
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

  matrix expected = reference::placed(full_of(6, Kmem.data()),
                                      full_of(9, Kb1.data()) + full_of(9, Kb2.data()) + full_of(9, Kb3.data()),
                                      full_of(3, Kdrill.data()));
  for (int j = 0; j < 6; ++j) {
    for (int i = 0; i < 9; ++i) {
      const int row = reference::BENDING[i] - 1, column = reference::MEMBRANE[j] - 1;
      expected(row, column) = expected(column, row) = Kcouple(i + 1, j + 1);
    }
  }
  EXPECT_EQ(listed(full_of(18, K.data())), listed(expected));
}

TEST(Foundation, AddsToDeflectionsByHand) {
  const prepared_triangle t(plane_triangle(5.0, 2.0, 3.0));  // twice the area: 15
  std::vector<double> K(171, 0.5);
  TRI_FOUNDATION(TRI, 1.6, K.data());  // d = 15 * 1.6 / 24 = 1
  matrix expected = matrix::Constant(18, 18, 0.5L);
  const int w[3] = {2, 8, 14};
  for (const int i : w) {
    for (const int j : w) expected(i, j) += i == j ? 2.0L : 1.0L;
  }
  EXPECT_CLOSE(listed(full_of(18, K.data())), listed(expected), 2.0, 4);
}

TEST(Foundation, EntersTheStiffnessOfTheEngine) {
  seeded_random random(81);
  for (const element_case& c : element_cases()) {
    for (const double sign : {1.0, -1.0}) {
      engine_call plain(random_element(random, c));
      plain.run(1);
      engine_call founded(plain.element);
      founded.LOADS(8) = sign * static_cast<double>(plain.section.membrane(0, 0));
      ASSERT_NE(founded.LOADS(8), 0.0);
      founded.run(1);
      matrix F = matrix::Zero(18, 18);
      for (int a = 0; a < 3; ++a) {
        for (int b = 0; b < 3; ++b) F(6 * a + 2, 6 * b + 2) = a == b ? 2.0L : 1.0L;
      }
      F *= reference::twice_area(plain.X) * founded.LOADS(8) / 24.0L;
      const matrix R = reference::eighteen(plain.axes);
      const matrix expected = R.transpose() * F * R;
      std::vector<double> difference = founded.matrix_values();
      const std::vector<double> without = plain.matrix_values();
      for (std::size_t i = 0; i < difference.size(); ++i) difference[i] -= without[i];
      EXPECT_CLOSE(difference, listed(expected), support::max_norm(founded.matrix_values()), 64) << c.name;
    }
  }
}

TEST(GlobalRotation, ElementOfTheGlobalPlaneStaysAsItIs) {
  seeded_random random(82);
  const prepared_triangle t(plane_triangle(5.0, 2.0, 3.0));
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
    const matrix R = reference::eighteen(reference::axes_of(nodes));
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

TEST(TriangleStiffness, IsTheReferenceForEveryKindAndSection) {
  seeded_random random(84);
  for (const element_case& c : element_cases()) {
    for (int trial = 0; trial < 10; ++trial) {
      engine_call call(random_element(random, c));
      call.run(1);
      EXPECT_EQ(call.matrix.changed(), support::range(1, 324)) << c.name;
      const matrix K = reference::upper_mirrored(reference::stiffness(call.X, call.section));
      const matrix R = reference::eighteen(call.axes);
      const matrix expected = R.transpose() * K * R;
      EXPECT_CLOSE(call.matrix_values(), listed(expected), reference::largest(expected), 100) << c.name;
    }
  }
}

TEST(TriangleStiffness, DoesNotDependOnTheFrameItIsBuiltIn) {
  // The reference is built in axes turned in the plane by any angle: an isotropic facet knows no direction.
  seeded_random random(85);
  for (int trial = 0; trial < 20; ++trial) {
    engine_call call(random_element(random, element_cases().front()));
    call.run(1);
    const reference::matrix3 axes = reference::turned_axes(call.axes, random.uniform(-3.0, 3.0));
    const matrix K = reference::stiffness(reference::seen_from(axes, call.element.nodes), call.section);
    const matrix R = reference::eighteen(axes);
    const matrix expected = R.transpose() * K * R;
    EXPECT_CLOSE(call.matrix_values(), listed(expected), reference::largest(expected), 100);
  }
}

TEST(TriangleStiffness, BendingBlockHasItsOwnScale) {
  // Of a thin facet bending is small beside the membrane: it is compared by itself, in the global xy plane.
  seeded_random random(86);
  for (const element_case& c : element_cases()) {
    support::plate_description d = random_element(random, c, plane_triangle(5.0, 2.0, 3.0));
    engine_call call(d);
    call.run(1);
    const matrix expected = reference::upper_mirrored(reference::stiffness(call.X, call.section));
    const std::vector<double> K = call.matrix_values();
    std::vector<double> bending, drill, expected_bending, expected_drill;
    for (const int j : reference::BENDING) {
      for (const int i : reference::BENDING) {
        bending.push_back(K[static_cast<std::size_t>(18 * (j - 1) + i - 1)]);
        expected_bending.push_back(static_cast<double>(expected(i - 1, j - 1)));
      }
    }
    for (const int j : reference::DRILL) {
      for (const int i : reference::DRILL) {
        drill.push_back(K[static_cast<std::size_t>(18 * (j - 1) + i - 1)]);
        expected_drill.push_back(static_cast<double>(expected(i - 1, j - 1)));
      }
    }
    EXPECT_CLOSE(bending, expected_bending, support::max_norm(expected_bending), 100) << c.name;
    EXPECT_CLOSE(drill, expected_drill, support::max_norm(expected_drill), 8) << c.name;
  }
}

TEST(TriangleStiffness, MembraneKindHasOnlyMembraneAndDrilling) {
  seeded_random random(87);
  for (const element_case& c : element_cases()) {
    if (c.formulation != 2) continue;
    engine_call call(random_element(random, c, plane_triangle(5.0, 2.0, 3.0)));
    call.run(1);
    const std::vector<double> K = call.matrix_values();
    for (const int i : reference::BENDING) {
      for (int j = 1; j <= 18; ++j) EXPECT_EQ(K[static_cast<std::size_t>(18 * (j - 1) + i - 1)], 0.0) << c.name;
    }
    for (const int i : reference::DRILL) EXPECT_GT(K[static_cast<std::size_t>(19 * (i - 1))], 0.0) << c.name;
  }
}
