// What batches take: every array reaches its element and every stride, range and number is looked at.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <memory>
#include <vector>

#include "finites/elements.h"
#include "gtest/gtest.h"
#include "plate_subjects.h"
#include "random_shapes.h"
#include "solids_support.h"

namespace {

using reals = std::vector<double>;

constexpr std::int64_t COUNT = 19;
constexpr double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();

std::size_t index_of(std::int64_t i) { return static_cast<std::size_t>(i); }

// Values of all elements, `size` each, one behind the other.
struct column {
  reals values;
  std::int64_t size;
  finites_reals all() const { return {values.data(), size}; }
  double* of(std::int64_t e) { return &values[index_of(e * size)]; }
};

column filled(std::int64_t size) { return {reals(index_of(COUNT * size)), size}; }

// Plates that differ in everything that has an array, each written by hand into one of `single`.
struct plate_rows {
  std::vector<finites_plate> single;
  column xyz = filled(12), offset = filled(12), thickness = filled(1), E = filled(1), nu = filled(1),
         density = filled(1), angle = filled(1);
  finites_plates plates{};

  void refer(const finites_plate& common) {
    plates.common = common;
    plates.count = COUNT;
    plates.xyz = xyz.all();
    plates.offset = offset.all();
    plates.thickness = thickness.all();
    plates.E = E.all();
    plates.nu = nu.all();
    plates.density = density.all();
    plates.angle = angle.all();
  }
};

void take_plate(plate_rows& rows, std::int64_t e, const finites_plate& p) {
  std::memcpy(rows.xyz.of(e), p.xyz, sizeof p.xyz);
  std::memcpy(rows.offset.of(e), p.offset, sizeof p.offset);
  *rows.thickness.of(e) = p.thickness;
  *rows.E.of(e) = p.E;
  *rows.nu.of(e) = p.nu;
  *rows.density.of(e) = p.density;
  *rows.angle.of(e) = p.angle;
  rows.single.push_back(p);
}

plate_rows rows_of(bool orthotropic, unsigned seed) {
  support::seeded_random random(seed);
  finites_plate common = subjects::rectangle(4, FINITES_THICK, 2.0, 1.0);
  common.orthotropic = orthotropic ? 1 : 0;
  common.E2 = common.E / 3.0;
  common.G12 = common.G13 = common.E / 4.0;
  common.G23 = common.E / 5.0;
  plate_rows rows;
  for (std::int64_t e = 0; e < COUNT; ++e) {
    finites_plate p = common;
    for (auto& node : p.xyz) {
      for (double& x : node) x += random.uniform(-0.2, 0.2);
    }
    for (auto& arm : p.offset) {
      for (double& x : arm) x = orthotropic ? random.uniform(-0.1, 0.1) : 0.0;
    }
    p.thickness *= random.uniform(0.5, 2.0);
    p.E *= random.uniform(0.5, 2.0);
    p.nu = random.uniform(0.0, 0.3);
    p.density = random.uniform(1.0, 9.0);
    p.angle = random.uniform(-1.0, 1.0);
    take_plate(rows, e, p);
  }
  rows.refer(common);
  return rows;
}

reals stiffness_of(const finites_plate& p) {
  reals K(576);
  EXPECT_EQ(finites_plate_stiffness(&p, K.data()), FINITES_OK);
  return K;
}

void expect_bits(const double* is, const reals& wanted, std::int64_t e) {
  EXPECT_EQ(std::memcmp(is, wanted.data(), wanted.size() * sizeof(double)), 0) << "element " << e;
}

void expect_stiffness_of_each(const plate_rows& rows) {
  reals K(index_of(COUNT * 576));
  std::int64_t failed = 7;
  ASSERT_EQ(finites_plates_stiffness(&rows.plates, 0, COUNT, K.data(), 576, &failed), FINITES_OK);
  EXPECT_EQ(failed, -1);
  for (std::int64_t e = 0; e < COUNT; ++e) {
    expect_bits(&K[index_of(e * 576)], stiffness_of(rows.single[index_of(e)]), e);
  }
}

// Nothing is written, and the element at fault is told.
void expect_fault(const finites_solids& solids, finites_status wanted, std::int64_t at) {
  reals K(index_of(COUNT * 576), 3.5);
  std::int64_t failed = -7;
  EXPECT_EQ(finites_solids_stiffness(&solids, 0, COUNT, K.data(), 576, &failed), wanted) << at;
  EXPECT_EQ(failed, at);
  for (const double k : K) ASSERT_EQ(k, 3.5) << at;
}

struct brick_rows {
  column xyz = filled(24), E = filled(1), nu = filled(1), density = filled(1);
  finites_solids solids{};
  brick_rows() {
    solids.common = plain_solids::straight(8);
    solids.count = COUNT;
    for (std::int64_t e = 0; e < COUNT; ++e) reset(e);
    solids.xyz = xyz.all();
    solids.E = E.all();
    solids.nu = nu.all();
    solids.density = density.all();
  }
  brick_rows(const brick_rows&) = delete;
  brick_rows& operator=(const brick_rows&) = delete;
  void reset(std::int64_t e) {
    std::memcpy(xyz.of(e), solids.common.xyz, sizeof solids.common.xyz);
    *E.of(e) = 200.0 + static_cast<double>(e);
    *nu.of(e) = 0.3;
    *density.of(e) = 2.0 + static_cast<double>(e);
  }
};

}  // namespace

// ------------------------------------------------------------------------------------------------ arrays

TEST(BatchInputs, EveryArrayOfPlatesReachesItsElement) {
  const plate_rows rows = rows_of(true, 71);
  expect_stiffness_of_each(rows);
  reals M(index_of(COUNT * 576));
  ASSERT_EQ(finites_plates_mass(&rows.plates, 0, COUNT, M.data(), 576, nullptr), FINITES_OK);
  for (std::int64_t e = 0; e < COUNT; ++e) {
    reals wanted(576);
    ASSERT_EQ(finites_plate_mass(&rows.single[index_of(e)], wanted.data()), FINITES_OK);
    expect_bits(&M[index_of(e * 576)], wanted, e);
  }
}

