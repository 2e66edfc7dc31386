// member_records.cpp: fills the entries and records of frame elements.
//
// Every frame section gets a material block and a section block of its own. Local axes are x along the member, y along
// n1 of the section, z = x cross y: bending in the x-y plane turns about z.
#include <cmath>
#include <cstring>

#include "elements/library_model.h"
#include "finites/fields.h"
#include "finites/views.hpp"
#include "tarnix.h"
#include "vornekal.h"

namespace solver {

namespace {

// Failing members are no part of this solver's analyses; the ratio is only kept away from 1, where its logarithm is 0.
constexpr float REMOVE_RATIO_UNUSED = 10.0F;

// Words of a property record, from 0, in the order of the freedoms. The record of a link has five words in front.
constexpr std::array<std::size_t, 6> STIFFNESS_WORD = {4, 15, 26, 12, 23, 34};
constexpr std::size_t LINK_SHIFT = 5;
constexpr std::size_t LINK_FORM_WORD = 5;  // 0: the deformable point lies at mid-length

const material* material_of(const model& m, const frame_section& section) {
  return section.material < 0 ? nullptr : &m.materials[static_cast<std::size_t>(section.material)];
}

double shear_modulus(const material& mat) { return mat.E1 / (2 * (1 + mat.NU12)); }

// Shear areas cross: the first field belongs to x-z bending. A shear stiffness is G times shear area.
void fill_section_block(MODEL_DATA A, std::int64_t S, const frame_section& section, double G) {
  A(S + FRAME_SECTION_TYPE) = section.pretension != 0 ? PRETENSIONED_SECTION : HOMOGENEOUS_SECTION;
  A(S + SECTION_AREA) = section.area;
  A(S + SECTION_SHEAR_AREA_Z) = section.shear_stiffness_z / G;
  A(S + SECTION_SHEAR_AREA_Y) = section.shear_stiffness_y / G;
  A(S + SECTION_I1) = section.inertia_xy;
  A(S + SECTION_I2) = section.inertia_xz;
  A(S + SECTION_J) = section.torsion;
}

}  // namespace

void library_model::fill_frame_sections() {
  SOLPARAM_RECORD parameters{};
  parameters.REMOVE_RATIO = REMOVE_RATIO_UNUSED;
  TARNIX_STORE_SOLPARAM(&parameters);
  MODEL_DATA A(model_data_.data());
  for (std::size_t s = 0; s < model_.frame_sections.size(); ++s) {
    const frame_section& section = model_.frame_sections[s];
    const material* const mat = material_of(model_, section);
    if (mat == nullptr) continue;  // springs and links have their stiffnesses in their own records
    const auto M = static_cast<std::int64_t>(layout_.frame_material(s));
    A(M + MEMBER_E1) = mat->E1;
    A(M + MEMBER_E2) = mat->E1;
    A(M + MEMBER_G) = shear_modulus(*mat);
    fill_section_block(A, static_cast<std::int64_t>(layout_.frame_section_block(s)), section, shear_modulus(*mat));
  }
}

void library_model::fill_member(std::size_t e) {
  const element& elem = at(e);
  if (elem.section < 0 || static_cast<std::size_t>(elem.section) >= model_.frame_sections.size())
    throw model_error(model_, elem, "*ELEMENT", "element " + std::to_string(elem.id) + " has no section");
  const frame_section& section = frame_section_of(model_, elem);
  const auto s = static_cast<std::size_t>(elem.section);
  elem_pos_[e] = static_cast<std::int32_t>(members_.size()) + 1;

  member one{};
  one.length = member_length(model_, elem);
  const MATRIX<3, 3> axes = member_axes(model_, elem);
  for (int block = 0; block < 12; block += 3)
    for (int j = 1; j <= 3; ++j)
      for (int i = 1; i <= 3; ++i) one.T(block + i, block + j) = axes(i, j);
  members_.push_back(one);
  MEMBER_RECORD record{};
  record.LENGTH = one.length;
  member_records_.push_back(record);
  hinge_records_.push_back(hinge_record(e));

  MODEL_DATA A(model_data_.data());
  const auto I = static_cast<std::int64_t>(layout_.element(e));
  const bool cable = is_cable(model_, elem);
  A(I + MEMBER_SECTION) = static_cast<double>(layout_.frame_section_block(s));
  A(I + MEMBER_MATERIAL) = static_cast<double>(layout_.frame_material(s));
  for (std::size_t n = 0; n < elem.nodes.size(); ++n) {
    const auto node = static_cast<std::size_t>(elem.nodes[n]);
    A(I + MEMBER_NODE_1 + static_cast<std::int64_t>(n)) =
        static_cast<double>(cable ? layout_.displaced_node(node) : layout_.node(node));
  }
  for (const int factor : {FACTOR_AREA, FACTOR_I1, FACTOR_I2, FACTOR_J, FACTOR_TORSION}) A(I + factor) = 1;
  const double weighed = cable ? cable_length(model_, elem) : one.length;
  if (const material* const mat = material_of(model_, section))
    A(I + MEMBER_WEIGHT) = mat->density * section.area * weighed * GRAVITY;
  if (cable) A(I + UNSTRESSED_LENGTH) = cable_length(model_, elem);
  A(I + PRETENSION_STRESS) = section.pretension;
  for (int i = 0; i < 3; ++i) A(I + MEMBER_DIRECTION + i) = section.n1[static_cast<std::size_t>(i)];
  fill_member_ends(e);
  if (section.kind == frame_section_kind::SPRING || section.kind == frame_section_kind::LINK) fill_property(e);
}

void library_model::fill_member_ends(std::size_t e) {
  MODEL_DATA A(model_data_.data());
  const auto I = static_cast<std::int64_t>(layout_.element(e));
  const int index = at(e).ends;
  const member_ends ends = index < 0 ? member_ends{} : model_.ends[static_cast<std::size_t>(index)];
  A(I + FIXITY_Y1) = ends.fixity[0][0];
  A(I + FIXITY_Z1) = ends.fixity[0][1];
  A(I + FIXITY_Y2) = ends.fixity[1][0];
  A(I + FIXITY_Z2) = ends.fixity[1][1];
  A(I + RELEASE_AXIAL) = ends.released[0];
  A(I + RELEASE_Y) = ends.released[1];
  A(I + RELEASE_Z) = ends.released[2];
  A(I + RELEASE_TORSION) = ends.released[3];
}

// Stiffnesses travel in single precision. A spring along its own line is a link with one stiffness, because a spring of
// the library has global directions.
void library_model::fill_property(std::size_t e) {
  const frame_section& section = frame_section_of(model_, at(e));
  const bool link = at(e).type == element_type::SPRINGA || at(e).type == element_type::CONN3D2;
  std::array<std::int32_t, 45>& record = member_of(e).property;
  for (std::size_t i = 0; i < 6; ++i) {
    const auto stiffness = static_cast<float>(section.stiffness[i]);
    std::memcpy(&record[STIFFNESS_WORD[i] + (link ? LINK_SHIFT : 0)], &stiffness, sizeof stiffness);
  }
  if (link) record[LINK_FORM_WORD] = section.deforms_at_mid_length ? 0 : 1;

  const std::int32_t* const address = record.data();
  double word = 0;
  static_assert(sizeof address == sizeof word);
  std::memcpy(&word, &address, sizeof word);
  MODEL_DATA A(model_data_.data());
  A(static_cast<std::int64_t>(layout_.element(e)) + PROPERTY_ADDRESS) = word;
}

double cable_length(const model& m, const element& e) {
  const frame_section& section = frame_section_of(m, e);
  return section.unstressed_length > 0 ? section.unstressed_length : section.length_ratio * member_length(m, e);
}

}  // namespace solver
