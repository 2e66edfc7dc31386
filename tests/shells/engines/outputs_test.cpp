// outputs_test.cpp: which operation of an engine writes what, what it leaves in the scratch record, and shapes without
// area.
#include <cmath>
#include <limits>

#include "comparison.h"
#include "element_call.h"
#include "element_subject.h"
#include "finites/records.h"

using shell_reference::largest;
using shell_reference::listed;
using support::range;
using support::seeded_random;
using support::values;

namespace {

bool outputs_untouched(const element_call& call) {
  return call.F.changed().empty() && call.matrix.changed().empty() && call.nodes.changed().empty() &&
         call.points.changed().empty();
}

bool scalars_untouched(const element_call& call) {
  return std::isnan(call.area) && std::isnan(call.volume) && std::isnan(call.weight) && std::isnan(call.distance) &&
         call.point_flag1 == -7 && call.point_flag2 == -7;
}

// Two nodes or all of them in one place, all on a line, coordinates whose squares overflow, NaN; of four nodes also two
// at one corner, crossed sides and a re-entrant corner.
std::vector<std::vector<support::point>> shapes_without_area(int nodes) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  if (nodes == 3) {
    return {{{0, 0, 0}, {0, 0, 0}, {0, 0, 0}},
            {{0, 0, 0}, {0, 0, 0}, {1, 2, 0}},
            {{0, 0, 0}, {1, 0, 0}, {3, 0, 0}},
            {{0, 0, 0}, {1e200, 0, 0}, {0, 1e200, 0}},
            {{nan, 0, 0}, {1, 0, 0}, {0, 1, 0}}};
  }
  return {{{0, 0, 0}, {0, 0, 0}, {0, 0, 0}, {0, 0, 0}},
          {{0, 0, 0}, {0, 0, 0}, {1, 2, 0}, {0, 1, 0}},
          {{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {3, 0, 0}},
          {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {1, 1, 0}},
          {{0, 0, 0}, {1, 1, 0}, {1, 0, 0}, {0, 1, 0}},
          {{0, 0, 0}, {4, 0, 0}, {0.5, 0.5, 0}, {0, 4, 0}},
          {{0, 0, 0}, {1e200, 0, 0}, {1e200, 1e200, 0}, {0, 1e200, 0}},
          {{nan, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}}};
}

}  // namespace

TEST(Outputs, OfOtherOperationsAreNone) {
  seeded_random random(401);
  for (const element_subject& s : subjects()) {
    for (const int op : {-1, 0, 11, 41, 72, 401, 1000000}) {
      element_call call(random_element(random, s));
      call.run(op);
      EXPECT_TRUE(outputs_untouched(call)) << s.name << " " << op;
      EXPECT_TRUE(scalars_untouched(call)) << s.name << " " << op;
    }
  }
}

TEST(Outputs, OfEachOperationAreItsOwn) {
  // Forces are 24 values whatever the element, loads as many as its degrees of freedom. Operation 7 of a triangle sets
  // the records of the points to zero.
  seeded_random random(402);
  for (const element_subject& s : subjects()) {
    for (const int op : {1, 2, 3, 33, 4, 5, 6, 7, 71, 8, 9, 10}) {
      element_call call(random_element(random, s));
      call.LOADS(LOAD_DENSITY) = 1.0;
      call.U = random.vector(24, 1.0);
      if (op == 7 || op == 71) call.points.set_input(std::vector<double>(360, 5.0));
      call.run(op);
      const std::string where = s.name + " " + std::to_string(op);
      const int order = call.order();
      const bool matrix = op == 1 || op == 2 || op == 7 || op == 71, both = op == 3 || op == 33;
      EXPECT_EQ(call.matrix.changed(), matrix ? range(1, order * order) : std::vector<int>()) << where;
      const int forces = both ? 24 : op == 4 || op == 10 ? order : 0;
      EXPECT_EQ(call.F.changed(), forces > 0 ? range(1, forces) : std::vector<int>()) << where;
      for (int i = order + 1; both && i <= 24; ++i) EXPECT_EQ(call.F(i), 0.0) << where;
      EXPECT_EQ(call.nodes.changed().empty(), op != 5) << where;
      if (op == 7 && s.nodes == 3) {
        EXPECT_EQ(values(call.points.data(), 360), std::vector<double>(360, 0.0)) << where;
      } else {
        EXPECT_EQ(call.points.changed().empty(), op != 5) << where;
      }
      EXPECT_EQ(std::isnan(call.area) && std::isnan(call.volume) && std::isnan(call.weight), op != 8) << where;
      EXPECT_EQ(call.point_flag1 == -7 && call.point_flag2 == -7 && std::isnan(call.distance), op != 9) << where;
    }
  }
}

