// engine_test.cpp: area, warped shapes and the mass of the thin quadrilateral.
#include "comparison.h"
#include "element_call.h"
#include "element_subject.h"
#include "prepared_quadrilateral.h"

using support::seeded_random;

TEST(QuadrilateralEngine, GeometryByHand) {
  support::plate_description d;
  d.nodes = plane_quadrilateral();
  d.thickness = 0.25;
  for (const int formulation : {0, 1, 2}) {
    d.formulation = formulation;
    element_call call(d);
    call.LOADS(LOAD_DENSITY) = 8.0;
    call.run(8);
    EXPECT_CLOSE((std::vector<double>{call.area, call.volume, call.weight}), (std::vector<double>{13.0, 3.25, 26.0}),
                 26.0, 4)
        << formulation;
  }
}

TEST(QuadrilateralEngine, AreaOfNodesTheOtherWayRoundIsPositive) {
  // The frame turns with them.
  support::plate_description d;
  const std::vector<support::point> nodes = plane_quadrilateral();
  d.nodes = {nodes[0], nodes[3], nodes[2], nodes[1]};
  element_call call(d);
  call.run(8);
  EXPECT_CLOSE(call.area, 13.0, 13.0, 4);
}

TEST(QuadrilateralEngine, WarpedNodesGiveWhatTheirProjectionGives) {
  // Node 3 off the plane of nodes 1, 2, 4 by a tenth of the size: all operations but the plane of operation 9.
  seeded_random random(456);
  for (const int kind : {20, 21, 22}) {
    for (const element_subject& s : subjects_of(kind)) {
      const support::plate_description projected = random_element(random, s);
      support::plate_description warped = projected;
      element_call straight(projected);
      const shell_reference::vector3 off = straight.reference.axes.row(2).transpose() * 0.1L;
      for (std::size_t i = 0; i < 3; ++i) warped.nodes[2][i] += static_cast<double>(off(static_cast<int>(i)));
      const std::vector<double> u = random.vector(24, 1e-2);
      for (const int op : {1, 2, 3, 4, 5, 7, 8}) {
        element_call flat(projected), bent(warped);
        for (element_call* call : {&flat, &bent}) {
          call->U = u;
          call->LOADS(LOAD_DENSITY) = call->LOADS(12) = call->LOADS(LOAD_TEMPERATURE) = 1.0;
          call->run(op);
        }
        if (op == 1 || op == 2 || op == 7) {
          EXPECT_CLOSE(bent.matrix_values(), flat.matrix_values(), support::max_norm(flat.matrix_values()), 400) << op;
        } else if (op == 3 || op == 4) {
          const double scale =
              support::max_norm(flat.force_values()) + shell_reference::largest(flat.reference.s.whole()) * 1e-2;
          EXPECT_CLOSE(bent.force_values(), flat.force_values(), scale, 400) << op;
        } else if (op == 5) {
          for (const int first : {1, 15, 37}) {
            EXPECT_CLOSE(columns(bent.point_record(3), first, 3), columns(flat.point_record(3), first, 3),
                         support::max_norm(columns(flat.point_record(3), first, 3)) + 0.1, 4000)
                << first;
          }
        } else {
          EXPECT_CLOSE(bent.area, flat.area, flat.area, 64);
        }
      }
    }
  }
}

TEST(QuadrilateralEngine, MassOfTheMembraneKindHasTheRotaryTerm) {
  seeded_random random(457);
  element_call shell(random_element(random, isotropic_subject(20), rectangle(2.0, 1.0)));
  shell.LOADS(LOAD_DENSITY) = 0.5;
  shell.run(2);
  support::plate_description d = shell.element;
  d.formulation = 2;
  element_call membrane(d);
  membrane.LOADS(LOAD_DENSITY) = 0.5;
  membrane.run(2);
  EXPECT_EQ(membrane.matrix_values(), shell.matrix_values());
  EXPECT_GT(membrane.matrix(24 * 3 + 4), 0.0);
  for (const int z : {6, 12, 18, 24}) {  // the drilling rotations have none
    for (int i = 1; i <= 24; ++i) EXPECT_EQ(membrane.matrix(24 * (z - 1) + i), 0.0);
  }
}

TEST(QuadrilateralEngine, RotaryInertiaByHand) {
  // A rigid turn about x of a square: density h^3 / 12 times the area, beside that of the translations.
  support::plate_description d;
  d.nodes = {{-1, -1, 0}, {1, -1, 0}, {1, 1, 0}, {-1, 1, 0}};
  d.thickness = 3.0;
  element_call call(d);
  call.LOADS(LOAD_DENSITY) = 2.0;
  call.run(2);
  std::vector<double> turn(24, 0.0);
  for (std::size_t n = 0; n < 4; ++n) {
    turn[6 * n + 2] = d.nodes[n][1];
    turn[6 * n + 3] = 1.0;
  }
  const double energy = support::dot(turn, support::product(call.matrix_values(), turn));
  // 2 x 3 x integral of y^2 (4/3) + 2 x 27 / 12 x 4.
  EXPECT_CLOSE(energy, 8.0 + 18.0, 26.0, 32);
}
