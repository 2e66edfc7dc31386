// plates_threads_test.cpp: the calls of plates in eight threads give the bits of one; they take nothing from the heap,
// and neither read nor write what the process shares.
#include <algorithm>
#include <cstring>
#include <thread>
#include <vector>

#include "allocation_counter.h"
#include "finites/elements.h"
#include "finites/records.h"
#include "gtest/gtest.h"
#include "plate_subjects.h"
#include "tarnix.h"

namespace {

using vector = std::vector<double>;

constexpr std::size_t THREADS = 8;
constexpr int ROUNDS = 20;

struct subject {
  finites_plate plate;
  vector u;
};

std::vector<subject> some_of_every_kind() {
  support::seeded_random random(21);
  std::vector<subject> all;
  for (const subjects::plate_kind& kind : subjects::all_plate_kinds()) {
    const finites_plate plate = subjects::as_numbers(subjects::random_plate(random, kind));
    all.push_back({plate, subjects::random_displacements(random, plate.nodes)});
  }
  return all;
}

bool same_bits(const vector& a, const vector& b) {
  return a.size() == b.size() && std::memcmp(a.data(), b.data(), a.size() * sizeof(double)) == 0;
}

}  // namespace

// Each thread computes every plate, from another one on.
TEST(PlatesInThreads, EightGiveTheBitsOfOne) {
  const std::vector<subject> all = some_of_every_kind();
  std::vector<vector> alone;
  for (const subject& s : all) alone.push_back(subjects::every_answer(s.plate, s.u));
  std::vector<int> wrong(THREADS, 0);
  std::vector<std::thread> threads;
  for (std::size_t t = 0; t < THREADS; ++t) {
    threads.emplace_back([&, t] {
      for (int round = 0; round < ROUNDS; ++round) {
        for (std::size_t i = 0; i < all.size(); ++i) {
          const std::size_t k = (i + t * all.size() / THREADS) % all.size();
          if (!same_bits(subjects::every_answer(all[k].plate, all[k].u), alone[k])) ++wrong[t];
        }
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(wrong, std::vector<int>(THREADS, 0));
}

// The answers do not depend on the plates that were computed before.
TEST(PlatesInThreads, OrderLeavesNoTrace) {
  const std::vector<subject> all = some_of_every_kind();
  std::vector<vector> forwards;
  for (const subject& s : all) forwards.push_back(subjects::every_answer(s.plate, s.u));
  for (std::size_t i = all.size(); i-- > 0;) {
    EXPECT_TRUE(same_bits(subjects::every_answer(all[i].plate, all[i].u), forwards[i]));
  }
}

// Records of another solver in the process: patterns whose pointers lead nowhere.
TEST(PlateCalls, LeaveTheSharedRecordsAlone) {
  const std::vector<subject> all = some_of_every_kind();
  std::vector<vector> expected;
  for (const subject& s : all) expected.push_back(subjects::every_answer(s.plate, s.u));
  constexpr unsigned char PATTERN = 0x5A;
  const auto fill = [](auto& record) { std::memset(static_cast<void*>(&record), PATTERN, sizeof record); };
  const auto untouched = [](const auto& record) {
    const auto* const first = reinterpret_cast<const unsigned char*>(&record);
    return std::all_of(first, first + sizeof record, [](unsigned char byte) { return byte == PATTERN; });
  };
  fill(PLATEELEM);
  fill(SOLANAELEM);
  fill(SOLANA);
  bool same = true;
  for (std::size_t i = 0; i < all.size(); ++i) {
    same = same && same_bits(subjects::every_answer(all[i].plate, all[i].u), expected[i]);
  }
  EXPECT_TRUE(same);
  EXPECT_TRUE(untouched(PLATEELEM));
  EXPECT_TRUE(untouched(SOLANAELEM));
  EXPECT_TRUE(untouched(SOLANA));
  TARNIX_CLEAR();
}

TEST(PlateCalls, TakeNothingFromTheHeap) {
  if (!support::allocation_counter::available()) GTEST_SKIP() << "allocations cannot be counted here";
  for (const subject& s : some_of_every_kind()) {
    double matrix[24 * 24], forces[24];
    const double three[3] = {0.1, 0.2, 0.3}, given[4][6] = {};
    finites_plate_measures measures;
    finites_location location;
    finites_plate_results results;
    const support::allocation_counter counter;
    finites_plate_stiffness(&s.plate, matrix);
    finites_plate_mass(&s.plate, matrix);
    finites_plate_geometric(&s.plate, s.u.data(), matrix);
    finites_plate_geometric_of_forces(&s.plate, given, matrix);
    finites_plate_forces(&s.plate, s.u.data(), forces);
    finites_plate_surface_load(&s.plate, three, three, forces);
    finites_plate_body_load(&s.plate, three, forces);
    finites_plate_temperature_load(&s.plate, 1.0, 2.0, forces);
    finites_plate_point_load(&s.plate, three, three, three, forces);
    finites_plate_measure(&s.plate, &measures);
    finites_plate_locate(&s.plate, three, &location);
    finites_plate_result(&s.plate, s.u.data(), three, &results);
    ASSERT_EQ(counter.count(), 0);
  }
}
