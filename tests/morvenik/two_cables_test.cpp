// two_cables_test.cpp: two cables that meet at a loaded joint (O'Brien and Francis 1964): the joint's equilibrium by
// Newton's method with the tangents.
#include <gtest/gtest.h>

#include <cmath>

#include "cable_case.h"

namespace {

constexpr int JOINT_STEPS = 60;

struct joint_system {
  cable_case left, right;
};

// Feet and pounds. The joint moves as node 2 of the left cable and node 1 of the right one.
joint_system make_system() {
  joint_system s;
  s.left.area = s.right.area = 0.85;
  s.left.E = s.right.E = 19e6;
  s.left.w = s.right.w = {0.0, -3.16, 0.0};
  s.left.L0 = 412.8837;
  s.right.L0 = 613.0422;
  s.right.X2 = {1000.0, 0.0, 0.0};
  return s;
}

struct joint_state {
  double x, y;
  bool found;
};

// Balance of the joint under a load downward: the nodes' forces on the two cables add up to the load.
joint_state settle(joint_system s, double load, double x, double y) {
  for (int i = 0; i < JOINT_STEPS; ++i) {
    s.left.X2 = s.right.X1 = {x, y, 0.0};
    const cable_forces a = solve(s.left);
    const cable_forces b = solve(s.right);
    matrix6 KA;
    matrix6 KB;
    if (a.status + b.status != 0 || tangent(s.left, a, KA) + tangent(s.right, b, KB) != 0) break;
    const double rx = -(a.F[3] + b.F[0]);
    const double ry = -load - (a.F[4] + b.F[1]);
    const double kxx = entry(KA, 4, 4) + entry(KB, 1, 1);
    const double kxy = entry(KA, 4, 5) + entry(KB, 1, 2);
    const double kyy = entry(KA, 5, 5) + entry(KB, 2, 2);
    const double det = kxx * kyy - kxy * kxy;
    const double dx = (kyy * rx - kxy * ry) / det;
    const double dy = (kxx * ry - kxy * rx) / det;
    // A step is at most a tenth of the longer cable: far from balance the tangent of a slack cable promises too much.
    const double limit = std::min(1.0, 60.0 / std::hypot(dx, dy));
    x += limit * dx;
    y += limit * dy;
    if (std::hypot(dx, dy) < 1e-9) return {x, y, true};
  }
  return {x, y, false};
}

}  // namespace

TEST(TwoCables, TheJointOfOBrienAndFrancis) {
  const joint_system s = make_system();
  const joint_state before = settle(s, 0.0, 400.0, -30.0);
  const joint_state after = settle(s, 8000.0, before.x, before.y);
  ASSERT_TRUE(before.found);
  ASSERT_TRUE(after.found);
  // The lengths are given to 1e-4, and so are the displacements.
  EXPECT_NEAR(after.x - before.x, -2.8194, 1e-4);
  EXPECT_NEAR(after.y - before.y, -18.4567, 1e-4);
  EXPECT_NEAR(before.x, 400.0, 1e-3);
}

// Two halves of a cable without a load between them are the whole cable.
TEST(TwoCables, WithoutALoadTheyAreOne) {
  const joint_system s = make_system();
  cable_case whole = s.right;
  whole.L0 = s.left.L0 + s.right.L0;
  const joint_state joint = settle(s, 0.0, 380.0, -60.0);
  ASSERT_TRUE(joint.found);
  joint_system settled = s;
  settled.left.X2 = settled.right.X1 = {joint.x, joint.y, 0.0};
  const cable_forces one = solve(whole);
  EXPECT_NEAR(solve(settled.left).tension1, one.tension1, 1e-8 * one.tension1);
  EXPECT_NEAR(solve(settled.right).tension2, one.tension2, 1e-8 * one.tension2);
}
