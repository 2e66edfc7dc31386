// geometry_test.cpp: area, volume and weight of operation 8 on shapes whose area is known by hand.
#include "comparison.h"
#include "element_call.h"

TEST(Geometry, AreaOfAReentrantQuadrilateralIsThatOfItsPolygon) {
  // The corner (1, 1) is re-entrant: DET is negative there and at the point beside it. Half the sum of the cross
  // products of successive corners: (0 + 4 + 4 + 0) / 2.
  support::plate_description d;
  d.nodes = {{0, 0, 0}, {4, 0, 0}, {1, 1, 0}, {0, 4, 0}};
  d.thickness = 0.5;
  for (const int formulation : {1, 0}) {
    d.formulation = formulation;
    element_call call(d);
    call.LOADS(LOAD_DENSITY) = 3.0;
    call.run(8);
    EXPECT_CLOSE(call.area, 4.0, 4.0, 8);
    EXPECT_CLOSE(call.volume, 2.0, 2.0, 8);
    EXPECT_CLOSE(call.weight, 6.0, 6.0, 8);
  }
}

TEST(Geometry, OfATriangleByHand) {
  // Sides 3 and 4 at a right angle.
  support::plate_description d;
  d.nodes = {{1.0, 2.0, 3.0}, {1.0, 5.0, 3.0}, {1.0, 2.0, 7.0}};
  d.thickness = 0.25;
  for (const int formulation : {0, 1, 2}) {
    d.formulation = formulation;
    element_call call(d);
    call.LOADS(LOAD_DENSITY) = 8.0;
    call.run(8);
    EXPECT_EQ((std::vector<double>{call.area, call.volume, call.weight}), (std::vector<double>{6.0, 1.5, 12.0}))
        << formulation;
  }
}
