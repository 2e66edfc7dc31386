// batches_hpp_test.cpp: batches through the C++ layer: parts, strides, arrays that are too short.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

#include "elements_hpp.h"

using namespace hpp_test;

namespace {

// Three rectangles, each wider than the one before.
std::vector<double> three_rectangles() {
  std::vector<double> xyz;
  for (const double wide : {2.0, 3.0, 4.0}) {
    for (const finites::point& p : {finites::point{0, 0, 0}, {wide, 0, 0}, {wide, 1, 0}, {0, 1, 0}}) {
      xyz.insert(xyz.end(), p.begin(), p.end());
    }
  }
  return xyz;
}

TEST(BatchesHpp, BatchIsTheSingleCalls) {
  const std::vector<double> xyz = three_rectangles(), thickness{0.01, 0.02, 0.03};
  finites::plates batch(rectangle(), xyz);
  ASSERT_EQ(batch.count, 3);
  batch.thickness = finites::per_element(thickness, 1).reals;
  std::vector<double> K(3 * 576), in_parts(3 * 576);
  ASSERT_TRUE(batch.stiffness(K));
  ASSERT_TRUE(batch.stiffness(in_parts, {0, 1}));
  ASSERT_TRUE(batch.stiffness(in_parts, {1, 3}));
  EXPECT_EQ(K, in_parts);
  for (std::size_t e = 0; e < 3; ++e) {
    finites::plate one = rectangle();
    std::memcpy(one.xyz, &xyz[12 * e], sizeof one.xyz);
    one.thickness = thickness[e];
    EXPECT_EQ(std::memcmp(one.stiffness().data(), &K[576 * e], 576 * sizeof(double)), 0) << e;
  }
  // The same displacements for all, by a stride of 0.
  std::vector<double> F(3 * 24);
  ASSERT_TRUE(batch.forces({stretched(1e-3), 0}, F));
  EXPECT_NE(F[6], 0);
  ASSERT_TRUE(batch.surface_load({std::array<double, 3>{0, 0, 1}, 0}, {}, F));
  EXPECT_NEAR(F[24 + 2] + F[24 + 8] + F[24 + 14] + F[24 + 20], 3, 1e-12);
  std::vector<finites_plate_measures> measures(3);
  ASSERT_TRUE(batch.measure(measures));
  EXPECT_NEAR(measures[2].area, 4, 1e-12);
}

TEST(BatchesHpp, BatchNamesTheElementAtFault) {
  std::vector<double> xyz = three_rectangles();
  xyz[12 + 3] = 0;  // the second node of element 1 on its first
  const finites::plates batch(rectangle(), xyz);
  std::vector<double> K(3 * 576, -1.0);
  const finites::error failed = failure_of([&] { batch.stiffness(K); });
  EXPECT_EQ(failed.status(), FINITES_COINCIDENT);
  EXPECT_EQ(failed.element(), 1);
  EXPECT_NE(std::string(failed.what()).find("finites_plates_stiffness: element 1: "), std::string::npos);
  EXPECT_EQ(K, std::vector<double>(3 * 576, -1.0));
  EXPECT_TRUE(batch.stiffness(K, {2, 3}));
}

TEST(BatchesHpp, CoordinatesOfWholeElements) {
  const std::vector<double> xyz = three_rectangles();
  const auto first = [&](std::size_t count) { return finites::view<const double>(xyz.data(), count); };
  EXPECT_EQ(finites::plates(rectangle(), first(24)).count, 2);
  EXPECT_EQ(finites::plates(rectangle(), first(0)).count, 0);
  for (const std::size_t count : {5U, 13U, 35U}) {  // 12 of a quadrilateral
    const finites::error failed = failure_of([&] { finites::plates(rectangle(), first(count)); });
    EXPECT_EQ(failed.status(), FINITES_RANGE);
    EXPECT_EQ(std::string(failed.what()), "finites::plates: coordinates has " + std::to_string(count) +
                                              " values in place of " + (count < 24 ? "12" : "24"));
  }
  EXPECT_EQ(failure_of([&] { finites::beams(cantilever(), first(7)); }).status(), FINITES_RANGE);
  EXPECT_EQ(failure_of([&] { finites::solids(cube(), first(25)); }).status(), FINITES_RANGE);
  finites_status status = FINITES_OK;
  EXPECT_EQ(finites::plates(rectangle(), first(13), status).count, 0);
  EXPECT_EQ(status, FINITES_RANGE);
}

TEST(BatchesHpp, BatchArraysThatAreTooShort) {
  const std::vector<double> xyz = three_rectangles();
  const finites::plates batch(rectangle(), xyz);
  std::vector<double> short_by_one(3 * 576 - 1), F(72);
  finites_status status = FINITES_OK;
  EXPECT_FALSE(batch.stiffness(short_by_one, {}, status));
  EXPECT_EQ(status, FINITES_RANGE);
  EXPECT_TRUE(batch.stiffness(short_by_one, {0, 2}, status));
  EXPECT_EQ(failure_of([&] { batch.forces(std::vector<double>(71), F); }).status(), FINITES_RANGE);
  // Rows 30 apart: the last one ends with its 24 reals. Of a part in front less is read.
  EXPECT_TRUE(batch.forces({std::vector<double>(2 * 30 + 24), 30}, F));
  EXPECT_EQ(failure_of([&] { batch.forces({std::vector<double>(2 * 30 + 23), 30}, F); }).status(), FINITES_RANGE);
  EXPECT_TRUE(batch.forces({std::vector<double>(30 + 24), 30}, F, {0, 2}));
  EXPECT_EQ(failure_of([&] { batch.forces({std::vector<double>(23), 0}, F); }).status(), FINITES_RANGE);
  EXPECT_TRUE(batch.forces({std::vector<double>(24), 0}, F));
}

// Every call of members and solids knows its own name, length and part.
TEST(BatchesHpp, EachCallNamesItselfAndKeepsToItsPart) {
  const std::vector<double> ends{0, 0, 0, 4, 0, 0, 0, 0, 0, 2, 0, 0};
  const finites::beams beams(cantilever(), ends);
  finites::truss bar({0, 0, 0}, {4, 0, 0});
  bar.E = bar.area = 1;
  const finites::trusses trusses(bar, ends);
  const finites::solid one = cube();
  std::vector<double> nodes(&one.xyz[0][0], &one.xyz[0][0] + 24);
  nodes.insert(nodes.end(), &one.xyz[0][0], &one.xyz[0][0] + 24);
  const finites::solids solids(one, nodes);
  using answer = finites::view<double>;
  using given = const finites::per_element&;
  using finites::part;
  // Answers of `size` reals of `needed` ones: of both elements, of the second alone, then either one real shorter.
  const auto expect = [&](const char* name, std::size_t size, std::size_t needed, const auto& call) {
    std::vector<double> out(2 * size), in(2 * needed, 1e-3), second(2 * size, 3.5);
    EXPECT_NO_THROW(call(answer(out), in, finites::part{})) << name;
    EXPECT_NO_THROW(call(answer(second), in, finites::part{1, 2})) << name;
    std::fill_n(out.begin(), size, 3.5);
    EXPECT_EQ(second, out) << name;
    const auto named = [&] {
      const finites::error failed = failure_of([&] { call(answer(out), in, finites::part{}); });
      EXPECT_EQ(failed.status(), FINITES_RANGE) << name;
      EXPECT_EQ(std::string(failed.what()).find(std::string("finites_") + name + ": "), 0U) << failed.what();
    };
    out.pop_back();
    named();
    out.resize(2 * size);
    if (needed == 0) return;
    in.pop_back();
    named();
  };
  expect("beams_stiffness", 144, 0, [&](answer K, given, part p) { beams.stiffness(K, p); });
  expect("beams_mass", 144, 0, [&](answer M, given, part p) { beams.mass(M, p); });
  expect("beams_geometric", 144, 12, [&](answer K, given v, part p) { beams.geometric(v, K, p); });
  expect("beams_geometric_of_force", 144, 1, [&](answer K, given v, part p) { beams.geometric_of_force(v, K, p); });
  expect("beams_forces", 12, 12, [&](answer F, given v, part p) { beams.forces(v, F, p); });
  expect("trusses_stiffness", 36, 0, [&](answer K, given, part p) { trusses.stiffness(K, p); });
  expect("trusses_mass", 36, 0, [&](answer M, given, part p) { trusses.lumped_mass(M, p); });
  expect("trusses_geometric_of_force", 36, 1, [&](answer K, given v, part p) { trusses.geometric_of_force(v, K, p); });
  expect("trusses_forces", 6, 6, [&](answer F, given v, part p) { trusses.forces(v, F, p); });
  expect("solids_stiffness", 576, 0, [&](answer K, given, part p) { solids.stiffness(K, p); });
  expect("solids_mass", 576, 0, [&](answer M, given, part p) { solids.mass(M, p); });
  expect("solids_geometric", 576, 24, [&](answer K, given v, part p) { solids.geometric(v, K, p); });
  expect("solids_forces", 24, 24, [&](answer F, given v, part p) { solids.forces(v, F, p); });
  expect("solids_body_load", 24, 3, [&](answer F, given v, part p) { solids.body_load(v, F, p); });
  expect("solids_temperature_load", 24, 1, [&](answer F, given v, part p) { solids.temperature_load(v, F, p); });
}

TEST(BatchesHpp, BatchesOfBeamsAndSolids) {
  const std::vector<double> ends{0, 0, 0, 4, 0, 0, 0, 0, 0, 2, 0, 0};
  const finites::beams beams(cantilever(), ends);
  ASSERT_EQ(beams.count, 2);
  std::vector<double> K(2 * 144);
  ASSERT_TRUE(beams.stiffness(K));
  EXPECT_NEAR(K[144 + 26], 12 * young * 8e-6 / 8, 1e-3);
  ASSERT_TRUE(beams.geometric_of_force({{1000.0, 2000.0}}, K));
  EXPECT_NEAR(K[144 + 13], 1.2 * 2000 / 2, 1e-9);
  // The second one is pressed: its first node moves by 1e-3 along it.
  ASSERT_TRUE(beams.geometric({{1e-3, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1e-3, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}}, K));
  EXPECT_NEAR(K[144 + 13], -1.2 * (young * 0.01 / 2 * 1e-3) / 2, 1e-3);

  finites::truss bar({0, 0, 0}, {4, 0, 0});
  bar.E = young;
  bar.area = 1e-3;
  bar.density = 7850;
  const finites::trusses trusses(bar, ends);
  ASSERT_EQ(trusses.count, 2);
  std::vector<double> of_bars(2 * 36), F(2 * 6);
  ASSERT_TRUE(trusses.stiffness(of_bars));
  EXPECT_NEAR(of_bars[36], young * 1e-3 / 2, 1e-3);
  ASSERT_TRUE(trusses.mass(of_bars));
  EXPECT_NEAR(of_bars[0], 7850 * 1e-3 * 4 / 3, 1e-9);
  ASSERT_TRUE(trusses.lumped_mass(of_bars));
  EXPECT_NEAR(of_bars[0], 7850 * 1e-3 * 4 / 2, 1e-9);
  ASSERT_TRUE(trusses.geometric_of_force({{1000.0, 2000.0}}, of_bars));
  EXPECT_NEAR(of_bars[36 + 7], 2000.0 / 2, 1e-9);
  ASSERT_TRUE(trusses.forces({{0, 0, 0, 1e-3, 0, 0, 0, 0, 0, 1e-3, 0, 0}}, F));
  EXPECT_NEAR(F[3], young * 1e-3 / 4 * 1e-3, 1e-6);
  EXPECT_NEAR(F[9], young * 1e-3 / 2 * 1e-3, 1e-6);

  const finites::solid one = cube();
  const finites::solids solids(one, {&one.xyz[0][0], 24});
  ASSERT_EQ(solids.count, 1);
  std::vector<double> M(576);
  ASSERT_TRUE(solids.mass(M));
  EXPECT_EQ(std::memcmp(one.mass().data(), M.data(), 576 * sizeof(double)), 0);
  std::vector<double> load(24);
  ASSERT_TRUE(solids.body_load({{0, 0, -16}}, load));
  EXPECT_NEAR(load[2], -2, 1e-12);  // an eighth at each node
  finites::solids warm = solids;
  warm.common.expansion = 1e-5;
  ASSERT_TRUE(warm.temperature_load({{10.0}}, load));
  EXPECT_NEAR(load[3], young * 1e-4 / (1 - 2 * poisson) / 4, 1);  // a quarter of the force on a face
}

}  // namespace
