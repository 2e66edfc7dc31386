// main.cpp: the benchmarks, one for each code path of the exported routines. Each iteration calls one whole batch.
//
// Arguments are those of the benchmark library; the repetitions and their interleaving are set here unless they are
// given.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <string>
#include <vector>

#include "batches.h"
#include "calibration.h"
#include "finites/finites.h"
#include "frame_calls.h"
#include "layered_calls.h"
#include "plate_calls.h"
#include "random_shapes.h"
#include "report.h"
#include "solid_calls.h"

namespace {

struct operation {
  int code;
  const char* name;
  bool wants_displacements;
};

constexpr operation OPERATIONS[] = {
    {1, "op_1_stiffness", false},
    {2, "op_2_mass", false},
    {3, "op_3_internal_forces", true},
    {33, "op_33_element_forces", true},
    {4, "op_4_surface_load", false},
    {41, "op_41_body_force", false},
    {401, "op_401_temperature_load", false},
    {5, "op_5_results", true},
    {7, "op_7_geometric_of_displacements", true},
    {71, "op_71_geometric_of_stored_forces", false},
    {8, "op_8_geometry", false},
    {9, "op_9_point_location", false},
    {10, "op_10_point_load", false},
};

// Each benchmark says how many calls an iteration makes; the report divides by it.
void set_calls(benchmark::State& state, int calls) { state.counters["calls"] = calls; }

void calibration(benchmark::State& state) {
  constexpr std::size_t entries = static_cast<std::size_t>(CALIBRATION_ORDER) * CALIBRATION_ORDER;
  support::seeded_random random(1);
  const std::vector<double> A = random.vector(entries, 1.0);
  const std::vector<double> B = random.vector(entries, 1.0);
  std::vector<double> C(entries);
  for (auto _ : state) {
    for (int i = 0; i < bench::BATCH; ++i) {
      calibration_product(A.data(), B.data(), C.data());
      benchmark::DoNotOptimize(C.data());
      benchmark::ClobberMemory();
    }
  }
  set_calls(state, bench::BATCH);
}

// One operation on every element of a batch, with what a solver does before each call: writing the displacements.
void element_calls(benchmark::State& state, const operation& op, bench::batch_kind kind) {
  if (op.code == 71) kind.second_order = bench::second_order_use::stored_forces;
  bench::batch batch = bench::make_batch(kind);
  double forces[24] = {};
  double matrix[24 * 24] = {};
  std::vector<std::array<double, 12>>& data = op.code == 9 || op.code == 10 ? batch.points : batch.loads;
  for (auto _ : state) {
    for (int i = 0; i < bench::BATCH; ++i) {
      const std::size_t at = static_cast<std::size_t>(i);
      if (op.wants_displacements) {
        std::copy(batch.displacements[at].begin(), batch.displacements[at].end(), batch.model->displacements());
      }
      batch.model->call(op.code, i + 1, data[at].data(), forces, matrix);
      benchmark::ClobberMemory();
    }
  }
  set_calls(state, bench::BATCH);
}

void info_calls(benchmark::State& state, const bench::batch_kind& kind) {
  const bench::batch batch = bench::make_batch(kind);
  const std::int32_t n = batch.model->extent();
  std::int32_t element_kind = 0, behav = 0, parts = 0;
  for (auto _ : state) {
    for (std::int32_t elem = 1; elem <= bench::BATCH; ++elem) {
      INFO_FINITES(&elem, batch.model->raw(), &n, &element_kind, &behav, &parts);
      benchmark::DoNotOptimize(parts);
    }
  }
  set_calls(state, bench::BATCH);
}

void integration_points(benchmark::State& state, std::int32_t nodes) {
  support::seeded_random random(2);
  const std::vector<double> xyz = random.vector(12 * bench::BATCH, 1.0);
  const std::int32_t rule = nodes == 4 ? 1 : 2;
  double out[12];
  for (auto _ : state) {
    for (int i = 0; i < bench::BATCH; ++i) {
      const std::int32_t point = 1 + i % 4;
      GAUSS_INT_2D(&rule, &point, &nodes, &xyz[static_cast<std::size_t>(12 * i)], out, out + 1, out + 2, out + 3,
                   out + 4, out + 5, out + 6, out + 7, out + 8, out + 9, out + 10, out + 11);
      benchmark::ClobberMemory();
    }
  }
  set_calls(state, bench::BATCH);
}

// A fresh record each call: the routine changes what it reads.
template <class REAL>
void principal_values(benchmark::State& state, void (*update)(REAL*)) {
  support::seeded_random random(3);
  std::vector<REAL> records;
  for (const double value : random.vector(100 * bench::BATCH, 100.0)) records.push_back(static_cast<REAL>(value));
  for (auto _ : state) {
    for (int i = 0; i < bench::BATCH; ++i) update(&records[static_cast<std::size_t>(100 * i)]);
    benchmark::ClobberMemory();
  }
  set_calls(state, bench::BATCH);
}

std::string path_name(const std::string& name, const bench::batch_kind& kind) {
  return name + "/kind_" + std::to_string(kind.kind) + "/behav_" + std::to_string(kind.behav);
}

void register_elements() {
  for (const int kind : {10, 11, 12, 20, 21, 22}) {
    for (const int behav : {0, 1}) {
      const bench::batch_kind plain{kind, behav};
      for (const operation& op : OPERATIONS) {
        benchmark::RegisterBenchmark(path_name(op.name, plain).c_str(), element_calls, op, plain);
      }
      benchmark::RegisterBenchmark(path_name("info", plain).c_str(), info_calls, plain);
      const bench::batch_kind shifted{kind, behav, bench::offset_use::each_node};
      benchmark::RegisterBenchmark(path_name("op_1_stiffness_offsets", shifted).c_str(), element_calls, OPERATIONS[0],
                                   shifted);
      const bench::batch_kind stressed{kind, behav, bench::offset_use::none, bench::second_order_use::stored_forces};
      benchmark::RegisterBenchmark(path_name("op_1_stiffness_second_order", stressed).c_str(), element_calls,
                                   OPERATIONS[0], stressed);
    }
  }
}

}  // namespace

int main(int argc, char** argv) {
  // Arguments of the caller come later and take precedence.
  std::vector<std::string> texts = {argv[0], "--benchmark_repetitions=7", "--benchmark_min_time=0.02",
                                    "--benchmark_enable_random_interleaving=true"};
  texts.insert(texts.end(), argv + 1, argv + argc);
  std::vector<char*> arguments;
  for (std::string& text : texts) arguments.push_back(text.data());
  int count = static_cast<int>(arguments.size());
  benchmark::Initialize(&count, arguments.data());
  if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) return 1;

  benchmark::RegisterBenchmark(bench::CALIBRATION_NAME, calibration);
  register_elements();
  bench::register_frames();
  bench::register_solids();
  bench::register_yielding_plates();
  bench::register_layered_plates();
  benchmark::RegisterBenchmark("gauss_int_2d/triangle", integration_points, 3);
  benchmark::RegisterBenchmark("gauss_int_2d/quadrilateral", integration_points, 4);
  benchmark::RegisterBenchmark("update_principaux/single", principal_values<float>, UPDATE_PRINCIPAUX_RES100_PLA);
  benchmark::RegisterBenchmark("update_principaux/double", principal_values<double>, UPDATE_PRINCIPAUX_RES100_PLA_DBL);
  bench::multiple_reporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  benchmark::Shutdown();
  return 0;
}