// The offsets of one plate, of one node, are enough.
TEST(BatchInputs, AnOffsetOfOnePlateCounts) {
  for (const std::int64_t at : {std::int64_t{0}, std::int64_t{5}, COUNT - 1}) {
    plate_rows rows = rows_of(false, 72);
    rows.offset.of(at)[11] = rows.single[index_of(at)].offset[3][2] = -0.25;
    expect_stiffness_of_each(rows);
  }
}

TEST(BatchInputs, OffsetsOfAllPlatesInCommon) {
  plate_rows rows = rows_of(false, 73);
  finites_plate common = rows.plates.common;
  common.offset[3][2] = -0.25;
  rows.refer(common);
  rows.plates.offset = {nullptr, 0};
  for (finites_plate& p : rows.single) p.offset[3][2] = -0.25;
  expect_stiffness_of_each(rows);
}

// Coordinates that are minus zero: the bits of the single call.
TEST(BatchInputs, MinusZeroCoordinates) {
  plate_rows rows = rows_of(false, 74);
  for (std::int64_t e = 0; e < COUNT; ++e) {
    finites_plate& p = rows.single[index_of(e)];
    std::memcpy(p.xyz, rows.plates.common.xyz, sizeof p.xyz);
    for (auto& node : p.xyz) {
      for (double& x : node) x = x == 0.0 ? -0.0 : x;
    }
    std::memcpy(rows.xyz.of(e), p.xyz, sizeof p.xyz);
  }
  expect_stiffness_of_each(rows);
}

TEST(BatchInputs, EveryArrayOfBeamsReachesItsElement) {
  support::seeded_random random(75);
  column xyz = filled(6), up = filled(3), offset = filled(6), section = filled(7);
  finites_beams beams{};
  finites_beam_init(&beams.common);
  beams.count = COUNT;
  beams.xyz = xyz.all();
  beams.up = up.all();
  beams.offset = offset.all();
  const std::array<finites_reals*, 7> of = {&beams.E,  &beams.G,  &beams.density, &beams.area,
                                            &beams.Iz, &beams.Iy, &beams.J};
  for (std::size_t k = 0; k < 7; ++k) *of[k] = {section.values.data() + k, 7};
  std::vector<finites_beam> single;
  for (std::int64_t e = 0; e < COUNT; ++e) {
    finites_beam b = beams.common;
    b.xyz[1][0] = 4.0;
    for (auto& node : b.xyz) {
      for (double& x : node) x += random.uniform(-1.0, 1.0);
    }
    for (auto& arm : b.offset) {
      for (double& x : arm) x = random.uniform(-0.2, 0.2);
    }
    b.up[0] = 0.1;
    b.up[1] = random.uniform(1.0, 2.0);
    b.up[2] = random.uniform(1.0, 2.0);
    const std::array<double*, 7> fields = {&b.E, &b.G, &b.density, &b.area, &b.Iz, &b.Iy, &b.J};
    for (std::size_t k = 0; k < 7; ++k) section.of(e)[k] = *fields[k] = random.uniform(1.0, 9.0);
    std::memcpy(xyz.of(e), b.xyz, sizeof b.xyz);
    std::memcpy(offset.of(e), b.offset, sizeof b.offset);
    std::memcpy(up.of(e), b.up, sizeof b.up);
    single.push_back(b);
  }
  reals K(index_of(COUNT * 144)), M(index_of(COUNT * 144)), wanted(144);
  ASSERT_EQ(finites_beams_stiffness(&beams, 0, COUNT, K.data(), 144, nullptr), FINITES_OK);
  ASSERT_EQ(finites_beams_mass(&beams, 0, COUNT, 0, M.data(), 144, nullptr), FINITES_OK);
  for (std::int64_t e = 0; e < COUNT; ++e) {
    ASSERT_EQ(finites_beam_stiffness(&single[index_of(e)], wanted.data()), FINITES_OK);
    expect_bits(&K[index_of(e * 144)], wanted, e);
    ASSERT_EQ(finites_beam_mass(&single[index_of(e)], 0, wanted.data()), FINITES_OK);
    expect_bits(&M[index_of(e * 144)], wanted, e);
  }
}

TEST(BatchInputs, EveryArrayOfBricksReachesItsElement) {
  const brick_rows rows;
  reals M(index_of(COUNT * 576)), wanted(576);
  ASSERT_EQ(finites_solids_mass(&rows.solids, 0, COUNT, M.data(), 576, nullptr), FINITES_OK);
  for (std::int64_t e = 0; e < COUNT; ++e) {
    finites_solid one = rows.solids.common;
    one.density = 2.0 + static_cast<double>(e);
    ASSERT_EQ(finites_solid_mass(&one, wanted.data()), FINITES_OK);
    expect_bits(&M[index_of(e * 576)], wanted, e);
  }
}

// ------------------------------------------------------------------------------------------------ ranges and strides

TEST(BatchInputs, RangesThatLeaveTheBatch) {
  const brick_rows rows;
  reals K(index_of((COUNT + 2) * 576), 3.5);
  for (const std::array<std::int64_t, 2>& range :
       {std::array<std::int64_t, 2>{-1, 3}, {0, COUNT + 1}, {5, 4}, {-2, -1}, {COUNT, COUNT + 1}}) {
    std::int64_t failed = 7;
    EXPECT_EQ(finites_solids_stiffness(&rows.solids, range[0], range[1], &K[576], 576, &failed), FINITES_RANGE)
        << range[0] << " " << range[1];
    EXPECT_EQ(failed, -1);
  }
  for (const double k : K) ASSERT_EQ(k, 3.5);
}

