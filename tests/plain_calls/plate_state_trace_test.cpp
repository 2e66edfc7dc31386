// Plates that yield: what calls leave behind, and what they say to bad input.
#include <cmath>
#include <cstring>
#include <limits>
#include <thread>

#include "allocation_counter.h"
#include "comparison.h"
#include "finites/records.h"
#include "plain_calls/state_fields.h"
#include "plate_state_support.h"

using namespace yielding;
using support::plate_description;
using support::seeded_random;

namespace {

constexpr double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();
constexpr double INFINITE = std::numeric_limits<double>::infinity();

// All bytes of a state: the plate, the model, the last displacements, then its reals.
std::vector<unsigned char> bytes_of(const held_state& state, const finites_plastic& plastic) {
  const std::size_t count =
      sizeof(finites_plate) + sizeof(finites_plastic) + (24 + count_of_state_reals(plastic)) * sizeof(double);
  const auto* const first = reinterpret_cast<const unsigned char*>(state.get());
  return {first, first + count};
}

finites_plate square() { return subjects::rectangle(4, FINITES_THICK, 1.0, 1.0); }
constexpr finites_plastic LAYERS{FINITES_LAYERED, 5, 200.0, 2e3};

// Total displacements of a path that yields.
std::vector<std::vector<double>> path(seeded_random& random, const plate_description& d, int steps) {
  std::vector<std::vector<double>> all;
  std::vector<double> u(6 * d.nodes.size(), 0.0);
  for (int i = 0; i < steps; ++i) {
    const std::vector<double> more = random_step(random, d, 1.0);
    for (std::size_t j = 0; j < u.size(); ++j) u[j] += more[j];
    all.push_back(u);
  }
  return all;
}

finites_status created(const finites_plate& plate, const finites_plastic& plastic) {
  finites_plate_state* state = nullptr;
  const finites_status status = finites_plate_state_create(&plate, &plastic, &state);
  EXPECT_EQ(state == nullptr, status != FINITES_OK);
  finites_plate_state_free(state);
  return status;
}

}  // namespace

TEST(PlateStateTrace, TriesLeaveNone) {
  seeded_random random(1621);
  for (const state_kind& kind : all_state_kinds()) {
    const plate_description d = random_yielding(random, kind);
    const finites_plastic plastic = plastic_of(d, kind);
    const held_state state = made(subjects::as_numbers(d), plastic), other = made(subjects::as_numbers(d), plastic);
    for (const std::vector<double>& u : path(random, d, 3)) {
      const std::vector<unsigned char> before = bytes_of(state, plastic);
      const answers first = tried(state, u);
      for (int i = 0; i < 3; ++i) tried(state, random_step(random, d, 10.0));
      EXPECT_EQ(bytes_of(state, plastic), before) << name_of(kind);
      const answers again = tried(state, u);
      EXPECT_EQ(again.F, first.F) << name_of(kind);
      EXPECT_EQ(again.K, first.K) << name_of(kind);
      for (const held_state* s : {&state, &other}) {
        ASSERT_EQ(finites_plate_state_commit(s->get(), u.data()), FINITES_OK) << name_of(kind);
        ASSERT_EQ(finites_plate_state_accept(s->get()), FINITES_OK);
      }
      EXPECT_EQ(every_answer(state), every_answer(other)) << name_of(kind);
    }
  }
}

