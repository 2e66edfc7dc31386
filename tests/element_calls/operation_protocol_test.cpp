// operation_protocol_test.cpp: what each operation of FINITES writes, what it leaves as it was, and the few numbers
// that the entry itself makes (densities, the geometry of operation 8, the replies of operation 9).
#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <cstring>
#include <vector>

#include "comparison.h"
#include "finites/finites.h"
#include "plate_calls.h"
#include "random_shapes.h"

namespace {

using plate_calls::call;
using plate_calls::label;
using plate_calls::outputs;
using plate_calls::plate_description;
using plate_calls::plate_model;
using support::leading_block;
using support::range;
using support::seeded_random;

const std::vector<int> NOTHING;

std::vector<int> shifted(const std::vector<int>& positions, int by) {
  std::vector<int> out;
  for (const int p : positions) out.push_back(p + by);
  return out;
}

// Nine numbers for every operation that reads data.
std::vector<double> some_data() { return {0.9, 0.7, 0.5, -1.5, 2.5, 3.5, 0.25, -0.75, 1.25}; }

// All an operation may write beside PLATEELEM and the plate record.
struct permission {
  std::vector<int> data, forces, matrix, exchange;
};

void expect_written(const plate_description& description, int op, const permission& allowed) {
  plate_model model({description});
  seeded_random random(51);
  model.set_displacements(random.vector(18, 1e-3));
  plate_calls::poison_exchange(model);
  const int base = plate_calls::exchange_start(model);
  const plate_calls::snapshot before(model);
  const outputs out = call(model, op, 1, some_data());
  const std::string where = label(description) + ", operation " + std::to_string(op);
  EXPECT_EQ(out.data.changed(), allowed.data) << where;
  EXPECT_EQ(out.forces.changed(), allowed.forces) << where;
  EXPECT_EQ(out.matrix.changed(), allowed.matrix) << where;
  EXPECT_EQ(before.changed(), shifted(allowed.exchange, base)) << where;
}

void expect_written_by_all(const std::vector<int>& operations, const permission& allowed) {
  for (const plate_description& d : plate_calls::elastic_triangles()) {
    for (const int op : operations) expect_written(d, op, allowed);
  }
}

std::vector<double> forces_of(outputs& out) { return support::values(out.forces.data(), 24); }

// Triangle of area 1.5 in the plane z = 0.
plate_description flat() { return plate_calls::isotropic(plate_calls::flat_triangle()); }

}  // namespace

// ------------------------------------------------------------------------------------------------ written and left

TEST(OperationWrites, MatrixOperationsTheLeadingBlockAlone) {
  expect_written_by_all({1, 2, 7, 71}, {NOTHING, NOTHING, leading_block(18, 24), NOTHING});
}

TEST(OperationWrites, LoadOperationsTwentyFourForces) {
  expect_written_by_all({4, 41, 401, 10}, {NOTHING, range(1, 24), NOTHING, NOTHING});
}

TEST(OperationWrites, ForceOperationsTheForcesOfTheExchangeArea) {
  expect_written_by_all({3, 33}, {NOTHING, NOTHING, NOTHING, range(24, 47)});
}

TEST(OperationWrites, ResultsTwoTimesFourRecordsOfTheExchangeArea) {
  expect_written_by_all({5}, {NOTHING, NOTHING, NOTHING, range(48, 767)});
}

TEST(OperationWrites, PointLocationItsReply) { expect_written_by_all({9}, {range(10, 12), NOTHING, NOTHING, NOTHING}); }

TEST(OperationWrites, GeometryThreeFieldsOfThePlateRecord) {
  expect_written_by_all({8}, {NOTHING, NOTHING, NOTHING, NOTHING});
  plate_model model({flat(), flat()});
  model.plate(1).NODE_OFFSETS(2, 3) = 5.0;
  const PLATE_RECORD before = model.plate(1), other = model.plate(2);
  call(model, 8, 1);
  PLATE_RECORD after = model.plate(1);
  EXPECT_NE(after.AREA, before.AREA);
  after.AREA = before.AREA;
  after.WEIGHT = before.WEIGHT;
  after.FACTORED_WEIGHT = before.FACTORED_WEIGHT;
  EXPECT_EQ(std::memcmp(&after, &before, sizeof after), 0);
  EXPECT_EQ(std::memcmp(&model.plate(2), &other, sizeof other), 0);
}