TEST(BatchInputs, NoStrideMayBeNegative) {
  reals out(index_of(COUNT * 576));
  plate_rows plates = rows_of(false, 76);
  finites_plates& p = plates.plates;
  for (finites_reals* a : {&p.xyz, &p.offset, &p.thickness, &p.E, &p.nu, &p.density, &p.angle}) {
    const std::int64_t stride = a->stride;
    a->stride = -1;
    EXPECT_EQ(finites_plates_stiffness(&p, 0, 1, out.data(), 576, nullptr), FINITES_RANGE);
    a->stride = stride;
  }
  EXPECT_EQ(finites_plates_stiffness(&p, 0, 1, out.data(), 576, nullptr), FINITES_OK);

  brick_rows bricks;
  finites_solids& s = bricks.solids;
  for (finites_reals* a : {&s.xyz, &s.E, &s.nu, &s.density}) {
    const std::int64_t stride = a->stride;
    a->stride = -1;
    EXPECT_EQ(finites_solids_stiffness(&s, 0, 1, out.data(), 576, nullptr), FINITES_RANGE);
    a->stride = stride;
  }

  finites_beams b{};
  finites_beam_init(&b.common);
  b.common.xyz[1][0] = b.common.E = b.common.G = b.common.area = b.common.Iz = b.common.Iy = b.common.J = 1.0;
  b.count = COUNT;
  EXPECT_EQ(finites_beams_stiffness(&b, 0, 1, out.data(), 144, nullptr), FINITES_OK);
  for (finites_reals* a : {&b.xyz, &b.up, &b.offset, &b.E, &b.G, &b.density, &b.area, &b.Iz, &b.Iy, &b.J}) {
    a->stride = -1;
    EXPECT_EQ(finites_beams_stiffness(&b, 0, 1, out.data(), 144, nullptr), FINITES_RANGE);
    a->stride = 0;
  }

  finites_trusses t{};
  t.common.xyz[1][0] = t.common.E = t.common.area = 1.0;
  t.count = COUNT;
  EXPECT_EQ(finites_trusses_stiffness(&t, 0, 1, out.data(), 36, nullptr), FINITES_OK);
  for (finites_reals* a : {&t.xyz, &t.E, &t.area, &t.density, &t.pretension}) {
    a->stride = -1;
    EXPECT_EQ(finites_trusses_stiffness(&t, 0, 1, out.data(), 36, nullptr), FINITES_RANGE);
    a->stride = 0;
  }
}

TEST(BatchInputs, NoStrideOfVectorsMayBeNegative) {
  const plate_rows rows = rows_of(false, 77);
  const reals u(24, 0.0);
  reals out(index_of(COUNT * 576));
  std::vector<finites_plate_results> results(1);
  const finites_reals good = {u.data(), 0};
  const finites_reals bad = {u.data(), -1};
  const finites_plates* const p = &rows.plates;
  EXPECT_EQ(finites_plates_forces(p, 0, 1, bad, out.data(), 24, nullptr), FINITES_RANGE);
  EXPECT_EQ(finites_plates_geometric(p, 0, 1, bad, out.data(), 576, nullptr), FINITES_RANGE);
  EXPECT_EQ(finites_plates_surface_load(p, 0, 1, bad, good, out.data(), 24, nullptr), FINITES_RANGE);
  EXPECT_EQ(finites_plates_surface_load(p, 0, 1, good, bad, out.data(), 24, nullptr), FINITES_RANGE);
  EXPECT_EQ(finites_plates_body_load(p, 0, 1, bad, out.data(), 24, nullptr), FINITES_RANGE);
  EXPECT_EQ(finites_plates_temperature_load(p, 0, 1, bad, out.data(), 24, nullptr), FINITES_RANGE);
  EXPECT_EQ(finites_plates_result(p, 0, 1, bad, good, results.data(), nullptr), FINITES_RANGE);
  EXPECT_EQ(finites_plates_result(p, 0, 1, good, bad, results.data(), nullptr), FINITES_RANGE);
  EXPECT_EQ(finites_plates_result(p, 0, 1, good, good, results.data(), nullptr), FINITES_OK);
}

// Likewise of members and solids, and none of their arrays may be missing.
TEST(BatchInputs, VectorsOfMembersAndSolidsAreThereAndNotNegative) {
  finites_beams b{};
  finites_beam_init(&b.common);
  b.common.xyz[1][0] = b.common.E = b.common.G = b.common.area = b.common.Iz = b.common.Iy = b.common.J = 1.0;
  finites_trusses t{};
  t.common.xyz[1][0] = t.common.E = t.common.area = 1.0;
  b.count = t.count = 1;
  const brick_rows rows;
  const finites_solids* const s = &rows.solids;
  const reals u(24, 0.0);
  reals out(576, 3.5);
  const struct {
    finites_reals given;
    finites_status status;
  } cases[] = {{{nullptr, 0}, FINITES_NULL}, {{u.data(), -1}, FINITES_RANGE}, {{u.data(), 0}, FINITES_OK}};
  for (const auto& c : cases) {
    const finites_reals v = c.given;
    const auto expect = [&](auto batch) {
      std::int64_t failed = -7;
      std::fill(out.begin(), out.end(), 3.5);
      EXPECT_EQ(batch(out.data(), &failed), c.status);
      EXPECT_EQ(failed, -1);
      EXPECT_EQ(out[0] == 3.5, c.status != FINITES_OK);
    };
    expect([&](double* K, std::int64_t* at) { return finites_beams_geometric(&b, 0, 1, v, K, 144, at); });
    expect([&](double* K, std::int64_t* at) { return finites_beams_geometric_of_force(&b, 0, 1, v, K, 144, at); });
    expect([&](double* F, std::int64_t* at) { return finites_beams_forces(&b, 0, 1, v, F, 12, at); });
    expect([&](double* K, std::int64_t* at) { return finites_trusses_geometric_of_force(&t, 0, 1, v, K, 36, at); });
    expect([&](double* F, std::int64_t* at) { return finites_trusses_forces(&t, 0, 1, v, F, 6, at); });
    expect([&](double* K, std::int64_t* at) { return finites_solids_geometric(s, 0, 1, v, K, 576, at); });
    expect([&](double* F, std::int64_t* at) { return finites_solids_forces(s, 0, 1, v, F, 24, at); });
    expect([&](double* F, std::int64_t* at) { return finites_solids_body_load(s, 0, 1, v, F, 24, at); });
    expect([&](double* F, std::int64_t* at) { return finites_solids_temperature_load(s, 0, 1, v, F, 24, at); });
  }
}

