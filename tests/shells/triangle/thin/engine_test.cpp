// engine_test.cpp: which operation writes what, what is set up before it, and elements without area.
#include "shells/engines/engines.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "comparison.h"
#include "element_cases.h"
#include "engine_call.h"
#include "finites/records.h"
#include "shells/triangle/geometry.h"

using reference::listed;
using support::range;
using support::seeded_random;
using support::values;

namespace {

bool outputs_untouched(const engine_call& call) {
  return call.F.changed().empty() && call.matrix.changed().empty() && call.nodes.changed().empty() &&
         call.points.changed().empty();
}

bool scalars_untouched(const engine_call& call) {
  return std::isnan(call.area) && std::isnan(call.volume) && std::isnan(call.weight) && std::isnan(call.distance) &&
         call.point_flag1 == -7 && call.point_flag2 == -7;
}

}  // namespace

TEST(TriangleEngine, OtherOperationsDoNothing) {
  seeded_random random(171);
  for (const element_case& c : element_cases()) {
    for (const int op : {-1, 0, 11, 41, 72, 401, 1000000}) {
      engine_call call(random_element(random, c));
      call.run(op);
      EXPECT_TRUE(outputs_untouched(call)) << c.name << " " << op;
      EXPECT_TRUE(scalars_untouched(call)) << c.name << " " << op;
    }
  }
}

TEST(TriangleEngine, OperationsWriteTheirOwnOutputsOnly) {
  seeded_random random(172);
  for (const element_case& c : element_cases()) {
    for (const int op : {1, 2, 3, 33, 4, 5, 6, 71, 8, 9, 10}) {
      engine_call call(random_element(random, c));
      call.LOADS(4) = 1.0;
      const std::vector<double> stored(360, 1.0);
      if (op == 71) call.points.set_input(stored);
      call.run(op);
      const bool matrix = op == 1 || op == 2 || op == 71, forces = op == 3 || op == 33 || op == 4 || op == 10;
      EXPECT_EQ(call.matrix.changed(), matrix ? range(1, 324) : std::vector<int>()) << c.name << " " << op;
      const int written = op == 3 || op == 33 ? 24 : 18;
      EXPECT_EQ(call.F.changed(), forces ? range(1, written) : std::vector<int>()) << c.name << " " << op;
      EXPECT_EQ(call.nodes.changed().empty(), op != 5) << c.name << " " << op;
      EXPECT_EQ(call.points.changed().empty(), op != 5) << c.name << " " << op;
      EXPECT_EQ(std::isnan(call.area), op != 8) << c.name << " " << op;
      EXPECT_EQ(call.point_flag1 == -7, op != 9) << c.name << " " << op;
    }
  }
}

TEST(TriangleEngine, GeometryByHand) {
  support::plate_description d;
  d.nodes = {{1.0, 2.0, 3.0}, {1.0, 5.0, 3.0}, {1.0, 2.0, 7.0}};  // sides 3 and 4 at a right angle
  d.thickness = 0.25;
  engine_call call(d);
  call.LOADS(4) = 8.0;
  call.run(8);
  EXPECT_EQ(call.area, 6.0);
  EXPECT_EQ(call.volume, 1.5);
  EXPECT_EQ(call.weight, 12.0);
  EXPECT_TRUE(outputs_untouched(call));
}

TEST(TriangleEngine, FrameAlone) {
  seeded_random random(173);
  engine_call call(random_element(random, element_cases().front()));
  call.run(6);
  EXPECT_CLOSE(values(call.AXES.data(), 9), listed(call.axes), 1.0, 16);
  EXPECT_TRUE(outputs_untouched(call));
  EXPECT_TRUE(scalars_untouched(call));
}

TEST(TriangleEngine, AxesAreClearedFirst) {
  seeded_random random(174);
  engine_call call(random_element(random, element_cases().front()));
  for (const int op : {2, 1234}) {
    call.run(6);
    call.LOADS(4) = 0.0;
    call.run(op);
    EXPECT_EQ(values(call.AXES.data(), 9), std::vector<double>(9, 0.0)) << op;
  }
}

TEST(TriangleEngine, ThermalStrainsOfTheGeneralBehaviour) {
  seeded_random random(175);
  for (const element_case& c : element_cases()) {
    engine_call call(random_element(random, c));
    call.LOADS(26) = 40.0;
    call.LOADS(27) = -7.0;
    PLATEELEM.THERMAL_M1 = PLATEELEM.THERMAL_M2 = PLATEELEM.THERMAL_B1 = PLATEELEM.THERMAL_B2 = 99.0;
    call.run(6);
    const double a1 = PLATEELEM.ALPHA1, a2 = PLATEELEM.ALPHA2;
    const std::vector<double> actual = {PLATEELEM.THERMAL_M1, PLATEELEM.THERMAL_M2, PLATEELEM.THERMAL_B1,
                                        PLATEELEM.THERMAL_B2};
    if (c.form == section_form::isotropic) {
      EXPECT_EQ(actual, std::vector<double>(4, 99.0)) << c.name;
    } else {
      EXPECT_EQ(actual, (std::vector<double>{a1 * 40.0, a2 * 40.0, a1 * -7.0, a2 * -7.0})) << c.name;
    }
  }
}

