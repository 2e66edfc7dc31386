// point_operations_test.cpp: point forces and point location of every kind.
#include <cmath>

#include "comparison.h"
#include "element_call.h"
#include "element_subject.h"

using shell_reference::column;
using shell_reference::largest;
using shell_reference::listed;
using shell_reference::real;
using shell_reference::vector2;
using shell_reference::vector3;
using support::point;
using support::seeded_random;

namespace {

// A natural point inside, or somewhat outside where the bilinear map can still be inverted.
shell_reference::station natural_point(seeded_random& random, int nodes) {
  if (nodes == 4) return {random.uniform(-1.2, 1.2), random.uniform(-1.2, 1.2), 0.0};
  return {random.uniform(-0.5, 1.5), random.uniform(-0.5, 1.0), 0.0};
}

}  // namespace

TEST(PointLoad, IsTheReferenceInsideAndOutside) {
  seeded_random random(361);
  for (const element_subject& s : subjects()) {
    for (int trial = 0; trial < 6; ++trial) {
      element_call call(random_element(random, s));
      const shell_reference::station at = natural_point(random, s.nodes);
      const vector2 p = shell_reference::position(call.reference.X, at.xi, at.eta);
      const std::vector<double> g = random.vector(3, 1.0), l = random.vector(3, 1.0);
      call.set(LOAD_POINT, call.reference.in_space(p(0), p(1), random.uniform(-0.1, 0.1)));
      call.set(LOAD_FORCE, {g[0], g[1], g[2]});
      call.set(LOAD_FORCE_LOCAL, {l[0], l[1], l[2]});
      call.run(10);
      const vector3 F = call.reference.axes * vector3(g[0], g[1], g[2]) + vector3(l[0], l[1], l[2]);
      column expected = call.reference.to_global(call.reference.point_load(F, at.xi, at.eta));
      if (s.membrane_only()) {
        for (int n = 0; n < s.nodes; ++n) expected.segment(6 * n + 3, 3).setZero();
      }
      // Newton stops at residuals of 1e-10; two more digits come from its last step.
      EXPECT_WITHIN(call.force_values(), listed(expected), 10.0, s.nodes == 3 ? 1e-13 : 1e-10) << s.name;
      EXPECT_EQ(call.F.changed(), support::range(1, call.order())) << s.name;
    }
  }
}

TEST(PointLoad, AtANodeGoesWholeToThatNode) {
  seeded_random random(362);
  for (const element_subject& s : subjects()) {
    for (int n = 0; n < s.nodes; ++n) {
      element_call call(random_element(random, s));
      const point F = {3.0, -2.0, 5.0};
      call.set(LOAD_POINT, call.element.nodes[static_cast<std::size_t>(n)]);
      call.set(LOAD_FORCE, F);
      call.run(10);
      std::vector<double> expected(static_cast<std::size_t>(call.order()), 0.0);
      for (std::size_t i = 0; i < 3; ++i) expected[static_cast<std::size_t>(6 * n) + i] = F[i];
      EXPECT_WITHIN(call.force_values(), expected, 5.0, 1e-9) << s.name << " node " << n + 1;
    }
  }
}

TEST(PointLoad, HasTheForceAndTheMomentOfThePoint) {
  // A point outside too. The membrane kinds drop the moments of nodes.
  seeded_random random(363);
  for (const element_subject& s : subjects()) {
    for (const double x : {0.05, -0.2}) {
      element_call call(random_element(random, s));
      const point P = call.reference.in_space(x, 0.1, 0.0);
      call.set(LOAD_POINT, P);
      call.set(LOAD_FORCE, {1.0, -2.0, 0.5});
      call.run(10);
      const column f = shell_reference::column_of(call.force_values());
      vector3 force = vector3::Zero(), moment = vector3::Zero();
      for (int n = 0; n < s.nodes; ++n) {
        const vector3 F = f.segment(6 * n, 3);
        force += F;
        moment +=
            shell_reference::wide(call.element.nodes[static_cast<std::size_t>(n)]).cross(F) + f.segment(6 * n + 3, 3);
      }
      const vector3 F(1.0L, -2.0L, 0.5L);
      EXPECT_CLOSE(listed(force), listed(F), 4.0, 64) << s.name;
      // Newton's last step leaves a residual of 1e-10 at the most.
      if (!s.membrane_only()) {
        EXPECT_WITHIN(listed(moment), listed(shell_reference::wide(P).cross(F)), 8.0, s.nodes == 3 ? 1e-13 : 1e-10)
            << s.name;
      }
    }
  }
}

TEST(PointLocation, InSpaceForEveryKind) {
  seeded_random random(364);
  for (const element_subject& s : subjects()) {
    if (!s.isotropic()) continue;
    for (int trial = 0; trial < 50; ++trial) {
      element_call call(random_element(random, s));
      const shell_reference::station at = natural_point(random, s.nodes);
      const vector2 p = shell_reference::position(call.reference.X, at.xi, at.eta);
      const double z = random.uniform(-0.2, 0.2);
      call.set(LOAD_POINT, call.reference.in_space(p(0), p(1), z));
      call.run(9);
      const column N = shell_reference::functions(s.nodes, at.xi, at.eta);
      const bool inside = N.minCoeff() > 0.02L, outside = N.minCoeff() < -0.02L;
      if (inside || outside) {
        EXPECT_EQ(call.point_flag1, outside ? 1 : 0) << s.name;
      }
      EXPECT_CLOSE(call.distance, z, 3.0, 64) << s.name;
      double longest = 0.0;
      for (int k = 0; k < s.nodes; ++k) {
        longest = std::max(longest, static_cast<double>(shell_reference::side(call.reference.X, k).norm()));
      }
      EXPECT_EQ(call.point_flag2, z / longest <= 0.05 ? 0 : 1) << s.name << " " << z / longest;
      EXPECT_TRUE(call.F.changed().empty() && call.matrix.changed().empty()) << s.name;
    }
  }
}

TEST(PointLocation, APointAtALimitIsNotBeyondIt) {
  // A twentieth of the longest side above the plane is near yet, a thousandth beside a side is inside yet: exactly, and
  // not one step of the numbers further. The shapes keep both distances free of rounding.
  support::plate_description d;
  for (const int formulation : {0, 1, 2}) {
    d.formulation = formulation;
    const auto flags_at = [&d](const point& P) {
      element_call call(d);
      call.set(LOAD_POINT, P);
      call.run(9);
      return std::vector<int>{call.point_flag1, call.point_flag2};
    };
    d.nodes = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}};
    EXPECT_EQ(flags_at({0.5, 0.5, 0.05}), (std::vector<int>{0, 0})) << formulation;
    EXPECT_EQ(flags_at({0.5, 0.5, std::nextafter(0.05, 1.0)}), (std::vector<int>{0, 1})) << formulation;
    d.nodes = {{0, 0, 0}, {1, 0, 0}, {0.5, 0.5, 0}};
    EXPECT_EQ(flags_at({0.5, 0.25, 0.05}), (std::vector<int>{0, 0})) << formulation;
    EXPECT_EQ(flags_at({0.5, 0.25, std::nextafter(0.05, 1.0)}), (std::vector<int>{0, 1})) << formulation;
    EXPECT_EQ(flags_at({0.5, -0.001, 0.0}), (std::vector<int>{0, 0})) << formulation;
    EXPECT_EQ(flags_at({0.5, std::nextafter(-0.001, -1.0), 0.0}), (std::vector<int>{1, 0})) << formulation;
  }
}