TEST(Outputs, OfTheFrameAreItsAxes) {
  seeded_random random(403);
  for (const element_subject& s : subjects()) {
    element_call call(random_element(random, s));
    call.run(6);
    EXPECT_CLOSE(values(call.AXES.data(), 9), listed(call.reference.axes), 1.0, 16) << s.name;
    EXPECT_TRUE(outputs_untouched(call)) << s.name;
    EXPECT_TRUE(scalars_untouched(call)) << s.name;
  }
}

TEST(Outputs, OfEveryOperationAreFiniteOrNotWithoutAStopWhereTheShapeHasNoArea) {
  seeded_random random(404);
  for (const element_subject& s : subjects()) {
    for (const std::vector<support::point>& nodes : shapes_without_area(s.nodes)) {
      support::plate_description d = random_element(random, s);
      d.nodes = nodes;
      for (const int op : {1, 2, 3, 33, 4, 5, 6, 7, 71, 8, 9, 10}) {
        element_call call(d);
        call.LOADS(LOAD_DENSITY) = call.LOADS(LOAD_SURFACE + 2) = call.LOADS(LOAD_TEMPERATURE) = 1.0;
        call.U = random.vector(24, 1.0);
        if (op == 71) call.points.set_input(std::vector<double>(360, 1.0));
        call.run(op);
        const bool matrix = op == 1 || op == 2 || op == 7 || op == 71;
        const int order = call.order();
        EXPECT_EQ(call.matrix.changed(), matrix ? range(1, order * order) : std::vector<int>()) << s.name << " " << op;
        for (int i = -20; i <= 0; ++i) EXPECT_FALSE(call.F.changed(i) || call.nodes.changed(i)) << s.name << " " << op;
      }
    }
  }
}

TEST(ScratchRecord, HasTheGeneralSectionAndTheFrameAfterTheOperationsThatReadThem) {
  // In-plane shear stands apart on quadrilaterals and with the normal part on triangles; at an angle it has all its
  // entries.
  seeded_random random(405);
  for (const element_subject& s : subjects()) {
    if (s.isotropic()) continue;
    for (const int op : {1, 3, 33, 4, 5, 7, 71}) {
      element_call call(random_element(random, s));
      if (op == 71) call.points.set_input(std::vector<double>(360, 0.0));
      call.run(op);
      const std::string where = s.name + " " + std::to_string(op);
      const shell_reference::section& D = call.reference.s;
      const double scale = largest(D.whole());
      EXPECT_CLOSE(values(PLATEELEM.D_MEMBRANE_NORMAL.data(), 9), listed(D.membrane), scale, 16) << where;
      EXPECT_CLOSE(values(PLATEELEM.D_MEMBRANE_SHEAR.data(), 9), listed(D.centre_only), scale, 16) << where;
      EXPECT_CLOSE(values(PLATEELEM.D_MEMBRANE_TOTAL.data(), 9), listed(D.whole()), scale, 16) << where;
      EXPECT_CLOSE(values(PLATEELEM.D_BENDING.data(), 9), listed(D.bending), largest(D.bending), 16) << where;
      EXPECT_CLOSE(values(PLATEELEM.D_SHEAR.data(), 4), listed(D.shear), largest(D.shear), 16) << where;
      EXPECT_CLOSE(values(PLATEELEM.AXES.data(), 9), listed(call.reference.axes), 1.0, 16) << where;
      for (int n = 1; n <= s.nodes; ++n) {
        const double* const at = s.nodes == 3 ? &PLATEELEM.LOCAL_XYZ(1, n) : &PLATEELEM.LOCAL_XYZ_QUAD(1, n);
        EXPECT_CLOSE(values(at, 2), listed(call.reference.X.col(n - 1)), 2.0, 16) << where;
      }
    }
  }
}