TEST(PlateStateTrace, ForcesAfterACommitAreThoseOfTheTry) {
  seeded_random random(1622);
  for (const state_kind& kind : all_state_kinds()) {
    const plate_description d = random_yielding(random, kind);
    const held_state state = made(subjects::as_numbers(d), plastic_of(d, kind));
    for (const std::vector<double>& u : path(random, d, 3)) {
      const answers a = tried(state, u);
      ASSERT_EQ(finites_plate_state_commit(state.get(), u.data()), FINITES_OK);
      EXPECT_EQ(held(state).F, a.F) << name_of(kind);
      if (kind.model == FINITES_WHOLE_SECTION) {
        EXPECT_EQ(held(state).K, a.K) << name_of(kind);
      }
      // A commit may be taken back by another one, as long as nothing is accepted.
      const finites_status other = finites_plate_state_commit(state.get(), random_step(random, d, 2.0).data());
      EXPECT_TRUE(other == FINITES_OK || other == FINITES_RETURN);
      ASSERT_EQ(finites_plate_state_commit(state.get(), u.data()), FINITES_OK);
      EXPECT_EQ(held(state).F, a.F) << name_of(kind);
      ASSERT_EQ(finites_plate_state_accept(state.get()), FINITES_OK);
      EXPECT_EQ(held(state).F, a.F) << name_of(kind);
    }
  }
}

TEST(PlateStateTrace, CopiesAreIndependent) {
  seeded_random random(1623);
  for (const state_kind& kind : all_state_kinds()) {
    const plate_description d = random_yielding(random, kind);
    const held_state state = made(subjects::as_numbers(d), plastic_of(d, kind));
    const std::vector<std::vector<double>> steps = path(random, d, 4);
    ASSERT_EQ(finites_plate_state_commit(state.get(), steps[0].data()), FINITES_OK);
    ASSERT_EQ(finites_plate_state_accept(state.get()), FINITES_OK);
    const held_state copy = copy_of(state);
    const std::vector<double> before = every_answer(copy);
    EXPECT_EQ(every_answer(state), before);
    for (const std::size_t i : {1U, 2U, 3U}) {
      ASSERT_EQ(finites_plate_state_commit(state.get(), steps[i].data()), FINITES_OK) << name_of(kind);
      ASSERT_EQ(finites_plate_state_accept(state.get()), FINITES_OK);
    }
    EXPECT_EQ(every_answer(copy), before) << name_of(kind);
    EXPECT_NE(every_answer(state), before) << name_of(kind);
    for (const std::size_t i : {1U, 2U, 3U}) {
      ASSERT_EQ(finites_plate_state_commit(copy.get(), steps[i].data()), FINITES_OK);
      ASSERT_EQ(finites_plate_state_accept(copy.get()), FINITES_OK);
    }
    EXPECT_EQ(every_answer(copy), every_answer(state)) << name_of(kind);
  }
}

TEST(PlateStateTrace, AFreshStateIsElasticAndAtRest) {
  for (const int model : {FINITES_LAYERED, FINITES_WHOLE_SECTION}) {
    const held_state state = made(square(), {model, 5, 200.0, 2e3});
    const answers a = held(state);
    EXPECT_EQ(support::max_norm(a.F), 0.0);
    EXPECT_EQ(a.K, tried(state, std::vector<double>(24, 0.0)).K);
    EXPECT_EQ(support::max_norm(tried(state, std::vector<double>(24, 0.0)).F), 0.0);
    const finites_plate_results r = result_of(state);
    EXPECT_EQ(r.nodes, 4);
    EXPECT_EQ(r.points, 4);
    EXPECT_EQ(r.point[2].top.stress[0], 0.0);
  }
}

TEST(PlateStateTrace, OnlyCreateAndCopyAllocate) {
  if (!support::allocation_counter::available()) GTEST_SKIP() << "the sanitizer has the heap";
  seeded_random random(1624);
  for (const state_kind& kind : all_state_kinds()) {
    const plate_description d = random_yielding(random, kind);
    const held_state state = made(subjects::as_numbers(d), plastic_of(d, kind));
    const std::vector<double> u = random_step(random, d, 3.0);
    double F[24], K[576];
    finites_plate_results r;
    const support::allocation_counter counter;
    finites_plate_state_try(state.get(), u.data(), F, K);
    finites_plate_state_commit(state.get(), u.data());
    finites_plate_state_accept(state.get());
    finites_plate_state_forces(state.get(), F, K);
    finites_plate_state_result(state.get(), &r);
    EXPECT_EQ(counter.count(), 0) << name_of(kind);
  }
}

