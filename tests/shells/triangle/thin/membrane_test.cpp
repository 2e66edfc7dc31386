// membrane_test.cpp: constant strain triangle and drilling term by hand.
#include "shells/triangle/membrane.h"

#include "comparison.h"
#include "element_stores.h"
#include "finites/records.h"
#include "guarded_buffer.h"
#include "prepared_triangle.h"

using support::seeded_random;
using support::values;

TEST(MembraneTriangle, StrainMatrixEntryByEntry) {
  MATRIX<3, 6> B;
  TRI_B_MEMBRANE(2.0, 3.0, 5.0, 7.0, B);
  const std::vector<double> by_columns = {-5, 0,   -12,  // u1
                                          0,  -12, -5,   // v1
                                          2,  0,   5,    // u2
                                          0,  5,   2,    // v2
                                          3,  0,   7,    // u3
                                          0,  7,   3};   // v3
  EXPECT_EQ(values(B.data(), 18), by_columns);
}

TEST(MembraneStiffness, UnitRightTriangleByHand) {
  // ex = u2 - u1, ey = v3 - v1, gxy = u3 - u1 + v2 - v1, on an area of one half.
  const prepared_triangle t(plane_triangle(1.0, 0.0, 1.0));
  ISO = ISOTROPIC_SECTION{};
  ISO.DM11 = 2.0;
  ISO.DM12 = 4.0;
  ISO.DM22 = 6.0;
  ISO.DM33 = 8.0;
  std::vector<double> K(21);
  TRI_KM_ISO(TRI, ISO, K.data());
  const std::vector<double> by_hand = {5,                    // u1
                                       6,  7,                // v1
                                       -1, -2, 1,            // u2
                                       -4, -4, 0, 4,         // v2
                                       -4, -4, 0, 4, 4,      // u3
                                       -2, -3, 2, 0, 0, 3};  // v3
  EXPECT_EQ(K, by_hand);
}

TEST(MembraneStiffness, PositionTwentyOfARightTriangleIsExactlyZero) {
  const prepared_triangle t(plane_triangle(1.0, 0.0, 1.0));
  seeded_random random(74);
  set_distinct_constants(random);
  std::vector<double> K(21, 1.0);
  TRI_KM_ISO(TRI, ISO, K.data());
  EXPECT_EQ(K[19], 0.0);
}

TEST(DrillingStiffness, ByHand) {
  prepared_triangle t(plane_triangle());  // twice the area: 15
  PLATEELEM.E1 = 2000.0;
  PLATEELEM.THICKNESS = 0.1;
  support::guarded_buffer K(6);
  TRI_KDRILL(PLATEELEM, TRI, K.data());
  EXPECT_EQ(K.changed(), support::range(1, 6));
  EXPECT_CLOSE(values(K.data(), 6), (std::vector<double>{3e-3, -1.5e-3, 3e-3, -1.5e-3, -1.5e-3, 3e-3}), 3e-3, 4);
}

TEST(DrillingStiffness, RowsAddUpToZero) {
  seeded_random random(75);
  prepared_triangle t(support::random_triangle(random));
  PLATEELEM.E1 = random.uniform(1.0, 1e5);
  PLATEELEM.THICKNESS = random.uniform(0.01, 1.0);
  double K[6];
  TRI_KDRILL(PLATEELEM, TRI, K);
  EXPECT_EQ(K[0] + K[1] + K[3], 0.0);
  EXPECT_EQ(K[1] + K[2] + K[4], 0.0);
  EXPECT_EQ(K[3] + K[4] + K[5], 0.0);
}