TEST(OperationWrites, OnlyGeometryTouchesThePlateRecord) {
  for (const int op : {1, 2, 3, 33, 4, 41, 401, 5, 7, 71, 9, 10, 6, 0, 12}) {
    plate_model model({flat()});
    model.plate(1).AREA = 1.25F;
    const PLATE_RECORD before = model.plate(1);
    call(model, op, 1, some_data());
    EXPECT_EQ(std::memcmp(&model.plate(1), &before, sizeof before), 0) << "operation " << op;
  }
}

TEST(OperationWrites, OtherCodesNothing) {
  expect_written_by_all({0, 6, 11, 12, 34, 40, 42, 70, 72, 400, 402, 999, -1, -33, INT_MAX, INT_MIN},
                        {NOTHING, NOTHING, NOTHING, NOTHING});
}

TEST(OperationWrites, OtherCodesStillPreparePlateelem) {
  plate_model model({flat()});
  PLATEELEM.E1 = -1.0;
  call(model, 6, 1);
  EXPECT_EQ(PLATEELEM.E1, 2.1e5);
  EXPECT_EQ(PLATEELEM.ELEM_KIND, 10);
}

TEST(OperationWrites, TheCodeOfTwoOperationsOnly) {
  for (const int op : {1, 2, 3, 33, 4, 5, 7, 71, 8, 9, 10, 0, 6, 999, -41}) {
    plate_model model({flat()});
    EXPECT_EQ(call(model, op, 1, some_data()).op, op);
  }
}

TEST(OperationReads, NotTheExtentOfTheModel) {
  std::vector<double> first;
  for (const std::int32_t extent : {0, -1, INT_MAX}) {
    plate_model model({flat()});
    support::guarded_buffer data(12), forces(24), matrix(24 * 24);
    std::int32_t op = 1;
    const std::int32_t elem = 1, k = model.block(1);
    FINITES(&op, &elem, &k, model.raw(), &extent, data.data(), forces.data(), matrix.data());
    const std::vector<double> K = support::values(matrix.data(), 18);
    if (first.empty()) first = K;
    EXPECT_EQ(K, first);
  }
}

// An argument that an operation does not use may be anything, also no array at all.
TEST(OperationReads, NotTheArraysItHasNoUseFor) {
  plate_model model({flat()});
  support::guarded_buffer data(12), forces(24), matrix(24 * 24);
  data.set_input(some_data());
  for (const int op : {1, 2, 7, 71}) model.call(op, 1, nullptr, nullptr, matrix.data());
  for (const int op : {3, 33, 8, 6}) model.call(op, 1, nullptr, nullptr, nullptr);
  for (const int op : {4, 41, 401, 10}) model.call(op, 1, data.data(), forces.data(), nullptr);
  for (const int op : {5, 9}) model.call(op, 1, data.data(), nullptr, nullptr);
  EXPECT_EQ(matrix.changed(), leading_block(18, 24));
}

// ------------------------------------------------------------------------------------------------ loads

TEST(OperationLoads, AreZeroBehindTheThirdNodeOfATriangle) {
  for (const plate_description& d : plate_calls::elastic_triangles()) {
    for (const int op : {4, 41, 401, 10}) {
      plate_model model({d});
      outputs out = call(model, op, 1, some_data());
      for (int i = 19; i <= 24; ++i) EXPECT_EQ(out.forces(i), 0.0) << label(d) << ", operation " << op;
    }
  }
}

// Each operation reads the values named for it and no more: the rest of data is NaN.
TEST(OperationLoads, ReadTheirOwnParametersOnly) {
  const struct { int op, count; } cases[] = {{4, 6}, {41, 3}, {401, 2}, {10, 9}, {5, 2}, {9, 3}};
  for (const auto& c : cases) {
    plate_model model({plate_calls::orthotropic(plate_calls::space_triangle())});
    std::vector<double> data = some_data();
    data.resize(static_cast<std::size_t>(c.count));
    outputs out = call(model, c.op, 1, data);
    if (c.op == 5) {
      for (int i = 48; i < 768; ++i) EXPECT_TRUE(std::isfinite(model.A()(plate_calls::exchange_start(model) + i)));
    } else if (c.op == 9) {
      EXPECT_TRUE(std::isfinite(out.data(12)));
    } else {
      for (const double f : forces_of(out)) EXPECT_TRUE(std::isfinite(f)) << "operation " << c.op;
    }
  }
}

