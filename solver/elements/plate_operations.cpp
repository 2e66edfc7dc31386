// plate_operations.cpp: the calls of FINITES, one short function per operation.
//
// This is the part that a solver author would copy: fill the exchange area or the parameters, call, read the answer.
#include <algorithm>

#include "elements/plate_group.h"
#include "elements/scatter_map.h"
#include "elements/thermal_strains.h"
#include "finites/fields.h"
#include "finites/finites.h"
#include "finites/views.hpp"

namespace solver {

namespace {

enum operation_code : std::int32_t {
  STIFFNESS = 1,
  MASS = 2,
  INTERNAL_FORCES = 3,
  SURFACE_LOAD = 4,
  RESULTS = 5,
  COMMIT = 33,
  BODY_FORCE = 41,
  TEMPERATURE_LOAD = 401,
  GEOMETRIC_OF_STORED_FORCES = 71
};

}  // namespace

// The library rewrites some codes while it works: `code` is a copy that may be overwritten, and so is `data`.
void plate_group::operation(std::int32_t code, std::size_t element, VECTOR<12> data, element_vector& forces,
                            element_matrix& matrix) {
  const std::int32_t n = data_.length(), elem = data_.number(element), k = data_.entry(element);
  FINITES(&code, &elem, &k, data_.values(), &n, data.V, forces.V, matrix.V);
}

void plate_group::elastic_call(std::size_t element, element_matrix& K) {
  element_vector forces;
  operation(STIFFNESS, element, {}, forces, K);
}

void plate_group::stiffness(std::size_t element, element_matrix& K) {
  laminate_of(element) == nullptr ? elastic_call(element, K) : laminate_stiffness(element, K);
  if (tied_[element] != 0) add_drilling_tie(element, K);
}

void plate_group::mass(std::size_t element, element_matrix& M) {
  element_vector forces;
  operation(MASS, element, {}, forces, M);
}

void plate_group::geometric_stiffness(std::size_t element, element_matrix& G) {
  element_vector forces;
  operation(GEOMETRIC_OF_STORED_FORCES, element, {}, forces, G);
  const int freedoms = element_freedoms(data_.at(element));
  for (int j = 1; j <= freedoms; ++j) {
    for (int i = 1; i <= freedoms; ++i) G(i, j) = -G(i, j);  // the operation returns minus the matrix
  }
}

bool plate_group::is_general(std::size_t element) const {
  return solver::is_general(data_.of().materials[material_of(data_.of(), data_.at(element))]);
}

void plate_group::loads(std::size_t element, const distributed_load& load, element_vector& forces) {
  const auto add = [&](const element_vector& part) {
    for (int i = 1; i <= element_freedoms(data_.at(element)); ++i) forces(i) += part(i);
  };
  const auto add_operation = [&](std::int32_t code, const VECTOR<12>& data) {
    element_vector part;
    element_matrix matrix;
    operation(code, element, data, part, matrix);
    add(part);
  };
  if (load.pressure != 0) add_operation(SURFACE_LOAD, {{0, 0, 0, 0, 0, load.pressure}});
  if (load.is_body()) add_operation(BODY_FORCE, {{load.body[0], load.body[1], load.body[2]}});
  if (!load.is_thermal()) return;
  if (!is_general(element)) {
    return add_operation(TEMPERATURE_LOAD, {{load.temperature_change, load.temperature_difference}});
  }
  element_vector part;
  internal_forces(element, free_expansion(data_.of(), data_.at(element), records_[data_.place(element)], load), part);
  add(part);
}

// Operations that take displacements and answer with forces do so in the exchange area.
void plate_group::exchange_forces(std::int32_t code, std::size_t element, const element_vector& displacements,
                                  element_vector& forces) {
  std::copy_n(displacements.V, 24, data_.exchange() + EXCHANGE_DISPLACEMENTS);
  element_vector unused;
  element_matrix matrix;
  operation(code, element, {}, unused, matrix);
  std::copy_n(data_.exchange() + EXCHANGE_FORCES, 24, forces.V);
}

void plate_group::force_call(std::size_t element, const element_vector& displacements, element_vector& forces) {
  exchange_forces(INTERNAL_FORCES, element, displacements, forces);
}

void plate_group::internal_forces(std::size_t element, const element_vector& displacements, element_vector& forces) {
  laminate_of(element) == nullptr ? force_call(element, displacements, forces)
                                  : laminate_forces(element, displacements, forces);
  if (tied_[element] == 0) return;
  element_matrix tie{};
  add_drilling_tie(element, tie);
  const int freedoms = element_freedoms(data_.at(element));
  for (int j = 1; j <= freedoms; ++j) {
    for (int i = 1; i <= freedoms; ++i) forces(i) += tie(i, j) * displacements(j);
  }
}

void plate_group::commit_forces(std::size_t element, const element_vector& displacements, element_vector& forces) {
  exchange_forces(COMMIT, element, displacements, forces);
}

element_results plate_group::results(std::size_t element, const element_vector& displacements,
                                     const distributed_load& load) {
  double* const exchange = data_.exchange();
  std::copy_n(displacements.V, 24, exchange + EXCHANGE_DISPLACEMENTS);
  VECTOR<12> data{{load.temperature_change, load.temperature_difference}};
  if (load.is_thermal() && is_general(element)) {
    const element_vector free = free_expansion(data_.of(), data_.at(element), records_[data_.place(element)], load);
    for (int i = 0; i < 24; ++i) exchange[EXCHANGE_DISPLACEMENTS + i] -= free(i + 1);
    data = {};
  }
  if (laminate_of(element) != nullptr) return laminate_results(element, load);
  element_vector forces;
  element_matrix matrix;
  operation(RESULTS, element, data, forces, matrix);
  return {exchange + EXCHANGE_NODES, exchange + EXCHANGE_POINTS};
}

void plate_group::result_call(std::size_t element) {
  element_vector forces;
  element_matrix matrix;
  operation(RESULTS, element, {}, forces, matrix);
}

void plate_group::clear_state() {
  states_.assign(data_.held(), PLATE_STATE_RECORD{});
  SOLANAELEM.PLATE_STATE = REFER_TO(states_.data(), states_.size());
}

// A triangle takes the forces of its first point for its constant membrane forces, a quadrilateral those of each point;
// all four are kept, as results come.
void plate_group::keep_state(std::size_t element, const element_vector& displacements, const distributed_load& load) {
  const double* const points = results(element, displacements, load).points;
  for (int p = 1; p <= RES_POINTS; ++p) {
    for (int i = 1; i <= 6; ++i) {
      states_[data_.place(element)].STORED_NODAL_FORCES(i, p) = points[(p - 1) * RES_LENGTH + COL_FORCES + i - 2];
    }
  }
}

void plate_group::classify(std::size_t element, int& kind, int& behaviour) {
  const std::int32_t n = data_.length(), elem = data_.number(element);
  std::int32_t parts = 0;
  INFO_FINITES(&elem, data_.values(), &n, &kind, &behaviour, &parts);
}

}  // namespace solver
