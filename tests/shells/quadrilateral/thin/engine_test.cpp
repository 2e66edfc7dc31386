// engine_test.cpp: what the thin quadrilateral does by operation: outputs, set-up, warped shapes, shapes without area.
#include "shells/engines/engines.h"

#include <cmath>
#include <limits>

#include "comparison.h"
#include "element_call.h"
#include "element_stores.h"
#include "element_subject.h"
#include "prepared_quadrilateral.h"

using shell_reference::listed;
using support::range;
using support::seeded_random;
using support::values;

namespace {

std::vector<element_subject> thin_quadrilaterals() {
  std::vector<element_subject> both = subjects_of(20);
  for (const element_subject& s : subjects_of(22)) both.push_back(s);
  return both;
}

bool outputs_untouched(const element_call& call) {
  return call.F.changed().empty() && call.matrix.changed().empty() && call.nodes.changed().empty() &&
         call.points.changed().empty();
}

bool scalars_untouched(const element_call& call) {
  return std::isnan(call.area) && std::isnan(call.volume) && std::isnan(call.weight) && std::isnan(call.distance) &&
         call.point_flag1 == -7 && call.point_flag2 == -7;
}

}  // namespace

TEST(QuadrilateralEngine, OtherOperationsDoNothing) {
  seeded_random random(451);
  for (const element_subject& s : thin_quadrilaterals()) {
    for (const int op : {-1, 0, 11, 41, 72, 401, 1000000}) {
      element_call call(random_element(random, s));
      call.run(op);
      EXPECT_TRUE(outputs_untouched(call)) << s.name << " " << op;
      EXPECT_TRUE(scalars_untouched(call)) << s.name << " " << op;
    }
  }
}

TEST(QuadrilateralEngine, OperationsWriteTheirOwnOutputsOnly) {
  seeded_random random(452);
  for (const element_subject& s : thin_quadrilaterals()) {
    for (const int op : {1, 2, 3, 33, 4, 5, 6, 71, 8, 9, 10}) {
      element_call call(random_element(random, s));
      call.LOADS(LOAD_DENSITY) = 1.0;
      if (op == 71) call.points.set_input(std::vector<double>(360, 1.0));
      call.run(op);
      const bool matrix = op == 1 || op == 2 || op == 71, forces = op == 3 || op == 33 || op == 4 || op == 10;
      EXPECT_EQ(call.matrix.changed(), matrix ? range(1, 576) : std::vector<int>()) << s.name << " " << op;
      EXPECT_EQ(call.F.changed(), forces ? range(1, 24) : std::vector<int>()) << s.name << " " << op;
      EXPECT_EQ(call.nodes.changed().empty(), op != 5) << s.name << " " << op;
      EXPECT_EQ(call.points.changed().empty(), op != 5) << s.name << " " << op;
      EXPECT_EQ(std::isnan(call.area), op != 8) << s.name << " " << op;
      EXPECT_EQ(call.point_flag1 == -7, op != 9) << s.name << " " << op;
    }
  }
}

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

TEST(QuadrilateralEngine, FrameAlone) {
  seeded_random random(453);
  element_call call(random_element(random, isotropic_subject(20)));
  call.run(6);
  EXPECT_CLOSE(values(call.AXES.data(), 9), listed(call.reference.axes), 1.0, 16);
  EXPECT_TRUE(outputs_untouched(call));
  EXPECT_TRUE(scalars_untouched(call));
}

TEST(QuadrilateralEngine, ThermalStrainsOfTheGeneralBehaviour) {
  seeded_random random(454);
  for (const element_subject& s : thin_quadrilaterals()) {
    element_call call(random_element(random, s));
    call.LOADS(LOAD_TEMPERATURE) = 40.0;
    call.LOADS(LOAD_TEMPERATURE_DIFF) = -7.0;
    PLATEELEM.THERMAL_M1 = PLATEELEM.THERMAL_M2 = PLATEELEM.THERMAL_B1 = PLATEELEM.THERMAL_B2 = 99.0;
    call.run(6);
    const double a1 = PLATEELEM.ALPHA1, a2 = PLATEELEM.ALPHA2;
    const std::vector<double> actual = {PLATEELEM.THERMAL_M1, PLATEELEM.THERMAL_M2, PLATEELEM.THERMAL_B1,
                                        PLATEELEM.THERMAL_B2};
    const std::vector<double> expected =
        s.isotropic() ? std::vector<double>(4, 99.0) : std::vector<double>{a1 * 40.0, a2 * 40.0, a1 * -7.0, a2 * -7.0};
    EXPECT_EQ(actual, expected) << s.name;
  }
}

TEST(QuadrilateralEngine, GeneralBehaviourKeepsInPlaneShearApart) {
  // Turned with the others: at an angle the shear matrix has all its entries.
  seeded_random random(455);
  for (const element_subject& s : thin_quadrilaterals()) {
    if (s.isotropic()) continue;
    for (const int op : {1, 3, 5, 7}) {
      element_call call(random_element(random, s));
      call.run(op);
      const shell_reference::section& D = call.reference.s;
      const double scale = shell_reference::largest(D.whole());
      EXPECT_CLOSE(values(PLATEELEM.D_MEMBRANE_NORMAL.data(), 9), listed(D.membrane), scale, 16) << s.name << " " << op;
      EXPECT_CLOSE(values(PLATEELEM.D_MEMBRANE_SHEAR.data(), 9), listed(D.centre_only), scale, 16) << s.name;
      EXPECT_CLOSE(values(PLATEELEM.D_MEMBRANE_TOTAL.data(), 9), listed(D.whole()), scale, 16) << s.name;
      EXPECT_CLOSE(values(PLATEELEM.AXES.data(), 9), listed(call.reference.axes), 1.0, 16) << s.name;
      for (int n = 1; n <= 4; ++n) {
        EXPECT_CLOSE(values(&PLATEELEM.LOCAL_XYZ_QUAD(1, n), 2), listed(call.reference.X.col(n - 1)), 2.0, 16);
      }
    }
  }
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

TEST(QuadrilateralEngine, ElementsWithoutAreaDoNotStopTheRun) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const std::vector<std::vector<support::point>> shapes = {{{0, 0, 0}, {0, 0, 0}, {0, 0, 0}, {0, 0, 0}},
                                                           {{0, 0, 0}, {0, 0, 0}, {1, 2, 0}, {0, 1, 0}},
                                                           {{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {3, 0, 0}},
                                                           {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {1, 1, 0}},
                                                           {{0, 0, 0}, {1, 1, 0}, {1, 0, 0}, {0, 1, 0}},
                                                           {{0, 0, 0}, {4, 0, 0}, {0.5, 0.5, 0}, {0, 4, 0}},
                                                           {{0, 0, 0}, {1e200, 0, 0}, {1e200, 1e200, 0}, {0, 1e200, 0}},
                                                           {{nan, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}}};
  seeded_random random(458);
  for (const int kind : {20, 21, 22}) {
    for (const element_subject& s : subjects_of(kind)) {
      for (const std::vector<support::point>& nodes : shapes) {
        support::plate_description d = random_element(random, s);
        d.nodes = nodes;
        for (const int op : {1, 2, 3, 33, 4, 5, 6, 7, 71, 8, 9, 10}) {
          element_call call(d);
          call.LOADS(LOAD_DENSITY) = call.LOADS(12) = call.LOADS(LOAD_TEMPERATURE) = 1.0;
          call.U = random.vector(24, 1.0);
          call.run(op);
          for (int i = -20; i <= 0; ++i) EXPECT_FALSE(call.matrix.changed(i) || call.F.changed(i));
        }
      }
    }
  }
}
