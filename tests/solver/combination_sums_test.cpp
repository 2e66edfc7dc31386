// combination_sums_test.cpp: every load of a combination is the sum of those of its terms by their factors.
#include <gtest/gtest.h>

#include "analyses/combination.h"

namespace {

using solver::static_solution;

// Numbers that differ from place to place, times `size`.
static_solution numbered_by(double size) {
  static_solution s;
  s.displacement = {1 * size, 2 * size};
  s.load = {3 * size, 4 * size};
  s.reaction = {5 * size, 6 * size};
  s.constraint = {7 * size, 8 * size};
  s.multiplier = {26 * size};
  s.residual = 1e-12 * size;
  s.loads.prescribed_value = {9 * size, 10 * size};
  s.loads.nodal_load = {11 * size, 12 * size};
  solver::distributed_load load;
  load.pressure = 13 * size;
  load.body = {14 * size, 15 * size, 16 * size};
  load.line = {17 * size, 18 * size, 19 * size};
  load.line_rise = {20 * size, 21 * size, 22 * size};
  load.temperature_change = 23 * size;
  load.temperature_difference = 24 * size;
  s.loads.element = {load};
  solver::linear_constraint condition;
  condition.value = 25 * size;
  s.loads.conditions = {condition};
  return s;
}

}  // namespace

// 1.5 times size 1 and -0.5 times size 10: -3.5 times each number.
TEST(CombinationSums, EveryLoadHasItsFactor) {
  const static_solution a = numbered_by(1), b = numbered_by(10);
  const static_solution sum = solver::combine({{&a, 1.5}, {&b, -0.5}});
  const auto expect = [](double value, double number) { EXPECT_DOUBLE_EQ(value, -3.5 * number); };
  for (std::size_t i = 0; i < 2; ++i) {
    const auto k = static_cast<double>(i);
    expect(sum.displacement[i], 1 + k);
    expect(sum.load[i], 3 + k);
    expect(sum.reaction[i], 5 + k);
    expect(sum.constraint[i], 7 + k);
    expect(sum.loads.prescribed_value[i], 9 + k);
    expect(sum.loads.nodal_load[i], 11 + k);
  }
  const solver::distributed_load& load = sum.loads.element[0];
  expect(load.pressure, 13);
  for (std::size_t i = 0; i < 3; ++i) {
    const auto k = static_cast<double>(i);
    expect(load.body[i], 14 + k);
    expect(load.line[i], 17 + k);
    expect(load.line_rise[i], 20 + k);
  }
  expect(load.temperature_change, 23);
  expect(load.temperature_difference, 24);
  expect(sum.loads.conditions[0].value, 25);
  expect(sum.multiplier[0], 26);
  EXPECT_DOUBLE_EQ(sum.residual, 1e-11);  // the larger one
}
