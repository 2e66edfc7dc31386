// plate_state_test.cpp: what FINITES takes from the persistent state of a plate: stored forces for the geometric
// stiffness, and when that belongs to the stiffness.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <vector>

#include "comparison.h"
#include "element_calls/plate_call.h"
#include "finites/fields.h"
#include "plate_calls.h"
#include "random_shapes.h"
#include "shells/engines/plate_element_dispatch.h"

namespace {

using plate_calls::label;
using plate_calls::plate_description;
using plate_calls::plate_model;
using support::seeded_random;

constexpr std::size_t ORDER = 18;

std::vector<double> random_stored(seeded_random& random) { return random.vector(24, 50.0); }

void store_forces(plate_model& model, const std::vector<double>& forces) {
  model.allocate_state();
  std::copy(forces.begin(), forces.end(), model.state(1).STORED_NODAL_FORCES.data());
}

std::vector<double> minus(std::vector<double> a, const std::vector<double>& b) {
  for (std::size_t i = 0; i < a.size(); ++i) a[i] -= b[i];
  return a;
}

// The geometric stiffness of constant membrane forces (Nx, Ny, Nxy) on a triangle of the plane z = 0 whose first side
// is the x axis: the integral of grad N_a . N . grad N_b, the same for u, v and w.
std::vector<double> geometric_by_hand(const std::vector<support::point>& nodes, double Nx, double Ny, double Nxy) {
  const double x[3] = {nodes[0][0], nodes[1][0], nodes[2][0]}, y[3] = {nodes[0][1], nodes[1][1], nodes[2][1]};
  const double two_area = (x[1] - x[0]) * (y[2] - y[0]) - (x[2] - x[0]) * (y[1] - y[0]);
  std::vector<double> K(ORDER * ORDER, 0.0);
  for (std::size_t a = 0; a < 3; ++a) {
    const std::size_t a2 = (a + 1) % 3, a3 = (a + 2) % 3;
    const double ax = (y[a2] - y[a3]) / two_area, ay = (x[a3] - x[a2]) / two_area;
    for (std::size_t b = 0; b < 3; ++b) {
      const std::size_t b2 = (b + 1) % 3, b3 = (b + 2) % 3;
      const double bx = (y[b2] - y[b3]) / two_area, by = (x[b3] - x[b2]) / two_area;
      const double k = 0.5 * two_area * (Nx * ax * bx + Ny * ay * by + Nxy * (ax * by + ay * bx));
      for (std::size_t i = 0; i < 3; ++i) K[ORDER * (6 * b + i) + 6 * a + i] = k;
    }
  }
  return K;
}

struct run_state {
  int second_order, analysis_state, step_counter;
  bool geometric;
};

}  // namespace

TEST(PlateState, StoredForcesOfTheFirstPointMakeTheGeometricStiffness) {
  seeded_random random(71);
  for (const int formulation : {1, 2}) {
    for (const bool general : {false, true}) {
      const std::vector<support::point> nodes = plate_calls::flat_triangle();
      plate_model model(
          {general ? plate_calls::orthotropic(nodes, formulation) : plate_calls::isotropic(nodes, formulation)});
      const std::vector<double> stored = random_stored(random);
      store_forces(model, stored);
      std::vector<double> expected = geometric_by_hand(nodes, stored[0], stored[1], stored[2]);
      const double scale = support::max_norm(expected);
      const std::vector<double> alone = model.matrix(71, 1), without = model.matrix(1, 1);
      model.set_header(SECOND_ORDER, 1);
      const std::vector<double> with = model.matrix(1, 1);
      // The stiffness rounds what is added to it.
      EXPECT_CLOSE(minus(with, without), expected, support::max_norm(without), 4.0);
      for (double& entry : expected) entry = -entry;
      EXPECT_CLOSE(alone, expected, scale, 50.0) << "operation 71 returns minus the geometric stiffness";
    }
  }
}

