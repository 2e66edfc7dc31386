// Stiffness of beams side by side in vector lanes: the bits of single calls for every width, and at the limits of the
// checks nothing that a single call refuses.
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <functional>
#include <limits>
#include <string>
#include <vector>

#include "batch_support.h"
#include "finites/elements.h"
#include "gtest/gtest.h"
#include "member_cases.h"
#include "plain_calls/batch_stiffness.h"

namespace {

using batches::reals;
using support::seeded_random;
using beams_in_a_row = std::vector<finites_beam>;

constexpr std::int64_t COUNT = 41, SIZE = 144, STRIDE = sizeof(finites_beam) / sizeof(double);

// The beams as a batch: what beams may have of their own is theirs, all else is that of the first.
finites_beams batch_of(const beams_in_a_row& beams) {
  const finites_beam& b = beams[0];
  finites_beams all{};
  all.common = b;
  all.count = static_cast<std::int64_t>(beams.size());
  all.xyz = {&b.xyz[0][0], STRIDE};
  all.E = {&b.E, STRIDE};
  all.G = {&b.G, STRIDE};
  all.density = {&b.density, STRIDE};
  all.area = {&b.area, STRIDE};
  all.Iz = {&b.Iz, STRIDE};
  all.Iy = {&b.Iy, STRIDE};
  all.J = {&b.J, STRIDE};
  return all;
}

enum class direction { USUAL, COMMON, OWN };

struct kind_of_beam {
  direction up;
  bool shear_y, shear_z, second_modulus;
  double fixity;  // of one end in one plane; the others are rigid
};

// Beams of a kind somewhere in space; where directions are the usual ones every third runs along z, up or down, exactly
// or nearly.
beams_in_a_row random_row(seeded_random& random, const kind_of_beam& kind) {
  beams_in_a_row beams;
  for (std::int64_t e = 0; e < COUNT; ++e) {
    finites_beam b = plain_members::random_beam(random);
    const finites_beam& first = beams.empty() ? b : beams.front();
    finites_beam own = first;
    std::memcpy(own.xyz, b.xyz, sizeof b.xyz);
    std::fill_n(&own.offset[0][0], 6, 0.0);
    own.release_axial = own.release_y = own.release_z = own.release_torsion = 0;
    own.E = b.E;
    own.G = b.G;
    own.density = random.uniform(0.0, 1.0);
    own.area = b.area;
    own.Iz = b.Iz;
    own.Iy = b.Iy;
    own.J = b.J;
    own.E2 = kind.second_modulus ? 2.5e5 : 0.0;
    own.shear_area_y = kind.shear_y ? 0.004 : 0.0;
    own.shear_area_z = kind.shear_z ? 0.006 : 0.0;
    own.fixity_z[0] = own.fixity_y[0] = own.fixity_z[1] = 1.0;
    own.fixity_y[1] = kind.fixity;
    for (int i = 0; i < 3; ++i) {
      if (kind.up == direction::USUAL) own.up[i] = 0.0;
      if (kind.up == direction::OWN || (kind.up == direction::COMMON && e == 0)) own.up[i] = random.uniform(-1.0, 1.0);
    }
    if (kind.up == direction::USUAL && e % 3 == 0) {
      const double aside = e % 2 == 0 ? 0.0 : random.log_uniform(1e-8, 1e-4);
      own.xyz[1][0] = own.xyz[0][0] + aside;
      own.xyz[1][1] = own.xyz[0][1] - 0.7 * aside;
      own.xyz[1][2] = own.xyz[0][2] + (e % 4 == 0 ? 2.0 : -2.0);
    }
    beams.push_back(own);
  }
  return beams;
}

finites_status single(const beams_in_a_row& beams, std::int64_t e, double* K) {
  return finites_beam_stiffness(&beams[static_cast<std::size_t>(e)], K);
}

struct answer {
  finites_status status;
  std::int64_t failed;
  reals K;
};

answer one_by_one(const beams_in_a_row& beams) {
  answer found{FINITES_OK, -1, reals(beams.size() * SIZE, 3.5)};
  const reals untouched = found.K;
  for (std::size_t e = 0; e < beams.size(); ++e) {
    found.status = finites_beam_stiffness(&beams[e], &found.K[e * SIZE]);
    if (found.status != FINITES_OK) return {found.status, static_cast<std::int64_t>(e), untouched};
  }
  return found;
}

// True where the batch is refused, as the single calls are.
bool refused(const beams_in_a_row& beams, bool own_direction, const LANE_KERNELS& kernels) {
  const answer expected = one_by_one(beams);
  finites_beams all = batch_of(beams);
  if (own_direction) all.up = {beams[0].up, STRIDE};
  answer found{FINITES_OK, -7, reals(beams.size() * SIZE, 3.5)};
  found.status = stiffness_of_beams(&all, {0, all.count, &found.failed}, found.K.data(), SIZE, kernels);
  EXPECT_EQ(found.status, expected.status);
  EXPECT_EQ(found.failed, expected.failed);
  EXPECT_EQ(std::memcmp(found.K.data(), expected.K.data(), found.K.size() * sizeof(double)), 0);
  return expected.status != FINITES_OK;
}

}  // namespace

