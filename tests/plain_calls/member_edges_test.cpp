// Members at the edges of what they take: directions, released ends, numbers at the end of an argument.
#include <cmath>
#include <limits>
#include <vector>

#include "comparison.h"
#include "finites/elements.h"
#include "gtest/gtest.h"
#include "member_cases.h"

namespace {

using plain_members::measures_of;
using plain_members::plain_beam;
using plain_members::random_beam;
using support::seeded_random;
using numbers = std::vector<double>;

constexpr double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();
constexpr double L = 4.0;

finites_beam upright() {
  finites_beam b = plain_beam(L);
  b.xyz[1][0] = b.xyz[0][0];
  b.xyz[1][2] = b.xyz[0][2] + L;
  return b;
}

finites_link some_link(double length) {
  finites_link link{};
  finites_link_init(&link);
  link.xyz[1][0] = length;
  for (int i = 0; i < 6; ++i) link.k[i] = 1.0 + i;
  return link;
}

finites_status sections_status(const finites_beam& b, const numbers& u, const finites_beam_load& load) {
  const double x = 1.0;
  finites_beam_section s;
  return finites_beam_sections(&b, u.data(), &load, 1, &x, &s);
}

}  // namespace

// ------------------------------------------------------------------------------------------------ directions

// A direction of one's own is taken by its word, the global z too.
TEST(MemberEdges, UpAlongAnUprightMember) {
  finites_beam b = upright();
  b.up[0] = b.up[1] = 0.0;
  b.up[2] = 1.0;
  numbers K(144);
  EXPECT_EQ(finites_beam_stiffness(&b, K.data()), FINITES_ORIENTATION);
  b.up[2] = 0.0;
  EXPECT_EQ(finites_beam_stiffness(&b, K.data()), FINITES_OK);
}

TEST(MemberEdges, UpSlightlyOffTheMember) {
  finites_beam b = plain_beam(L);
  b.up[0] = 1.0;
  b.up[1] = 1e-4;
  b.up[2] = 0.0;
  const finites_member_measures m = measures_of(b);
  EXPECT_NEAR(m.axes[1][1], 1.0, 1e-12);
  EXPECT_NEAR(m.axes[2][2], 1.0, 1e-12);
}

// Ends that differ in the last digits of their coordinates alone.
TEST(MemberEdges, EndsThatDifferByRounding) {
  finites_truss t{};
  finites_truss_init(&t);
  t.E = t.area = 1.0;
  t.xyz[0][0] = 1.0;
  t.xyz[1][0] = 1.0 + 4e-15;
  numbers K(36);
  EXPECT_EQ(finites_truss_stiffness(&t, K.data()), FINITES_COINCIDENT);
}

// ------------------------------------------------------------------------------------------------ released ends

// What is released carries nothing, to the last bit.
TEST(MemberEdges, ReleasedEndsCarryZeros) {
  seeded_random random(91);
  for (int trial = 0; trial < 100; ++trial) {
    finites_beam b = plain_beam(random.uniform(1.0, 9.0));
    b.up[1] = 1.0;
    b.fixity_z[0] = b.fixity_y[1] = 0.0;
    b.fixity_z[1] = random.uniform(0.3, 1.0);
    b.fixity_y[0] = random.uniform(0.3, 1.0);
    finites_beam_load load{};
    for (double& q : load.line) q = random.uniform(-3.0, 3.0);
    numbers F(12);
    ASSERT_EQ(finites_beam_loads(&b, &load, F.data()), FINITES_OK);
    EXPECT_EQ(F[5], 0.0);
    EXPECT_EQ(F[10], 0.0);
    b.fixity_z[0] = b.fixity_y[1] = 1.0;
    b.release_y = 2;
    b.release_axial = 2;
    ASSERT_EQ(finites_beam_loads(&b, &load, F.data()), FINITES_OK);
    EXPECT_EQ(F[6], 0.0);
    EXPECT_EQ(F[7], 0.0);
  }
}