// The entry's copy of the stored forces against an engine that gets the columns 37 to 42 of each block from here.
TEST(PlateState, StoredForcesStandInColumnsThirtySevenToFortyTwoOfEachPoint) {
  seeded_random random(72);
  for (const plate_description& d : plate_calls::elastic_triangles()) {
    plate_model model({d});
    const std::vector<double> stored = random_stored(random);
    store_forces(model, stored);
    const std::vector<double> K = model.matrix(71, 1);

    PLATE_CALL call(PLATEELEM, model.raw(), 71, 1, model.block(1));
    prepare_plate(call);
    std::vector<double> points(360, 0.0), nodes(360, 0.0), U(24, 0.0), F(24, 0.0), matrix(ORDER * ORDER, 0.0);
    for (std::size_t p = 0; p < 4; ++p) {
      for (std::size_t i = 0; i < 6; ++i) points[90 * p + 36 + i] = stored[6 * p + i];
    }
    MATRIX<3, 3> AXES{};
    double area = 0.0, volume = 0.0, weight = 0.0, distance = 0.0;
    int flag1 = 0, flag2 = 0;
    PLATE_ELEMENT_DISPATCH(PLATEELEM, call.ident, PLATEELEM.ELEM_KIND, 71, call.xyz, call.LOADS, U.data(), F.data(),
                           call.record->NODE_PTR, 0, U.data(), matrix.data(), nodes.data(), points.data(), AXES, area,
                           volume, weight, flag1, flag2, distance, NO_PLATE_STATE, static_cast<int>(ORDER));
    EXPECT_EQ(K, matrix) << label(d);
  }
}

TEST(PlateState, OfThePlateNotOfTheElementNumber) {
  const plate_description d = plate_calls::isotropic(plate_calls::flat_triangle());
  plate_model model({d, d});
  model.allocate_state();
  model.state(1).STORED_NODAL_FORCES(1, 1) = 10.0;
  EXPECT_GT(support::max_norm(model.matrix(71, 1)), 0.0);
  EXPECT_EQ(support::max_norm(model.matrix(71, 2)), 0.0);
}

TEST(PlateState, GeometricTermByAnalysisAndPass) {
  const run_state cases[] = {
      {1, 0, 0, true},  {1, 0, 5, true},   {1, 1, 1, true},  {1, 1, 7, true},   // second order
      {1, 2, 0, true},                                                          // no incremental run
      {1, 1, 0, false},                                                         // the very first pass
      {0, 0, 0, false}, {0, 1, 1, false},  {2, 0, 0, false}, {3, 0, 0, false},  // other analyses
      {3, 1, 1, false}, {-1, 0, 0, false},
  };
  seeded_random random(73);
  for (const plate_description& d : plate_calls::elastic_triangles()) {
    plate_model model({d});
    store_forces(model, random_stored(random));
    const std::vector<double> elastic = model.matrix(1, 1);
    for (const run_state& c : cases) {
      model.set_header(SECOND_ORDER, c.second_order);
      model.set_header(ANALYSIS_STATE, c.analysis_state);
      model.set_header(STEP_COUNTER, c.step_counter);
      EXPECT_EQ(model.matrix(1, 1) != elastic, c.geometric)
          << label(d) << ", SECOND_ORDER " << c.second_order << ", ANALYSIS_STATE " << c.analysis_state
          << ", STEP_COUNTER " << c.step_counter;
    }
  }
}

// Operation 71 is asked for the term alone and gives it whatever the analysis.
TEST(PlateState, GeometricTermAloneDoesNotDependOnTheAnalysis) {
  seeded_random random(74);
  plate_model model({plate_calls::isotropic(plate_calls::space_triangle())});
  store_forces(model, random_stored(random));
  const std::vector<double> K = model.matrix(71, 1);
  EXPECT_GT(support::max_norm(K), 0.0);
  model.set_header(SECOND_ORDER, 3);
  EXPECT_EQ(model.matrix(71, 1), K);
  model.set_header(SECOND_ORDER, 1);
  model.set_header(ANALYSIS_STATE, 1);
  EXPECT_EQ(model.matrix(71, 1), K);
}

TEST(PlateState, MassHasNoGeometricTerm) {
  seeded_random random(75);
  plate_model model({plate_calls::isotropic(plate_calls::space_triangle())});
  const std::vector<double> M = model.mass(1);
  store_forces(model, random_stored(random));
  model.set_header(SECOND_ORDER, 1);
  EXPECT_EQ(model.mass(1), M);
}

