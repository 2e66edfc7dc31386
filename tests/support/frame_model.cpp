// frame_model.cpp: the layout of a model of members and the calls on it.
#include "frame_model.h"

#include <algorithm>
#include <cstring>
#include <limits>

#include "finites/fields.h"
#include "finites/finites.h"
#include "tarnix.h"

namespace support {

namespace {

constexpr std::int32_t HEADER_LENGTH = 121;
constexpr std::int32_t ENTRY_LENGTH = 91;
constexpr std::int32_t SECTION_BLOCK = 13;
constexpr std::int32_t MATERIAL_BLOCK = 11;
constexpr std::int32_t NODE_BLOCK = 31;
constexpr std::int32_t MEMBER_LENGTH = ENTRY_LENGTH + SECTION_BLOCK + MATERIAL_BLOCK + 2 * NODE_BLOCK;
constexpr int LOAD_ROWS = 13;
constexpr std::size_t FULL = 144, TRUSS_FULL = 36;

// An output before the call: what a routine does not write, it shows.
std::vector<double> unwritten(std::size_t entries) {
  return std::vector<double>(entries, std::numeric_limits<double>::quiet_NaN());
}

// What a record that no member uses holds.
MEMBER_RECORD unused_record() {
  constexpr double nan = std::numeric_limits<double>::quiet_NaN();
  MEMBER_RECORD record{};
  record.AXIAL_FORCE = record.K11_COPY = record.PRESTRESS_FORCE = record.TAU_B = record.LENGTH = nan;
  record.REMOVE_STEP = -1000;
  return record;
}

}  // namespace

std::vector<double> unit_rotation() {
  std::vector<double> T(FULL, 0.0);
  for (std::size_t i = 0; i < 12; ++i) T[13 * i] = 1.0;
  return T;
}

frame_model::frame_model(const std::vector<member_description>& members, company with)
    : with_(with),
      members_(members),
      storage_(static_cast<std::size_t>(HEADER_LENGTH) + members.size() * static_cast<std::size_t>(MEMBER_LENGTH),
               std::numeric_limits<double>::quiet_NaN()),
      A_(storage_.data()),
      T_(unit_rotation()),
      T2_(FULL, std::numeric_limits<double>::quiet_NaN()),
      records_(2 * members.size() + 1, unused_record()),
      hinges_(2 * members.size() + 1) {
  if (with_ == company::alone) TARNIX_CLEAR();
  parameters_.REMOVE_RATIO = 2.0F;
  TARNIX_STORE_SOLPARAM(&parameters_);
  set_kind(0.0);
  set_shear_deformation(0.0);
  for (int elem = 1; elem <= count(); ++elem) {
    elem_pos_.push_back(position(elem));
    fill_member(elem);
    fill_blocks(elem);
    fill_records(elem);
  }
  SOLANAELEM.ELEM_POS = REFER_TO(elem_pos_.data(), count());
  SOLANAELEM.MEMBER_REC = REFER_TO(records_.data(), records_.size());
  SOLANAELEM.HINGE_REC = REFER_TO(hinges_.data(), hinges_.size());
}

frame_model::~frame_model() {
  if (with_ == company::alone) TARNIX_CLEAR();
}

std::int32_t frame_model::entry(int elem) const { return HEADER_LENGTH + (elem - 1) * MEMBER_LENGTH; }
std::int32_t frame_model::section(int elem) const { return entry(elem) + ENTRY_LENGTH; }
std::int32_t frame_model::material(int elem) const { return section(elem) + SECTION_BLOCK; }
std::int32_t frame_model::node(int elem, int end) const {
  return material(elem) + MATERIAL_BLOCK + (end - 1) * NODE_BLOCK;
}
std::int32_t frame_model::number(int elem) const { return at(elem).id != 0 ? at(elem).id : 10 * elem + 7; }

// The entry: what every family reads, then what its own does.
void frame_model::fill_member(int elem) {
  const member_description& m = at(elem);
  const std::int32_t I = entry(elem);
  A_(I + ELEM_ID) = number(elem);
  A_(I + REMOVE_MIN) = m.remove_min;
  if (m.family == member_family::link || m.family == member_family::spring) {
    const void* address = m.property.empty() ? nullptr : m.property.data();
    std::memcpy(&A_(I + PROPERTY_ADDRESS), &address, sizeof address);
    A_(I + MEMBER_NODE_1) = node(elem, 1);
    return;
  }
  A_(I + MEMBER_SECTION) = section(elem);
  A_(I + MEMBER_MATERIAL) = material(elem);
  A_(I + MEMBER_WEIGHT) = m.weight;
  A_(I + FACTOR_AREA) = m.factor_area;
  if (m.family == member_family::beam) fill_beam(elem);
  if (m.family == member_family::truss) A_(I + PRETENSION_STRESS) = m.pretension_stress;
  if (m.family == member_family::cable) {
    A_(I + MEMBER_NODE_1) = node(elem, 1);
    A_(I + MEMBER_NODE_2) = node(elem, 2);
    A_(I + UNSTRESSED_LENGTH) = m.unstressed_length;
  }
}

void frame_model::fill_beam(int elem) {
  const member_description& m = at(elem);
  const std::int32_t I = entry(elem);
  A_(I + FIXITY_Y1) = m.fixity_y[0];
  A_(I + FIXITY_Y2) = m.fixity_y[1];
  A_(I + FIXITY_Z1) = m.fixity_z[0];
  A_(I + FIXITY_Z2) = m.fixity_z[1];
  A_(I + FACTOR_I1) = m.factor_i1;
  A_(I + FACTOR_I2) = m.factor_i2;
  A_(I + FACTOR_J) = m.factor_j;
  A_(I + FACTOR_TORSION) = m.factor_torsion;
  A_(I + RELEASE_AXIAL) = m.release[0];
  A_(I + RELEASE_Y) = m.release[1];
  A_(I + RELEASE_Z) = m.release[2];
  A_(I + RELEASE_TORSION) = m.release[3];
  A_(I + REDUCTION_INDEX) = m.reduction_index;
}

void frame_model::fill_blocks(int elem) {
  const member_description& m = at(elem);
  const std::int32_t S = section(elem), M = material(elem);
  if (m.family == member_family::spring) A_(node(elem, 1) + NODE_LOCAL_AXES) = m.local_axes;
  if (m.family == member_family::link || m.family == member_family::spring) return;
  A_(S + SECTION_AREA) = m.area;
  A_(M + MEMBER_E1) = m.e1;
  if (m.family != member_family::cable) A_(S + FRAME_SECTION_TYPE) = m.section_type;
  if (m.family == member_family::cable) {
    for (std::size_t i = 0; i < 3; ++i) {
      A_(node(elem, 1) + NODE_X + static_cast<std::int32_t>(i)) = m.node1[i];
      A_(node(elem, 2) + NODE_X + static_cast<std::int32_t>(i)) = m.node2[i];
    }
  }
  if (m.family != member_family::beam) return;
  A_(S + SECTION_SHEAR_AREA_Y) = m.shear_area_y;
  A_(S + SECTION_SHEAR_AREA_Z) = m.shear_area_z;
  A_(S + SECTION_I1) = m.i1;
  A_(S + SECTION_I2) = m.i2;
  A_(S + SECTION_J) = m.j;
  A_(M + MEMBER_G) = m.g;
  A_(M + MEMBER_E2) = m.e2;
  A_(M + MEMBER_MATERIAL_KIND) = m.material_kind;
}

void frame_model::fill_records(int elem) {
  member_description& m = members_[static_cast<std::size_t>(elem - 1)];
  MEMBER_RECORD& r = record(elem);
  r.LENGTH = m.length;
  r.AXIAL_FORCE = m.axial_force;
  r.TAU_B = m.tau_b;
  r.REMOVE_STEP = m.remove_step;
  for (int t = 1; t <= 3; ++t) {
    r.NL_SPRING_IDX(t) = m.nl_spring[static_cast<std::size_t>(t - 1)];
    r.REMOVE_STEP_SPR(t) = m.remove_step_spring[static_cast<std::size_t>(t - 1)];
  }
  if (!m.loads.empty()) r.MEMBER_LOADS = REFER_TO(m.loads.data(), LOAD_ROWS, m.loads.size() / LOAD_ROWS);
  hinge(elem) = m.hinge;
}

void frame_model::set_lumped_mass(int lumped) {
  parameters_.LUMPED_MASS = lumped;
  TARNIX_STORE_SOLPARAM(&parameters_);
}

void frame_model::set_remove_ratio(float ratio) {
  parameters_.REMOVE_RATIO = ratio;
  TARNIX_STORE_SOLPARAM(&parameters_);
}

void frame_model::set_stiff_reduction(int on, const std::vector<float>& factors) {
  parameters_.STIFF_REDUCTION_ON = on;
  TARNIX_STORE_SOLPARAM(&parameters_);
  reductions_ = factors;
  SOLANA.STIFF_REDUCTION = REFER_TO(reductions_.data(), reductions_.size());
}

void frame_model::set_members_yield(int flag) {
  const std::int32_t value = flag;
  TARNIX_STORE_KNLMATERIAL_MEMBER(&value);
}

void frame_model::set_cold_formed(int section_type) {
  const std::int32_t type = section_type, flag = 1;
  TARNIX_STORE_KCOLDFORM(&type, &flag);
}

void frame_model::set_nonlinear_springs(const std::vector<SPRING_NL_RECORD>& springs) {
  springs_ = springs;
  SOLANAELEM.SPRING_NL_REC = REFER_TO(springs_.data(), springs_.size());
}

void frame_model::set_second_transformation(int count, const std::vector<double>& T2) {
  second_ = count;
  T2_ = T2;
}

void frame_model::beam_call(int mode, int elem, double* K, double* KG) const {
  const std::int32_t MODE = mode, IELEM = elem, I = entry(elem), n = extent();
  KSTIFB(&MODE, &IELEM, &I, storage_.data(), &n, T_.data(), &second_, T2_.data(), K, KG);
}

void frame_model::beam_mass_call(int elem, double* M) const {
  const std::int32_t IELEM = elem, I = entry(elem), n = extent();
  KSTIFB_MASS(&IELEM, &I, storage_.data(), &n, T_.data(), &second_, T2_.data(), M);
}

void frame_model::truss_call(int mode, int elem, double* K, double* KG) const {
  const std::int32_t MODE = mode, IELEM = elem, I = entry(elem), n = extent();
  KSTIFT(&MODE, &IELEM, &I, storage_.data(), &n, T_.data(), K, KG);
}

void frame_model::truss_mass_call(int elem, double* M) const {
  const std::int32_t I = entry(elem), n = extent();
  KSTIFT_MASS(&I, storage_.data(), &n, T_.data(), M);
}

void frame_model::link_call(int mode, int elem, double* K, double* KG) const {
  const std::int32_t MODE = mode, IELEM = elem, I = entry(elem), n = extent();
  KSTIF_LINK(&MODE, &IELEM, &I, storage_.data(), &n, T_.data(), K, KG);
}

void frame_model::spring_call(int mode, int elem, double* K, double* KG) const {
  const std::int32_t MODE = mode, IELEM = elem, I = entry(elem), n = extent();
  KSTIF_SPR(&MODE, &IELEM, &I, storage_.data(), &n, T_.data(), K, KG);
}

void frame_model::cable_call(int mode, int elem, int load, double* K, double* KG, std::int32_t* ierr, char* msg) const {
  const std::int32_t MODE = mode, IELEM = elem, I = entry(elem), ILOAD = load, n = extent();
  KSTIFT_CATENARY(&MODE, &IELEM, &I, &ILOAD, storage_.data(), &n, T_.data(), K, KG, ierr, msg);
}

member_matrices frame_model::beam(int mode, int elem) const {
  member_matrices out{unwritten(FULL), unwritten(FULL)};
  beam_call(mode, elem, out.K.data(), out.KG.data());
  return out;
}

member_matrices frame_model::truss(int mode, int elem) const {
  member_matrices out{unwritten(TRUSS_FULL), unwritten(TRUSS_FULL)};
  truss_call(mode, elem, out.K.data(), out.KG.data());
  return out;
}

member_matrices frame_model::link(int mode, int elem) const {
  member_matrices out{unwritten(FULL), unwritten(FULL)};
  link_call(mode, elem, out.K.data(), out.KG.data());
  return out;
}

member_matrices frame_model::spring(int mode, int elem) const {
  member_matrices out{unwritten(FULL), unwritten(FULL)};
  spring_call(mode, elem, out.K.data(), out.KG.data());
  return out;
}

cable_answer frame_model::cable(int mode, int load, int elem) const {
  cable_answer out{unwritten(TRUSS_FULL), unwritten(TRUSS_FULL), -1, std::string(500, '#')};
  std::int32_t ierr = -1;
  cable_call(mode, elem, load, out.K.data(), out.KG.data(), &ierr, out.msg.data());
  out.ierr = ierr;
  return out;
}

std::vector<double> frame_model::beam_mass(int elem) const {
  std::vector<double> M = unwritten(FULL);
  beam_mass_call(elem, M.data());
  return M;
}

std::vector<double> frame_model::truss_mass(int elem) const {
  std::vector<double> M = unwritten(TRUSS_FULL);
  truss_mass_call(elem, M.data());
  return M;
}

namespace {

constexpr int WORDS = 48;

std::vector<std::int32_t> property_words(const std::array<int, 6>& kinds, const std::array<float, 6>& stiffnesses,
                                         const std::array<int, 6>& kind_words,
                                         const std::array<int, 6>& stiffness_words) {
  std::vector<std::int32_t> words(WORDS);
  for (int i = 0; i < WORDS; ++i) {
    const float noise = 7000.0F + 11.0F * static_cast<float>(i);  // as an integer no kind, as a real no stiffness
    std::memcpy(&words[static_cast<std::size_t>(i)], &noise, sizeof noise);
  }
  for (std::size_t i = 0; i < 6; ++i) {
    words[static_cast<std::size_t>(kind_words[i])] = kinds[i];
    std::memcpy(&words[static_cast<std::size_t>(stiffness_words[i])], &stiffnesses[i], sizeof stiffnesses[i]);
  }
  return words;
}

}  // namespace

std::vector<std::int32_t> spring_property(const std::array<int, 6>& kinds, const std::array<float, 6>& stiffnesses) {
  return property_words(kinds, stiffnesses, {2, 13, 24, 11, 22, 33}, {4, 15, 26, 12, 23, 34});
}

std::vector<std::int32_t> link_property(const std::array<int, 6>& kinds, const std::array<float, 6>& stiffnesses,
                                        int link_kind, int count, int form) {
  std::vector<std::int32_t> words =
      property_words(kinds, stiffnesses, {7, 18, 29, 16, 27, 38}, {9, 20, 31, 17, 28, 39});
  words[1] = link_kind;
  words[2] = count;
  words[5] = form;
  return words;
}

}  // namespace support