TEST(OperationLoads, BodyForceActsOnTheVolume) {
  plate_model model({flat()});
  outputs out = call(model, 41, 1, {3.0, -5.0, 7.0});
  const double volume = 1.5 * 0.12;
  for (int i = 1; i <= 3; ++i) {
    const double total = out.forces(i) + out.forces(i + 6) + out.forces(i + 12);
    const double expected[3] = {3.0 * volume, -5.0 * volume, 7.0 * volume};
    EXPECT_CLOSE(total, expected[i - 1], 7.0 * volume, 20.0);
  }
}

TEST(OperationLoads, SurfaceLoadActsOnTheAreaInItsAxes) {
  const plate_description d = plate_calls::isotropic(plate_calls::space_triangle());
  plate_model model({d});
  const double area = [&] {
    call(model, 8, 1);
    return static_cast<double>(model.plate(1).AREA);
  }();
  // Local pressure along the normal, and the same as a global load: the same forces.
  const std::vector<double> local = model.loads(4, 1, {0, 0, 0, 0, 0, 2.0});
  std::vector<double> total(3, 0.0);
  for (std::size_t n = 0; n < 3; ++n) {
    for (std::size_t i = 0; i < 3; ++i) total[i] += local[6 * n + i];
  }
  EXPECT_WITHIN(std::sqrt(support::dot(total, total)), 2.0 * area, 2.0 * area, 1e-6);  // the area has single precision
  const std::vector<double> global =
      model.loads(4, 1, {total[0] / area, total[1] / area, total[2] / area, 0.0, 0.0, 0.0});
  EXPECT_WITHIN(global, local, support::max_norm(local), 1e-6);
}

// Element axes of this triangle: x along the global y, y against the global x, z the same.
TEST(OperationLoads, PointForceIsTheSumOfItsGlobalAndItsLocalPart) {
  plate_model model({plate_calls::isotropic({{1.0, 1.0, 0.0}, {1.0, 3.0, 0.0}, {-1.0, 1.5, 0.0}})});
  outputs out = call(model, 10, 1, {0.5, 1.6, 0.0, 2.0, 3.0, 5.0, 7.0, 11.0, 13.0});
  const double expected[3] = {2.0 - 11.0, 3.0 + 7.0, 5.0 + 13.0};
  for (int i = 1; i <= 3; ++i) {
    EXPECT_CLOSE(out.forces(i) + out.forces(i + 6) + out.forces(i + 12), expected[i - 1], 18.0, 20.0);
  }
}

TEST(OperationLoads, TemperatureNeedsTheMaterialAndGetsIt) {
  plate_model model({plate_calls::orthotropic(plate_calls::space_triangle())});
  call(model, 401, 1, {10.0, 0.0});
  EXPECT_EQ(PLATEELEM.MAT_BEHAV, 1);
  EXPECT_EQ(PLATEELEM.THERMAL_M1, 1.1000000085914508e-05 * 10.0);
  EXPECT_EQ(PLATEELEM.THERMAL_B1, 0.0);
}

// ------------------------------------------------------------------------------------------------ mass and geometry

TEST(OperationMass, IsWeightOverNineThousandEightHundredTenTimesTheFactor) {
  plate_description d = flat();
  d.unit_weight = 0.0765;
  d.mass_factor = 1.7;
  plate_model model({d});
  const std::vector<double> M = model.mass(1);
  const double mass = 0.0765 / 9810.0 * 1.7 * 1.5 * 0.12;
  for (std::size_t direction = 0; direction < 3; ++direction) {
    double total = 0.0;
    for (std::size_t i = direction; i < 18; i += 6) {
      for (std::size_t j = direction; j < 18; j += 6) total += M[18 * j + i];
    }
    EXPECT_CLOSE(total, mass, mass, 50.0);
  }
}

TEST(OperationMass, WithoutWeightIsZero) {
  plate_description d = flat();
  d.unit_weight = 0.0;
  plate_model model({d});
  outputs out = call(model, 2, 1);
  EXPECT_EQ(out.matrix.changed(), leading_block(18, 24));
  EXPECT_EQ(support::max_norm(support::values(out.matrix.data(), 18)), 0.0);
}

// Operations 2 and 8 resolve no material, so the unit weight of a composite section does not reach them.
TEST(OperationMass, OfACompositeSectionHasTheWeightOfTheMaterialBlock) {
  const plate_description comp = plate_calls::composite(plate_calls::flat_triangle());
  ASSERT_NE(static_cast<double>(comp.composite.UNIT_WEIGHT), comp.unit_weight);
  plate_description plain = flat();
  std::vector<double> M;
  {
    plate_model model({plain});
    M = model.mass(1);
  }
  plate_model model({comp});
  EXPECT_EQ(model.mass(1), M);
  call(model, 8, 1);
  EXPECT_EQ(model.plate(1).WEIGHT, static_cast<float>(1.5 * 0.12 * comp.unit_weight));
}