// Inside its surfaces a beam with hinges is the beam, at whichever end it is released.
TEST(MemberEdges, AHingedBeamWithReleasesIsTheBeam) {
  seeded_random random(92);
  for (int code = 0; code <= 2; ++code) {
    for (int which = 0; which < 4; ++which) {
      finites_beam b = random_beam(random);
      b.release_axial = which == 0 ? code : 0;
      b.release_y = which == 1 ? code : 0;
      b.release_z = which == 2 ? code : 0;
      b.release_torsion = which == 3 ? code : 0;
      const finites_yield yield{FINITES_ORBISON, 7, {1e9, 1e9, 1e9}};
      finites_beam_state* state = nullptr;
      ASSERT_EQ(finites_beam_state_create(&b, &yield, 3, &state), FINITES_OK);
      numbers u(12), F(12), wanted(12);
      for (double& x : u) x = random.uniform(-1e-6, 1e-6);
      ASSERT_EQ(finites_beam_state_try(state, u.data(), F.data(), nullptr), FINITES_OK);
      ASSERT_EQ(finites_beam_forces(&b, u.data(), wanted.data()), FINITES_OK);
      double scale = 0.0;
      for (const double f : wanted) scale = std::fmax(scale, std::fabs(f));
      EXPECT_CLOSE(F, wanted, scale, 1e6);
      finites_beam_state_free(state);
    }
  }
}

// Barely beyond the surface of an axial hinge the force is its capacity.
TEST(MemberEdges, BarelyBeyondTheSurface) {
  const finites_beam b = plain_beam(L);
  const double capacity = 3.0;
  const finites_yield yield{FINITES_SINGLE, 1, {capacity, 1.0, 1.0}};
  finites_beam_state* state = nullptr;
  ASSERT_EQ(finites_beam_state_create(&b, &yield, 3, &state), FINITES_OK);
  numbers u(12), F(12);
  u[6] = capacity * L / (b.E * b.area) * (1.0 + 5e-5);
  ASSERT_EQ(finites_beam_state_try(state, u.data(), F.data(), nullptr), FINITES_OK);
  EXPECT_NEAR(F[6], capacity, 1e-10 * capacity);
  finites_beam_state_free(state);
}

// ------------------------------------------------------------------------------------------------ other members

// A bar under compression softens across by its force over its length.
TEST(MemberEdges, ATrussUnderCompression) {
  finites_truss t{};
  finites_truss_init(&t);
  t.E = 10.0;
  t.area = 2.0;
  t.xyz[1][0] = L;
  t.pretension = -3.0;
  numbers K(36);
  ASSERT_EQ(finites_truss_stiffness(&t, K.data()), FINITES_OK);
  EXPECT_DOUBLE_EQ(K[7], -3.0 / L);
  EXPECT_DOUBLE_EQ(K[14], -3.0 / L);
  EXPECT_DOUBLE_EQ(K[6 * 1 + 4], 3.0 / L);
}

// Without length a spring at the middle stands at the ends.
TEST(MemberEdges, ALinkWithoutLength) {
  finites_link link = some_link(0.0);
  numbers middle(144), ends(144);
  ASSERT_EQ(finites_link_stiffness(&link, middle.data()), FINITES_OK);
  link.at_ends = 1;
  ASSERT_EQ(finites_link_stiffness(&link, ends.data()), FINITES_OK);
  for (std::size_t i = 0; i < 144; ++i) EXPECT_EQ(middle[i], ends[i]) << i;
}

// Every value of an argument is looked at, the last one too.
TEST(MemberEdges, TheLastNumberCounts) {
  numbers K(144);
  finites_link link = some_link(1.0);
  link.k[5] = -1.0;
  EXPECT_EQ(finites_link_stiffness(&link, K.data()), FINITES_STIFFNESS);

  finites_spring spring{};
  finites_spring_init(&spring);
  spring.axes[2][2] = 0.5;
  EXPECT_EQ(finites_spring_stiffness(&spring, K.data()), FINITES_ORIENTATION);

  const finites_beam b = plain_beam(L);
  numbers u(12, 0.0);
  finites_beam_load load{};
  load.gradient_z = NOT_A_NUMBER;
  EXPECT_EQ(sections_status(b, u, load), FINITES_NAN);
  load.gradient_z = 0.0;
  u[11] = NOT_A_NUMBER;
  EXPECT_EQ(sections_status(b, u, load), FINITES_NAN);
}

// A bar that is released slides by q L^2 / (2 E A): beyond the range of a double, with forces that are not.
TEST(MemberEdges, DisplacementsBeyondTheRange) {
  finites_beam b = plain_beam(L);
  b.E = 1e-300;
  b.release_axial = 1;
  finites_beam_load load{};
  load.line[0] = 1e30;
  EXPECT_EQ(sections_status(b, numbers(12, 0.0), load), FINITES_RESULT);
}