TEST(BeamLanes, HaveTheBitsOfSingleCalls) {
  seeded_random random(20261201);
  for (const direction up : {direction::USUAL, direction::COMMON, direction::OWN}) {
    for (int k = 0; k < 12; ++k) {
      const kind_of_beam kind{up, k % 2 == 0, k % 3 == 0, k % 4 < 2, k < 4 ? 1.0 : k < 8 ? 0.0 : 0.4};
      beams_in_a_row beams = random_row(random, kind);
      if (up == direction::OWN && k > 5)
        std::fill_n(beams[static_cast<std::size_t>(2 * k)].up, 3, 0.0);  // the usual one
      finites_beams all = batch_of(beams);
      if (up == direction::OWN) all.up = {beams[0].up, STRIDE};
      for (const LANE_KERNELS* const kernels : batches::widths()) {
        batches::expect_single_answers(
            COUNT, SIZE,
            [&](std::int64_t begin, std::int64_t end, double* K, std::int64_t stride) {
              return stiffness_of_beams(&all, {begin, end, nullptr}, K, stride, *kernels);
            },
            [&](std::int64_t e, double* K) { return single(beams, e, K); },
            "kind " + std::to_string(k) + ", width " + std::to_string(kernels->width));
      }
    }
  }
}

// Such beams are written by the lanes themselves, not by the calls that stand in for them.
TEST(BeamLanes, TakeOrdinaryBeams) {
  seeded_random random(20261202);
  const beams_in_a_row beams = random_row(random, {direction::USUAL, true, false, false, 1.0});
  const finites_beam& b = beams[0];
  const BEAM_LANES lanes = {{&b.xyz[0][0], STRIDE},
                            {b.up, 0},
                            {&b.E, STRIDE},
                            {&b.G, STRIDE},
                            {&b.density, STRIDE},
                            {&b.area, STRIDE},
                            {&b.Iz, STRIDE},
                            {&b.Iy, STRIDE},
                            {&b.J, STRIDE},
                            &b,
                            true};
  for (const LANE_KERNELS* const kernels : batches::widths()) {
    reals K(SIZE * static_cast<std::size_t>(kernels->width)), expected(SIZE);
    EXPECT_TRUE(kernels->check_beam(lanes));
    ASSERT_TRUE(kernels->beam(lanes, {K.data(), SIZE, false}));
    for (int e = 0; e < kernels->width; ++e) {
      ASSERT_EQ(single(beams, e, expected.data()), FINITES_OK);
      EXPECT_EQ(std::memcmp(&K[SIZE * static_cast<std::size_t>(e)], expected.data(), SIZE * sizeof(double)), 0);
    }
  }
}

// What the lanes have no formulas for: an offset, a release, of all beams or of one.
TEST(BeamLanes, LeaveOffsetsAndReleasesToSingleCalls) {
  seeded_random random(20261203);
  const kind_of_beam kind{direction::USUAL, true, true, false, 1.0};
  for (int k = 0; k < 6; ++k) {
    beams_in_a_row beams = random_row(random, kind);
    for (finites_beam& b : beams) {
      std::int32_t* const codes[] = {&b.release_axial, &b.release_y, &b.release_z, &b.release_torsion};
      if (k < 4) *codes[k] = 1 + k % 2;
      if (k == 4) b.offset[1][2] = 0.25;
    }
    if (k == 5) beams[17].offset[0][1] = -0.5;
    finites_beams all = batch_of(beams);
    if (k == 5) all.offset = {&beams[0].offset[0][0], STRIDE};
    for (const LANE_KERNELS* const kernels : batches::widths()) {
      batches::expect_single_answers(
          COUNT, SIZE,
          [&](std::int64_t begin, std::int64_t end, double* K, std::int64_t stride) {
            return stiffness_of_beams(&all, {begin, end, nullptr}, K, stride, *kernels);
          },
          [&](std::int64_t e, double* K) { return single(beams, e, K); }, "variant " + std::to_string(k));
    }
  }
}

