// solids_doors_test.cpp: the plain calls of solids give the bits of the protocol.
#include <gtest/gtest.h>

#include <cstring>

#include "finites/finites.h"
#include "solids_support.h"

namespace {

using plain_solids::described;
using plain_solids::random_solid;
using support::point;
using support::seeded_random;
using support::solid_model;

constexpr int ELEMENTS = 2000;

bool same_bits(const std::vector<double>& a, const std::vector<double>& b) {
  return a.size() == b.size() && std::memcmp(a.data(), b.data(), a.size() * sizeof(double)) == 0;
}

// The protocol integrates a tetrahedron with six times its volume.
std::vector<double> true_size(std::vector<double> values, const finites_solid& solid) {
  for (double& value : values) value = solid.nodes == 4 ? value / 6.0 : value;
  return values;
}

std::vector<double> negative(std::vector<double> values) {
  for (double& value : values) value = -value;
  return values;
}

// Strains, stresses and von Mises of the records against those of the points. The records take the principal stresses
// with a root of 2 of single precision, whose error of 2e-8 grows to its root where two are nearly equal.
void expect_same_records(const finites_solid_point* at, const double* record, int count) {
  for (int k = 0; k < count; ++k, record += 50) {
    EXPECT_EQ(std::memcmp(at[k].strain, record + WORD_STRAIN - 1, 6 * sizeof(double)), 0) << k;
    EXPECT_EQ(std::memcmp(at[k].stress, record + WORD_STRESS - 1, 6 * sizeof(double)), 0) << k;
    EXPECT_EQ(std::memcmp(&at[k].von_mises, record + WORD_MISES - 1, sizeof(double)), 0) << k;
    for (int i = 0; i < 3; ++i) {
      EXPECT_NEAR(at[k].principal[i], record[WORD_PRINCIPAL - 1 + i], 1e-3 * at[k].von_mises) << k;
    }
  }
}

finites_solid next_solid(seeded_random& random, int e) {
  return random_solid(random, plain_solids::NODE_COUNTS[static_cast<std::size_t>(e % 3)]);
}

}  // namespace

TEST(SolidsBothDoors, Matrices) {
  seeded_random random(9101);
  for (int e = 0; e < ELEMENTS; ++e) {
    const finites_solid solid = next_solid(random, e);
    const std::vector<double> u = random.vector(3 * solid.nodes, 1e-2);
    solid_model model({described(solid)});
    model.set_displacements(1, u);
    EXPECT_TRUE(same_bits(plain_solids::stiffness(solid), true_size(model.matrix(1), solid))) << e;
    EXPECT_TRUE(same_bits(plain_solids::mass(solid), true_size(model.matrix(2), solid))) << e;
    EXPECT_TRUE(same_bits(plain_solids::geometric(solid, u), negative(true_size(model.matrix(7), solid)))) << e;
  }
}

TEST(SolidsBothDoors, GeometricStiffnessOfStresses) {
  seeded_random random(9102);
  for (int e = 0; e < ELEMENTS; ++e) {
    const finites_solid solid = next_solid(random, e);
    solid_model model({described(solid)});
    model.allocate_nonlinear();
    std::vector<std::array<double, 6>> stress(solid.nodes == 4 ? 1 : static_cast<std::size_t>(solid.nodes));
    for (std::size_t p = 0; p < stress.size(); ++p) {
      for (std::size_t i = 0; i < 6; ++i) {
        stress[p][i] = random.uniform(-100, 100);
        model.nonlinear().GAUSS_STRESS(static_cast<int>(i) + 1, static_cast<int>(p) + 1) = stress[p][i];
      }
    }
    EXPECT_TRUE(same_bits(plain_solids::geometric_of_stresses(solid, stress), true_size(model.matrix(71), solid))) << e;
  }
}

TEST(SolidsBothDoors, ForcesAndLoads) {
  seeded_random random(9103);
  for (int e = 0; e < ELEMENTS; ++e) {
    const finites_solid solid = next_solid(random, e);
    const std::vector<double> u = random.vector(3 * solid.nodes, 1e-2);
    const point load{random.uniform(-1, 1), random.uniform(-1, 1), random.uniform(-1, 1)};
    solid_model model({described(solid)});
    EXPECT_TRUE(same_bits(plain_solids::forces(solid, u), true_size(model.forces(3, 1, u), solid))) << e;
    EXPECT_TRUE(same_bits(plain_solids::body_load(solid, load), true_size(model.body_load(1, load), solid))) << e;
  }
}

TEST(SolidsBothDoors, ResultsAndAxes) {
  seeded_random random(9104);
  for (int e = 0; e < ELEMENTS; ++e) {
    const finites_solid solid = next_solid(random, e);
    const std::vector<double> u = random.vector(3 * solid.nodes, 1e-2);
    solid_model model({described(solid)});
    ASSERT_EQ(model.results(1, u).ierr, 0);
    const finites_solid_results results = plain_solids::results(solid, u);
    ASSERT_EQ(results.nodes, solid.nodes);
    ASSERT_EQ(results.points, solid.nodes == 4 ? 1 : solid.nodes);
    expect_same_records(results.node, model.record().RES50_NODE.data(), results.nodes);
    expect_same_records(results.point, model.record().RES50_GAUSS.data(), results.points);

    double by_columns[9];
    const std::int32_t elem = 1, extent = model.extent();
    std::int32_t nodes = 0;
    TRFA_3DSOLID(&elem, &nodes, model.raw(), &extent, by_columns);
    const finites_solid_measures measures = plain_solids::measures(solid);
    for (int a = 0; a < 3; ++a) {
      for (int i = 0; i < 3; ++i) EXPECT_EQ(measures.axes[a][i], by_columns[3 * i + a]);
    }
  }
}

// The process-wide records belong to a solver: whatever they hold, the plain calls neither read nor write them.
TEST(SolidsBothDoors, TheRecordsOfASolverStayAsTheyAre) {
  seeded_random random(9105);
  solid_model model({described(random_solid(random, 8))});
  model.allocate_nonlinear();
  const SOLANAELEM_RECORD elements = SOLANAELEM;
  const SOLANA_RECORD analysis = SOLANA;
  const SOLID_RECORD record = model.record();
  const SOLID_NL_RECORD stored = model.nonlinear();
  const std::vector<double> storage = model.storage();
  for (const int nodes : plain_solids::NODE_COUNTS) {
    const finites_solid solid = random_solid(random, nodes);
    const std::vector<double> u = random.vector(3 * nodes, 1e-2);
    plain_solids::stiffness(solid);
    plain_solids::mass(solid);
    plain_solids::geometric(solid, u);
    plain_solids::geometric_of_stresses(solid, {8, {1, 2, 3, 4, 5, 6}});
    plain_solids::forces(solid, u);
    plain_solids::body_load(solid, {1, 2, 3});
    plain_solids::temperature_load(solid, 20.0);
    plain_solids::face_load(solid, 1, {1, 2, 3}, 4.0);
    plain_solids::measures(solid);
    plain_solids::results(solid, u, 20.0);
  }
  EXPECT_EQ(std::memcmp(&elements, &SOLANAELEM, sizeof elements), 0);
  EXPECT_EQ(std::memcmp(&analysis, &SOLANA, sizeof analysis), 0);
  EXPECT_EQ(std::memcmp(&record, &model.record(), sizeof record), 0);
  EXPECT_EQ(std::memcmp(&stored, &model.nonlinear(), sizeof stored), 0);
  EXPECT_TRUE(same_bits(storage, model.storage()));
}
