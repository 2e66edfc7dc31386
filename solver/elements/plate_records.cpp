// plate_records.cpp: fills the blocks and records of plates and the material store.
//
// Every shell section gets a material block, a section block and a material record of its own, all under the section's
// number, because a record says both what the material is and how it lies in the section.
#include "elements/plate_group.h"

#include <array>
#include <string>

#include "elements/material_axes.h"
#include "elements/plate_axes.h"
#include "elements/thermal_strains.h"
#include "finites/fields.h"
#include "finites/views.hpp"
#include "model/model_error.h"
#include "model/vectors.h"
#include "tarnix.h"

namespace solver {

namespace {

constexpr double THIN_SHELL_FORMULATION = 1;
constexpr double MEMBRANE_FORMULATION = 2;
constexpr double THICK_SHELL_FORMULATION = 0;
constexpr std::int32_t ELASTIC_MATERIAL = 0, YIELDING_MATERIAL = 1;

const material& material_of(const model& m, const shell_section& section) {
  if (section.material < 0 || section.material >= count_of(m.materials)) {
    throw model_error(m, section, "*SHELL SECTION", "the section has no material");
  }
  return m.materials[section.material];
}

// NU12 is the strain along 2 per strain along 1 under stress along 1, and NU21 = NU12 E2 / E1 its reciprocal partner:
// with NU1 = NU12 and NU2 = NU21 both couplings of the library, E2 NU1 and E1 NU2, are the same number.
MATERIAL_RECORD material_record(const material& mat) {
  MATERIAL_RECORD record{};
  record.mtype = mat.yield_stress > 0 ? YIELDING_MATERIAL : ELASTIC_MATERIAL;
  record.ortho = is_general(mat) ? 1 : 0;
  const double E2 = mat.orthotropic ? mat.E2 : mat.E1;
  const double G12 = mat.orthotropic ? mat.G12 : mat.E1 / (2 * (1 + mat.NU12));
  // The tangent of the uniaxial line, in series of the elastic and the plastic one.
  record.HARDENING = single(mat.E1 * mat.plastic_modulus / (mat.E1 + mat.plastic_modulus));
  record.E1 = single(mat.E1);
  record.E2 = single(E2);
  record.NU1 = single(mat.NU12);
  record.NU2 = single(mat.NU12 * E2 / mat.E1);
  record.G12 = single(G12);
  record.G13 = single(mat.orthotropic ? mat.G13 : G12);
  record.G23 = single(mat.orthotropic ? mat.G23 : G12);
  record.ALPHA1 = single(mat.alpha1);
  record.ALPHA2 = single(mat.alpha2);
  return record;
}

double formulation_code(const element& e, const shell_section& section) {
  if (is_membrane(e.type)) return MEMBRANE_FORMULATION;
  return section.formulation == shell_formulation::THICK ? THICK_SHELL_FORMULATION : THIN_SHELL_FORMULATION;
}

void check_element(const model& m, const element& e) {
  const std::string name = "element " + std::to_string(e.id);
  const std::size_t corners = e.type == element_type::S3 || e.type == element_type::M3D3 ? 3 : 4;
  if (e.nodes.size() != corners) {
    throw model_error(m, e, "*ELEMENT",
                      name + " has " + std::to_string(e.nodes.size()) + " nodes, not " + std::to_string(corners));
  }
  if (e.section < 0 || e.section >= count_of(m.shell_sections)) {
    throw model_error(m, e, "*ELEMENT", name + " has no *SHELL SECTION");
  }
  const shell_section& section = m.shell_sections[e.section];
  if (is_membrane(e.type) && section.offset != 0) {
    throw model_error(m, section, "*SHELL SECTION",
                      "OFFSET on membrane " + name + ": nothing resists the moment of an eccentric membrane force");
  }
}

}  // namespace

// Records and states have a place for every element of the process, whatever its kind, so that their number is its own.
plate_group::plate_group(library_data& data)
    : data_(data), flat_parts_(find_flat_parts(data.of())), records_(data.held()), record_of_(data.held(), 0) {
  const model& m = data_.of();
  fill_sections();
  SOLANAELEM.PLATE_RECORDS = REFER_TO(records_.data(), records_.size());
  SOLANAELEM.PLATE_OF_ELEM = REFER_TO(record_of_.data(), record_of_.size());
  numbered<char> flat(m.nodes.size(), 0);
  for (const flat_part& part : flat_parts_) {
    for (const int n : part.nodes) flat[n] = 1;
  }
  for (const element& e : m.elements) {
    tied_.push_back(is_tied(m, e) ? 1 : 0);
    on_flat_part_.push_back(is_shell(e.type) && flat[e.nodes.front()] != 0 ? 1 : 0);
  }
}

void plate_group::fill_sections() {
  const model& m = data_.of();
  MODEL_DATA A = data_.A();
  for (int s = 0; s < count_of(m.shell_sections); ++s) {
    const shell_section& section = m.shell_sections[s];
    const material& mat = material_of(m, section);
    const std::int32_t number = s + 1;
    const std::int32_t at = data_.layout().material(s);
    A(at + MATERIAL_NUMBER) = number;
    A(at + MATERIAL_YIELD_STRESS) = mat.yield_stress;
    A(at + MATERIAL_YOUNG) = mat.E1;
    A(at + MATERIAL_POISSON) = mat.NU12;
    A(at + MATERIAL_UNIT_WEIGHT) = mat.density * GRAVITY;
    A(at + MATERIAL_EXPANSION) = mat.alpha1;
    A(at + MATERIAL_SHEAR_MODULUS) = mat.orthotropic ? mat.G12 : mat.E1 / (2 * (1 + mat.NU12));

    const std::int32_t sec = data_.layout().section(s);
    A(sec + SECTION_NUMBER) = number;
    A(sec + SECTION_TYPE) = HOMOGENEOUS_SECTION;
    A(sec + SECTION_THICKNESS) = section.thickness;

    const MATERIAL_RECORD record = material_record(mat);
    TARNIX_STORE_MATERIAL(&number, &record);
  }
  fill_laminate_parts();
}

void plate_group::add(std::size_t e) {
  const model& m = data_.of();
  const element& elem = data_.at(e);
  check_element(m, elem);
  const shell_section& section = m.shell_sections[elem.section];
  MODEL_DATA A = data_.A();
  const std::int32_t k = data_.entry(e);
  A(k + MASS_FACTOR) = 1;
  A(k + BLOCK_NODE_COUNT) = count_of(elem.nodes);
  A(k + FORMULATION) = formulation_code(elem, section);
  A(k + OFFSET_SWITCH) = section.offset != 0 || has_arms(m, elem) ? 1 : 0;
  A(k + MODIFIER_MEMBRANE) = 1;
  A(k + MODIFIER_BENDING) = 1;
  A(k + MODIFIER_SHEAR) = 1;
  A(k + PLASTIC_SWITCH) = model_of(e) == plate_model::ELASTIC ? 0 : 1;
  A(k + ORTHO_ANGLE_IN) = material_angle(m, elem);
  fill_record(e);
  record_of_[data_.place(e)] = data_.number(e);
}

void plate_group::fill_record(std::size_t e) {
  const model& m = data_.of();
  const element& elem = data_.at(e);
  PLATE_RECORD& record = records_[data_.place(e)];
  record.SECTION_PTR = data_.layout().section(elem.section);
  record.MATERIAL_PTR = data_.layout().material(elem.section);
  record.NODE_COUNT = count_of(elem.nodes);
  for (int n = 1; n <= record.NODE_COUNT; ++n) record.NODE_PTR(n) = data_.node(elem.nodes[n - 1]);

  // The offset leads from the mid surface to the node; the library subtracts it from the node. The nodes of a warped
  // shell lie off its plane by as much again: without these arms their forces would be out of balance by a moment that
  // no refinement makes smaller.
  const vector3 normal = row(plate_axes(m, elem), 3);
  const shell_section& section = m.shell_sections[elem.section];
  const double distance = section.offset * section.thickness;
  const std::array<double, 4> warp = has_arms(m, elem) ? warp_heights(m, elem) : std::array<double, 4>{};
  for (int n = 1; n <= record.NODE_COUNT; ++n) {
    for (int i = 1; i <= 3; ++i) {
      record.NODE_OFFSETS(n, i) = (distance + warp[subscript(n - 1)]) * normal[subscript(i - 1)];
    }
  }
}

}  // namespace solver
