// solids_threads_test.cpp: the calls of solids, cables and links in eight threads give the bits of one.
#include <gtest/gtest.h>

#include <cstring>
#include <thread>

#include "solids_support.h"

namespace {

constexpr std::size_t THREADS = 8;
constexpr int ELEMENTS = 60;
constexpr int ROUNDS = 5;

void append(std::vector<double>& all, const double* values, std::size_t count) {
  all.insert(all.end(), values, values + count);
}

// Everything that element number e answers; a cable hangs between two nodes of the solid, a link joins them.
std::vector<double> every_answer(int e) {
  support::seeded_random random(9106U + static_cast<unsigned>(e));
  const finites_solid solid =
      plain_solids::random_solid(random, plain_solids::NODE_COUNTS[static_cast<std::size_t>(e % 3)]);
  const std::vector<double> u = random.vector(3 * solid.nodes, 1e-2);
  std::vector<double> all;
  for (const std::vector<double>& part :
       {plain_solids::stiffness(solid), plain_solids::mass(solid), plain_solids::geometric(solid, u),
        plain_solids::forces(solid, u), plain_solids::body_load(solid, {1, 2, 3}),
        plain_solids::temperature_load(solid, 30.0), plain_solids::face_load(solid, 1, {1, 2, 3}, 4.0)}) {
    append(all, part.data(), part.size());
  }
  const finites_solid_results results = plain_solids::results(solid, u, 20.0);
  append(all, results.node[0].xyz, 8 * sizeof(finites_solid_point) / sizeof(double));
  append(all, results.point[0].xyz, 8 * sizeof(finites_solid_point) / sizeof(double));

  finites_cable cable{};
  finites_link link{};
  std::copy_n(solid.xyz[0], 6, cable.xyz[0]);
  std::copy_n(solid.xyz[0], 6, link.xyz[0]);
  cable.E = link.k[0] = link.k[2] = solid.E;
  cable.area = 1e-2;
  cable.length = 4.0;
  cable.load[2] = -1.0;
  link.k[4] = 1.0;
  double K[36] = {}, xyz[1][3] = {}, link_K[144] = {};
  const double s = 1.0;
  EXPECT_EQ(finites_cable_stiffness(&cable, K), FINITES_OK);
  EXPECT_EQ(finites_cable_shape(&cable, 1, &s, xyz, nullptr), FINITES_OK);
  EXPECT_EQ(finites_link_stiffness(&link, link_K), FINITES_OK);
  append(all, K, 36);
  append(all, xyz[0], 3);
  append(all, link_K, 144);
  return all;
}

}  // namespace

TEST(SolidsInThreads, EightGiveTheBitsOfOne) {
  std::vector<std::vector<double>> alone;
  for (int e = 0; e < ELEMENTS; ++e) alone.push_back(every_answer(e));
  std::vector<int> wrong(THREADS, 0);
  std::vector<std::thread> threads;
  for (std::size_t t = 0; t < THREADS; ++t) {
    threads.emplace_back([&, t] {
      for (int i = 0; i < ROUNDS * ELEMENTS; ++i) {
        const int e = (i + static_cast<int>(t) * 7) % ELEMENTS;
        const std::vector<double> answer = every_answer(e), &expected = alone[static_cast<std::size_t>(e)];
        const bool same = answer.size() == expected.size() &&
                          std::memcmp(answer.data(), expected.data(), answer.size() * sizeof(double)) == 0;
        if (!same) ++wrong[t];
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(wrong, std::vector<int>(THREADS, 0));
}
