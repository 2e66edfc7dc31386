// element_operations.cpp: the calls of FINITES, one short function an operation.
//
// This is the part that a solver author would copy: fill the exchange area or the parameters, call, read the answer.
#include <algorithm>

#include "elements/library_model.h"
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
  BODY_FORCE = 41,
  TEMPERATURE_LOAD = 401,
  GEOMETRIC_OF_STORED_FORCES = 71
};

}  // namespace

// The library rewrites some codes while it works: `code` is a copy that may be overwritten.
void library_model::operation(std::int32_t code, std::size_t element, double* data, double* forces, double* matrix) {
  MODEL_DATA A(model_data_.data());
  const std::int32_t n = static_cast<std::int32_t>(model_data_.size());
  const std::int32_t elem = static_cast<std::int32_t>(element) + 1;
  const std::int32_t k = (elem - 1) * A.INTEGER(ENTRY_STRIDE) + A.INTEGER(ENTRY_START);
  FINITES(&code, &elem, &k, model_data_.data(), &n, data, forces, matrix);
}

namespace {

// The whole of a frame element's 12 by 12 matrix into the corner of the larger one.
void put(const MATRIX<12, 12>& from, element_matrix& to) {
  for (int j = 1; j <= 12; ++j)
    for (int i = 1; i <= 12; ++i) to(i, j) = from(i, j);
}

}  // namespace

void library_model::stiffness(std::size_t element, element_matrix& K) {
  if (is_cable(model_, at(element))) return cable_tangent(element, K);
  if (solid(element)) return solid_operation(STIFFNESS, element, nullptr, nullptr, K.V);
  if (!plate(element)) {
    MATRIX<12, 12> stiffness, geometric;
    member_stiffness(element, MODE_STEP, member_of(element).T, stiffness, geometric);
    put(stiffness, K);
    return;
  }
  VECTOR<12> data{};
  element_vector forces;
  operation(STIFFNESS, element, data.V, forces.V, K.V);
  if (tied_[element] != 0) add_drilling_tie(element, K);
}

void library_model::mass(std::size_t element, element_matrix& M) {
  if (solid(element)) return solid_operation(MASS, element, nullptr, nullptr, M.V);
  if (!plate(element)) {
    MATRIX<12, 12> mass;
    member_mass(element, mass);
    put(mass, M);
    return;
  }
  VECTOR<12> data{};
  element_vector forces;
  operation(MASS, element, data.V, forces.V, M.V);
}

void library_model::geometric_stiffness(std::size_t element, element_matrix& G) {
  if (solid(element)) return solid_operation(GEOMETRIC_OF_STORED_FORCES, element, nullptr, nullptr, G.V);
  MODEL_DATA A(model_data_.data());
  if (!plate(element)) {
    MATRIX<12, 12> stiffness, geometric;
    const double kind = A(SECOND_ORDER);
    A(SECOND_ORDER) = GEOMETRIC_APART;
    member_stiffness(element, MODE_STEP, member_of(element).T, stiffness, geometric);
    A(SECOND_ORDER) = kind;
    put(geometric, G);
    return;
  }
  VECTOR<12> data{};
  element_vector forces;
  operation(GEOMETRIC_OF_STORED_FORCES, element, data.V, forces.V, G.V);
  const int freedoms = element_freedoms(at(element));
  for (int j = 1; j <= freedoms; ++j)
    for (int i = 1; i <= freedoms; ++i) G(i, j) = -G(i, j);  // the operation returns minus the matrix
}

void library_model::loads(std::size_t element, const distributed_load& load, element_vector& forces) {
  if (solid(element)) return solid_loads(element, load, forces);
  plate(element) ? plate_loads(element, load, forces) : member_loads(element, load, forces);
}

bool library_model::general(std::size_t element) const {
  return is_general(model_.materials[static_cast<std::size_t>(material_of(model_, at(element)))]);
}

