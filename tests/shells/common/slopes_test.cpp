// slopes_test.cpp: slopes of the linear and bilinear functions by hand, with four different entries of an inverse
// Jacobian: in a triangle's own axes the second is zero, and would hide its sign.
#include "shells/common/slopes.h"

#include "comparison.h"

using support::values;

TEST(Slopes, OfLinearFunctionsByHand) {
  const SLOPES<3> n = linear_slopes(2.0, 3.0, 5.0, 7.0);
  EXPECT_EQ(values(n.X.data(), 3), (std::vector<double>{-5.0, 2.0, 3.0}));
  EXPECT_EQ(values(n.Y.data(), 3), (std::vector<double>{-12.0, 5.0, 7.0}));
}

TEST(Slopes, OfBilinearFunctionsByHand) {
  // At (1/2, -1/2): by xi -3/8, 3/8, 1/8, -1/8; by eta -1/8, -3/8, 3/8, 1/8.
  const SLOPES<4> n = bilinear_slopes(0.5, -0.5, 8.0, 16.0, 24.0, 40.0);
  EXPECT_EQ(values(n.X.data(), 4), (std::vector<double>{-5.0, -3.0, 7.0, 1.0}));
  EXPECT_EQ(values(n.Y.data(), 4), (std::vector<double>{-14.0, -6.0, 18.0, 2.0}));
  EXPECT_EQ(values(bilinear(0.5, -0.5).data(), 4), (std::vector<double>{3.0 / 16, 9.0 / 16, 3.0 / 16, 1.0 / 16}));
}