TEST(TriangleEngine, GeneralBehaviourKeepsShearWithTheNormalPart) {
  seeded_random random(176);
  for (const element_case& c : element_cases()) {
    if (c.form == section_form::isotropic) continue;
    for (const int op : {1, 3, 5, 7}) {
      engine_call call(random_element(random, c));
      call.points.set_input(std::vector<double>(360, 0.0));
      call.run(op);
      EXPECT_EQ(values(PLATEELEM.D_MEMBRANE_SHEAR.data(), 9), std::vector<double>(9, 0.0)) << c.name << " " << op;
      const std::vector<double> D = listed(call.section.membrane);
      EXPECT_CLOSE(values(PLATEELEM.D_MEMBRANE_NORMAL.data(), 9), D, support::max_norm(D), 16) << c.name << " " << op;
      EXPECT_CLOSE(values(PLATEELEM.AXES.data(), 9), listed(call.axes), 1.0, 16) << c.name << " " << op;
      EXPECT_EQ(PLATEELEM.LOCAL_XYZ(1, 1), 0.0) << c.name << " " << op;
    }
  }
}

TEST(TriangleEngine, GeneralBehaviourWithEqualModuliAtAngleZeroIsIsotropic) {
  seeded_random random(179);
  for (const int formulation : {1, 2}) {
    for (const int op : {1, 3, 33, 4, 5, 7}) {
      engine_call isotropic(random_element(random, {"", formulation, section_form::isotropic}));
      isotropic.U = random.vector(24, 1e-2);
      isotropic.LOADS(26) = 30.0;
      isotropic.LOADS(27) = -20.0;
      isotropic.run(op);
      engine_call general(isotropic.element);
      PLATEELEM_RECORD& P = PLATEELEM;
      P.MAT_BEHAV = 1;
      P.E2 = P.E1;
      P.NU2 = P.NU1;
      P.G12 = P.G13 = P.G23 = P.E1 / (2.0 * (1.0 + P.NU1));
      P.ALPHA2 = P.ALPHA1;
      general.U = isotropic.U;
      general.LOADS = isotropic.LOADS;
      general.run(op);
      const bool makes_matrix = op == 1 || op == 7;
      if (makes_matrix) {
        const std::vector<double> K = isotropic.matrix_values();
        EXPECT_CLOSE(general.matrix_values(), K, support::max_norm(K), 500) << op;
      } else if (op == 5) {
        const std::vector<double> R = isotropic.point_record(2), G = general.point_record(2);
        for (const auto& [first, count] : {std::pair{3, 6}, std::pair{14, 6}, std::pair{25, 6}, std::pair{36, 6}}) {
          const std::vector<double> r(&R[static_cast<std::size_t>(first)], &R[static_cast<std::size_t>(first + count)]);
          const std::vector<double> g(&G[static_cast<std::size_t>(first)], &G[static_cast<std::size_t>(first + count)]);
          EXPECT_CLOSE(g, r, support::max_norm(r), 500) << "column " << first + 1;
        }
      } else {
        const std::vector<double> f = isotropic.force_values();
        const double scale = static_cast<double>(isotropic.section.membrane.maxCoeff()) * 1e-2;
        EXPECT_CLOSE(general.force_values(), f, std::max(scale, support::max_norm(f)), 500) << op;
      }
    }
  }
}

TEST(TriangleEngine, ReducedAxialModifierLeavesTheShearAlone) {
  // The axial modifier of the call block may differ from the shear modifier: it touches ex and ey only.
  seeded_random random(177);
  engine_call call(random_element(random, {"", 2, section_form::isotropic}));
  call.LOADS(35) = 0.01 * call.LOADS(36);
  call.section.membrane.topLeftCorner(2, 2) *= 0.01L;
  call.run(1);
  const reference::matrix R = reference::eighteen(call.axes);
  const reference::matrix expected = R.transpose() * reference::stiffness(call.X, call.section) * R;
  EXPECT_CLOSE(call.matrix_values(), listed(expected), reference::largest(expected), 64);
}

TEST(TriangleEngine, ElementsWithoutAreaDoNotStopTheRun) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const std::vector<std::vector<support::point>> shapes = {{{0, 0, 0}, {0, 0, 0}, {0, 0, 0}},
                                                           {{0, 0, 0}, {0, 0, 0}, {1, 2, 0}},
                                                           {{0, 0, 0}, {1, 0, 0}, {3, 0, 0}},
                                                           {{0, 0, 0}, {1e200, 0, 0}, {0, 1e200, 0}},
                                                           {{nan, 0, 0}, {1, 0, 0}, {0, 1, 0}}};
  seeded_random random(178);
  for (const std::vector<support::point>& nodes : shapes) {
    for (const element_case& c : element_cases()) {
      support::plate_description d = random_element(random, c);
      d.nodes = nodes;
      for (const int op : {1, 2, 3, 33, 4, 5, 6, 7, 71, 8, 9, 10}) {
        engine_call call(d);
        call.LOADS(4) = call.LOADS(12) = call.LOADS(26) = 1.0;
        call.U = random.vector(24, 1.0);
        call.run(op);
        for (int i = -20; i <= 0; ++i) EXPECT_FALSE(call.matrix.changed(i) || call.F.changed(i));
      }
    }
  }
}
