// Plates at rest, as they start, and at the edges of their constants.
#include <cmath>
#include <vector>

#include "finites/elements.h"
#include "gtest/gtest.h"
#include "plate_subjects.h"

TEST(PlatesEdges, APlateStartsAsAThickQuadrilateral) {
  finites_plate p;
  finites_plate_init(&p);
  EXPECT_EQ(p.nodes, 4);
  EXPECT_EQ(p.theory, FINITES_THICK);
  EXPECT_EQ(p.orthotropic, 0);
  for (const double factor :
       {p.twist_factor, p.inplane_shear_factor, p.membrane_factor, p.bending_factor, p.shear_factor, p.mass_factor}) {
    EXPECT_EQ(factor, 1.0);
  }
  EXPECT_EQ(p.thickness + p.E + p.nu + p.density + p.expansion, 0.0);
}

// Zeros of a matrix print as 0, not as -0.
TEST(PlatesEdges, AtRestThereAreNoNegativeZeros) {
  const std::vector<double> u(24, 0.0);
  for (const int nodes : {3, 4}) {
    const finites_plate p = subjects::rectangle(nodes, FINITES_THICK, 2.0, 1.0);
    std::vector<double> KG(36 * static_cast<std::size_t>(nodes * nodes));
    ASSERT_EQ(finites_plate_geometric(&p, u.data(), KG.data()), FINITES_OK);
    for (const double k : KG) {
      ASSERT_EQ(k, 0.0);
      ASSERT_FALSE(std::signbit(k));
    }
  }
}

TEST(PlatesEdges, CountsOfPlacesWithResults) {
  const std::vector<double> u(24, 0.0);
  for (const int nodes : {3, 4}) {
    const finites_plate p = subjects::rectangle(nodes, FINITES_THIN, 2.0, 1.0);
    finites_plate_results r;
    ASSERT_EQ(finites_plate_result(&p, u.data(), nullptr, &r), FINITES_OK);
    EXPECT_EQ(r.nodes, nodes);
    EXPECT_EQ(r.points, 4);
  }
}

// The middle of three nodes is that of three.
TEST(PlatesEdges, MiddleOfATriangle) {
  finites_plate p = subjects::rectangle(3, FINITES_THIN, 2.0, 1.0);
  const double xyz[3][3] = {{1.0, 1.0, 5.0}, {4.0, 1.0, 5.0}, {1.0, 7.0, 5.0}};
  for (int n = 0; n < 3; ++n) {
    for (int i = 0; i < 3; ++i) p.xyz[n][i] = xyz[n][i];
  }
  finites_plate_measures m;
  ASSERT_EQ(finites_plate_measure(&p, &m), FINITES_OK);
  EXPECT_DOUBLE_EQ(m.center[0], 2.0);
  EXPECT_DOUBLE_EQ(m.center[1], 3.0);
  EXPECT_DOUBLE_EQ(m.center[2], 5.0);
  EXPECT_DOUBLE_EQ(m.area, 9.0);
}
