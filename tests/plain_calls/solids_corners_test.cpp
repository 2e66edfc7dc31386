// Solids with a bad corner or a bad number at the end of an argument.
#include <limits>
#include <vector>

#include "finites/elements.h"
#include "gtest/gtest.h"
#include "solids_support.h"

namespace {

constexpr double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();

}  // namespace

// A node of the unit cube moved by d along the diagonal leaves edges (1-d, -d, -d) and so on there, whose determinant
// 1 - 3 d is negative from d = 1/3 on; the integration points, a fifth of the edge away, still have a positive one.
TEST(SolidsCorners, EveryCornerOfABrickCounts) {
  std::vector<double> K(576);
  for (int node = 0; node < 8; ++node) {
    for (const double d : {0.30, 0.36}) {
      finites_solid brick = plain_solids::straight(8);
      for (double& x : brick.xyz[node]) x += x > 0.5 ? -d : d;
      EXPECT_EQ(finites_solid_stiffness(&brick, K.data()), d < 1.0 / 3.0 ? FINITES_OK : FINITES_DEGENERATE)
          << "node " << node + 1 << " by " << d;
    }
  }
}

TEST(SolidsCorners, NumbersComeBeforeConstants) {
  finites_solid brick = plain_solids::straight(8);
  brick.E = 0.0;
  std::vector<double> u(24, 0.0), K(576);
  u[23] = NOT_A_NUMBER;
  EXPECT_EQ(finites_solid_geometric(&brick, u.data(), K.data()), FINITES_NAN);
  u[23] = 0.0;
  EXPECT_EQ(finites_solid_geometric(&brick, u.data(), K.data()), FINITES_MODULUS);
}

TEST(SolidsCorners, StressesOfEveryPointAreLookedAt) {
  const finites_solid brick = plain_solids::straight(8);
  double stress[8][6] = {};
  std::vector<double> K(576);
  EXPECT_EQ(finites_solid_geometric_of_stresses(&brick, stress, K.data()), FINITES_OK);
  stress[7][5] = NOT_A_NUMBER;
  EXPECT_EQ(finites_solid_geometric_of_stresses(&brick, stress, K.data()), FINITES_NAN);
}
