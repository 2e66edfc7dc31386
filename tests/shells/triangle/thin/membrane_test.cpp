// membrane_test.cpp: constant strain triangle and drilling term by hand.
#include "shells/triangle/membrane.h"
#include "shells/triangle/point_pairs.h"

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

<<<<<<< HEAD
=======
TEST(MembraneTriangle, StoredStrainMatrixHasTheGradientsOfAreaCoordinates) {
  seeded_random random(71);
  for (int trial = 0; trial < 30; ++trial) {
    const prepared_triangle t(support::random_triangle(random));
    MATRIX<3, 6> B;
    TRI_B_MEMBRANE_STORED(TRI, B);
    const matrix expected = reference::membrane_B(t.flat());
    EXPECT_CLOSE(values(B.data(), 18), listed(expected), reference::largest(expected), 16);
  }
}

TEST(MembraneStiffness, ClosedFormIsTheIntegral) {
  seeded_random random(72);
  for (int trial = 0; trial < 40; ++trial) {
    const prepared_triangle t(support::random_triangle(random));
    set_distinct_constants(random);
    support::guarded_buffer K(21);
    TRI_KM_ISO(TRI, ISO, K.data());
    EXPECT_EQ(K.changed(), support::range(1, 21));
    const matrix expected = reference::membrane_stiffness(t.flat(), membrane_constants());
    EXPECT_CLOSE(values(K.data(), 21), packed_of(expected), reference::largest(expected), 16);
  }
}

TEST(MembraneStiffness, GeneralFormKeepsTheUpperTriangle) {
  seeded_random random(73);
  for (int trial = 0; trial < 40; ++trial) {
    const prepared_triangle t(support::random_triangle(random));
    PLATEELEM.D_MEMBRANE_NORMAL = unsymmetric_section(random);
    support::guarded_buffer K(21);
    TRI_KM_GENERAL(PLATEELEM, tri_pairs_general(PLATEELEM), K.data());
    EXPECT_EQ(K.changed(), support::range(1, 21));
    const matrix expected = reference::membrane_stiffness(t.flat(), wide(PLATEELEM.D_MEMBRANE_NORMAL));
    EXPECT_CLOSE(values(K.data(), 21), packed_of(expected), reference::largest(expected), 64);
  }
}

TEST(MembraneStiffness, GeneralFormReadsTheNormalPart) {
  const prepared_triangle t(plane_triangle(1.0, 0.0, 1.0));
  PLATEELEM.D_MEMBRANE_TOTAL = PLATEELEM.D_MEMBRANE_SHEAR = {{1, 0, 0, 0, 1, 0, 0, 0, 1}};
  std::vector<double> K(21, 1.0);
  TRI_KM_GENERAL(PLATEELEM, tri_pairs_general(PLATEELEM), K.data());
  EXPECT_EQ(K, std::vector<double>(21, 0.0));
}

>>>>>>> 7ab4b2f (Tests of the short cuts against plain sums, of parts and of plastic tangents without symmetry)
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
<<<<<<< HEAD
=======

TEST(DrillingStiffness, ModifiersDoNotScaleIt) {
  prepared_triangle t(plane_triangle(1.0, 0.0, 1.0));
  PLATEELEM.E1 = 7.0;
  PLATEELEM.THICKNESS = 0.5;
  double without[6], with[6];
  TRI_KDRILL(PLATEELEM, TRI, without);
  PLATEELEM.MOD_MEMBRANE = PLATEELEM.MOD_BENDING = {{3.0, 3.0, 3.0}};
  PLATEELEM.E2 = 11.0;
  TRI_KDRILL(PLATEELEM, TRI, with);
  EXPECT_EQ(values(with, 6), values(without, 6));
}

TEST(DrillingStiffness, NothingOfNoThicknessOrNoModulus) {
  prepared_triangle t(plane_triangle(1.0, 0.0, 1.0));
  double K[6];
  PLATEELEM.E1 = 0.0;
  PLATEELEM.THICKNESS = 1.0;
  TRI_KDRILL(PLATEELEM, TRI, K);
  EXPECT_EQ(values(K, 6), std::vector<double>(6, 0.0));
  PLATEELEM.E1 = 1.0;
  PLATEELEM.THICKNESS = 0.0;
  TRI_KDRILL(PLATEELEM, TRI, K);
  EXPECT_EQ(values(K, 6), std::vector<double>(6, 0.0));
}

TEST(MembraneStiffness, GeneralFormCarriesTheDigitsOfTheWeights) {
  // Strains of one on an area of one half: each entry is the sum of the weights, which is not one half.
  const prepared_triangle t(plane_triangle(1.0, 0.0, 1.0));
  PLATEELEM.D_MEMBRANE_NORMAL = {{1, 0, 0, 0, 1, 0, 0, 0, 1}};
  double K[21];
  TRI_KM_GENERAL(PLATEELEM, tri_pairs_general(PLATEELEM), K);
  for (const int at : {6, 10, 15, 21}) {  // u2, v2, u3, v3
    EXPECT_CLOSE(K[at - 1], 0.500000000000001, 0.5, 1.0);
    EXPECT_NE(K[at - 1], 0.5);
  }
}
>>>>>>> 7ab4b2f (Tests of the short cuts against plain sums, of parts and of plastic tangents without symmetry)