// The answer of one element has no neighbour: its stride only says where it lies, and not before the array.
TEST(BatchInputs, AnAnswerOfOneElementLiesInItsArray) {
  finites_trusses t{};
  t.common.xyz[1][0] = t.common.E = t.common.area = 1.0;
  t.count = 2;
  reals F(18, 3.5);
  const reals u = {0.0, 0.0, 0.0, 2.0, 0.0, 0.0};
  std::int64_t failed = -7;
  EXPECT_EQ(finites_trusses_forces(&t, 1, 2, {u.data(), 0}, &F[6], -6, &failed), FINITES_RANGE);
  EXPECT_EQ(failed, -1);
  for (const double f : F) ASSERT_EQ(f, 3.5);
  EXPECT_EQ(finites_trusses_forces(&t, 1, 2, {u.data(), 0}, &F[6], 0, nullptr), FINITES_OK);
  EXPECT_EQ(F[9], 2.0);  // E A / L = 1
  EXPECT_EQ(F[15], 3.5);
}

// Vectors as long as the elements say, which are none: nothing beyond them is read.
TEST(BatchInputs, NodeCountsThatNoSolidHas) {
  for (const std::int32_t nodes : {0, 3, -1, std::numeric_limits<std::int32_t>::max()}) {
    finites_solids s{};
    finites_solid_init(&s.common);
    s.common.nodes = nodes;
    s.count = 1;
    const auto u = std::make_unique<double[]>(9);
    reals out(576, 3.5);
    std::int64_t failed = -7;
    EXPECT_EQ(finites_solids_forces(&s, 0, 1, {u.get(), 9}, out.data(), 576, &failed), FINITES_NODES);
    EXPECT_EQ(failed, 0);
    EXPECT_EQ(finites_solids_stiffness(&s, 0, 1, out.data(), 576, &failed), FINITES_NODES);
    for (const double value : out) ASSERT_EQ(value, 3.5);
  }
}

// Answers that would overlap are refused.
TEST(BatchInputs, AnswersOfMembersAndSolidsMayNotOverlap) {
  finites_beams b{};
  finites_beam_init(&b.common);
  b.common.xyz[1][0] = b.common.E = b.common.G = b.common.area = b.common.Iz = b.common.Iy = b.common.J = 1.0;
  finites_trusses t{};
  t.common.xyz[1][0] = t.common.E = t.common.area = 1.0;
  b.count = t.count = 2;
  const brick_rows rows;
  const finites_solids* const s = &rows.solids;
  const reals u(24, 0.0);
  const finites_reals v = {u.data(), 0};
  reals out(1152, 3.5);
  const auto expect = [&](std::int64_t size, auto batch) {
    for (const std::int64_t stride : {size - 1, std::int64_t{0}, -size, size}) {
      std::int64_t failed = -7;
      EXPECT_EQ(batch(out.data(), stride, &failed), stride == size ? FINITES_OK : FINITES_RANGE);
      EXPECT_EQ(failed, -1);
      EXPECT_EQ(out[0] == 3.5, stride != size);
    }
    std::fill(out.begin(), out.end(), 3.5);
  };
  using i64 = std::int64_t;
  expect(144, [&](double* K, i64 d, i64* at) { return finites_beams_stiffness(&b, 0, 2, K, d, at); });
  expect(144, [&](double* M, i64 d, i64* at) { return finites_beams_mass(&b, 0, 2, 1, M, d, at); });
  expect(144, [&](double* K, i64 d, i64* at) { return finites_beams_geometric(&b, 0, 2, v, K, d, at); });
  expect(144, [&](double* K, i64 d, i64* at) { return finites_beams_geometric_of_force(&b, 0, 2, v, K, d, at); });
  expect(12, [&](double* F, i64 d, i64* at) { return finites_beams_forces(&b, 0, 2, v, F, d, at); });
  expect(36, [&](double* K, i64 d, i64* at) { return finites_trusses_stiffness(&t, 0, 2, K, d, at); });
  expect(36, [&](double* M, i64 d, i64* at) { return finites_trusses_mass(&t, 0, 2, 0, M, d, at); });
  expect(36, [&](double* K, i64 d, i64* at) { return finites_trusses_geometric_of_force(&t, 0, 2, v, K, d, at); });
  expect(6, [&](double* F, i64 d, i64* at) { return finites_trusses_forces(&t, 0, 2, v, F, d, at); });
  expect(576, [&](double* K, i64 d, i64* at) { return finites_solids_stiffness(s, 0, 2, K, d, at); });
  expect(24, [&](double* F, i64 d, i64* at) { return finites_solids_forces(s, 0, 2, v, F, d, at); });
  expect(24, [&](double* F, i64 d, i64* at) { return finites_solids_body_load(s, 0, 2, v, F, d, at); });
  expect(24, [&](double* F, i64 d, i64* at) { return finites_solids_temperature_load(s, 0, 2, v, F, d, at); });
}

// ------------------------------------------------------------------------------------------------ faults