TEST(PlateState, WithoutStateStoredForcesCountAsZero) {
  for (const plate_description& d : plate_calls::elastic_triangles()) {
    plate_model model({d});
    const std::vector<double> K = model.matrix(1, 1);
    model.set_header(SECOND_ORDER, 1);
    EXPECT_EQ(model.matrix(1, 1), K) << label(d);
    EXPECT_EQ(support::max_norm(model.matrix(71, 1)), 0.0) << label(d);
  }
}

// The first element's plate is the second: a state that holds the first plate alone has nothing for it.
TEST(PlateState, ThatEndsBelowThePlateCountsAsNone) {
  seeded_random random(79);
  for (const plate_description& d : plate_calls::elastic_triangles()) {
    plate_model model({d, d});
    const std::vector<double> u = random.vector(ORDER, 1e-3);
    const std::vector<double> K = model.matrix(1, 1);
    std::vector<double> F[2];
    for (const int i : {0, 1}) F[i] = model.internal_forces(1, u, i == 0 ? 3 : 33);
    model.set_header(SECOND_ORDER, 1);
    model.allocate_state();
    SOLANAELEM.PLATE_STATE.DIMENSION[0].EXTENT = 1;
    SOLANAELEM.PLATE_STATE.BASE = nullptr;  // whoever looks, falls
    EXPECT_EQ(model.matrix(1, 1), K) << label(d);
    EXPECT_EQ(support::max_norm(model.matrix(71, 1)), 0.0) << label(d);
    for (const int i : {0, 1}) EXPECT_EQ(model.internal_forces(1, u, i == 0 ? 3 : 33), F[i]) << label(d);
  }
}

TEST(PlateState, IsOnlyRead) {
  seeded_random random(76);
  for (const int op : {1, 2, 3, 33, 4, 41, 401, 5, 7, 71, 8, 9, 10}) {
    plate_model model({plate_calls::isotropic(plate_calls::space_triangle())});
    store_forces(model, random_stored(random));
    const std::vector<double> stored = random.vector(24, 1e-3);
    std::copy(stored.begin(), stored.end(), model.state(1).STORED_DISPLACEMENTS.data());
    model.set_header(SECOND_ORDER, 1);
    const PLATE_STATE_RECORD before = model.state(1);
    plate_calls::call(model, op, 1, std::vector<double>(9, 0.5));
    EXPECT_EQ(std::memcmp(&model.state(1), &before, sizeof before), 0) << "operation " << op;
  }
}

// ------------------------------------------------------------------------------------------------ named cases

TEST(PlateStateEdgeCases, FirstPassOfANonlinearRunHasNoGeometricTerm) {
  seeded_random random(77);
  plate_model model({plate_calls::isotropic(plate_calls::space_triangle())});
  const std::vector<double> K = model.matrix(1, 1);
  store_forces(model, random_stored(random));
  model.set_header(SECOND_ORDER, 1);
  model.set_header(ANALYSIS_STATE, 1);
  model.set_header(STEP_COUNTER, 0);
  EXPECT_EQ(model.matrix(1, 1), K);
}

// The current displacements are the total ones; and an elastic element answers to the current ones alone.
TEST(PlateStateEdgeCases, WithoutStateTheCurrentDisplacementsAreTheTotal) {
  seeded_random random(78);
  for (const plate_description& d : plate_calls::elastic_triangles()) {
    for (const int op : {3, 33}) {
      const std::vector<double> u = random.vector(ORDER, 1e-3);
      plate_model model({d});
      const std::vector<double> f = model.internal_forces(1, u, op);
      for (const double force : f) EXPECT_TRUE(std::isfinite(force)) << label(d);
      EXPECT_GT(support::max_norm(f), 0.0) << label(d);

      model.allocate_state();
      EXPECT_EQ(model.internal_forces(1, u, op), f) << label(d) << ": a state of zeros";
      for (double& stored : model.state(1).STORED_DISPLACEMENTS.V) stored = random.uniform(-1.0, 1.0);
      EXPECT_EQ(model.internal_forces(1, u, op), f) << label(d) << ": elastic forces are those of the current ones";
    }
  }
}
