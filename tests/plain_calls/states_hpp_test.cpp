// states_hpp_test.cpp: plates that yield and beams with hinges through the C++ layer: who owns what.
#include <array>
#include <cmath>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

#include "elements_hpp.h"

using namespace hpp_test;

namespace {

TEST(StatesHpp, PlateState) {
  const finites::plate plate = rectangle();
  finites_plastic plastic{FINITES_LAYERED, 5, 235e6, 0};
  finites::plate_state state(plate, plastic);
  ASSERT_TRUE(state);
  const auto elastic = stretched(1e-4), plastic_u = stretched(5e-3);
  // Below yield it is the elastic plate.
  const auto [F, K] = state.try_(elastic);
  const auto by_plate = plate.forces(elastic);
  for (int i = 0; i < 24; ++i) EXPECT_NEAR(F[i], by_plate[i], 1e-6 * by_plate[6]);
  EXPECT_EQ(K.rows(), 24);
  // A trial leaves no trace; a copy is a state of its own.
  (void)state.try_(plastic_u);
  EXPECT_EQ(state.forces().F[6], 0);
  finites::plate_state copy(state);
  copy.commit(plastic_u);
  copy.accept();
  EXPECT_EQ(state.forces().F[6], 0);
  EXPECT_GT(copy.forces().F[6], 0);
  EXPECT_GT(copy.result().point[0].middle.plastic_strain[0], 0);
  state = copy;
  EXPECT_EQ(state.forces().F[6], copy.forces().F[6]);
  const finites::plate_state moved(std::move(copy));
  EXPECT_EQ(moved.forces().F[6], state.forces().F[6]);
  EXPECT_EQ(failure_of([&] { (void)copy.forces(); }).status(), FINITES_NULL);  // NOLINT(bugprone-use-after-move)
}

TEST(StatesHpp, StateThatCannotBe) {
  finites::plate plate = rectangle();
  plate.theory = FINITES_MEMBRANE;
  finites_status status = FINITES_OK;
  const finites::plate_state none(plate, {FINITES_WHOLE_SECTION, 0, 235e6, 0}, status);
  EXPECT_FALSE(none);
  EXPECT_EQ(status, FINITES_STATE);
  EXPECT_THROW(finites::plate_state(rectangle(), {FINITES_LAYERED, 4, 235e6, 0}), finites::error);
}

// The trial forces are 1e19 times those of first yield: no multiplier in double precision brings them back.
TEST(StatesHpp, AReturnThatFailsLeavesTheState) {
  finites::plate_state state(rectangle(), {FINITES_WHOLE_SECTION, 0, 235e6, 0});
  state.commit(stretched(5e-3));
  const double force = state.forces().F[6];
  const auto too_far = stretched(1e16);
  EXPECT_EQ(failure_of([&] { (void)state.try_(too_far); }).status(), FINITES_RETURN);
  EXPECT_EQ(failure_of([&] { state.commit(too_far); }).status(), FINITES_RETURN);
  finites_status status = FINITES_OK;
  EXPECT_FALSE(state.commit(too_far, status));
  EXPECT_EQ(status, FINITES_RETURN);
  EXPECT_EQ(state.forces().F[6], force);
  // Half of the width at each node, whose stress is above fy, since less contraction than plastic flow wants leaves
  // tension across, and below 2 fy / sqrt(3), the largest stress of von Mises in a plane.
  EXPECT_GT(force, 235e6 * h * b / 2);
  EXPECT_LT(force, 235e6 * h * b / 2 * 2 / std::sqrt(3.0));
}

TEST(StatesHpp, BeamState) {
  const finites::beam beam = cantilever();
  const finites::yield yield(FINITES_ORBISON, 7, {2e6, 3e4, 8e4});
  finites::beam_state state(beam, yield);
  std::array<double, 12> u{};
  u[8] = 1e-3;
  const auto F = state.try_(u).F;
  EXPECT_NEAR(F[8], 12 * young * beam.Iz / 64 * 1e-3, 1e-6 * F[8]);
  state.commit(u);
  state.accept();
  const auto hinges = state.hinges();
  EXPECT_EQ(hinges[0].yields, 0);
  EXPECT_NEAR(std::abs(hinges[0].force[2]), std::abs(F[4]), 1e-9 * std::abs(F[4]));
}

}  // namespace
