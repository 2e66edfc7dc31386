// laminate_operations.cpp: the stiffness, the forces and the results of a laminate, as sums over its parts.
//
// For a call the element becomes one part: its blocks are those of the part, and the modifiers leave membrane or
// bending out. What does not depend on the elastic constants (mass, loads, geometric stiffness) is asked of the element
// itself.
#include <algorithm>

#include "elements/laminate_stiffness.h"
#include "elements/material_axes.h"
#include "elements/plate_axes.h"
#include "elements/plate_group.h"
#include "elements/scatter_map.h"
#include "elements/thermal_strains.h"
#include "finites/fields.h"
#include "model/result_columns.h"
#include "model/vectors.h"
#include "tarnix.h"

namespace solver {

namespace {

constexpr double THIN_SHELL_FORMULATION = 1;

MATERIAL_RECORD record_of(const laminate_part& part) {
  MATERIAL_RECORD record{};
  record.ortho = 1;
  record.E1 = single(part.E1);
  record.E2 = single(part.E2);
  record.NU1 = single(part.NU12);
  record.NU2 = single(part.NU12 * part.E2 / part.E1);
  record.G12 = single(part.G12);
  record.G13 = single(part.G13);
  record.G23 = single(part.G23);
  return record;
}

// Above -pi/2 and not above pi/2.
double within_half_turn(double angle) {
  while (angle > PI / 2) angle -= PI;
  while (angle <= -PI / 2) angle += PI;
  return angle;
}

}  // namespace

// While it lives, the element is one part of its laminate. Membranes of thin and thick shells are the same; a thin
// shell without bending stiffness has nothing else.
class plate_group::part_in_place {
 public:
  part_in_place(plate_group& group, std::size_t element, int part)
      : A_(group.data_.A()),
        k_(group.data_.entry(element)),
        record_(group.records_[group.data_.place(element)]),
        before_(record_) {
    const laminate_part& p = group.data_.of().laminate_parts[part];
    for (std::size_t i = 0; i < FIELDS.size(); ++i) kept_[i] = A_(k_ + FIELDS[i]);
    record_.SECTION_PTR = group.data_.layout().part_section(part);
    record_.MATERIAL_PTR = group.data_.layout().part_material(part);
    if (!p.bends) A_(k_ + FORMULATION) = THIN_SHELL_FORMULATION;
    A_(k_ + MODIFIER_MEMBRANE) = p.bends ? 0 : 1;
    A_(k_ + MODIFIER_BENDING) = p.bends ? 1 : 0;
    A_(k_ + ORTHO_ANGLE_IN) = within_half_turn(A_(k_ + ORTHO_ANGLE_IN) + p.angle * (PI / 180));
  }
  ~part_in_place() {
    for (std::size_t i = 0; i < FIELDS.size(); ++i) A_(k_ + FIELDS[i]) = kept_[i];
    record_.SECTION_PTR = before_.SECTION_PTR;
    record_.MATERIAL_PTR = before_.MATERIAL_PTR;
  }
  part_in_place(const part_in_place&) = delete;
  part_in_place& operator=(const part_in_place&) = delete;

