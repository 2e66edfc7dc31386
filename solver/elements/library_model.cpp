// library_model.cpp: fills MODEL_DATA, the plate records and the material store from a model.
//
// Every shell section gets a material block, a section block and a material record of its own, all under the section's
// number, because a record says both what the material is and how it lies in the section.
#include "elements/library_model.h"

#include <algorithm>
#include <cmath>

#include "elements/material_axes.h"
#include "elements/thermal_strains.h"
#include "finites/fields.h"
#include "finites/views.hpp"
#include "tarnix.h"

namespace solver {

namespace {

constexpr double THIN_SHELL_FORMULATION = 1;
constexpr double MEMBRANE_FORMULATION = 2;
constexpr double THICK_SHELL_FORMULATION = 0;
constexpr std::int32_t ELASTIC_MATERIAL = 0, YIELDING_MATERIAL = 1;

const material& material_of(const model& m, const shell_section& section) {
  if (section.material < 0 || static_cast<std::size_t>(section.material) >= m.materials.size())
    throw model_error(m, section, "*SHELL SECTION", "the section has no material");
  return m.materials[static_cast<std::size_t>(section.material)];
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
  record.HARDENING = static_cast<float>(mat.E1 * mat.plastic_modulus / (mat.E1 + mat.plastic_modulus));
  record.E1 = static_cast<float>(mat.E1);
  record.E2 = static_cast<float>(E2);
  record.NU1 = static_cast<float>(mat.NU12);
  record.NU2 = static_cast<float>(mat.NU12 * E2 / mat.E1);
  record.G12 = static_cast<float>(G12);
  record.G13 = static_cast<float>(mat.orthotropic ? mat.G13 : G12);
  record.G23 = static_cast<float>(mat.orthotropic ? mat.G23 : G12);
  record.ALPHA1 = static_cast<float>(mat.alpha1);
  record.ALPHA2 = static_cast<float>(mat.alpha2);
  return record;
}

double formulation_code(const element& e, const shell_section& section) {
  if (is_membrane(e.type)) return MEMBRANE_FORMULATION;
  return section.formulation == shell_formulation::THICK ? THICK_SHELL_FORMULATION : THIN_SHELL_FORMULATION;
}

// A warped shell hangs on rigid arms; a membrane, whose nodes resist no moment, cannot.
bool has_arms(const model& m, const element& e) { return is_shell(e.type) && plate_warp(m, e) > FLAT; }

void check_element(const model& m, const element& e) {
  const std::string name = "element " + std::to_string(e.id);
  const std::size_t corners = e.type == element_type::S3 || e.type == element_type::M3D3 ? 3 : 4;
  if (e.nodes.size() != corners)
    throw model_error(m, e, "*ELEMENT",
                      name + " has " + std::to_string(e.nodes.size()) + " nodes, not " + std::to_string(corners));
  if (e.section < 0 || static_cast<std::size_t>(e.section) >= m.shell_sections.size())
    throw model_error(m, e, "*ELEMENT", name + " has no *SHELL SECTION");
  const shell_section& section = m.shell_sections[static_cast<std::size_t>(e.section)];
  if (is_membrane(e.type) && section.offset != 0)
    throw model_error(m, section, "*SHELL SECTION",
                      "OFFSET on membrane " + name + ": nothing resists the moment of an eccentric membrane force");
}

}  // namespace

library_model::library_model(const model& m)
    : model_(m), layout_(m), model_data_(layout_.end, 0.0), flat_parts_(find_flat_parts(m)) {
  TARNIX_CLEAR();
  MODEL_DATA A(model_data_.data());
  A(RES_BASE) = static_cast<double>(EXCHANGE_START);
  A(ENTRY_START) = static_cast<double>(layout_.elements);
  A(ENTRY_STRIDE) = static_cast<double>(ELEMENT_LENGTH);
  A(SHEAR_DEFORMATION) = 1;
  fill_sections();
  fill_frame_sections();
  fill_solid_sections();
  fill_nodes();
  fill_elements();
  refer_to_records();
  std::vector<char> flat(m.nodes.size(), 0);
  for (const flat_part& part : flat_parts_)
    for (const int n : part.nodes) flat[static_cast<std::size_t>(n)] = 1;
  for (const element& e : m.elements) {
    tied_.push_back(is_tied(m, e) ? 1 : 0);
    const bool flat_shell = is_shell(e.type) && flat[static_cast<std::size_t>(e.nodes.front())] != 0;
    on_flat_part_.push_back(flat_shell ? 1 : 0);
  }
}

library_model::~library_model() { TARNIX_CLEAR(); }

void library_model::fill_sections() {
  const model& m = model_;
  MODEL_DATA A(model_data_.data());
  for (std::size_t s = 0; s < m.shell_sections.size(); ++s) {
    const shell_section& section = m.shell_sections[s];
    const material& mat = material_of(m, section);
    const std::int32_t number = static_cast<std::int32_t>(s) + 1;
    const auto at = static_cast<std::int64_t>(layout_.material(s));
    A(at + MATERIAL_NUMBER) = number;
    A(at + MATERIAL_YIELD_STRESS) = mat.yield_stress;
    A(at + MATERIAL_YOUNG) = mat.E1;
    A(at + MATERIAL_POISSON) = mat.NU12;
    A(at + MATERIAL_UNIT_WEIGHT) = mat.density * GRAVITY;
    A(at + MATERIAL_EXPANSION) = mat.alpha1;
    A(at + MATERIAL_SHEAR_MODULUS) = mat.orthotropic ? mat.G12 : mat.E1 / (2 * (1 + mat.NU12));

    const auto sec = static_cast<std::int64_t>(layout_.section(s));
    A(sec + SECTION_NUMBER) = number;
    A(sec + SECTION_TYPE) = HOMOGENEOUS_SECTION;
    A(sec + SECTION_THICKNESS) = section.thickness;

    const MATERIAL_RECORD record = material_record(mat);
    TARNIX_STORE_MATERIAL(&number, &record);
  }
}

void library_model::fill_nodes() {
  MODEL_DATA A(model_data_.data());
  for (std::size_t n = 0; n < model_.nodes.size(); ++n) {
    const auto block = static_cast<std::int64_t>(layout_.node(n)) + NODE_X;
    for (std::size_t i = 0; i < 3; ++i) A(block + static_cast<std::int64_t>(i)) = model_.nodes[n].xyz[i];
  }
}

void library_model::fill_elements() {
  const std::size_t count = model_.elements.size();
  plate_records_.assign(count, PLATE_RECORD{});
  plate_of_elem_.assign(count, 0);
  elem_pos_.assign(count, 0);
  solid_pos_.assign(count, 0);
  const auto frames = static_cast<std::size_t>(std::count_if(model_.elements.begin(), model_.elements.end(),
                                                             [](const element& e) { return is_member(e.type); }));
  members_.reserve(frames);  // the library keeps addresses of property records
  for (std::size_t e = 0; e < count; ++e) {
    MODEL_DATA A(model_data_.data());
    A(static_cast<std::int64_t>(layout_.element(e)) + ELEM_ID) = at(e).id;
    if (solid(e))
      fill_solid(e);
    else
      plate(e) ? fill_plate(e) : fill_member(e);
  }
}

void library_model::fill_plate(std::size_t e) {
  const element& elem = at(e);
  check_element(model_, elem);
  const shell_section& section = model_.shell_sections[static_cast<std::size_t>(elem.section)];
  MODEL_DATA A(model_data_.data());
  const auto k = static_cast<std::int64_t>(layout_.element(e));
  A(k + MASS_FACTOR) = 1;
  A(k + BLOCK_NODE_COUNT) = static_cast<double>(elem.nodes.size());
  A(k + FORMULATION) = formulation_code(elem, section);
  A(k + OFFSET_SWITCH) = section.offset != 0 || has_arms(model_, elem) ? 1 : 0;
  A(k + MODIFIER_MEMBRANE) = 1;
  A(k + MODIFIER_BENDING) = 1;
  A(k + MODIFIER_SHEAR) = 1;
  A(k + PLASTIC_SWITCH) = model_of(e) == plate_model::ELASTIC ? 0 : 1;
  A(k + ORTHO_ANGLE_IN) = material_angle(model_, elem);
  fill_plate_record(e);
  plate_of_elem_[e] = static_cast<std::int32_t>(e) + 1;
}

void library_model::fill_plate_record(std::size_t e) {
  const element& elem = at(e);
  const auto s = static_cast<std::size_t>(elem.section);
  PLATE_RECORD& record = plate_records_[e];
  record.SECTION_PTR = static_cast<std::int32_t>(layout_.section(s));
  record.MATERIAL_PTR = static_cast<std::int32_t>(layout_.material(s));
  const int corners = static_cast<int>(elem.nodes.size());
  record.NODE_COUNT = corners;
  for (int n = 1; n <= corners; ++n)
    record.NODE_PTR(n) =
        static_cast<std::int32_t>(layout_.node(static_cast<std::size_t>(elem.nodes[static_cast<std::size_t>(n - 1)])));

  // The offset leads from the mid surface to the node; the library subtracts it from the node. The nodes of a warped
  // shell lie off its plane by as much again: without these arms their forces would be out of balance by a moment that
  // no refinement makes smaller.
  const MATRIX<3, 3> axes = plate_axes(model_, elem);
  const shell_section& section = model_.shell_sections[s];
  const double distance = section.offset * section.thickness;
  const std::array<double, 4> warp = has_arms(model_, elem) ? warp_heights(model_, elem) : std::array<double, 4>{};
  for (int n = 1; n <= corners; ++n)
    for (int i = 1; i <= 3; ++i)
      record.NODE_OFFSETS(n, i) = (distance + warp[static_cast<std::size_t>(n - 1)]) * axes(3, i);
}

void library_model::refer_to_records() {
  SOLANAELEM.PLATE_RECORDS = REFER_TO(plate_records_.data(), plate_records_.size());
  SOLANAELEM.PLATE_OF_ELEM = REFER_TO(plate_of_elem_.data(), plate_of_elem_.size());
  SOLANAELEM.ELEM_POS = REFER_TO(elem_pos_.data(), elem_pos_.size());
  SOLANAELEM.MEMBER_REC = REFER_TO(member_records_.data(), member_records_.size());
  SOLANAELEM.HINGE_REC = REFER_TO(hinge_records_.data(), hinge_records_.size());
  force_records_.assign(member_records_.size(), MEMBER_FORCES_RECORD{});
  SOLANAELEM.MEMBER_FORCES = REFER_TO(force_records_.data(), force_records_.size());
  SOLANAELEM.SOLID_POS = REFER_TO(solid_pos_.data(), solid_pos_.size());
  SOLANAELEM.SOLID_REC = REFER_TO(solid_records_.data(), solid_records_.size());
}

}  // namespace solver