// Past the caches: more matrices than these hold.
TEST(BeamLanes, LargeBatchesHaveTheBitsOfSingleCalls) {
  constexpr std::int64_t MANY = 7500;
  static_assert(MANY * SIZE * 8 > STREAMED_BYTES);
  seeded_random random(20261204);
  beams_in_a_row beams;
  while (static_cast<std::int64_t>(beams.size()) < MANY) {
    const beams_in_a_row more = random_row(random, {direction::USUAL, true, true, true, 1.0});
    beams.insert(beams.end(), more.begin(), more.end());
  }
  for (const LANE_KERNELS* const kernels : batches::widths()) EXPECT_FALSE(refused(beams, false, *kernels));
}

// In an array of directions 0, 0, 0 is the usual one, of a single beam or of the first.
TEST(BeamLanes, AnArrayOfDirectionsMayHaveZeros) {
  seeded_random random(20261211);
  for (const std::size_t at : {std::size_t{0}, std::size_t{13}, std::size_t{COUNT - 1}}) {
    for (const double zero : {0.0, -0.0}) {
      beams_in_a_row beams = random_row(random, {direction::OWN, true, true, true, 0.4});
      std::fill_n(beams[at].up, 3, zero);
      for (const LANE_KERNELS* const kernels : batches::widths()) EXPECT_FALSE(refused(beams, true, *kernels));
    }
  }
}

// Zeros of either sign, of coordinates, offsets and directions, stay those of a single call.
TEST(BeamLanes, ZerosOfEitherSign) {
  seeded_random random(20261207);
  const auto zero = [&] { return random.integer(0, 1) == 0 ? 0.0 : -0.0; };
  for (int trial = 0; trial < 60; ++trial) {
    beams_in_a_row beams = random_row(random, {direction::OWN, true, false, true, 0.4});
    double offset[6], up[3];
    for (double& o : offset) o = zero();
    for (double& x : up) x = zero();
    if (trial % 2 == 0) up[trial % 3] = trial % 4 == 0 ? 1.0 : -1.0;
    for (finites_beam& b : beams) {
      for (int i = 0; i < 3; ++i) b.xyz[0][i] = zero(), b.xyz[1][i] = zero();
      const int along = trial % 2 == 0 ? (trial + random.integer(1, 2)) % 3 : random.integer(0, 2);
      b.xyz[random.integer(0, 1)][along] = 2.0;
      std::copy_n(offset, 6, &b.offset[0][0]);
      std::copy_n(up, 3, b.up);
    }
    for (const LANE_KERNELS* const kernels : batches::widths()) EXPECT_FALSE(refused(beams, false, *kernels));
  }
}

// The direction that all share runs along one of them.
TEST(BeamLanes, ADirectionOfAllMayRunAlongOne) {
  seeded_random random(20261208);
  for (const std::size_t at : {std::size_t{1}, std::size_t{13}, std::size_t{COUNT - 1}}) {
    beams_in_a_row beams = random_row(random, {direction::COMMON, true, true, false, 1.0});
    for (int i = 0; i < 3; ++i) beams[at].xyz[1][i] = beams[at].xyz[0][i] - 3.0 * beams[at].up[i];
    EXPECT_EQ(one_by_one(beams).status, FINITES_ORIENTATION);
    for (const LANE_KERNELS* const kernels : batches::widths()) EXPECT_TRUE(refused(beams, false, *kernels));
  }
}

// Squares of so short a direction lie below the normal numbers.
TEST(BeamLanes, AShortDirectionMayRunAlongItsBeam) {
  seeded_random random(20261209);
  for (const double sine : {0.0, 1e-7, 1e-3}) {
    beams_in_a_row beams = random_row(random, {direction::OWN, true, true, false, 1.0});
    finites_beam& b = beams[9];
    for (int i = 0; i < 3; ++i) b.xyz[0][i] = b.xyz[1][i] = b.up[i] = 0.0;
    b.xyz[1][0] = 1e6;
    b.up[0] = 1e-157;
    b.up[2] = 1e-157 * sine;
    EXPECT_EQ(one_by_one(beams).status, sine < 1e-6 ? FINITES_ORIENTATION : FINITES_OK);
    for (const LANE_KERNELS* const kernels : batches::widths()) EXPECT_EQ(refused(beams, true, *kernels), sine < 1e-6);
  }
}

