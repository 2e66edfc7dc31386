// layered_calls.cpp: batches of different layered plates that yield, or stay elastic.
#include "layered_calls.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <memory>
#include <string>
#include <vector>

#include "batches.h"
#include "finites/fields.h"
#include "random_shapes.h"

namespace bench {

namespace {

constexpr unsigned SEED = 41;
constexpr double YIELD_STRAIN = 1e-3;
constexpr double CALM = 1e-3, YIELDING = 5.0;  // strains of the elements, roughly, over the strain of first yielding

support::plate_description describe(support::seeded_random& random, int kind) {
  support::plate_description d = support::random_isotropic(
      random, kind >= KIND_QUAD_THIN ? support::random_quadrilateral(random) : support::random_triangle(random));
  d.formulation = kind == KIND_TRI_THIN || kind == KIND_QUAD_THIN ? FORMULATION_THIN : 0;
  d.modifier_membrane = d.modifier_bending = d.modifier_shear = 1.0;
  d.yield_stress = d.young * YIELD_STRAIN;
  d.plastic_switch = 1;
  d.material.mtype = 1;
  d.material.HARDENING = static_cast<float>(0.01 * d.young);
  return d;
}

// The state of one plate, n thickness points at each of four surface points.
class layered_fields {
 public:
  explicit layered_fields(int n) : n_(n), values_(static_cast<std::size_t>(4 * n * (4 * 6 + 2 + 25))) {}

  void give_to(PLATE_STATE_RECORD& record) {
    double* at = values_.data();
    const auto take = [&at](int count) {
      double* const first = at;
      at += count;
      return first;
    };
    for (POINT_STATE_RECORD& s : points_) {
      s.SIG = REFER_TO(take(6 * n_), 6, n_);
      s.EP_START = REFER_TO(take(6 * n_), 6, n_);
      s.EP_CUR = REFER_TO(take(6 * n_), 6, n_);
      s.EP_INC = REFER_TO(take(6 * n_), 6, n_);
      s.EPBAR_START = REFER_TO(take(n_), n_);
      s.EPBAR_CUR = REFER_TO(take(n_), n_);
      s.TANGENT = REFER_TO(take(25 * n_), 5, 5, n_);
    }
    record.POINT_STATE = REFER_TO(points_.data(), 4);
  }

 private:
  int n_;
  std::array<POINT_STATE_RECORD, 4> points_{};
  std::vector<double> values_;
};

// A batch of one kind after its very first pass, with the displacements of a step for each element.
class layered_batch {
 public:
  layered_batch(int kind, int n, double level) {
    support::seeded_random random(SEED);
    std::vector<support::plate_description> descriptions;
    for (int i = 0; i < BATCH; ++i) {
      descriptions.push_back(describe(random, kind));
      displacements_.push_back(random.vector(24, level * YIELD_STRAIN));
      fields_.emplace_back(n);
    }
    SOLANAELEM.NPT_THICK = n;
    model_ = std::make_unique<support::plate_model>(descriptions);
    SOLANAELEM.NPT_THICK = n;
    model_->set_header(NONLIN_MATERIAL, 1.0);
    model_->set_header(ANALYSIS_STATE, 1.0);
    model_->set_plate_material_code(2);
    model_->allocate_state();
    for (int elem = 1; elem <= BATCH; ++elem) {
      fields_[static_cast<std::size_t>(elem - 1)].give_to(model_->state(elem));
      call(OP_STIFFNESS, elem);
    }
    model_->set_header(STEP_COUNTER, 1.0);
    for (int elem = 1; elem <= BATCH; ++elem) call(OP_FORCES_COMMIT, elem);
  }

  void call(int op, int elem) {
    const std::vector<double>& u = displacements_[static_cast<std::size_t>(elem - 1)];
    if (op != OP_STIFFNESS) std::copy(u.begin(), u.end(), model_->displacements());
    model_->call(op, elem, data_, forces_, matrix_);
  }

 private:
  std::vector<layered_fields> fields_;
  std::vector<std::vector<double>> displacements_;
  std::unique_ptr<support::plate_model> model_;
  double data_[12] = {}, forces_[24] = {}, matrix_[24 * 24] = {};
};

void layered_calls(benchmark::State& state, int op, int kind, int n, double level) {
  layered_batch batch(kind, n, level);
  for (auto _ : state) {
    for (int elem = 1; elem <= BATCH; ++elem) {
      batch.call(op, elem);
      benchmark::ClobberMemory();
    }
  }
  state.counters["calls"] = BATCH;
}

void add(const std::string& name, int op, int kind, int n) {
  const std::string path = name + "/kind_" + std::to_string(kind) + "/behav_3_points_" + std::to_string(n);
  benchmark::RegisterBenchmark((path + "_elastic").c_str(), layered_calls, op, kind, n, CALM);
  benchmark::RegisterBenchmark((path + "_plastic").c_str(), layered_calls, op, kind, n, YIELDING);
}

}  // namespace

void register_layered_plates() {
  for (const int kind : {KIND_TRI_THIN, KIND_TRI_THICK, KIND_QUAD_THIN, KIND_QUAD_THICK}) {
    add("op_1_stiffness", OP_STIFFNESS, kind, 5);
    add("op_3_internal_forces", OP_FORCES, kind, 5);
    add("op_33_element_forces", OP_FORCES_COMMIT, kind, 5);
  }
  for (const int n : {9, 15}) add("op_33_element_forces", OP_FORCES_COMMIT, KIND_QUAD_THICK, n);
}

}  // namespace bench