TEST(PlateStateTrace, TheRecordsOfTheProcessStayAsTheyAre) {
  seeded_random random(1625);
  SOLANAELEM = SOLANAELEM_RECORD{};
  SOLANAELEM.NPT_THICK = 9;
  SOLANAELEM.EP_INC_FROM_CUR = 1;
  std::memset(&PLATEELEM, 0x5a, sizeof PLATEELEM);
  const SOLANAELEM_RECORD records = SOLANAELEM;
  const PLATEELEM_RECORD scratch = PLATEELEM;
  for (const state_kind& kind : all_state_kinds()) {
    const plate_description d = random_yielding(random, kind);
    const held_state state = made(subjects::as_numbers(d), plastic_of(d, kind));
    const std::vector<double> u = random_step(random, d, 3.0);
    tried(state, u);
    const finites_status status = finites_plate_state_commit(state.get(), u.data());
    EXPECT_TRUE(status == FINITES_OK || status == FINITES_RETURN);
    every_answer(state);
    EXPECT_EQ(std::memcmp(&SOLANAELEM, &records, sizeof records), 0);
    EXPECT_EQ(std::memcmp(&PLATEELEM, &scratch, sizeof scratch), 0);
  }
  SOLANAELEM = SOLANAELEM_RECORD{};
  PLATEELEM = PLATEELEM_RECORD{};
}

TEST(PlateStateTrace, FourThreadsOnFourStates) {
  seeded_random random(1626);
  const std::vector<state_kind> kinds = all_state_kinds();
  struct work {
    held_state state;
    std::vector<std::vector<double>> steps;
    std::vector<double> expected, found;
  };
  const auto run = [](const held_state& state, const std::vector<std::vector<double>>& steps) {
    for (const std::vector<double>& u : steps) {
      for (int i = 0; i < 20; ++i) tried(state, u);
      EXPECT_EQ(finites_plate_state_commit(state.get(), u.data()), FINITES_OK);
      EXPECT_EQ(finites_plate_state_accept(state.get()), FINITES_OK);
    }
    return every_answer(state);
  };
  std::array<work, 4> jobs;
  for (std::size_t i = 0; i < jobs.size(); ++i) {
    const state_kind& kind = kinds[7 * i];
    const plate_description d = random_yielding(random, kind);
    jobs[i].state = made(subjects::as_numbers(d), plastic_of(d, kind));
    jobs[i].steps = path(random, d, 5);
    jobs[i].expected = run(copy_of(jobs[i].state), jobs[i].steps);
  }
  std::vector<std::thread> threads;
  for (work& job : jobs) threads.emplace_back([&job, &run] { job.found = run(job.state, job.steps); });
  for (std::thread& t : threads) t.join();
  for (const work& job : jobs) EXPECT_EQ(job.found, job.expected);
}

TEST(PlateStateStatuses, OfTheModel) {
  EXPECT_EQ(created(square(), LAYERS), FINITES_OK);
  finites_plastic p = LAYERS;
  for (const std::int32_t model : {0, 3, -1}) {
    p.model = model;
    EXPECT_EQ(created(square(), p), FINITES_BAD_CODE);
  }
  for (const std::int32_t layers : {-1, 0, 1, 2, 4, 14, 16, 17}) {
    p = LAYERS;
    p.layers = layers;
    EXPECT_EQ(created(square(), p), FINITES_LAYERS) << layers;
    p.model = FINITES_WHOLE_SECTION;
    EXPECT_EQ(created(square(), p), FINITES_OK) << "a whole section has none";
  }
  for (const std::int32_t layers : {3, 5, 7, 9, 11, 13, 15}) {
    p = LAYERS;
    p.layers = layers;
    EXPECT_EQ(created(square(), p), FINITES_OK) << layers;
  }
  p = LAYERS;
  for (const double fy : {0.0, -1.0}) {
    p.yield_stress = fy;
    EXPECT_EQ(created(square(), p), FINITES_YIELD);
  }
  p = LAYERS;
  const double E = square().E;
  for (const double Et : {-1.0, E, 2.0 * E}) {
    p.hardening = Et;
    EXPECT_EQ(created(square(), p), FINITES_HARDENING);
  }
  p.hardening = 0.0;
  EXPECT_EQ(created(square(), p), FINITES_OK);
  for (double finites_plastic::*const number : {&finites_plastic::yield_stress, &finites_plastic::hardening}) {
    p = LAYERS;
    p.*number = NOT_A_NUMBER;
    EXPECT_EQ(created(square(), p), FINITES_NAN);
    p.*number = INFINITE;
    EXPECT_EQ(created(square(), p), FINITES_NAN);
    p.*number = 2e30;
    EXPECT_EQ(created(square(), p), FINITES_RANGE);
  }
}