void library_model::plate_loads(std::size_t element, const distributed_load& load, element_vector& forces) {
  element_matrix matrix;
  const auto add = [&](std::int32_t code, VECTOR<12> data) {
    element_vector part;
    operation(code, element, data.V, part.V, matrix.V);
    for (int i = 1; i <= element_freedoms(at(element)); ++i) forces(i) += part(i);
  };
  if (load.pressure != 0) add(SURFACE_LOAD, {{0, 0, 0, 0, 0, load.pressure}});
  if (load.is_body()) add(BODY_FORCE, {{load.body[0], load.body[1], load.body[2]}});
  if (!load.is_thermal()) return;
  if (general(element)) {
    element_vector part;
    internal_forces(element, free_expansion(model_, at(element), plate_records_[element], load), part);
    for (int i = 1; i <= element_freedoms(at(element)); ++i) forces(i) += part(i);
    return;
  }
  add(TEMPERATURE_LOAD, {{load.temperature_change, load.temperature_difference}});
}

void library_model::internal_forces(std::size_t element, const element_vector& displacements, element_vector& forces) {
  double* const exchange = model_data_.data() + EXCHANGE_START - 1;
  std::copy_n(displacements.V, 24, exchange + EXCHANGE_DISPLACEMENTS);
  VECTOR<12> data{};
  element_vector unused;
  element_matrix matrix;
  operation(INTERNAL_FORCES, element, data.V, unused.V, matrix.V);
  std::copy_n(exchange + EXCHANGE_FORCES, 24, forces.V);
  if (tied_[element] == 0) return;
  matrix = element_matrix{};
  add_drilling_tie(element, matrix);
  for (int j = 1; j <= element_freedoms(at(element)); ++j)
    for (int i = 1; i <= element_freedoms(at(element)); ++i) forces(i) += matrix(i, j) * displacements(j);
}

element_results library_model::results(std::size_t element, const element_vector& displacements,
                                       const distributed_load& load) {
  double* const exchange = model_data_.data() + EXCHANGE_START - 1;
  std::copy_n(displacements.V, 24, exchange + EXCHANGE_DISPLACEMENTS);
  VECTOR<12> data{{load.temperature_change, load.temperature_difference}};
  if (load.is_thermal() && general(element)) {
    const element_vector free = free_expansion(model_, at(element), plate_records_[element], load);
    for (int i = 1; i <= 24; ++i) exchange[EXCHANGE_DISPLACEMENTS + i - 1] -= free(i);
    data = {};
  }
  element_vector forces;
  element_matrix matrix;
  operation(RESULTS, element, data.V, forces.V, matrix.V);
  return {exchange + EXCHANGE_NODES, exchange + EXCHANGE_POINTS};
}

void library_model::second_order(bool on) {
  MODEL_DATA A(model_data_.data());
  A(SECOND_ORDER) = on ? GEOMETRIC_ADDED : 0;
  second_order_ = on;
}

void library_model::clear_state() {
  plate_states_.assign(model_.elements.size(), PLATE_STATE_RECORD{});
  SOLANAELEM.PLATE_STATE = REFER_TO(plate_states_.data(), plate_states_.size());
  for (MEMBER_RECORD& record : member_records_) record.AXIAL_FORCE = 0;
  clear_solid_state();
}

// A triangle takes the forces of its first point for its constant membrane forces, a quadrilateral those of each point;
// all four are kept, as results come. The pretension of a truss is in its stiffness from the start, as a string: the
// stored axial force is what has come to it.
void library_model::keep_state(std::size_t element, const element_vector& displacements, const distributed_load& load) {
  if (plate_states_.empty()) clear_state();
  if (solid(element)) return keep_solid_stresses(element, displacements);
  if (!plate(element)) {
    const end_forces f = member_forces(element, displacements, load);
    const frame_section& section = frame_section_of(model_, at(element));
    const double before = load.increment ? 0 : section.pretension * section.area;
    member_records_[position(element)].AXIAL_FORCE = (f[6] - f[0]) / 2 - before;
    return;
  }
  const element_results records = results(element, displacements, load);
  for (int p = 1; p <= RES_POINTS; ++p)
    for (int i = 1; i <= 6; ++i)
      plate_states_[element].STORED_NODAL_FORCES(i, p) = records.points[(p - 1) * RES_LENGTH + COL_FORCES + i - 2];
}

void library_model::classify(std::size_t element, int& kind, int& behaviour) {
  const std::int32_t n = static_cast<std::int32_t>(model_data_.size());
  const std::int32_t elem = static_cast<std::int32_t>(element) + 1;
  std::int32_t parts = 0;
  INFO_FINITES(&elem, model_data_.data(), &n, &kind, &behaviour, &parts);
}

}  // namespace solver
