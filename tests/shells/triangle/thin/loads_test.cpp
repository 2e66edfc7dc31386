// loads_test.cpp: equivalent nodal loads of body and surface forces against integrals and resultants.
#include "shells/triangle/thin/loads.h"

#include <cmath>

#include "comparison.h"
#include "element_cases.h"
#include "element_stores.h"
#include "engine_call.h"
#include "finites/records.h"
#include "prepared_triangle.h"

using reference::column;
using reference::column_of;
using reference::listed;
using reference::matrix;
using reference::real;
using reference::vector3;
using support::seeded_random;
using support::values;

namespace {

// Nodal loads, element axes, of a load q per area in element axes: a third in the plane, the cubic functions across.
column surface_loads(const engine_call& call, const vector3& q) {
  const real two_area = reference::twice_area(call.X);
  column f = column::Zero(18);
  for (int n = 0; n < 3; ++n) {
    f(6 * n) = q(0) * two_area / 6.0L;
    f(6 * n + 1) = q(1) * two_area / 6.0L;
  }
  for (const reference::station& p : reference::FOUR_POINTS) {
    const column N = reference::w_functions(call.X, p.xi, p.eta);
    for (int i = 0; i < 9; ++i) f(reference::BENDING[i] - 1) += N(i) * p.weight * two_area * q(2);
  }
  return f;
}

column to_global(const engine_call& call, const column& local) {
  return reference::eighteen(call.axes).transpose() * local;
}

void clear_rotations(column& f) {
  for (int n = 0; n < 3; ++n) f.segment(6 * n + 3, 3).setZero();
}

vector3 three_of(const ELEM_LOADS& LOADS, int first) { return {LOADS(first), LOADS(first + 1), LOADS(first + 2)}; }

void set_three(ELEM_LOADS& LOADS, int first, const std::vector<double>& v) {
  for (int i = 0; i < 3; ++i) LOADS(first + i) = v[static_cast<std::size_t>(i)];
}

}  // namespace

TEST(SurfaceLoad, AreTheIntegralsForEveryKindAndSection) {
  seeded_random random(141);
  for (const element_case& c : element_cases()) {
    for (int trial = 0; trial < 4; ++trial) {
      engine_call call(random_element(random, c));
      set_three(call.LOADS, 5, random.vector(3, 10.0));
      set_three(call.LOADS, 10, random.vector(3, 1.0));
      set_three(call.LOADS, 13, random.vector(3, 1.0));
      call.run(4);
      const vector3 global = three_of(call.LOADS, 5) * call.section.thickness + three_of(call.LOADS, 10);
      const vector3 q = call.axes * global + three_of(call.LOADS, 13);
      column expected = to_global(call, surface_loads(call, q));
      if (c.formulation == 2) clear_rotations(expected);
      EXPECT_CLOSE(call.force_values(), listed(expected), reference::largest(expected), 32) << c.name;
      EXPECT_EQ(call.F.changed(), support::range(1, 18)) << c.name;
    }
  }
}

TEST(SurfaceLoad, EachPartByItself) {
  // An element whose axes are local x = global y, y = global z, z = global x; area 6, thickness 0.1.
  support::plate_description d;
  d.nodes = {{1.0, 2.0, 3.0}, {1.0, 5.0, 3.0}, {1.0, 2.0, 7.0}};
  d.thickness = 0.1;
  struct part {
    int place;
    double value;
    int direction;  // global
    double total;
  };
  for (const part& p : {part{5, 10.0, 0, 6.0}, part{6, 10.0, 1, 6.0}, part{7, 10.0, 2, 6.0},        // body, global
                        part{10, 2.0, 0, 12.0}, part{11, 2.0, 1, 12.0}, part{12, 2.0, 2, 12.0},     // surface, global
                        part{13, 2.0, 1, 12.0}, part{14, 2.0, 2, 12.0}, part{15, 2.0, 0, 12.0}}) {  // surface, local
    engine_call call(d);
    call.LOADS(p.place) = p.value;
    call.run(4);
    const std::vector<double> f = call.force_values();
    for (int i = 0; i < 3; ++i) {
      const std::size_t at = static_cast<std::size_t>(i);
      EXPECT_CLOSE(f[at] + f[6 + at] + f[12 + at], i == p.direction ? p.total : 0.0, p.total, 16) << p.place;
    }
  }
}

TEST(SurfaceLoad, NormalPressureAddsUpToTheAreaTimesThePressure) {
  seeded_random random(142);
  for (const element_case& c : element_cases()) {
    engine_call call(random_element(random, c, plane_triangle(5.0, 2.0, 3.0)));
    call.LOADS(15) = 4.0;
    call.run(4);
    const std::vector<double> f = call.force_values();
    EXPECT_CLOSE(f[2] + f[8] + f[14], 30.0, 30.0, 16) << c.name;
  }
}