TEST(PlateStateStatuses, OfThePlate) {
  finites_plate plate = square();
  for (const std::int32_t theory : {FINITES_MEMBRANE, FINITES_MEMBRANE_REDUCED}) {
    plate.theory = theory;
    EXPECT_EQ(created(plate, LAYERS), FINITES_STATE);
    EXPECT_EQ(created(plate, {FINITES_WHOLE_SECTION, 0, 200.0, 0.0}), FINITES_STATE);
  }
  plate = square();
  plate.orthotropic = 1;
  plate.E2 = plate.E;
  plate.G12 = plate.G13 = plate.G23 = 0.4 * plate.E;
  EXPECT_EQ(created(plate, LAYERS), FINITES_STATE);
  for (double finites_plate::*const factor :
       {&finites_plate::membrane_factor, &finites_plate::bending_factor, &finites_plate::shear_factor}) {
    plate = square();
    plate.*factor = 0.5;
    EXPECT_EQ(created(plate, LAYERS), FINITES_STATE);
    plate.*factor = -0.5;
    EXPECT_EQ(created(plate, LAYERS), FINITES_FACTOR);
  }
  plate = square();
  plate.mass_factor = 0.5;  // a state has no mass
  EXPECT_EQ(created(plate, LAYERS), FINITES_OK);
  plate = square();
  plate.thickness = 0.0;
  EXPECT_EQ(created(plate, LAYERS), FINITES_THICKNESS);
  plate = square();
  plate.xyz[2][1] = NOT_A_NUMBER;
  EXPECT_EQ(created(plate, LAYERS), FINITES_NAN);
  plate = square();
  std::copy_n(plate.xyz[0], 3, plate.xyz[1]);
  EXPECT_EQ(created(plate, LAYERS), FINITES_COINCIDENT);
}

TEST(PlateStateStatuses, OfPointersAndDisplacements) {
  const finites_plate plate = square();
  finites_plate_state* none = nullptr;
  EXPECT_EQ(finites_plate_state_create(nullptr, &LAYERS, &none), FINITES_NULL);
  EXPECT_EQ(finites_plate_state_create(&plate, nullptr, &none), FINITES_NULL);
  EXPECT_EQ(finites_plate_state_create(&plate, &LAYERS, nullptr), FINITES_NULL);
  const held_state state = made(plate, LAYERS);
  EXPECT_EQ(finites_plate_state_copy(nullptr, &none), FINITES_NULL);
  EXPECT_EQ(finites_plate_state_copy(state.get(), nullptr), FINITES_NULL);
  std::vector<double> u(24, 0.0);
  double F[24], K[576];
  finites_plate_results r;
  EXPECT_EQ(finites_plate_state_try(nullptr, u.data(), F, K), FINITES_NULL);
  EXPECT_EQ(finites_plate_state_try(state.get(), nullptr, F, K), FINITES_NULL);
  EXPECT_EQ(finites_plate_state_commit(nullptr, u.data()), FINITES_NULL);
  EXPECT_EQ(finites_plate_state_commit(state.get(), nullptr), FINITES_NULL);
  EXPECT_EQ(finites_plate_state_accept(nullptr), FINITES_NULL);
  EXPECT_EQ(finites_plate_state_forces(nullptr, F, K), FINITES_NULL);
  EXPECT_EQ(finites_plate_state_result(nullptr, &r), FINITES_NULL);
  EXPECT_EQ(finites_plate_state_result(state.get(), nullptr), FINITES_NULL);
  finites_plate_state_free(nullptr);
  EXPECT_EQ(none, nullptr);
  EXPECT_EQ(finites_plate_state_try(state.get(), u.data(), nullptr, nullptr), FINITES_OK);
  EXPECT_EQ(finites_plate_state_try(state.get(), u.data(), F, nullptr), FINITES_OK);
  EXPECT_EQ(finites_plate_state_try(state.get(), u.data(), nullptr, K), FINITES_OK);
  EXPECT_EQ(finites_plate_state_forces(state.get(), nullptr, nullptr), FINITES_OK);
}

