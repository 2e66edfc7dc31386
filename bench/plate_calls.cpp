// plate_calls.cpp: batches of different plates whose sections yield, or stay elastic.
#include "plate_calls.h"

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

constexpr unsigned SEED = 40;

// Strains of the elements, roughly, over the strain of first yielding.
struct loading {
  const char* name;
  double level;
};
constexpr loading LOADINGS[] = {{"elastic", 1e-3}, {"plastic", 5.0}};

constexpr double YIELD_STRAIN = 1e-3;

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

// The fields of the whole-section state of one plate, one after the other.
class section_fields {
 public:
  void give_to(PLATE_STATE_RECORD& r) {
    double* at = values_.data();
    const auto take = [&at](int count) {
      double* const first = at;
      at += count;
      return first;
    };
    for (ARRAY_REFERENCE<double, 2>* field : {&r.SEC_EP_START, &r.SEC_EP_CUR, &r.SEC_EP_INC}) {
      *field = REFER_TO(take(48), 12, 4);
    }
    for (ARRAY_REFERENCE<double, 1>* field :
         {&r.SEC_EPBAR_START, &r.SEC_EPBAR_CUR, &r.SEC_CURV_INC, &r.SEC_AUX, &r.SEC_SIGN_CUR, &r.SEC_SIGN_START}) {
      *field = REFER_TO(take(4), 4);
    }
    r.SEC_TANGENT = REFER_TO(take(256), 8, 8, 4);
  }

 private:
  std::array<double, 3 * 48 + 6 * 4 + 256> values_{};
};

// A batch of one kind after its very first pass, with the displacements of a step for each element.
struct yielding_batch {
  yielding_batch(int kind, double level) : fields(BATCH) {
    support::seeded_random random(SEED);
    std::vector<support::plate_description> descriptions;
    const double magnitude = level * YIELD_STRAIN;
    for (int i = 0; i < BATCH; ++i) {
      descriptions.push_back(describe(random, kind));
      displacements.push_back(random.vector(24, magnitude));
    }
    model = std::make_unique<support::plate_model>(descriptions);
    model->set_header(NONLIN_MATERIAL, 1.0);
    model->set_header(ANALYSIS_STATE, 1.0);
    model->set_plate_material_code(1);
    model->allocate_state();
    for (int elem = 1; elem <= BATCH; ++elem) {
      fields[static_cast<std::size_t>(elem - 1)].give_to(model->state(elem));
      model->stiffness(elem);
    }
    model->set_header(STEP_COUNTER, 1.0);
    for (int elem = 1; elem <= BATCH; ++elem) call(OP_FORCES_COMMIT, elem);
  }
  void call(int op, int elem) {
    const std::vector<double>& u = displacements[static_cast<std::size_t>(elem - 1)];
    if (op != OP_STIFFNESS) std::copy(u.begin(), u.end(), model->displacements());
    model->call(op, elem, data, forces, matrix);
  }

  std::vector<section_fields> fields;
  std::vector<std::vector<double>> displacements;
  std::unique_ptr<support::plate_model> model;
  double data[12] = {}, forces[24] = {}, matrix[24 * 24] = {};
};

void element_calls(benchmark::State& state, int op, int kind, double level) {
  yielding_batch batch(kind, level);
  for (auto _ : state) {
    for (int elem = 1; elem <= BATCH; ++elem) {
      batch.call(op, elem);
      benchmark::ClobberMemory();
    }
  }
  state.counters["calls"] = BATCH;
}

struct operation {
  int code;
  const char* name;
};
constexpr operation OPERATIONS[] = {
    {OP_STIFFNESS, "op_1_stiffness"}, {OP_FORCES, "op_3_internal_forces"}, {OP_FORCES_COMMIT, "op_33_element_forces"}};

}  // namespace

void register_yielding_plates() {
  for (const loading& l : LOADINGS) {
    for (const int kind : {KIND_TRI_THIN, KIND_TRI_THICK, KIND_QUAD_THIN, KIND_QUAD_THICK}) {
      for (const operation& op : OPERATIONS) {
        const std::string name = std::string(op.name) + "/kind_" + std::to_string(kind) + "/behav_2_" + l.name;
        benchmark::RegisterBenchmark(name.c_str(), element_calls, op.code, kind, l.level);
      }
    }
  }
}

}  // namespace bench