// One brick among good ones, wherever it stands, and each of its nodes drawn through the opposite faces: a corner that
// is turned inside out, while the points inside are not.
TEST(BatchInputs, OneBadBrickIsFound) {
  brick_rows rows;
  for (std::int64_t e = 0; e < COUNT; ++e) {
    *rows.nu.of(e) = 0.5;
    expect_fault(rows.solids, FINITES_POISSON, e);
    rows.reset(e);
    *rows.density.of(e) = -1.0;
    expect_fault(rows.solids, FINITES_DENSITY, e);
    rows.reset(e);
    double* const node = rows.xyz.of(e) + 3 * (e % 8);
    for (int i = 0; i < 3; ++i) node[i] += node[i] > 0.5 ? -0.36 : 0.36;
    expect_fault(rows.solids, FINITES_DEGENERATE, e);
    rows.reset(e);
    for (int k = 0; k < 8; ++k) rows.xyz.of(e)[3 * k + 2] *= e % 2 == 0 ? -1.0 : 1e-30;  // inside out, or flat
    expect_fault(rows.solids, FINITES_DEGENERATE, e);
    rows.reset(e);
  }
}

// What all share is at fault in the first of the range.
TEST(BatchInputs, AFaultOfAllIsThatOfTheFirst) {
  brick_rows bricks;
  bricks.solids.common.stiffness_factor = -1.0;
  expect_fault(bricks.solids, FINITES_FACTOR, 0);

  plate_rows plates = rows_of(false, 78);
  plates.plates.common.shear_factor = -1.0;
  reals K(index_of(COUNT * 576), 3.5);
  std::int64_t failed = -7;
  EXPECT_EQ(finites_plates_stiffness(&plates.plates, 1, COUNT, K.data(), 576, &failed), FINITES_FACTOR);
  EXPECT_EQ(failed, 1);
  for (const double k : K) ASSERT_EQ(k, 3.5);
}

TEST(BatchInputs, OneBadVectorIsFound) {
  const plate_rows rows = rows_of(false, 79);
  reals F(index_of(COUNT * 24), 3.5);
  for (const bool of_local : {false, true}) {
    column global = filled(3), local = filled(3);
    (of_local ? local : global).of(6)[2] = NOT_A_NUMBER;
    std::int64_t failed = -7;
    EXPECT_EQ(finites_plates_surface_load(&rows.plates, 0, COUNT, global.all(), local.all(), F.data(), 24, &failed),
              FINITES_NAN);
    EXPECT_EQ(failed, 6);
  }
  for (const double f : F) ASSERT_EQ(f, 3.5);
}

// Inputs are at most 1e30 in size: a larger one of element 6, or of its vector, is told before anything is written.
TEST(BatchInputs, OneNumberAboveTheLimitIsFound) {
  constexpr double ABOVE = 1.1e30;
  reals out(index_of(COUNT * 576), 3.5);
  const auto expect_found = [&](const auto& batch, const char* what) {
    std::int64_t failed = -7;
    EXPECT_EQ(batch(out.data(), &failed), FINITES_RANGE) << what;
    EXPECT_EQ(failed, 6) << what;
    for (const double value : out) ASSERT_EQ(value, 3.5) << what;
  };

  finites_beams b{};
  finites_beam_init(&b.common);
  b.common.E = b.common.G = b.common.area = b.common.Iz = b.common.Iy = b.common.J = 1.0;
  b.count = COUNT;
  column xyz = filled(6), density = filled(1), u = filled(12), axial = filled(1);
  for (std::int64_t e = 0; e < COUNT; ++e) xyz.of(e)[3] = 1.0;
  b.xyz = xyz.all();
  b.density = density.all();
  const auto beams_with = [&](const char* what) {
    expect_found([&](double* K, std::int64_t* at) { return finites_beams_stiffness(&b, 0, COUNT, K, 144, at); }, what);
    expect_found([&](double* M, std::int64_t* at) { return finites_beams_mass(&b, 0, COUNT, 1, M, 144, at); }, what);
  };
  *density.of(6) = ABOVE;
  beams_with("density of a beam");
  *density.of(6) = 0.0;
  *density.of(COUNT - 1) = -ABOVE;
  {
    std::int64_t failed = -7;
    EXPECT_EQ(finites_beams_mass(&b, 0, COUNT, 0, out.data(), 144, &failed), FINITES_RANGE);
    EXPECT_EQ(failed, COUNT - 1);
    for (const double value : out) ASSERT_EQ(value, 3.5);
  }
  *density.of(COUNT - 1) = 0.0;
  xyz.of(6)[3] = ABOVE;
  beams_with("coordinate of a beam");
  xyz.of(6)[3] = 1.0;
  u.of(6)[11] = *axial.of(6) = -ABOVE;
  expect_found([&](double* F, std::int64_t* at) { return finites_beams_forces(&b, 0, COUNT, u.all(), F, 12, at); },
               "displacement of a beam");
  expect_found(
      [&](double* K, std::int64_t* at) {
        return finites_beams_geometric_of_force(&b, 0, COUNT, axial.all(), K, 144, at);
      },
      "axial force of a beam");
  expect_found([&](double* K, std::int64_t* at) { return finites_beams_geometric(&b, 0, COUNT, u.all(), K, 144, at); },
               "displacement of a beam, geometric");

  finites_trusses t{};
  t.common.E = t.common.area = 1.0;
  t.count = COUNT;
  t.xyz = xyz.all();
  column v6 = filled(6);
  v6.of(6)[5] = ABOVE;
  expect_found([&](double* F, std::int64_t* at) { return finites_trusses_forces(&t, 0, COUNT, v6.all(), F, 6, at); },
               "displacement of a truss");
  expect_found(
      [&](double* K, std::int64_t* at) {
        return finites_trusses_geometric_of_force(&t, 0, COUNT, axial.all(), K, 36, at);
      },
      "axial force of a truss");

  brick_rows rows;
  const finites_solids* const bricks = &rows.solids;
  column v = filled(24);
  v.of(6)[23] = ABOVE;
  expect_found([&](double* F, std::int64_t* at) { return finites_solids_forces(bricks, 0, COUNT, v.all(), F, 24, at); },
               "displacement of a brick");
  column load = filled(3), change = filled(1);
  load.of(6)[2] = *change.of(6) = ABOVE;
  expect_found(
      [&](double* F, std::int64_t* at) { return finites_solids_body_load(bricks, 0, COUNT, load.all(), F, 24, at); },
      "load of a brick");
  expect_found(
      [&](double* F, std::int64_t* at) {
        return finites_solids_temperature_load(bricks, 0, COUNT, change.all(), F, 24, at);
      },
      "temperature of a brick");
  expect_found(
      [&](double* K, std::int64_t* at) { return finites_solids_geometric(bricks, 0, COUNT, v.all(), K, 576, at); },
      "displacement of a brick, geometric");
  *rows.density.of(6) = ABOVE;
  expect_found([&](double* M, std::int64_t* at) { return finites_solids_mass(bricks, 0, COUNT, M, 576, at); },
               "density of a brick");
  expect_found([&](double* K, std::int64_t* at) { return finites_solids_stiffness(bricks, 0, COUNT, K, 576, at); },
               "density of a brick, stiffness");

  const plate_rows plates = rows_of(false, 80);
  std::vector<finites_plate_results> results(index_of(COUNT));
  std::int64_t failed = -7;
  EXPECT_EQ(finites_plates_result(&plates.plates, 0, COUNT, v.all(), finites_reals{}, results.data(), &failed),
            FINITES_RANGE);
  EXPECT_EQ(failed, 6);
}

