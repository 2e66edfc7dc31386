// frame_records.cpp: fills the blocks and records of frame elements.
//
// Every frame section gets a material block and a section block of its own. Local axes are x along the member, y along
// n1 of the section, z = x cross y: bending in the x-y plane turns about z.
#include "elements/frame_records.h"

#include "elements/member_axes.h"
#include "finites/fields.h"
#include "finites/services.h"
#include "model/vectors.h"
#include "tarnix.h"
#include "vornekal.h"

namespace solver {

namespace {

// Failing members are no part of this solver's analyses; the ratio is only kept away from 1, where its logarithm is 0.
constexpr float REMOVE_RATIO_UNUSED = 10.0F;

constexpr std::int32_t WITH_HINGES = 1;

const material* material_of(const model& m, const frame_section& section) {
  return section.material < 0 ? nullptr : &m.materials[section.material];
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

// The local axes, four times on the diagonal: two nodes with translations and rotations.
MATRIX<12, 12> axes_of_twelve(const MATRIX<3, 3>& axes) {
  MATRIX<12, 12> T{};
  for (int block = 0; block < 12; block += 3) {
    for (int j = 1; j <= 3; ++j) {
      for (int i = 1; i <= 3; ++i) T(block + i, block + j) = axes(i, j);
    }
  }
  return T;
}

template <class RECORD>
ARRAY_REFERENCE<RECORD, 1> refer(std::vector<RECORD>& records) {
  return REFER_TO(records.data(), records.size());
}

}  // namespace

frame_records::frame_records(library_data& data) : data_(data) {
  const numbered<element>& elements = data_.of().elements;
  std::size_t count = 0;
  for (std::size_t e = 0; e < elements.size(); ++e) {
    if (data_.holds(e) && is_member(elements[e].type)) ++count;
  }
  position_.resize(data_.held());
  axes_.resize(count);
  members_.resize(count);
  hinges_.resize(count);
  forces_.resize(count);
  SOLANAELEM.ELEM_POS = refer(position_);
  SOLANAELEM.MEMBER_REC = refer(members_);
  SOLANAELEM.HINGE_REC = refer(hinges_);
  SOLANAELEM.MEMBER_FORCES = refer(forces_);
  fill_sections();
}

void frame_records::fill_sections() {
  SOLPARAM_RECORD parameters{};
  parameters.REMOVE_RATIO = REMOVE_RATIO_UNUSED;
  TARNIX_STORE_SOLPARAM(&parameters);
  const model& m = data_.of();
  MODEL_DATA A = data_.A();
  for (std::size_t s = 0; s < m.frame_sections.size(); ++s) {
    const frame_section& section = m.frame_sections[s];
    const material* const mat = material_of(m, section);
    if (mat == nullptr) continue;  // springs and links have their stiffnesses in their own records
    const std::int32_t M = data_.layout().frame_material(s);
    A(M + MEMBER_E1) = mat->E1;
    A(M + MEMBER_E2) = mat->E1;
    A(M + MEMBER_G) = shear_modulus(*mat);
    fill_section_block(A, data_.layout().frame_section_block(s), section, shear_modulus(*mat));
  }
}

void frame_records::add(std::size_t e, double length, node_blocks nodes) {
  const model& m = data_.of();
  const element& elem = data_.at(e);
  const frame_section& section = frame_section_of(m, elem);
  position_[data_.place(e)] = ++count_;
  axes_[position(e)] = axes_of_twelve(member_axes(m, elem));
  member(e).LENGTH = member_length(m, elem);
  hinge(e) = hinge_record(elem);

  const library_layout& layout = data_.layout();
  MODEL_DATA A = data_.A();
  const std::int32_t I = data_.entry(e);
  A(I + MEMBER_SECTION) = layout.frame_section_block(elem.section);
  A(I + MEMBER_MATERIAL) = layout.frame_material(elem.section);
  for (int n = 0; n < count_of(elem.nodes); ++n) {
    A(I + MEMBER_NODE_1 + n) =
        nodes == node_blocks::DISPLACED ? data_.displaced_node(elem.nodes[n]) : data_.node(elem.nodes[n]);
  }
  for (const int factor : {FACTOR_AREA, FACTOR_I1, FACTOR_I2, FACTOR_J, FACTOR_TORSION}) A(I + factor) = 1;
  if (const material* const mat = material_of(m, section)) {
    A(I + MEMBER_WEIGHT) = mat->density * section.area * length * GRAVITY;
  }
  A(I + PRETENSION_STRESS) = section.pretension;
  for (int i = 0; i < 3; ++i) A(I + MEMBER_DIRECTION + i) = section.n1[subscript(i)];
  fill_ends(e);
}

void frame_records::fill_ends(std::size_t e) {
  MODEL_DATA A = data_.A();
  const std::int32_t I = data_.entry(e);
  // Releases of a beam whose section lies off its nodes act at the nodes (placed_operations.cpp).
  const bool placed = is_placed(frame_section_of(data_.of(), data_.at(e)).place);
  const member_ends ends = placed ? member_ends{} : ends_of(data_.of(), data_.at(e));
  A(I + FIXITY_Y1) = ends.fixity[0][0];
  A(I + FIXITY_Z1) = ends.fixity[0][1];
  A(I + FIXITY_Y2) = ends.fixity[1][0];
  A(I + FIXITY_Z2) = ends.fixity[1][1];
  A(I + RELEASE_AXIAL) = ends.released[0];
  A(I + RELEASE_Y) = ends.released[1];
  A(I + RELEASE_Z) = ends.released[2];
  A(I + RELEASE_TORSION) = ends.released[3];
}

HINGE_RECORD frame_records::hinge_record(const element& e) const {
  HINGE_RECORD record{};
  if (e.hinges < 0) return record;
  const hinge_model& h = data_.of().hinges[e.hinges];
  record.HINGE_MODEL = WITH_HINGES;
  record.CURVE_KIND = static_cast<std::int32_t>(h.curve);
  record.FORCE_SET = h.force_set;
  record.CAP_P = h.cap_p;
  record.CAP_MY = h.cap_my;
  record.CAP_MZ = h.cap_mz;
  return record;
}

}  // namespace solver
