// element_operations.cpp: the calls of FINITES, one short function an operation.
//
// This is the part that a solver author would copy: fill the exchange area or the parameters, call, read the answer.
#include <algorithm>

#include "finites/finites.h"
#include "library_layout.h"
#include "library_model.h"
#include "model_data.h"

namespace solver {

namespace {

enum operation_code : std::int32_t {
  STIFFNESS = 1,
  INTERNAL_FORCES = 3,
  SURFACE_LOAD = 4,
  RESULTS = 5,
  BODY_FORCE = 41,
  TEMPERATURE_LOAD = 401
};

}  // namespace

// The library rewrites some codes while it works: `code` is a copy that may be spoilt.
void library_model::operation(std::int32_t code, std::size_t element, double* data, double* forces, double* matrix) {
  MODEL_DATA A(model_data_.data());
  const std::int32_t n = static_cast<std::int32_t>(model_data_.size());
  const std::int32_t elem = static_cast<std::int32_t>(element) + 1;
  const std::int32_t k = (elem - 1) * A.INTEGER(PLATE_BLOCK_STRIDE) + A.INTEGER(PLATE_BLOCK_START);
  FINITES(&code, &elem, &k, model_data_.data(), &n, data, forces, matrix);
}

void library_model::stiffness(std::size_t element, element_matrix& K) {
  VECTOR<12> data{};
  element_vector forces;
  operation(STIFFNESS, element, data.V, forces.V, K.V);
}

void library_model::loads(std::size_t element, const distributed_load& load, element_vector& forces) {
  element_matrix matrix;
  const auto add = [&](std::int32_t code, VECTOR<12> data) {
    element_vector part;
    operation(code, element, data.V, part.V, matrix.V);
    for (int i = 1; i <= ELEMENT_FREEDOMS; ++i) forces(i) += part(i);
  };
  if (load.pressure != 0) add(SURFACE_LOAD, {{0, 0, 0, 0, 0, load.pressure}});
  if (load.is_body()) add(BODY_FORCE, {{load.body[0], load.body[1], load.body[2]}});
  if (load.is_thermal()) add(TEMPERATURE_LOAD, {{load.temperature_change, load.temperature_difference}});
}

void library_model::internal_forces(std::size_t element, const element_vector& displacements, element_vector& forces) {
  double* const exchange = model_data_.data() + EXCHANGE_START - 1;
  std::copy_n(displacements.V, 24, exchange + EXCHANGE_DISPLACEMENTS);
  VECTOR<12> data{};
  element_vector unused;
  element_matrix matrix;
  operation(INTERNAL_FORCES, element, data.V, unused.V, matrix.V);
  std::copy_n(exchange + EXCHANGE_FORCES, 24, forces.V);
}

element_results library_model::results(std::size_t element, const element_vector& displacements,
                                       const distributed_load& load) {
  double* const exchange = model_data_.data() + EXCHANGE_START - 1;
  std::copy_n(displacements.V, 24, exchange + EXCHANGE_DISPLACEMENTS);
  VECTOR<12> data{{load.temperature_change, load.temperature_difference}};
  element_vector forces;
  element_matrix matrix;
  operation(RESULTS, element, data.V, forces.V, matrix.V);
  return {exchange + EXCHANGE_NODES, exchange + EXCHANGE_POINTS};
}

void library_model::classify(std::size_t element, int& kind, int& behaviour) {
  const std::int32_t n = static_cast<std::int32_t>(model_data_.size());
  const std::int32_t elem = static_cast<std::int32_t>(element) + 1;
  std::int32_t parts = 0;
  INFO_FINITES(&elem, model_data_.data(), &n, &kind, &behaviour, &parts);
}

}  // namespace solver