 private:
  static constexpr std::array<std::int32_t, 4> FIELDS = {FORMULATION, MODIFIER_MEMBRANE, MODIFIER_BENDING,
                                                         ORTHO_ANGLE_IN};
  MODEL_DATA A_;
  std::int32_t k_;
  PLATE_RECORD& record_;
  PLATE_RECORD before_;
  std::array<double, FIELDS.size()> kept_{};
};

void plate_group::fill_laminate_parts() {
  const model& m = data_.of();
  MODEL_DATA A = data_.A();
  for (const shell_section& section : m.shell_sections) {
    if (section.layup < 0) continue;
    const laminate& made = m.laminates[section.layup];
    for (int p = made.first_part; p < made.first_part + made.part_count; ++p) {
      const std::int32_t number = count_of(m.shell_sections) + p + 1;
      const std::int32_t at = data_.layout().part_material(p), sec = data_.layout().part_section(p);
      A(at + MATERIAL_NUMBER) = number;
      A(at + MATERIAL_YOUNG) = m.laminate_parts[p].E1;
      A(at + MATERIAL_POISSON) = m.laminate_parts[p].NU12;
      A(at + MATERIAL_SHEAR_MODULUS) = m.laminate_parts[p].G12;
      A(sec + SECTION_NUMBER) = number;
      A(sec + SECTION_TYPE) = HOMOGENEOUS_SECTION;
      A(sec + SECTION_THICKNESS) = thickness_of(m.laminate_parts[p], section.thickness);
      const MATERIAL_RECORD record = record_of(m.laminate_parts[p]);
      TARNIX_STORE_MATERIAL(&number, &record);
    }
  }
}

const laminate* plate_group::laminate_of(std::size_t element) const {
  const int layup = data_.of().shell_sections[data_.at(element).section].layup;
  return layup < 0 ? nullptr : &data_.of().laminates[layup];
}

// `call` once for each part.
template <class CALL>
void plate_group::each_part(std::size_t element, const CALL& call) {
  const laminate& made = *laminate_of(element);
  for (int p = made.first_part; p < made.first_part + made.part_count; ++p) {
    const part_in_place in_place(*this, element, p);
    call();
  }
}

// The geometric stiffness of the stored forces would come with each part; it is added once.
void plate_group::laminate_stiffness(std::size_t element, element_matrix& K) {
  const bool second_order = data_.is_second_order();
  data_.second_order(false);
  K = element_matrix{};
  const int freedoms = element_freedoms(data_.at(element));
  const auto add = [&](const element_matrix& part) {
    for (int j = 1; j <= freedoms; ++j) {
      for (int i = 1; i <= freedoms; ++i) K(i, j) += part(i, j);
    }
  };
  each_part(element, [&] {
    element_matrix part;
    elastic_call(element, part);
    add(part);
  });
  data_.second_order(second_order);
  if (!second_order) return;
  element_matrix G;
  geometric_stiffness(element, G);
  add(G);
}

void plate_group::laminate_forces(std::size_t element, const element_vector& displacements, element_vector& forces) {
  forces = element_vector{};
  each_part(element, [&] {
    element_vector part;
    force_call(element, displacements, part);
    for (int i = 1; i <= 24; ++i) forces(i) += part(i);
  });
}

namespace {

// Columns that add up over the parts of a laminate.
struct column_range {
  int first, count;
};
constexpr std::array<column_range, 3> SUMMED = {{{COL_FORCES, 3}, {COL_MOMENTS, 3}, {COL_SHEAR_FORCE, 2}}};

void add_record(const double* part, double* sum) {
  for (const column_range& range : SUMMED) {
    for (int c = range.first; c < range.first + range.count; ++c) sum[c - 1] += part[c - 1];
  }
}

}  // namespace

// Stresses from the forces of the whole section, in element axes as those of the library.
element_results plate_group::laminate_results(std::size_t element, const distributed_load& load) {
  constexpr std::size_t RECORDS = 2 * std::size_t{RES_POINTS}, LENGTH = RES_LENGTH;
  const model& m = data_.of();
  const auto& e = data_.at(element);
  laminate_records_.assign(RECORDS * LENGTH, 0);
  const std::vector<double> displacements(data_.exchange() + EXCHANGE_DISPLACEMENTS,
                                          data_.exchange() + EXCHANGE_DISPLACEMENTS + 24);
  each_part(element, [&] {
    std::copy(displacements.begin(), displacements.end(), data_.exchange() + EXCHANGE_DISPLACEMENTS);
    result_call(element);
    for (std::size_t r = 0; r < RECORDS; ++r) {
      add_record(data_.exchange() + EXCHANGE_NODES + r * LENGTH, laminate_records_.data() + r * LENGTH);
    }
  });
  const MATRIX<3, 3> axes = plate_axes(m, e), section_axes = material_axes(m, e);
  const plane_rotation to_section(axes, section_axes), to_element(section_axes, axes);
  const double h = m.shell_sections[e.section].thickness, gradient = load.temperature_difference / h;
  for (std::size_t r = 0; r < RECORDS; ++r) {
    double* const record = laminate_records_.data() + r * LENGTH;
    const plane_vector N = to_section.tensor(record + COL_FORCES - 1), M = to_section.tensor(record + COL_MOMENTS - 1);
    const auto stresses = layer_stresses(*laminate_of(element), m.materials, N, M, load.temperature_change, gradient);
    for (std::size_t s = 0; s < stresses.size(); ++s) {
      const plane_vector turned = to_element.tensor(stresses[s].data());
      std::copy(turned.begin(), turned.end(), record + STRESS_COLUMN[s] - 1);
    }
    for (int i = 0; i < 2; ++i) {
      record[COL_SHEAR_STRESS - 1 + i] = record[COL_SHEAR_FORCE - 1 + i] / (SHEAR_SHARE * h);
    }
  }
  return {laminate_records_.data(), laminate_records_.data() + RES_POINTS * LENGTH};
}

}  // namespace solver