// A beam without a finite answer says so in a batch as it does alone, before anything is written.
TEST(BatchInputs, ABeamWithoutAFiniteAnswerIsFound) {
  finites_beams b{};
  finites_beam_init(&b.common);
  b.common.xyz[1][0] = b.common.area = b.common.Iz = b.common.Iy = b.common.J = 1.0;
  b.common.E = 1e11;
  b.common.shear_area_y = b.common.shear_area_z = 1.0;
  b.count = COUNT;
  column G = filled(1);
  for (double& g : G.values) g = 1e10;
  b.G = G.all();
  reals K(index_of(COUNT * 144), 3.5);
  for (std::int64_t e = 0; e < COUNT; ++e) {
    *G.of(e) = 1e-300;
    finites_beam one = b.common;
    one.G = 1e-300;
    ASSERT_EQ(finites_beam_stiffness(&one, K.data()), FINITES_RESULT);
    std::int64_t failed = -7;
    EXPECT_EQ(finites_beams_stiffness(&b, 0, COUNT, K.data(), 144, &failed), FINITES_RESULT);
    EXPECT_EQ(failed, e);
    *G.of(e) = 1e10;
  }
  for (double finites_beam::*area : {&finites_beam::shear_area_y, &finites_beam::shear_area_z}) {
    b.common.*area = 1e-300;
    std::int64_t failed = -7;
    EXPECT_EQ(finites_beams_stiffness(&b, 2, COUNT, K.data(), 144, &failed), FINITES_RESULT);
    EXPECT_EQ(failed, 2);
    b.common.*area = 1.0;
  }
  for (const double k : K) ASSERT_EQ(k, 3.5);
}

// The closed form of the geometric stiffness of semi-rigid ends divides by
//
//     540 (E I)^2 a b + 24 (a - b) L^2 E I + (a + b - a b - 1) L^4
//
// with the fixities a = 1/4 and b = 0 and L = 1 that is 6 E I - 3/4, zero for E I = 1/8, in either plane.
TEST(BatchInputs, ASemiRigidBeamWithoutAFiniteGeometricStiffnessIsFound) {
  finites_beams b{};
  finites_beam_init(&b.common);
  b.common.xyz[1][0] = b.common.E = b.common.G = b.common.area = b.common.Iz = b.common.Iy = b.common.J = 1.0;
  b.count = COUNT;
  column I = filled(1), axial = filled(1), u = filled(12);
  for (std::int64_t e = 0; e < COUNT; ++e) *I.of(e) = *axial.of(e) = u.of(e)[6] = 1.0;
  reals K(index_of(COUNT * 144), 3.5);
  for (const std::int64_t at : {std::int64_t{0}, std::int64_t{8}, COUNT - 1}) {
    const bool of_y = at != 8;
    double(&fixity)[2] = of_y ? b.common.fixity_y : b.common.fixity_z;
    (of_y ? b.Iy : b.Iz) = I.all();
    fixity[0] = 0.25;
    fixity[1] = 0.0;
    *I.of(at) = 0.125;
    std::int64_t failed = -7;
    EXPECT_EQ(finites_beams_geometric_of_force(&b, 0, COUNT, axial.all(), K.data(), 144, &failed), FINITES_RESULT);
    EXPECT_EQ(failed, at);
    failed = -7;
    EXPECT_EQ(finites_beams_geometric(&b, 0, COUNT, u.all(), K.data(), 144, &failed), FINITES_RESULT);
    EXPECT_EQ(failed, at);
    for (const double k : K) ASSERT_EQ(k, 3.5);
    *I.of(at) = fixity[0] = fixity[1] = 1.0;
    b.Iy = b.Iz = finites_reals{};
  }
  EXPECT_EQ(finites_beams_geometric(&b, 0, COUNT, u.all(), K.data(), 144, nullptr), FINITES_OK);
}