TEST(PlateStateStatuses, OnAnErrorNothingIsWritten) {
  const held_state state = made(square(), LAYERS);
  struct bad {
    double value;
    finites_status status;
  };
  for (const bad b : {bad{NOT_A_NUMBER, FINITES_NAN}, bad{INFINITE, FINITES_NAN}, bad{2e30, FINITES_RANGE}}) {
    std::vector<double> u(24, 1e-4);
    u[7] = b.value;
    const std::vector<unsigned char> before = bytes_of(state, LAYERS);
    answers a{FINITES_OK, std::vector<double>(24, 7.0), std::vector<double>(576, 8.0)};
    EXPECT_EQ(finites_plate_state_try(state.get(), u.data(), a.F.data(), a.K.data()), b.status);
    EXPECT_EQ(a.F, std::vector<double>(24, 7.0));
    EXPECT_EQ(a.K, std::vector<double>(576, 8.0));
    EXPECT_EQ(finites_plate_state_commit(state.get(), u.data()), b.status);
    EXPECT_EQ(bytes_of(state, LAYERS), before);
  }
}

TEST(PlateStateStatuses, AReturnThatFailsWritesNothing) {
  // Steps of whole sections that no multiplier of double precision brings back.
  seeded_random random(1631);
  int failures = 0;
  for (int i = 0; i < 80; ++i) {
    const state_kind kind{FINITES_WHOLE_SECTION, 0, 3 + i % 2, i / 2 % 2, false};
    const plate_description d = random_yielding(random, kind);
    const finites_plastic plastic = plastic_of(d, kind);
    const held_state state = made(subjects::as_numbers(d), plastic);
    const std::vector<double> u = random_step(random, d, 1e15);
    const std::vector<unsigned char> before = bytes_of(state, plastic);
    answers a{FINITES_OK, std::vector<double>(u.size(), 7.0), std::vector<double>(u.size() * u.size(), 8.0)};
    a.status = finites_plate_state_try(state.get(), u.data(), a.F.data(), a.K.data());
    if (a.status == FINITES_OK) continue;
    ++failures;
    EXPECT_EQ(a.status, FINITES_RETURN);
    EXPECT_EQ(a.F, std::vector<double>(u.size(), 7.0));
    EXPECT_EQ(a.K, std::vector<double>(u.size() * u.size(), 8.0));
    EXPECT_EQ(finites_plate_state_commit(state.get(), u.data()), FINITES_RETURN);
    EXPECT_EQ(bytes_of(state, plastic), before);
  }
  EXPECT_GT(failures, 20);
}

TEST(PlateStateStatuses, WholeSectionsReturnFromLargeSteps) {
  // From rest to far beyond yield, in whatever direction: the mixed term may change its sign on the way.
  seeded_random random(1632);
  for (int i = 0; i < 240; ++i) {
    const state_kind kind{FINITES_WHOLE_SECTION, 0, 3 + i % 2, i / 2 % 2, i % 5 == 0};
    const plate_description d = random_yielding(random, kind);
    const held_state state = made(subjects::as_numbers(d), plastic_of(d, kind));
    for (const double times : {3.0, 20.0}) {
      EXPECT_EQ(tried(state, random_step(random, d, times)).status, FINITES_OK) << name_of(kind) << " " << times;
    }
  }
}