TEST(SurfaceLoad, HasTheMomentOfItsResultantAtTheCentroid) {
  seeded_random random(143);
  for (const element_case& c : element_cases()) {
    if (c.formulation != 1) continue;  // the membrane kind drops the moments
    engine_call call(random_element(random, c));
    const std::vector<double> load = random.vector(3, 1.0);
    set_three(call.LOADS, 10, load);
    call.run(4);
    const column f = column_of(call.force_values());
    vector3 force = vector3::Zero(), moment = vector3::Zero(), centre = vector3::Zero();
    for (int n = 0; n < 3; ++n) {
      const support::point& p = call.element.nodes[static_cast<std::size_t>(n)];
      const vector3 at(p[0], p[1], p[2]);
      force += f.segment(6 * n, 3);
      moment += at.cross(f.segment(6 * n, 3).head(3)) + f.segment(6 * n + 3, 3);
      centre += at / 3.0L;
    }
    const vector3 total = vector3(load[0], load[1], load[2]) * reference::twice_area(call.X) / 2.0L;
    EXPECT_CLOSE(listed(force), listed(total), 1.0, 32) << c.name;
    EXPECT_CLOSE(listed(moment), listed(centre.cross(total)), 5.0, 64) << c.name;
  }
}

TEST(SurfaceLoad, MembraneKindKeepsTheDeflectionsAndDropsTheRotations) {
  seeded_random random(144);
  const std::vector<support::point> nodes = support::random_triangle(random);
  support::plate_description d = random_element(random, element_cases().front(), nodes);
  engine_call shell(d);
  shell.LOADS(15) = 3.0;
  shell.run(4);
  d.formulation = 2;
  engine_call membrane(d);
  membrane.LOADS(15) = 3.0;
  membrane.run(4);
  for (int n = 0; n < 3; ++n) {
    for (int i = 1; i <= 3; ++i) {
      EXPECT_EQ(membrane.F(6 * n + i), shell.F(6 * n + i));
      EXPECT_EQ(membrane.F(6 * n + 3 + i), 0.0);
    }
  }
  EXPECT_GT(std::fabs(shell.F(4)) + std::fabs(shell.F(5)) + std::fabs(shell.F(6)), 0.0);
}

TEST(SurfaceLoad, LumpedModeGivesAThirdInGlobalAxes) {
  seeded_random random(145);
  for (const element_case& c : {element_cases()[0], element_cases()[1]}) {
    engine_call call(random_element(random, c));
    call.run(6);
    const prepared_triangle t(call.element.nodes);
    PLATEELEM.THICKNESS = call.element.thickness;
    set_three(call.LOADS, 5, random.vector(3, 10.0));
    set_three(call.LOADS, 10, random.vector(3, 1.0));
    set_three(call.LOADS, 13, random.vector(3, 1.0));
    const vector3 q = three_of(call.LOADS, 5) * call.section.thickness + three_of(call.LOADS, 10) +
                      call.axes.transpose() * three_of(call.LOADS, 13);
    column expected = column::Zero(18);
    for (int n = 0; n < 3; ++n) expected.segment(6 * n, 3) = q * reference::twice_area(call.X) / 6.0L;
    std::vector<double> iso(18, 0.0), general(18, 0.0);
    TRI_LOADS_ISO(PLATEELEM, TRI, call.LOADS, TRI_RULE_COUNT, TRI_RULE_FOUR, iso.data(), 1, 0);
    TRI_LOADS_GENERAL(PLATEELEM, TRI, call.LOADS, TRI_RULE_COUNT, general.data(), 1, 0);
    EXPECT_CLOSE(iso, listed(expected), reference::largest(expected), 32);
    EXPECT_CLOSE(general, listed(expected), reference::largest(expected), 32);
  }
}

TEST(SurfaceLoad, IsAddedToWhatTheCallerHas) {
  const prepared_triangle t(plane_triangle(5.0, 2.0, 3.0));
  PLATEELEM.THICKNESS = 1.0;
  ELEM_LOADS LOADS{};
  LOADS(12) = 2.0;
  std::vector<double> iso(18, 100.0), general(18, 100.0), alone(18, 0.0);
  TRI_LOADS_ISO(PLATEELEM, TRI, LOADS, TRI_RULE_COUNT, TRI_RULE_FOUR, alone.data(), 3, 0);
  TRI_LOADS_ISO(PLATEELEM, TRI, LOADS, TRI_RULE_COUNT, TRI_RULE_FOUR, iso.data(), 3, 0);
  TRI_LOADS_GENERAL(PLATEELEM, TRI, LOADS, TRI_RULE_COUNT, general.data(), 3, 0);
  for (double& value : alone) value += 100.0;
  EXPECT_CLOSE(iso, alone, 100.0, 8);
  EXPECT_CLOSE(general, alone, 100.0, 8);
}
