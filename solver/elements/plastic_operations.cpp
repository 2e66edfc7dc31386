// plastic_operations.cpp: which plates yield, by which model, and what the library stores of them.
#include "elements/plate_group.h"
#include "finites/fields.h"
#include "finites/views.hpp"
#include "tarnix.h"

namespace solver {

namespace {

constexpr std::int32_t NO_MODEL = 0, WHOLE_SECTION = 1, LAYERED = 2;  // codes of the common library

std::int32_t code_of(plate_model which) {
  return which == plate_model::SECTION ? WHOLE_SECTION : which == plate_model::LAYERED ? LAYERED : NO_MODEL;
}

}  // namespace

void plate_group::yielding(bool on) {
  MODEL_DATA A = data_.A();
  A(NONLIN_MATERIAL) = A(ANALYSIS_STATE) = on ? 1 : 0;
  A(STEP_COUNTER) = 0;
  const std::int32_t none = NO_MODEL;
  TARNIX_STORE_KNLMATERIAL_PLATE(&none);
}

void plate_group::count_increment(int number) { data_.A()(STEP_COUNTER) = number; }

plate_model plate_group::model_of(std::size_t element) const {
  const model& m = data_.of();
  if (!is_shell(data_.at(element).type)) return plate_model::ELASTIC;
  const shell_section& section = m.shell_sections[data_.at(element).section];
  return m.materials[section.material].yield_stress > 0 ? section.yielding : plate_model::ELASTIC;
}

// What the library knows already is not written again: threads may read it.
void plate_group::choose_model(std::size_t element) {
  const std::int32_t code = code_of(model_of(element));
  std::int32_t present = NO_MODEL;
  ZELKU_SOLPARAM_GET_KNLMATERIAL_PLATE(&present);
  if (present != code) TARNIX_STORE_KNLMATERIAL_PLATE(&code);
  if (code != LAYERED) return;
  const int points = data_.of().shell_sections[data_.at(element).section].thickness_points;
  if (SOLANAELEM.NPT_THICK != points) SOLANAELEM.NPT_THICK = points;
}

void plate_group::choose_first_model() {
  for (std::size_t e = 0; e < data_.of().elements.size(); ++e) {
    if (model_of(e) != plate_model::ELASTIC) return choose_model(e);
  }
}

bool plate_group::follow_one_model() const {
  const model& m = data_.of();
  const element* one = nullptr;
  plate_model which = plate_model::ELASTIC;
  for (std::size_t e = 0; e < m.elements.size(); ++e) {
    const plate_model own = model_of(e);
    if (own == plate_model::ELASTIC) continue;
    if (one == nullptr) {
      one = &m.elements[e];
      which = own;
    }
    if (own != which) return false;
    if (own != plate_model::LAYERED) continue;
    if (m.shell_sections[m.elements[e].section].thickness_points != m.shell_sections[one->section].thickness_points) {
      return false;
    }
  }
  return true;
}

// The library moves the displacements of a call to the plane of the element, and takes the stored ones as they stand.
void plate_group::store_displacements(std::size_t element, const element_vector& displacements) {
  const PLATE_RECORD& plate = records_[data_.place(element)];
  MATRIX<6, 4>& stored = states_[data_.place(element)].STORED_DISPLACEMENTS;
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