TEST(BeamLanes, MatricesMayNotOverlap) {
  seeded_random random(20261210);
  const beams_in_a_row beams = random_row(random, {direction::USUAL, true, true, false, 1.0});
  const finites_beams all = batch_of(beams);
  reals K(COUNT * SIZE, 3.5);
  for (const LANE_KERNELS* const kernels : batches::widths()) {
    std::int64_t failed = -7;
    EXPECT_EQ(stiffness_of_beams(&all, {0, COUNT, &failed}, K.data(), SIZE - 1, *kernels), FINITES_RANGE);
    EXPECT_EQ(failed, -1);
  }
  for (const double k : K) ASSERT_EQ(k, 3.5);
}

// A direction that nearly runs along its beam, or ends that nearly coincide: refused where the single call refuses it.
TEST(BeamLanes, AtTheLimitsOfTheChecks) {
  constexpr int TRIALS = 400;
  for (const LANE_KERNELS* const kernels : batches::widths()) {
    seeded_random random(20261205);
    int refusals = 0;
    for (int trial = 0; trial < TRIALS; ++trial) {
      beams_in_a_row beams = random_row(random, {direction::OWN, true, false, false, 1.0});
      finites_beam& b = beams[static_cast<std::size_t>(random.integer(1, COUNT - 1))];
      if (trial % 2 == 0) {
        const double sine = random.log_uniform(1e-8, 1e-4);
        for (int i = 0; i < 3; ++i) b.up[i] = (b.xyz[1][i] - b.xyz[0][i]) + sine * b.up[i];
      } else {
        const double apart = random.log_uniform(1e-17, 1e-11);
        for (int i = 0; i < 3; ++i) b.xyz[1][i] = b.xyz[0][i] + apart * b.up[i];
      }
      refusals += refused(beams, true, *kernels) ? 1 : 0;
    }
    EXPECT_GT(refusals, TRIALS / 20);
    EXPECT_LT(refusals, TRIALS - TRIALS / 20);
  }
}

TEST(BeamLanes, TheBeamAtFaultIsToldAndNothingWritten) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const struct {
    finites_status status;
    std::function<void(finites_beam&)> spoil;
  } faults[] = {
      {FINITES_NAN, [&](finites_beam& b) { b.xyz[1][2] = nan; }},
      {FINITES_NAN, [&](finites_beam& b) { b.up[0] = nan; }},
      {FINITES_NAN, [&](finites_beam& b) { b.J = nan; }},
      {FINITES_RANGE, [](finites_beam& b) { b.xyz[0][1] = 2e30; }},
      {FINITES_RANGE, [](finites_beam& b) { b.E = 2e30; }},
      {FINITES_RANGE, [](finites_beam& b) { b.up[1] = 2e30; }},
      {FINITES_RANGE, [](finites_beam& b) { b.up[2] = -2e30; }},
      {FINITES_MODULUS, [](finites_beam& b) { b.E = 0.0; }},
      {FINITES_MODULUS, [](finites_beam& b) { b.G = -1.0; }},
      {FINITES_DENSITY, [](finites_beam& b) { b.density = -1.0; }},
      {FINITES_SECTION, [](finites_beam& b) { b.area = 0.0; }},
      {FINITES_SECTION, [](finites_beam& b) { b.Iz = -1.0; }},
      {FINITES_SECTION, [](finites_beam& b) { b.Iy = 0.0; }},
      {FINITES_SECTION, [](finites_beam& b) { b.J = 0.0; }},
      {FINITES_COINCIDENT, [](finites_beam& b) { std::memcpy(b.xyz[1], b.xyz[0], sizeof b.xyz[0]); }},
      {FINITES_ORIENTATION,
       [](finites_beam& b) {
         for (int i = 0; i < 3; ++i) b.up[i] = b.xyz[1][i] - b.xyz[0][i];
       }},
  };
  seeded_random random(20261206);
  for (const auto& fault : faults) {
    for (const std::size_t at : {std::size_t{0}, std::size_t{5}, std::size_t{COUNT - 1}}) {
      beams_in_a_row beams = random_row(random, {direction::OWN, true, true, false, 1.0});
      fault.spoil(beams[at]);
      EXPECT_EQ(one_by_one(beams).status, fault.status);
      EXPECT_EQ(one_by_one(beams).failed, static_cast<std::int64_t>(at));
      for (const LANE_KERNELS* const kernels : batches::widths()) EXPECT_TRUE(refused(beams, true, *kernels));
    }
  }
}
