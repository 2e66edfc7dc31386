// named_by_shape_test.cpp: routines of one shape that the library reaches by other names: the side matrix of a triangle
// against integrals along the sides, the rotation of a quadrilateral's matrices against the definition by entries.
#include <array>
#include <vector>

#include "comparison.h"
#include "random_shapes.h"
#include "shells/common/packed.h"
#include "shells/common/side_fields.h"
#include "shells/quadrilateral/stiffness.h"

using support::seeded_random;

namespace {

QUADRILATERAL_GEOMETRY turned_axes(seeded_random& random) {
  QUADRILATERAL_GEOMETRY QUAD{};
  const support::rotation R = support::random_rotation(random);
  for (int a = 1; a <= 3; ++a) {
    for (int i = 1; i <= 3; ++i)
      QUAD.AXES(a, i) = R.at(static_cast<std::size_t>(a - 1)).at(static_cast<std::size_t>(i - 1));
  }
  return QUAD;
}

// (T^T K T)(i, j), T being the axes for each group of three; K is 24 by 24 by columns.
double turned_entry(const MATRIX<3, 3>& AXES, const std::vector<double>& K, int i, int j) {
  double sum = 0;
  for (int a = 0; a < 3; ++a) {
    for (int b = 0; b < 3; ++b) {
      const auto at = static_cast<std::size_t>((j / 3 * 3 + b) * 24 + i / 3 * 3 + a);
      sum += AXES(a + 1, i % 3 + 1) * K[at] * AXES(b + 1, j % 3 + 1);
    }
  }
  return sum;
}

}  // namespace

// w at the nodes is any, the rotations are linear: along a side w_i - w_j less the integral of beta, which for a linear
// field is its value at the middle times the side.
TEST(SideMatrixOfATriangle, IsTheConditionOfLinearRotations) {
  seeded_random random(301);
  for (int trial = 0; trial < 20; ++trial) {
    const std::vector<double> p = random.vector(6, 1.0), w = random.vector(3, 1.0), c = random.vector(6, 1.0);
    const auto beta_x = [&](double x, double y) { return c[0] + c[1] * x + c[2] * y; };
    const auto beta_y = [&](double x, double y) { return c[3] + c[4] * x + c[5] * y; };
    VECTOR<3> dx, dy, middle;
    VECTOR<9> U;
    for (int k = 1; k <= 3; ++k) {
      const auto i = static_cast<std::size_t>(k - 1), j = static_cast<std::size_t>(k % 3);
      dx(k) = p[2 * j] - p[2 * i];
      dy(k) = p[2 * j + 1] - p[2 * i + 1];
      const double x = (p[2 * i] + p[2 * j]) / 2, y = (p[2 * i + 1] + p[2 * j + 1]) / 2;
      middle(k) = w[i] - w[j] - dx(k) * beta_x(x, y) - dy(k) * beta_y(x, y);
      U(3 * k - 2) = w[i];
      U(3 * k - 1) = beta_x(p[2 * i], p[2 * i + 1]);
      U(3 * k) = beta_y(p[2 * i], p[2 * i + 1]);
    }
    SIDE_MATRIX<3> A;
    SIDE_AMAT_TRI(dx, dy, A);
    for (int k = 1; k <= 3; ++k) {
      double row = 0;
      for (int column = 1; column <= 9; ++column) row += A(k, column) * U(column);
      EXPECT_NEAR(row, middle(k), 1e-14) << k;
    }
  }
}

TEST(RotationOfAQuadrilateral, IsTheTripleProductOfPackedAndFullMatrices) {
  seeded_random random(302);
  for (int trial = 0; trial < 10; ++trial) {
    const QUADRILATERAL_GEOMETRY QUAD = turned_axes(random);
    std::vector<double> packed = random.vector(300, 1.0), full(24 * 24), general = random.vector(24 * 24, 1.0);
    for (int j = 0; j < 24; ++j) {
      for (int i = 0; i <= j; ++i) {
        full[static_cast<std::size_t>(24 * j + i)] = full[static_cast<std::size_t>(24 * i + j)] =
            packed[static_cast<std::size_t>(j * (j + 1) / 2 + i)];
      }
    }
    const std::vector<double> before = general;
    QUAD_TO_GLOBAL_PACKED(QUAD, packed.data());
    QUAD_TO_GLOBAL_FULL(QUAD, general.data());
    for (int j = 0; j < 24; ++j) {
      for (int i = 0; i < 24; ++i) {
        EXPECT_NEAR(general[static_cast<std::size_t>(24 * j + i)], turned_entry(QUAD.AXES, before, i, j), 1e-14);
        if (i > j) continue;
        EXPECT_NEAR(packed[static_cast<std::size_t>(j * (j + 1) / 2 + i)], turned_entry(QUAD.AXES, full, i, j), 1e-14);
      }
    }
  }
}
