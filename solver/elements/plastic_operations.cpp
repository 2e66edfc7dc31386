// plastic_operations.cpp: the calls of FINITES for plates that yield.
#include <algorithm>

#include "elements/library_model.h"
#include "finites/fields.h"
#include "finites/views.hpp"
#include "tarnix.h"

namespace solver {

namespace {

constexpr std::int32_t COMMIT = 33;
constexpr std::int32_t NO_MODEL = 0, WHOLE_SECTION = 1, LAYERED = 2;  // codes of the common library

std::int32_t code_of(plate_model which) {
  return which == plate_model::SECTION ? WHOLE_SECTION : which == plate_model::LAYERED ? LAYERED : NO_MODEL;
}

}  // namespace

void library_model::yielding(bool on) {
  MODEL_DATA A(model_data_.data());
  A(NONLIN_MATERIAL) = A(ANALYSIS_STATE) = on ? 1 : 0;
  A(STEP_COUNTER) = 0;
  const std::int32_t none = NO_MODEL;
  TARNIX_STORE_KNLMATERIAL_PLATE(&none);
}

void library_model::count_increment(int number) { MODEL_DATA(model_data_.data())(STEP_COUNTER) = number; }

plate_model library_model::model_of(std::size_t element) const {
  if (!is_shell(at(element).type)) return plate_model::ELASTIC;
  const shell_section& section = model_.shell_sections[static_cast<std::size_t>(at(element).section)];
  return model_.materials[static_cast<std::size_t>(section.material)].yield_stress > 0 ? section.yielding
                                                                                       : plate_model::ELASTIC;
}

void library_model::choose_model(std::size_t element) {
  const std::int32_t code = code_of(model_of(element));
  TARNIX_STORE_KNLMATERIAL_PLATE(&code);
  if (code == LAYERED)
    SOLANAELEM.NPT_THICK = model_.shell_sections[static_cast<std::size_t>(at(element).section)].thickness_points;
}

void library_model::commit_forces(std::size_t element, const element_vector& displacements, element_vector& forces) {
  double* const exchange = model_data_.data() + EXCHANGE_START - 1;
  std::copy_n(displacements.V, 24, exchange + EXCHANGE_DISPLACEMENTS);
  VECTOR<12> data{};
  element_vector unused;
  element_matrix matrix;
  operation(COMMIT, element, data.V, unused.V, matrix.V);
  std::copy_n(exchange + EXCHANGE_FORCES, 24, forces.V);
}

// The library moves the displacements of a call to the plane of the element, and takes the stored ones as they stand.
void library_model::store_displacements(std::size_t element, const element_vector& displacements) {
  const PLATE_RECORD& plate = plate_records_[element];
  MATRIX<6, 4>& stored = plate_states_[element].STORED_DISPLACEMENTS;
  for (int n = 1; n <= plate.NODE_COUNT; ++n) {
    const double dx = plate.NODE_OFFSETS(n, 1), dy = plate.NODE_OFFSETS(n, 2), dz = plate.NODE_OFFSETS(n, 3);
    MATRIX<6, 6> J;
    GET_JOINT_OFFSET_J6D(&dx, &dy, &dz, J.V);
    for (int i = 1; i <= 6; ++i) {
      stored(i, n) = 0;
      for (int j = 1; j <= 6; ++j) stored(i, n) += J(i, j) * displacements(6 * (n - 1) + j);
    }
  }
}

}  // namespace solver
