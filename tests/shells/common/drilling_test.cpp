// drilling_test.cpp: the drilling moments by hand.
#include "shells/common/drilling.h"

#include "comparison.h"

TEST(DrillingMoments, AreSetAtTheirFreedomsWhateverWasThere) {
  // Kd = [1 2 4; 2 8 16; 4 16 32] times (1, 10, 100): 421, 1682, 3364.
  const double Kd[6] = {1.0, 2.0, 8.0, 4.0, 16.0, 32.0};
  const VECTOR<3> rotations{{1.0, 10.0, 100.0}};
  std::vector<double> f(7, -5.0);
  set_drilling_moments(Kd, rotations, {2, 4, 7}, f.data());
  EXPECT_EQ(f, (std::vector<double>{-5.0, 421.0, -5.0, 1682.0, -5.0, -5.0, 3364.0}));
}