TEST(OperationGeometry, StoresAreaAndWeightInSinglePrecision) {
  plate_description d = flat();
  d.thickness = 0.1;
  d.unit_weight = 0.3;
  plate_model model({d});
  call(model, 8, 1);
  EXPECT_EQ(model.plate(1).AREA, 1.5F);
  EXPECT_EQ(model.plate(1).WEIGHT, static_cast<float>(1.5 * 0.1 * 0.3));
}

// The double product is narrowed: not the narrowed weight multiplied. Factors are looked for where that shows.
TEST(OperationGeometry, FactoredWeightIsTheNarrowedDoubleProduct) {
  seeded_random random(52);
  int shows = 0;
  for (int i = 0; i < 200; ++i) {
    plate_description d = flat();
    d.unit_weight = random.uniform(0.1, 1.0);
    d.mass_factor = random.uniform(1.0, 2.0);
    plate_model model({d});
    call(model, 8, 1);
    const double weight = 1.5 * d.thickness * d.unit_weight;
    const volatile float narrowed = static_cast<float>(weight);
    const float expected = static_cast<float>(weight * d.mass_factor);
    EXPECT_EQ(model.plate(1).WEIGHT, narrowed);
    EXPECT_EQ(model.plate(1).FACTORED_WEIGHT, expected);
    if (expected != static_cast<float>(static_cast<double>(narrowed) * d.mass_factor)) ++shows;
  }
  EXPECT_GT(shows, 10);
}

TEST(OperationPoint, RepliesWithFlagsAsRealsAndASignedDistance) {
  plate_model model({flat()});
  outputs on = call(model, 9, 1, {0.8, 0.5, 0.0});
  EXPECT_EQ(on.data(10), 0.0);
  EXPECT_EQ(on.data(11), 0.0);
  EXPECT_EQ(on.data(12), 0.0);
  outputs above = call(model, 9, 1, {0.8, 0.5, 0.75});
  EXPECT_EQ(above.data(10), 0.0);
  EXPECT_EQ(above.data(11), 1.0);
  EXPECT_CLOSE(above.data(12), 0.75, 1.0, 4.0);
  outputs beside = call(model, 9, 1, {-0.8, 0.5, -0.75});
  EXPECT_EQ(beside.data(10), 1.0);
  EXPECT_CLOSE(beside.data(12), -0.75, 1.0, 4.0);
}

// ------------------------------------------------------------------------------------------------ named cases

TEST(OperationEdgeCases, StiffnessOfATriangleLeavesRowsAndColumnsNineteenToTwentyFour) {
  plate_model model({flat()});
  outputs out = call(model, 1, 1);
  for (int j = 1; j <= 24; ++j) {
    for (int i = 1; i <= 24; ++i) EXPECT_EQ(out.matrix.changed((j - 1) * 24 + i), i <= 18 && j <= 18) << i << ", " << j;
  }
}

TEST(OperationEdgeCases, BodyAndTemperatureLoadsComeBackAsFour) {
  plate_model model({flat()});
  EXPECT_EQ(call(model, 41, 1, {1.0, 2.0, 3.0}).op, 4);
  EXPECT_EQ(call(model, 401, 1, {1.0, 2.0}).op, 4);
}

// A caller that takes the variable again asks for a surface load.
TEST(OperationEdgeCases, ACallerThatReusesTheCodeGetsASurfaceLoad) {
  plate_model model({flat()});
  support::guarded_buffer data(12), forces(24), matrix(24 * 24);
  data.set_input({1.0, 2.0, 3.0, 0.0, 0.0, 0.0});
  std::int32_t op = 41;
  const std::int32_t elem = 1, k = model.block(1), n = model.extent();
  FINITES(&op, &elem, &k, model.raw(), &n, data.data(), forces.data(), matrix.data());
  const std::vector<double> body = support::values(forces.data(), 18);
  FINITES(&op, &elem, &k, model.raw(), &n, data.data(), forces.data(), matrix.data());
  const std::vector<double> again = support::values(forces.data(), 18);
  EXPECT_EQ(again, model.loads(4, 1, {1.0, 2.0, 3.0, 0.0, 0.0, 0.0}));
  EXPECT_NE(again, body);
}
