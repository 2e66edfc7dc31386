// Batches of elements at the very limits of their checks: the checks in lanes round otherwise than those of single
// calls, and may pass nothing that a single call refuses.
#include <cstdint>
#include <cstring>
#include <vector>

#include "batch_support.h"
#include "finites/elements.h"
#include "gtest/gtest.h"
#include "plain_calls/batch_stiffness.h"
#include "plate_subjects.h"
#include "random_shapes.h"
#include "solids_support.h"

namespace {

using batches::reals;
using support::point;

constexpr int COUNT = 17;

void turn(const support::rotation& R, double (&xyz)[3]) {
  const point p = support::rotate(R, point{xyz[0], xyz[1], xyz[2]});
  for (std::size_t i = 0; i < 3; ++i) xyz[i] = p[i];
}

struct answer {
  finites_status status;
  std::int64_t failed;
  reals K;
};

// What single calls say of one element after the other.
template <class ELEMENT, class CALL>
answer one_by_one(const std::vector<ELEMENT>& elements, std::size_t size, CALL call) {
  answer found{FINITES_OK, -1, reals(elements.size() * size, 3.5)};
  for (std::size_t e = 0; e < elements.size(); ++e) {
    found.status = call(&elements[e], &found.K[e * size]);
    if (found.status != FINITES_OK) return {found.status, static_cast<std::int64_t>(e), reals(found.K.size(), 3.5)};
  }
  return found;
}

int refused(const answer& single, const answer& batch, int trial) {
  EXPECT_EQ(batch.status, single.status) << "trial " << trial << ", element " << single.failed;
  EXPECT_EQ(batch.failed, single.failed) << "trial " << trial;
  EXPECT_EQ(std::memcmp(batch.K.data(), single.K.data(), single.K.size() * sizeof(double)), 0) << "trial " << trial;
  return single.status == FINITES_OK ? 0 : 1;
}

// A unit cube one of whose nodes has moved by a third of the diagonal: the edges there lie in a plane, and their
// determinant, 1 - 3 / 3, is what rounding leaves of it in the axes of the check.
finites_solid brick_with_a_flat_corner(support::seeded_random& random) {
  finites_solid brick = plain_solids::straight(8);
  const auto at = static_cast<std::size_t>(random.integer(0, 7));
  for (double& x : brick.xyz[at]) x += x > 0.5 ? -1.0 / 3.0 : 1.0 / 3.0;
  const support::rotation R = support::random_rotation(random);
  for (auto& node : brick.xyz) turn(R, node);
  return brick;
}

int bricks_refused(support::seeded_random& random, const LANE_KERNELS& kernels, int trial) {
  std::vector<finites_solid> bricks(COUNT, plain_solids::straight(8));
  for (int i = 0; i < 2; ++i)
    bricks[static_cast<std::size_t>(random.integer(1, COUNT - 1))] = brick_with_a_flat_corner(random);
  finites_solids all{};
  all.common = bricks[0];
  all.count = COUNT;
  all.xyz = {&bricks[0].xyz[0][0], sizeof(finites_solid) / sizeof(double)};
  const answer single = one_by_one(bricks, 576, finites_solid_stiffness);
  answer batch{FINITES_OK, -7, reals(COUNT * 576, 3.5)};
  batch.status = stiffness_of_solids(&all, {0, COUNT, &batch.failed}, batch.K.data(), 576, kernels);
  return refused(single, batch, trial);
}

// A square whose node 3 has moved towards the diagonal from node 2 to node 4, or a triangle whose node 3 has moved
// towards node 2, as far as a check refuses it or nearly so.
finites_plate plate_at_its_limit(support::seeded_random& random, int nodes) {
  finites_plate plate = subjects::rectangle(nodes, FINITES_THICK, 1.0, 1.0);
  const double left = random.log_uniform(1e-14, 1e-9);
  if (nodes == 4) {
    for (int i = 0; i < 2; ++i) plate.xyz[2][i] = 0.5 + left;
  } else {
    plate.xyz[2][0] = plate.xyz[1][0];
    plate.xyz[2][1] = plate.xyz[1][1] + left;
  }
  const support::rotation R = support::random_rotation(random);
  for (auto& node : plate.xyz) turn(R, node);
  return plate;
}

int plates_refused(support::seeded_random& random, int nodes, const LANE_KERNELS& kernels, int trial) {
  std::vector<finites_plate> plates(COUNT, subjects::rectangle(nodes, FINITES_THICK, 1.0, 1.0));
  plates[static_cast<std::size_t>(random.integer(1, COUNT - 1))] = plate_at_its_limit(random, nodes);
  finites_plates all{};
  all.common = plates[0];
  all.count = COUNT;
  all.xyz = {&plates[0].xyz[0][0], sizeof(finites_plate) / sizeof(double)};
  const auto size = static_cast<std::size_t>(36 * nodes * nodes);
  const answer single = one_by_one(plates, size, finites_plate_stiffness);
  answer batch{FINITES_OK, -7, reals(COUNT * size, 3.5)};
  batch.status =
      stiffness_of_plates(&all, {0, COUNT, &batch.failed}, batch.K.data(), static_cast<std::int64_t>(size), kernels);
  return refused(single, batch, trial);
}

// Some of the elements are refused and some are not, else the trials say nothing.
void expect_both(int refusals, int trials) {
  EXPECT_GT(refusals, trials / 20);
  EXPECT_LT(refusals, trials - trials / 20);
}

}  // namespace

TEST(BatchEdges, BricksWithAFlatCorner) {
  constexpr int TRIALS = 300;
  for (const LANE_KERNELS* const kernels : batches::widths()) {
    support::seeded_random random(20261123);
    int refusals = 0;
    for (int trial = 0; trial < TRIALS; ++trial) refusals += bricks_refused(random, *kernels, trial);
    expect_both(refusals, TRIALS);
  }
}

TEST(BatchEdges, PlatesWithAFlatCornerOrAShortSide) {
  constexpr int TRIALS = 300;
  for (const LANE_KERNELS* const kernels : batches::widths()) {
    for (const int nodes : {3, 4}) {
      support::seeded_random random(20261124);
      int refusals = 0;
      for (int trial = 0; trial < TRIALS; ++trial) refusals += plates_refused(random, nodes, *kernels, trial);
      expect_both(refusals, TRIALS);
    }
  }
}