// Trusses about the limits of their checks, likewise.
TEST(BatchInputs, TrussesAboutTheLimitsOfTheirChecks) {
  finites_trusses t{};
  t.common.E = t.common.area = t.common.density = 1.0;
  t.count = COUNT;
  int bad = 0, fine = 0;
  const auto compare = [&](const auto& spoil) {
    for (const std::int64_t at : {std::int64_t{0}, std::int64_t{7}, COUNT - 1}) {
      column xyz = filled(6), E = filled(1), area = filled(1), density = filled(1), pretension = filled(1);
      for (std::int64_t e = 0; e < COUNT; ++e) {
        xyz.of(e)[4] = *E.of(e) = *area.of(e) = *density.of(e) = 1.0;
        *pretension.of(e) = 0.5;
      }
      t.xyz = xyz.all();
      t.E = E.all();
      t.area = area.all();
      t.density = density.all();
      t.pretension = pretension.all();
      finites_truss one = t.common;
      one.xyz[1][1] = 1.0;
      one.pretension = 0.5;
      spoil(one);
      std::memcpy(xyz.of(at), one.xyz, sizeof one.xyz);
      *E.of(at) = one.E;
      *area.of(at) = one.area;
      *density.of(at) = one.density;
      *pretension.of(at) = one.pretension;
      for (const bool mass : {false, true}) {
        reals alone(36, 3.5), of_batch(index_of(COUNT * 36), 3.5);
        std::int64_t failed = -7;
        const finites_status expected =
            mass ? finites_truss_mass(&one, 0, alone.data()) : finites_truss_stiffness(&one, alone.data());
        EXPECT_EQ(mass ? finites_trusses_mass(&t, 0, COUNT, 0, of_batch.data(), 36, &failed)
                       : finites_trusses_stiffness(&t, 0, COUNT, of_batch.data(), 36, &failed),
                  expected);
        EXPECT_EQ(failed, expected == FINITES_OK ? -1 : at);
        EXPECT_EQ(std::memcmp(&of_batch[index_of(at * 36)], alone.data(), 36 * sizeof(double)), 0);
        EXPECT_EQ(of_batch[index_of(at == 0 ? 36 : 0)] == 3.5, expected != FINITES_OK);
        ++(expected == FINITES_OK ? fine : bad);
      }
    }
  };
  for (double finites_truss::*number :
       {&finites_truss::E, &finites_truss::area, &finites_truss::density, &finites_truss::pretension}) {
    for (const double value : {1e-310, 1e-29, 0.0, 1e11, 1e13, 1e29, 1.1e30, -1.0, -1.1e30, NOT_A_NUMBER})
      compare([&](finites_truss& one) { one.*number = value; });
  }
  for (int component = 0; component < 6; ++component) {
    for (const double value : {1e13, -1e29, 1.1e30, NOT_A_NUMBER})
      compare([&](finites_truss& one) { (&one.xyz[0][0])[component] = value; });
  }
  for (const double factor : {1e-3, 0.9, 1.1, 30.0}) {
    for (const double apart : {1e-14, 1e-13}) {
      compare([&](finites_truss& one) { one.xyz[0][1] = 1e9, one.xyz[1][1] = 1e9 * (1.0 + apart * factor); });
      compare([&](finites_truss& one) { one.xyz[1][1] = factor * apart, one.xyz[0][2] = one.xyz[1][2] = 1.0; });
    }
    for (const double length : {1e-30, 1e-8}) compare([&](finites_truss& one) { one.xyz[1][1] = length * factor; });
  }
  EXPECT_GT(bad, 100);
  EXPECT_GT(fine, 100);
}

// Beams about the limits of their checks: what a batch says of one among good ones is what its own call says, and
// nothing is written unless all of them are good.
TEST(BatchInputs, BeamsAboutTheLimitsOfTheirChecks) {
  finites_beams b{};
  finites_beam_init(&b.common);
  b.common.E = b.common.G = b.common.area = b.common.Iz = b.common.Iy = b.common.J = 1.0;
  b.common.density = 2.0;
  b.count = COUNT;
  column xyz = filled(6), up = filled(3), offset = filled(6);
  for (std::int64_t e = 0; e < COUNT; ++e) {
    xyz.of(e)[3] = 1.0;
    up.of(e)[2] = 1.0;
  }
  b.xyz = xyz.all();
  b.up = up.all();
  const reals good_xyz = xyz.values, good_up = up.values, none = offset.values;
  const auto compare = [&](std::int64_t at) {
    finites_beam one = b.common;
    std::memcpy(one.xyz, xyz.of(at), sizeof one.xyz);
    std::memcpy(one.up, up.of(at), sizeof one.up);
    std::memcpy(one.offset, offset.of(at), sizeof one.offset);
    b.offset = offset.values == none ? finites_reals{} : offset.all();
    const auto same = [&](const auto& call, const auto& batch) {
      reals alone(144, 3.5), of_batch(index_of(COUNT * 144), 3.5);
      std::int64_t failed = -7;
      const finites_status expected = call(alone.data());
      EXPECT_EQ(batch(of_batch.data(), &failed), expected);
      EXPECT_EQ(failed, expected == FINITES_OK ? -1 : at);
      EXPECT_EQ(std::memcmp(of_batch.data() + 144 * at, alone.data(), 144 * sizeof(double)), 0);
      EXPECT_EQ(of_batch[144] == 3.5, expected != FINITES_OK);
      return expected;
    };
    same([&](double* M) { return finites_beam_mass(&one, 0, M); },
         [&](double* M, std::int64_t* failed) { return finites_beams_mass(&b, 0, COUNT, 0, M, 144, failed); });
    const finites_status expected =
        same([&](double* K) { return finites_beam_stiffness(&one, K); },
             [&](double* K, std::int64_t* failed) { return finites_beams_stiffness(&b, 0, COUNT, K, 144, failed); });
    xyz.values = good_xyz;
    up.values = good_up;
    offset.values = none;
    return expected;
  };
  int bad = 0, fine = 0;
  const auto count = [&](finites_status status) { ++(status == FINITES_OK ? fine : bad); };
  for (const double factor : {1e-3, 0.3, 0.9, 1.1, 3.0, 30.0}) {
    for (const double sine : {1e-6, 1e-5}) {  // of the direction to the beam
      up.of(7)[0] = 1.0;
      up.of(7)[2] = sine * factor;
      count(compare(7));
    }
    for (const double apart : {1e-14, 1e-13}) {  // by the largest coordinate
      xyz.of(8)[0] = 1e9;
      xyz.of(8)[3] = 1e9 * (1.0 + apart * factor);
      count(compare(8));
    }
    for (const double length : {1e-30, 1e-8}) {
      xyz.of(9)[3] = length * factor;
      count(compare(9));
    }
    xyz.of(10)[3] = 1e12 * factor;  // numbers of ordinary size
    count(compare(10));
    up.of(11)[2] = 1e-8 * factor;  // a short direction is one
    count(compare(11));
    for (const double apart : {1e-16, 1e-15, 1e-13}) {  // offsets that draw the ends together
      offset.of(12)[0] = 0.5;
      offset.of(12)[3] = apart * factor - 0.5;
      count(compare(12));
    }
    for (const double size : {1e12, 1e30}) {
      offset.of(COUNT - 1)[4] = size * factor;
      count(compare(COUNT - 1));
      up.of(COUNT - 1)[1] = -size * factor;
      count(compare(COUNT - 1));
    }
  }
  for (double finites_beam::*number : {&finites_beam::E, &finites_beam::G, &finites_beam::area, &finites_beam::J,
                                       &finites_beam::E2, &finites_beam::shear_area_y, &finites_beam::expansion}) {
    for (const double value : {1e-310, 1e-13, 1e11, 1e13, 1e29, 1.1e30, 1e200, -1.0, NOT_A_NUMBER}) {
      b.common.*number = value;
      count(compare(0));
      b.common.*number =
          number == &finites_beam::shear_area_y || number == &finites_beam::E2 || number == &finites_beam::expansion
              ? 0.0
              : 1.0;
    }
  }
  for (double(finites_beam::*fixity)[2] : {&finites_beam::fixity_y, &finites_beam::fixity_z}) {
    for (const double value : {-1e-17, 0.0, 0.5, 1.0000001, NOT_A_NUMBER}) {
      (b.common.*fixity)[1] = value;
      count(compare(0));
      (b.common.*fixity)[1] = 1.0;
    }
  }
  EXPECT_GT(bad, 20);
  EXPECT_GT(fine, 50);
}

