// solid_calls.cpp: batches of different solids, called as a solver calls them.
#include "solid_calls.h"

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "batches.h"
#include "finites/fields.h"
#include "finites/finites.h"
#include "random_shapes.h"
#include "solid_model.h"

namespace bench {

namespace {

constexpr unsigned SEED = 40;

struct solid_path {
  const char* name;
  std::int32_t op;
  std::size_t nodes;
  bool geometric;  // the stiffness with its geometric part
};

constexpr solid_path PATHS[] = {
    {"solid_op_1_stiffness/brick_8", 1, 8, false},
    {"solid_op_1_stiffness_geometric/brick_8", 1, 8, true},
    {"solid_op_2_mass/brick_8", 2, 8, false},
    {"solid_op_3_internal_forces/brick_8", 3, 8, false},
    {"solid_op_33_element_forces/brick_8", 33, 8, false},
    {"solid_op_5_results/brick_8", 5, 8, false},
    {"solid_op_7_geometric_of_displacements/brick_8", 7, 8, false},
    {"solid_op_71_geometric_of_stored_stress/brick_8", 71, 8, false},
    {"solid_op_41_body_load/brick_8", 41, 8, false},
    {"solid_op_1_stiffness/wedge_6", 1, 6, false},
    {"solid_op_1_stiffness/tetrahedron_4", 1, 4, false},
};

// A distorted brick turned in space; the wedge and the tetrahedron are cut from it.
support::solid_description describe(support::seeded_random& random, std::size_t nodes) {
  std::vector<support::point> corners = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0},
                                         {0, 0, 1}, {1, 0, 1}, {1, 1, 1}, {0, 1, 1}};
  const support::rotation R = support::random_rotation(random);
  for (support::point& corner : corners) {
    for (double& x : corner) x += random.uniform(-0.15, 0.15);
    corner = support::rotate(R, corner);
  }
  support::solid_description d;
  d.nodes = corners;
  if (nodes == 6) d.nodes = {corners[0], corners[1], corners[3], corners[4], corners[5], corners[7]};
  if (nodes == 4) d.nodes = {corners[0], corners[1], corners[3], corners[4]};
  return d;
}

// Displacements and stresses of the points of each element.
void fill_state(support::seeded_random& random, support::solid_model& model) {
  model.allocate_nonlinear();
  for (int elem = 1; elem <= model.count(); ++elem) {
    model.set_displacements(elem, random.vector(model.order(elem), 1e-3));
    for (double& stress : model.nonlinear(elem).GAUSS_STRESS.V) stress = random.uniform(-100.0, 100.0);
  }
}

void solid_calls(benchmark::State& state, const solid_path& path) {
  support::seeded_random random(SEED);
  std::vector<support::solid_description> elements;
  for (int i = 0; i < BATCH; ++i) elements.push_back(describe(random, path.nodes));
  support::solid_model model(elements);
  fill_state(random, model);
  model.set_header(SECOND_ORDER, path.geometric ? 1.0 : 0.0);
  const std::int32_t n = model.extent(), NN = static_cast<std::int32_t>(path.nodes);
  const double G[3] = {0.0, 0.0, -1.0};
  double F[24];
  double K[24 * 24];
  char text[MESSAGE_LENGTH];
  std::int32_t status = 0;
  for (auto _ : state) {
    for (std::int32_t elem = 1; elem <= BATCH; ++elem) {
      const std::int32_t entry = model.entry(elem);
      FINITES_SOLID_3D(&path.op, &elem, &entry, model.raw(), &n, G, F, &NN, K, &status, text);
      benchmark::DoNotOptimize(K);
      benchmark::ClobberMemory();
    }
  }
  if (status != 0) state.SkipWithError("a solid of the batch is singular");
  state.counters["calls"] = BATCH;
}

// What a solver asks for after each step: forces and results of every element.
void chain_calls(benchmark::State& state) {
  support::seeded_random random(SEED);
  std::vector<support::solid_description> elements;
  for (int i = 0; i < BATCH; ++i) elements.push_back(describe(random, 8));
  support::solid_model model(elements);
  fill_state(random, model);
  const std::vector<double> U = random.vector(24 * BATCH, 1e-3);
  const std::int32_t n = model.extent(), NN = 8, spare = 0;
  double RES[50 * 8], S[6 * 8], FG[3 * 8];
  char text[MESSAGE_LENGTH];
  std::int32_t status = 0;
  for (auto _ : state) {
    for (std::int32_t elem = 1; elem <= BATCH; ++elem) {
      const std::int32_t entry = model.entry(elem);
      GET_ELEM3D(&elem, &entry, &spare, model.raw(), &n, &NN, RES, S, &U[static_cast<std::size_t>(24 * (elem - 1))], FG,
                 &status, text);
      benchmark::DoNotOptimize(RES);
      benchmark::ClobberMemory();
    }
  }
  state.counters["calls"] = BATCH;
}

template <class REAL>
void solid_principal_values(benchmark::State& state, void (*update)(REAL*)) {
  support::seeded_random random(SEED);
  std::vector<REAL> records;
  for (const double value : random.vector(50 * BATCH, 100.0)) records.push_back(static_cast<REAL>(value));
  for (auto _ : state) {
    for (int i = 0; i < BATCH; ++i) update(&records[static_cast<std::size_t>(50 * i)]);
    benchmark::ClobberMemory();
  }
  state.counters["calls"] = BATCH;
}

}  // namespace

void register_solids() {
  for (const solid_path& path : PATHS) {
    benchmark::RegisterBenchmark(path.name, [&path](benchmark::State& state) { solid_calls(state, path); });
  }
  benchmark::RegisterBenchmark("get_elem3d/brick_8", chain_calls);
  benchmark::RegisterBenchmark("update_principaux_solid/single", solid_principal_values<float>,
                               UPDATE_PRINCIPAUX_RES50_SOLID);
  benchmark::RegisterBenchmark("update_principaux_solid/double", solid_principal_values<double>,
                               UPDATE_PRINCIPAUX_RES50_SOLID_DBL);
}

}  // namespace bench