// Likewise bricks of nearly no volume: the determinant of a brick of edges 1, 1, t is t / 8, that of a cube of edges a
// a^3 / 8.
TEST(BatchInputs, BricksAboutTheLimitsOfTheirChecks) {
  brick_rows rows;
  finites_solids& b = rows.solids;
  const column good = rows.xyz;
  int bad = 0, fine = 0;
  for (const double det : {1e-20, 1e-19, 1e-16, 1e-11}) {
    for (const double factor : {1e-3, 0.1, 0.9, 1.1, 5.0, 9.0, 11.0}) {
      for (const bool flat : {true, false}) {
        rows.xyz = good;
        b.xyz = rows.xyz.all();
        const double t = 8.0 * det * factor, edge = flat ? 1.0 : std::cbrt(t), height = flat ? t : edge;
        const double corner[8][2] = {{0, 0}, {1, 0}, {1, 1}, {0, 1}, {0, 0}, {1, 0}, {1, 1}, {0, 1}};
        for (int n = 0; n < 8; ++n) {
          double* const x = rows.xyz.of(6) + 3 * n;
          x[0] = edge * corner[n][0];
          x[1] = edge * corner[n][1];
          x[2] = n < 4 ? 0.0 : height;
        }
        finites_solid one = b.common;
        std::memcpy(one.xyz, rows.xyz.of(6), sizeof one.xyz);
        one.E = *rows.E.of(6);
        one.nu = *rows.nu.of(6);
        one.density = *rows.density.of(6);
        reals alone(576, 3.5), of_batch(index_of(COUNT * 576), 3.5);
        std::int64_t failed = -7;
        const finites_status expected = finites_solid_stiffness(&one, alone.data());
        EXPECT_EQ(finites_solids_stiffness(&b, 0, COUNT, of_batch.data(), 576, &failed), expected) << det * factor;
        EXPECT_EQ(failed, expected == FINITES_OK ? -1 : 6);
        EXPECT_EQ(std::memcmp(&of_batch[6 * 576], alone.data(), 576 * sizeof(double)), 0) << det * factor;
        EXPECT_EQ(of_batch[0] == 3.5, expected != FINITES_OK);
        ++(expected == FINITES_OK ? fine : bad);
      }
    }
  }
  EXPECT_GT(bad, 5);
  EXPECT_GT(fine, 5);
}

// A wrong argument of the call is no fault of an element.
TEST(BatchInputs, ABadCodeBelongsToTheCall) {
  finites_beams b{};
  finites_beam_init(&b.common);
  b.common.xyz[1][0] = b.common.E = b.common.G = b.common.area = b.common.Iz = b.common.Iy = b.common.J = 1.0;
  b.count = 1;
  reals M(144);
  std::int64_t failed = 7;
  EXPECT_EQ(finites_beams_mass(&b, 0, 1, 2, M.data(), 144, &failed), FINITES_BAD_CODE);
  EXPECT_EQ(failed, -1);
}

// In free expansion a brick has no stress; with the temperature left out it would have E alpha T / (1 - 2 nu).
TEST(BatchInputs, TheTemperatureOfSolidsReachesTheirResults) {
  brick_rows rows;
  rows.solids.common.expansion = 1e-3;
  reals u(24);
  for (std::size_t i = 0; i < 24; ++i) u[i] = 1e-3 * 20.0 * (&rows.solids.common.xyz[0][0])[i];
  std::vector<finites_solid_results> results(index_of(COUNT));
  ASSERT_EQ(finites_solids_result(&rows.solids, 0, COUNT, {u.data(), 0}, 20.0, results.data(), nullptr), FINITES_OK);
  for (const finites_solid_results& r : results) {
    for (const auto& point : r.point) {
      for (const double s : point.stress) EXPECT_NEAR(s, 0.0, 1e-12 * 200.0 * 1e-3 * 20.0 * 100.0);
    }
  }
}
